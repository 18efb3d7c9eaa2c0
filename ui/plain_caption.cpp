#include "ui/plain_caption.h"

#include "ui/byte_text.h"

namespace zarvo {

QString PlainLine(std::string_view bytes) {
  QString line = FromBytes(bytes);
  for (QChar& character : line) {
    if (character == u'\t' || character == u'\r' || character == u'\n') character = u' ';
  }
  return line;
}

QString PlainCaption(std::string_view bytes) {
  return PlainLine(bytes).replace(u'&', QStringLiteral("&&"));
}

}  // namespace zarvo
