// The two commands of the String Editor's menus that open the library's dialogs.
#include <QAbstractItemView>
#include <QCheckBox>
#include <QLabel>
#include <filesystem>
#include <optional>

#include "tests/gui/string_editor_fixture.h"
#include "ui/add_to_predefined_dialog.h"
#include "ui/predefined_dialog.h"

namespace zarvo {
namespace {

using testing::Code;
using testing::Find;
using testing::Items;
using testing::kAdd;
using testing::kMore;
using testing::kSeparator;
using testing::List;
using testing::NotList;
using testing::Of;
using testing::Str;
using testing::StringEditorFixture;

// ---- Add to predefined

class AddToPredefined : public StringEditorFixture {
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
  dialogs_.ExpectMessage(
      MessageIcon::Exclamation,
      "Error saving file " + folder_.File("Subpatterns.dat") + ": Is a directory",
      MessageButtons::Ok, Answer::Ok);
  Add(kStrings, "new", true);
  EXPECT_TRUE(dialogs_.IsDone());
  EXPECT_TRUE(editor_->isVisible());
  EXPECT_EQ(ItemsOf(kStrings), (Items{kAdd, kMore}));
}

TEST_F(AddToPredefined, SaysWhyTheFileCannotHoldAText) {
  Open(Of({Str("a\r\nb")}));
  dialogs_.ExpectMessage(MessageIcon::Exclamation,
                         "Error saving file " + folder_.File("Subpatterns.dat") +
                             ": a line of the file can't hold a line break or a zero byte",
                         MessageButtons::Ok, Answer::Ok);
  Add(kStrings, "new", true);
  EXPECT_TRUE(dialogs_.IsDone());
}

// ---- More

class MorePredefined : public StringEditorFixture {
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
    StringEditorFixture::Choose(button, "More...");
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
