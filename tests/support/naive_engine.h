// A second engine, as plain as it can be made and sharing no code with the real one. It judges the
// real one in the tests.
#pragma once

#include <cstdint>
#include <string>

#include "engine/apply_filter.h"
#include "engine/run_host.h"
#include "model/filter.h"

namespace zarvo::naive {

/// The contract of zarvo::ApplyFilter, to the order of every call of the host and the bars.
[[nodiscard]] RunResult ApplyFilter(const RunContext& context, Filter& filter, std::string& text,
                                    ProgressBar* rule_bar, ProgressBar* position_bar);

/// The contract of zarvo::ApplyRule, on a plain string.
[[nodiscard]] RunResult ApplyRule(const RunContext& context, Rule rule, std::string& text,
                                  const SetList& sets, const FunctionList& functions,
                                  ProgressBar* position_bar);

void SetStopFlags(RuleList& rules, bool running);
void CancelRun(Filter& filter);

/// What a search needs to know of a Pattern.
struct Preparation {
  /// The index that is in force: the Pattern's own where it lies in the list, else the automatic
  /// choice, which may be Pattern::kNotChosen.
  std::int32_t MostSignificant = Pattern::kNotChosen;
  std::int64_t Length = 0;
  /// Bytes of a match before the anchor.
  std::int64_t AnchorOffset = 0;
};

[[nodiscard]] Preparation Prepare(const Pattern& pattern);

/// The start of the next match (0-based), or -1. The Pattern may be prepared already or not.
std::int64_t FindNextMatch(const Pattern& pattern, const std::string& text, bool from_start,
                           EngineState& state);

/// Positions are 0-based and not negative; they may lie past the end of the text.
[[nodiscard]] bool MatchAt(const Pattern& pattern, const std::string& text, std::int64_t start);
[[nodiscard]] bool MatchSubpattern(const Subpattern& subpattern, const std::string& text,
                                   std::int64_t position);

[[nodiscard]] std::string EvaluateFunction(const Function& function, const std::string& argument);

/// May show a message; the result is then empty.
[[nodiscard]] std::string EvaluateFunctionCall(RunHost& host, const FunctionList& functions,
                                               const std::string& call, const std::string& match);

[[nodiscard]] std::string ComposeString(RunHost& host, const FunctionList& functions,
                                        const Pattern& string, const std::string& match);

/// The text with the replacement put into the match that begins at position.
[[nodiscard]] std::string SpliceReplacement(const Rule& rule, const std::string& text,
                                            std::int64_t position, const std::string& replacement);

}  // namespace zarvo::naive
