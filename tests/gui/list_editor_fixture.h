// The editors of Sets and Functions, whose objects are lists.
#pragma once

#include <QListWidget>

#include "tests/gui/editor_fixture.h"

namespace zarvo::testing {

class ListEditorFixture : public EditorFixture {
 protected:
  using Texts = std::vector<std::string>;

  ListEditorFixture(const EditorNames& names, const char* list)
      : EditorFixture(names), list_name_(list) {
    LeaveField();
  }

  void ShowLocked(zarvo::Filter filter) { Show(Locked(std::move(filter))); }
  void TypeIn(const char* name, const char* text) {
    SelectAllAndType(In(name), QString::fromLatin1(text));
    // Typing nothing over the selection leaves it.
    if (*text == '\0') QTest::keyClick(&In(name), Qt::Key_Delete);
  }
  void FocusOn(const char* name) {
    Activate(Editor());
    In(name).setFocus(Qt::TabFocusReason);
    ASSERT_TRUE(In(name).hasFocus()) << name;
  }
  std::string Title() { return Editor().windowTitle().toStdString(); }
  std::string Count() { return TextOf(names_.Count).toStdString(); }
  void ExpectQuestion(const std::string& text, Answer answer) {
    dialogs_.ExpectMessage(MessageIcon::Question, text, MessageButtons::YesNo, answer);
  }
  /// True when the document was marked as changed since the last call.
  bool WasModified() { return !std::exchange(Doc().Saved, true); }

  // ---- The list

  QListWidget& List() { return In<QListWidget>(list_name_); }
  Texts Lines() {
    Texts lines;
    for (int i = 0; i < List().count(); ++i) lines.push_back(List().item(i)->text().toStdString());
    return lines;
  }
  /// The middle of a line, where the mouse reaches it.
  QPoint MiddleOf(int row) {
    QListWidgetItem* item = List().item(row);
    if (item == nullptr) throw std::runtime_error("no such line");
    List().scrollToItem(item);
    return List().visualItemRect(item).center();
  }
  void ClickLine(int row) {
    Activate(Editor());
    QTest::mouseClick(List().viewport(), Qt::LeftButton, {}, MiddleOf(row));
    ASSERT_EQ(SelectedLine(), row);
  }
  /// -1 for none.
  int SelectedLine() {
    const QModelIndexList rows = List().selectionModel()->selectedRows();
    return rows.isEmpty() ? -1 : rows.front().row();
  }

  // ---- The Preview

  /// Has the Preview updated by each change that does so. Its text is "in", and the filters here
  /// have no rules.
  void AutoUpdate() {
    Find<ByteTextEdit>(window_->Preview(), "originalEdit").SetBytes("in");
    ClickOn("autoUpdateBox");
    ASSERT_TRUE(WasPreviewUpdated());
  }
  /// Whether it was since the last call.
  bool WasPreviewUpdated() {
    Settle();
    auto& modified = Find<ByteTextEdit>(window_->Preview(), "modifiedEdit");
    const bool was_updated = modified.Bytes() == "in";
    modified.SetBytes("");
    return was_updated;
  }

 private:
  const char* list_name_;
};

}  // namespace zarvo::testing
