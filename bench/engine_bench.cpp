// How fast Patterns are found and Filters applied. Every benchmark counts bytes of the text at the
// start, so the same bytes/s at every size is what time in proportion to the text looks like.
#include <benchmark/benchmark.h>

#include <array>
#include <cstdint>
#include <string>
#include <utility>

#include "bench/sample_filter.h"
#include "bench/sample_text.h"
#include "engine/apply_filter.h"
#include "engine/matcher.h"

namespace zarvo {
namespace {

constexpr std::int64_t kKibi = 1024;
constexpr std::int64_t kMebi = 1024 * kKibi;

void CountBytes(benchmark::State& state) {
  state.SetBytesProcessed(state.iterations() * state.range(0));
  state.SetComplexityN(state.range(0));
}

// Finding: every match of the Pattern in a sample text of range(0) bytes.

void Find(benchmark::State& state, const Pattern& pattern) {
  TextBuffer text(SampleText(static_cast<std::size_t>(state.range(0))));
  const PreparedPattern prepared(pattern);
  EngineState engine_state;
  std::int64_t matches = 0;
  for ([[maybe_unused]] auto pass : state) {
    matches = 0;
    while (prepared.FindNextMatch(text, matches == 0, engine_state) != PreparedPattern::kNoMatch) {
      ++matches;
    }
    benchmark::DoNotOptimize(matches);
  }
  state.counters["matches"] = static_cast<double>(matches);
  CountBytes(state);
}

Pattern Anchored(SubpatternKind kind, std::string_view contents) {
  return PatternOf({Part(kind, contents)});
}

// An anchor that stands everywhere, in a Pattern that matches nowhere.
Pattern Rejected(SubpatternKind kind, std::string_view contents) {
  Pattern pattern = PatternOf({Part(kind, contents), Part(SubpatternKind::String, "#Q")});
  pattern.MostSignificant = 0;
  return pattern;
}

void FindSizes(benchmark::internal::Benchmark* benchmark) {
  benchmark->RangeMultiplier(16)->Range(4 * kKibi, 16 * kMebi);
}

BENCHMARK_CAPTURE(Find, StringSparse, Literal(kMark))->Apply(FindSizes);
BENCHMARK_CAPTURE(Find, StringDense, Literal("er"))->Apply(FindSizes);
BENCHMARK_CAPTURE(Find, StringSparseFrequentStart, Literal("thex"))->Apply(FindSizes);
BENCHMARK_CAPTURE(Find, CodeSparse, Anchored(SubpatternKind::CharacterCode, "#"))->Apply(FindSizes);
BENCHMARK_CAPTURE(Find, CodeDense, Anchored(SubpatternKind::CharacterCode, "e"))->Apply(FindSizes);
BENCHMARK_CAPTURE(Find, ListSparse, Anchored(SubpatternKind::CharacterList, "#@"))
    ->Apply(FindSizes);
BENCHMARK_CAPTURE(Find, ListDense, Anchored(SubpatternKind::CharacterList, "aeiou"))
    ->Apply(FindSizes);
BENCHMARK_CAPTURE(Find, NegatedListSparse,
                  Anchored(SubpatternKind::NegatedCharacterList, SampleAlphabet("#")))
    ->Apply(FindSizes);
BENCHMARK_CAPTURE(Find, NegatedListDense, Anchored(SubpatternKind::NegatedCharacterList, "aeiou"))
    ->Apply(FindSizes);
BENCHMARK_CAPTURE(Find, StringRejected, Rejected(SubpatternKind::String, "e"))->Apply(FindSizes);
BENCHMARK_CAPTURE(Find, CodeRejected, Rejected(SubpatternKind::CharacterCode, "e"))
    ->Apply(FindSizes);
BENCHMARK_CAPTURE(Find, ListRejected, Rejected(SubpatternKind::CharacterList, "aeiou"))
    ->Apply(FindSizes);
BENCHMARK_CAPTURE(Find, NegatedListRejected, Rejected(SubpatternKind::NegatedCharacterList, "#"))
    ->Apply(FindSizes);

// What other figures can be put beside: how often each byte occurs in a sample text.

void CountEachByte(benchmark::State& state) {
  const std::string text = SampleText(static_cast<std::size_t>(state.range(0)));
  for ([[maybe_unused]] auto pass : state) {
    std::array<std::uint32_t, 256> counts{};
    for (const char byte : text) ++counts[static_cast<unsigned char>(byte)];
    benchmark::DoNotOptimize(counts);
  }
  CountBytes(state);
}

BENCHMARK(CountEachByte)->Arg(16 * kMebi);

// Applying: a Filter to a sample text of range(0) bytes. The copy of the text that each run needs
// is timed too. Apply runs as the command line does, where nobody watches; ApplyWatched with a host
// that gets its turn at each match and does nothing in it, as between two pumps of the windows.

class UnwatchedHost : public RunHost {
 public:
  [[nodiscard]] bool TakesTurns() const override { return false; }
};

class RestingHost : public RunHost {
 public:
  Attention Attend() override { return {true, false}; }
};

void ApplyWith(RunHost& host, benchmark::State& state, Filter filter) {
  const std::string original = SampleText(static_cast<std::size_t>(state.range(0)));
  std::size_t size_after = 0;
  for ([[maybe_unused]] auto run : state) {
    EngineState engine_state;
    RandomGenerator random(1);
    std::string text = original;
    const RunContext context{engine_state, random, host};
    if (ApplyFilter(context, filter, text, nullptr, nullptr) != RunResult::Completed) {
      state.SkipWithError("the run was stopped");
      break;
    }
    benchmark::DoNotOptimize(text.data());
    size_after = text.size();
  }
  state.counters["bytes_after"] = static_cast<double>(size_after);
  CountBytes(state);
}

void Apply(benchmark::State& state, Filter filter) {
  UnwatchedHost host;
  ApplyWith(host, state, std::move(filter));
}

void ApplyWatched(benchmark::State& state, Filter filter) {
  RestingHost host;
  ApplyWith(host, state, std::move(filter));
}

// A Filter with the Function that the Rule calls.
Filter Calling(Rule rule) {
  Filter filter = FilterOf({std::move(rule)});
  filter.Functions.Append(UpFunction());
  return filter;
}

void ApplySizes(benchmark::internal::Benchmark* benchmark) {
  benchmark->RangeMultiplier(16)->Range(4 * kKibi, 16 * kMebi)->Unit(benchmark::kMicrosecond);
}

BENCHMARK_CAPTURE(Apply, Mixed, MixedFilter())->Apply(ApplySizes);
BENCHMARK_CAPTURE(Apply, FunctionOnEveryLetter,
                  Calling(Replacing(PatternOf({Part(SubpatternKind::CharacterList,
                                                    "abcdefghijklmnopqrstuvwxyz")}),
                                    PatternOf({Part(SubpatternKind::Function, "Up(1)")}))))
    ->Apply(ApplySizes);
BENCHMARK_CAPTURE(Apply, HundredIdleRules, IdleFilter(100))->Apply(ApplySizes);
BENCHMARK_CAPTURE(ApplyWatched, Mixed, MixedFilter())->Apply(ApplySizes);
BENCHMARK_CAPTURE(ApplyWatched, Growing, FilterOf({Replacing(Literal("e"), Literal("ee"))}))
    ->Apply(ApplySizes);

// Proportion: passes that would take time with the square of the text if each splice moved the rest
// of it. bench/growth reads the results of Growing.

void ProportionSizes(benchmark::internal::Benchmark* benchmark) {
  benchmark->RangeMultiplier(2)
      ->Range(kMebi, 256 * kMebi)
      ->Unit(benchmark::kMillisecond)
      ->Complexity(benchmark::oN);
}

// The insertion point lies so far behind the match that it is always outside what is being
// searched.
constexpr int kFarBehind = 1'000'000;

void FarBehindSizes(benchmark::internal::Benchmark* benchmark) {
  benchmark->RangeMultiplier(2)
      ->Range(2 * kMebi, 16 * kMebi)
      ->Unit(benchmark::kMillisecond)
      ->Complexity(benchmark::oN);
}

BENCHMARK_CAPTURE(Apply, Growing, FilterOf({Replacing(Literal("e"), Literal("ee"))}))
    ->Apply(ProportionSizes);
BENCHMARK_CAPTURE(Apply, Shrinking, FilterOf({Replacing(Literal("e"), {})}))
    ->Apply(ProportionSizes);
BENCHMARK_CAPTURE(Apply, InsertFarBehind,
                  FilterOf({Inserting(Literal("e"), kFarBehind, Literal("-"))}))
    ->Apply(FarBehindSizes);
BENCHMARK_CAPTURE(Apply, InsertFarAhead,
                  FilterOf({Inserting(Literal("e"), -kFarBehind, Literal("-"))}))
    ->Apply(FarBehindSizes);

}  // namespace
}  // namespace zarvo
