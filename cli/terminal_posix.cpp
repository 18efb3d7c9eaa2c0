#include <signal.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <cstdlib>
#include <iostream>
#include <string_view>

#include "cli/terminal.h"

namespace zarvo {
namespace {

termios shown_settings{};

// Ends the program as the signal would have, but not with a terminal that shows nothing.
void ShowAgainAndEnd(int signal_number) {
  ::tcsetattr(STDIN_FILENO, TCSAFLUSH, &shown_settings);
  ::signal(signal_number, SIG_DFL);
  ::raise(signal_number);
}

}  // namespace

std::optional<std::string> AskPassword(const std::string& prompt) {
  if (::isatty(STDIN_FILENO) == 0 || ::tcgetattr(STDIN_FILENO, &shown_settings) != 0) return {};
  const auto on_interrupt = ::signal(SIGINT, ShowAgainAndEnd);
  const auto on_end = ::signal(SIGTERM, ShowAgainAndEnd);
  // Put aside and taken up again, the program would find the shell's settings, which show all.
  const auto on_stop = ::signal(SIGTSTP, SIG_IGN);
  termios hidden = shown_settings;
  hidden.c_lflag &= ~static_cast<tcflag_t>(ECHO);
  // Hidden before the prompt: what is typed as soon as that stands must neither show nor be lost.
  ::tcsetattr(STDIN_FILENO, TCSAFLUSH, &hidden);
  std::cerr << prompt << std::flush;
  std::string password;
  const bool read = static_cast<bool>(std::getline(std::cin, password));
  ::tcsetattr(STDIN_FILENO, TCSAFLUSH, &shown_settings);
  ::signal(SIGINT, on_interrupt);
  ::signal(SIGTERM, on_end);
  ::signal(SIGTSTP, on_stop);
  std::cerr << '\n';
  if (!read) return {};
  return password;
}

std::size_t TerminalWidth() {
  const char* const kind = std::getenv("TERM");
  if (::isatty(STDERR_FILENO) == 0 || (kind != nullptr && std::string_view(kind) == "dumb"))
    return 0;
  winsize size{};
  constexpr std::size_t kUsualWidth = 80;
  const bool known = ::ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
  return known ? size.ws_col : kUsualWidth;
}

}  // namespace zarvo
