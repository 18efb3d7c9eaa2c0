// How often the editors have the Preview updated, and what the user may do meanwhile.
#include <QComboBox>

#include "tests/gui/editor_fixture.h"
#include "tests/gui/paint_counter.h"
#include "ui/string_editor.h"

namespace zarvo {
namespace {

using testing::FilterOf;
using testing::FunctionOf;
using testing::Insert;
using testing::Of;
using testing::Replace;
using testing::SetOf;
using testing::Str;

class RulesRuns : public testing::EditorFixture {
 protected:
  RulesRuns() : EditorFixture(testing::kRulesEditor) {
    Rule second = Insert(Of({Str("abcd")}), 1, {});
    second.Name = "B";
    Show(FilterOf({Tell(), second}, {SetOf("one", {}), SetOf("two", {})}));
    ClickTab(1);
  }
  void ExpectRunsOf(const std::function<void()>& action, int count) {
    ExpectRuns(count);
    action();
    ExpectNoMoreRuns();
  }
};

TEST_F(RulesRuns, EachReloadIsOne) {
  CountRuns();
  ExpectRunsOf([this] { ClickTab(0); }, 1);
  ExpectRunsOf([this] { ClickTab(0); }, 1);
  ExpectRunsOf([this] { ClickTab(1); }, 1);
  ExpectRunsOf([this] { ClickIn("strictBox"); }, 1);
  ExpectRunsOf([this] { ClickIn("onceBox"); }, 1);
  ExpectRunsOf([this] { ClickIn("fromSetRadio"); }, 1);
  ExpectRunsOf([this] { ClickIn("randomRadio"); }, 1);
  ExpectRunsOf([this] { PressIn("setBox", Qt::Key_Down); }, 1);
  ExpectRunsOf([this] { ClickIn("stringRadio"); }, 1);
  ExpectRunsOf([this] { ClickIn("replaceRadio"); }, 1);
  ExpectRunsOf([this] { PressIn("fromToSlider", Qt::Key_Right); }, 1);
  ExpectRunsOf([this] { ClickIn("anchorButton"); }, 0);
  ExpectRunsOf([this] { ClickIn("insertRadio"); }, 1);
  ExpectRunsOf([this] { PressIn("probabilitySlider", Qt::Key_Left); }, 1);
  ExpectRunsOf([this] { ClickIn("newButton"); }, 1);
  ExpectRunsOf([this] { ClickIn("moveLeftButton"); }, 1);
  ExpectRunsOf([this] { ShowEditor(); }, 1);
}

TEST_F(RulesRuns, TypingANameIsNoneAndLeavingItIsOne) {
  CountRuns();
  testing::Activate(Editor());
  ExpectRunsOf([this] { testing::TypeInto(Name(), QStringLiteral("xyz")); }, 0);
  ExpectRunsOf([this] { QTest::keyClick(&Name(), Qt::Key_Tab); }, 1);
}

TEST_F(RulesRuns, OpeningTheEditorIsOneAndANewDocumentIsNone) {
  Editor().close();
  CountRuns();
  ExpectRunsOf([this] { ShowEditor(); }, 1);
  ExpectRunsOf([this] { Load(TheFilter()); }, 0);
  ExpectRunsOf([this] { window_->NewDocument(); }, 0);
}

TEST_F(RulesRuns, ARefusedChangeReloadsAndSoIsOne) {
  TheFilter().ShowInEditorWhenLocked = 1;
  ClickLock();
  CountRuns();
  ExpectLockWarning();
  ExpectRunsOf([this] { ClickIn("strictBox"); }, 1);
  ExpectRunsOf([this] { ClickIn("newButton"); }, 0);
  ExpectRunsOf([this] { ClickIn("deleteButton"); }, 0);
  ExpectRunsOf([this] { ClickIn("importButton"); }, 0);
  ExpectRunsOf([this] { ClickIn("moveLeftButton"); }, 1);
}

// The run begins within the click, before the box would be painted by itself.
TEST_F(RulesRuns, ABoxShowsItsStateInTheRunThatItStarts) {
  CountRuns();
  for (const char* name : {"strictBox", "onceBox"}) {
    for (const bool checked : {true, false}) {
      Settle();
      const testing::PaintCounter counter(In(name), [&] { return IsChecked(name) == checked; });
      int paints_before_run = 0;
      ExpectRuns(1, [&] { paints_before_run = counter.Paints; });
      ClickIn(name);
      EXPECT_EQ(IsChecked(name), checked);
      EXPECT_GT(paints_before_run, 0) << name;
      ExpectNoMoreRuns();
    }
  }
}

TEST_F(RulesRuns, WithoutAutoUpdateNothingRuns) {
  testing::Find<ByteTextEdit>(window_->Preview(), "originalEdit").SetBytes("x");
  ClickTab(0);
  ClickIn("strictBox");
  ClickIn("newButton");
  ExpectNoMoreRuns();
}

// A pattern as the String Editor first makes it: it matches nowhere, however the rule goes on.
TEST_F(RulesRuns, PatternOfOneEmptyStringNeitherHangsNorGrowsTheText) {
  CountRuns();
  auto& original = testing::Find<ByteTextEdit>(window_->Preview(), "originalEdit");
  original.SetBytes("some words");
  ClickIn("newButton");
  bool opened = false;
  testing::WithNextDialog<StringEditor>([&opened](StringEditor& dialog) {
    opened = true;
    testing::Click(testing::Find<QWidget>(dialog, "okButton"));
  });
  ClickIn("editPatternButton");
  EXPECT_TRUE(opened);
  ASSERT_EQ(TheFilter().Rules.Count(), 3U);
  EXPECT_EQ(TheFilter().Rules[2].Pattern.Subpatterns, (std::vector{Str("")}));
  TheFilter().Rules[2].Replacement = Of({Str("more")});
  const auto& modified = testing::Find<ByteTextEdit>(window_->Preview(), "modifiedEdit");
  for (const char* box : {"strictBox", "onceBox", "strictBox"}) {
    ClickIn(box);
    EXPECT_EQ(modified.Bytes(), "some words") << box;
  }
  ClickIn("replaceRadio");
  EXPECT_EQ(modified.Bytes(), "some words");
}

class SetsRuns : public testing::EditorFixture {
 protected:
  SetsRuns() : EditorFixture(testing::kSetsEditor) {
    Show(FilterOf({Tell()}, {SetOf("one", {Of({Str("1")})}), SetOf("two", {})}));
  }
};

TEST_F(SetsRuns, EachReloadIsOne) {
  CountRuns();
  ExpectRuns(1);
  ClickTab(1);
  ExpectNoMoreRuns();
  ExpectRuns(1);
  ClickIn("newButton");
  ExpectNoMoreRuns();
}

class FunctionsRuns : public testing::EditorFixture {
 protected:
  FunctionsRuns() : EditorFixture(testing::kFunctionsEditor) {
    Show(FilterOf({Tell()}, {}, {FunctionOf("one", {}), FunctionOf("two", {})}));
  }
};

TEST_F(FunctionsRuns, NothingIsOne) {
  CountRuns();
  ClickTab(1);
  ClickIn("newButton");
  ClickIn("argumentRadio");
  testing::TypeInto(In("argumentEdit"), QStringLiteral("a"));
  ClickIn("addPairButton");
  Editor().close();
  ShowEditor();
  ExpectNoMoreRuns();
}

// ---- During a run

// A rule shows a message while it runs, and the test acts as the user does behind it.
class DuringARun : public testing::EditorFixture {
 protected:
  DuringARun() : EditorFixture(testing::kRulesEditor) {
    Rule second = Replace(Of({Str("y")}), Of({Str("z")}));
    second.Name = "B";
    Show(FilterOf({Tell(), second}));
    testing::Find<ByteTextEdit>(window_->Preview(), "originalEdit").SetBytes("xy");
  }
  std::string Modified() {
    return testing::Find<ByteTextEdit>(window_->Preview(), "modifiedEdit").Bytes();
  }
  void ExpectRunWith(std::function<void()> meanwhile) {
    dialogs_.ExpectMessage(
        MessageIcon::Stop,
        "DEBUG: Incorrect function call: \"Tell(1)\" - function \"Tell\" dosn't exist.",
        MessageButtons::Ok, Answer::Ok, std::move(meanwhile));
  }
};

TEST_F(DuringARun, AnEditStartsARunWithinIt) {
  CountRuns();
  ExpectRunWith([this] {
    ExpectRuns(1);
    In<QAbstractButton>("onceBox").click();
    EXPECT_EQ(TheFilter().Rules[0].Once, 1);
  });
  ClickIn("strictBox");
  ExpectNoMoreRuns();
  EXPECT_EQ(TheFilter().Rules[0].Strict, 1);
  EXPECT_TRUE(IsChecked("onceBox"));
}

TEST_F(DuringARun, TheRuleBeingRunCanBeDeleted) {
  ClickOn("showPreviewButton");
  ExpectRunWith([this] {
    dialogs_.ExpectMessage(MessageIcon::Question, "Do you really want to delete rule \"Tell\"?",
                           MessageButtons::YesNo, Answer::Yes);
    In<QAbstractButton>("deleteButton").click();
  });
  testing::Click(testing::Find<QWidget>(window_->Preview(), "updateButton"));
  EXPECT_EQ(TheFilter().Rules.Count(), 1U);
  EXPECT_EQ(Captions(), std::vector<std::string>{"B"});
  EXPECT_EQ(Name().text(), "B");
  // The run goes on behind the position of the rule that is gone, where there is none.
  EXPECT_EQ(Modified(), "y");
}

TEST_F(DuringARun, ANewDocumentEmptiesTheEditorAndEndsTheRun) {
  CountRuns();
  testing::Find<ByteTextEdit>(window_->Preview(), "originalEdit").SetBytes("xy");
  ExpectRunWith([this] {
    Doc().Saved = true;
    window_->NewDocument();
  });
  ClickIn("strictBox");
  EXPECT_EQ(Tabs().count(), 0);
  EXPECT_FALSE(IsEnabled("rulePanel"));
  EXPECT_EQ(TextOf("rulesCount"), "0");
}

TEST_F(DuringARun, AnEditorHiddenByTheLockStaysHidden) {
  CountRuns();
  ExpectRunWith([this] { LockFilter(); });
  ShowEditor();
  EXPECT_FALSE(Editor().isVisible());
}

TEST_F(DuringARun, TheEditorCanBeClosed) {
  CountRuns();
  ExpectRunWith([this] { Editor().close(); });
  ClickIn("strictBox");
  EXPECT_FALSE(Editor().isVisible());
  EXPECT_EQ(TheFilter().Rules[0].Strict, 1);
}

}  // namespace
}  // namespace zarvo
