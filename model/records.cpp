#include "model/records.h"

#include <algorithm>
#include <type_traits>
#include <utility>
#include <vector>

namespace zarvo {
namespace {

// The fewest bytes that an element takes in a file: a record of another version is its number, a
// FunctionEntry, which has no version, is at least two empty texts.
template <typename Element>
constexpr std::size_t kLeastSize = sizeof(std::int32_t);
template <>
constexpr std::size_t kLeastSize<FunctionEntry> = 2;

constexpr std::size_t kReserved = 256;

// True when the record has contents to read or write.
template <typename Record>
bool BeginRecord(Archive& archive, Record& record) {
  archive.Int32("RecordVersion", record.RecordVersion);
  return record.RecordVersion == Record::kNewestRecordVersion;
}

template <typename Enum>
void SerializeEnum(Archive& archive, const char* field, Enum& value) {
  auto number = static_cast<std::underlying_type_t<Enum>>(value);
  archive.Int32(field, number);
  value = static_cast<Enum>(number);
}

void Serialize(Archive& archive, FunctionEntry& entry) {
  archive.Text("Argument", entry.Argument);
  archive.Text("Value", entry.Value);
}

void SerializePattern(Archive& archive, const char* field, Pattern& pattern) {
  const Archive::Scope scope(archive, field);
  zarvo::Serialize(archive, pattern);
}

template <typename Element>
void SerializeElements(Archive& archive, const char* field, std::vector<Element>& elements) {
  const std::size_t count = archive.Count(field, elements.size(), kLeastSize<Element>);
  if (archive.IsLoading()) {
    elements.clear();
    // The rest as the elements come: a short record takes far more memory than bytes.
    elements.reserve(std::min(count, kReserved));
  }
  for (std::size_t i = 0; i < count; ++i) {
    const Archive::Scope scope(archive, field, i);
    if (archive.IsLoading()) {
      Element element;
      Serialize(archive, element);
      elements.push_back(std::move(element));
    } else {
      Serialize(archive, elements[i]);
    }
  }
}

template <typename Element>
void SerializeList(Archive& archive, const char* field, RecordList<Element>& list) {
  if (archive.IsLoading()) list.RemoveAll();
  const bool has_contents = [&] {
    const Archive::Scope scope(archive, field);
    return BeginRecord(archive, list);
  }();
  if (has_contents) SerializeElements(archive, field, list.Elements);
}

}  // namespace

void Serialize(Archive& archive, Subpattern& subpattern) {
  if (!BeginRecord(archive, subpattern)) return;
  SerializeEnum(archive, "Kind", subpattern.Kind);
  archive.Text("Contents", subpattern.Contents);
  archive.Text("RenderText", subpattern.RenderText);
}

void Serialize(Archive& archive, Pattern& pattern) {
  if (!BeginRecord(archive, pattern)) return;
  if (!archive.IsLoading() && pattern.MostSignificant == Pattern::kNotChosen) {
    pattern.MostSignificant = pattern.ComputeMostSignificant();
  }
  archive.Int32("MostSignificant", pattern.MostSignificant);
  SerializeElements(archive, "Subpatterns", pattern.Subpatterns);
}

void Serialize(Archive& archive, Rule& rule) {
  if (!BeginRecord(archive, rule)) return;
  archive.Text("Name", rule.Name);
  archive.Byte("Probability", rule.Probability);
  SerializePattern(archive, "Pattern", rule.Pattern);
  SerializeEnum(archive, "ReplacementSource", rule.ReplacementSource);
  archive.Int32("From", rule.From);
  archive.Int32("To", rule.To);
  archive.Text("ReplacementSetName", rule.ReplacementSetName);
  SerializePattern(archive, "Replacement", rule.Replacement);
  archive.Int32("Strict", rule.Strict);
  archive.Int32("Once", rule.Once);
}

void Serialize(Archive& archive, Set& set) {
  if (!BeginRecord(archive, set)) return;
  archive.Text("Name", set.Name);
  SerializeElements(archive, "Strings", set.Strings);
}

void Serialize(Archive& archive, Function& function) {
  if (!BeginRecord(archive, function)) return;
  archive.Text("Name", function.Name);
  archive.Byte("DefaultReturnsArgument", function.DefaultReturnsArgument);
  SerializeElements(archive, "Entries", function.Entries);
}

void Serialize(Archive& archive, RuleList& rules) { SerializeList(archive, "Rules", rules); }

void Serialize(Archive& archive, SetList& sets) { SerializeList(archive, "Sets", sets); }

void Serialize(Archive& archive, FunctionList& functions) {
  SerializeList(archive, "Functions", functions);
}

}  // namespace zarvo
