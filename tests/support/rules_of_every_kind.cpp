#include "tests/support/rules_of_every_kind.h"

#include <cstddef>
#include <utility>

#include "tests/support/builders.h"

namespace zarvo::testing {

const std::vector<Pattern>& PatternsOfEveryKind() {
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

Filter MakeFilter(std::vector<Rule> rules) {
  return FilterOf(std::move(rules),
                  {SetOf("letters", {Of({Str("b")}), Of({Call("f(2)"), Str("a")}), Of({Str("")})}),
                   SetOf("empty", {})},
                  {FunctionOf("f", {{"a", "b"}, {"", "a"}}, Function::kReturnArgument)});
}

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

}  // namespace zarvo::testing
