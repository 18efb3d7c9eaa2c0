#include "model/archive.h"

namespace zarvo {
namespace {

// The prefix of a text: one byte below kLongMark, else the mark and 16 bits below kWideMark, else
// the mark, kLongerMark and 32 bits. kWideMark is no length: it marks a text of wide characters.
constexpr std::uint32_t kLongMark = 0xFF;
constexpr std::uint32_t kWideMark = 0xFFFE;
constexpr std::uint32_t kLongerMark = 0xFFFF;

const char* Explain(ArchiveCode code) {
  switch (code) {
    case ArchiveCode::Done:
      return "done";
    case ArchiveCode::EndOfFile:
      return "the file ends too early";
    case ArchiveCode::CountPastEnd:
      return "more elements are claimed than the file can hold";
    case ArchiveCode::WideText:
      return "texts of wide characters can't be read";
    case ArchiveCode::WrongMagic:
      return "this is not a Zarvo filter file";
    case ArchiveCode::NewerFormatRefused:
      return "the file has a newer format than this program knows";
  }
  return "unknown error";
}

}  // namespace

std::string ArchiveResult::Message() const {
  std::string message = Explain(Code);
  if (!Field.empty()) message += " (" + Field + " at byte " + std::to_string(Offset) + ")";
  return message;
}

Archive Archive::Storing(std::string& bytes) { return {&bytes, {}}; }

Archive Archive::Loading(std::string_view bytes) { return {nullptr, bytes}; }

void Archive::Fail(ArchiveCode code, const char* field, std::size_t offset) const {
  ArchiveResult result{code, {}, offset};
  for (const ScopeEntry& scope : scopes_) {
    result.Field += scope.Name;
    if (scope.Index != kNoIndex) result.Field += "[" + std::to_string(scope.Index) + "]";
    result.Field += '.';
  }
  result.Field += field;
  throw result;
}

std::uint32_t Archive::TakeNumber(std::size_t size, const char* field, std::size_t start) {
  if (Left() < size) Fail(ArchiveCode::EndOfFile, field, start);
  std::uint32_t value = 0;
  for (std::size_t i = 0; i < size; ++i) {
    value |= static_cast<std::uint32_t>(static_cast<unsigned char>(source_[offset_ + i])) << 8 * i;
  }
  offset_ += size;
  return value;
}

void Archive::PutNumber(std::uint32_t value, std::size_t size) {
  for (std::size_t i = 0; i < size; ++i) {
    target_->push_back(static_cast<char>(static_cast<unsigned char>(value >> 8 * i & 0xFF)));
  }
}

void Archive::Int32(const char* field, std::int32_t& value) {
  if (IsLoading()) {
    value = static_cast<std::int32_t>(TakeNumber(4, field, offset_));
  } else {
    PutNumber(static_cast<std::uint32_t>(value), 4);
  }
}

void Archive::Byte(const char* field, std::uint8_t& value) {
  if (IsLoading()) {
    value = static_cast<std::uint8_t>(TakeNumber(1, field, offset_));
  } else {
    PutNumber(value, 1);
  }
}

void Archive::Text(const char* field, std::string& text) {
  if (IsLoading()) {
    const std::size_t start = offset_;
    std::uint32_t length = TakeNumber(1, field, start);
    if (length == kLongMark) {
      length = TakeNumber(2, field, start);
      if (length == kWideMark) Fail(ArchiveCode::WideText, field, start);
      if (length == kLongerMark) length = TakeNumber(4, field, start);
    }
    if (Left() < length) Fail(ArchiveCode::EndOfFile, field, start);
    text.assign(source_.substr(offset_, length));
    offset_ += length;
    return;
  }
  const auto length = static_cast<std::uint32_t>(text.size());
  if (length < kLongMark) {
    PutNumber(length, 1);
  } else {
    PutNumber(kLongMark, 1);
    if (length < kWideMark) {
      PutNumber(length, 2);
    } else {
      PutNumber(kLongerMark, 2);
      PutNumber(length, 4);
    }
  }
  target_->append(text);
}

std::size_t Archive::Count(const char* field, std::size_t count, std::size_t least_size) {
  const std::size_t start = Offset();
  auto stored = static_cast<std::int32_t>(count);
  Int32(field, stored);
  if (stored < 0) return 0;
  count = static_cast<std::size_t>(stored);
  if (IsLoading() && count > Left() / least_size) Fail(ArchiveCode::CountPastEnd, field, start);
  return count;
}

}  // namespace zarvo
