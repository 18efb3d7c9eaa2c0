// The single-byte code page that turns the bytes of texts into characters and back.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace zarvo {

/// A table of 256 different characters. A byte that the page leaves undefined is the character of
/// the same number (a control character, but for a few bytes above 9F in some pages), so that every
/// text survives the way to characters and back.
class CodePage {
 public:
  /// The page of this name, in the system converter's spelling, such as "windows-1250". Nothing
  /// for a name that is unknown or belongs to a page of several bytes a character.
  [[nodiscard]] static std::optional<CodePage> Find(const std::string& name);

  [[nodiscard]] char32_t Character(unsigned char byte) const { return characters_[byte]; }
  [[nodiscard]] std::optional<char> Byte(char32_t character) const;

  [[nodiscard]] std::string ToUtf8(std::string_view bytes) const;

  /// The way back from valid UTF-8: the bytes, or in Lacking the first character that the page
  /// lacks (Bytes is then incomplete).
  struct Encoded {
    std::string Bytes;
    std::optional<char32_t> Lacking;
  };
  [[nodiscard]] Encoded FromUtf8(std::string_view text) const;

 private:
  CodePage() = default;

  std::array<char32_t, 256> characters_{};
  std::unordered_map<char32_t, char> bytes_;
};

/// Appends the character as UTF-8.
void AppendUtf8(std::string& text, char32_t character);

}  // namespace zarvo
