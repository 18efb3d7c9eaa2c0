// Texts from a document in lists, on tabs and in menus.
#pragma once

#include <QString>
#include <string_view>

namespace zarvo {

/// The bytes as one line: what would break the line or begin a column is a blank.
[[nodiscard]] QString PlainLine(std::string_view bytes);

/// The line as a caption that shows it as it is: an "&" is no mnemonic.
[[nodiscard]] QString PlainCaption(std::string_view bytes);

}  // namespace zarvo
