// A locked filter's Pattern is looked at but never changed.
#include <QCheckBox>
#include <QClipboard>
#include <functional>

#include "tests/gui/string_editor_fixture.h"

namespace zarvo {
namespace {

using testing::Call;
using testing::Code;
using testing::List;
using testing::NotList;
using testing::Of;
using testing::Str;

class LockedStringEditor : public testing::StringEditorFixture {
 protected:
  LockedStringEditor() {
    AddFunctions({"upper", "lower"});
    folder_.Write("Subpatterns.dat",
                  "[General]\nStrings=1\nCharCodes=1\nCharLists=1\n"
                  "[Strings]\nName1=text\nString1=other\nShow1=1\n"
                  "[CharCodes]\nName1=code\nCode1=90\nShow1=1\n"
                  "[CharLists]\nName1=list\nList1=xyz\nMode1=0\nShow1=1\n");
  }

  // Does this twice; the warning comes once, and the Pattern stays what it was each time.
  void ExpectRefused(const char* what, const std::function<void()>& action) {
    SCOPED_TRACE(what);
    const Pattern before = Edited();
    const int tab = Tabs().currentIndex();
    ExpectLockWarning();
    for (int i = 0; i < 2; ++i) {
      action();
      EXPECT_TRUE(dialogs_.IsDone());
      EXPECT_EQ(Edited(), before);
      EXPECT_EQ(Tabs().count(), static_cast<int>(before.Subpatterns.size()));
      EXPECT_EQ(Tabs().currentIndex(), tab);
      ExpectControlsToShow(before);
    }
  }

  void ExpectControlsToShow(const Pattern& pattern) {
    const auto position = static_cast<std::size_t>(Tabs().currentIndex());
    PatternDraft draft(pattern);
    draft.Select(position);
    EXPECT_EQ(TextOf("textEdit"), draft.Text());
    EXPECT_EQ(TextOf("renderEdit"), draft.Current().RenderText);
    EXPECT_EQ(TextOf("outputEdit"), DisplayForm(pattern));
    EXPECT_EQ(Tabs().tabText(Tabs().currentIndex()).toStdString(), draft.Caption(position));
    EXPECT_EQ(IsChecked("mostSignificantBox"), draft.IsMostSignificant());
    const SubpatternKind kind = draft.Current().Kind;
    const bool is_negated = kind == SubpatternKind::NegatedCharacterList;
    const bool is_list = kind == SubpatternKind::CharacterList || is_negated;
    EXPECT_EQ(IsChecked("stringRadio"), kind == SubpatternKind::String);
    EXPECT_EQ(IsChecked("codeRadio"), kind == SubpatternKind::CharacterCode);
    EXPECT_EQ(IsChecked("functionRadio"), kind == SubpatternKind::Function);
    EXPECT_EQ(IsChecked("listRadio"), is_list);
    EXPECT_EQ(IsEnabled("negatedBox"), is_list);
    if (is_list) {
      EXPECT_EQ(IsChecked("negatedBox"), is_negated);
    }
  }
};

Pattern AllKinds(int most_significant) {
  return Of({Str("text"), Code("A"), List("ab"), NotList("cd")}, most_significant);
}

TEST_F(LockedStringEditor, IsLookedThroughWithoutAWarning) {
  const Pattern pattern = AllKinds(-5);
  OpenLocked(pattern);
  for (int i = 0; i < 4; ++i) {
    ClickTab(i);
    for (const char* edit : {"textEdit", "renderEdit"}) {
      Get(edit).setFocus(Qt::TabFocusReason);
      LeaveField();
    }
    ExpectControlsToShow(pattern);
  }
  ClickOn("helpButton");
  ClickOn("okButton");
  EXPECT_EQ(Edited(), pattern);
}

TEST_F(LockedStringEditor, RefusesTyping) {
  OpenLocked(AllKinds(-1));
  for (const char* edit : {"textEdit", "renderEdit"}) {
    OpenLocked(AllKinds(-1));
    ExpectRefused(edit, [&] { testing::TypeInto(Get(edit), QStringLiteral("x")); });
  }
}

TEST_F(LockedStringEditor, RefusesTypingACode) {
  OpenLocked(AllKinds(-1));
  ClickTab(1);
  ExpectRefused("code", [&] { testing::TypeInto(Get("textEdit"), QStringLiteral("6")); });
  EXPECT_EQ(TextOf("textEdit"), "65");
}

TEST_F(LockedStringEditor, RefusesPastingDeletingAndUndoing) {
  const Subpattern text = Str("text");
  QApplication::clipboard()->setText(QStringLiteral("pasted"));
  const struct {
    Qt::Key Key;
    Qt::KeyboardModifiers Modifiers;
  } keys[] = {{Qt::Key_V, Qt::ControlModifier},
              {Qt::Key_X, Qt::ControlModifier},
              {Qt::Key_Delete, Qt::NoModifier},
              {Qt::Key_Backspace, Qt::NoModifier}};
  for (const auto& [key, modifiers] : keys) {
    SCOPED_TRACE(key);
    OpenLocked(Of({text}));
    ExpectRefused("key", [this, pressed = key, held = modifiers] {
      testing::TypeInto(Get("textEdit"), {});
      Get<QLineEdit>("textEdit").selectAll();
      QTest::keyClick(&Get("textEdit"), pressed, held);
    });
    QTest::keySequence(&Get("textEdit"), QKeySequence::Undo);
    EXPECT_EQ(Edited(), Of({text}));
    EXPECT_EQ(TextOf("textEdit"), "text");
  }
}

TEST_F(LockedStringEditor, RefusesEveryOtherKind) {
  for (int tab = 0; tab < 4; ++tab) {
    for (const char* radio : {"stringRadio", "codeRadio", "listRadio"}) {
      OpenLocked(AllKinds(-1));
      ClickTab(tab);
      ExpectRefused(radio, [&] { ClickOn(radio); });
    }
  }
  for (const char* radio : {"stringRadio", "codeRadio", "functionRadio"}) {
    OpenLocked(Of({Str("text")}), Mode::Replacement);
    ExpectRefused(radio, [&] { ClickOn(radio); });
  }
}

TEST_F(LockedStringEditor, RefusesAKindChosenByAKey) {
  OpenLocked(Of({Str("65")}));
  ExpectRefused("key", [&] {
    Get("codeRadio").setFocus(Qt::TabFocusReason);
    QTest::keyClick(&Get("codeRadio"), Qt::Key_Space);
  });
}

TEST_F(LockedStringEditor, RefusesNeg) {
  for (const int tab : {2, 3}) {
    OpenLocked(AllKinds(-1));
    ClickTab(tab);
    ExpectRefused("negatedBox", [&] { ClickOn("negatedBox"); });
  }
}

TEST_F(LockedStringEditor, RefusesMostSignificantBothWays) {
  for (const int most_significant : {-1, 0}) {
    OpenLocked(AllKinds(most_significant));
    ExpectRefused("mostSignificantBox", [&] { ClickOn("mostSignificantBox"); });
  }
}

TEST_F(LockedStringEditor, RefusesFindWithoutItsQuestion) {
  for (const int most_significant : {-1, 2}) {
    OpenLocked(AllKinds(most_significant));
    ExpectRefused("findButton", [&] { ClickOn("findButton"); });
  }
}

TEST_F(LockedStringEditor, RefusesNewDeleteAndMove) {
  for (const char* button : {"newButton", "deleteButton", "moveLeftButton", "moveRightButton"}) {
    OpenLocked(AllKinds(1));
    ClickTab(1);
    ExpectRefused(button, [&] { ClickOn(button); });
  }
}

TEST_F(LockedStringEditor, RefusesPredefinedItems) {
  const char* menus[] = {kStrings, kCodes, kLists, kLists};
  const char* items[] = {"text", "code", "list", "list"};
  for (int tab = 0; tab < 4; ++tab) {
    OpenLocked(AllKinds(-1));
    ClickTab(tab);
    ExpectRefused(menus[tab], [&] { Choose(menus[tab], items[tab]); });
  }
}

TEST_F(LockedStringEditor, RefusesAnItemThatStandsForNothingToo) {
  folder_.Write("Subpatterns.dat", "[General]\nStrings=2\n[Strings]\nName2=two\nShow2=1\n");
  OpenLocked(AllKinds(-1));
  ExpectRefused("item", [&] { Choose(kStrings, "two"); });
}

TEST_F(LockedStringEditor, RefusesFunctions) {
  OpenLocked(Of({Call("f(1)")}), Mode::Replacement);
  ExpectRefused("functions", [&] { Choose(kFunctions, "upper"); });
}

TEST_F(LockedStringEditor, RefusesMoreBeforeItsDialogOpens) {
  const char* menus[] = {kStrings, kCodes, kLists};
  for (int tab = 0; tab < 3; ++tab) {
    OpenLocked(AllKinds(-1));
    ClickTab(tab);
    ExpectRefused(menus[tab], [&] { Choose(menus[tab], "More..."); });
  }
}

TEST_F(LockedStringEditor, WarnsOnceForAllKindsOfChanges) {
  const Pattern pattern = AllKinds(1);
  OpenLocked(pattern);
  ClickTab(2);
  ExpectLockWarning();
  for (const char* button :
       {"newButton", "deleteButton", "moveLeftButton", "moveRightButton", "mostSignificantBox",
        "findButton", "negatedBox", "stringRadio", "codeRadio", "listRadio"}) {
    ClickOn(button);
    EXPECT_TRUE(dialogs_.IsDone()) << button;
    EXPECT_EQ(Edited(), pattern) << button;
  }
  for (const char* edit : {"textEdit", "renderEdit"}) {
    testing::TypeInto(Get(edit), QStringLiteral("xyz"));
    LeaveField();
    EXPECT_EQ(Edited(), pattern) << edit;
  }
  Choose(kLists, "list");
  Choose(kLists, "More...");
  EXPECT_EQ(Edited(), pattern);
  ExpectControlsToShow(pattern);
}

TEST_F(LockedStringEditor, WarnsAtTheOpeningOfAnEmptyPatternAndIsArmedAgain) {
  ExpectLockWarning();
  OpenLocked(Pattern());
  EXPECT_TRUE(dialogs_.IsDone());
  EXPECT_EQ(Edited(), Of({Str("")}));
  EXPECT_EQ(Tabs().count(), 1);
  ExpectRefused("newButton", [&] { ClickOn("newButton"); });
  EXPECT_EQ(Edited(), Of({Str("")}));
}

TEST_F(LockedStringEditor, MeansNothingToAnUnlockedOne) {
  Open(AllKinds(-1));
  testing::TypeInto(Get("textEdit"), QStringLiteral("x"));
  ClickOn("newButton");
  ClickOn("deleteButton");
  EXPECT_NE(Edited(), AllKinds(-1));
}

}  // namespace
}  // namespace zarvo
