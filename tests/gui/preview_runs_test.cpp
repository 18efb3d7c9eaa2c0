#include "tests/gui/preview_fixture.h"

namespace zarvo::testing {
namespace {

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

}  // namespace
}  // namespace zarvo::testing
