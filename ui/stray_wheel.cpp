#include "ui/stray_wheel.h"

#include <QComboBox>
#include <QEvent>

namespace zarvo {
namespace {

class WheelGuard : public QObject {
 public:
  using QObject::QObject;

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() != QEvent::Wheel || static_cast<QWidget*>(watched)->hasFocus()) return false;
    event->ignore();
    return true;
  }
};

}  // namespace

void StopStrayWheel(QComboBox& box) {
  box.setFocusPolicy(Qt::StrongFocus);
  box.installEventFilter(new WheelGuard(&box));
}

}  // namespace zarvo
