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

// What a call text says, as far as that can be said without the match.
struct CallParts {
  std::string_view Name;
  std::size_t First = 0;
  std::size_t Length = 1;
  const char* Fault = nullptr;  // the message's words
};

CallParts ParseCall(std::string_view call_text) {
  CallParts parts;
  parts.Name = CalledFunctionName(call_text);
  if (parts.Name.size() == call_text.size()) {
    parts.Fault = "\"(\" missing.";
    return parts;
  }
  std::string_view rest = call_text.substr(parts.Name.size() + 1);
  const std::int64_t start = TakeNumber(rest);
  if (start < 0) {
    parts.Fault = "function argument missing.";
    return parts;
  }
  const std::int64_t count = TakeNumber(rest);
  parts.First = static_cast<std::size_t>(std::max<std::int64_t>(start - 1, 0));
  parts.Length = static_cast<std::size_t>(count < 0 ? 1 : count);
  return parts;
}

std::string_view ArgumentOf(std::string_view match, std::size_t first, std::size_t length) {
  return match.substr(std::min(first, match.size()), length);
}

bool StaysInside(const Rule& rule, std::size_t match_length) {
  const auto length = static_cast<std::int64_t>(match_length);
  const std::int64_t cut = rule.Inserts() ? rule.From : std::int64_t{rule.From} - 1;
  const std::int64_t end = rule.Inserts() ? cut : rule.To;
  return 0 <= cut && cut <= end && end <= length;
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
  const CallParts parts = ParseCall(call_text);
  if (parts.Fault != nullptr) {
    host.ShowMessage(Failure(call_text, parts.Fault));
    return {};
  }
  const Function* function = functions.Find(parts.Name);
  if (function == nullptr) {
    host.ShowMessage(
        Failure(call_text, "function \"" + std::string(parts.Name) + "\" dosn't exist."));
    return {};
  }
  return EvaluateFunction(*function, ArgumentOf(match, parts.First, parts.Length));
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

std::optional<PreparedString> PreparedString::Prepare(const Pattern& string,
                                                      const FunctionList& functions,
                                                      FunctionTables& tables) {
  PreparedString prepared;
  for (const Subpattern& part : string.Subpatterns) {
    switch (part.Kind) {
      case SubpatternKind::CharacterCode:
        prepared.fixed_ += part.Code();
        break;
      case SubpatternKind::Function: {
        const CallParts parts = ParseCall(part.Contents);
        if (parts.Fault != nullptr) return {};
        const Function* function = functions.Find(parts.Name);
        if (function == nullptr) return {};
        const FunctionTable* table = tables.Of(*function);
        if (table == nullptr) return {};
        prepared.calls_.push_back({prepared.fixed_.size(), parts.First, parts.Length, table});
        break;
      }
      default:
        prepared.fixed_ += part.Contents;
        break;
    }
  }
  return prepared;
}

std::string_view PreparedString::ComposeCalls(std::string_view match) {
  if (calls_.size() == 1 && fixed_.empty()) {
    const std::string_view argument = ArgumentOf(match, calls_[0].First, calls_[0].Length);
    const std::string_view value = calls_[0].Table->Value(argument);
    if (value.data() != argument.data()) return value;
    composed_ = value;
    return composed_;
  }
  composed_.clear();
  std::size_t done = 0;
  for (const Call& call : calls_) {
    composed_.append(fixed_, done, call.At - done);
    done = call.At;
    composed_ += call.Table->Value(ArgumentOf(match, call.First, call.Length));
  }
  composed_.append(fixed_, done);
  return composed_;
}

Replacer::Replacer(const RunContext& context, const Rule& rule, std::size_t match_length,
                   std::size_t text_size, const SetList& sets, const FunctionList& functions)
    : context_(context),
      rule_(rule),
      match_length_(match_length),
      sets_(sets),
      functions_(functions),
      stays_in_match_(StaysInside(rule, match_length)),
      keeps_string_(rule.ReplacementSource == ReplacementSource::String &&
                    !CallsFunctions(rule.Replacement)) {
  // Where there are many strings and few places for them, they are prepared when it pays.
  constexpr std::size_t kFewStrings = 64;
  constexpr std::size_t kBytesOfAString = 64;
  const bool is_soon_worth_it = StringCount() <= kFewStrings + text_size / kBytesOfAString;
  if (keeps_string_ || (!context.Host.TakesTurns() && is_soon_worth_it)) Prepare();
}

std::size_t Replacer::StringCount() const {
  if (!rule_.DrawsFromSet()) return 1;
  const Set* set = sets_.Find(rule_.ReplacementSetName);
  return set == nullptr ? 0 : set->Strings.size();
}

void Replacer::Prepare() {
  is_prepared_ = true;
  if (!rule_.DrawsFromSet()) {
    strings_.push_back(PreparedString::Prepare(rule_.Replacement, functions_, tables_));
    return;
  }
  set_ = sets_.Find(rule_.ReplacementSetName);
  if (set_ == nullptr) return;
  strings_.reserve(set_->Strings.size());
  for (const Pattern& string : set_->Strings) {
    strings_.push_back(PreparedString::Prepare(string, functions_, tables_));
  }
}

void Replacer::Drop() {
  if (keeps_string_) return;
  is_prepared_ = false;
  set_ = nullptr;
  strings_.clear();
  tables_.Clear();
}

bool Replacer::IsAllPrepared() const {
  const bool has_source =
      rule_.ReplacementSource == ReplacementSource::String || rule_.DrawsFromSet();
  return has_source && is_prepared_ &&
         std::all_of(strings_.begin(), strings_.end(),
                     [](const auto& string) { return string.has_value(); });
}

void Replacer::PutIn(TextBuffer& text, std::size_t position, const Pattern& string,
                     std::size_t index) {
  if (is_prepared_ && strings_[index]) {
    PreparedString& prepared = *strings_[index];
    const std::string_view match =
        prepared.NeedsMatch() ? text.Piece(position, match_length_) : std::string_view();
    SpliceReplacement(rule_, text, position, prepared.Compose(match));
    return;
  }
  const std::string_view match = text.Piece(position, match_length_);
  if (rule_.DrawsFromSet() && CallsFunctions(string)) {
    // A call may show a message, and the user may change the Set while that stands.
    SpliceReplacement(rule_, text, position,
                      ComposeString(Pattern(string), match, functions_, context_.Host));
  } else {
    SpliceReplacement(rule_, text, position,
                      ComposeString(string, match, functions_, context_.Host));
  }
  if (is_prepared_ && context_.Host.TakesTurns()) Forget();
}

ReplaceResult Replacer::Replace(TextBuffer& text, std::size_t position) {
  if (!is_prepared_ && ++unchanged_matches_ > StringCount()) Prepare();
  std::int64_t& made = context_.State.Replacements;
  if (rule_.ReplacementSource == ReplacementSource::String) {
    if (made != 0 && rule_.Once != 0) return ReplaceResult::StopPass;
    PutIn(text, position, rule_.Replacement, 0);
    ++made;
    return ReplaceResult::Replaced;
  }
  if (!rule_.DrawsFromSet()) return ReplaceResult::Replaced;

  static const Pattern nothing;
  const Set* set = is_prepared_ ? set_ : sets_.Find(rule_.ReplacementSetName);
  const std::size_t size = set == nullptr ? 0 : set->Strings.size();
  const auto count = static_cast<std::int64_t>(size);
  const auto put_in = [&](std::size_t index) {
    if (size == 0) {
      SpliceReplacement(rule_, text, position, {});
    } else {
      index = std::min(index, size - 1);
      PutIn(text, position, set->Strings[index], index);
    }
  };
  if (rule_.ReplacementSource == ReplacementSource::SetInSequence) {
    if (made >= count && rule_.Once != 0) return ReplaceResult::StopPass;
    put_in(static_cast<std::size_t>(made));
    ++made;
    if (made >= count && rule_.Once == 0) made = 0;
  } else {
    put_in(size == 0
               ? 0
               : static_cast<std::size_t>(context_.Random.NextUpTo(static_cast<int>(size) - 1)));
  }
  return ReplaceResult::Replaced;
}

std::optional<std::string> Replacer::ByteMap(const std::string& matched_bytes) {
  const bool replaces_byte = rule_.ReplacementSource == ReplacementSource::String &&
                             rule_.Once == 0 && match_length_ == 1 && rule_.From == 1 &&
                             rule_.To == 1;
  if (!replaces_byte || !is_prepared_ || !strings_[0]) return {};
  std::string map(matched_bytes.size(), '\0');
  for (std::size_t byte = 0; byte < map.size(); ++byte) {
    map[byte] = static_cast<char>(byte);
    if (matched_bytes[byte] == '\0') continue;
    const char match = map[byte];
    const std::string_view replacement = strings_[0]->Compose(std::string_view(&match, 1));
    if (replacement.size() != 1) return {};
    map[byte] = replacement.front();
  }
  return map;
}

}  // namespace zarvo
