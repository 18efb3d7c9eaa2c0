#include "engine/matcher.h"

#include <algorithm>

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

std::size_t SubpatternMatcher::Find(std::string_view text, std::size_t start) const {
  if (start >= text.size()) return std::string_view::npos;
  switch (kind_) {
    case SubpatternKind::String:
    case SubpatternKind::CharacterCode:
      return text.find(text_, start);
    case SubpatternKind::CharacterList:
      for (std::size_t i = start; i < text.size(); ++i) {
        if (Lists(text[i])) return i;
      }
      break;
    case SubpatternKind::NegatedCharacterList:
      return start;
    case SubpatternKind::Function:
      break;
  }
  return std::string_view::npos;
}

PreparedPattern::PreparedPattern(const Pattern& pattern) : length_(pattern.Length()) {
  const std::vector<Subpattern>& subpatterns = pattern.Subpatterns;
  matchers_.reserve(subpatterns.size());
  for (const Subpattern& subpattern : subpatterns) matchers_.emplace_back(subpattern);
  const std::int32_t marked = pattern.MostSignificant;
  const bool is_marked = marked >= 0 && static_cast<std::size_t>(marked) < subpatterns.size();
  most_significant_ = is_marked ? marked : pattern.ComputeMostSignificant();
  anchor_ = static_cast<std::size_t>(std::max(most_significant_, 0));
  for (std::size_t i = 0; i < anchor_; ++i) anchor_offset_ += matchers_[i].Width();
}

bool PreparedPattern::MatchAt(std::string_view text, std::size_t start) const {
  std::size_t position = start;
  for (const SubpatternMatcher& matcher : matchers_) {
    if (!matcher.Matches(text, position)) return false;
    position += matcher.Width();
  }
  return true;
}

std::int64_t PreparedPattern::FindNextMatch(TextBuffer& text, bool from_start,
                                            EngineState& state) const {
  const auto size = static_cast<std::int64_t>(text.Size());
  if (state.Remaining == 0 && from_start) state.Remaining = size;
  state.Remaining = std::min(state.Remaining, size);
  std::int64_t start = kNoMatch;
  if (length_ > 0 && state.Remaining > 0) {
    start = Search(text, static_cast<std::size_t>(size - state.Remaining));
  }
  // Below 0 when the match ran past the end; the search that follows then finds nothing.
  state.Remaining = start == kNoMatch ? 0 : size - start - static_cast<std::int64_t>(length_);
  return start;
}

std::int64_t PreparedPattern::Search(TextBuffer& text, std::size_t base) const {
  Progress progress{base, base};
  if (base < text.GapPosition()) {
    const std::int64_t start = Scan(text.BeforeGap(), 0, true, progress);
    if (start != kNoMatch) return start;
    // What is undecided goes to the other side of the gap: less than one length of the Pattern.
    const std::size_t earliest = progress.From - std::min(progress.From, anchor_offset_);
    text.MoveGap(std::max(progress.Base, earliest));
  }
  return Scan(text.AfterGap(), text.GapPosition(), false, progress);
}

std::int64_t PreparedPattern::Scan(std::string_view piece, std::size_t origin, bool more_follows,
                                   Progress& progress) const {
  const SubpatternMatcher& anchor = matchers_[anchor_];
  const std::size_t piece_end = origin + piece.size();
  while (true) {
    const std::size_t found = anchor.Find(piece, progress.From - origin);
    if (found == std::string_view::npos) {
      // An anchor that begins in this piece may still end in the next.
      const std::size_t overlap = std::max<std::size_t>(anchor.Width(), 1) - 1;
      progress.From = std::max(progress.From, piece_end - std::min(piece.size(), overlap));
      return kNoMatch;
    }
    const std::size_t occurrence = origin + found;
    if (occurrence >= progress.Base + anchor_offset_) {
      const std::size_t start = occurrence - anchor_offset_;
      if (more_follows && start + length_ > piece_end) {
        progress.From = occurrence;
        return kNoMatch;
      }
      if (MatchAt(piece, start - origin)) return static_cast<std::int64_t>(start);
    }
    progress.From = occurrence + 1;
    if (anchor.Kind() != SubpatternKind::NegatedCharacterList) progress.Base = progress.From;
  }
}

bool MatchSubpattern(const Subpattern& subpattern, std::string_view text, std::size_t position) {
  return SubpatternMatcher(subpattern).Matches(text, position);
}

}  // namespace zarvo
