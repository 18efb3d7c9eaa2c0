// A Filter as a listing for people.
#pragma once

#include <string>
#include <string_view>

#include "model/code_page.h"
#include "model/filter.h"

namespace zarvo {

/// The header, the rules, the sets and the functions, in UTF-8. Control characters in the Filter's
/// texts are written as escapes such as "\n" or "\x1B", so a file can't steer a terminal, and a
/// backslash as two.
[[nodiscard]] std::string FilterListing(const Filter& filter, const CodePage& code_page);

/// UTF-8 with its control characters escaped in the same way; backslashes stay.
[[nodiscard]] std::string WithoutControls(std::string_view utf8);

/// A text of the filter as FilterListing shows it.
[[nodiscard]] std::string Printable(std::string_view bytes, const CodePage& code_page);

}  // namespace zarvo
