// The text that a Rule works on: bytes with a movable gap.
//
// The text stands in two runs, the head before the gap and the tail behind it. A splice moves the
// gap to its place, and splices come mostly from left to right, so a whole pass moves each byte
// about once, however many splices change the text's length.
//
// The runs may be in one storage or in two. As long as replacements don't outgrow what they
// replace, the head grows over the bytes that the tail has left behind, in one storage. When it
// would run into the tail, the tail slides to the end of the storage, if that has room to speak of:
// moving it costs less than memory that was never used. Otherwise the head gets a storage of its
// own, and from there on bytes are copied from one to the other; Rewind makes the copy the text of
// the next pass, and the two swap their roles. A
// replacement as long as what it replaces is written over it. A borrowed text is only read: the
// first change makes what it needs of it the buffer's own.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>

#include "engine/presence_map.h"
#include "engine/search.h"

namespace zarvo {

/// Positions are 0-based bytes of the text, as if there was no gap. Views and pointers are valid
/// until the next change.
class TextBuffer {
 public:
  /// Works on a copy of the text.
  explicit TextBuffer(std::string_view text);
  /// Works on the text itself for as long as nothing changes; it must stay as it is meanwhile.
  [[nodiscard]] static TextBuffer Borrowing(std::string_view text);
  /// Works on the text itself. What it has room for beyond its size the text may grow by in place.
  [[nodiscard]] static TextBuffer Owning(std::string&& text);

  TextBuffer(const TextBuffer&) = delete;
  TextBuffer& operator=(const TextBuffer&) = delete;

  [[nodiscard]] std::size_t Size() const { return head_size_ + tail_size_; }
  /// The number of bytes before the gap.
  [[nodiscard]] std::size_t GapPosition() const { return head_size_; }
  [[nodiscard]] std::string_view BeforeGap() const { return {front_.data(), head_size_}; }
  [[nodiscard]] std::string_view AfterGap() const { return {tail_, tail_size_}; }

  /// False as long as a borrowed text stands for the whole.
  [[nodiscard]] bool IsChanged() const {
    return !is_borrowed_ || head_size_ > 0 || tail_size_ != borrowed_size_;
  }

  /// Changes whenever bytes behind the gap are no longer what and where they were, other than by
  /// a gap that moves forward or by writing over them with Splice.
  [[nodiscard]] std::uint64_t TailVersion() const { return tail_version_; }

  /// Moves the gap; costs the bytes between the old place and the new one.
  void MoveGap(std::size_t position);

  /// Moves the gap to the start; costs the smaller of the two runs, where they share a storage.
  void Rewind();

  /// The bytes from position on, as many as there are up to length. position must be within the
  /// text. Moves the gap when it lies inside.
  [[nodiscard]] std::string_view Piece(std::size_t position, std::size_t length);

  /// The text becomes its first cut bytes, then inserted, then what begins at end. An end before
  /// cut repeats the bytes between them. Both must be within the text; inserted must not be a view
  /// of it.
  void Splice(std::size_t cut, std::string_view inserted, std::size_t end);

  /// Puts the byte that the map has for it in the place of each byte from start on. Gives how many
  /// of them the other table marks. Both have 256 entries.
  std::size_t MapBytes(std::size_t start, std::string_view map, std::string_view marked);

  /// Those of the text as it was at the first question; of prose, where the text is short.
  [[nodiscard]] const ByteFrequencies& Frequencies();

  /// A pass from left to right over the whole text. See below.
  class Rewriting;

  /// The whole text; the buffer is empty afterwards.
  [[nodiscard]] std::string Take();

  /// False when the text is known not to hold the literal anywhere.
  [[nodiscard]] bool MayHold(std::string_view literal) const {
    return presence_ == nullptr || presence_->MayHold(literal);
  }
  /// To be told of searches through the whole text that found nothing. After some of them it pays
  /// to take down what the text holds, so that MayHold can answer.
  void NoteFruitlessSearch();

 private:
  struct BorrowedText {
    std::string_view Text;
  };
  struct OwnedText {
    std::string&& Text;
  };
  explicit TextBuffer(BorrowedText borrowed);
  explicit TextBuffer(OwnedText owned);

  // Bytes that may be copied beyond those asked for.
  static constexpr std::size_t kSpare = 32;

  // What the head may still grow by where it is.
  [[nodiscard]] std::size_t Room() const { return head_limit_ - head_size_; }
  // Makes that at least size, at a cost that many calls share.
  void MakeRoom(std::size_t size);
  // Makes it at least size where the runs share a storage, by moving the tail to its end. False
  // where that isn't possible or doesn't pay.
  bool SlideTail(std::size_t size);
  // Makes the storage of the head at least so large; what it holds beyond the head is of no use.
  void EnlargeFront(std::size_t size);
  // The text is size bytes of the front storage from start on, with the gap before them.
  void StandInFront(std::size_t start, std::size_t size);
  // There must be room, unless the runs share a storage, where the gap moves with them.
  void Advance(std::size_t count);
  // There must be room.
  void AppendToHead(std::string_view inserted);
  // Makes a borrowed text the buffer's own; the gap must be at the start.
  void Own();
  // False where that can't be done in place.
  bool WriteOver(std::size_t position, std::string_view bytes);
  void RepeatingSplice(std::size_t cut, std::string_view inserted, std::size_t end);
  // Takes down what bytes put at this place have added to what the text holds.
  void NotePresence(std::size_t position, std::size_t size);

  std::string front_;  // the head, and the tail too where they share a storage
  std::string back_;   // the tail, or memory to be used again
  std::size_t head_size_ = 0;
  std::size_t head_limit_ = 0;  // where the head would run into the tail or out of its storage
  const char* tail_ = nullptr;
  std::size_t tail_size_ = 0;
  bool is_borrowed_ = false;  // the tail, which then shares no storage
  std::size_t borrowed_size_ = 0;
  bool shares_storage_ = true;
  std::uint64_t tail_version_ = 0;
  std::unique_ptr<ByteFrequencies> frequencies_;
  std::unique_ptr<PresenceMap> presence_;
  std::size_t fruitless_bytes_ = 0;
};

/// Splices of one pass, each behind the last one. Between its making and Finish the buffer itself
/// must not be used. Pointers into the text as it was at the start stay valid as far as they are at
/// or behind the end of the last splice, and move with End.
class TextBuffer::Rewriting {
 public:
  explicit Rewriting(TextBuffer& buffer);

  [[nodiscard]] const char* Begin() const { return buffer_->tail_; }
  [[nodiscard]] const char* End() const { return end_; }

  /// What lies between cut and resume becomes inserted. Neither must be before the last resume.
  void Put(const char* cut, std::string_view inserted, const char* resume) {
    const auto kept = static_cast<std::size_t>(cut - from_);
    const auto room = static_cast<std::size_t>((shares_ ? from_ : limit_) - to_);
    // In one storage the gap moves along, so it needn't hold what is kept.
    const std::size_t needed = 2 * kSpare + inserted.size() + (shares_ ? 0 : kept);
    if (room < needed || static_cast<std::size_t>(end_ - cut) < kSpare) {
      if (!shares_ || inserted.size() > room + static_cast<std::size_t>(resume - cut)) {
        *this = PutSlowly(*this, cut, inserted, resume);
        return;
      }
      if (to_ != from_) std::memmove(to_, from_, kept);
    } else if (kept <= kLongPiece) {
      for (std::size_t i = 0; i < kept; i += kSpare) {
        char piece[kSpare];
        std::memcpy(piece, from_ + i, kSpare);
        std::memcpy(to_ + i, piece, kSpare);
      }
    } else {
      std::memmove(to_, from_, kept);
    }
    to_ += kept;
    char* const place = to_;
    CopyShort(to_, inserted);
    to_ += inserted.size();
    from_ = resume;
    if (presence_ != nullptr) NotePresence(*this, place);
  }

  void Finish();

 private:
  // By value: an object whose address is known elsewhere would have to be in memory all the time.
  static Rewriting PutSlowly(Rewriting rewriting, const char* cut, std::string_view inserted,
                             const char* resume);
  void Load();
  // Two copies of fixed length, which may overlap, cost less than one that has to be called.
  static void CopyShort(char* to, std::string_view bytes) {
    const char* from = bytes.data();
    const std::size_t size = bytes.size();
    if (size == 1) {
      *to = *from;
    } else if (size >= 2 && size <= 4) {
      std::memcpy(to, from, 2);
      std::memcpy(to + size - 2, from + size - 2, 2);
    } else if (size > 4 && size <= 8) {
      std::memcpy(to, from, 4);
      std::memcpy(to + size - 4, from + size - 4, 4);
    } else if (size > 8) {
      std::memcpy(to, from, size);
    }
  }
  // Takes down what the bytes put at place have added.
  static void NotePresence(Rewriting rewriting, const char* place);

  // From this on, what is called for a copy costs less than it saves.
  static constexpr std::size_t kLongPiece = 256;

  TextBuffer* buffer_;
  char* to_;          // where the head ends
  const char* from_;  // where the tail begins
  const char* limit_;
  const char* end_;
  bool shares_;
  PresenceMap* presence_;
};

inline void TextBuffer::Advance(std::size_t count) {
  char* to = front_.data() + head_size_;
  const char* from = tail_;
  head_size_ += count;
  tail_ += count;
  tail_size_ -= count;
  if (shares_storage_) head_limit_ += count;
  if (from == to) return;
  // Most pieces are short; whole vectors are copied as long as nothing is behind them that counts.
  if (count <= kSpare && tail_size_ >= kSpare && head_limit_ - head_size_ >= kSpare &&
      (!shares_storage_ || from - to >= static_cast<std::ptrdiff_t>(kSpare))) {
    std::memcpy(to, from, kSpare);
    return;
  }
  std::memmove(to, from, count);
}

inline void TextBuffer::AppendToHead(std::string_view inserted) {
  char* to = front_.data() + head_size_;
  const std::size_t size = inserted.size();
  head_size_ += size;
  if (size == 1) {
    *to = inserted.front();
  } else if (size > 1) {
    std::memcpy(to, inserted.data(), size);
  }
}

inline std::string_view TextBuffer::Piece(std::size_t position, std::size_t length) {
  length = std::min(length, Size() - position);
  if (position < head_size_ && position + length > head_size_) MoveGap(position);
  if (position < head_size_) return {front_.data() + position, length};
  return {tail_ + (position - head_size_), length};
}

inline void TextBuffer::Splice(std::size_t cut, std::string_view inserted, std::size_t end) {
  if (end < cut) {
    RepeatingSplice(cut, inserted, end);
  } else if (inserted.size() != end - cut || !WriteOver(cut, inserted)) {
    if (cut < head_size_) MoveGap(cut);
    const std::size_t kept = cut - head_size_;
    const std::size_t removed = end - cut;
    // With a shared storage the removed bytes are room for the inserted ones.
    const std::size_t needed = inserted.size() + kept;
    if (shares_storage_ ? inserted.size() > Room() + removed && !SlideTail(inserted.size())
                        : needed > Room()) {
      MakeRoom(needed);
    }
    Advance(kept);
    tail_ += removed;
    tail_size_ -= removed;
    if (shares_storage_) head_limit_ = static_cast<std::size_t>(tail_ - front_.data());
    AppendToHead(inserted);
  }
  if (presence_ != nullptr) NotePresence(cut, inserted.size());
}

}  // namespace zarvo
