#include "ui/accessible_names.h"

#include <QLabel>

namespace zarvo {

void NameControlsByLabels(QWidget& window) {
  for (const QLabel* label : window.findChildren<QLabel*>()) {
    QWidget* control = label->buddy();
    if (control == nullptr || !control->accessibleName().isEmpty()) continue;
    QString name = label->text();
    if (name.endsWith(u':')) name.chop(1);
    control->setAccessibleName(name);
  }
}

}  // namespace zarvo
