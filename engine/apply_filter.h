// Applying a Filter to a text: its Rules one after another, each over what the last one left.
#pragma once

#include <string>

#include "engine/run_host.h"
#include "engine/text_buffer.h"
#include "model/filter.h"

namespace zarvo {

enum class RunResult {
  Stopped = 0,
  Completed = 1,
};

/// Applies the Filter to the text. When the run is stopped the text is as it was. The bars may be
/// null: one gets a step at each Rule, the other follows the position of the matches within a Rule.
/// The host is called at every match and may change, replace or empty the Filter's lists, cancel
/// the run, or start another one; Rules are taken by position, so the run sees what the lists hold
/// at that moment.
[[nodiscard]] RunResult ApplyFilter(const RunContext& context, Filter& filter, std::string& text,
                                    ProgressBar* rule_bar, ProgressBar* position_bar);

/// Applies one Rule, a working copy, to the text. Stopped when the copy's Stop is found set, which
/// is looked at where a match was found and at the end, or when the host says that the program is
/// quitting. A Strict Rule that always finds a match never ends otherwise.
[[nodiscard]] RunResult ApplyRule(const RunContext& context, Rule rule, TextBuffer& text,
                                  const SetList& sets, const FunctionList& functions,
                                  ProgressBar* position_bar);

/// Clears every Rule's stop flag when a run is to go on, sets it when it is to stop.
void SetStopFlags(RuleList& rules, bool running);

/// Asks the Filter's run to stop. The Rule in progress, being a copy, runs to its end first.
void CancelRun(Filter& filter);

}  // namespace zarvo
