// The editor of the filter's Rules.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "ui/object_editor_window.h"
#include "ui/string_editor.h"

class QAbstractSlider;

namespace Ui {
class RulesEditor;
}

namespace zarvo {

class RulesEditor : public ObjectEditorWindow {
  Q_OBJECT

 public:
  explicit RulesEditor(EditorHost host);
  ~RulesEditor() override;

 protected:
  void LoadObject() override;
  void OnTabsBuilt() override;
  void OnAppended(std::size_t position, Origin origin) override;
  void changeEvent(QEvent* event) override;

 private:
  void ConnectControls();
  [[nodiscard]] Rule& CurrentRule() { return EditedFilter().Rules[Current()]; }
  // Makes a change by the user to the selected rule, unless the filter is locked.
  template <typename Edit>
  void Change(Edit edit);
  // As Change, and without marking the filter as modified.
  void EditPattern(StringEditor::Mode mode, Pattern Rule::*field);

  // Fills the drop-down anew where the sets' names are others by now.
  void LoadSetNames();
  void SelectSet();
  void LoadSource(Rule& rule);
  void LoadMode(const Rule& rule);
  void LoadNothing();

  void OnAnchor();
  void OnInsert();
  void OnReplace();
  void OnSlider(QAbstractSlider& slider, std::function<void(Rule& rule, int position)> store);
  void Move(std::ptrdiff_t step);

  [[nodiscard]] std::int32_t& CurrentAnchor() { return anchors_[Current()]; }

  std::unique_ptr<Ui::RulesEditor> ui_;
  // By position: the fixed end of the from/to selection, counted from 1; 0 means none. Not moved
  // with the rules: every move makes them anew.
  std::vector<std::int32_t> anchors_;
  // What the drop-down offers.
  std::vector<std::string> set_names_;
};

}  // namespace zarvo
