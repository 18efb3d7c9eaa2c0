// Files of one Rule, Set or Function, written and read by each of the editors.
#include <cstring>

#include "model/records.h"
#include "tests/gui/editor_fixture.h"

namespace zarvo {
namespace {

using testing::BytesOf;
using testing::Call;
using testing::EditorNames;
using testing::FilterOf;
using testing::FunctionOf;
using testing::List;
using testing::Of;
using testing::Replace;
using testing::SetOf;
using testing::Str;

template <typename Record>
std::string RecordOf(Record record) {
  std::string bytes;
  Archive archive = Archive::Storing(bytes);
  Serialize(archive, record);
  return bytes;
}

// What the files of one kind of object are.
struct ExchangeCase {
  const char* Kind;
  EditorNames Editor;
  const char* Extension;
  const char* ImportFilters;
  const char* ExportFilters;
  // A filter with one object of this name and another in front of it.
  std::function<zarvo::Filter(const char* name)> Make;
  std::function<std::string(const zarvo::Filter& filter, std::size_t position)> Record;
  std::function<std::vector<std::string>(const zarvo::Filter& filter)> Names;
};

void PrintTo(const ExchangeCase& exchange, std::ostream* out) { *out << exchange.Kind; }

template <typename Objects>
std::vector<std::string> NamesOf(const Objects& objects) {
  std::vector<std::string> names;
  for (const auto& object : objects) names.push_back(object.Name);
  return names;
}

constexpr const char* kRuleFiles =
    "Binary Zarvo rules (*.ZarvoRule)|*.ZarvoRule|All files (*.*)|*.*|";
constexpr const char* kFunctionFiles =
    "Binary Zarvo functions (*.ZarvoFunction)|*.ZarvoFunction|All files (*.*)|*.*|";

Rule SampleRule(const char* name) {
  Rule rule = Replace(Of({Str("ab"), List("xyz")}, 0), Of({Str("n"), Call("f(1)")}, 0));
  rule.Name = name;
  rule.Probability = 42;
  rule.Strict = 1;
  rule.ReplacementSetName = "a set";
  return rule;
}

std::vector<ExchangeCase> ExchangeCases() {
  return {
      {"Rule", testing::kRulesEditor, "ZarvoRule", kRuleFiles, kRuleFiles,
       [](const char* name) {
         return FilterOf({SampleRule("front"), SampleRule(name)});
       },
       [](const zarvo::Filter& filter, std::size_t position) {
         return RecordOf(filter.Rules[position]);
       },
       [](const zarvo::Filter& filter) { return NamesOf(filter.Rules); }},
      {"Set", testing::kSetsEditor, "ZarvoSet",
       "Binary Zarvo set (*.ZarvoSet)|*.ZarvoSet|All files (*.*)|*.*|",
       "Binary Zarvo sets (*.ZarvoSet)|*.ZarvoSet|All files (*.*)|*.*|",
       [](const char* name) {
         return FilterOf(
             {}, {SetOf("front", {}), SetOf(name, {Of({Str("one")}, 0), Of({Call("f(x)")})})});
       },
       [](const zarvo::Filter& filter, std::size_t position) {
         return RecordOf(filter.Sets[position]);
       },
       [](const zarvo::Filter& filter) { return NamesOf(filter.Sets); }},
      {"Function", testing::kFunctionsEditor, "ZarvoFunction", kFunctionFiles, kFunctionFiles,
       [](const char* name) {
         return FilterOf({}, {},
                         {FunctionOf("front", {}),
                          FunctionOf(name, {{"a", "1"}, {"b", "2"}}, Function::kReturnArgument)});
       },
       [](const zarvo::Filter& filter, std::size_t position) {
         return RecordOf(filter.Functions[position]);
       },
       [](const zarvo::Filter& filter) { return NamesOf(filter.Functions); }},
  };
}

class ExchangeTest : public testing::EditorFixture,
                     public ::testing::WithParamInterface<ExchangeCase> {
 protected:
  using Strings = std::vector<std::string>;

  ExchangeTest() : EditorFixture(GetParam().Editor) {}

  void ShowNamed(const char* name) {
    Show(GetParam().Make(name));
    ClickTab(1);
  }
  void ExpectExport(const char* proposed, std::optional<QString> path) {
    dialogs_.ExpectSave(GetParam().ExportFilters, GetParam().Extension,
                        QString::fromLatin1(proposed), std::move(path));
  }
  void ExpectImport(std::optional<QString> path) {
    dialogs_.ExpectOpen(GetParam().ImportFilters, GetParam().Extension, std::move(path));
  }
  void Import(const std::string& bytes) {
    ExpectImport(QString::fromStdString(folder_.Write("import", bytes)));
    ClickIn("importButton");
  }
  std::string RecordAt(std::size_t position) { return GetParam().Record(TheFilter(), position); }
  Strings Names() { return GetParam().Names(TheFilter()); }
  std::string Count() { return TextOf(GetParam().Editor.Count).toStdString(); }
};

// ---- Export

TEST_P(ExchangeTest, ExportsTheRecordOfTheSelectedObjectAndNothingElse) {
  ShowNamed("chosen");
  const std::string before = BytesOf(TheFilter());
  folder_.Write("out", "what was there before, longer than any record of the filter: " +
                           std::string(1000, 'x'));
  ExpectExport("chosen", PathOf("out"));
  ClickIn("exportButton");
  EXPECT_EQ(folder_.Read("out"), RecordAt(1));
  EXPECT_EQ(BytesOf(TheFilter()), before);
  EXPECT_TRUE(Doc().Saved);
}

TEST_P(ExchangeTest, ExportsFromALockedFilterToo) {
  Show(Locked(GetParam().Make("chosen")));
  ExpectExport("front", PathOf("out"));
  ClickIn("exportButton");
  EXPECT_EQ(folder_.Read("out"), RecordAt(0));
}

TEST_P(ExchangeTest, ProposesTheNameAsAFileName) {
  for (const auto& [name, proposed] : std::initializer_list<std::pair<const char*, const char*>>{
           {"caf\xE9 & [*]", "caf\xE9 & [*]"}, {"a/b/c", "a_b_c"}, {"", ""}}) {
    ShowNamed(name);
    ExpectExport(proposed, std::nullopt);
    ClickIn("exportButton");
  }
  // Nothing but the filters that were opened.
  EXPECT_EQ(folder_.Count(), 1U);
}

TEST_P(ExchangeTest, AFailedExportSaysWithWhichFile) {
  ShowNamed("chosen");
  const QString path = PathOf("no folder/out");
  ExpectExport("chosen", path);
  ExpectExclamation("Error saving file " + path.toStdString());
  ClickIn("exportButton");
  EXPECT_TRUE(Doc().Saved);
}

// ---- Import

TEST_P(ExchangeTest, ImportAppendsTheObjectSelectsItAndMarksTheFilter) {
  ShowNamed("chosen");
  const std::string record = RecordAt(1);
  ClickTab(0);
  Import(record);
  // The name is there already, and stays twice.
  EXPECT_EQ(Names(), (Strings{"front", "chosen", "chosen"}));
  EXPECT_EQ(RecordAt(2), record);
  EXPECT_EQ(Captions(), Names());
  EXPECT_EQ(Selected(), 2);
  EXPECT_EQ(Name().text(), "chosen");
  EXPECT_EQ(Count(), "3");
  EXPECT_FALSE(Doc().Saved);
}

TEST_P(ExchangeTest, ImportsIntoAnEmptyFilter) {
  const std::string record = GetParam().Record(GetParam().Make("chosen"), 1);
  Load({});
  ShowEditor();
  Doc().Saved = true;
  window_->NewDocument();
  ASSERT_EQ(Tabs().count(), 0);
  ASSERT_FALSE(IsEnabled("exportButton"));
  Import(record);
  EXPECT_EQ(Names(), Strings{"chosen"});
  EXPECT_EQ(Selected(), 0);
  EXPECT_EQ(Name().text(), "chosen");
  EXPECT_TRUE(IsEnabled("exportButton"));
}

TEST_P(ExchangeTest, ALongNameIsShortenedOnItsTab) {
  ShowNamed("123456789012345678901234567890");
  Import(RecordAt(1));
  EXPECT_EQ(Captions().back(), "12345678901234567890...");
  EXPECT_EQ(Names().back(), "123456789012345678901234567890");
}

TEST_P(ExchangeTest, BytesBehindTheRecordAreIgnored) {
  ShowNamed("chosen");
  const std::string record = RecordAt(1);
  Import(record + "and more" + std::string(5000, '\0'));
  EXPECT_EQ(RecordAt(2), record);
  EXPECT_EQ(Names().size(), 3U);
}

TEST_P(ExchangeTest, EveryFileShorterThanItsRecordIsRefused) {
  ShowNamed("chosen");
  const std::string before = BytesOf(TheFilter());
  const std::string record = RecordAt(1);
  for (std::size_t size = 0; size < record.size(); ++size) {
    const QString path = QString::fromStdString(folder_.Write("cut", record.substr(0, size)));
    ExpectImport(path);
    ExpectExclamation("Error loading file " + path.toStdString());
    ClickIn("importButton");
    ASSERT_TRUE(dialogs_.IsDone()) << size;
    ASSERT_EQ(BytesOf(TheFilter()), before) << size;
  }
  EXPECT_EQ(Tabs().count(), 2);
  EXPECT_EQ(Selected(), 1);
  EXPECT_TRUE(Doc().Saved);
}

TEST_P(ExchangeTest, ARecordOfAnotherVersionIsAppendedWithItsDefaults) {
  ShowNamed("chosen");
  for (const char* bytes : {"\x02\x00\x00", "Foreign text of some length", "PK\x03\x04 rest"}) {
    // The first has a zero byte at its end too.
    Import(std::string(bytes, std::max<std::size_t>(4, std::strlen(bytes))));
    EXPECT_EQ(Names().back(), "");
    EXPECT_EQ(Captions().back(), "");
  }
  EXPECT_EQ(Names().size(), 5U);
  EXPECT_EQ(Selected(), 4);
  EXPECT_FALSE(Doc().Saved);
  // Changed, it is stored whole.
  TypeName("now named");
  Load(TheFilter());
  EXPECT_EQ(Names().back(), "now named");
  EXPECT_EQ(Names()[3], "");
}

TEST_P(ExchangeTest, ForeignFilesThatBeginLikeARecordAreRefused) {
  ShowNamed("chosen");
  const std::string before = BytesOf(TheFilter());
  using namespace std::string_literals;
  for (const std::string& bytes : {"\1\0\0\0\xff\xff\xff\xff\xff\xff\x7f"s, "\1\0\0\0\xff\xfe\xff"s,
                                   "\1\0\0\0\4name"s + std::string(4, '\x7f')}) {
    const QString path = QString::fromStdString(folder_.Write("foreign", bytes));
    ExpectImport(path);
    ExpectExclamation("Error loading file " + path.toStdString());
    ClickIn("importButton");
    EXPECT_TRUE(dialogs_.IsDone());
  }
  EXPECT_EQ(BytesOf(TheFilter()), before);
  EXPECT_TRUE(Doc().Saved);
}

TEST_P(ExchangeTest, AFileThatCanNotBeOpenedIsPassedOverInSilence) {
  ShowNamed("chosen");
  ExpectImport(PathOf("missing"));
  ClickIn("importButton");
  EXPECT_EQ(Names(), (Strings{"front", "chosen"}));
  EXPECT_TRUE(Doc().Saved);
}

TEST_P(ExchangeTest, CancelImportsNothing) {
  ShowNamed("chosen");
  ExpectImport(std::nullopt);
  ClickIn("importButton");
  EXPECT_EQ(Names(), (Strings{"front", "chosen"}));
  EXPECT_TRUE(Doc().Saved);
}

TEST_P(ExchangeTest, ImportIntoALockedFilterWarnsOnceAndAsksForNoFile) {
  Show(Locked(GetParam().Make("chosen")));
  const std::string before = BytesOf(TheFilter());
  ExpectLockWarning();
  ClickIn("importButton");
  ClickIn("importButton");
  EXPECT_TRUE(dialogs_.IsDone());
  EXPECT_EQ(BytesOf(TheFilter()), before);
  EXPECT_EQ(Tabs().count(), 2);
}

TEST_P(ExchangeTest, WhatIsExportedComesBackTheSame) {
  ShowNamed("na\xEFve & [*] \xFF");
  ExpectExport("na\xEFve & [*] \xFF", PathOf("out"));
  ClickIn("exportButton");
  const std::string record = RecordAt(1);
  Load({});
  ExpectImport(PathOf("out"));
  ClickIn("importButton");
  EXPECT_EQ(RecordAt(Names().size() - 1), record);
}

INSTANTIATE_TEST_SUITE_P(All, ExchangeTest, ::testing::ValuesIn(ExchangeCases()),
                         [](const ::testing::TestParamInfo<ExchangeCase>& exchange) {
                           return std::string(exchange.param.Kind);
                         });

// ---- Of one kind only

class SetExchange : public testing::EditorFixture {
 protected:
  SetExchange() : EditorFixture(testing::kSetsEditor) {}
};

TEST_F(SetExchange, AnEmptySetIsItsVersionItsNameAndNoStrings) {
  Show(FilterOf({}, {SetOf("Set 1", {})}));
  dialogs_.ExpectSave("Binary Zarvo sets (*.ZarvoSet)|*.ZarvoSet|All files (*.*)|*.*|", "ZarvoSet",
                      QStringLiteral("Set 1"), PathOf("out"));
  ClickIn("exportButton");
  using namespace std::string_literals;
  EXPECT_EQ(folder_.Read("out"), "\1\0\0\0\5Set 1\0\0\0\0"s);
}

class RuleExchange : public testing::EditorFixture {
 protected:
  RuleExchange() : EditorFixture(testing::kRulesEditor) {}
};

TEST_F(RuleExchange, AnImportedRuleIsDraggedFromItsTo) {
  Rule rule = Replace(Of({Str("abcdefgh")}), {});
  rule.Name = "imported";
  rule.From = 2;
  rule.To = 5;
  Show(FilterOf({Rule()}));
  dialogs_.ExpectOpen(kRuleFiles, "ZarvoRule",
                      QString::fromStdString(folder_.Write("rule", RecordOf(rule))));
  ClickIn("importButton");
  testing::Drag(In<QSlider>("fromToSlider"), {3, 7});
  EXPECT_EQ(TheFilter().Rules[1].From, 5);
  EXPECT_EQ(TheFilter().Rules[1].To, 7);
}

TEST_F(RuleExchange, ExportChoosesNoMostSignificantSubpatternInTheFilter) {
  ShowEditor();
  TheFilter().Rules[0].Pattern = Of({Str("abc")});
  dialogs_.ExpectSave(kRuleFiles, "ZarvoRule", QStringLiteral("Rule 1"), PathOf("out"));
  ClickIn("exportButton");
  EXPECT_EQ(TheFilter().Rules[0].Pattern.MostSignificant, Pattern::kNotChosen);
}

}  // namespace
}  // namespace zarvo
