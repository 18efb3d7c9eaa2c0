#include "engine/presence_map.h"

namespace zarvo {

PresenceMap::PresenceMap(Detail detail)
    : pairs_(std::size_t{1} << 16, 0), fours_(detail == Detail::Fours ? kFours : 0, 0) {}

void PresenceMap::Note(std::string_view text) {
  const char* bytes = text.data();
  std::size_t left = text.size();
  // A store of a char may be to anything, the vectors' own pointers too, which would be loaded anew
  // for each byte.
  char* const pairs = pairs_.data();
  char* const fours = fours_.data();
  if (HoldsFours()) {
    for (; left >= kLongest; --left, ++bytes) {
      pairs[PairAt(bytes)] = 1;
      fours[FourAt(bytes)] = 1;
    }
  }
  for (; left >= 2; --left, ++bytes) pairs[PairAt(bytes)] = 1;
}

bool PresenceMap::MayHold(std::string_view literal) const {
  const char* bytes = literal.data();
  for (std::size_t left = literal.size(); left >= 2; --left, ++bytes) {
    if (pairs_[PairAt(bytes)] == 0) return false;
    if (HoldsFours() && left >= kLongest && fours_[FourAt(bytes)] == 0) return false;
  }
  return true;
}

}  // namespace zarvo
