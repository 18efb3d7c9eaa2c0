// Short ways to write down filters in tests, and doubles of what the engine calls.
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "engine/run_host.h"
#include "model/filter.h"

namespace zarvo::testing {

Subpattern Str(std::string text);
Subpattern List(std::string characters);
Subpattern NotList(std::string characters);
Subpattern Code(std::string contents);
Subpattern Call(std::string call_text);
Subpattern OfKind(int kind, std::string contents);

Pattern Of(std::vector<Subpattern> subpatterns, int most_significant = Pattern::kNotChosen);

/// A Rule that replaces the whole match.
Rule Replace(const Pattern& pattern, Pattern replacement);
/// A Rule that inserts behind the first `after` bytes of the match.
Rule Insert(Pattern pattern, int after, Pattern inserted);
/// A Rule that replaces the whole match by strings of a Set.
Rule FromSet(const Pattern& pattern, ReplacementSource source, std::string set_name);

Set SetOf(std::string name, std::vector<Pattern> strings);
Function FunctionOf(std::string name, std::vector<FunctionEntry> entries,
                    int default_returns_argument = Function::kReturnEmpty);

Filter FilterOf(std::vector<Rule> rules, std::vector<Set> sets = {},
                std::vector<Function> functions = {});

/// Records what the engine asks of it, and does what a test wants at each pump.
class RecordingHost : public RunHost {
 public:
  bool Pump() override {
    ++Pumps;
    if (OnPump) OnPump();
    return Pumps < QuitAtPump;
  }
  bool Idle(long count) override {
    IdleCounts.push_back(count);
    return count < IdleTurns;
  }
  void ShowMessage(const std::string& text) override {
    Messages.push_back(text);
    if (OnMessage) OnMessage();
  }

  std::function<void()> OnPump;
  std::function<void()> OnMessage;
  int Pumps = 0;
  int QuitAtPump = 1 << 30;
  long IdleTurns = 0;
  std::vector<long> IdleCounts;
  std::vector<std::string> Messages;
};

/// Records its calls as texts such as "range 0 3", "step 1", "position 2", "stepit", "exists".
class RecordingBar : public ProgressBar {
 public:
  void SetRange(std::int64_t least, std::int64_t most) override;
  void SetStep(std::int64_t step) override;
  void SetPosition(std::int64_t position) override;
  void Step() override {
    Calls.emplace_back("stepit");
    if (OnStep) OnStep();
  }
  bool Exists() override {
    Calls.emplace_back("exists");
    return IsThere;
  }

  std::function<void()> OnStep;
  bool IsThere = true;
  std::vector<std::string> Calls;
};

/// An engine with counters, generator and host of its own.
struct Engine {
  EngineState State;
  RandomGenerator Random{1};
  RecordingHost Host;

  RunContext Context() { return {State, Random, Host}; }
  /// The text after the filter; bars may be null.
  std::string Apply(Filter& filter, std::string text, ProgressBar* rule_bar = nullptr,
                    ProgressBar* position_bar = nullptr);
  std::string Apply(Filter&& filter, std::string text) { return Apply(filter, std::move(text)); }
};

}  // namespace zarvo::testing
