// How a filter file hides the password of its lock.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace zarvo {

/// The stored form of a password in the given file format version: each byte combined with the
/// key, ended by the first byte that becomes 0. Empty for versions other than 1 to 5.
[[nodiscard]] std::string ScramblePassword(std::string_view password, char key,
                                           std::int32_t format_version);

/// Compares as zero-terminated strings, as stored passwords are.
[[nodiscard]] bool EqualUpToZero(std::string_view left, std::string_view right);

}  // namespace zarvo
