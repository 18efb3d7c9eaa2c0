#include "app/services/leading_integer.h"

#include <algorithm>
#include <limits>

namespace zarvo {

std::int32_t LeadingInteger(std::string_view text) {
  using Limits = std::numeric_limits<std::int32_t>;
  const bool is_negative = text.starts_with('-');
  if (is_negative) text.remove_prefix(1);
  std::int64_t value = 0;
  for (const char digit : text) {
    if (digit < '0' || digit > '9') break;
    value = std::min(value * 10 + (digit - '0'), std::int64_t{Limits::max()} + 1);
  }
  if (is_negative) value = -value;
  return static_cast<std::int32_t>(std::clamp<std::int64_t>(value, Limits::min(), Limits::max()));
}

}  // namespace zarvo
