// What the main window asks of the editors of Rules, Functions and Sets.
#pragma once

class QWidget;

namespace zarvo {

/// An editor is made once, hidden, and only shown, filled anew and hidden again.
class ObjectEditor {
 public:
  virtual ~ObjectEditor() = default;
  [[nodiscard]] virtual QWidget& Window() = 0;
  /// Fills the controls anew and keeps the selected position.
  virtual void Refresh() = 0;
  /// Fills the controls anew for another document and selects the first object.
  virtual void Reset() = 0;
  virtual void SetLocked(bool locked) = 0;
  virtual void RearmLockWarning() = 0;
};

}  // namespace zarvo
