#include "model/filter_file.h"

#include <gtest/gtest.h>

#include "tests/support/builders.h"

namespace zarvo {
namespace {

// Answers what it is told to, and counts.
class Answers : public VersionQuestions {
 public:
  bool SaveInNewestFormat(std::int32_t own_version) override {
    SaveQuestions.push_back(own_version);
    return SaveAnswer;
  }
  bool LoadNewerFormat(std::int32_t file_version) override {
    LoadQuestions.push_back(file_version);
    return LoadAnswer;
  }

  bool SaveAnswer = false;
  bool LoadAnswer = false;
  std::vector<std::int32_t> SaveQuestions;
  std::vector<std::int32_t> LoadQuestions;
};

std::string Save(Filter& filter, Answers& answers) {
  std::string bytes;
  Archive archive = Archive::Storing(bytes);
  EXPECT_TRUE(SerializeFilter(archive, filter, answers, false).Ok());
  return bytes;
}

TEST(SavingAFilter, RaisesTheVersionByOneAtEachSaveWhenAutoIncrementIsOn) {
  Filter filter;
  filter.AutoIncrement = 1;
  filter.Version = 7;
  Answers answers;
  const std::string first = Save(filter, answers);
  EXPECT_EQ(filter.Version, 8);
  Save(filter, answers);
  EXPECT_EQ(filter.Version, 9);
  Filter loaded;
  Archive archive = Archive::Loading(first);
  ASSERT_TRUE(SerializeFilter(archive, loaded, answers, false).Ok());
  EXPECT_EQ(loaded.Version, 8);
  EXPECT_TRUE(answers.SaveQuestions.empty());
}

TEST(SavingAFilter, VersionStaysRaisedWhenTheUpgradeIsDeclined) {
  Filter filter;
  filter.FormatVersion = 5;
  filter.AutoIncrement = 2;  // any value but 0 is on
  Answers answers;
  Save(filter, answers);
  EXPECT_EQ(filter.Version, 1);
  EXPECT_EQ(filter.FormatVersion, 5);
}

TEST(SavingAFilter, HighestVersionWrapsToTheLowest) {
  Filter filter;
  filter.AutoIncrement = 1;
  filter.Version = std::numeric_limits<std::int32_t>::max();
  Answers answers;
  Save(filter, answers);
  EXPECT_EQ(filter.Version, std::numeric_limits<std::int32_t>::min());
}

TEST(SavingAFilter, AsksAtEverySaveUntilTheAnswerIsYes) {
  Filter filter;
  filter.FormatVersion = 2;
  Answers answers;
  Save(filter, answers);
  Save(filter, answers);
  answers.SaveAnswer = true;
  Save(filter, answers);
  EXPECT_EQ(filter.FormatVersion, 6);
  Save(filter, answers);
  EXPECT_EQ(answers.SaveQuestions, (std::vector<std::int32_t>{2, 2, 2}));
}

TEST(SavingAFilter, OfAVersionNotKnownWritesTheMagicAndTheNumberAlone) {
  for (const int version : {0, -5, 7}) {
    Filter filter = testing::FilterOf({Rule()});
    filter.Name = "lost";
    filter.FormatVersion = version;
    Answers answers;
    const std::string bytes = Save(filter, answers);
    EXPECT_EQ(bytes.size(), 17U);
    EXPECT_EQ(bytes.substr(0, 13), "\x0CZARVO BINARY");
    EXPECT_EQ(answers.SaveQuestions, (std::vector<std::int32_t>{version}));
  }
}

TEST(SavingAFilter, BeforeVersion6LosesItsFunctionsInTheFileOnly) {
  Filter filter = testing::FilterOf({}, {}, {testing::FunctionOf("f", {{"a", "b"}})});
  filter.FormatVersion = 5;
  Answers answers;
  const std::string bytes = Save(filter, answers);
  EXPECT_EQ(filter.Functions.Count(), 1U);
  Filter loaded;
  Archive archive = Archive::Loading(bytes);
  ASSERT_TRUE(SerializeFilter(archive, loaded, answers, false).Ok());
  EXPECT_EQ(loaded.Functions.Count(), 0U);
}

TEST(LoadingAFilter, BeforeVersion6GivesAListOfFunctionsThatCanBeStoredAgain) {
  Filter old;
  old.FormatVersion = 5;
  const std::string bytes = FilterFileBytes(old);
  Filter filter;
  filter.Functions.RecordVersion = 9;
  Archive archive = Archive::Loading(bytes);
  Answers answers;
  ASSERT_TRUE(SerializeFilter(archive, filter, answers, false).Ok());
  EXPECT_EQ(filter.Functions, FunctionList());
}

TEST(FilterFileBytes, NeitherRaisesTheVersionNorAsks) {
  Filter filter;
  filter.AutoIncrement = 1;
  filter.FormatVersion = 3;
  EXPECT_FALSE(FilterFileBytes(filter).empty());
  EXPECT_EQ(filter.Version, 0);
  EXPECT_EQ(filter.FormatVersion, 3);
}

TEST(LoadingAFilter, KeepsTheRunWords) {
  Filter source;
  const std::string bytes = FilterFileBytes(source);
  Filter filter;
  filter.Applying = 1;
  Archive archive = Archive::Loading(bytes);
  Answers answers;
  EXPECT_TRUE(SerializeFilter(archive, filter, answers, false).Ok());
  EXPECT_EQ(filter.Applying, 1);
}

TEST(LoadingAFilter, OfANewerVersionTakesItsNumberEvenWhenRefused) {
  Filter newer;
  newer.FormatVersion = 9;
  const std::string bytes = FilterFileBytes(newer);
  for (const bool allow_newer : {false, true}) {
    Filter filter;
    Archive archive = Archive::Loading(bytes);
    Answers answers;
    const ArchiveResult result = SerializeFilter(archive, filter, answers, allow_newer);
    EXPECT_EQ(result.Code, ArchiveCode::NewerFormatRefused);
    EXPECT_EQ(result.Offset, 13U);
    EXPECT_EQ(filter.FormatVersion, 9);
    EXPECT_EQ(answers.LoadQuestions.size(), allow_newer ? 1U : 0U);
  }
}

}  // namespace
}  // namespace zarvo
