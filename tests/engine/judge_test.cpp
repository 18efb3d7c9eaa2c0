// The real engine against the naive one: on every short text over two or three letters, on seeded
// random cases, and while the host changes the filter under a run.
//
// ZARVO_JUDGE_CASES sets the number of random cases, ZARVO_JUDGE_SEED the seed of the first one; a
// failure prints both for the case at hand.
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "engine/apply_filter.h"
#include "engine/matcher.h"
#include "engine/search.h"
#include "engine/text_buffer.h"
#include "model/filter.h"
#include "tests/support/builders.h"
#include "tests/support/naive_engine.h"
#include "tests/support/random_filter.h"

namespace zarvo::testing {
namespace {

const std::vector<Pattern>& Patterns() {
  static const std::vector<Pattern> kPatterns = {
      Of({Str("a")}),
      Of({Str("b")}, 0),
      Of({Str("aa")}),
      Of({Str("ab")}),
      Of({Str("aba")}),
      Of({Str("a"), Str("b")}),
      Of({Str("a"), Str("b")}, 1),
      Of({Str("ab"), Str("ab")}, 1),
      Of({Str("a"), Str("ba")}),
      Of({Str("aa"), Str("a")}, 1),
      Of({Code("a")}),
      Of({Code("")}),
      Of({Code("ab"), Code("b")}),
      Of({Code("a"), Code("a"), Code("b")}, 2),
      Of({List("a")}),
      Of({List("ab")}),
      Of({List("")}),
      Of({List(""), Str("a")}),
      Of({Str("a"), List("")}),
      Of({Str("b"), List("a"), List("b")}),
      Of({Str("ab"), List("c")}),
      Of({List("ab"), List("b")}, 0),
      Of({List("ab"), List("b")}, 1),
      Of({List("aaaaaaaaaaab")}),
      Of({List("aaaaaaaaaaab"), NotList("b")}),
      Of({List("b"), List("a"), Str("")}, 2),
      Of({NotList("a")}),
      Of({NotList("")}),
      Of({NotList("ab")}),
      Of({NotList("a"), NotList("b")}, 1),
      Of({NotList("a"), Str("a")}),
      Of({NotList("a"), Str("a")}, 0),
      Of({Str("a"), NotList("a")}, 1),
      Of({Str("ab"), NotList("b"), List("a")}, 1),
      Of({List("ab"), NotList(""), Str("a")}, 1),
      Of({NotList("b"), Str("a"), NotList("b")}),
      Of({Str(""), Str("a")}),
      Of({Str(""), Str("a")}, 0),
      Of({Str("a"), Str("")}, 1),
      Of({Str("a"), Str(""), Str("b")}, 1),
      Of({Str(""), NotList("a")}),
      Of({Str("")}),
      Of({Str("")}, 0),
      Of({}),
      Of({}, 0),
      Of({Call("f(1)")}),
      Of({Str("a"), Call("f(1)")}),
      Of({Call("f(1)"), Str("a")}),
      Of({Call("f(1)"), NotList("a")}),
      Of({OfKind(1, "a")}),
      Of({OfKind(6, "a"), Str("a")}, 0),
      Of({Str("a"), OfKind(-1, "a")}, 7),
      Of({Str("a"), List("b")}, -2),
      Of({Str("a"), NotList("a"), Str("a")}, 3),
      Of({List("a"), List("a"), List("a")}, 2),
      Of({List("ab"), Str("a"), List("ab"), List("b")}),
  };
  return kPatterns;
}

Rule MakeRule(Pattern pattern, Pattern replacement, std::int32_t from, std::int32_t to) {
  Rule rule;
  rule.Pattern = std::move(pattern);
  rule.Replacement = std::move(replacement);
  rule.From = from;
  rule.To = to;
  return rule;
}

// What a Rule may do with a match, whatever it looks for.
std::vector<Rule> Treatments(const Pattern& pattern) {
  const std::int32_t length = static_cast<std::int32_t>(pattern.Length());
  const Pattern nothing = Of({});
  const Pattern letter = Of({Str("a")});
  const Pattern echo = Of({Call("f(1,9)"), Code("b")});
  std::vector<Rule> rules = {
      MakeRule(pattern, nothing, 1, length),
      MakeRule(pattern, letter, 1, length),
      MakeRule(pattern, echo, 1, length),
      MakeRule(pattern, letter, 0, Rule::kInsertMode),
      MakeRule(pattern, echo, length, Rule::kInsertMode),
      MakeRule(pattern, letter, -3, Rule::kInsertMode),
      MakeRule(pattern, letter, 4, Rule::kInsertMode),
      MakeRule(pattern, letter, 2, 2),
      MakeRule(pattern, nothing, 1, 1),
      MakeRule(pattern, letter, 0, 0),
      MakeRule(pattern, nothing, -2, 1),
      MakeRule(pattern, letter, 2, length + 2),
      MakeRule(pattern, nothing, 3, 1),
      MakeRule(pattern, letter, 2, -3),
  };
  for (const std::size_t i : {std::size_t{0}, std::size_t{1}, std::size_t{7}, std::size_t{8}}) {
    rules.push_back(rules[i]);
    rules.back().Strict = 1;
  }
  for (const std::size_t i : {std::size_t{0}, std::size_t{3}}) {
    rules.push_back(rules[i]);
    rules.back().Once = 1;
    rules.push_back(rules.back());
    rules.back().Strict = 1;
  }
  for (const char* set : {"letters", "empty", "missing"}) {
    for (const ReplacementSource source :
         {ReplacementSource::SetInSequence, ReplacementSource::SetAtRandom}) {
      rules.push_back(rules[1]);
      rules.back().ReplacementSource = source;
      rules.back().ReplacementSetName = set;
      rules.push_back(rules.back());
      rules.back().Once = 1;
    }
  }
  for (const int probability : {0, 50, 99}) {
    rules.push_back(rules[4]);
    rules.back().SetProbability(probability);
  }
  rules.push_back(rules[2]);
  rules.back().ReplacementSource = static_cast<ReplacementSource>(3);
  return rules;
}

// Rules with the Sets "letters" and "empty" and the Function "f" around them.
Filter MakeFilter(std::vector<Rule> rules) {
  return FilterOf(std::move(rules),
                  {SetOf("letters", {Of({Str("b")}), Of({Call("f(2)"), Str("a")}), Of({Str("")})}),
                   SetOf("empty", {})},
                  {FunctionOf("f", {{"a", "b"}, {"", "a"}}, Function::kReturnArgument)});
}

// The text after this one in the order by length, then by letter. False after the last one.
bool NextText(std::string& text, const std::string& letters, std::size_t longest) {
  for (std::size_t i = text.size(); i-- > 0;) {
    const std::size_t letter = letters.find(text[i]);
    if (letter + 1 < letters.size()) {
      text[i] = letters[letter + 1];
      return true;
    }
    text[i] = letters[0];
  }
  text += letters[0];
  for (char& c : text) c = letters[0];
  return text.size() <= longest;
}

// Two runs, so that what one leaves of the counters meets the next.
EngineCase TwoRuns(Filter filter, std::int64_t pumps) {
  EngineCase engine_case;
  engine_case.Runs.resize(2);
  engine_case.Runs[0].Filter = std::move(filter);
  engine_case.Runs[1].KeepsFilter = true;
  engine_case.Runs[1].KeepsText = true;
  for (RunPlan& run : engine_case.Runs) {
    run.HasRuleBar = true;
    run.HasPositionBar = true;
    run.Pumps = pumps;
    run.TellsOfDeeds = true;
  }
  return engine_case;
}

// False at the first difference.
bool AgreeOnAllTexts(EngineCase engine_case, const std::string& letters, std::size_t longest,
                     std::uint64_t& texts) {
  std::string text;
  do {
    ++texts;
    engine_case.Seed = static_cast<std::uint32_t>(texts);
    engine_case.Runs[0].Text = text;
    const std::string difference = FindDifference(engine_case);
    if (!difference.empty()) {
      ADD_FAILURE() << difference;
      return false;
    }
  } while (NextText(text, letters, longest));
  return true;
}

std::uint64_t NumberFromEnvironment(const char* name, std::uint64_t otherwise) {
  const char* value = std::getenv(name);
  return value == nullptr ? otherwise : std::strtoull(value, nullptr, 10);
}

// False at the first difference.
bool AgreeOnRandomCases(std::uint64_t cases, bool with_deeds) {
  const std::uint64_t first_seed = NumberFromEnvironment("ZARVO_JUDGE_SEED", 1);
  for (std::uint64_t i = 0; i < cases; ++i) {
    RandomCases random(first_seed + i);
    EngineCase engine_case = random.MakeCase(with_deeds);
    // What is prepared stays in use with every other case.
    for (RunPlan& run : engine_case.Runs) run.TellsOfDeeds = i % 2 != 0;
    const std::string difference = FindDifference(engine_case);
    if (difference.empty()) continue;
    ADD_FAILURE() << "again with ZARVO_JUDGE_SEED=" << first_seed + i << " ZARVO_JUDGE_CASES=1\n"
                  << difference;
    return false;
  }
  return true;
}

std::uint64_t RandomCaseCount() { return NumberFromEnvironment("ZARVO_JUDGE_CASES", 1000000); }

struct KnownAnswer {
  Rule TheRule;
  std::string Input;
  std::string Result;
};

std::string JudgeOf(const Rule& rule, std::string text) {
  EngineState state;
  RandomGenerator random(1);
  RecordingHost host;
  host.QuitAtPump = 100;
  Filter filter = MakeFilter({rule});
  const RunResult result =
      naive::ApplyFilter({state, random, host}, filter, text, nullptr, nullptr);
  if (result == RunResult::Stopped) text = "stopped: " + text;
  for (const std::string& message : host.Messages) text += "|" + message;
  return text;
}

Rule WithFlags(Rule rule, bool strict, bool once) {
  rule.Strict = strict ? 1 : 0;
  rule.Once = once ? 1 : 0;
  return rule;
}

Rule FromLetters(Rule rule, ReplacementSource source, bool once) {
  rule.ReplacementSource = source;
  rule.ReplacementSetName = "letters";
  rule.Once = once ? 1 : 0;
  return rule;
}

// Two engines that err in the same way would agree, so the judge has to answer for itself first.
TEST(Judge, GivesTheKnownAnswers) {
  const Pattern a = Of({Str("a")});
  const Pattern ab_then_list = Of({Str("ab"), List("xy")});
  const Pattern abc = Of({Str("abc")});
  const Pattern dash = Of({Str("-")});
  const auto call = [](const char* text) { return Of({Code("#"), Call(text)}); };
  const std::vector<KnownAnswer> answers = {
      {MakeRule(ab_then_list, dash, 1, 3), "abx abz ab", "- abz -"},
      {MakeRule(Of({Str("aa")}), dash, 0, -1), "aaaa", "-aa-aa"},
      {MakeRule(Of({Str("aa")}), dash, 1, 2), "aaaaa", "--a"},
      {MakeRule(a, dash, 0, -1), "aa", "-a-a"},
      {MakeRule(a, dash, 1, -1), "aa", "a-a-"},
      {MakeRule(abc, dash, 2, 2), "abcabc", "a-ca-c"},
      {MakeRule(abc, call("f(2)"), 1, 3), "abc", "#b"},
      {MakeRule(abc, call("f(0)"), 1, 3), "abc", "#b"},
      {MakeRule(abc, call("f(1)"), 1, 3), "abc", "#b"},
      {MakeRule(abc, call("f(5)"), 1, 3), "abc", "#a"},
      {MakeRule(abc, call("f(2-4)"), 1, 3), "abc", "#bc"},
      {MakeRule(abc, call("f(2 4"), 1, 3), "abc", "#bc"},
      {MakeRule(abc, call("Up"), 1, 3), "abc",
       "#|DEBUG: Incorrect function call: \"Up\" - \"(\" missing."},
      {MakeRule(abc, call("Up()"), 1, 3), "abc",
       "#|DEBUG: Incorrect function call: \"Up()\" - function argument missing."},
      {MakeRule(abc, call("Nope(1)"), 1, 3), "abc",
       "#|DEBUG: Incorrect function call: \"Nope(1)\" - function \"Nope\" dosn't exist."},
      {WithFlags(MakeRule(Of({Str("aa")}), a, 1, 2), true, false), "aaaa", "a"},
      {WithFlags(MakeRule(a, dash, 1, 1), false, true), "aaa", "-aa"},
      {WithFlags(MakeRule(a, a, 1, 1), true, false), "a", "stopped: a"},
      {FromLetters(MakeRule(abc, dash, 1, 3), ReplacementSource::SetInSequence, false),
       "abc abc abc abc abc", "b ba  b ba"},
      {FromLetters(MakeRule(abc, dash, 1, 3), ReplacementSource::SetInSequence, true),
       "abc abc abc abc abc", "b ba  abc abc"},
      {MakeRule(Of({Call("f(1)")}), dash, 1, 1), "abc", "abc"},
      {MakeRule(Of({List("ab"), Str("a")}), dash, 1, 2), "aab", "aab"},
      {MakeRule(Of({NotList("a")}), dash, 1, 1), "abac", "a-a-"},
  };
  for (const KnownAnswer& answer : answers) {
    EXPECT_EQ(JudgeOf(answer.TheRule, answer.Input), answer.Result)
        << Describe(MakeFilter({answer.TheRule}));
  }
}

TEST(Judge, AgreesOnPatternsPrepared) {
  for (const Pattern& pattern : Patterns()) {
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
  for (const Pattern& pattern : Patterns()) {
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
  for (const Pattern& pattern : Patterns()) {
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
  for (const Pattern& pattern : Patterns()) {
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
  const std::vector<Pattern>& patterns = Patterns();
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

// Sets a search level for a test, and the best one again at its end.
class WithLevel {
 public:
  explicit WithLevel(SearchLevel level) { UseSearchLevel(level); }
  ~WithLevel() { UseSearchLevel(BestSearchLevel()); }
  WithLevel(const WithLevel&) = delete;
  WithLevel& operator=(const WithLevel&) = delete;
};

TEST(Judge, AgreesOnRandomCasesAtTheLowerSearchLevels) {
  for (const SearchLevel level : {SearchLevel::Plain, SearchLevel::Sse2}) {
    SCOPED_TRACE("level " + std::to_string(static_cast<int>(level)));
    const WithLevel with_level(level);
    ASSERT_TRUE(AgreeOnRandomCases((RandomCaseCount() + 9) / 10, false));
    ASSERT_TRUE(AgreeOnRandomCases((RandomCaseCount() + 9) / 10, true));
  }
}

TEST(Judge, AgreesOnRandomCases) { ASSERT_TRUE(AgreeOnRandomCases(RandomCaseCount(), false)); }

TEST(Judge, AgreesOnRandomCasesWithDeeds) {
  ASSERT_TRUE(AgreeOnRandomCases((RandomCaseCount() + 4) / 5, true));
}

// Every deed in every call of a run of several rules, alone and after each other deed.
TEST(Judge, AgreesOnDeeds) {
  const Pattern a = Of({Str("a")});
  const Pattern b = Of({Str("b")});
  const Pattern faulty = Of({Call("f(1)"), Call("none(1)"), Call("f(2)")});
  Rule first = MakeRule(a, faulty, 1, 1);
  Rule second = MakeRule(b, {}, 1, 1);
  second.ReplacementSource = ReplacementSource::SetInSequence;
  second.ReplacementSetName = "letters";
  Rule third = MakeRule(Of({NotList("b")}), Of({Str("d")}), 0, Rule::kInsertMode);
  third.Once = 1;
  EngineCase engine_case = TwoRuns(MakeFilter({first, second, third}), 40);
  Filter other = MakeFilter({MakeRule(b, Of({Str("e")}), 1, 1)});
  other.Rules[0].Stop = 1;
  other.Sets[0].Strings.assign(2, Of({Call("f(1)"), Str("g")}));
  other.Functions[0].Entries = {{"b", "h"}};
  for (RunPlan& run : engine_case.Runs) {
    run.Text = "abcab";
    run.OtherFilter = other;
    run.OtherText = "bbab";
    run.ExistsAnswers = 1;
  }
  std::vector<TimedDeed>& deeds = engine_case.Runs[0].Deeds;
  for (std::int64_t call = 0; call < 20; ++call) {
    for (int deed = 0; deed < kHostDeeds; ++deed) {
      for (int later_deed = 0; later_deed < kHostDeeds; ++later_deed) {
        for (std::int64_t later = 0; later < 3; ++later) {
          for (const bool bars : {false, true}) {
            deeds = {{call, static_cast<HostDeed>(deed)},
                     {call + later, static_cast<HostDeed>(later_deed)}};
            engine_case.Runs[0].HasRuleBar = bars;
            engine_case.Runs[0].HasPositionBar = bars;
            for (RunPlan& run : engine_case.Runs) run.TellsOfDeeds = (call + deed) % 2 != 0;
            const std::string difference = FindDifference(engine_case);
            ASSERT_TRUE(difference.empty()) << difference;
          }
        }
      }
    }
  }
}

// What a host does at its first pump, and what must come of it.
struct DeedOutcome {
  const char* Name;
  std::function<void(Filter&, const RunContext&)> Deed;
  RunResult Result;
  const char* Text;
};

// The plain doings of a user, with their outcomes written down: the engines might agree on a wrong
// one.
TEST(Judge, KnowsWhatComesOfDeeds) {
  const Pattern a = Of({Str("a")});
  const Pattern b = Of({Str("b")});
  const Pattern c = Of({Str("c")});
  Rule first = Replace(a, {});
  first.ReplacementSource = ReplacementSource::SetInSequence;
  first.ReplacementSetName = "s";
  const Filter filter =
      FilterOf({first, Replace(b, Of({Str("B")})), Replace(c, Of({Call("f(1)")}))},
               {SetOf("s", {Of({Str("A")})})}, {FunctionOf("f", {{"c", "C"}})});
  const auto nothing = [](Filter&, const RunContext&) {};
  const auto nested = [](Filter& running, const RunContext& context) {
    std::string text = "c";
    EXPECT_EQ(ApplyFilter(context, running, text, nullptr, nullptr), RunResult::Completed);
    EXPECT_EQ(text, "C");
    EXPECT_EQ(context.State.Remaining, 0);
  };
  const std::vector<DeedOutcome> outcomes = {
      {"nothing", nothing, RunResult::Completed, "AABBCC"},
      {"cancel", [](Filter& f, const RunContext&) { CancelRun(f); }, RunResult::Stopped, "aabbcc"},
      {"stop flags alone", [](Filter& f, const RunContext&) { SetStopFlags(f.Rules, false); },
       RunResult::Stopped, "aabbcc"},
      {"stop flag of the running rule", [](Filter& f, const RunContext&) { f.Rules[0].Stop = 1; },
       RunResult::Completed, "AABBCC"},
      {"all rules removed", [](Filter& f, const RunContext&) { f.Rules.RemoveAll(); },
       RunResult::Completed, "AAbbcc"},
      {"running rule removed", [](Filter& f, const RunContext&) { f.Rules.RemoveAt(0); },
       RunResult::Completed, "AAbbCC"},
      {"rule put before the running one",
       [](Filter& f, const RunContext&) {
         Rule rule = f.Rules[1];
         rule.Pattern = Of({Str("c")});
         f.Rules.InsertBefore(0, std::move(rule));
       },
       RunResult::Completed, "AABBCC"},
      {"sets cleared", [](Filter& f, const RunContext&) { f.Sets.RemoveAll(); },
       RunResult::Completed, "BBCC"},
      {"functions emptied", [](Filter& f, const RunContext&) { f.Functions[0].Entries.clear(); },
       RunResult::Completed, "AABB"},
      {"filter replaced",
       [](Filter& f, const RunContext&) {
         f = FilterOf({{}, Replace(Of({Str("b")}), Of({Str("x")}))}, {SetOf("s", {Of({Str("y")})})},
                      {});
       },
       RunResult::Completed, "yyxxcc"},
      // The nested search leaves nothing remaining, so the outer Rule finds no second match.
      {"nested run", nested, RunResult::Completed, "AaBBCC"},
      {"cancel, then a nested run clears it",
       [&](Filter& f, const RunContext& context) {
         CancelRun(f);
         nested(f, context);
       },
       RunResult::Completed, "AaBBCC"},
  };
  for (const DeedOutcome& outcome : outcomes) {
    for (const bool naive : {false, true}) {
      SCOPED_TRACE(std::string(outcome.Name) + (naive ? ", judge" : ", engine"));
      Filter running = filter;
      EngineState state;
      RandomGenerator random(1);
      RecordingHost host;
      host.OnPump = [&] {
        if (host.Pumps == 1) outcome.Deed(running, {state, random, host});
      };
      std::string text = "aabbcc";
      const RunResult result =
          naive ? naive::ApplyFilter({state, random, host}, running, text, nullptr, nullptr)
                : ApplyFilter({state, random, host}, running, text, nullptr, nullptr);
      EXPECT_EQ(result, outcome.Result);
      EXPECT_EQ(text, outcome.Text);
      EXPECT_EQ(running.Applying, 0);
    }
  }
}

}  // namespace
}  // namespace zarvo::testing
