// Choosing items of one filter that are to be added to another.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include "model/filter.h"

namespace zarvo {

/// The kinds of items, in the order in which they are offered.
enum class MergeKind { Rules, Functions, Sets };
inline constexpr std::size_t kMergeKindCount = 3;

/// An item as it is listed.
struct MergeItem {
  std::string Name;
  std::size_t Position;  ///< 0-based, in the list of its filter

  friend bool operator==(const MergeItem&, const MergeItem&) = default;
};

/// The lists of one kind. Positions are 0-based, come in any order, and must exist.
struct MergeLists {
  std::vector<MergeItem> Existing;   ///< what the filter to be added to has
  std::vector<MergeItem> Available;  ///< what is in the other one and not chosen
  std::vector<MergeItem> ToAdd;      ///< what is chosen, in the order of choosing

  /// Moves the items at these positions of Available to the end of ToAdd, in list order.
  void Add(const std::vector<std::size_t>& positions);
  /// Moves the items at these positions of ToAdd to the end of Available, in list order.
  void TakeBack(const std::vector<std::size_t>& positions);
};

/// One merge, from the moment the source is loaded. Names may clash: nothing is ever replaced.
class FilterMerge {
 public:
  /// Everything of the source is available, in its order.
  FilterMerge(const Filter& target, Filter source);

  [[nodiscard]] MergeLists& Lists(MergeKind kind) { return lists_[static_cast<std::size_t>(kind)]; }

  /// Appends copies of the chosen items, each kind in the order of choosing.
  void AppendTo(Filter& target) const;

 private:
  [[nodiscard]] const MergeLists& Lists(MergeKind kind) const {
    return lists_[static_cast<std::size_t>(kind)];
  }

  Filter source_;
  std::array<MergeLists, kMergeKindCount> lists_;
};

}  // namespace zarvo
