// Where the program's own files are: by the one setting of the machine, and for each user.
#pragma once

#include <QString>

namespace zarvo {

/// The installation folder: the value "Path" of the machine-wide setting with the platform's
/// separator behind it, so that names of files are simply appended. A missing or empty value means
/// the current folder.
[[nodiscard]] QString InstallationFolder();

/// The folder of the user's own copies of files, with the platform's separator behind it. It need
/// not exist.
[[nodiscard]] QString UserDataFolder();

}  // namespace zarvo
