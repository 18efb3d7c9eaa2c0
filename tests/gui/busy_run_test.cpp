// Runs over a long text that a user doesn't wait for: the windows stay alive meanwhile, and
// whatever is done in them the run ends well.
#include <QAbstractScrollArea>
#include <QProgressBar>
#include <QPushButton>
#include <algorithm>
#include <cstddef>
#include <iterator>
#include <utility>

#include "engine/run_host.h"
#include "tests/gui/main_window_fixture.h"
#include "tests/gui/paint_counter.h"
#include "tests/support/builders.h"
#include "ui/preview_window.h"
#include "ui/run_pump.h"

namespace zarvo {
namespace {

using testing::Find;
using testing::Of;
using testing::PaintCounter;
using testing::Replace;
using testing::Str;

#if defined(__SANITIZE_ADDRESS__)
constexpr std::size_t kTextSize = 2'000'000;
#else
constexpr std::size_t kTextSize = 10'000'000;
#endif

const std::string& LongText() {
  static const std::string text = [] {
    constexpr std::string_view kLine = "the quick brown fox jumps over the lazy dog, too\r\n";
    std::string lines;
    while (lines.size() < kTextSize) lines += kLine;
    lines.resize(kTextSize);
    return lines;
  }();
  return text;
}

// What a rule of SlowFilter() does: the letter becomes the digits by turns.
struct Substitution {
  char Letter;
  std::string_view Digits;

  [[nodiscard]] std::string Of(std::string text) const {
    std::size_t made = 0;
    for (char& byte : text) {
      if (byte == Letter) byte = Digits[made++ % Digits.size()];
    }
    return text;
  }
};

// Their order makes no difference.
constexpr Substitution kSubstitutions[] = {{'e', "1"}, {'o', "2"}, {'u', "34"},
                                           {'r', "5"}, {'h', "6"}, {'t', "7"}};
constexpr int kSetRule = 2;
constexpr int kFunctionRule = 3;
constexpr int kLastRule = 5;

std::string After(std::initializer_list<int> rules, std::string text = LongText()) {
  for (const int rule : rules) text = kSubstitutions[rule].Of(std::move(text));
  return text;
}

std::string Without(std::string text, std::string_view bytes) {
  std::erase_if(text, [bytes](char byte) { return bytes.find(byte) != std::string_view::npos; });
  return text;
}

// A rule for each substitution, the third from a Set and the fourth by a Function. Each has some
// hundred thousand matches.
Filter SlowFilter() {
  std::vector<Rule> rules;
  for (const auto& [letter, digits] : kSubstitutions) {
    rules.push_back(Replace(Of({Str({letter})}), Of({Str(std::string(digits))})));
  }
  rules[kSetRule] =
      testing::FromSet(rules[kSetRule].Pattern, ReplacementSource::SetInSequence, "Digits of u");
  rules[kFunctionRule].Replacement = Of({testing::Call("Digit(1)")});
  return testing::FilterOf(
      std::move(rules),
      {testing::SetOf("Other", {}),
       testing::SetOf("Digits of u", {Of({Str("3")}), Of({Str("4")})})},
      {testing::FunctionOf("Other", {}), testing::FunctionOf("Digit", {{"r", "5"}})});
}

class BusyRunTest : public testing::MainWindowFixture {
 protected:
  void SetUp() override {
    // A quick machine is to see each rule at work too.
    UsePumpInterval(1);
    ProcessEngineState() = {};
    TheFilter() = SlowFilter();
    window_->RefreshFields();
    ClickOn("showPreviewButton");
    Original().SetBytes(LongText());
  }
  void TearDown() override {
    UsePumpInterval(kUsualPumpInterval);
    MainWindowFixture::TearDown();
  }

  PreviewWindow& Preview() { return window_->Preview(); }
  ByteTextEdit& Original() { return Find<ByteTextEdit>(Preview(), "originalEdit"); }
  ByteTextEdit& Modified() { return Find<ByteTextEdit>(Preview(), "modifiedEdit"); }
  QPushButton& UpdateButton() { return Find<QPushButton>(Preview(), "updateButton"); }
  std::string ButtonText() { return UpdateButton().text().toStdString(); }
  // The position of the rule that runs, as the bar shows it.
  int RuleInProgress() { return Find<QProgressBar>(Preview(), "progressBar").value(); }
  bool IsRunning() { return TheFilter().Applying != 0; }

  // Runs the filter by the button; the step comes again and again while it runs.
  void Run(const std::function<void()>& step) {
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
      // The click that starts the run handles events too.
      if (!IsRunning()) return;
      timer.stop();
      step();
      timer.start(0);
    });
    timer.start(0);
    testing::Click(UpdateButton());
    // Whatever was done, the window is ready for the next run.
    EXPECT_FALSE(IsRunning());
    EXPECT_FALSE(Preview().IsBusy());
    EXPECT_EQ(ButtonText(), "Update");
    EXPECT_EQ(RuleInProgress(), 0);
  }

  // Runs the filter, and does this once amid the rule at this position.
  void RunAndDuring(int rule, const std::function<void()>& action) {
    int turns = 0;
    Run([&] {
      // The first turn may come before anything was replaced.
      if (RuleInProgress() != rule || ++turns != 2) return;
      EXPECT_EQ(ButtonText(), "Cancel");
      EXPECT_TRUE(Preview().IsBusy());
      action();
    });
    EXPECT_GE(turns, 2) << "rule " << rule << " was not seen running";
  }

  // Texts of this length are not for printing.
  void ExpectModified(const std::string& expected) {
    EXPECT_TRUE(Modified().Bytes() == expected);
    EXPECT_TRUE(Original().Bytes() == LongText());
  }
};

TEST_F(BusyRunTest, WindowPaintsAndShowsCancelInEveryRule) {
  PaintCounter pane(*Original().viewport());
  PaintCounter button(UpdateButton());
  PaintCounter bar(Find<QProgressBar>(Preview(), "progressBar"));
  PaintCounter main_window(Get("nameEdit"));
  std::vector<int> paints_in_rule(std::size(kSubstitutions));
  Run([&] {
    EXPECT_EQ(ButtonText(), "Cancel");
    EXPECT_TRUE(UpdateButton().isEnabled());
    EXPECT_TRUE(Preview().IsBusy());
    paints_in_rule.at(static_cast<std::size_t>(RuleInProgress())) += std::exchange(pane.Paints, 0);
    Original().viewport()->update();
    Get("nameEdit").update();
  });
  for (const int paints : paints_in_rule) EXPECT_GT(paints, 0);
  EXPECT_GT(button.Paints, 0);
  EXPECT_GE(bar.Paints, kLastRule) << "each step is seen";
  EXPECT_GT(main_window.Paints, 0);
  ExpectModified(After({0, 1, 2, 3, 4, 5}));
}

TEST_F(BusyRunTest, TextCanBeTypedMeanwhile) {
  RunAndDuring(0, [this] {
    Original().setFocus();
    QTest::keyClicks(&Original(), QStringLiteral("e"));
    QTest::keyClick(&Original(), Qt::Key_End, Qt::ControlModifier);
    EXPECT_TRUE(Original().Bytes() == "e" + LongText());
  });
  EXPECT_TRUE(Modified().Bytes() == After({0, 1, 2, 3, 4, 5}));
  EXPECT_TRUE(Original().Bytes() == "e" + LongText());
}

TEST_F(BusyRunTest, CancelStopsItBeforeTheNextRule) {
  int last_rule = 0;
  bool is_cancelled = false;
  Run([&] {
    last_rule = std::max(last_rule, RuleInProgress());
    if (is_cancelled || RuleInProgress() != 2) return;
    is_cancelled = true;
    testing::Click(UpdateButton());
    EXPECT_EQ(ButtonText(), "Update");
    EXPECT_FALSE(Preview().IsBusy());
    EXPECT_TRUE(IsRunning()) << "the rule in progress runs to its end";
    EXPECT_EQ(Modified().Bytes(), "");
  });
  EXPECT_TRUE(is_cancelled);
  EXPECT_EQ(last_rule, 2);
  ExpectModified(LongText());
}

// ---- The filter is edited

TEST_F(BusyRunTest, RuleThatRunsIsDeleted) {
  RunAndDuring(2, [this] { TheFilter().Rules.RemoveAt(2); });
  // The next rule has moved to the position that was run already.
  ExpectModified(After({0, 1, 2, 4, 5}));
}

TEST_F(BusyRunTest, RulesAreInsertedBeforeTheOneThatRuns) {
  RunAndDuring(4, [this] {
    // So many that the list moves in memory.
    for (int i = 0; i < 100; ++i) {
      TheFilter().Rules.InsertBefore(0, Replace(Of({Str("#")}), Of({Str("never")})));
    }
  });
  ExpectModified(After({0, 1, 2, 3, 4, 5}));
}

TEST_F(BusyRunTest, RuleThatRunsIsMovedToTheRight) {
  RunAndDuring(1, [this] { std::swap(TheFilter().Rules[1], TheFilter().Rules[2]); });
  // It runs again, and the other one never does.
  ExpectModified(After({0, 1, 3, 4, 5}));
}

TEST_F(BusyRunTest, RulesAreReversed) {
  RunAndDuring(1, [this] { std::reverse(TheFilter().Rules.begin(), TheFilter().Rules.end()); });
  ExpectModified(After({0, 1, 3, 2}));
}

TEST_F(BusyRunTest, SetInUseIsDeleted) {
  RunAndDuring(kSetRule, [this] { TheFilter().Sets.RemoveAll(); });
  const std::string modified = Modified().Bytes();
  // From then on there was nothing to put in.
  EXPECT_TRUE(Without(modified, "34") == Without(After({0, 1, 3, 4, 5}), "u"));
  EXPECT_TRUE(modified.starts_with(After({0, 1, 2, 3, 4, 5}, "the quick brown fox")));
  EXPECT_LT(modified.size(), LongText().size());
}

TEST_F(BusyRunTest, StringsOfTheSetInUseAreDeleted) {
  RunAndDuring(kSetRule, [this] { TheFilter().Sets[1].Strings.clear(); });
  EXPECT_TRUE(Without(Modified().Bytes(), "34") == Without(After({0, 1, 3, 4, 5}), "u"));
}

TEST_F(BusyRunTest, FunctionInUseIsDeletedAndComesBack) {
  dialogs_.ExpectMessage(
      MessageIcon::Stop,
      "DEBUG: Incorrect function call: \"Digit(1)\" - function \"Digit\" dosn't exist.",
      MessageButtons::Ok, Answer::Ok, [this] {
        EXPECT_EQ(ButtonText(), "Cancel");
        TheFilter().Functions = SlowFilter().Functions;
      });
  RunAndDuring(kFunctionRule, [this] { TheFilter().Functions.RemoveAll(); });
  EXPECT_TRUE(dialogs_.IsDone());
  const std::string modified = Modified().Bytes();
  EXPECT_EQ(modified.size(), LongText().size() - 1) << "the one call that led nowhere";
  EXPECT_TRUE(Without(modified, "5") == Without(After({0, 1, 2, 4, 5}), "r"));
}

TEST_F(BusyRunTest, EntriesOfTheFunctionInUseAreDeleted) {
  RunAndDuring(kFunctionRule, [this] { TheFilter().Functions[1].Entries.clear(); });
  EXPECT_TRUE(Without(Modified().Bytes(), "5") == Without(After({0, 1, 2, 4, 5}), "r"));
}

// ---- Another document

TEST_F(BusyRunTest, NewEndsItAfterTheRule) {
  RunAndDuring(4, [this] {
    ClickOn("newButton");
    EXPECT_EQ(TheFilter(), Filter());
    EXPECT_TRUE(IsRunning());
    EXPECT_EQ(window_->windowTitle(), testing::kUntitled);
    EXPECT_EQ(TextOf("rulesCount"), "0");
    EXPECT_EQ(RuleInProgress(), 0);
  });
  ExpectModified(After({0, 1, 2, 3, 4}));
}

TEST_F(BusyRunTest, NewAfterTheQuestionEndsItToo) {
  ClickOn("autoIncrementBox");
  dialogs_.ExpectMessage(MessageIcon::Question, testing::kSaveQuestion, MessageButtons::YesNoCancel,
                         Answer::No, [this] { EXPECT_TRUE(IsRunning()); });
  RunAndDuring(4, [this] { ClickOn("newButton"); });
  EXPECT_EQ(TheFilter(), Filter());
  ExpectModified(After({0, 1, 2, 3, 4}));
}

TEST_F(BusyRunTest, OpenLetsItGoOnWithTheOtherFilter) {
  std::vector<Rule> rules(kLastRule, Replace(Of({Str(".")}), Of({Str("never")})));
  rules.push_back(Replace(Of({Str("d")}), Of({Str("8")})));
  rules.push_back(Replace(Of({Str("8")}), Of({Str("9")})));
  const QString path = WriteFilter("other.zvf", testing::FilterOf(rules));
  ExpectOpen(path);
  RunAndDuring(4, [this] {
    ClickOn("openButton");
    EXPECT_TRUE(dialogs_.IsDone());
    EXPECT_TRUE(IsRunning());
    EXPECT_EQ(Caption(), "other.zvf - Zarvo Composer");
    EXPECT_EQ(TextOf("rulesCount"), "7");
  });
  ExpectModified(Substitution{'d', "9"}.Of(After({0, 1, 2, 3, 4})));
}

TEST_F(BusyRunTest, SaveStoresTheFilterAndLetsItGoOn) {
  ExpectSaveAs({}, PathOf("saved.zvf"));
  RunAndDuring(2, [this] {
    testing::Activate(*window_);
    Press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_TRUE(IsRunning());
  });
  Filter filter = SlowFilter();
  EXPECT_EQ(folder_.Read("saved.zvf"), FilterFileBytes(filter));
  ExpectModified(After({0, 1, 2, 3, 4, 5}));
}

// ---- A run within the run

TEST_F(BusyRunTest, AutoUpdateBoxStartsARunWithinIt) {
  std::string inner;
  RunAndDuring(1, [&] {
    ClickOn("autoUpdateBox");
    EXPECT_TRUE(IsChecked("autoUpdateBox"));
    EXPECT_EQ(ButtonText(), "Update");
    EXPECT_FALSE(Preview().IsBusy());
    inner = Modified().Bytes();
  });
  // Its first rule went on where the rule around it had searched to.
  const std::size_t begin = inner.find('1');
  ASSERT_NE(begin, std::string::npos);
  EXPECT_GT(begin, LongText().find('e'));
  const std::string& text = LongText();
  EXPECT_TRUE(inner ==
              After({1, 2, 3, 4, 5}, text.substr(0, begin) + After({0}, text.substr(begin))));
  // That rule had nothing left to search then, and the ones after it began anew.
  const std::string outer = Modified().Bytes();
  const std::size_t end = outer.rfind('2') + 1;
  ASSERT_NE(end, 0U);
  EXPECT_LT(end, text.rfind('o'));
  EXPECT_TRUE(outer == After({0, 2, 3, 4, 5}, After({1}, text.substr(0, end)) + text.substr(end)));
}

TEST_F(BusyRunTest, RunsNestSeveralDeep) {
  constexpr int kDepth = 3;
  int depth = 0;
  // No timer comes again within its own time-out.
  std::function<void()> start_another = [&] {
    if (!IsRunning() || depth == kDepth) return;
    ++depth;
    QTimer::singleShot(0, &Preview(), start_another);
    Preview().Update();
    EXPECT_EQ(Modified().Bytes().size(), LongText().size());
  };
  RunAndDuring(2, [&] { start_another(); });
  EXPECT_EQ(depth, kDepth);
  EXPECT_EQ(Modified().Bytes().size(), LongText().size());
  // Nothing of them is left: the next run is whole.
  testing::Click(UpdateButton());
  ExpectModified(After({0, 1, 2, 3, 4, 5}));
}

TEST_F(BusyRunTest, FilterIsEmptiedByARunWithinIt) {
  RunAndDuring(4, [this] {
    QTimer::singleShot(0, &Preview(), [this] { ClickOn("newButton"); });
    Preview().Update();
  });
  EXPECT_EQ(TheFilter(), Filter());
  EXPECT_EQ(Modified().Bytes().size(), LongText().size());
}

}  // namespace
}  // namespace zarvo
