// The dialog that edits one Pattern: a Rule's pattern, its replacement, or one string of a Set.
#pragma once

#include <QDialog>
#include <memory>

#include "model/function.h"
#include "model/pattern.h"
#include "ui/editor_services.h"

namespace Ui {
class StringEditor;
}

namespace zarvo {

/// Works on a copy: the caller takes Edited() when the dialog was accepted and the filter isn't
/// locked.
class StringEditor : public QDialog {
  Q_OBJECT

 public:
  enum class Mode { Pattern = 0, Replacement = 1 };

  /// The functions must outlive the dialog; their names fill the Function menu.
  StringEditor(const EditorServices& services, Mode mode, Pattern pattern,
               const FunctionList& functions, bool locked, QWidget* parent);
  ~StringEditor() override;

  [[nodiscard]] const Pattern& Edited() const;
};

}  // namespace zarvo
