// Reading and writing whole files, and the only place that writes one.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace zarvo {

/// What went wrong with a file.
struct FileError {
  std::string Path;
  std::string Step;    ///< what was being done, such as "open"
  std::string Reason;  ///< the system's words

  /// "PATH: can't STEP: REASON".
  [[nodiscard]] std::string Message() const { return Path + ": can't " + Step + ": " + Reason; }
};

/// Nothing when all went well.
using FileResult = std::optional<FileError>;

/// Reads all of a file into bytes. After an error bytes holds what was read before it.
[[nodiscard]] FileResult ReadFile(const std::string& path, std::string& bytes);

/// Reads all of the standard input.
[[nodiscard]] FileResult ReadStandardInput(std::string& bytes);

/// Writes to the standard output, past any buffer of the language's streams.
[[nodiscard]] FileResult WriteStandardOutput(std::string_view bytes);

/// Writes a file so that its path holds the whole old or the whole new contents at every moment,
/// also across a loss of power: into a temporary file beside it, synchronised, then renamed over
/// it. A symbolic link stays one, an existing file keeps its permissions, and a file that may not
/// be written is refused though its folder would allow it. Where the folder lets no
/// new file take its place but the file itself can be written, it is written in place, and gets its
/// old contents back after an error.
/// Something other than a file, such as a terminal or a pipe, is simply written to, and so is a
/// name of one of the program's own descriptors, such as "/dev/stdout". Other names of the old file
/// (hard links) keep the old contents.
///
/// After an error the old file is whole and no temporary file is left. The one exception: when
/// only the folder can't be synchronised, the new file stands in its place already.
[[nodiscard]] FileResult WriteFile(const std::string& path, std::string_view bytes);

}  // namespace zarvo
