// Lets a line edit take digits alone.
#pragma once

#include <QValidator>

namespace zarvo {

/// Other characters are dropped as they come in, by whatever way; of a pasted text the digits stay.
class DigitsValidator : public QValidator {
  Q_OBJECT

 public:
  using QValidator::QValidator;

  /// Whether the text may begin with a minus sign, for a number that is negative already.
  void AllowMinus(bool allow) { allow_minus_ = allow; }

  State validate(QString& text, int& position) const override;

 private:
  bool allow_minus_ = false;
};

}  // namespace zarvo
