// What the four menus of the String Editor offer, and what choosing an item does.
#include "tests/gui/string_editor_fixture.h"

namespace zarvo {
namespace {

using testing::Call;
using testing::Code;
using testing::Items;
using testing::kAdd;
using testing::kMore;
using testing::kSeparator;
using testing::List;
using testing::NotList;
using testing::Of;
using testing::Str;

class StringEditorMenus : public testing::StringEditorFixture {
 protected:
  // The numbered items of one menu as a library file has them.
  static std::string NumberedStrings(int count) {
    std::string text = "[General]\nStrings=" + std::to_string(count) + "\n[Strings]\n";
    for (int n = 1; n <= count; ++n) {
      const std::string number = std::to_string(n);
      text += "Show" + number + "=1\nName" + number + "=n" + number + "\nString" + number + "=s" +
              number + "\n";
    }
    return text;
  }
};

// ---- What the menus offer

TEST_F(StringEditorMenus, WithoutALibraryOfferOnlyTheTwoCommands) {
  Open(Of({Str("a"), Code("b"), List("c")}));
  EXPECT_EQ(ItemsOf(kStrings), (Items{kAdd, kMore}));
  ClickTab(1);
  EXPECT_EQ(ItemsOf(kCodes), (Items{kAdd, kMore}));
  ClickTab(2);
  EXPECT_EQ(ItemsOf(kLists), (Items{kAdd, kMore}));
}

TEST_F(StringEditorMenus, OfferTheEntriesOfTheirSections) {
  WriteLibrary(
      "[General]\nStrings=2\nCharCodes=1\nCharLists=2\n"
      "[Strings]\nShow1=1\nName1=one\nShow2=1\nName2=two\n"
      "[CharCodes]\nShow1=1\nName1=code\n"
      "[CharLists]\nShow1=1\nName1=list\nShow2=0\nName2=hidden\n");
  Open(Of({Str("a"), Code("b"), List("c"), NotList("d")}));
  EXPECT_EQ(ItemsOf(kStrings), (Items{{"one", 104}, {"two", 105}, kSeparator, kAdd, kMore}));
  ClickTab(1);
  EXPECT_EQ(ItemsOf(kCodes), (Items{{"code", 104}, kSeparator, kAdd, kMore}));
  for (const int list : {2, 3}) {
    ClickTab(list);
    EXPECT_EQ(ItemsOf(kLists), (Items{{"list", 104}, kSeparator, kAdd, kMore}));
  }
}

TEST_F(StringEditorMenus, OfOnlyHiddenEntriesHaveNoSeparator) {
  WriteLibrary("[General]\nStrings=1\n[Strings]\nName1=one\n");
  Open(Of({Str("a")}));
  EXPECT_EQ(ItemsOf(kStrings), (Items{kAdd, kMore}));
}

TEST_F(StringEditorMenus, ShowNamesPlain) {
  WriteLibrary("[General]\nStrings=2\n[Strings]\nShow1=1\nName1=A & B\nShow2=1\nName2=C\tCtrl+C\n");
  Open(Of({Str("a")}));
  EXPECT_EQ(ItemsOf(kStrings),
            (Items{{"A && B", 104}, {"C Ctrl+C", 105}, kSeparator, kAdd, kMore}));
}

TEST_F(StringEditorMenus, OpenBelowTheLowerLeftCornerOfTheirButtons) {
  Open(Of({Str("a"), Code("b"), List("c")}));
  editor_->move(20, 20);
  int tab = 0;
  for (const char* button : {kStrings, kCodes, kLists}) {
    ClickTab(tab++);
    QMenu& menu = OpenMenu(button);
    EXPECT_EQ(menu.pos(), Get(button).mapToGlobal(QPoint(0, Get(button).height()))) << button;
    menu.close();
  }
}

TEST_F(StringEditorMenus, OfAnotherKindOpenNoMenu) {
  Open(Of({Str("a")}));
  for (const char* button : {kCodes, kLists, kFunctions}) {
    ASSERT_FALSE(IsEnabled(button));
    QTest::mouseClick(&Get(button), Qt::LeftButton);
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
  }
}

// ---- Choosing an entry

TEST_F(StringEditorMenus, AStringGivesItsTextAndRenderText) {
  WriteLibrary(
      "[General]\nStrings=1\n[Strings]\nShow1=1\nName1=one\nString1=text\nRender1=shown\n");
  Open(Of({Str("a"), Str("old")}));
  ClickTab(1);
  Choose(kStrings, "one");
  Subpattern expected = Str("text");
  expected.RenderText = "shown";
  EXPECT_EQ(Edited(), Of({Str("a"), expected}));
  EXPECT_EQ(TextOf("textEdit"), "text");
  EXPECT_EQ(TextOf("renderEdit"), "shown");
  EXPECT_EQ(TextOf("outputEdit"), "ashown");
  EXPECT_EQ(Captions(), (std::vector<std::string>{"a", "shown"}));
  EXPECT_EQ(Tabs().currentIndex(), 1);
}

TEST_F(StringEditorMenus, ACodeGivesItsCharacter) {
  WriteLibrary(
      "[General]\nCharCodes=3\n[CharCodes]\nShow1=1\nName1=one\nCode1=65\n"
      "Show2=1\nName2=zero\nCode2=0\nShow3=1\nName3=high\nCode3=255\nRender3=ff\n");
  Open(Of({Code("x")}));
  Choose(kCodes, "one");
  EXPECT_EQ(EditedAt(0), Code("A"));
  EXPECT_EQ(TextOf("textEdit"), "65");
  Choose(kCodes, "zero");
  EXPECT_EQ(EditedAt(0), Code(""));
  EXPECT_EQ(TextOf("textEdit"), "0");
  Choose(kCodes, "high");
  EXPECT_EQ(EditedAt(0).Contents, "\xFF");
  EXPECT_EQ(Captions(), (std::vector<std::string>{"ff"}));
}

TEST_F(StringEditorMenus, AListSaysWhetherItIsNegated) {
  WriteLibrary(
      "[General]\nCharLists=3\n[CharLists]\nShow1=1\nName1=plain\nList1=ab\nMode1=1\n"
      "Show2=1\nName2=negated\nList2=cd\nMode2=0\nShow3=1\nName3=without\nList3=ef\n");
  Open(Of({List("x")}));
  Choose(kLists, "negated");
  EXPECT_EQ(EditedAt(0), NotList("cd"));
  EXPECT_TRUE(IsChecked("negatedBox"));
  Choose(kLists, "plain");
  EXPECT_EQ(EditedAt(0), List("ab"));
  EXPECT_FALSE(IsChecked("negatedBox"));
  Choose(kLists, "negated");
  Choose(kLists, "without");
  EXPECT_EQ(EditedAt(0), List("ef"));
}

TEST_F(StringEditorMenus, AHiddenEntryKeepsItsNumberAndShiftsWhatLaterItemsStandFor) {
  WriteLibrary(
      "[General]\nStrings=4\n[Strings]\nShow1=1\nName1=one\nString1=1\nShow2=0\nName2=two\n"
      "String2=2\nShow3=1\nName3=three\nString3=3\nShow4=1\nName4=four\nString4=4\n");
  Open(Of({Str("old")}));
  EXPECT_EQ(ItemsOf(kStrings),
            (Items{{"one", 104}, {"three", 106}, {"four", 107}, kSeparator, kAdd, kMore}));
  Choose(kStrings, "one");
  EXPECT_EQ(EditedAt(0), Str("1"));
  Choose(kStrings, "three");
  EXPECT_EQ(EditedAt(0), Str("4"));
  Choose(kStrings, "four");
  EXPECT_EQ(EditedAt(0), Str("4"));
}

TEST_F(StringEditorMenus, AnItemThatStandsForNothingDoesNothing) {
  WriteLibrary(
      "[General]\nStrings=3\n[Strings]\nShow1=1\nName1=one\nString1=1\nName2=two\nString2=2\n"
      "Show3=1\nName3=three\nString3=3\n");
  Open(Of({Str("old")}));
  EXPECT_EQ(ItemsOf(kStrings), (Items{{"one", 104}, {"three", 106}, kSeparator, kAdd, kMore}));
  Choose(kStrings, "three");
  EXPECT_EQ(Edited(), Of({Str("old")}));
}

TEST_F(StringEditorMenus, OnlyTheFirstThirtyNumbersDoAnything) {
  WriteLibrary(NumberedStrings(31));
  Open(Of({Str("old")}));
  Choose(kStrings, "n31");
  EXPECT_EQ(EditedAt(0), Str("old"));
  Choose(kStrings, "n30");
  EXPECT_EQ(EditedAt(0), Str("s30"));
}

TEST_F(StringEditorMenus, ANumberThatDoesNothingIsNoRefusedChangeEither) {
  WriteLibrary(NumberedStrings(31));
  OpenLocked(Of({Str("old")}));
  Choose(kStrings, "n31");
  EXPECT_TRUE(dialogs_.IsDone());
  ExpectLockWarning();
  Choose(kStrings, "n30");
  EXPECT_TRUE(dialogs_.IsDone());
  EXPECT_EQ(EditedAt(0), Str("old"));
}

// ---- Functions

TEST_F(StringEditorMenus, FunctionsAreOfferedInTheirOrderAndNothingElse) {
  AddFunctions({"upper", "a&b", "lower"});
  Open(Of({Call("")}), Mode::Replacement);
  EXPECT_EQ(ItemsOf(kFunctions), (Items{{"upper", 104}, {"a&&b", 105}, {"lower", 106}}));
}

TEST_F(StringEditorMenus, WithoutFunctionsNoMenuOpens) {
  Open(Of({Call("")}), Mode::Replacement);
  ClickOn(kFunctions);
  EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
}

TEST_F(StringEditorMenus, AFunctionIsCalledAndTheCaretWaitsBetweenTheBrackets) {
  AddFunctions({"upper", "a&b"});
  Open(Of({Call("old(1)")}), Mode::Replacement);
  Choose(kFunctions, "a&&b");
  EXPECT_EQ(EditedAt(0), Call("a&b()"));
  EXPECT_EQ(TextOf("textEdit"), "a&b()");
  EXPECT_EQ(TextOf("outputEdit"), "{a&b()}");
  EXPECT_EQ(Captions(), (std::vector<std::string>{"{a&&b()}"}));
  EXPECT_EQ(QApplication::focusWidget(), &Get("textEdit"));
  EXPECT_FALSE(Get<QLineEdit>("textEdit").hasSelectedText());
  EXPECT_EQ(Get<QLineEdit>("textEdit").cursorPosition(), 4);
  QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("0,1"));
  EXPECT_EQ(EditedAt(0), Call("a&b(0,1)"));
}

TEST_F(StringEditorMenus, OnlyTheFirstThirtyFunctionsDoAnything) {
  for (int i = 1; i <= 31; ++i) AddFunctions({"f" + std::to_string(i)});
  Open(Of({Call("old()")}), Mode::Replacement);
  Choose(kFunctions, "f31");
  EXPECT_EQ(EditedAt(0), Call("old()"));
  Choose(kFunctions, "f30");
  EXPECT_EQ(EditedAt(0), Call("f30()"));
}

}  // namespace
}  // namespace zarvo
