// How the program ends when its main window is closed: the process itself, with its exit code and
// the time that it takes to go.
#include <gtest/gtest.h>

#include <chrono>
#include <cstddef>
#include <ostream>
#include <string>

#include "model/filter_file.h"
#include "tests/support/builders.h"
#include "tests/support/execute.h"
#include "tests/support/temporary_folder.h"

namespace zarvo {
namespace {

using testing::Call;
using testing::FilterOf;
using testing::FunctionOf;
using testing::Of;
using testing::Replace;
using testing::Str;

std::string Lines(std::size_t size) {
  std::string text;
  while (text.size() < size) text += "the quick brown fox jumps over the lazy dog, too\r\n";
  text.resize(size);
  return text;
}

// Puts in what it finds, pass after pass.
Filter Endless() {
  Rule rule = Replace(Of({Str("e")}), Of({Call("Same(1)")}));
  rule.Strict = 1;
  return FilterOf({rule}, {}, {FunctionOf("Same", {}, Function::kReturnArgument)});
}

Filter Long() {
  return FilterOf(std::vector<Rule>(40, Replace(Of({testing::NotList("")}), Of({Str("x")}))));
}

struct Case {
  const char* Name;
  Filter (*MakeFilter)();
  std::size_t TextSize;
  int Runs;
  const char* Way;
  int ExitCode;
};

std::ostream& operator<<(std::ostream& stream, const Case& of) { return stream << of.Name; }

class ClosingTest : public ::testing::TestWithParam<Case> {
 protected:
  testing::TemporaryFolder folder_;
};

TEST_P(ClosingTest, EndsTheProcessWithinASecond) {
  const Case& of = GetParam();
  Filter filter = of.MakeFilter();
  const std::string filter_path = folder_.Write("f.zvf", FilterFileBytes(filter));
  const std::string text_path = folder_.Write("text.txt", Lines(of.TextSize));
  const testing::Execution closed = testing::Execute(
      ZARVO_CLOSING_PROGRAM, {filter_path, text_path, std::to_string(of.Runs), of.Way}, {},
      {{"QT_QPA_PLATFORM", "offscreen"}});
  const std::chrono::nanoseconds ended = std::chrono::steady_clock::now().time_since_epoch();
  EXPECT_EQ(closed.ExitCode, of.ExitCode) << closed.Errors;
  ASSERT_FALSE(closed.Output.empty()) << closed.Errors;
  const auto took = ended - std::chrono::nanoseconds(std::stoll(closed.Output));
  EXPECT_LT(took, std::chrono::seconds(1));
  RecordProperty(
      "milliseconds",
      static_cast<int>(std::chrono::duration_cast<std::chrono::milliseconds>(took).count()));
}

constexpr std::size_t kShort = 50;
constexpr std::size_t kLong = 10'000'000;

INSTANTIATE_TEST_SUITE_P(
    All, ClosingTest,
    ::testing::Values(
        Case{"CloseBoxWithoutARun", Endless, kShort, 0, "close-box", 0},
        Case{"ExitButtonWithoutARun", Endless, kShort, 0, "exit-button", 0},
        Case{"CloseBoxWithALongTextAndNoRun", Long, kLong, 0, "close-box", 0},
        Case{"CloseBoxInARuleThatNeverEnds", Endless, kShort, 1, "close-box", 1},
        Case{"ExitButtonInARuleThatNeverEnds", Endless, kShort, 1, "exit-button", 1},
        Case{"EscapeInARuleThatNeverEnds", Endless, kShort, 1, "escape", 1},
        Case{"CloseBoxInARunOverALongText", Long, kLong, 1, "close-box", 1},
        Case{"ExitButtonInARunOverALongText", Long, kLong, 1, "exit-button", 1},
        Case{"CloseBoxInARuleThatNeverEndsOverALongText", Endless, kLong, 1, "close-box", 1},
        Case{"CloseBoxInRunsWithinRuns", Endless, kShort, 3, "close-box", 1},
        Case{"CloseBoxInRunsWithinRunsOverALongText", Long, kLong, 3, "close-box", 1}),
    [](const auto& test) { return test.param.Name; });

}  // namespace
}  // namespace zarvo
