// The String Editor's commands on the list of subpatterns, and the most significant one.
#include "tests/gui/string_editor_fixture.h"

namespace zarvo {
namespace {

using testing::Code;
using testing::List;
using testing::NotList;
using testing::Of;
using testing::Str;

using Names = std::vector<std::string>;

constexpr const char* kFindQuestion =
    "There arleady is the most significant subpattern. Are you sure you want to evaluate the new "
    "most significant subpattern (the previous setting will be lost)?";

class StringEditorList : public testing::StringEditorFixture {
 protected:
  void ExpectFindQuestion(Answer answer) {
    dialogs_.ExpectMessage(MessageIcon::Question, kFindQuestion, MessageButtons::YesNo, answer);
  }
};

// ---- New, Delete, Move

TEST_F(StringEditorList, NewAppendsAnEmptyStringAndSelectsIt) {
  Open(Of({Str("a"), Str("b")}, 1));
  ClickOn("newButton");
  EXPECT_EQ(Edited(), Of({Str("a"), Str("b"), Str("")}, 1));
  EXPECT_EQ(Captions(), (Names{"a", "b", ""}));
  EXPECT_EQ(Tabs().currentIndex(), 2);
  EXPECT_EQ(TextOf("textEdit"), "");
  ExpectMoves(true, true, false);
}

TEST_F(StringEditorList, DeleteAsksNothingAndSelectsTheOneBefore) {
  Open(Of({Str("a"), Str("b"), Str("c")}));
  ClickTab(1);
  ClickOn("deleteButton");
  EXPECT_EQ(Edited(), Of({Str("a"), Str("c")}));
  EXPECT_EQ(Captions(), (Names{"a", "c"}));
  EXPECT_EQ(Tabs().currentIndex(), 0);
  EXPECT_EQ(TextOf("textEdit"), "a");
  EXPECT_EQ(TextOf("outputEdit"), "ac");
  ClickOn("deleteButton");
  EXPECT_EQ(Edited(), Of({Str("c")}));
  EXPECT_EQ(TextOf("textEdit"), "c");
  ExpectMoves(false, false, false);
}

TEST_F(StringEditorList, DeletingTheMostSignificantOneChoosesAnewWithoutAsking) {
  Open(Of({Str("a"), Str("b"), Str("long")}, 1));
  ClickTab(1);
  ClickOn("deleteButton");
  EXPECT_EQ(Edited(), Of({Str("a"), Str("long")}, 1));
  EXPECT_FALSE(IsChecked("mostSignificantBox"));
}

TEST_F(StringEditorList, DeletingTheFirstChoosesAnewOnlyWhenTheSecondWasMostSignificant) {
  Open(Of({Str("a"), Str("b"), Str("long")}, 1));
  ClickOn("deleteButton");
  EXPECT_EQ(Edited(), Of({Str("b"), Str("long")}, 1));
  Open(Of({Str("a"), Str("bb"), Str("c")}, 1));
  ClickOn("deleteButton");
  EXPECT_EQ(Edited(), Of({Str("bb"), Str("c")}, 0));
  EXPECT_TRUE(IsChecked("mostSignificantBox"));
}

TEST_F(StringEditorList, DeletingKeepsAMostSignificantNumberThatThenLiesPastTheEnd) {
  Open(Of({Str("a"), Str("b"), Str("c")}, 2));
  ClickOn("deleteButton");
  EXPECT_EQ(Edited(), Of({Str("b"), Str("c")}, 2));
  EXPECT_FALSE(IsChecked("mostSignificantBox"));
  ClickTab(1);
  EXPECT_FALSE(IsChecked("mostSignificantBox"));
}

TEST_F(StringEditorList, MoveTakesTheSelectionAlongButNotTheMostSignificantNumber) {
  Open(Of({Str("a"), Str("b"), Str("c")}, 0));
  ClickOn("moveRightButton");
  EXPECT_EQ(Edited(), Of({Str("b"), Str("a"), Str("c")}, 0));
  EXPECT_EQ(Captions(), (Names{"b", "a", "c"}));
  EXPECT_EQ(Tabs().currentIndex(), 1);
  EXPECT_EQ(TextOf("textEdit"), "a");
  EXPECT_FALSE(IsChecked("mostSignificantBox"));
  ExpectMoves(true, true, true);
  ClickOn("moveRightButton");
  ExpectMoves(true, true, false);
  ClickOn("moveLeftButton");
  ClickOn("moveLeftButton");
  EXPECT_EQ(Edited(), Of({Str("a"), Str("b"), Str("c")}, 0));
  EXPECT_EQ(Tabs().currentIndex(), 0);
  EXPECT_TRUE(IsChecked("mostSignificantBox"));
}

// ---- Most significant

TEST_F(StringEditorList, MostSignificantIsTheCurrentOneOrNone) {
  Open(Of({Str("a"), Str("b")}, 0));
  EXPECT_TRUE(IsChecked("mostSignificantBox"));
  ClickTab(1);
  ClickOn("mostSignificantBox");
  EXPECT_EQ(Edited().MostSignificant, 1);
  ClickOn("mostSignificantBox");
  EXPECT_EQ(Edited().MostSignificant, -1);
  EXPECT_FALSE(IsChecked("mostSignificantBox"));
}

TEST_F(StringEditorList, FindAsksNothingWhenNoneIsSet) {
  Open(Of({Code("c"), Str("ab"), List("de")}));
  ClickOn("findButton");
  EXPECT_EQ(Edited().MostSignificant, 1);
  EXPECT_FALSE(IsChecked("mostSignificantBox"));
  ClickTab(1);
  EXPECT_TRUE(IsChecked("mostSignificantBox"));
}

TEST_F(StringEditorList, FindPrefersTheEarlierOfEqualWeights) {
  Open(Of({Code("c"), List("d")}));
  ClickOn("findButton");
  EXPECT_EQ(Edited().MostSignificant, 0);
  EXPECT_TRUE(IsChecked("mostSignificantBox"));
}

TEST_F(StringEditorList, FindAsksBeforeItReplacesAndStopsAtNo) {
  Open(Of({Str("ab"), Code("c"), List("de")}, 2));
  ExpectFindQuestion(Answer::No);
  ClickOn("findButton");
  EXPECT_TRUE(dialogs_.IsDone());
  EXPECT_EQ(Edited().MostSignificant, 2);
  ExpectFindQuestion(Answer::Yes);
  ClickOn("findButton");
  EXPECT_TRUE(dialogs_.IsDone());
  EXPECT_EQ(Edited().MostSignificant, 0);
}

TEST_F(StringEditorList, FindAsksAlsoWhereTheSetNumberIsOutsideThePattern) {
  for (const int number : {-2, 7}) {
    Open(Of({Str("a")}, number));
    EXPECT_FALSE(IsChecked("mostSignificantBox"));
    ExpectFindQuestion(Answer::Yes);
    ClickOn("findButton");
    EXPECT_EQ(Edited().MostSignificant, 0);
  }
}

TEST_F(StringEditorList, FindOfNothingThatWeighsLeavesNone) {
  Open(Of({NotList("ab"), Str("")}, 1));
  ExpectFindQuestion(Answer::Yes);
  ClickOn("findButton");
  EXPECT_EQ(Edited().MostSignificant, -1);
}

}  // namespace
}  // namespace zarvo
