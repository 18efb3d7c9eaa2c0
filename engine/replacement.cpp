#include "engine/replacement.h"

#include <algorithm>
#include <cstdint>
#include <limits>

namespace zarvo {
namespace {

constexpr std::string_view kDigits = "0123456789";

// Takes the next run of digits out of rest: its value, saturated, or -1 when there is none.
std::int64_t TakeNumber(std::string_view& rest) {
  constexpr std::int64_t kMost = std::numeric_limits<std::int32_t>::max();
  const std::size_t first = rest.find_first_of(kDigits);
  if (first == std::string_view::npos) return -1;
  rest.remove_prefix(first);
  std::int64_t value = 0;
  while (!rest.empty() && kDigits.find(rest.front()) != std::string_view::npos) {
    value = std::min(value * 10 + (rest.front() - '0'), kMost);
    rest.remove_prefix(1);
  }
  return value;
}

std::string Failure(std::string_view call_text, const std::string& what) {
  return "DEBUG: Incorrect function call: \"" + std::string(call_text) + "\" - " + what;
}

bool CallsFunctions(const Pattern& string) {
  return std::any_of(string.Subpatterns.begin(), string.Subpatterns.end(),
                     [](const auto& part) { return part.Kind == SubpatternKind::Function; });
}

// The strings of a Set, or none when there is no such Set.
const std::vector<Pattern>& StringsOf(const SetList& sets, const std::string& name) {
  static const std::vector<Pattern> none;
  const Set* set = sets.Find(name);
  return set == nullptr ? none : set->Strings;
}

// One string of a Set composed; the empty text when the Set is empty.
std::string ComposeSetString(const std::vector<Pattern>& strings, std::size_t index,
                             std::string_view match, const FunctionList& functions, RunHost& host) {
  if (strings.empty()) return {};
  const Pattern& string = strings[std::min(index, strings.size() - 1)];
  if (!CallsFunctions(string)) return ComposeString(string, match, functions, host);
  // A call may show a message, and the user may change the Set while that stands.
  const Pattern copy = string;
  return ComposeString(copy, match, functions, host);
}

}  // namespace

std::string EvaluateFunction(const Function& function, std::string_view argument) {
  for (const FunctionEntry& entry : function.Entries) {
    if (entry.Argument == argument) return entry.Value;
  }
  if (function.DefaultReturnsArgument == Function::kReturnArgument) return std::string(argument);
  return {};
}

std::string EvaluateFunctionCall(const FunctionList& functions, const std::string& call_text,
                                 std::string_view match, RunHost& host) {
  const std::string_view name = CalledFunctionName(call_text);
  if (name.size() == call_text.size()) {
    host.ShowMessage(Failure(call_text, "\"(\" missing."));
    return {};
  }
  std::string_view rest = std::string_view(call_text).substr(name.size() + 1);
  const std::int64_t start = TakeNumber(rest);
  if (start < 0) {
    host.ShowMessage(Failure(call_text, "function argument missing."));
    return {};
  }
  const std::int64_t count = TakeNumber(rest);
  const Function* function = functions.Find(name);
  if (function == nullptr) {
    host.ShowMessage(Failure(call_text, "function \"" + std::string(name) + "\" dosn't exist."));
    return {};
  }
  const auto first = static_cast<std::size_t>(std::max<std::int64_t>(start - 1, 0));
  const auto length = static_cast<std::size_t>(count < 0 ? 1 : count);
  return EvaluateFunction(*function, match.substr(std::min(first, match.size()), length));
}

std::string ComposeString(const Pattern& string, std::string_view match,
                          const FunctionList& functions, RunHost& host) {
  std::string composed;
  for (const Subpattern& part : string.Subpatterns) {
    switch (part.Kind) {
      case SubpatternKind::CharacterCode:
        composed += part.Code();
        break;
      case SubpatternKind::Function:
        composed += EvaluateFunctionCall(functions, part.Contents, match, host);
        break;
      default:
        composed += part.Contents;
        break;
    }
  }
  return composed;
}

void SpliceReplacement(const Rule& rule, TextBuffer& text, std::size_t position,
                       std::string_view replacement) {
  const auto within = [&](std::int64_t place) {
    return static_cast<std::size_t>(
        std::clamp<std::int64_t>(place, 0, static_cast<std::int64_t>(text.Size())));
  };
  const auto start = static_cast<std::int64_t>(position);
  if (rule.Inserts()) {
    const std::size_t cut = within(start + rule.From);
    text.Splice(cut, replacement, cut);
  } else {
    text.Splice(within(start + rule.From - 1), replacement, within(start + rule.To));
  }
}

ReplaceResult ReplaceMatch(const RunContext& context, const Rule& rule, std::size_t match_length,
                           TextBuffer& text, std::size_t position, const SetList& sets,
                           const FunctionList& functions) {
  std::int64_t& made = context.State.Replacements;
  const std::string_view match = text.Piece(position, match_length);
  switch (rule.ReplacementSource) {
    case ReplacementSource::String: {
      if (made != 0 && rule.Once != 0) return ReplaceResult::StopPass;
      SpliceReplacement(rule, text, position,
                        ComposeString(rule.Replacement, match, functions, context.Host));
      ++made;
      break;
    }
    case ReplacementSource::SetInSequence: {
      const std::vector<Pattern>& strings = StringsOf(sets, rule.ReplacementSetName);
      const auto count = static_cast<std::int64_t>(strings.size());
      if (made >= count && rule.Once != 0) return ReplaceResult::StopPass;
      SpliceReplacement(rule, text, position,
                        ComposeSetString(strings, static_cast<std::size_t>(made), match, functions,
                                         context.Host));
      ++made;
      if (made >= count && rule.Once == 0) made = 0;
      break;
    }
    case ReplacementSource::SetAtRandom: {
      const std::vector<Pattern>& strings = StringsOf(sets, rule.ReplacementSetName);
      std::size_t index = 0;
      if (!strings.empty()) {
        index =
            static_cast<std::size_t>(context.Random.NextUpTo(static_cast<int>(strings.size()) - 1));
      }
      SpliceReplacement(rule, text, position,
                        ComposeSetString(strings, index, match, functions, context.Host));
      break;
    }
  }
  return ReplaceResult::Replaced;
}

}  // namespace zarvo
