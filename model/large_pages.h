// Memory of many megabytes, taken from the system in large pieces.
#pragma once

#include <cstddef>
#include <string>

namespace zarvo {

/// Reserves room for so many bytes at most, or for the least where the system hasn't got as much;
/// throws std::bad_alloc or std::length_error when it hasn't got even that. Advises the system to
/// back the room with large pages, where it has any and the room spans some: the first touch of
/// 2 MiB then costs one interruption instead of 512. What isn't used costs nothing.
void ReserveLarge(std::string& bytes, std::size_t least, std::size_t most);

}  // namespace zarvo
