// Texts of filters and files in places where the toolkit gives some characters a meaning.
#pragma once

#include <QString>

namespace zarvo {

/// For lists, whose entries are one line each: what would break the line or begin a column is a
/// blank.
[[nodiscard]] QString PlainLine(QString text);

/// For tabs, menus and buttons: one line too, in which an "&" is no mnemonic.
[[nodiscard]] QString PlainCaption(const QString& text);

/// For window titles, where "[*]" would be the mark of a modified document.
[[nodiscard]] QString PlainTitle(QString text);

}  // namespace zarvo
