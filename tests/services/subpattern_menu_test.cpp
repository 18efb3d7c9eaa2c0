#include "app/services/subpattern_menu.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

namespace zarvo {
namespace {

using Items = std::vector<SubpatternMenuItem>;

PredefinedSubpattern Entry(const std::string& name, std::int32_t number, std::int32_t show = 1) {
  PredefinedSubpattern entry;
  entry.Name = name;
  entry.Number = number;
  entry.Show = show;
  return entry;
}

std::string Resolved(const SubpatternMenu& menu, std::int64_t command) {
  const PredefinedSubpattern* entry = menu.Resolve(command);
  return entry == nullptr ? "(none)" : entry->Name;
}

TEST(SubpatternMenu, WithoutEntriesIsEmpty) {
  EXPECT_EQ(SubpatternMenu().Items(), Items());
  EXPECT_EQ(Resolved(SubpatternMenu(), 104), "(none)");
}

TEST(SubpatternMenu, NumbersItsItemsFrom104) {
  const SubpatternMenu menu({Entry("a", 1), Entry("b", 2), Entry("c", 3)});
  EXPECT_EQ(menu.Items(), (Items{{"a", 104}, {"b", 105}, {"c", 106}}));
  EXPECT_EQ(Resolved(menu, 104), "a");
  EXPECT_EQ(Resolved(menu, 105), "b");
  EXPECT_EQ(Resolved(menu, 106), "c");
  EXPECT_EQ(Resolved(menu, 107), "(none)");
}

TEST(SubpatternMenu, AHiddenEntryTakesANumberAndShiftsWhatLaterItemsStandFor) {
  const SubpatternMenu menu({Entry("a", 1), Entry("b", 2, 0), Entry("c", 3), Entry("d", 4)});
  EXPECT_EQ(menu.Items(), (Items{{"a", 104}, {"c", 106}, {"d", 107}}));
  EXPECT_EQ(Resolved(menu, 104), "a");
  EXPECT_EQ(Resolved(menu, 106), "d");
  EXPECT_EQ(Resolved(menu, 107), "(none)");
}

TEST(SubpatternMenu, AMissingNumberShiftsAsAHiddenEntryDoes) {
  const SubpatternMenu menu({Entry("b", 2), Entry("c", 3)});
  EXPECT_EQ(menu.Items(), (Items{{"b", 105}, {"c", 106}}));
  EXPECT_EQ(Resolved(menu, 105), "c");
  EXPECT_EQ(Resolved(menu, 106), "(none)");
}

TEST(SubpatternMenu, ShowsAnEntryWhoseFlagIsAnyNumberButZero) {
  const SubpatternMenu menu({Entry("a", 1, -1), Entry("b", 2, 7)});
  EXPECT_EQ(menu.Items().size(), 2U);
}

TEST(SubpatternMenu, ListsMoreThanThirtyItemsButOnlyThirtyCommandsDoAnything) {
  SubpatternLibrary::Entries entries;
  for (int n = 1; n <= 32; ++n) entries.push_back(Entry(std::to_string(n), n));
  const SubpatternMenu menu(entries);
  ASSERT_EQ(menu.Items().size(), 32U);
  EXPECT_EQ(menu.Items().back(), (SubpatternMenuItem{"32", 135}));
  EXPECT_EQ(Resolved(menu, 133), "30");
  EXPECT_EQ(Resolved(menu, 134), "(none)");
  EXPECT_EQ(Resolved(menu, 103), "(none)");
}

TEST(SubpatternMenu, TheHighestNumberOfAllHasACommandToo) {
  constexpr std::int32_t kHighest = std::numeric_limits<std::int32_t>::max();
  const SubpatternMenu menu({Entry("a", kHighest)});
  EXPECT_EQ(menu.Items(), (Items{{"a", std::int64_t{kHighest} + 103}}));
  EXPECT_EQ(Resolved(menu, std::int64_t{kHighest} + 103), "(none)");
}

}  // namespace
}  // namespace zarvo
