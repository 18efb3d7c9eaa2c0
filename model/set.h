// A Set: a named list of strings, of which Rules take their replacements.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "model/pattern.h"
#include "model/record_list.h"

namespace zarvo {

struct Set {
  static constexpr std::int32_t kNewestRecordVersion = 1;

  std::int32_t RecordVersion = kNewestRecordVersion;
  std::string Name;
  /// Each string may call Functions, just as a Rule's Replacement may.
  std::vector<Pattern> Strings;

  friend bool operator==(const Set&, const Set&) = default;
};

using SetList = RecordList<Set>;

}  // namespace zarvo
