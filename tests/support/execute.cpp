#include "tests/support/execute.h"

#include <fcntl.h>
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

}  // namespace

Execution Execute(const std::string& program, const std::vector<std::string>& arguments,
                  const std::string& input,
                  const std::vector<std::pair<std::string, std::string>>& environment) {
  const TemporaryFolder folder;
  folder.Write("in", input);
  folder.Write("out", "");
  folder.Write("err", "");
  std::vector<char*> argv;
  argv.push_back(const_cast<char*>(program.c_str()));
  for (const std::string& argument : arguments) argv.push_back(const_cast<char*>(argument.c_str()));
  argv.push_back(nullptr);
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
  int status = 0;
  if (::waitpid(child, &status, 0) != child) throw std::runtime_error("lost a process");
  Execution execution;
  if (WIFEXITED(status)) execution.ExitCode = WEXITSTATUS(status);
  execution.Output = folder.Read("out");
  execution.Errors = folder.Read("err");
  return execution;
}

}  // namespace zarvo::testing
