#include "app/services/merge_lists.h"

#include <gtest/gtest.h>

#include "tests/support/builders.h"
#include "tests/support/golden.h"
#include "tests/support/golden_filters.h"

namespace zarvo {
namespace {

using testing::FilterOf;
using testing::FunctionOf;
using testing::Of;
using testing::Replace;
using testing::SetOf;
using testing::Str;

using Names = std::vector<std::string>;

Rule RuleNamed(const std::string& name, const std::string& text = "a") {
  Rule rule = Replace(Of({Str(text)}, 0), Of({Str("b")}, 0));
  rule.Name = name;
  return rule;
}

Filter Rules(const Names& names) {
  Filter filter;
  for (const std::string& name : names) filter.Rules.Append(RuleNamed(name));
  return filter;
}

Names NamesOf(const std::vector<MergeItem>& items) {
  Names names;
  for (const MergeItem& item : items) names.push_back(item.Name);
  return names;
}

template <typename Element>
Names NamesOf(const RecordList<Element>& list) {
  Names names;
  for (const Element& element : list) names.push_back(element.Name);
  return names;
}

std::vector<std::size_t> AllPositions(std::size_t count) {
  std::vector<std::size_t> positions;
  for (std::size_t i = 0; i < count; ++i) positions.push_back(i);
  return positions;
}

TEST(MergeLists, BeginWithAllOfTheSourceAvailableInItsOrder) {
  const Filter target = FilterOf({RuleNamed("r")}, {SetOf("s", {}), SetOf("t", {})}, {});
  FilterMerge merge(target, FilterOf({RuleNamed("z"), RuleNamed("a")}, {SetOf("q", {})},
                                     {FunctionOf("g", {}), FunctionOf("f", {})}));
  EXPECT_EQ(NamesOf(merge.Lists(MergeKind::Rules).Existing), Names({"r"}));
  EXPECT_EQ(NamesOf(merge.Lists(MergeKind::Rules).Available), Names({"z", "a"}));
  EXPECT_EQ(NamesOf(merge.Lists(MergeKind::Functions).Existing), Names());
  EXPECT_EQ(NamesOf(merge.Lists(MergeKind::Functions).Available), Names({"g", "f"}));
  EXPECT_EQ(NamesOf(merge.Lists(MergeKind::Sets).Existing), Names({"s", "t"}));
  EXPECT_EQ(NamesOf(merge.Lists(MergeKind::Sets).Available), Names({"q"}));
  for (const MergeKind kind : {MergeKind::Rules, MergeKind::Functions, MergeKind::Sets}) {
    EXPECT_TRUE(merge.Lists(kind).ToAdd.empty());
  }
}

TEST(MergeLists, ThirdAndFifthMoveInThatOrderToTheEnd) {
  FilterMerge merge(Filter(), Rules({"1", "2", "3", "4", "5", "6"}));
  MergeLists& lists = merge.Lists(MergeKind::Rules);
  lists.Add({5});
  lists.Add({2, 4});
  EXPECT_EQ(NamesOf(lists.ToAdd), Names({"6", "3", "5"}));
  EXPECT_EQ(NamesOf(lists.Available), Names({"1", "2", "4"}));
}

TEST(MergeLists, OrderOfThePositionsDoesNotMatter) {
  FilterMerge merge(Filter(), Rules({"1", "2", "3", "4"}));
  MergeLists& lists = merge.Lists(MergeKind::Rules);
  lists.Add({3, 0, 2});
  EXPECT_EQ(NamesOf(lists.ToAdd), Names({"1", "3", "4"}));
  EXPECT_EQ(NamesOf(lists.Available), Names({"2"}));
}

TEST(MergeLists, ItemTakenBackGoesToTheEndOfAvailable) {
  FilterMerge merge(Filter(), Rules({"1", "2", "3"}));
  MergeLists& lists = merge.Lists(MergeKind::Rules);
  lists.Add({0, 1});
  lists.TakeBack({0});
  EXPECT_EQ(NamesOf(lists.Available), Names({"3", "1"}));
  EXPECT_EQ(NamesOf(lists.ToAdd), Names({"2"}));
  lists.Add({1});
  EXPECT_EQ(NamesOf(lists.ToAdd), Names({"2", "1"}));
}

TEST(MergeLists, NoPositionsMoveNothing) {
  FilterMerge merge(Filter(), Rules({"1"}));
  merge.Lists(MergeKind::Rules).Add({});
  merge.Lists(MergeKind::Rules).TakeBack({});
  EXPECT_EQ(NamesOf(merge.Lists(MergeKind::Rules).Available), Names({"1"}));
  EXPECT_TRUE(merge.Lists(MergeKind::Rules).ToAdd.empty());
}

TEST(MergeLists, ItemsOfTheSameNameStayApart) {
  Filter source;
  source.Rules.Append(RuleNamed("same", "first"));
  source.Rules.Append(RuleNamed("same", "second"));
  FilterMerge merge(Filter(), source);
  merge.Lists(MergeKind::Rules).Add({1});
  merge.Lists(MergeKind::Rules).Add({0});
  Filter target;
  merge.AppendTo(target);
  ASSERT_EQ(target.Rules.Count(), 2U);
  EXPECT_EQ(target.Rules[0], source.Rules[1]);
  EXPECT_EQ(target.Rules[1], source.Rules[0]);
}

TEST(MergeLists, ManyItemsMoveAtOnceAndEverySecondOfThemToo) {
  constexpr std::size_t kMany = 10'000;
  Names names;
  for (std::size_t i = 0; i < kMany; ++i) names.push_back(std::to_string(i));
  FilterMerge merge(Filter(), Rules(names));
  MergeLists& lists = merge.Lists(MergeKind::Rules);
  lists.Add(AllPositions(kMany));
  EXPECT_EQ(NamesOf(lists.ToAdd), names);
  EXPECT_TRUE(lists.Available.empty());
  std::vector<std::size_t> even;
  for (std::size_t i = 0; i < kMany; i += 2) even.push_back(i);
  lists.TakeBack(even);
  ASSERT_EQ(lists.Available.size(), kMany / 2);
  ASSERT_EQ(lists.ToAdd.size(), kMany / 2);
  for (std::size_t i = 0; i < kMany / 2; ++i) {
    EXPECT_EQ(lists.Available[i].Name, names[2 * i]);
    EXPECT_EQ(lists.ToAdd[i].Name, names[2 * i + 1]);
  }
}

// ---- Appending

TEST(FilterMerge, AppendsEachKindInTheOrderOfChoosing) {
  Filter target = FilterOf({RuleNamed("r")}, {SetOf("s", {})}, {FunctionOf("f", {})});
  FilterMerge merge(target,
                    FilterOf({RuleNamed("r1"), RuleNamed("r2")}, {SetOf("s1", {}), SetOf("s2", {})},
                             {FunctionOf("f1", {}), FunctionOf("f2", {})}));
  for (const MergeKind kind : {MergeKind::Rules, MergeKind::Functions, MergeKind::Sets}) {
    merge.Lists(kind).Add({1});
    merge.Lists(kind).Add({0});
  }
  merge.AppendTo(target);
  EXPECT_EQ(NamesOf(target.Rules), Names({"r", "r2", "r1"}));
  EXPECT_EQ(NamesOf(target.Functions), Names({"f", "f2", "f1"}));
  EXPECT_EQ(NamesOf(target.Sets), Names({"s", "s2", "s1"}));
}

TEST(FilterMerge, ExistingNameIsAddedASecondTime) {
  Filter target = FilterOf({RuleNamed("r", "old")}, {SetOf("s", {})}, {FunctionOf("f", {})});
  FilterMerge merge(target, FilterOf({RuleNamed("r", "new")}, {SetOf("s", {Of({Str("x")})})},
                                     {FunctionOf("f", {{"a", "b"}})}));
  for (const MergeKind kind : {MergeKind::Rules, MergeKind::Functions, MergeKind::Sets}) {
    merge.Lists(kind).Add({0});
  }
  merge.AppendTo(target);
  ASSERT_EQ(target.Rules.Count(), 2U);
  EXPECT_EQ(target.Rules[0], RuleNamed("r", "old"));
  EXPECT_EQ(target.Rules[1], RuleNamed("r", "new"));
  ASSERT_EQ(target.Sets.Count(), 2U);
  EXPECT_TRUE(target.Sets[0].Strings.empty());
  EXPECT_EQ(target.Sets[1], SetOf("s", {Of({Str("x")})}));
  ASSERT_EQ(target.Functions.Count(), 2U);
  EXPECT_TRUE(target.Functions[0].Entries.empty());
  EXPECT_EQ(target.Functions[1], FunctionOf("f", {{"a", "b"}}));
}

TEST(FilterMerge, NothingChosenChangesNothing) {
  for (Filter target : {testing::ExpectedV6(), testing::ExpectedOtherLists()}) {
    const Filter before = target;
    const FilterMerge merge(target, testing::ExpectedV2());
    merge.AppendTo(target);
    EXPECT_EQ(target, before);
  }
}

TEST(FilterMerge, HeaderStaysAsItWas) {
  Filter target = testing::ExpectedV3();
  FilterMerge merge(target, testing::ExpectedV6());
  merge.Lists(MergeKind::Rules).Add({0, 1});
  merge.AppendTo(target);
  EXPECT_EQ(static_cast<const FilterHeader&>(target),
            static_cast<const FilterHeader&>(testing::ExpectedV3()));
}

TEST(FilterMerge, RecordsOfOtherVersionsAreAddedAsTheyAre) {
  Filter target;
  const Filter source = testing::ExpectedOtherRecords();
  FilterMerge merge(target, source);
  merge.Lists(MergeKind::Rules).Add(AllPositions(source.Rules.Count()));
  merge.Lists(MergeKind::Sets).Add(AllPositions(source.Sets.Count()));
  merge.Lists(MergeKind::Functions).Add(AllPositions(source.Functions.Count()));
  merge.AppendTo(target);
  EXPECT_EQ(target.Rules, source.Rules);
  EXPECT_EQ(target.Sets, source.Sets);
  EXPECT_EQ(target.Functions, source.Functions);
}

TEST(FilterMerge, WhatIsAddedToListsOfOtherVersionsIsStored) {
  Filter target = testing::ExpectedOtherLists();
  FilterMerge merge(target, testing::ExpectedV6());
  merge.Lists(MergeKind::Rules).Add({0});
  merge.Lists(MergeKind::Functions).Add({0});
  merge.AppendTo(target);
  EXPECT_EQ(target.Rules.RecordVersion, 1);
  EXPECT_EQ(target.Functions.RecordVersion, 1);
  EXPECT_EQ(target.Sets.RecordVersion, 0) << "nothing was added to it";
  Filter stored;
  const std::string bytes = FilterFileBytes(target);
  ASSERT_TRUE(testing::Load(bytes, stored).Ok());
  EXPECT_EQ(stored, target);
  EXPECT_EQ(NamesOf(stored.Rules), Names({"all"}));
  EXPECT_EQ(NamesOf(stored.Functions), Names({"fn"}));
}

}  // namespace
}  // namespace zarvo
