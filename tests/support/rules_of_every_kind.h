// Rules for comparing the engines: of every kind, over few letters, so that short texts meet all of
// what they do.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "model/filter.h"
#include "tests/support/engine_case.h"

namespace zarvo::testing {

/// Patterns of every kind over a, b and c, degenerate ones among them.
[[nodiscard]] const std::vector<Pattern>& PatternsOfEveryKind();

[[nodiscard]] Rule MakeRule(Pattern pattern, Pattern replacement, std::int32_t from,
                            std::int32_t to);

/// What a Rule may do with a match of the Pattern, whatever it looks for.
[[nodiscard]] std::vector<Rule> Treatments(const Pattern& pattern);

/// Rules with the Sets "letters" and "empty" and the Function "f" around them.
[[nodiscard]] Filter MakeFilter(std::vector<Rule> rules);

/// Two runs, so that what one leaves of the counters meets the next. The first one's text is empty.
[[nodiscard]] EngineCase TwoRuns(Filter filter, std::int64_t pumps);

/// Makes of the text the one after it in the order by length, then by letter; the empty one is the
/// first. False after the last one.
[[nodiscard]] bool NextText(std::string& text, const std::string& letters, std::size_t longest);

}  // namespace zarvo::testing
