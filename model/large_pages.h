// Memory of many megabytes, taken from the system in large pieces.
#pragma once

#include <cstddef>

namespace zarvo {

/// Advises the system to back this memory with large pages, where it has any and the memory spans
/// some. The first touch of 2 MiB then costs one interruption instead of 512. To be called before
/// the memory is first written; changes nothing about its contents.
void PreferLargePages(void* start, std::size_t size);

}  // namespace zarvo
