#include "engine/apply_filter.h"

#include <cstdint>
#include <utility>

#include "engine/bulk_pass.h"
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

}  // namespace

RunResult ApplyRule(const RunContext& context, Rule rule, TextBuffer& text, const SetList& sets,
                    const FunctionList& functions, ProgressBar* position_bar) {
  const PreparedPattern pattern(rule.Pattern, text.Frequencies());
  EngineState& state = context.State;
  state.Replacements = 0;
  PositionBar bar(position_bar);
  if (bar.IsGiven() && rule.Stop != 0) return bar.Stop();
  bar.Begin(text.Size());

  const bool takes_turns = context.Host.TakesTurns();
  const Draw draw(rule);
  Replacer replacer(context, rule, pattern.Length(), text.Size(), sets, functions);
  MatchFinder finder(pattern, text);
  BulkOutcome bulk;
  bool from_start = true;
  if (!bar.IsGiven() && rule.Stop == 0) {
    if (!takes_turns && MapMatchedBytes(context, rule, draw, pattern, replacer, text)) {
      return RunResult::Completed;
    }
    if (CanPassInBulk(rule, replacer)) {
      do {
        bulk = BulkPass(context, draw, pattern, replacer, rule, text);
      } while (rule.Strict != 0 && bulk.Result == BulkResult::Done);
      if (bulk.Result < BulkResult::Left) return RunResult::Completed;
      from_start = false;
    }
  }
  bool had_turn = bulk.Result == BulkResult::HadTurn;
  std::int64_t position = had_turn ? bulk.Position : finder.Next(from_start, state);
  while (position != PreparedPattern::kNoMatch) {
    while (position != PreparedPattern::kNoMatch) {
      if (takes_turns) {
        const Attention attention = had_turn ? bulk.Turn : context.Host.Attend();
        had_turn = false;
        if (!attention.GoesOn) rule.Stop = 1;
        if (attention.MayHaveChanged) replacer.Forget();
      }
      if (rule.Stop != 0) return bar.Stop();
      bar.Follow(position);
      if (draw.Replaces(context.Random)) {
        if (replacer.Replace(text, static_cast<std::size_t>(position)) == ReplaceResult::StopPass) {
          break;
        }
        if (!replacer.StaysInMatch()) finder.Forget();
      }
      position = finder.Next(false, state);
    }
    // A pass that ran to its end left nothing remaining, so the next one begins at the start; one
    // that Once ended goes on from there.
    position = rule.Strict != 0 ? finder.Next(true, state) : PreparedPattern::kNoMatch;
  }
  if (rule.Stop != 0) return bar.Stop();
  bar.End();
  return RunResult::Completed;
}

RunResult ApplyFilter(const RunContext& context, Filter& filter, std::string& text,
                      ProgressBar* rule_bar, ProgressBar* position_bar) {
  filter.Applying = 1;
  // Where nothing can stop the run, the text needn't be kept. A bar is a window, in which somebody
  // may do so.
  const bool can_stop = context.Host.TakesTurns() || rule_bar != nullptr || position_bar != nullptr;
  TextBuffer working_text =
      can_stop ? TextBuffer::Borrowing(text) : TextBuffer::Owning(std::move(text));
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
  if (working_text.IsChanged()) text = working_text.Take();
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
