#include "tests/support/engine_case.h"

#include <algorithm>
#include <cstddef>

#include "engine/apply_filter.h"
#include "tests/support/naive_engine.h"

namespace zarvo::testing {
namespace {

/// A text that has grown beyond this is not taken over by the next run.
constexpr std::size_t kLongText = 300;

struct EngineUnderTest {
  const char* Name;
  RunResult (*ApplyFilter)(const RunContext&, Filter&, std::string&, ProgressBar*, ProgressBar*);
  void (*CancelRun)(Filter&);
  void (*SetStopFlags)(RuleList&, bool);
};

constexpr EngineUnderTest kRealEngine = {"engine", &zarvo::ApplyFilter, &zarvo::CancelRun,
                                         &zarvo::SetStopFlags};
constexpr EngineUnderTest kNaiveEngine = {"judge", &naive::ApplyFilter, &naive::CancelRun,
                                          &naive::SetStopFlags};

// A call that an engine made, with its arguments.
struct Call {
  const char* Name;
  std::int64_t First = 0;
  std::int64_t Second = 0;
  std::string Text;

  friend bool operator==(const Call& left, const Call& right) {
    // Names are literals of this file.
    return left.Name == right.Name && left.First == right.First && left.Second == right.Second &&
           left.Text == right.Text;
  }
};

constexpr const char* kPumpCall = "Pump";
constexpr const char* kIdleCall = "Idle";
constexpr const char* kMessageCall = "ShowMessage";
constexpr const char* kNestedBegin = "(nested run begins)";
constexpr const char* kNestedEnd = "(nested run ends)";

constexpr const char* kBarCalls[2][5] = {
    {"rule bar SetRange", "rule bar SetStep", "rule bar SetPosition", "rule bar Step",
     "rule bar Exists"},
    {"position bar SetRange", "position bar SetStep", "position bar SetPosition",
     "position bar Step", "position bar Exists"}};

class PlannedBar : public ProgressBar {
 public:
  PlannedBar(std::vector<Call>& calls, int which, std::int64_t& exists_answers)
      : calls_(calls), names_(kBarCalls[which]), exists_answers_(exists_answers) {}

  void SetRange(std::int64_t least, std::int64_t most) override {
    calls_.push_back({names_[0], least, most, {}});
  }
  void SetStep(std::int64_t step) override { calls_.push_back({names_[1], step, 0, {}}); }
  void SetPosition(std::int64_t position) override {
    calls_.push_back({names_[2], position, 0, {}});
  }
  void Step() override { calls_.push_back({names_[3], 0, 0, {}}); }
  bool Exists() override {
    calls_.push_back({names_[4], 0, 0, {}});
    return exists_answers_-- > 0;
  }

 private:
  std::vector<Call>& calls_;
  const char* const* names_;
  std::int64_t& exists_answers_;
};

// A host that writes down every call and does what the plan says in it.
class PlannedHost : public RunHost {
 public:
  PlannedHost(const EngineUnderTest& engine, const RunPlan& plan, Filter& filter,
              EngineState& state, RandomGenerator& random, std::vector<Call>& calls)
      : engine_(engine),
        plan_(plan),
        filter_(filter),
        state_(state),
        random_(random),
        calls_(calls),
        exists_answers_(plan.ExistsAnswers),
        rule_bar_(calls, 0, exists_answers_),
        position_bar_(calls, 1, exists_answers_) {}

  RunResult Run(Filter& filter, std::string& text) {
    return engine_.ApplyFilter({state_, random_, *this}, filter, text,
                               plan_.HasRuleBar ? &rule_bar_ : nullptr,
                               plan_.HasPositionBar ? &position_bar_ : nullptr);
  }

  Attention Attend() override {
    const std::int64_t deeds_before = deeds_;
    Attention attention = RunHost::Attend();
    if (plan_.TellsOfDeeds) attention.MayHaveChanged = deeds_ != deeds_before;
    return attention;
  }
  bool Pump() override {
    calls_.push_back({kPumpCall, 0, 0, {}});
    const bool goes_on = pumps_++ < plan_.Pumps;
    DoDeeds();
    return goes_on;
  }
  bool Idle(long count) override {
    calls_.push_back({kIdleCall, count, 0, {}});
    DoDeeds();
    return count < plan_.IdleRounds;
  }
  void ShowMessage(const std::string& text) override {
    calls_.push_back({kMessageCall, 0, 0, text});
    DoDeeds();
  }

 private:
  void DoDeeds() {
    const std::int64_t call = call_++;
    for (const TimedDeed& timed : plan_.Deeds) {
      if (timed.Call != call) continue;
      ++deeds_;
      Do(timed.Deed);
    }
  }

  void RunInside(Filter& filter) {
    std::string text = plan_.OtherText;
    calls_.push_back({kNestedBegin, 0, 0, {}});
    const RunResult result = Run(filter, text);
    calls_.push_back({kNestedEnd, static_cast<std::int64_t>(result), filter.Cancel, text});
  }

  void Do(HostDeed deed) {
    std::vector<Rule>& rules = filter_.Rules.Elements;
    const std::vector<Rule>& other_rules = plan_.OtherFilter.Rules.Elements;
    std::vector<Set>& sets = filter_.Sets.Elements;
    const std::vector<Set>& other_sets = plan_.OtherFilter.Sets.Elements;
    std::vector<Function>& functions = filter_.Functions.Elements;
    const std::vector<Function>& other_functions = plan_.OtherFilter.Functions.Elements;
    switch (deed) {
      case HostDeed::RemoveFirstRule:
        if (!rules.empty()) rules.erase(rules.begin());
        break;
      case HostDeed::RemoveLastRule:
        if (!rules.empty()) rules.pop_back();
        break;
      case HostDeed::RemoveAllRules:
        std::vector<Rule>().swap(rules);
        break;
      case HostDeed::InsertRuleFirst:
        if (!other_rules.empty()) rules.insert(rules.begin(), other_rules.front());
        break;
      case HostDeed::AppendRules:
        rules.insert(rules.end(), other_rules.begin(), other_rules.end());
        break;
      case HostDeed::ReverseRules:
        std::reverse(rules.begin(), rules.end());
        break;
      case HostDeed::EditRules:
        for (Rule& rule : rules) {
          if (!other_rules.empty()) rule = other_rules.front();
        }
        break;
      case HostDeed::ShortenSets:
        for (Set& set : sets) {
          if (!set.Strings.empty()) set.Strings.pop_back();
        }
        break;
      case HostDeed::ClearSets:
        std::vector<Set>().swap(sets);
        break;
      case HostDeed::InsertSetsFirst:
        sets.insert(sets.begin(), other_sets.begin(), other_sets.end());
        break;
      case HostDeed::ClearFunctions:
        std::vector<Function>().swap(functions);
        break;
      case HostDeed::InsertFunctionsFirst:
        functions.insert(functions.begin(), other_functions.begin(), other_functions.end());
        break;
      case HostDeed::ReplaceFilter:
        // Emptied first, so that the old memory is given back and a run that still reads it shows.
        filter_.Rules = RuleList();
        filter_.Sets = SetList();
        filter_.Functions = FunctionList();
        filter_ = plan_.OtherFilter;
        break;
      case HostDeed::Cancel:
        engine_.CancelRun(filter_);
        break;
      case HostDeed::SetStopFlags:
        engine_.SetStopFlags(filter_.Rules, false);
        break;
      case HostDeed::ClearStopFlags:
        engine_.SetStopFlags(filter_.Rules, true);
        break;
      case HostDeed::RunSameFilter:
        RunInside(filter_);
        break;
      case HostDeed::RunOtherFilter: {
        Filter other = plan_.OtherFilter;
        RunInside(other);
        break;
      }
      case HostDeed::DrawRandom:
        static_cast<void>(random_.Next());
        break;
    }
  }

  const EngineUnderTest& engine_;
  const RunPlan& plan_;
  Filter& filter_;
  EngineState& state_;
  RandomGenerator& random_;
  std::vector<Call>& calls_;
  std::int64_t exists_answers_;
  PlannedBar rule_bar_;
  PlannedBar position_bar_;
  std::int64_t pumps_ = 0;
  std::int64_t call_ = 0;
  std::int64_t deeds_ = 0;
};

// One of the two engines with the process it lives in.
class Process {
 public:
  Process(const EngineUnderTest& engine, const EngineCase& engine_case)
      : engine_(engine), state_(engine_case.State), random_(engine_case.Seed) {}

  void Run(const RunPlan& plan) {
    if (!plan.KeepsFilter) filter_ = plan.Filter;
    if (!plan.KeepsText || text_.size() > kLongText) text_ = plan.Text;
    calls_.clear();
    PlannedHost host(engine_, plan, filter_, state_, random_, calls_);
    result_ = host.Run(filter_, text_);
  }

  friend bool SameState(const Process& left, const Process& right) {
    return left.text_ == right.text_ && left.result_ == right.result_ &&
           left.state_ == right.state_ && left.random_ == right.random_ &&
           left.calls_ == right.calls_ && left.filter_ == right.filter_ &&
           std::int32_t{left.filter_.Applying} == std::int32_t{right.filter_.Applying} &&
           std::int32_t{left.filter_.Cancel} == std::int32_t{right.filter_.Cancel};
  }

  friend std::string DescribeDifference(const Process& left, const Process& right);
  friend std::string Describe(const Process& process);

 private:
  const EngineUnderTest& engine_;
  Filter filter_;
  std::string text_;
  EngineState state_;
  RandomGenerator random_;
  std::vector<Call> calls_;
  RunResult result_ = RunResult::Stopped;
};

std::string Quote(const std::string& text) {
  static constexpr char kHexDigits[] = "0123456789abcdef";
  std::string result = "\"";
  for (const char c : text) {
    const unsigned char byte = static_cast<unsigned char>(c);
    if (c == '"' || c == '\\') {
      result += '\\';
      result += c;
    } else if (byte >= 0x20 && byte < 0x7F) {
      result += c;
    } else {
      result += "\\x";
      result += kHexDigits[byte >> 4];
      result += kHexDigits[byte & 15];
    }
  }
  return result + "\"";
}

std::string Describe(const Pattern& pattern) {
  std::string result = "(";
  for (const Subpattern& subpattern : pattern.Subpatterns) {
    if (result.size() > 1) result += ", ";
    switch (subpattern.Kind) {
      case SubpatternKind::String:
        result += "string ";
        break;
      case SubpatternKind::CharacterList:
        result += "list ";
        break;
      case SubpatternKind::NegatedCharacterList:
        result += "negated list ";
        break;
      case SubpatternKind::CharacterCode:
        result += "code ";
        break;
      case SubpatternKind::Function:
        result += "function ";
        break;
      default:
        result += "kind " + std::to_string(static_cast<std::int32_t>(subpattern.Kind)) + " ";
    }
    result += Quote(subpattern.Contents);
  }
  result += ")";
  if (pattern.MostSignificant != Pattern::kNotChosen) {
    result += " anchor " + std::to_string(pattern.MostSignificant);
  }
  return result;
}

std::string Describe(const Rule& rule) {
  std::string result = "  Rule " + Describe(rule.Pattern) + " -> ";
  switch (rule.ReplacementSource) {
    case ReplacementSource::String:
      result += Describe(rule.Replacement);
      break;
    case ReplacementSource::SetInSequence:
      result += "set in sequence " + Quote(rule.ReplacementSetName);
      break;
    case ReplacementSource::SetAtRandom:
      result += "set at random " + Quote(rule.ReplacementSetName);
      break;
    default:
      result += "source " + std::to_string(static_cast<std::int32_t>(rule.ReplacementSource));
  }
  result += rule.Inserts()
                ? ", after " + std::to_string(rule.From)
                : ", from " + std::to_string(rule.From) + " to " + std::to_string(rule.To);
  if (rule.Probability != 100) result += ", probability " + std::to_string(rule.Probability);
  if (rule.Strict != 0) result += ", strict " + std::to_string(rule.Strict);
  if (rule.Once != 0) result += ", once " + std::to_string(rule.Once);
  if (rule.Stop != 0) result += ", stop " + std::to_string(rule.Stop);
  return result + "\n";
}

const char* NameOf(HostDeed deed) {
  static constexpr const char* kNames[kHostDeeds] = {
      "RemoveFirstRule", "RemoveLastRule",  "RemoveAllRules", "InsertRuleFirst",
      "AppendRules",     "ReverseRules",    "EditRules",      "ShortenSets",
      "ClearSets",       "InsertSetsFirst", "ClearFunctions", "InsertFunctionsFirst",
      "ReplaceFilter",   "Cancel",          "SetStopFlags",   "ClearStopFlags",
      "RunSameFilter",   "RunOtherFilter",  "DrawRandom"};
  return kNames[static_cast<std::size_t>(deed)];
}

std::string Describe(const Call& call) {
  return std::string(call.Name) + " " + std::to_string(call.First) + " " +
         std::to_string(call.Second) + " " + Quote(call.Text);
}

std::string Describe(const Process& process) {
  RandomGenerator random = process.random_;
  return std::string(process.engine_.Name) + ": " +
         (process.result_ == RunResult::Completed ? "completed" : "stopped") + ", text " +
         Quote(process.text_) + ", remaining " + std::to_string(process.state_.Remaining) +
         ", replacements " + std::to_string(process.state_.Replacements) + ", next random " +
         std::to_string(random.Next()) + ", applying " +
         std::to_string(std::int32_t{process.filter_.Applying}) + ", cancel " +
         std::to_string(std::int32_t{process.filter_.Cancel}) + ", " +
         std::to_string(process.calls_.size()) + " calls\n";
}

std::string DescribeDifference(const Process& left, const Process& right) {
  std::string result = Describe(left) + Describe(right);
  if (!(left.filter_ == right.filter_)) {
    result += "the filter is left by the " + std::string(left.engine_.Name) + " as\n" +
              testing::Describe(left.filter_) + "and by the " + right.engine_.Name + " as\n" +
              testing::Describe(right.filter_);
  }
  const std::size_t most = std::max(left.calls_.size(), right.calls_.size());
  for (std::size_t i = 0; i < most; ++i) {
    const bool both = i < left.calls_.size() && i < right.calls_.size();
    if (both && left.calls_[i] == right.calls_[i]) continue;
    result += "calls differ from number " + std::to_string(i) + ": ";
    result += i < left.calls_.size() ? Describe(left.calls_[i]) : "none";
    result += " against ";
    result += i < right.calls_.size() ? Describe(right.calls_[i]) : "none";
    result += "\n";
    break;
  }
  return result;
}

}  // namespace

std::string Describe(const Filter& filter) {
  std::string result;
  for (const Rule& rule : filter.Rules) result += Describe(rule);
  for (const Set& set : filter.Sets) {
    result += "  Set " + Quote(set.Name) + ":";
    for (const Pattern& string : set.Strings) result += " " + Describe(string);
    result += "\n";
  }
  for (const Function& function : filter.Functions) {
    result += "  Function " + Quote(function.Name) + ":";
    for (const FunctionEntry& entry : function.Entries) {
      result += " " + Quote(entry.Argument) + "->" + Quote(entry.Value);
    }
    result += " default " + std::to_string(function.DefaultReturnsArgument) + "\n";
  }
  return result;
}

std::string Describe(const EngineCase& engine_case) {
  std::string result = "seed " + std::to_string(engine_case.Seed) + ", remaining " +
                       std::to_string(engine_case.State.Remaining) + ", replacements " +
                       std::to_string(engine_case.State.Replacements) + "\n";
  int number = 0;
  for (const RunPlan& run : engine_case.Runs) {
    result += "run " + std::to_string(++number) + ":";
    result += run.KeepsText ? " text of the last run or " : " text ";
    result += Quote(run.Text);
    if (run.HasRuleBar) result += ", rule bar";
    if (run.HasPositionBar) result += ", position bar";
    result += ", exists " + std::to_string(run.ExistsAnswers) + ", pumps " +
              std::to_string(run.Pumps) + ", idle rounds " + std::to_string(run.IdleRounds) +
              (run.TellsOfDeeds ? ", tells of deeds\n" : "\n");
    if (run.KeepsFilter) {
      result += "  (filter of the last run)\n";
    } else {
      result += Describe(run.Filter);
    }
    if (run.Deeds.empty()) continue;
    for (const TimedDeed& timed : run.Deeds) {
      result += "  at host call " + std::to_string(timed.Call) + ": " + NameOf(timed.Deed) + "\n";
    }
    result += " other text " + Quote(run.OtherText) + ", other filter:\n";
    result += Describe(run.OtherFilter);
  }
  return result;
}

std::string FindDifference(const EngineCase& engine_case) {
  Process real(kRealEngine, engine_case);
  Process naive(kNaiveEngine, engine_case);
  int number = 0;
  for (const RunPlan& run : engine_case.Runs) {
    ++number;
    real.Run(run);
    naive.Run(run);
    if (SameState(real, naive)) continue;
    return Describe(engine_case) + "after run " + std::to_string(number) + ":\n" +
           DescribeDifference(real, naive);
  }
  return "";
}

}  // namespace zarvo::testing
