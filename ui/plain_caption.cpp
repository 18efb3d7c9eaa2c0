#include "ui/plain_caption.h"

#include "ui/byte_text.h"

namespace zarvo {

QString PlainCaption(std::string_view bytes) {
  QString caption = FromBytes(bytes);
  for (QChar& character : caption) {
    if (character == u'\t' || character == u'\r' || character == u'\n') character = u' ';
  }
  return caption.replace(u'&', QStringLiteral("&&"));
}

}  // namespace zarvo
