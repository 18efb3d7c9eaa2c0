#include "tests/support/allocation_meter.h"

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <new>

namespace {

std::atomic<std::size_t> held{0};
std::atomic<std::size_t> peak{0};

// Before each block stands its size.
constexpr std::size_t kHeader = alignof(std::max_align_t);

}  // namespace

void* operator new(std::size_t size) {
  auto* block = static_cast<char*>(std::malloc(size + kHeader));
  if (block == nullptr) throw std::bad_alloc();
  *reinterpret_cast<std::size_t*>(block) = size;
  const std::size_t now = held += size;
  if (now > peak) peak = now;
  return block + kHeader;
}

// A sanitizer's own would give blocks without their size.
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  try {
    return operator new(size);
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

void operator delete(void* pointer) noexcept {
  if (pointer == nullptr) return;
  char* block = static_cast<char*>(pointer) - kHeader;
  held -= *reinterpret_cast<std::size_t*>(block);
  std::free(block);
}

void operator delete(void* pointer, std::size_t) noexcept { operator delete(pointer); }
void operator delete(void* pointer, const std::nothrow_t&) noexcept { operator delete(pointer); }

namespace zarvo::testing {

AllocationMeter::AllocationMeter() : held_at_start_(held) { peak = held_at_start_; }

std::size_t AllocationMeter::PeakBytes() const {
  return peak - std::min<std::size_t>(held_at_start_, peak);
}

}  // namespace zarvo::testing
