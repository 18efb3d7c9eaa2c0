// What a run asks of the program around it, and the counters that all runs share.
#pragma once

#include <cstdint>
#include <string>

#include "engine/random.h"

namespace zarvo {

/// The counters of the engine. The process holds them once: runs that nest inside the pump share
/// them, and what one run leaves is what the next one finds.
struct EngineState {
  /// How many bytes at the end of the text are still to be searched. Counted from the end, so that
  /// a replacement before that point doesn't move it. Negative after a match that ran past the end
  /// of the text. Not 0 after a pass that ended early: the next search goes on from there.
  std::int64_t Remaining = 0;
  /// Replacements made in the current Rule's run; with a Set in sequence, the next string.
  std::int64_t Replacements = 0;

  friend bool operator==(const EngineState&, const EngineState&) = default;
};

EngineState& ProcessEngineState();

/// A progress bar. Calls follow the order of the run; Exists is asked before a bar is set back
/// because a run was stopped, as its window may be gone by then.
class ProgressBar {
 public:
  virtual ~ProgressBar() = default;
  virtual void SetRange(std::int64_t least, std::int64_t most) = 0;
  virtual void SetStep(std::int64_t step) = 0;
  virtual void SetPosition(std::int64_t position) = 0;
  virtual void Step() = 0;
  virtual bool Exists() = 0;
};

/// What came of a host's turn.
struct Attention {
  bool GoesOn = true;  ///< false when the program is quitting
  /// False when the Filter's lists, the counters and the generator are surely as they were.
  bool MayHaveChanged = true;
};

/// The program around a run. Each call may do anything to the Filter, or start another run.
class RunHost {
 public:
  virtual ~RunHost() = default;
  /// The host's turn at each match: pumps, then idles until there is nothing more to do. A host
  /// that knows when it has done nothing says so here; what the run has prepared of Sets and
  /// Functions then stays in use. Changes made in ShowMessage the run looks for by itself.
  virtual Attention Attend() {
    const bool goes_on = Pump();
    for (long count = 0; Idle(count); ++count) {
    }
    return {goes_on, true};
  }
  /// False for a host that has nothing to do during a run: it gets no turns, and its ShowMessage
  /// changes nothing of the Filter and starts no run. Nothing can then stop the run.
  [[nodiscard]] virtual bool TakesTurns() const { return true; }
  /// Lets the program handle the messages that wait. False when the program is quitting; the run
  /// then stops at once.
  virtual bool Pump() { return true; }
  /// Idle processing, called with 0, 1, 2 and so on until it returns false: nothing more to do.
  virtual bool Idle(long count) {
    static_cast<void>(count);
    return false;
  }
  /// Shows a message box with a stop icon and returns when it is closed.
  virtual void ShowMessage(const std::string& text) { static_cast<void>(text); }
};

/// What a run works with.
struct RunContext {
  EngineState& State;
  RandomGenerator& Random;
  RunHost& Host;
};

}  // namespace zarvo
