#include "model/password.h"

namespace zarvo {
namespace {

std::string_view UpToZero(std::string_view text) { return text.substr(0, text.find('\0')); }

char ScrambleByte(char byte, char key, std::int32_t format_version) {
  // Version 5 means to keep a byte equal to the key from becoming 0, but compares it with the truth
  // value of "there is a key". Every file of that version was written so.
  const char truth = key != '\0' ? '\1' : '\0';
  if (format_version == 5 && byte == truth) return '\1';
  return static_cast<char>(byte ^ key);
}

}  // namespace

std::string ScramblePassword(std::string_view password, char key, std::int32_t format_version) {
  std::string stored;
  if (format_version < 1 || format_version > 5) return stored;
  for (const char byte : password) {
    const char scrambled = ScrambleByte(byte, key, format_version);
    if (scrambled == '\0') break;
    stored += scrambled;
  }
  return stored;
}

bool EqualUpToZero(std::string_view left, std::string_view right) {
  return UpToZero(left) == UpToZero(right);
}

}  // namespace zarvo
