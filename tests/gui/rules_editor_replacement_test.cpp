// How a rule replaces: from where, into what part of the match, how often.
#include "tests/gui/rules_editor_fixture.h"

namespace zarvo {
namespace {

using testing::Drag;
using testing::FromSet;
using testing::Insert;
using testing::Of;
using testing::OneRule;
using testing::Replace;
using testing::SetOf;
using testing::Str;
using testing::TurnWheel;
using testing::WithSets;
using RulesEditorTest = testing::RulesEditorFixture;

// ---- Replacement

TEST_F(RulesEditorTest, FromSetIsInSequenceWhileSeqIsChecked) {
  Show(WithSets({}));
  for (const char* name : {"setBox", "sequenceRadio", "randomRadio"}) {
    EXPECT_FALSE(IsEnabled(name)) << name;
  }
  EXPECT_TRUE(IsEnabled("replacementEdit"));
  EXPECT_TRUE(IsEnabled("editReplacementButton"));
  ClickIn("fromSetRadio");
  EXPECT_EQ(RuleAt(0).ReplacementSource, ReplacementSource::SetInSequence);
  ExpectModified();
  ExpectSource("fromSetRadio");
  for (const char* name : {"setBox", "sequenceRadio", "randomRadio", "onceBox"}) {
    EXPECT_TRUE(IsEnabled(name)) << name;
  }
  EXPECT_FALSE(IsEnabled("replacementEdit"));
  EXPECT_FALSE(IsEnabled("editReplacementButton"));
  // It had no set, so it has the first now.
  EXPECT_EQ(RuleAt(0).ReplacementSetName, "first");
  EXPECT_EQ(SetBox().currentIndex(), 0);
}

TEST_F(RulesEditorTest, RndDisablesOnceAndSeqEnablesItAgain) {
  Show(WithSets(FromSet({}, ReplacementSource::SetInSequence, "second")));
  ClickIn("onceBox");
  ExpectModified();
  ClickIn("randomRadio");
  EXPECT_EQ(RuleAt(0).ReplacementSource, ReplacementSource::SetAtRandom);
  EXPECT_FALSE(IsEnabled("onceBox"));
  EXPECT_TRUE(IsChecked("onceBox"));
  EXPECT_FALSE(IsChecked("sequenceRadio"));
  ExpectModified();
  ClickIn("sequenceRadio");
  EXPECT_EQ(RuleAt(0).ReplacementSource, ReplacementSource::SetInSequence);
  EXPECT_TRUE(IsEnabled("onceBox"));
  EXPECT_EQ(RuleAt(0).Once, 1);
  ExpectModified();
}

TEST_F(RulesEditorTest, FromSetIsAtRandomAgainWhenRndWasCheckedLast) {
  Show(WithSets(FromSet({}, ReplacementSource::SetAtRandom, "second")));
  ClickIn("stringRadio");
  EXPECT_EQ(RuleAt(0).ReplacementSource, ReplacementSource::String);
  EXPECT_TRUE(IsEnabled("onceBox"));
  EXPECT_EQ(SetBox().currentText(), "second");
  ExpectModified();
  ClickIn("fromSetRadio");
  EXPECT_EQ(RuleAt(0).ReplacementSource, ReplacementSource::SetAtRandom);
  EXPECT_EQ(RuleAt(0).ReplacementSetName, "second");
}

TEST_F(RulesEditorTest, ArrowKeysChooseTheReplacementToo) {
  Show(WithSets({}));
  PressIn("stringRadio", Qt::Key_Down);
  EXPECT_EQ(RuleAt(0).ReplacementSource, ReplacementSource::SetInSequence);
  PressIn("sequenceRadio", Qt::Key_Right);
  EXPECT_EQ(RuleAt(0).ReplacementSource, ReplacementSource::SetAtRandom);
  PressIn("replaceRadio", Qt::Key_Space);
  EXPECT_EQ(RuleAt(0).To, 1);
  PressIn("strictBox", Qt::Key_Space);
  EXPECT_EQ(RuleAt(0).Strict, 1);
}

TEST_F(RulesEditorTest, OnceAndStrictStoreTheirFlags) {
  Show(OneRule({}));
  for (const auto& [box, flag] :
       std::initializer_list<std::pair<const char*, std::int32_t Rule::*>>{
           {"onceBox", &Rule::Once}, {"strictBox", &Rule::Strict}}) {
    ClickIn(box);
    EXPECT_EQ(RuleAt(0).*flag, 1) << box;
    ExpectModified();
    ClickIn(box);
    EXPECT_EQ(RuleAt(0).*flag, 0) << box;
    ExpectModified();
  }
}

TEST_F(RulesEditorTest, TheDropDownOffersAllSetsInTheirOrderAndStoresTheChosen) {
  zarvo::Filter filter = WithSets(FromSet({}, ReplacementSource::SetInSequence, "second"));
  filter.Sets.Append(SetOf("&A [*] \xE9", {}));
  filter.Sets.Append(SetOf("first", {}));
  Show(filter);
  EXPECT_EQ(OfferedSets(),
            (std::vector<std::string>{"first", "second", "third", "&A [*] \u00e9", "first"}));
  EXPECT_EQ(SetBox().currentIndex(), 1);
  PressIn("setBox", Qt::Key_Down);
  EXPECT_EQ(RuleAt(0).ReplacementSetName, "third");
  ExpectModified();
  PressIn("setBox", Qt::Key_Down);
  EXPECT_EQ(RuleAt(0).ReplacementSetName, "&A [*] \xE9");
  // Of two sets of one name the rule means the first.
  PressIn("setBox", Qt::Key_End);
  EXPECT_EQ(RuleAt(0).ReplacementSetName, "first");
  EXPECT_EQ(SetBox().currentIndex(), 0);
}

TEST_F(RulesEditorTest, ASetThatIsGoneIsReplacedByTheFirstInSilence) {
  for (const ReplacementSource source :
       {ReplacementSource::SetInSequence, ReplacementSource::SetAtRandom}) {
    Show(WithSets(FromSet({}, source, "gone")));
    EXPECT_EQ(RuleAt(0).ReplacementSetName, "first");
    EXPECT_EQ(SetBox().currentText(), "first");
    EXPECT_TRUE(Doc().Saved);
    Editor().close();
  }
}

TEST_F(RulesEditorTest, ASetThatIsGoneIsKeptWhereTheFilterHasNone) {
  Show(OneRule(FromSet({}, ReplacementSource::SetInSequence, "gone")));
  EXPECT_EQ(RuleAt(0).ReplacementSetName, "gone");
  EXPECT_EQ(SetBox().count(), 0);
}

TEST_F(RulesEditorTest, AStringRuleKeepsTheNameOfASetThatIsGone) {
  Show(WithSets(FromSet({}, ReplacementSource::String, "gone")));
  EXPECT_EQ(RuleAt(0).ReplacementSetName, "gone");
  EXPECT_EQ(SetBox().currentIndex(), -1);
}

TEST_F(RulesEditorTest, SetsMadeAndRenamedInTheirEditorAreOfferedWhenOneComesBack) {
  Show(WithSets(FromSet({}, ReplacementSource::SetInSequence, "second")));
  ClickOn("editSetsButton");
  QDialog& sets = testing::TopLevel("SetsEditor");
  testing::Click(testing::Find<QWidget>(sets, "newButton"));
  testing::SelectAllAndType(testing::Find<QWidget>(sets, "nameEdit"), QStringLiteral("new one"));
  testing::Activate(Editor());
  EXPECT_EQ(OfferedSets(), (std::vector<std::string>{"first", "second", "third", "new one"}));
  EXPECT_EQ(SetBox().currentText(), "second");
}

// ---- Replacement mode and probability

TEST_F(RulesEditorTest, SwitchingToReplaceTurnsZeroIntoOne) {
  Show(OneRule(Insert(Of({Str("abc")}), 0, {})));
  ClickIn("replaceRadio");
  EXPECT_EQ(RuleAt(0).From, 1);
  EXPECT_EQ(RuleAt(0).To, 1);
  ExpectModified();
  EXPECT_EQ(ShownIn("fromEdit"), "1");
  EXPECT_EQ(ShownIn("toEdit"), "1");
}

TEST_F(RulesEditorTest, SwitchingToReplaceTakesTheNumbersShown) {
  Show(OneRule(Insert(Of({Str("abcdef")}), 4, {})));
  ClickIn("replaceRadio");
  EXPECT_EQ(RuleAt(0).From, 4);
  EXPECT_EQ(RuleAt(0).To, 4);
}

TEST_F(RulesEditorTest, SwitchingToInsertTakesTheNumberShownAsAfter) {
  Rule rule = Replace(Of({Str("abcdef")}), {});
  rule.From = 3;
  rule.To = 5;
  Show(OneRule(rule));
  ClickIn("insertRadio");
  EXPECT_EQ(RuleAt(0).From, 3);
  EXPECT_EQ(RuleAt(0).To, -1);
  ExpectModified();
}

TEST_F(RulesEditorTest, TheAfterSliderPicksTheInsertionPointByKeysMouseAndWheel) {
  Show(OneRule(Insert(Of({Str("abcdef")}), 0, {})));
  PressIn("afterSlider", Qt::Key_Right);
  EXPECT_EQ(RuleAt(0).From, 1);
  EXPECT_EQ(RuleAt(0).To, -1);
  EXPECT_EQ(ShownIn("afterEdit"), "1");
  ExpectModified();
  Drag(Slider("afterSlider"), {2, 4, 6, 5});
  EXPECT_EQ(RuleAt(0).From, 5);
  ExpectModified();
  TurnWheel(Slider("afterSlider"), false);
  EXPECT_LT(RuleAt(0).From, 5);
  PressIn("afterSlider", Qt::Key_End);
  EXPECT_EQ(RuleAt(0).From, 6);
  PressIn("afterSlider", Qt::Key_Home);
  EXPECT_EQ(RuleAt(0).From, 0);
  EXPECT_EQ(ShownIn("afterEdit"), "0");
}

TEST_F(RulesEditorTest, TheProbabilitySliderIsFollowedByItsNumber) {
  Rule rule;
  rule.Probability = 50;
  Show(OneRule(rule));
  QSlider& slider = Slider("probabilitySlider");
  QTest::mousePress(&slider, Qt::LeftButton, {}, testing::HandleAt(slider, 50));
  for (const int value : {60, 85, 100}) {
    QTest::mouseMove(&slider, testing::HandleAt(slider, value));
    EXPECT_NEAR(RuleAt(0).Probability, value, 1);
    EXPECT_EQ(ShownIn("probabilityEdit"), std::to_string(RuleAt(0).Probability));
  }
  QTest::mouseRelease(&slider, Qt::LeftButton, {}, testing::HandleAt(slider, 100));
  EXPECT_EQ(RuleAt(0).Probability, 100);
  ExpectModified();
  PressIn("probabilitySlider", Qt::Key_Home);
  EXPECT_EQ(RuleAt(0).Probability, 0);
  EXPECT_EQ(ShownIn("probabilityEdit"), "0");
  TurnWheel(slider, true);
  EXPECT_GT(RuleAt(0).Probability, 0);
  EXPECT_EQ(ShownIn("probabilityEdit"), std::to_string(RuleAt(0).Probability));
}

}  // namespace
}  // namespace zarvo
