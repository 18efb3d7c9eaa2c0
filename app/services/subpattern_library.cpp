#include "app/services/subpattern_library.h"

#include <algorithm>
#include <filesystem>
#include <limits>
#include <string_view>
#include <system_error>
#include <utility>

#include "app/services/initialisation_file.h"

namespace zarvo {
namespace {

constexpr std::string_view kFileName = "Subpatterns.dat";
constexpr std::string_view kGeneral = "General";
constexpr std::string_view kShow = "Show";
constexpr std::string_view kName = "Name";
constexpr std::string_view kMode = "Mode";
constexpr std::string_view kRender = "Render";

// What a name reads as when its key is missing. An entry of this very name doesn't count as one.
constexpr std::string_view kNoName = "@$&*keyerr";

// The most that is read of a value, with a terminating zero.
constexpr std::size_t kNameBuffer = 64;
constexpr std::size_t kTextBuffer = 1024;
constexpr std::size_t kListBuffer = 256;

struct SectionLayout {
  std::string_view Name;
  std::string_view ValueKey;
};

constexpr std::array<SectionLayout, kLibrarySectionCount> kLayouts = {
    {{"Strings", "String"}, {"CharCodes", "Code"}, {"CharLists", "List"}}};

const SectionLayout& LayoutOf(LibrarySection section) {
  return kLayouts[static_cast<std::size_t>(section)];
}

std::string Numbered(std::string_view key, std::int32_t number) {
  return std::string(key) + std::to_string(number);
}

std::string ReadValue(const InitialisationSection& keys, LibrarySection section,
                      const std::string& key) {
  switch (section) {
    case LibrarySection::Strings:
      return keys.Text(key, "", kTextBuffer);
    case LibrarySection::CharacterCodes:
      return {static_cast<char>(keys.Integer(key, 0))};
    case LibrarySection::CharacterLists:
      return keys.Text(key, "", kListBuffer);
  }
  return {};
}

SubpatternLibrary::Entries ReadEntries(std::string_view text, LibrarySection section) {
  const SectionLayout& layout = LayoutOf(section);
  const std::int32_t count = InitialisationSection(text, kGeneral).Integer(layout.Name, 0);
  const InitialisationSection keys(text, layout.Name);
  SubpatternLibrary::Entries entries;
  for (const std::int32_t n : keys.Numbers(kName, count)) {
    PredefinedSubpattern entry;
    entry.Number = n;
    entry.Name = keys.Text(Numbered(kName, n), kNoName, kNameBuffer);
    if (entry.Name == kNoName) continue;
    entry.Show = keys.Integer(Numbered(kShow, n), 0);
    entry.Value = ReadValue(keys, section, Numbered(layout.ValueKey, n));
    if (section == LibrarySection::CharacterLists) {
      entry.Mode = keys.Integer(Numbered(kMode, n), PredefinedSubpattern::kPlainList);
    }
    entry.RenderText = keys.Text(Numbered(kRender, n), "", kTextBuffer);
    entries.push_back(std::move(entry));
  }
  return entries;
}

// The keys of an entry with their values, in the order in which they are written.
std::vector<std::pair<std::string, std::string>> KeysOf(LibrarySection section,
                                                        const PredefinedSubpattern& entry,
                                                        std::int32_t n) {
  std::string value = entry.Value;
  if (section == LibrarySection::CharacterCodes) {
    const char code = value.empty() ? '\0' : value.front();
    value = std::to_string(static_cast<unsigned char>(code));
  }
  std::vector<std::pair<std::string, std::string>> keys;
  keys.emplace_back(Numbered(kName, n), entry.Name);
  keys.emplace_back(Numbered(LayoutOf(section).ValueKey, n), std::move(value));
  if (section == LibrarySection::CharacterLists) {
    const bool is_negated = entry.Mode == PredefinedSubpattern::kNegatedList;
    keys.emplace_back(Numbered(kMode, n), is_negated ? "0" : "1");
  }
  keys.emplace_back(Numbered(kRender, n), entry.RenderText);
  keys.emplace_back(Numbered(kShow, n), entry.Show != 0 ? "1" : "0");
  return keys;
}

bool Exists(const std::string& path) {
  std::error_code error;
  return std::filesystem::exists(path, error);
}

}  // namespace

SubpatternLibrary::SubpatternLibrary(std::string installation_folder, std::string user_folder)
    : installation_path_(std::move(installation_folder) + std::string(kFileName)),
      user_folder_(std::move(user_folder)) {}

std::string SubpatternLibrary::CurrentPath() const {
  const std::string user_path = user_folder_ + std::string(kFileName);
  return !user_folder_.empty() && Exists(user_path) ? user_path : installation_path_;
}

std::string SubpatternLibrary::ReadText() const {
  std::string text;
  // A file that can't be read gives an empty library.
  if (ReadFile(CurrentPath(), text)) return {};
  return text;
}

std::array<SubpatternLibrary::Entries, kLibrarySectionCount> SubpatternLibrary::Read() const {
  const std::string text = ReadText();
  return {ReadEntries(text, LibrarySection::Strings),
          ReadEntries(text, LibrarySection::CharacterCodes),
          ReadEntries(text, LibrarySection::CharacterLists)};
}

SubpatternLibrary::Entries SubpatternLibrary::Read(LibrarySection section) const {
  return ReadEntries(ReadText(), section);
}

FileResult SubpatternLibrary::Append(LibrarySection section, const PredefinedSubpattern& entry) {
  const std::string path = CurrentPath();
  std::string text;
  if (Exists(path)) {
    if (FileResult error = ReadFile(path, text)) return error;
  }
  const std::string_view count_key = LayoutOf(section).Name;
  // Below 0 is as good as none: a reader sees no entries either.
  const std::int32_t count =
      std::max(InitialisationSection(text, kGeneral).Integer(count_key, 0), 0);
  constexpr const char* kStep = "add the entry";
  if (count == std::numeric_limits<std::int32_t>::max()) {
    return FileError{path, kStep, "no number is left behind its section's count"};
  }
  const std::int32_t number = count + 1;
  text = WithInitialisationValue(text, kGeneral, count_key, std::to_string(number));
  for (const auto& [key, value] : KeysOf(section, entry, number)) {
    if (!FitsInitialisationLine(value)) {
      return FileError{path, kStep, "a line of the file can't hold a line break or a zero byte"};
    }
    text = WithInitialisationValue(text, count_key, key, value);
  }
  return Write(path, text);
}

FileResult SubpatternLibrary::Write(const std::string& path, std::string_view text) const {
  FileResult error = WriteFile(path, text);
  if (!error || user_folder_.empty() || path != installation_path_) return error;
  std::error_code made;
  std::filesystem::create_directories(user_folder_, made);
  if (made) return FileError{user_folder_, "make the folder", made.message()};
  return WriteFile(user_folder_ + std::string(kFileName), text);
}

}  // namespace zarvo
