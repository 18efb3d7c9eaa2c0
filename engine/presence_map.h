// What a text holds, as far as it takes to know what it doesn't hold.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <vector>

namespace zarvo {

/// Remembers all neighbouring pairs of bytes of a text and, if asked to, a hash of all that are
/// four in a row, which takes three times as long. A Rule whose literal has a pair or four that
/// isn't here finds nothing. What a replacement adds must be noted; what it takes away stays, which
/// makes the map less sharp but never wrong.
class PresenceMap {
 public:
  enum class Detail { Pairs, Fours };

  /// The most bytes in a row that are remembered.
  static constexpr std::size_t kLongest = 4;

  explicit PresenceMap(Detail detail);

  [[nodiscard]] bool HoldsFours() const { return !fours_.empty(); }

  /// Adds all that the text holds.
  void Note(std::string_view text);

  /// False when no text that was noted holds the literal. True for literals below two bytes.
  [[nodiscard]] bool MayHold(std::string_view literal) const;

 private:
  static constexpr int kFourBits = 20;
  static constexpr std::size_t kFours = std::size_t{1} << kFourBits;

  static std::size_t PairAt(const char* bytes) {
    std::uint16_t pair = 0;
    std::memcpy(&pair, bytes, sizeof(pair));
    return pair;
  }
  static std::size_t FourAt(const char* bytes) {
    std::uint32_t four = 0;
    std::memcpy(&four, bytes, sizeof(four));
    constexpr std::uint32_t kSpread = 2654435761U;
    return four * kSpread >> (32 - kFourBits);
  }

  std::vector<char> pairs_;
  std::vector<char> fours_;
};

/// How much is searched in vain before it is worth taking down what a text holds, first its pairs
/// and then, if that isn't enough, its fours: so many bytes, and so many times the text. To take
/// down the pairs costs about as much as eight searches.
struct PresencePatience {
  std::size_t Bytes = std::size_t{4} << 20;
  std::size_t Texts = 8;
};

/// For tests.
void UsePresencePatience(PresencePatience patience);

}  // namespace zarvo
