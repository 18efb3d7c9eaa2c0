#include <QRadioButton>
#include <map>

#include "tests/gui/rules_editor_fixture.h"
#include "ui/range_slider.h"
#include "ui/string_editor.h"

namespace zarvo {
namespace {

using testing::BytesOf;
using testing::Called;
using testing::FilterOf;
using testing::FromSet;
using testing::Insert;
using testing::Of;
using testing::Replace;
using testing::SetOf;
using testing::Str;

// One of these for each kind of rule stands in the middle of three.
zarvo::Filter Around(const Rule& rule) {
  return FilterOf({Called("left", {}), Called("tried", rule), Called("right", {})},
                  {SetOf("first", {}), SetOf("second", {}), SetOf("third", {})});
}

struct LockedCase {
  const char* Name;
  zarvo::Rule Rule;
};

void PrintTo(const LockedCase& locked, std::ostream* out) { *out << locked.Name; }

std::vector<LockedCase> LockedCases() {
  const Pattern pattern = Of({Str("abcdef")});
  Rule middle = Replace(pattern, Of({Str("n")}));
  middle.From = 2;
  middle.To = 4;
  middle.Probability = 50;
  Rule flags = Insert(pattern, 3, {});
  flags.Strict = 1;
  flags.Once = 1;
  return {{"ReplacesByString", middle},
          {"Inserts", flags},
          {"ReplacesBySetInSequence", FromSet(pattern, ReplacementSource::SetInSequence, "second")},
          {"ReplacesBySetAtRandom", FromSet(pattern, ReplacementSource::SetAtRandom, "second")},
          {"ReplacesBySetThatIsGone", FromSet(pattern, ReplacementSource::SetInSequence, "gone")},
          {"ReplacesByUnknownKind", FromSet(pattern, static_cast<ReplacementSource>(9), "x")}};
}

class RulesEditorLock : public testing::EditorFixture {
 protected:
  RulesEditorLock() : EditorFixture(testing::kRulesEditor) {}

  // All that the editor shows.
  std::map<std::string, std::string> Shown() {
    std::map<std::string, std::string> shown;
    for (QWidget* control : Editor().findChildren<QWidget*>()) {
      std::string state = control->isEnabled() ? "on " : "off ";
      if (auto* button = qobject_cast<QAbstractButton*>(control)) {
        state += button->isChecked() ? "checked" : "";
      } else if (auto* edit = qobject_cast<QLineEdit*>(control)) {
        state += edit->text().toStdString();
      } else if (auto* slider = qobject_cast<QSlider*>(control)) {
        state += std::to_string(slider->value());
      } else if (auto* box = qobject_cast<QComboBox*>(control)) {
        state += std::to_string(box->currentIndex()) + " of " + std::to_string(box->count());
      } else {
        continue;
      }
      shown[control->objectName().toStdString()] = state;
    }
    auto& range = In<RangeSlider>("fromToSlider");
    shown["range"] = range.HasSelection() ? std::to_string(range.SelectionFrom()) + " to " +
                                                std::to_string(range.SelectionTo())
                                          : "";
    shown["tabs"] = ::testing::PrintToString(Captions()) + std::to_string(Selected());
    return shown;
  }

  // Tries to change the filter by this control, by every way that it has.
  std::vector<std::function<void()>> WaysToChange(QWidget& control) {
    std::vector<std::function<void()>> ways;
    const auto key = [&](Qt::Key pressed) {
      ways.emplace_back([&control, pressed] {
        testing::TypeInto(control, {});
        QTest::keyClick(&control, pressed);
      });
    };
    if (qobject_cast<QAbstractButton*>(&control) != nullptr) {
      ways.emplace_back([&control] { testing::Click(control); });
      key(Qt::Key_Space);
      if (qobject_cast<QRadioButton*>(&control) != nullptr) key(Qt::Key_Down);
    } else if (auto* slider = qobject_cast<QSlider*>(&control)) {
      for (const Qt::Key pressed : {Qt::Key_Left, Qt::Key_Right, Qt::Key_Home, Qt::Key_End}) {
        key(pressed);
      }
      ways.emplace_back([slider] { testing::TurnWheel(*slider, true); });
      ways.emplace_back([slider] { testing::TurnWheel(*slider, false); });
      ways.emplace_back([slider] {
        testing::Drag(*slider, {slider->minimum(), slider->maximum(), slider->minimum()});
      });
    } else if (qobject_cast<QComboBox*>(&control) != nullptr) {
      for (const Qt::Key pressed : {Qt::Key_Down, Qt::Key_Up, Qt::Key_End}) key(pressed);
    } else if (qobject_cast<QLineEdit*>(&control) != nullptr) {
      ways.emplace_back([&control] { testing::TypeInto(control, QStringLiteral("zz")); });
      key(Qt::Key_Backspace);
      ways.emplace_back(
          [&control] { testing::SelectAllAndType(control, QStringLiteral("other")); });
    }
    return ways;
  }

  static constexpr std::initializer_list<const char*> kChangingControls = {
      "newButton",    "deleteButton", "moveLeftButton", "moveRightButton",  "importButton",
      "nameEdit",     "stringRadio",  "fromSetRadio",   "setBox",           "sequenceRadio",
      "randomRadio",  "onceBox",      "replaceRadio",   "insertRadio",      "fromToSlider",
      "anchorButton", "afterSlider",  "strictBox",      "probabilitySlider"};
};

class EveryControlOfALockedRule : public RulesEditorLock,
                                  public ::testing::WithParamInterface<LockedCase> {};

TEST_P(EveryControlOfALockedRule, ChangesNothingSpringsBackAndWarnsOnce) {
  Show(Locked(Around(GetParam().Rule)));
  ClickTab(1);
  const std::string before = BytesOf(TheFilter());
  const auto shown = Shown();
  // What is clicked first depends on the case; the warning comes with the first change.
  ExpectLockWarning();
  ClickIn("newButton");
  ASSERT_TRUE(dialogs_.IsDone());
  std::size_t tried = 0;
  for (const char* name : kChangingControls) {
    QWidget& control = In(name);
    if (!control.isEnabled()) continue;
    for (const auto& way : WaysToChange(control)) {
      way();
      Settle();
      EXPECT_EQ(BytesOf(TheFilter()), before) << name;
      EXPECT_EQ(Shown(), shown) << name;
      ++tried;
    }
  }
  EXPECT_GT(tried, 20U);
  EXPECT_TRUE(Doc().Saved);
}

TEST_P(EveryControlOfALockedRule, WarnsWhereItIsTheFirstToChange) {
  zarvo::Filter filter = Locked(Around(GetParam().Rule));
  std::size_t tried = 0;
  for (const char* name : kChangingControls) {
    Show(filter);
    ClickTab(1);
    QWidget& control = In(name);
    if (!control.isEnabled()) continue;
    const std::string before = BytesOf(TheFilter());
    const auto shown = Shown();
    // A radio button that is checked already changes nothing.
    auto* button = qobject_cast<QRadioButton*>(&control);
    const bool changes = button == nullptr || !button->isChecked();
    if (changes) ExpectLockWarning();
    WaysToChange(control).front()();
    // At the end of its range a slider needs the other key.
    if (!dialogs_.IsDone()) WaysToChange(control)[1]();
    Settle();
    EXPECT_TRUE(dialogs_.IsDone()) << name;
    EXPECT_EQ(BytesOf(TheFilter()), before) << name;
    EXPECT_EQ(Shown(), shown) << name;
    ++tried;
  }
  EXPECT_GT(tried, 10U);
}

INSTANTIATE_TEST_SUITE_P(All, EveryControlOfALockedRule, ::testing::ValuesIn(LockedCases()),
                         [](const ::testing::TestParamInfo<LockedCase>& locked) {
                           return std::string(locked.param.Name);
                         });

TEST_F(RulesEditorLock, ADraggedSliderIsLetGoByTheWarning) {
  Rule rule = Insert(Of({Str("abcdef")}), 1, {});
  Show(Locked(FilterOf({rule})));
  auto& slider = In<QSlider>("afterSlider");
  ExpectLockWarning();
  QTest::mousePress(&slider, Qt::LeftButton, {}, testing::HandleAt(slider, 1));
  QTest::mouseMove(&slider, testing::HandleAt(slider, 5));
  EXPECT_FALSE(slider.isSliderDown());
  EXPECT_EQ(slider.value(), 1);
  QTest::mouseMove(&slider, testing::HandleAt(slider, 6));
  EXPECT_EQ(slider.value(), 1);
  QTest::mouseRelease(&slider, Qt::LeftButton, {}, testing::HandleAt(slider, 6));
  EXPECT_EQ(slider.value(), 1);
  EXPECT_EQ(TheFilter().Rules[0].From, 1);
}

TEST_F(RulesEditorLock, TheAnchorStaysWhereItWas) {
  Rule rule = Replace(Of({Str("abcdef")}), {});
  rule.From = 2;
  rule.To = 4;
  Show(Locked(FilterOf({rule, rule})));
  ExpectLockWarning();
  ClickIn("anchorButton");
  ClickLock();
  ASSERT_EQ(TheFilter().Locked, 0);
  testing::Drag(In<QSlider>("fromToSlider"), {3});
  EXPECT_EQ(TheFilter().Rules[0].From, 3);
  EXPECT_EQ(TheFilter().Rules[0].To, 4);
}

TEST_F(RulesEditorLock, AReloadKeepsTheNameOfASetThatIsGone) {
  const zarvo::Filter filter =
      Locked(Around(FromSet({}, ReplacementSource::SetInSequence, "gone")));
  Show(filter);
  ClickTab(1);
  EXPECT_EQ(TheFilter().Rules[1].ReplacementSetName, "gone");
  EXPECT_EQ(In<QComboBox>("setBox").currentIndex(), 0);
  testing::Activate(*window_);
  testing::Activate(Editor());
  EXPECT_EQ(In<QComboBox>("setBox").currentIndex(), 0);
  EXPECT_EQ(TheFilter().Rules[1].ReplacementSetName, "gone");
}

TEST_F(RulesEditorLock, OpeningALockedFilterOverAnUnlockedOneChangesNoRule) {
  Show(Around({}));
  Load(Locked(
      FilterOf({FromSet({}, ReplacementSource::SetAtRandom, "gone")}, {SetOf("first", {})})));
  ASSERT_TRUE(Editor().isVisible());
  EXPECT_EQ(TheFilter().Rules[0].ReplacementSetName, "gone");
}

TEST_F(RulesEditorLock, LookingAroundRaisesNoWarning) {
  Show(Locked(Around({})));
  for (const int tab : {2, 0, 1}) ClickTab(tab);
  testing::TypeInto(Name(), {});
  QTest::keyClick(&Name(), Qt::Key_Tab);
  Settle();
  testing::Activate(*window_);
  ClickOn("editRulesButton");
  EXPECT_EQ(Selected(), 1);
  EXPECT_TRUE(Doc().Saved);
}

TEST_F(RulesEditorLock, DeleteAsksNothing) {
  Show(Locked(Around({})));
  ExpectLockWarning();
  ClickIn("deleteButton");
  EXPECT_EQ(TheFilter().Rules.Count(), 3U);
  EXPECT_EQ(Tabs().count(), 3);
}

TEST_F(RulesEditorLock, PatternsAreShownButNotTakenBack) {
  Show(Locked(Around(Replace(Of({Str("abc")}), Of({Str("n")})))));
  ClickTab(1);
  const std::string before = BytesOf(TheFilter());
  for (const char* name : {"editPatternButton", "editReplacementButton"}) {
    bool shown = false;
    testing::WithNextDialog<StringEditor>([&shown](StringEditor& dialog) {
      shown = true;
      dialog.accept();
    });
    ClickIn(name);
    EXPECT_TRUE(shown) << name;
    EXPECT_EQ(BytesOf(TheFilter()), before) << name;
  }
  EXPECT_TRUE(Doc().Saved);
}

// ---- Arming the warning

TEST_F(RulesEditorLock, OpenArmsTheWarningAgain) {
  for (int i = 0; i < 2; ++i) {
    Show(Locked(Around({})));
    ExpectLockWarning();
    ClickIn("newButton");
    ClickIn("newButton");
    EXPECT_TRUE(dialogs_.IsDone());
  }
}

TEST_F(RulesEditorLock, TheLockBoxHandsOverTheLockAndArmsTheWarningAgain) {
  Show(Locked(Around({})));
  ExpectLockWarning();
  ClickIn("newButton");
  ClickLock();
  ClickIn("newButton");
  EXPECT_EQ(TheFilter().Rules.Count(), 4U);
  ClickLock();
  ExpectLockWarning();
  ClickIn("newButton");
  ClickIn("newButton");
  EXPECT_EQ(TheFilter().Rules.Count(), 4U);
}

TEST_F(RulesEditorLock, ItsWarningIsItsOwn) {
  Show(Locked(Around({})));
  ExpectLockWarning();
  ClickIn("newButton");
  ClickOn("editSetsButton");
  ExpectLockWarning();
  testing::Click(testing::Find<QWidget>(testing::TopLevel("SetsEditor"), "newButton"));
  ExpectLockWarning();
  ClickOn("autoIncrementBox");
  EXPECT_TRUE(dialogs_.IsDone());
}

TEST_F(RulesEditorLock, NewLeavesTheEditorLockedAndItsWarningShown) {
  Show(Locked(Around({})));
  ExpectLockWarning();
  ClickIn("newButton");
  window_->NewDocument();
  ASSERT_EQ(TheFilter().Locked, 0);
  ClickIn("newButton");
  EXPECT_EQ(TheFilter().Rules.Count(), 0U);
  Load(Around({}));
  ClickIn("newButton");
  EXPECT_EQ(TheFilter().Rules.Count(), 4U);
}

// ---- Hidden by the lock

TEST_F(RulesEditorLock, ALockThatHidesTheEditorsClosesIt) {
  Show(Around({}));
  ClickLock();
  ASSERT_EQ(TheFilter().Locked, 1);
  EXPECT_FALSE(Editor().isVisible());
  EXPECT_FALSE(Get("editRulesButton").isEnabled());
  ClickLock();
  EXPECT_FALSE(Editor().isVisible());
  ShowEditor();
  EXPECT_TRUE(Editor().isVisible());
}

TEST_F(RulesEditorLock, OpeningAFilterWhoseLockHidesClosesIt) {
  Show(Around({}));
  Load(Locked(Around({}), false));
  EXPECT_FALSE(Editor().isVisible());
  EXPECT_FALSE(Get("editRulesButton").isEnabled());
}

TEST_F(RulesEditorLock, ALockThatShowsTheEditorsLeavesItOpen) {
  Show(Around({}));
  ClickOn("showWhenLockedBox");
  ClickLock();
  EXPECT_TRUE(Editor().isVisible());
}

}  // namespace
}  // namespace zarvo
