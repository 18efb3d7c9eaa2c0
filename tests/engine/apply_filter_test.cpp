#include "engine/apply_filter.h"

#include <gtest/gtest.h>

#include "tests/support/builders.h"

namespace zarvo {
namespace {

using testing::Engine;
using testing::FilterOf;
using testing::Insert;
using testing::List;
using testing::Of;
using testing::RecordingBar;
using testing::Replace;
using testing::Str;

using Calls = std::vector<std::string>;

Rule Literal(const std::string& from, const std::string& to) {
  return Replace(Of({Str(from)}), Of({Str(to)}));
}

// A run of one rule with the position bar.
RunResult ApplyWithBar(Engine& engine, const Rule& rule, std::string_view text, RecordingBar& bar) {
  TextBuffer buffer(text);
  return ApplyRule(engine.Context(), rule, buffer, {}, {}, &bar);
}

TEST(ApplyFilter, RunsTheRulesInOrderEachOverWhatTheLastOneLeft) {
  Engine engine;
  EXPECT_EQ(
      engine.Apply(FilterOf({Literal("a", "b"), Literal("b", "cc"), Literal("c", "d")}), "ab"),
      "dddd");
}

TEST(ApplyFilter, WithoutRulesCompletesAtOnceWithTheTextUnchanged) {
  Engine engine;
  Filter filter;
  std::string text = "abc";
  RecordingBar bar;
  EXPECT_EQ(ApplyFilter(engine.Context(), filter, text, &bar, nullptr), RunResult::Completed);
  EXPECT_EQ(text, "abc");
  EXPECT_EQ(bar.Calls, (Calls{"range 0 0", "step 1", "position 0", "position 0"}));
  EXPECT_EQ(engine.Host.Pumps, 0);
}

TEST(ApplyFilter, ReplacementNeverRescansItsOwnOutputWithinAPass) {
  Engine engine;
  EXPECT_EQ(engine.Apply(FilterOf({Literal("a", "aa")}), "aba"), "aabaa");
  EXPECT_EQ(engine.Apply(FilterOf({Literal("ab", "b")}), "aabb"), "abb");
}

TEST(ApplyFilter, InsertionBeforeTheMatchIsNeverRescanned) {
  Engine engine;
  EXPECT_EQ(engine.Apply(FilterOf({Insert(Of({Str("a")}), 0, Of({Str("-")}))}), "aa"), "-a-a");
}

TEST(ApplyFilter, PartOfAMatchIsReplacedAndTheSearchGoesOnAfterTheWholeMatch) {
  Rule rule = Literal("aaa", "X");
  rule.From = 2;
  rule.To = 2;
  Engine engine;
  EXPECT_EQ(engine.Apply(FilterOf({rule}), "aaaaa"), "aXaaa");
  EXPECT_EQ(engine.Host.Pumps, 1);
}

TEST(ApplyFilter, ProbabilityZeroFindsEveryMatchAndReplacesNone) {
  Rule rule = Literal("a", "b");
  rule.Probability = 0;
  Engine engine;
  EXPECT_EQ(engine.Apply(FilterOf({rule}), "aaaa"), "aaaa");
  EXPECT_EQ(engine.Host.Pumps, 4);
  RandomGenerator random(1);
  for (int i = 0; i < 4; ++i) random.Next();
  EXPECT_EQ(engine.Random, random);
}

TEST(ApplyFilter, ProbabilityAHundredAndMoreReplacesEveryMatchAndDrawsAllTheSame) {
  for (const int probability : {100, 200, 255}) {
    Rule rule = Literal("a", "b");
    rule.Probability = static_cast<std::uint8_t>(probability);
    Engine engine;
    EXPECT_EQ(engine.Apply(FilterOf({rule}), std::string(70000, 'a')), std::string(70000, 'b'));
    RandomGenerator random(1);
    for (int i = 0; i < 70000; ++i) random.Next();
    EXPECT_EQ(engine.Random, random);
  }
}

TEST(ApplyFilter, ProbabilityIsDrawnAtEachMatchByTheFormula) {
  Rule rule = Literal("a", "b");
  rule.Probability = 30;
  Engine engine;
  engine.Random.Seed(99);
  const std::string text = engine.Apply(FilterOf({rule}), std::string(2000, 'a'));
  RandomGenerator random(99);
  std::string expected;
  for (int i = 0; i < 2000; ++i) {
    expected += 30 > static_cast<int>(random.Next() / 32767.0 * 99) ? 'b' : 'a';
  }
  EXPECT_EQ(text, expected);
}

TEST(ApplyFilter, SameSeedGivesTheSameText) {
  Rule rule = Literal("a", "b");
  rule.Probability = 50;
  Engine one;
  Engine two;
  one.Random.Seed(7);
  two.Random.Seed(7);
  const std::string text(500, 'a');
  EXPECT_EQ(one.Apply(FilterOf({rule}), text), two.Apply(FilterOf({rule}), text));
}

TEST(Flags, AnyValueButZeroIsOn) {
  for (const int on : {1, 2, -1}) {
    Engine engine;
    Rule strict = Literal("aa", "a");
    strict.Strict = on;
    EXPECT_EQ(engine.Apply(FilterOf({strict}), "aaaa"), "a") << on;
    Rule once = Literal("a", "b");
    once.Once = on;
    EXPECT_EQ(engine.Apply(FilterOf({once}), "aa"), "ba") << on;
    once.ReplacementSource = ReplacementSource::SetInSequence;
    once.ReplacementSetName = "s";
    engine.State.Remaining = 0;
    EXPECT_EQ(engine.Apply(FilterOf({once}, {testing::SetOf("s", {Of({Str("c")})})}), "aa"), "ca");
  }
}

TEST(Strict, RepeatsPassesUntilOneFindsNothing) {
  Rule rule = Literal("aa", "a");
  rule.Strict = 1;
  Engine engine;
  EXPECT_EQ(engine.Apply(FilterOf({rule}), "aaaa"), "a");
  EXPECT_EQ(engine.Host.Pumps, 3);  // two matches in the first pass, one in the second
}

TEST(Strict, WhereAMatchSurvivesEveryPassNeverEnds) {
  Rule same = Literal("a", "a");
  same.Strict = 1;
  Rule never = Literal("a", "b");
  never.Strict = 1;
  never.Probability = 0;
  Rule once = Literal("a", "b");
  once.Strict = 1;
  once.Once = 1;
  for (const Rule& rule : {same, never, once}) {
    Engine engine;
    engine.Host.QuitAtPump = 10000;
    Filter filter = FilterOf({rule});
    std::string text = "aaa";
    EXPECT_EQ(ApplyFilter(engine.Context(), filter, text, nullptr, nullptr), RunResult::Stopped);
    EXPECT_EQ(engine.Host.Pumps, 10000);
    EXPECT_EQ(text, "aaa");
  }
}

TEST(Strict, WithOnceGoesOnFromWhereThePassWasStoppedAndEndsWhenNothingIsLeft) {
  Rule rule = Literal("a", "b");
  rule.Strict = 1;
  rule.Once = 1;
  Engine engine;
  EXPECT_EQ(engine.Apply(FilterOf({rule}), "a--"), "b--");
}

TEST(Strict, IsNotStoppedByACancelWithinTheRule) {
  Rule rule = Literal("a", "a");
  rule.Strict = 1;
  Filter filter = FilterOf({rule});
  Engine engine;
  engine.Host.OnPump = [&] { CancelRun(filter); };
  engine.Host.QuitAtPump = 500;
  engine.Apply(filter, "a");
  EXPECT_EQ(engine.Host.Pumps, 500);
}

TEST(RememberedPoint, OutlivesARuleThatOnceEnded) {
  Rule once = Literal("a", "b");
  once.Once = 1;
  Engine engine;
  // The first rule stops at the second 'a'; the next rule goes on behind it.
  EXPECT_EQ(engine.Apply(FilterOf({once, Literal("a", "c")}), "aaaa"), "bacc");
}

TEST(RememberedPoint, OutlivesTheRun) {
  Rule once = Literal("a", "b");
  once.Once = 1;
  Engine engine;
  EXPECT_EQ(engine.Apply(FilterOf({once}), "aaaa"), "baaa");
  EXPECT_EQ(engine.State.Remaining, 2);
  EXPECT_EQ(engine.Apply(FilterOf({Literal("x", "y")}), "xxxxx"), "xxxyy");
  EXPECT_EQ(engine.Apply(FilterOf({Literal("x", "y")}), "xxxxx"), "yyyyy");
}

TEST(OddPositions, InsertionBehindTheMatchMovesTheRestPastTheSearchPoint) {
  Engine engine;
  // After the first match two bytes remain to be searched: of the new text its last two.
  EXPECT_EQ(engine.Apply(FilterOf({Insert(Of({Str("a")}), 2, Of({Str("xx")}))}), "aaa"), "aaxxaxx");
}

TEST(OddPositions, DeletionBehindTheMatchLetsTheSearchGoBack) {
  Rule rule = Literal("a", "a");
  rule.To = 2;
  Engine engine;
  EXPECT_EQ(engine.Apply(FilterOf({rule}), "aaaa"), "a");
}

TEST(OddPositions, TextThatBecomesShorterThanTheRestIsSearchedFromItsStart) {
  Rule rule = Literal("b", "c");
  rule.From = -10;
  rule.To = 99;
  Engine engine;
  EXPECT_EQ(engine.Apply(FilterOf({rule}), "aabaaaa"), "c");
}

TEST(Pumping, HappensAtEveryMatchWithIdleWorkUntilThereIsNone) {
  Engine engine;
  engine.Host.IdleTurns = 2;
  EXPECT_EQ(engine.Apply(FilterOf({Literal("a", "b")}), "a-a"), "b-b");
  EXPECT_EQ(engine.Host.Pumps, 2);
  EXPECT_EQ(engine.Host.IdleCounts, (std::vector<long>{0, 1, 2, 0, 1, 2}));
}

TEST(Pumping, QuittingStopsTheRunAtOnce) {
  Engine engine;
  engine.Host.QuitAtPump = 2;
  Filter filter = FilterOf({Literal("a", "b"), Literal("c", "d")});
  std::string text = "aac";
  EXPECT_EQ(ApplyFilter(engine.Context(), filter, text, nullptr, nullptr), RunResult::Stopped);
  EXPECT_EQ(text, "aac");
  EXPECT_EQ(engine.Host.Pumps, 2);
  // The idle work of that match is still done.
  EXPECT_EQ(engine.Host.IdleCounts.size(), 2U);
  EXPECT_EQ(filter.Applying, 0);
}

TEST(Cancel, LetsTheRuleInProgressFinishAndStopsBeforeTheNext) {
  Filter filter = FilterOf({Literal("a", "b"), Literal("b", "c"), Literal("c", "d")});
  Engine engine;
  bool was_applying = false;
  engine.Host.OnPump = [&] {
    was_applying = filter.Applying == 1;
    if (engine.Host.Pumps == 1) CancelRun(filter);
  };
  std::string text = "aaa";
  RecordingBar bar;
  EXPECT_EQ(ApplyFilter(engine.Context(), filter, text, &bar, nullptr), RunResult::Stopped);
  EXPECT_EQ(text, "aaa");
  EXPECT_EQ(engine.Host.Pumps, 3);
  EXPECT_TRUE(was_applying);
  EXPECT_EQ(filter.Applying, 0);
  EXPECT_EQ(bar.Calls, (Calls{"range 0 3", "step 1", "position 0", "exists", "position 0"}));
  // This way out leaves the flags; the next run clears them.
  EXPECT_EQ(filter.Rules[0].Stop, 1);
  engine.Host.OnPump = nullptr;
  EXPECT_EQ(engine.Apply(filter, "aaa"), "ddd");
}

TEST(Cancel, OfABarWhoseWindowIsGoneLeavesItAlone) {
  Filter filter = FilterOf({Literal("a", "b")});
  Engine engine;
  engine.Host.OnPump = [&] { CancelRun(filter); };
  RecordingBar bar;
  bar.IsThere = false;
  engine.Apply(filter, "a", &bar);
  EXPECT_EQ(bar.Calls, (Calls{"range 0 1", "step 1", "position 0", "exists"}));
}

TEST(Cancel, AtAStepOfTheBarLeavesTheTextThoughTheHostTakesNoTurns) {
  class RestingHost : public RunHost {
   public:
    [[nodiscard]] bool TakesTurns() const override { return false; }
  } host;
  Filter filter = FilterOf({Literal("a", "b"), Literal("b", "c")});
  Engine engine;
  RecordingBar bar;
  bar.OnStep = [&] { CancelRun(filter); };
  std::string text = "a long enough text";
  EXPECT_EQ(ApplyFilter({engine.State, engine.Random, host}, filter, text, &bar, nullptr),
            RunResult::Stopped);
  EXPECT_EQ(text, "a long enough text");
}

TEST(StopFlag, FoundSetStopsTheRunAtTheNextMatch) {
  Filter filter = FilterOf({Literal("a", "b"), Literal("b", "c"), Literal("c", "d")});
  Engine engine;
  // Set while the first rule runs on its copy: the second one's copy has it.
  engine.Host.OnPump = [&] {
    if (engine.Host.Pumps == 1) SetStopFlags(filter.Rules, false);
  };
  std::string text = "aa";
  RecordingBar bar;
  EXPECT_EQ(ApplyFilter(engine.Context(), filter, text, &bar, nullptr), RunResult::Stopped);
  EXPECT_EQ(text, "aa");
  EXPECT_EQ(engine.Host.Pumps, 3);
  EXPECT_EQ(filter.Rules[2].Stop, 0);
  EXPECT_EQ(filter.Applying, 0);
  EXPECT_EQ(bar.Calls,
            (Calls{"range 0 3", "step 1", "position 0", "stepit", "exists", "position 0"}));
  EXPECT_EQ(engine.State.Remaining, 1);
}

TEST(StopFlag, FoundSetAtTheEndOfARuleWithoutMatchesStopsTheRunToo) {
  Rule rule = Literal("a", "b");
  rule.Stop = 1;
  Engine engine;
  TextBuffer text("xyz");
  EXPECT_EQ(ApplyRule(engine.Context(), rule, text, {}, {}, nullptr), RunResult::Stopped);
  EXPECT_EQ(engine.Host.Pumps, 0);
}

TEST(SetStopFlags, SetsTheOppositeOfRunning) {
  Filter filter = FilterOf({Rule(), Rule()});
  SetStopFlags(filter.Rules, false);
  EXPECT_EQ(filter.Rules[0].Stop + filter.Rules[1].Stop, 2);
  SetStopFlags(filter.Rules, true);
  EXPECT_EQ(filter.Rules[0].Stop + filter.Rules[1].Stop, 0);
}

TEST(RuleBar, StepsAfterEachRule) {
  Engine engine;
  Filter filter = FilterOf({Literal("a", "b"), Literal("x", "y")});
  RecordingBar bar;
  engine.Apply(filter, "aaa", &bar);
  EXPECT_EQ(bar.Calls,
            (Calls{"range 0 2", "step 1", "position 0", "stepit", "stepit", "position 0"}));
}

TEST(PositionBar, FollowsTheMatches) {
  Engine engine;
  RecordingBar bar;
  EXPECT_EQ(ApplyWithBar(engine, Literal("a", "bb"), "a-a", bar), RunResult::Completed);
  EXPECT_EQ(bar.Calls,
            (Calls{"range 0 2", "position 0", "position 0", "position 3", "position 0"}));
}

TEST(PositionBar, OfALongTextIsScaledDownByPowersOfTen) {
  Engine engine;
  RecordingBar bar;
  std::string text(40000, '-');
  text[39995] = 'a';
  ApplyWithBar(engine, Literal("a", "b"), text, bar);
  EXPECT_EQ(bar.Calls, (Calls{"range 0 3999", "position 0", "position 3999", "position 0"}));
}

TEST(PositionBar, StaysUnscaledUpToTheLimitAndScalesTwiceWhereOnceIsNotEnough) {
  const struct {
    std::size_t Size;
    const char* Range;
  } cases[] = {{1, "range 0 0"},        {0, "range 0 -1"},        {32768, "range 0 32767"},
               {32769, "range 0 3276"}, {327681, "range 0 3276"}, {1000000, "range 0 9999"}};
  for (const auto& expected : cases) {
    Engine engine;
    RecordingBar bar;
    ApplyWithBar(engine, Literal("a", "b"), std::string(expected.Size, '-'), bar);
    EXPECT_EQ(bar.Calls, (Calls{expected.Range, "position 0", "position 0"})) << expected.Size;
  }
}

TEST(PositionBar, IsSetBackWhenTheStopFlagIsSetFromTheStart) {
  Engine engine;
  Rule rule = Literal("a", "b");
  rule.Stop = 1;
  RecordingBar bar;
  EXPECT_EQ(ApplyWithBar(engine, rule, "aaa", bar), RunResult::Stopped);
  EXPECT_EQ(bar.Calls, (Calls{"exists", "position 0"}));
}

TEST(NestedRun, SharesTheCounters) {
  Filter outer = FilterOf({Literal("a", "b")});
  Engine engine;
  engine.Host.OnPump = [&] {
    if (engine.Host.Pumps != 1) return;
    Filter inner = FilterOf({Literal("x", "y")});
    EXPECT_EQ(engine.Apply(inner, "xxxx"), "xxyy");
  };
  // The inner run starts where the outer one stands (2 bytes remain), and leaves nothing remaining,
  // so the outer pass ends after its first replacement.
  EXPECT_EQ(engine.Apply(outer, "aaa"), "baa");
}

TEST(EditsDuringARun, AreSeenByPosition) {
  Filter filter = FilterOf({Literal("a", "b"), Literal("b", "c"), Literal("c", "d")});
  Engine engine;
  engine.Host.OnPump = [&] {
    if (engine.Host.Pumps == 1) filter.Rules.RemoveAt(0);
  };
  // The rule in progress is a copy; position 1 is now what was the third rule.
  EXPECT_EQ(engine.Apply(filter, "abc"), "bbd");
}

TEST(EditsDuringARun, EmptyingTheFilterCompletesTheRunAfterTheRuleInProgress) {
  Filter filter = FilterOf({Literal("a", "b"), Literal("b", "c")});
  Engine engine;
  engine.Host.OnPump = [&] { filter = Filter(); };
  std::string text = "aa";
  EXPECT_EQ(ApplyFilter(engine.Context(), filter, text, nullptr, nullptr), RunResult::Completed);
  EXPECT_EQ(text, "bb");
  EXPECT_EQ(filter.Applying, 0);
}

TEST(EditsDuringARun, SetsAndFunctionsAreLookedUpAtEachMatch) {
  Filter filter =
      FilterOf({testing::FromSet(Of({Str("a")}), ReplacementSource::SetInSequence, "s")},
               {testing::SetOf("s", {Of({Str("1")}), Of({Str("2")}), Of({Str("3")})})});
  Engine engine;
  engine.Host.OnPump = [&] {
    if (engine.Host.Pumps == 2) filter.Sets[0].Strings = {Of({Str("new")})};
    if (engine.Host.Pumps == 3) filter.Sets.RemoveAll();
  };
  EXPECT_EQ(engine.Apply(filter, "a a a"), "1 new ");
}

}  // namespace
}  // namespace zarvo
