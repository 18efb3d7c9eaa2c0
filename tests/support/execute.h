// Running a program and catching what it prints.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace zarvo::testing {

struct Execution {
  int ExitCode = -1;  ///< -1 when a signal ended it
  std::string Output;
  std::string Errors;
};

/// Runs the program to its end with these arguments, this standard input, and these variables added
/// to the environment.
Execution Execute(const std::string& program, const std::vector<std::string>& arguments,
                  const std::string& input = {},
                  const std::vector<std::pair<std::string, std::string>>& environment = {});

/// Runs the program on a terminal of its own and types the input there once the output holds
/// type_after. Output is all that the terminal showed, line ends as CR LF; Errors stays empty.
Execution ExecuteOnTerminal(const std::string& program, const std::vector<std::string>& arguments,
                            const std::string& type_after = {}, const std::string& input = {});

}  // namespace zarvo::testing
