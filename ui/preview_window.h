// The window in which a filter is tried on a sample text.
#pragma once

#include <QDialog>
#include <memory>

#include "model/filter.h"
#include "ui/dialogs.h"

namespace Ui {
class PreviewWindow;
}

namespace zarvo {

/// Exists for the life of the program, mostly hidden. The filter must outlive it.
class PreviewWindow : public QDialog {
  Q_OBJECT

 public:
  PreviewWindow(Filter& filter, Dialogs& dialogs, QWidget* parent = nullptr);
  ~PreviewWindow() override;

  /// Applies the filter to the original text and shows the result, or the original text when the
  /// run was stopped. May be called while a run pumps events: that starts a run within the run.
  void Update();

  /// Sets the progress bar back.
  void Reset();
  /// Reset for another document: the modified text belongs to the old one.
  void ResetForNewDocument();

  [[nodiscard]] bool IsBusy() const { return busy_; }

 private:
  void OnUpdateButton();
  void OnLoadText();
  void SetBusy(bool busy);

  std::unique_ptr<Ui::PreviewWindow> ui_;
  Filter& filter_;
  Dialogs& dialogs_;
  bool busy_ = false;
};

}  // namespace zarvo
