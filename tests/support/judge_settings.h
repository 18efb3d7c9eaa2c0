// What the comparisons of the engines are set by from outside: ZARVO_JUDGE_CASES is the number of
// random cases, ZARVO_JUDGE_SEED the seed of the first one, which a failure prints for the case at
// hand, and ZARVO_SEARCH_LEVEL (0, 1, 2) the search level where a test doesn't choose one.
#pragma once

#include <cstdint>

#include "engine/search.h"

namespace zarvo::testing {

/// 1,000,000 unless it is set.
[[nodiscard]] std::uint64_t RandomCaseCount();
/// 1 unless it is set.
[[nodiscard]] std::uint64_t FirstSeed();

/// Sets a search level while it lives, or the best one below it that the machine has.
class WithSearchLevel {
 public:
  explicit WithSearchLevel(SearchLevel level) : former_(UseSearchLevel(level)) {}
  ~WithSearchLevel() { UseSearchLevel(former_); }
  WithSearchLevel(const WithSearchLevel&) = delete;
  WithSearchLevel& operator=(const WithSearchLevel&) = delete;

 private:
  SearchLevel former_;
};

}  // namespace zarvo::testing
