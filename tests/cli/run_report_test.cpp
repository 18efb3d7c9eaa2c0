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

TEST(TerminalProgress, ShowsHowFarTheRunIsAndRemovesItsLine) {
  std::ostringstream out;
  TerminalProgress progress(out);
  progress.RuleBar.SetRange(0, 4);
  progress.RuleBar.SetStep(1);
  progress.RuleBar.SetPosition(0);
  EXPECT_NE(out.str().find("[..............................] 0 %, rule 1 of 4"), std::string::npos);
  out.str("");
  progress.RuleBar.Step();
  EXPECT_EQ(out.str(), "");  // less than a tenth of a second later
  progress.Clear();
  EXPECT_EQ(out.str(), "\r\x1B[K");
}

TEST(TerminalProgress, BarsTellThePartThatIsDone) {
  std::ostringstream out;
  TerminalProgress progress(out);
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
  TerminalProgress progress(out);
  progress.Clear();
  EXPECT_EQ(out.str(), "");
}

}  // namespace
}  // namespace zarvo
