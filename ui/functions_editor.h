// The editor of the filter's Functions.
#pragma once

#include <memory>
#include <string>

#include "ui/object_editor_window.h"

namespace Ui {
class FunctionsEditor;
}

namespace zarvo {

class FunctionsEditor : public ObjectEditorWindow {
  Q_OBJECT

 public:
  explicit FunctionsEditor(EditorHost host);
  ~FunctionsEditor() override;

 protected:
  void LoadObject() override;

 private:
  [[nodiscard]] Function& CurrentFunction() { return EditedFilter().Functions[Current()]; }
  // Makes a change by the user to the selected function, unless the filter is locked.
  template <typename Edit>
  void Change(Edit edit);
  void OnDefaultReturn();
  void OnAddPair();
  void OnDeletePair();

  std::unique_ptr<Ui::FunctionsEditor> ui_;
};

/// A pair as the list shows it, in the document's bytes: the argument, an arrow and the value. The
/// arrow begins with the byte 97 (hexadecimal), which is a dash in the Windows code pages.
[[nodiscard]] std::string PairLine(const FunctionEntry& entry);

/// The name of a new function when there are this many. Its number is in base 14, as it has always
/// been: people know "Function a" as the tenth.
[[nodiscard]] std::string NewFunctionName(std::size_t count);

}  // namespace zarvo
