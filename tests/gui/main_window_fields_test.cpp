#include <unistd.h>

#include <QAbstractItemView>
#include <QAccessible>
#include <QClipboard>
#include <QLabel>
#include <QProgressBar>
#include <QWheelEvent>
#include <QWindow>
#include <algorithm>
#include <filesystem>

#include "app/about_dialog.h"
#include "app/main_window.h"
#include "tests/gui/main_window_fixture.h"
#include "tests/support/builders.h"
#include "ui/icon_button.h"

namespace zarvo {
namespace {

using testing::Choose;
using testing::Counted;
using testing::Entries;
using testing::Find;
using testing::kUntitled;
using testing::SelectAllAndType;
using testing::TypeInto;

using MainWindowFieldsTest = testing::MainWindowFixture;

// ---- The fields

TEST_F(MainWindowFieldsTest, LeavingATextFieldStoresIt) {
  const std::pair<const char*, std::string zarvo::FilterHeader::*> fields[] = {
      {"nameEdit", &Filter::Name},
      {"authorEdit", &Filter::Author},
      {"languageEdit", &Filter::Language},
      {"descriptionEdit", &Filter::Description},
      {"typeBox", &Filter::Type}};
  for (const auto& [name, field] : fields) {
    Doc().Saved = true;
    Type(name, "a & <b>");
    EXPECT_FALSE(Doc().Saved) << name;
    EXPECT_EQ(TheFilter().*field, "") << name << " is stored only when it is left";
    Doc().Saved = true;
    LeaveField();
    EXPECT_EQ(TheFilter().*field, "a & <b>") << name;
    EXPECT_TRUE(Doc().Saved) << name << ": leaving it is no change";
  }
}

TEST_F(MainWindowFieldsTest, EachKeyClearsTheSavedFlag) {
  for (const char* name :
       {"nameEdit", "authorEdit", "languageEdit", "descriptionEdit", "typeBox"}) {
    TypeInto(Get(name), "x");
    Doc().Saved = true;
    QTest::keyClick(&Get(name), Qt::Key_Backspace);
    EXPECT_FALSE(Doc().Saved) << name;
    Doc().Saved = true;
    QTest::keyClick(&Get(name), Qt::Key_Left);
    EXPECT_TRUE(Doc().Saved) << name << ": moving the cursor is no change";
  }
  Doc().Saved = true;
  Type("versionEdit", "3");
  EXPECT_FALSE(Doc().Saved);
}

TEST_F(MainWindowFieldsTest, LeavingVersionStoresItsLeadingInteger) {
  const std::pair<const char*, int> versions[] = {
      {"7", 7}, {"12abc", 12}, {"abc", 0}, {"007", 7}, {"99999999999", 2147483647}};
  for (const auto& [text, version] : versions) {
    TheFilter().Version = 5;
    Get<QLineEdit>("versionEdit").clear();
    TypeInto(Get("versionEdit"), QString::fromLatin1(text));
    LeaveField();
    EXPECT_EQ(TheFilter().Version, version) << text;
  }
  Get<QLineEdit>("versionEdit").clear();
  TypeInto(Get("versionEdit"), {});
  LeaveField();
  EXPECT_EQ(TheFilter().Version, 0);
}

TEST_F(MainWindowFieldsTest, VersionTakesDigitsAlone) {
  auto& version = Get<QLineEdit>("versionEdit");
  SelectAllAndType(version, QStringLiteral("1a-2.3 "));
  EXPECT_EQ(version.text(), "123");
  version.selectAll();
  QGuiApplication::clipboard()->setText(QStringLiteral("12abc"));
  version.paste();
  EXPECT_EQ(version.text(), "12");
  LeaveField();
  EXPECT_EQ(TheFilter().Version, 12);
}

TEST_F(MainWindowFieldsTest, NegativeVersionOfAFileStaysAndCanBeEdited) {
  TheFilter().Version = -5;
  window_->RefreshFields();
  EXPECT_EQ(TextOf("versionEdit"), "-5");
  TypeInto(Get("versionEdit"), QStringLiteral("-7"));
  EXPECT_EQ(TextOf("versionEdit"), "-7");
  LeaveField();
  EXPECT_EQ(TheFilter().Version, -7);
  TheFilter().Version = 5;
  window_->RefreshFields();
  SelectAllAndType(Get("versionEdit"), QStringLiteral("-8"));
  EXPECT_EQ(TextOf("versionEdit"), "8");
}

TEST_F(MainWindowFieldsTest, PassingThroughTheFieldsChangesNothing) {
  TheFilter() = Counted();
  TheFilter().Version = -5;
  const Filter before = TheFilter();
  window_->RefreshFields();
  for (const char* name :
       {"nameEdit", "versionEdit", "typeBox", "authorEdit", "languageEdit", "descriptionEdit"}) {
    Get(name).setFocus(Qt::TabFocusReason);
  }
  LeaveField();
  EXPECT_EQ(TheFilter(), before);
  EXPECT_TRUE(Doc().Saved);
}

TEST_F(MainWindowFieldsTest, TypeChosenFromTheListIsStoredAndLeavesTheSavedFlag) {
  auto& type = Get<QComboBox>("typeBox");
  type.setFocus(Qt::TabFocusReason);
  QTest::keyClick(&type, Qt::Key_Down);
  QTest::keyClick(&type, Qt::Key_Down);
  EXPECT_EQ(type.currentText(), "Orthographic");
  EXPECT_EQ(TheFilter().Type, "");
  LeaveField();
  EXPECT_EQ(TheFilter().Type, "Orthographic");
  EXPECT_TRUE(Doc().Saved);
}

TEST_F(MainWindowFieldsTest, TypeClickedInTheDroppedListIsStoredAndLeavesTheSavedFlag) {
  auto& type = Get<QComboBox>("typeBox");
  type.setFocus(Qt::TabFocusReason);
  type.showPopup();
  ASSERT_TRUE(QTest::qWaitFor([&] { return type.view()->isVisible(); }));
  const QModelIndex index = type.model()->index(4, 0);
  QTest::mouseMove(type.view()->viewport(), type.view()->visualRect(index).center());
  // The box takes no choice in the moment after it opened.
  ASSERT_TRUE(QTest::qWaitFor([&] {
    if (type.view()->isVisible()) {
      QTest::mouseClick(type.view()->viewport(), Qt::LeftButton, {},
                        type.view()->visualRect(index).center());
    }
    return !type.view()->isVisible();
  }));
  EXPECT_EQ(type.currentText(), "Typographic");
  type.setFocus(Qt::TabFocusReason);
  LeaveField();
  EXPECT_EQ(TheFilter().Type, "Typographic");
  EXPECT_TRUE(Doc().Saved);
}

TEST_F(MainWindowFieldsTest, TypedTypeDoesNotEnterTheList) {
  Type("typeBox", "My own");
  QTest::keyClick(&Get("typeBox"), Qt::Key_Return);
  LeaveField();
  EXPECT_EQ(TheFilter().Type, "My own");
  EXPECT_EQ(Get<QComboBox>("typeBox").count(), 5);
}

TEST_F(MainWindowFieldsTest, TypeIsNotCompletedFromTheList) {
  Type("typeBox", "Con");
  LeaveField();
  EXPECT_EQ(TheFilter().Type, "Con");
}

TEST_F(MainWindowFieldsTest, EnterInAFieldRunsNoCommand) {
  for (const char* name : {"nameEdit", "versionEdit", "authorEdit", "languageEdit"}) {
    Get(name).setFocus(Qt::TabFocusReason);
    QTest::keyClick(&Get(name), Qt::Key_Return);
    EXPECT_TRUE(window_->isVisible()) << name;
  }
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(MainWindowFieldsTest, EnterInDescriptionBreaksTheLineWithCrLf) {
  TypeInto(Get("descriptionEdit"), "a");
  QTest::keyClick(&Get("descriptionEdit"), Qt::Key_Return);
  QTest::keyClicks(&Get("descriptionEdit"), QStringLiteral("b"));
  LeaveField();
  EXPECT_EQ(TheFilter().Description, "a\r\nb");
}

TEST_F(MainWindowFieldsTest, AutoIncrementBoxIsStoredAtOnce) {
  ClickOn("autoIncrementBox");
  EXPECT_TRUE(IsChecked("autoIncrementBox"));
  EXPECT_EQ(TheFilter().AutoIncrement, 1);
  EXPECT_FALSE(Doc().Saved);
  Doc().Saved = true;
  ClickOn("autoIncrementBox");
  EXPECT_EQ(TheFilter().AutoIncrement, 0);
  EXPECT_FALSE(Doc().Saved);
}

TEST_F(MainWindowFieldsTest, ShowInEditorBoxIsStoredAtOnce) {
  Get("showWhenLockedBox").setFocus(Qt::TabFocusReason);
  QTest::keyClick(&Get("showWhenLockedBox"), Qt::Key_Space);
  EXPECT_EQ(TheFilter().ShowInEditorWhenLocked, 1);
  EXPECT_FALSE(Doc().Saved);
}

TEST_F(MainWindowFieldsTest, AutoUpdateBoxIsNoChangeOfTheDocument) {
  ClickOn("autoUpdateBox");
  EXPECT_TRUE(IsChecked("autoUpdateBox"));
  EXPECT_TRUE(Doc().Saved);
}

TEST_F(MainWindowFieldsTest, AllBytesGoFromDescriptionToTheFileAndBack) {
  std::string bytes;
  for (int byte = 1; byte < 256; ++byte) bytes += static_cast<char>(byte);
  bytes += "\r\na\rb\nc\r\r\n\n\rd\r";
  Filter filter;
  filter.Description = filter.Name = filter.Author = filter.Language = filter.Type = bytes;
  window_->LoadDocument(WriteFilter("in.zvf", filter));
  for (const char* name :
       {"nameEdit", "typeBox", "authorEdit", "languageEdit", "descriptionEdit"}) {
    Get(name).setFocus(Qt::TabFocusReason);
  }
  LeaveField();
  EXPECT_EQ(TheFilter(), filter);
  Get("descriptionEdit").setFocus(Qt::TabFocusReason);
  QTest::keyClick(&Get("descriptionEdit"), Qt::Key_End, Qt::ControlModifier);
  QTest::keyClick(&Get("descriptionEdit"), Qt::Key_Return);
  ExpectSaveAs(PathOf("in.zvf"), PathOf("out.zvf"));
  window_->SaveAs();
  EXPECT_EQ(ReadFilter("out.zvf").Description, bytes + "\r\n");
  EXPECT_EQ(ReadFilter("out.zvf").Name, bytes);
  EXPECT_EQ(ReadFilter("out.zvf").Type, bytes);
}

TEST_F(MainWindowFieldsTest, WheelOverTypeChangesNothingWithoutTheFocus) {
  TheFilter().Type = "Phonetic";
  window_->RefreshFields();
  Get("nameEdit").setFocus(Qt::TabFocusReason);
  auto& type = Get<QComboBox>("typeBox");
  const auto turn = [&type] {
    const QPoint place = type.rect().center();
    QWheelEvent event(place, type.mapToGlobal(place), QPoint(), QPoint(0, -120), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&type, &event);
  };
  turn();
  EXPECT_EQ(type.currentText(), "Phonetic");
  EXPECT_TRUE(Get("nameEdit").hasFocus());
  type.setFocus(Qt::TabFocusReason);
  turn();
  EXPECT_EQ(type.currentText(), "Phraseological");
}

TEST_F(MainWindowFieldsTest, ArrowKeysGoOnFromTheTypeOfTheFilter) {
  TheFilter().Type = "Phonetic";
  window_->RefreshFields();
  auto& type = Get<QComboBox>("typeBox");
  type.setFocus(Qt::TabFocusReason);
  QTest::keyClick(&type, Qt::Key_Down);
  EXPECT_EQ(type.currentText(), "Phraseological");
}

TEST_F(MainWindowFieldsTest, WhatStandsBehindAZeroByteStaysUntilTheFieldIsChanged) {
  TheFilter().Name = std::string("ab\0cd", 5);
  window_->RefreshFields();
  TypeInto(Get("nameEdit"), {});
  LeaveField();
  EXPECT_EQ(TheFilter().Name, std::string("ab\0cd", 5));
  TypeInto(Get("nameEdit"), QStringLiteral("x"));
  LeaveField();
  EXPECT_EQ(TheFilter().Name, "x");
}

}  // namespace
}  // namespace zarvo
