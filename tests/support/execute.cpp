#include "tests/support/execute.h"

#include <fcntl.h>
#include <pty.h>
#include <stdlib.h>
#include <sys/wait.h>
#include <unistd.h>

#include <stdexcept>

#include "tests/support/temporary_folder.h"

namespace zarvo::testing {
namespace {

void Redirect(const std::string& path, int flags, int to) {
  const int descriptor = ::open(path.c_str(), flags, 0600);
  if (descriptor < 0 || ::dup2(descriptor, to) < 0) ::_exit(126);
  ::close(descriptor);
}

// Pointers into the strings, which must outlive it.
std::vector<char*> ArgumentVector(const std::string& program,
                                  const std::vector<std::string>& arguments) {
  std::vector<char*> vector;
  vector.push_back(const_cast<char*>(program.c_str()));
  for (const std::string& argument : arguments)
    vector.push_back(const_cast<char*>(argument.c_str()));
  vector.push_back(nullptr);
  return vector;
}

int WaitFor(pid_t child) {
  int status = 0;
  if (::waitpid(child, &status, 0) != child) throw std::runtime_error("lost a process");
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

}  // namespace

Execution Execute(const std::string& program, const std::vector<std::string>& arguments,
                  const std::string& input,
                  const std::vector<std::pair<std::string, std::string>>& environment) {
  const TemporaryFolder folder;
  folder.Write("in", input);
  folder.Write("out", "");
  folder.Write("err", "");
  std::vector<char*> argv = ArgumentVector(program, arguments);
  const pid_t child = ::fork();
  if (child < 0) throw std::runtime_error("can't start a process");
  if (child == 0) {
    Redirect(folder.File("in"), O_RDONLY, STDIN_FILENO);
    Redirect(folder.File("out"), O_WRONLY, STDOUT_FILENO);
    Redirect(folder.File("err"), O_WRONLY, STDERR_FILENO);
    for (const auto& [name, value] : environment) ::setenv(name.c_str(), value.c_str(), 1);
    ::execv(program.c_str(), argv.data());
    ::_exit(127);
  }
  Execution execution;
  execution.ExitCode = WaitFor(child);
  execution.Output = folder.Read("out");
  execution.Errors = folder.Read("err");
  return execution;
}

Execution ExecuteOnTerminal(const std::string& program, const std::vector<std::string>& arguments,
                            const std::string& type_after, const std::string& input) {
  std::vector<char*> argv = ArgumentVector(program, arguments);
  int terminal = -1;
  winsize size{};
  size.ws_col = 60;
  size.ws_row = 20;
  const pid_t child = ::forkpty(&terminal, nullptr, nullptr, &size);
  if (child < 0) throw std::runtime_error("can't start a process on a terminal");
  if (child == 0) {
    ::setenv("TERM", "xterm", 1);
    ::execv(program.c_str(), argv.data());
    ::_exit(127);
  }
  Execution execution;
  bool typed = input.empty();
  char buffer[4096];
  ssize_t got = 0;
  // The terminal reports an error when the program that it belongs to has ended.
  while ((got = ::read(terminal, buffer, sizeof buffer)) > 0) {
    execution.Output.append(buffer, static_cast<std::size_t>(got));
    if (typed || execution.Output.find(type_after) == std::string::npos) continue;
    typed = ::write(terminal, input.data(), input.size()) > 0;
  }
  execution.ExitCode = WaitFor(child);
  ::close(terminal);
  return execution;
}

}  // namespace zarvo::testing
