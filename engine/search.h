// Searching a text for bytes: the one place where that is made fast.
//
// A search says, for blocks of up to 64 positions, which of them are hits. Whoever asks takes the
// hits of a block one after another and only then asks for the next block, so that dense hits cost
// little more than sparse ones. Of a String only the two rarest of its bytes are looked for, at
// their distance; Confirm compares the rest. Lists are looked up by the halves of a byte (a table
// of 16 for each half) where the processor can do that for many bytes at once, else as ranges.
//
// There is one implementation for each level of the processor's instructions, and a plain one that
// all machines have. They give the same hits; tests choose among them.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace zarvo {

enum class SearchLevel {
  Plain = 0,
  Sse2 = 1,  ///< what every x86-64 processor has
  Avx2 = 2,
};

/// The highest level of this machine.
[[nodiscard]] SearchLevel BestSearchLevel();

/// Makes the searches that are built from now on use this level, or the best one below it that the
/// machine has. Gives the one used before. For tests; it is the best one at the start.
SearchLevel UseSearchLevel(SearchLevel level);

/// How often each byte occurs in a text, estimated from parts of it. For choosing what to look for,
/// never for what is found.
class ByteFrequencies {
 public:
  /// Those of English prose.
  ByteFrequencies();
  explicit ByteFrequencies(std::string_view text);

  [[nodiscard]] std::uint32_t Of(char byte) const {
    return counts_[static_cast<unsigned char>(byte)];
  }

  /// True when the bytes that the table marks are at least one in so many.
  [[nodiscard]] bool IsFrequent(std::string_view table, std::size_t one_in) const;

 private:
  std::array<std::uint32_t, 256> counts_{};
};

class ByteSearch {
 public:
  /// How many positions a block has.
  static constexpr std::size_t kBlock = 64;

  /// The hits among the 64 positions from Block on: bit 0 stands for Block itself. Hits of 0 mean
  /// that there is none up to the end of the text.
  struct Result {
    const char* Block;
    std::uint64_t Hits;
  };

  /// Hits nothing.
  ByteSearch() = default;
  /// Hits every byte of the text.
  [[nodiscard]] static ByteSearch ForEveryByte();
  /// Hits where Confirm is to be asked; the literal must not be empty.
  [[nodiscard]] static ByteSearch ForLiteral(std::string_view literal,
                                             const ByteFrequencies& frequencies);
  /// Hits the bytes that are marked with something other than 0 in a table of 256.
  [[nodiscard]] static ByteSearch ForTable(std::string_view table);

  /// The first block with hits at from or behind it. from must not be behind the end.
  [[nodiscard]] Result Next(const char* from, const char* end) const {
    return next_(*this, from, end);
  }

  /// True when the hit is what was searched for.
  [[nodiscard]] bool Confirm(const char* hit) const {
    return !is_inexact_ || std::memcmp(hit, literal_.data(), literal_.size()) == 0;
  }

 private:
  friend struct SearchKernels;
  using NextFunction = Result (*)(const ByteSearch&, const char*, const char*);
  struct Range {
    unsigned char First;
    unsigned char Width;  // the last one less the first one
  };
  static constexpr std::size_t kMostRanges = 8;

  static Result NextOfNothing(const ByteSearch& search, const char* from, const char* end);

  NextFunction next_ = &NextOfNothing;
  std::string literal_;
  bool is_inexact_ = false;
  // The two bytes of the literal that are looked for, and where they are in it. Equal for a literal
  // of one byte.
  std::size_t first_offset_ = 0;
  std::size_t second_offset_ = 0;
  char first_byte_ = 0;
  char second_byte_ = 0;
  // Lists.
  std::array<char, 256> table_{};
  std::size_t range_count_ = 0;
  std::array<Range, kMostRanges> ranges_{};
  // A byte is listed when the bit of its upper half is set in the entry of its lower half: in the
  // first 16 entries for upper halves below 8, in the last 16 for the others.
  alignas(16) std::array<unsigned char, 32> half_tables_{};
};

}  // namespace zarvo
