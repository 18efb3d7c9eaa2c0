#include "tests/support/judge_settings.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace zarvo::testing {
namespace {

std::uint64_t NumberFromEnvironment(const char* name, std::uint64_t otherwise) {
  const char* value = std::getenv(name);
  return value == nullptr ? otherwise : std::strtoull(value, nullptr, 10);
}

class SearchLevelFromOutside : public ::testing::Environment {
 public:
  void SetUp() override {
    const auto best = static_cast<std::uint64_t>(BestSearchLevel());
    UseSearchLevel(static_cast<SearchLevel>(NumberFromEnvironment("ZARVO_SEARCH_LEVEL", best)));
  }
};

[[maybe_unused]] const ::testing::Environment* const kEnvironment =
    ::testing::AddGlobalTestEnvironment(new SearchLevelFromOutside);

}  // namespace

std::uint64_t RandomCaseCount() { return NumberFromEnvironment("ZARVO_JUDGE_CASES", 1000000); }

std::uint64_t FirstSeed() { return NumberFromEnvironment("ZARVO_JUDGE_SEED", 1); }

}  // namespace zarvo::testing
