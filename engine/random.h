// The process's pseudo-random generator.
#pragma once

#include <cstdint>

namespace zarvo {

/// A linear congruential generator with results of 15 bits. The formulas of the engine are made for
/// that range, and a seed gives the same text everywhere.
class RandomGenerator {
 public:
  /// The largest result of Next.
  static constexpr int kMost = 32767;

  explicit RandomGenerator(std::uint32_t seed = 1) : state_(seed) {}

  void Seed(std::uint32_t seed) { state_ = seed; }

  /// The next value, 0 to kMost.
  int Next() {
    state_ = state_ * 214013U + 2531011U;
    return static_cast<int>(state_ >> 16 & 0x7FFFU);
  }

  /// Next scaled to 0 to most and truncated: most itself comes up only when Next gives kMost.
  int NextUpTo(int most) { return ScaleTo(most, Next()); }
  static int ScaleTo(int most, int value) { return static_cast<int>(value / 32767.0 * most); }

  /// The same as so many calls of Next.
  void Skip(std::uint64_t count) {
    // Two steps in one are again of this form, so the steps can be doubled.
    std::uint32_t factor = 214013U;
    std::uint32_t summand = 2531011U;
    for (; count != 0; count /= 2) {
      if (count % 2 != 0) state_ = state_ * factor + summand;
      summand += factor * summand;
      factor *= factor;
    }
  }

  friend bool operator==(const RandomGenerator&, const RandomGenerator&) = default;

 private:
  std::uint32_t state_;
};

/// The one generator of the process: it draws for runs and for password keys. The program seeds it
/// once, with the low 32 bits of the time in seconds.
RandomGenerator& ProcessRandom();

}  // namespace zarvo
