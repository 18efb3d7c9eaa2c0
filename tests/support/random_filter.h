// Makes cases for both engines at random.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <random>
#include <string>

#include "model/filter.h"
#include "tests/support/engine_case.h"

namespace zarvo::testing {

/// True when a Rule can put more of the text into it than it takes out, so that a run may double
/// the text at every match.
[[nodiscard]] bool RepeatsText(const Filter& filter);

/// Makes filters and texts that meet often and are odd often. The same seed makes the same ones on
/// every platform.
class RandomCases {
 public:
  explicit RandomCases(std::uint64_t seed) : engine_(seed) {}

  /// With deeds, hosts change the filter, cancel and start other runs.
  [[nodiscard]] EngineCase MakeCase(bool with_deeds);
  [[nodiscard]] Filter MakeFilter();
  [[nodiscard]] Pattern MakePattern();
  /// Holds some matches of the Filter's patterns.
  [[nodiscard]] std::string MakeText(const Filter& filter);

  /// 0 to limit - 1; limit is above 0.
  std::size_t Below(std::size_t limit) { return static_cast<std::size_t>(engine_() % limit); }

 private:
  bool OneIn(std::size_t n) { return Below(n) == 0; }
  // The smaller of two draws, so that small numbers are the usual ones. The draws stand in two
  // statements because the order of a call's arguments is up to the compiler.
  std::size_t Fewer(std::size_t limit, std::size_t other_limit) {
    const std::size_t first = Below(limit);
    const std::size_t second = Below(other_limit);
    return first < second ? first : second;
  }
  template <typename Value>
  Value Pick(std::initializer_list<Value> values) {
    return values.begin()[Below(values.size())];
  }
  char Letter();
  std::string Letters(std::size_t most);
  std::string InstanceOf(const Pattern& pattern);
  std::string CallText();
  Subpattern MakeSubpattern();
  Pattern MakeReplacement();
  void MakePositions(Rule& rule);
  Rule MakeRule();
  Set MakeSet();
  Function MakeFunction();
  RunPlan MakeRun(bool with_deeds, const RunPlan* last);

  std::mt19937_64 engine_;
  std::size_t letters_ = 2;
};

}  // namespace zarvo::testing
