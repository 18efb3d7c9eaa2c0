// Golden files of single Rules, Sets and Functions.
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <ostream>
#include <string>

#include "tests/support/builders.h"
#include "tests/support/golden.h"
#include "tests/support/golden_filters.h"

namespace zarvo {
namespace {

using namespace testing;  // the golden files and their filters

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

}  // namespace
}  // namespace zarvo
