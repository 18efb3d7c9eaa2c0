// Cases for both engines: filters, texts and what the program around a run does meanwhile; and the
// comparison of what the real engine and the naive one make of them.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "engine/run_host.h"
#include "model/filter.h"

namespace zarvo::testing {

/// What a host does to the program in the middle of a call.
enum class HostDeed {
  RemoveFirstRule,
  RemoveLastRule,
  RemoveAllRules,
  InsertRuleFirst,  ///< the first Rule of OtherFilter
  AppendRules,      ///< all Rules of OtherFilter
  ReverseRules,
  EditRules,    ///< every Rule becomes the first Rule of OtherFilter
  ShortenSets,  ///< every Set loses its last string
  ClearSets,
  InsertSetsFirst,  ///< those of OtherFilter
  ClearFunctions,
  InsertFunctionsFirst,  ///< those of OtherFilter
  ReplaceFilter,         ///< by OtherFilter
  Cancel,
  SetStopFlags,
  ClearStopFlags,
  RunSameFilter,   ///< on OtherText, inside the call
  RunOtherFilter,  ///< a copy of OtherFilter, on OtherText, inside the call
  DrawRandom,
};
constexpr int kHostDeeds = static_cast<int>(HostDeed::DrawRandom) + 1;

struct TimedDeed {
  /// The call of the host (pump, idle and message together, from 0) in which it is done.
  std::int64_t Call = 0;
  HostDeed Deed = HostDeed::Cancel;
};

/// One application of a filter.
struct RunPlan {
  /// Takes the Filter object that the run before this one left, instead of Filter.
  bool KeepsFilter = false;
  /// Takes the text that the run before this one left, instead of Text, unless it grew long.
  bool KeepsText = false;
  zarvo::Filter Filter;
  std::string Text;
  bool HasRuleBar = false;
  bool HasPositionBar = false;
  /// How often Exists answers yes before the windows of the bars are gone.
  std::int64_t ExistsAnswers = 1000;
  /// How often Pump returns true. It ends what would never end, and what would grow without end.
  std::int64_t Pumps = 1000;
  /// How many calls of Idle in a row ask for another one.
  long IdleRounds = 0;
  /// The host says of each turn whether it did anything, instead of claiming that it may have.
  bool TellsOfDeeds = false;
  std::vector<TimedDeed> Deeds;
  zarvo::Filter OtherFilter;
  std::string OtherText;
};

/// Runs one after another in one process.
struct EngineCase {
  std::uint32_t Seed = 1;
  EngineState State;
  std::vector<RunPlan> Runs;
};

/// Runs the case through both engines. Empty when they agree in the texts, the results, what is
/// left of the filters, the counters, the random numbers drawn, and every call of the host and the
/// bars; otherwise the case and the first difference, for people.
[[nodiscard]] std::string FindDifference(const EngineCase& engine_case);

/// The case in a few lines.
[[nodiscard]] std::string Describe(const EngineCase& engine_case);
[[nodiscard]] std::string Describe(const Filter& filter);

}  // namespace zarvo::testing
