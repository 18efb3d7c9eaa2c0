#include "model/code_page.h"

#include <iconv.h>

#include <cerrno>
#include <cstdint>
#include <memory>

namespace zarvo {
namespace {

constexpr const char* kUtf32 = "UTF-32LE";

struct ConverterCloser {
  void operator()(void* converter) const { iconv_close(converter); }
};

// The one character that a byte stands for, the character of the byte's own number where the page
// leaves it undefined, or nothing where it is only a part of a character.
std::optional<char32_t> Decode(iconv_t converter, unsigned char byte) {
  char in = static_cast<char>(byte);
  char* in_next = &in;
  std::size_t in_left = 1;
  std::array<unsigned char, 16> out{};
  char* out_next = reinterpret_cast<char*>(out.data());
  std::size_t out_left = out.size();
  iconv(converter, nullptr, nullptr, nullptr, nullptr);
  if (iconv(converter, &in_next, &in_left, &out_next, &out_left) == static_cast<std::size_t>(-1)) {
    if (errno == EILSEQ) return char32_t{byte};
    return {};
  }
  // Some pages hold a letter back until they know that no combining mark follows.
  iconv(converter, nullptr, nullptr, &out_next, &out_left);
  if (out.size() - out_left != 4) return {};
  return char32_t{out[0]} | char32_t{out[1]} << 8 | char32_t{out[2]} << 16 | char32_t{out[3]} << 24;
}

// Reads one character of valid UTF-8 at position and moves on behind it.
char32_t NextUtf8(std::string_view text, std::size_t& position) {
  const auto lead = static_cast<unsigned char>(text[position++]);
  if (lead < 0x80) return lead;
  const int more = lead < 0xE0 ? 1 : lead < 0xF0 ? 2 : 3;
  char32_t character = lead & (0x3FU >> more);
  for (int i = 0; i < more && position < text.size(); ++i) {
    character = character << 6 | (static_cast<unsigned char>(text[position++]) & 0x3FU);
  }
  return character;
}

}  // namespace

std::optional<CodePage> CodePage::Find(const std::string& name) {
  // The converter would take an empty name for the locale's page, and options behind a slash.
  if (name.empty() || name.find('/') != std::string::npos) return {};
  iconv_t opened = iconv_open(kUtf32, name.c_str());
  if (reinterpret_cast<std::intptr_t>(opened) == -1) return {};
  const std::unique_ptr<void, ConverterCloser> converter(opened);
  CodePage page;
  for (unsigned byte = 0; byte < page.characters_.size(); ++byte) {
    const auto code = static_cast<unsigned char>(byte);
    const std::optional<char32_t> character = Decode(opened, code);
    if (!character) return {};
    page.characters_[byte] = *character;
    // Two bytes with one meaning would leave no way back.
    if (!page.bytes_.emplace(*character, static_cast<char>(code)).second) return {};
  }
  return page;
}

std::optional<char> CodePage::Byte(char32_t character) const {
  const auto found = bytes_.find(character);
  if (found == bytes_.end()) return {};
  return found->second;
}

std::string CodePage::ToUtf8(std::string_view bytes) const {
  std::string text;
  text.reserve(bytes.size());
  for (const char byte : bytes) AppendUtf8(text, Character(static_cast<unsigned char>(byte)));
  return text;
}

CodePage::Encoded CodePage::FromUtf8(std::string_view text) const {
  Encoded encoded;
  std::size_t position = 0;
  while (position < text.size()) {
    const char32_t character = NextUtf8(text, position);
    const std::optional<char> byte = Byte(character);
    if (!byte) {
      encoded.Lacking = character;
      break;
    }
    encoded.Bytes += *byte;
  }
  return encoded;
}

void AppendUtf8(std::string& text, char32_t character) {
  const auto put = [&](char32_t byte) {
    text += static_cast<char>(static_cast<unsigned char>(byte));
  };
  if (character < 0x80) {
    put(character);
  } else if (character < 0x800) {
    put(0xC0 | character >> 6);
    put(0x80 | (character & 0x3F));
  } else if (character < 0x10000) {
    put(0xE0 | character >> 12);
    put(0x80 | (character >> 6 & 0x3F));
    put(0x80 | (character & 0x3F));
  } else {
    put(0xF0 | character >> 18);
    put(0x80 | (character >> 12 & 0x3F));
    put(0x80 | (character >> 6 & 0x3F));
    put(0x80 | (character & 0x3F));
  }
}

}  // namespace zarvo
