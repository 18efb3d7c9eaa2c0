// A Function: a named table that turns a piece of a match into another text.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "model/record_list.h"

namespace zarvo {

struct FunctionEntry {
  std::string Argument;
  std::string Value;

  friend bool operator==(const FunctionEntry&, const FunctionEntry&) = default;
};

struct Function {
  static constexpr std::int32_t kNewestRecordVersion = 1;
  /// Values of DefaultReturnsArgument. A file may hold any other byte: it acts as the empty string.
  static constexpr std::uint8_t kReturnEmpty = 0;
  static constexpr std::uint8_t kReturnArgument = 1;

  std::int32_t RecordVersion = kNewestRecordVersion;
  std::string Name;
  /// What the Function returns for an argument that no entry lists.
  std::uint8_t DefaultReturnsArgument = kReturnEmpty;
  std::vector<FunctionEntry> Entries;

  friend bool operator==(const Function&, const Function&) = default;
};

using FunctionList = RecordList<Function>;

}  // namespace zarvo
