#include "app/services/integrity_check.h"

#include <unordered_set>
#include <utility>

namespace zarvo {
namespace {

// Markers among the names of a finding list. A record is a name, its findings, and an end marker.
constexpr std::string_view kNoSet = "$NO*SET$";  // the names that follow are Functions, not a Set
constexpr std::string_view kEndRule = "$END*RULE$";
constexpr std::string_view kEndAllRules = "$END*ALL*RULES$";
constexpr std::string_view kEndSet = "$END*SET$";
constexpr std::string_view kEndAllSets = "$END*ALL*SETS$";  // understood, but never collected

using NameSet = std::unordered_set<std::string_view>;

template <typename Element>
NameSet NamesOf(const RecordList<Element>& list) {
  NameSet names;
  for (const Element& element : list) names.insert(element.Name);
  return names;
}

class Collector {
 public:
  explicit Collector(const Filter& filter)
      : set_names_(NamesOf(filter.Sets)), function_names_(NamesOf(filter.Functions)) {}

  void Check(const Rule& rule) {
    Begin(rule.Name);
    if (rule.DrawsFromSet()) {
      if (!set_names_.contains(rule.ReplacementSetName)) record_.push_back(rule.ReplacementSetName);
    } else {
      AddMissingFunctions(rule.Replacement);
      if (HasFindings()) record_.insert(record_.begin() + 1, std::string(kNoSet));
    }
    End(kEndRule);
  }

  void Check(const Set& set) {
    Begin(set.Name);
    for (const Pattern& string : set.Strings) AddMissingFunctions(string);
    End(kEndSet);
  }

  void EndRules() { findings_.emplace_back(kEndAllRules); }

  std::vector<std::string> Take() {
    if (findings_.size() == 1) findings_.clear();
    return std::move(findings_);
  }

 private:
  void Begin(const std::string& name) { record_.assign(1, name); }

  [[nodiscard]] bool HasFindings() const { return record_.size() > 1; }

  void AddMissingFunctions(const Pattern& string) {
    for (const Subpattern& part : string.Subpatterns) {
      if (part.Kind != SubpatternKind::Function) continue;
      const std::string_view name = CalledFunctionName(part.Contents);
      if (!function_names_.contains(name)) record_.emplace_back(name);
    }
  }

  void End(std::string_view marker) {
    if (!HasFindings()) return;
    record_.emplace_back(marker);
    std::unordered_set<std::string> seen;
    for (const std::string& entry : record_) {
      if (seen.insert(entry).second) findings_.push_back(entry);
    }
  }

  NameSet set_names_;
  NameSet function_names_;
  std::vector<std::string> record_;
  std::vector<std::string> findings_;
};

std::string Quoted(std::string_view name) { return '"' + std::string(name) + '"'; }

}  // namespace

std::vector<std::string> CollectFindings(const Filter& filter) {
  Collector collector(filter);
  for (const Rule& rule : filter.Rules) collector.Check(rule);
  collector.EndRules();
  for (const Set& set : filter.Sets) collector.Check(set);
  return collector.Take();
}

std::string ErrorReport(std::string_view filter_name, const std::vector<std::string>& findings,
                        std::string_view line_end) {
  enum class State { RuleHeading, RuleFirstFinding, Item, SetHeading };
  std::string report;
  const auto write_line = [&](const std::string& line) { report.append(line).append(line_end); };
  write_line("Error report for filter " + Quoted(filter_name));
  write_line("");
  State state = State::RuleHeading;
  for (const std::string& entry : findings) {
    if (entry == kEndAllSets) break;
    if (entry == kEndRule) {
      write_line("");
      state = State::RuleHeading;
    } else if (entry == kEndAllRules) {
      state = State::SetHeading;
    } else if (entry == kEndSet) {
      write_line("");
      state = State::SetHeading;
    } else if (state == State::RuleHeading) {
      write_line("Rule " + Quoted(entry) + ":");
      state = State::RuleFirstFinding;
    } else if (state == State::RuleFirstFinding && entry == kNoSet) {
      write_line("missing referenced functions:");
      state = State::Item;
    } else if (state == State::SetHeading) {
      write_line("Set " + Quoted(entry) + ":");
      write_line("missing referenced functions:");
      state = State::Item;
    } else {
      if (state == State::RuleFirstFinding) write_line("missing referenced sets:");
      write_line("\t" + entry);
      state = State::Item;
    }
  }
  return report;
}

}  // namespace zarvo
