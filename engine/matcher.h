// Finding the places where a Pattern matches a text.
//
// A Pattern has one length, so a match is a start position and nothing is ever tried twice. The
// search looks for one Subpattern, the anchor, and tests the whole Pattern only around its
// occurrences. The anchor's leftmost occurrence decides, and an occurrence at which the Pattern
// doesn't match moves the start of the search behind itself: a match that begins at or before a
// rejected anchor is not found. Filters in use depend on that, as on all of what follows:
//
// - past the end of the text a Character list matches, and nothing else of width 1 does;
// - the place where the next search begins is counted from the end of the text and outlives the
//   Rule and the run (see EngineState::Remaining).
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "engine/run_host.h"
#include "engine/search.h"
#include "engine/text_buffer.h"
#include "model/pattern.h"

namespace zarvo {

/// A Subpattern made ready for comparing and searching.
class SubpatternMatcher {
 public:
  explicit SubpatternMatcher(const Subpattern& subpattern);

  /// True when the Subpattern matches the text at position, which may be past the end.
  [[nodiscard]] bool Matches(std::string_view text, std::size_t position) const;

  /// The search for this Subpattern as an anchor. A negated list stops at every byte, an empty
  /// String too; a Function and unknown kinds stop nowhere.
  [[nodiscard]] ByteSearch Search(const ByteFrequencies& frequencies) const;

  /// The bytes that every match holds, or none when that can't be said.
  [[nodiscard]] std::string_view Literal() const;

  /// A table of 256 that marks the bytes which the Subpattern matches; all 0 unless it covers one
  /// byte.
  [[nodiscard]] std::string MatchedBytes() const;

  [[nodiscard]] std::size_t Width() const { return width_; }
  [[nodiscard]] SubpatternKind Kind() const { return kind_; }

 private:
  [[nodiscard]] bool Lists(char byte) const {
    return text_[static_cast<unsigned char>(byte)] != '\0';
  }

  SubpatternKind kind_;
  std::size_t width_;
  // The literal bytes of a String or a Character code; of a list a table that says of each byte
  // whether it is listed.
  std::string text_;
};

/// A Pattern made ready for a Rule's run: its length, its anchor, and its Subpatterns' matchers.
class PreparedPattern {
 public:
  /// The position that stands for no match.
  static constexpr std::int64_t kNoMatch = -1;

  /// Takes the Subpattern that the Pattern marks as most significant; where it marks none, or one
  /// that doesn't exist, the automatic choice.
  explicit PreparedPattern(const Pattern& pattern,
                           const ByteFrequencies& frequencies = ByteFrequencies());

  [[nodiscard]] std::size_t Length() const { return length_; }
  /// The index of the most significant Subpattern or Pattern::kNotChosen; the anchor is then the
  /// first Subpattern.
  [[nodiscard]] std::int32_t MostSignificant() const { return most_significant_; }
  /// Bytes of a match before the anchor.
  [[nodiscard]] std::size_t AnchorOffset() const { return anchor_offset_; }

  [[nodiscard]] const std::vector<SubpatternMatcher>& Matchers() const { return matchers_; }
  [[nodiscard]] const ByteSearch& AnchorSearch() const { return anchor_search_; }
  /// True when the anchor is all there is to match, so that what its search finds is a match.
  [[nodiscard]] bool IsAnchorWhole() const {
    return matchers_.size() == 1 && rejected_anchor_moves_start_;
  }
  [[nodiscard]] bool RejectedAnchorMovesStart() const { return rejected_anchor_moves_start_; }

  /// False when the text lacks something that every match holds.
  [[nodiscard]] bool MayMatch(const TextBuffer& text) const;

  /// True when every Subpattern matches, the first at start and each where the one before ends.
  [[nodiscard]] bool MatchAt(std::string_view text, std::size_t start) const;

  /// The 0-based start of the next match, or kNoMatch. Begins where state.Remaining says, or at the
  /// start of the text when that is 0 and from_start is set; leaves in it where the next search
  /// begins, or 0 after no match. A Pattern of length 0 never matches. May move the buffer's gap.
  [[nodiscard]] std::int64_t FindNextMatch(TextBuffer& text, bool from_start,
                                           EngineState& state) const;

 private:
  friend class MatchFinder;

  std::vector<SubpatternMatcher> matchers_;
  std::size_t length_ = 0;
  std::int32_t most_significant_ = Pattern::kNotChosen;
  std::size_t anchor_ = 0;
  std::size_t anchor_offset_ = 0;
  ByteSearch anchor_search_;
  bool rejected_anchor_moves_start_ = true;
};

/// Finds the matches of one Pattern in one text, one after another. What it has seen of the text
/// behind a match it keeps for the next one, as long as the buffer says that it is still there.
class MatchFinder {
 public:
  /// Both must outlive the finder.
  MatchFinder(const PreparedPattern& pattern, TextBuffer& text) : pattern_(pattern), text_(text) {}

  /// As PreparedPattern::FindNextMatch.
  [[nodiscard]] std::int64_t Next(bool from_start, EngineState& state);

  /// To be called when bytes behind the end of the last match were written over.
  void Forget() { end_ = nullptr; }

 private:
  // How far a search has come. No match may start before Base; anchors are looked for from From on.
  struct Progress {
    std::size_t Base;
    std::size_t From;
  };

  [[nodiscard]] std::int64_t Search(std::size_t base);
  // Searches the bytes before the gap, and stops at the first place that can't be decided there.
  [[nodiscard]] std::int64_t SearchHead(Progress& progress) const;
  [[nodiscard]] std::int64_t SearchTail(Progress progress);

  const PreparedPattern& pattern_;
  TextBuffer& text_;
  // The last block of hits: from searched_from_ to the end of the block there are no others.
  const char* end_ = nullptr;
  std::uint64_t version_ = 0;
  const char* searched_from_ = nullptr;
  const char* block_ = nullptr;
  std::uint64_t hits_ = 0;
};

/// True when the Subpattern matches the text at position.
[[nodiscard]] bool MatchSubpattern(const Subpattern& subpattern, std::string_view text,
                                   std::size_t position);

}  // namespace zarvo
