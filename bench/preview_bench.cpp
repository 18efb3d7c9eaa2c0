// How long the Preview takes from the start of an update until the result is painted, on the
// offscreen platform: what a user waits for at each change with Auto-update on.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <cstddef>
#include <string>

#include "bench/sample_filter.h"
#include "bench/sample_text.h"
#include "tests/gui/no_dialogs.h"
#include "ui/byte_text_edit.h"
#include "ui/preview_window.h"

namespace zarvo {
namespace {

// Rules that all find something, the last of them as the first: each undoes what the one before it
// did. "er" stands at about one byte in a hundred.
Filter MatchingFilter(std::size_t rules) {
  Filter filter;
  for (std::size_t i = 0; i < rules; ++i) {
    filter.Rules.Append(i % 2 == 0 ? Replacing(Literal("er"), Literal("<re>"))
                                   : Replacing(Literal("<re>"), Literal("er")));
  }
  return filter;
}

// Rules that each find a piece of the text's first 4 KiB, which is there once or some times more;
// the next one puts it back.
Filter UsualFilter(std::size_t rules) {
  constexpr std::size_t kPieceSize = 5;
  constexpr std::size_t kTextSize = 4096;
  const std::string text = SampleText(kTextSize);
  Filter filter;
  for (std::size_t i = 0; i < rules; ++i) {
    const std::string piece = text.substr(i / 2 * 7919 % (kTextSize - kPieceSize), kPieceSize);
    filter.Rules.Append(i % 2 == 0 ? Replacing(Literal(piece), Literal("<" + piece + ">"))
                                   : Replacing(Literal("<" + piece + ">"), Literal(piece)));
  }
  return filter;
}

// range(0) bytes of text, and a Filter of range(1) Rules.
void Update(benchmark::State& state, Filter (*make_filter)(std::size_t rules)) {
  Filter filter = make_filter(static_cast<std::size_t>(state.range(1)));
  testing::NoDialogs dialogs;
  PreviewWindow preview(filter, dialogs);
  auto& original = *preview.findChild<ByteTextEdit*>(QStringLiteral("originalEdit"));
  auto& modified = *preview.findChild<ByteTextEdit*>(QStringLiteral("modifiedEdit"));
  original.SetBytes(SampleText(static_cast<std::size_t>(state.range(0))));
  preview.show();
  QApplication::processEvents();
  for ([[maybe_unused]] auto update : state) {
    preview.Update();
    modified.viewport()->repaint();
  }
  state.counters["bytes_after"] = static_cast<double>(modified.Bytes().size());
}

void Sizes(benchmark::internal::Benchmark* benchmark) {
  constexpr std::int64_t kKibi = 1024;
  benchmark->Args({16 * kKibi, 200})
      ->Args({64 * kKibi, 100})
      ->Args({4 * kKibi, 1000})
      ->Unit(benchmark::kMillisecond)
      ->UseRealTime();
}

BENCHMARK_CAPTURE(Update, Matching, MatchingFilter)->Apply(Sizes);
BENCHMARK_CAPTURE(Update, Usual, UsualFilter)->Apply(Sizes);
BENCHMARK_CAPTURE(Update, Idle, IdleFilter)->Apply(Sizes);

int Main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}

}  // namespace
}  // namespace zarvo

int main(int argc, char** argv) { return zarvo::Main(argc, argv); }
