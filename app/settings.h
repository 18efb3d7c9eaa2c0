// The one setting of the machine: where the program's own files are.
#pragma once

#include <QString>

namespace zarvo {

/// The installation folder: the value "Path" of the machine-wide setting with the platform's
/// separator behind it, so that names of files are simply appended. A missing or empty value means
/// the current folder.
[[nodiscard]] QString InstallationFolder();

}  // namespace zarvo
