#include "tests/support/golden.h"

#include "tests/support/hex_file.h"

namespace zarvo::testing {

std::string Golden(const std::string& name) {
  return ReadHexFile(ZARVO_TEST_DATA "/golden/" + name + ".hex");
}

Question OnSave(std::int32_t version, bool answer) {
  return {Question::Direction::Save, version, answer};
}
Question OnLoad(std::int32_t version, bool answer) {
  return {Question::Direction::Load, version, answer};
}

ArchiveResult Load(std::string_view bytes, Filter& filter, std::vector<Question> script,
                   bool allow_newer) {
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

std::string Save(Filter& filter, std::vector<Question> script) {
  ScriptedQuestions questions(std::move(script));
  std::string bytes;
  Archive archive = Archive::Storing(bytes);
  EXPECT_TRUE(SerializeFilter(archive, filter, questions, false).Ok());
  return bytes;
}

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

void ExpectFailure(const ArchiveResult& result, ArchiveCode code, const std::string& field,
                   std::size_t offset) {
  EXPECT_EQ(static_cast<int>(result.Code), static_cast<int>(code)) << result.Message();
  EXPECT_EQ(result.Field, field);
  EXPECT_EQ(result.Offset, offset);
}

}  // namespace zarvo::testing
