// Merge dialogs with long lists, on the platform that has no screen.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QListView>
#include <QPushButton>

#include "app/services/merge_lists.h"
#include "bench/sample_filter.h"
#include "ui/merge_dialog.h"

namespace zarvo {
namespace {

Filter SourceOfSize(const benchmark::State& state) {
  return IdleFilter(static_cast<std::size_t>(state.range(0)));
}

void ShowPainted(QWidget& window) {
  window.show();
  QApplication::processEvents();
}

// Every step-th entry, in as few ranges as that needs.
void SelectEvery(QListView& list, int step) {
  const QAbstractItemModel& model = *list.model();
  QItemSelection selection;
  if (step == 1) {
    selection.select(model.index(0, 0), model.index(model.rowCount() - 1, 0));
  } else {
    for (int row = 0; row < model.rowCount(); row += step) {
      selection.append(QItemSelectionRange(model.index(row, 0)));
    }
  }
  list.selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
}

// From the loaded filter to the painted dialog.
void OpenMergeDialog(benchmark::State& state) {
  const Filter target;
  const Filter source = SourceOfSize(state);
  for ([[maybe_unused]] auto open : state) {
    FilterMerge merge(target, source);
    MergeDialog dialog(merge, [] {});
    ShowPainted(dialog);
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

// Every entry, or every second one, to the other list and back, painted each time.
void MoveItems(benchmark::State& state, int step) {
  const Filter target;
  FilterMerge merge(target, SourceOfSize(state));
  MergeDialog dialog(merge, [] {});
  ShowPainted(dialog);
  auto& available = *dialog.findChild<QListView*>(QStringLiteral("availableList"));
  auto& to_add = *dialog.findChild<QListView*>(QStringLiteral("toAddList"));
  auto& add = *dialog.findChild<QPushButton*>(QStringLiteral("addButton"));
  auto& remove = *dialog.findChild<QPushButton*>(QStringLiteral("removeButton"));
  for ([[maybe_unused]] auto there_and_back : state) {
    SelectEvery(available, step);
    add.click();
    QApplication::processEvents();
    SelectEvery(to_add, 1);
    remove.click();
    QApplication::processEvents();
  }
  if (available.model()->rowCount() != state.range(0)) state.SkipWithError("items are missing");
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

void MoveAll(benchmark::State& state) { MoveItems(state, 1); }
void MoveEverySecond(benchmark::State& state) { MoveItems(state, 2); }

void AppendMerged(benchmark::State& state) {
  FilterMerge merge(Filter(), SourceOfSize(state));
  std::vector<std::size_t> positions(static_cast<std::size_t>(state.range(0)));
  for (std::size_t i = 0; i < positions.size(); ++i) positions[i] = i;
  merge.Lists(MergeKind::Rules).Add(positions);
  for ([[maybe_unused]] auto append : state) {
    Filter target;
    merge.AppendTo(target);
    benchmark::DoNotOptimize(target.Rules.Elements.data());
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

void RuleCounts(benchmark::internal::Benchmark* benchmark) {
  benchmark->RangeMultiplier(10)->Range(100, 100'000)->Unit(benchmark::kMillisecond);
}

BENCHMARK(OpenMergeDialog)->Apply(RuleCounts);
BENCHMARK(MoveAll)->Apply(RuleCounts);
BENCHMARK(MoveEverySecond)->Apply(RuleCounts);
BENCHMARK(AppendMerged)->Apply(RuleCounts);

}  // namespace
}  // namespace zarvo

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
}
