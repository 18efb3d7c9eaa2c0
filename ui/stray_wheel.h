// The wheel over drop-down lists.
#pragma once

class QComboBox;

namespace zarvo {

/// The wheel changes the box only while it has the focus: scrolling past it must not choose another
/// item unnoticed.
void StopStrayWheel(QComboBox& box);

}  // namespace zarvo
