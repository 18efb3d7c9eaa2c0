// Runs that nobody watches, where the engine takes its short cuts, against the naive engine: every
// search level, with and without a map of what the text holds, on random filters and texts.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "engine/presence_map.h"
#include "tests/support/builders.h"
#include "tests/support/judge_settings.h"
#include "tests/support/random_filter.h"
#include "tests/support/rules_of_every_kind.h"
#include "tests/support/unwatched_run.h"

namespace zarvo::testing {
namespace {

constexpr SearchLevel kLevels[] = {SearchLevel::Plain, SearchLevel::Sse2, SearchLevel::Avx2};

class Unwatched : public ::testing::Test {
 protected:
  ~Unwatched() override { UsePresencePatience({}); }

  // Both engines on the same case. True when they agree or the run never ends.
  static bool Agree(const Filter& filter, const std::string& text, const EngineState& state,
                    std::uint32_t seed, int most_pumps = 100) {
    const UnwatchedComparison comparison = CompareUnwatched(filter, text, state, seed, most_pumps);
    compared_ += comparison.IsMade ? 1 : 0;
    if (comparison.Difference.empty()) return true;
    ADD_FAILURE() << comparison.Difference;
    return false;
  }

  static bool AgreeOnRandomCases(std::uint64_t cases) {
    const std::uint64_t first = FirstSeed();
    for (std::uint64_t i = 0; i < cases; ++i) {
      RandomCases random(first + i);
      const Filter filter = random.MakeFilter();
      if (RepeatsText(filter)) continue;
      std::string text = random.MakeText(filter);
      // Longer than a block of a search, now and then.
      for (std::size_t pieces = random.Below(4) == 0 ? random.Below(12) : 0; pieces > 0; --pieces) {
        text += random.MakeText(filter);
      }
      EngineState state;
      if (random.Below(4) == 0) state.Remaining = static_cast<std::int64_t>(random.Below(20)) - 3;
      if (!Agree(filter, text, state, static_cast<std::uint32_t>(first + i))) {
        ADD_FAILURE() << "again with ZARVO_JUDGE_SEED=" << first + i << " ZARVO_JUDGE_CASES=1";
        return false;
      }
    }
    return true;
  }

  static inline std::uint64_t compared_ = 0;
};

TEST_F(Unwatched, AgreesAtEverySearchLevel) {
  for (const SearchLevel level : kLevels) {
    SCOPED_TRACE("level " + std::to_string(static_cast<int>(level)));
    const WithSearchLevel with_level(level);
    ASSERT_TRUE(AgreeOnRandomCases(RandomCaseCount() / 4 + 1));
  }
  EXPECT_GT(compared_, 0U);
}

TEST_F(Unwatched, AgreesWithAMapOfWhatTheTextHolds) {
  UsePresencePatience({0, 0});
  // The map is large beside these texts, hence fewer of them.
  ASSERT_TRUE(AgreeOnRandomCases(RandomCaseCount() / 200 + 1));
}

// Short texts alone, and among bytes that make them reach over the blocks of a search.
TEST_F(Unwatched, AgreesOnEveryTextWithRulesOfEveryKind) {
  const std::string around(ByteSearch::kBlock + 3, 'z');
  std::uint32_t seed = 0;
  for (const SearchLevel level : kLevels) {
    const WithSearchLevel with_level(level);
    for (const Pattern& pattern : PatternsOfEveryKind()) {
      for (const Rule& rule : Treatments(pattern)) {
        const Filter filter = MakeFilter({rule, MakeRule(Of({Str("b")}), Of({Str("cc")}), 1, 1)});
        std::string text;
        do {
          ++seed;
          ASSERT_TRUE(Agree(filter, text, {}, seed));
          ASSERT_TRUE(Agree(filter, around + text + around, {}, seed, 600));
        } while (NextText(text, "ab", 3));
      }
    }
  }
}

// Dense matches in texts of many blocks, which change their length in every way.
TEST_F(Unwatched, AgreesOnLongTexts) {
  std::string text;
  for (int i = 0; i < 220; ++i) {
    text += static_cast<char>('a' + (i * i + i / 7) % 5);
    if (i % 11 == 0) text += "  ";
    if (i > 100 && i < 180) text += '-';
  }
  const Function up = FunctionOf("Up", {{"a", "A"}, {"b", "BB"}, {"c", ""}, {"ab", "#"}}, 1);
  const Set turns = SetOf("turns", {Of({Str("1")}), Of({Call("Up(1)"), Str("2")}), Of({})});
  std::vector<Filter> filters;
  for (const Pattern& pattern :
       {Of({Str("a")}), Of({Str("ab")}), Of({List("abc")}), Of({NotList("a")}),
        Of({List("ab"), Str("c")}, 1), Of({Str("a"), List("xyz")}), Of({Str("  ")}),
        Of({NotList("b"), Str("a"), NotList("c")}), Of({Str("abcde")})}) {
    const auto length = static_cast<std::int32_t>(pattern.Length());
    for (const Pattern& replacement :
         {Of({}), Of({Str("x")}), Of({Str("xy")}), Of({Call("Up(1)")}),
          Of({Str("<"), Call("Up(1,2)"), Code(">")}), Of({Str(std::string(100, 'z'))})}) {
      for (const int probability : {100, 50}) {
        for (const ReplacementSource source :
             {ReplacementSource::String, ReplacementSource::SetInSequence,
              ReplacementSource::SetAtRandom}) {
          Rule rule = Replace(pattern, replacement);
          rule.SetProbability(probability);
          rule.ReplacementSource = source;
          rule.ReplacementSetName = "turns";
          for (const auto& [from, to] : {std::pair<int, int>{1, length},
                                         {length, length},
                                         {1, 0},
                                         {length, Rule::kInsertMode},
                                         {0, Rule::kInsertMode},
                                         {2, length + 3},
                                         {-1, Rule::kInsertMode}}) {
            rule.From = from;
            rule.To = to;
            // A second Rule over what the first one left.
            filters.push_back(
                FilterOf({rule, Replace(Of({Str("c")}), Of({Str("cc")})), rule}, {turns}, {up}));
          }
        }
      }
    }
  }
  for (const SearchLevel level : kLevels) {
    const WithSearchLevel with_level(level);
    for (std::size_t i = static_cast<std::size_t>(level); i < filters.size(); i += 2) {
      ASSERT_TRUE(Agree(filters[i], text, {}, 7, 2000));
    }
  }
  UsePresencePatience({0, 0});
  for (std::size_t i = 0; i < filters.size(); i += 7) {
    Filter filter = filters[i];
    filter.Rules.InsertBefore(0, Replace(Of({Str("none")}), {}));
    ASSERT_TRUE(Agree(filter, text, {}, 7, 2000));
  }
}

// What replacements add to a text is known to the map too.
TEST_F(Unwatched, LaterRulesFindWhatEarlierOnesMade) {
  UsePresencePatience({0, 0});
  const auto replace = [](const char* found, const char* put) {
    return Replace(Of({Str(found)}), Of({Str(put)}));
  };
  // By a table over the whole text.
  ASSERT_TRUE(
      Agree(FilterOf({replace("zz", "-"), replace("a", "x"), replace("xb", "Q")}), "aab", {}, 1));
  // At the edge of what was put in, in steps that have room and in steps that have none.
  std::string text;
  for (int i = 0; i < 100; ++i) text += "aa";
  text += "cdeaaefg" + std::string(50, '.') + "efg";
  const Filter filter = FilterOf({replace("zz", "-"), replace("eacd", "-"), replace("aa", "x"),
                                  replace("cdex", "Q"), replace("xefg", "P")});
  ASSERT_TRUE(Agree(filter, text, {}, 1, 2000));
  ASSERT_TRUE(Agree(filter, text.substr(150), {}, 1, 2000));
}

// Sets whose strings are many beside the text, and Functions that are too many for tables.
TEST_F(Unwatched, AgreesOnLargeSets) {
  std::vector<Function> functions;
  Set set = SetOf("many", {});
  for (int i = 0; i < 400; ++i) {
    const std::string name = "f" + std::to_string(i);
    functions.push_back(FunctionOf(name, {{"a", name}}, i % 2));
    set.Strings.push_back(Of({Call(name + "(1)")}));
  }
  set.Strings[390] = Of({Call("none(1)")});
  for (const ReplacementSource source :
       {ReplacementSource::SetInSequence, ReplacementSource::SetAtRandom}) {
    Rule rule = Replace(Of({Str("a")}), Of({}));
    rule.ReplacementSource = source;
    rule.ReplacementSetName = "many";
    const Filter filter = FilterOf({rule}, {set}, functions);
    for (const std::size_t size : {0, 1, 300, 900}) {
      ASSERT_TRUE(Agree(filter, std::string(size, 'a'), {}, 1, 1000));
      ASSERT_TRUE(Agree(filter, std::string(size, 'a') + std::string(25000, '.'), {}, 1, 1000));
    }
  }
}

TEST_F(Unwatched, StrictPassesRunUntilNothingIsFound) {
  Rule rule = Replace(Of({Str("  ")}), Of({Str(" ")}));
  rule.Strict = 1;
  std::string text;
  for (std::size_t i = 0; i < 60; ++i) text += "w" + std::string(i, ' ');
  ASSERT_TRUE(Agree(FilterOf({rule}), text, {}, 1, 2000));
}

}  // namespace
}  // namespace zarvo::testing
