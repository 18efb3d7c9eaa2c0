// The terminal that the program may have: a password prompt and a progress bar.
#pragma once

#include <optional>
#include <string>

namespace zarvo {

/// Asks for a password on the terminal without showing it. Nothing when the standard input is no
/// terminal, or ends.
[[nodiscard]] std::optional<std::string> AskPassword(const std::string& prompt);

[[nodiscard]] bool StandardErrorIsTerminal();

}  // namespace zarvo
