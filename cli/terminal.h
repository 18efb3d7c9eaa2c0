// The terminal that the program may have: a password prompt and a progress bar.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace zarvo {

/// Asks for a password on the terminal without showing it. Nothing when the standard input is no
/// terminal, or ends.
[[nodiscard]] std::optional<std::string> AskPassword(const std::string& prompt);

/// The columns of the terminal that standard error is; 0 when it is none, or one on which nothing
/// can be drawn over.
[[nodiscard]] std::size_t TerminalWidth();

}  // namespace zarvo
