// The editors of Rules, Sets and Functions as a user works with them: opened from a main window.
#pragma once

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QLineEdit>
#include <QSlider>
#include <QStringList>
#include <QStyle>
#include <QStyleOptionSlider>
#include <QTest>
#include <QWheelEvent>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "model/filter_file.h"
#include "tests/gui/main_window_fixture.h"
#include "tests/support/builders.h"
#include "ui/byte_line_edit.h"
#include "ui/byte_text_edit.h"
#include "ui/object_tabs.h"

namespace zarvo::testing {

/// What is called differently from one editor to another.
struct EditorNames {
  const char* Window;
  const char* Tabs;
  const char* Panel;
  /// In the main window.
  const char* EditButton;
  const char* Count;
};

inline constexpr EditorNames kRulesEditor = {"RulesEditor", "ruleTabs", "rulePanel",
                                             "editRulesButton", "rulesCount"};
inline constexpr EditorNames kSetsEditor = {"SetsEditor", "setTabs", "setPanel", "editSetsButton",
                                            "setsCount"};
inline constexpr EditorNames kFunctionsEditor = {"FunctionsEditor", "functionTabs", "functionPanel",
                                                 "editFunctionsButton", "functionsCount"};

/// The only window of this name.
inline QDialog& TopLevel(const char* name) {
  for (QWidget* window : QApplication::topLevelWidgets()) {
    if (window->objectName() != QString::fromLatin1(name)) continue;
    if (auto* dialog = qobject_cast<QDialog*>(window)) return *dialog;
  }
  throw std::runtime_error(std::string("no window ") + name);
}

/// Where the middle of the slider's handle is when it stands at this value.
inline QPoint HandleAt(const QSlider& slider, int value) {
  QStyleOptionSlider option;
  option.initFrom(&slider);
  option.orientation = slider.orientation();
  option.state |= QStyle::State_Horizontal;
  option.minimum = slider.minimum();
  option.maximum = slider.maximum();
  option.tickPosition = slider.tickPosition();
  option.tickInterval = slider.tickInterval();
  option.sliderPosition = value;
  option.sliderValue = value;
  option.subControls = QStyle::SC_SliderGroove | QStyle::SC_SliderHandle;
  return slider.style()
      ->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, &slider)
      .center();
}

/// Drags the handle from where it stands over all of these values.
inline void Drag(QSlider& slider, const std::vector<int>& values) {
  ASSERT_TRUE(slider.isEnabled()) << slider.objectName().toStdString();
  QTest::mousePress(&slider, Qt::LeftButton, {}, HandleAt(slider, slider.value()));
  for (const int value : values) QTest::mouseMove(&slider, HandleAt(slider, value));
  const QPoint end = HandleAt(slider, values.back());
  QTest::mouseRelease(&slider, Qt::LeftButton, {}, end);
}

/// Turns the mouse wheel over the control by one notch, away from the user or towards him.
inline void TurnWheel(QWidget& control, bool away) {
  ASSERT_TRUE(control.isEnabled()) << control.objectName().toStdString();
  const QPointF place = QRectF(control.rect()).center();
  QWheelEvent event(place, control.mapToGlobal(place), QPoint(), QPoint(0, away ? 120 : -120),
                    Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
  QApplication::sendEvent(&control, &event);
}

/// All that a file of the filter holds.
inline std::string BytesOf(zarvo::Filter filter) { return FilterFileBytes(filter); }

class EditorFixture : public MainWindowFixture {
 protected:
  explicit EditorFixture(const EditorNames& names) : names_(names) {
    // No field of the main window is left, and so committed, by a click on "Edit...".
    LeaveField();
  }

  QDialog& Editor() { return TopLevel(names_.Window); }
  template <typename Control = QWidget>
  Control& In(const char* name) {
    return Find<Control>(Editor(), name);
  }
  ObjectTabs& Tabs() { return In<ObjectTabs>(names_.Tabs); }
  ByteLineEdit& Name() { return In<ByteLineEdit>("nameEdit"); }
  int Selected() { return Tabs().currentIndex(); }
  std::vector<std::string> Captions() {
    std::vector<std::string> captions;
    for (int i = 0; i < Tabs().count(); ++i) captions.push_back(Tabs().Caption(i).toStdString());
    return captions;
  }
  std::string ShownIn(const char* name) { return In<QLineEdit>(name).text().toStdString(); }
  bool IsEnabled(const char* name) { return In(name).isEnabled(); }
  bool IsChecked(const char* name) { return In<QAbstractButton>(name).isChecked(); }

  /// Makes this the document, by way of a file.
  void Load(zarvo::Filter filter) {
    window_->LoadDocument(WriteFilter("loaded.zvf", std::move(filter)));
  }
  void ShowEditor() { ClickOn(names_.EditButton); }
  void Show(zarvo::Filter filter) {
    Load(std::move(filter));
    ShowEditor();
    ASSERT_TRUE(Editor().isVisible());
  }
  static zarvo::Filter Locked(zarvo::Filter filter, bool show_in_editor = true) {
    filter.Locked = 1;
    filter.ShowInEditorWhenLocked = show_in_editor ? 1 : 0;
    return filter;
  }
  /// Clicks the main window's Lock box and accepts the dialog; the filter has no password.
  void ClickLock() {
    WithNextDialog<QDialog>(
        [](QDialog& dialog) { testing::Click(Find<QWidget>(dialog, "okButton")); });
    ClickOn("lockBox");
  }

  void ClickIn(const char* name) { testing::Click(In(name)); }
  void ClickTab(int position) {
    Activate(Editor());
    ASSERT_TRUE(Tabs().isEnabled());
    QTest::mouseClick(&Tabs(), Qt::LeftButton, {}, Tabs().tabRect(position).center());
  }
  void TypeName(const char* text) { SelectAllAndType(Name(), QString::fromLatin1(text)); }
  void PressIn(const char* name, Qt::Key key) {
    TypeInto(In(name), {});
    QTest::keyClick(&In(name), key);
  }
  /// Handles what waits to be done after an event.
  static void Settle() { QCoreApplication::processEvents(); }

  // ---- Runs of the Preview. The filter's rules must begin with Tell().

  /// A rule that shows a message in each run over the text of CountRuns.
  static Rule Tell() {
    Rule rule = Replace(Of({Str("x")}), Of({Call("Tell(1)")}));
    rule.Name = "Tell";
    return rule;
  }
  /// From now on each run must have been expected.
  void CountRuns() {
    Find<ByteTextEdit>(window_->Preview(), "originalEdit").SetBytes("x");
    ExpectRuns(1);
    ClickOn("autoUpdateBox");
    ExpectNoMoreRuns();
  }
  /// While the message of each is shown, meanwhile is called.
  void ExpectRuns(int count, const std::function<void()>& meanwhile = {}) {
    for (int i = 0; i < count; ++i) {
      dialogs_.ExpectMessage(
          MessageIcon::Stop,
          "DEBUG: Incorrect function call: \"Tell(1)\" - function \"Tell\" dosn't exist.",
          MessageButtons::Ok, Answer::Ok, meanwhile);
    }
  }
  void ExpectNoMoreRuns() {
    Settle();
    EXPECT_TRUE(dialogs_.IsDone());
  }

  EditorNames names_;
};

}  // namespace zarvo::testing
