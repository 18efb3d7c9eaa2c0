// Functions made ready for many calls.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>
#include <unordered_map>

#include "model/function.h"

namespace zarvo {

/// The same results as EvaluateFunction, by a table for arguments of one byte and by hash for
/// others. Refers to the Function's entries, so it must not be used once they may have changed.
class FunctionTable {
 public:
  explicit FunctionTable(const Function& function);

  /// The value; where the Function returns its argument, that very view.
  [[nodiscard]] std::string_view Value(std::string_view argument) const {
    if (argument.size() == 1) {
      const auto& value = of_byte_[static_cast<unsigned char>(argument.front())];
      return value.data() == nullptr ? argument : value;
    }
    return ValueOfOther(argument);
  }

 private:
  [[nodiscard]] std::string_view ValueOfOther(std::string_view argument) const;

  // No data stands for the argument itself.
  std::array<std::string_view, 256> of_byte_;
  std::string_view otherwise_;
  std::unordered_map<std::string_view, std::string_view> of_others_;
};

/// One table for each Function that is asked for, however many calls there are of it.
class FunctionTables {
 public:
  /// Valid as long as this lives. Null when there are so many already that they would take more
  /// memory than they are worth: a table is far larger than a Function may be.
  [[nodiscard]] const FunctionTable* Of(const Function& function);

  void Clear() { tables_.clear(); }

 private:
  static constexpr std::size_t kMost = 256;

  std::unordered_map<const Function*, FunctionTable> tables_;
};

}  // namespace zarvo
