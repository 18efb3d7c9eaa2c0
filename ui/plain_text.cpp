#include "ui/plain_text.h"

namespace zarvo {

QString PlainLine(QString text) {
  for (QChar& character : text) {
    if (character == u'\t' || character == u'\r' || character == u'\n') character = u' ';
  }
  return text;
}

QString PlainCaption(const QString& text) {
  return PlainLine(text).replace(u'&', QStringLiteral("&&"));
}

QString PlainTitle(QString text) {
  return text.replace(QStringLiteral("[*]"), QStringLiteral("[*][*]"));
}

}  // namespace zarvo
