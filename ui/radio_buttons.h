// Groups of radio buttons that show what a document holds.
#pragma once

#include <functional>

class QAbstractButton;
class QButtonGroup;

namespace zarvo {

/// Checks one button of an exclusive group; with null none, for a number that no button stands for.
void CheckOnly(QButtonGroup& group, QAbstractButton* button);

/// Calls choose when the user chooses the button, unless is_chosen says that it stands for what the
/// document holds already. By then the button shows its new state, also when choosing takes long.
void OnChosen(const QAbstractButton& button, std::function<bool()> is_chosen,
              std::function<void()> choose);

}  // namespace zarvo
