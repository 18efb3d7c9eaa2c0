#include "ui/focus_loss.h"

#include <QApplication>
#include <QFocusEvent>

#include "ui/run_pump.h"

namespace zarvo {

bool EndsEditing(const QEvent& event) {
  return event.type() == QEvent::FocusOut && !ProgramIsQuitting() &&
         static_cast<const QFocusEvent&>(event).reason() != Qt::PopupFocusReason &&
         QApplication::activePopupWidget() == nullptr;
}

}  // namespace zarvo
