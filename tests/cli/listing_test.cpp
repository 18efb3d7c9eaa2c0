#include "cli/listing.h"

#include <gtest/gtest.h>

#include "tests/support/builders.h"

namespace zarvo {
namespace {

using testing::Call;
using testing::FilterOf;
using testing::FromSet;
using testing::FunctionOf;
using testing::Insert;
using testing::List;
using testing::Of;
using testing::Replace;
using testing::SetOf;
using testing::Str;

const CodePage& Latin() {
  static const CodePage page = *CodePage::Find("windows-1252");
  return page;
}

TEST(Printable, EscapesWhatWouldSteerATerminal) {
  EXPECT_EQ(Printable("a\tb\r\nc\x1B[31m\x7F\x81", Latin()), "a\\tb\\r\\nc\\x1B[31m\\x7F\\x81");
}

TEST(Printable, EscapesTheBackslashToo) { EXPECT_EQ(Printable("\\n\n", Latin()), "\\\\n\\n"); }

TEST(WithoutControls, EscapesOneAndTwoByteControlsAndNothingElse) {
  EXPECT_EQ(WithoutControls("a\x1B[31m\n\xC2\x9B\xC2\xA0\xC3\xA9\\\xC2"),
            "a\\x1B[31m\\n\\x9B\xC2\xA0\xC3\xA9\\\xC2");
}

TEST(FilterListing, SaysThatAnUnknownSourceReplacesNothing) {
  Rule rule = Replace(Of({Str("a")}), Of({Str("b")}));
  rule.ReplacementSource = static_cast<ReplacementSource>(7);
  EXPECT_NE(FilterListing(FilterOf({rule}), Latin())
                .find("by nothing, as the source 7 is unknown: the match stays"),
            std::string::npos);
}

TEST(Printable, TextsAreTheCodePagesCharacters) {
  EXPECT_EQ(Printable("\x84quoted\x93", Latin()), "„quoted“");
}

TEST(FilterListing, ShowsEverything) {
  Rule replace = Replace(Of({Str("a"), List("bc")}), Of({Str("x"), Call("Up(1)")}));
  replace.Name = "first";
  Rule insert = Insert(Of({Str("q")}), 1, Of({Str("u")}));
  insert.Name = "second";
  insert.Probability = 40;
  insert.Once = 1;
  insert.Strict = 1;
  Rule drawn = FromSet(Of({Str("r")}), ReplacementSource::SetAtRandom, "letters");
  drawn.Name = "third";
  Rule strange;
  strange.RecordVersion = 3;
  Filter filter = FilterOf({replace, insert, drawn, strange},
                           {SetOf("letters", {Of({Str("A")}), Of({Str("B")})})},
                           {FunctionOf("Up", {{"a", "A"}}, 1), FunctionOf("Drop", {})});
  filter.Name = "Name";
  filter.Version = 3;
  filter.AutoIncrement = 1;
  filter.Type = "Phonetic";
  filter.Author = "Author";
  filter.Language = "Language";
  filter.Description = "Two\nlines";
  filter.Locked = 1;
  EXPECT_EQ(FilterListing(filter, Latin()),
            "Name:        Name\n"
            "Version:     3 (raised at every save)\n"
            "Type:        Phonetic\n"
            "Author:      Author\n"
            "Language:    Language\n"
            "Format:      6\n"
            "Lock:        locked\n"
            "Description: Two\\nlines\n"
            "\n"
            "Rules: 4\n"
            "  1. first\n"
            "       find:    \"a[b, c]\"\n"
            "       replace: characters 1 to 2, by \"x{Up(1)}\"\n"
            "  2. second\n"
            "       find:    \"q\"\n"
            "       insert:  after character 1, \"u\"\n"
            "       when:    40 % of the matches, once, until nothing matches (strict)\n"
            "  3. third\n"
            "       find:    \"r\"\n"
            "       replace: characters 1 to 1, by the strings of the set \"letters\" at random\n"
            "  4. (a record of the unknown version 3)\n"
            "\n"
            "Sets: 1\n"
            "  1. letters\n"
            "       \"A\"\n"
            "       \"B\"\n"
            "\n"
            "Functions: 2\n"
            "  1. Up\n"
            "       \"a\" -> \"A\"\n"
            "       anything else -> itself\n"
            "  2. Drop\n"
            "       anything else -> nothing\n");
}

TEST(FilterListing, NamesListsOfOtherVersionsAndTheLock) {
  Filter filter;
  filter.Sets.RecordVersion = 4;
  filter.Locked = 1;
  filter.ShowInEditorWhenLocked = 1;
  const std::string listing = FilterListing(filter, Latin());
  EXPECT_NE(listing.find("Sets: a list of the unknown version 4\n"), std::string::npos);
  EXPECT_NE(listing.find("Lock:        locked, shown in the editor\n"), std::string::npos);
  EXPECT_NE(FilterListing(Filter(), Latin()).find("Lock:        none\n"), std::string::npos);
}

}  // namespace
}  // namespace zarvo
