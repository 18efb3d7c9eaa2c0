// Texts of filters and files in places where the toolkit gives some characters a meaning.
#pragma once

#include <QString>

namespace zarvo {

/// For tabs, menus and buttons, where an ampersand would underline the next character.
[[nodiscard]] inline QString PlainCaption(QString text) {
  return text.replace(QLatin1Char('&'), QStringLiteral("&&"));
}

/// For window titles, where "[*]" would be the mark of a modified document.
[[nodiscard]] inline QString PlainTitle(QString text) {
  return text.replace(QStringLiteral("[*]"), QStringLiteral("[*][*]"));
}

}  // namespace zarvo
