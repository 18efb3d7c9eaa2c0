#include "bench/sample_filter.h"

#include <cstdint>
#include <utility>

namespace zarvo {
namespace {

Set SetOf(std::string_view name, const std::vector<std::string_view>& strings) {
  Set set;
  set.Name = name;
  for (const std::string_view text : strings) set.Strings.push_back(Literal(text));
  return set;
}

Rule Drawing(Pattern pattern, ReplacementSource source, std::string_view set_name) {
  Rule rule = Replacing(std::move(pattern), {});
  rule.ReplacementSource = source;
  rule.ReplacementSetName = set_name;
  return rule;
}

}  // namespace

Subpattern Part(SubpatternKind kind, std::string_view contents) {
  Subpattern part;
  part.Kind = kind;
  part.Contents = contents;
  return part;
}

Pattern PatternOf(std::vector<Subpattern> parts) {
  Pattern pattern;
  pattern.Subpatterns = std::move(parts);
  return pattern;
}

Pattern Literal(std::string_view text) { return PatternOf({Part(SubpatternKind::String, text)}); }

Rule Replacing(Pattern pattern, Pattern replacement) {
  Rule rule;
  rule.From = 1;
  rule.To = static_cast<std::int32_t>(pattern.Length());
  rule.Pattern = std::move(pattern);
  rule.Replacement = std::move(replacement);
  return rule;
}

Rule Inserting(Pattern pattern, int after, Pattern inserted) {
  Rule rule = Replacing(std::move(pattern), std::move(inserted));
  rule.From = after;
  rule.To = Rule::kInsertMode;
  return rule;
}

Function UpFunction() {
  Function function;
  function.Name = "Up";
  function.DefaultReturnsArgument = Function::kReturnArgument;
  for (char letter = 'a'; letter <= 'z'; ++letter) {
    const auto capital = static_cast<char>(letter - 'a' + 'A');
    function.Entries.push_back({std::string(1, letter), std::string(1, capital)});
  }
  return function;
}

Filter FilterOf(std::vector<Rule> rules) {
  Filter filter;
  filter.Rules.Elements = std::move(rules);
  return filter;
}

Filter MixedFilter() {
  const Subpattern letters = Part(SubpatternKind::CharacterList, "abcdefghijklmnopqrstuvwxyz");

  Rule capital = Replacing(PatternOf({Part(SubpatternKind::String, ". "), letters}),
                           PatternOf({Part(SubpatternKind::Function, "Up(3)")}));
  capital.From = capital.To;

  Rule drawn = Replacing(Literal("th"), Literal("dh"));
  drawn.SetProbability(50);

  Rule squeezing = Replacing(Literal("  "), Literal(" "));
  squeezing.Strict = 1;

  Filter filter = FilterOf({
      Replacing(Literal("er"), Literal("re")),
      capital,
      Replacing(PatternOf({Part(SubpatternKind::CharacterList, "0123456789")}), {}),
      Drawing(PatternOf({Part(SubpatternKind::CharacterCode, "y")}),
              ReplacementSource::SetInSequence, "Sounds"),
      Drawing(PatternOf({Part(SubpatternKind::CharacterList, "kq")}),
              ReplacementSource::SetAtRandom, "Sounds"),
      Inserting(Literal(","), 1, Literal(" well,")),
      drawn,
      squeezing,
  });
  filter.Functions.Append(UpFunction());
  filter.Sets.Append(SetOf("Sounds", {"ee", "oh", "i"}));
  return filter;
}

Filter IdleFilter(std::size_t rules) {
  Filter filter;
  for (std::size_t i = 0; i < rules; ++i) {
    // A capital that no sample text has, amid its most frequent letters.
    const std::string word = "et" + std::to_string(i) + "Qa";
    filter.Rules.Append(Replacing(Literal(word), Literal("never")));
  }
  return filter;
}

Filter StoredFilter(std::size_t rules) {
  constexpr std::size_t kRulesPerGroup = 10;
  Filter filter;
  filter.Name = "Stored";
  filter.Author = "Benchmark";
  filter.Description = "Rules of every kind, to be loaded and saved.";
  for (std::size_t i = 0; i < rules; ++i) {
    const std::string number = std::to_string(i);
    const std::string group = std::to_string(i / kRulesPerGroup);
    if (i % kRulesPerGroup == 0) {
      Function function = UpFunction();
      function.Name += group;
      filter.Functions.Append(std::move(function));
      filter.Sets.Append(SetOf("Set" + group, {"one", "two", "three", "four"}));
    }
    Pattern pattern = PatternOf({
        Part(SubpatternKind::String, "word" + number),
        Part(SubpatternKind::CharacterList, "aeiou"),
        Part(SubpatternKind::NegatedCharacterList, "0123456789"),
    });
    Rule rule =
        i % kRulesPerGroup == 0
            ? Drawing(std::move(pattern), ReplacementSource::SetInSequence, "Set" + group)
            : Replacing(std::move(pattern),
                        PatternOf({Part(SubpatternKind::String, "text" + number),
                                   Part(SubpatternKind::CharacterCode, "-"),
                                   Part(SubpatternKind::Function, "Up" + group + "(2,1)")}));
    rule.Name = "Rule " + number;
    filter.Rules.Append(std::move(rule));
  }
  return filter;
}

}  // namespace zarvo
