// How long the user waits for the Rules editor, by the number of Rules: each step with the painting
// that it causes, on the offscreen platform.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QPushButton>
#include <QTabBar>
#include <QTest>
#include <memory>
#include <string>

#include "bench/sample_filter.h"
#include "tests/gui/no_dialogs.h"
#include "ui/byte_line_edit.h"
#include "ui/rules_editor.h"

namespace zarvo {
namespace {

// Nothing is asked but whether to delete.
class YesDialogs : public testing::NoDialogs {
 public:
  Answer Message(QWidget* /*parent*/, MessageIcon /*icon*/, const QString& /*text*/,
                 MessageButtons /*buttons*/) override {
    return Answer::Yes;
  }
};

class OpenEditor {
 public:
  explicit OpenEditor(const benchmark::State& state)
      : filter_(StoredFilter(static_cast<std::size_t>(state.range(0)))) {}

  void Show() {
    editor_.show();
    Paint();
  }
  static void Paint() { QCoreApplication::processEvents(); }
  template <typename Control>
  Control& Get(const char* name) {
    return *editor_.findChild<Control*>(QString::fromLatin1(name));
  }
  void Press(const char* name) {
    Get<QPushButton>(name).click();
    Paint();
  }
  void Select(int position) {
    Get<QTabBar>("ruleTabs").setCurrentIndex(position);
    Paint();
  }

 private:
  Filter filter_;
  YesDialogs dialogs_;
  SubpatternLibrary library_{"./", ""};
  RulesEditor editor_{EditorHost{.Services = {dialogs_, library_, [](int) {}},
                                 .Filter = filter_,
                                 .MarkModified = [] {},
                                 .ShowCounts = [] {},
                                 .AutoUpdatePreview = [] {}}};
};

// A new editor each time, which knows no tab yet.
void OpenRules(benchmark::State& state) {
  for ([[maybe_unused]] auto open : state) {
    state.PauseTiming();
    auto editor = std::make_unique<OpenEditor>(state);
    state.ResumeTiming();
    editor->Show();
    state.PauseTiming();
    editor.reset();
    state.ResumeTiming();
  }
}

void TypeInRuleName(benchmark::State& state) {
  OpenEditor editor(state);
  editor.Show();
  editor.Select(static_cast<int>(state.range(0) / 2));
  auto& name = editor.Get<ByteLineEdit>("nameEdit");
  name.setFocus();
  name.clear();
  for ([[maybe_unused]] auto type : state) {
    QTest::keyClick(&name, name.text().size() < 20 ? Qt::Key_X : Qt::Key_Backspace);
    OpenEditor::Paint();
  }
}

void MoveRule(benchmark::State& state) {
  OpenEditor editor(state);
  editor.Show();
  editor.Select(static_cast<int>(state.range(0) / 2));
  bool right = false;
  for ([[maybe_unused]] auto move : state) {
    editor.Press(right ? "moveRightButton" : "moveLeftButton");
    right = !right;
  }
}

void DeleteRule(benchmark::State& state) {
  OpenEditor editor(state);
  editor.Show();
  for ([[maybe_unused]] auto deletion : state) {
    editor.Select(static_cast<int>(state.range(0) / 2));
    editor.Press("deleteButton");
    state.PauseTiming();
    editor.Press("newButton");
    state.ResumeTiming();
  }
}

void SelectRule(benchmark::State& state) {
  OpenEditor editor(state);
  editor.Show();
  int position = 0;
  for ([[maybe_unused]] auto select : state) {
    editor.Select(position);
    position = (position + 1) % static_cast<int>(state.range(0));
  }
}

BENCHMARK(OpenRules)->Arg(100)->Arg(1000)->Unit(benchmark::kMillisecond);
BENCHMARK(TypeInRuleName)->Arg(100)->Arg(1000)->Unit(benchmark::kMillisecond);
BENCHMARK(MoveRule)->Arg(100)->Arg(1000)->Unit(benchmark::kMillisecond);
BENCHMARK(DeleteRule)->Arg(100)->Arg(1000)->Unit(benchmark::kMillisecond);
BENCHMARK(SelectRule)->Arg(100)->Arg(1000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace zarvo

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
