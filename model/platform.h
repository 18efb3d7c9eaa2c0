// What differs between platforms and is no more than a constant.
#pragma once

#include <string_view>

namespace zarvo {

/// What ends a line in the text files that the program writes.
#ifdef _WIN32
inline constexpr std::string_view kTextFileLineEnd = "\r\n";
#else
inline constexpr std::string_view kTextFileLineEnd = "\n";
#endif

}  // namespace zarvo
