#include "model/pattern.h"

#include <gtest/gtest.h>

#include "model/filter_file.h"
#include "model/records.h"
#include "tests/support/builders.h"

namespace zarvo {
namespace {

using testing::Call;
using testing::Code;
using testing::List;
using testing::NotList;
using testing::Of;
using testing::OfKind;
using testing::Str;

// What a Pattern's MostSignificant is after it was written.
int StoredMostSignificant(Pattern pattern) {
  std::string bytes;
  Archive archive = Archive::Storing(bytes);
  Serialize(archive, pattern);
  return pattern.MostSignificant;
}

TEST(ComputeMostSignificant, PrefersTheLongestString) {
  EXPECT_EQ(StoredMostSignificant(Of({Str("ab"), List("xyz"), Code("q")})), 0);
}

TEST(ComputeMostSignificant, KeepsTheEarlierOfEqualWeights) {
  EXPECT_EQ(StoredMostSignificant(Of({List("x"), Code("q")})), 0);
  EXPECT_EQ(StoredMostSignificant(Of({Str("ab"), Str("cd")})), 0);
}

TEST(ComputeMostSignificant, PatternOfFunctionsStaysUnchosenAfterWriting) {
  EXPECT_EQ(StoredMostSignificant(Of({Call("f(1)"), Call("g(1)")})), -1);
}

TEST(ComputeMostSignificant, ListWeighsTenThroughItsLengthTruncated) {
  EXPECT_EQ(Of({List("abc"), List("ab")}).ComputeMostSignificant(), 1);             // 3 < 5
  EXPECT_EQ(Of({List("abcd"), List("abc")}).ComputeMostSignificant(), 1);           // 2 < 3
  EXPECT_EQ(Of({List("abcdefghij"), List("abcde")}).ComputeMostSignificant(), 1);   // 1 < 2
  EXPECT_EQ(Of({List("abcdef"), List("abcdefghij")}).ComputeMostSignificant(), 0);  // 1 = 1
}

TEST(ComputeMostSignificant, EmptyCharacterCodeWeighsAsAnyOther) {
  EXPECT_EQ(Of({List("ab"), Code("")}).ComputeMostSignificant(), 1);
}

TEST(ComputeMostSignificant, ListOfElevenOrNoneIsNeverChosen) {
  EXPECT_EQ(Of({List("abcdefghijk")}).ComputeMostSignificant(), -1);
  EXPECT_EQ(Of({List("")}).ComputeMostSignificant(), -1);
}

TEST(ComputeMostSignificant, OtherKindsAndEmptyStringsAreNeverChosen) {
  EXPECT_EQ(Of({NotList("a"), Call("f(1)"), OfKind(1, "abc"), OfKind(77, "abc"), Str("")})
                .ComputeMostSignificant(),
            -1);
}

TEST(ComputeMostSignificant, StoringKeepsAMarkedOne) {
  EXPECT_EQ(StoredMostSignificant(Of({Str("long text"), Code("q")}, 1)), 1);
  EXPECT_EQ(StoredMostSignificant(Of({Str("long text")}, 9)), 9);
}

TEST(PatternLength, StringCountsItsBytesAndAnyOtherKindOne) {
  EXPECT_EQ(
      Of({Str("abc"), List(""), NotList("xyz"), Code(""), Call("f(1)"), OfKind(1, "ab")}).Length(),
      8U);
  EXPECT_EQ(Of({}).Length(), 0U);
}

TEST(DisplayForm, OfEachKind) {
  EXPECT_EQ(DisplayForm(Str("a b")), "a b");
  EXPECT_EQ(DisplayForm(List("abc")), "[a, b, c]");
  EXPECT_EQ(DisplayForm(List("")), "[]");
  EXPECT_EQ(DisplayForm(NotList("abc")), "[!a, b, c]");
  EXPECT_EQ(DisplayForm(NotList("")), "[!]");
  EXPECT_EQ(DisplayForm(Code("q")), "q");
  EXPECT_EQ(DisplayForm(Call("Up(1)")), "{Up(1)}");
}

TEST(DisplayForm, EmptyCharacterCodeIsZeroInBraces) {
  EXPECT_EQ(DisplayForm(Code("")), "{0}");
  EXPECT_EQ(DisplayForm(Code(std::string("\0x", 2))), "{0}");
}

TEST(DisplayForm, UnknownKindsShowNothing) {
  EXPECT_EQ(DisplayForm(OfKind(1, "abc")), "");
  EXPECT_EQ(DisplayForm(OfKind(99, "abc")), "");
}

TEST(DisplayForm, RenderTextWinsWhateverTheKind) {
  for (const int kind : {0, 1, 2, 3, 4, 5, 99}) {
    Subpattern subpattern = OfKind(kind, "");
    subpattern.RenderText = "<end>";
    EXPECT_EQ(DisplayForm(subpattern), "<end>") << kind;
  }
}

TEST(DisplayForm, OfAPatternJoinsItsPartsWithNothingBetween) {
  EXPECT_EQ(DisplayForm(Of({Str("ab"), List("xy"), Code("")})), "ab[x, y]{0}");
  EXPECT_EQ(DisplayForm(Of({})), "");
}

TEST(CalledFunctionName, IsTheTextBeforeTheFirstBracket) {
  EXPECT_EQ(CalledFunctionName("Up(1)"), "Up");
  EXPECT_EQ(CalledFunctionName(" Up ((1)"), " Up ");
  EXPECT_EQ(CalledFunctionName("Up"), "Up");
  EXPECT_EQ(CalledFunctionName("(1)"), "");
}

}  // namespace
}  // namespace zarvo
