// A Filter as JSON: every stored field under the model's name for it.
#pragma once

#include <string>
#include <string_view>

#include "model/code_page.h"
#include "model/filter.h"

namespace zarvo {

/// All of the Filter, indented, texts as the code page's characters. A record of a version other
/// than 1 is its RecordVersion alone; a list of another version stands as such an object in place
/// of the array.
[[nodiscard]] std::string FilterToJson(Filter filter, const CodePage& code_page);

/// Sets the filter to what the JSON says, keys left out to their defaults, and returns "". On an
/// error the filter is as it was, and the result says what is wrong and where: a line and column
/// for broken JSON, else a place such as "Rules[2].Pattern.MostSignificant". An unknown key, one
/// that stands twice, a wrong type, a number out of range and a character that the code page lacks
/// are errors.
[[nodiscard]] std::string FilterFromJson(std::string_view json, const CodePage& code_page,
                                         Filter& filter);

}  // namespace zarvo
