// Texts of filters and files in places where the toolkit gives some characters a meaning.
#pragma once

#include <QString>

namespace zarvo {

/// For tabs, menus and buttons, where an ampersand would underline the next character. What would
/// break the line or begin a column is a blank.
[[nodiscard]] inline QString PlainCaption(QString text) {
  for (const char character : {'\t', '\r', '\n'})
    text.replace(QLatin1Char(character), QLatin1Char(' '));
  return text.replace(QLatin1Char('&'), QStringLiteral("&&"));
}

/// For window titles, where "[*]" would be the mark of a modified document.
[[nodiscard]] inline QString PlainTitle(QString text) {
  return text.replace(QStringLiteral("[*]"), QStringLiteral("[*][*]"));
}

}  // namespace zarvo
