#include "engine/text_buffer.h"

#include <gtest/gtest.h>

#include <random>
#include <utility>

namespace zarvo {
namespace {

TEST(TextBuffer, SplicesInTheMiddleAndAtBothEnds) {
  TextBuffer buffer("abcdef");
  buffer.Splice(2, "XYZ", 3);
  buffer.Splice(0, "<", 0);
  buffer.Splice(buffer.Size(), ">", buffer.Size());
  EXPECT_EQ(buffer.Size(), 10U);
  EXPECT_EQ(buffer.Take(), "<abXYZdef>");
  EXPECT_EQ(buffer.Size(), 0U);
}

TEST(TextBuffer, AnEndBeforeTheCutRepeatsWhatIsBetween) {
  TextBuffer buffer("abcdef");
  buffer.Splice(4, "-", 1);
  EXPECT_EQ(buffer.Take(), "abcd-bcdef");
}

TEST(TextBuffer, PieceCrossesTheGapAndStopsAtTheEnd) {
  TextBuffer buffer("abcdef");
  buffer.MoveGap(3);
  EXPECT_EQ(buffer.Piece(2, 2), "cd");
  buffer.MoveGap(3);
  EXPECT_EQ(buffer.Piece(0, 3), "abc");
  EXPECT_EQ(buffer.Piece(3, 3), "def");
  EXPECT_EQ(buffer.Piece(4, 99), "ef");
  EXPECT_EQ(buffer.Piece(6, 1), "");
}

TEST(TextBuffer, BorrowsATextUntilItChanges) {
  const std::string text = "some text that is borrowed";
  TextBuffer untouched = TextBuffer::Borrowing(text);
  EXPECT_EQ(untouched.AfterGap().data(), text.data());
  EXPECT_FALSE(untouched.IsChanged());
  EXPECT_EQ(untouched.Take(), text);
  TextBuffer written_over = TextBuffer::Borrowing(text);
  written_over.Splice(5, "TEXT", 9);
  EXPECT_TRUE(written_over.IsChanged());
  EXPECT_EQ(written_over.Take(), "some TEXT that is borrowed");
  TextBuffer shortened = TextBuffer::Borrowing(text);
  shortened.Splice(0, "", 5);
  EXPECT_TRUE(shortened.IsChanged());
  EXPECT_EQ(shortened.Take(), "text that is borrowed");
  EXPECT_EQ(text, "some text that is borrowed");
}

TEST(TextBuffer, WritesOverInPlaceWhatIsAsLong) {
  std::string text(100, 'a');
  const char* place = text.data();
  TextBuffer buffer = TextBuffer::Owning(std::move(text));
  buffer.Splice(50, "bb", 52);
  EXPECT_EQ(buffer.GapPosition(), 0U);
  const std::string taken = buffer.Take();
  EXPECT_EQ(taken.data(), place);
  EXPECT_EQ(taken, std::string(50, 'a') + "bb" + std::string(48, 'a'));
}

TEST(TextBuffer, MapsBytesAndCountsTheMarkedOnes) {
  std::string map(256, '\0');
  for (std::size_t byte = 0; byte < map.size(); ++byte) map[byte] = static_cast<char>(byte);
  std::string marked(256, '\0');
  map['a'] = 'X';
  marked['a'] = '\1';
  marked['b'] = '\1';
  TextBuffer buffer("aabca");
  buffer.MoveGap(3);
  EXPECT_EQ(buffer.MapBytes(1, map, marked), 3U);
  EXPECT_EQ(buffer.Take(), "aXbcX");
}

TEST(TextBuffer, GrowsInPlaceWhereItsStorageHasRoom) {
  std::string text(1000, 'a');
  text.reserve(1250);
  const char* place = text.data();
  TextBuffer buffer = TextBuffer::Owning(std::move(text));
  std::string expected;
  for (std::size_t i = 0; i < 200; ++i) {
    buffer.Splice(6 * i, "bb", 6 * i + 1);
    expected += "bbaaaa";
  }
  text = buffer.Take();
  EXPECT_EQ(text, expected);
  EXPECT_EQ(text.data(), place);
}

// Whole vectors are copied only where that many bytes are: a sanitizer sees what is read beyond.
TEST(TextBuffer, RewritingReadsNothingBehindTheText) {
  for (std::size_t size = 100; size < 200; ++size) {
    std::string text(size, 'a');
    text.shrink_to_fit();
    TextBuffer buffer = TextBuffer::Owning(std::move(text));
    TextBuffer::Rewriting rewriting(buffer);
    const char* at = rewriting.Begin();
    for (std::size_t i = 0; i + 3 <= size; i += 3) rewriting.Put(at + i + 1, {}, at + i + 3);
    rewriting.Finish();
    EXPECT_EQ(buffer.Take(), std::string(size / 3 + size % 3, 'a'));
  }
}

TEST(TextBuffer, ABorrowedTextIsOnlyReadInAPass) {
  const std::string text(200, 'a');
  TextBuffer buffer = TextBuffer::Borrowing(text);
  { TextBuffer::Rewriting(buffer).Finish(); }
  EXPECT_FALSE(buffer.IsChanged());
  EXPECT_EQ(buffer.AfterGap().data(), text.data());
  TextBuffer::Rewriting rewriting(buffer);
  for (std::size_t i = 0; i < 100; ++i) {
    rewriting.Put(rewriting.End() - (200 - 2 * i), "bcd", rewriting.End() - (200 - 2 * i - 1));
  }
  rewriting.Finish();
  std::string expected;
  for (std::size_t i = 0; i < 100; ++i) expected += "bcda";
  EXPECT_EQ(buffer.Take(), expected);
  EXPECT_EQ(text, std::string(200, 'a'));
}

TEST(TextBuffer, KnowsWhatItLacksAfterSearchesInVain) {
  UsePresencePatience({0, 1});
  TextBuffer buffer("one two three");
  EXPECT_TRUE(buffer.MayHold("xyz"));
  buffer.NoteFruitlessSearch();
  EXPECT_FALSE(buffer.MayHold("xyz"));
  EXPECT_FALSE(buffer.MayHold("oen"));
  EXPECT_TRUE(buffer.MayHold("two thr"));
  EXPECT_TRUE(buffer.MayHold("x"));
  EXPECT_TRUE(buffer.MayHold(""));
  buffer.Splice(4, "xyz", 7);
  EXPECT_TRUE(buffer.MayHold("e xyz t"));
  buffer.Splice(6, "", 8);
  EXPECT_TRUE(buffer.MayHold("xythr"));
  UsePresencePatience({});
}

TEST(TextBuffer, LooksCloserWhenPairsWereNotEnough) {
  UsePresencePatience({0, 1});
  TextBuffer buffer("one two three");
  buffer.NoteFruitlessSearch();
  EXPECT_TRUE(buffer.MayHold("onee"));
  buffer.NoteFruitlessSearch();
  EXPECT_FALSE(buffer.MayHold("onee"));
  EXPECT_TRUE(buffer.MayHold("one two three"));
  buffer.Splice(3, "e", 7);
  EXPECT_TRUE(buffer.MayHold("onee three"));
  UsePresencePatience({});
}

// The ways in which a buffer may come by its text.
TextBuffer BufferOf(const std::string& text, std::size_t way) {
  if (way == 0) return TextBuffer(text);
  if (way == 1) return TextBuffer::Borrowing(text);
  std::string own(text);
  if (way == 3) own.reserve(text.size() + 30);
  return TextBuffer::Owning(std::move(own));
}

TEST(TextBuffer, AgreesWithAStringOverRandomSplices) {
  for (unsigned seed = 0; seed < 6000; ++seed) {
    std::mt19937 random(seed);
    const auto up_to = [&](std::size_t most) {
      return std::uniform_int_distribution<std::size_t>(0, most)(random);
    };
    std::string text(up_to(seed % 2 == 0 ? 20 : 90), 'a');
    for (char& byte : text) byte = static_cast<char>('a' + up_to(25));
    const std::string original = text;
    TextBuffer buffer = BufferOf(original, seed % 4);
    for (int i = 0; i < 20 && text.size() < 500; ++i) {
      const std::size_t cut = up_to(text.size());
      const std::size_t end = up_to(text.size());
      const std::string inserted(up_to(4), static_cast<char>('A' + i));
      text = text.substr(0, cut) + inserted + text.substr(end);
      buffer.Splice(cut, inserted, end);
      if (up_to(3) == 0) buffer.MoveGap(up_to(text.size()));
      if (up_to(9) == 0) buffer.Rewind();
      ASSERT_EQ(buffer.Size(), text.size()) << seed;
      ASSERT_EQ(std::string(buffer.BeforeGap()) + std::string(buffer.AfterGap()), text) << seed;
    }
    ASSERT_EQ(buffer.Take(), text) << seed;
  }
}

}  // namespace
}  // namespace zarvo
