// The binary filter file, format versions 1 to 6. docs/filter-format.md describes every byte.
#pragma once

#include <cstdint>
#include <string>

#include "model/archive.h"
#include "model/filter.h"

namespace zarvo {

/// Asks what to do when the versions of a filter and of this program differ. Each call is one
/// question with the answers yes (true) and no; the texts are those of the functions below.
class VersionQuestions {
 public:
  virtual ~VersionQuestions() = default;
  /// Asked on storing a filter whose format is not the newest. Yes raises it to the newest.
  virtual bool SaveInNewestFormat(std::int32_t own_version) = 0;
  /// Asked on loading a file of a newer format. Yes reads it as if it had the newest.
  virtual bool LoadNewerFormat(std::int32_t file_version) = 0;
};

/// The wording of SaveInNewestFormat and LoadNewerFormat.
[[nodiscard]] std::string SaveInNewestFormatText(std::int32_t own_version);
[[nodiscard]] std::string LoadNewerFormatText(std::int32_t file_version);

/// Stores the filter in the archive or loads it from there, as the archive's direction is.
///
/// Storing raises Version when AutoIncrement is set (and leaves it raised), asks when FormatVersion
/// is not the newest, then writes the layout of FormatVersion; of a version that this build doesn't
/// know, the magic and the number alone. It always succeeds.
///
/// Loading replaces the filter's fields as they are read, so after a failure the filter holds what
/// came before it. A newer format is refused without a question unless allow_newer. A FormatVersion
/// of 0 or less ends the load there, successfully, with all else left as it was.
ArchiveResult SerializeFilter(Archive& archive, Filter& filter, VersionQuestions& questions,
                              bool allow_newer);

/// The bytes of a filter file in the filter's own FormatVersion: neither raises Version nor asks.
[[nodiscard]] std::string FilterFileBytes(Filter& filter);

}  // namespace zarvo
