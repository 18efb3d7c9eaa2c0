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

namespace zarvo {
namespace {

using testing::Click;
using testing::Find;
using testing::TypeInto;
using testing::WithNextDialog;

using Names = std::vector<std::string>;
enum Tab { kRulesTab, kFunctionsTab, kSetsTab };

constexpr const char* kLockedTarget =
    "You can't merge any data to locked filter. Unlock current filter and try again.";
constexpr const char* kLockedSource =
    "The filter you have selected is locked. Press OK and enter password for filter you're trying "
    "to merge.";
constexpr const char* kWrongPassword = "Sorry, the password you've provided is wrong.";

Rule RuleNamed(const std::string& name) {
  Rule rule =
      testing::Replace(testing::Of({testing::Str("a")}, 0), testing::Of({testing::Str("b")}, 0));
  rule.Name = name;
  return rule;
}

Filter WithRules(const Names& names) {
  Filter filter;
  for (const std::string& name : names) filter.Rules.Append(RuleNamed(name));
  return filter;
}

Filter Source() {
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

QListView& List(const MergeDialog& dialog, const char* name) {
  return Find<QListView>(dialog, name);
}

Names Shown(const MergeDialog& dialog, const char* name) {
  const QAbstractItemModel& model = *List(dialog, name).model();
  Names names;
  for (int row = 0; row < model.rowCount(); ++row) {
    names.push_back(model.index(row, 0).data().toString().toStdString());
  }
  return names;
}

void ExpectShown(const MergeDialog& dialog, const Names& existing, const Names& available,
                 const Names& to_add) {
  EXPECT_EQ(Shown(dialog, "existingList"), existing);
  EXPECT_EQ(Shown(dialog, "availableList"), available);
  EXPECT_EQ(Shown(dialog, "toAddList"), to_add);
}

void ClickRow(QListView& list, int row, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
  const QRect area = list.visualRect(list.model()->index(row, 0));
  ASSERT_TRUE(list.viewport()->rect().contains(area.center())) << row;
  QTest::mouseClick(list.viewport(), Qt::LeftButton, modifiers, area.center());
}

void SelectAll(QListView& list) {
  list.setFocus(Qt::TabFocusReason);
  QTest::keyClick(&list, Qt::Key_A, Qt::ControlModifier);
}

std::vector<int> Selected(const QListView& list) {
  std::vector<int> rows;
  for (const QModelIndex& index : list.selectionModel()->selectedRows())
    rows.push_back(index.row());
  std::sort(rows.begin(), rows.end());
  return rows;
}

void ClickTab(const MergeDialog& dialog, Tab tab) {
  auto& tabs = Find<QTabBar>(dialog, "kindTabs");
  QTest::mouseClick(&tabs, Qt::LeftButton, {}, tabs.tabRect(tab).center());
  ASSERT_EQ(tabs.currentIndex(), tab);
}

void AddAll(const MergeDialog& dialog) {
  for (const Tab tab : {kRulesTab, kFunctionsTab, kSetsTab}) {
    ClickTab(dialog, tab);
    SelectAll(List(dialog, "availableList"));
    Click(Find<QWidget>(dialog, "addButton"));
  }
}

void PressOk(const MergeDialog& dialog) { Click(Find<QWidget>(dialog, "okButton")); }
void PressCancel(const MergeDialog& dialog) { Click(Find<QWidget>(dialog, "cancelButton")); }

// A window of its own, which is shown.
QWidget& Editor(const char* name) {
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

// ---- Before the dialog

TEST_F(MergeTest, LockedFilterIsRefusedBeforeAFileIsChosen) {
  LoadTarget();
  LockFilter(true);
  ASSERT_TRUE(Get("mergeButton").isEnabled());
  ExpectExclamation(kLockedTarget);
  ExpectRefused();
}

TEST_F(MergeTest, LockThatHidesTheEditorsDisablesTheButton) {
  LockFilter(false);
  EXPECT_FALSE(Get("mergeButton").isEnabled());
}

TEST_F(MergeTest, CancelledFileDialogStops) {
  LoadTarget();
  ExpectOpen(std::nullopt);
  ExpectRefused();
}

TEST_F(MergeTest, MissingFileIsReported) {
  LoadTarget();
  const QString path = PathOf("missing & <b>.zvf");
  ExpectOpen(path);
  ExpectExclamation("Error loading filter " + path.toStdString());
  ExpectRefused();
  EXPECT_EQ(Doc().Path, PathOf("target.zvf"));
  EXPECT_EQ(Caption(), "target.zvf - Zarvo Composer");
}

TEST_F(MergeTest, DamagedFileIsReportedThoughPartOfItCouldBeRead) {
  LoadTarget();
  for (const char* name : {"truncated-second-rule", "wrong-magic", "count-too-large"}) {
    const std::string path = folder_.Write(name, testing::Golden(name));
    ExpectOpen(QString::fromStdString(path));
    ExpectExclamation("Error loading filter " + path);
    ExpectRefused();
  }
}

TEST_F(MergeTest, DamagedFileIsReportedThoughItIsLocked) {
  const std::string bytes = testing::Golden("format-v1");
  const std::string path = folder_.Write("cut.zvf", bytes.substr(0, bytes.size() - 1));
  ExpectOpen(QString::fromStdString(path));
  ExpectExclamation("Error loading filter " + path);
  ExpectRefused();
}

TEST_F(MergeTest, NewerFormatAnsweredNoIsReported) {
  LoadTarget();
  const std::string path = folder_.Write("newer.zvf", testing::Golden("format-v7"));
  ExpectOpen(QString::fromStdString(path));
  dialogs_.ExpectMessage(MessageIcon::Question, LoadNewerFormatText(7), MessageButtons::YesNo,
                         Answer::No, [] {
                           ASSERT_NE(QApplication::overrideCursor(), nullptr);
                           EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
                         });
  dialogs_.ExpectMessage(MessageIcon::Exclamation, "Error loading filter " + path,
                         MessageButtons::Ok, Answer::Ok,
                         [] { EXPECT_EQ(QApplication::overrideCursor(), nullptr); });
  ExpectRefused();
}

TEST_F(MergeTest, NewerFormatAnsweredYesIsOffered) {
  LoadTarget();
  const std::string path = folder_.Write("newer.zvf", testing::Golden("format-v7"));
  ExpectOpen(QString::fromStdString(path));
  dialogs_.ExpectMessage(MessageIcon::Question, LoadNewerFormatText(7), MessageButtons::YesNo,
                         Answer::Yes);
  ShowDialog([](MergeDialog& dialog) {
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    ExpectShown(dialog, {"r"}, {}, {});
    AddAll(dialog);
    PressOk(dialog);
  });
  EXPECT_EQ(NamesOf(TheFilter().Sets), Names({"s", "S"}));
  EXPECT_EQ(NamesOf(TheFilter().Functions), Names({"f", "f"}));
  EXPECT_EQ(TheFilter().FormatVersion, 6);
}

// ---- A locked source

TEST_F(MergeTest, LockedSourceOpensWithItsPasswordAndStaysLocked) {
  LoadTarget();
  const std::string path = folder_.Write("locked.zvf", testing::Golden("format-v1"));
  ExpectOpen(QString::fromStdString(path));
  dialogs_.ExpectMessage(MessageIcon::Information, kLockedSource, MessageButtons::Ok, Answer::Ok,
                         [this] {
                           EXPECT_EQ(QApplication::overrideCursor(), nullptr);
                           AnswerPassword(QStringLiteral("cat"));
                         });
  ShowDialog([](MergeDialog& dialog) {
    ExpectShown(dialog, {"r"}, {"dash"}, {});
    AddAll(dialog);
    PressOk(dialog);
  });
  EXPECT_EQ(NamesOf(TheFilter().Rules), Names({"r", "dash"}));
  EXPECT_EQ(TheFilter().Locked, 0);
  EXPECT_EQ(TheFilter().Password, "");
  EXPECT_EQ(folder_.Read("locked.zvf"), testing::Golden("format-v1"));
}

TEST_F(MergeTest, WrongPasswordOfTheSourceStops) {
  LoadTarget();
  for (const char* password : {"dog", ""}) {
    ExpectOpen(QString::fromStdString(folder_.Write("locked.zvf", testing::Golden("format-v1"))));
    ExpectLockedSource();
    ExpectExclamation(kWrongPassword);
    AnswerPassword(QString::fromLatin1(password));
    ExpectRefused();
  }
}

TEST_F(MergeTest, CancelledPasswordOfTheSourceStopsWithoutAMessage) {
  LoadTarget();
  ExpectOpen(QString::fromStdString(folder_.Write("locked.zvf", testing::Golden("format-v1"))));
  ExpectLockedSource();
  AnswerPassword(QStringLiteral("cat"), "cancelButton");
  ExpectRefused();
}

TEST_F(MergeTest, LockedSourceWithoutAPasswordOpensWithAnyText) {
  zarvo::Filter source = Source();
  source.Locked = 1;
  for (const char* password : {"", "anything"}) {
    ExpectOpen(WriteFilter("source.zvf", source));
    ExpectLockedSource();
    AnswerPassword(QString::fromLatin1(password));
    ShowDialog([](MergeDialog& dialog) { PressCancel(dialog); });
  }
}

TEST_F(MergeTest, SourceThatIsNotLockedIsOpenedWithoutItsPassword) {
  zarvo::Filter source = Source();
  source.FormatVersion = 5;
  source.PasswordKey = "K";
  source.Password = ScramblePassword("secret", 'K', 5);
  Merge(source, [](MergeDialog& dialog) { PressCancel(dialog); });
}

// ---- The dialog

TEST_F(MergeTest, DialogHasItsControls) {
  LoadTarget();
  Merge(Source(), [](MergeDialog& dialog) {
    EXPECT_EQ(dialog.windowTitle(), "Merge");
    EXPECT_TRUE(dialog.isModal());
    const auto& tabs = Find<QTabBar>(dialog, "kindTabs");
    ASSERT_EQ(tabs.count(), 3);
    EXPECT_EQ(tabs.tabText(kRulesTab), "Rules");
    EXPECT_EQ(tabs.tabText(kFunctionsTab), "Functions");
    EXPECT_EQ(tabs.tabText(kSetsTab), "Sets");
    EXPECT_EQ(tabs.currentIndex(), kRulesTab);
    EXPECT_EQ(Find<QLabel>(dialog, "existingLabel").text(), "Existing:");
    EXPECT_EQ(Find<QLabel>(dialog, "availableLabel").text(), "Available:");
    EXPECT_EQ(Find<QLabel>(dialog, "toAddLabel").text(), "To add:");
    EXPECT_EQ(List(dialog, "existingList").selectionMode(), QAbstractItemView::NoSelection);
    for (const char* name : {"availableList", "toAddList"}) {
      EXPECT_EQ(List(dialog, name).selectionMode(), QAbstractItemView::ExtendedSelection) << name;
    }
    for (const char* name : {"addButton", "removeButton"}) {
      const auto& button = Find<IconButton>(dialog, name);
      EXPECT_FALSE(button.icon().isNull()) << name;
      EXPECT_TRUE(button.HotIcon().isNull()) << name;
      EXPECT_EQ(button.text(), "") << name;
    }
    EXPECT_EQ(Find<IconButton>(dialog, "okButton").text(), "OK");
    EXPECT_EQ(Find<IconButton>(dialog, "cancelButton").text(), "Cancel");
    EXPECT_EQ(Find<IconButton>(dialog, "helpButton").text(), "Help");
    PressCancel(dialog);
  });
}

TEST_F(MergeTest, ListsAreShownByKindUnsorted) {
  LoadTarget();
  zarvo::Filter source = Source();
  source.Rules.Append(RuleNamed("a"));
  Merge(source, [](MergeDialog& dialog) {
    ExpectShown(dialog, {"r"}, {"r1", "r2", "a"}, {});
    ClickTab(dialog, kFunctionsTab);
    ExpectShown(dialog, {"f"}, {"f1", "f2"}, {});
    ClickTab(dialog, kSetsTab);
    ExpectShown(dialog, {"s"}, {"s1", "s2"}, {});
    ClickTab(dialog, kRulesTab);
    ExpectShown(dialog, {"r"}, {"r1", "r2", "a"}, {});
    PressCancel(dialog);
  });
}

TEST_F(MergeTest, KeyboardChangesTheKindToo) {
  LoadTarget();
  Merge(Source(), [](MergeDialog& dialog) {
    auto& tabs = Find<QTabBar>(dialog, "kindTabs");
    tabs.setFocus(Qt::TabFocusReason);
    QTest::keyClick(&tabs, Qt::Key_Right);
    ExpectShown(dialog, {"f"}, {"f1", "f2"}, {});
    QTest::keyClick(&dialog, Qt::Key_Escape);
  });
}

TEST_F(MergeTest, ThirdAndFifthMoveInThatOrderToTheEnd) {
  Merge(WithRules({"1", "2", "3", "4", "5", "6"}), [this](MergeDialog& dialog) {
    QListView& available = List(dialog, "availableList");
    ClickRow(available, 5);
    Click(Find<QWidget>(dialog, "addButton"));
    // Chosen the other way round, and in list order all the same.
    ClickRow(available, 4);
    ClickRow(available, 2, Qt::ControlModifier);
    EXPECT_EQ(Selected(available), (std::vector<int>{2, 4}));
    Click(Find<QWidget>(dialog, "addButton"));
    ExpectShown(dialog, {}, {"1", "2", "4"}, {"6", "3", "5"});
    EXPECT_TRUE(Selected(available).empty());
    EXPECT_EQ(TheFilter().Rules.Count(), 0U) << "not before OK";
    PressOk(dialog);
  });
  EXPECT_EQ(NamesOf(TheFilter().Rules), Names({"6", "3", "5"}));
}

TEST_F(MergeTest, ShiftSelectsARange) {
  Merge(WithRules({"1", "2", "3", "4", "5"}), [](MergeDialog& dialog) {
    ClickRow(List(dialog, "availableList"), 1);
    ClickRow(List(dialog, "availableList"), 3, Qt::ShiftModifier);
    Click(Find<QWidget>(dialog, "addButton"));
    ExpectShown(dialog, {}, {"1", "5"}, {"2", "3", "4"});
    PressCancel(dialog);
  });
}

TEST_F(MergeTest, ItemMovedBackGoesToTheEndOfAvailable) {
  Merge(WithRules({"1", "2", "3", "4"}), [](MergeDialog& dialog) {
    ClickRow(List(dialog, "availableList"), 0);
    ClickRow(List(dialog, "availableList"), 1, Qt::ControlModifier);
    Click(Find<QWidget>(dialog, "addButton"));
    ExpectShown(dialog, {}, {"3", "4"}, {"1", "2"});
    ClickRow(List(dialog, "toAddList"), 0);
    Click(Find<QWidget>(dialog, "removeButton"));
    ExpectShown(dialog, {}, {"3", "4", "1"}, {"2"});
    ClickRow(List(dialog, "availableList"), 2);
    Click(Find<QWidget>(dialog, "addButton"));
    ExpectShown(dialog, {}, {"3", "4"}, {"2", "1"});
    PressOk(dialog);
  });
  EXPECT_EQ(NamesOf(TheFilter().Rules), Names({"2", "1"}));
}

TEST_F(MergeTest, ButtonsDoNothingWithoutASelection) {
  Merge(WithRules({"1", "2"}), [](MergeDialog& dialog) {
    Click(Find<QWidget>(dialog, "addButton"));
    Click(Find<QWidget>(dialog, "removeButton"));
    ExpectShown(dialog, {}, {"1", "2"}, {});
    PressCancel(dialog);
  });
}

TEST_F(MergeTest, KeyboardAloneMovesItems) {
  Merge(WithRules({"1", "2", "3"}), [](MergeDialog& dialog) {
    QListView& available = List(dialog, "availableList");
    available.setFocus(Qt::TabFocusReason);
    QTest::keyClick(&available, Qt::Key_End);
    QTest::keyClick(&available, Qt::Key_Up);
    QTest::keyClick(&available, Qt::Key_Tab);
    auto& button = Find<QWidget>(dialog, "addButton");
    ASSERT_EQ(QApplication::focusWidget(), &button);
    QTest::keyClick(&button, Qt::Key_Space);
    ExpectShown(dialog, {}, {"1", "3"}, {"2"});
    // The keyboard goes on at the entry that took the place.
    EXPECT_EQ(available.currentIndex().row(), 1);
    EXPECT_TRUE(Selected(available).empty());
    available.setFocus(Qt::TabFocusReason);
    QTest::keyClick(&available, Qt::Key_Return);
  });
  EXPECT_EQ(NamesOf(TheFilter().Rules), Names({"2"}));
}

TEST_F(MergeTest, WhatIsSelectedInTheOtherListStaysSelected) {
  Merge(WithRules({"1", "2", "3", "4"}), [](MergeDialog& dialog) {
    ClickRow(List(dialog, "availableList"), 0);
    Click(Find<QWidget>(dialog, "addButton"));
    ClickRow(List(dialog, "toAddList"), 0);
    ClickRow(List(dialog, "availableList"), 0);
    Click(Find<QWidget>(dialog, "addButton"));
    EXPECT_EQ(Selected(List(dialog, "toAddList")), std::vector<int>{0});
    ExpectShown(dialog, {}, {"3", "4"}, {"1", "2"});
    PressCancel(dialog);
  });
}

TEST_F(MergeTest, ClickOnTheShownTabFillsTheListsAnew) {
  Merge(WithRules({"1", "2"}), [](MergeDialog& dialog) {
    ClickRow(List(dialog, "availableList"), 1);
    ClickTab(dialog, kRulesTab);
    EXPECT_TRUE(Selected(List(dialog, "availableList")).empty());
    ExpectShown(dialog, {}, {"1", "2"}, {});
    PressCancel(dialog);
  });
}

TEST_F(MergeTest, EachKindKeepsItsListsWhileAnotherIsShown) {
  LoadTarget();
  Merge(Source(), [](MergeDialog& dialog) {
    ClickRow(List(dialog, "availableList"), 1);
    Click(Find<QWidget>(dialog, "addButton"));
    ClickTab(dialog, kSetsTab);
    ExpectShown(dialog, {"s"}, {"s1", "s2"}, {});
    ClickRow(List(dialog, "availableList"), 0);
    Click(Find<QWidget>(dialog, "addButton"));
    ExpectShown(dialog, {"s"}, {"s2"}, {"s1"});
    ClickTab(dialog, kRulesTab);
    ExpectShown(dialog, {"r"}, {"r1"}, {"r2"});
    PressOk(dialog);
  });
  EXPECT_EQ(NamesOf(TheFilter().Rules), Names({"r", "r2"}));
  EXPECT_EQ(NamesOf(TheFilter().Functions), Names({"f"}));
  EXPECT_EQ(NamesOf(TheFilter().Sets), Names({"s", "s1"}));
}

TEST_F(MergeTest, ExistingListTakesNoSelection) {
  LoadTarget();
  Merge(Source(), [](MergeDialog& dialog) {
    ClickRow(List(dialog, "existingList"), 0);
    SelectAll(List(dialog, "existingList"));
    EXPECT_TRUE(Selected(List(dialog, "existingList")).empty());
    PressCancel(dialog);
  });
}

TEST_F(MergeTest, NamesAreShownPlainlyInTheCodePage) {
  Merge(WithRules({"", "a & &b <b>c</b>", "\x97"}), [](MergeDialog& dialog) {
    ExpectShown(dialog, {}, {"", "a & &b <b>c</b>", "\xE2\x80\x94"}, {});
    // A name of no characters has a row all the same.
    QListView& available = List(dialog, "availableList");
    EXPECT_GE(available.visualRect(available.model()->index(0, 0)).height(),
              available.fontMetrics().height());
    ClickRow(available, 0);
    Click(Find<QWidget>(dialog, "addButton"));
    ExpectShown(dialog, {}, {"a & &b <b>c</b>", "\xE2\x80\x94"}, {""});
    PressCancel(dialog);
  });
}

TEST_F(MergeTest, TenThousandRulesMoveTogetherAndWhatIsSeenStays) {
  Names names;
  for (int i = 0; i < 10'000; ++i) names.push_back("rule " + std::to_string(i));
  Merge(WithRules(names), [&](MergeDialog& dialog) {
    QListView& available = List(dialog, "availableList");
    available.scrollTo(available.model()->index(5'000, 0), QAbstractItemView::PositionAtTop);
    const int scrolled = available.verticalScrollBar()->value();
    ASSERT_GT(scrolled, 0);
    ClickRow(available, 5'001);
    Click(Find<QWidget>(dialog, "addButton"));
    EXPECT_EQ(available.verticalScrollBar()->value(), scrolled);
    SelectAll(available);
    Click(Find<QWidget>(dialog, "addButton"));
    EXPECT_TRUE(Shown(dialog, "availableList").empty());
    PressOk(dialog);
  });
  ASSERT_EQ(TheFilter().Rules.Count(), 10'000U);
  EXPECT_EQ(TheFilter().Rules[0].Name, "rule 5001");
  EXPECT_EQ(TheFilter().Rules[1].Name, "rule 0");
  EXPECT_EQ(TheFilter().Rules[9'999].Name, "rule 9999");
  EXPECT_EQ(TextOf("rulesCount"), "10000");
}

// ---- OK and Cancel

TEST_F(MergeTest, OkAppendsAllKindsAndShowsTheCounts) {
  LoadTarget();
  ASSERT_TRUE(Doc().Saved);
  Merge(Source(), [](MergeDialog& dialog) {
    AddAll(dialog);
    PressOk(dialog);
  });
  EXPECT_EQ(NamesOf(TheFilter().Rules), Names({"r", "r1", "r2"}));
  EXPECT_EQ(NamesOf(TheFilter().Functions), Names({"f", "f1", "f2"}));
  EXPECT_EQ(NamesOf(TheFilter().Sets), Names({"s", "s1", "s2"}));
  for (const char* count : {"rulesCount", "functionsCount", "setsCount"}) {
    EXPECT_EQ(TextOf(count), "3") << count;
  }
  EXPECT_FALSE(Doc().Saved);
  EXPECT_EQ(TheFilter().Name, "target");
  EXPECT_EQ(Doc().Path, PathOf("target.zvf"));
  EXPECT_EQ(Caption(), "target.zvf - Zarvo Composer");
}

TEST_F(MergeTest, OkWithNothingChosenStillRefreshesAndClearsTheSavedFlag) {
  LoadTarget();
  TheFilter().Author = "not shown yet";
  zarvo::Filter before = TheFilter();
  Merge(Source(), [](MergeDialog& dialog) { PressOk(dialog); });
  EXPECT_EQ(TheFilter(), before);
  EXPECT_FALSE(Doc().Saved);
  EXPECT_EQ(TextOf("authorEdit"), "not shown yet");
}

TEST_F(MergeTest, CancelEscapeAndCloseChangeNothing) {
  LoadTarget();
  const zarvo::Filter before = TheFilter();
  const std::function<void(MergeDialog&)> ways[] = {
      [](MergeDialog& dialog) { PressCancel(dialog); },
      [](MergeDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); },
      [](MergeDialog& dialog) { dialog.close(); }};
  for (const auto& way : ways) {
    Merge(Source(), [&](MergeDialog& dialog) {
      AddAll(dialog);
      way(dialog);
    });
    EXPECT_EQ(TheFilter(), before);
    EXPECT_TRUE(Doc().Saved);
    EXPECT_EQ(TextOf("rulesCount"), "1");
  }
}

TEST_F(MergeTest, ExistingNameIsAddedASecondTime) {
  LoadTarget();
  zarvo::Filter source = WithRules({"r"});
  source.Rules[0].Probability = 7;
  Merge(source, [](MergeDialog& dialog) {
    ExpectShown(dialog, {"r"}, {"r"}, {});
    AddAll(dialog);
    PressOk(dialog);
  });
  ASSERT_EQ(NamesOf(TheFilter().Rules), Names({"r", "r"}));
  EXPECT_EQ(TheFilter().Rules[0].Probability, RuleNamed("r").Probability);
  EXPECT_EQ(TheFilter().Rules[1].Probability, 7);
}

TEST_F(MergeTest, RuleWithoutItsSetIsAddedAndTheIntegrityCheckFindsIt) {
  LoadTarget();
  zarvo::Filter source =
      testing::FilterOf({testing::FromSet(testing::Of({testing::Str("a")}, 0),
                                          ReplacementSource::SetInSequence, "left behind")},
                        {testing::SetOf("left behind", {})});
  Merge(source, [](MergeDialog& dialog) {
    SelectAll(List(dialog, "availableList"));
    Click(Find<QWidget>(dialog, "addButton"));
    PressOk(dialog);
  });
  EXPECT_EQ(TheFilter().Rules.Count(), 2U);
  dialogs_.ExpectMessage(
      MessageIcon::Question,
      "Some incorrect/unmatched references to sets/functions were found. Would you like to save "
      "the error report to the file \"report.txt\" (existing file will be overwritten)?",
      MessageButtons::YesNo, Answer::No);
  ClickOn("checkButton");
}

TEST_F(MergeTest, DocumentsOwnFileCanBeMergedIntoIt) {
  LoadTarget();
  Merge(PathOf("target.zvf"), [](MergeDialog& dialog) {
    AddAll(dialog);
    PressOk(dialog);
  });
  EXPECT_EQ(NamesOf(TheFilter().Rules), Names({"r", "r"}));
}

TEST_F(MergeTest, OpenEditorsShowTheNewContentFromItsStart) {
  LoadTarget();
  TheFilter().Rules.Append(RuleNamed("last"));
  for (const char* button : {"editRulesButton", "editFunctionsButton", "editSetsButton"}) {
    ClickOn(button);
  }
  auto& rules = Find<ObjectTabs>(Editor("RulesEditor"), "ruleTabs");
  const auto& functions = Find<ObjectTabs>(Editor("FunctionsEditor"), "functionTabs");
  const auto& sets = Find<ObjectTabs>(Editor("SetsEditor"), "setTabs");
  QTest::mouseClick(&rules, Qt::LeftButton, {}, rules.tabRect(1).center());
  ASSERT_EQ(rules.currentIndex(), 1);
  Doc().Saved = true;
  Merge(Source(), [](MergeDialog& dialog) {
    AddAll(dialog);
    PressOk(dialog);
  });
  EXPECT_EQ(rules.count(), 4);
  EXPECT_EQ(rules.Caption(3), "r2");
  EXPECT_EQ(rules.currentIndex(), 0);
  EXPECT_EQ(functions.count(), 3);
  EXPECT_EQ(functions.Caption(2), "f2");
  EXPECT_EQ(sets.count(), 3);
  EXPECT_EQ(sets.Caption(2), "s2");
  EXPECT_FALSE(Doc().Saved);
}

TEST_F(MergeTest, PreviewIsNotReset) {
  auto& bar = Find<QProgressBar>(window_->Preview(), "progressBar");
  auto& modified = Find<ByteTextEdit>(window_->Preview(), "modifiedEdit");
  bar.setValue(50);
  modified.SetBytes("result");
  Merge(Source(), [](MergeDialog& dialog) {
    AddAll(dialog);
    PressOk(dialog);
  });
  EXPECT_EQ(bar.value(), 50);
  EXPECT_EQ(modified.Bytes(), "result");
}

TEST_F(MergeTest, MergedAndSavedItIsTheFileLaidDownByHand) {
  window_->LoadDocument(
      QString::fromStdString(folder_.Write("target.zvf", testing::Golden("worked-example"))));
  ExpectOpen(QString::fromStdString(folder_.Write("source.zvf", testing::Golden("format-v1"))));
  ExpectLockedSource();
  AnswerPassword(QStringLiteral("cat"));
  ShowDialog([](MergeDialog& dialog) {
    AddAll(dialog);
    PressOk(dialog);
  });
  window_->Save();
  EXPECT_TRUE(Doc().Saved);
  EXPECT_EQ(folder_.Read("target.zvf"), testing::Golden("merged"));
}

TEST_F(MergeTest, ListsOfOtherVersionsStoreWhatIsAddedToThem) {
  window_->LoadDocument(
      QString::fromStdString(folder_.Write("target.zvf", testing::Golden("other-lists"))));
  Merge(Source(), [](MergeDialog& dialog) {
    AddAll(dialog);
    PressOk(dialog);
  });
  window_->Save();
  const zarvo::Filter saved = ReadFilter("target.zvf");
  EXPECT_EQ(NamesOf(saved.Rules), Names({"r1", "r2"}));
  EXPECT_EQ(NamesOf(saved.Functions), Names({"f1", "f2"}));
  EXPECT_EQ(NamesOf(saved.Sets), Names({"s1", "s2"}));
}

// ---- Help

TEST_F(MergeTest, HelpShowsItsTopicAndCanBeReadMeanwhile) {
  folder_.Write("Zarvo Composer.html", "<p>contents</p><h2 id='topic-106'>Merge</h2>");
  Merge(Source(), [this](MergeDialog& dialog) {
    Click(Find<QWidget>(dialog, "helpButton"));
    auto& help = Get("HelpWindow");
    EXPECT_TRUE(help.isVisible());
    EXPECT_TRUE(dialog.isVisible());
    const QUrl shown = Get<QTextBrowser>("helpBrowser").source();
    EXPECT_EQ(shown.toLocalFile(), PathOf("Zarvo Composer.html"));
    EXPECT_EQ(shown.fragment(), "topic-106");
    // Keys that come from the system reach it, as they don't reach a window that is blocked.
    testing::Activate(help);
    QTest::keyClick(window_->windowHandle(), Qt::Key_Escape);
    EXPECT_TRUE(window_->isVisible());
    QTest::keyClick(help.windowHandle(), Qt::Key_Escape);
    EXPECT_FALSE(help.isVisible());
    testing::Activate(dialog);
    PressCancel(dialog);
  });
}

TEST_F(MergeTest, HelpThatStaysOpenIsThereAfterTheDialog) {
  folder_.Write("Zarvo Composer.html", "<h2 id='topic-106'>Merge</h2>");
  Merge(Source(), [this](MergeDialog& dialog) {
    Click(Find<QWidget>(dialog, "helpButton"));
    testing::Activate(dialog);
    PressCancel(dialog);
  });
  EXPECT_TRUE(Get("HelpWindow").isVisible());
  Merge(Source(), [this](MergeDialog& dialog) {
    Click(Find<QWidget>(dialog, "helpButton"));
    testing::Activate(Get("HelpWindow"));
    QTest::keyClick(Get("HelpWindow").windowHandle(), Qt::Key_Escape);
    EXPECT_FALSE(Get("HelpWindow").isVisible());
    testing::Activate(dialog);
    PressCancel(dialog);
  });
}

TEST_F(MergeTest, MissingHelpIsReportedWithItsPath) {
  Merge(Source(), [this](MergeDialog& dialog) {
    ExpectExclamation("The help file " + folder_.File("Zarvo Composer.html") + " can't be found.");
    Click(Find<QWidget>(dialog, "helpButton"));
    EXPECT_TRUE(dialogs_.IsDone());
    PressCancel(dialog);
  });
}

}  // namespace
}  // namespace zarvo
