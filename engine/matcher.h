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
#include "engine/text_buffer.h"
#include "model/pattern.h"

namespace zarvo {

/// A Subpattern made ready for comparing and searching.
class SubpatternMatcher {
 public:
  explicit SubpatternMatcher(const Subpattern& subpattern);

  /// True when the Subpattern matches the text at position, which may be past the end.
  [[nodiscard]] bool Matches(std::string_view text, std::size_t position) const;

  /// The first position from start on at which a search for this anchor stops, or npos. A negated
  /// list stops at every byte, an empty String too; a Function and unknown kinds stop nowhere.
  [[nodiscard]] std::size_t Find(std::string_view text, std::size_t start) const;

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
  explicit PreparedPattern(const Pattern& pattern);

  [[nodiscard]] std::size_t Length() const { return length_; }
  /// The index of the most significant Subpattern or Pattern::kNotChosen; the anchor is then the
  /// first Subpattern.
  [[nodiscard]] std::int32_t MostSignificant() const { return most_significant_; }
  /// Bytes of a match before the anchor.
  [[nodiscard]] std::size_t AnchorOffset() const { return anchor_offset_; }

  /// True when every Subpattern matches, the first at start and each where the one before ends.
  [[nodiscard]] bool MatchAt(std::string_view text, std::size_t start) const;

  /// The 0-based start of the next match, or kNoMatch. Begins where state.Remaining says, or at the
  /// start of the text when that is 0 and from_start is set; leaves in it where the next search
  /// begins, or 0 after no match. A Pattern of length 0 never matches. May move the buffer's gap.
  [[nodiscard]] std::int64_t FindNextMatch(TextBuffer& text, bool from_start,
                                           EngineState& state) const;

 private:
  // How far a search has come. No match may start before Base; anchors are looked for from From on.
  struct Progress {
    std::size_t Base;
    std::size_t From;
  };

  [[nodiscard]] std::int64_t Search(TextBuffer& text, std::size_t base) const;
  // Searches one piece of the text, which begins at origin. When more of the text follows, stops
  // at the first place that can't be decided within the piece.
  [[nodiscard]] std::int64_t Scan(std::string_view piece, std::size_t origin, bool more_follows,
                                  Progress& progress) const;

  std::vector<SubpatternMatcher> matchers_;
  std::size_t length_ = 0;
  std::int32_t most_significant_ = Pattern::kNotChosen;
  std::size_t anchor_ = 0;
  std::size_t anchor_offset_ = 0;
};

/// True when the Subpattern matches the text at position.
[[nodiscard]] bool MatchSubpattern(const Subpattern& subpattern, std::string_view text,
                                   std::size_t position);

}  // namespace zarvo
