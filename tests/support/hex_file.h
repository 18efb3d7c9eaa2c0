// Reads test data that is written down as hexadecimal numbers with comments.
#pragma once

#include <string>
#include <string_view>

namespace zarvo::testing {

/// The bytes that the text describes. Each is two hexadecimal digits; "41*255" is the byte 41 two
/// hundred and fifty-five times. White space stands between them, and "#" begins a comment that
/// ends with its line. Anything else throws a std::runtime_error that begins with the name and the
/// line, such as "rule.hex:7: ".
std::string ParseHex(std::string_view text, const std::string& name);

/// ParseHex of a file, which must be there and describe at least one byte.
std::string ReadHexFile(const std::string& path);

}  // namespace zarvo::testing
