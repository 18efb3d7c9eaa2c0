// Filters for the benchmarks, and the pieces to put more of them together.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "model/filter.h"

namespace zarvo {

[[nodiscard]] Subpattern Part(SubpatternKind kind, std::string_view contents);
[[nodiscard]] Pattern PatternOf(std::vector<Subpattern> parts);
[[nodiscard]] Pattern Literal(std::string_view text);

/// A Rule that replaces the whole match.
[[nodiscard]] Rule Replacing(Pattern pattern, Pattern replacement);
/// A Rule that inserts after this many bytes of the match, or behind it.
[[nodiscard]] Rule Inserting(Pattern pattern, int after, Pattern inserted);

/// "Up": the capital of each of the letters a to z, and every other argument itself.
[[nodiscard]] Function UpFunction();

[[nodiscard]] Filter FilterOf(std::vector<Rule> rules);

/// Eight Rules, of which each does another kind of work on a SampleText: a literal, a Function in a
/// context, a deletion, a Set in sequence, a Set at random, an insertion, a draw, and a Strict one.
[[nodiscard]] Filter MixedFilter();

/// Literal Rules that never match a SampleText.
[[nodiscard]] Filter IdleFilter(std::size_t rules);

/// A Filter of this many Rules, with a Set and a Function to every ten, that holds every kind of
/// record and no reference that leads nowhere. Made to be stored and checked, not to be applied.
[[nodiscard]] Filter StoredFilter(std::size_t rules);

}  // namespace zarvo
