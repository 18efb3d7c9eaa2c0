// Golden files with one kind of damage each: the error says which field and where.
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <ostream>
#include <string>

#include "tests/support/builders.h"
#include "tests/support/golden.h"
#include "tests/support/golden_filters.h"

namespace zarvo {
namespace {

using namespace testing;  // the golden files and their filters

struct DamagedFile {
  const char* Name;
  ArchiveCode Code;
  const char* Field;
  std::size_t Offset;
};

void PrintTo(const DamagedFile& file, std::ostream* out) { *out << file.Name; }

class DamagedGoldenFile : public ::testing::TestWithParam<DamagedFile> {};

TEST_P(DamagedGoldenFile, FailsWithItsCodeFieldAndOffset) {
  Filter filter;
  ExpectFailure(Load(Golden(GetParam().Name), filter), GetParam().Code, GetParam().Field,
                GetParam().Offset);
}

INSTANTIATE_TEST_SUITE_P(
    , DamagedGoldenFile,
    ::testing::Values(
        DamagedFile{"wrong-magic", ArchiveCode::WrongMagic, "Magic", 0},
        DamagedFile{"wrong-magic-longer", ArchiveCode::WrongMagic, "Magic", 0},
        DamagedFile{"truncated", ArchiveCode::EndOfFile, "Rules[0].From", 71},
        DamagedFile{"truncated-second-rule", ArchiveCode::EndOfFile, "Rules[1].Name", 104},
        DamagedFile{"text-past-end", ArchiveCode::EndOfFile, "Author", 36},
        DamagedFile{"text-past-end-longest", ArchiveCode::EndOfFile, "Description", 38},
        DamagedFile{"text-prefix-cut", ArchiveCode::EndOfFile, "Name", 31},
        DamagedFile{"count-too-large", ArchiveCode::CountPastEnd, "Rules", 44},
        DamagedFile{"count-too-large-subpatterns", ArchiveCode::CountPastEnd,
                    "Rules[0].Pattern.Subpatterns", 63},
        DamagedFile{"count-too-large-entries", ArchiveCode::CountPastEnd, "Functions[0].Entries",
                    71},
        DamagedFile{"wide-text", ArchiveCode::WideText, "Name", 31}),
    NameOf<DamagedFile>);

TEST(EmptyFile, EndsBeforeTheMagic) {
  Filter filter;
  ExpectFailure(Load("", filter), ArchiveCode::EndOfFile, "Magic", 0);
}

TEST(WrongMagic, ChangesNothing) {
  Filter filter = FilledFilter();
  ASSERT_FALSE(Load(Golden("wrong-magic"), filter).Ok());
  ExpectSame(filter, FilledFilter());
}

TEST(NegativeCount, CountsAsZero) {
  Filter expected;
  expected.Sets.Append(SetOf("s", {}));
  expected.Sets.Append(SetOf("t", {Of({}, -1)}));
  expected.Functions.Append(FunctionOf("f", {}, 1));
  ExpectSame(LoadGolden("negative-count"), expected);
}

TEST(TrailingBytes, AreIgnored) { ExpectSame(LoadGolden("trailing-bytes"), Filter()); }

TEST(TrailingBytes, AreNotStored) {
  Filter filter = LoadGolden("trailing-bytes");
  EXPECT_EQ(Save(filter), Golden("new-filter"));
}

TEST(ListCutInTheMiddle, KeepsTheElementsReadBeforeTheError) {
  Filter filter = FilledFilter();
  ASSERT_FALSE(Load(Golden("truncated-second-rule"), filter).Ok());
  ASSERT_EQ(filter.Rules.Count(), 1U);
  ExpectSame(filter.Rules[0], RuleOf("a", 100, Of({}, -1), 0, 5, 6, "", Of({}, -1), 1, 1));
}

TEST(ListCutInTheMiddle, LeavesTheListsBehindItAsTheyWere) {
  Filter filter = FilledFilter();
  ASSERT_FALSE(Load(Golden("truncated-second-rule"), filter).Ok());
  EXPECT_EQ(filter.Sets, FilledFilter().Sets);
  EXPECT_EQ(filter.Functions, FilledFilter().Functions);
}

TEST(EveryTruncation, OfEachFormatIsAnErrorWithinTheFile) {
  for (const char* const name :
       {"format-v1", "format-v2", "format-v3", "format-v4", "format-v5", "format-v6"}) {
    const std::string bytes = Golden(name);
    for (std::size_t kept = 0; kept < bytes.size(); ++kept) {
      Filter filter;
      // A copy of its own size, so that a read past the end is seen as one.
      const std::vector<char> cut(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(kept));
      const ArchiveResult result = Load(std::string_view(cut.data(), cut.size()), filter);
      EXPECT_TRUE(result.Code == ArchiveCode::EndOfFile || result.Code == ArchiveCode::CountPastEnd)
          << name << " cut to " << kept << ": " << result.Message();
      EXPECT_FALSE(result.Field.empty()) << name << " cut to " << kept;
      EXPECT_LE(result.Offset, kept) << name;
    }
  }
}

}  // namespace
}  // namespace zarvo
