// The library that comes with the program.
#include <gtest/gtest.h>

#include <set>
#include <stdexcept>

#include "app/services/initialisation_file.h"
#include "app/services/subpattern_library.h"
#include "tests/support/temporary_folder.h"

namespace zarvo {
namespace {

using Entries = SubpatternLibrary::Entries;

// The sections' names, in the order of LibrarySection.
constexpr std::array<const char*, kLibrarySectionCount> kSections = {"Strings", "CharCodes",
                                                                     "CharLists"};

std::string ShippedText() {
  return testing::ReadAllBytes(std::string(ZARVO_LIBRARY_FOLDER) + "Subpatterns.dat");
}

std::array<Entries, kLibrarySectionCount> Shipped() {
  return SubpatternLibrary(ZARVO_LIBRARY_FOLDER, "").Read();
}

const PredefinedSubpattern& Named(const Entries& entries, const std::string& name) {
  for (const PredefinedSubpattern& entry : entries) {
    if (entry.Name == name) return entry;
  }
  throw std::runtime_error("no entry " + name);
}

TEST(ShippedLibrary, HasAsManyEntriesAsItSays) {
  const std::string text = ShippedText();
  const auto lists = Shipped();
  std::size_t total = 0;
  for (std::size_t i = 0; i < kLibrarySectionCount; ++i) {
    EXPECT_GT(lists[i].size(), 10U) << kSections[i];
    EXPECT_EQ(InitialisationSection(text, "General").Integer(kSections[i], 0),
              static_cast<std::int32_t>(lists[i].size()))
        << kSections[i];
    for (std::size_t n = 0; n < lists[i].size(); ++n) {
      EXPECT_EQ(lists[i][n].Number, static_cast<std::int32_t>(n + 1)) << kSections[i];
    }
    total += lists[i].size();
  }
  // None is beyond the count of its section.
  std::size_t names = 0;
  for (std::size_t at = text.find("\nName"); at != std::string::npos;
       at = text.find("\nName", at + 1)) {
    ++names;
  }
  EXPECT_EQ(names, total);
}

TEST(ShippedLibrary, EveryEntryHasAllOfItsKeys) {
  const std::string text = ShippedText();
  const std::vector<std::vector<std::string>> words = {{"Name", "Show", "String", "Render"},
                                                       {"Name", "Show", "Code", "Render"},
                                                       {"Name", "Show", "List", "Mode", "Render"}};
  for (std::size_t i = 0; i < kLibrarySectionCount; ++i) {
    const InitialisationSection keys(text, kSections[i]);
    for (const std::string& word : words[i]) {
      EXPECT_EQ(keys.Numbers(word, 1000).size(), Shipped()[i].size()) << kSections[i] << word;
    }
  }
}

TEST(ShippedLibrary, NoNameIsThereTwiceAndNoValueIsEmptyOrLong) {
  for (const Entries& entries : Shipped()) {
    std::set<std::string> names;
    for (const PredefinedSubpattern& entry : entries) {
      EXPECT_TRUE(names.insert(entry.Name).second) << entry.Name;
      EXPECT_FALSE(entry.Value.empty()) << entry.Name;
      EXPECT_LT(entry.Name.size(), 63U) << entry.Name;
      EXPECT_LT(entry.Value.size(), 255U) << entry.Name;
    }
  }
}

// A menu counts its entries and has room for 30: all of these are to work, and the user's own.
TEST(ShippedLibrary, LeavesRoomInTheMenusForEntriesOfTheUsers) {
  for (const Entries& entries : Shipped()) {
    EXPECT_LE(entries.size(), 20U);
    for (const PredefinedSubpattern& entry : entries) EXPECT_EQ(entry.Show, 1) << entry.Name;
  }
}

TEST(ShippedLibrary, ValuesWithBlanksAndQuotationMarksReadWhole) {
  const auto lists = Shipped();
  EXPECT_EQ(Named(lists[0], "Two blanks").Value, "  ");
  EXPECT_EQ(Named(lists[0], "Blank, hyphen, blank").Value, " - ");
  EXPECT_EQ(Named(lists[1], "Carriage return").Value, "\r");
  EXPECT_EQ(Named(lists[1], "Em dash").Value, "\x97");
  EXPECT_EQ(Named(lists[2], "Blank or tab").Value, " \t");
  EXPECT_EQ(Named(lists[2], "Typewriter quotation mark").Value, "\"'");
  EXPECT_EQ(Named(lists[2], "Not a digit").Mode, PredefinedSubpattern::kNegatedList);
  EXPECT_EQ(Named(lists[2], "Not a digit").Value, "0123456789");
  EXPECT_EQ(Named(lists[2], "Polish letter (windows-1250)").Value,
            "\xB9\xE6\xEA\xB3\xF1\xF3\x9C\x9F\xBF\xA5\xC6\xCA\xA3\xD1\xD3\x8C\x8F\xAF");
}

TEST(ShippedLibrary, TakesAnEntryAndKeepsAllOthers) {
  const testing::TemporaryFolder folder;
  folder.Write("Subpatterns.dat", ShippedText());
  SubpatternLibrary library(folder.Path() + "/", "");
  for (const LibrarySection section :
       {LibrarySection::Strings, LibrarySection::CharacterCodes, LibrarySection::CharacterLists}) {
    Entries expected = library.Read(section);
    const auto number = static_cast<std::int32_t>(expected.size() + 1);
    expected.push_back({"mine", "v", "r", PredefinedSubpattern::kPlainList, 1, number});
    ASSERT_FALSE(library.Append(section, expected.back()));
    EXPECT_EQ(library.Read(section), expected);
  }
  // Before [General] stands the comment.
  const std::string comment = ShippedText().substr(0, ShippedText().find("\n[General]"));
  EXPECT_TRUE(folder.Read("Subpatterns.dat").starts_with(comment));
}

}  // namespace
}  // namespace zarvo
