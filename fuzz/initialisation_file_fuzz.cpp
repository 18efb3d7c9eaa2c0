// The reader and writer of initialisation files over any bytes: what is written reads back, and
// nothing else changes. The last bytes are what is written.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "app/services/initialisation_file.h"

namespace {

constexpr std::string_view kSection = "Strings";
constexpr std::size_t kLongestValue = 16;

// Each key of these with its value.
std::string Reading(std::string_view text, std::string_view section, bool has_own_key) {
  const zarvo::InitialisationSection keys(text, section);
  std::string reading;
  std::int32_t last = 0;
  for (const std::int32_t n : keys.Numbers("Name", 1'000'000)) {
    if (n <= last) std::abort();
    last = n;
    reading += std::to_string(n) + '=' + keys.Text("name" + std::to_string(n), "", 64) + '\n';
  }
  for (const std::string_view key : {"Strings", "Render1", "x", ""}) {
    reading += keys.Text(key, "(none)", 1024) + std::to_string(keys.Integer(key, 7)) + '\n';
  }
  if (has_own_key) reading += keys.Text("k", "(none)", 1024);
  return reading;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  std::string value(text.substr(size - std::min(size, kLongestValue)));
  std::erase_if(value, [](char c) { return c == '\r' || c == '\n' || c == '\0'; });
  const std::string changed = zarvo::WithInitialisationValue(text, kSection, "K", value);
  if (zarvo::InitialisationSection(changed, kSection).Text("k", "", 1024) != value) std::abort();
  if (zarvo::WithInitialisationValue(changed, kSection, "k", value) != changed) std::abort();
  if (Reading(text, kSection, false) != Reading(changed, kSection, false)) std::abort();
  if (Reading(text, "General", true) != Reading(changed, "General", true)) std::abort();
  // One piece of the text was replaced, and it lies within a line.
  const auto begin =
      static_cast<std::size_t>(std::ranges::mismatch(text, changed).in1 - text.begin());
  std::size_t end = text.size();
  std::size_t changed_end = changed.size();
  while (end > begin && changed_end > begin && text[end - 1] == changed[changed_end - 1]) {
    --end;
    --changed_end;
  }
  if (text.substr(begin, end - begin).find_first_of("\r\n") != std::string_view::npos) std::abort();
  return 0;
}
