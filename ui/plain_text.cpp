#include "ui/plain_text.h"

namespace zarvo {

QString PlainCaption(QString text) {
  for (QChar& character : text) {
    if (character == u'\t' || character == u'\r' || character == u'\n') character = u' ';
  }
  return text.replace(u'&', QStringLiteral("&&"));
}

QString PlainTitle(QString text) {
  return text.replace(QStringLiteral("[*]"), QStringLiteral("[*][*]"));
}

}  // namespace zarvo
