// Passes in one loop.
//
// With no bar to follow the matches, and a host that has nothing to do at a match, as it says
// itself, nothing outside can tell one match from the next: only the text, the counters and the
// generator that a pass leaves count. Such a pass can run in one loop that holds all it needs in
// registers, or, where the host takes no turns and each match is one byte that becomes one byte, as
// a table over the whole text. What doesn't fit, and the rest of a pass in which the host did
// something, is left to the loop that serves all Rules.
#pragma once

#include <cstdint>

#include "engine/matcher.h"
#include "engine/random.h"
#include "engine/replacement.h"
#include "engine/run_host.h"
#include "engine/text_buffer.h"
#include "model/rule.h"

namespace zarvo {

/// The draw against a Rule's probability, which every match has, even one that is sure to be
/// replaced.
class Draw {
 public:
  explicit Draw(const Rule& rule);

  [[nodiscard]] bool Replaces(RandomGenerator& random) const {
    return random.Next() < winning_values_;
  }
  [[nodiscard]] bool AlwaysReplaces() const { return winning_values_ > RandomGenerator::kMost; }

 private:
  int winning_values_;
};

/// Does all passes of the Rule and leaves nothing remaining, if each match is one byte that becomes
/// one byte and there are many; otherwise does nothing and gives false. The host gets no turns.
[[nodiscard]] bool MapMatchedBytes(const RunContext& context, const Rule& rule, const Draw& draw,
                                   const PreparedPattern& pattern, Replacer& replacer,
                                   TextBuffer& text);

enum class BulkResult {
  NoMatch,  ///< the pass is done; it found nothing
  Done,     ///< the pass is done
  Left,     ///< the search is to go on, with a match that is none for this
  HadTurn,  ///< a match was found, and in its turn the host did something
};

struct BulkOutcome {
  BulkResult Result = BulkResult::NoMatch;
  // After HadTurn.
  std::int64_t Position = PreparedPattern::kNoMatch;  ///< of the match, which isn't replaced yet
  Attention Turn;
};

/// True when BulkPass can be used for this Rule.
[[nodiscard]] bool CanPassInBulk(const Rule& rule, const Replacer& replacer);

/// A whole pass from where the search begins. A host that takes turns gets one at each match.
[[nodiscard]] BulkOutcome BulkPass(const RunContext& context, const Draw& draw,
                                   const PreparedPattern& pattern, Replacer& replacer,
                                   const Rule& rule, TextBuffer& text);

}  // namespace zarvo
