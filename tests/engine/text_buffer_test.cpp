#include "engine/text_buffer.h"

#include <gtest/gtest.h>

#include <random>

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

TEST(TextBuffer, AgreesWithAStringOverRandomSplices) {
  for (unsigned seed = 0; seed < 2000; ++seed) {
    std::mt19937 random(seed);
    const auto up_to = [&](std::size_t most) {
      return std::uniform_int_distribution<std::size_t>(0, most)(random);
    };
    std::string text(up_to(20), 'a');
    for (char& byte : text) byte = static_cast<char>('a' + up_to(25));
    TextBuffer buffer(text);
    for (int i = 0; i < 20 && text.size() < 500; ++i) {
      const std::size_t cut = up_to(text.size());
      const std::size_t end = up_to(text.size());
      const std::string inserted(up_to(4), static_cast<char>('A' + i));
      text = text.substr(0, cut) + inserted + text.substr(end);
      buffer.Splice(cut, inserted, end);
      if (up_to(3) == 0) buffer.MoveGap(up_to(text.size()));
      ASSERT_EQ(buffer.Size(), text.size()) << seed;
      ASSERT_EQ(std::string(buffer.BeforeGap()) + std::string(buffer.AfterGap()), text) << seed;
    }
    ASSERT_EQ(buffer.Take(), text) << seed;
  }
}

}  // namespace
}  // namespace zarvo
