// The Functions editor, and what a user does there.
#pragma once

#include "tests/gui/list_editor_fixture.h"

namespace zarvo::testing {

class FunctionsEditorFixture : public testing::ListEditorFixture {
 protected:
  using Entries = std::vector<FunctionEntry>;

  FunctionsEditorFixture() : ListEditorFixture(testing::kFunctionsEditor, "pairList") {}

  static Filter WithFunctions(std::vector<Function> functions) {
    return testing::FilterOf({}, {}, std::move(functions));
  }
  static Filter Abc() {
    return WithFunctions({FunctionOf("A", {}), FunctionOf("B", {}), FunctionOf("C", {})});
  }
  static Filter WithPairs(Entries entries) {
    return WithFunctions({FunctionOf("upper", std::move(entries))});
  }

  const Function& FunctionAt(std::size_t position) { return TheFilter().Functions[position]; }
  Texts Names() {
    Texts names;
    for (const Function& function : TheFilter().Functions) names.push_back(function.Name);
    return names;
  }
  std::string CheckedReturn() {
    return std::string(IsChecked("emptyRadio") ? "empty " : "") +
           (IsChecked("argumentRadio") ? "argument " : "");
  }
  void AddPair(const char* argument, const char* value) {
    TypeIn("argumentEdit", argument);
    TypeIn("valueEdit", value);
    ClickIn("addPairButton");
  }
};

}  // namespace zarvo::testing
