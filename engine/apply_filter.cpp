#include "engine/apply_filter.h"

#include <cstdint>

#include "engine/matcher.h"
#include "engine/replacement.h"

namespace zarvo {
namespace {

// The bar that follows the matches. Its range is scaled down by powers of ten to fit the 16 bits
// that a progress control's range has. Without a bar all of it does nothing.
class PositionBar {
 public:
  explicit PositionBar(ProgressBar* bar) : bar_(bar) {}

  [[nodiscard]] bool IsGiven() const { return bar_ != nullptr; }

  void Begin(std::size_t text_size) {
    if (bar_ == nullptr) return;
    constexpr std::int64_t kMostRange = 32767;
    std::int64_t range = static_cast<std::int64_t>(text_size) - 1;
    for (; range > kMostRange; range /= 10) divisor_ *= 10;
    bar_->SetRange(0, range);
    bar_->SetPosition(0);
  }
  void Follow(std::int64_t position) {
    if (bar_ != nullptr) bar_->SetPosition(position / divisor_);
  }
  void End() {
    if (bar_ != nullptr) bar_->SetPosition(0);
  }
  RunResult Stop() {
    if (bar_ != nullptr && bar_->Exists()) bar_->SetPosition(0);
    return RunResult::Stopped;
  }

 private:
  ProgressBar* bar_;
  std::int64_t divisor_ = 1;
};

// Applies the Rule to the match; false ends the pass.
bool HandleMatch(const RunContext& context, const Rule& rule, const PreparedPattern& pattern,
                 TextBuffer& text, std::int64_t position, const SetList& sets,
                 const FunctionList& functions) {
  constexpr int kDrawMost = 99;
  const int draw = context.Random.NextUpTo(kDrawMost);
  if (rule.Probability <= draw) return true;
  return ReplaceMatch(context, rule, pattern.Length(), text, static_cast<std::size_t>(position),
                      sets, functions) == ReplaceResult::Replaced;
}

}  // namespace

RunResult ApplyRule(const RunContext& context, Rule rule, TextBuffer& text, const SetList& sets,
                    const FunctionList& functions, ProgressBar* position_bar) {
  const PreparedPattern pattern(rule.Pattern);
  EngineState& state = context.State;
  state.Replacements = 0;
  PositionBar bar(position_bar);
  if (bar.IsGiven() && rule.Stop != 0) return bar.Stop();
  bar.Begin(text.Size());

  std::int64_t position = pattern.FindNextMatch(text, true, state);
  while (position != PreparedPattern::kNoMatch) {
    while (position != PreparedPattern::kNoMatch) {
      if (!context.Host.Pump()) rule.Stop = 1;
      for (long count = 0; context.Host.Idle(count); ++count) {
      }
      if (rule.Stop != 0) return bar.Stop();
      bar.Follow(position);
      if (!HandleMatch(context, rule, pattern, text, position, sets, functions)) break;
      position = pattern.FindNextMatch(text, false, state);
    }
    // A pass that ran to its end left nothing remaining, so the next one begins at the start; one
    // that Once ended goes on from there.
    position =
        rule.Strict != 0 ? pattern.FindNextMatch(text, true, state) : PreparedPattern::kNoMatch;
  }
  if (rule.Stop != 0) return bar.Stop();
  bar.End();
  return RunResult::Completed;
}

RunResult ApplyFilter(const RunContext& context, Filter& filter, std::string& text,
                      ProgressBar* rule_bar, ProgressBar* position_bar) {
  filter.Applying = 1;
  TextBuffer working_text(text);
  filter.Cancel = 0;
  if (rule_bar != nullptr) {
    rule_bar->SetRange(0, static_cast<std::int64_t>(filter.Rules.Count()));
    rule_bar->SetStep(1);
    rule_bar->SetPosition(0);
  }
  const auto stop = [&] {
    if (rule_bar != nullptr && rule_bar->Exists()) rule_bar->SetPosition(0);
    filter.Applying = 0;
    return RunResult::Stopped;
  };
  SetStopFlags(filter.Rules, true);
  for (std::size_t i = 0; i < filter.Rules.Count(); ++i) {
    const RunResult result = ApplyRule(context, filter.Rules[i], working_text, filter.Sets,
                                       filter.Functions, position_bar);
    if (result == RunResult::Stopped) {
      SetStopFlags(filter.Rules, true);
      return stop();
    }
    if (filter.Cancel != 0) return stop();
    if (rule_bar != nullptr) rule_bar->Step();
  }
  if (rule_bar != nullptr) rule_bar->SetPosition(0);
  text = working_text.Take();
  filter.Applying = 0;
  return RunResult::Completed;
}

void SetStopFlags(RuleList& rules, bool running) {
  for (Rule& rule : rules) rule.Stop = running ? 0 : 1;
}

void CancelRun(Filter& filter) {
  SetStopFlags(filter.Rules, false);
  filter.Cancel = 1;
}

}  // namespace zarvo
