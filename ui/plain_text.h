// Texts of filters and files in window titles, where the toolkit gives some characters a meaning.
#pragma once

#include <QString>

namespace zarvo {

/// For window titles, where "[*]" would be the mark of a modified document.
[[nodiscard]] inline QString PlainTitle(QString text) {
  return text.replace(QStringLiteral("[*]"), QStringLiteral("[*][*]"));
}

}  // namespace zarvo
