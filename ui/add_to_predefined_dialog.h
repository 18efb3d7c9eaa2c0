// The dialog that asks how a new entry of the subpattern library is called.
#pragma once

#include <QDialog>
#include <memory>
#include <string>

namespace Ui {
class AddToPredefinedDialog;
}

namespace zarvo {

/// Writes nothing: that is up to the caller, once the dialog was accepted.
class AddToPredefinedDialog : public QDialog {
  Q_OBJECT

 public:
  explicit AddToPredefinedDialog(QWidget* parent = nullptr);
  ~AddToPredefinedDialog() override;

  [[nodiscard]] std::string Name() const;
  [[nodiscard]] bool ShowInMenu() const;

 private:
  std::unique_ptr<Ui::AddToPredefinedDialog> ui_;
};

}  // namespace zarvo
