#include "tests/support/unwatched_run.h"

#include <vector>

#include "engine/apply_filter.h"
#include "tests/support/engine_case.h"
#include "tests/support/naive_engine.h"
#include "tests/support/random_filter.h"

namespace zarvo::testing {
namespace {

// Takes no turns. The judge is told to stop where the real engine would go on for ever.
class UnwatchedHost : public RunHost {
 public:
  bool Pump() override { return ++Pumps <= MostPumps; }
  void ShowMessage(const std::string& text) override { Messages.push_back(text); }
  [[nodiscard]] bool TakesTurns() const override { return false; }

  std::int64_t MostPumps = 0;
  std::int64_t Pumps = 0;
  std::vector<std::string> Messages;
};

struct Outcome {
  std::string Text;
  EngineState State;
  RandomGenerator Random;
  std::vector<std::string> Messages;

  friend bool operator==(const Outcome&, const Outcome&) = default;
};

std::string Describe(const Outcome& outcome) {
  RandomGenerator random = outcome.Random;
  return "\"" + outcome.Text + "\", remaining " + std::to_string(outcome.State.Remaining) +
         ", replacements " + std::to_string(outcome.State.Replacements) + ", next random " +
         std::to_string(random.Next()) + ", " + std::to_string(outcome.Messages.size()) +
         " messages\n";
}

}  // namespace

UnwatchedComparison CompareUnwatched(const Filter& filter, const std::string& text,
                                     const EngineState& state, std::uint32_t seed,
                                     std::int64_t most_pumps) {
  Outcome expected{text, state, RandomGenerator(seed), {}};
  {
    UnwatchedHost host;
    host.MostPumps = most_pumps;
    Filter running = filter;
    if (naive::ApplyFilter({expected.State, expected.Random, host}, running, expected.Text, nullptr,
                           nullptr) == RunResult::Stopped) {
      return {};
    }
    expected.Messages = host.Messages;
  }
  Outcome found{text, state, RandomGenerator(seed), {}};
  // Room to grow in place, a different one for each.
  found.Text.reserve(text.size() + seed % 7 * 40);
  UnwatchedHost host;
  Filter running = filter;
  const RunResult result =
      ApplyFilter({found.State, found.Random, host}, running, found.Text, nullptr, nullptr);
  found.Messages = host.Messages;
  if (result == RunResult::Completed && host.Pumps == 0 && found == expected) return {true, {}};
  return {true, Describe(filter) + "on \"" + text + "\", remaining " +
                    std::to_string(state.Remaining) + ", seed " + std::to_string(seed) + ": " +
                    Describe(found) + "pumped " + std::to_string(host.Pumps) + " times, against " +
                    Describe(expected)};
}

}  // namespace zarvo::testing
