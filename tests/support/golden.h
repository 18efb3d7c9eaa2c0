// Reading, storing and comparing the golden files of tests/data/golden.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "model/filter_file.h"
#include "model/records.h"

namespace zarvo::testing {

/// The bytes of a golden file, by its name without folder and ending.
std::string Golden(const std::string& name);

/// The name of a file as a part of a test's name, where no "-" may stand.
template <typename File>
std::string NameOf(const ::testing::TestParamInfo<File>& tested) {
  std::string name = tested.param.Name;
  std::replace(name.begin(), name.end(), '-', '_');
  return name;
}

/// One version question: which it must be, the version it must be asked with, and the answer.
struct Question {
  enum class Direction { Save, Load };
  Direction About;
  std::int32_t Version;  // which the question must be asked with
  bool Answer;
};

Question OnSave(std::int32_t version, bool answer);
Question OnLoad(std::int32_t version, bool answer);

/// Answers the questions of the script in their order. A question that the script doesn't have
/// there fails the test, and so does one that nobody asked.
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
                   bool allow_newer = true);
/// A golden file that must load without a question.
Filter LoadGolden(const std::string& name);
std::string Save(Filter& filter, std::vector<Question> script = {});

/// An exchange file.
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
void ExpectSame(const Subpattern& actual, const Subpattern& expected);
void ExpectSame(const FunctionEntry& actual, const FunctionEntry& expected);
void ExpectSame(const Pattern& actual, const Pattern& expected);
void ExpectSame(const Rule& actual, const Rule& expected);
void ExpectSame(const Set& actual, const Set& expected);
void ExpectSame(const Function& actual, const Function& expected);
void ExpectSame(const Filter& actual, const Filter& expected);

void ExpectFailure(const ArchiveResult& result, ArchiveCode code, const std::string& field,
                   std::size_t offset);

}  // namespace zarvo::testing
