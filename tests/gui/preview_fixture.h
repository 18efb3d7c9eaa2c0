// A Preview of its own for each test, and what a user does with it.
#pragma once

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

namespace zarvo::testing {

inline constexpr const char* kTextFiles = "Text files (*.txt)|*.txt|All files (*.*)|*.*|";

inline Rule Change(const std::string& from, const std::string& to) {
  return Replace(Of({Str(from)}), Of({Str(to)}));
}

// Repeats for as long as the function "Step" gives "x" for "x".
inline Rule Wait() {
  Rule rule = Replace(Of({Str("x")}), Of({Call("Step(1)")}));
  rule.Strict = 1;
  return rule;
}

inline Function StepInPlace() { return FunctionOf("Step", {}, Function::kReturnArgument); }

// Fails the test at its message: no box is expected.
inline Rule Never() { return Replace(Of({testing::NotList("")}), Of({Call("the rule ran")})); }

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

}  // namespace zarvo::testing
