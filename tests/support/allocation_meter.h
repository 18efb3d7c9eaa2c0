// Measures how much memory a piece of code holds at most.
#pragma once

#include <cstddef>

namespace zarvo::testing {

/// Between its construction and PeakBytes, counts what the program's operator new gives out and
/// takes back. One at a time.
class AllocationMeter {
 public:
  AllocationMeter();
  /// The most bytes that were held at once, above what was held when the meter was made.
  [[nodiscard]] std::size_t PeakBytes() const;

 private:
  std::size_t held_at_start_;
};

}  // namespace zarvo::testing
