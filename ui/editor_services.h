// What every editor needs of the program around it.
#pragma once

#include <functional>

#include "app/services/subpattern_library.h"
#include "ui/dialogs.h"

namespace zarvo {

/// The references must outlive the windows that hold a copy.
struct EditorServices {
  zarvo::Dialogs& Dialogs;
  SubpatternLibrary& Library;
  /// Shows the program's help at a context number.
  std::function<void(int context)> ShowHelp;
};

}  // namespace zarvo
