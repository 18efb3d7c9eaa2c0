// What the Rules editor shows, and values that no editor makes.
#include "tests/gui/rules_editor_fixture.h"
#include "ui/range_slider.h"

namespace zarvo {
namespace {

using testing::Call;
using testing::Called;
using testing::Code;
using testing::FilterOf;
using testing::FromSet;
using testing::Insert;
using testing::List;
using testing::Of;
using testing::OneRule;
using testing::Replace;
using testing::SetOf;
using testing::Str;
using testing::WithSets;
using RulesEditorTest = testing::RulesEditorFixture;

// ---- Opening

TEST_F(RulesEditorTest, OpeningOnAFilterWithoutRulesMakesRule1) {
  ShowEditor();
  ASSERT_EQ(TheFilter().Rules.Count(), 1U);
  Rule expected;
  expected.Name = "Rule 1";
  expected.Probability = 100;
  expected.From = 0;
  expected.To = -1;
  EXPECT_EQ(RuleAt(0), expected);
  EXPECT_EQ(Captions(), std::vector<std::string>{"Rule 1"});
  EXPECT_EQ(TextOf("rulesCount"), "1");
  EXPECT_EQ(Name().text(), "Rule 1");
  EXPECT_TRUE(IsChecked("insertRadio"));
  EXPECT_TRUE(IsChecked("stringRadio"));
  EXPECT_TRUE(IsChecked("sequenceRadio"));
  EXPECT_EQ(ShownIn("afterEdit"), "0");
  EXPECT_EQ(ShownIn("probabilityEdit"), "100");
  ExpectModified();
}

TEST_F(RulesEditorTest, OpeningOnALockedFilterWithoutRulesMakesNoneAndIsSilent) {
  Show(Locked({}));
  EXPECT_EQ(TheFilter().Rules.Count(), 0U);
  EXPECT_EQ(Tabs().count(), 0);
  EXPECT_TRUE(Doc().Saved);
  EXPECT_FALSE(IsEnabled("rulePanel"));
  for (const char* name : {"deleteButton", "moveLeftButton", "moveRightButton", "exportButton"}) {
    EXPECT_FALSE(IsEnabled(name)) << name;
  }
  for (const char* name : {"newButton", "importButton", "helpButton"}) {
    EXPECT_TRUE(IsEnabled(name)) << name;
  }
}

TEST_F(RulesEditorTest, ShowsEveryFieldOfAReplacingRule) {
  Rule rule =
      Replace(Of({Str("ab"), List("xyz"), Code("!"), Str("c")}), Of({Str("n"), Call("f(1)")}));
  rule.From = 2;
  rule.To = 4;
  rule.Probability = 37;
  rule.Strict = 1;
  rule.Once = 1;
  Show(OneRule(rule));
  EXPECT_EQ(Name().text(), "rule");
  EXPECT_EQ(In<ByteLineEdit>("patternEdit").Bytes(), DisplayForm(rule.Pattern));
  EXPECT_EQ(In<ByteLineEdit>("replacementEdit").Bytes(), DisplayForm(rule.Replacement));
  EXPECT_TRUE(IsChecked("replaceRadio"));
  EXPECT_FALSE(IsChecked("insertRadio"));
  EXPECT_EQ(ShownIn("fromEdit"), "2");
  EXPECT_EQ(ShownIn("toEdit"), "4");
  EXPECT_EQ(ShownIn("afterEdit"), "2");
  for (const char* name : {"fromEdit", "toEdit", "fromToSlider", "anchorButton"}) {
    EXPECT_TRUE(IsEnabled(name)) << name;
  }
  for (const char* name : {"afterEdit", "afterSlider"}) EXPECT_FALSE(IsEnabled(name)) << name;
  // A string counts its length, every other subpattern 1.
  EXPECT_EQ(Slider("afterSlider").minimum(), 0);
  EXPECT_EQ(Slider("afterSlider").maximum(), 5);
  EXPECT_EQ(Slider("fromToSlider").minimum(), 1);
  EXPECT_EQ(Slider("fromToSlider").maximum(), 5);
  EXPECT_EQ(Slider("afterSlider").value(), 2);
  auto& range = In<RangeSlider>("fromToSlider");
  EXPECT_TRUE(range.HasSelection());
  EXPECT_EQ(range.SelectionFrom(), 2);
  EXPECT_EQ(range.SelectionTo(), 4);
  // The anchor of a rule just shown is its to, so the thumb stands at from.
  EXPECT_EQ(range.value(), 2);
  EXPECT_EQ(Slider("probabilitySlider").value(), 37);
  EXPECT_EQ(ShownIn("probabilityEdit"), "37");
  EXPECT_TRUE(IsChecked("strictBox"));
  EXPECT_TRUE(IsChecked("onceBox"));
  ExpectSource("stringRadio");
  EXPECT_TRUE(Doc().Saved);
}

TEST_F(RulesEditorTest, ShowsAnInsertingRule) {
  Show(OneRule(Insert(Of({Str("abcd")}), 3, Of({Str("n")}))));
  EXPECT_TRUE(IsChecked("insertRadio"));
  EXPECT_FALSE(IsChecked("replaceRadio"));
  for (const char* name : {"fromEdit", "toEdit", "afterEdit"}) EXPECT_EQ(ShownIn(name), "3");
  for (const char* name : {"afterEdit", "afterSlider"}) EXPECT_TRUE(IsEnabled(name)) << name;
  for (const char* name : {"fromEdit", "toEdit", "fromToSlider", "anchorButton"}) {
    EXPECT_FALSE(IsEnabled(name)) << name;
  }
  EXPECT_EQ(Slider("afterSlider").value(), 3);
  EXPECT_EQ(Slider("fromToSlider").value(), 3);
  EXPECT_FALSE(In<RangeSlider>("fromToSlider").HasSelection());
}

TEST_F(RulesEditorTest, NumbersPatternAndReplacementAreReadOnly) {
  Show(OneRule(Replace(Of({Str("abc")}), Of({Str("n")}))));
  const std::string before = testing::BytesOf(TheFilter());
  for (const char* name :
       {"patternEdit", "replacementEdit", "fromEdit", "toEdit", "probabilityEdit"}) {
    EXPECT_TRUE(In<QLineEdit>(name).isReadOnly()) << name;
    const std::string shown = ShownIn(name);
    testing::TypeInto(In(name), QStringLiteral("7"));
    EXPECT_EQ(ShownIn(name), shown) << name;
  }
  EXPECT_TRUE(In<QLineEdit>("afterEdit").isReadOnly());
  EXPECT_EQ(testing::BytesOf(TheFilter()), before);
}

TEST_F(RulesEditorTest, TheProbabilitySliderGoesTo100WithATickAtEveryTenAndTheOthersHaveNone) {
  Show(OneRule({}));
  EXPECT_EQ(Slider("probabilitySlider").minimum(), 0);
  EXPECT_EQ(Slider("probabilitySlider").maximum(), 100);
  EXPECT_EQ(Slider("probabilitySlider").tickInterval(), 10);
  EXPECT_NE(Slider("probabilitySlider").tickPosition(), QSlider::NoTicks);
  for (const char* name : {"fromToSlider", "afterSlider"}) {
    EXPECT_EQ(Slider(name).tickPosition(), QSlider::NoTicks) << name;
  }
}

TEST_F(RulesEditorTest, ItsCommandsHaveToolTips) {
  for (const auto& [button, tip] :
       std::initializer_list<std::pair<const char*, const char*>>{{"newButton", "New"},
                                                                  {"deleteButton", "Delete"},
                                                                  {"moveLeftButton", "Move left"},
                                                                  {"moveRightButton", "Move right"},
                                                                  {"helpButton", "Help"}}) {
    EXPECT_EQ(In(button).toolTip(), tip);
    EXPECT_FALSE(In<QAbstractButton>(button).icon().isNull()) << button;
  }
}

// ---- Values that no editor makes

TEST_F(RulesEditorTest, AProbabilityAbove100IsShownAsItIsAndKept) {
  Rule rule;
  rule.Probability = 200;
  Show(OneRule(rule));
  EXPECT_EQ(Slider("probabilitySlider").value(), 100);
  EXPECT_EQ(ShownIn("probabilityEdit"), "200");
  ClickIn("strictBox");
  EXPECT_EQ(RuleAt(0).Probability, 200);
  PressIn("probabilitySlider", Qt::Key_Left);
  EXPECT_EQ(RuleAt(0).Probability, 99);
  EXPECT_EQ(ShownIn("probabilityEdit"), "99");
}

TEST_F(RulesEditorTest, FromAndToOutsideThePatternAreShownAndKept) {
  Rule rule = Replace(Of({Str("abc")}), {});
  rule.From = -4;
  rule.To = 70;
  Show(OneRule(rule));
  EXPECT_EQ(ShownIn("fromEdit"), "-4");
  EXPECT_EQ(ShownIn("toEdit"), "70");
  EXPECT_EQ(Slider("fromToSlider").value(), 1);
  EXPECT_EQ(In<RangeSlider>("fromToSlider").SelectionFrom(), -4);
  EXPECT_EQ(In<RangeSlider>("fromToSlider").SelectionTo(), 70);
  ClickIn("strictBox");
  EXPECT_EQ(RuleAt(0).From, -4);
  EXPECT_EQ(RuleAt(0).To, 70);
}

TEST_F(RulesEditorTest, AnEmptyPatternLeavesTheSlidersOneValue) {
  Show(OneRule({}));
  EXPECT_EQ(Slider("afterSlider").minimum(), 0);
  EXPECT_EQ(Slider("afterSlider").maximum(), 0);
  EXPECT_EQ(Slider("fromToSlider").value(), 1);
  ClickIn("replaceRadio");
  EXPECT_EQ(RuleAt(0).From, 1);
  EXPECT_EQ(RuleAt(0).To, 1);
  for (const Qt::Key key : {Qt::Key_Right, Qt::Key_End, Qt::Key_Left, Qt::Key_PageUp}) {
    PressIn("fromToSlider", key);
  }
  EXPECT_EQ(RuleAt(0).From, 1);
  EXPECT_EQ(RuleAt(0).To, 1);
}

TEST_F(RulesEditorTest, AnotherKindOfReplacementIsNeitherOfTheTwo) {
  Rule rule;
  rule.ReplacementSource = static_cast<ReplacementSource>(7);
  Show(WithSets(rule));
  ExpectSource("neither");
  for (const char* name :
       {"replacementEdit", "editReplacementButton", "setBox", "sequenceRadio", "randomRadio"}) {
    EXPECT_FALSE(IsEnabled(name)) << name;
  }
  EXPECT_TRUE(IsEnabled("onceBox"));
  ClickIn("strictBox");
  EXPECT_EQ(RuleAt(0).ReplacementSource, static_cast<ReplacementSource>(7));
  ExpectSource("neither");
  ClickIn("stringRadio");
  EXPECT_EQ(RuleAt(0).ReplacementSource, ReplacementSource::String);
  ExpectSource("stringRadio");
}

TEST_F(RulesEditorTest, AChangedRuleOfAnotherRecordVersionIsStoredWhole) {
  ShowEditor();
  RuleAt(0).RecordVersion = 9;
  TypeName("kept");
  ClickIn("strictBox");
  const std::string bytes = testing::BytesOf(TheFilter());
  window_->LoadDocument(QString::fromStdString(folder_.Write("again.zvf", bytes)));
  EXPECT_EQ(RuleAt(0).Name, "kept");
  EXPECT_EQ(RuleAt(0).Strict, 1);
}

TEST_F(RulesEditorTest, TabGoesToTheCheckedButtonOfEachPair) {
  Rule other = Insert(Of({Str("a")}), 1, Of({Str("b")}));
  other.ReplacementSource = static_cast<ReplacementSource>(7);
  Show(FilterOf({Called("a", Insert(Of({Str("a")}), 1, Of({Str("b")}))),
                 Called("b", FromSet(Of({Str("a")}), ReplacementSource::SetInSequence, "s")),
                 Called("c", other), Called("d", Replace(Of({Str("a")}), Of({Str("b")})))},
                {SetOf("s", {})}));
  for (const int rule : {0, 1, 2, 3, 0}) {
    ClickTab(rule);
    for (const auto& [first, second] :
         {std::pair("stringRadio", "fromSetRadio"), std::pair("replaceRadio", "insertRadio")}) {
      const bool none = !IsChecked(first) && !IsChecked(second);
      EXPECT_EQ(none, rule == 2 && std::string(first) == "stringRadio");
      for (const char* name : {first, second}) {
        EXPECT_EQ((In(name).focusPolicy() & Qt::TabFocus) != 0, none || IsChecked(name))
            << name << " in rule " << rule;
      }
    }
  }
}

TEST_F(RulesEditorTest, CtrlSSavesFromTheEditorToo) {
  Show(OneRule(Replace(Of({Str("a")}), Of({Str("b")}))));
  TypeName("saved from here");
  QTest::keyClick(&Name(), Qt::Key_S, Qt::ControlModifier);
  EXPECT_TRUE(Doc().Saved);
  EXPECT_EQ(ReadFilter("loaded.zvf").Rules[0].Name, "saved from here");
}

TEST_F(RulesEditorTest, CaptionFollowsTheFiltersNameWhenTheWindowIsUsedAgain) {
  Show(OneRule(Replace(Of({Str("a")}), Of({Str("b")}))));
  Type("nameEdit", "new name");
  LeaveField();
  testing::Activate(Editor());
  EXPECT_EQ(Editor().windowTitle(), "Rules - new name");
}

}  // namespace
}  // namespace zarvo
