// Texts of filters and files in places where the toolkit gives some characters a meaning.
#pragma once

#include <QString>

namespace zarvo {

/// For tabs, menus and buttons: an "&" is no mnemonic, and what would break the line or begin a
/// column is a blank.
[[nodiscard]] QString PlainCaption(QString text);

/// For window titles, where "[*]" would be the mark of a modified document.
[[nodiscard]] QString PlainTitle(QString text);

}  // namespace zarvo
