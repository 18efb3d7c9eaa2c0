#include "cli/run_report.h"

#include <gtest/gtest.h>

#include <sstream>

namespace zarvo {
namespace {

TEST(MessageCollector, ReportsEachMessageOnceInOrderWithItsCount) {
  MessageCollector collector;
  collector.ShowMessage("second\x1B");
  collector.ShowMessage("first");
  collector.ShowMessage("second\x1B");
  std::ostringstream out;
  collector.Report(out, *CodePage::Find("windows-1252"));
  EXPECT_EQ(out.str(), "second\\x1B (2 times)\nfirst (1 time)\n");
}

// Steps until the progress has drawn, which it does in its own time.
std::string Drawn(TerminalProgress& progress, std::ostringstream& out) {
  while (out.str().empty()) progress.PositionBar.SetPosition(0);
  return out.str();
}

TEST(TerminalProgress, ShowsHowFarTheRunIsAndRemovesItsLine) {
  std::ostringstream out;
  {
    TerminalProgress progress(out, 80);
    progress.RuleBar.SetRange(0, 4);
    progress.RuleBar.SetStep(1);
    progress.RuleBar.SetPosition(0);
    progress.RuleBar.Step();
    EXPECT_EQ(Drawn(progress, out), "\r[#######.......................] 25 %, rule 2 of 4\x1B[K");
    out.str("");
  }
  EXPECT_EQ(out.str(), "\r\x1B[K");
}

TEST(TerminalProgress, IsNeverWiderThanTheTerminal) {
  std::ostringstream out;
  TerminalProgress progress(out, 10);
  EXPECT_EQ(Drawn(progress, out), "\r[........\x1B[K");
}

TEST(TerminalProgress, BarsTellThePartThatIsDone) {
  std::ostringstream out;
  TerminalProgress progress(out, 80);
  progress.RuleBar.SetRange(0, 4);
  progress.RuleBar.SetPosition(1);
  EXPECT_EQ(progress.RuleBar.Done(), 0.25);
  progress.PositionBar.SetRange(0, -1);
  EXPECT_EQ(progress.PositionBar.Done(), 0);
  progress.PositionBar.SetRange(0, 10);
  progress.PositionBar.SetPosition(99);
  EXPECT_EQ(progress.PositionBar.Done(), 1);
}

TEST(TerminalProgress, NeverDrawnLeavesTheTerminalAlone) {
  std::ostringstream out;
  TerminalProgress progress(out, 80);
  progress.Clear();
  EXPECT_EQ(out.str(), "");
}

}  // namespace
}  // namespace zarvo
