// A Pattern: what a Rule looks for, its replacement string, or one string of a Set.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "model/subpattern.h"

namespace zarvo {

struct Pattern {
  static constexpr std::int32_t kNewestRecordVersion = 1;
  /// The value of MostSignificant while no Subpattern is chosen.
  static constexpr std::int32_t kNotChosen = -1;

  std::int32_t RecordVersion = kNewestRecordVersion;
  /// 0-based index of the Subpattern that a search looks for first, or kNotChosen. A file may hold
  /// an index outside the list.
  std::int32_t MostSignificant = kNotChosen;
  std::vector<Subpattern> Subpatterns;

  /// The index that the automatic choice gives, whatever MostSignificant holds now: the earliest
  /// Subpattern of the highest weight above 0, or kNotChosen. A String weighs 10 for each byte, a
  /// Character code 10, a Character list of n characters 10 / n truncated; nothing else weighs.
  [[nodiscard]] std::int32_t ComputeMostSignificant() const;

  /// The bytes that every match of this Pattern covers: the sum of the Subpatterns' widths.
  [[nodiscard]] std::size_t Length() const;

  friend bool operator==(const Pattern&, const Pattern&) = default;
};

/// The display forms of the Subpatterns one after another.
[[nodiscard]] std::string DisplayForm(const Pattern& pattern);

}  // namespace zarvo
