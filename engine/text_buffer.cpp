#include "engine/text_buffer.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace zarvo {

TextBuffer::TextBuffer(std::string_view text) : bytes_(text), gap_start_(0), gap_end_(0) {}

void TextBuffer::MoveGap(std::size_t position) {
  char* bytes = bytes_.data();
  if (position < gap_start_) {
    const std::size_t moved = gap_start_ - position;
    std::memmove(bytes + gap_end_ - moved, bytes + position, moved);
    gap_start_ -= moved;
    gap_end_ -= moved;
  } else if (position > gap_start_) {
    const std::size_t moved = position - gap_start_;
    std::memmove(bytes + gap_start_, bytes + gap_end_, moved);
    gap_start_ += moved;
    gap_end_ += moved;
  }
}

void TextBuffer::GrowGap(std::size_t size) {
  if (GapSize() >= size) return;
  // Half the text again: the copies of all growths together stay in proportion to the final size.
  const std::size_t new_gap = size + Size() / 2;
  const std::string_view after = AfterGap();
  std::string grown;
  grown.reserve(Size() + new_gap);
  grown.append(BeforeGap());
  grown.resize(gap_start_ + new_gap);
  grown.append(after);
  bytes_ = std::move(grown);
  gap_end_ = gap_start_ + new_gap;
}

void TextBuffer::Splice(std::size_t cut, std::string_view inserted, std::size_t end) {
  if (end < cut) {
    // What lies between end and cut stands on both sides of the inserted text.
    MoveGap(end);
    const std::string repeated(AfterGap().substr(0, cut - end));
    GrowGap(repeated.size() + inserted.size());
    AppendBeforeGap(repeated);
  } else {
    MoveGap(cut);
    gap_end_ += end - cut;
    GrowGap(inserted.size());
  }
  AppendBeforeGap(inserted);
}

void TextBuffer::AppendBeforeGap(std::string_view inserted) {
  gap_start_ += inserted.copy(bytes_.data() + gap_start_, inserted.size());
}

std::string_view TextBuffer::Piece(std::size_t position, std::size_t length) {
  length = std::min(length, Size() - position);
  if (position < gap_start_ && position + length > gap_start_) MoveGap(position);
  if (position < gap_start_) return BeforeGap().substr(position, length);
  return AfterGap().substr(position - gap_start_, length);
}

std::string TextBuffer::Take() {
  MoveGap(Size());
  bytes_.resize(gap_start_);
  gap_start_ = gap_end_ = 0;
  return std::move(bytes_);
}

}  // namespace zarvo
