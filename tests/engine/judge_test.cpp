// The naive engine answers for itself, and both engines when the host changes the filter under a
// run.
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "engine/apply_filter.h"
#include "model/filter.h"
#include "tests/support/builders.h"
#include "tests/support/engine_case.h"
#include "tests/support/naive_engine.h"
#include "tests/support/rules_of_every_kind.h"

namespace zarvo::testing {
namespace {

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
