#include "tests/gui/merge_fixture.h"

namespace zarvo::testing {
namespace {

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
    const QFontMetrics metrics = dialog.fontMetrics();
    EXPECT_EQ(dialog.width(), 219 * metrics.averageCharWidth() / 4);
    EXPECT_EQ(dialog.height(), 162 * metrics.height() / 8);
    PressCancel(dialog);
  });
}

TEST_F(MergeTest, TipShowsTheWholeOfANameThatIsCut) {
  LoadTarget();
  Merge(Source(), [](MergeDialog& dialog) {
    const QModelIndex first = List(dialog, "availableList").model()->index(0, 0);
    EXPECT_NE(first.data(Qt::ToolTipRole).toString(), "");
    EXPECT_EQ(first.data(Qt::ToolTipRole), first.data(Qt::DisplayRole));
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

}  // namespace
}  // namespace zarvo::testing
