#include "cli/commands.h"

#include <ctime>
#include <iostream>

#include "app/services/integrity_check.h"
#include "cli/filter_json.h"
#include "cli/listing.h"
#include "cli/run_report.h"
#include "cli/terminal.h"
#include "engine/apply_filter.h"
#include "model/code_page.h"
#include "model/file_io.h"
#include "model/filter_file.h"

namespace zarvo {
namespace {

#ifdef _WIN32
constexpr std::string_view kLineEnd = "\r\n";
#else
constexpr std::string_view kLineEnd = "\n";
#endif

// Ends the command with exit code 2; caught by Run alone.
struct CommandFailure {
  std::string Message;
};

[[noreturn]] void Fail(const std::string& message) { throw CommandFailure{message}; }

void Require(const FileResult& result) {
  if (result) Fail(result->Message());
}

// The version questions with the answers that the command line gave ahead.
class GivenAnswers : public VersionQuestions {
 public:
  explicit GivenAnswers(const CommandOptions& options) : options_(options) {}
  bool SaveInNewestFormat(std::int32_t /*own_version*/) override {
    return options_.SaveInNewestFormat;
  }
  bool LoadNewerFormat(std::int32_t /*file_version*/) override { return options_.AllowNewer; }

 private:
  const CommandOptions& options_;
};

CodePage FindCodePage(const CommandOptions& options) {
  std::optional<CodePage> page = CodePage::Find(options.CodePageName);
  if (!page) Fail("\"" + options.CodePageName + "\" is not the name of a single-byte code page");
  return *page;
}

Filter LoadFilter(const CommandOptions& options) {
  std::string bytes;
  Require(ReadFile(options.FilterPath, bytes));
  Filter filter;
  Archive archive = Archive::Loading(bytes);
  GivenAnswers answers(options);
  const ArchiveResult result = SerializeFilter(archive, filter, answers, options.AllowNewer);
  if (!result.Ok()) {
    const bool is_refused = result.Code == ArchiveCode::NewerFormatRefused;
    Fail(options.FilterPath + ": " + result.Message() +
         (is_refused ? "; --allow-newer tries to read it" : ""));
  }
  return filter;
}

void WriteOutput(const CommandOptions& options, std::string_view bytes) {
  Require(options.OutputPath.empty() ? WriteStandardOutput(bytes)
                                     : WriteFile(options.OutputPath, bytes));
}

std::string ReadInput(const CommandOptions& options) {
  std::string bytes;
  const bool is_standard = options.InputPath.empty() || options.InputPath == "-";
  Require(is_standard ? ReadStandardInput(bytes) : ReadFile(options.InputPath, bytes));
  return bytes;
}

// A filter that is locked and not to be shown is shown to who knows its password.
void RequirePassword(const CommandOptions& options, const Filter& filter,
                     const CodePage& code_page) {
  if (filter.Locked == 0 || filter.ShowInEditorWhenLocked != 0) return;
  std::optional<std::string> typed = options.Password;
  if (!typed) {
    if (filter.PasswordKey.empty()) return;  // no password is set, any would do
    typed = AskPassword("Password of " + options.FilterPath + ": ");
  }
  if (!typed) Fail(options.FilterPath + " is locked; give its password with --password");
  const CodePage::Encoded password = code_page.FromUtf8(*typed);
  if (password.Lacking || !filter.CheckPassword(password.Bytes)) {
    Fail("Sorry, the password is incorrect");
  }
}

template <typename Work>
ExitCode Run(Work work) {
  try {
    return work();
  } catch (const CommandFailure& failure) {
    std::cerr << "zarvo: " << failure.Message << '\n';
  } catch (const std::bad_alloc&) {
    std::cerr << "zarvo: there is not enough memory\n";
  }
  return ExitCode::Failed;
}

}  // namespace

ExitCode ApplyCommand(const CommandOptions& options) {
  return Run([&] {
    const CodePage code_page = FindCodePage(options);
    Filter filter = LoadFilter(options);
    std::string text = ReadInput(options);
    ProcessRandom().Seed(options.Seed.value_or(static_cast<std::uint32_t>(std::time(nullptr))));
    MessageCollector host;
    const RunContext context{ProcessEngineState(), ProcessRandom(), host};
    if (StandardErrorIsTerminal()) {
      TerminalProgress progress(std::cerr);
      // Nothing here cancels a run, so each one completes.
      static_cast<void>(
          ApplyFilter(context, filter, text, &progress.RuleBar, &progress.PositionBar));
      progress.Clear();
    } else {
      static_cast<void>(ApplyFilter(context, filter, text, nullptr, nullptr));
    }
    host.Report(std::cerr, code_page);
    WriteOutput(options, text);
    return ExitCode::Done;
  });
}

ExitCode CheckCommand(const CommandOptions& options) {
  return Run([&] {
    const Filter filter = LoadFilter(options);
    const std::vector<std::string> findings = CollectFindings(filter);
    if (findings.empty()) {
      WriteOutput(options, "Filter OK." + std::string(kLineEnd));
      return ExitCode::Done;
    }
    WriteOutput(options, ErrorReport(filter.Name, findings, kLineEnd));
    return ExitCode::Findings;
  });
}

ExitCode ShowCommand(const CommandOptions& options) {
  return Run([&] {
    const CodePage code_page = FindCodePage(options);
    const Filter filter = LoadFilter(options);
    RequirePassword(options, filter, code_page);
    WriteOutput(options,
                options.Json ? FilterToJson(filter, code_page) : FilterListing(filter, code_page));
    return ExitCode::Done;
  });
}

ExitCode BuildCommand(const CommandOptions& options) {
  return Run([&] {
    const CodePage code_page = FindCodePage(options);
    std::string json;
    Require(ReadFile(options.FilterPath, json));
    Filter filter;
    const std::string mistake = FilterFromJson(json, code_page, filter);
    if (!mistake.empty()) Fail(options.FilterPath + ": " + mistake);
    WriteOutput(options, FilterFileBytes(filter));
    return ExitCode::Done;
  });
}

ExitCode ConvertCommand(const CommandOptions& options) {
  return Run([&] {
    Filter filter = LoadFilter(options);
    std::string bytes;
    Archive archive = Archive::Storing(bytes);
    GivenAnswers answers(options);
    const ArchiveResult result = SerializeFilter(archive, filter, answers, false);
    if (!result.Ok()) Fail(options.OutputPath + ": " + result.Message());
    WriteOutput(options, bytes);
    return ExitCode::Done;
  });
}

}  // namespace zarvo
