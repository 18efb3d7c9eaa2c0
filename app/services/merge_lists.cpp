#include "app/services/merge_lists.h"

#include <utility>

namespace zarvo {
namespace {

template <typename Element>
std::vector<MergeItem> ItemsOf(const RecordList<Element>& list) {
  std::vector<MergeItem> items;
  items.reserve(list.Count());
  for (std::size_t i = 0; i < list.Count(); ++i) items.push_back({list[i].Name, i});
  return items;
}

template <typename Element>
MergeLists ListsOf(const RecordList<Element>& target, const RecordList<Element>& source) {
  return {ItemsOf(target), ItemsOf(source), {}};
}

void Move(const std::vector<std::size_t>& positions, std::vector<MergeItem>& from,
          std::vector<MergeItem>& to) {
  std::vector<bool> is_moved(from.size());
  for (const std::size_t position : positions) is_moved[position] = true;
  std::vector<MergeItem> left;
  for (std::size_t i = 0; i < from.size(); ++i) {
    (is_moved[i] ? to : left).push_back(std::move(from[i]));
  }
  from = std::move(left);
}

template <typename Element>
void AppendItems(const std::vector<MergeItem>& items, const RecordList<Element>& source,
                 RecordList<Element>& target) {
  for (const MergeItem& item : items) target.Append(source[item.Position]);
}

}  // namespace

void MergeLists::Add(const std::vector<std::size_t>& positions) {
  Move(positions, Available, ToAdd);
}

void MergeLists::TakeBack(const std::vector<std::size_t>& positions) {
  Move(positions, ToAdd, Available);
}

FilterMerge::FilterMerge(const Filter& target, Filter source)
    : source_(std::move(source)),
      lists_{ListsOf(target.Rules, source_.Rules), ListsOf(target.Functions, source_.Functions),
             ListsOf(target.Sets, source_.Sets)} {}

void FilterMerge::AppendTo(Filter& target) const {
  AppendItems(Lists(MergeKind::Rules).ToAdd, source_.Rules, target.Rules);
  AppendItems(Lists(MergeKind::Functions).ToAdd, source_.Functions, target.Functions);
  AppendItems(Lists(MergeKind::Sets).ToAdd, source_.Sets, target.Sets);
}

}  // namespace zarvo
