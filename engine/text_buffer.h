// The text that a Rule works on: bytes with a movable gap.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace zarvo {

/// A text in two runs of bytes with a gap between them. A splice moves the gap to its place, and
/// splices come mostly from left to right, so a whole pass moves each byte about once, however many
/// splices change the text's length. Positions are 0-based bytes of the text, as if there was no
/// gap. Views are valid until the next change.
class TextBuffer {
 public:
  explicit TextBuffer(std::string_view text);

  [[nodiscard]] std::size_t Size() const { return bytes_.size() - GapSize(); }
  /// The number of bytes before the gap.
  [[nodiscard]] std::size_t GapPosition() const { return gap_start_; }
  [[nodiscard]] std::string_view BeforeGap() const {
    return std::string_view(bytes_).substr(0, gap_start_);
  }
  [[nodiscard]] std::string_view AfterGap() const {
    return std::string_view(bytes_).substr(gap_end_);
  }

  /// Moves the gap; costs the bytes between the old place and the new one.
  void MoveGap(std::size_t position);

  /// The bytes from position on, as many as there are up to length. position must be within the
  /// text. Moves the gap when it lies inside.
  [[nodiscard]] std::string_view Piece(std::size_t position, std::size_t length);

  /// The text becomes its first cut bytes, then inserted, then what begins at end. An end before
  /// cut repeats the bytes between them. Both must be within the text; inserted must not be a view
  /// of it.
  void Splice(std::size_t cut, std::string_view inserted, std::size_t end);

  /// The whole text; the buffer is empty afterwards.
  [[nodiscard]] std::string Take();

 private:
  [[nodiscard]] std::size_t GapSize() const { return gap_end_ - gap_start_; }
  // Makes the gap at least this large, at a cost that many calls share.
  void GrowGap(std::size_t size);
  // The gap must have room.
  void AppendBeforeGap(std::string_view inserted);

  std::string bytes_;
  std::size_t gap_start_;
  std::size_t gap_end_;
};

}  // namespace zarvo
