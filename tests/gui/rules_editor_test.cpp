#include <QComboBox>
#include <QRadioButton>

#include "tests/gui/editor_fixture.h"
#include "ui/range_slider.h"
#include "ui/string_editor.h"

namespace zarvo {
namespace {

using testing::Call;
using testing::Code;
using testing::Drag;
using testing::FilterOf;
using testing::FromSet;
using testing::Insert;
using testing::List;
using testing::Of;
using testing::Replace;
using testing::SetOf;
using testing::Str;
using testing::TurnWheel;

Rule Called(const char* name, Rule rule = {}) {
  rule.Name = name;
  return rule;
}

class RulesEditorTest : public testing::EditorFixture {
 protected:
  RulesEditorTest() : EditorFixture(testing::kRulesEditor) {}

  Rule& RuleAt(std::size_t position) { return TheFilter().Rules[position]; }
  QSlider& Slider(const char* name) { return In<QSlider>(name); }
  QComboBox& SetBox() { return In<QComboBox>("setBox"); }
  std::vector<std::string> OfferedSets() {
    std::vector<std::string> names;
    for (int i = 0; i < SetBox().count(); ++i) names.push_back(SetBox().itemText(i).toStdString());
    return names;
  }
  // Expects a change by the user, which marks the filter as modified, and forgets the mark.
  void ExpectModified() {
    EXPECT_FALSE(Doc().Saved);
    Doc().Saved = true;
  }
  void ExpectSource(const char* source) {
    for (const char* name : {"stringRadio", "fromSetRadio"}) {
      EXPECT_EQ(IsChecked(name), name == std::string(source)) << name;
    }
  }
};

zarvo::Filter OneRule(Rule rule) { return FilterOf({Called("rule", std::move(rule))}); }

zarvo::Filter WithSets(Rule rule) {
  return FilterOf({Called("rule", std::move(rule))},
                  {SetOf("first", {Of({Str("1")})}), SetOf("second", {}), SetOf("third", {})});
}

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

// ---- Pattern and replacement

class RulesPatternTest : public RulesEditorTest {
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

class RulesABC : public RulesEditorTest {
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
