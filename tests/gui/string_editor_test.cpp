#include "ui/string_editor.h"

#include <QClipboard>

#include "tests/gui/string_editor_fixture.h"

namespace zarvo {
namespace {

using testing::Call;
using testing::Code;
using testing::List;
using testing::NotList;
using testing::Of;
using testing::OfKind;
using testing::Str;

using Names = std::vector<std::string>;

using StringEditorTest = testing::StringEditorFixture;

Subpattern Rendered(Subpattern subpattern, std::string render_text) {
  subpattern.RenderText = std::move(render_text);
  return subpattern;
}

// ---- Opening

TEST_F(StringEditorTest, ShowsThePatternAsItIs) {
  const Pattern pattern =
      Of({Rendered(Str("ab"), "x"), List("cd"), NotList("e"), Code("F"), Str("")}, 1);
  Open(pattern);
  EXPECT_EQ(editor_->windowTitle(), "String Editor");

  EXPECT_EQ(Captions(), (Names{"x", "[c, d]", "[!e]", "F", ""}));
  EXPECT_EQ(Tabs().currentIndex(), 0);
  EXPECT_EQ(TextOf("outputEdit"), "x[c, d][!e]F");
  EXPECT_TRUE(Get<QLineEdit>("outputEdit").isReadOnly());
  EXPECT_EQ(TextOf("textEdit"), "ab");
  EXPECT_EQ(TextOf("renderEdit"), "x");
  EXPECT_EQ(CheckedKinds(), (Names{"stringRadio"}));
  EXPECT_EQ(EnabledMenus(), (Names{"stringsMenuButton"}));
  EXPECT_FALSE(IsChecked("mostSignificantBox"));
  EXPECT_EQ(QApplication::focusWidget(), &Get("textEdit"));
  EXPECT_EQ(Edited(), pattern);
}

TEST_F(StringEditorTest, GivesAnEmptyPatternOneEmptyString) {
  Open(Pattern());
  EXPECT_EQ(Edited(), Of({Str("")}));
  EXPECT_EQ(Captions(), (Names{""}));
  EXPECT_EQ(CheckedKinds(), (Names{"stringRadio"}));
  ExpectMoves(false, false, false);
}

TEST_F(StringEditorTest, LookingAtEverySubpatternChangesNothing) {
  const Pattern pattern = Of({Str("a"), Code("AB"), Code(""), NotList("e"), List(""), Call("f(1)"),
                              OfKind(1, "one"), OfKind(-5, "minus"), OfKind(99, "many")},
                             -7);
  Open(pattern);
  for (int i = 0; i < 9; ++i) {
    ClickTab(i);
    for (const char* edit : {"textEdit", "renderEdit"}) {
      Get(edit).setFocus(Qt::TabFocusReason);
      LeaveField();
    }
    EXPECT_EQ(Edited(), pattern) << i;
  }
}

TEST_F(StringEditorTest, ShowsEachKindInItsOwnWay) {
  Open(Of({Str("a"), List("bc"), NotList("d"), Code("A"), Call("f(1)"), Code("")}));
  const struct {
    const char* Text;
    const char* Radio;
    const char* Menu;
    bool IsList;
  } kinds[] = {{"a", "stringRadio", "stringsMenuButton", false},
               {"bc", "listRadio", "listsMenuButton", true},
               {"d", "listRadio", "listsMenuButton", true},
               {"65", "codeRadio", "codesMenuButton", false},
               {"f(1)", "functionRadio", "functionsMenuButton", false},
               {"0", "codeRadio", "codesMenuButton", false}};
  for (int i = 0; i < 6; ++i) {
    ClickTab(i);
    EXPECT_EQ(TextOf("textEdit"), kinds[i].Text);
    EXPECT_EQ(CheckedKinds(), (Names{kinds[i].Radio})) << i;
    EXPECT_EQ(EnabledMenus(), (Names{kinds[i].Menu})) << i;
    EXPECT_EQ(IsEnabled("negatedBox"), kinds[i].IsList) << i;
    if (kinds[i].IsList) {
      EXPECT_EQ(IsChecked("negatedBox"), i == 2);
    }
  }
}

TEST_F(StringEditorTest, ChecksNoKindForANumberThatMeansNone) {
  Open(Of({Str("a"), OfKind(1, "text"), OfKind(1234567, "more")}));
  for (const int i : {1, 2}) {
    ClickTab(i);
    EXPECT_EQ(CheckedKinds(), Names());
    EXPECT_EQ(EnabledMenus(), Names());
    EXPECT_FALSE(IsEnabled("negatedBox"));
    EXPECT_EQ(Captions().at(static_cast<std::size_t>(i)), "");
  }
  EXPECT_EQ(TextOf("textEdit"), "more");
  Type("textEdit", "new");
  EXPECT_EQ(EditedAt(2), OfKind(1234567, "new"));
  ClickOn("listRadio");
  EXPECT_EQ(EditedAt(2), List("new"));
  ClickTab(0);
  EXPECT_EQ(CheckedKinds(), (Names{"stringRadio"}));
}

// ---- Tabs and texts

TEST_F(StringEditorTest, ThirteenBytesStandWholeOnATabAndFourteenAreCut) {
  Open(Of({Str("1234567890123"), Str("12345678901234")}));
  EXPECT_EQ(Captions(), (Names{"1234567890123", "1234567890..."}));
  Type("textEdit", "abcdefghijklmn");
  EXPECT_EQ(Captions().at(0), "abcdefghij...");
}

TEST_F(StringEditorTest, TabsShowTheTextPlainWithoutMnemonicsOrLineBreaks) {
  Open(Of({Str("a&b"), Str("c\r\nd\te"), Str("<b>f</b>")}));
  EXPECT_EQ(Captions(), (Names{"a&&b", "c  d e", "<b>f</b>"}));
}

TEST_F(StringEditorTest, CountsTheBytesOfACaptionAndNotOfItsEscapes) {
  Open(Of({Str("&&&&&&&&&&&&&")}));
  EXPECT_EQ(Captions().at(0), std::string(26, '&'));
}

TEST_F(StringEditorTest, TypingStoresAndNamesTheTabAtOnceAndLeavingShowsTheOutput) {
  Open(Of({Str("a"), Str("b")}));
  Type("textEdit", "new");
  EXPECT_EQ(EditedAt(0), Str("new"));
  EXPECT_EQ(Captions(), (Names{"new", "b"}));
  EXPECT_EQ(TextOf("outputEdit"), "ab");
  LeaveField();
  EXPECT_EQ(TextOf("outputEdit"), "newb");
  Type("renderEdit", "shown");
  EXPECT_EQ(EditedAt(0), Rendered(Str("new"), "shown"));
  EXPECT_EQ(Captions(), (Names{"shown", "b"}));
  EXPECT_EQ(TextOf("outputEdit"), "newb");
  LeaveField();
  EXPECT_EQ(TextOf("outputEdit"), "shownb");
}

TEST_F(StringEditorTest, TheCaretStaysWhileTheWindowIsLeftAndEnteredAgain) {
  Open(Of({Str("abcd")}));
  auto& edit = Get<QLineEdit>("textEdit");
  testing::TypeInto(edit, {});
  edit.setCursorPosition(1);
  LeaveField();
  EXPECT_EQ(edit.cursorPosition(), 1);
  edit.setFocus(Qt::OtherFocusReason);
  QTest::keyClicks(&edit, QStringLiteral("x"));
  EXPECT_EQ(EditedAt(0), Str("axbcd"));
}

TEST_F(StringEditorTest, AMenuOverAFieldIsNoEndOfItsEditing) {
  Open(Of({Str("a")}));
  Type("textEdit", "new");
  QFocusEvent popup(QEvent::FocusOut, Qt::PopupFocusReason);
  QApplication::sendEvent(&Get("textEdit"), &popup);
  EXPECT_EQ(TextOf("outputEdit"), "a");
}

TEST_F(StringEditorTest, PastedTextIsStoredAsItIsShown) {
  Open(Of({Str("")}));
  QApplication::clipboard()->setText(QStringLiteral("x\u0416y"));
  testing::TypeInto(Get("textEdit"), {});
  QTest::keySequence(&Get("textEdit"), QKeySequence::Paste);
  EXPECT_EQ(EditedAt(0), Str("x?y"));
  EXPECT_EQ(TextOf("textEdit"), "x?y");
}

TEST_F(StringEditorTest, UndoDoesNotBringBackTheTextOfAnotherSubpattern) {
  Open(Of({Str("a"), Str("b")}));
  Type("textEdit", "first");
  ClickTab(1);
  testing::TypeInto(Get("textEdit"), {});
  QTest::keySequence(&Get("textEdit"), QKeySequence::Undo);
  EXPECT_EQ(Edited(), Of({Str("first"), Str("b")}));
}

TEST_F(StringEditorTest, BytesOfTheUpperHalfAreKept) {
  Open(Of({Str("\xE9\xFF")}));
  testing::TypeInto(Get("textEdit"), {});
  QTest::keyClick(&Get("textEdit"), Qt::Key_End);
  QTest::sendKeyEvent(QTest::Click, &Get("textEdit"), Qt::Key_unknown, QStringLiteral("\u20AC"),
                      Qt::NoModifier);
  EXPECT_EQ(EditedAt(0), Str("\xE9\xFF\x80"));
}

TEST_F(StringEditorTest, ChoosingATabShowsItsSubpattern) {
  Open(Of({Str("a"), Rendered(Code("B"), "shown")}, 1));
  ClickTab(1);
  EXPECT_EQ(TextOf("textEdit"), "66");
  EXPECT_EQ(TextOf("renderEdit"), "shown");
  EXPECT_TRUE(IsChecked("mostSignificantBox"));
  ExpectMoves(true, true, false);
  ClickTab(0);
  EXPECT_EQ(TextOf("textEdit"), "a");
  EXPECT_EQ(TextOf("renderEdit"), "");
  EXPECT_FALSE(IsChecked("mostSignificantBox"));
  ExpectMoves(true, false, true);
}

TEST_F(StringEditorTest, ArrowKeysChooseTabsToo) {
  Open(Of({Str("a"), Str("b")}));
  Tabs().setFocus(Qt::TabFocusReason);
  QTest::keyClick(&Tabs(), Qt::Key_Right);
  EXPECT_EQ(TextOf("textEdit"), "b");
}

// ---- Kinds

TEST_F(StringEditorTest, TypedDigitsAreTheCharacterAndBecomeTextAgain) {
  Open(Of({Str("")}));
  ClickOn("codeRadio");
  EXPECT_EQ(EditedAt(0), Code(""));
  EXPECT_EQ(TextOf("textEdit"), "0");
  Type("textEdit", "65");
  EXPECT_EQ(EditedAt(0), Code("A"));
  EXPECT_EQ(Captions(), (Names{"A"}));
  ClickOn("stringRadio");
  EXPECT_EQ(EditedAt(0), Str("65"));
  EXPECT_EQ(TextOf("textEdit"), "65");
  EXPECT_EQ(Captions(), (Names{"65"}));
  EXPECT_EQ(TextOf("outputEdit"), "65");
}

TEST_F(StringEditorTest, AnEmptyCodeIsTheCodeZeroAndLeavingShowsIt) {
  Open(Of({Code("A")}));
  Type("textEdit", "");
  EXPECT_EQ(EditedAt(0), Code(""));
  EXPECT_EQ(TextOf("textEdit"), "");
  EXPECT_EQ(Captions(), (Names{"{0}"}));
  LeaveField();
  EXPECT_EQ(TextOf("textEdit"), "0");
  EXPECT_EQ(TextOf("outputEdit"), "{0}");
}

TEST_F(StringEditorTest, ACodeAbove255IsItsLowestByteAndLeavingShowsIt) {
  Open(Of({Code("A")}));
  Type("textEdit", "322");
  EXPECT_EQ(EditedAt(0), Code("B"));
  EXPECT_EQ(TextOf("textEdit"), "322");
  LeaveField();
  EXPECT_EQ(TextOf("textEdit"), "66");
  EXPECT_EQ(EditedAt(0), Code("B"));
}

TEST_F(StringEditorTest, AFunctionOrListMadeOfACodeHoldsItsDigits) {
  Open(Of({Code("A")}));
  ClickOn("listRadio");
  EXPECT_EQ(EditedAt(0), List("65"));
  Open(Of({Code("A")}), Mode::Replacement);
  ClickOn("functionRadio");
  EXPECT_EQ(EditedAt(0), Call("65"));
}

TEST_F(StringEditorTest, ChoosingAKindEnablesItsMenuAndNamesTheTab) {
  Open(Of({Str("66")}));
  ClickOn("listRadio");
  EXPECT_EQ(EnabledMenus(), (Names{"listsMenuButton"}));
  EXPECT_TRUE(IsEnabled("negatedBox"));
  EXPECT_EQ(Captions(), (Names{"[6, 6]"}));
  ClickOn("codeRadio");
  EXPECT_EQ(EnabledMenus(), (Names{"codesMenuButton"}));
  EXPECT_FALSE(IsEnabled("negatedBox"));
  EXPECT_EQ(Captions(), (Names{"B"}));
  ClickOn("stringRadio");
  EXPECT_EQ(EnabledMenus(), (Names{"stringsMenuButton"}));
}

TEST_F(StringEditorTest, NegToggles) {
  Open(Of({List("ab")}));
  ClickOn("negatedBox");
  EXPECT_EQ(EditedAt(0), NotList("ab"));
  EXPECT_TRUE(IsChecked("negatedBox"));
  EXPECT_EQ(Captions(), (Names{"[!a, b]"}));
  ClickOn("negatedBox");
  EXPECT_EQ(EditedAt(0), List("ab"));
  EXPECT_FALSE(IsChecked("negatedBox"));
}

TEST_F(StringEditorTest, NegStaysCheckedForTheNextList) {
  Open(Of({NotList("ab"), Str("c")}));
  ClickTab(1);
  EXPECT_TRUE(IsChecked("negatedBox"));
  EXPECT_FALSE(IsEnabled("negatedBox"));
  ClickOn("listRadio");
  EXPECT_EQ(EditedAt(1), NotList("c"));
}

TEST_F(StringEditorTest, ArrowKeysGoFromKindToKindAndSpaceChooses) {
  Open(Of({Str("hello")}));
  Get("stringRadio").setFocus(Qt::TabFocusReason);
  // Past the kind's menu, and past the code, which would have lost the text.
  for (const char* next : {"stringsMenuButton", "codeRadio", "listRadio"}) {
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
    EXPECT_TRUE(Get(next).hasFocus()) << next;
    EXPECT_EQ(CheckedKinds(), (Names{"stringRadio"}));
  }
  QTest::keyClick(&Get("listRadio"), Qt::Key_Space);
  EXPECT_EQ(CheckedKinds(), (Names{"listRadio"}));
  EXPECT_EQ(EditedAt(0), List("hello"));
}

TEST_F(StringEditorTest, KindThatIsCheckedStaysWhenItIsChosenAgain) {
  Open(Of({Str("a")}));
  Get("stringRadio").setFocus(Qt::TabFocusReason);
  QTest::keyClick(&Get("stringRadio"), Qt::Key_Space);
  EXPECT_EQ(CheckedKinds(), (Names{"stringRadio"}));
}

// ---- Modes

TEST_F(StringEditorTest, AReplacementHasNoListsAndNoMostSignificantOne) {
  Open(Of({Str("a")}, 0), Mode::Replacement);
  for (const char* name :
       {"listRadio", "listsMenuButton", "negatedBox", "mostSignificantBox", "findButton"}) {
    EXPECT_FALSE(IsEnabled(name)) << name;
  }
  for (const char* name : {"stringRadio", "codeRadio", "functionRadio"}) {
    EXPECT_TRUE(IsEnabled(name)) << name;
  }
  EXPECT_TRUE(IsChecked("mostSignificantBox"));
  ClickOn("functionRadio");
  EXPECT_EQ(EditedAt(0), Call("a"));
  EXPECT_EQ(EnabledMenus(), (Names{"functionsMenuButton"}));
  for (const char* name : {"listRadio", "mostSignificantBox", "findButton"}) {
    EXPECT_FALSE(IsEnabled(name)) << name;
  }
}

TEST_F(StringEditorTest, APatternHasNoFunctions) {
  Open(Of({Str("a")}));
  EXPECT_FALSE(IsEnabled("functionRadio"));
  EXPECT_FALSE(IsEnabled("functionsMenuButton"));
  for (const char* name :
       {"stringRadio", "codeRadio", "listRadio", "mostSignificantBox", "findButton"}) {
    EXPECT_TRUE(IsEnabled(name)) << name;
  }
}

TEST_F(StringEditorTest, AListThatAFileBroughtIntoAReplacementGetsItsMenuBack) {
  Open(Of({Str("a"), NotList("b")}), Mode::Replacement);
  ClickTab(1);
  EXPECT_EQ(CheckedKinds(), (Names{"listRadio"}));
  EXPECT_FALSE(IsEnabled("listRadio"));
  EXPECT_EQ(EnabledMenus(), (Names{"listsMenuButton"}));
  EXPECT_TRUE(IsEnabled("negatedBox"));
}

// ---- The end

TEST_F(StringEditorTest, OkAcceptsAndCancelRejects) {
  Open(Of({Str("a")}));
  Type("textEdit", "b");
  ClickOn("okButton");
  EXPECT_EQ(editor_->result(), QDialog::Accepted);
  EXPECT_FALSE(editor_->isVisible());
  EXPECT_EQ(Edited(), Of({Str("b")}));
  Open(Of({Str("a")}));
  ClickOn("cancelButton");
  EXPECT_EQ(editor_->result(), QDialog::Rejected);
  EXPECT_FALSE(editor_->isVisible());
}

TEST_F(StringEditorTest, EnterInAFieldIsOkAndEscapeIsCancel) {
  for (const char* field : {"textEdit", "renderEdit"}) {
    Open(Of({Str("a")}));
    Type(field, "b");
    QTest::keyClick(&Get(field), Qt::Key_Return);
    EXPECT_EQ(editor_->result(), QDialog::Accepted) << field;
    EXPECT_FALSE(editor_->isVisible());
  }
  Open(Of({Str("a")}));
  QTest::keyClick(&Get("textEdit"), Qt::Key_Escape);
  EXPECT_EQ(editor_->result(), QDialog::Rejected);
  EXPECT_FALSE(editor_->isVisible());
}

TEST_F(StringEditorTest, HelpShowsItsContextAndStaysOpen) {
  Open(Of({Str("a")}));
  ClickOn("helpButton");
  EXPECT_EQ(help_, (std::vector<int>{104}));
  EXPECT_TRUE(editor_->isVisible());
}

// ---- Size

TEST_F(StringEditorTest, FitsASmallScreenAlsoWithAThousandSubpatterns) {
  std::vector<Subpattern> subpatterns;
  for (int i = 0; i < 1000; ++i) subpatterns.push_back(Str("subpattern " + std::to_string(i)));
  Open(Of(subpatterns));
  EXPECT_EQ(Tabs().count(), 1000);
  EXPECT_LE(editor_->width(), 1024);
  EXPECT_LE(editor_->height(), 700);
  Tabs().setCurrentIndex(999);
  EXPECT_EQ(TextOf("textEdit"), "subpattern 999");
  ClickOn("deleteButton");
  EXPECT_EQ(Edited().Subpatterns.size(), 999U);
  EXPECT_EQ(Captions().back(), "subpattern...");
}

TEST_F(StringEditorTest, NewTakesTheKeysAndADisabledMoveGivesThemToTheTabs) {
  Open(Of({Str("a")}));
  ClickOn("newButton");
  EXPECT_TRUE(Get("textEdit").hasFocus());
  ClickTab(0);
  Get("moveRightButton").setFocus(Qt::TabFocusReason);
  QTest::keyClick(&Get("moveRightButton"), Qt::Key_Space);
  EXPECT_FALSE(Get("moveRightButton").isEnabled());
  EXPECT_TRUE(Get("subsTabs").hasFocus());
}

}  // namespace
}  // namespace zarvo
