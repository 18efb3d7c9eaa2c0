// Numbers in texts that people write.
#pragma once

#include <cstdint>
#include <string_view>

namespace zarvo {

/// The decimal integer that the text begins with, a minus sign included; 0 when it begins with
/// none. Saturates at the limits of its type.
[[nodiscard]] std::int32_t LeadingInteger(std::string_view text);

}  // namespace zarvo
