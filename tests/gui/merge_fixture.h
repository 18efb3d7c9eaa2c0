// A main window into which filters are merged.
#pragma once

#include <QAccessible>
#include <QLabel>
#include <QListView>
#include <QProgressBar>
#include <QScrollBar>
#include <QTabBar>
#include <QTextBrowser>
#include <QWindow>
#include <algorithm>

#include "model/password.h"
#include "tests/gui/main_window_fixture.h"
#include "tests/support/builders.h"
#include "tests/support/golden.h"
#include "tests/support/golden_filters.h"
#include "ui/icon_button.h"
#include "ui/merge_dialog.h"
#include "ui/object_tabs.h"
#include "ui/password_dialogs.h"

namespace zarvo::testing {

using Names = std::vector<std::string>;
enum Tab { kRulesTab, kFunctionsTab, kSetsTab };

inline constexpr const char* kLockedTarget =
    "You can't merge any data to locked filter. Unlock current filter and try again.";
inline constexpr const char* kLockedSource =
    "The filter you have selected is locked. Press OK and enter password for filter you're trying "
    "to merge.";
inline constexpr const char* kWrongPassword = "Sorry, the password you've provided is wrong.";

inline Rule RuleNamed(const std::string& name) {
  Rule rule =
      testing::Replace(testing::Of({testing::Str("a")}, 0), testing::Of({testing::Str("b")}, 0));
  rule.Name = name;
  return rule;
}

inline Filter WithRules(const Names& names) {
  Filter filter;
  for (const std::string& name : names) filter.Rules.Append(RuleNamed(name));
  return filter;
}

inline Filter Source() {
  return testing::FilterOf({RuleNamed("r1"), RuleNamed("r2")},
                           {testing::SetOf("s1", {}), testing::SetOf("s2", {})},
                           {testing::FunctionOf("f1", {}), testing::FunctionOf("f2", {})});
}

template <typename Element>
Names NamesOf(const RecordList<Element>& list) {
  Names names;
  for (const Element& element : list) names.push_back(element.Name);
  return names;
}

// ---- The dialog's controls

inline QListView& List(const MergeDialog& dialog, const char* name) {
  return Find<QListView>(dialog, name);
}

inline Names Shown(const MergeDialog& dialog, const char* name) {
  const QAbstractItemModel& model = *List(dialog, name).model();
  Names names;
  for (int row = 0; row < model.rowCount(); ++row) {
    names.push_back(model.index(row, 0).data().toString().toStdString());
  }
  return names;
}

inline void ExpectShown(const MergeDialog& dialog, const Names& existing, const Names& available,
                        const Names& to_add) {
  EXPECT_EQ(Shown(dialog, "existingList"), existing);
  EXPECT_EQ(Shown(dialog, "availableList"), available);
  EXPECT_EQ(Shown(dialog, "toAddList"), to_add);
}

inline void ClickRow(QListView& list, int row, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
  const QRect area = list.visualRect(list.model()->index(row, 0));
  ASSERT_TRUE(list.viewport()->rect().contains(area.center())) << row;
  QTest::mouseClick(list.viewport(), Qt::LeftButton, modifiers, area.center());
}

inline void SelectAll(QListView& list) {
  list.setFocus(Qt::TabFocusReason);
  QTest::keyClick(&list, Qt::Key_A, Qt::ControlModifier);
}

inline std::vector<int> Selected(const QListView& list) {
  std::vector<int> rows;
  for (const QModelIndex& index : list.selectionModel()->selectedRows())
    rows.push_back(index.row());
  std::sort(rows.begin(), rows.end());
  return rows;
}

inline void ClickTab(const MergeDialog& dialog, Tab tab) {
  auto& tabs = Find<QTabBar>(dialog, "kindTabs");
  QTest::mouseClick(&tabs, Qt::LeftButton, {}, tabs.tabRect(tab).center());
  ASSERT_EQ(tabs.currentIndex(), tab);
}

inline void AddAll(const MergeDialog& dialog) {
  for (const Tab tab : {kRulesTab, kFunctionsTab, kSetsTab}) {
    ClickTab(dialog, tab);
    SelectAll(List(dialog, "availableList"));
    Click(Find<QWidget>(dialog, "addButton"));
  }
}

inline void PressOk(const MergeDialog& dialog) { Click(Find<QWidget>(dialog, "okButton")); }
inline void PressCancel(const MergeDialog& dialog) { Click(Find<QWidget>(dialog, "cancelButton")); }

// A window of its own, which is shown.
inline QWidget& Editor(const char* name) {
  for (QWidget* window : QApplication::topLevelWidgets()) {
    if (window->isVisible() && window->objectName() == QLatin1String(name)) return *window;
  }
  throw std::runtime_error(std::string("no window ") + name);
}

class MergeTest : public testing::MainWindowFixture {
 protected:
  MergeTest() { LeaveField(); }

  // Clicks Merge, chooses this file, and acts in the dialog, which must come and be closed.
  void Merge(const QString& path, std::function<void(MergeDialog&)> act) {
    ExpectOpen(path);
    ShowDialog(std::move(act));
  }
  void Merge(const zarvo::Filter& source, std::function<void(MergeDialog&)> act) {
    Merge(WriteFilter("source.zvf", source), std::move(act));
  }
  void ShowDialog(std::function<void(MergeDialog&)> act) {
    bool shown = false;
    WithNextDialog<MergeDialog>([&](MergeDialog& dialog) {
      shown = true;
      act(dialog);
    });
    ClickOn("mergeButton");
    EXPECT_TRUE(shown);
    EXPECT_TRUE(dialogs_.IsDone());
  }

  // In the password dialog: this text, then this button.
  void AnswerPassword(const QString& password, const char* button = "okButton") {
    WithNextDialog<EnterPasswordDialog>([=](EnterPasswordDialog& dialog) {
      EXPECT_EQ(dialog.windowTitle(), "Enter password");
      TypeInto(Find<QWidget>(dialog, "passwordEdit"), password);
      Click(Find<QWidget>(dialog, button));
    });
  }

  void ExpectLockedSource() {
    dialogs_.ExpectMessage(MessageIcon::Information, kLockedSource, MessageButtons::Ok, Answer::Ok);
  }

  // Clicks Merge, which must end without its dialog and leave the document as it was.
  void ExpectRefused() {
    const zarvo::Filter before = TheFilter();
    Doc().Saved = true;
    ClickOn("mergeButton");
    EXPECT_TRUE(dialogs_.IsDone());
    EXPECT_EQ(TheFilter(), before);
    EXPECT_TRUE(Doc().Saved);
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
  }

  // A document with one item of each kind.
  void LoadTarget() {
    zarvo::Filter filter = testing::FilterOf({RuleNamed("r")}, {testing::SetOf("s", {})},
                                             {testing::FunctionOf("f", {})});
    filter.Name = "target";
    window_->LoadDocument(WriteFilter("target.zvf", filter));
  }
};

}  // namespace zarvo::testing
