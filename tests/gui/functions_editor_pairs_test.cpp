// The pairs of the selected Function.
#include "tests/gui/functions_editor_fixture.h"
#include "tests/support/golden_filters.h"

namespace zarvo {
namespace {

using testing::FunctionOf;
using FunctionsEditorTest = testing::FunctionsEditorFixture;

TEST_F(FunctionsEditorTest, AddAppendsThePairAsTypedAndEmptiesBothEdits) {
  Show(WithPairs({{"a", "A"}}));
  AddPair(" b ", "B -> C");
  EXPECT_EQ(FunctionAt(0).Entries, (Entries{{"a", "A"}, {" b ", "B -> C"}}));
  EXPECT_EQ(Lines(), (Texts{"a \u2014> A", " b  \u2014> B -> C"}));
  EXPECT_EQ(ShownIn("argumentEdit"), "");
  EXPECT_EQ(ShownIn("valueEdit"), "");
  EXPECT_TRUE(WasModified());
}

TEST_F(FunctionsEditorTest, TheSameArgumentTwiceGivesTwoLinesInTheOrderOfAdding) {
  Show(WithPairs({}));
  AddPair("b", "1");
  AddPair("a", "2");
  AddPair("b", "3");
  AddPair("b", "1");
  EXPECT_EQ(FunctionAt(0).Entries, (Entries{{"b", "1"}, {"a", "2"}, {"b", "3"}, {"b", "1"}}));
  EXPECT_EQ(Lines(), (Texts{"b \u2014> 1", "a \u2014> 2", "b \u2014> 3", "b \u2014> 1"}));
}

TEST_F(FunctionsEditorTest, EmptyPairsAreAdded) {
  Show(WithPairs({}));
  ClickIn("addPairButton");
  AddPair("", "v");
  AddPair("a", "");
  EXPECT_EQ(FunctionAt(0).Entries, (Entries{{"", ""}, {"", "v"}, {"a", ""}}));
  EXPECT_EQ(Lines(), (Texts{" \u2014> ", " \u2014> v", "a \u2014> "}));
  EXPECT_TRUE(WasModified());
}

TEST_F(FunctionsEditorTest, BytesOfTheCodePageAreStored) {
  Show(WithPairs({}));
  const auto type = [this](const char* edit, const QString& characters) {
    FocusOn(edit);
    for (const QChar character : characters) {
      QTest::sendKeyEvent(QTest::Click, &In(edit), Qt::Key_unknown, character, Qt::NoModifier);
    }
  };
  type("argumentEdit", QStringLiteral("\u00DF"));
  type("valueEdit", QStringLiteral("\u2014\u0416"));
  ClickIn("addPairButton");
  EXPECT_EQ(FunctionAt(0).Entries, (Entries{{"\xDF", "\x97?"}}));
  EXPECT_EQ(Lines(), Texts{"\u00DF \u2014> \u2014?"});
}

TEST_F(FunctionsEditorTest, TypingAPairIsNoChangeUntilItIsAdded) {
  Show(WithPairs({}));
  TypeIn("argumentEdit", "a");
  TypeIn("valueEdit", "A");
  QTest::keyClick(&In("valueEdit"), Qt::Key_Return);
  EXPECT_EQ(FunctionAt(0).Entries, Entries());
  EXPECT_EQ(ShownIn("argumentEdit"), "a");
  EXPECT_TRUE(Editor().isVisible());
  EXPECT_FALSE(WasModified());
}

TEST_F(FunctionsEditorTest, AddWorksByTheKeyboard) {
  Show(WithPairs({}));
  testing::TypeInto(In("argumentEdit"), QStringLiteral("a"));
  QTest::keyClick(&In("argumentEdit"), Qt::Key_Tab);
  ASSERT_TRUE(In("valueEdit").hasFocus());
  QTest::keyClicks(&In("valueEdit"), QStringLiteral("A"));
  QTest::keyClick(&In("valueEdit"), Qt::Key_Tab);
  ASSERT_TRUE(In("addPairButton").hasFocus());
  QTest::keyClick(&In("addPairButton"), Qt::Key_Space);
  EXPECT_EQ(FunctionAt(0).Entries, (Entries{{"a", "A"}}));
}

TEST_F(FunctionsEditorTest, DeleteRemovesTheSelectedPair) {
  Show(WithPairs({{"a", "1"}, {"a", "1"}, {"b", "2"}}));
  ClickLine(1);
  TypeIn("argumentEdit", "typed");
  ClickIn("deletePairButton");
  EXPECT_EQ(FunctionAt(0).Entries, (Entries{{"a", "1"}, {"b", "2"}}));
  EXPECT_EQ(Lines(), (Texts{"a \u2014> 1", "b \u2014> 2"}));
  EXPECT_EQ(SelectedLine(), -1);
  EXPECT_EQ(ShownIn("argumentEdit"), "");
  EXPECT_TRUE(WasModified());
}

TEST_F(FunctionsEditorTest, DeleteWithoutASelectionRemovesNothing) {
  Show(WithPairs({{"a", "1"}, {"b", "2"}}));
  ClickIn("deletePairButton");
  EXPECT_EQ(FunctionAt(0).Entries.size(), 2U);
  EXPECT_TRUE(WasModified()) << "the function is stored all the same";
}

TEST_F(FunctionsEditorTest, DeleteAfterTheListHadOnlyTheFocusRemovesNothing) {
  Show(WithPairs({{"a", "1"}, {"b", "2"}}));
  FocusOn("pairList");
  ASSERT_EQ(SelectedLine(), -1);
  ASSERT_EQ(List().currentRow(), 0);
  FocusOn("deletePairButton");
  QTest::keyClick(&In("deletePairButton"), Qt::Key_Space);
  EXPECT_EQ(FunctionAt(0).Entries.size(), 2U);
}

TEST_F(FunctionsEditorTest, PairsAreSelectedAndDeletedByTheKeyboard) {
  Show(WithPairs({{"a", "1"}, {"b", "2"}, {"c", "3"}}));
  ClickLine(0);
  QTest::keyClick(&List(), Qt::Key_Down);
  QTest::keyClick(&List(), Qt::Key_Down);
  QTest::keyClick(&List(), Qt::Key_Up);
  EXPECT_EQ(SelectedLine(), 1);
  QTest::keyClick(&List(), Qt::Key_Tab);
  ASSERT_TRUE(In("deletePairButton").hasFocus());
  QTest::keyClick(&In("deletePairButton"), Qt::Key_Space);
  EXPECT_EQ(FunctionAt(0).Entries, (Entries{{"a", "1"}, {"c", "3"}}));
}

TEST_F(FunctionsEditorTest, LineBreaksInAPairKeepItOneLine) {
  Show(WithPairs({{"\r\n", "a\nb"}, {"c", "d"}}));
  EXPECT_EQ(Lines(), (Texts{"   \u2014> a b", "c \u2014> d"}));
  const int height = List().visualItemRect(List().item(0)).height();
  EXPECT_LE(height, 2 * List().fontMetrics().height());
  EXPECT_EQ(List().visualItemRect(List().item(1)).height(), height);
}

TEST_F(FunctionsEditorTest, ChangesGoToTheSelectedFunctionAlone) {
  Show(WithFunctions({FunctionOf("A", {{"a", "1"}}), FunctionOf("B", {{"b", "2"}})}));
  ClickTab(1);
  AddPair("c", "3");
  ClickLine(0);
  ClickIn("deletePairButton");
  ClickIn("argumentRadio");
  TypeName("x");
  EXPECT_EQ(FunctionAt(0), FunctionOf("A", {{"a", "1"}}));
  EXPECT_EQ(FunctionAt(1), FunctionOf("x", {{"c", "3"}}, 1));
}

TEST_F(FunctionsEditorTest, AnEditedFunctionOfAnotherVersionBecomesAWholeRecord) {
  Show(WithFunctions({testing::OfVersion<Function>(2)}));
  EXPECT_EQ(Captions(), Texts{""});
  AddPair("a", "A");
  EXPECT_EQ(FunctionAt(0), FunctionOf("", {{"a", "A"}}));
}

class FunctionsEditorPage : public FunctionsEditorTest,
                            public ::testing::WithParamInterface<const char*> {};

TEST_P(FunctionsEditorPage, ShowsADashInThePairs) {
  const CodePage page = WindowCodePage();
  SetWindowCodePage(CodePage::Find(GetParam()).value());
  Show(WithPairs({{"a", "A"}}));
  EXPECT_EQ(Lines(), Texts{"a \u2014> A"});
  SetWindowCodePage(page);
}

INSTANTIATE_TEST_SUITE_P(CodePages, FunctionsEditorPage,
                         ::testing::Values("windows-1250", "windows-1251", "windows-1252",
                                           "windows-1253", "windows-1254", "windows-1255",
                                           "windows-1256", "windows-1257", "windows-1258",
                                           "windows-874"),
                         [](const auto& page) {
                           std::string name = page.param;
                           name.erase(name.find('-'), 1);
                           return name;
                         });

}  // namespace
}  // namespace zarvo
