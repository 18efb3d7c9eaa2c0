// The caption of the main window.
#pragma once

#include <QString>

namespace zarvo {

/// The file's name and the program's: "f.zvf - Zarvo Composer" for "/dir/f.zvf", and "Untitled - "
/// for the empty path. Of a path without any separator the first character is missing: users and
/// other programs know the caption so.
[[nodiscard]] QString CaptionForPath(const QString& path);

}  // namespace zarvo
