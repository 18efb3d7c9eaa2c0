#include "app/services/pattern_draft.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/builders.h"

namespace zarvo {
namespace {

using testing::Call;
using testing::Code;
using testing::List;
using testing::NotList;
using testing::Of;
using testing::OfKind;
using testing::Str;

PatternDraft DraftOf(std::vector<Subpattern> subpatterns,
                     int most_significant = Pattern::kNotChosen, std::size_t position = 0) {
  PatternDraft draft(Of(std::move(subpatterns), most_significant));
  draft.Select(position);
  return draft;
}

std::vector<std::string> Contents(const PatternDraft& draft) {
  std::vector<std::string> contents;
  for (const Subpattern& subpattern : draft.Edited().Subpatterns) {
    contents.push_back(subpattern.Contents);
  }
  return contents;
}

using Texts = std::vector<std::string>;

// ---- Captions

TEST(DraftCaption, OfThirteenBytesIsWhole) {
  EXPECT_EQ(DraftOf({Str("1234567890123")}).Caption(0), "1234567890123");
}

TEST(DraftCaption, OfFourteenBytesIsCutToTenAndThreeDots) {
  EXPECT_EQ(DraftOf({Str("12345678901234")}).Caption(0), "1234567890...");
}

TEST(DraftCaption, IsTheDisplayFormOfEachKind) {
  const PatternDraft draft = DraftOf({Str(""), List("ab"), NotList("ab"), Code("A"), Code(""),
                                      Call("f(1)"), OfKind(1, "x"), OfKind(-7, "y")});
  const Texts captions = {"", "[a, b]", "[!a, b]", "A", "{0}", "{f(1)}", "", ""};
  for (std::size_t i = 0; i < captions.size(); ++i) EXPECT_EQ(draft.Caption(i), captions[i]);
}

TEST(DraftCaption, IsTheRenderTextWhereThereIsOneAndIsCutInTheSameWay) {
  PatternDraft draft = DraftOf({List("abc")});
  draft.SetRenderText("a to c");
  EXPECT_EQ(draft.Caption(0), "a to c");
  draft.SetRenderText("from a on to c");
  EXPECT_EQ(draft.Caption(0), "from a on ...");
}

// ---- Text

TEST(DraftText, OfACodeIsItsDecimalNumber) {
  EXPECT_EQ(DraftOf({Code("A")}).Text(), "65");
  EXPECT_EQ(DraftOf({Code("\xFF")}).Text(), "255");
  EXPECT_EQ(DraftOf({Code("")}).Text(), "0");
  EXPECT_EQ(DraftOf({Code("AB")}).Text(), "65");
}

TEST(DraftText, OfEveryOtherKindIsTheContents) {
  for (const int kind : {0, 1, 2, 3, 5, 6, -1}) {
    PatternDraft draft = DraftOf({OfKind(kind, "old")});
    EXPECT_EQ(draft.Text(), "old") << kind;
    draft.SetText("65");
    EXPECT_EQ(draft.Edited().Subpatterns[0], OfKind(kind, "65")) << kind;
  }
}

TEST(DraftText, OfACodeIsStoredAsTheCharacterOfTheLeadingNumber) {
  const struct {
    const char* Typed;
    std::string Stored;
  } cases[] = {
      {"65", "A"},
      {"065", "A"},
      {"65x9", "A"},
      {"255", "\xFF"},
      {"1", "\x01"},
      {"0", ""},
      {"", ""},
      {"x", ""},
      {" 65", ""},
      {"256", ""},
      {"321", "A"},
      {"-1", "\xFF"},
      {"-191", "A"},
      {"-", ""},
      {"99999999999", "\xFF"},
      {"-99999999999", ""},
  };
  for (const auto& [typed, stored] : cases) {
    PatternDraft draft = DraftOf({Code("Z")});
    draft.SetText(typed);
    EXPECT_EQ(draft.Edited().Subpatterns[0], Code(stored)) << typed;
  }
}

TEST(DraftText, ChangesOnlyTheCurrentSubpattern) {
  PatternDraft draft = DraftOf({Str("a"), Str("b"), Str("c")}, 2, 1);
  draft.SetText("new");
  draft.SetRenderText("shown");
  Subpattern changed = Str("new");
  changed.RenderText = "shown";
  EXPECT_EQ(draft.Edited(), Of({Str("a"), changed, Str("c")}, 2));
}

// ---- Kinds

TEST(DraftKind, ACodeBecomesItsDigits) {
  for (const SubpatternKind kind :
       {SubpatternKind::String, SubpatternKind::Function, SubpatternKind::CharacterList,
        SubpatternKind::NegatedCharacterList}) {
    PatternDraft draft = DraftOf({Code("A")});
    draft.SetKind(kind);
    EXPECT_EQ(draft.Current(), OfKind(static_cast<int>(kind), "65"));
  }
}

TEST(DraftKind, TheCodeZeroBecomesTheDigitZero) {
  PatternDraft draft = DraftOf({Code("")});
  draft.SetKind(SubpatternKind::String);
  EXPECT_EQ(draft.Current(), Str("0"));
}

TEST(DraftKind, ACodeAboveAsciiBecomesThreeDigits) {
  PatternDraft draft = DraftOf({Code("\xE9")});
  draft.SetKind(SubpatternKind::String);
  EXPECT_EQ(draft.Current(), Str("233"));
}

TEST(DraftKind, AnyTextBecomesACodeByItsLeadingNumber) {
  for (const int kind : {0, 1, 2, 3, 5, 9}) {
    PatternDraft draft = DraftOf({OfKind(kind, "66 and more")});
    draft.SetKind(SubpatternKind::CharacterCode);
    EXPECT_EQ(draft.Current(), Code("B")) << kind;
  }
  PatternDraft draft = DraftOf({Str("no number")});
  draft.SetKind(SubpatternKind::CharacterCode);
  EXPECT_EQ(draft.Current(), Code(""));
}

TEST(DraftKind, BetweenTheOtherKindsTheContentsStay) {
  for (const int from : {0, 2, 3, 5}) {
    for (const int to : {0, 2, 3, 5}) {
      PatternDraft draft = DraftOf({OfKind(from, "12")});
      draft.SetKind(static_cast<SubpatternKind>(to));
      EXPECT_EQ(draft.Current(), OfKind(to, "12"));
    }
  }
}

TEST(DraftKind, ACodeMadeACodeAgainStaysAsItIs) {
  PatternDraft draft = DraftOf({Code("AB")});
  draft.SetKind(SubpatternKind::CharacterCode);
  EXPECT_EQ(draft.Current(), Code("AB"));
}

TEST(DraftKind, LeavesTheRenderTextAndTheRecordVersion) {
  Subpattern subpattern = Str("65");
  subpattern.RenderText = "shown";
  subpattern.RecordVersion = 7;
  PatternDraft draft = DraftOf({subpattern});
  draft.SetKind(SubpatternKind::CharacterCode);
  EXPECT_EQ(draft.Current().RenderText, "shown");
  EXPECT_EQ(draft.Current().RecordVersion, 7);
}

TEST(DraftKind, NegationTogglesAListAndMakesOneOfAnythingElse) {
  PatternDraft draft = DraftOf({List("ab")});
  draft.ToggleNegated();
  EXPECT_EQ(draft.Current(), NotList("ab"));
  draft.ToggleNegated();
  EXPECT_EQ(draft.Current(), List("ab"));
  for (const int kind : {0, 1, 3, 5, 8}) {
    PatternDraft other = DraftOf({OfKind(kind, "ab")});
    other.ToggleNegated();
    EXPECT_EQ(other.Current(), List("ab")) << kind;
  }
}

// ---- The library and the functions

PredefinedSubpattern Entry(std::string value, std::string render_text, std::int32_t mode) {
  PredefinedSubpattern entry;
  entry.Name = "name";
  entry.Value = std::move(value);
  entry.RenderText = std::move(render_text);
  entry.Mode = mode;
  return entry;
}

TEST(DraftLibrary, AnEntryGivesContentsAndRenderTextAndTheKindStays) {
  for (const int kind : {0, 4}) {
    PatternDraft draft = DraftOf({OfKind(kind, "old")});
    draft.Take(Entry("n", "shown", PredefinedSubpattern::kNegatedList));
    Subpattern expected = OfKind(kind, "n");
    expected.RenderText = "shown";
    EXPECT_EQ(draft.Current(), expected);
  }
}

TEST(DraftLibrary, AnEntryOfTheListsSaysWhetherItIsNegated) {
  for (const int kind : {2, 3}) {
    PatternDraft draft = DraftOf({OfKind(kind, "old")});
    draft.Take(Entry("xyz", "", PredefinedSubpattern::kNegatedList));
    EXPECT_EQ(draft.Current(), NotList("xyz"));
    draft.Take(Entry("xyz", "", PredefinedSubpattern::kPlainList));
    EXPECT_EQ(draft.Current(), List("xyz"));
  }
}

TEST(DraftLibrary, AnEmptyRenderTextOfAnEntryReplacesTheOldOne) {
  PatternDraft draft = DraftOf({Str("a")});
  draft.SetRenderText("old");
  draft.Take(Entry("b", "", 1));
  EXPECT_EQ(draft.Current(), Str("b"));
}

TEST(DraftLibrary, TheCharacterZeroIsStoredAsEmptyContents) {
  PatternDraft draft = DraftOf({Code("A")});
  draft.Take(Entry(std::string(1, '\0'), "", 1));
  EXPECT_EQ(draft.Current(), Code(""));
  draft.Replace(Code(std::string(1, '\0')));
  EXPECT_EQ(draft.Current(), Code(""));
}

TEST(DraftLibrary, ReplacingTakesKindContentsAndRenderTextButNotTheRecordVersion) {
  Subpattern old = Str("old");
  old.RecordVersion = 5;
  Subpattern chosen = NotList("xy");
  chosen.RenderText = "shown";
  PatternDraft draft = DraftOf({Str("a"), old}, 1, 1);
  draft.Replace(chosen);
  chosen.RecordVersion = 5;
  EXPECT_EQ(draft.Edited(), Of({Str("a"), chosen}, 1));
}

TEST(DraftLibrary, HasASectionForEachKind) {
  const struct {
    int Kind;
    LibrarySection Section;
  } cases[] = {{0, LibrarySection::Strings},        {4, LibrarySection::CharacterCodes},
               {2, LibrarySection::CharacterLists}, {3, LibrarySection::CharacterLists},
               {5, LibrarySection::CharacterLists}, {1, LibrarySection::CharacterLists},
               {77, LibrarySection::CharacterLists}};
  for (const auto& [kind, section] : cases) {
    EXPECT_EQ(DraftOf({OfKind(kind, "")}).Section(), section) << kind;
  }
}

TEST(DraftLibrary, AnEntryIsMadeOfTheCurrentSubpattern) {
  PatternDraft draft = DraftOf({Str("a"), NotList("xy"), List("z"), Code("A")}, -1, 1);
  draft.SetRenderText("shown");
  PredefinedSubpattern negated = Entry("xy", "shown", PredefinedSubpattern::kNegatedList);
  EXPECT_EQ(draft.AsEntry("name", false), negated);
  negated.Show = 1;
  EXPECT_EQ(draft.AsEntry("name", true), negated);
  draft.Select(2);
  EXPECT_EQ(draft.AsEntry("name", false), Entry("z", "", PredefinedSubpattern::kPlainList));
  draft.Select(3);
  EXPECT_EQ(draft.AsEntry("name", false), Entry("A", "", PredefinedSubpattern::kPlainList));
}

TEST(DraftLibrary, ACallIsTheNameWithEmptyBracketsAndKeepsTheRenderText) {
  PatternDraft draft = DraftOf({Call("old(1)")});
  draft.SetRenderText("shown");
  draft.Call("upper");
  EXPECT_EQ(draft.Current().Contents, "upper()");
  EXPECT_EQ(draft.Current().RenderText, "shown");
}

// ---- New, Delete, Move

TEST(DraftList, AnEmptyPatternGetsItsFirstSubpattern) {
  PatternDraft draft{Pattern()};
  EXPECT_TRUE(draft.IsEmpty());
  draft.Append();
  EXPECT_FALSE(draft.IsEmpty());
  EXPECT_EQ(draft.Edited(), Of({Str("")}));
  EXPECT_EQ(draft.Position(), 0U);
}

TEST(DraftList, ANewSubpatternComesLastAndIsSelected) {
  PatternDraft draft = DraftOf({Str("a"), Str("b")}, 1);
  draft.Append();
  EXPECT_EQ(draft.Edited(), Of({Str("a"), Str("b"), Str("")}, 1));
  EXPECT_EQ(draft.Position(), 2U);
}

TEST(DraftList, APositionOutsideIsNotSelected) {
  PatternDraft draft = DraftOf({Str("a"), Str("b")}, -1, 1);
  draft.Select(2);
  EXPECT_EQ(draft.Position(), 1U);
  draft.Select(static_cast<std::size_t>(-1));
  EXPECT_EQ(draft.Position(), 1U);
}

TEST(DraftList, OnlyTwoOrMoreSubpatternsCanLoseOne) {
  PatternDraft draft = DraftOf({Str("a")});
  EXPECT_FALSE(draft.CanDelete());
  draft.Append();
  EXPECT_TRUE(draft.CanDelete());
}

TEST(DraftList, DeletingSelectsTheOneBeforeOrTheFirst) {
  PatternDraft draft = DraftOf({Str("a"), Str("b"), Str("c"), Str("d")}, -1, 2);
  draft.Delete();
  EXPECT_EQ(Contents(draft), (Texts{"a", "b", "d"}));
  EXPECT_EQ(draft.Position(), 1U);
  draft.Select(0);
  draft.Delete();
  EXPECT_EQ(Contents(draft), (Texts{"b", "d"}));
  EXPECT_EQ(draft.Position(), 0U);
  draft.Select(1);
  draft.Delete();
  EXPECT_EQ(Contents(draft), (Texts{"b"}));
  EXPECT_EQ(draft.Position(), 0U);
}

// For each deleted position and number of the most significant one, what it is afterwards. The
// automatic choice is the long string, wherever it stands.
TEST(DraftList, DeletingChoosesTheMostSignificantAnewOnlyBehindTheNewSelection) {
  const std::vector<Subpattern> subpatterns = {Str("a"), Str("b"), Str("c"), Str("long")};
  for (int deleted = 0; deleted < 4; ++deleted) {
    for (int before = -2; before < 7; ++before) {
      PatternDraft draft = DraftOf(subpatterns, before, static_cast<std::size_t>(deleted));
      draft.Delete();
      const bool is_chosen_anew = deleted == 0 ? before == 1 : before == deleted;
      const int automatic = deleted == 3 ? 0 : 2;
      EXPECT_EQ(draft.Edited().MostSignificant, is_chosen_anew ? automatic : before)
          << "deleted " << deleted << ", most significant " << before;
    }
  }
}

TEST(DraftList, DeletingTheMostSignificantOfUnweightedOnesLeavesNone) {
  PatternDraft draft = DraftOf({Call("f()"), Str("a")}, 1, 1);
  draft.Delete();
  EXPECT_EQ(draft.Edited(), Of({Call("f()")}, Pattern::kNotChosen));
}

TEST(DraftList, MovingSwapsWithTheNeighbourAndKeepsTheMostSignificantNumber) {
  PatternDraft draft = DraftOf({Str("a"), Code("b"), List("c")}, 1, 1);
  draft.MoveLeft();
  EXPECT_EQ(draft.Edited(), Of({Code("b"), Str("a"), List("c")}, 1));
  EXPECT_EQ(draft.Position(), 0U);
  draft.MoveRight();
  draft.MoveRight();
  EXPECT_EQ(draft.Edited(), Of({Str("a"), List("c"), Code("b")}, 1));
  EXPECT_EQ(draft.Position(), 2U);
}

TEST(DraftList, TheFirstCannotMoveLeftNorTheLastRight) {
  PatternDraft draft = DraftOf({Str("a"), Str("b"), Str("c")});
  EXPECT_FALSE(draft.CanMoveLeft());
  EXPECT_TRUE(draft.CanMoveRight());
  draft.Select(1);
  EXPECT_TRUE(draft.CanMoveLeft());
  EXPECT_TRUE(draft.CanMoveRight());
  draft.Select(2);
  EXPECT_TRUE(draft.CanMoveLeft());
  EXPECT_FALSE(draft.CanMoveRight());
}

// ---- The most significant one

TEST(DraftMostSignificant, IsTheCurrentOneWhenSetAndNoneWhenUnset) {
  PatternDraft draft = DraftOf({Str("a"), Str("b")}, 0, 1);
  EXPECT_FALSE(draft.IsMostSignificant());
  draft.SetMostSignificant(true);
  EXPECT_TRUE(draft.IsMostSignificant());
  EXPECT_EQ(draft.Edited().MostSignificant, 1);
  draft.SetMostSignificant(false);
  EXPECT_EQ(draft.Edited().MostSignificant, -1);
  EXPECT_FALSE(draft.HasMostSignificant());
}

TEST(DraftMostSignificant, CountsAsChosenAlsoOutsideThePattern) {
  for (const int number : {-2, 0, 5}) {
    EXPECT_TRUE(DraftOf({Str("a")}, number).HasMostSignificant()) << number;
  }
}

TEST(DraftMostSignificant, IsFoundByTheHighestWeight) {
  PatternDraft draft = DraftOf({Str("ab"), Code("c"), List("de")});
  draft.FindMostSignificant();
  EXPECT_EQ(draft.Edited().MostSignificant, 0);
  PatternDraft equal = DraftOf({Code("c"), List("d")}, 1);
  equal.FindMostSignificant();
  EXPECT_EQ(equal.Edited().MostSignificant, 0);
  PatternDraft none = DraftOf({NotList("c"), Call("f()"), Str("")}, 1);
  none.FindMostSignificant();
  EXPECT_EQ(none.Edited().MostSignificant, -1);
}

}  // namespace
}  // namespace zarvo
