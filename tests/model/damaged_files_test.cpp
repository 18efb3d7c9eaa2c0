// Files that are cut, changed or made to hurt: each ends in a filter or in an error that says what
// and where, in little memory.
#include <gtest/gtest.h>

#include "model/filter_file.h"
#include "tests/support/allocation_meter.h"
#include "tests/support/builders.h"

namespace zarvo {
namespace {

class YesToNewer : public VersionQuestions {
 public:
  bool SaveInNewestFormat(std::int32_t) override { return false; }
  bool LoadNewerFormat(std::int32_t) override { return true; }
};

// A filter of some 2 KB with every kind of record.
std::string RichFilterBytes() {
  Filter filter;
  filter.Name = "Rich";
  filter.Description = std::string(700, 'd');
  for (int i = 0; i < 8; ++i) {
    Rule rule = testing::Replace(
        testing::Of({testing::Str("text"), testing::List("abc"), testing::NotList("xyz"),
                     testing::Code("q"), testing::Call("Up(1,2)")}),
        testing::Of({testing::Str("to"), testing::Call("Up(1)")}));
    rule.Name = "Rule " + std::to_string(i);
    filter.Rules.Append(rule);
  }
  filter.Sets.Append(testing::SetOf("Set", {testing::Of({testing::Str("one")}), testing::Of({})}));
  filter.Functions.Append(testing::FunctionOf("Up", {{"a", "A"}, {"b", "B"}}, 1));
  return FilterFileBytes(filter);
}

// Loads, and checks what holds of every load; true when it succeeded.
bool LoadAndCheck(std::string_view bytes) {
  Filter filter;
  Archive archive = Archive::Loading(bytes);
  YesToNewer answers;
  const testing::AllocationMeter meter;
  const ArchiveResult result = SerializeFilter(archive, filter, answers, true);
  // An element takes at most 64 times as much memory as its shortest record takes in the file, and
  // a list that grows holds its elements twice for a moment.
  EXPECT_LE(meter.PeakBytes(), 4096 + 3 * 64 * bytes.size());
  if (!result.Ok()) {
    EXPECT_FALSE(result.Field.empty());
    EXPECT_LE(result.Offset, bytes.size());
    EXPECT_NE(result.Message().find(result.Field), std::string::npos);
  }
  return result.Ok();
}

TEST(DamagedFiles, EveryTruncationIsAnError) {
  const std::string bytes = RichFilterBytes();
  ASSERT_GE(bytes.size(), 2000U);
  for (std::size_t kept = 0; kept < bytes.size(); ++kept) {
    EXPECT_FALSE(LoadAndCheck(std::string_view(bytes).substr(0, kept))) << kept;
  }
  EXPECT_TRUE(LoadAndCheck(bytes));
}

TEST(DamagedFiles, EverySingleBitChangeEndsInAFilterOrAnError) {
  std::string bytes = RichFilterBytes();
  std::size_t loaded = 0;
  for (std::size_t position = 0; position < bytes.size(); ++position) {
    for (int bit = 0; bit < 8; ++bit) {
      const auto mask = static_cast<char>(1 << bit);
      bytes[position] = static_cast<char>(bytes[position] ^ mask);
      if (LoadAndCheck(bytes)) ++loaded;
      bytes[position] = static_cast<char>(bytes[position] ^ mask);
    }
  }
  // Changes within texts and numbers load; those of lengths and counts mostly don't.
  EXPECT_GT(loaded, bytes.size());
  EXPECT_LT(loaded, bytes.size() * 8);
}

TEST(DamagedFiles, WhatLoadsAfterADamageCanBeStoredAndLoadedAgain) {
  std::string bytes = RichFilterBytes();
  for (std::size_t position = 0; position < bytes.size(); position += 7) {
    std::string damaged = bytes;
    damaged[position] = static_cast<char>(damaged[position] ^ 0x10);
    Filter filter;
    Archive archive = Archive::Loading(damaged);
    YesToNewer answers;
    if (!SerializeFilter(archive, filter, answers, true).Ok()) continue;
    if (filter.FormatVersion != 6) continue;
    const std::string stored = FilterFileBytes(filter);
    Filter again;
    Archive second = Archive::Loading(stored);
    ASSERT_TRUE(SerializeFilter(second, again, answers, true).Ok()) << position;
    EXPECT_EQ(again, filter) << position;
  }
}

// The head of a version 6 file up to its rule list's record version.
std::string Head() {
  Filter filter;
  const std::string bytes = FilterFileBytes(filter);
  return bytes.substr(0, bytes.size() - 20);
}

TEST(DamagedFiles, AFileOfAHundredBytesTakesLittleMemoryWhateverItClaims) {
  for (const std::string& count :
       {std::string("\xFF\xFF\xFF\x7F"), std::string("\x00\x00\x00\x10", 4),
        std::string("\x12\x00\x00\x00", 4)}) {
    std::string bytes = Head() + count;
    ASSERT_LT(bytes.size(), 100U);
    bytes.resize(100, '\0');
    Filter filter;
    Archive archive = Archive::Loading(bytes);
    YesToNewer answers;
    const testing::AllocationMeter meter;
    const ArchiveResult result = SerializeFilter(archive, filter, answers, true);
    EXPECT_EQ(result.Code, ArchiveCode::CountPastEnd);
    EXPECT_EQ(result.Field, "Rules");
    EXPECT_LT(meter.PeakBytes(), 20000U);
  }
}

TEST(DamagedFiles, ATextThatClaimsFourGigabytesTakesLittleMemory) {
  const std::string bytes = Head().substr(0, 29) + "\xFF\xFF\xFF\xFF\xFF\xFF\xFF more";
  Filter filter;
  Archive archive = Archive::Loading(bytes);
  YesToNewer answers;
  const testing::AllocationMeter meter;
  const ArchiveResult result = SerializeFilter(archive, filter, answers, true);
  EXPECT_EQ(result.Code, ArchiveCode::EndOfFile);
  EXPECT_EQ(result.Field, "Password");
  EXPECT_LT(meter.PeakBytes(), 20000U);
}

}  // namespace
}  // namespace zarvo
