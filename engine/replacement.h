// Building the text that a Rule puts into a match, and putting it there.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

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

enum class ReplaceResult {
  Replaced = 0,
  StopPass = 1,  ///< nothing replaced; Once has had what it allows
};

/// Replaces the match of match_length bytes at position; counts in context.State.Replacements,
/// which must be 0 when the Rule's run begins. Sets and Functions are looked up by name each time,
/// since the lists may have changed since the last match.
[[nodiscard]] ReplaceResult ReplaceMatch(const RunContext& context, const Rule& rule,
                                         std::size_t match_length, TextBuffer& text,
                                         std::size_t position, const SetList& sets,
                                         const FunctionList& functions);

}  // namespace zarvo
