#include "tests/support/golden_filters.h"

#include <limits>
#include <utility>

#include "tests/support/builders.h"

namespace zarvo::testing {
namespace {

constexpr std::int32_t kLeast = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();

}  // namespace

Subpattern Shown(Subpattern subpattern, std::string render_text) {
  subpattern.RenderText = std::move(render_text);
  return subpattern;
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

}  // namespace zarvo::testing
