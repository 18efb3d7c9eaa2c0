// The Sets editor and the objects on its tabs.
#include <QAccessible>

#include "tests/gui/sets_editor_fixture.h"
#include "ui/icon_button.h"

namespace zarvo {
namespace {

using testing::Of;
using testing::SetOf;
using testing::Str;
using SetsEditorTest = testing::SetsEditorFixture;

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

}  // namespace
}  // namespace zarvo
