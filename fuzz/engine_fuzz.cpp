// Makes a case of the bytes and runs it through the real engine and the naive one; then each of its
// runs alone, with nobody watching.
//
// The bytes are read in order, as numbers and texts, in a way that lets a corpus be written by
// hand:
// - a number is one byte, counted from '0', so "7" is 7 and "/" is -1; 0xFF is the largest number,
//   0xFE the smallest; blanks and line ends before a number are skipped;
// - a text is a number, its length, and that many bytes: "3abc";
// - what lies past the end is read as "0".
//
//   case:     seed (odd: the hosts tell of their deeds), remaining, count of runs less 1, runs
//   run:      options (1 rule bar, 2 position bar, 4 keeps the filter, 8 keeps the text), pumps,
//             answers of Exists, rounds of Idle, text, filter, count of deeds, deeds (call, deed);
//             where there are deeds also the other text and the other filter
//   filter:   count of rules, rules, count of sets, sets, count of functions, functions
//   rule:     pattern, from, to, replacement, source, name of the set, strict, once,
//             100 - probability
//   pattern:  anchor + 1, count, subpatterns (kind, text)
//   set:      name, count, patterns
//   function: name, default, count, entries (argument, value)
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <string>

#include "engine/presence_map.h"
#include "model/filter.h"
#include "tests/support/random_filter.h"
#include "tests/support/unwatched_run.h"

namespace zarvo::testing {
namespace {

constexpr std::size_t kMostRuns = 3;
constexpr std::size_t kMostElements = 8;
constexpr std::size_t kLongestText = 96;
/// Every pump may add a text, and where texts are repeated, double what is there.
constexpr std::size_t kMostPumps = 60;
constexpr std::size_t kMostDoublingPumps = 8;

class CaseReader {
 public:
  CaseReader(const std::uint8_t* bytes, std::size_t size) : bytes_(bytes), end_(bytes + size) {}

  EngineCase ReadCase() {
    EngineCase engine_case;
    engine_case.Seed = static_cast<std::uint32_t>(Number());
    engine_case.State.Remaining = Number();
    const std::size_t runs = 1 + Count(kMostRuns);
    bool may_double = false;
    for (std::size_t i = 0; i < runs; ++i) {
      RunPlan run = ReadRun();
      run.TellsOfDeeds = engine_case.Seed % 2 != 0;
      // What an earlier run left may be taken over.
      may_double = may_double || RepeatsText(run.Filter) || RepeatsText(run.OtherFilter);
      if (may_double) run.Pumps = std::min<std::int64_t>(run.Pumps, kMostDoublingPumps);
      engine_case.Runs.push_back(run);
    }
    return engine_case;
  }

 private:
  int Byte() { return bytes_ == end_ ? '0' : *bytes_++; }

  std::int32_t Number() {
    int byte = Byte();
    while (byte == ' ' || byte == '\n') byte = Byte();
    if (byte == 0xFF) return std::numeric_limits<std::int32_t>::max();
    if (byte == 0xFE) return std::numeric_limits<std::int32_t>::min();
    return byte - '0';
  }

  // 0 to limit - 1.
  std::size_t Count(std::size_t limit) {
    return static_cast<std::size_t>(static_cast<std::uint32_t>(Number())) % limit;
  }

  std::string Text() {
    std::string text;
    for (std::size_t i = Count(kLongestText); i > 0 && bytes_ != end_; --i) {
      text += static_cast<char>(Byte());
    }
    return text;
  }

  Pattern ReadPattern() {
    Pattern pattern;
    // Not below the least number.
    pattern.MostSignificant = static_cast<std::int32_t>(
        std::max<std::int64_t>(std::int64_t{Number()} - 1, std::numeric_limits<int>::min()));
    for (std::size_t i = Count(kMostElements); i > 0; --i) {
      Subpattern subpattern;
      subpattern.Kind = static_cast<SubpatternKind>(Number());
      subpattern.Contents = Text();
      pattern.Subpatterns.push_back(subpattern);
    }
    return pattern;
  }

  Rule ReadRule() {
    Rule rule;
    rule.Pattern = ReadPattern();
    rule.From = Number();
    rule.To = Number();
    rule.Replacement = ReadPattern();
    rule.ReplacementSource = static_cast<ReplacementSource>(Number());
    rule.ReplacementSetName = Text();
    rule.Strict = Number();
    rule.Once = Number();
    rule.Probability = static_cast<std::uint8_t>(std::int64_t{100} - Number());
    return rule;
  }

  Set ReadSet() {
    Set set;
    set.Name = Text();
    for (std::size_t i = Count(kMostElements); i > 0; --i) set.Strings.push_back(ReadPattern());
    return set;
  }

  Function ReadFunction() {
    Function function;
    function.Name = Text();
    function.DefaultReturnsArgument = static_cast<std::uint8_t>(Number());
    for (std::size_t i = Count(kMostElements); i > 0; --i) {
      FunctionEntry entry;
      entry.Argument = Text();
      entry.Value = Text();
      function.Entries.push_back(entry);
    }
    return function;
  }

  Filter ReadFilter() {
    Filter filter;
    for (std::size_t i = Count(kMostElements); i > 0; --i) filter.Rules.Append(ReadRule());
    for (std::size_t i = Count(kMostElements); i > 0; --i) filter.Sets.Append(ReadSet());
    for (std::size_t i = Count(kMostElements); i > 0; --i) filter.Functions.Append(ReadFunction());
    return filter;
  }

  RunPlan ReadRun() {
    RunPlan run;
    const std::size_t options = Count(16);
    run.HasRuleBar = (options & 1) != 0;
    run.HasPositionBar = (options & 2) != 0;
    run.KeepsFilter = (options & 4) != 0;
    run.KeepsText = (options & 8) != 0;
    run.Pumps = static_cast<std::int64_t>(Count(kMostPumps));
    run.ExistsAnswers = static_cast<std::int64_t>(Count(kMostElements));
    run.IdleRounds = static_cast<long>(Count(kMostElements));
    run.Text = Text();
    run.Filter = ReadFilter();
    for (std::size_t i = Count(kMostElements); i > 0; --i) {
      TimedDeed timed;
      timed.Call = Number();
      timed.Deed = static_cast<HostDeed>(Count(kHostDeeds));
      run.Deeds.push_back(timed);
    }
    if (run.Deeds.empty()) return run;
    run.OtherText = Text();
    run.OtherFilter = ReadFilter();
    return run;
  }

  const std::uint8_t* bytes_;
  const std::uint8_t* end_;
};

}  // namespace
}  // namespace zarvo::testing

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace zarvo::testing;
  const EngineCase engine_case = CaseReader(data, size).ReadCase();
  std::string difference = FindDifference(engine_case);
  // A map of what a text holds is large beside these texts, hence only now and then.
  constexpr std::uint32_t kMapEvery = 8;
  if (engine_case.Seed % kMapEvery == 0) zarvo::UsePresencePatience({0, 0});
  for (const RunPlan& run : engine_case.Runs) {
    difference +=
        CompareUnwatched(run.Filter, run.Text, engine_case.State, engine_case.Seed, run.Pumps)
            .Difference;
  }
  zarvo::UsePresencePatience({});
  if (!difference.empty()) {
    std::fwrite(difference.data(), 1, difference.size(), stderr);
    std::abort();
  }
  return 0;
}
