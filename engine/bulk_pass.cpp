#include "engine/bulk_pass.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace zarvo {
namespace {

// Where the search begins: at the remembered point, or at the start of the text.
std::size_t TakeStart(EngineState& state, std::size_t size) {
  const auto all = static_cast<std::int64_t>(size);
  if (state.Remaining == 0) state.Remaining = all;
  return static_cast<std::size_t>(all - std::clamp<std::int64_t>(state.Remaining, 0, all));
}

}  // namespace

Draw::Draw(const Rule& rule) {
  // Draws grow with the generator's value, so there is a first value that is too much.
  constexpr int kDrawMost = 99;
  int values = RandomGenerator::kMost + 1;
  for (int first = 0; first < values;) {
    const int middle = (first + values) / 2;
    if (rule.Probability <= RandomGenerator::ScaleTo(kDrawMost, middle)) {
      values = middle;
    } else {
      first = middle + 1;
    }
  }
  winning_values_ = values;
}

bool MapMatchedBytes(const RunContext& context, const Rule& rule, const Draw& draw,
                     const PreparedPattern& pattern, Replacer& replacer, TextBuffer& text) {
  if (rule.Strict != 0 || !draw.AlwaysReplaces() || pattern.Matchers().size() != 1) return false;
  if (pattern.Length() != 1) return false;
  const std::string matched = pattern.Matchers().front().MatchedBytes();
  constexpr std::size_t kManyAreOneIn = 20;
  if (!text.Frequencies().IsFrequent(matched, kManyAreOneIn)) return false;
  const std::optional<std::string> map = replacer.ByteMap(matched);
  if (!map) return false;
  EngineState& state = context.State;
  const std::size_t start = TakeStart(state, text.Size());
  const std::size_t count = text.MapBytes(start, *map, matched);
  context.Random.Skip(count);
  state.Replacements += static_cast<std::int64_t>(count);
  state.Remaining = 0;
  return true;
}

bool CanPassInBulk(const Rule& rule, const Replacer& replacer) {
  return rule.Once == 0 && replacer.StaysInMatch() && replacer.IsAllPrepared();
}

BulkOutcome BulkPass(const RunContext& context, const Draw& draw, const PreparedPattern& pattern,
                     Replacer& replacer, const Rule& rule, TextBuffer& text) {
  EngineState& state = context.State;
  const std::size_t first = TakeStart(state, text.Size());
  const std::size_t length = pattern.Length();
  if (length == 0 || !pattern.MayMatch(text)) {
    state.Remaining = 0;
    return {};
  }
  const std::int64_t cut_offset = rule.Inserts() ? rule.From : rule.From - 1;
  const std::int64_t end_offset = rule.Inserts() ? rule.From : rule.To;
  const std::size_t offset = pattern.AnchorOffset();
  const bool is_anchor_whole = pattern.IsAnchorWhole();
  const bool moves_start = pattern.RejectedAnchorMovesStart();
  const ByteSearch& search = pattern.AnchorSearch();
  const std::optional<std::string_view> constant = replacer.Constant();
  const bool is_constant = constant.has_value();
  const std::string_view fixed = constant.value_or(std::string_view());
  const bool takes_turns = context.Host.TakesTurns();
  std::int64_t constants_put = 0;
  RandomGenerator random = context.Random;

  TextBuffer::Rewriting rewriting(text);
  const char* end = rewriting.End();
  const char* base = rewriting.Begin() + first;  // no match starts before this
  const char* from = base;                       // nor has an anchor before this
  BulkOutcome outcome;
  const auto distance = [](const char* low, const char* high) {
    return static_cast<std::size_t>(high - low);
  };
  const auto is_left = [&] { return outcome.Result >= BulkResult::Left; };
  // What others may look at is brought up to date.
  const auto publish = [&](std::int64_t remaining) {
    state.Remaining = remaining;
    state.Replacements += constants_put;
    constants_put = 0;
    context.Random = random;
  };
  while (from != end && !is_left()) {
    auto [block, block_hits] = search.Next(from, end);
    for (std::uint64_t hits = block_hits; hits != 0; hits &= hits - 1) {
      const char* at = block + std::countr_zero(hits);
      if (at < from || !search.Confirm(at)) continue;
      if (distance(base, at) >= offset) {
        const char* start = at - offset;
        // A match may run past the end, where a list matches too.
        const bool fits = distance(start, end) >= length;
        if ((is_anchor_whole && fits) ||
            pattern.MatchAt(std::string_view(start, distance(start, end)), 0)) {
          if (!fits) {
            outcome.Result = BulkResult::Left;
            break;
          }
          if (takes_turns) {
            publish(static_cast<std::int64_t>(distance(start, end) - length));
            outcome.Turn = context.Host.Attend();
            if (!outcome.Turn.GoesOn || outcome.Turn.MayHaveChanged) {
              outcome.Result = BulkResult::HadTurn;
              base = start;
              break;
            }
          }
          outcome.Result = BulkResult::Done;
          if (draw.Replaces(random)) {
            constants_put += is_constant ? 1 : 0;
            rewriting.Put(start + cut_offset,
                          is_constant
                              ? fixed
                              : replacer.NextReplacement(std::string_view(start, length), random),
                          start + end_offset);
          }
          base = start + length;
          if (const std::ptrdiff_t moved = rewriting.End() - end; moved != 0) {
            end += moved;
            base += moved;
            block += moved;
          }
          from = base;
          continue;
        }
      }
      if (moves_start) base = at + 1;
    }
    if (block_hits == 0) break;
    if (distance(block, end) <= ByteSearch::kBlock) {
      if (!is_left()) from = end;
    } else {
      from = std::max(from, block + ByteSearch::kBlock);
    }
  }
  rewriting.Finish();
  if (outcome.Result == BulkResult::HadTurn) {
    // The counters and the generator are the host's doing by now.
    outcome.Position = static_cast<std::int64_t>(text.Size() - distance(base, end));
    return outcome;
  }
  publish(is_left() ? static_cast<std::int64_t>(distance(base, end)) : 0);
  if (outcome.Result == BulkResult::NoMatch && first == 0) text.NoteFruitlessSearch();
  return outcome;
}

}  // namespace zarvo
