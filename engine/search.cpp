#include "engine/search.h"

#include <algorithm>
#include <utility>

#if defined(__x86_64__) && defined(__GNUC__)
#define ZARVO_X86_SEARCH 1
#include <immintrin.h>
#else
#define ZARVO_X86_SEARCH 0
#endif

namespace zarvo {
namespace {

constexpr std::size_t kBlock = ByteSearch::kBlock;

std::size_t Between(const char* from, const char* end) {
  return static_cast<std::size_t>(end - from);
}

SearchLevel& Level() {
  static SearchLevel level = BestSearchLevel();
  return level;
}

}  // namespace

ByteFrequencies::ByteFrequencies() {
  // In prose, in descending order; what isn't here is rare.
  constexpr std::string_view kUsual = " etaoinsrhdlucmfwypvbgk\n\r,.xjqzTISAECPMBRDHNWFLOGU";
  std::uint32_t count = 1000;
  for (const char byte : kUsual) {
    counts_[static_cast<unsigned char>(byte)] = count;
    count -= count / 10;
  }
}

ByteFrequencies::ByteFrequencies(std::string_view text) {
  constexpr std::size_t kSamples = 32;
  constexpr std::size_t kSampleSize = 1024;
  const std::size_t step = std::max(text.size() / kSamples, kSampleSize);
  for (std::size_t start = 0; start < text.size(); start += step) {
    for (const char byte : text.substr(start, kSampleSize)) {
      ++counts_[static_cast<unsigned char>(byte)];
    }
  }
}

bool ByteFrequencies::IsFrequent(std::string_view table, std::size_t one_in) const {
  std::size_t marked = 0;
  std::size_t all = 0;
  for (std::size_t byte = 0; byte < counts_.size(); ++byte) {
    all += counts_[byte];
    if (table[byte] != 0) marked += counts_[byte];
  }
  return marked * one_in > all;
}

// The searches themselves. Each reads nothing outside the text.
struct SearchKernels {
  using Result = ByteSearch::Result;

  // The hits among the first count positions of a block.
  template <typename IsHit>
  static std::uint64_t PlainHits(const char* block, std::size_t count, IsHit is_hit) {
    std::uint64_t hits = 0;
    for (std::size_t i = 0; i < count; ++i) {
      hits |= static_cast<std::uint64_t>(is_hit(block + i) ? 1 : 0) << i;
    }
    return hits;
  }

  template <typename IsHit>
  static Result PlainNext(const char* from, const char* end, IsHit is_hit) {
    while (from != end) {
      const std::size_t count = std::min(Between(from, end), kBlock);
      if (const std::uint64_t hits = PlainHits(from, count, is_hit); hits != 0) return {from, hits};
      from += count;
    }
    return {end, 0};
  }

  // Where the positions end at which the whole literal still fits.
  static const char* LiteralEnd(const ByteSearch& search, const char* from, const char* end) {
    const std::size_t beyond = search.literal_.size() - 1;
    return Between(from, end) > beyond ? end - beyond : from;
  }

  static Result PlainLiteral(const ByteSearch& search, const char* from, const char* end) {
    const char first = search.first_byte_;
    const char second = search.second_byte_;
    const std::size_t first_offset = search.first_offset_;
    const std::size_t second_offset = search.second_offset_;
    return PlainNext(from, LiteralEnd(search, from, end), [=](const char* at) {
      return at[first_offset] == first && at[second_offset] == second;
    });
  }

  static Result PlainTable(const ByteSearch& search, const char* from, const char* end) {
    const char* table = search.table_.data();
    return PlainNext(
        from, end, [table](const char* at) { return table[static_cast<unsigned char>(*at)] != 0; });
  }

  static Result EveryByte(const ByteSearch& /*search*/, const char* from, const char* end) {
    const std::size_t count = std::min(Between(from, end), kBlock);
    if (count == 0) return {end, 0};
    return {from, ~std::uint64_t{0} >> (kBlock - count)};
  }

#if ZARVO_X86_SEARCH
  static std::uint64_t Joined(int lowest, int low, int high, int highest) {
    return static_cast<std::uint64_t>(static_cast<std::uint32_t>(lowest | low << 16)) |
           static_cast<std::uint64_t>(static_cast<std::uint32_t>(high | highest << 16)) << 32;
  }

  static Result Sse2Literal(const ByteSearch& search, const char* from, const char* end) {
    const char* stop = LiteralEnd(search, from, end);
    const __m128i first = _mm_set1_epi8(search.first_byte_);
    const __m128i second = _mm_set1_epi8(search.second_byte_);
    const std::size_t first_offset = search.first_offset_;
    const std::size_t second_offset = search.second_offset_;
    const auto load = [](const char* at) {
      return _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
    };
    const auto pair = [&](const char* at) {
      return _mm_and_si128(_mm_cmpeq_epi8(load(at + first_offset), first),
                           _mm_cmpeq_epi8(load(at + second_offset), second));
    };
    for (; Between(from, stop) >= kBlock; from += kBlock) {
      const __m128i a = pair(from);
      const __m128i b = pair(from + 16);
      const __m128i c = pair(from + 32);
      const __m128i d = pair(from + 48);
      if (_mm_movemask_epi8(_mm_or_si128(_mm_or_si128(a, b), _mm_or_si128(c, d))) != 0) {
        return {from, Joined(_mm_movemask_epi8(a), _mm_movemask_epi8(b), _mm_movemask_epi8(c),
                             _mm_movemask_epi8(d))};
      }
    }
    return PlainLiteral(search, from, end);
  }

  static Result Sse2Ranges(const ByteSearch& search, const char* from, const char* end) {
    const std::size_t count = search.range_count_;
    const auto listed = [&](const char* at) {
      const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
      __m128i found = _mm_setzero_si128();
      for (std::size_t i = 0; i < count; ++i) {
        const __m128i first = _mm_set1_epi8(static_cast<char>(search.ranges_[i].First));
        const __m128i width = _mm_set1_epi8(static_cast<char>(search.ranges_[i].Width));
        const __m128i distance = _mm_sub_epi8(bytes, first);
        found = _mm_or_si128(found, _mm_cmpeq_epi8(_mm_min_epu8(distance, width), distance));
      }
      return _mm_movemask_epi8(found);
    };
    for (; Between(from, end) >= kBlock; from += kBlock) {
      const std::uint64_t hits =
          Joined(listed(from), listed(from + 16), listed(from + 32), listed(from + 48));
      if (hits != 0) return {from, hits};
    }
    return PlainTable(search, from, end);
  }

  __attribute__((target("avx2"))) static Result Avx2Literal(const ByteSearch& search,
                                                            const char* from, const char* end) {
    const char* stop = LiteralEnd(search, from, end);
    const __m256i first = _mm256_set1_epi8(search.first_byte_);
    const __m256i second = _mm256_set1_epi8(search.second_byte_);
    if (Between(from, stop) < kBlock) return PlainLiteral(search, from, end);
    const char* first_at = from + search.first_offset_;
    const char* second_at = from + search.second_offset_;
    for (; Between(from, stop) >= kBlock; from += kBlock) {
      const __m256i low = _mm256_and_si256(
          _mm256_cmpeq_epi8(_mm256_loadu_si256(reinterpret_cast<const __m256i*>(first_at)), first),
          _mm256_cmpeq_epi8(_mm256_loadu_si256(reinterpret_cast<const __m256i*>(second_at)),
                            second));
      const __m256i high = _mm256_and_si256(
          _mm256_cmpeq_epi8(_mm256_loadu_si256(reinterpret_cast<const __m256i*>(first_at + 32)),
                            first),
          _mm256_cmpeq_epi8(_mm256_loadu_si256(reinterpret_cast<const __m256i*>(second_at + 32)),
                            second));
      const __m256i both = _mm256_or_si256(low, high);
      if (_mm256_testz_si256(both, both) == 0) {
        const auto low_hits = static_cast<std::uint32_t>(_mm256_movemask_epi8(low));
        const auto high_hits = static_cast<std::uint32_t>(_mm256_movemask_epi8(high));
        return {from, low_hits | static_cast<std::uint64_t>(high_hits) << 32};
      }
      first_at += kBlock;
      second_at += kBlock;
    }
    return PlainLiteral(search, from, end);
  }

  __attribute__((target("avx2"))) static Result Avx2Table(const ByteSearch& search,
                                                          const char* from, const char* end) {
    const auto* tables = reinterpret_cast<const __m128i*>(search.half_tables_.data());
    const __m256i lower = _mm256_broadcastsi128_si256(_mm_load_si128(tables));
    const __m256i upper = _mm256_broadcastsi128_si256(_mm_load_si128(tables + 1));
    const __m256i bits =
        _mm256_setr_epi8(1, 2, 4, 8, 16, 32, 64, -128, 1, 2, 4, 8, 16, 32, 64, -128, 1, 2, 4, 8, 16,
                         32, 64, -128, 1, 2, 4, 8, 16, 32, 64, -128);
    const __m256i half = _mm256_set1_epi8(15);
    for (; Between(from, end) >= kBlock; from += kBlock) {
      std::uint32_t hits[2];
      for (std::size_t i = 0; i < 2; ++i) {
        const __m256i bytes = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(from + 32 * i));
        const __m256i low = _mm256_and_si256(bytes, half);
        const __m256i high = _mm256_and_si256(_mm256_srli_epi16(bytes, 4), half);
        // The byte's own highest bit says which of the tables is meant.
        const __m256i row = _mm256_blendv_epi8(_mm256_shuffle_epi8(lower, low),
                                               _mm256_shuffle_epi8(upper, low), bytes);
        const __m256i bit = _mm256_shuffle_epi8(bits, high);
        const __m256i listed = _mm256_cmpeq_epi8(_mm256_and_si256(row, bit), bit);
        hits[i] = static_cast<std::uint32_t>(_mm256_movemask_epi8(listed));
      }
      if ((hits[0] | hits[1]) != 0) {
        return {from, hits[0] | static_cast<std::uint64_t>(hits[1]) << 32};
      }
    }
    return PlainTable(search, from, end);
  }
#endif

  static ByteSearch::NextFunction Literal() {
#if ZARVO_X86_SEARCH
    if (Level() == SearchLevel::Avx2) return &Avx2Literal;
    if (Level() == SearchLevel::Sse2) return &Sse2Literal;
#endif
    return &PlainLiteral;
  }

  static ByteSearch::NextFunction Table([[maybe_unused]] const ByteSearch& search) {
#if ZARVO_X86_SEARCH
    if (Level() == SearchLevel::Avx2) return &Avx2Table;
    if (Level() == SearchLevel::Sse2 && search.range_count_ <= ByteSearch::kMostRanges) {
      return &Sse2Ranges;
    }
#endif
    return &PlainTable;
  }
};

SearchLevel BestSearchLevel() {
#if ZARVO_X86_SEARCH
  return __builtin_cpu_supports("avx2") ? SearchLevel::Avx2 : SearchLevel::Sse2;
#else
  return SearchLevel::Plain;
#endif
}

SearchLevel UseSearchLevel(SearchLevel level) {
  return std::exchange(Level(), std::min(level, BestSearchLevel()));
}

ByteSearch::Result ByteSearch::NextOfNothing(const ByteSearch& /*search*/, const char* /*from*/,
                                             const char* end) {
  return {end, 0};
}

ByteSearch ByteSearch::ForEveryByte() {
  ByteSearch search;
  search.next_ = &SearchKernels::EveryByte;
  return search;
}

ByteSearch ByteSearch::ForLiteral(std::string_view literal, const ByteFrequencies& frequencies) {
  ByteSearch search;
  search.literal_ = literal;
  search.is_inexact_ = literal.size() > 2;
  for (std::size_t i = 1; i < literal.size(); ++i) {
    const std::uint32_t count = frequencies.Of(literal[i]);
    if (count < frequencies.Of(literal[search.first_offset_])) {
      search.second_offset_ = std::exchange(search.first_offset_, i);
    } else if (search.second_offset_ == search.first_offset_ ||
               count < frequencies.Of(literal[search.second_offset_])) {
      search.second_offset_ = i;
    }
  }
  search.first_byte_ = literal[search.first_offset_];
  search.second_byte_ = literal[search.second_offset_];
  search.next_ = SearchKernels::Literal();
  return search;
}

ByteSearch ByteSearch::ForTable(std::string_view table) {
  ByteSearch search;
  table.copy(search.table_.data(), search.table_.size());
  for (std::size_t byte = 0; byte < table.size(); ++byte) {
    if (table[byte] == 0) continue;
    const std::size_t high = byte / 16;
    search.half_tables_[high / 8 * 16 + byte % 16] |= static_cast<unsigned char>(1U << high % 8);
    if (byte > 0 && table[byte - 1] != 0) {
      if (search.range_count_ <= kMostRanges) ++search.ranges_[search.range_count_ - 1].Width;
    } else if (search.range_count_++ < kMostRanges) {
      search.ranges_[search.range_count_ - 1] = {static_cast<unsigned char>(byte), 0};
    }
  }
  search.next_ = SearchKernels::Table(search);
  return search;
}

}  // namespace zarvo
