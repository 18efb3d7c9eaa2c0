#include <termios.h>
#include <unistd.h>

#include <iostream>

#include "cli/terminal.h"

namespace zarvo {

std::optional<std::string> AskPassword(const std::string& prompt) {
  termios shown{};
  if (::isatty(STDIN_FILENO) == 0 || ::tcgetattr(STDIN_FILENO, &shown) != 0) return {};
  termios hidden = shown;
  hidden.c_lflag &= ~static_cast<tcflag_t>(ECHO);
  std::cerr << prompt << std::flush;
  ::tcsetattr(STDIN_FILENO, TCSAFLUSH, &hidden);
  std::string password;
  const bool read = static_cast<bool>(std::getline(std::cin, password));
  ::tcsetattr(STDIN_FILENO, TCSAFLUSH, &shown);
  std::cerr << '\n';
  if (!read) return {};
  return password;
}

bool StandardErrorIsTerminal() { return ::isatty(STDERR_FILENO) != 0; }

}  // namespace zarvo
