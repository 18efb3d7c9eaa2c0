// The dialog that offers the entries of the subpattern library.
#pragma once

#include <QDialog>
#include <array>
#include <memory>
#include <optional>

#include "app/services/subpattern_library.h"
#include "model/subpattern.h"

namespace Ui {
class PredefinedDialog;
}

namespace zarvo {

class PredefinedList;

class PredefinedDialog : public QDialog {
  Q_OBJECT

 public:
  /// Reads the library and opens on the tab of this section. Without lists the third tab is left
  /// out; the first is shown in its place.
  PredefinedDialog(const SubpatternLibrary& library, LibrarySection first, bool without_lists,
                   QWidget* parent);
  ~PredefinedDialog() override;

  /// After OK: the entry of the row that had the focus, highlighted or not, as a subpattern;
  /// nothing when no row had it.
  [[nodiscard]] std::optional<Subpattern> Chosen() const { return chosen_; }

  void accept() override;

 private:
  // Fills the list anew with the entries of a tab, which is a section's number.
  void ShowSection(int tab);

  std::unique_ptr<Ui::PredefinedDialog> ui_;
  std::array<SubpatternLibrary::Entries, kLibrarySectionCount> entries_;
  std::unique_ptr<PredefinedList> list_;
  std::optional<Subpattern> chosen_;
};

}  // namespace zarvo
