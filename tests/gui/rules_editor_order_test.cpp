// The pattern and the replacement by the String Editor; moving, deleting and making rules.
#include "tests/gui/rules_editor_fixture.h"
#include "ui/string_editor.h"

namespace zarvo {
namespace {

using testing::Called;
using testing::FilterOf;
using testing::Insert;
using testing::Of;
using testing::OneRule;
using testing::Replace;
using testing::Str;

// ---- Pattern and replacement

class RulesPatternTest : public testing::RulesEditorFixture {
 protected:
  // Opens the String Editor by this button, types this as the text of the first subpattern, and
  // ends it.
  void Edit(const char* button, const char* text, const char* end) {
    bool shown = false;
    testing::WithNextDialog<StringEditor>([&](StringEditor& dialog) {
      shown = true;
      EXPECT_TRUE(dialog.isModal());
      testing::SelectAllAndType(testing::Find<QWidget>(dialog, "textEdit"),
                                QString::fromLatin1(text));
      // Lists of characters are for patterns alone, calls of functions for replacements.
      replaces_ = testing::Find<QWidget>(dialog, "functionRadio").isEnabled();
      EXPECT_EQ(testing::Find<QWidget>(dialog, "listRadio").isEnabled(), !replaces_);
      testing::Click(testing::Find<QWidget>(dialog, end));
    });
    ClickIn(button);
    EXPECT_TRUE(shown);
  }

  bool replaces_ = false;
};

TEST_F(RulesPatternTest, AnEditedPatternIsTakenBackWithoutMarkingTheFilter) {
  Show(OneRule(Insert(Of({Str("ab")}), 2, {})));
  Edit("editPatternButton", "longer", "okButton");
  EXPECT_FALSE(replaces_);
  EXPECT_EQ(DisplayForm(RuleAt(0).Pattern), "longer");
  EXPECT_EQ(ShownIn("patternEdit"), "longer");
  EXPECT_EQ(Slider("afterSlider").maximum(), 6);
  EXPECT_EQ(Slider("fromToSlider").maximum(), 6);
  EXPECT_TRUE(Doc().Saved);
}

TEST_F(RulesPatternTest, AnEditedReplacementIsTakenBackWithoutMarkingTheFilter) {
  Show(OneRule(Replace(Of({Str("ab")}), Of({Str("old")}))));
  Edit("editReplacementButton", "new", "okButton");
  EXPECT_TRUE(replaces_);
  EXPECT_EQ(DisplayForm(RuleAt(0).Replacement), "new");
  EXPECT_EQ(DisplayForm(RuleAt(0).Pattern), "ab");
  EXPECT_EQ(ShownIn("replacementEdit"), "new");
  EXPECT_TRUE(Doc().Saved);
}

TEST_F(RulesPatternTest, CancelLeavesThePatternAndAMarkStaysAsItWas) {
  Show(OneRule(Replace(Of({Str("ab")}), {})));
  Edit("editPatternButton", "other", "cancelButton");
  EXPECT_EQ(DisplayForm(RuleAt(0).Pattern), "ab");
  ClickIn("strictBox");
  Edit("editPatternButton", "other", "okButton");
  EXPECT_FALSE(Doc().Saved);
}

TEST_F(RulesPatternTest, TheEditedPatternIsThatOfTheSelectedRule) {
  Show(FilterOf({Called("A"), Called("B"), Called("C")}));
  ClickTab(1);
  Edit("editPatternButton", "b", "okButton");
  EXPECT_EQ(DisplayForm(RuleAt(0).Pattern), "");
  EXPECT_EQ(DisplayForm(RuleAt(1).Pattern), "b");
  EXPECT_EQ(Selected(), 1);
}

// ---- Moving and deleting

class RulesABC : public testing::RulesEditorFixture {
 protected:
  RulesABC() { Show(FilterOf({Called("A"), Called("B"), Called("C")})); }
  std::vector<std::string> Names() {
    std::vector<std::string> names;
    for (const Rule& rule : TheFilter().Rules) names.push_back(rule.Name);
    return names;
  }
  using Strings = std::vector<std::string>;
};

TEST_F(RulesABC, MovesARuleWithItsTabWhichStaysSelected) {
  EXPECT_FALSE(IsEnabled("moveLeftButton"));
  ClickIn("moveRightButton");
  EXPECT_EQ(Names(), (Strings{"B", "A", "C"}));
  EXPECT_EQ(Captions(), Names());
  EXPECT_EQ(Selected(), 1);
  EXPECT_TRUE(IsEnabled("moveLeftButton"));
  ExpectModified();
  ClickIn("moveRightButton");
  EXPECT_EQ(Names(), (Strings{"B", "C", "A"}));
  EXPECT_EQ(Selected(), 2);
  EXPECT_FALSE(IsEnabled("moveRightButton"));
  EXPECT_EQ(Name().text(), "A");
  ClickIn("moveLeftButton");
  EXPECT_EQ(Names(), (Strings{"B", "A", "C"}));
  EXPECT_EQ(Captions(), Names());
  EXPECT_EQ(Selected(), 1);
}

TEST_F(RulesABC, TheMoveCommandsFollowTheSelectedTab) {
  ClickTab(1);
  EXPECT_TRUE(IsEnabled("moveLeftButton"));
  EXPECT_TRUE(IsEnabled("moveRightButton"));
  ClickTab(2);
  EXPECT_TRUE(IsEnabled("moveLeftButton"));
  EXPECT_FALSE(IsEnabled("moveRightButton"));
  EXPECT_TRUE(Doc().Saved);
}

TEST_F(RulesABC, DeletingTheLastSelectsTheOneBeforeAndTheLastOneStays) {
  const auto expect_question = [this](const char* name) {
    dialogs_.ExpectMessage(MessageIcon::Question,
                           std::string("Do you really want to delete rule \"") + name + "\"?",
                           MessageButtons::YesNo, Answer::Yes);
  };
  ClickTab(2);
  expect_question("C");
  ClickIn("deleteButton");
  EXPECT_EQ(Names(), (Strings{"A", "B"}));
  EXPECT_EQ(Captions(), Names());
  EXPECT_EQ(Selected(), 1);
  EXPECT_EQ(Name().text(), "B");
  EXPECT_EQ(TextOf("rulesCount"), "2");
  ExpectModified();
  ClickTab(0);
  expect_question("A");
  ClickIn("deleteButton");
  EXPECT_EQ(Selected(), 0);
  EXPECT_EQ(Name().text(), "B");
  EXPECT_FALSE(IsEnabled("deleteButton"));
  EXPECT_EQ(Names(), Strings{"B"});
}

TEST_F(RulesABC, NewRulesAreNumberedByTheirCountEvenTwice) {
  ClickIn("newButton");
  EXPECT_EQ(Names(), (Strings{"A", "B", "C", "Rule 4"}));
  EXPECT_EQ(Selected(), 3);
  EXPECT_EQ(TextOf("rulesCount"), "4");
  ExpectModified();
  ClickTab(0);
  dialogs_.ExpectMessage(MessageIcon::Question, "Do you really want to delete rule \"A\"?",
                         MessageButtons::YesNo, Answer::Yes);
  ClickIn("deleteButton");
  ClickIn("newButton");
  EXPECT_EQ(Names(), (Strings{"B", "C", "Rule 4", "Rule 4"}));
}

}  // namespace
}  // namespace zarvo
