// The editor of the filter's Sets.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>

#include "ui/object_editor_window.h"

namespace Ui {
class SetsEditor;
}

namespace zarvo {

class SetsEditor : public ObjectEditorWindow {
  Q_OBJECT

 public:
  explicit SetsEditor(EditorHost host);
  ~SetsEditor() override;

 protected:
  void LoadObject() override;

 private:
  [[nodiscard]] Set& CurrentSet() { return EditedFilter().Sets[Current()]; }
  // The position of the selected string.
  [[nodiscard]] std::optional<std::size_t> SelectedString();
  // What the user makes of this pattern in the String Editor, unless that is cancelled or the
  // filter is locked.
  [[nodiscard]] std::optional<Pattern> Edit(Pattern pattern);
  // Makes a change by the user to the selected set.
  template <typename EditSet>
  void Change(EditSet edit);

  void EnableStringCommands();
  void OnAddString();
  void OnEditString();
  void OnDeleteString();
  void MoveString(std::ptrdiff_t step);

  std::unique_ptr<Ui::SetsEditor> ui_;
  // What the next reload selects: else no string is selected behind it.
  std::optional<std::size_t> string_to_select_;
};

}  // namespace zarvo
