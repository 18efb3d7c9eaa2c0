// The dialog that offers the entries of the subpattern library.
#pragma once

#include <QDialog>
#include <memory>
#include <optional>

#include "app/services/subpattern_library.h"
#include "model/subpattern.h"

namespace Ui {
class PredefinedDialog;
}

namespace zarvo {

class PredefinedDialog : public QDialog {
  Q_OBJECT

 public:
  /// Opens on the tab of this section. Without lists the third tab is left out.
  PredefinedDialog(const SubpatternLibrary& library, LibrarySection first, bool without_lists,
                   QWidget* parent);
  ~PredefinedDialog() override;

  /// After OK: the chosen entry as a subpattern, or nothing when no row had the focus.
  [[nodiscard]] std::optional<Subpattern> Chosen() const;
};

}  // namespace zarvo
