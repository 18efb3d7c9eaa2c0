// Runs that nobody watches, by both engines.
#pragma once

#include <cstdint>
#include <string>

#include "engine/run_host.h"
#include "model/filter.h"

namespace zarvo::testing {

struct UnwatchedComparison {
  /// False when the naive engine came to no end within the pumps: the real one then may not either,
  /// so it isn't asked.
  bool IsMade = false;
  /// The case and what differs in the text, the counters, the generator or the messages, for
  /// people; empty when nothing does.
  std::string Difference;
};

/// Applies the filter by the naive engine with a host that lets it pump so often, and by the real
/// one with a host that takes no turns.
[[nodiscard]] UnwatchedComparison CompareUnwatched(const Filter& filter, const std::string& text,
                                                   const EngineState& state, std::uint32_t seed,
                                                   std::int64_t most_pumps);

}  // namespace zarvo::testing
