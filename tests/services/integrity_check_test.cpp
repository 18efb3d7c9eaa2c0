#include "app/services/integrity_check.h"

#include <gtest/gtest.h>

#include "tests/support/builders.h"

namespace zarvo {
namespace {

using testing::Call;
using testing::FilterOf;
using testing::FromSet;
using testing::FunctionOf;
using testing::Of;
using testing::Replace;
using testing::SetOf;
using testing::Str;

using Findings = std::vector<std::string>;

Rule Calling(const std::string& name, std::vector<Subpattern> parts) {
  Rule rule = Replace(Of({Str("a")}), Of(std::move(parts)));
  rule.Name = name;
  return rule;
}

Rule Drawing(const std::string& name, ReplacementSource source, const std::string& set) {
  Rule rule = FromSet(Of({Str("a")}), source, set);
  rule.Name = name;
  return rule;
}

TEST(CollectFindings, FilterWithoutRulesAndSetsHasNone) {
  EXPECT_EQ(CollectFindings(Filter()), Findings{});
}

TEST(CollectFindings, ResolvedReferencesAreNone) {
  EXPECT_EQ(CollectFindings(FilterOf({Calling("r", {Str("x"), Call("f(1)")}),
                                      Drawing("q", ReplacementSource::SetInSequence, "s"),
                                      Drawing("p", ReplacementSource::SetAtRandom, "s")},
                                     {SetOf("s", {Of({Call("f(2)")})})}, {FunctionOf("f", {})})),
            Findings{});
}

TEST(CollectFindings, RuleCallingAMissingFunctionSeveralTimesListsItOnce) {
  EXPECT_EQ(CollectFindings(FilterOf({Calling("r", {Call("f(1)"), Call("f(2)"), Call("f(3,1)")})})),
            (Findings{"r", "$NO*SET$", "f", "$END*RULE$", "$END*ALL*RULES$"}));
}

TEST(CollectFindings, MarkerStandsBeforeTheFirstMissingFunctionOnly) {
  EXPECT_EQ(CollectFindings(FilterOf({Calling("r", {Call("f(1)"), Str("-"), Call("g(1)")})})),
            (Findings{"r", "$NO*SET$", "f", "g", "$END*RULE$", "$END*ALL*RULES$"}));
}

TEST(CollectFindings, RuleDrawingFromAMissingSet) {
  for (const ReplacementSource source :
       {ReplacementSource::SetInSequence, ReplacementSource::SetAtRandom}) {
    EXPECT_EQ(CollectFindings(FilterOf({Drawing("r", source, "s")})),
              (Findings{"r", "s", "$END*RULE$", "$END*ALL*RULES$"}));
  }
}

TEST(CollectFindings, RuleThatDrawsFromASetIsNotAskedForItsOwnString) {
  Rule rule = Drawing("r", ReplacementSource::SetInSequence, "s");
  rule.Replacement = Of({Call("missing(1)")});
  EXPECT_EQ(CollectFindings(FilterOf({rule}, {SetOf("s", {})})), Findings{});
}

TEST(CollectFindings, UnknownSourceCountsAsAString) {
  Rule rule = Calling("r", {Call("f(1)")});
  rule.ReplacementSource = static_cast<ReplacementSource>(9);
  EXPECT_EQ(CollectFindings(FilterOf({rule})).size(), 5U);
}

TEST(CollectFindings, PatternsAreNotExamined) {
  Rule rule = Calling("r", {Str("x")});
  rule.Pattern = Of({Call("missing(1)")});
  EXPECT_EQ(CollectFindings(FilterOf({rule})), Findings{});
}

TEST(CollectFindings, FunctionIsNamedByTheTextBeforeTheFirstBracket) {
  EXPECT_EQ(CollectFindings(FilterOf({Calling("r", {Call("f(1)"), Call("f")})})),
            (Findings{"r", "$NO*SET$", "f", "$END*RULE$", "$END*ALL*RULES$"}));
  EXPECT_EQ(CollectFindings(FilterOf({Calling("r", {Call("f")})}, {}, {FunctionOf("f", {})})),
            Findings{});
}

TEST(CollectFindings, NamesAreComparedExactly) {
  EXPECT_EQ(CollectFindings(
                FilterOf({Calling("r", {Call("F(1)"), Call("f (1)")})}, {}, {FunctionOf("f", {})})),
            (Findings{"r", "$NO*SET$", "F", "f ", "$END*RULE$", "$END*ALL*RULES$"}));
}

TEST(CollectFindings, SetOfPlainTextsHasNoRecord) {
  EXPECT_EQ(CollectFindings(FilterOf({}, {SetOf("s", {Of({Str("a")}), Of({})})})), Findings{});
}

TEST(CollectFindings, SetsFollowTheRules) {
  EXPECT_EQ(CollectFindings(
                FilterOf({}, {SetOf("s", {Of({Call("h(1)")}), Of({Call("h(2)"), Call("i(1)")})}),
                              SetOf("t", {Of({Call("h(1)")})})})),
            (Findings{"$END*ALL*RULES$", "s", "h", "i", "$END*SET$", "t", "h", "$END*SET$"}));
}

TEST(CollectFindings, EntryThatRepeatsTheNameOfItsRuleIsLeftOut) {
  EXPECT_EQ(CollectFindings(FilterOf({Calling("f", {Call("f(1)")})})),
            (Findings{"f", "$NO*SET$", "$END*RULE$", "$END*ALL*RULES$"}));
}

TEST(CollectFindings, EveryRuleAndSetIsWalked) {
  EXPECT_EQ(CollectFindings(FilterOf({Calling("a", {Call("f(1)")}), Calling("b", {Str("fine")}),
                                      Calling("c", {Call("f(1)")})}))
                .size(),
            9U);
}

TEST(ErrorReport, ListsRulesAndSetsLineByLine) {
  Filter filter =
      FilterOf({Calling("R1", {Call("f(1)"), Call("g(1)")})}, {SetOf("S", {Of({Call("h(1)")})})});
  EXPECT_EQ(ErrorReport("Demo", CollectFindings(filter), "\n"),
            "Error report for filter \"Demo\"\n"
            "\n"
            "Rule \"R1\":\n"
            "missing referenced functions:\n"
            "\tf\n"
            "\tg\n"
            "\n"
            "Set \"S\":\n"
            "missing referenced functions:\n"
            "\th\n"
            "\n");
}

TEST(ErrorReport, MissingSetStandsUnderItsOwnHeading) {
  const Filter filter = FilterOf({Drawing("R", ReplacementSource::SetAtRandom, "lost")});
  EXPECT_EQ(ErrorReport("", CollectFindings(filter), "\r\n"),
            "Error report for filter \"\"\r\n\r\nRule \"R\":\r\nmissing referenced "
            "sets:\r\n\tlost\r\n\r\n");
}

TEST(ErrorReport, NamesAreWrittenByteForByte) {
  const Filter filter = FilterOf({Drawing("a\xFF\"", ReplacementSource::SetAtRandom, "\x01\n")});
  EXPECT_EQ(ErrorReport("\x80", CollectFindings(filter), "\n"),
            "Error report for filter \"\x80\"\n\nRule \"a\xFF\"\":\nmissing referenced sets:\n"
            "\t\x01\n\n\n");
}

TEST(ErrorReport, MarkersAmongTheNamesAreTakenForMarkers) {
  // Only as the first finding of a Rule does this one mean anything.
  EXPECT_EQ(ErrorReport("n",
                        {"$NO*SET$", "$NO*SET$", "$NO*SET$", "$END*RULE$", "$END*ALL*RULES$",
                         "$NO*SET$", "$NO*SET$", "$END*SET$"},
                        "\n"),
            "Error report for filter \"n\"\n\nRule \"$NO*SET$\":\nmissing referenced functions:\n"
            "\t$NO*SET$\n\nSet \"$NO*SET$\":\nmissing referenced functions:\n\t$NO*SET$\n\n");
}

TEST(CollectFindings, EndMarkerTakesPartInTheRemovalOfDuplicates) {
  EXPECT_EQ(CollectFindings(FilterOf({Calling("$END*RULE$", {Call("f(1)")})})),
            (Findings{"$END*RULE$", "$NO*SET$", "f", "$END*ALL*RULES$"}));
}

TEST(ErrorReport, NothingFollowsTheEndOfAllSets) {
  EXPECT_EQ(ErrorReport("n",
                        {"$END*ALL*RULES$", "s", "f", "$END*SET$", "$END*ALL*SETS$", "t", "f",
                         "$END*SET$", "$END*RULE$"},
                        "\n"),
            "Error report for filter \"n\"\n\nSet \"s\":\nmissing referenced functions:\n\tf\n\n");
}

}  // namespace
}  // namespace zarvo
