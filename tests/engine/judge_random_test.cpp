// The real engine against the naive one on seeded random cases, also while the host changes the
// filter under a run.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "tests/support/engine_case.h"
#include "tests/support/judge_settings.h"
#include "tests/support/random_filter.h"

namespace zarvo::testing {
namespace {

// False at the first difference.
bool AgreeOnRandomCases(std::uint64_t cases, bool with_deeds) {
  const std::uint64_t first_seed = FirstSeed();
  for (std::uint64_t i = 0; i < cases; ++i) {
    RandomCases random(first_seed + i);
    EngineCase engine_case = random.MakeCase(with_deeds);
    // What is prepared stays in use with every other case.
    for (RunPlan& run : engine_case.Runs) run.TellsOfDeeds = i % 2 != 0;
    const std::string difference = FindDifference(engine_case);
    if (difference.empty()) continue;
    ADD_FAILURE() << "again with ZARVO_JUDGE_SEED=" << first_seed + i << " ZARVO_JUDGE_CASES=1\n"
                  << difference;
    return false;
  }
  return true;
}

TEST(Judge, AgreesOnRandomCasesAtTheLowerSearchLevels) {
  for (const SearchLevel level : {SearchLevel::Plain, SearchLevel::Sse2}) {
    SCOPED_TRACE("level " + std::to_string(static_cast<int>(level)));
    const WithSearchLevel with_level(level);
    ASSERT_TRUE(AgreeOnRandomCases((RandomCaseCount() + 9) / 10, false));
    ASSERT_TRUE(AgreeOnRandomCases((RandomCaseCount() + 9) / 10, true));
  }
}

TEST(Judge, AgreesOnRandomCases) { ASSERT_TRUE(AgreeOnRandomCases(RandomCaseCount(), false)); }

TEST(Judge, AgreesOnRandomCasesWithDeeds) {
  ASSERT_TRUE(AgreeOnRandomCases((RandomCaseCount() + 4) / 5, true));
}

}  // namespace
}  // namespace zarvo::testing
