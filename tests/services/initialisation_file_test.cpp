#include "app/services/initialisation_file.h"

#include <gtest/gtest.h>

#include <chrono>
#include <limits>

#include "tests/support/allocation_meter.h"

namespace zarvo {
namespace {

using namespace std::string_literals;

using Section = InitialisationSection;
using Numbers = std::vector<std::int32_t>;

constexpr std::size_t kRoom = 1 << 30;

std::string Value(std::string_view text, std::string_view key = "k",
                  std::string_view section = "S") {
  return Section(text, section).Text(key, "(none)", kRoom);
}

TEST(InitialisationSection, WithoutFileSectionOrKeyTheFallbackIsRead) {
  EXPECT_EQ(Value(""), "(none)");
  EXPECT_EQ(Value("[T]\nk=1\n"), "(none)");
  EXPECT_EQ(Value("[S]\nl=1\n"), "(none)");
  EXPECT_EQ(Value("[S]"), "(none)");
  EXPECT_EQ(Section("[S]\n", "S").Integer("k", 7), 7);
}

TEST(InitialisationSection, KeysBeforeTheFirstSectionBelongToNone) {
  EXPECT_EQ(Value("k=1\n[S]\n"), "(none)");
  EXPECT_EQ(Value("k=1\n", "k", ""), "(none)");
}

TEST(InitialisationSection, KeysOfAnotherSectionAreNotFound) {
  EXPECT_EQ(Value("[S]\na=1\n[T]\nk=2\n"), "(none)");
  EXPECT_EQ(Value("[T]\nk=1\n[S]\nk=2\n"), "2");
}

TEST(InitialisationSection, CaseOfNamesMakesNoDifference) {
  EXPECT_EQ(Value("[STRINGS]\nNAME1=Ab\n", "Name1", "Strings"), "Ab");
  EXPECT_EQ(Value("[strings]\nname1=Ab\n", "NAME1", "Strings"), "Ab");
}

TEST(InitialisationSection, OfEqualKeysTheFirstCounts) {
  EXPECT_EQ(Value("[S]\na=0\nk=1\nb=0\nK=2\nk=3\n"), "1");
}

TEST(InitialisationSection, OfEqualSectionsTheFirstCounts) {
  EXPECT_EQ(Value("[S]\nk=1\n[T]\n[s]\nk=2\n"), "1");
  EXPECT_EQ(Value("[S]\n[T]\n[S]\nk=2\n"), "(none)");
}

TEST(InitialisationSection, BlanksAndTabsAroundNamesAndValuesAreDropped) {
  EXPECT_EQ(Value("\t [ S\t] \n \tk \t= \tan inner blank\t \n"), "an inner blank");
}

TEST(InitialisationSection, OtherWhiteSpaceBelongsToTheValue) {
  EXPECT_EQ(Value("[S]\nk=\xA0x\v\f\n"), "\xA0x\v\f");
}

TEST(InitialisationSection, OnePairOfQuotationMarksIsDropped) {
  EXPECT_EQ(Value("[S]\nk=\" x \"\n"), " x ");
  EXPECT_EQ(Value("[S]\nk=' x '\n"), " x ");
  EXPECT_EQ(Value("[S]\nk=\"\"x\"\"\n"), "\"x\"");
  EXPECT_EQ(Value("[S]\nk=  \"x\"  \n"), "x");
  EXPECT_EQ(Value("[S]\nk=\"\"\n"), "");
}

TEST(InitialisationSection, QuotationMarksWithoutAnEqualPartnerStay) {
  for (const char* const value : {"\"", "'", "\"x", "x\"", "\"x'", "'x\"", "a\"b\"c"}) {
    EXPECT_EQ(Value("[S]\nk="s + value + "\n"), value);
  }
}

TEST(InitialisationSection, EmptyValueIsThere) {
  EXPECT_EQ(Value("[S]\nk=\n"), "");
  EXPECT_EQ(Value("[S]\nk"), "(none)");
  EXPECT_EQ(Section("[S]\nk=\n", "S").Integer("k", 7), 0);
}

TEST(InitialisationSection, ValueKeepsItsEqualsSignsBracketsAndSemicolons) {
  EXPECT_EQ(Value("[S]\nk=a=b ; c [d]\n"), "a=b ; c [d]");
  EXPECT_EQ(Value("[S]\nk==\n"), "=");
}

TEST(InitialisationSection, CommentsAndOddLinesAreSkipped) {
  EXPECT_EQ(Value("; first\n[S]\n;k=1\n \t;k=2\nnonsense\n\n=3\n[k=4\nk=5\n"), "5");
}

TEST(InitialisationSection, BracketWithoutItsPartnerBeginsNoSection) {
  EXPECT_EQ(Value("[S\nk=1\n"), "(none)");
  EXPECT_EQ(Value("[S]\n[T\nk=1\n"), "1");
}

TEST(InitialisationSection, WhatFollowsAHeadingInItsLineIsSkipped) {
  EXPECT_EQ(Value("[S] k=0\nk=1\n"), "1");
  EXPECT_EQ(Value("[S]x]\nk=1\n"), "1");
}

TEST(InitialisationSection, AnyLineEndEndsALineAndTheLastNeedsNone) {
  EXPECT_EQ(Value("[S]\r\nj=1\r\nk=2\r\n"), "2");
  EXPECT_EQ(Value("[S]\rj=1\rk=2\r"), "2");
  EXPECT_EQ(Value("[S]\nj=1\r\nk=2"), "2");
  EXPECT_EQ(Value("[S]\n\r\n\rk=2"), "2");
}

TEST(InitialisationSection, ValueEndsAtAZeroByte) {
  EXPECT_EQ(Value("[S]\nk=a\0b\n"s), "a");
  EXPECT_EQ(Value("[S]\nk=\"a\0b\"\n"s), "a");
}

TEST(InitialisationSection, BufferHoldsAZeroByteToo) {
  const Section section("[S]\nk=\"abcde\"\n", "S");
  EXPECT_EQ(section.Text("k", "", 7), "abcde");
  EXPECT_EQ(section.Text("k", "", 6), "abcde");
  EXPECT_EQ(section.Text("k", "", 5), "abcd");
  EXPECT_EQ(section.Text("k", "", 1), "");
  EXPECT_EQ(section.Text("k", "", 0), "");
  EXPECT_EQ(section.Text("l", "fallback", 5), "fall");
}

TEST(InitialisationSection, IntegerIsWhatTheValueBeginsWith) {
  const auto integer = [](const std::string& value) {
    return Section("[S]\nk=" + value + "\n", "S").Integer("k", 7);
  };
  EXPECT_EQ(integer("12"), 12);
  EXPECT_EQ(integer("-12"), -12);
  EXPECT_EQ(integer("  12 pieces"), 12);
  EXPECT_EQ(integer("\"12\""), 12);
  EXPECT_EQ(integer("007"), 7);
  EXPECT_EQ(integer("twelve"), 0);
  EXPECT_EQ(integer("99999999999999999999"), std::numeric_limits<std::int32_t>::max());
  EXPECT_EQ(integer("-99999999999999999999"), std::numeric_limits<std::int32_t>::min());
}

TEST(InitialisationSectionNumbers, AreThoseOfTheWordInOrder) {
  const Section section("[S]\nName10=\nNAME2=\nname1=\nName2=\nShow3=\nName=\nNam4=\nNames5=\n",
                        "S");
  EXPECT_EQ(section.Numbers("Name", 100), (Numbers{1, 2, 10}));
  EXPECT_EQ(section.Numbers("Name", 9), (Numbers{1, 2}));
  EXPECT_EQ(section.Numbers("Name", 0), Numbers{});
  EXPECT_EQ(section.Numbers("Name", -5), Numbers{});
  EXPECT_EQ(section.Numbers("Render", 100), Numbers{});
}

TEST(InitialisationSectionNumbers, HaveNoLeadingZeroNorSignNorTail) {
  const Section section("[S]\nName01=\nName0=\nName-1=\nName+2=\nName3x=\nName 4=\nName5 =\n", "S");
  EXPECT_EQ(section.Numbers("Name", 100), Numbers{5});
}

TEST(InitialisationSectionNumbers, EndAtTheLargestInteger) {
  const Section section(
      "[S]\nName2147483647=\nName2147483648=\nName4294967297=\nName99999999999999999999=\n", "S");
  constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();
  EXPECT_EQ(section.Numbers("Name", kMost), Numbers{kMost});
}

TEST(WithInitialisationValue, AnEmptyFileGetsSectionAndKey) {
  EXPECT_EQ(WithInitialisationValue("", "S", "k", "v"), "[S]\nk=v\n");
}

TEST(WithInitialisationValue, ReplacesTheFirstValueAndNothingElse) {
  EXPECT_EQ(WithInitialisationValue(
                "; c\r\n[T]\nk=0\r\n\n[s] x\r\nodd\r\n K =\told\t\nk=1\n[S]\nk=2", "S", "k", "new"),
            "; c\r\n[T]\nk=0\r\n\n[s] x\r\nodd\r\n K =\tnew\t\nk=1\n[S]\nk=2");
  EXPECT_EQ(WithInitialisationValue("[S]\nk='old'\n", "S", "k", "new"), "[S]\nk=new\n");
  EXPECT_EQ(WithInitialisationValue("[S]\nk=", "S", "k", "new"), "[S]\nk=new");
  EXPECT_EQ(WithInitialisationValue("[S]\nk=old", "S", "k", ""), "[S]\nk=");
}

TEST(WithInitialisationValue, NewKeyStandsBehindTheLastOfItsSection) {
  EXPECT_EQ(WithInitialisationValue("[S]\na=1\n; of a\n\n; of T\n[T]\n", "S", "k", "v"),
            "[S]\na=1\nk=v\n; of a\n\n; of T\n[T]\n");
  EXPECT_EQ(WithInitialisationValue("[S]\n\n[T]\nk=0\n", "S", "k", "v"), "[S]\nk=v\n\n[T]\nk=0\n");
}

TEST(WithInitialisationValue, KeyThatIsCommentedOutIsNone) {
  EXPECT_EQ(WithInitialisationValue("[a]\nx=1\n;y=2\n", "a", "y", "3"), "[a]\nx=1\ny=3\n;y=2\n");
}

TEST(WithInitialisationValue, NewSectionStandsAtTheEnd) {
  EXPECT_EQ(WithInitialisationValue("[T]\nk=0\n; end\n", "S", "k", "v"),
            "[T]\nk=0\n; end\n[S]\nk=v\n");
}

TEST(WithInitialisationValue, LastLineWithoutALineEndStaysALineOfItsOwn) {
  EXPECT_EQ(WithInitialisationValue("[S]\na=1", "S", "k", "v"), "[S]\na=1\nk=v\n");
  EXPECT_EQ(WithInitialisationValue("[S]", "S", "k", "v"), "[S]\nk=v\n");
  EXPECT_EQ(WithInitialisationValue("odd", "S", "k", "v"), "odd\n[S]\nk=v\n");
  EXPECT_EQ(WithInitialisationValue("[S]\r\na=1", "T", "k", "v"), "[S]\r\na=1\r\n[T]\r\nk=v\r\n");
  EXPECT_EQ(WithInitialisationValue("[S]\na=1\nodd", "S", "k", "v"), "[S]\na=1\nk=v\nodd");
}

TEST(WithInitialisationValue, NewLinesEndAsTheFirstDoes) {
  EXPECT_EQ(WithInitialisationValue("[S]\r\na=1\n", "S", "k", "v"), "[S]\r\na=1\nk=v\r\n");
  EXPECT_EQ(WithInitialisationValue("[S]\ra=1\r", "S", "k", "v"), "[S]\ra=1\rk=v\r");
  EXPECT_EQ(WithInitialisationValue("[S]\na=1\r\n", "S", "k", "v"), "[S]\na=1\r\nk=v\n");
}

TEST(WithInitialisationValue, ProtectsBlanksAndQuotationMarksAtTheEndsByQuotationMarks) {
  EXPECT_EQ(WithInitialisationValue("", "S", "k", " v"), "[S]\nk=\" v\"\n");
  EXPECT_EQ(WithInitialisationValue("", "S", "k", "v\t"), "[S]\nk=\"v\t\"\n");
  EXPECT_EQ(WithInitialisationValue("", "S", "k", "'v"), "[S]\nk=\"'v\"\n");
  EXPECT_EQ(WithInitialisationValue("", "S", "k", "a \" b"), "[S]\nk=a \" b\n");
}

TEST(WithInitialisationValue, EveryShortValueReadsBackWhole) {
  const std::string letters = " \t\"';=[]a\xFF";
  std::vector<std::string> values = {""};
  for (std::size_t begin = 0, length = 0; length < 4; ++length) {
    const std::size_t end = values.size();
    for (; begin < end; ++begin) {
      for (const char letter : letters) values.push_back(values[begin] + letter);
    }
  }
  ASSERT_EQ(values.size(), 11111U);
  for (const std::string& value : values) {
    ASSERT_TRUE(FitsInitialisationLine(value));
    EXPECT_EQ(Value(WithInitialisationValue("", "S", "k", value)), value);
    EXPECT_EQ(Value(WithInitialisationValue("[S]\nk= 'x' \n[T]\n", "S", "k", value)), value);
  }
}

TEST(FitsInitialisationLine, LineBreaksAndZeroBytesDoNot) {
  for (int byte = 0; byte < 256; ++byte) {
    const bool fits = byte != '\r' && byte != '\n' && byte != 0;
    EXPECT_EQ(FitsInitialisationLine("a"s + static_cast<char>(byte) + "b"), fits) << byte;
  }
  EXPECT_TRUE(FitsInitialisationLine(""));
}

// Hostile files take time and memory in proportion to their length. The limits are far above what
// is needed, and far below what a second power of the length would take.
constexpr std::chrono::seconds kPatience(100);

class HostileFile : public ::testing::Test {
 protected:
  void TearDown() override { EXPECT_LT(std::chrono::steady_clock::now() - start_, kPatience); }

  std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

TEST_F(HostileFile, AMillionKeysAndACountOfTwoThousandMillion) {
  constexpr std::int32_t kKeys = 1'000'000;
  std::string text = "[S]\n";
  for (std::int32_t n = kKeys; n > 0; --n) text += "Name" + std::to_string(n) + "=x\n";
  ASSERT_GT(text.size(), 10'000'000U);
  const testing::AllocationMeter meter;
  const Section section(text, "S");
  const Numbers numbers = section.Numbers("Name", 2'000'000'000);
  EXPECT_LT(meter.PeakBytes(), 20 * text.size());
  ASSERT_EQ(numbers.size(), std::size_t{kKeys});
  EXPECT_EQ(numbers.back(), kKeys);
  for (std::int32_t n = 1; n <= kKeys; ++n) {
    ASSERT_EQ(section.Text("Name" + std::to_string(n), "", 64), "x");
  }
}

TEST_F(HostileFile, AMillionEqualKeys) {
  std::string text = "[S]\n";
  for (int i = 0; i < 1'000'000; ++i) text += "k=\n";
  const Section section(text, "S");
  EXPECT_EQ(section.Text("k", "(none)", 64), "");
  EXPECT_EQ(WithInitialisationValue(text, "S", "l", "v"), text + "l=v\n");
}

TEST_F(HostileFile, LongKeysThatDifferInTheirLastByte) {
  std::string text = "[S]\n";
  for (int i = 0; i < 200; ++i)
    text += std::string(50'000, 'k') + static_cast<char>('0' + i) + "=\n";
  EXPECT_EQ(Value(text, std::string(50'000, 'K') + "9"), "");
}

TEST_F(HostileFile, LinesOfTenMillionBytes) {
  const std::string line(10'000'000, ' ');
  const std::string letters(10'000'000, 'x');
  EXPECT_EQ(Value("[S]\n" + line + letters + "=" + line + "\nk=" + line + "v" + line), "v");
  EXPECT_EQ(Value("[" + letters + "]\nk=1\n[S]\nk=2"), "2");
  EXPECT_EQ(Section("[S]\nk=" + letters, "S").Integer("k", 7), 0);
}

TEST_F(HostileFile, MillionsOfEmptyLinesAndSections) {
  std::string text;
  for (int i = 0; i < 3'000'000; ++i) text += i % 2 == 0 ? "\r" : "[]\n";
  EXPECT_EQ(Value(text), "(none)");
  EXPECT_EQ(Value(WithInitialisationValue(text, "S", "k", "v")), "v");
}

}  // namespace
}  // namespace zarvo
