#include "cli/filter_json.h"

#include <gtest/gtest.h>

#include "model/filter_file.h"
#include "tests/support/builders.h"

namespace zarvo {
namespace {

using testing::Call;
using testing::Code;
using testing::FilterOf;
using testing::FunctionOf;
using testing::List;
using testing::NotList;
using testing::Of;
using testing::OfKind;
using testing::Replace;
using testing::SetOf;
using testing::Str;

const CodePage& Latin() {
  static const CodePage page = *CodePage::Find("windows-1252");
  return page;
}

// The bytes of the filter must come back from its JSON.
void ExpectRoundTrip(Filter filter) {
  const std::string bytes = FilterFileBytes(filter);
  Filter back;
  EXPECT_FALSE(FilterFromJson(FilterToJson(filter, Latin()), Latin(), back));
  EXPECT_EQ(back, filter);
  EXPECT_EQ(FilterFileBytes(back), bytes);
}

std::string Mistake(std::string_view json) {
  Filter filter;
  filter.Name = "as before";
  const std::optional<JsonMistake> mistake = FilterFromJson(json, Latin(), filter);
  EXPECT_EQ(filter.Name, "as before");
  return mistake ? mistake->Message() : "";
}

Filter RichFilter() {
  Filter filter = FilterOf(
      {Replace(Of({Str("a"), List("bc"), NotList("d"), Code(""), Call("f(1)")}), Of({Str("x")}))},
      {SetOf("set", {Of({Str("one")}), Of({})})}, {FunctionOf("f", {{"a", "b"}, {"", "c"}}, 1)});
  filter.Name = "Name";
  filter.Locked = 7;
  filter.ShowInEditorWhenLocked = -1;
  filter.Password = "\x01\x02";
  filter.PasswordKey = "k";
  filter.AutoIncrement = 1;
  filter.Version = -12;
  filter.Author = "Author";
  filter.Language = "Language";
  filter.Description = "Line\r\nline\n\"quoted\" \\ \t";
  filter.Type = "Type";
  filter.Rules[0].Name = "rule";
  filter.Rules[0].Probability = 33;
  filter.Rules[0].Strict = 1;
  filter.Rules[0].Once = 2;
  filter.Rules[0].ReplacementSetName = "set";
  filter.Rules[0].Pattern.Subpatterns[0].RenderText = "<a>";
  return filter;
}

TEST(FilterJson, EveryFieldComesBack) { ExpectRoundTrip(RichFilter()); }

TEST(FilterJson, EveryFormatVersionComesBack) {
  for (int version = 1; version <= 6; ++version) {
    Filter filter = RichFilter();
    filter.FormatVersion = version;
    ExpectRoundTrip(filter);
  }
}

TEST(FilterJson, RecordsOfOtherVersionsComeBack) {
  Filter filter = RichFilter();
  Rule rule;
  rule.RecordVersion = 2;
  filter.Rules.Append(rule);
  Set set;
  set.RecordVersion = 0;
  filter.Sets.Append(set);
  Function function;
  function.RecordVersion = -1;
  filter.Functions.Append(function);
  filter.Rules[0].Replacement = Pattern();
  filter.Rules[0].Replacement.RecordVersion = 3;
  filter.Rules[0].Pattern.Subpatterns[1] = Subpattern();
  filter.Rules[0].Pattern.Subpatterns[1].RecordVersion = std::numeric_limits<std::int32_t>::min();
  Pattern string;
  string.RecordVersion = std::numeric_limits<std::int32_t>::max();
  filter.Sets[0].Strings.push_back(string);
  ExpectRoundTrip(filter);
}

TEST(FilterJson, ListsOfOtherVersionsComeBack) {
  Filter filter;
  filter.Rules.RecordVersion = 2;
  filter.Sets.RecordVersion = 0;
  filter.Functions.RecordVersion = -9;
  ExpectRoundTrip(filter);
}

TEST(FilterJson, UnknownKindsOddNumbersAndOddBytesComeBack) {
  Filter filter =
      FilterOf({Replace(Of({OfKind(1, "a"), OfKind(99, ""), OfKind(-5, "b")}, 77), {})});
  filter.Rules[0].Probability = 255;
  filter.Rules[0].ReplacementSource = static_cast<ReplacementSource>(-3);
  filter.Rules[0].From = std::numeric_limits<std::int32_t>::min();
  filter.Rules[0].To = std::numeric_limits<std::int32_t>::max();
  filter.Functions.Append(FunctionOf("f", {}, 200));
  ExpectRoundTrip(filter);
}

TEST(FilterJson, TextsOfEveryPrefixLengthComeBack) {
  for (const std::size_t length : {254U, 255U, 65533U, 65534U, 65535U, 70000U}) {
    Filter filter;
    filter.Description = std::string(length, 'x');
    ExpectRoundTrip(filter);
  }
}

TEST(FilterJson, EveryByteComesBackInEachCodePage) {
  Filter filter;
  for (int byte = 0; byte < 256; ++byte) filter.Description += static_cast<char>(byte);
  for (const char* name :
       {"windows-1250", "windows-1251", "windows-1252", "windows-1253", "windows-1254",
        "windows-1255", "windows-1256", "windows-1257", "windows-1258", "CP874"}) {
    const CodePage page = *CodePage::Find(name);
    Filter back;
    EXPECT_FALSE(FilterFromJson(FilterToJson(filter, page), page, back)) << name;
    EXPECT_EQ(back.Description, filter.Description) << name;
  }
}

TEST(FilterJson, KeysLeftOutTakeTheirDefaults) {
  Filter filter = RichFilter();
  EXPECT_FALSE(FilterFromJson("{}", Latin(), filter));
  EXPECT_EQ(filter, Filter());
  EXPECT_FALSE(FilterFromJson(R"({"Rules": [{}], "Sets": [{"Strings": [{"Subpatterns": [{}]}]}],
                               "Functions": [{"Entries": [{}]}]})",
                              Latin(), filter));
  EXPECT_EQ(filter, FilterOf({Rule()}, {SetOf("", {Of({Str("")})})}, {FunctionOf("", {{}})}));
}

TEST(FilterJson, KindsHaveNamesOrNumbers) {
  Filter filter;
  EXPECT_FALSE(FilterFromJson(R"({"Sets": [{"Strings": [{"Subpatterns": [
      {"Kind": "String"}, {"Kind": "CharacterList"}, {"Kind": "NegatedCharacterList"},
      {"Kind": "CharacterCode"}, {"Kind": "Function"}, {"Kind": 1}, {"Kind": 5}]}]}]})",
                              Latin(), filter));
  std::vector<int> kinds;
  for (const Subpattern& part : filter.Sets[0].Strings[0].Subpatterns) {
    kinds.push_back(static_cast<int>(part.Kind));
  }
  EXPECT_EQ(kinds, (std::vector<int>{0, 2, 3, 4, 5, 1, 5}));
}

TEST(FilterJson, TextsGoThroughTheCodePage) {
  Filter filter;
  EXPECT_FALSE(FilterFromJson(R"({"Name": "Zażółć"})", *CodePage::Find("windows-1250"), filter));
  EXPECT_EQ(filter.Name, "Za\xBF\xF3\xB3\xE6");
  EXPECT_NE(FilterToJson(filter, *CodePage::Find("windows-1250")).find("Zażółć"),
            std::string::npos);
}

TEST(FilterJson, MistakesAreNamedWithTheirPlace) {
  EXPECT_EQ(Mistake(R"({"Nmae": "x"})"), "Nmae: there is no such key here");
  EXPECT_EQ(Mistake(R"({"Rules": [{}, {"Pattern": {"Subpatterns": [{"Kinds": 0}]}}]})"),
            "Rules[1].Pattern.Subpatterns[0].Kinds: there is no such key here");
  EXPECT_EQ(Mistake(R"({"Rules": [{"Replacement": {"Subpatterns": [{"Kind": "Strnig"}]}}]})"),
            "Rules[0].Replacement.Subpatterns[0].Kind: there is no kind \"Strnig\"");
  EXPECT_EQ(Mistake(R"({"Sets": [{"Strings": [{"Subpatterns": [{"Contents": 1}]}]}]})"),
            "Sets[0].Strings[0].Subpatterns[0].Contents: a text is expected");
  EXPECT_EQ(Mistake(R"({"Name": "ą"})"), "Name: the code page lacks the character \"ą\" (U+0105)");
  EXPECT_EQ(Mistake(R"({"Name": "😀"})"), "Name: the code page lacks the character \"😀\" (U+1F600)");
  EXPECT_EQ(Mistake(R"({"Locked": true})"), "Locked: a whole number is expected");
  EXPECT_EQ(Mistake(R"({"Version": 1.5})"), "Version: a whole number is expected");
  EXPECT_EQ(Mistake(R"({"Version": 2147483648})"),
            "Version: a number from -2147483648 to 2147483647 is expected");
  EXPECT_EQ(Mistake(R"({"Version": -2147483649})"),
            "Version: a number from -2147483648 to 2147483647 is expected");
  EXPECT_EQ(Mistake(R"({"Rules": [{"Probability": 256}]})"),
            "Rules[0].Probability: a number from 0 to 255 is expected");
  EXPECT_EQ(Mistake(R"({"Rules": [{"Probability": -1}]})"),
            "Rules[0].Probability: a number from 0 to 255 is expected");
  EXPECT_EQ(Mistake(R"({"Rules": 5})"), "Rules: an array is expected");
  EXPECT_EQ(Mistake(R"({"Rules": [5]})"), "Rules[0]: an object is expected");
  EXPECT_EQ(Mistake(R"([])"), "an object is expected, not array");
}

TEST(FilterJson, RecordOfAnotherVersionHasNothingMore) {
  EXPECT_EQ(Mistake(R"({"Rules": [{"RecordVersion": 2, "Name": "x"}]})"),
            "Rules[0].Name: there is no such key here");
}

TEST(FilterJson, KeyThatStandsTwiceIsNamed) {
  EXPECT_EQ(Mistake(R"({"Sets": [{"Name": "a", "Name": "b"}]})"),
            "Sets[0].Name: this key stands twice in one object");
  EXPECT_EQ(Mistake(R"({"Rules": [{}, {"Name": [{}, {"": 1, "": 2}]}]})"),
            "Rules[1].Name[1].\"\": this key stands twice in one object");
}

TEST(FilterJson, BrokenJsonIsNamedWithLineAndColumn) {
  EXPECT_NE(Mistake("{\n  \"Name\": \"x\",\n  oops\n}").find("line 3, column 3"),
            std::string::npos);
  EXPECT_NE(Mistake("").find("line 1"), std::string::npos);
  EXPECT_NE(Mistake("{\"Name\": \"\xFF\"}"), "");
  EXPECT_EQ(Mistake(std::string_view("{}\0{", 4)), "a zero byte stands at byte 2");
}

TEST(FilterJson, DeepOrWideNonsenseIsRefusedQuickly) {
  EXPECT_EQ(Mistake(std::string(1'000'000, '[')), "[0]: an object is expected, not array");
  std::string deep;
  for (int i = 0; i < 100; ++i) deep += R"({"Name": )";
  EXPECT_NE(Mistake(deep).find("Name.Name: this is nested too deeply"), std::string::npos);
  std::string many = R"({"Functions": [{"Entries": [)";
  for (int i = 0; i < 200'000; ++i) many += R"({"Argument": "a"},)";
  many.back() = ']';
  EXPECT_EQ(Mistake(many + R"(, "wrong": 0}]})"), "Functions[0].wrong: there is no such key here");
  std::string wide = "{";
  for (int i = 0; i < 100'000; ++i) wide += "\"key" + std::to_string(i) + "\": 0,";
  EXPECT_EQ(Mistake(wide + "\"end\": 0}"), "key64: too many keys stand in one object");
}

}  // namespace
}  // namespace zarvo
