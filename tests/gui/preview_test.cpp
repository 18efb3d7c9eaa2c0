#include <gtest/gtest.h>

#include <QApplication>
#include <QDeadlineTimer>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <chrono>
#include <cstdlib>
#include <functional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "engine/run_host.h"
#include "model/code_page.h"
#include "tests/gui/scripted_dialogs.h"
#include "tests/support/builders.h"
#include "tests/support/temporary_folder.h"
#include "ui/byte_text.h"
#include "ui/byte_text_edit.h"
#include "ui/preview_window.h"
#include "ui/run_pump.h"

namespace zarvo {
namespace {

using testing::Call;
using testing::FilterOf;
using testing::FunctionOf;
using testing::Of;
using testing::Replace;
using testing::ScriptedDialogs;
using testing::Str;
using testing::TemporaryFolder;

constexpr const char* kTextFiles = "Text files (*.txt)|*.txt|All files (*.*)|*.*|";

Rule Change(const std::string& from, const std::string& to) {
  return Replace(Of({Str(from)}), Of({Str(to)}));
}

// Repeats for as long as the function "Step" gives "x" for "x".
Rule Wait() {
  Rule rule = Replace(Of({Str("x")}), Of({Call("Step(1)")}));
  rule.Strict = 1;
  return rule;
}

Function StepInPlace() { return FunctionOf("Step", {}, Function::kReturnArgument); }

// Fails the test at its message: no box is expected.
Rule Never() { return Replace(Of({testing::NotList("")}), Of({Call("the rule ran")})); }

class PreviewTest : public ::testing::Test {
 protected:
  void SetUp() override {
    ProcessEngineState() = {};
    ProcessRandom().Seed(1);
    window_.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window_));
  }

  template <typename Control>
  Control& Find(const char* name) {
    auto* control = window_.findChild<Control*>(QString::fromLatin1(name));
    if (control == nullptr) throw std::runtime_error(std::string("no control ") + name);
    return *control;
  }
  ByteTextEdit& Original() { return Find<ByteTextEdit>("originalEdit"); }
  ByteTextEdit& Modified() { return Find<ByteTextEdit>("modifiedEdit"); }
  QPushButton& UpdateButton() { return Find<QPushButton>("updateButton"); }
  QProgressBar& Bar() { return Find<QProgressBar>("progressBar"); }
  std::string Caption() { return UpdateButton().text().toStdString(); }

  // A click as the platform delivers it.
  void Click(const char* name) {
    auto& button = Find<QPushButton>(name);
    ASSERT_TRUE(button.isEnabled()) << name;
    ASSERT_TRUE(button.isVisible()) << name;
    const QPoint place = button.mapTo(&window_, button.rect().center());
    QTest::mouseMove(window_.windowHandle(), place);
    QTest::mouseClick(window_.windowHandle(), Qt::LeftButton, Qt::NoModifier, place);
  }
  void ClickUpdate() { Click("updateButton"); }

  void Load(const std::string& bytes) {
    LoadPath(QString::fromStdString(folder_.Write("text.txt", bytes)));
  }
  void LoadPath(std::optional<QString> path) {
    dialogs_.ExpectOpen(kTextFiles, "txt", std::move(path));
    Click("loadTextButton");
  }

  // Lets a run of Wait() come to its end: the next match of "x" becomes this text.
  void LetGo(const std::string& becomes) { filter_.Functions[0].Entries = {{"x", becomes}}; }

  // Calls the step while a run handles events, again and again until it returns true.
  void Meanwhile(std::function<bool()> step) {
    deadline_ = QDeadlineTimer(std::chrono::seconds(30));
    QObject::connect(&timer_, &QTimer::timeout, &window_, [this, step = std::move(step)] {
      const bool is_late = deadline_.hasExpired();
      if (is_late) {
        ADD_FAILURE() << "the condition never came";
        if (filter_.Functions.Count() != 0) LetGo("");
      }
      // The click that starts the run handles events too.
      if (!is_late && (filter_.Applying == 0 || !step())) return;
      timer_.stop();
      timer_.disconnect();
    });
    timer_.start(0);
  }
  void MeanwhileOnce(std::function<void()> step) {
    Meanwhile([this, step = std::move(step)] {
      // The timer may not come again while the step starts runs of its own.
      timer_.stop();
      step();
      return true;
    });
  }

  TemporaryFolder folder_;
  ScriptedDialogs dialogs_;
  Filter filter_;
  PreviewWindow window_{filter_, dialogs_};
  QTimer timer_;
  QDeadlineTimer deadline_;
};

// ---- Updating

TEST_F(PreviewTest, IsAModelessWindowThatStartsIdleAndEmpty) {
  EXPECT_EQ(window_.windowTitle(), "Preview");
  EXPECT_FALSE(window_.isModal());
  EXPECT_EQ(Caption(), "Update");
  EXPECT_FALSE(window_.IsBusy());
  EXPECT_EQ(Original().Bytes(), "");
  EXPECT_FALSE(Original().isReadOnly());
  EXPECT_EQ(Modified().Bytes(), "");
  EXPECT_TRUE(Modified().isReadOnly());
  EXPECT_EQ(Bar().value(), 0);
  EXPECT_LT(Bar().minimum(), Bar().maximum());
}

TEST_F(PreviewTest, UpdateShowsWhatTheRulesMakeOfTheTextOneAfterAnother) {
  filter_ = FilterOf({Change("a", "b"), Change("bb", "c")});
  Original().SetBytes("aba");
  ClickUpdate();
  EXPECT_EQ(Modified().Bytes(), "cb");
  EXPECT_EQ(Original().Bytes(), "aba");
  EXPECT_EQ(Caption(), "Update");
  EXPECT_FALSE(window_.IsBusy());
}

TEST_F(PreviewTest, UpdateRunsOverWhatIsTypedWithCrLfForEnter) {
  filter_ = FilterOf({Change("a", "b")});
  Original().setFocus();
  QTest::keyClicks(&Original(), "ca");
  QTest::keyClick(&Original(), Qt::Key_Return);
  QTest::keyClicks(&Original(), "a");
  ClickUpdate();
  EXPECT_EQ(Original().Bytes(), "ca\r\na");
  EXPECT_EQ(Modified().Bytes(), "cb\r\nb");
}

TEST_F(PreviewTest, ReturnInAPanePressesNoButton) {
  filter_ = FilterOf({Never()});
  Modified().SetBytes("old");
  std::string lines;
  for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
    for (ByteTextEdit* pane : {&Original(), &Modified()}) {
      pane->setFocus();
      ASSERT_EQ(QApplication::focusWidget(), pane);
      QTest::keyClick(window_.windowHandle(), key);
      EXPECT_TRUE(window_.isVisible());
      EXPECT_EQ(Caption(), "Update");
    }
    lines += "\r\n";
    EXPECT_EQ(Original().Bytes(), lines);
    EXPECT_EQ(Modified().Bytes(), "old");
  }
}

TEST_F(PreviewTest, SpaceOnTheButtonUpdates) {
  filter_ = FilterOf({Change("a", "b")});
  Original().SetBytes("a");
  UpdateButton().setFocus();
  QTest::keyClick(&UpdateButton(), Qt::Key_Space);
  EXPECT_EQ(Modified().Bytes(), "b");
}

TEST_F(PreviewTest, AnUpdateTakesThePlaceOfTheLastOne) {
  filter_ = FilterOf({Change("a", "b")});
  Original().SetBytes("aa");
  ClickUpdate();
  filter_ = FilterOf({Change("a", "c")});
  Original().SetBytes("a");
  ClickUpdate();
  EXPECT_EQ(Modified().Bytes(), "c");
}

TEST_F(PreviewTest, AnEmptyTextGivesAnEmptyText) {
  filter_ = FilterOf({Change("a", "b"), Never()});
  Original().SetBytes("a");
  Modified().SetBytes("old");
  Original().SetBytes("");
  ClickUpdate();
  EXPECT_EQ(Modified().Bytes(), "");
}

TEST_F(PreviewTest, AFilterWithoutRulesGivesTheTextItself) {
  Original().SetBytes("a\r\nb");
  ClickUpdate();
  EXPECT_EQ(Modified().Bytes(), "a\r\nb");
}

TEST_F(PreviewTest, UpdateWorksWhileTheWindowIsHidden) {
  filter_ = FilterOf({Change("a", "b")});
  Original().SetBytes("a");
  window_.hide();
  window_.Update();
  EXPECT_EQ(Modified().Bytes(), "b");
}

TEST_F(PreviewTest, WhileItRunsTheButtonShowsCancel) {
  filter_ = FilterOf({Wait()}, {}, {StepInPlace()});
  Original().SetBytes("x");
  bool seen = false;
  MeanwhileOnce([&] {
    seen = true;
    EXPECT_EQ(Caption(), "Cancel");
    EXPECT_TRUE(window_.IsBusy());
    EXPECT_EQ(Modified().Bytes(), "");
    LetGo("y");
  });
  ClickUpdate();
  EXPECT_TRUE(seen);
  EXPECT_EQ(Caption(), "Update");
  EXPECT_FALSE(window_.IsBusy());
  EXPECT_EQ(Modified().Bytes(), "y");
}

TEST_F(PreviewTest, ARunKeepsToTheTextThatItBeganWith) {
  filter_ = FilterOf({Wait()}, {}, {StepInPlace()});
  Original().SetBytes("x");
  MeanwhileOnce([&] {
    Original().SetBytes("other");
    LetGo("y");
  });
  ClickUpdate();
  EXPECT_EQ(Modified().Bytes(), "y");
  EXPECT_EQ(Original().Bytes(), "other");
}

TEST_F(PreviewTest, ClosedDuringARunItHasTheResultWhenItIsShownAgain) {
  filter_ = FilterOf({Wait()}, {}, {StepInPlace()});
  Original().SetBytes("x");
  MeanwhileOnce([&] {
    window_.close();
    EXPECT_FALSE(window_.isVisible());
    LetGo("y");
  });
  ClickUpdate();
  window_.show();
  EXPECT_EQ(Original().Bytes(), "x");
  EXPECT_EQ(Modified().Bytes(), "y");
  EXPECT_EQ(Caption(), "Update");
}

// ---- Cancelling

TEST_F(PreviewTest, CancelLetsTheRuleInProgressEndAndNoOtherBegin) {
  filter_ = FilterOf({Wait(), Never()}, {}, {StepInPlace()});
  Original().SetBytes("x-x");
  int turn = 0;
  Meanwhile([&] {
    if (++turn == 1) {
      EXPECT_EQ(Caption(), "Cancel");
      ClickUpdate();
      EXPECT_EQ(Caption(), "Update");
      EXPECT_FALSE(window_.IsBusy());
      return false;
    }
    EXPECT_EQ(filter_.Applying, 1) << "the rule was broken off";
    EXPECT_EQ(Caption(), "Update");
    EXPECT_EQ(Modified().Bytes(), "");
    if (turn < 5) return false;
    LetGo("y");
    return true;
  });
  ClickUpdate();
  EXPECT_EQ(turn, 5);
  EXPECT_EQ(filter_.Applying, 0);
  EXPECT_EQ(Modified().Bytes(), "x-x");
  EXPECT_EQ(Original().Bytes(), "x-x");
  EXPECT_EQ(Caption(), "Update");
  EXPECT_EQ(Bar().value(), 0);
}

TEST_F(PreviewTest, SpaceOnTheButtonCancels) {
  filter_ = FilterOf({Wait(), Never()}, {}, {StepInPlace()});
  Original().SetBytes("x");
  UpdateButton().setFocus();
  MeanwhileOnce([&] {
    ASSERT_TRUE(UpdateButton().hasFocus());
    QTest::keyClick(window_.windowHandle(), Qt::Key_Space);
    EXPECT_EQ(Caption(), "Update");
    LetGo("y");
  });
  QTest::keyClick(&UpdateButton(), Qt::Key_Space);
  EXPECT_EQ(Modified().Bytes(), "x");
}

TEST_F(PreviewTest, ACancelInTheLastRuleCountsToo) {
  filter_ = FilterOf({Wait()}, {}, {StepInPlace()});
  Original().SetBytes("x");
  MeanwhileOnce([&] {
    ClickUpdate();
    LetGo("y");
  });
  ClickUpdate();
  EXPECT_EQ(Modified().Bytes(), "x");
}

TEST_F(PreviewTest, AfterACancelTheNextUpdateRunsToItsEnd) {
  filter_ = FilterOf({Wait(), Change("y", "z")}, {}, {StepInPlace()});
  Original().SetBytes("x");
  MeanwhileOnce([&] {
    ClickUpdate();
    LetGo("y");
  });
  ClickUpdate();
  ASSERT_EQ(Modified().Bytes(), "x");
  ClickUpdate();
  EXPECT_EQ(Modified().Bytes(), "z");
}

TEST_F(PreviewTest, AClickBetweenCancelAndTheEndOfTheRuleStartsARunWithinTheRun) {
  filter_ = FilterOf({Wait()}, {}, {StepInPlace()});
  Original().SetBytes("x");
  MeanwhileOnce([&] {
    ClickUpdate();
    LetGo("y");
    ClickUpdate();
    EXPECT_EQ(Modified().Bytes(), "y");
  });
  ClickUpdate();
  // The inner run began by clearing the mark of the cancel.
  EXPECT_EQ(Modified().Bytes(), "y");
  EXPECT_EQ(Caption(), "Update");
}

// ---- Messages of the engine

class PreviewMessages : public PreviewTest,
                        public ::testing::WithParamInterface<std::pair<const char*, const char*>> {
};

TEST_P(PreviewMessages, AreShownOnceAMatchWithTheStopIconAndTheRunGoesOn) {
  const auto& [call, text] = GetParam();
  filter_ = FilterOf({Replace(Of({Str("a")}), Of({Str("<"), Call(call), Str(">")}))}, {},
                     {FunctionOf("Known", {})});
  Original().SetBytes("a-a-a");
  for (int i = 0; i < 3; ++i) {
    dialogs_.ExpectMessage(MessageIcon::Stop, text, MessageButtons::Ok, Answer::Ok, [this] {
      EXPECT_EQ(Caption(), "Cancel");
      EXPECT_TRUE(window_.IsBusy());
    });
  }
  ClickUpdate();
  EXPECT_TRUE(dialogs_.IsDone());
  EXPECT_EQ(Modified().Bytes(), "<>-<>-<>");
}

INSTANTIATE_TEST_SUITE_P(
    All, PreviewMessages,
    ::testing::Values(
        std::pair("Known", "DEBUG: Incorrect function call: \"Known\" - \"(\" missing."),
        std::pair("Known()",
                  "DEBUG: Incorrect function call: \"Known()\" - function argument missing."),
        std::pair("No&ne(1)",
                  "DEBUG: Incorrect function call: \"No&ne(1)\" - function \"No&ne\" "
                  "dosn't exist.")));

TEST_F(PreviewTest, AMessageShowsTheCharactersOfTheCodePage) {
  const CodePage page = WindowCodePage();
  SetWindowCodePage(CodePage::Find("windows-1250").value());
  filter_ = FilterOf({Replace(Of({Str("a")}), Of({Call("\xB3")}))});
  Original().SetBytes("a");
  dialogs_.ExpectMessage(MessageIcon::Stop,
                         "DEBUG: Incorrect function call: \"\u0142\" - \"(\" missing.",
                         MessageButtons::Ok, Answer::Ok);
  ClickUpdate();
  SetWindowCodePage(page);
}

TEST_F(PreviewTest, NoMessageComesWithoutAMatch) {
  filter_ = FilterOf({Replace(Of({Str("a")}), Of({Call("Missing(1)")}))});
  Original().SetBytes("bbb");
  ClickUpdate();
  EXPECT_EQ(Modified().Bytes(), "bbb");
}

// ---- Runs within runs, and changes of the filter during a run

TEST_F(PreviewTest, AnUpdateDuringARunIsARunWithinTheRun) {
  filter_ = FilterOf({Wait()}, {}, {StepInPlace()});
  Original().SetBytes("x");
  MeanwhileOnce([&] {
    LetGo("y");
    Original().SetBytes("xx-");
    window_.Update();
    EXPECT_EQ(Modified().Bytes(), "yy-");
    EXPECT_EQ(Caption(), "Update");
    EXPECT_FALSE(window_.IsBusy());
  });
  ClickUpdate();
  EXPECT_EQ(Modified().Bytes(), "y") << "the outer run ends last";
  EXPECT_EQ(Caption(), "Update");
}

TEST_F(PreviewTest, ACancelOfTheInnerRunEndsTheOuterOneToo) {
  filter_ = FilterOf({Wait(), Never()}, {}, {StepInPlace()});
  Original().SetBytes("x");
  bool is_inner = false;
  // Of its own, as no timer comes again within its own time-out.
  QTimer canceller;
  QObject::connect(&canceller, &QTimer::timeout, &window_, [&] {
    if (!is_inner) return;
    canceller.stop();
    EXPECT_EQ(Caption(), "Cancel");
    ClickUpdate();
    EXPECT_EQ(Caption(), "Update");
    LetGo("y");
  });
  canceller.start(0);
  MeanwhileOnce([&] {
    is_inner = true;
    window_.Update();
    EXPECT_EQ(Modified().Bytes(), "x");
    EXPECT_EQ(filter_.Cancel, 1);
  });
  ClickUpdate();
  EXPECT_TRUE(is_inner);
  EXPECT_EQ(Modified().Bytes(), "x");
  EXPECT_EQ(Caption(), "Update");
}

TEST_F(PreviewTest, AnUpdateWhileAMessageStandsSharesTheCountersOfTheRun) {
  filter_ = FilterOf({Replace(Of({Str("x")}), Of({Call("Missing(1)")}))});
  Original().SetBytes("xx");
  dialogs_.ExpectMessage(
      MessageIcon::Stop,
      "DEBUG: Incorrect function call: \"Missing(1)\" - function \"Missing\" dosn't exist.",
      MessageButtons::Ok, Answer::Ok, [&] {
        filter_ = FilterOf({Change("x", "long replacement")});
        window_.Update();
        // It goes on where the outer one stands: behind the first match.
        EXPECT_EQ(Modified().Bytes(), "xlong replacement");
      });
  ClickUpdate();
  // The inner run has searched to its end, so nothing remains for the pass of the outer one.
  EXPECT_EQ(Modified().Bytes(), "x");
  EXPECT_EQ(Caption(), "Update");
}

TEST_F(PreviewTest, AFilterEmptiedDuringTheRunEndsItAfterTheRule) {
  filter_ = FilterOf({Wait(), Never(), Never()}, {}, {StepInPlace()});
  Original().SetBytes("x");
  MeanwhileOnce([&] {
    LetGo("y");
    filter_.Rules.RemoveAll();
  });
  ClickUpdate();
  EXPECT_EQ(Modified().Bytes(), "y");
}

TEST_F(PreviewTest, FunctionsEmptiedDuringTheRunAreMissingAtTheNextMatch) {
  filter_ = FilterOf({Wait()}, {}, {StepInPlace()});
  Original().SetBytes("x");
  dialogs_.ExpectMessage(
      MessageIcon::Stop,
      "DEBUG: Incorrect function call: \"Step(1)\" - function \"Step\" dosn't exist.",
      MessageButtons::Ok, Answer::Ok);
  MeanwhileOnce([&] { filter_ = Filter(); });
  ClickUpdate();
  EXPECT_EQ(Modified().Bytes(), "");
}

TEST_F(PreviewTest, AFilterLoadedDuringTheRunGoesOnAtTheNextPosition) {
  filter_ = FilterOf({Wait(), Never()}, {}, {StepInPlace()});
  Original().SetBytes("x");
  MeanwhileOnce([&] {
    filter_ = FilterOf({Never(), Change("b", "c"), Change("c", "d")}, {},
                       {FunctionOf("Step", {{"x", "b"}})});
  });
  ClickUpdate();
  EXPECT_EQ(Modified().Bytes(), "d");
}

TEST_F(PreviewTest, ACancelReachesTheRunOfAFilterThatWasReplaced) {
  filter_ = FilterOf({Wait(), Never()}, {}, {StepInPlace()});
  Original().SetBytes("x");
  MeanwhileOnce([&] {
    filter_ = FilterOf({Never(), Never()}, {}, {FunctionOf("Step", {{"x", "b"}})});
    ClickUpdate();
    EXPECT_EQ(Caption(), "Update");
  });
  ClickUpdate();
  EXPECT_EQ(Modified().Bytes(), "x");
}

// ---- Quitting

// What is told to the parent of a process that can run no more filters.
constexpr int kAsExpected = 77;

class PreviewQuitDeathTest : public PreviewTest {
 protected:
  PreviewQuitDeathTest() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }
  [[noreturn]] static void Leave(bool as_expected) { std::_Exit(as_expected ? kAsExpected : 1); }
};

TEST_F(PreviewQuitDeathTest, EndsARunWithinARuleThatNeverEnds) {
  EXPECT_EXIT(
      {
        filter_ = FilterOf({Wait(), Never()}, {}, {StepInPlace()});
        Original().SetBytes("x");
        bool as_expected = false;
        QTimer::singleShot(0, &window_, [&] {
          MeanwhileOnce([] { QuitProgram(); });
          const bool was_quitting = ProgramIsQuitting();
          ClickUpdate();
          as_expected = !was_quitting && ProgramIsQuitting() && Modified().Bytes().empty() &&
                        Caption() == "Update" && filter_.Applying == 0;
        });
        const int code = QApplication::exec();
        Leave(as_expected && code == 1);
      },
      ::testing::ExitedWithCode(kAsExpected), "");
}

TEST_F(PreviewQuitDeathTest, EndsRunsWithinRuns) {
  EXPECT_EXIT(
      {
        filter_ = FilterOf({Wait()}, {}, {StepInPlace()});
        Original().SetBytes("x");
        QTimer::singleShot(0, &window_, [&] {
          QTimer::singleShot(0, &window_, [] { QuitProgram(); });
          window_.Update();
        });
        window_.Update();
        Leave(ProgramIsQuitting() && Modified().Bytes().empty() && !window_.IsBusy());
      },
      ::testing::ExitedWithCode(kAsExpected), "");
}

TEST_F(PreviewQuitDeathTest, WithoutARunEndsTheProgramWithZero) {
  EXPECT_EXIT(
      {
        QTimer::singleShot(0, &window_, [] { QuitProgram(); });
        const int code = QApplication::exec();
        Leave(ProgramIsQuitting() && code == 0);
      },
      ::testing::ExitedWithCode(kAsExpected), "");
}

// ---- The progress bar

class PreviewBar : public PreviewTest, public ::testing::WithParamInterface<int> {};

TEST_P(PreviewBar, IsBackAtZeroAndNeverBusyAfterARun) {
  for (int i = 0; i < GetParam(); ++i) filter_.Rules.Append(Change("a", "b"));
  Original().SetBytes("a");
  for (int run = 0; run < 2; ++run) {
    ClickUpdate();
    EXPECT_EQ(Bar().value(), 0);
    EXPECT_EQ(Bar().minimum(), 0);
    EXPECT_LT(Bar().minimum(), Bar().maximum());
  }
}

INSTANTIATE_TEST_SUITE_P(Rules, PreviewBar, ::testing::Values(0, 1, 2, 40));

TEST_F(PreviewTest, TheBarAdvancesByOneStepARule) {
  std::vector<Rule> rules(4, Change("a", "a"));
  rules.push_back(Wait());
  rules.resize(7, Change("a", "a"));
  filter_ = FilterOf(std::move(rules), {}, {StepInPlace()});
  Original().SetBytes("ax");
  bool seen = false;
  Meanwhile([&] {
    // Events may be handled in a rule before the one that waits.
    if (Bar().value() != 4) return false;
    seen = true;
    EXPECT_EQ(Bar().minimum(), 0);
    EXPECT_EQ(Bar().maximum(), 7);
    LetGo("y");
    return true;
  });
  ClickUpdate();
  EXPECT_TRUE(seen);
  EXPECT_EQ(Bar().value(), 0);
}

TEST_F(PreviewTest, ResetSetsTheBarBackAndTouchesNoText) {
  Original().SetBytes("before");
  Modified().SetBytes("after");
  Bar().setRange(0, 9);
  Bar().setValue(5);
  window_.Reset();
  EXPECT_EQ(Bar().value(), 0);
  EXPECT_EQ(Original().Bytes(), "before");
  EXPECT_EQ(Modified().Bytes(), "after");
}

TEST_F(PreviewTest, ResetForANewDocumentEmptiesModifiedToo) {
  Original().SetBytes("before");
  Modified().SetBytes("after");
  Bar().setRange(0, 9);
  Bar().setValue(5);
  window_.ResetForNewDocument();
  EXPECT_EQ(Bar().value(), 0);
  EXPECT_EQ(Original().Bytes(), "before");
  EXPECT_EQ(Modified().Bytes(), "");
}

// ---- Loading a text

TEST_F(PreviewTest, ALoadedFileReplacesOriginalAndLeavesModified) {
  Original().SetBytes("something longer than the file");
  Modified().SetBytes("after");
  Load("text");
  EXPECT_EQ(Original().Bytes(), "text");
  EXPECT_EQ(Modified().Bytes(), "after");
}

TEST_F(PreviewTest, LoadingStartsNoRun) {
  filter_ = FilterOf({Never()});
  Load("text");
  EXPECT_EQ(Caption(), "Update");
  EXPECT_EQ(Modified().Bytes(), "");
}

std::string LongText(std::size_t size) {
  std::string text;
  for (std::size_t i = 0; text.size() < size; ++i) text += "line " + std::to_string(i) + "\r\n";
  text.resize(size);
  return text;
}

TEST_F(PreviewTest, AFileOf20000BytesIsCutAfter16384) {
  const std::string text = LongText(20000);
  Load(text);
  EXPECT_EQ(Original().Bytes(), text.substr(0, 16384));
}

TEST_F(PreviewTest, AFileAroundTheLimitIsCutAtTheVeryByte) {
  for (const std::size_t size : {16383U, 16384U, 16385U}) {
    const std::string text = LongText(size);
    Load(text);
    EXPECT_EQ(Original().Bytes(), text.substr(0, 16384)) << size;
  }
}

TEST_F(PreviewTest, ALineEndMayBeCutInTwo) {
  const std::string text = std::string(16383, 'a') + "\r\nb";
  Load(text);
  EXPECT_EQ(Original().Bytes(), text.substr(0, 16384));
  ClickUpdate();
  EXPECT_EQ(Modified().Bytes(), text.substr(0, 16384));
}

TEST_F(PreviewTest, AFileThatIsMissingGivesAnEmptyTextAndNoMessage) {
  Original().SetBytes("before");
  LoadPath(QString::fromStdString(folder_.File("missing.txt")));
  EXPECT_EQ(Original().Bytes(), "");
}

TEST_F(PreviewTest, AFileThatCantBeReadGivesAnEmptyTextAndNoMessage) {
  Original().SetBytes("before");
  LoadPath(QString::fromStdString(folder_.Path()));
  EXPECT_EQ(Original().Bytes(), "");
}

TEST_F(PreviewTest, AnEmptyFileGivesAnEmptyText) {
  Original().SetBytes("before");
  Load("");
  EXPECT_EQ(Original().Bytes(), "");
}

TEST_F(PreviewTest, CancelOfTheFileDialogLeavesOriginal) {
  Original().SetBytes("before");
  LoadPath({});
  EXPECT_EQ(Original().Bytes(), "before");
}

TEST_F(PreviewTest, ALoadedTextEndsAtItsFirstZeroByte) {
  Load(std::string("ab\0cd\0", 6));
  EXPECT_EQ(Original().Bytes(), "ab");
  Load(std::string("\0cd", 3));
  EXPECT_EQ(Original().Bytes(), "");
}

TEST_F(PreviewTest, ATextLoadedDuringARunIsThatOfTheNextOne) {
  filter_ = FilterOf({Wait()}, {}, {StepInPlace()});
  Original().SetBytes("x");
  MeanwhileOnce([&] {
    Load("x!");
    LetGo("y");
  });
  ClickUpdate();
  EXPECT_EQ(Modified().Bytes(), "y");
  EXPECT_EQ(Original().Bytes(), "x!");
  ClickUpdate();
  EXPECT_EQ(Modified().Bytes(), "y!");
}

class PreviewBytes : public PreviewTest, public ::testing::WithParamInterface<const char*> {
 protected:
  PreviewBytes() { SetWindowCodePage(CodePage::Find(GetParam()).value()); }
  ~PreviewBytes() override { SetWindowCodePage(page_); }

 private:
  CodePage page_ = WindowCodePage();
};

TEST_P(PreviewBytes, AllBytesButZeroGoFromAFileToModified) {
  std::string bytes;
  for (int byte = 1; byte < 256; ++byte) bytes += static_cast<char>(byte);
  for (int byte = 255; byte > 0; --byte) bytes += static_cast<char>(byte);
  Load(bytes);
  EXPECT_EQ(Original().Bytes(), bytes);
  ClickUpdate();
  EXPECT_EQ(Modified().Bytes(), bytes);
}

TEST_P(PreviewBytes, MixedLineEndsGoFromAFileToModified) {
  for (const std::string bytes :
       {"a\rb\nc\r\nd\n\re\r\r\n\n", "\n", "\r", "\r\n", "\n\n\r\r", "\r\n\r", "a\n", "\ra"}) {
    Load(bytes);
    EXPECT_EQ(Original().Bytes(), bytes);
    ClickUpdate();
    EXPECT_EQ(Modified().Bytes(), bytes);
  }
}

TEST_P(PreviewBytes, TheEngineSeesTheBytesOfTheFile) {
  filter_ = FilterOf({Change("\r\n", "1"), Change("\n", "2"), Change("\r", "3"),
                      Change("\xA0", "4"), Change("\x81", "5"), Change("\xFF", "6")});
  Load("\r\n|\n|\r|\xA0|\x81|\xFF");
  ClickUpdate();
  EXPECT_EQ(Modified().Bytes(), "1|2|3|4|5|6");
}

INSTANTIATE_TEST_SUITE_P(Pages, PreviewBytes,
                         ::testing::Values("windows-1250", "windows-1251", "windows-1252",
                                           "windows-1255", "windows-1258", "CP874"));

}  // namespace
}  // namespace zarvo
