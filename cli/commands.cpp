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
#include "model/platform.h"

namespace zarvo {
namespace {

// Ends the command with exit code 2; caught by Run alone.
struct CommandFailure {
  std::string Message;
};

[[noreturn]] void Fail(const std::string& message) { throw CommandFailure{message}; }

// Names and keys come from files: nothing in them may steer the terminal.
void Tell(const std::string& message) {
  constexpr std::size_t kMostLength = 2000;
  const std::string shown = WithoutControls(message);
  std::cerr << "zarvo: " << shown.substr(0, kMostLength)
            << (shown.size() > kMostLength ? "..." : "") << '\n';
}

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

// The bytes of a file, or of standard input where the path is "-".
std::string Read(const std::string& path) {
  std::string bytes;
  Require(path == kStandardStream ? ReadStandardInput(bytes) : ReadFile(path, bytes));
  return bytes;
}

Filter LoadFilter(const CommandOptions& options) {
  const std::string bytes = Read(options.FilterPath);
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
  Require(options.OutputPath == kStandardStream ? WriteStandardOutput(bytes)
                                                : WriteFile(options.OutputPath, bytes));
}

// A filter that is locked and not to be shown is shown to who knows its password.
void RequirePassword(const CommandOptions& options, const Filter& filter,
                     const CodePage& code_page) {
  if (filter.Locked == 0 || filter.ShowInEditorWhenLocked != 0) return;
  std::optional<std::string> typed = options.Password;
  if (!typed) {
    if (filter.PasswordKey.empty()) return;  // no password is set, any would do
    typed = AskPassword("Password of " + WithoutControls(options.FilterPath) + ": ");
  }
  if (!typed) Fail(options.FilterPath + " is locked; give its password with --password");
  const CodePage::Encoded password = code_page.FromUtf8(*typed);
  if (password.Lacking || !filter.CheckPassword(password.Bytes)) {
    Fail("Sorry, the password is incorrect");
  }
}

// A format may have no place for all of a filter, and one that isn't known has none at all.
void WarnOfLoss(const CommandOptions& options, const Filter& filter, const std::string& bytes) {
  Filter stored;
  Archive archive = Archive::Loading(bytes);
  GivenAnswers answers(options);
  if (SerializeFilter(archive, stored, answers, true).Ok() && stored == filter) return;
  Tell(options.OutputPath + ": format version " + std::to_string(filter.FormatVersion) +
       " can't hold all of this filter; the rest is not in the file");
}

template <typename Work>
ExitCode Run(Work work) {
  try {
    return work();
  } catch (const CommandFailure& failure) {
    Tell(failure.Message);
  } catch (const std::bad_alloc&) {
    Tell("there is not enough memory");
  }
  return ExitCode::Failed;
}

}  // namespace

ExitCode ApplyCommand(const CommandOptions& options) {
  return Run([&] {
    if (options.FilterPath == kStandardStream && options.InputPath == kStandardStream) {
      Fail("the filter and the text can't both be standard input");
    }
    const CodePage code_page = FindCodePage(options);
    Filter filter = LoadFilter(options);
    std::string text = Read(options.InputPath);
    ProcessRandom().Seed(options.Seed.value_or(static_cast<std::uint32_t>(std::time(nullptr))));
    MessageCollector host;
    const RunContext context{ProcessEngineState(), ProcessRandom(), host};
    if (const std::size_t width = TerminalWidth(); width > 0) {
      TerminalProgress progress(std::cerr, width);
      // Nothing here cancels a run, so each one completes.
      static_cast<void>(
          ApplyFilter(context, filter, text, &progress.RuleBar, &progress.PositionBar));
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
      WriteOutput(options, "Filter OK." + std::string(kTextFileLineEnd));
      return ExitCode::Done;
    }
    WriteOutput(options, ErrorReport(filter.Name, findings, kTextFileLineEnd));
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
    const std::string json = Read(options.FilterPath);
    Filter filter;
    if (const auto mistake = FilterFromJson(json, code_page, filter)) {
      Fail(options.FilterPath + ": " + mistake->Message());
    }
    const std::string bytes = FilterFileBytes(filter);
    WarnOfLoss(options, filter, bytes);
    WriteOutput(options, bytes);
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
    WarnOfLoss(options, filter, bytes);
    WriteOutput(options, bytes);
    return ExitCode::Done;
  });
}

}  // namespace zarvo
