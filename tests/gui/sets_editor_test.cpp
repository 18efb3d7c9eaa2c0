#include "ui/sets_editor.h"

#include <QAccessible>
#include <QMenu>
#include <QRadioButton>

#include "tests/gui/list_editor_fixture.h"
#include "tests/support/golden_filters.h"
#include "ui/icon_button.h"
#include "ui/string_editor.h"

namespace zarvo {
namespace {

using testing::Call;
using testing::Click;
using testing::Code;
using testing::Find;
using testing::FunctionOf;
using testing::Of;
using testing::SetOf;
using testing::Str;

class SetsEditorTest : public testing::ListEditorFixture {
 protected:
  SetsEditorTest() : ListEditorFixture(testing::kSetsEditor, "stringList") {}

  static Filter WithSets(std::vector<Set> sets) {
    return testing::FilterOf({}, std::move(sets), {FunctionOf("f", {}), FunctionOf("g", {})});
  }
  static Filter WithStrings(const std::vector<std::string>& texts) {
    std::vector<Pattern> strings;
    for (const std::string& text : texts) strings.push_back(Of({Str(text)}, 0));
    return WithSets({SetOf("letters", std::move(strings))});
  }
  static Filter Abc() { return WithSets({SetOf("A", {}), SetOf("B", {}), SetOf("C", {})}); }

  const Set& SetAt(std::size_t position) { return TheFilter().Sets[position]; }
  Texts StringsOf(std::size_t position) {
    Texts texts;
    for (const Pattern& string : SetAt(position).Strings) texts.push_back(DisplayForm(string));
    return texts;
  }
  Texts Names() {
    Texts names;
    for (const Set& set : TheFilter().Sets) names.push_back(set.Name);
    return names;
  }

  /// Types this into the next String Editor and presses one of its buttons.
  void ExpectStringEditor(const char* text, const char* button = "okButton") {
    expected_dialogs_ += 1;
    testing::WithNextDialog<StringEditor>([this, text, button](StringEditor& dialog) {
      shown_dialogs_ += 1;
      testing::SelectAllAndType(Find<QWidget>(dialog, "textEdit"), QString::fromLatin1(text));
      Click(Find<QWidget>(dialog, button));
    });
  }
  void ExpectStringEditorShown() { EXPECT_EQ(shown_dialogs_, expected_dialogs_); }
  void DoubleClickAt(QPoint place) {
    testing::Activate(Editor());
    // The first click of the two, which selects, and the second.
    QTest::mouseClick(List().viewport(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(List().viewport(), Qt::LeftButton, {}, place);
  }
  void DoubleClickLine(int row) { DoubleClickAt(MiddleOf(row)); }

  /// Which of the four commands for the selected string are enabled.
  std::string EnabledCommands() {
    std::string enabled;
    const std::pair<const char*, const char*> commands[] = {{"deleteStringButton", "delete "},
                                                            {"editStringButton", "edit "},
                                                            {"moveUpButton", "up "},
                                                            {"moveDownButton", "down "}};
    for (const auto& [button, name] : commands) {
      if (IsEnabled(button)) enabled += name;
    }
    EXPECT_TRUE(IsEnabled("addStringButton"));
    return enabled;
  }

 private:
  int expected_dialogs_ = 0;
  int shown_dialogs_ = 0;
};

// ---- The window

TEST_F(SetsEditorTest, OpeningWithoutSetsMakesTheFirst) {
  Show({});
  EXPECT_EQ(TheFilter().Sets.Elements, std::vector<Set>{SetOf("Set 1", {})});
  EXPECT_EQ(Captions(), Texts{"Set 1"});
  EXPECT_EQ(Selected(), 0);
  EXPECT_EQ(ShownIn("nameEdit"), "Set 1");
  EXPECT_EQ(Lines(), Texts());
  EXPECT_EQ(Count(), "1");
  EXPECT_FALSE(IsEnabled("deleteButton"));
  EXPECT_TRUE(WasModified());
}

TEST_F(SetsEditorTest, OpeningALockedFilterWithoutSetsMakesNone) {
  ShowLocked({});
  EXPECT_EQ(TheFilter().Sets.Count(), 0U);
  EXPECT_EQ(Captions(), Texts());
  EXPECT_EQ(Count(), "0");
  EXPECT_FALSE(WasModified());
  for (const char* control :
       {"setPanel", "nameEdit", "stringList", "addStringButton", "deleteButton", "exportButton"}) {
    EXPECT_FALSE(IsEnabled(control)) << control;
  }
  for (const char* control : {"newButton", "importButton", "helpButton"}) {
    EXPECT_TRUE(IsEnabled(control)) << control;
  }
}

TEST_F(SetsEditorTest, OpeningShowsTheFirstSetAndIsNoChange) {
  Show(WithSets({SetOf("first", {Of({Str("x")}, 0), Of({Str("y")}, 0)}), SetOf("second", {})}));
  EXPECT_EQ(Captions(), (Texts{"first", "second"}));
  EXPECT_EQ(Selected(), 0);
  EXPECT_EQ(ShownIn("nameEdit"), "first");
  EXPECT_EQ(Lines(), (Texts{"x", "y"}));
  EXPECT_EQ(Count(), "2");
  EXPECT_TRUE(IsEnabled("deleteButton"));
  Settle();
  EXPECT_FALSE(WasModified());
}

TEST_F(SetsEditorTest, HasItsTextsTipsAndNames) {
  Show(Abc());
  const std::pair<const char*, const char*> tips[] = {
      {"newButton", "New"},           {"deleteButton", "Delete"}, {"exportButton", "Export"},
      {"importButton", "Import"},     {"helpButton", "Help"},     {"moveUpButton", "Move up"},
      {"moveDownButton", "Move down"}};
  for (const auto& [name, tip] : tips) {
    auto& button = In<IconButton>(name);
    EXPECT_EQ(button.toolTip().toStdString(), tip);
    EXPECT_EQ(button.text(), "") << name;
    EXPECT_FALSE(button.icon().isNull()) << name;
    EXPECT_FALSE(button.HotIcon().isNull()) << name;
  }
  const std::pair<const char*, const char*> texts[] = {{"addStringButton", "Add..."},
                                                       {"deleteStringButton", "Delete"},
                                                       {"editStringButton", "Edit..."}};
  for (const auto& [name, text] : texts) {
    EXPECT_EQ(In<QAbstractButton>(name).text().toStdString(), text);
  }
  const std::pair<const char*, const char*> names[] = {
      {"nameEdit", "Name"},           {"helpButton", "Help"},
      {"stringList", "Strings"},      {"addStringButton", "Add string"},
      {"newButton", "New"},           {"deleteStringButton", "Delete string"},
      {"moveUpButton", "Move up"},    {"editStringButton", "Edit string"},
      {"exportButton", "Export"},     {"importButton", "Import"},
      {"moveDownButton", "Move down"}};
  for (const auto& [control, name] : names) {
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&In(control))->text(QAccessible::Name), name);
  }
  EXPECT_EQ(Tabs().accessibleName(), "Sets");
}

TEST_F(SetsEditorTest, MoveButtonsStandBelowEdit) {
  Show(Abc());
  EXPECT_GT(In("moveUpButton").y(), In("editStringButton").y());
  EXPECT_GT(In("moveDownButton").y(), In("editStringButton").y());
}

TEST_F(SetsEditorTest, TheMainWindowsButtonFillsAnOpenEditorAnew) {
  Show(Abc());
  ClickTab(2);
  TheFilter().Sets.Append(SetOf("D", {}));
  TheFilter().Sets[2].Strings.push_back(Of({Str("new")}, 0));
  ShowEditor();
  EXPECT_EQ(Captions(), (Texts{"A", "B", "C", "D"}));
  EXPECT_EQ(Selected(), 2);
  EXPECT_EQ(Lines(), Texts{"new"});
  EXPECT_EQ(Count(), "4");
}

TEST_F(SetsEditorTest, ANewDocumentLeavesAnOpenEditorEmptyUntilNewIsPressed) {
  Show(WithStrings({"a"}));
  ClickLine(0);
  window_->NewDocument();
  EXPECT_EQ(TheFilter().Sets.Count(), 0U);
  EXPECT_EQ(Captions(), Texts());
  EXPECT_EQ(ShownIn("nameEdit"), "");
  EXPECT_EQ(Lines(), Texts());
  EXPECT_FALSE(IsEnabled("setPanel"));
  EXPECT_FALSE(WasModified());
  ClickIn("newButton");
  EXPECT_EQ(Captions(), Texts{"Set 1"});
  EXPECT_TRUE(IsEnabled("setPanel"));
  EXPECT_TRUE(WasModified());
}

TEST_F(SetsEditorTest, ALockThatHidesTheEditorClosesIt) {
  Show(Abc());
  ClickLock();
  EXPECT_FALSE(Editor().isVisible());
  EXPECT_FALSE(Get("editSetsButton").isEnabled());
}

// ---- Sets

TEST_F(SetsEditorTest, NewAppendsAnEmptySetNamedByTheCount) {
  Show(WithSets({SetOf("Set 2", {Of({Str("x")}, 0)})}));
  ClickIn("newButton");
  EXPECT_EQ(Names(), (Texts{"Set 2", "Set 2"}));
  EXPECT_EQ(SetAt(1), SetOf("Set 2", {}));
  EXPECT_EQ(Captions(), (Texts{"Set 2", "Set 2"}));
  EXPECT_EQ(Selected(), 1);
  EXPECT_EQ(Lines(), Texts());
  EXPECT_EQ(Count(), "2");
  EXPECT_TRUE(IsEnabled("deleteButton"));
  EXPECT_TRUE(WasModified());
}

TEST_F(SetsEditorTest, NewCountsInDecimals) {
  Show(WithSets(std::vector<Set>(9, SetOf("s", {}))));
  ClickIn("newButton");
  ClickIn("newButton");
  EXPECT_EQ(SetAt(9).Name, "Set 10");
  EXPECT_EQ(SetAt(10).Name, "Set 11");
  EXPECT_EQ(Selected(), 10);
}

TEST_F(SetsEditorTest, DeletingTheFirstSelectsTheNewFirstUntilOneIsLeft) {
  Show(Abc());
  ExpectQuestion("Do you really want to delete set \"A\"?", Answer::Yes);
  ClickIn("deleteButton");
  EXPECT_EQ(Selected(), 0);
  EXPECT_EQ(ShownIn("nameEdit"), "B");
  EXPECT_TRUE(IsEnabled("deleteButton"));
  ExpectQuestion("Do you really want to delete set \"B\"?", Answer::Yes);
  ClickIn("deleteButton");
  EXPECT_EQ(Captions(), Texts{"C"});
  EXPECT_EQ(ShownIn("nameEdit"), "C");
  EXPECT_FALSE(IsEnabled("deleteButton"));
}

TEST_F(SetsEditorTest, TheQuestionShowsTheNameAsItIs) {
  Show(WithSets({SetOf("a \"b\" & <i>\x9C\xE6</i>", {}), SetOf("", {})}));
  ExpectQuestion("Do you really want to delete set \"a \"b\" & <i>\u0153\u00E6</i>\"?", Answer::No);
  ClickIn("deleteButton");
  ClickTab(1);
  ExpectQuestion("Do you really want to delete set \"\"?", Answer::No);
  ClickIn("deleteButton");
  EXPECT_TRUE(dialogs_.IsDone());
}

TEST_F(SetsEditorTest, LeavingTheNameReloadsAndIsNoChange) {
  Show(WithStrings({"a", "b"}));
  AutoUpdate();
  ClickLine(1);
  FocusOn("nameEdit");
  EXPECT_FALSE(WasPreviewUpdated());
  FocusOn("helpButton");
  EXPECT_TRUE(WasPreviewUpdated());
  EXPECT_EQ(SelectedLine(), -1);
  EXPECT_FALSE(WasModified());
}

TEST_F(SetsEditorTest, TabsAreChosenByMouseAndKeyboard) {
  Show(WithSets({SetOf("A", {Of({Str("a")}, 0)}), SetOf("B", {Of({Str("b")}, 0)})}));
  ClickTab(1);
  EXPECT_EQ(ShownIn("nameEdit"), "B");
  EXPECT_EQ(Lines(), Texts{"b"});
  FocusOn("setTabs");
  QTest::keyClick(&Tabs(), Qt::Key_Left);
  EXPECT_EQ(ShownIn("nameEdit"), "A");
  EXPECT_EQ(Lines(), Texts{"a"});
  EXPECT_FALSE(WasModified());
}

TEST_F(SetsEditorTest, AClickOnTheSelectedTabReloads) {
  Show(WithStrings({"a"}));
  AutoUpdate();
  ClickLine(0);
  ClickTab(0);
  EXPECT_EQ(SelectedLine(), -1);
  EXPECT_TRUE(WasPreviewUpdated());
  EXPECT_FALSE(WasModified());
}

// ---- The list of strings

TEST_F(SetsEditorTest, StringsAreShownAsTheyAreDisplayedOneLineEach) {
  Show(WithSets({SetOf("s", {Of({Str("a\x85 & <b>"), Call("f(1)")}), Of({}), Of({Code("")}),
                             testing::OfVersion<Pattern>(2), Of({Str("\r\nx"), Code("\n")}),
                             Of({testing::Shown(Code("\t"), "tab")})})}));
  EXPECT_EQ(Lines(), (Texts{"a\u2026 & <b>{f(1)}", "", "{0}", "", "  x ", "tab"}));
  const int height = List().visualItemRect(List().item(0)).height();
  EXPECT_LE(height, 2 * List().fontMetrics().height());
  for (int i = 1; i < List().count(); ++i) {
    EXPECT_EQ(List().visualItemRect(List().item(i)).height(), height) << i;
  }
}

TEST_F(SetsEditorTest, CommandsOfAStringNeedASelection) {
  Show(WithStrings({"a", "b", "c"}));
  EXPECT_EQ(SelectedLine(), -1);
  EXPECT_EQ(EnabledCommands(), "");
  ClickLine(0);
  EXPECT_EQ(EnabledCommands(), "delete edit down ");
  ClickLine(1);
  EXPECT_EQ(EnabledCommands(), "delete edit up down ");
  ClickLine(2);
  EXPECT_EQ(EnabledCommands(), "delete edit up ");
  ClickTab(0);
  EXPECT_EQ(EnabledCommands(), "");
}

TEST_F(SetsEditorTest, TheOnlyStringCannotMove) {
  Show(WithStrings({"a"}));
  ClickLine(0);
  EXPECT_EQ(EnabledCommands(), "delete edit ");
}

TEST_F(SetsEditorTest, FocusAloneSelectsNoString) {
  Show(WithStrings({"a", "b"}));
  FocusOn("stringList");
  EXPECT_EQ(SelectedLine(), -1);
  EXPECT_EQ(EnabledCommands(), "");
}

TEST_F(SetsEditorTest, ArrowKeysSelectStrings) {
  Show(WithStrings({"a", "b", "c"}));
  ClickLine(0);
  QTest::keyClick(&List(), Qt::Key_Down);
  EXPECT_EQ(SelectedLine(), 1);
  EXPECT_EQ(EnabledCommands(), "delete edit up down ");
  QTest::keyClick(&List(), Qt::Key_End);
  EXPECT_EQ(EnabledCommands(), "delete edit up ");
  QTest::keyClick(&List(), Qt::Key_Up);
  EXPECT_EQ(SelectedLine(), 1);
}

TEST_F(SetsEditorTest, AddAppendsTheStringOfTheStringEditor) {
  Show(WithStrings({"a"}));
  ExpectStringEditor("new");
  ClickIn("addStringButton");
  ExpectStringEditorShown();
  EXPECT_EQ(StringsOf(0), (Texts{"a", "new"}));
  EXPECT_EQ(SetAt(0).Strings[1].Subpatterns, std::vector<Subpattern>{Str("new")});
  EXPECT_EQ(Lines(), (Texts{"a", "new"}));
  EXPECT_EQ(SelectedLine(), -1);
  EXPECT_TRUE(WasModified());
}

TEST_F(SetsEditorTest, AddOpensAnEmptyStringForReplacements) {
  Show(WithStrings({"a"}));
  bool shown = false;
  testing::WithNextDialog<StringEditor>([&shown](StringEditor& dialog) {
    shown = true;
    EXPECT_TRUE(dialog.isModal());
    EXPECT_EQ(Find<ByteLineEdit>(dialog, "outputEdit").Bytes(), "");
    EXPECT_TRUE(Find<QRadioButton>(dialog, "functionRadio").isEnabled());
    EXPECT_FALSE(Find<QRadioButton>(dialog, "listRadio").isEnabled());
    Texts functions;
    for (const QAction* action : Find<QMenu>(dialog, "functionsMenu").actions()) {
      functions.push_back(action->text().toStdString());
    }
    EXPECT_EQ(functions, (Texts{"f", "g"}));
    QTest::keyClick(&dialog, Qt::Key_Escape);
  });
  ClickIn("addStringButton");
  EXPECT_TRUE(shown);
  EXPECT_EQ(StringsOf(0), Texts{"a"});
  EXPECT_FALSE(WasModified());
}

TEST_F(SetsEditorTest, EditPutsTheStringBackWithoutAMarkOfChange) {
  Show(WithStrings({"a", "b", "c"}));
  ClickLine(1);
  ExpectStringEditor("new");
  ClickIn("editStringButton");
  ExpectStringEditorShown();
  EXPECT_EQ(StringsOf(0), (Texts{"a", "new", "c"}));
  EXPECT_EQ(Lines(), (Texts{"a", "new", "c"}));
  EXPECT_FALSE(WasModified());
}

TEST_F(SetsEditorTest, EditLeavesAChangedDocumentChanged) {
  Show(WithStrings({"a"}));
  Doc().Saved = false;
  ClickLine(0);
  ExpectStringEditor("new");
  ClickIn("editStringButton");
  EXPECT_TRUE(WasModified());
}

TEST_F(SetsEditorTest, ADoubleClickEditsTheLineUnderTheMouse) {
  Show(WithStrings({"a", "b"}));
  ClickLine(0);
  ExpectStringEditor("new");
  DoubleClickLine(1);
  ExpectStringEditorShown();
  EXPECT_EQ(StringsOf(0), (Texts{"a", "new"}));
  EXPECT_FALSE(WasModified());
}

TEST_F(SetsEditorTest, ADoubleClickBelowTheLastLineDoesNothing) {
  Show(WithStrings({"a"}));
  const QPoint below(5, List().viewport()->height() - 3);
  ASSERT_EQ(List().itemAt(below), nullptr);
  ClickLine(0);
  DoubleClickAt(below);
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
  EXPECT_EQ(StringsOf(0), Texts{"a"});
}

TEST_F(SetsEditorTest, CancelledEditChangesNothing) {
  Show(WithStrings({"a"}));
  const std::string before = testing::BytesOf(TheFilter());
  ClickLine(0);
  ExpectStringEditor("new", "cancelButton");
  ClickIn("editStringButton");
  ExpectStringEditorShown();
  EXPECT_EQ(testing::BytesOf(TheFilter()), before);
  EXPECT_EQ(SelectedLine(), 0);
}

TEST_F(SetsEditorTest, EditWorksOnAllOfAString) {
  Show(WithSets({SetOf("s", {Of({Str("x"), Call("f(1)")}, 0)})}));
  ClickLine(0);
  ExpectStringEditor("y");
  ClickIn("editStringButton");
  EXPECT_EQ(SetAt(0).Strings[0], Of({Str("y"), Call("f(1)")}, 0));
}

TEST_F(SetsEditorTest, DeleteRemovesTheSelectedString) {
  Show(WithStrings({"a", "b", "c"}));
  ClickLine(1);
  ClickIn("deleteStringButton");
  EXPECT_EQ(StringsOf(0), (Texts{"a", "c"}));
  EXPECT_EQ(Lines(), (Texts{"a", "c"}));
  EXPECT_EQ(EnabledCommands(), "");
  EXPECT_TRUE(WasModified());
}

TEST_F(SetsEditorTest, DeleteWorksByTheKeyboard) {
  Show(WithStrings({"a", "b"}));
  ClickLine(0);
  QTest::keyClick(&List(), Qt::Key_Down);
  FocusOn("deleteStringButton");
  QTest::keyClick(&In("deleteStringButton"), Qt::Key_Space);
  EXPECT_EQ(StringsOf(0), Texts{"a"});
  EXPECT_TRUE(WasModified());
}

TEST_F(SetsEditorTest, MovedStringsStaySelectedUpToTheEnds) {
  Show(WithStrings({"a", "b", "c"}));
  ClickLine(2);
  ClickIn("moveUpButton");
  EXPECT_EQ(StringsOf(0), (Texts{"a", "c", "b"}));
  EXPECT_EQ(Lines(), (Texts{"a", "c", "b"}));
  EXPECT_EQ(SelectedLine(), 1);
  EXPECT_TRUE(WasModified());
  ClickIn("moveUpButton");
  EXPECT_EQ(StringsOf(0), (Texts{"c", "a", "b"}));
  EXPECT_EQ(SelectedLine(), 0);
  EXPECT_EQ(EnabledCommands(), "delete edit down ");
  ClickIn("moveDownButton");
  ClickIn("moveDownButton");
  EXPECT_EQ(StringsOf(0), (Texts{"a", "b", "c"}));
  EXPECT_EQ(SelectedLine(), 2);
  EXPECT_EQ(EnabledCommands(), "delete edit up ");
  EXPECT_TRUE(WasModified());
}

TEST_F(SetsEditorTest, ChangesGoToTheSelectedSetAlone) {
  Filter filter = WithStrings({"a", "b"});
  filter.Sets.Append(SetOf("other", {Of({Str("x")}, 0), Of({Str("y")}, 0)}));
  Show(filter);
  ClickTab(1);
  ClickLine(0);
  ClickIn("moveDownButton");
  ClickIn("deleteStringButton");
  ExpectStringEditor("z");
  ClickIn("addStringButton");
  EXPECT_EQ(StringsOf(0), (Texts{"a", "b"}));
  EXPECT_EQ(StringsOf(1), (Texts{"y", "z"}));
}

TEST_F(SetsEditorTest, EachChangeUpdatesThePreview) {
  Show(WithStrings({"a", "b"}));
  AutoUpdate();
  const auto expect_update = [this](const char* what, const std::function<void()>& change) {
    change();
    EXPECT_TRUE(WasPreviewUpdated()) << what;
  };
  expect_update("add", [this] {
    ExpectStringEditor("c");
    ClickIn("addStringButton");
  });
  ClickLine(0);
  EXPECT_FALSE(WasPreviewUpdated()) << "a selection is no change";
  expect_update("edit", [this] {
    ExpectStringEditor("d");
    ClickIn("editStringButton");
  });
  ClickLine(0);
  expect_update("move down", [this] { ClickIn("moveDownButton"); });
  expect_update("move up", [this] { ClickIn("moveUpButton"); });
  expect_update("delete string", [this] { ClickIn("deleteStringButton"); });
  expect_update("new", [this] { ClickIn("newButton"); });
  expect_update("tab", [this] { ClickTab(0); });
  expect_update("delete", [this] {
    ExpectQuestion("Do you really want to delete set \"letters\"?", Answer::Yes);
    ClickIn("deleteButton");
  });
  TypeName("x");
  EXPECT_FALSE(WasPreviewUpdated()) << "typing a name doesn't reload";
  ClickOn("autoUpdateBox");
  Settle();
  static_cast<void>(WasPreviewUpdated());
  ClickIn("newButton");
  EXPECT_FALSE(WasPreviewUpdated()) << "without Auto-update";
}

TEST_F(SetsEditorTest, AnEditedSetOfAnotherVersionBecomesAWholeRecord) {
  Show(WithSets({testing::OfVersion<Set>(5)}));
  ExpectStringEditor("a");
  ClickIn("addStringButton");
  EXPECT_EQ(SetAt(0), SetOf("", SetAt(0).Strings));
  EXPECT_EQ(StringsOf(0), Texts{"a"});
}

TEST_F(SetsEditorTest, AnEditedStringOfAnotherVersionBecomesAWholeRecord) {
  Show(WithSets({SetOf("s", {testing::OfVersion<Pattern>(2)})}));
  ClickLine(0);
  ExpectStringEditor("a");
  ClickIn("editStringButton");
  EXPECT_EQ(SetAt(0).Strings[0].RecordVersion, 1);
  EXPECT_EQ(StringsOf(0), Texts{"a"});
}

TEST_F(SetsEditorTest, TenThousandStringsCanBeWorkedWith) {
  std::vector<std::string> texts;
  for (int i = 0; i < 10000; ++i) texts.push_back("string " + std::to_string(i));
  Show(WithStrings(texts));
  EXPECT_EQ(Lines(), texts);
  ClickLine(9999);
  for (int i = 0; i < 3; ++i) ClickIn("moveUpButton");
  EXPECT_EQ(SelectedLine(), 9996);
  EXPECT_EQ(StringsOf(0)[9996], "string 9999");
  ClickIn("deleteStringButton");
  ExpectStringEditor("last");
  ClickIn("addStringButton");
  texts.back() = "last";
  EXPECT_EQ(StringsOf(0), texts);
  EXPECT_EQ(Lines(), texts);
}

// ---- The lock

class LockedSetsEditorTest : public SetsEditorTest {
 protected:
  static Filter TwoSets() {
    Filter filter = WithStrings({"a", "b", "c"});
    filter.Sets.Append(SetOf("other", {}));
    return filter;
  }

  /// Everything that would change the filter.
  std::vector<std::pair<const char*, std::function<void()>>> Changes() {
    return {{"name", [this] { testing::TypeInto(Name(), QStringLiteral("x")); }},
            {"new", [this] { ClickIn("newButton"); }},
            {"delete", [this] { ClickIn("deleteButton"); }},
            {"import", [this] { ClickIn("importButton"); }},
            {"add", [this] { ClickIn("addStringButton"); }},
            {"delete string", [this] { Command("deleteStringButton"); }},
            {"move up", [this] { Command("moveUpButton"); }},
            {"move down", [this] { Command("moveDownButton"); }}};
  }

  void ExpectUntouched(const std::string& before, const char* what) {
    Settle();
    EXPECT_EQ(testing::BytesOf(TheFilter()), before) << what;
    EXPECT_FALSE(WasModified()) << what;
    EXPECT_EQ(Captions(), (Texts{"letters", "other"})) << what;
    EXPECT_EQ(Selected(), 0) << what;
    EXPECT_EQ(ShownIn("nameEdit"), "letters") << what;
    EXPECT_EQ(Lines(), (Texts{"a", "b", "c"})) << what;
    EXPECT_EQ(Count(), "2") << what;
    EXPECT_TRUE(dialogs_.IsDone()) << what;
  }

 private:
  void Command(const char* button) {
    ClickLine(1);
    ClickIn(button);
  }
};

TEST_F(LockedSetsEditorTest, EachChangeIsRefusedWithTheWarning) {
  for (const auto& [what, change] : Changes()) {
    ShowLocked(TwoSets());  // arms the warning
    const std::string before = testing::BytesOf(TheFilter());
    ExpectLockWarning();
    change();
    ExpectUntouched(before, what);
  }
}

TEST_F(LockedSetsEditorTest, TheWarningIsShownOnce) {
  ShowLocked(TwoSets());
  const std::string before = testing::BytesOf(TheFilter());
  ExpectLockWarning();
  for (const auto& [what, change] : Changes()) {
    change();
    ExpectUntouched(before, what);
  }
}

TEST_F(LockedSetsEditorTest, RefusalsReloadButForImport) {
  ShowLocked(TwoSets());
  AutoUpdate();
  ExpectLockWarning();
  for (const auto& [what, change] : Changes()) {
    change();
    EXPECT_EQ(WasPreviewUpdated(), std::string(what) != "import") << what;
  }
}

TEST_F(LockedSetsEditorTest, ControlsThatOnlyShowWorkWithoutAWarning) {
  ShowLocked(TwoSets());
  const std::string before = testing::BytesOf(TheFilter());
  ClickTab(1);
  EXPECT_EQ(ShownIn("nameEdit"), "other");
  ClickTab(0);
  ClickLine(2);
  EXPECT_EQ(EnabledCommands(), "delete edit up ");
  QTest::keyClick(&List(), Qt::Key_Up);
  FocusOn("nameEdit");
  FocusOn("stringList");
  dialogs_.ExpectSave("Binary Zarvo sets (*.ZarvoSet)|*.ZarvoSet|All files (*.*)|*.*|", "ZarvoSet",
                      "letters", std::nullopt);
  ClickIn("exportButton");
  ExpectUntouched(before, "showing");
}

TEST_F(LockedSetsEditorTest, AStringIsShownButNotTakenBack) {
  ShowLocked(TwoSets());
  const std::string before = testing::BytesOf(TheFilter());
  for (const bool by_mouse : {false, true}) {
    ClickLine(1);
    // The String Editor refuses by itself.
    ExpectLockWarning();
    bool shown = false;
    testing::WithNextDialog<StringEditor>([&shown](StringEditor& dialog) {
      shown = true;
      auto& text = Find<ByteLineEdit>(dialog, "textEdit");
      EXPECT_EQ(text.Bytes(), "b");
      testing::TypeInto(text, QStringLiteral("x"));
      EXPECT_EQ(text.Bytes(), "b");
      Click(Find<QWidget>(dialog, "okButton"));
    });
    if (by_mouse) {
      DoubleClickLine(1);
    } else {
      ClickIn("editStringButton");
    }
    EXPECT_TRUE(shown);
    ExpectUntouched(before, "edit");
  }
}

TEST_F(LockedSetsEditorTest, OpenArmsTheWarningAgain) {
  for (int i = 0; i < 2; ++i) {
    ShowLocked(TwoSets());
    ExpectLockWarning();
    ClickIn("newButton");
    ClickIn("newButton");
    EXPECT_TRUE(dialogs_.IsDone());
  }
}

TEST_F(LockedSetsEditorTest, LockingArmsTheWarningAgainAndUnlockingAllowsChanges) {
  ShowLocked(TwoSets());
  ExpectLockWarning();
  ClickIn("newButton");
  ClickLock();
  ClickIn("newButton");
  EXPECT_EQ(Captions(), (Texts{"letters", "other", "Set 3"}));
  ClickLock();
  ExpectLockWarning();
  ClickIn("newButton");
  EXPECT_TRUE(dialogs_.IsDone());
  EXPECT_EQ(TheFilter().Sets.Count(), 3U);
}

TEST_F(LockedSetsEditorTest, ANewDocumentKeepsTheEditorsLockAndItsWarning) {
  ShowLocked(TwoSets());
  ExpectLockWarning();
  ClickIn("newButton");
  window_->NewDocument();
  ASSERT_EQ(TheFilter().Locked, 0);
  ClickIn("newButton");
  EXPECT_EQ(TheFilter().Sets.Count(), 0U);
  EXPECT_TRUE(dialogs_.IsDone());
  ClickLock();
  ClickLock();
  ShowEditor();
  EXPECT_EQ(Captions(), Texts{"Set 1"});
}

}  // namespace
}  // namespace zarvo
