// When a field has been left.
#pragma once

class QEvent;

namespace zarvo {

/// Whether the event is a loss of the focus that ends the editing of a field: a menu or list that
/// opens over it doesn't, and nothing is taken over or refused any more when the program ends.
[[nodiscard]] bool EndsEditing(const QEvent& event);

}  // namespace zarvo
