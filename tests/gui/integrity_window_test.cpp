// The Integrity check as the main window runs it. What it finds is tested with the service.
#include <sys/resource.h>

#include <QDir>
#include <csignal>
#include <filesystem>

#include "tests/gui/main_window_fixture.h"
#include "tests/support/builders.h"
#include "tests/support/execute.h"

namespace zarvo {
namespace {

namespace fs = std::filesystem;
using testing::Call;
using testing::Of;
using testing::Str;

constexpr const char* kQuestion =
    "Some incorrect/unmatched references to sets/functions were found. Would you like to save the "
    "error report to the file \"report.txt\" (existing file will be overwritten)?";

// Each test has a current folder of its own.
class IntegrityWindowTest : public testing::MainWindowFixture {
 protected:
  IntegrityWindowTest() {
    LeaveField();
    fs::current_path(current_.Path());
  }
  ~IntegrityWindowTest() override { fs::current_path(before_); }

  // The document with the findings of the report that Report() gives.
  static zarvo::Filter Broken() {
    zarvo::Rule rule = testing::Replace(Of({Str("a")}, 0), Of({Call("f(1)"), Call("g")}));
    rule.Name = "R1";
    zarvo::Rule drawing =
        testing::FromSet(Of({Str("a")}, 0), ReplacementSource::SetAtRandom, "lost\xFF");
    drawing.Name = "R2 & <b>";
    zarvo::Filter filter = testing::FilterOf(
        {rule, drawing}, {testing::SetOf("S", {Of({Str("x")}), Of({Call("h(1)")})})});
    filter.Name = "Demo";
    return filter;
  }
  static std::string Report() {
    return "Error report for filter \"Demo\"\n"
           "\n"
           "Rule \"R1\":\n"
           "missing referenced functions:\n"
           "\tf\n"
           "\tg\n"
           "\n"
           "Rule \"R2 & <b>\":\n"
           "missing referenced sets:\n"
           "\tlost\xFF\n"
           "\n"
           "Set \"S\":\n"
           "missing referenced functions:\n"
           "\th\n"
           "\n";
  }
  void LoadBroken() { window_->LoadDocument(WriteFilter("broken.zvf", Broken())); }

  QString ReportPath() { return QString::fromStdString(current_.File("report.txt")); }
  void ExpectOk() {
    dialogs_.ExpectMessage(MessageIcon::Information, "Filter OK.", MessageButtons::Ok, Answer::Ok);
  }
  void ExpectQuestion(Answer answer) {
    dialogs_.ExpectMessage(MessageIcon::Question, kQuestion, MessageButtons::YesNo, answer);
  }
  void Check() {
    ClickOn("checkButton");
    EXPECT_TRUE(dialogs_.IsDone());
  }

  testing::TemporaryFolder current_;

 private:
  fs::path before_ = fs::current_path();
};

TEST_F(IntegrityWindowTest, NewFilterIsOk) {
  ExpectOk();
  Check();
  EXPECT_EQ(current_.Count(), 0U);
  EXPECT_TRUE(Doc().Saved);
}

TEST_F(IntegrityWindowTest, ResolvedReferencesAreOk) {
  TheFilter() = Broken();
  for (const char* name : {"f", "g", "h"}) {
    TheFilter().Functions.Append(testing::FunctionOf(name, {}));
  }
  TheFilter().Sets.Append(testing::SetOf("lost\xFF", {}));
  ExpectOk();
  Check();
}

TEST_F(IntegrityWindowTest, AnsweredNoWritesNothing) {
  LoadBroken();
  current_.Write("report.txt", "old");
  ExpectQuestion(Answer::No);
  Check();
  EXPECT_EQ(current_.Read("report.txt"), "old");
  EXPECT_EQ(current_.Count(), 1U);
}

TEST_F(IntegrityWindowTest, AnsweredYesWritesTheReportIntoTheCurrentFolderAndOpensIt) {
  LoadBroken();
  ExpectQuestion(Answer::Yes);
  dialogs_.ExpectOpenWithProgram(ReportPath(), true);
  Check();
  EXPECT_EQ(current_.Read("report.txt"), Report());
  EXPECT_EQ(current_.Count(), 1U);
  EXPECT_FALSE(fs::exists(folder_.File("report.txt"))) << "not in the installation folder";
}

TEST_F(IntegrityWindowTest, OlderReportIsOverwritten) {
  LoadBroken();
  current_.Write("report.txt", std::string(100'000, 'x'));
  ExpectQuestion(Answer::Yes);
  dialogs_.ExpectOpenWithProgram(ReportPath(), true);
  Check();
  EXPECT_EQ(current_.Read("report.txt"), Report());
}

TEST_F(IntegrityWindowTest, ReportIsThatOfTheCommandLineByteForByte) {
  LoadBroken();
  ExpectQuestion(Answer::Yes);
  dialogs_.ExpectOpenWithProgram(ReportPath(), true);
  Check();
  const testing::Execution run =
      testing::Execute(ZARVO_PROGRAM, {"check", folder_.File("broken.zvf")});
  EXPECT_EQ(run.ExitCode, 1);
  EXPECT_EQ(run.Output, current_.Read("report.txt"));
}

TEST_F(IntegrityWindowTest, UnsavedNameStandsInTheReport) {
  LoadBroken();
  Type("nameEdit", "new name");
  ExpectQuestion(Answer::Yes);
  dialogs_.ExpectOpenWithProgram(ReportPath(), true);
  Check();
  EXPECT_TRUE(current_.Read("report.txt").starts_with("Error report for filter \"new name\"\n"));
  EXPECT_FALSE(Doc().Saved);
}

TEST_F(IntegrityWindowTest, ChangesNothingInTheFilter) {
  LoadBroken();
  const zarvo::Filter loaded = TheFilter();
  ExpectQuestion(Answer::Yes);
  dialogs_.ExpectOpenWithProgram(ReportPath(), true);
  Check();
  EXPECT_EQ(TheFilter(), loaded);
  EXPECT_TRUE(Doc().Saved);
  EXPECT_EQ(Doc().Path, PathOf("broken.zvf"));
}

TEST_F(IntegrityWindowTest, RunsOnALockedFilterHiddenOrNot) {
  for (const bool show_in_editor : {true, false}) {
    LoadBroken();
    LockFilter(show_in_editor);
    ExpectQuestion(Answer::Yes);
    dialogs_.ExpectOpenWithProgram(ReportPath(), true);
    Check();
    EXPECT_EQ(current_.Read("report.txt"), Report());
  }
}

TEST_F(IntegrityWindowTest, WithoutAProgramTheUserIsToldWhereTheReportIs) {
  LoadBroken();
  ExpectQuestion(Answer::Yes);
  dialogs_.ExpectOpenWithProgram(ReportPath(), false);
  ExpectExclamation("No program can be started to show the file " + ReportPath().toStdString());
  Check();
  EXPECT_EQ(current_.Read("report.txt"), Report());
}

// ---- A report that can't be written is never taken for one that was

TEST_F(IntegrityWindowTest, FolderOfThatNameIsReportedAndNothingIsOpened) {
  LoadBroken();
  fs::create_directory(current_.File("report.txt"));
  ExpectQuestion(Answer::Yes);
  ExpectExclamation("Error saving file " + ReportPath().toStdString());
  Check();
  EXPECT_TRUE(fs::is_empty(current_.File("report.txt")));
}

TEST_F(IntegrityWindowTest, FullDiskIsReportedAndTheOlderReportStaysWhole) {
  LoadBroken();
  current_.Write("report.txt", "old");
  ExpectQuestion(Answer::Yes);
  ExpectExclamation("Error saving file " + ReportPath().toStdString());
  // No file may grow longer than some bytes, so that the write fails on its way.
  const auto ignored = std::signal(SIGXFSZ, SIG_IGN);
  rlimit unlimited;
  ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &unlimited), 0);
  rlimit limited = unlimited;
  limited.rlim_cur = 40;
  ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limited), 0);
  Check();
  ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &unlimited), 0);
  std::signal(SIGXFSZ, ignored);
  EXPECT_EQ(current_.Read("report.txt"), "old");
  EXPECT_EQ(current_.Count(), 1U);
}

TEST_F(IntegrityWindowTest, FolderThatIsGoneIsReported) {
  LoadBroken();
  fs::create_directory(current_.File("gone"));
  fs::current_path(current_.File("gone"));
  fs::remove(current_.File("gone"));
  ExpectQuestion(Answer::Yes);
  ExpectExclamation("Error saving file ./report.txt");
  Check();
  EXPECT_EQ(current_.Count(), 0U);
}

}  // namespace
}  // namespace zarvo
