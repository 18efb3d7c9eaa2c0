#include <sys/mman.h>

#include <memory>
#include <new>
#include <stdexcept>

#include "model/large_pages.h"

namespace zarvo {
namespace {

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

bool CanReserve(std::string& bytes, std::size_t size) {
  try {
    bytes.reserve(size);
    return true;
  } catch (const std::bad_alloc&) {
    return false;
  } catch (const std::length_error&) {
    return false;
  }
}

}  // namespace

void ReserveLarge(std::string& bytes, std::size_t least, std::size_t most) {
  if (!CanReserve(bytes, most)) bytes.reserve(least);
  PreferLargePages(bytes.data(), bytes.capacity());
}

}  // namespace zarvo
