// Files laid down by hand, byte by byte (tests/data/golden): what reading them gives, and what they
// become when they are stored. No file here was ever written by the program itself.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <ostream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "model/filter_file.h"
#include "model/records.h"
#include "tests/support/builders.h"
#include "tests/support/hex_file.h"

namespace zarvo {
namespace {

using testing::Call;
using testing::Code;
using testing::FunctionOf;
using testing::List;
using testing::NotList;
using testing::Of;
using testing::OfKind;
using testing::SetOf;
using testing::Str;

constexpr std::int32_t kLeast = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();

std::string Golden(const std::string& name) {
  return testing::ReadHexFile(ZARVO_TEST_DATA "/golden/" + name + ".hex");
}

// The name of a file as a part of a test's name, where no "-" may stand.
template <typename File>
std::string NameOf(const ::testing::TestParamInfo<File>& tested) {
  std::string name = tested.param.Name;
  std::replace(name.begin(), name.end(), '-', '_');
  return name;
}

struct Question {
  enum class Direction { Save, Load };
  Direction About;
  std::int32_t Version;  // which the question must be asked with
  bool Answer;
};

Question OnSave(std::int32_t version, bool answer) {
  return {Question::Direction::Save, version, answer};
}
Question OnLoad(std::int32_t version, bool answer) {
  return {Question::Direction::Load, version, answer};
}

// Answers the questions of the script in their order. A question that the script doesn't have there
// fails the test, and so does one that nobody asked.
class ScriptedQuestions : public VersionQuestions {
 public:
  explicit ScriptedQuestions(std::vector<Question> script) : script_(std::move(script)) {}
  ~ScriptedQuestions() override { EXPECT_EQ(asked_, script_.size()) << "questions never asked"; }
  ScriptedQuestions(const ScriptedQuestions&) = delete;
  ScriptedQuestions& operator=(const ScriptedQuestions&) = delete;

  bool SaveInNewestFormat(std::int32_t own_version) override {
    return Answer(Question::Direction::Save, own_version);
  }
  bool LoadNewerFormat(std::int32_t file_version) override {
    return Answer(Question::Direction::Load, file_version);
  }

 private:
  bool Answer(Question::Direction about, std::int32_t version) {
    if (asked_ == script_.size() || script_[asked_].About != about ||
        script_[asked_].Version != version) {
      ADD_FAILURE() << "unexpected question, version " << version;
      return false;
    }
    return script_[asked_++].Answer;
  }

  std::vector<Question> script_;
  std::size_t asked_ = 0;
};

ArchiveResult Load(std::string_view bytes, Filter& filter, std::vector<Question> script = {},
                   bool allow_newer = true) {
  ScriptedQuestions questions(std::move(script));
  Archive archive = Archive::Loading(bytes);
  return SerializeFilter(archive, filter, questions, allow_newer);
}

Filter LoadGolden(const std::string& name) {
  Filter filter;
  const ArchiveResult result = Load(Golden(name), filter);
  EXPECT_TRUE(result.Ok()) << name << ": " << result.Message();
  return filter;
}

std::string Save(Filter& filter, std::vector<Question> script = {}) {
  ScriptedQuestions questions(std::move(script));
  std::string bytes;
  Archive archive = Archive::Storing(bytes);
  EXPECT_TRUE(SerializeFilter(archive, filter, questions, false).Ok());
  return bytes;
}

template <typename Record>
ArchiveResult LoadRecord(std::string_view bytes, Record& record) {
  Archive archive = Archive::Loading(bytes);
  return RunArchive([&] { Serialize(archive, record); });
}

template <typename Record>
std::string SaveRecord(Record& record) {
  std::string bytes;
  Archive archive = Archive::Storing(bytes);
  EXPECT_TRUE(RunArchive([&] { Serialize(archive, record); }).Ok());
  return bytes;
}

// Comparisons field by field, so that a failure names the field.

void ExpectSame(const Pattern& actual, const Pattern& expected);
void ExpectSame(const Rule& actual, const Rule& expected);
void ExpectSame(const Set& actual, const Set& expected);
void ExpectSame(const Function& actual, const Function& expected);

void ExpectSame(const Subpattern& actual, const Subpattern& expected) {
  EXPECT_EQ(actual.RecordVersion, expected.RecordVersion);
  EXPECT_EQ(static_cast<std::int32_t>(actual.Kind), static_cast<std::int32_t>(expected.Kind));
  EXPECT_EQ(actual.Contents, expected.Contents);
  EXPECT_EQ(actual.RenderText, expected.RenderText);
}

void ExpectSame(const FunctionEntry& actual, const FunctionEntry& expected) {
  EXPECT_EQ(actual.Argument, expected.Argument);
  EXPECT_EQ(actual.Value, expected.Value);
}

template <typename Element>
void ExpectSameElements(const char* what, const std::vector<Element>& actual,
                        const std::vector<Element>& expected) {
  ASSERT_EQ(actual.size(), expected.size()) << what;
  for (std::size_t i = 0; i < actual.size(); ++i) {
    SCOPED_TRACE(what + ("[" + std::to_string(i) + "]"));
    ExpectSame(actual[i], expected[i]);
  }
}

void ExpectSame(const Pattern& actual, const Pattern& expected) {
  EXPECT_EQ(actual.RecordVersion, expected.RecordVersion);
  EXPECT_EQ(actual.MostSignificant, expected.MostSignificant);
  ExpectSameElements("Subpatterns", actual.Subpatterns, expected.Subpatterns);
}

void ExpectSame(const Rule& actual, const Rule& expected) {
  EXPECT_EQ(actual.RecordVersion, expected.RecordVersion);
  EXPECT_EQ(actual.Name, expected.Name);
  EXPECT_EQ(actual.Probability, expected.Probability);
  ExpectSame(actual.Pattern, expected.Pattern);
  EXPECT_EQ(static_cast<std::int32_t>(actual.ReplacementSource),
            static_cast<std::int32_t>(expected.ReplacementSource));
  EXPECT_EQ(actual.From, expected.From);
  EXPECT_EQ(actual.To, expected.To);
  EXPECT_EQ(actual.ReplacementSetName, expected.ReplacementSetName);
  ExpectSame(actual.Replacement, expected.Replacement);
  EXPECT_EQ(actual.Strict, expected.Strict);
  EXPECT_EQ(actual.Once, expected.Once);
  EXPECT_EQ(actual.Stop, expected.Stop);
}

void ExpectSame(const Set& actual, const Set& expected) {
  EXPECT_EQ(actual.RecordVersion, expected.RecordVersion);
  EXPECT_EQ(actual.Name, expected.Name);
  ExpectSameElements("Strings", actual.Strings, expected.Strings);
}

void ExpectSame(const Function& actual, const Function& expected) {
  EXPECT_EQ(actual.RecordVersion, expected.RecordVersion);
  EXPECT_EQ(actual.Name, expected.Name);
  EXPECT_EQ(actual.DefaultReturnsArgument, expected.DefaultReturnsArgument);
  ExpectSameElements("Entries", actual.Entries, expected.Entries);
}

void ExpectSame(const Filter& actual, const Filter& expected) {
  EXPECT_EQ(actual.FormatVersion, expected.FormatVersion);
  EXPECT_EQ(actual.Locked, expected.Locked);
  EXPECT_EQ(actual.ShowInEditorWhenLocked, expected.ShowInEditorWhenLocked);
  EXPECT_EQ(actual.AutoIncrement, expected.AutoIncrement);
  EXPECT_EQ(actual.Password, expected.Password);
  EXPECT_EQ(actual.PasswordKey, expected.PasswordKey);
  EXPECT_EQ(actual.Name, expected.Name);
  EXPECT_EQ(actual.Version, expected.Version);
  EXPECT_EQ(actual.Author, expected.Author);
  EXPECT_EQ(actual.Language, expected.Language);
  EXPECT_EQ(actual.Description, expected.Description);
  EXPECT_EQ(actual.Type, expected.Type);
  EXPECT_EQ(actual.Rules.RecordVersion, expected.Rules.RecordVersion);
  ExpectSameElements("Rules", actual.Rules.Elements, expected.Rules.Elements);
  EXPECT_EQ(actual.Sets.RecordVersion, expected.Sets.RecordVersion);
  ExpectSameElements("Sets", actual.Sets.Elements, expected.Sets.Elements);
  EXPECT_EQ(actual.Functions.RecordVersion, expected.Functions.RecordVersion);
  ExpectSameElements("Functions", actual.Functions.Elements, expected.Functions.Elements);
  EXPECT_EQ(actual, expected) << "a field that is not compared above";
}

// What one reads in the files, written down again.

Subpattern Shown(Subpattern subpattern, std::string render_text) {
  subpattern.RenderText = std::move(render_text);
  return subpattern;
}

// A record of another version has nothing but its number.
template <typename Record>
Record OfVersion(std::int32_t version) {
  Record record;
  record.RecordVersion = version;
  return record;
}

Rule RuleOf(std::string name, int probability, Pattern pattern, int source, std::int32_t from,
            std::int32_t to, std::string set_name, Pattern replacement, std::int32_t strict,
            std::int32_t once) {
  Rule rule;
  rule.Name = std::move(name);
  rule.Probability = static_cast<std::uint8_t>(probability);
  rule.Pattern = std::move(pattern);
  rule.ReplacementSource = static_cast<ReplacementSource>(source);
  rule.From = from;
  rule.To = to;
  rule.ReplacementSetName = std::move(set_name);
  rule.Replacement = std::move(replacement);
  rule.Strict = strict;
  rule.Once = once;
  return rule;
}

Filter ExpectedV1() {
  Filter filter;
  filter.FormatVersion = 1;
  filter.Locked = 1;
  filter.ShowInEditorWhenLocked = 0;
  filter.AutoIncrement = 0;  // absent
  filter.Password = "\x1B\x19\x0C";
  filter.PasswordKey = "x";  // absent
  filter.Name = "One";
  filter.Version = 1;  // absent
  filter.Author = "Ann";
  filter.Language = "en";
  filter.Description = "First\r\nline";
  filter.Type = "Phonetic";
  filter.Rules.Append(RuleOf("dash", 100, Of({Str("--"), Shown(List("ab"), "letter")}, 0), 0, 1, 2,
                             "", Of({Str("\x96")}, 0), 0, 1));
  filter.Sets.Append(SetOf("S", {Of({Str("x")}, 0), Of({Shown(Code("\r"), "CR")}, 0)}));
  return filter;
}

Filter ExpectedV2() {
  Filter filter;
  filter.FormatVersion = 2;
  filter.Locked = 0;
  filter.ShowInEditorWhenLocked = 1;
  filter.AutoIncrement = 0;  // absent
  filter.Password = "\x1C\x17\x1F";
  filter.PasswordKey = "x";  // absent
  filter.Name = "Two";
  filter.Version = 12;
  filter.Author = "";
  filter.Language = "pl";
  filter.Description = "";
  filter.Type = "Orthographic";
  filter.Rules.Append(RuleOf("neg", 50, Of({NotList("aeiou"), Shown(Code("."), "dot")}, 1), 1, 2, 2,
                             "dots", Of({}, -1), 1, 0));
  filter.Sets.Append(SetOf("dots", {Of({Str("\x85")}, 0), Of({Call("up(1)")}, -1)}));
  return filter;
}

Filter ExpectedV3() {
  Filter filter;
  filter.FormatVersion = 3;
  filter.Locked = 1;
  filter.ShowInEditorWhenLocked = 1;
  filter.AutoIncrement = 0;
  filter.Password = "\x19";
  filter.PasswordKey = "x";  // absent
  filter.Name = "Three";
  filter.Version = -5;
  filter.Author = "Jo";
  filter.Language = "";
  filter.Description = "d";
  filter.Type = "Typographic";
  filter.Rules.Append(RuleOf("a", 0, Of({NotList(""), Shown(List("0123456789"), "digit")}, 1), 2, 3,
                             -1, "S", Of({}, -1), 0, 0));
  filter.Rules.Append(
      RuleOf("b", 100, Of({Str(""), Str("yz")}, 1), 0, 0, -1, "", Of({Str("-")}, 0), 0, 1));
  filter.Sets.Append(SetOf("S", {Of({Str("1")}, 0), Of({}, -1)}));
  return filter;
}

Filter ExpectedV4() {
  Filter filter;
  filter.FormatVersion = 4;
  filter.Locked = 0;
  filter.ShowInEditorWhenLocked = 0;
  filter.AutoIncrement = 1;
  filter.Password = "\x32\x30\x25";
  filter.PasswordKey = "\x51";
  filter.Name = "Four";
  filter.Version = 255;
  filter.Author = "\xC5sa";
  filter.Language = "sv";
  filter.Description = "";
  filter.Type = "Conversion";
  filter.Rules.Append(RuleOf(
      "mix", 99, Of({Str("a"), List("bc"), Code("d"), NotList("e"), Shown(Call("g()"), "call")}, 2),
      0, 1, 5, "", Of({Call("g(1,2)"), Str("!")}, 1), 1, 1));
  filter.Sets.Append(SetOf("pair", {Of({Str("l")}, 0), Of({Str("r")}, 0)}));
  return filter;
}

Filter ExpectedV5() {
  Filter filter;
  filter.FormatVersion = 5;
  filter.Locked = 1;
  filter.ShowInEditorWhenLocked = 0;
  filter.AutoIncrement = 0;
  filter.Password = "\x01\x2C\x24";
  filter.PasswordKey = "K";
  filter.Name = "Five";
  filter.Version = 5;
  filter.Author = "E. V.";
  filter.Language = "ru";
  filter.Description = "1\r\n2";
  filter.Type = "Phraseological";
  filter.Rules.Append(
      RuleOf("r1", 1, Of({Code(""), Str("\xFF\xFE")}, 0), 2, 0, -1, "any", Of({}, -1), 0, 0));
  filter.Sets.Append(
      SetOf("any", {Of({Str("one")}, 0), Of({Call("f(2)"), Shown(Str("b"), "r")}, 1)}));
  return filter;
}

Filter ExpectedV6() {
  Filter filter;
  filter.FormatVersion = 6;
  filter.Locked = 1;
  filter.ShowInEditorWhenLocked = 1;
  filter.AutoIncrement = 0;
  filter.Password = "\x1B\x19";
  filter.PasswordKey = "x";
  filter.Name = "Six";
  filter.Version = 0x01020304;
  filter.Author = "Z";
  filter.Language = "cs";
  filter.Description = "Q\xF9";
  filter.Type = "T";
  filter.Rules.Append(
      RuleOf("all", 75,
             Of({Str("ab"), List("cde"), NotList("f"), Shown(Code("\t"), "tab"), Call("fn()")}, 0),
             1, 1, 3, "set", Of({Str("R")}, 0), 1, 1));
  filter.Rules.Append(
      RuleOf("", 0, Of({}, -1), 0, 2, -1, "", Of({Call("fn(1)"), Str("s")}, 1), 0, 0));
  filter.Sets.Append(SetOf("set", {Of({Str("p")}, 0), Of({Call("fn(2,1)"), Str("q")}, 1)}));
  filter.Sets.Append(SetOf("none", {}));
  filter.Functions.Append(FunctionOf("fn", {{"a", "A"}, {"", "empty"}}, 1));
  filter.Functions.Append(FunctionOf("g", {}, 0));
  return filter;
}

// Of format 7, for which 6 stands in.
Filter ExpectedV7() {
  Filter filter;
  filter.FormatVersion = 7;
  filter.Locked = 0;
  filter.ShowInEditorWhenLocked = 1;
  filter.AutoIncrement = 0;
  filter.Password = "";
  filter.PasswordKey = "";
  filter.Name = "New";
  filter.Version = 2;
  filter.Author = "W";
  filter.Language = "de";
  filter.Description = "";
  filter.Type = "U";
  filter.Sets.Append(SetOf("S", {}));
  filter.Functions.Append(FunctionOf("f", {{"k", "v"}}, 0));
  return filter;
}

Filter ExpectedOtherRecords() {
  Filter filter;
  filter.FormatVersion = 6;
  filter.Locked = 7;
  filter.ShowInEditorWhenLocked = -1;
  filter.PasswordKey = "ab";
  filter.Version = kLeast;
  filter.Type = "Other";
  filter.Rules.Append(OfVersion<Rule>(2));
  filter.Rules.Append(
      RuleOf("a", 200, OfVersion<Pattern>(0), 9, -3, -2, "", OfVersion<Pattern>(-1), 2, -1));
  filter.Rules.Append(RuleOf(
      "b", 255,
      Of({OfVersion<Subpattern>(3), Shown(OfKind(1, "c"), "d"), OfKind(77, "e"), OfKind(-5, "")},
         99),
      -1, kMost, kLeast, "f", Of({Code("gh")}, -2), kLeast, 256));
  filter.Sets.Append(OfVersion<Set>(5));
  filter.Sets.Append(SetOf("i", {OfVersion<Pattern>(2)}));
  filter.Functions.Append(OfVersion<Function>(kLeast));
  filter.Functions.Append(FunctionOf("j", {{"", ""}}, 2));
  return filter;
}

Filter ExpectedOtherLists() {
  Filter filter;
  filter.Name = "Lists";
  filter.Rules.RecordVersion = 2;
  filter.Sets.RecordVersion = 0;
  filter.Functions.RecordVersion = -7;
  return filter;
}

Filter ExpectedMostSignificant(int first, int second, int fourth) {
  Filter filter;
  filter.Sets.Append(SetOf(
      "S",
      {Of({Code("a"), List("bcd"), Str("ef")}, first), Of({List("g"), Code("")}, second),
       Of({Call("f()"), NotList("h"), List("abcdefghijk"), Shown(Str(""), "r"), OfKind(77, "i")},
          -1),
       Of({OfVersion<Subpattern>(2), List("0123456789")}, fourth), Of({Str("j"), Str("kl")}, 0),
       Of({Str("m")}, 9), Of({Str("n")}, -2)}));
  return filter;
}

Filter ExpectedWorkedExample() {
  Filter filter;
  filter.ShowInEditorWhenLocked = 1;
  filter.AutoIncrement = 1;
  filter.Name = "Dashes";
  filter.Version = 2;
  filter.Language = "en";
  filter.Type = "Typographic";
  filter.Rules.Append(
      RuleOf("dash", 100, Of({Str("--"), List("ab")}, 0), 1, 1, 2, "dashes", Of({}, -1), 0, 0));
  filter.Sets.Append(SetOf("dashes", {Of({Str("\x97")}, 0)}));
  filter.Functions.Append(FunctionOf("upper", {{"a", "A"}}, 1));
  return filter;
}

Filter WithDescription(std::string description) {
  Filter filter;
  filter.Description = std::move(description);
  return filter;
}

Filter ExpectedAllBytes() {
  std::string all;
  for (int byte = 1; byte <= 255; ++byte) {
    all += static_cast<char>(static_cast<unsigned char>(byte));
  }
  return WithDescription(all);
}

Filter ExpectedZeroBytes() {
  Filter filter;
  filter.Name = std::string("a\0b\0\0", 5);
  return filter;
}

// Not one field as a new filter has it, nor as one of the files has it.
Filter FilledFilter() {
  Filter filter = testing::FilterOf(
      {RuleOf("old", 5, Of({Str("old")}, 0), 2, 8, 9, "old", Of({Str("old")}, 0), 1, 1)},
      {SetOf("old", {Of({Str("old")}, 0)}), SetOf("older", {})},
      {FunctionOf("old", {{"old", "old"}}, 1), FunctionOf("older", {}, 0)});
  filter.FormatVersion = 44;
  filter.Locked = 11;
  filter.ShowInEditorWhenLocked = 12;
  filter.AutoIncrement = 13;
  filter.Password = "old password";
  filter.PasswordKey = "O";
  filter.Name = "old name";
  filter.Version = 14;
  filter.Author = "old author";
  filter.Language = "old language";
  filter.Description = "old description";
  filter.Type = "old type";
  return filter;
}

// Files that read as they stand, and whose bytes come back when they are stored in their format.
struct WholeFile {
  const char* Name;
  Filter Expected;
};

void PrintTo(const WholeFile& file, std::ostream* out) { *out << file.Name; }

class WholeGoldenFile : public ::testing::TestWithParam<WholeFile> {
 protected:
  // What saving asks when the answer is to keep the format.
  static std::vector<Question> KeepFormat() {
    const std::int32_t version = GetParam().Expected.FormatVersion;
    if (version == FilterHeader::kNewestFormatVersion) return {};
    return {OnSave(version, false)};
  }
};

TEST_P(WholeGoldenFile, LoadsExactlyTheFieldsOfItsBytes) {
  Filter filter;
  const ArchiveResult result = Load(Golden(GetParam().Name), filter);
  ASSERT_TRUE(result.Ok()) << result.Message();
  ExpectSame(filter, GetParam().Expected);
}

TEST_P(WholeGoldenFile, LoadedOverAFilledFilterLeavesNothingOfThat) {
  Filter filter = FilledFilter();
  const ArchiveResult result = Load(Golden(GetParam().Name), filter);
  ASSERT_TRUE(result.Ok()) << result.Message();
  ExpectSame(filter, GetParam().Expected);
}

TEST_P(WholeGoldenFile, LoadsWhereNewerFormatsAreRefused) {
  Filter filter;
  EXPECT_TRUE(Load(Golden(GetParam().Name), filter, {}, false).Ok());
}

TEST_P(WholeGoldenFile, SavedInItsFormatGivesTheSameBytes) {
  Filter filter = LoadGolden(GetParam().Name);
  filter.AutoIncrement = 0;
  std::string bytes = Golden(GetParam().Name);
  if (GetParam().Expected.AutoIncrement != 0) {
    constexpr std::size_t kAutoIncrementOffset = 25;
    ASSERT_EQ(bytes[kAutoIncrementOffset], 1);
    bytes[kAutoIncrementOffset] = 0;
  }
  EXPECT_EQ(Save(filter, KeepFormat()), bytes);
}

TEST_P(WholeGoldenFile, SavingChangesNoFieldOfTheFilter) {
  Filter filter = LoadGolden(GetParam().Name);
  filter.AutoIncrement = 0;
  Save(filter, KeepFormat());
  Filter expected = GetParam().Expected;
  expected.AutoIncrement = 0;
  ExpectSame(filter, expected);
}

TEST_P(WholeGoldenFile, BuiltFromItsFieldsHasTheSameBytes) {
  Filter filter = GetParam().Expected;
  EXPECT_EQ(FilterFileBytes(filter), Golden(GetParam().Name));
}

INSTANTIATE_TEST_SUITE_P(
    , WholeGoldenFile,
    ::testing::Values(WholeFile{"format-v1", ExpectedV1()}, WholeFile{"format-v2", ExpectedV2()},
                      WholeFile{"format-v3", ExpectedV3()}, WholeFile{"format-v4", ExpectedV4()},
                      WholeFile{"format-v5", ExpectedV5()}, WholeFile{"format-v6", ExpectedV6()},
                      WholeFile{"new-filter", Filter()},
                      WholeFile{"other-records", ExpectedOtherRecords()},
                      WholeFile{"other-lists", ExpectedOtherLists()},
                      WholeFile{"most-significant-stored", ExpectedMostSignificant(2, 0, 1)},
                      WholeFile{"all-bytes", ExpectedAllBytes()},
                      WholeFile{"zero-bytes", ExpectedZeroBytes()},
                      WholeFile{"long-text-254", WithDescription(std::string(254, 'A'))},
                      WholeFile{"long-text-255", WithDescription(std::string(255, 'A'))},
                      WholeFile{"long-text-65533", WithDescription(std::string(65533, 'A'))},
                      WholeFile{"long-text-65534", WithDescription(std::string(65534, 'A'))},
                      WholeFile{"long-text-65535", WithDescription(std::string(65535, 'A'))},
                      WholeFile{"long-text-70000", WithDescription(std::string(70000, 'A'))},
                      WholeFile{"worked-example", ExpectedWorkedExample()}),
    NameOf<WholeFile>);

TEST(AutoIncrement, RaisesNothingButTheVersionInTheBytesOfASave) {
  Filter filter = LoadGolden("format-v4");
  constexpr std::size_t kVersionOffset = 40;
  std::string expected = Golden("format-v4");
  expected.replace(kVersionOffset, 4, {'\x00', '\x01', '\x00', '\x00'});  // 255 has become 256
  EXPECT_EQ(Save(filter, {OnSave(4, false)}), expected);
}

TEST(AutoIncrement, StaysRaisedInTheFilterAfterASave) {
  Filter filter = LoadGolden("format-v4");
  Save(filter, {OnSave(4, false)});
  EXPECT_EQ(filter.Version, 256);
}

TEST(SavingInTheNewestFormat, GivesAVersion1FileTheFieldsThatItLacked) {
  Filter filter = LoadGolden("format-v1");
  EXPECT_EQ(Save(filter, {OnSave(1, true)}), Golden("format-v1-newest"));
}

TEST(SavingInTheNewestFormat, GivesAVersion5FileItsFunctions) {
  Filter filter = LoadGolden("format-v5");
  EXPECT_EQ(Save(filter, {OnSave(5, true)}), Golden("format-v5-newest"));
}

TEST(SavingInTheNewestFormat, ChangesNoFieldButTheFormat) {
  Filter filter = LoadGolden("format-v5");
  Save(filter, {OnSave(5, true)});
  Filter expected = ExpectedV5();
  expected.FormatVersion = 6;
  ExpectSame(filter, expected);
}

TEST(SavingInTheNewestFormat, IsNotAskedForAgain) {
  Filter filter = LoadGolden("format-v1");
  Save(filter, {OnSave(1, true)});
  EXPECT_EQ(Save(filter), Golden("format-v1-newest"));
}

TEST(SavingInItsFormat, DropsTheFunctionsOfAVersion5Filter) {
  Filter filter = LoadGolden("format-v5");
  filter.Functions.Append(FunctionOf("f", {{"a", "b"}}));
  EXPECT_EQ(Save(filter, {OnSave(5, false)}), Golden("format-v5"));
}

TEST(SavingInItsFormat, IsAskedForAtEverySave) {
  Filter filter = LoadGolden("format-v2");
  Save(filter, {OnSave(2, false)});
  EXPECT_EQ(Save(filter, {OnSave(2, false)}), Golden("format-v2"));
}

struct StoredPassword {
  const char* Name;
  const char* Password;
  const char* Another;
};

void PrintTo(const StoredPassword& stored, std::ostream* out) { *out << stored.Name; }

class GoldenPassword : public ::testing::TestWithParam<StoredPassword> {};

TEST_P(GoldenPassword, IsAccepted) {
  EXPECT_TRUE(LoadGolden(GetParam().Name).CheckPassword(GetParam().Password));
}

TEST_P(GoldenPassword, AnotherIsRefused) {
  EXPECT_FALSE(LoadGolden(GetParam().Name).CheckPassword(GetParam().Another));
}

TEST_P(GoldenPassword, AnEmptyOneIsRefused) {
  EXPECT_FALSE(LoadGolden(GetParam().Name).CheckPassword(""));
}

INSTANTIATE_TEST_SUITE_P(, GoldenPassword,
                         ::testing::Values(StoredPassword{"format-v1", "cat", "cats"},
                                           StoredPassword{"format-v2", "dog", "cat"},
                                           StoredPassword{"format-v3", "axb", "b"},
                                           StoredPassword{"format-v4", "cat", "Cat"},
                                           StoredPassword{"format-v5", "\x01go", "go"}),
                         NameOf<StoredPassword>);

TEST(GoldenPasswordOfFormat6, IsMetByNoPassword) {
  const Filter filter = LoadGolden("format-v6");
  EXPECT_FALSE(filter.CheckPassword("ca"));
  EXPECT_FALSE(filter.CheckPassword("\x1B\x19"));
  EXPECT_FALSE(filter.CheckPassword(""));
}

TEST(MostSignificantInAFile, LoadsAsItStands) {
  ExpectSame(LoadGolden("most-significant"), ExpectedMostSignificant(-1, -1, -1));
}

TEST(MostSignificantInAFile, IsChosenWhenStored) {
  Filter filter = LoadGolden("most-significant");
  EXPECT_EQ(Save(filter), Golden("most-significant-stored"));
}

TEST(MostSignificantInAFile, KeepsTheChoiceInTheFilterAfterASave) {
  Filter filter = LoadGolden("most-significant");
  Save(filter);
  ExpectSame(filter, ExpectedMostSignificant(2, 0, 1));
}

TEST(LongPrefixes, OfShortTextsAreRead) {
  Filter expected;
  expected.Name = "abc";
  expected.Author = "de";
  ExpectSame(LoadGolden("long-prefixes"), expected);
}

TEST(LongPrefixes, OfShortTextsAreStoredAsTheShortestOnes) {
  Filter filter = LoadGolden("long-prefixes");
  EXPECT_EQ(Save(filter), Golden("long-prefixes-stored"));
}

TEST(FormatZero, ChangesNothingButTheFormatVersion) {
  Filter filter = FilledFilter();
  ASSERT_TRUE(Load(Golden("format-v0"), filter).Ok());
  Filter expected = FilledFilter();
  expected.FormatVersion = 0;
  ExpectSame(filter, expected);
}

TEST(FormatZero, KeptWhenSavedIsTheMagicAndTheNumberAlone) {
  Filter filter = LoadGolden("format-v0");
  EXPECT_EQ(Save(filter, {OnSave(0, false)}), Golden("format-v0").substr(0, 17));
}

TEST(FormatZero, SavedInTheNewestFormatIsWhole) {
  Filter filter = LoadGolden("format-v0");
  EXPECT_EQ(Save(filter, {OnSave(0, true)}), Golden("new-filter"));
}

TEST(NegativeFormat, ChangesNothingButTheFormatVersion) {
  Filter filter = FilledFilter();
  ASSERT_TRUE(Load(Golden("format-negative"), filter, {}, false).Ok());
  Filter expected = FilledFilter();
  expected.FormatVersion = -3;
  ExpectSame(filter, expected);
}

TEST(NegativeFormat, KeptWhenSavedIsTheMagicAndTheNumberAlone) {
  Filter filter = LoadGolden("format-negative");
  EXPECT_EQ(Save(filter, {OnSave(-3, false)}), Golden("format-negative"));
}

void ExpectFailure(const ArchiveResult& result, ArchiveCode code, const std::string& field,
                   std::size_t offset) {
  EXPECT_EQ(static_cast<int>(result.Code), static_cast<int>(code)) << result.Message();
  EXPECT_EQ(result.Field, field);
  EXPECT_EQ(result.Offset, offset);
}

TEST(NewerFormat, IsRefusedWithoutAQuestionWhereItIsNotAllowed) {
  Filter filter;
  ExpectFailure(Load(Golden("format-v7"), filter, {}, false), ArchiveCode::NewerFormatRefused,
                "FormatVersion", 13);
}

TEST(NewerFormat, IsRefusedByTheAnswerNo) {
  Filter filter;
  ExpectFailure(Load(Golden("format-v7"), filter, {OnLoad(7, false)}),
                ArchiveCode::NewerFormatRefused, "FormatVersion", 13);
}

TEST(NewerFormat, RefusedChangesNothingButTheFormatVersion) {
  Filter filter = FilledFilter();
  ASSERT_FALSE(Load(Golden("format-v7"), filter, {OnLoad(7, false)}).Ok());
  Filter expected = FilledFilter();
  expected.FormatVersion = 7;
  ExpectSame(filter, expected);
}

TEST(NewerFormat, LoadsAsFormat6AfterTheAnswerYesAndKeepsItsNumber) {
  Filter filter = FilledFilter();
  const ArchiveResult result = Load(Golden("format-v7"), filter, {OnLoad(7, true)});
  ASSERT_TRUE(result.Ok()) << result.Message();
  ExpectSame(filter, ExpectedV7());
}

TEST(NewerFormat, KeptWhenSavedIsTheMagicAndTheNumberAlone) {
  Filter filter = ExpectedV7();
  EXPECT_EQ(Save(filter, {OnSave(7, false)}), Golden("format-v7-kept"));
}

TEST(NewerFormat, SavedInTheNewestFormatIsWhole) {
  Filter filter = ExpectedV7();
  std::string expected = Golden("format-v7");
  constexpr std::size_t kFormatVersionOffset = 13;
  expected[kFormatVersionOffset] = 6;
  EXPECT_EQ(Save(filter, {OnSave(7, true)}), expected);
}

TEST(NewerFormat, ThatIsTheMagicAndTheNumberAloneEndsTooEarly) {
  Filter filter;
  ExpectFailure(Load(Golden("format-v7-kept"), filter, {OnLoad(7, true)}), ArchiveCode::EndOfFile,
                "Locked", 17);
}

TEST(QuestionOnSaving, HasTheAgreedWording) {
  const std::string before = "The filter you're about to save uses file format version ";
  const std::string after =
      ", while the newest file format version is 6. Would you like to save this filter in the "
      "newest format? Otherwise some filter properties won't be stored. On the other hand, "
      "applications using older versions of ZarvoFilter library may not be able to read this "
      "file.";
  EXPECT_EQ(SaveInNewestFormatText(1), before + "1" + after);
  EXPECT_EQ(SaveInNewestFormatText(5), before + "5" + after);
  EXPECT_EQ(SaveInNewestFormatText(0), before + "0" + after);
  EXPECT_EQ(SaveInNewestFormatText(-3), before + "-3" + after);
  EXPECT_EQ(SaveInNewestFormatText(kMost), before + "2147483647" + after);
}

TEST(QuestionOnLoading, HasTheAgreedWording) {
  const std::string before = "The filter you're about to load uses file format version ";
  const std::string after =
      ", while the newest file format version I know about is 6. I may attempt to read this file, "
      "but success is not guaranteed. Attempting to read won't damage the filter, but may cause "
      "your current application to crash. Would you like to try it?";
  EXPECT_EQ(LoadNewerFormatText(7), before + "7" + after);
  EXPECT_EQ(LoadNewerFormatText(10), before + "10" + after);
  EXPECT_EQ(LoadNewerFormatText(kMost), before + "2147483647" + after);
}

struct DamagedFile {
  const char* Name;
  ArchiveCode Code;
  const char* Field;
  std::size_t Offset;
};

void PrintTo(const DamagedFile& file, std::ostream* out) { *out << file.Name; }

class DamagedGoldenFile : public ::testing::TestWithParam<DamagedFile> {};

TEST_P(DamagedGoldenFile, FailsWithItsCodeFieldAndOffset) {
  Filter filter;
  ExpectFailure(Load(Golden(GetParam().Name), filter), GetParam().Code, GetParam().Field,
                GetParam().Offset);
}

INSTANTIATE_TEST_SUITE_P(
    , DamagedGoldenFile,
    ::testing::Values(
        DamagedFile{"wrong-magic", ArchiveCode::WrongMagic, "Magic", 0},
        DamagedFile{"wrong-magic-longer", ArchiveCode::WrongMagic, "Magic", 0},
        DamagedFile{"truncated", ArchiveCode::EndOfFile, "Rules[0].From", 71},
        DamagedFile{"truncated-second-rule", ArchiveCode::EndOfFile, "Rules[1].Name", 104},
        DamagedFile{"text-past-end", ArchiveCode::EndOfFile, "Author", 36},
        DamagedFile{"text-past-end-longest", ArchiveCode::EndOfFile, "Description", 38},
        DamagedFile{"text-prefix-cut", ArchiveCode::EndOfFile, "Name", 31},
        DamagedFile{"count-too-large", ArchiveCode::CountPastEnd, "Rules", 44},
        DamagedFile{"count-too-large-subpatterns", ArchiveCode::CountPastEnd,
                    "Rules[0].Pattern.Subpatterns", 63},
        DamagedFile{"count-too-large-entries", ArchiveCode::CountPastEnd, "Functions[0].Entries",
                    71},
        DamagedFile{"wide-text", ArchiveCode::WideText, "Name", 31}),
    NameOf<DamagedFile>);

TEST(EmptyFile, EndsBeforeTheMagic) {
  Filter filter;
  ExpectFailure(Load("", filter), ArchiveCode::EndOfFile, "Magic", 0);
}

TEST(WrongMagic, ChangesNothing) {
  Filter filter = FilledFilter();
  ASSERT_FALSE(Load(Golden("wrong-magic"), filter).Ok());
  ExpectSame(filter, FilledFilter());
}

TEST(NegativeCount, CountsAsZero) {
  Filter expected;
  expected.Sets.Append(SetOf("s", {}));
  expected.Sets.Append(SetOf("t", {Of({}, -1)}));
  expected.Functions.Append(FunctionOf("f", {}, 1));
  ExpectSame(LoadGolden("negative-count"), expected);
}

TEST(TrailingBytes, AreIgnored) { ExpectSame(LoadGolden("trailing-bytes"), Filter()); }

TEST(TrailingBytes, AreNotStored) {
  Filter filter = LoadGolden("trailing-bytes");
  EXPECT_EQ(Save(filter), Golden("new-filter"));
}

TEST(ListCutInTheMiddle, KeepsTheElementsReadBeforeTheError) {
  Filter filter = FilledFilter();
  ASSERT_FALSE(Load(Golden("truncated-second-rule"), filter).Ok());
  ASSERT_EQ(filter.Rules.Count(), 1U);
  ExpectSame(filter.Rules[0], RuleOf("a", 100, Of({}, -1), 0, 5, 6, "", Of({}, -1), 1, 1));
}

TEST(ListCutInTheMiddle, LeavesTheListsBehindItAsTheyWere) {
  Filter filter = FilledFilter();
  ASSERT_FALSE(Load(Golden("truncated-second-rule"), filter).Ok());
  EXPECT_EQ(filter.Sets, FilledFilter().Sets);
  EXPECT_EQ(filter.Functions, FilledFilter().Functions);
}

TEST(EveryTruncation, OfEachFormatIsAnErrorWithinTheFile) {
  for (const char* const name :
       {"format-v1", "format-v2", "format-v3", "format-v4", "format-v5", "format-v6"}) {
    const std::string bytes = Golden(name);
    for (std::size_t kept = 0; kept < bytes.size(); ++kept) {
      Filter filter;
      // A copy of its own size, so that a read past the end is seen as one.
      const std::vector<char> cut(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(kept));
      const ArchiveResult result = Load(std::string_view(cut.data(), cut.size()), filter);
      EXPECT_TRUE(result.Code == ArchiveCode::EndOfFile || result.Code == ArchiveCode::CountPastEnd)
          << name << " cut to " << kept << ": " << result.Message();
      EXPECT_FALSE(result.Field.empty()) << name << " cut to " << kept;
      EXPECT_LE(result.Offset, kept) << name;
    }
  }
}

TEST(RuleFile, LoadsExactlyTheFieldsOfItsBytes) {
  Rule rule;
  ASSERT_TRUE(LoadRecord(Golden("rule"), rule).Ok());
  ExpectSame(rule, RuleOf("r1", 33, Of({List("abc"), Shown(Code("\xA0"), "nbsp")}, 1), 1, 2, 3, "S",
                          Of({Str(" ")}, 0), 0, 1));
}

TEST(RuleFile, StoredGivesTheSameBytes) {
  Rule rule;
  ASSERT_TRUE(LoadRecord(Golden("rule"), rule).Ok());
  EXPECT_EQ(SaveRecord(rule), Golden("rule"));
}

TEST(SetFile, LoadsExactlyTheFieldsOfItsBytes) {
  Set set;
  ASSERT_TRUE(LoadRecord(Golden("set"), set).Ok());
  ExpectSame(set, SetOf("ends", {Of({Str(".")}, 0), Of({Call("f(1,1)")}, -1)}));
}

TEST(SetFile, StoredGivesTheSameBytes) {
  Set set;
  ASSERT_TRUE(LoadRecord(Golden("set"), set).Ok());
  EXPECT_EQ(SaveRecord(set), Golden("set"));
}

TEST(SetFile, OfAnEmptySetIsTheVersionTheNameAndTheCount) {
  Set set = SetOf("empty", {});
  EXPECT_EQ(SaveRecord(set), Golden("set-empty"));
}

TEST(SetFile, OfAnEmptySetLoads) {
  Set set;
  ASSERT_TRUE(LoadRecord(Golden("set-empty"), set).Ok());
  ExpectSame(set, SetOf("empty", {}));
}

TEST(FunctionFile, LoadsExactlyTheFieldsOfItsBytes) {
  Function function;
  ASSERT_TRUE(LoadRecord(Golden("function"), function).Ok());
  ExpectSame(function, FunctionOf("upper", {{"a", "A"}, {"\xDF", "SS"}}, 1));
}

TEST(FunctionFile, StoredGivesTheSameBytes) {
  Function function;
  ASSERT_TRUE(LoadRecord(Golden("function"), function).Ok());
  EXPECT_EQ(SaveRecord(function), Golden("function"));
}

template <typename Record>
class RecordFile : public ::testing::Test {};

using RecordTypes = ::testing::Types<Rule, Set, Function>;
TYPED_TEST_SUITE(RecordFile, RecordTypes);

TYPED_TEST(RecordFile, OfAnotherVersionGivesTheDefaultsAndTheNumber) {
  TypeParam record;
  ASSERT_TRUE(LoadRecord(Golden("record-other-version"), record).Ok());
  ExpectSame(record, OfVersion<TypeParam>(2));
}

TYPED_TEST(RecordFile, OfAnotherVersionIsStoredAsTheNumberAlone) {
  TypeParam record;
  ASSERT_TRUE(LoadRecord(Golden("record-other-version"), record).Ok());
  EXPECT_EQ(SaveRecord(record), Golden("record-other-version"));
}

TYPED_TEST(RecordFile, IgnoresBytesBehindTheRecord) {
  TypeParam record;
  ASSERT_TRUE(LoadRecord(Golden("record-other-version") + "more", record).Ok());
  ExpectSame(record, OfVersion<TypeParam>(2));
}

template <typename Record>
void ExpectEveryTruncationFails(const std::string& name) {
  const std::string bytes = Golden(name);
  for (std::size_t kept = 0; kept < bytes.size(); ++kept) {
    Record record;
    EXPECT_FALSE(LoadRecord(bytes.substr(0, kept), record).Ok()) << name << " cut to " << kept;
  }
}

TEST(EveryTruncation, OfARuleFileIsAnError) { ExpectEveryTruncationFails<Rule>("rule"); }
TEST(EveryTruncation, OfASetFileIsAnError) { ExpectEveryTruncationFails<Set>("set"); }
TEST(EveryTruncation, OfAFunctionFileIsAnError) {
  ExpectEveryTruncationFails<Function>("function");
}

TEST(HexFile, ReadsBytesRepeatsAndComments) {
  EXPECT_EQ(testing::ParseHex("# FF\n 0A\tfe 41*3 # 42\r\n\n43", "t"),
            "\x0A\xFE"
            "AAAC");
}

TEST(HexFile, NamesTheLineOfASyntaxError) {
  for (const char* const wrong : {"4", "4G", "414", "41*", "41*0", "41*-1", "41*x", "*2", "-1",
                                  "+1", "0x", "41*99999999999", "41,"}) {
    try {
      testing::ParseHex("00\n" + std::string(wrong), "name");
      ADD_FAILURE() << wrong << " was taken";
    } catch (const std::runtime_error& error) {
      EXPECT_EQ(std::string(error.what()).rfind("name:2: \"", 0), 0U) << error.what();
    }
  }
}

TEST(HexFile, ThatIsMissingFails) {
  EXPECT_THROW(testing::ReadHexFile(ZARVO_TEST_DATA "/golden/missing.hex"), std::runtime_error);
}

}  // namespace
}  // namespace zarvo
