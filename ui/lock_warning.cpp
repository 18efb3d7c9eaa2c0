#include "ui/lock_warning.h"

namespace zarvo {

void LockWarning::Warn(QWidget* parent) {
  if (shown_) return;
  // Before the box: opening it takes the focus from a control, which may refuse a change of its
  // own.
  shown_ = true;
  dialogs_.Message(parent, MessageIcon::Exclamation,
                   QStringLiteral("This module is locked. You must unlock it before attempting to "
                                  "make any changes."),
                   MessageButtons::Ok);
}

}  // namespace zarvo
