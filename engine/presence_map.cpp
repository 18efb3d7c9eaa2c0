#include "engine/presence_map.h"

namespace zarvo {

void PresenceMap::Note(std::string_view text) {
  const char* bytes = text.data();
  std::size_t left = text.size();
  for (; left >= kLongest; --left, ++bytes) {
    pairs_[PairAt(bytes)] = 1;
    fours_[FourAt(bytes)] = 1;
  }
  for (; left >= 2; --left, ++bytes) pairs_[PairAt(bytes)] = 1;
}

bool PresenceMap::MayHold(std::string_view literal) const {
  const char* bytes = literal.data();
  for (std::size_t left = literal.size(); left >= 2; --left, ++bytes) {
    if (pairs_[PairAt(bytes)] == 0) return false;
    if (left >= kLongest && fours_[FourAt(bytes)] == 0) return false;
  }
  return true;
}

}  // namespace zarvo
