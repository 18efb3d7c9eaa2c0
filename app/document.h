// The document of the program: the one filter, its path, and whether it is saved.
#pragma once

#include <QString>
#include <string>

#include "model/archive.h"
#include "model/file_io.h"
#include "model/filter.h"
#include "model/filter_file.h"

namespace zarvo {

/// Lives as long as the program; its filter is replaced in place, so windows may refer to it.
struct Document {
  zarvo::Filter Filter;
  /// Empty while the document has no file.
  QString Path;
  /// False while there are changes that no file has. Every window that changes the filter clears
  /// it.
  bool Saved = true;

  enum class Result { Done, Failed, Declined };

  /// Reads the file at Path into the filter. Declined: the user said no to a newer format. After
  /// anything but Done the filter holds what was read.
  [[nodiscard]] Result Load(VersionQuestions& questions);

  /// Writes the filter to Path.
  [[nodiscard]] Result Save(VersionQuestions& questions);
};

}  // namespace zarvo
