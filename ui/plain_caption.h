// Names from a document on tabs and in menus.
#pragma once

#include <QString>
#include <string_view>

namespace zarvo {

/// The bytes as a caption that shows them as they are: an "&" is no mnemonic, and what would break
/// the line or begin a column is a blank.
[[nodiscard]] QString PlainCaption(std::string_view bytes);

}  // namespace zarvo
