#include "ui/digits_validator.h"

namespace zarvo {

QValidator::State DigitsValidator::validate(QString& text, int& position) const {
  QString kept;
  int kept_position = 0;
  for (int i = 0; i < text.size(); ++i) {
    const QChar c = text[i];
    const bool is_sign = i == 0 && allow_minus_ && c == u'-';
    if (!is_sign && (c < u'0' || c > u'9')) continue;
    kept += c;
    if (i < position) ++kept_position;
  }
  if (kept != text) {
    text = kept;
    position = kept_position;
  }
  return Acceptable;
}

}  // namespace zarvo
