// A String Editor for each test, with a library file and functions of its own.
#pragma once

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QLineEdit>
#include <QMenu>
#include <QRadioButton>
#include <QTabBar>
#include <QTest>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "tests/gui/scripted_dialogs.h"
#include "tests/gui/window_actions.h"
#include "tests/support/builders.h"
#include "tests/support/temporary_folder.h"
#include "ui/byte_line_edit.h"
#include "ui/byte_text.h"
#include "ui/string_editor.h"

namespace zarvo::testing {

inline constexpr const char* kFindQuestion =
    "There arleady is the most significant subpattern. Are you sure you want to evaluate the new "
    "most significant subpattern (the previous setting will be lost)?";

/// The code page is windows-1252. The dialog opens when a test says with what.
class StringEditorFixture : public ::testing::Test {
 protected:
  using Mode = StringEditor::Mode;

  StringEditorFixture() {
    SetWindowCodePage(CodePage::Find("windows-1252").value());
    services_.ShowHelp = [this](int context) { help_.push_back(context); };
  }

  void Open(Pattern pattern, Mode mode = Mode::Pattern, bool locked = false) {
    editor_ = std::make_unique<StringEditor>(services_, mode, std::move(pattern), functions_,
                                             locked, nullptr);
    editor_->show();
    Activate(*editor_);
  }
  void OpenLocked(Pattern pattern, Mode mode = Mode::Pattern) {
    Open(std::move(pattern), mode, true);
  }

  void AddFunctions(const std::vector<std::string>& names) {
    for (const std::string& name : names) functions_.Append(FunctionOf(name, {}));
  }

  template <typename Control = QWidget>
  Control& Get(const char* name) {
    return Find<Control>(*editor_, name);
  }
  bool IsEnabled(const char* name) { return Get(name).isEnabled(); }
  bool IsChecked(const char* name) { return Get<QAbstractButton>(name).isChecked(); }
  std::string TextOf(const char* name) { return Get<ByteLineEdit>(name).Bytes(); }
  void ClickOn(const char* name) { Click(Get(name)); }
  void Type(const char* name, const char* text) {
    SelectAllAndType(Get(name), QString::fromLatin1(text));
    // Typing nothing over the selection leaves it.
    if (*text == '\0') QTest::keyClick(&Get(name), Qt::Key_Delete);
  }
  /// Moves the focus away from the fields.
  void LeaveField() { Get("helpButton").setFocus(Qt::TabFocusReason); }

  // ---- Tabs

  QTabBar& Tabs() { return Get<QTabBar>("subsTabs"); }
  std::vector<std::string> Captions() {
    std::vector<std::string> captions;
    for (int i = 0; i < Tabs().count(); ++i) captions.push_back(Tabs().tabText(i).toStdString());
    return captions;
  }
  void ClickTab(int position) {
    ASSERT_LT(position, Tabs().count());
    Activate(*editor_);
    QTest::mouseClick(&Tabs(), Qt::LeftButton, {}, Tabs().tabRect(position).center());
    ASSERT_EQ(Tabs().currentIndex(), position);
  }

  // ---- Kinds

  /// The names of those of the four kinds' controls that are checked or enabled.
  std::vector<std::string> CheckedKinds() {
    std::vector<std::string> checked;
    for (const char* name : {"stringRadio", "codeRadio", "functionRadio", "listRadio"}) {
      if (IsChecked(name)) checked.emplace_back(name);
    }
    return checked;
  }
  std::vector<std::string> EnabledMenus() {
    std::vector<std::string> enabled;
    for (const char* name :
         {"stringsMenuButton", "codesMenuButton", "functionsMenuButton", "listsMenuButton"}) {
      if (IsEnabled(name)) enabled.emplace_back(name);
    }
    return enabled;
  }

  // ---- The Pattern

  const Pattern& Edited() { return editor_->Edited(); }
  const Subpattern& EditedAt(std::size_t position) { return Edited().Subpatterns.at(position); }

  // ---- Boxes

  void ExpectLockWarning() {
    dialogs_.ExpectMessage(MessageIcon::Exclamation, kLockWarning, MessageButtons::Ok, Answer::Ok);
  }
  void ExpectFindQuestion(Answer answer) {
    dialogs_.ExpectMessage(MessageIcon::Question, kFindQuestion, MessageButtons::YesNo, answer);
  }

  TemporaryFolder folder_;
  ScriptedDialogs dialogs_;
  SubpatternLibrary library_{folder_.Path() + "/", ""};
  EditorServices services_{dialogs_, library_, {}};
  FunctionList functions_;
  std::vector<int> help_;
  std::unique_ptr<StringEditor> editor_;
};

}  // namespace zarvo::testing
