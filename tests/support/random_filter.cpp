#include "tests/support/random_filter.h"

#include <algorithm>
#include <cstddef>
#include <limits>

namespace zarvo::testing {
namespace {

constexpr std::int32_t kMostInt = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t kLeastInt = std::numeric_limits<std::int32_t>::min();

}  // namespace

bool RepeatsText(const Filter& filter) {
  return std::any_of(filter.Rules.begin(), filter.Rules.end(), [](const Rule& rule) {
    return !rule.Inserts() && std::int64_t{rule.To} < std::int64_t{rule.From} - 1;
  });
}

char RandomCases::Letter() {
  if (OneIn(60)) {
    return Pick({'\0', '(', ')', '0', '1', '2', '9', '%', ' ', '\n', '\x80', '\xFF'});
  }
  return static_cast<char>('a' + Below(letters_));
}

std::string RandomCases::Letters(std::size_t most) {
  std::string text;
  for (std::size_t i = Below(most + 1); i > 0; --i) text += Letter();
  return text;
}

std::string RandomCases::InstanceOf(const Pattern& pattern) {
  std::string text;
  for (const Subpattern& subpattern : pattern.Subpatterns) {
    const std::string& contents = subpattern.Contents;
    if (subpattern.Kind == SubpatternKind::String) {
      text += contents;
    } else if (subpattern.Kind == SubpatternKind::CharacterCode) {
      text += contents.empty() ? '\0' : contents.front();
    } else if (subpattern.Kind == SubpatternKind::CharacterList && !contents.empty()) {
      text += contents[Below(contents.size())];
    } else {
      text += Letter();
    }
  }
  return text;
}

std::string RandomCases::CallText() {
  const std::string name =
      Pick<const char*>({"f", "f", "f", "g", "g", "F", "", "f ", "h", "%s", "f1"});
  if (OneIn(4)) {
    std::string call = name;
    for (std::size_t i = Below(9); i > 0; --i) {
      call += Pick({'(', ')', '0', '1', '2', '3', ',', ' ', 'x', '-'});
    }
    return call;
  }
  return name + Pick<const char*>({"(1)",
                                   "(1)",
                                   "(2)",
                                   "(3)",
                                   "(1,2)",
                                   "(2,3)",
                                   "(1,9)",
                                   "(0)",
                                   "(0,2)",
                                   "(1,0)",
                                   "(2 2",
                                   "(2-3)",
                                   "(9)",
                                   "(a1b2c3)",
                                   "((1)",
                                   ")(2)",
                                   "(99999999999999999999,1)",
                                   "(1,99999999999999999999)",
                                   "(4294967297,2)",
                                   "(1,4294967296)",
                                   "(2147483649)",
                                   "(007,2)",
                                   "()",
                                   "(",
                                   ")",
                                   "",
                                   "1"});
}

Subpattern RandomCases::MakeSubpattern() {
  Subpattern subpattern;
  const std::size_t kind = Below(100);
  if (kind < 45) {
    subpattern.Kind = SubpatternKind::String;
    const std::size_t length = OneIn(12) ? 0 : 1 + Fewer(4, 3);
    for (std::size_t i = 0; i < length; ++i) subpattern.Contents += Letter();
  } else if (kind < 66) {
    subpattern.Kind = SubpatternKind::CharacterList;
    const std::size_t length = OneIn(10) ? Below(2) * 12 : 1 + Below(3);
    for (std::size_t i = 0; i < length; ++i) subpattern.Contents += Letter();
  } else if (kind < 80) {
    subpattern.Kind = SubpatternKind::NegatedCharacterList;
    subpattern.Contents = Letters(2);
  } else if (kind < 96) {
    subpattern.Kind = SubpatternKind::CharacterCode;
    const std::size_t length = OneIn(15) ? Below(2) * 2 : 1;
    for (std::size_t i = 0; i < length; ++i) subpattern.Contents += Letter();
  } else if (kind < 98) {
    subpattern.Kind = SubpatternKind::Function;
    subpattern.Contents = CallText();
  } else {
    subpattern.Kind = static_cast<SubpatternKind>(Pick({1, 6, -1, 1000, kMostInt}));
    subpattern.Contents = Letters(2);
  }
  if (OneIn(20)) subpattern.RenderText = Letters(3);
  return subpattern;
}

Pattern RandomCases::MakePattern() {
  Pattern pattern;
  const std::size_t count = OneIn(40) ? 0 : 1 + Fewer(4, 5);
  for (std::size_t i = 0; i < count; ++i) pattern.Subpatterns.push_back(MakeSubpattern());
  const std::int32_t size = static_cast<std::int32_t>(count);
  if (OneIn(15)) {
    pattern.MostSignificant = Pick({-2, kLeastInt, size, size + 1, kMostInt});
  } else if (OneIn(3)) {
    pattern.MostSignificant = static_cast<std::int32_t>(Below(count + 1)) - 1;
  }
  return pattern;
}

Pattern RandomCases::MakeReplacement() {
  Pattern pattern;
  for (std::size_t i = Below(4); i > 0; --i) {
    Subpattern subpattern = MakeSubpattern();
    if (OneIn(3)) {
      subpattern.Kind = SubpatternKind::Function;
      subpattern.Contents = CallText();
    }
    pattern.Subpatterns.push_back(subpattern);
  }
  return pattern;
}

void RandomCases::MakePositions(Rule& rule) {
  const std::int32_t length = static_cast<std::int32_t>(rule.Pattern.Length());
  const auto place = [&] { return static_cast<std::int32_t>(Below(rule.Pattern.Length() + 2)); };
  const auto odd_place = [&] {
    return Pick({-1000, -7, -3, -2, -1, 0, length + 1, length + 3, 17, 1000, kMostInt, kLeastInt});
  };
  switch (Below(10)) {
    case 0:
    case 1:
    case 2:
      rule.From = place();
      rule.To = Rule::kInsertMode;
      break;
    case 3:
      rule.From = odd_place();
      rule.To = Rule::kInsertMode;
      break;
    case 4:
    case 5:
      rule.From = 1;
      rule.To = length;
      break;
    case 6:
    case 7:
      rule.From = 1 + place();
      rule.To = rule.From + static_cast<std::int32_t>(Below(3)) - 1;
      break;
    case 8:
      rule.From = place();
      rule.To = place();
      break;
    default:
      rule.From = OneIn(2) ? odd_place() : place();
      rule.To = OneIn(2) ? odd_place() : place();
  }
}

Rule RandomCases::MakeRule() {
  Rule rule;
  rule.Pattern = MakePattern();
  rule.Replacement = MakeReplacement();
  const std::size_t probability = Below(10);
  if (probability == 0) {
    rule.Probability = 0;
  } else if (probability < 4) {
    rule.Probability = static_cast<std::uint8_t>(Below(OneIn(4) ? 256 : 101));
  }
  const std::size_t source = Below(20);
  if (source >= 9 && source < 14) rule.ReplacementSource = ReplacementSource::SetInSequence;
  if (source >= 14 && source < 19) rule.ReplacementSource = ReplacementSource::SetAtRandom;
  if (source == 19) {
    rule.ReplacementSource = static_cast<ReplacementSource>(Pick({3, -1, kMostInt}));
  }
  rule.ReplacementSetName = Pick<const char*>({"s", "s", "s", "t", "t", "S", "u", ""});
  MakePositions(rule);
  if (OneIn(6)) rule.Strict = Pick({1, 1, 1, 2, -1});
  if (OneIn(5)) rule.Once = Pick({1, 1, 1, 2, -1});
  if (OneIn(15)) rule.Stop = 1;
  return rule;
}

Set RandomCases::MakeSet() {
  Set set;
  set.Name = Pick<const char*>({"s", "s", "s", "t", "t", "S", ""});
  for (std::size_t i = Below(5); i > 0; --i) set.Strings.push_back(MakeReplacement());
  return set;
}

Function RandomCases::MakeFunction() {
  Function function;
  function.Name = Pick<const char*>({"f", "f", "f", "g", "g", "F", "f ", ""});
  function.DefaultReturnsArgument = Pick<std::uint8_t>({0, 0, 1, 1, 1, 2, 255});
  for (std::size_t i = Below(4); i > 0; --i) {
    function.Entries.push_back({Letters(2), Letters(3)});
  }
  return function;
}

Filter RandomCases::MakeFilter() {
  letters_ = 2 + Below(3);
  Filter filter;
  const std::size_t rules = OneIn(30) ? 0 : 1 + Fewer(4, 4);
  for (std::size_t i = 0; i < rules; ++i) filter.Rules.Append(MakeRule());
  for (std::size_t i = Below(3); i > 0; --i) filter.Sets.Append(MakeSet());
  for (std::size_t i = Below(4); i > 0; --i) filter.Functions.Append(MakeFunction());
  return filter;
}

std::string RandomCases::MakeText(const Filter& filter) {
  const std::size_t limit = OneIn(50) ? 200 : OneIn(3) ? 31 : 13;
  const std::size_t size = Below(limit);
  std::string text;
  while (text.size() < size) {
    if (filter.Rules.Count() != 0 && OneIn(4)) {
      text += InstanceOf(filter.Rules[Below(filter.Rules.Count())].Pattern);
    } else {
      text += Letter();
    }
  }
  // Cut, so that matches run past the end.
  text.resize(std::min(text.size(), size));
  return text;
}

RunPlan RandomCases::MakeRun(bool with_deeds, const RunPlan* last) {
  RunPlan run;
  if (last != nullptr) {
    run.KeepsFilter = OneIn(2);
    run.KeepsText = OneIn(3);
  }
  run.Filter = run.KeepsFilter ? last->Filter : MakeFilter();
  run.Text = MakeText(run.Filter);
  run.HasRuleBar = OneIn(3);
  run.HasPositionBar = OneIn(3);
  if (OneIn(3)) run.ExistsAnswers = static_cast<std::int64_t>(Below(3));
  if (OneIn(10)) run.IdleRounds = static_cast<long>(Below(4));
  bool repeats = RepeatsText(run.Filter) || (last != nullptr && RepeatsText(last->Filter));
  if (with_deeds) {
    run.OtherFilter = MakeFilter();
    run.OtherText = MakeText(run.OtherFilter);
    // A filter that earlier deeds brought in may still be there, so no run may be long.
    repeats = true;
    for (std::size_t i = 1 + Below(5); i > 0; --i) {
      run.Deeds.push_back({static_cast<std::int64_t>(Below(OneIn(2) ? 4 : 16)),
                           static_cast<HostDeed>(Below(kHostDeeds))});
    }
  }
  run.Pumps = static_cast<std::int64_t>(repeats ? Below(10) : OneIn(4) ? Below(12) : 60);
  return run;
}

EngineCase RandomCases::MakeCase(bool with_deeds) {
  EngineCase engine_case;
  engine_case.Seed = static_cast<std::uint32_t>(engine_() & 0xFFFFFFFFU);
  const std::size_t runs = 1 + Fewer(4, 3);
  for (std::size_t i = 0; i < runs; ++i) {
    engine_case.Runs.push_back(MakeRun(with_deeds, i == 0 ? nullptr : &engine_case.Runs.back()));
  }
  if (OneIn(3)) {
    const std::int64_t size = static_cast<std::int64_t>(engine_case.Runs.front().Text.size());
    engine_case.State.Remaining =
        OneIn(4) ? Pick<std::int64_t>({-1, -2, -5, size + 1, size + 7, 1000, std::int64_t{1} << 40})
                 : static_cast<std::int64_t>(Below(static_cast<std::size_t>(size) + 1));
  }
  if (OneIn(4)) engine_case.State.Replacements = static_cast<std::int64_t>(Below(5)) - 1;
  return engine_case;
}

}  // namespace zarvo::testing