// Nothing here is done for speed: texts are copied whole, substrings are taken and compared, and
// every step stands in the order in which it happens. Where this file and the real engine disagree,
// this one should be the easier of the two to prove right by reading it.
#include "tests/support/naive_engine.h"

#include <cstddef>
#include <limits>

namespace zarvo::naive {
namespace {

constexpr char kDigits[] = "0123456789";
constexpr std::int64_t kNone = -1;

std::int64_t Size(const std::string& text) { return static_cast<std::int64_t>(text.size()); }

// Of a part that lies outside the text, only what lies inside is given.
std::string Substring(const std::string& text, std::int64_t start, std::int64_t length) {
  std::string result;
  for (std::int64_t i = 0; i < length && start + i < Size(text); ++i) {
    if (start + i >= 0) result += text[static_cast<std::size_t>(start + i)];
  }
  return result;
}

std::string Head(const std::string& text, std::int64_t length) {
  return Substring(text, 0, length);
}

std::string From(const std::string& text, std::int64_t start) {
  if (start >= Size(text)) return "";
  return text.substr(static_cast<std::size_t>(start));
}

std::string LastBytes(const std::string& text, std::int64_t count) {
  if (count <= 0) return "";
  return From(text, Size(text) - count);
}

std::int64_t IndexOf(const std::string& text, const std::string& part) {
  const std::size_t index = text.find(part);
  return index == std::string::npos ? kNone : static_cast<std::int64_t>(index);
}

std::int64_t IndexOfAny(const std::string& text, const std::string& characters) {
  const std::size_t index = text.find_first_of(characters);
  return index == std::string::npos ? kNone : static_cast<std::int64_t>(index);
}

std::string CodeText(const Subpattern& code) {
  if (code.Contents.empty()) return std::string(1, '\0');
  return code.Contents.substr(0, 1);
}

std::int64_t Width(const Subpattern& subpattern) {
  if (subpattern.Kind == SubpatternKind::String) return Size(subpattern.Contents);
  return 1;
}

std::int64_t Weight(const Subpattern& subpattern) {
  if (subpattern.Kind == SubpatternKind::String) return 10 * Size(subpattern.Contents);
  if (subpattern.Kind == SubpatternKind::CharacterCode) return 10;
  if (subpattern.Kind == SubpatternKind::CharacterList && !subpattern.Contents.empty()) {
    return 10 / Size(subpattern.Contents);
  }
  return 0;
}

std::int32_t HeaviestSubpattern(const Pattern& pattern) {
  std::int64_t best = 0;
  std::int32_t best_index = Pattern::kNotChosen;
  for (std::size_t i = 0; i < pattern.Subpatterns.size(); ++i) {
    const std::int64_t weight = Weight(pattern.Subpatterns[i]);
    if (weight > best) {
      best = weight;
      best_index = static_cast<std::int32_t>(i);
    }
  }
  return best_index;
}

// Where the anchor occurs first in the tail. Not for negated lists.
std::int64_t FindAnchor(const Subpattern& anchor, const std::string& tail) {
  switch (anchor.Kind) {
    case SubpatternKind::String:
      // An empty text is in every text, but an empty tail has nothing left to search.
      if (tail.empty()) return kNone;
      return IndexOf(tail, anchor.Contents);
    case SubpatternKind::CharacterCode:
      return IndexOf(tail, CodeText(anchor));
    case SubpatternKind::CharacterList:
      return IndexOfAny(tail, anchor.Contents);
    default:
      return kNone;
  }
}

std::int64_t NumberOf(const std::string& digits) {
  std::int64_t number = 0;
  for (const char digit : digits) {
    number = number * 10 + (digit - '0');
    if (number > std::numeric_limits<std::int32_t>::max()) {
      return std::numeric_limits<std::int32_t>::max();
    }
  }
  return number;
}

// Takes everything up to the end of the first run of digits off the text and gives that run; empty
// when there is none.
std::string TakeDigits(std::string& text) {
  const std::size_t begin = text.find_first_of(kDigits);
  if (begin == std::string::npos) return "";
  text = text.substr(begin);
  std::size_t length = text.find_first_not_of(kDigits);
  if (length == std::string::npos) length = text.size();
  const std::string digits = text.substr(0, length);
  text = text.substr(length);
  return digits;
}

// An empty Set when there is none of this name.
Set FindSet(const SetList& sets, const std::string& name) {
  for (const Set& set : sets.Elements) {
    if (set.Name == name) return set;
  }
  return Set();
}

enum class MatchOutcome { GoOn, StopPass };

// What one match becomes.
MatchOutcome ReplaceMatch(const RunContext& context, const Rule& rule, std::string& text,
                          std::int64_t position, const SetList& sets,
                          const FunctionList& functions) {
  std::int64_t& used = context.State.Replacements;
  const std::string match = Substring(text, position, Prepare(rule.Pattern).Length);

  if (rule.ReplacementSource == ReplacementSource::String) {
    if (used != 0 && rule.Once != 0) return MatchOutcome::StopPass;
    const std::string replacement = ComposeString(context.Host, functions, rule.Replacement, match);
    text = SpliceReplacement(rule, text, position, replacement);
    used = used + 1;
    return MatchOutcome::GoOn;
  }

  if (rule.ReplacementSource == ReplacementSource::SetInSequence) {
    const Set set = FindSet(sets, rule.ReplacementSetName);
    const std::int64_t count = static_cast<std::int64_t>(set.Strings.size());
    if (used >= count && rule.Once != 0) return MatchOutcome::StopPass;
    Pattern string;
    if (count > 0) {
      const std::int64_t index = used < count ? used : count - 1;
      string = set.Strings[static_cast<std::size_t>(index)];
    }
    const std::string replacement = ComposeString(context.Host, functions, string, match);
    text = SpliceReplacement(rule, text, position, replacement);
    used = used + 1;
    if (used >= count && rule.Once == 0) used = 0;
    return MatchOutcome::GoOn;
  }

  if (rule.ReplacementSource == ReplacementSource::SetAtRandom) {
    const Set set = FindSet(sets, rule.ReplacementSetName);
    const std::int64_t count = static_cast<std::int64_t>(set.Strings.size());
    Pattern string;
    if (count > 0) {
      const double scaled = context.Random.Next() / 32767.0 * static_cast<double>(count - 1);
      string = set.Strings[static_cast<std::size_t>(scaled)];
    }
    const std::string replacement = ComposeString(context.Host, functions, string, match);
    text = SpliceReplacement(rule, text, position, replacement);
    return MatchOutcome::GoOn;
  }

  return MatchOutcome::GoOn;
}

void SetBackIfItExists(ProgressBar* bar) {
  if (bar != nullptr && bar->Exists()) bar->SetPosition(0);
}

void SetBack(ProgressBar* bar) {
  if (bar != nullptr) bar->SetPosition(0);
}

}  // namespace

Preparation Prepare(const Pattern& pattern) {
  Preparation preparation;
  preparation.MostSignificant = pattern.MostSignificant;
  if (pattern.MostSignificant < 0 ||
      pattern.MostSignificant >= static_cast<std::int64_t>(pattern.Subpatterns.size())) {
    preparation.MostSignificant = HeaviestSubpattern(pattern);
  }
  for (const Subpattern& subpattern : pattern.Subpatterns) preparation.Length += Width(subpattern);
  for (std::int32_t i = 0; i < preparation.MostSignificant; ++i) {
    preparation.AnchorOffset += Width(pattern.Subpatterns[static_cast<std::size_t>(i)]);
  }
  return preparation;
}

bool MatchSubpattern(const Subpattern& subpattern, const std::string& text, std::int64_t position) {
  const std::string character = Substring(text, position, 1);
  const bool past_end = character.empty();
  switch (subpattern.Kind) {
    case SubpatternKind::String:
      return Substring(text, position, Size(subpattern.Contents)) == subpattern.Contents;
    case SubpatternKind::CharacterCode:
      return character == CodeText(subpattern);
    case SubpatternKind::CharacterList:
      if (past_end) return true;
      return IndexOf(subpattern.Contents, character) != kNone;
    case SubpatternKind::NegatedCharacterList:
      if (past_end) return false;
      return IndexOf(subpattern.Contents, character) == kNone;
    default:
      return false;
  }
}

bool MatchAt(const Pattern& pattern, const std::string& text, std::int64_t start) {
  std::int64_t position = start;
  for (const Subpattern& subpattern : pattern.Subpatterns) {
    if (!MatchSubpattern(subpattern, text, position)) return false;
    position += Width(subpattern);
  }
  return true;
}

std::int64_t FindNextMatch(const Pattern& pattern, const std::string& text, bool from_start,
                           EngineState& state) {
  const Preparation preparation = Prepare(pattern);
  const std::int64_t length = preparation.Length;
  const std::int64_t offset = preparation.AnchorOffset;
  const std::int64_t size = Size(text);
  std::int64_t& remaining = state.Remaining;

  if (length == 0) {
    remaining = 0;
    return kNone;
  }
  const std::int32_t anchor_index =
      preparation.MostSignificant == Pattern::kNotChosen ? 0 : preparation.MostSignificant;
  const Subpattern anchor = pattern.Subpatterns[static_cast<std::size_t>(anchor_index)];

  if (remaining > size) remaining = size;
  if (remaining == 0 && from_start) remaining = size;
  std::int64_t base = size - remaining;
  std::string tail = LastBytes(text, remaining);

  if (anchor.Kind == SubpatternKind::NegatedCharacterList) {
    for (std::int64_t candidate = 0; candidate < Size(tail); ++candidate) {
      if (candidate - offset >= 0) {
        const std::int64_t start = base + candidate - offset;
        if (MatchAt(pattern, text, start)) {
          remaining = size - (start + length);
          return start;
        }
      }
    }
    remaining = 0;
    return kNone;
  }

  for (;;) {
    const std::int64_t candidate = FindAnchor(anchor, tail);
    if (candidate == kNone) {
      remaining = 0;
      return kNone;
    }
    if (candidate - offset >= 0) {
      const std::int64_t start = base + candidate - offset;
      if (MatchAt(pattern, text, start)) {
        remaining = size - (start + length);
        return start;
      }
    }
    base = base + candidate + 1;
    remaining = size - base;
    tail = LastBytes(text, remaining);
  }
}

std::string EvaluateFunction(const Function& function, const std::string& argument) {
  for (const FunctionEntry& entry : function.Entries) {
    if (entry.Argument == argument) return entry.Value;
  }
  if (function.DefaultReturnsArgument == 1) return argument;
  return "";
}

std::string EvaluateFunctionCall(RunHost& host, const FunctionList& functions,
                                 const std::string& call, const std::string& match) {
  const std::string complaint = "DEBUG: Incorrect function call: \"" + call + "\" - ";

  const std::int64_t bracket = IndexOf(call, "(");
  if (bracket == kNone) {
    host.ShowMessage(complaint + "\"(\" missing.");
    return "";
  }
  const std::string name = Head(call, bracket);
  std::string rest = From(call, bracket + 1);

  const std::string start_digits = TakeDigits(rest);
  if (start_digits.empty()) {
    host.ShowMessage(complaint + "function argument missing.");
    return "";
  }
  std::int64_t start = NumberOf(start_digits) - 1;

  const std::string count_digits = TakeDigits(rest);
  const std::int64_t count = count_digits.empty() ? 1 : NumberOf(count_digits);

  for (const Function& function : functions.Elements) {
    if (function.Name == name) {
      if (start < 0) start = 0;
      return EvaluateFunction(function, Substring(match, start, count));
    }
  }
  host.ShowMessage(complaint + "function \"" + name + "\" dosn't exist.");
  return "";
}

std::string ComposeString(RunHost& host, const FunctionList& functions, const Pattern& string,
                          const std::string& match) {
  std::string result;
  for (const Subpattern& element : string.Subpatterns) {
    if (element.Kind == SubpatternKind::CharacterCode) {
      result = result + CodeText(element);
    } else if (element.Kind == SubpatternKind::Function) {
      result = result + EvaluateFunctionCall(host, functions, element.Contents, match);
    } else {
      result = result + element.Contents;
    }
  }
  return result;
}

std::string SpliceReplacement(const Rule& rule, const std::string& text, std::int64_t position,
                              const std::string& replacement) {
  std::int64_t cut = 0;
  std::int64_t end = 0;
  if (rule.To != -1) {
    cut = position + rule.From - 1;
    end = position + rule.To;
  } else {
    cut = position + rule.From;
    end = cut;
  }
  if (cut < 0) cut = 0;
  if (cut > Size(text)) cut = Size(text);
  if (end < 0) end = 0;
  if (end > Size(text)) end = Size(text);
  return Head(text, cut) + replacement + From(text, end);
}

RunResult ApplyRule(const RunContext& context, Rule rule, std::string& text, const SetList& sets,
                    const FunctionList& functions, ProgressBar* position_bar) {
  rule.Pattern.MostSignificant = Prepare(rule.Pattern).MostSignificant;
  context.State.Replacements = 0;

  std::int64_t divisor = 1;
  if (position_bar != nullptr) {
    std::int64_t most = Size(text) - 1;
    while (most > 32767) {
      most = most / 10;
      divisor = divisor * 10;
    }
    if (rule.Stop != 0) {
      SetBackIfItExists(position_bar);
      return RunResult::Stopped;
    }
    position_bar->SetRange(0, most);
    position_bar->SetPosition(0);
  }

  std::int64_t position = FindNextMatch(rule.Pattern, text, true, context.State);
  for (;;) {
    if (position < 0) {
      if (rule.Stop != 0) {
        SetBackIfItExists(position_bar);
        return RunResult::Stopped;
      }
      SetBack(position_bar);
      return RunResult::Completed;
    }

    while (position >= 0) {
      if (!context.Host.Pump()) rule.Stop = 1;
      long idle_count = 0;
      while (context.Host.Idle(idle_count)) idle_count = idle_count + 1;

      if (rule.Stop != 0) {
        SetBackIfItExists(position_bar);
        return RunResult::Stopped;
      }
      if (position_bar != nullptr) position_bar->SetPosition(position / divisor);

      const int drawn = static_cast<int>(context.Random.Next() / 32767.0 * 99);
      if (rule.Probability > drawn) {
        const MatchOutcome outcome = ReplaceMatch(context, rule, text, position, sets, functions);
        if (outcome == MatchOutcome::StopPass) {
          position = -1;
          break;
        }
      }
      position = FindNextMatch(rule.Pattern, text, false, context.State);
    }

    if (rule.Strict != 0) position = FindNextMatch(rule.Pattern, text, true, context.State);
  }
}

void SetStopFlags(RuleList& rules, bool running) {
  for (Rule& rule : rules.Elements) rule.Stop = running ? 0 : 1;
}

void CancelRun(Filter& filter) {
  naive::SetStopFlags(filter.Rules, false);
  filter.Cancel = 1;
}

RunResult ApplyFilter(const RunContext& context, Filter& filter, std::string& text,
                      ProgressBar* rule_bar, ProgressBar* position_bar) {
  filter.Applying = 1;
  std::string working_text = text;
  filter.Cancel = 0;

  if (rule_bar != nullptr) {
    rule_bar->SetRange(0, static_cast<std::int64_t>(filter.Rules.Elements.size()));
    rule_bar->SetStep(1);
    rule_bar->SetPosition(0);
  }

  naive::SetStopFlags(filter.Rules, true);

  // By position, because the host may change the list while a Rule runs.
  for (std::size_t i = 0; i < filter.Rules.Elements.size(); ++i) {
    const Rule working_copy = filter.Rules.Elements[i];
    const RunResult result =
        ApplyRule(context, working_copy, working_text, filter.Sets, filter.Functions, position_bar);
    if (result == RunResult::Stopped) {
      naive::SetStopFlags(filter.Rules, true);
      SetBackIfItExists(rule_bar);
      filter.Applying = 0;
      return RunResult::Stopped;
    }
    if (filter.Cancel != 0) {
      SetBackIfItExists(rule_bar);
      filter.Applying = 0;
      return RunResult::Stopped;
    }
    if (rule_bar != nullptr) rule_bar->Step();
  }

  SetBack(rule_bar);
  text = working_text;
  filter.Applying = 0;
  return RunResult::Completed;
}

}  // namespace zarvo::naive
