#include "engine/function_table.h"

namespace zarvo {

FunctionTable::FunctionTable(const Function& function)
    : otherwise_(function.DefaultReturnsArgument == Function::kReturnArgument
                     ? std::string_view()
                     : std::string_view("")) {
  of_byte_.fill(otherwise_);
  // The first entry of an argument counts, so it is put in last.
  for (auto entry = function.Entries.rbegin(); entry != function.Entries.rend(); ++entry) {
    if (entry->Argument.size() == 1) {
      of_byte_[static_cast<unsigned char>(entry->Argument.front())] = entry->Value;
    } else {
      of_others_[entry->Argument] = entry->Value;
    }
  }
}

std::string_view FunctionTable::ValueOfOther(std::string_view argument) const {
  const auto found = of_others_.find(argument);
  if (found != of_others_.end()) return found->second;
  return otherwise_.data() == nullptr ? argument : otherwise_;
}

const FunctionTable* FunctionTables::Of(const Function& function) {
  const auto known = tables_.find(&function);
  if (known != tables_.end()) return &known->second;
  if (tables_.size() == kMost) return nullptr;
  return &tables_.try_emplace(&function, function).first->second;
}

}  // namespace zarvo
