#include "ui/radio_buttons.h"

#include <QAbstractButton>
#include <QButtonGroup>
#include <utility>

namespace zarvo {

void CheckOnly(QButtonGroup& group, QAbstractButton* button) {
  if (button != nullptr) {
    button->setChecked(true);
  } else if (QAbstractButton* const checked = group.checkedButton()) {
    group.setExclusive(false);
    checked->setChecked(false);
    group.setExclusive(true);
  }
  // The toolkit lets Tab go to the button that had the focus last, also when another is checked.
  for (QAbstractButton* each : group.buttons()) {
    each->setFocusPolicy(button == nullptr || each == button ? Qt::StrongFocus : Qt::ClickFocus);
  }
}

void OnChosen(const QAbstractButton& button, std::function<bool()> is_chosen,
              std::function<void()> choose) {
  QObject::connect(&button, &QAbstractButton::clicked, &button,
                   [is_chosen = std::move(is_chosen), choose = std::move(choose)] {
                     if (!is_chosen()) choose();
                   });
}

}  // namespace zarvo
