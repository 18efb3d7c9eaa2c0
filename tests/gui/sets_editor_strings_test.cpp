// The strings of the selected Set.
#include <QMenu>
#include <QRadioButton>

#include "tests/gui/sets_editor_fixture.h"
#include "tests/support/golden_filters.h"
#include "ui/string_editor.h"

namespace zarvo {
namespace {

using testing::Call;
using testing::Code;
using testing::Find;
using testing::Of;
using testing::SetOf;
using testing::Str;
using SetsEditorTest = testing::SetsEditorFixture;

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

TEST_F(SetsEditorTest, MoveLeavesTheFocusOnItsButtonForTheNextOne) {
  Show(WithStrings({"a", "b", "c", "d"}));
  ClickLine(3);
  FocusOn("moveUpButton");
  for (const Texts& strings : {Texts{"a", "b", "d", "c"}, Texts{"a", "d", "b", "c"}}) {
    QTest::keyClick(Editor().focusWidget(), Qt::Key_Space);
    EXPECT_EQ(StringsOf(0), strings);
    EXPECT_EQ(Editor().focusWidget()->objectName(), "moveUpButton");
  }
  QTest::keyClick(Editor().focusWidget(), Qt::Key_Space);
  EXPECT_EQ(StringsOf(0), (Texts{"d", "a", "b", "c"}));
  EXPECT_EQ(Editor().focusWidget()->objectName(), "setTabs") << "the button is disabled now";
}

TEST_F(SetsEditorTest, DeleteSendsTheFocusWhereTheNextKeyChangesNothing) {
  Show(WithStrings({"a", "b"}));
  ClickLine(0);
  FocusOn("deleteStringButton");
  QTest::keyClick(Editor().focusWidget(), Qt::Key_Space);
  QTest::keyClick(Editor().focusWidget(), Qt::Key_Space);
  EXPECT_EQ(StringsOf(0), (Texts{"b"}));
  EXPECT_EQ(TheFilter().Sets.Count(), 1U);
}

}  // namespace
}  // namespace zarvo
