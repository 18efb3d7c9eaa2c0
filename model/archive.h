// Reading and writing the bytes of records: integers, bytes, texts and counts, little-endian.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zarvo {

enum class ArchiveCode {
  Done,
  EndOfFile,           ///< a field's bytes are not all there
  CountPastEnd,        ///< a list claims more elements than the bytes left can hold
  WideText,            ///< a text marked as one of wide characters
  WrongMagic,          ///< not a filter file
  NewerFormatRefused,  ///< a newer file format, and the caller said no
};

/// How a load or a store ended: a code, and where it stopped.
struct [[nodiscard]] ArchiveResult {
  ArchiveCode Code = ArchiveCode::Done;
  /// What was being read, such as "Rules[2].Pattern.MostSignificant". Empty when done.
  std::string Field;
  /// Where that field begins, in bytes from the start of the file.
  std::size_t Offset = 0;

  [[nodiscard]] bool Ok() const { return Code == ArchiveCode::Done; }
  /// One line for people, without a path: what is wrong, with which field, at which byte.
  [[nodiscard]] std::string Message() const;
};

/// Either writes fields to a string of bytes or reads them from one; the same sequence of calls
/// does both. A read that fails throws an ArchiveResult; RunArchive turns that into a returned one,
/// so the exception never leaves the model. Nothing is allocated for a length or a count before
/// the bytes for it are known to be there.
class Archive {
 public:
  /// Appends to bytes, which must outlive the archive.
  [[nodiscard]] static Archive Storing(std::string& bytes);
  /// Reads bytes from their start; they must outlive the archive.
  [[nodiscard]] static Archive Loading(std::string_view bytes);

  [[nodiscard]] bool IsLoading() const { return target_ == nullptr; }
  /// Bytes read or written so far.
  [[nodiscard]] std::size_t Offset() const { return IsLoading() ? offset_ : target_->size(); }

  // The names must be literals: they are kept by address until their scope ends.
  void Int32(const char* field, std::int32_t& value);
  void Byte(const char* field, std::uint8_t& value);
  void Text(const char* field, std::string& text);

  /// Writes count, or reads one: a negative one counts as 0, and one that the bytes left can't hold
  /// with least_size bytes an element is an error.
  [[nodiscard]] std::size_t Count(const char* field, std::size_t count, std::size_t least_size);

  /// Throws the result with this code for a field that begins at offset.
  [[noreturn]] void Fail(ArchiveCode code, const char* field, std::size_t offset) const;

  /// While it lives, the fields read are said to lie within this one: "Pattern", or "Rules[3]".
  class Scope {
   public:
    Scope(Archive& archive, const char* name) : Scope(archive, name, kNoIndex) {}
    Scope(Archive& archive, const char* name, std::size_t index) : archive_(archive) {
      archive_.scopes_.push_back({name, index});
    }
    ~Scope() { archive_.scopes_.pop_back(); }
    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;

   private:
    Archive& archive_;
  };

 private:
  struct ScopeEntry {
    const char* Name;
    std::size_t Index;
  };
  static constexpr std::size_t kNoIndex = static_cast<std::size_t>(-1);

  Archive(std::string* target, std::string_view source) : target_(target), source_(source) {}

  // Unsigned, little-endian, of 1 to 4 bytes. Reading: field and start are for the error.
  std::uint32_t TakeNumber(std::size_t size, const char* field, std::size_t start);
  void PutNumber(std::uint32_t value, std::size_t size);
  [[nodiscard]] std::size_t Left() const { return source_.size() - offset_; }

  std::string* target_;
  std::string_view source_;
  std::size_t offset_ = 0;
  std::vector<ScopeEntry> scopes_;
};

/// Calls work and returns how it ended.
template <typename Work>
ArchiveResult RunArchive(Work work) {
  try {
    work();
    return {};
  } catch (ArchiveResult& failure) {
    return failure;
  }
}

}  // namespace zarvo
