// The Rules editor, and filters for it.
#pragma once

#include <QComboBox>
#include <string>
#include <utility>
#include <vector>

#include "tests/gui/editor_fixture.h"

namespace zarvo::testing {

inline Rule Called(const char* name, Rule rule = {}) {
  rule.Name = name;
  return rule;
}

class RulesEditorFixture : public EditorFixture {
 protected:
  RulesEditorFixture() : EditorFixture(kRulesEditor) {}

  Rule& RuleAt(std::size_t position) { return TheFilter().Rules[position]; }
  QSlider& Slider(const char* name) { return In<QSlider>(name); }
  QComboBox& SetBox() { return In<QComboBox>("setBox"); }
  std::vector<std::string> OfferedSets() {
    std::vector<std::string> names;
    for (int i = 0; i < SetBox().count(); ++i) names.push_back(SetBox().itemText(i).toStdString());
    return names;
  }
  // Expects a change by the user, which marks the filter as modified, and forgets the mark.
  void ExpectModified() {
    EXPECT_FALSE(Doc().Saved);
    Doc().Saved = true;
  }
  void ExpectSource(const char* source) {
    for (const char* name : {"stringRadio", "fromSetRadio"}) {
      EXPECT_EQ(IsChecked(name), name == std::string(source)) << name;
    }
  }
};

inline zarvo::Filter OneRule(Rule rule) { return FilterOf({Called("rule", std::move(rule))}); }

inline zarvo::Filter WithSets(Rule rule) {
  return FilterOf({Called("rule", std::move(rule))},
                  {SetOf("first", {Of({Str("1")})}), SetOf("second", {}), SetOf("third", {})});
}

}  // namespace zarvo::testing
