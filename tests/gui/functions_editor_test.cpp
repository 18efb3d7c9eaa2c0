#include "ui/functions_editor.h"

#include <QAccessible>
#include <QLabel>
#include <QRadioButton>

#include "tests/gui/list_editor_fixture.h"
#include "tests/support/golden_filters.h"
#include "ui/icon_button.h"

namespace zarvo {
namespace {

using testing::FunctionOf;
using Entries = std::vector<FunctionEntry>;

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

class FunctionsEditorTest : public testing::ListEditorFixture {
 protected:
  FunctionsEditorTest() : ListEditorFixture(testing::kFunctionsEditor, "pairList") {}

  static Filter WithFunctions(std::vector<Function> functions) {
    return testing::FilterOf({}, {}, std::move(functions));
  }
  static Filter Abc() {
    return WithFunctions({FunctionOf("A", {}), FunctionOf("B", {}), FunctionOf("C", {})});
  }
  static Filter WithPairs(Entries entries) {
    return WithFunctions({FunctionOf("upper", std::move(entries))});
  }

  const Function& FunctionAt(std::size_t position) { return TheFilter().Functions[position]; }
  Texts Names() {
    Texts names;
    for (const Function& function : TheFilter().Functions) names.push_back(function.Name);
    return names;
  }
  std::string CheckedReturn() {
    return std::string(IsChecked("emptyRadio") ? "empty " : "") +
           (IsChecked("argumentRadio") ? "argument " : "");
  }
  void AddPair(const char* argument, const char* value) {
    TypeIn("argumentEdit", argument);
    TypeIn("valueEdit", value);
    ClickIn("addPairButton");
  }
};

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

// ---- The pairs

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

// ---- The lock

class LockedFunctionsEditorTest : public FunctionsEditorTest {
 protected:
  static Filter TwoFunctions() {
    return WithFunctions({FunctionOf("upper", {{"a", "A"}, {"b", "B"}}), FunctionOf("other", {})});
  }

  /// Everything that would change the filter.
  std::vector<std::pair<const char*, std::function<void()>>> Changes() {
    return {{"name", [this] { testing::TypeInto(Name(), QStringLiteral("x")); }},
            {"new", [this] { ClickIn("newButton"); }},
            {"delete", [this] { ClickIn("deleteButton"); }},
            {"import", [this] { ClickIn("importButton"); }},
            {"radio", [this] { ClickIn("argumentRadio"); }},
            {"radio by keyboard",
             [this] {
               FocusOn("emptyRadio");
               QTest::keyClick(&In("emptyRadio"), Qt::Key_Right);
             }},
            {"add", [this] { AddPair("c", "C"); }},
            {"delete pair",
             [this] {
               ClickLine(1);
               ClickIn("deletePairButton");
             }},
            {"delete no pair", [this] { ClickIn("deletePairButton"); }}};
  }

  void ExpectUntouched(const std::string& before, const char* what) {
    Settle();
    EXPECT_EQ(testing::BytesOf(TheFilter()), before) << what;
    EXPECT_FALSE(WasModified()) << what;
    EXPECT_EQ(Captions(), (Texts{"upper", "other"})) << what;
    EXPECT_EQ(Selected(), 0) << what;
    EXPECT_EQ(ShownIn("nameEdit"), "upper") << what;
    EXPECT_EQ(CheckedReturn(), "empty ") << what;
    EXPECT_EQ(Lines(), (Texts{"a \u2014> A", "b \u2014> B"})) << what;
    EXPECT_EQ(Count(), "2") << what;
    EXPECT_TRUE(dialogs_.IsDone()) << what;
  }

  /// Unlocks and locks, which arms the warning.
  void Rearm() {
    ClickLock();
    ClickLock();
    ASSERT_EQ(TheFilter().Locked, 1);
    Doc().Saved = true;
  }
};

TEST_F(LockedFunctionsEditorTest, EachChangeIsRefusedWithTheWarning) {
  ShowLocked(TwoFunctions());
  const std::string before = testing::BytesOf(TheFilter());
  for (const auto& [what, change] : Changes()) {
    Rearm();
    ExpectLockWarning();
    change();
    ExpectUntouched(before, what);
  }
}

TEST_F(LockedFunctionsEditorTest, TheWarningIsShownOnce) {
  ShowLocked(TwoFunctions());
  const std::string before = testing::BytesOf(TheFilter());
  ExpectLockWarning();
  for (const auto& [what, change] : Changes()) {
    change();
    ExpectUntouched(before, what);
  }
}

TEST_F(LockedFunctionsEditorTest, RefusalsReloadButForImport) {
  ShowLocked(TwoFunctions());
  ExpectLockWarning();
  for (const auto& [what, change] : Changes()) {
    TypeIn("argumentEdit", "typed");
    change();
    EXPECT_EQ(ShownIn("argumentEdit"), std::string(what) == "import" ? "typed" : "") << what;
  }
}

TEST_F(LockedFunctionsEditorTest, ControlsThatOnlyShowWorkWithoutAWarning) {
  ShowLocked(TwoFunctions());
  const std::string before = testing::BytesOf(TheFilter());
  ClickTab(1);
  EXPECT_EQ(ShownIn("nameEdit"), "other");
  ClickTab(0);
  ClickLine(1);
  QTest::keyClick(&List(), Qt::Key_Up);
  FocusOn("nameEdit");
  FocusOn("pairList");
  TypeIn("argumentEdit", "typed");
  TypeIn("valueEdit", "typed");
  ClickIn("emptyRadio");
  dialogs_.ExpectSave(
      "Binary Zarvo functions (*.ZarvoFunction)|*.ZarvoFunction|All files (*.*)|*.*|",
      "ZarvoFunction", "upper", std::nullopt);
  ClickIn("exportButton");
  ExpectUntouched(before, "showing");
}

TEST_F(LockedFunctionsEditorTest, OpenLeavesTheWarningAsItWas) {
  ShowLocked(TwoFunctions());
  ExpectLockWarning();
  ClickIn("newButton");
  EXPECT_TRUE(dialogs_.IsDone());
  ShowLocked(TwoFunctions());
  const std::string before = testing::BytesOf(TheFilter());
  ClickIn("newButton");
  ExpectUntouched(before, "refused in silence");
  Rearm();
  ExpectLockWarning();
  ClickIn("newButton");
  ExpectUntouched(before, "refused with the warning");
}

TEST_F(LockedFunctionsEditorTest, UnlockingAllowsChanges) {
  ShowLocked(TwoFunctions());
  ClickLock();
  AddPair("c", "C");
  EXPECT_EQ(FunctionAt(0).Entries, (Entries{{"a", "A"}, {"b", "B"}, {"c", "C"}}));
}

TEST_F(LockedFunctionsEditorTest, AConfirmedWrongPasswordArmsTheWarningToo) {
  Filter secret = TwoFunctions();
  secret.FormatVersion = 6;
  secret.PasswordKey = "K";
  secret.Password = "not empty";
  ShowLocked(secret);
  ExpectLockWarning();
  ClickIn("newButton");
  ExpectExclamation("Sorry, the password is incorrect");
  ClickLock();
  ExpectLockWarning();
  ClickIn("newButton");
  EXPECT_TRUE(dialogs_.IsDone());
  EXPECT_EQ(TheFilter().Functions.Count(), 2U);
}

TEST_F(LockedFunctionsEditorTest, ANewDocumentKeepsTheEditorsLockAndItsWarning) {
  ShowLocked(TwoFunctions());
  ExpectLockWarning();
  ClickIn("newButton");
  window_->NewDocument();
  ASSERT_EQ(TheFilter().Locked, 0);
  ClickIn("newButton");
  EXPECT_EQ(TheFilter().Functions.Count(), 0U);
  ClickLock();
  ClickLock();
  ClickIn("newButton");
  EXPECT_EQ(Captions(), Texts{"Function 1"});
}

}  // namespace
}  // namespace zarvo
