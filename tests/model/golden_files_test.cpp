// Files laid down by hand, byte by byte (tests/data/golden): what reading them gives, and what they
// become when they are stored. No file here was ever written by the program itself.
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

constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();

// Files that read as they stand, and whose bytes come back when they are stored in their format.
struct WholeFile {
  const char* Name;
  Filter Expected;
};

void PrintTo(const WholeFile& file, std::ostream* out) { *out << file.Name; }

class WholeGoldenFile : public ::testing::TestWithParam<WholeFile> {
 protected:
  // What saving asks when the answer is to keep the format.
  static std::vector<Question> KeepFormat() {
    const std::int32_t version = GetParam().Expected.FormatVersion;
    if (version == FilterHeader::kNewestFormatVersion) return {};
    return {OnSave(version, false)};
  }
};

TEST_P(WholeGoldenFile, LoadsExactlyTheFieldsOfItsBytes) {
  Filter filter;
  const ArchiveResult result = Load(Golden(GetParam().Name), filter);
  ASSERT_TRUE(result.Ok()) << result.Message();
  ExpectSame(filter, GetParam().Expected);
}

TEST_P(WholeGoldenFile, LoadedOverAFilledFilterLeavesNothingOfThat) {
  Filter filter = FilledFilter();
  const ArchiveResult result = Load(Golden(GetParam().Name), filter);
  ASSERT_TRUE(result.Ok()) << result.Message();
  ExpectSame(filter, GetParam().Expected);
}

TEST_P(WholeGoldenFile, LoadsWhereNewerFormatsAreRefused) {
  Filter filter;
  EXPECT_TRUE(Load(Golden(GetParam().Name), filter, {}, false).Ok());
}

TEST_P(WholeGoldenFile, SavedInItsFormatGivesTheSameBytes) {
  Filter filter = LoadGolden(GetParam().Name);
  filter.AutoIncrement = 0;
  std::string bytes = Golden(GetParam().Name);
  if (GetParam().Expected.AutoIncrement != 0) {
    constexpr std::size_t kAutoIncrementOffset = 25;
    ASSERT_EQ(bytes[kAutoIncrementOffset], 1);
    bytes[kAutoIncrementOffset] = 0;
  }
  EXPECT_EQ(Save(filter, KeepFormat()), bytes);
}

TEST_P(WholeGoldenFile, SavingChangesNoFieldOfTheFilter) {
  Filter filter = LoadGolden(GetParam().Name);
  filter.AutoIncrement = 0;
  Save(filter, KeepFormat());
  Filter expected = GetParam().Expected;
  expected.AutoIncrement = 0;
  ExpectSame(filter, expected);
}

TEST_P(WholeGoldenFile, BuiltFromItsFieldsHasTheSameBytes) {
  Filter filter = GetParam().Expected;
  EXPECT_EQ(FilterFileBytes(filter), Golden(GetParam().Name));
}

INSTANTIATE_TEST_SUITE_P(
    , WholeGoldenFile,
    ::testing::Values(WholeFile{"format-v1", ExpectedV1()}, WholeFile{"format-v2", ExpectedV2()},
                      WholeFile{"format-v3", ExpectedV3()}, WholeFile{"format-v4", ExpectedV4()},
                      WholeFile{"format-v5", ExpectedV5()}, WholeFile{"format-v6", ExpectedV6()},
                      WholeFile{"new-filter", Filter()},
                      WholeFile{"other-records", ExpectedOtherRecords()},
                      WholeFile{"other-lists", ExpectedOtherLists()},
                      WholeFile{"most-significant-stored", ExpectedMostSignificant(2, 0, 1)},
                      WholeFile{"all-bytes", ExpectedAllBytes()},
                      WholeFile{"zero-bytes", ExpectedZeroBytes()},
                      WholeFile{"long-text-254", WithDescription(std::string(254, 'A'))},
                      WholeFile{"long-text-255", WithDescription(std::string(255, 'A'))},
                      WholeFile{"long-text-65533", WithDescription(std::string(65533, 'A'))},
                      WholeFile{"long-text-65534", WithDescription(std::string(65534, 'A'))},
                      WholeFile{"long-text-65535", WithDescription(std::string(65535, 'A'))},
                      WholeFile{"long-text-70000", WithDescription(std::string(70000, 'A'))},
                      WholeFile{"worked-example", ExpectedWorkedExample()}),
    NameOf<WholeFile>);

TEST(AutoIncrement, RaisesNothingButTheVersionInTheBytesOfASave) {
  Filter filter = LoadGolden("format-v4");
  constexpr std::size_t kVersionOffset = 40;
  std::string expected = Golden("format-v4");
  expected.replace(kVersionOffset, 4, {'\x00', '\x01', '\x00', '\x00'});  // 255 has become 256
  EXPECT_EQ(Save(filter, {OnSave(4, false)}), expected);
}

TEST(AutoIncrement, StaysRaisedInTheFilterAfterASave) {
  Filter filter = LoadGolden("format-v4");
  Save(filter, {OnSave(4, false)});
  EXPECT_EQ(filter.Version, 256);
}

TEST(SavingInTheNewestFormat, GivesAVersion1FileTheFieldsThatItLacked) {
  Filter filter = LoadGolden("format-v1");
  EXPECT_EQ(Save(filter, {OnSave(1, true)}), Golden("format-v1-newest"));
}

TEST(SavingInTheNewestFormat, GivesAVersion5FileItsFunctions) {
  Filter filter = LoadGolden("format-v5");
  EXPECT_EQ(Save(filter, {OnSave(5, true)}), Golden("format-v5-newest"));
}

TEST(SavingInTheNewestFormat, ChangesNoFieldButTheFormat) {
  Filter filter = LoadGolden("format-v5");
  Save(filter, {OnSave(5, true)});
  Filter expected = ExpectedV5();
  expected.FormatVersion = 6;
  ExpectSame(filter, expected);
}

TEST(SavingInTheNewestFormat, IsNotAskedForAgain) {
  Filter filter = LoadGolden("format-v1");
  Save(filter, {OnSave(1, true)});
  EXPECT_EQ(Save(filter), Golden("format-v1-newest"));
}

TEST(SavingInItsFormat, DropsTheFunctionsOfAVersion5Filter) {
  Filter filter = LoadGolden("format-v5");
  filter.Functions.Append(FunctionOf("f", {{"a", "b"}}));
  EXPECT_EQ(Save(filter, {OnSave(5, false)}), Golden("format-v5"));
}

TEST(SavingInItsFormat, IsAskedForAtEverySave) {
  Filter filter = LoadGolden("format-v2");
  Save(filter, {OnSave(2, false)});
  EXPECT_EQ(Save(filter, {OnSave(2, false)}), Golden("format-v2"));
}

struct StoredPassword {
  const char* Name;
  const char* Password;
  const char* Another;
};

void PrintTo(const StoredPassword& stored, std::ostream* out) { *out << stored.Name; }

class GoldenPassword : public ::testing::TestWithParam<StoredPassword> {};

TEST_P(GoldenPassword, IsAccepted) {
  EXPECT_TRUE(LoadGolden(GetParam().Name).CheckPassword(GetParam().Password));
}

TEST_P(GoldenPassword, AnotherIsRefused) {
  EXPECT_FALSE(LoadGolden(GetParam().Name).CheckPassword(GetParam().Another));
}

TEST_P(GoldenPassword, AnEmptyOneIsRefused) {
  EXPECT_FALSE(LoadGolden(GetParam().Name).CheckPassword(""));
}

INSTANTIATE_TEST_SUITE_P(, GoldenPassword,
                         ::testing::Values(StoredPassword{"format-v1", "cat", "cats"},
                                           StoredPassword{"format-v2", "dog", "cat"},
                                           StoredPassword{"format-v3", "axb", "b"},
                                           StoredPassword{"format-v4", "cat", "Cat"},
                                           StoredPassword{"format-v5", "\x01go", "go"}),
                         NameOf<StoredPassword>);

TEST(GoldenPasswordOfFormat6, IsMetByNoPassword) {
  const Filter filter = LoadGolden("format-v6");
  EXPECT_FALSE(filter.CheckPassword("ca"));
  EXPECT_FALSE(filter.CheckPassword("\x1B\x19"));
  EXPECT_FALSE(filter.CheckPassword(""));
}

TEST(MostSignificantInAFile, LoadsAsItStands) {
  ExpectSame(LoadGolden("most-significant"), ExpectedMostSignificant(-1, -1, -1));
}

TEST(MostSignificantInAFile, IsChosenWhenStored) {
  Filter filter = LoadGolden("most-significant");
  EXPECT_EQ(Save(filter), Golden("most-significant-stored"));
}

TEST(MostSignificantInAFile, KeepsTheChoiceInTheFilterAfterASave) {
  Filter filter = LoadGolden("most-significant");
  Save(filter);
  ExpectSame(filter, ExpectedMostSignificant(2, 0, 1));
}

TEST(LongPrefixes, OfShortTextsAreRead) {
  Filter expected;
  expected.Name = "abc";
  expected.Author = "de";
  ExpectSame(LoadGolden("long-prefixes"), expected);
}

TEST(LongPrefixes, OfShortTextsAreStoredAsTheShortestOnes) {
  Filter filter = LoadGolden("long-prefixes");
  EXPECT_EQ(Save(filter), Golden("long-prefixes-stored"));
}

TEST(FormatZero, ChangesNothingButTheFormatVersion) {
  Filter filter = FilledFilter();
  ASSERT_TRUE(Load(Golden("format-v0"), filter).Ok());
  Filter expected = FilledFilter();
  expected.FormatVersion = 0;
  ExpectSame(filter, expected);
}

TEST(FormatZero, KeptWhenSavedIsTheMagicAndTheNumberAlone) {
  Filter filter = LoadGolden("format-v0");
  EXPECT_EQ(Save(filter, {OnSave(0, false)}), Golden("format-v0").substr(0, 17));
}

TEST(FormatZero, SavedInTheNewestFormatIsWhole) {
  Filter filter = LoadGolden("format-v0");
  EXPECT_EQ(Save(filter, {OnSave(0, true)}), Golden("new-filter"));
}

TEST(NegativeFormat, ChangesNothingButTheFormatVersion) {
  Filter filter = FilledFilter();
  ASSERT_TRUE(Load(Golden("format-negative"), filter, {}, false).Ok());
  Filter expected = FilledFilter();
  expected.FormatVersion = -3;
  ExpectSame(filter, expected);
}

TEST(NegativeFormat, KeptWhenSavedIsTheMagicAndTheNumberAlone) {
  Filter filter = LoadGolden("format-negative");
  EXPECT_EQ(Save(filter, {OnSave(-3, false)}), Golden("format-negative"));
}

TEST(NewerFormat, IsRefusedWithoutAQuestionWhereItIsNotAllowed) {
  Filter filter;
  ExpectFailure(Load(Golden("format-v7"), filter, {}, false), ArchiveCode::NewerFormatRefused,
                "FormatVersion", 13);
}

TEST(NewerFormat, IsRefusedByTheAnswerNo) {
  Filter filter;
  ExpectFailure(Load(Golden("format-v7"), filter, {OnLoad(7, false)}),
                ArchiveCode::NewerFormatRefused, "FormatVersion", 13);
}

TEST(NewerFormat, RefusedChangesNothingButTheFormatVersion) {
  Filter filter = FilledFilter();
  ASSERT_FALSE(Load(Golden("format-v7"), filter, {OnLoad(7, false)}).Ok());
  Filter expected = FilledFilter();
  expected.FormatVersion = 7;
  ExpectSame(filter, expected);
}

TEST(NewerFormat, LoadsAsFormat6AfterTheAnswerYesAndKeepsItsNumber) {
  Filter filter = FilledFilter();
  const ArchiveResult result = Load(Golden("format-v7"), filter, {OnLoad(7, true)});
  ASSERT_TRUE(result.Ok()) << result.Message();
  ExpectSame(filter, ExpectedV7());
}

TEST(NewerFormat, KeptWhenSavedIsTheMagicAndTheNumberAlone) {
  Filter filter = ExpectedV7();
  EXPECT_EQ(Save(filter, {OnSave(7, false)}), Golden("format-v7-kept"));
}

TEST(NewerFormat, SavedInTheNewestFormatIsWhole) {
  Filter filter = ExpectedV7();
  std::string expected = Golden("format-v7");
  constexpr std::size_t kFormatVersionOffset = 13;
  expected[kFormatVersionOffset] = 6;
  EXPECT_EQ(Save(filter, {OnSave(7, true)}), expected);
}

TEST(NewerFormat, ThatIsTheMagicAndTheNumberAloneEndsTooEarly) {
  Filter filter;
  ExpectFailure(Load(Golden("format-v7-kept"), filter, {OnLoad(7, true)}), ArchiveCode::EndOfFile,
                "Locked", 17);
}

TEST(QuestionOnSaving, HasTheAgreedWording) {
  const std::string before = "The filter you're about to save uses file format version ";
  const std::string after =
      ", while the newest file format version is 6. Would you like to save this filter in the "
      "newest format? Otherwise some filter properties won't be stored. On the other hand, "
      "applications using older versions of ZarvoFilter library may not be able to read this "
      "file.";
  EXPECT_EQ(SaveInNewestFormatText(1), before + "1" + after);
  EXPECT_EQ(SaveInNewestFormatText(5), before + "5" + after);
  EXPECT_EQ(SaveInNewestFormatText(0), before + "0" + after);
  EXPECT_EQ(SaveInNewestFormatText(-3), before + "-3" + after);
  EXPECT_EQ(SaveInNewestFormatText(kMost), before + "2147483647" + after);
}

TEST(QuestionOnLoading, HasTheAgreedWording) {
  const std::string before = "The filter you're about to load uses file format version ";
  const std::string after =
      ", while the newest file format version I know about is 6. I may attempt to read this file, "
      "but success is not guaranteed. Attempting to read won't damage the filter, but may cause "
      "your current application to crash. Would you like to try it?";
  EXPECT_EQ(LoadNewerFormatText(7), before + "7" + after);
  EXPECT_EQ(LoadNewerFormatText(10), before + "10" + after);
  EXPECT_EQ(LoadNewerFormatText(kMost), before + "2147483647" + after);
}

}  // namespace
}  // namespace zarvo
