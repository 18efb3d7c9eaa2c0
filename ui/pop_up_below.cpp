#include "ui/pop_up_below.h"

#include <QMenu>
#include <QWidget>

namespace zarvo {

void PopUpBelow(QMenu& menu, const QWidget& button) {
  if (!menu.isEmpty()) menu.popup(button.mapToGlobal(QPoint(0, button.height())));
}

}  // namespace zarvo
