#include "tests/support/hex_file.h"

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace zarvo::testing {
namespace {

// A slip of the hand in a count should fail, not fill the memory.
constexpr std::uint32_t kMostRepeats = 1U << 24;

// True when all of the text is a number of that base. Signs and prefixes are no digits here.
bool ReadNumber(std::string_view text, int base, std::uint32_t& number) {
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number, base);
  return error == std::errc() && stop == end;
}

bool AppendToken(std::string_view token, std::string& bytes) {
  constexpr std::size_t kDigits = 2;
  std::uint32_t byte = 0;
  if (token.size() < kDigits || !ReadNumber(token.substr(0, kDigits), 16, byte)) return false;
  token.remove_prefix(kDigits);
  std::uint32_t repeats = 1;
  if (!token.empty()) {
    if (token.front() != '*' || !ReadNumber(token.substr(1), 10, repeats)) return false;
    if (repeats == 0 || repeats > kMostRepeats) return false;
  }
  bytes.append(repeats, static_cast<char>(static_cast<unsigned char>(byte)));
  return true;
}

}  // namespace

std::string ParseHex(std::string_view text, const std::string& name) {
  constexpr std::string_view kBlanks = " \t\r";
  std::string bytes;
  for (int number = 1; !text.empty(); ++number) {
    const std::size_t line_end = text.find('\n');
    std::string_view line = text.substr(0, line_end);
    text.remove_prefix(line_end == std::string_view::npos ? text.size() : line_end + 1);
    line = line.substr(0, line.find('#'));
    for (;;) {
      const std::size_t start = line.find_first_not_of(kBlanks);
      if (start == std::string_view::npos) break;
      line.remove_prefix(start);
      const std::string_view token = line.substr(0, line.find_first_of(kBlanks));
      line.remove_prefix(token.size());
      if (!AppendToken(token, bytes)) {
        throw std::runtime_error(name + ":" + std::to_string(number) + ": \"" + std::string(token) +
                                 "\" is neither a byte such as 4A nor a repeated one such as " +
                                 "4A*20");
      }
    }
  }
  return bytes;
}

std::string ReadHexFile(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) throw std::runtime_error(path + ": can't be opened");
  const std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  if (file.bad()) throw std::runtime_error(path + ": can't be read");
  std::string bytes = ParseHex(text, path);
  if (bytes.empty()) throw std::runtime_error(path + ": describes no byte");
  return bytes;
}

}  // namespace zarvo::testing
