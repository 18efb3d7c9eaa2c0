// The command line of the program zarvo.
#pragma once

namespace zarvo {

/// Runs the command that the arguments name; returns the exit code of the process: 0 done, 1
/// findings, 2 wrong usage or a file that can't be read or written.
[[nodiscard]] int RunProgram(int argc, char** argv);

}  // namespace zarvo
