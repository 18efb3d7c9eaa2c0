#include "engine/text_buffer.h"

#include <utility>

#include "model/large_pages.h"

namespace zarvo {
namespace {

// The storage of a head is filled in such steps, so that what is filled is still at hand when bytes
// are put over it.
constexpr std::size_t kFillStep = std::size_t{256} << 10;

// Parts of a text: what a storage has beyond it, when it is to be changed in it, as memory that
// isn't used costs nothing; how far the tail slides, and the least for which that pays.
constexpr std::size_t kSparePart = 4;
constexpr std::size_t kSlidePart = 8;
constexpr std::size_t kLeastSlidePart = 16;

PresencePatience& Patience() {
  static PresencePatience patience;
  return patience;
}

}  // namespace

void UsePresencePatience(PresencePatience patience) { Patience() = patience; }

TextBuffer::TextBuffer(std::string_view text) : front_(text) { StandInFront(0, text.size()); }

TextBuffer::TextBuffer(BorrowedText borrowed)
    : tail_(borrowed.Text.data()),
      tail_size_(borrowed.Text.size()),
      is_borrowed_(true),
      borrowed_size_(borrowed.Text.size()),
      shares_storage_(false) {}

TextBuffer::TextBuffer(OwnedText owned) : front_(std::move(owned.Text)) {
  StandInFront(0, front_.size());
}

TextBuffer TextBuffer::Borrowing(std::string_view text) { return TextBuffer(BorrowedText{text}); }

TextBuffer TextBuffer::Owning(std::string&& text) { return TextBuffer(OwnedText{std::move(text)}); }

void TextBuffer::StandInFront(std::size_t start, std::size_t size) {
  head_size_ = 0;
  head_limit_ = start;
  tail_ = front_.data() + start;
  tail_size_ = size;
  is_borrowed_ = false;
  shares_storage_ = true;
  ++tail_version_;
}

void TextBuffer::EnlargeFront(std::size_t size) {
  if (front_.capacity() < size) {
    // Room for twice the text costs nothing before it is filled.
    ReserveLarge(front_, size + kSpare, std::max(size, 2 * Size()) + kSpare);
  }
  front_.resize(std::max(size, std::min(size + kFillStep, front_.capacity())));
}

bool TextBuffer::SlideTail(std::size_t size) {
  const std::size_t end = head_limit_ + tail_size_;
  const std::size_t distance =
      std::min(front_.capacity() - end, std::max(size, Size() / kSlidePart));
  const bool has_second_storage = back_.capacity() > Size() + size;
  if (has_second_storage || Room() + distance < size || distance < Size() / kLeastSlidePart) {
    return false;
  }
  if (front_.size() < end + distance) front_.resize(end + distance);
  std::memmove(front_.data() + head_limit_ + distance, front_.data() + head_limit_, tail_size_);
  head_limit_ += distance;
  tail_ = front_.data() + head_limit_;
  ++tail_version_;
  return true;
}

void TextBuffer::MakeRoom(std::size_t size) {
  if (shares_storage_) {
    // The tail stays, and the head goes to the other storage. Short strings may lie in the objects.
    const std::size_t tail_start = head_limit_;
    std::swap(front_, back_);
    tail_ = back_.data() + tail_start;
    shares_storage_ = false;
    ++tail_version_;
    // What another pass left there is of no use.
    if (front_.capacity() < head_size_ + size) front_.clear();
    if (front_.size() < head_size_ + size) EnlargeFront(head_size_ + size);
    std::memcpy(front_.data(), back_.data(), head_size_);
  } else if (front_.size() < head_size_ + size) {
    EnlargeFront(head_size_ + size);
  }
  head_limit_ = front_.size();
}

void TextBuffer::MoveGap(std::size_t position) {
  if (position > head_size_) {
    const std::size_t count = position - head_size_;
    if (!shares_storage_ && count > Room()) MakeRoom(count);
    Advance(count);
    return;
  }
  const std::size_t count = head_size_ - position;
  if (count == 0) return;
  const bool has_room =
      shares_storage_ || (!is_borrowed_ && static_cast<std::size_t>(tail_ - back_.data()) >= count);
  if (!has_room) {
    Rewind();
    Advance(position);
    return;
  }
  std::string& storage = shares_storage_ ? front_ : back_;
  const auto tail_start = static_cast<std::size_t>(tail_ - storage.data()) - count;
  std::memmove(storage.data() + tail_start, front_.data() + position, count);
  tail_ -= count;
  tail_size_ += count;
  head_size_ = position;
  if (shares_storage_) head_limit_ = tail_start;
  ++tail_version_;
}

void TextBuffer::Rewind() {
  if (head_size_ == 0) return;
  const std::size_t size = Size();
  if (shares_storage_ && tail_size_ > head_size_) {
    const std::size_t start = head_limit_ - head_size_;
    std::memmove(front_.data() + start, front_.data(), head_size_);
    StandInFront(start, size);
    return;
  }
  if (!shares_storage_ && tail_size_ > Room()) MakeRoom(tail_size_);
  std::memmove(front_.data() + head_size_, tail_, tail_size_);
  StandInFront(0, size);
}

void TextBuffer::Own() {
  ReserveLarge(front_, tail_size_, tail_size_ + tail_size_ / kSparePart);
  front_.assign(tail_, tail_size_);
  StandInFront(0, tail_size_);
}

bool TextBuffer::WriteOver(std::size_t position, std::string_view bytes) {
  if (bytes.empty()) return true;
  if (position + bytes.size() <= head_size_) {
    std::memcpy(front_.data() + position, bytes.data(), bytes.size());
    return true;
  }
  if (position < head_size_) return false;
  if (is_borrowed_) {
    if (head_size_ > 0) return false;
    Own();
  }
  std::string& storage = shares_storage_ ? front_ : back_;
  const auto tail_start = static_cast<std::size_t>(tail_ - storage.data());
  std::memcpy(storage.data() + tail_start + (position - head_size_), bytes.data(), bytes.size());
  return true;
}

void TextBuffer::RepeatingSplice(std::size_t cut, std::string_view inserted, std::size_t end) {
  // What lies between end and cut stands on both sides of the inserted text.
  MoveGap(end);
  const std::string repeated(AfterGap().substr(0, cut - end));
  const std::size_t needed = repeated.size() + inserted.size();
  if (needed > Room()) MakeRoom(needed);
  AppendToHead(repeated);
  AppendToHead(inserted);
}

TextBuffer::Rewriting::Rewriting(TextBuffer& buffer) : buffer_(&buffer) {
  buffer.Rewind();
  Load();
}

void TextBuffer::Rewriting::Load() {
  to_ = buffer_->front_.data() + buffer_->head_size_;
  from_ = buffer_->tail_;
  limit_ = buffer_->front_.data() + buffer_->head_limit_;
  end_ = from_ + buffer_->tail_size_;
  shares_ = buffer_->shares_storage_;
  presence_ = buffer_->presence_.get();
}

void TextBuffer::Rewriting::Finish() {
  buffer_->head_size_ = static_cast<std::size_t>(to_ - buffer_->front_.data());
  buffer_->tail_ = from_;
  buffer_->tail_size_ = static_cast<std::size_t>(end_ - from_);
  if (shares_) buffer_->head_limit_ = static_cast<std::size_t>(from_ - buffer_->front_.data());
  ++buffer_->tail_version_;
}

TextBuffer::Rewriting TextBuffer::Rewriting::PutSlowly(Rewriting rewriting, const char* cut,
                                                       std::string_view inserted,
                                                       const char* resume) {
  rewriting.Finish();
  TextBuffer& buffer = *rewriting.buffer_;
  const std::size_t place = buffer.head_size_ + static_cast<std::size_t>(cut - rewriting.from_);
  buffer.Splice(place, inserted, place + static_cast<std::size_t>(resume - cut));
  rewriting.Load();
  return rewriting;
}

void TextBuffer::Rewriting::NotePresence(Rewriting rewriting, const char* place) {
  constexpr std::ptrdiff_t kAround = PresenceMap::kLongest - 1;
  constexpr std::ptrdiff_t kShort = 64;
  char bytes[kShort + 2 * kAround];
  const char* start =
      place - std::min<std::ptrdiff_t>(place - rewriting.buffer_->front_.data(), kAround);
  const std::ptrdiff_t head = rewriting.to_ - start;
  if (head <= kShort + kAround) {
    const auto head_size = static_cast<std::size_t>(head);
    const auto tail_size =
        static_cast<std::size_t>(std::min(rewriting.end_ - rewriting.from_, kAround));
    std::memcpy(bytes, start, head_size);
    std::memcpy(bytes + head_size, rewriting.from_, tail_size);
    rewriting.presence_->Note({bytes, head_size + tail_size});
  } else {
    rewriting.Finish();
    rewriting.buffer_->NotePresence(
        static_cast<std::size_t>(place - rewriting.buffer_->front_.data()),
        static_cast<std::size_t>(rewriting.to_ - place));
  }
}

std::size_t TextBuffer::MapBytes(std::size_t start, std::string_view map, std::string_view marked) {
  Rewind();
  if (is_borrowed_) Own();
  std::string& storage = shares_storage_ ? front_ : back_;
  char* bytes = storage.data() + (tail_ - storage.data());
  std::size_t count = 0;
  for (std::size_t i = start; i < tail_size_; ++i) {
    const auto byte = static_cast<unsigned char>(bytes[i]);
    bytes[i] = map[byte];
    count += static_cast<unsigned char>(marked[byte]);
  }
  presence_.reset();
  fruitless_bytes_ = 0;
  ++tail_version_;
  return count;
}

const ByteFrequencies& TextBuffer::Frequencies() {
  constexpr std::size_t kLong = std::size_t{1} << 20;
  static const ByteFrequencies prose;
  if (frequencies_ == nullptr) {
    if (Size() < kLong) return prose;
    Rewind();
    frequencies_ = std::make_unique<ByteFrequencies>(AfterGap());
  }
  return *frequencies_;
}

std::string TextBuffer::Take() {
  if (is_borrowed_ && head_size_ == 0) {
    front_ = std::string(tail_, tail_size_);
  } else {
    const std::size_t size = Size();
    if (!shares_storage_ && tail_size_ > Room()) MakeRoom(tail_size_);
    std::memmove(front_.data() + head_size_, tail_, tail_size_);
    front_.resize(size);
  }
  std::string text = std::move(front_);
  front_.clear();
  back_.clear();
  presence_.reset();
  StandInFront(0, 0);
  return text;
}

void TextBuffer::NoteFruitlessSearch() {
  if (presence_ != nullptr && presence_->HoldsFours()) return;
  fruitless_bytes_ += Size();
  if (fruitless_bytes_ < Patience().Bytes + Patience().Texts * Size()) return;
  fruitless_bytes_ = 0;
  presence_ = std::make_unique<PresenceMap>(presence_ == nullptr ? PresenceMap::Detail::Pairs
                                                                 : PresenceMap::Detail::Fours);
  presence_->Note(BeforeGap());
  presence_->Note(AfterGap());
  NotePresence(head_size_, 0);
}

void TextBuffer::NotePresence(std::size_t position, std::size_t size) {
  constexpr std::size_t kAround = PresenceMap::kLongest - 1;
  const std::size_t start = position - std::min(position, kAround);
  const std::size_t end = std::min(position + size + kAround, Size());
  if (start >= head_size_) {
    presence_->Note(AfterGap().substr(start - head_size_, end - start));
  } else if (end <= head_size_) {
    presence_->Note(BeforeGap().substr(start, end - start));
  } else {
    std::string across(BeforeGap().substr(start));
    across += AfterGap().substr(0, end - head_size_);
    presence_->Note(across);
  }
}

}  // namespace zarvo
