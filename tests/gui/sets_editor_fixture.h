// The Sets editor, and what a user does there.
#pragma once

#include "tests/gui/list_editor_fixture.h"
#include "ui/string_editor.h"

namespace zarvo::testing {

class SetsEditorFixture : public testing::ListEditorFixture {
 protected:
  SetsEditorFixture() : ListEditorFixture(testing::kSetsEditor, "stringList") {}

  static Filter WithSets(std::vector<Set> sets) {
    return testing::FilterOf({}, std::move(sets), {FunctionOf("f", {}), FunctionOf("g", {})});
  }
  static Filter WithStrings(const std::vector<std::string>& texts) {
    std::vector<Pattern> strings;
    for (const std::string& text : texts) strings.push_back(Of({Str(text)}, 0));
    return WithSets({SetOf("letters", std::move(strings))});
  }
  static Filter Abc() { return WithSets({SetOf("A", {}), SetOf("B", {}), SetOf("C", {})}); }

  const Set& SetAt(std::size_t position) { return TheFilter().Sets[position]; }
  Texts StringsOf(std::size_t position) {
    Texts texts;
    for (const Pattern& string : SetAt(position).Strings) texts.push_back(DisplayForm(string));
    return texts;
  }
  Texts Names() {
    Texts names;
    for (const Set& set : TheFilter().Sets) names.push_back(set.Name);
    return names;
  }

  /// Types this into the next String Editor and presses one of its buttons.
  void ExpectStringEditor(const char* text, const char* button = "okButton") {
    expected_dialogs_ += 1;
    testing::WithNextDialog<StringEditor>([this, text, button](StringEditor& dialog) {
      shown_dialogs_ += 1;
      testing::SelectAllAndType(Find<QWidget>(dialog, "textEdit"), QString::fromLatin1(text));
      Click(Find<QWidget>(dialog, button));
    });
  }
  void ExpectStringEditorShown() { EXPECT_EQ(shown_dialogs_, expected_dialogs_); }
  void DoubleClickAt(QPoint place) {
    testing::Activate(Editor());
    // The first click of the two, which selects, and the second.
    QTest::mouseClick(List().viewport(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(List().viewport(), Qt::LeftButton, {}, place);
  }
  void DoubleClickLine(int row) { DoubleClickAt(MiddleOf(row)); }

  /// Which of the four commands for the selected string are enabled.
  std::string EnabledCommands() {
    std::string enabled;
    const std::pair<const char*, const char*> commands[] = {{"deleteStringButton", "delete "},
                                                            {"editStringButton", "edit "},
                                                            {"moveUpButton", "up "},
                                                            {"moveDownButton", "down "}};
    for (const auto& [button, name] : commands) {
      if (IsEnabled(button)) enabled += name;
    }
    EXPECT_TRUE(IsEnabled("addStringButton"));
    return enabled;
  }

 private:
  int expected_dialogs_ = 0;
  int shown_dialogs_ = 0;
};

}  // namespace zarvo::testing
