// The commands of the program zarvo, behind its command line.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace zarvo {

/// What the program ends with.
enum class ExitCode {
  Done = 0,
  Findings = 1,  ///< the check found something
  Failed = 2,    ///< wrong usage, or a file that can't be read or written
};

/// As a path: standard input or standard output.
inline constexpr const char* kStandardStream = "-";

/// What may stand on the command line; each command uses its part. Texts are as typed, in UTF-8.
struct CommandOptions {
  std::string FilterPath;
  std::string InputPath = kStandardStream;
  std::string OutputPath = kStandardStream;
  std::optional<std::uint32_t> Seed;
  std::optional<std::string> Password;
  bool Json = false;
  bool SaveInNewestFormat = false;
  bool AllowNewer = false;
  std::string CodePageName = "windows-1252";
};

// Each reads and writes whole files or standard streams, says on standard error what is wrong, and
// returns what the program ends with. Nothing is written before all that was read is found good.
[[nodiscard]] ExitCode ApplyCommand(const CommandOptions& options);
[[nodiscard]] ExitCode CheckCommand(const CommandOptions& options);
[[nodiscard]] ExitCode ShowCommand(const CommandOptions& options);
[[nodiscard]] ExitCode BuildCommand(const CommandOptions& options);
[[nodiscard]] ExitCode ConvertCommand(const CommandOptions& options);

}  // namespace zarvo
