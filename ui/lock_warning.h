// The refusal of a change to a locked filter, shown once until it is armed again.
#pragma once

#include "ui/dialogs.h"

namespace zarvo {

/// One for each window that can refuse a change.
class LockWarning {
 public:
  explicit LockWarning(Dialogs& dialogs) : dialogs_(dialogs) {}

  /// Shows the warning unless it was shown since it was last armed.
  void Warn(QWidget* parent);
  void Rearm() { shown_ = false; }

 private:
  Dialogs& dialogs_;
  bool shown_ = false;
};

}  // namespace zarvo
