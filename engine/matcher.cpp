#include "engine/matcher.h"

#include <algorithm>
#include <bit>

namespace zarvo {

SubpatternMatcher::SubpatternMatcher(const Subpattern& subpattern)
    : kind_(subpattern.Kind), width_(subpattern.Width()) {
  switch (kind_) {
    case SubpatternKind::String:
      text_ = subpattern.Contents;
      break;
    case SubpatternKind::CharacterCode:
      text_.assign(1, subpattern.Code());
      break;
    case SubpatternKind::CharacterList:
    case SubpatternKind::NegatedCharacterList:
      text_.assign(256, '\0');
      for (const char byte : subpattern.Contents) text_[static_cast<unsigned char>(byte)] = '\1';
      break;
    case SubpatternKind::Function:
      break;
  }
}

bool SubpatternMatcher::Matches(std::string_view text, std::size_t position) const {
  switch (kind_) {
    case SubpatternKind::String:
    case SubpatternKind::CharacterCode:
      return text_.empty() || (position < text.size() && text.substr(position).starts_with(text_));
    case SubpatternKind::CharacterList:
      // Past the end there is the empty text, and that is found in any list.
      return position >= text.size() || Lists(text[position]);
    case SubpatternKind::NegatedCharacterList:
      return position < text.size() && !Lists(text[position]);
    case SubpatternKind::Function:
      break;
  }
  return false;
}

ByteSearch SubpatternMatcher::Search(const ByteFrequencies& frequencies) const {
  switch (kind_) {
    case SubpatternKind::String:
    case SubpatternKind::CharacterCode:
      return text_.empty() ? ByteSearch::ForEveryByte()
                           : ByteSearch::ForLiteral(text_, frequencies);
    case SubpatternKind::CharacterList:
      return ByteSearch::ForTable(text_);
    case SubpatternKind::NegatedCharacterList:
      return ByteSearch::ForEveryByte();
    case SubpatternKind::Function:
      break;
  }
  return {};
}

std::string_view SubpatternMatcher::Literal() const {
  const bool is_literal = kind_ == SubpatternKind::String || kind_ == SubpatternKind::CharacterCode;
  return is_literal ? std::string_view(text_) : std::string_view();
}

std::string SubpatternMatcher::MatchedBytes() const {
  std::string table(256, '\0');
  if (width_ != 1) return table;
  for (std::size_t byte = 0; byte < table.size(); ++byte) {
    const char text = static_cast<char>(byte);
    table[byte] = Matches(std::string_view(&text, 1), 0) ? '\1' : '\0';
  }
  return table;
}

PreparedPattern::PreparedPattern(const Pattern& pattern, const ByteFrequencies& frequencies)
    : length_(pattern.Length()) {
  const std::vector<Subpattern>& subpatterns = pattern.Subpatterns;
  matchers_.reserve(subpatterns.size());
  for (const Subpattern& subpattern : subpatterns) matchers_.emplace_back(subpattern);
  const std::int32_t marked = pattern.MostSignificant;
  const bool is_marked = marked >= 0 && static_cast<std::size_t>(marked) < subpatterns.size();
  most_significant_ = is_marked ? marked : pattern.ComputeMostSignificant();
  anchor_ = static_cast<std::size_t>(std::max(most_significant_, 0));
  for (std::size_t i = 0; i < anchor_; ++i) anchor_offset_ += matchers_[i].Width();
  if (matchers_.empty()) return;
  anchor_search_ = matchers_[anchor_].Search(frequencies);
  rejected_anchor_moves_start_ = matchers_[anchor_].Kind() != SubpatternKind::NegatedCharacterList;
}

bool PreparedPattern::MatchAt(std::string_view text, std::size_t start) const {
  std::size_t position = start;
  for (const SubpatternMatcher& matcher : matchers_) {
    if (!matcher.Matches(text, position)) return false;
    position += matcher.Width();
  }
  return true;
}

bool PreparedPattern::MayMatch(const TextBuffer& text) const {
  return std::all_of(matchers_.begin(), matchers_.end(), [&](const SubpatternMatcher& matcher) {
    return text.MayHold(matcher.Literal());
  });
}

std::int64_t PreparedPattern::FindNextMatch(TextBuffer& text, bool from_start,
                                            EngineState& state) const {
  return MatchFinder(*this, text).Next(from_start, state);
}

std::int64_t MatchFinder::Next(bool from_start, EngineState& state) {
  const auto size = static_cast<std::int64_t>(text_.Size());
  if (state.Remaining == 0 && from_start) state.Remaining = size;
  state.Remaining = std::min(state.Remaining, size);
  std::int64_t start = PreparedPattern::kNoMatch;
  if (pattern_.length_ > 0 && state.Remaining > 0) {
    const auto base = static_cast<std::size_t>(size - state.Remaining);
    if (!from_start) {
      start = Search(base);
    } else if (pattern_.MayMatch(text_)) {
      if (base < text_.GapPosition()) text_.Rewind();
      start = Search(base);
      if (start == PreparedPattern::kNoMatch && base == 0) text_.NoteFruitlessSearch();
    }
  }
  // Below 0 when the match ran past the end; the search that follows then finds nothing.
  state.Remaining = start == PreparedPattern::kNoMatch
                        ? 0
                        : size - start - static_cast<std::int64_t>(pattern_.length_);
  return start;
}

std::int64_t MatchFinder::Search(std::size_t base) {
  Progress progress{base, base};
  if (base < text_.GapPosition()) {
    const std::int64_t start = SearchHead(progress);
    if (start != PreparedPattern::kNoMatch) return start;
    // What is undecided goes to the other side of the gap: less than one length of the Pattern.
    const std::size_t earliest = progress.From - std::min(progress.From, pattern_.anchor_offset_);
    text_.MoveGap(std::max(progress.Base, earliest));
  }
  return SearchTail(progress);
}

std::int64_t MatchFinder::SearchHead(Progress& progress) const {
  const std::string_view head = text_.BeforeGap();
  const char* begin = head.data();
  const char* end = begin + head.size();
  const ByteSearch& search = pattern_.anchor_search_;
  // An anchor that begins behind this may end behind the gap.
  const std::size_t overlap =
      std::max<std::size_t>(pattern_.matchers_[pattern_.anchor_].Width(), 1) - 1;
  const std::size_t limit = head.size() - std::min(head.size(), overlap);
  while (progress.From < limit) {
    const auto [block, hits] = search.Next(begin + progress.From, end);
    const auto block_start = static_cast<std::size_t>(block - begin);
    for (std::uint64_t left = hits; left != 0; left &= left - 1) {
      const std::size_t anchor = block_start + static_cast<std::size_t>(std::countr_zero(left));
      if (!search.Confirm(begin + anchor)) continue;
      if (anchor >= progress.Base + pattern_.anchor_offset_) {
        const std::size_t start = anchor - pattern_.anchor_offset_;
        progress.From = anchor;
        if (start + pattern_.length_ > head.size()) return PreparedPattern::kNoMatch;
        if (pattern_.MatchAt(head, start)) return static_cast<std::int64_t>(start);
      }
      if (pattern_.rejected_anchor_moves_start_) progress.Base = anchor + 1;
    }
    if (hits == 0) break;
    progress.From = std::min(block_start + ByteSearch::kBlock, limit);
  }
  progress.From = std::max(progress.From, limit);
  return PreparedPattern::kNoMatch;
}

std::int64_t MatchFinder::SearchTail(Progress progress) {
  const std::string_view tail = text_.AfterGap();
  const char* end = tail.data() + tail.size();
  const std::size_t size = text_.Size();
  const std::size_t offset = pattern_.anchor_offset_;
  const ByteSearch& search = pattern_.anchor_search_;
  const char* from = end - (size - progress.From);
  std::size_t base = progress.Base;
  std::uint64_t hits = 0;
  if (end == end_ && version_ == text_.TailVersion() && from >= searched_from_) {
    if (from <= block_) {
      hits = hits_;
    } else if (const auto passed = static_cast<std::size_t>(from - block_);
               passed < ByteSearch::kBlock) {
      hits = hits_ >> passed << passed;
    } else {
      block_ = nullptr;
    }
  } else {
    end_ = end;
    version_ = text_.TailVersion();
    block_ = nullptr;
  }
  while (true) {
    while (hits == 0) {
      if (block_ != nullptr) {
        from = end - block_ > static_cast<std::ptrdiff_t>(ByteSearch::kBlock)
                   ? block_ + ByteSearch::kBlock
                   : end;
      }
      const ByteSearch::Result result = search.Next(from, end);
      searched_from_ = from;
      block_ = result.Block;
      hits = hits_ = result.Hits;
      if (hits == 0) return PreparedPattern::kNoMatch;
    }
    const char* at = block_ + std::countr_zero(hits);
    hits &= hits - 1;
    if (!search.Confirm(at)) continue;
    const std::size_t anchor = size - static_cast<std::size_t>(end - at);
    if (anchor >= base + offset) {
      const std::size_t start = anchor - offset;
      if (pattern_.IsAnchorWhole() || pattern_.MatchAt(tail, start - text_.GapPosition())) {
        // The match may be written over, so nothing in it is known any longer.
        const std::size_t rest = pattern_.length_ - offset;
        searched_from_ = rest < static_cast<std::size_t>(end - at) ? at + rest : end;
        return static_cast<std::int64_t>(start);
      }
    }
    if (pattern_.rejected_anchor_moves_start_) base = anchor + 1;
  }
}

bool MatchSubpattern(const Subpattern& subpattern, std::string_view text, std::size_t position) {
  return SubpatternMatcher(subpattern).Matches(text, position);
}

}  // namespace zarvo
