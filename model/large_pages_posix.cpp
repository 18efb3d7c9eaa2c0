#include <sys/mman.h>

#include <memory>

#include "model/large_pages.h"

namespace zarvo {

void PreferLargePages([[maybe_unused]] void* start, [[maybe_unused]] std::size_t size) {
#ifdef MADV_HUGEPAGE
  constexpr std::size_t kLargePage = std::size_t{2} << 20;
  void* first = start;
  std::size_t left = size;
  // It is advice: where it isn't taken, small pages do.
  if (std::align(kLargePage, kLargePage, first, left) != nullptr) {
    ::madvise(first, left / kLargePage * kLargePage, MADV_HUGEPAGE);
  }
#endif
}

}  // namespace zarvo
