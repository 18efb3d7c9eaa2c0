#include <sys/mman.h>

#include <cstdint>

#include "model/large_pages.h"

namespace zarvo {

void PreferLargePages([[maybe_unused]] void* start, [[maybe_unused]] std::size_t size) {
#ifdef MADV_HUGEPAGE
  constexpr std::uintptr_t kLargePage = std::uintptr_t{2} << 20;
  const auto address = reinterpret_cast<std::uintptr_t>(start);
  const std::uintptr_t first = (address + kLargePage - 1) / kLargePage * kLargePage;
  const std::uintptr_t last = (address + size) / kLargePage * kLargePage;
  // It is advice: where it isn't taken, small pages do.
  if (first < last) ::madvise(reinterpret_cast<void*>(first), last - first, MADV_HUGEPAGE);
#endif
}

}  // namespace zarvo
