// The four menus of the String Editor, and what stands in the library.
#include <unistd.h>

#include <QAbstractItemView>
#include <QCheckBox>
#include <QLabel>
#include <algorithm>
#include <filesystem>
#include <optional>

#include "tests/gui/string_editor_fixture.h"
#include "ui/add_to_predefined_dialog.h"
#include "ui/predefined_dialog.h"

namespace zarvo {
namespace {

using testing::Call;
using testing::Code;
using testing::Find;
using testing::List;
using testing::NotList;
using testing::Of;
using testing::Str;

struct Item {
  std::string Caption;
  int Command = 0;

  friend bool operator==(const Item&, const Item&) = default;
};

void PrintTo(const Item& item, std::ostream* out) { *out << item.Caption << " " << item.Command; }

using Items = std::vector<Item>;

const Item kSeparator = {"---", 0};
const Item kAdd = {"Add to predefined...", 102};
const Item kMore = {"More...", 103};

class StringEditorMenus : public testing::StringEditorFixture {
 protected:
  static constexpr const char* kStrings = "stringsMenuButton";
  static constexpr const char* kCodes = "codesMenuButton";
  static constexpr const char* kLists = "listsMenuButton";
  static constexpr const char* kFunctions = "functionsMenuButton";

  void WriteLibrary(const std::string& text) { folder_.Write("Subpatterns.dat", text); }
  std::string ReadLibrary() { return folder_.Read("Subpatterns.dat"); }

  // The menu that the click on this button opens.
  QMenu& OpenMenu(const char* button) {
    ClickOn(button);
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    if (menu == nullptr) throw std::runtime_error(std::string("no menu at ") + button);
    return *menu;
  }

  Items ItemsOf(const char* button) {
    QMenu& menu = OpenMenu(button);
    Items items;
    for (const QAction* action : menu.actions()) {
      items.push_back(action->isSeparator()
                          ? kSeparator
                          : Item{action->text().toStdString(), action->data().toInt()});
    }
    menu.close();
    return items;
  }

  void Choose(const char* button, const char* caption) {
    QMenu& menu = OpenMenu(button);
    for (QAction* action : menu.actions()) {
      if (action->text() != QLatin1String(caption)) continue;
      ASSERT_TRUE(action->isEnabled());
      QTest::mouseClick(&menu, Qt::LeftButton, {}, menu.actionGeometry(action).center());
      return;
    }
    menu.close();
    FAIL() << "no item " << caption;
  }

  // The numbered items of one menu as a library file has them.
  static std::string NumberedStrings(int count) {
    std::string text = "[General]\nStrings=" + std::to_string(count) + "\n[Strings]\n";
    for (int n = 1; n <= count; ++n) {
      const std::string number = std::to_string(n);
      text += "Show" + number + "=1\nName" + number + "=n" + number + "\nString" + number + "=s" +
              number + "\n";
    }
    return text;
  }
};

// ---- What the menus offer

TEST_F(StringEditorMenus, WithoutALibraryOfferOnlyTheTwoCommands) {
  Open(Of({Str("a"), Code("b"), List("c")}));
  EXPECT_EQ(ItemsOf(kStrings), (Items{kAdd, kMore}));
  ClickTab(1);
  EXPECT_EQ(ItemsOf(kCodes), (Items{kAdd, kMore}));
  ClickTab(2);
  EXPECT_EQ(ItemsOf(kLists), (Items{kAdd, kMore}));
}

TEST_F(StringEditorMenus, OfferTheEntriesOfTheirSections) {
  WriteLibrary(
      "[General]\nStrings=2\nCharCodes=1\nCharLists=2\n"
      "[Strings]\nShow1=1\nName1=one\nShow2=1\nName2=two\n"
      "[CharCodes]\nShow1=1\nName1=code\n"
      "[CharLists]\nShow1=1\nName1=list\nShow2=0\nName2=hidden\n");
  Open(Of({Str("a"), Code("b"), List("c"), NotList("d")}));
  EXPECT_EQ(ItemsOf(kStrings), (Items{{"one", 104}, {"two", 105}, kSeparator, kAdd, kMore}));
  ClickTab(1);
  EXPECT_EQ(ItemsOf(kCodes), (Items{{"code", 104}, kSeparator, kAdd, kMore}));
  for (const int list : {2, 3}) {
    ClickTab(list);
    EXPECT_EQ(ItemsOf(kLists), (Items{{"list", 104}, kSeparator, kAdd, kMore}));
  }
}

TEST_F(StringEditorMenus, OfOnlyHiddenEntriesHaveNoSeparator) {
  WriteLibrary("[General]\nStrings=1\n[Strings]\nName1=one\n");
  Open(Of({Str("a")}));
  EXPECT_EQ(ItemsOf(kStrings), (Items{kAdd, kMore}));
}

TEST_F(StringEditorMenus, ShowNamesPlain) {
  WriteLibrary("[General]\nStrings=2\n[Strings]\nShow1=1\nName1=A & B\nShow2=1\nName2=C\tCtrl+C\n");
  Open(Of({Str("a")}));
  EXPECT_EQ(ItemsOf(kStrings),
            (Items{{"A && B", 104}, {"C Ctrl+C", 105}, kSeparator, kAdd, kMore}));
}

TEST_F(StringEditorMenus, OpenBelowTheLowerLeftCornerOfTheirButtons) {
  Open(Of({Str("a"), Code("b"), List("c")}));
  editor_->move(20, 20);
  int tab = 0;
  for (const char* button : {kStrings, kCodes, kLists}) {
    ClickTab(tab++);
    QMenu& menu = OpenMenu(button);
    EXPECT_EQ(menu.pos(), Get(button).mapToGlobal(QPoint(0, Get(button).height()))) << button;
    menu.close();
  }
}

TEST_F(StringEditorMenus, OfAnotherKindOpenNoMenu) {
  Open(Of({Str("a")}));
  for (const char* button : {kCodes, kLists, kFunctions}) {
    ASSERT_FALSE(IsEnabled(button));
    QTest::mouseClick(&Get(button), Qt::LeftButton);
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
  }
}

// ---- Choosing an entry

TEST_F(StringEditorMenus, AStringGivesItsTextAndRenderText) {
  WriteLibrary(
      "[General]\nStrings=1\n[Strings]\nShow1=1\nName1=one\nString1=text\nRender1=shown\n");
  Open(Of({Str("a"), Str("old")}));
  ClickTab(1);
  Choose(kStrings, "one");
  Subpattern expected = Str("text");
  expected.RenderText = "shown";
  EXPECT_EQ(Edited(), Of({Str("a"), expected}));
  EXPECT_EQ(TextOf("textEdit"), "text");
  EXPECT_EQ(TextOf("renderEdit"), "shown");
  EXPECT_EQ(TextOf("outputEdit"), "ashown");
  EXPECT_EQ(Captions(), (std::vector<std::string>{"a", "shown"}));
  EXPECT_EQ(Tabs().currentIndex(), 1);
}

TEST_F(StringEditorMenus, ACodeGivesItsCharacter) {
  WriteLibrary(
      "[General]\nCharCodes=3\n[CharCodes]\nShow1=1\nName1=one\nCode1=65\n"
      "Show2=1\nName2=zero\nCode2=0\nShow3=1\nName3=high\nCode3=255\nRender3=ff\n");
  Open(Of({Code("x")}));
  Choose(kCodes, "one");
  EXPECT_EQ(EditedAt(0), Code("A"));
  EXPECT_EQ(TextOf("textEdit"), "65");
  Choose(kCodes, "zero");
  EXPECT_EQ(EditedAt(0), Code(""));
  EXPECT_EQ(TextOf("textEdit"), "0");
  Choose(kCodes, "high");
  EXPECT_EQ(EditedAt(0).Contents, "\xFF");
  EXPECT_EQ(Captions(), (std::vector<std::string>{"ff"}));
}

TEST_F(StringEditorMenus, AListSaysWhetherItIsNegated) {
  WriteLibrary(
      "[General]\nCharLists=3\n[CharLists]\nShow1=1\nName1=plain\nList1=ab\nMode1=1\n"
      "Show2=1\nName2=negated\nList2=cd\nMode2=0\nShow3=1\nName3=without\nList3=ef\n");
  Open(Of({List("x")}));
  Choose(kLists, "negated");
  EXPECT_EQ(EditedAt(0), NotList("cd"));
  EXPECT_TRUE(IsChecked("negatedBox"));
  Choose(kLists, "plain");
  EXPECT_EQ(EditedAt(0), List("ab"));
  EXPECT_FALSE(IsChecked("negatedBox"));
  Choose(kLists, "negated");
  Choose(kLists, "without");
  EXPECT_EQ(EditedAt(0), List("ef"));
}

TEST_F(StringEditorMenus, AHiddenEntryKeepsItsNumberAndShiftsWhatLaterItemsStandFor) {
  WriteLibrary(
      "[General]\nStrings=4\n[Strings]\nShow1=1\nName1=one\nString1=1\nShow2=0\nName2=two\n"
      "String2=2\nShow3=1\nName3=three\nString3=3\nShow4=1\nName4=four\nString4=4\n");
  Open(Of({Str("old")}));
  EXPECT_EQ(ItemsOf(kStrings),
            (Items{{"one", 104}, {"three", 106}, {"four", 107}, kSeparator, kAdd, kMore}));
  Choose(kStrings, "one");
  EXPECT_EQ(EditedAt(0), Str("1"));
  Choose(kStrings, "three");
  EXPECT_EQ(EditedAt(0), Str("4"));
  Choose(kStrings, "four");
  EXPECT_EQ(EditedAt(0), Str("4"));
}

TEST_F(StringEditorMenus, AnItemThatStandsForNothingDoesNothing) {
  WriteLibrary(
      "[General]\nStrings=3\n[Strings]\nShow1=1\nName1=one\nString1=1\nName2=two\nString2=2\n"
      "Show3=1\nName3=three\nString3=3\n");
  Open(Of({Str("old")}));
  EXPECT_EQ(ItemsOf(kStrings), (Items{{"one", 104}, {"three", 106}, kSeparator, kAdd, kMore}));
  Choose(kStrings, "three");
  EXPECT_EQ(Edited(), Of({Str("old")}));
}

TEST_F(StringEditorMenus, OnlyTheFirstThirtyNumbersDoAnything) {
  WriteLibrary(NumberedStrings(31));
  Open(Of({Str("old")}));
  Choose(kStrings, "n31");
  EXPECT_EQ(EditedAt(0), Str("old"));
  Choose(kStrings, "n30");
  EXPECT_EQ(EditedAt(0), Str("s30"));
}

TEST_F(StringEditorMenus, ANumberThatDoesNothingIsNoRefusedChangeEither) {
  WriteLibrary(NumberedStrings(31));
  OpenLocked(Of({Str("old")}));
  Choose(kStrings, "n31");
  EXPECT_TRUE(dialogs_.IsDone());
  ExpectLockWarning();
  Choose(kStrings, "n30");
  EXPECT_TRUE(dialogs_.IsDone());
  EXPECT_EQ(EditedAt(0), Str("old"));
}

// ---- Functions

TEST_F(StringEditorMenus, FunctionsAreOfferedInTheirOrderAndNothingElse) {
  AddFunctions({"upper", "a&b", "lower"});
  Open(Of({Call("")}), Mode::Replacement);
  EXPECT_EQ(ItemsOf(kFunctions), (Items{{"upper", 104}, {"a&&b", 105}, {"lower", 106}}));
}

TEST_F(StringEditorMenus, WithoutFunctionsNoMenuOpens) {
  Open(Of({Call("")}), Mode::Replacement);
  ClickOn(kFunctions);
  EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
}

TEST_F(StringEditorMenus, AFunctionIsCalledAndTheCaretWaitsBetweenTheBrackets) {
  AddFunctions({"upper", "a&b"});
  Open(Of({Call("old(1)")}), Mode::Replacement);
  Choose(kFunctions, "a&&b");
  EXPECT_EQ(EditedAt(0), Call("a&b()"));
  EXPECT_EQ(TextOf("textEdit"), "a&b()");
  EXPECT_EQ(TextOf("outputEdit"), "{a&b()}");
  EXPECT_EQ(Captions(), (std::vector<std::string>{"{a&&b()}"}));
  EXPECT_EQ(QApplication::focusWidget(), &Get("textEdit"));
  EXPECT_FALSE(Get<QLineEdit>("textEdit").hasSelectedText());
  EXPECT_EQ(Get<QLineEdit>("textEdit").cursorPosition(), 4);
  QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("0,1"));
  EXPECT_EQ(EditedAt(0), Call("a&b(0,1)"));
}

TEST_F(StringEditorMenus, OnlyTheFirstThirtyFunctionsDoAnything) {
  for (int i = 1; i <= 31; ++i) AddFunctions({"f" + std::to_string(i)});
  Open(Of({Call("old()")}), Mode::Replacement);
  Choose(kFunctions, "f31");
  EXPECT_EQ(EditedAt(0), Call("old()"));
  Choose(kFunctions, "f30");
  EXPECT_EQ(EditedAt(0), Call("f30()"));
}

// ---- Add to predefined

class AddToPredefined : public StringEditorMenus {
 protected:
  // What the dialog is answered with.
  void Add(const char* button, const char* name, bool show, const char* end = "okButton") {
    testing::WithNextDialog<AddToPredefinedDialog>([=](AddToPredefinedDialog& dialog) {
      EXPECT_EQ(dialog.windowTitle(), "Add to predefined");
      EXPECT_EQ(Find<QLabel>(dialog, "nameLabel").text(), "Name:");
      EXPECT_EQ(Find<QCheckBox>(dialog, "showInMenuBox").text(), "Show in menu");
      EXPECT_FALSE(Find<QCheckBox>(dialog, "showInMenuBox").isChecked());
      testing::TypeInto(Find<QWidget>(dialog, "nameEdit"), QString::fromLatin1(name));
      if (show) testing::Click(Find<QWidget>(dialog, "showInMenuBox"));
      testing::Click(Find<QWidget>(dialog, end));
    });
    Choose(button, "Add to predefined...");
  }
};

TEST_F(AddToPredefined, WritesAStringAndOffersItAtOnce) {
  WriteLibrary("[General]\nStrings=1\n[Strings]\nShow1=1\nName1=one\nString1=1\nRender1=\n");
  Subpattern shown = Str("text");
  shown.RenderText = "shown";
  Open(Of({shown}));
  Add(kStrings, "new", true);
  EXPECT_EQ(ItemsOf(kStrings), (Items{{"one", 104}, {"new", 105}, kSeparator, kAdd, kMore}));
  const SubpatternLibrary::Entries entries = library_.Read(LibrarySection::Strings);
  ASSERT_EQ(entries.size(), 2U);
  EXPECT_EQ(entries[1].Name, "new");
  EXPECT_EQ(entries[1].Value, "text");
  EXPECT_EQ(entries[1].RenderText, "shown");
  EXPECT_EQ(entries[1].Show, 1);
  EXPECT_EQ(entries[1].Number, 2);
  EXPECT_EQ(Edited(), Of({shown}));
  Type("textEdit", "changed");
  Choose(kStrings, "new");
  EXPECT_EQ(Edited(), Of({shown}));
}

TEST_F(AddToPredefined, WritesACodeInDecimal) {
  Open(Of({Code("\xFF"), Code("")}));
  Add(kCodes, "high", false);
  EXPECT_NE(ReadLibrary().find("Code1=255"), std::string::npos);
  EXPECT_NE(ReadLibrary().find("Show1=0"), std::string::npos);
  EXPECT_EQ(ItemsOf(kCodes), (Items{kAdd, kMore}));
  ClickTab(1);
  Add(kCodes, "zero", true);
  EXPECT_NE(ReadLibrary().find("Code2=0"), std::string::npos);
  EXPECT_NE(ReadLibrary().find("CharCodes=2"), std::string::npos);
  EXPECT_EQ(ItemsOf(kCodes), (Items{{"zero", 105}, kSeparator, kAdd, kMore}));
}

TEST_F(AddToPredefined, WritesWhetherAListIsNegated) {
  Open(Of({List("ab"), NotList("cd")}));
  Add(kLists, "plain", true);
  ClickTab(1);
  Add(kLists, "negated", true);
  const SubpatternLibrary::Entries entries = library_.Read(LibrarySection::CharacterLists);
  ASSERT_EQ(entries.size(), 2U);
  EXPECT_EQ(entries[0].Value, "ab");
  EXPECT_EQ(entries[0].Mode, 1);
  EXPECT_EQ(entries[1].Value, "cd");
  EXPECT_EQ(entries[1].Mode, 0);
}

TEST_F(AddToPredefined, CancelledWritesNothing) {
  Open(Of({Str("a")}));
  Add(kStrings, "new", true, "cancelButton");
  EXPECT_EQ(folder_.Count(), 0U);
  EXPECT_EQ(ItemsOf(kStrings), (Items{kAdd, kMore}));
}

TEST_F(AddToPredefined, EnterInTheNameIsOk) {
  Open(Of({Str("a")}));
  testing::WithNextDialog<AddToPredefinedDialog>([](AddToPredefinedDialog& dialog) {
    auto& edit = Find<QWidget>(dialog, "nameEdit");
    testing::TypeInto(edit, QStringLiteral("new"));
    QTest::keyClick(&edit, Qt::Key_Return);
  });
  Choose(kStrings, "Add to predefined...");
  EXPECT_EQ(library_.Read(LibrarySection::Strings).size(), 1U);
}

TEST_F(AddToPredefined, WorksInALockedFilterSinceTheLibraryIsNoPartOfIt) {
  OpenLocked(Of({Str("a")}));
  Add(kStrings, "new", true);
  EXPECT_EQ(ItemsOf(kStrings), (Items{{"new", 104}, kSeparator, kAdd, kMore}));
  EXPECT_TRUE(dialogs_.IsDone());
}

TEST_F(AddToPredefined, SaysWithThePathThatTheFileCannotBeWritten) {
  // A folder stands where the file should be.
  std::filesystem::create_directory(folder_.File("Subpatterns.dat"));
  Open(Of({Str("a")}));
  dialogs_.ExpectMessage(MessageIcon::Exclamation,
                         "Error saving file " + folder_.File("Subpatterns.dat"), MessageButtons::Ok,
                         Answer::Ok);
  Add(kStrings, "new", true);
  EXPECT_TRUE(dialogs_.IsDone());
  EXPECT_TRUE(editor_->isVisible());
  EXPECT_EQ(ItemsOf(kStrings), (Items{kAdd, kMore}));
}

// ---- More

class MorePredefined : public StringEditorMenus {
 protected:
  MorePredefined() {
    WriteLibrary(
        "[General]\nStrings=2\nCharCodes=2\nCharLists=2\n"
        "[Strings]\nName1=one\nString1=1\nName2=two\nString2=2\nRender2=shown\n"
        "[CharCodes]\nName1=A\nCode1=65\nName2=zero\nCode2=0\n"
        "[CharLists]\nName1=plain\nList1=ab\nName2=negated\nList2=cd\nMode2=0\n");
  }

  // Chooses the row on this tab, or on the tab shown at first; no row is none.
  void Choose(const char* button, std::optional<int> tab, std::optional<int> row,
              const char* end = "okButton") {
    shown_tab_ = -1;
    testing::WithNextDialog<PredefinedDialog>([=, this](PredefinedDialog& dialog) {
      auto& tabs = Find<QTabBar>(dialog, "sectionTabs");
      shown_tab_ = tabs.currentIndex();
      tab_count_ = tabs.count();
      if (tab) tabs.setCurrentIndex(*tab);
      auto& list = Find<QAbstractItemView>(dialog, "entriesList");
      if (row) list.setCurrentIndex(list.model()->index(*row, 0));
      testing::Click(Find<QWidget>(dialog, end));
    });
    StringEditorMenus::Choose(button, "More...");
  }

  int shown_tab_ = -1;
  int tab_count_ = 0;
};

TEST_F(MorePredefined, OpensOnTheTabOfTheKind) {
  Open(Of({Str("a"), Code("b"), List("c"), NotList("d")}));
  const char* buttons[] = {kStrings, kCodes, kLists, kLists};
  const int tabs[] = {0, 1, 2, 2};
  for (int i = 0; i < 4; ++i) {
    ClickTab(i);
    Choose(buttons[i], {}, {}, "cancelButton");
    EXPECT_EQ(shown_tab_, tabs[i]);
    EXPECT_EQ(tab_count_, 3);
  }
}

TEST_F(MorePredefined, OffersNoListsToAReplacement) {
  Open(Of({Str("a"), Code("b")}), Mode::Replacement);
  Choose(kStrings, {}, {}, "cancelButton");
  EXPECT_EQ(tab_count_, 2);
  ClickTab(1);
  Choose(kCodes, {}, {}, "cancelButton");
  EXPECT_EQ(shown_tab_, 1);
  EXPECT_EQ(tab_count_, 2);
}

TEST_F(MorePredefined, OffersListsToAListThatAFileBroughtIntoAReplacement) {
  Open(Of({List("a")}), Mode::Replacement);
  Choose(kLists, {}, {}, "cancelButton");
  EXPECT_EQ(shown_tab_, 2);
}

TEST_F(MorePredefined, ReplacesKindTextAndRenderText) {
  Open(Of({Str("a"), Str("old")}, 1));
  ClickTab(1);
  Choose(kStrings, 2, 1);
  EXPECT_EQ(Edited(), Of({Str("a"), NotList("cd")}, 1));
  EXPECT_EQ(Captions(), (std::vector<std::string>{"a", "[!c, d]"}));
  EXPECT_EQ(TextOf("outputEdit"), "a[!c, d]");
  EXPECT_TRUE(IsChecked("negatedBox"));
  Choose(kLists, 2, 0);
  EXPECT_EQ(EditedAt(1), List("ab"));
  Choose(kLists, 1, 0);
  EXPECT_EQ(EditedAt(1), Code("A"));
  EXPECT_EQ(TextOf("textEdit"), "65");
  Choose(kCodes, 1, 1);
  EXPECT_EQ(EditedAt(1), Code(""));
  Choose(kCodes, 0, 1);
  Subpattern expected = Str("2");
  expected.RenderText = "shown";
  EXPECT_EQ(EditedAt(1), expected);
  EXPECT_EQ(TextOf("renderEdit"), "shown");
}

TEST_F(MorePredefined, WithoutAChoiceOrAfterCancelChangesNothing) {
  Open(Of({Str("old")}));
  Choose(kStrings, {}, {});
  EXPECT_EQ(shown_tab_, 0);
  EXPECT_EQ(Edited(), Of({Str("old")}));
  Choose(kStrings, {}, 1, "cancelButton");
  EXPECT_EQ(shown_tab_, 0);
  EXPECT_EQ(Edited(), Of({Str("old")}));
}

}  // namespace
}  // namespace zarvo
