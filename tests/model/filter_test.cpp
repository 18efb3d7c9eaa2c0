#include "model/filter.h"

#include <gtest/gtest.h>

#include "tests/support/builders.h"

namespace zarvo {
namespace {

using testing::FunctionOf;
using testing::Of;
using testing::Replace;
using testing::SetOf;
using testing::Str;

TEST(Defaults, OfANewFilter) {
  const Filter filter;
  EXPECT_EQ(FilterHeader::kNewestFormatVersion, 6);
  EXPECT_EQ(filter.FormatVersion, 6);
  EXPECT_EQ(filter.Locked, 0);
  EXPECT_EQ(filter.ShowInEditorWhenLocked, 0);
  EXPECT_EQ(filter.Password, "");
  EXPECT_EQ(filter.PasswordKey, "");
  EXPECT_EQ(filter.AutoIncrement, 0);
  EXPECT_EQ(filter.Name, "");
  EXPECT_EQ(filter.Version, 0);
  EXPECT_EQ(filter.Author, "");
  EXPECT_EQ(filter.Language, "");
  EXPECT_EQ(filter.Description, "");
  EXPECT_EQ(filter.Type, "");
  EXPECT_EQ(filter.Rules.Count(), 0U);
  EXPECT_EQ(filter.Functions.Count(), 0U);
  EXPECT_EQ(filter.Sets.Count(), 0U);
  EXPECT_EQ(filter.Rules.RecordVersion, 1);
  EXPECT_EQ(filter.Functions.RecordVersion, 1);
  EXPECT_EQ(filter.Sets.RecordVersion, 1);
  EXPECT_EQ(filter.Applying, 0);
  EXPECT_EQ(filter.Cancel, 0);
}

TEST(Defaults, OfANewRule) {
  const Rule rule;
  EXPECT_EQ(rule.RecordVersion, 1);
  EXPECT_EQ(rule.Probability, 100);
  EXPECT_TRUE(rule.Pattern.Subpatterns.empty());
  EXPECT_EQ(rule.ReplacementSource, ReplacementSource::String);
  EXPECT_EQ(rule.From, 0);
  EXPECT_EQ(rule.To, -1);
  EXPECT_TRUE(rule.Inserts());
  EXPECT_EQ(rule.ReplacementSetName, "");
  EXPECT_TRUE(rule.Replacement.Subpatterns.empty());
  EXPECT_EQ(rule.Strict, 0);
  EXPECT_EQ(rule.Once, 0);
  EXPECT_EQ(rule.Stop, 0);
}

TEST(Defaults, OfPatternSubpatternSetAndFunction) {
  EXPECT_EQ(Pattern().RecordVersion, 1);
  EXPECT_EQ(Pattern().MostSignificant, -1);
  EXPECT_EQ(Subpattern().RecordVersion, 1);
  EXPECT_EQ(Subpattern().Kind, SubpatternKind::String);
  EXPECT_EQ(Subpattern().Contents, "");
  EXPECT_EQ(Subpattern().RenderText, "");
  EXPECT_EQ(Set().RecordVersion, 1);
  EXPECT_TRUE(Set().Strings.empty());
  EXPECT_EQ(Function().RecordVersion, 1);
  EXPECT_EQ(Function().DefaultReturnsArgument, 0);
  EXPECT_TRUE(Function().Entries.empty());
}

TEST(SetProbability, TakesZeroToAHundredAndIgnoresAllElse) {
  Rule rule;
  rule.SetProbability(0);
  EXPECT_EQ(rule.Probability, 0);
  rule.SetProbability(100);
  EXPECT_EQ(rule.Probability, 100);
  for (const int bad : {-1, 101, 256, 300}) {
    rule.SetProbability(bad);
    EXPECT_EQ(rule.Probability, 100) << bad;
  }
}

TEST(CopyingAFilter, SharesNothing) {
  Filter original =
      testing::FilterOf({Replace(Of({Str("a")}), Of({Str("b")}))}, {SetOf("s", {Of({Str("c")})})},
                        {FunctionOf("f", {{"d", "e"}})});
  const Filter copy = original;
  original.Rules[0].Pattern.Subpatterns[0].Contents = "changed";
  original.Sets[0].Strings[0].Subpatterns[0].Contents = "changed";
  original.Functions[0].Entries[0].Value = "changed";
  original.Rules.RemoveAll();
  EXPECT_EQ(copy.Rules[0].Pattern.Subpatterns[0].Contents, "a");
  EXPECT_EQ(copy.Sets[0].Strings[0].Subpatterns[0].Contents, "c");
  EXPECT_EQ(copy.Functions[0].Entries[0].Value, "e");
}

TEST(CopyingAFilter, AssignmentTakesEveryHeaderFieldAndListButLeavesTheRunWords) {
  Filter source = testing::FilterOf({Rule()}, {Set()}, {Function()});
  source.FormatVersion = 3;
  source.Locked = 1;
  source.ShowInEditorWhenLocked = 1;
  source.Password = "p";
  source.PasswordKey = "k";
  source.AutoIncrement = 1;
  source.Name = "n";
  source.Version = 9;
  source.Author = "a";
  source.Language = "l";
  source.Description = "d";
  source.Type = "t";
  source.Rules.RecordVersion = 5;
  source.Applying = 1;
  source.Cancel = 1;

  Filter target;
  target = source;
  EXPECT_EQ(target, source);
  EXPECT_EQ(target.Version, 9);
  EXPECT_EQ(target.Rules.RecordVersion, 5);
  EXPECT_EQ(target.Applying, 0);
  EXPECT_EQ(target.Cancel, 0);

  target.Applying = 1;
  target = Filter();
  EXPECT_EQ(target.Applying, 1);
  EXPECT_EQ(target.Rules.Count(), 0U);
}

TEST(CopyingAFilter, AFreshCopyIsNotInARun) {
  Filter source;
  source.Applying = 1;
  source.Cancel = 1;
  const Filter copy = source;
  EXPECT_EQ(copy.Applying, 0);
  EXPECT_EQ(copy.Cancel, 0);
}

TEST(CopyingASubpattern, CopiesItsOwnRecordVersion) {
  Subpattern source = Str("a");
  source.RecordVersion = 7;
  source.RenderText = "r";
  Subpattern target;
  target = source;
  EXPECT_EQ(target.RecordVersion, 7);
  EXPECT_EQ(target, source);
}

TEST(RecordList, AppendsInsertsRemovesAndKeepsTheOrder) {
  SetList list;
  list.Append(SetOf("b", {}));
  list.InsertBefore(0, SetOf("a", {}));
  list.InsertBefore(2, SetOf("d", {}));
  list.InsertBefore(2, SetOf("c", {}));
  std::string names;
  for (const Set& set : list) names += set.Name;
  EXPECT_EQ(names, "abcd");
  list.RemoveAt(1);
  list.RemoveAt(2);
  ASSERT_EQ(list.Count(), 2U);
  EXPECT_EQ(list[0].Name, "a");
  EXPECT_EQ(list[1].Name, "c");
  list.RemoveAll();
  EXPECT_EQ(list.Count(), 0U);
}

TEST(RecordList, ListOfAnotherVersionIsOfTheNewestOnceItHasAnElement) {
  SetList appended;
  appended.RecordVersion = 2;
  appended.Append(SetOf("a", {}));
  EXPECT_EQ(appended.RecordVersion, 1);
  SetList inserted;
  inserted.RecordVersion = 0;
  inserted.InsertBefore(0, SetOf("a", {}));
  EXPECT_EQ(inserted.RecordVersion, 1);
}

TEST(RecordList, FindGivesTheFirstOfThatExactName) {
  SetList list;
  list.Append(SetOf("Name", {}));
  list.Append(SetOf("name", {}));
  list.Append(SetOf("name", {Pattern()}));
  EXPECT_EQ(list.Find("name"), &list[1]);
  EXPECT_EQ(list.Find("NAME"), nullptr);
}

}  // namespace
}  // namespace zarvo
