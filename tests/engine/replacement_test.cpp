#include "engine/replacement.h"

#include <gtest/gtest.h>

#include "engine/apply_filter.h"
#include "tests/support/builders.h"

namespace zarvo {
namespace {

using testing::Call;
using testing::Code;
using testing::Engine;
using testing::FilterOf;
using testing::FromSet;
using testing::FunctionOf;
using testing::Insert;
using testing::List;
using testing::NotList;
using testing::Of;
using testing::OfKind;
using testing::RecordingHost;
using testing::Replace;
using testing::SetOf;
using testing::Str;

FunctionList Functions() {
  FunctionList functions;
  functions.Append(FunctionOf("Up", {{"a", "A"}, {"b", "B"}, {"bc", "BC"}, {"", "EMPTY"}}));
  functions.Append(FunctionOf("Same", {}, 1));
  functions.Append(FunctionOf("Odd", {}, 2));
  functions.Append(FunctionOf("Up", {{"a", "the second of that name is never called"}}));
  return functions;
}

std::string Evaluate(const std::string& call_text, std::string_view match = "abc") {
  RecordingHost host;
  const FunctionList functions = Functions();
  std::string value = EvaluateFunctionCall(functions, call_text, match, host);
  EXPECT_TRUE(host.Messages.empty());
  return value;
}

TEST(ComposeString, CodeAndFunctionCall) {
  RecordingHost host;
  EXPECT_EQ(ComposeString(Of({Code("#"), Call("Up(2)")}), "abc", Functions(), host), "#B");
}

TEST(ComposeString, OtherKindsGiveTheirContentsVerbatimAndRenderTextPlaysNoPart) {
  RecordingHost host;
  Pattern string = Of({Str("s "), List("xy"), NotList("z"), OfKind(1, "one"), OfKind(99, "?")});
  string.Subpatterns[0].RenderText = "shown";
  EXPECT_EQ(ComposeString(string, "abc", {}, host), "s xyzone?");
}

TEST(ComposeString, CharacterCodeGivesItsFirstByteOrTheByteZero) {
  RecordingHost host;
  EXPECT_EQ(ComposeString(Of({Code("#!"), Code("")}), "", {}, host), std::string("#\0", 2));
}

TEST(EvaluateFunctionCall, CountsFromOneAndZeroActsAsOne) {
  EXPECT_EQ(Evaluate("Up(1)"), "A");
  EXPECT_EQ(Evaluate("Up(0)"), "A");
  EXPECT_EQ(Evaluate("Up(2)"), "B");
}

TEST(EvaluateFunctionCall, StartPastTheEndPassesTheEmptyArgument) {
  EXPECT_EQ(Evaluate("Up(5)"), "EMPTY");
  EXPECT_EQ(Evaluate("Up(4)"), "EMPTY");
}

TEST(EvaluateFunctionCall, CountIsOneWhenAbsentAndIsClippedToTheMatch) {
  EXPECT_EQ(Evaluate("Up(2,2)"), "BC");
  EXPECT_EQ(Evaluate("Up(2,9)"), "BC");
  EXPECT_EQ(Evaluate("Up(2,0)"), "EMPTY");
  EXPECT_EQ(Evaluate("Same(1,3)"), "abc");
}

TEST(EvaluateFunctionCall, SkipsAllThatIsNoDigitAndNeedsNoClosingBracket) {
  for (const char* call_text :
       {"Same(2-4)", "Same(2,4)", "Same(2 4", "Same( from 2 to 4 )", "Same((2)(4)9"}) {
    EXPECT_EQ(Evaluate(call_text, "abcdefg"), "bcde") << call_text;
  }
}

TEST(EvaluateFunctionCall, HugeNumbersSaturate) {
  EXPECT_EQ(Evaluate("Same(99999999999999999999)"), "");
  EXPECT_EQ(Evaluate("Same(2,99999999999999999999)"), "bc");
  EXPECT_EQ(Evaluate("Same(4294967297)"), "");
  EXPECT_EQ(Evaluate("Same(00002)"), "b");
}

TEST(EvaluateFunctionCall, FirstFunctionOfTheExactNameIsCalled) {
  EXPECT_EQ(Evaluate("Up(1)"), "A");
  RecordingHost host;
  EXPECT_EQ(EvaluateFunctionCall(Functions(), "up(1)", "abc", host), "");
  EXPECT_EQ(EvaluateFunctionCall(Functions(), "Up (1)", "abc", host), "");
  EXPECT_EQ(host.Messages,
            (std::vector<std::string>{
                "DEBUG: Incorrect function call: \"up(1)\" - function \"up\" dosn't exist.",
                "DEBUG: Incorrect function call: \"Up (1)\" - function \"Up \" dosn't exist."}));
}

TEST(EvaluateFunctionCall, FaultyCallsShowTheirMessageAndGiveNothing) {
  const struct {
    const char* CallText;
    const char* Message;
  } cases[] = {
      {"Up", "DEBUG: Incorrect function call: \"Up\" - \"(\" missing."},
      {"", "DEBUG: Incorrect function call: \"\" - \"(\" missing."},
      {"Up()", "DEBUG: Incorrect function call: \"Up()\" - function argument missing."},
      {"1Up(", "DEBUG: Incorrect function call: \"1Up(\" - function argument missing."},
      {"Nope()", "DEBUG: Incorrect function call: \"Nope()\" - function argument missing."},
      {"Nope(1)", "DEBUG: Incorrect function call: \"Nope(1)\" - function \"Nope\" dosn't exist."},
  };
  for (const auto& expected : cases) {
    RecordingHost host;
    EXPECT_EQ(EvaluateFunctionCall(Functions(), expected.CallText, "abc", host), "");
    EXPECT_EQ(host.Messages, std::vector<std::string>{expected.Message});
  }
}

TEST(EvaluateFunction, DefaultsAreEmptyTheArgumentOrForOddValuesEmpty) {
  EXPECT_EQ(EvaluateFunction(FunctionOf("f", {{"a", "1"}, {"a", "2"}}), "a"), "1");
  EXPECT_EQ(EvaluateFunction(FunctionOf("f", {{"a", "1"}}), "A"), "");
  EXPECT_EQ(EvaluateFunction(FunctionOf("f", {{"a", "1"}}, 1), "A"), "A");
  EXPECT_EQ(EvaluateFunction(FunctionOf("f", {{"a", "1"}}, 2), "A"), "");
  EXPECT_EQ(EvaluateFunction(FunctionOf("f", {{"a", "1"}}, 255), "A"), "");
}

TEST(FaultyCalls, ShowTheirMessageAtEveryMatchAndTheReplacementGoesOn) {
  Engine engine;
  EXPECT_EQ(engine.Apply(FilterOf({Replace(Of({Str("a")}), Of({Str("<"), Call("Up"), Str(">")}))}),
                         "aba"),
            "<>b<>");
  EXPECT_EQ(engine.Host.Messages.size(), 2U);
}

TEST(FaultyCalls, UserMayEmptyTheListsWhileTheMessageStands) {
  Filter filter = FilterOf({FromSet(Of({Str("a")}), ReplacementSource::SetInSequence, "s")},
                           {SetOf("s", {Of({Call("Nope(1)"), Str("x"), Call("Nope(2)")})})});
  Engine engine;
  engine.Host.OnMessage = [&] { filter = Filter(); };
  EXPECT_EQ(engine.Apply(filter, "aa"), "x");
}

TEST(MatchPastTheEnd, HandsItsFunctionsTheBytesThatAreThere) {
  Engine engine;
  EXPECT_EQ(engine.Apply(FilterOf({Insert(Of({Str("b"), List("x"), List("y")}), 0,
                                          Of({Str("<"), Call("Same(1,3)"), Str(">")}))},
                                  {}, {FunctionOf("Same", {}, 1)}),
                         "ab"),
            "a<b>b");
}

Filter SequenceFilter(int once) {
  Rule rule = FromSet(Of({Str("x")}), ReplacementSource::SetInSequence, "s");
  rule.Once = once;
  return FilterOf({rule}, {SetOf("s", {Of({Str("A")}), Of({Str("B")}), Of({Str("C")})})});
}

TEST(SetInSequence, StartsAgainAfterTheLastString) {
  Engine engine;
  EXPECT_EQ(engine.Apply(SequenceFilter(0), "x x x x x"), "A B C A B");
  EXPECT_EQ(engine.State.Replacements, 2);
}

TEST(SetInSequence, WithOnceUsesEachStringOnceAndStopsThePass) {
  Engine engine;
  EXPECT_EQ(engine.Apply(SequenceFilter(1), "x x x x x"), "A B C x x");
  EXPECT_EQ(engine.State.Remaining, 2);
}

TEST(SetInSequence, StartsAgainWithEachRule) {
  Filter filter = SequenceFilter(0);
  filter.Rules.Append(filter.Rules[0]);
  filter.Rules[1].Pattern = Of({Str("y")});
  Engine engine;
  EXPECT_EQ(engine.Apply(filter, "xyxy"), "AABB");
}

TEST(SetInSequence, BeyondItsEndTheLastStringIsTaken) {
  Filter filter = SequenceFilter(0);
  Engine engine;
  // The Set loses a string while the third one is due.
  engine.Host.OnPump = [&] {
    if (engine.Host.Pumps == 3) filter.Sets[0].Strings.pop_back();
  };
  EXPECT_EQ(engine.Apply(filter, "x x x x"), "A B B A");
}

TEST(SetInSequence, MissingOrEmptySetPutsInNothing) {
  for (const std::vector<Set>& sets : {std::vector<Set>{}, std::vector<Set>{SetOf("s", {})},
                                       std::vector<Set>{SetOf("S", {Of({Str("A")})})}}) {
    Engine engine;
    EXPECT_EQ(engine.Apply(
                  FilterOf({FromSet(Of({Str("x")}), ReplacementSource::SetInSequence, "s")}, sets),
                  "axbx"),
              "ab");
    EXPECT_TRUE(engine.Host.Messages.empty());
  }
}

TEST(SetInSequence, EmptySetWithOnceReplacesNothing) {
  Rule rule = FromSet(Of({Str("x")}), ReplacementSource::SetInSequence, "s");
  rule.Once = 1;
  Engine engine;
  EXPECT_EQ(engine.Apply(FilterOf({rule}), "axbx"), "axbx");
}

TEST(SetInSequence, StringsMayCallFunctions) {
  Engine engine;
  EXPECT_EQ(
      engine.Apply(FilterOf({FromSet(Of({List("ab")}), ReplacementSource::SetInSequence, "s")},
                            {SetOf("s", {Of({Call("Up(1)")}), Of({Str("-")})})},
                            {FunctionOf("Up", {{"a", "A"}, {"b", "B"}})}),
                   "abab"),
      "A-A-");
}

TEST(Once, WithAStringReplacesTheFirstMatchOnly) {
  Rule rule = Replace(Of({Str("a")}), Of({Str("b")}));
  rule.Once = 1;
  Engine engine;
  EXPECT_EQ(engine.Apply(FilterOf({rule}), "aaa"), "baa");
}

TEST(SetAtRandom, PicksByTheFormulaAfterTheDrawAgainstTheProbability) {
  const std::vector<Pattern> strings = {Of({Str("A")}), Of({Str("B")}), Of({Str("C")})};
  Engine engine;
  engine.Random.Seed(12345);
  const std::string text =
      engine.Apply(FilterOf({FromSet(Of({Str("x")}), ReplacementSource::SetAtRandom, "s")},
                            {SetOf("s", strings)}),
                   std::string(1000, 'x'));
  RandomGenerator random(12345);
  std::string expected;
  for (int i = 0; i < 1000; ++i) {
    random.Next();
    expected += "ABC"[static_cast<int>(random.Next() / 32767.0 * (3 - 1))];
  }
  EXPECT_EQ(text, expected);
  EXPECT_EQ(engine.Random, random);
  // The last string comes only with the generator's greatest value.
  EXPECT_EQ(text.find('C'), std::string::npos);
}

TEST(SetAtRandom, OneStringIsDrawnForAndEmptySetIsNot) {
  for (const std::size_t count : {std::size_t{0}, std::size_t{1}}) {
    Engine engine;
    const std::string text =
        engine.Apply(FilterOf({FromSet(Of({Str("x")}), ReplacementSource::SetAtRandom, "s")},
                              {SetOf("s", std::vector<Pattern>(count, Of({Str("A")})))}),
                     "xx");
    EXPECT_EQ(text, count == 0 ? "" : "AA");
    RandomGenerator random(1);
    for (std::size_t i = 0; i < 2 + 2 * count; ++i) random.Next();
    EXPECT_EQ(engine.Random, random);
  }
}

TEST(SetAtRandom, OnceHasNoEffectAndNothingIsCounted) {
  Rule rule = FromSet(Of({Str("x")}), ReplacementSource::SetAtRandom, "s");
  rule.Once = 1;
  Engine engine;
  EXPECT_EQ(engine.Apply(FilterOf({rule}, {SetOf("s", {Of({Str("A")})})}), "xxx"), "AAA");
  EXPECT_EQ(engine.State.Replacements, 0);
}

TEST(ReplacementSource, OtherNumbersReplaceNothing) {
  for (const int source : {-1, 3, 1000}) {
    Rule rule = Replace(Of({Str("a")}), Of({Str("b")}));
    rule.ReplacementSource = static_cast<ReplacementSource>(source);
    rule.Once = 1;
    Engine engine;
    EXPECT_EQ(engine.Apply(FilterOf({rule}), "aa"), "aa");
    EXPECT_EQ(engine.Host.Pumps, 2);
  }
}

std::string Splice(int from, int to, std::string_view text, std::size_t position) {
  Rule rule;
  rule.From = from;
  rule.To = to;
  TextBuffer buffer(text);
  SpliceReplacement(rule, buffer, position, "XX");
  return buffer.Take();
}

TEST(SpliceReplacement, ReplaceModeTakesFromToInclusive) {
  EXPECT_EQ(Splice(1, 3, "0abc4", 1), "0XX4");
  EXPECT_EQ(Splice(2, 2, "0abc4", 1), "0aXXc4");
  EXPECT_EQ(Splice(2, 3, "0abc4", 1), "0aXX4");
}

TEST(SpliceReplacement, InsertModeRemovesNothing) {
  EXPECT_EQ(Splice(0, -1, "0abc4", 1), "0XXabc4");
  EXPECT_EQ(Splice(3, -1, "0abc4", 1), "0abcXX4");
}

TEST(SpliceReplacement, PositionsOutsideTheTextAreItsEnds) {
  EXPECT_EQ(Splice(-100, -1, "abc", 1), "XXabc");
  EXPECT_EQ(Splice(100, -1, "abc", 1), "abcXX");
  EXPECT_EQ(Splice(-100, 100, "abc", 1), "XX");
  EXPECT_EQ(Splice(1, -2, "abc", 1), "aXXabc");
  EXPECT_EQ(Splice(std::numeric_limits<int>::max(), std::numeric_limits<int>::max(), "abc", 2),
            "abcXX");
  EXPECT_EQ(Splice(std::numeric_limits<int>::min(), std::numeric_limits<int>::min(), "abc", 0),
            "XXabc");
}

TEST(SpliceReplacement, AnEndBeforeTheStartRepeatsText) {
  EXPECT_EQ(Splice(3, 0, "0abc4", 1), "0abXXabc4");
}

}  // namespace
}  // namespace zarvo
