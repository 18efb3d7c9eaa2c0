// The from/to selection of a rule, and the anchors that it is dragged from.
#include "tests/gui/editor_fixture.h"
#include "ui/range_slider.h"

namespace zarvo {
namespace {

using testing::Drag;
using testing::FilterOf;
using testing::Insert;
using testing::Of;
using testing::Replace;
using testing::Str;

Rule Ranged(const char* name, int from, int to) {
  Rule rule = Replace(Of({Str("abcdefgh")}), {});
  rule.Name = name;
  rule.From = from;
  rule.To = to;
  return rule;
}

class RulesRangeTest : public testing::EditorFixture {
 protected:
  RulesRangeTest() : EditorFixture(testing::kRulesEditor) {}

  RangeSlider& Range() { return In<RangeSlider>("fromToSlider"); }
  void DragTo(std::vector<int> values) { Drag(Range(), values); }
  using FromTo = std::pair<int, int>;
  // What the selected rule holds, which the controls must show.
  FromTo Current() {
    const Rule& rule = TheFilter().Rules[static_cast<std::size_t>(Selected())];
    EXPECT_EQ(ShownIn("fromEdit"), std::to_string(rule.From));
    EXPECT_EQ(ShownIn("toEdit"), std::to_string(rule.Inserts() ? rule.From : rule.To));
    EXPECT_EQ(ShownIn("afterEdit"), std::to_string(rule.From));
    EXPECT_EQ(Range().HasSelection(), !rule.Inserts());
    if (!rule.Inserts()) {
      EXPECT_EQ(Range().SelectionFrom(), rule.From);
      EXPECT_EQ(Range().SelectionTo(), rule.To);
    }
    return {rule.From, rule.To};
  }
  // The anchor shows in what a drag to the middle makes.
  int AnchorSeenFrom(int position) {
    DragTo({position == 1 ? 2 : 1, position});
    const auto [from, to] = Current();
    if (from == to) return 0;
    return from == position ? to : from;
  }
  void Delete(const std::string& name) {
    dialogs_.ExpectMessage(MessageIcon::Question,
                           "Do you really want to delete rule \"" + name + "\"?",
                           MessageButtons::YesNo, Answer::Yes);
    ClickIn("deleteButton");
  }
};

TEST_F(RulesRangeTest, WithoutAnAnchorBothEndsFollowTheThumb) {
  ShowEditor();
  TheFilter().Rules[0].Pattern = Of({Str("abcdefgh")});
  ClickIn("replaceRadio");
  DragTo({2, 5, 4});
  EXPECT_EQ(Current(), FromTo(4, 4));
  EXPECT_EQ(Range().value(), 4);
  EXPECT_FALSE(Doc().Saved);
}

TEST_F(RulesRangeTest, ThePinnedAnchorIsTheOtherEnd) {
  ShowEditor();
  TheFilter().Rules[0].Pattern = Of({Str("abcdefgh")});
  ClickIn("replaceRadio");
  DragTo({2});
  ASSERT_EQ(Current(), FromTo(2, 2));
  Doc().Saved = true;
  ClickIn("anchorButton");
  EXPECT_TRUE(Doc().Saved);
  EXPECT_EQ(Current(), FromTo(2, 2));
  DragTo({3, 4, 5});
  EXPECT_EQ(Current(), FromTo(2, 5));
  EXPECT_EQ(Range().value(), 5);
  DragTo({4, 2, 1});
  EXPECT_EQ(Current(), FromTo(1, 2));
  EXPECT_EQ(Range().value(), 1);
  DragTo({2});
  EXPECT_EQ(Current(), FromTo(2, 2));
}

TEST_F(RulesRangeTest, KeysAndTheWheelPickTheRangeToo) {
  Show(FilterOf({Ranged("A", 3, 3)}));
  PressIn("fromToSlider", Qt::Key_Right);
  EXPECT_EQ(Current(), FromTo(3, 4));
  PressIn("fromToSlider", Qt::Key_End);
  EXPECT_EQ(Current(), FromTo(3, 8));
  PressIn("fromToSlider", Qt::Key_Home);
  EXPECT_EQ(Current(), FromTo(1, 3));
  testing::TurnWheel(Range(), true);
  EXPECT_EQ(Current().first == 1 && Current().second == 3, false);
  PressIn("fromToSlider", Qt::Key_Home);
  ClickIn("anchorButton");
  PressIn("fromToSlider", Qt::Key_Right);
  EXPECT_EQ(Current(), FromTo(1, 2));
}

TEST_F(RulesRangeTest, TheToOfAReplacingRuleIsItsFirstAnchorAndOneThatOfAnInserting) {
  Rule inserting = Insert(Of({Str("abcdefgh")}), 6, {});
  inserting.Name = "B";
  Show(FilterOf({Ranged("A", 2, 5), inserting}));
  EXPECT_EQ(Range().value(), 2);
  EXPECT_EQ(AnchorSeenFrom(3), 5);
  ClickTab(1);
  ClickIn("replaceRadio");
  EXPECT_EQ(Current(), FromTo(6, 6));
  EXPECT_EQ(AnchorSeenFrom(4), 1);
}

TEST_F(RulesRangeTest, TheThumbStandsAtToWhereFromIsTheAnchor) {
  Show(FilterOf({Ranged("A", 4, 4), Ranged("B", 2, 7)}));
  DragTo({6});
  ASSERT_EQ(Current(), FromTo(4, 6));
  ClickTab(1);
  EXPECT_EQ(Range().value(), 2);
  ClickTab(0);
  EXPECT_EQ(Range().value(), 6);
}

TEST_F(RulesRangeTest, AnchorsStayWithTheirPositionsWhenARuleIsDeleted) {
  Show(FilterOf({Ranged("A", 1, 3), Ranged("B", 1, 5), Ranged("C", 1, 7)}));
  ClickTab(0);
  Delete("A");
  // B stands where A stood.
  ASSERT_EQ(Name().text(), "B");
  EXPECT_EQ(AnchorSeenFrom(2), 3);
  ClickTab(1);
  ASSERT_EQ(Name().text(), "C");
  EXPECT_EQ(AnchorSeenFrom(2), 5);
}

TEST_F(RulesRangeTest, AMoveMakesAllAnchorsAnew) {
  Show(FilterOf({Ranged("A", 1, 3), Ranged("B", 1, 5), Ranged("C", 1, 7)}));
  Delete("A");
  ClickIn("moveRightButton");
  ASSERT_EQ(Name().text(), "B");
  EXPECT_EQ(AnchorSeenFrom(2), 5);
  ClickTab(0);
  ASSERT_EQ(Name().text(), "C");
  EXPECT_EQ(AnchorSeenFrom(2), 7);
}

TEST_F(RulesRangeTest, ANewRuleHasNoAnchorEvenWhereADeletedOneHadOne) {
  Show(FilterOf({Ranged("A", 1, 3), Ranged("B", 1, 5)}));
  ClickTab(1);
  Delete("B");
  ClickIn("newButton");
  TheFilter().Rules[1].Pattern = Of({Str("abcdefgh")});
  ClickIn("replaceRadio");
  DragTo({4});
  EXPECT_EQ(Current(), FromTo(4, 4));
}

TEST_F(RulesRangeTest, TheAnchorIsThePositionOfTheThumb) {
  Show(FilterOf({Ranged("A", 2, 5)}));
  ASSERT_EQ(Range().value(), 2);
  ClickIn("anchorButton");
  DragTo({7});
  EXPECT_EQ(Current(), FromTo(2, 7));
}

TEST_F(RulesRangeTest, AnAnchorOutsideThePatternIsAnEndAllTheSame) {
  Show(FilterOf({Ranged("A", 2, 50)}));
  DragTo({4});
  EXPECT_EQ(Current(), FromTo(4, 50));
}

}  // namespace
}  // namespace zarvo
