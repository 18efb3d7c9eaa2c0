#include "engine/random.h"

#include <gtest/gtest.h>

#include "engine/run_host.h"

namespace zarvo {
namespace {

TEST(RandomGenerator, FollowsItsRule) {
  // Worked out by hand for the seed 1: 2745024 >> 16 is 41, and so on.
  RandomGenerator generator(1);
  for (const int expected : {41, 18467, 6334, 26500, 19169}) EXPECT_EQ(generator.Next(), expected);
}

TEST(RandomGenerator, SeedStartsItAnew) {
  RandomGenerator generator(0);
  EXPECT_EQ(generator.Next(), 38);
  generator.Seed(1);
  EXPECT_EQ(generator.Next(), 41);
  generator.Seed(0xFFFFFFFFU);
  EXPECT_EQ(generator.Next(), (0xFFFFFFFFU * 214013U + 2531011U) >> 16 & 0x7FFFU);
}

TEST(RandomGenerator, NextUpToReachesItsMostOnlyAtTheGreatestValue) {
  RandomGenerator generator(1);
  int most_seen = 0;
  for (int i = 0; i < 2'000'000; ++i) {
    RandomGenerator ahead = generator;
    const bool is_greatest = ahead.Next() == RandomGenerator::kMost;
    const int value = generator.NextUpTo(2);
    ASSERT_EQ(value == 2, is_greatest);
    most_seen = std::max(most_seen, value);
  }
  EXPECT_EQ(most_seen, 2);
}

TEST(ProcessState, IsOneForTheProcess) {
  EXPECT_EQ(&ProcessRandom(), &ProcessRandom());
  EXPECT_EQ(&ProcessEngineState(), &ProcessEngineState());
  EXPECT_EQ(ProcessEngineState(), EngineState());
}

TEST(RandomGenerator, SkippingIsTheSameAsDrawing) {
  RandomGenerator drawn(77);
  for (std::uint64_t count = 0; count < 300; ++count) {
    RandomGenerator skipped(77);
    skipped.Skip(count);
    EXPECT_EQ(skipped, drawn) << count;
    drawn.Next();
  }
}

}  // namespace
}  // namespace zarvo
