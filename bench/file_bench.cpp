// How fast filters are loaded, saved and checked, as files and as JSON, by their number of Rules.
// ReadBytes and WriteBytes move the same bytes and do nothing else: what Load and Save take beyond
// them is the format's own work.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <filesystem>
#include <random>
#include <string>
#include <system_error>
#include <vector>

#include "app/services/integrity_check.h"
#include "bench/sample_filter.h"
#include "cli/filter_json.h"
#include "model/file_io.h"
#include "model/filter_file.h"

namespace zarvo {
namespace {

// A path in the system's temporary folder; the file there goes when the object does.
class TemporaryFile {
 public:
  TemporaryFile() {
    const std::string name = "zarvo-bench-" + std::to_string(std::random_device()()) + ".zvf";
    path_ = (std::filesystem::temp_directory_path() / name).string();
  }
  ~TemporaryFile() {
    std::error_code ignored;
    std::filesystem::remove(path_, ignored);
  }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  [[nodiscard]] const std::string& Path() const { return path_; }

 private:
  std::string path_;
};

class NoQuestions : public VersionQuestions {
 public:
  bool SaveInNewestFormat(std::int32_t /*own_version*/) override { return false; }
  bool LoadNewerFormat(std::int32_t /*file_version*/) override { return false; }
};

Filter FilterOfSize(const benchmark::State& state) {
  return StoredFilter(static_cast<std::size_t>(state.range(0)));
}

void CountBytes(benchmark::State& state, std::size_t bytes) {
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes));
  state.SetComplexityN(state.range(0));
}

// False, and the benchmark ends, after an error.
bool Succeeded(benchmark::State& state, const FileResult& result) {
  if (result) state.SkipWithError(result->Message().c_str());
  return !result;
}

bool Parse(benchmark::State& state, const std::string& bytes) {
  Filter filter;
  Archive archive = Archive::Loading(bytes);
  NoQuestions questions;
  const ArchiveResult result = SerializeFilter(archive, filter, questions, false);
  if (!result.Ok()) state.SkipWithError(result.Message().c_str());
  benchmark::DoNotOptimize(filter.Rules.Elements.data());
  return result.Ok();
}

void Load(benchmark::State& state) {
  Filter filter = FilterOfSize(state);
  const TemporaryFile file;
  const std::string stored = FilterFileBytes(filter);
  if (!Succeeded(state, WriteFile(file.Path(), stored))) return;
  for ([[maybe_unused]] auto load : state) {
    std::string bytes;
    if (!Succeeded(state, ReadFile(file.Path(), bytes)) || !Parse(state, bytes)) break;
  }
  CountBytes(state, stored.size());
}

void ReadBytes(benchmark::State& state) {
  Filter filter = FilterOfSize(state);
  const TemporaryFile file;
  const std::string stored = FilterFileBytes(filter);
  if (!Succeeded(state, WriteFile(file.Path(), stored))) return;
  for ([[maybe_unused]] auto read : state) {
    std::string bytes;
    if (!Succeeded(state, ReadFile(file.Path(), bytes))) break;
    benchmark::DoNotOptimize(bytes.data());
  }
  CountBytes(state, stored.size());
}

void Save(benchmark::State& state) {
  Filter filter = FilterOfSize(state);
  const TemporaryFile file;
  std::size_t size = 0;
  for ([[maybe_unused]] auto save : state) {
    const std::string bytes = FilterFileBytes(filter);
    if (!Succeeded(state, WriteFile(file.Path(), bytes))) break;
    size = bytes.size();
  }
  CountBytes(state, size);
}

void WriteBytes(benchmark::State& state) {
  Filter filter = FilterOfSize(state);
  const TemporaryFile file;
  const std::string bytes = FilterFileBytes(filter);
  for ([[maybe_unused]] auto write : state) {
    if (!Succeeded(state, WriteFile(file.Path(), bytes))) break;
  }
  CountBytes(state, bytes.size());
}

void FromBytes(benchmark::State& state) {
  Filter filter = FilterOfSize(state);
  const std::string bytes = FilterFileBytes(filter);
  for ([[maybe_unused]] auto load : state) {
    if (!Parse(state, bytes)) break;
  }
  CountBytes(state, bytes.size());
}

void ToBytes(benchmark::State& state) {
  Filter filter = FilterOfSize(state);
  std::size_t size = 0;
  for ([[maybe_unused]] auto save : state) {
    const std::string bytes = FilterFileBytes(filter);
    benchmark::DoNotOptimize(bytes.data());
    size = bytes.size();
  }
  CountBytes(state, size);
}

void FromJson(benchmark::State& state) {
  const CodePage code_page = *CodePage::Find("windows-1252");
  const std::string json = FilterToJson(FilterOfSize(state), code_page);
  for ([[maybe_unused]] auto load : state) {
    Filter filter;
    const auto mistake = FilterFromJson(json, code_page, filter);
    if (mistake) {
      state.SkipWithError(mistake->Message().c_str());
      break;
    }
    benchmark::DoNotOptimize(filter.Rules.Elements.data());
  }
  CountBytes(state, json.size());
}

void ToJson(benchmark::State& state) {
  const CodePage code_page = *CodePage::Find("windows-1252");
  const Filter filter = FilterOfSize(state);
  std::size_t size = 0;
  for ([[maybe_unused]] auto save : state) {
    const std::string json = FilterToJson(filter, code_page);
    benchmark::DoNotOptimize(json.data());
    size = json.size();
  }
  CountBytes(state, size);
}

void CheckIntegrity(benchmark::State& state) {
  const Filter filter = FilterOfSize(state);
  for ([[maybe_unused]] auto check : state) {
    const std::vector<std::string> findings = CollectFindings(filter);
    if (!findings.empty()) {
      state.SkipWithError("the filter should have no findings");
      break;
    }
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
  state.SetComplexityN(state.range(0));
}

void CheckIntegrityOfBroken(benchmark::State& state) {
  Filter filter = FilterOfSize(state);
  filter.Sets.RemoveAll();
  filter.Functions.RemoveAll();
  for ([[maybe_unused]] auto check : state) {
    const std::vector<std::string> findings = CollectFindings(filter);
    const std::string report = ErrorReport(filter.Name, findings, "\n");
    benchmark::DoNotOptimize(report.data());
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
  state.SetComplexityN(state.range(0));
}

void RuleCounts(benchmark::internal::Benchmark* benchmark) {
  benchmark->RangeMultiplier(10)
      ->Range(10, 100'000)
      ->Unit(benchmark::kMicrosecond)
      ->Complexity(benchmark::oN);
}

BENCHMARK(Load)->Apply(RuleCounts)->UseRealTime();
BENCHMARK(ReadBytes)->Apply(RuleCounts)->UseRealTime();
BENCHMARK(Save)->Apply(RuleCounts)->UseRealTime();
BENCHMARK(WriteBytes)->Apply(RuleCounts)->UseRealTime();
BENCHMARK(FromBytes)->Apply(RuleCounts);
BENCHMARK(ToBytes)->Apply(RuleCounts);
BENCHMARK(FromJson)->Apply(RuleCounts);
BENCHMARK(ToJson)->Apply(RuleCounts);
BENCHMARK(CheckIntegrity)->Apply(RuleCounts);
BENCHMARK(CheckIntegrityOfBroken)->Apply(RuleCounts);

}  // namespace
}  // namespace zarvo
