// Building the text that a Rule puts into a match, and putting it there.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "engine/function_table.h"
#include "engine/run_host.h"
#include "engine/text_buffer.h"
#include "model/filter.h"

namespace zarvo {

/// The value for the argument: that of the first entry which has exactly this argument, else the
/// Function's default.
[[nodiscard]] std::string EvaluateFunction(const Function& function, std::string_view argument);

/// The result of a call text such as "Up(2)" or "Swap(2,3)": a name, a start position from 1, and a
/// count of bytes, 1 when absent; the piece of the match there is the argument. Parsed loosely:
/// what isn't a digit around the numbers is skipped, and no ")" is needed. A call that has no "("
/// or no number, or names no Function, shows a message and gives the empty text.
[[nodiscard]] std::string EvaluateFunctionCall(const FunctionList& functions,
                                               const std::string& call_text, std::string_view match,
                                               RunHost& host);

/// The composed string: Function calls evaluated against the match, Character codes as their byte,
/// all else verbatim. string must stay as it is while messages are shown.
[[nodiscard]] std::string ComposeString(const Pattern& string, std::string_view match,
                                        const FunctionList& functions, RunHost& host);

/// Puts the replacement into the match at position, as the Rule's From and To say. Positions
/// outside the text count as its ends.
void SpliceReplacement(const Rule& rule, TextBuffer& text, std::size_t position,
                       std::string_view replacement);

/// A composed string made ready for many matches. Refers to the tables of the Functions that it
/// calls.
class PreparedString {
 public:
  /// Nothing when a call of it is faulty, as each match then has to show the message anew, or when
  /// there are no more tables.
  [[nodiscard]] static std::optional<PreparedString> Prepare(const Pattern& string,
                                                             const FunctionList& functions,
                                                             FunctionTables& tables);

  [[nodiscard]] bool NeedsMatch() const { return !calls_.empty(); }
  [[nodiscard]] std::string_view Fixed() const { return fixed_; }

  /// The same as ComposeString; valid until the next call, and not a view of the match.
  [[nodiscard]] std::string_view Compose(std::string_view match);

 private:
  struct Call {
    std::size_t At;  // how much of the fixed bytes stands before the result
    std::size_t First;
    std::size_t Length;
    const FunctionTable* Table;
  };

  [[nodiscard]] std::string_view ComposeCalls(std::string_view match);

  std::string fixed_;
  std::vector<Call> calls_;
  std::string composed_;
};

enum class ReplaceResult {
  Replaced = 0,
  StopPass = 1,  ///< nothing replaced; Once has had what it allows
};

/// Replaces the matches of one Rule's run. Sets and Functions are taken as they are at each match.
/// What is prepared of them serves only while the host says that nothing changes, and only when as
/// many matches found them unchanged as there are strings: before that it might never pay.
class Replacer {
 public:
  /// All must outlive the replacer, and the Rule must stay as it is. Counts in
  /// context.State.Replacements, which must be 0 when the Rule's run begins. The size of the text
  /// says how many matches there may be.
  Replacer(const RunContext& context, const Rule& rule, std::size_t match_length,
           std::size_t text_size, const SetList& sets, const FunctionList& functions);

  /// To be called when the lists may have changed.
  void Forget() {
    unchanged_matches_ = 0;
    if (is_prepared_) Drop();
  }

  /// True when a replacement changes nothing behind the end of its match.
  [[nodiscard]] bool StaysInMatch() const { return stays_in_match_; }

  /// True when no replacement can show a message or needs anything looked up.
  [[nodiscard]] bool IsAllPrepared() const;

  /// The replacement of every match, where that is always the same one and needs nothing prepared.
  [[nodiscard]] std::optional<std::string_view> Constant() const {
    if (!keeps_string_) return {};
    return strings_[0]->Fixed();
  }

  /// Where all is prepared and the Rule isn't Once: the next replacement, counted as made. Valid
  /// until the next one.
  [[nodiscard]] std::string_view NextReplacement(std::string_view match, RandomGenerator& random);

  /// Replaces the match at position.
  ReplaceResult Replace(TextBuffer& text, std::size_t position);

  /// The replacement of each of these one-byte matches, where the Rule puts one byte in the place
  /// of the whole match whatever it is, and does nothing else; nothing otherwise. Entries for other
  /// bytes are the bytes themselves.
  [[nodiscard]] std::optional<std::string> ByteMap(const std::string& matched_bytes);

 private:
  // How many strings the Rule has to choose from.
  [[nodiscard]] std::size_t StringCount() const;
  void Prepare();
  void Drop();
  // Puts one string in; index is that of a Set's string.
  void PutIn(TextBuffer& text, std::size_t position, const Pattern& string, std::size_t index);

  const RunContext context_;
  const Rule& rule_;
  const std::size_t match_length_;
  const SetList& sets_;
  const FunctionList& functions_;
  const bool stays_in_match_;
  const bool keeps_string_;  // the string is the Rule's own, which no user can change
  std::size_t unchanged_matches_ = 0;
  bool is_prepared_ = false;
  const Set* set_ = nullptr;
  FunctionTables tables_;
  // The Rule's own string, or those of the Set.
  std::vector<std::optional<PreparedString>> strings_;
};

inline std::string_view PreparedString::Compose(std::string_view match) {
  return calls_.empty() ? std::string_view(fixed_) : ComposeCalls(match);
}

inline std::string_view Replacer::NextReplacement(std::string_view match, RandomGenerator& random) {
  std::int64_t& made = context_.State.Replacements;
  switch (rule_.ReplacementSource) {
    case ReplacementSource::String:
      ++made;
      return strings_[0]->Compose(match);
    case ReplacementSource::SetInSequence: {
      const auto index = static_cast<std::size_t>(made);
      ++made;
      if (static_cast<std::size_t>(made) >= strings_.size()) made = 0;
      return strings_.empty() ? std::string_view() : strings_[index]->Compose(match);
    }
    case ReplacementSource::SetAtRandom: {
      if (strings_.empty()) return {};
      const int most = static_cast<int>(strings_.size()) - 1;
      return strings_[static_cast<std::size_t>(random.NextUpTo(most))]->Compose(match);
    }
  }
  return {};
}

}  // namespace zarvo
