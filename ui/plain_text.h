// Texts of filters and files in places where the toolkit gives some characters a meaning.
#pragma once

#include <QString>

namespace zarvo {

/// For the lines of a list: a line break, which would begin another one, is shown as a blank.
[[nodiscard]] inline QString PlainLine(QString text) {
  return text.replace(QLatin1Char('\r'), QLatin1Char(' '))
      .replace(QLatin1Char('\n'), QLatin1Char(' '));
}

/// For tabs, menus and buttons, where moreover an ampersand would underline the next character.
[[nodiscard]] inline QString PlainCaption(const QString& text) {
  return PlainLine(text).replace(QLatin1Char('&'), QStringLiteral("&&"));
}

/// For window titles, where "[*]" would be the mark of a modified document.
[[nodiscard]] inline QString PlainTitle(QString text) {
  return text.replace(QStringLiteral("[*]"), QStringLiteral("[*][*]"));
}

}  // namespace zarvo
