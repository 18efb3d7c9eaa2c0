#include <unistd.h>

#include <QAbstractItemView>
#include <QAccessible>
#include <QLabel>
#include <QProgressBar>
#include <QWindow>
#include <algorithm>
#include <filesystem>

#include "app/about_dialog.h"
#include "app/main_window.h"
#include "tests/gui/main_window_fixture.h"
#include "tests/support/builders.h"
#include "ui/icon_button.h"

namespace zarvo {
namespace {

using testing::Choose;
using testing::Counted;
using testing::Entries;
using testing::Find;
using testing::kUntitled;
using testing::TypeInto;

using ExitTest = testing::MainWindowFixture;

// ---- Exit. Last, for the program stays one that is quitting, whose fields commit nothing.

TEST_F(ExitTest, ExitEndsASavedProgramAtOnce) {
  EXPECT_EQ(RunProgram([this] { ClickOn("exitButton"); }), 0);
  EXPECT_TRUE(ProgramIsQuitting());
  EXPECT_FALSE(window_->isVisible());
}

TEST_F(ExitTest, EscapeIsExit) {
  EXPECT_EQ(RunProgram([this] { Press(Qt::Key_Escape); }), 0);
  EXPECT_FALSE(window_->isVisible());
}

TEST_F(ExitTest, ExitFromAFieldOfALockedFilterRaisesNoWarning) {
  LockFilter();
  Get("nameEdit").setFocus(Qt::TabFocusReason);
  EXPECT_EQ(RunProgram([this] { Press(Qt::Key_Escape); }), 0);
  EXPECT_FALSE(window_->isVisible());
}

TEST_F(ExitTest, CloseBoxOfASavedProgramAsksNothing) {
  EXPECT_EQ(RunProgram([this] { window_->close(); }), 0);
  EXPECT_FALSE(window_->isVisible());
}

TEST_F(ExitTest, ExitByButtonOrEscapeAsksOnceAndCancelGoesOn) {
  ClickOn("autoIncrementBox");
  const bool was_quitting = ProgramIsQuitting();
  ExpectSaveQuestion(Answer::Cancel);
  EXPECT_EQ(RunProgram([this] { ClickOn("exitButton"); }), std::nullopt);
  ExpectSaveQuestion(Answer::Cancel);
  EXPECT_EQ(RunProgram([this] { Press(Qt::Key_Escape); }), std::nullopt);
  EXPECT_TRUE(window_->isVisible());
  EXPECT_EQ(ProgramIsQuitting(), was_quitting);
  EXPECT_FALSE(Doc().Saved);
  ExpectSaveQuestion(Answer::No);
  EXPECT_EQ(RunProgram([this] { Press(Qt::Key_Escape); }), 0);
}

TEST_F(ExitTest, ExitAfterYesSavesAndEnds) {
  window_->LoadDocument(WriteFilter("f.zvf", Filter()));
  ClickOn("autoIncrementBox");
  ExpectSaveQuestion(Answer::Yes);
  EXPECT_EQ(RunProgram([this] { ClickOn("exitButton"); }), 0);
  EXPECT_EQ(ReadFilter("f.zvf").AutoIncrement, 1);
}

TEST_F(ExitTest, ExitAfterYesAndACancelledSaveAsEndsAllTheSame) {
  ClickOn("autoIncrementBox");
  ExpectSaveQuestion(Answer::Yes);
  ExpectSaveAs({}, std::nullopt);
  EXPECT_EQ(RunProgram([this] { ClickOn("exitButton"); }), 0);
}

TEST_F(ExitTest, FailedSaveAfterYesKeepsTheProgramRunning) {
  Doc().Path = PathOf("missing/f.zvf");
  Change();
  ExpectSaveQuestion(Answer::Yes);
  ExpectExclamation("Error saving file " + Doc().Path.toStdString());
  EXPECT_EQ(RunProgram([this] { ClickOn("exitButton"); }), std::nullopt);
  EXPECT_TRUE(window_->isVisible());
  EXPECT_EQ(TheFilter().Name, "changed");
}

TEST_F(ExitTest, EndOfTheSessionAsksAboutUnsavedChanges) {
  EXPECT_TRUE(window_->AskBeforeSessionEnds()) << "nothing to save";
  Change();
  ExpectSaveQuestion(Answer::Cancel);
  EXPECT_FALSE(window_->AskBeforeSessionEnds());
  ExpectSaveQuestion(Answer::No);
  EXPECT_TRUE(window_->AskBeforeSessionEnds());
  ExpectSaveQuestion(Answer::Yes);
  ExpectSaveAs({}, PathOf("f.zvf"));
  EXPECT_TRUE(window_->AskBeforeSessionEnds());
  EXPECT_EQ(ReadFilter("f.zvf").Name, "changed");
}

TEST_F(ExitTest, CloseBoxAfterYesAsksOnce) {
  window_->LoadDocument(WriteFilter("f.zvf", Filter()));
  ClickOn("autoIncrementBox");
  ExpectSaveQuestion(Answer::Yes);
  EXPECT_EQ(RunProgram([this] { window_->close(); }), 0);
  EXPECT_EQ(ReadFilter("f.zvf").AutoIncrement, 1);
}

TEST_F(ExitTest, CloseBoxAsksTwiceAndASecondCancelGoesOn) {
  ClickOn("autoIncrementBox");
  for (const Answer first : {Answer::Cancel, Answer::No}) {
    ExpectSaveQuestion(first);
    ExpectSaveQuestion(Answer::Cancel);
    EXPECT_EQ(RunProgram([this] { window_->close(); }), std::nullopt);
    EXPECT_TRUE(dialogs_.IsDone());
    EXPECT_TRUE(window_->isVisible());
    EXPECT_FALSE(Doc().Saved);
  }
}

TEST_F(ExitTest, CloseBoxAfterCancelAndNoEnds) {
  ClickOn("autoIncrementBox");
  ExpectSaveQuestion(Answer::Cancel);
  ExpectSaveQuestion(Answer::No);
  EXPECT_EQ(RunProgram([this] { window_->close(); }), 0);
  EXPECT_FALSE(window_->isVisible());
}

TEST_F(ExitTest, CloseBoxAfterNoAndNoEnds) {
  ClickOn("autoIncrementBox");
  ExpectSaveQuestion(Answer::No);
  ExpectSaveQuestion(Answer::No);
  EXPECT_EQ(RunProgram([this] { window_->close(); }), 0);
  EXPECT_FALSE(window_->isVisible());
}

TEST_F(ExitTest, CloseBoxSecondYesSaves) {
  window_->LoadDocument(WriteFilter("f.zvf", Filter()));
  ClickOn("autoIncrementBox");
  ExpectSaveQuestion(Answer::No);
  ExpectSaveQuestion(Answer::Yes);
  EXPECT_EQ(RunProgram([this] { window_->close(); }), 0);
  EXPECT_EQ(ReadFilter("f.zvf").AutoIncrement, 1);
}

TEST_F(ExitTest, CloseBoxAsksAgainWhenTheSavingWasCancelled) {
  ClickOn("autoIncrementBox");
  ExpectSaveQuestion(Answer::Yes);
  ExpectSaveAs({}, std::nullopt);
  ExpectSaveQuestion(Answer::Cancel);
  EXPECT_EQ(RunProgram([this] { window_->close(); }), std::nullopt);
  EXPECT_TRUE(window_->isVisible());
}

}  // namespace
}  // namespace zarvo
