// A Filter as JSON: every stored field under the model's name for it.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "model/code_page.h"
#include "model/filter.h"

namespace zarvo {

/// All of the Filter, indented, texts as the code page's characters. A record of a version other
/// than 1 is its RecordVersion alone; a list of another version stands as such an object in place
/// of the array.
[[nodiscard]] std::string FilterToJson(Filter filter, const CodePage& code_page);

/// What is wrong with JSON, and where.
struct JsonMistake {
  /// Such as "Rules[2].Pattern.MostSignificant". Empty for the outermost object, and for broken
  /// JSON, where What names line and column.
  std::string Place;
  std::string What;

  [[nodiscard]] std::string Message() const { return Place.empty() ? What : Place + ": " + What; }
};

/// Sets the filter to what the JSON says, keys left out to their defaults. After a mistake the
/// filter is as it was: an unknown key, one that stands twice, a wrong type, a number out of range
/// and a character that the code page lacks are mistakes.
[[nodiscard]] std::optional<JsonMistake> FilterFromJson(std::string_view json,
                                                        const CodePage& code_page, Filter& filter);

}  // namespace zarvo
