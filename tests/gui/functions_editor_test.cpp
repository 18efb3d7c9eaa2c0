// The Functions editor and the objects on its tabs.
#include "ui/functions_editor.h"

#include <QAccessible>
#include <QLabel>

#include "tests/gui/functions_editor_fixture.h"
#include "ui/icon_button.h"

namespace zarvo {
namespace {

using testing::FunctionOf;
using FunctionsEditorTest = testing::FunctionsEditorFixture;

TEST(NewFunctionName, CountsInBaseFourteen) {
  const std::pair<std::size_t, const char*> names[] = {
      {1, "Function 1"},     {9, "Function 9"},      {10, "Function a"},     {11, "Function b"},
      {12, "Function c"},    {13, "Function d"},     {14, "Function 10"},    {15, "Function 11"},
      {24, "Function 1a"},   {27, "Function 1d"},    {28, "Function 20"},    {195, "Function dd"},
      {196, "Function 100"}, {2743, "Function ddd"}, {2744, "Function 1000"}};
  for (const auto& [count, name] : names) EXPECT_EQ(NewFunctionName(count), name);
}

TEST(PairLine, IsTheArgumentAnArrowAndTheValue) {
  EXPECT_EQ(PairLine({"a", "A"}), "a \x97> A");
  EXPECT_EQ(PairLine({"", ""}), " \x97> ");
  EXPECT_EQ(PairLine({"\x97", " > "}), "\x97 \x97>  > ");
}

// ---- The window

TEST_F(FunctionsEditorTest, OpeningWithoutFunctionsMakesTheFirst) {
  Show({});
  EXPECT_EQ(TheFilter().Functions.Elements, std::vector<Function>{FunctionOf("Function 1", {})});
  EXPECT_EQ(Captions(), Texts{"Function 1"});
  EXPECT_EQ(Selected(), 0);
  EXPECT_EQ(ShownIn("nameEdit"), "Function 1");
  EXPECT_EQ(CheckedReturn(), "empty ");
  EXPECT_EQ(Lines(), Texts());
  EXPECT_EQ(Count(), "1");
  EXPECT_FALSE(IsEnabled("deleteButton"));
  EXPECT_TRUE(WasModified());
}

TEST_F(FunctionsEditorTest, OpeningALockedFilterWithoutFunctionsMakesNone) {
  ShowLocked({});
  EXPECT_EQ(TheFilter().Functions.Count(), 0U);
  EXPECT_EQ(Captions(), Texts());
  EXPECT_EQ(CheckedReturn(), "");
  EXPECT_FALSE(WasModified());
  for (const char* control : {"functionPanel", "nameEdit", "argumentEdit", "valueEdit",
                              "addPairButton", "deleteButton", "exportButton"}) {
    EXPECT_FALSE(IsEnabled(control)) << control;
  }
  for (const char* control : {"newButton", "importButton", "helpButton"}) {
    EXPECT_TRUE(IsEnabled(control)) << control;
  }
}

TEST_F(FunctionsEditorTest, OpeningShowsTheFirstFunctionAndIsNoChange) {
  Show(WithFunctions({FunctionOf("first", {{"a", "A"}, {"b", "B"}}, 1), FunctionOf("second", {})}));
  EXPECT_EQ(Captions(), (Texts{"first", "second"}));
  EXPECT_EQ(Selected(), 0);
  EXPECT_EQ(ShownIn("nameEdit"), "first");
  EXPECT_EQ(CheckedReturn(), "argument ");
  EXPECT_EQ(ShownIn("argumentEdit"), "");
  EXPECT_EQ(ShownIn("valueEdit"), "");
  EXPECT_EQ(Lines(), (Texts{"a \u2014> A", "b \u2014> B"}));
  EXPECT_EQ(Count(), "2");
  EXPECT_TRUE(IsEnabled("deleteButton"));
  Settle();
  EXPECT_FALSE(WasModified());
}

TEST_F(FunctionsEditorTest, HasItsTextsTipsAndNames) {
  Show(Abc());
  const std::pair<const char*, const char*> tips[] = {{"newButton", "New"},
                                                      {"deleteButton", "Delete"},
                                                      {"exportButton", "Export"},
                                                      {"importButton", "Import"},
                                                      {"helpButton", "Help"}};
  for (const auto& [name, tip] : tips) {
    auto& button = In<IconButton>(name);
    EXPECT_EQ(button.toolTip().toStdString(), tip);
    EXPECT_EQ(button.text(), "") << name;
    EXPECT_FALSE(button.icon().isNull()) << name;
    EXPECT_FALSE(button.HotIcon().isNull()) << name;
  }
  const std::pair<const char*, const char*> texts[] = {{"addPairButton", "Add..."},
                                                       {"deletePairButton", "Delete"},
                                                       {"emptyRadio", "Empty string"},
                                                       {"argumentRadio", "Argument"}};
  for (const auto& [name, text] : texts) {
    EXPECT_EQ(In<QAbstractButton>(name).text().toStdString(), text);
  }
  const std::pair<const char*, const char*> labels[] = {{"nameLabel", "Name:"},
                                                        {"returnLabel", "Default return:"},
                                                        {"argumentLabel", "Argument:"},
                                                        {"valueLabel", "-> Value:"}};
  for (const auto& [name, text] : labels) {
    EXPECT_EQ(In<QLabel>(name).text().toStdString(), text);
  }
  const std::pair<const char*, const char*> names[] = {{"nameEdit", "Name"},
                                                       {"helpButton", "Help"},
                                                       {"argumentEdit", "Argument"},
                                                       {"valueEdit", "-> Value"},
                                                       {"pairList", "Pairs"},
                                                       {"addPairButton", "Add pair"},
                                                       {"deletePairButton", "Delete pair"},
                                                       {"exportButton", "Export"},
                                                       {"importButton", "Import"}};
  for (const auto& [control, name] : names) {
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&In(control))->text(QAccessible::Name), name);
  }
  EXPECT_EQ(Tabs().accessibleName(), "Functions");
}

TEST_F(FunctionsEditorTest, TheMainWindowsButtonDoesNotFillAnOpenEditorAnew) {
  Show(WithPairs({{"a", "A"}}));
  TypeIn("argumentEdit", "typed");
  ClickLine(0);
  ShowEditor();
  EXPECT_TRUE(QTest::qWaitFor([this] { return QApplication::activeWindow() == &Editor(); }));
  EXPECT_EQ(ShownIn("argumentEdit"), "typed");
  EXPECT_EQ(SelectedLine(), 0);
}

TEST_F(FunctionsEditorTest, OpeningAgainBuildsTheTabsAnewAndKeepsThePosition) {
  Show(Abc());
  ClickTab(1);
  QTest::keyClick(&Editor(), Qt::Key_Escape);
  EXPECT_FALSE(Editor().isVisible());
  TheFilter().Functions.Append(FunctionOf("D", {}));
  ShowEditor();
  EXPECT_EQ(Captions(), (Texts{"A", "B", "C", "D"}));
  EXPECT_EQ(Selected(), 1);
  EXPECT_EQ(ShownIn("nameEdit"), "B");
  EXPECT_EQ(Count(), "4");
}

TEST_F(FunctionsEditorTest, ANewDocumentLeavesAnOpenEditorEmptyUntilNewIsPressed) {
  Show(WithPairs({{"a", "A"}}));
  window_->NewDocument();
  EXPECT_EQ(TheFilter().Functions.Count(), 0U);
  EXPECT_EQ(Captions(), Texts());
  EXPECT_EQ(ShownIn("nameEdit"), "");
  EXPECT_EQ(CheckedReturn(), "");
  EXPECT_EQ(Lines(), Texts());
  EXPECT_FALSE(IsEnabled("functionPanel"));
  EXPECT_FALSE(WasModified());
  ClickIn("newButton");
  EXPECT_EQ(Captions(), Texts{"Function 1"});
  EXPECT_EQ(CheckedReturn(), "empty ");
  EXPECT_TRUE(IsEnabled("functionPanel"));
}

TEST_F(FunctionsEditorTest, ALockThatHidesOtherEditorsLeavesThisOneOpen) {
  Show(Abc());
  ClickLock();
  EXPECT_TRUE(Editor().isVisible());
}

// ---- Functions

TEST_F(FunctionsEditorTest, TenthToFifteenthAreNamedInBaseFourteen) {
  Show(WithFunctions(std::vector<Function>(9, FunctionOf("f", {}))));
  for (const char* name :
       {"Function a", "Function b", "Function c", "Function d", "Function 10", "Function 11"}) {
    ClickIn("newButton");
    EXPECT_EQ(TheFilter().Functions.Elements.back(), FunctionOf(name, {}));
    EXPECT_EQ(Captions().back(), name);
    EXPECT_EQ(ShownIn("nameEdit"), name);
  }
  EXPECT_EQ(Selected(), 14);
  EXPECT_EQ(Count(), "15");
}

TEST_F(FunctionsEditorTest, NewAppendsAnEmptyFunctionThatReturnsTheEmptyString) {
  Show(WithFunctions({FunctionOf("Function 2", {{"a", "A"}}, 1)}));
  TypeIn("argumentEdit", "typed");
  ClickIn("newButton");
  EXPECT_EQ(FunctionAt(1), FunctionOf("Function 2", {}));
  EXPECT_EQ(Captions(), (Texts{"Function 2", "Function 2"}));
  EXPECT_EQ(Selected(), 1);
  EXPECT_EQ(CheckedReturn(), "empty ");
  EXPECT_EQ(ShownIn("argumentEdit"), "");
  EXPECT_EQ(Lines(), Texts());
  EXPECT_EQ(Count(), "2");
  EXPECT_TRUE(IsEnabled("deleteButton"));
  EXPECT_TRUE(WasModified());
}

TEST_F(FunctionsEditorTest, OnlyYesDeletes) {
  Show(WithFunctions({FunctionOf("a \"b\" & <i>", {}), FunctionOf("B", {})}));
  ExpectQuestion("Do you really want to delete function \"a \"b\" & <i>\"?", Answer::No);
  ClickIn("deleteButton");
  EXPECT_TRUE(dialogs_.IsDone());
  EXPECT_EQ(TheFilter().Functions.Count(), 2U);
  EXPECT_FALSE(WasModified());
}

TEST_F(FunctionsEditorTest, TheNameIsStoredAtEachKeyWithoutAReload) {
  Show(WithPairs({{"a", "A"}}));
  TypeIn("argumentEdit", "typed");
  ClickLine(0);
  testing::TypeInto(Name(), {});
  QTest::keyClick(&Name(), Qt::Key_Home);
  const std::pair<char, const char*> keys[] = {{'x', "xupper"}, {'y', "xyupper"}};
  for (const auto& [key, stored] : keys) {
    QTest::keyClick(&Name(), key);
    EXPECT_EQ(FunctionAt(0).Name, stored);
    EXPECT_EQ(Captions()[0], stored);
    EXPECT_TRUE(WasModified());
  }
  EXPECT_EQ(Name().cursorPosition(), 2);
  EXPECT_EQ(ShownIn("argumentEdit"), "typed");
  EXPECT_EQ(SelectedLine(), 0);
}

TEST_F(FunctionsEditorTest, LeavingTheNameNeitherStoresNorReloads) {
  Show(WithPairs({{"a", "A"}}));
  TypeIn("argumentEdit", "typed");
  FocusOn("nameEdit");
  TheFilter().Functions[0].Name = "stored meanwhile";
  FocusOn("helpButton");
  Settle();
  EXPECT_EQ(FunctionAt(0).Name, "stored meanwhile");
  EXPECT_EQ(Captions()[0], "upper");
  EXPECT_EQ(ShownIn("argumentEdit"), "typed");
  EXPECT_FALSE(WasModified());
}

TEST_F(FunctionsEditorTest, TabsAreChosenByMouseAndKeyboard) {
  Show(WithFunctions({FunctionOf("A", {{"a", ""}}), FunctionOf("B", {{"b", ""}}, 1)}));
  TypeIn("argumentEdit", "typed");
  ClickTab(1);
  EXPECT_EQ(ShownIn("nameEdit"), "B");
  EXPECT_EQ(CheckedReturn(), "argument ");
  EXPECT_EQ(ShownIn("argumentEdit"), "");
  EXPECT_EQ(Lines(), Texts{"b \u2014> "});
  FocusOn("functionTabs");
  QTest::keyClick(&Tabs(), Qt::Key_Left);
  EXPECT_EQ(ShownIn("nameEdit"), "A");
  EXPECT_EQ(CheckedReturn(), "empty ");
  EXPECT_FALSE(WasModified());
}

TEST_F(FunctionsEditorTest, AClickOnTheSelectedTabDoesNotReload) {
  Show(WithPairs({{"a", "A"}}));
  TypeIn("argumentEdit", "typed");
  ClickLine(0);
  ClickTab(0);
  EXPECT_EQ(ShownIn("argumentEdit"), "typed");
  EXPECT_EQ(SelectedLine(), 0);
}

TEST_F(FunctionsEditorTest, NoChangeUpdatesThePreview) {
  Show(WithPairs({{"a", "A"}}));
  AutoUpdate();
  AddPair("b", "B");
  ClickIn("argumentRadio");
  ClickLine(0);
  ClickIn("deletePairButton");
  TypeName("x");
  ClickIn("newButton");
  ClickTab(0);
  ExpectQuestion("Do you really want to delete function \"x\"?", Answer::Yes);
  ClickIn("deleteButton");
  EXPECT_FALSE(WasPreviewUpdated());
  EXPECT_EQ(Names(), Texts{"Function 2"});
}

// ---- The default return

TEST_F(FunctionsEditorTest, RadiosStoreTheDefaultReturn) {
  Show(WithPairs({}));
  TypeIn("argumentEdit", "typed");
  ClickIn("argumentRadio");
  EXPECT_EQ(FunctionAt(0).DefaultReturnsArgument, 1);
  EXPECT_EQ(CheckedReturn(), "argument ");
  EXPECT_EQ(ShownIn("argumentEdit"), "") << "reloaded";
  EXPECT_TRUE(WasModified());
  ClickIn("emptyRadio");
  EXPECT_EQ(FunctionAt(0).DefaultReturnsArgument, 0);
  EXPECT_EQ(CheckedReturn(), "empty ");
  EXPECT_TRUE(WasModified());
}

TEST_F(FunctionsEditorTest, ArrowKeysMoveBetweenTheRadios) {
  Show(WithPairs({}));
  FocusOn("emptyRadio");
  QTest::keyClick(&In("emptyRadio"), Qt::Key_Right);
  EXPECT_EQ(FunctionAt(0).DefaultReturnsArgument, 1);
  EXPECT_EQ(CheckedReturn(), "argument ");
  QTest::keyClick(&In("argumentRadio"), Qt::Key_Left);
  EXPECT_EQ(FunctionAt(0).DefaultReturnsArgument, 0);
}

TEST_F(FunctionsEditorTest, AnyOtherByteChecksNeitherRadioAndStaysUntilOneIsChosen) {
  for (const int byte : {2, 128, 255}) {
    for (const bool argument : {false, true}) {
      Show(WithFunctions({FunctionOf("odd", {}, byte), FunctionOf("B", {}, 1)}));
      const std::string before = testing::BytesOf(TheFilter());
      EXPECT_EQ(CheckedReturn(), "") << byte;
      ClickTab(1);
      EXPECT_EQ(CheckedReturn(), "argument ");
      ClickTab(0);
      EXPECT_EQ(CheckedReturn(), "") << byte;
      EXPECT_EQ(testing::BytesOf(TheFilter()), before) << byte;
      AddPair("a", "A");
      EXPECT_EQ(FunctionAt(0).DefaultReturnsArgument, byte);
      EXPECT_EQ(CheckedReturn(), "") << byte;
      ClickIn(argument ? "argumentRadio" : "emptyRadio");
      EXPECT_EQ(FunctionAt(0).DefaultReturnsArgument, argument ? 1 : 0);
      EXPECT_EQ(CheckedReturn(), argument ? "argument " : "empty ");
    }
  }
}

}  // namespace
}  // namespace zarvo
