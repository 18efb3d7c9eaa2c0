// Names for screen readers, taken from what the windows show.
#pragma once

class QWidget;

namespace zarvo {

/// Gives each control within the window that has a label as its buddy, and no name of its own, the
/// label's text without its colon.
void NameControlsByLabels(QWidget& window);

}  // namespace zarvo
