#include "tests/support/builders.h"

#include "engine/apply_filter.h"

namespace zarvo::testing {

Subpattern OfKind(int kind, std::string contents) {
  Subpattern subpattern;
  subpattern.Kind = static_cast<SubpatternKind>(kind);
  subpattern.Contents = std::move(contents);
  return subpattern;
}

Subpattern Str(std::string text) { return OfKind(0, std::move(text)); }
Subpattern List(std::string characters) { return OfKind(2, std::move(characters)); }
Subpattern NotList(std::string characters) { return OfKind(3, std::move(characters)); }
Subpattern Code(std::string contents) { return OfKind(4, std::move(contents)); }
Subpattern Call(std::string call_text) { return OfKind(5, std::move(call_text)); }

Pattern Of(std::vector<Subpattern> subpatterns, int most_significant) {
  Pattern pattern;
  pattern.MostSignificant = most_significant;
  pattern.Subpatterns = std::move(subpatterns);
  return pattern;
}

Rule Replace(const Pattern& pattern, Pattern replacement) {
  Rule rule;
  rule.Pattern = pattern;
  rule.From = 1;
  rule.To = static_cast<std::int32_t>(pattern.Length());
  rule.Replacement = std::move(replacement);
  return rule;
}

Rule Insert(Pattern pattern, int after, Pattern inserted) {
  Rule rule;
  rule.Pattern = std::move(pattern);
  rule.From = after;
  rule.To = Rule::kInsertMode;
  rule.Replacement = std::move(inserted);
  return rule;
}

Rule FromSet(const Pattern& pattern, ReplacementSource source, std::string set_name) {
  Rule rule = Replace(pattern, {});
  rule.ReplacementSource = source;
  rule.ReplacementSetName = std::move(set_name);
  return rule;
}

Set SetOf(std::string name, std::vector<Pattern> strings) {
  Set set;
  set.Name = std::move(name);
  set.Strings = std::move(strings);
  return set;
}

Function FunctionOf(std::string name, std::vector<FunctionEntry> entries,
                    int default_returns_argument) {
  Function function;
  function.Name = std::move(name);
  function.Entries = std::move(entries);
  function.DefaultReturnsArgument = static_cast<std::uint8_t>(default_returns_argument);
  return function;
}

Filter FilterOf(std::vector<Rule> rules, std::vector<Set> sets, std::vector<Function> functions) {
  Filter filter;
  filter.Rules.Elements = std::move(rules);
  filter.Sets.Elements = std::move(sets);
  filter.Functions.Elements = std::move(functions);
  return filter;
}

void RecordingBar::SetRange(std::int64_t least, std::int64_t most) {
  Calls.push_back("range " + std::to_string(least) + " " + std::to_string(most));
}

void RecordingBar::SetStep(std::int64_t step) { Calls.push_back("step " + std::to_string(step)); }

void RecordingBar::SetPosition(std::int64_t position) {
  Calls.push_back("position " + std::to_string(position));
}

std::string Engine::Apply(Filter& filter, std::string text, ProgressBar* rule_bar,
                          ProgressBar* position_bar) {
  static_cast<void>(ApplyFilter(Context(), filter, text, rule_bar, position_bar));
  return text;
}

}  // namespace zarvo::testing
