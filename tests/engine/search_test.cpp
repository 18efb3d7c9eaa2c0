#include "engine/search.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <random>
#include <vector>

#include "tests/support/judge_settings.h"

namespace zarvo {
namespace {

// Each test has all levels.
class Search : public ::testing::TestWithParam<SearchLevel> {
 protected:
  Search() : level_(GetParam()) {}

  // All confirmed hits, asked for from each block's end.
  static std::vector<std::size_t> Hits(const ByteSearch& search, std::string_view text,
                                       std::size_t start) {
    std::vector<std::size_t> hits;
    const char* from = text.data() + start;
    const char* end = text.data() + text.size();
    while (true) {
      const auto [block, mask] = search.Next(from, end);
      if (mask == 0) return hits;
      for (std::size_t i = 0; i < ByteSearch::kBlock; ++i) {
        if ((mask >> i & 1) == 0 || !search.Confirm(block + i)) continue;
        hits.push_back(static_cast<std::size_t>(block - text.data()) + i);
      }
      if (static_cast<std::size_t>(end - block) <= ByteSearch::kBlock) return hits;
      from = block + ByteSearch::kBlock;
    }
  }

 private:
  testing::WithSearchLevel level_;
};

TEST_P(Search, FindsLiteralsOfEveryLengthAtEveryPlace) {
  std::mt19937 random(1);
  for (int round = 0; round < 3000; ++round) {
    // On the heap and of exactly this size, so that a sanitizer sees what is read beyond it.
    const std::size_t size = random() % 300;
    const auto bytes = std::make_unique<char[]>(size);
    for (std::size_t i = 0; i < size; ++i) bytes[i] = static_cast<char>('a' + random() % 3);
    const std::string_view text(bytes.get(), size);
    std::string literal(1 + random() % 7, 'a');
    for (char& byte : literal) byte = static_cast<char>('a' + random() % 3);
    const std::size_t start = size == 0 ? 0 : random() % (size + 1);
    std::vector<std::size_t> expected;
    for (std::size_t i = start; i < size; ++i) {
      if (text.substr(i).starts_with(literal)) expected.push_back(i);
    }
    const ByteSearch search = ByteSearch::ForLiteral(literal, ByteFrequencies(text));
    ASSERT_EQ(Hits(search, text, start), expected) << literal << " in " << text;
  }
}

TEST_P(Search, FindsTheBytesOfEveryList) {
  std::mt19937 random(2);
  for (int round = 0; round < 3000; ++round) {
    std::string table(256, '\0');
    for (std::size_t listed = random() % 40; listed > 0; --listed) {
      const std::size_t first = random() % 256;
      const std::size_t last = std::min<std::size_t>(255, first + (round % 2 == 0 ? 0 : 9));
      for (std::size_t byte = first; byte <= last; ++byte) table[byte] = '\1';
    }
    const std::size_t size = random() % 300;
    const auto bytes = std::make_unique<char[]>(size);
    for (std::size_t i = 0; i < size; ++i) bytes[i] = static_cast<char>(random() % 256);
    const std::string_view text(bytes.get(), size);
    std::vector<std::size_t> expected;
    for (std::size_t i = 0; i < size; ++i) {
      if (table[static_cast<unsigned char>(text[i])] != 0) expected.push_back(i);
    }
    ASSERT_EQ(Hits(ByteSearch::ForTable(table), text, 0), expected) << round;
  }
}

TEST_P(Search, FindsEveryByteAndNothing) {
  const std::string text(130, 'x');
  EXPECT_EQ(Hits(ByteSearch::ForEveryByte(), text, 0).size(), 130U);
  EXPECT_EQ(Hits(ByteSearch::ForEveryByte(), text, 129), (std::vector<std::size_t>{129}));
  EXPECT_TRUE(Hits(ByteSearch::ForEveryByte(), text, 130).empty());
  EXPECT_TRUE(Hits(ByteSearch(), text, 0).empty());
}

INSTANTIATE_TEST_SUITE_P(Levels, Search,
                         ::testing::Values(SearchLevel::Plain, SearchLevel::Sse2,
                                           SearchLevel::Avx2));

TEST(ByteFrequencies, TellsWhatIsFrequent) {
  std::string table(256, '\0');
  table['e'] = '\1';
  EXPECT_TRUE(ByteFrequencies("eexx").IsFrequent(table, 3));
  EXPECT_FALSE(ByteFrequencies("exxxx").IsFrequent(table, 3));
  EXPECT_GT(ByteFrequencies().Of('e'), ByteFrequencies().Of('q'));
}

}  // namespace
}  // namespace zarvo
