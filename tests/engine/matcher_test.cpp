#include "engine/matcher.h"

#include <gtest/gtest.h>

#include "tests/support/builders.h"

namespace zarvo {
namespace {

using testing::Call;
using testing::Code;
using testing::List;
using testing::NotList;
using testing::Of;
using testing::OfKind;
using testing::Str;

// All matches of a pass over the text that starts with this much remaining.
std::vector<std::int64_t> Matches(const Pattern& pattern, std::string_view text,
                                  EngineState& state) {
  const PreparedPattern prepared(pattern);
  TextBuffer buffer(text);
  std::vector<std::int64_t> starts;
  for (std::int64_t start = prepared.FindNextMatch(buffer, true, state);
       start != PreparedPattern::kNoMatch; start = prepared.FindNextMatch(buffer, false, state)) {
    starts.push_back(start);
  }
  EXPECT_EQ(state.Remaining, 0);
  return starts;
}

std::vector<std::int64_t> Matches(const Pattern& pattern, std::string_view text) {
  EngineState state;
  return Matches(pattern, text, state);
}

using Starts = std::vector<std::int64_t>;

TEST(Prepare, MarkedSubpatternIsTheAnchorEvenWhereAnotherWeighsMore) {
  const PreparedPattern prepared(Of({Str("long text"), Code("q"), Str("x")}, 1));
  EXPECT_EQ(prepared.MostSignificant(), 1);
  EXPECT_EQ(prepared.AnchorOffset(), 9U);
  EXPECT_EQ(prepared.Length(), 11U);
  // The same seen from outside: 'q' at 1 is rejected, so the match that begins at 1 is lost.
  EXPECT_EQ(Matches(Of({List("aq"), Code("q")}, 1), "bqq"), Starts{});
  EXPECT_EQ(Matches(Of({List("aq"), Code("q")}, 0), "bqq"), Starts{1});
}

TEST(Prepare, ChoosesByWeightAndTakesTheEarlierOfEqualOnes) {
  EXPECT_EQ(PreparedPattern(Of({Str("ab"), Str("cd")})).MostSignificant(), 0);
  const PreparedPattern prepared(Of({List("xy"), NotList("z"), Str("ab")}));
  EXPECT_EQ(prepared.MostSignificant(), 2);
  EXPECT_EQ(prepared.AnchorOffset(), 2U);
}

TEST(Prepare, IndexOutsideTheListCountsAsNotChosen) {
  for (const int index : {-7, 2, 99}) {
    EXPECT_EQ(PreparedPattern(Of({List("xy"), Str("ab")}, index)).MostSignificant(), 1) << index;
  }
}

TEST(Prepare, WithoutAChoiceTheFirstSubpatternIsTheAnchor) {
  const PreparedPattern prepared(Of({NotList("a"), NotList("b")}));
  EXPECT_EQ(prepared.MostSignificant(), -1);
  EXPECT_EQ(prepared.AnchorOffset(), 0U);
}

TEST(MatchSubpattern, ComparesBytesExactly) {
  EXPECT_TRUE(MatchSubpattern(Str("bc"), "abc", 1));
  EXPECT_FALSE(MatchSubpattern(Str("BC"), "abc", 1));
  EXPECT_TRUE(MatchSubpattern(Code("b"), "abc", 1));
  EXPECT_TRUE(MatchSubpattern(Code("bz"), "abc", 1));
  EXPECT_FALSE(MatchSubpattern(Code("c"), "abc", 1));
  EXPECT_TRUE(MatchSubpattern(List("xb"), "abc", 1));
  EXPECT_FALSE(MatchSubpattern(List("xy"), "abc", 1));
  EXPECT_FALSE(MatchSubpattern(NotList("xb"), "abc", 1));
  EXPECT_TRUE(MatchSubpattern(NotList("xy"), "abc", 1));
  EXPECT_TRUE(MatchSubpattern(NotList(""), "abc", 1));
  EXPECT_FALSE(MatchSubpattern(List(""), "abc", 1));
  EXPECT_TRUE(MatchSubpattern(List("\xE9"), "caf\xE9", 3));
}

TEST(MatchSubpattern, PastTheEndOnlyAListMatches) {
  for (const std::size_t position : {std::size_t{3}, std::size_t{10}}) {
    EXPECT_FALSE(MatchSubpattern(Str("c"), "abc", position));
    EXPECT_FALSE(MatchSubpattern(Code("c"), "abc", position));
    EXPECT_FALSE(MatchSubpattern(Code(""), "abc", position));
    EXPECT_TRUE(MatchSubpattern(List("x"), "abc", position));
    EXPECT_TRUE(MatchSubpattern(List(""), "abc", position));
    EXPECT_FALSE(MatchSubpattern(NotList("x"), "abc", position));
    EXPECT_TRUE(MatchSubpattern(Str(""), "abc", position));
  }
  EXPECT_FALSE(MatchSubpattern(Str("cd"), "abc", 2));
}

TEST(MatchSubpattern, FunctionsAndUnknownKindsNeverMatch) {
  for (const std::size_t position : {std::size_t{0}, std::size_t{9}}) {
    EXPECT_FALSE(MatchSubpattern(Call("a"), "abc", position));
    EXPECT_FALSE(MatchSubpattern(OfKind(1, "a"), "abc", position));
    EXPECT_FALSE(MatchSubpattern(OfKind(42, "a"), "abc", position));
  }
}

TEST(MatchSubpattern, EmptyCharacterCodeIsTheByteZero) {
  EXPECT_TRUE(MatchSubpattern(Code(""), std::string_view("a\0b", 3), 1));
  EXPECT_FALSE(MatchSubpattern(Code(""), "abc", 1));
}

TEST(FindNextMatch, NegatedListAloneTriesEveryPosition) {
  EXPECT_EQ(Matches(Of({NotList("a")}), "abcab"), (Starts{1, 2, 4}));
}

TEST(FindNextMatch, PatternOfFunctionsOrAnchoredOnOneNeverMatches) {
  EXPECT_EQ(Matches(Of({Call("f(1)")}), "f(1) abc"), Starts{});
  EXPECT_EQ(Matches(Of({Str("a"), Call("f(1)")}, 1), "aaa"), Starts{});
  EXPECT_EQ(Matches(Of({Str("a"), Call("f(1)")}), "aaa"), Starts{});
  EXPECT_EQ(Matches(Of({OfKind(1, "a")}), "aaa"), Starts{});
}

TEST(FindNextMatch, ListPastTheEndCountsAsMatched) {
  EXPECT_EQ(Matches(Of({Str("ab"), List("xy")}), "abx abz ab"), (Starts{0, 8}));
}

TEST(FindNextMatch, MatchPastTheEndLeavesLessThanNothingRemaining) {
  EngineState state;
  TextBuffer text("ab");
  const PreparedPattern prepared(Of({Str("b"), List("x"), List("y")}));
  EXPECT_EQ(prepared.FindNextMatch(text, true, state), 1);
  EXPECT_EQ(state.Remaining, -2);
  // Not 0: a remembered point, behind which there is nothing.
  EXPECT_EQ(prepared.FindNextMatch(text, true, state), -1);
  EXPECT_EQ(state.Remaining, 0);
  EXPECT_EQ(prepared.FindNextMatch(text, true, state), 1);
}

TEST(FindNextMatch, MatchesNeverOverlap) {
  EXPECT_EQ(Matches(Of({Str("aa")}), "aaaa"), (Starts{0, 2}));
  EXPECT_EQ(Matches(Of({Str("aa")}), "aaa"), Starts{0});
}

TEST(FindNextMatch, AMatchNeverStartsBeforeTheEndOfTheLast) {
  // The second 'b' is an anchor whose match would have to begin inside the first match.
  EXPECT_EQ(Matches(Of({List("ab"), Str("b")}, 1), "abb"), Starts{0});
  EXPECT_EQ(Matches(Of({List("ab"), Str("b")}, 1), "abbab"), (Starts{0, 3}));
}

TEST(FindNextMatch, LeftmostAnchorWinsNotTheLeftmostStart) {
  // An anchor in the middle: the occurrence at 0 would start before the text and is passed over,
  // and with it the match that starts there.
  EXPECT_EQ(Matches(Of({List("xy"), Str("x")}, 1), "xx"), Starts{});
  EXPECT_EQ(Matches(Of({List("xy"), Str("x")}, 1), "xyx"), Starts{1});
}

TEST(FindNextMatch, RejectedAnchorMovesTheStartOfTheSearchBehindIt) {
  const Pattern pattern = Of({List("ac"), Str("a")}, 1);
  // 'a' at 1 is rejected for the 'b' before it, and the match at 1 would start on it.
  EXPECT_EQ(Matches(pattern, "baa"), Starts{});
  EXPECT_EQ(Matches(pattern, "baaca"), Starts{3});
}

TEST(FindNextMatch, NegatedListAsAnchorTriesTheNextPositionWithoutMovingTheStart) {
  EXPECT_EQ(Matches(Of({List("a"), NotList("x")}, 1), "baa"), Starts{1});
}

TEST(FindNextMatch, EmptyTextGivesNothingAndLeavesNothingRemaining) {
  for (const Pattern& pattern : {Of({Str("a")}), Of({List("a")}), Of({NotList("a")}), Of({})}) {
    EXPECT_EQ(Matches(pattern, ""), Starts{});
  }
}

TEST(FindNextMatch, PatternOfLengthZeroNeverMatchesAndForgetsTheSearchPoint) {
  for (const Pattern& pattern : {Of({}), Of({Str("")}), Of({Str(""), Str("")}, 1)}) {
    EngineState state;
    state.Remaining = 2;
    TextBuffer text("abc");
    EXPECT_EQ(PreparedPattern(pattern).FindNextMatch(text, true, state), -1);
    EXPECT_EQ(state.Remaining, 0);
  }
}

TEST(FindNextMatch, EmptyStringMarkedAsAnchorIsFoundAtEachPosition) {
  EXPECT_EQ(Matches(Of({Str(""), Str("b")}, 0), "abb"), (Starts{1, 2}));
  // Behind another Subpattern it is found at the start of the tail only, before any match fits.
  EXPECT_EQ(Matches(Of({Str("b"), Str("")}, 1), "abb"), Starts{});
}

TEST(FindNextMatch, RememberedPointBeatsTheFromStartFlag) {
  EngineState state;
  state.Remaining = 2;
  EXPECT_EQ(Matches(Of({Str("a")}), "aaaa", state), (Starts{2, 3}));
}

TEST(FindNextMatch, WithoutTheFlagNothingRemainingFindsNothing) {
  EngineState state;
  TextBuffer text("aaaa");
  EXPECT_EQ(PreparedPattern(Of({Str("a")})).FindNextMatch(text, false, state), -1);
  EXPECT_EQ(state.Remaining, 0);
}

TEST(FindNextMatch, MoreRemainingThanThereIsTextIsCutToTheText) {
  EngineState state;
  state.Remaining = 100;
  EXPECT_EQ(Matches(Of({Str("a")}), "aba", state), (Starts{0, 2}));
}

TEST(FindNextMatch, NegativeRemainingFindsNothingOnceAndIsForgotten) {
  EngineState state;
  state.Remaining = -1;
  EXPECT_EQ(Matches(Of({List("a")}), "aaa", state), Starts{});
  EXPECT_EQ(Matches(Of({List("a")}), "aaa", state), (Starts{0, 1, 2}));
}

TEST(FindNextMatch, TheGapChangesNothing) {
  const std::vector<Pattern> patterns = {Of({Str("ab")}),
                                         Of({List("ab"), Str("a")}, 1),
                                         Of({NotList("a"), List("ab")}),
                                         Of({Str(""), Str("b")}, 0),
                                         Of({Str("b"), List("x")}),
                                         Of({Str("aba")})};
  const std::string text = "abaabbabaab";
  for (const Pattern& pattern : patterns) {
    const PreparedPattern prepared(pattern);
    const Starts expected = Matches(pattern, text);
    for (std::size_t gap = 0; gap <= text.size(); ++gap) {
      TextBuffer buffer(text);
      EngineState state;
      Starts starts;
      bool first = true;
      while (true) {
        buffer.MoveGap(gap);
        const std::int64_t start = prepared.FindNextMatch(buffer, first, state);
        first = false;
        if (start < 0) break;
        starts.push_back(start);
      }
      EXPECT_EQ(starts, expected) << DisplayForm(pattern) << " gap " << gap;
    }
  }
}

}  // namespace
}  // namespace zarvo
