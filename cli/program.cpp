#include "cli/program.h"

#include <CLI/CLI.hpp>
#include <iostream>

#include "cli/commands.h"
#include "cli/listing.h"

namespace zarvo {
namespace {

constexpr const char* kDescription =
    "zarvo - applies, checks, shows, builds and converts Zarvo filters.\n"
    "\n"
    "Data goes to standard output, messages to standard error.\n"
    "Exit code: 0 done; 1 the check found something; 2 wrong usage, or a file that\n"
    "can't be read or written (no output file is changed then). A file named \"-\" is\n"
    "standard input or output; write \"./-\" for a file of that name.\n";

constexpr const char* kExamples =
    "\nExamples:\n"
    "  zarvo apply quotes.zvf letter.txt -o letter-typeset.txt\n"
    "  zarvo apply quotes.zvf < letter.txt > letter-typeset.txt\n"
    "  zarvo show quotes.zvf --json > quotes.json\n"
    "  zarvo build quotes.json -o quotes.zvf\n"
    "\n"
    "'zarvo COMMAND --help' tells more of each command.\n";

// What is wrong with the seed; the option's own conversion would take octal and empty ones.
std::string WhatIsNoSeed(const std::string& text) {
  const bool is_decimal =
      !text.empty() && text.find_first_not_of("0123456789") == std::string::npos;
  const bool has_octal_look = text.size() > 1 && text.front() == '0';
  return is_decimal && !has_octal_look ? "" : "a whole number from 0 to 4294967295 is expected";
}

std::string WhatIsNoPath(const std::string& text) {
  return text.empty() ? "the path is empty" : "";
}

class CommandLine {
 public:
  CommandLine() : app_(kDescription, "zarvo") {
    app_.require_subcommand(1);
    app_.set_help_flag("-h,--help", "Print this help and exit");
    app_.set_version_flag("--version", "zarvo 1.3 revision 4");
    app_.footer(kExamples);
    AddApply();
    AddCheck();
    AddShow();
    AddBuild();
    AddConvert();
  }

  int Run(int argc, char** argv) {
    try {
      app_.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
      const bool is_command = argc > 1 && argv[1][0] != '-';
      if (is_command && app_.get_subcommands().empty()) {
        std::cerr << "There is no command \"" << WithoutControls(argv[1]) << "\".\n";
      }
      // Help and the version come as an "error" of code 0.
      return app_.exit(error) == 0 ? static_cast<int>(ExitCode::Done)
                                   : static_cast<int>(ExitCode::Failed);
    }
    return static_cast<int>(command_(options_));
  }

 private:
  CLI::App* Add(const char* name, const char* description,
                ExitCode (*command)(const CommandOptions&)) {
    CLI::App* added = app_.add_subcommand(name, description);
    added->callback([this, command] { command_ = command; });
    return added;
  }

  void AddFilter(CLI::App* command) {
    AddPath(command, "FILTER", options_.FilterPath, "The filter file (.zvf)")->required();
    command
        ->add_flag("--allow-newer", options_.AllowNewer,
                   "Try to read a filter of a newer format; without this it is refused")
        ->disable_flag_override();
  }

  void AddCodePage(CLI::App* command, const std::string& what) {
    command
        ->add_option("--code-page", options_.CodePageName, "The single-byte code page of " + what)
        ->type_name("NAME")
        ->capture_default_str();
  }

  // A forgotten or empty variable of a shell is no path.
  static CLI::Option* AddPath(CLI::App* command, const std::string& name, std::string& path,
                              const std::string& what) {
    return command->add_option(name, path, what)
        ->type_name("FILE")
        ->check(CLI::Validator(WhatIsNoPath, ""));
  }

  CLI::Option* AddOutput(CLI::App* command, const std::string& what) {
    return AddPath(command, "-o,--output", options_.OutputPath, what);
  }

  void AddApply() {
    CLI::App* command = Add("apply", "Apply a filter to a text", ApplyCommand);
    AddFilter(command);
    AddPath(command, "INPUT", options_.InputPath,
            "The text, taken as bytes; without this: standard input");
    AddOutput(command, "Where the result goes; without this: standard output");
    command
        ->add_option("--seed", options_.Seed,
                     "Start the random generator here, for a result that can be had again")
        ->type_name("N")
        ->check(CLI::Validator(WhatIsNoSeed, ""));
    AddCodePage(command, "texts in messages");
    command->footer(
        "\nEach distinct message of the engine is printed once, with how often it came.\n"
        "A strict rule whose matches never end keeps the program running; stop it with\n"
        "Ctrl+C, and no output file is changed.\n");
  }

  void AddCheck() {
    CLI::App* command =
        Add("check", "Look for references to sets and functions that don't exist", CheckCommand);
    AddFilter(command);
    command->footer(
        "\nPrints \"Filter OK.\" and ends with 0, or prints the error report and ends "
        "with 1.\n");
  }

  void AddShow() {
    CLI::App* command = Add("show", "Show what a filter holds", ShowCommand);
    AddFilter(command);
    command->add_flag("--json", options_.Json, "All of the filter, as JSON that 'build' reads")
        ->disable_flag_override();
    command
        ->add_option("--password", options_.Password,
                     "The password of a filter that is locked and not to be shown; asked for on "
                     "the terminal when not given")
        ->type_name("TEXT");
    AddCodePage(command, "the filter's texts");
  }

  void AddBuild() {
    CLI::App* command = Add("build", "Make a filter file from JSON", BuildCommand);
    AddPath(command, "FILTER.json", options_.FilterPath, "The JSON file, in UTF-8")->required();
    AddOutput(command, "The filter file to write")->required();
    AddCodePage(command, "the filter's texts");
    command->footer(
        "\nThe keys are those that 'zarvo show --json' prints; keys left out take their\n"
        "defaults. The filter is written as it stands: its version is not raised. As at any\n"
        "save, a MostSignificant of -1 is chosen, and what the format version has no place\n"
        "for is not written (a message says so).\n");
  }

  void AddConvert() {
    CLI::App* command = Add("convert", "Load a filter and save it", ConvertCommand);
    AddFilter(command);
    AddOutput(command, "The filter file to write")->required();
    auto* format = command->add_option_group("format", "Which format to save in");
    format->add_flag("--newest", options_.SaveInNewestFormat, "The newest format, 6")
        ->disable_flag_override();
    format->add_flag("--keep-format", keep_format_, "The format that the filter has")
        ->disable_flag_override();
    format->require_option(1);
    command->footer(
        "\nA filter that is set to raise its version at every save does so here too.\n");
  }

  CLI::App app_;
  CommandOptions options_;
  bool keep_format_ = false;  // the other answer: nothing more follows from it
  ExitCode (*command_)(const CommandOptions&) = nullptr;
};

}  // namespace

int RunProgram(int argc, char** argv) { return CommandLine().Run(argc, argv); }

}  // namespace zarvo
