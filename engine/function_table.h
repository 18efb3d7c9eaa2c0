// A Function made ready for many calls.
#pragma once

#include <array>
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

}  // namespace zarvo
