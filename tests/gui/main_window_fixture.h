// A main window of its own for each test, and what a user does with it.
#pragma once

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QTest>
#include <QTimer>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "app/main_window.h"
#include "model/filter_file.h"
#include "tests/gui/scripted_dialogs.h"
#include "tests/gui/window_actions.h"
#include "tests/support/builders.h"
#include "tests/support/temporary_folder.h"
#include "ui/byte_line_edit.h"
#include "ui/byte_text.h"
#include "ui/byte_text_edit.h"
#include "ui/run_pump.h"

namespace zarvo::testing {

inline constexpr const char* kFilterFiles =
    "Binary Zarvo filters (*.zvf)|*.zvf|All files (*.*)|*.*|";
inline constexpr const char* kSaveQuestion = "Would you like to save changes in current filter?";
inline const QString kUntitled = QStringLiteral("Untitled - Zarvo Composer");

/// The window is shown and active, and the code page windows-1252.
class MainWindowFixture : public ::testing::Test {
 protected:
  MainWindowFixture() {
    SetWindowCodePage(CodePage::Find("windows-1252").value());
    window_ = std::make_unique<MainWindow>(QString::fromStdString(folder_.Path() + "/"), dialogs_);
    window_->move(20, 20);
    window_->show();
    Activate(*window_);
  }

  template <typename Control = QWidget>
  Control& Get(const char* name) {
    return Find<Control>(*window_, name);
  }
  QString TextOf(const char* name) { return Get<QLineEdit>(name).text(); }
  bool IsChecked(const char* name) { return Get<QCheckBox>(name).isChecked(); }
  void ClickOn(const char* name) { Click(Get(name)); }
  void Type(const char* name, const char* text) {
    SelectAllAndType(Get(name), QString::fromLatin1(text));
  }
  /// Moves the focus to a button, which commits the field that had it, and waits for the refusal of
  /// a locked filter.
  void LeaveField() {
    Get("exitButton").setFocus(Qt::TabFocusReason);
    const auto& refusal = *window_->findChild<QTimer*>(QStringLiteral("refusalTimer"));
    ASSERT_TRUE(QTest::qWaitFor([&refusal] { return !refusal.isActive(); }));
  }
  void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::keyClick(window_->focusWidget() ? window_->focusWidget() : window_.get(), key,
                    modifiers);
  }

  /// A changed document: the name was typed, and is committed.
  void Change() {
    Type("nameEdit", "changed");
    LeaveField();
    ASSERT_FALSE(Doc().Saved);
    ASSERT_EQ(TheFilter().Name, "changed");
  }

  /// The menu that the click on this button opens.
  QMenu* OpenMenu(const char* button) {
    ClickOn(button);
    return qobject_cast<QMenu*>(QApplication::activePopupWidget());
  }

  /// One of the program's other windows, shown or not.
  static QWidget& WindowNamed(const char* name) {
    for (QWidget* window : QApplication::topLevelWidgets()) {
      if (window->objectName() == QLatin1String(name)) return *window;
    }
    throw std::runtime_error(std::string("no window ") + name);
  }

  Document& Doc() { return window_->CurrentDocument(); }
  zarvo::Filter& TheFilter() { return Doc().Filter; }
  std::string Caption() { return window_->windowTitle().toStdString(); }

  QString PathOf(const char* name) { return QString::fromStdString(folder_.File(name)); }
  QString WriteFilter(const char* name, zarvo::Filter filter) {
    return QString::fromStdString(folder_.Write(name, FilterFileBytes(filter)));
  }
  zarvo::Filter ReadFilter(const char* name) {
    struct : VersionQuestions {
      bool SaveInNewestFormat(std::int32_t) override { return false; }
      bool LoadNewerFormat(std::int32_t) override { return false; }
    } no;
    const std::string bytes = folder_.Read(name);
    zarvo::Filter filter;
    Archive archive = Archive::Loading(bytes);
    const ArchiveResult result = SerializeFilter(archive, filter, no, true);
    EXPECT_TRUE(result.Ok()) << result.Message();
    return filter;
  }
  static zarvo::Filter Named(const char* name) {
    zarvo::Filter filter;
    filter.Name = name;
    return filter;
  }
  void LockFilter(bool show_in_editor = false) {
    TheFilter().Locked = 1;
    TheFilter().ShowInEditorWhenLocked = show_in_editor ? 1 : 0;
    window_->RefreshFields();
  }

  void ExpectSaveQuestion(Answer answer) {
    dialogs_.ExpectMessage(MessageIcon::Question, kSaveQuestion, MessageButtons::YesNoCancel,
                           answer);
  }
  void ExpectLockWarning() {
    dialogs_.ExpectMessage(MessageIcon::Exclamation, kLockWarning, MessageButtons::Ok, Answer::Ok);
  }
  void ExpectExclamation(const std::string& text) {
    dialogs_.ExpectMessage(MessageIcon::Exclamation, text, MessageButtons::Ok, Answer::Ok);
  }
  void ExpectOpen(std::optional<QString> path) {
    dialogs_.ExpectOpen(kFilterFiles, "zvf", std::move(path));
  }
  void ExpectSaveAs(const QString& initial_name, std::optional<QString> path) {
    dialogs_.ExpectSave(kFilterFiles, "zvf", initial_name, std::move(path));
  }

  /// Runs the program's event loop, and this in it. The program's exit code, or nothing when the
  /// program went on.
  static std::optional<int> RunProgram(const std::function<void()>& action) {
    constexpr int kWentOn = 99;
    QObject turn;  // what is still to be done ends with it
    QTimer::singleShot(0, &turn, [&] {
      action();
      QTimer::singleShot(0, &turn, [] { QCoreApplication::exit(kWentOn); });
    });
    const int code = QApplication::exec();
    return code == kWentOn ? std::nullopt : std::optional<int>(code);
  }

  TemporaryFolder folder_;
  ScriptedDialogs dialogs_;
  std::unique_ptr<MainWindow> window_;
};

/// A filter in which every field of the header differs, with a rule, two sets and three functions.
inline zarvo::Filter Counted() {
  zarvo::Filter filter =
      FilterOf({Replace(Of({Str("a")}, 0), Of({Str("b")}, 0))}, {SetOf("s", {}), SetOf("t", {})},
               {FunctionOf("f", {}), FunctionOf("g", {}), FunctionOf("h", {})});
  filter.Name = "n";
  filter.Version = 42;
  filter.AutoIncrement = 0;
  filter.Author = "a";
  filter.Language = "l";
  filter.Type = "Phonetic";
  filter.Description = "d";
  return filter;
}

inline std::vector<std::string> Entries(const QMenu& menu) {
  std::vector<std::string> texts;
  for (const QAction* action : menu.actions()) texts.push_back(action->text().toStdString());
  return texts;
}

/// Clicks on the menu's entry at this position, from 0.
inline void Choose(QMenu& menu, int index) {
  QAction* action = menu.actions().at(index);
  ASSERT_TRUE(action->isEnabled());
  QTest::mouseClick(&menu, Qt::LeftButton, {}, menu.actionGeometry(action).center());
}

}  // namespace zarvo::testing
