// Where the menus of buttons open.
#pragma once

class QMenu;
class QWidget;

namespace zarvo {

/// Opens the menu below the button's lower left corner and returns at once. A menu without entries
/// doesn't open.
void PopUpBelow(QMenu& menu, const QWidget& button);

}  // namespace zarvo
