// The real engine against the naive one on every short text over two or three letters, with rules
// of every kind: the texts alone, and among bytes that make them reach over the blocks of a search.
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "engine/matcher.h"
#include "engine/text_buffer.h"
#include "tests/support/builders.h"
#include "tests/support/engine_case.h"
#include "tests/support/judge_settings.h"
#include "tests/support/naive_engine.h"
#include "tests/support/rules_of_every_kind.h"

namespace zarvo::testing {
namespace {

// False at the first difference.
bool AgreeOnAllTexts(EngineCase engine_case, const std::string& letters, std::size_t longest,
                     std::uint64_t& texts) {
  std::string text;
  do {
    ++texts;
    engine_case.Seed = static_cast<std::uint32_t>(texts);
    engine_case.Runs[0].Text = text;
    // A bar shuts off the short cuts.
    engine_case.Runs[0].HasPositionBar = texts % 2 == 0;
    engine_case.Runs[1].HasPositionBar = texts % 2 != 0;
    const std::string difference = FindDifference(engine_case);
    if (!difference.empty()) {
      ADD_FAILURE() << difference;
      return false;
    }
  } while (NextText(text, letters, longest));
  return true;
}

TEST(Judge, AgreesOnPatternsPrepared) {
  for (const Pattern& pattern : PatternsOfEveryKind()) {
    const naive::Preparation expected = naive::Prepare(pattern);
    const PreparedPattern prepared(pattern);
    const std::string description = Describe(MakeFilter({MakeRule(pattern, {}, 1, 1)}));
    EXPECT_EQ(static_cast<std::int64_t>(prepared.Length()), expected.Length) << description;
    EXPECT_EQ(prepared.MostSignificant(), expected.MostSignificant) << description;
    EXPECT_EQ(static_cast<std::int64_t>(prepared.AnchorOffset()), expected.AnchorOffset)
        << description;
  }
}

// Every search from every remembered point, and with the text's gap at every place.
TEST(Judge, AgreesOnEverySearch) {
  for (const Pattern& pattern : PatternsOfEveryKind()) {
    const PreparedPattern prepared(pattern);
    std::string text;
    do {
      const std::int64_t size = static_cast<std::int64_t>(text.size());
      for (std::int64_t remaining = -2; remaining <= size + 2; ++remaining) {
        for (const bool from_start : {false, true}) {
          EngineState expected_state;
          expected_state.Remaining = remaining;
          const std::int64_t expected =
              naive::FindNextMatch(pattern, text, from_start, expected_state);
          for (std::size_t gap = 0; gap <= text.size(); ++gap) {
            EngineState state;
            state.Remaining = remaining;
            TextBuffer buffer(text);
            buffer.MoveGap(gap);
            const std::int64_t found = prepared.FindNextMatch(buffer, from_start, state);
            ASSERT_TRUE(found == expected && state == expected_state)
                << Describe(MakeFilter({MakeRule(pattern, {}, 1, 1)})) << "text \"" << text
                << "\", remaining " << remaining << ", from start " << from_start << ", gap at "
                << gap << ": found " << found << ", left " << state.Remaining << "; should be "
                << expected << ", " << expected_state.Remaining;
          }
        }
      }
    } while (NextText(text, "abc", 5));
  }
}

TEST(Judge, AgreesOnEveryTextOfTwoLetters) {
  std::uint64_t texts = 0;
  for (const Pattern& pattern : PatternsOfEveryKind()) {
    const std::vector<Rule> treatments = Treatments(pattern);
    // The rules take turns at the long texts; each has all the short ones.
    for (std::size_t i = 0; i < treatments.size(); ++i) {
      const std::size_t longest = i % 8 == pattern.Length() % 8 ? 10 : 5;
      ASSERT_TRUE(AgreeOnAllTexts(TwoRuns(MakeFilter({treatments[i]}), 12), "ab", longest, texts));
    }
  }
  RecordProperty("texts", std::to_string(texts));
}

TEST(Judge, AgreesOnEveryTextOfThreeLetters) {
  std::uint64_t texts = 0;
  for (const Pattern& pattern : PatternsOfEveryKind()) {
    const std::vector<Rule> treatments = Treatments(pattern);
    for (std::size_t i = 0; i < treatments.size(); ++i) {
      const std::size_t longest = i % 16 == (pattern.Length() + 5) % 16 ? 7 : 3;
      ASSERT_TRUE(AgreeOnAllTexts(TwoRuns(MakeFilter({treatments[i]}), 12), "abc", longest, texts));
    }
  }
  RecordProperty("texts", std::to_string(texts));
}

// The first Rule leaves a remembered point for the second one.
TEST(Judge, AgreesOnEveryTextWithTwoRules) {
  std::uint64_t texts = 0;
  const std::vector<Pattern>& patterns = PatternsOfEveryKind();
  for (std::size_t i = 0; i < patterns.size(); ++i) {
    for (std::size_t j = 0; j < patterns.size(); j += 3) {
      Rule first = MakeRule(patterns[i], Of({Str("b")}), 1, 1);
      first.Once = 1;
      const Rule second = MakeRule(patterns[j], Of({Str("c")}), 0, Rule::kInsertMode);
      ASSERT_TRUE(AgreeOnAllTexts(TwoRuns(MakeFilter({first, second}), 40), "ab", 6, texts));
    }
  }
  RecordProperty("texts", std::to_string(texts));
}

TEST(Judge, AgreesOnBarsOfLongTexts) {
  for (const std::size_t size :
       {std::size_t{0}, std::size_t{1}, std::size_t{32767}, std::size_t{32768}, std::size_t{32769},
        std::size_t{40000}, std::size_t{327679}, std::size_t{327680}, std::size_t{327681}}) {
    std::string text(size, 'b');
    for (std::size_t i = 7; i < size; i += size / 5) text[i] = 'a';
    if (size > 0) text.back() = 'a';
    EngineCase engine_case =
        TwoRuns(MakeFilter({MakeRule(Of({Str("a")}), Of({Str("cc")}), 1, 1)}), 1000);
    engine_case.Runs[0].Text = text;
    const std::string difference = FindDifference(engine_case);
    ASSERT_TRUE(difference.empty()) << difference.substr(difference.rfind("after run"));
  }
}

}  // namespace
}  // namespace zarvo::testing
