// The filter loader over any bytes: whatever loads can be stored, loaded again, listed and checked.
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "app/services/integrity_check.h"
#include "model/filter_file.h"

namespace {

class Yes : public zarvo::VersionQuestions {
 public:
  bool SaveInNewestFormat(std::int32_t) override { return true; }
  bool LoadNewerFormat(std::int32_t) override { return true; }
};

zarvo::ArchiveResult Load(std::string_view bytes, zarvo::Filter& filter) {
  zarvo::Archive archive = zarvo::Archive::Loading(bytes);
  Yes yes;
  return SerializeFilter(archive, filter, yes, true);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  zarvo::Filter filter;
  const zarvo::ArchiveResult result = Load(bytes, filter);
  if (!result.Ok()) {
    if (result.Field.empty() || result.Offset > size || result.Message().empty()) std::abort();
    return 0;
  }
  if (filter.FormatVersion < 1 || filter.FormatVersion > 6) filter.FormatVersion = 6;
  const std::string stored = FilterFileBytes(filter);
  zarvo::Filter again;
  if (!Load(stored, again).Ok() || FilterFileBytes(again) != stored) std::abort();
  static_cast<void>(filter.CheckPassword("password"));
  static_cast<void>(zarvo::ErrorReport(filter.Name, zarvo::CollectFindings(filter), "\n"));
  for (const zarvo::Rule& rule : filter.Rules) static_cast<void>(DisplayForm(rule.Pattern));
  return 0;
}
