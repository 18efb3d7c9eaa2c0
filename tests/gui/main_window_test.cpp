#include "app/main_window.h"

#include <unistd.h>

#include <QAbstractItemView>
#include <QAccessible>
#include <QLabel>
#include <QProgressBar>
#include <QWindow>
#include <algorithm>
#include <filesystem>

#include "app/about_dialog.h"
#include "tests/gui/main_window_fixture.h"
#include "tests/support/builders.h"
#include "ui/icon_button.h"

namespace zarvo {
namespace {

using testing::Find;
using testing::kUntitled;
using testing::TypeInto;

class MainWindowTest : public testing::MainWindowFixture {
 protected:
  // A changed document: the name was typed, and is committed.
  void Change() {
    Type("nameEdit", "changed");
    LeaveField();
    ASSERT_FALSE(Doc().Saved);
    ASSERT_EQ(TheFilter().Name, "changed");
  }

  // The menu that the click on this button opens.
  QMenu* OpenMenu(const char* button) {
    ClickOn(button);
    return qobject_cast<QMenu*>(QApplication::activePopupWidget());
  }
};

std::vector<std::string> Entries(const QMenu& menu) {
  std::vector<std::string> texts;
  for (const QAction* action : menu.actions()) texts.push_back(action->text().toStdString());
  return texts;
}

void Choose(QMenu& menu, int index) {
  QAction* action = menu.actions().at(index);
  ASSERT_TRUE(action->isEnabled());
  QTest::mouseClick(&menu, Qt::LeftButton, {}, menu.actionGeometry(action).center());
}

zarvo::Filter Counted() {
  Filter filter = testing::FilterOf(
      {testing::Replace(testing::Of({testing::Str("a")}, 0), testing::Of({testing::Str("b")}, 0))},
      {testing::SetOf("s", {}), testing::SetOf("t", {})},
      {testing::FunctionOf("f", {}), testing::FunctionOf("g", {}), testing::FunctionOf("h", {})});
  filter.Name = "n";
  filter.Version = 42;
  filter.AutoIncrement = 0;
  filter.Author = "a";
  filter.Language = "l";
  filter.Type = "Phonetic";
  filter.Description = "d";
  return filter;
}

// ---- What the window shows

TEST_F(MainWindowTest, BeginsEmptyUntitledAndSaved) {
  EXPECT_EQ(window_->windowTitle(), kUntitled);
  EXPECT_TRUE(Doc().Saved);
  EXPECT_TRUE(Doc().Path.isEmpty());
  EXPECT_EQ(TheFilter(), Filter());
  for (const char* edit : {"nameEdit", "authorEdit", "languageEdit"}) EXPECT_EQ(TextOf(edit), "");
  EXPECT_EQ(TextOf("versionEdit"), "0");
  EXPECT_EQ(Get<QComboBox>("typeBox").currentText(), "");
  EXPECT_EQ(Get<ByteTextEdit>("descriptionEdit").Bytes(), "");
  for (const char* count : {"rulesCount", "functionsCount", "setsCount"}) {
    EXPECT_EQ(TextOf(count), "0");
    EXPECT_TRUE(Get<QLineEdit>(count).isReadOnly());
  }
  for (const char* box : {"autoIncrementBox", "showWhenLockedBox", "lockBox", "autoUpdateBox"}) {
    EXPECT_FALSE(IsChecked(box)) << box;
  }
}

TEST_F(MainWindowTest, HasItsLabelsTipsAndList) {
  const std::pair<const char*, const char*> tips[] = {{"newButton", "New"},
                                                      {"openButton", "Open"},
                                                      {"saveButton", "Save/Save as"},
                                                      {"mergeButton", "Merge"},
                                                      {"checkButton", "Integrity check"},
                                                      {"helpButton", "Help"},
                                                      {"aboutButton", "About Zarvo Composer"},
                                                      {"exitButton", "Exit"}};
  for (const auto& [name, tip] : tips) {
    auto& button = Get<IconButton>(name);
    EXPECT_EQ(button.toolTip().toStdString(), tip);
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&button)->text(QAccessible::Name).toStdString(),
              tip);
    EXPECT_FALSE(button.icon().isNull()) << name;
    EXPECT_FALSE(button.HotIcon().isNull()) << name;
    EXPECT_EQ(button.size(), QSize(32, 32)) << name;
  }
  const std::pair<const char*, const char*> buttons[] = {
      {"autoIncrementBox", "Auto-increment"},
      {"showWhenLockedBox", "Show in editor when locked"},
      {"lockBox", "Lock"},
      {"setPasswordButton", "Set password..."},
      {"editRulesButton", "Edit..."},
      {"editFunctionsButton", "Edit..."},
      {"editSetsButton", "Edit..."},
      {"autoUpdateBox", "Auto-update"},
      {"showPreviewButton", "Show..."}};
  for (const auto& [name, text] : buttons) {
    EXPECT_EQ(Get<QAbstractButton>(name).text().toStdString(), text);
  }
  const std::pair<const char*, const char*> labels[] = {
      {"nameEdit", "Name"},     {"versionEdit", "Version"},      {"typeBox", "Type"},
      {"authorEdit", "Author"}, {"languageEdit", "Language"},    {"descriptionEdit", "Description"},
      {"rulesCount", "Rules"},  {"functionsCount", "Functions"}, {"setsCount", "Sets"}};
  for (const auto& [name, text] : labels) {
    EXPECT_EQ(Get(name).accessibleName().toStdString(), text);
  }
  const auto& type = Get<QComboBox>("typeBox");
  ASSERT_EQ(type.count(), 5);
  const char* types[] = {"Conversion", "Orthographic", "Phonetic", "Phraseological", "Typographic"};
  for (int i = 0; i < 5; ++i) EXPECT_EQ(type.itemText(i).toStdString(), types[i]);
}

TEST_F(MainWindowTest, ObjectNamesAreUnique) {
  QStringList names;
  for (const QWidget* control : window_->findChildren<QWidget*>()) {
    const QString name = control->objectName();
    if (!name.isEmpty() && !name.startsWith(QStringLiteral("qt_"))) names += name;
  }
  EXPECT_EQ(names.removeDuplicates(), 0);
}

TEST_F(MainWindowTest, RefreshPutsTheFilterIntoAllControlsAndIsNoChange) {
  TheFilter() = Counted();
  TheFilter().AutoIncrement = 7;
  TheFilter().ShowInEditorWhenLocked = 7;
  window_->RefreshFields();
  EXPECT_EQ(TextOf("nameEdit"), "n");
  EXPECT_EQ(TextOf("versionEdit"), "42");
  EXPECT_EQ(TextOf("authorEdit"), "a");
  EXPECT_EQ(TextOf("languageEdit"), "l");
  EXPECT_EQ(Get<QComboBox>("typeBox").currentText(), "Phonetic");
  EXPECT_EQ(Get<ByteTextEdit>("descriptionEdit").Bytes(), "d");
  EXPECT_TRUE(IsChecked("autoIncrementBox"));
  EXPECT_TRUE(IsChecked("showWhenLockedBox"));
  EXPECT_FALSE(IsChecked("lockBox"));
  EXPECT_EQ(TextOf("rulesCount"), "1");
  EXPECT_EQ(TextOf("functionsCount"), "3");
  EXPECT_EQ(TextOf("setsCount"), "2");
  QApplication::processEvents();
  EXPECT_TRUE(Doc().Saved);
}

TEST_F(MainWindowTest, TypeOutsideTheListIsShown) {
  TheFilter().Type = "My own";
  window_->RefreshFields();
  EXPECT_EQ(Get<QComboBox>("typeBox").currentText(), "My own");
  EXPECT_EQ(Get<QComboBox>("typeBox").count(), 5);
}

TEST_F(MainWindowTest, TextsOfTheFilterAreShownPlainly) {
  const char* text = "a & b &c <b>bold</b> &amp; [*]";
  TheFilter().Name = TheFilter().Author = TheFilter().Language = text;
  TheFilter().Type = TheFilter().Description = text;
  window_->RefreshFields();
  for (const char* edit : {"nameEdit", "authorEdit", "languageEdit"}) {
    EXPECT_EQ(TextOf(edit).toStdString(), text);
  }
  EXPECT_EQ(Get<QComboBox>("typeBox").currentText().toStdString(), text);
  EXPECT_EQ(Get<ByteTextEdit>("descriptionEdit").document()->toRawText().toStdString(), text);
}

TEST_F(MainWindowTest, CaptionIsTheFilesName) {
  const std::pair<const char*, const char*> captions[] = {
      {"", "Untitled - Zarvo Composer"},
      {"/dir/f.zvf", "f.zvf - Zarvo Composer"},
      {"C:\\dir\\f.zvf", "f.zvf - Zarvo Composer"},
      {"f.zvf", ".zvf - Zarvo Composer"},
      {"filter.zvf", "ilter.zvf - Zarvo Composer"},
      {"f", " - Zarvo Composer"},
      {"/f", "f - Zarvo Composer"},
      {"/dir/", " - Zarvo Composer"},
      {"\"/dir/f.zvf\"", "f.zvf\" - Zarvo Composer"},
      {"/dir/a & <b>.zvf", "a & <b>.zvf - Zarvo Composer"}};
  for (const auto& [path, caption] : captions) {
    Doc().Path = QString::fromLatin1(path);
    window_->RefreshTitle();
    EXPECT_EQ(Caption(), caption);
  }
}

// ---- The fields

TEST_F(MainWindowTest, LeavingATextFieldStoresIt) {
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

TEST_F(MainWindowTest, EachKeyClearsTheSavedFlag) {
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

TEST_F(MainWindowTest, LeavingVersionStoresItsLeadingInteger) {
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

TEST_F(MainWindowTest, VersionTextWithLettersStoresItsLeadingDigits) {
  // However the text got there.
  Get<QLineEdit>("versionEdit").setFocus();
  Get<QLineEdit>("versionEdit").setText(QStringLiteral("12abc"));
  LeaveField();
  EXPECT_EQ(TheFilter().Version, 12);
  Get<QLineEdit>("versionEdit").setFocus();
  Get<QLineEdit>("versionEdit").setText(QStringLiteral("abc12"));
  LeaveField();
  EXPECT_EQ(TheFilter().Version, 0);
}

TEST_F(MainWindowTest, PassingThroughTheFieldsChangesNothing) {
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

TEST_F(MainWindowTest, TypeChosenFromTheListIsStoredAndLeavesTheSavedFlag) {
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

TEST_F(MainWindowTest, TypeClickedInTheDroppedListIsStoredAndLeavesTheSavedFlag) {
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

TEST_F(MainWindowTest, TypedTypeDoesNotEnterTheList) {
  Type("typeBox", "My own");
  QTest::keyClick(&Get("typeBox"), Qt::Key_Return);
  LeaveField();
  EXPECT_EQ(TheFilter().Type, "My own");
  EXPECT_EQ(Get<QComboBox>("typeBox").count(), 5);
}

TEST_F(MainWindowTest, TypeIsNotCompletedFromTheList) {
  Type("typeBox", "Con");
  LeaveField();
  EXPECT_EQ(TheFilter().Type, "Con");
}

TEST_F(MainWindowTest, EnterInAFieldRunsNoCommand) {
  for (const char* name : {"nameEdit", "versionEdit", "authorEdit", "languageEdit"}) {
    Get(name).setFocus(Qt::TabFocusReason);
    QTest::keyClick(&Get(name), Qt::Key_Return);
    EXPECT_TRUE(window_->isVisible()) << name;
  }
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(MainWindowTest, EnterInDescriptionBreaksTheLineWithCrLf) {
  TypeInto(Get("descriptionEdit"), "a");
  QTest::keyClick(&Get("descriptionEdit"), Qt::Key_Return);
  QTest::keyClicks(&Get("descriptionEdit"), QStringLiteral("b"));
  LeaveField();
  EXPECT_EQ(TheFilter().Description, "a\r\nb");
}

TEST_F(MainWindowTest, AutoIncrementBoxIsStoredAtOnce) {
  ClickOn("autoIncrementBox");
  EXPECT_TRUE(IsChecked("autoIncrementBox"));
  EXPECT_EQ(TheFilter().AutoIncrement, 1);
  EXPECT_FALSE(Doc().Saved);
  Doc().Saved = true;
  ClickOn("autoIncrementBox");
  EXPECT_EQ(TheFilter().AutoIncrement, 0);
  EXPECT_FALSE(Doc().Saved);
}

TEST_F(MainWindowTest, ShowInEditorBoxIsStoredAtOnce) {
  Get("showWhenLockedBox").setFocus(Qt::TabFocusReason);
  QTest::keyClick(&Get("showWhenLockedBox"), Qt::Key_Space);
  EXPECT_EQ(TheFilter().ShowInEditorWhenLocked, 1);
  EXPECT_FALSE(Doc().Saved);
}

TEST_F(MainWindowTest, AutoUpdateBoxIsNoChangeOfTheDocument) {
  ClickOn("autoUpdateBox");
  EXPECT_TRUE(IsChecked("autoUpdateBox"));
  EXPECT_TRUE(Doc().Saved);
}

TEST_F(MainWindowTest, AllBytesGoFromDescriptionToTheFileAndBack) {
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

// ---- New

TEST_F(MainWindowTest, NewMakesAnEmptyUntitledDocument) {
  window_->LoadDocument(WriteFilter("f.zvf", Counted()));
  ASSERT_EQ(TextOf("rulesCount"), "1");
  ClickOn("newButton");
  EXPECT_EQ(TheFilter(), Filter());
  EXPECT_TRUE(Doc().Path.isEmpty());
  EXPECT_TRUE(Doc().Saved);
  EXPECT_EQ(window_->windowTitle(), kUntitled);
  EXPECT_EQ(TextOf("nameEdit"), "");
  EXPECT_EQ(TextOf("rulesCount"), "0");
  EXPECT_EQ(TextOf("functionsCount"), "0");
  EXPECT_EQ(TextOf("setsCount"), "0");
}

TEST_F(MainWindowTest, CtrlNIsNewAndCancelAbandonsIt) {
  Change();
  ExpectSaveQuestion(Answer::Cancel);
  Press(Qt::Key_N, Qt::ControlModifier);
  EXPECT_TRUE(dialogs_.IsDone());
  EXPECT_EQ(TheFilter().Name, "changed");
  EXPECT_FALSE(Doc().Saved);
  ExpectSaveQuestion(Answer::No);
  Press(Qt::Key_N, Qt::ControlModifier);
  EXPECT_EQ(TheFilter().Name, "");
  EXPECT_TRUE(Doc().Saved);
}

TEST_F(MainWindowTest, NewAfterYesSavesFirst) {
  window_->LoadDocument(WriteFilter("f.zvf", Filter()));
  Change();
  ExpectSaveQuestion(Answer::Yes);
  ClickOn("newButton");
  EXPECT_EQ(ReadFilter("f.zvf").Name, "changed");
  EXPECT_EQ(TheFilter().Name, "");
  EXPECT_EQ(window_->windowTitle(), kUntitled);
}

TEST_F(MainWindowTest, NewAfterYesAndACancelledSaveAsStillMakesANewDocument) {
  Change();
  ExpectSaveQuestion(Answer::Yes);
  ExpectSaveAs({}, std::nullopt);
  ClickOn("newButton");
  EXPECT_EQ(TheFilter(), Filter());
  EXPECT_TRUE(Doc().Saved);
}

TEST_F(MainWindowTest, TypedTextThatStillHasTheFocusIsAskedAboutAndSaved) {
  window_->LoadDocument(WriteFilter("f.zvf", Filter()));
  Type("nameEdit", "typed");
  ExpectSaveQuestion(Answer::Yes);
  Press(Qt::Key_N, Qt::ControlModifier);
  EXPECT_EQ(ReadFilter("f.zvf").Name, "typed");
  EXPECT_EQ(TextOf("nameEdit"), "");
  LeaveField();
  EXPECT_EQ(TheFilter().Name, "");
}

// ---- Open

TEST_F(MainWindowTest, OpenLoadsTheChosenFile) {
  ExpectOpen(WriteFilter("f.zvf", Counted()));
  ClickOn("openButton");
  EXPECT_EQ(TheFilter(), Counted());
  EXPECT_EQ(Doc().Path, PathOf("f.zvf"));
  EXPECT_EQ(Caption(), "f.zvf - Zarvo Composer");
  EXPECT_EQ(TextOf("nameEdit"), "n");
  EXPECT_EQ(TextOf("functionsCount"), "3");
  QApplication::processEvents();
  EXPECT_TRUE(Doc().Saved);
  EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(MainWindowTest, CtrlOIsOpenAndACancelledDialogLeavesAllUnchanged) {
  window_->LoadDocument(WriteFilter("f.zvf", Counted()));
  Change();
  const Filter before = TheFilter();
  ExpectSaveQuestion(Answer::No);
  ExpectOpen(std::nullopt);
  Press(Qt::Key_O, Qt::ControlModifier);
  EXPECT_TRUE(dialogs_.IsDone());
  EXPECT_EQ(TheFilter(), before);
  EXPECT_EQ(Doc().Path, PathOf("f.zvf"));
  EXPECT_FALSE(Doc().Saved);
}

TEST_F(MainWindowTest, OpenAsksToSaveAndCancelShowsNoFileDialog) {
  Change();
  ExpectSaveQuestion(Answer::Cancel);
  ClickOn("openButton");
  EXPECT_TRUE(dialogs_.IsDone());
  EXPECT_EQ(TheFilter().Name, "changed");
}

TEST_F(MainWindowTest, OpenAfterYesSavesFirst) {
  window_->LoadDocument(WriteFilter("old.zvf", Filter()));
  Change();
  ExpectSaveQuestion(Answer::Yes);
  ExpectOpen(WriteFilter("f.zvf", Counted()));
  ClickOn("openButton");
  EXPECT_EQ(ReadFilter("old.zvf").Name, "changed");
  EXPECT_EQ(TheFilter(), Counted());
}

TEST_F(MainWindowTest, MissingFileIsReportedAndItsPathStays) {
  window_->LoadDocument(WriteFilter("f.zvf", Counted()));
  const QString missing = PathOf("missing & <b>.zvf");
  ExpectOpen(missing);
  ExpectExclamation("Error loading filter " + missing.toStdString());
  ClickOn("openButton");
  EXPECT_EQ(Doc().Path, missing);
  EXPECT_EQ(Caption(), "missing & <b>.zvf - Zarvo Composer");
  EXPECT_EQ(TheFilter(), Counted());
  EXPECT_TRUE(Doc().Saved);
  EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(MainWindowTest, DamagedFileIsReportedAndWhatCouldBeReadIsShown) {
  Filter filter = Counted();
  const std::string bytes = FilterFileBytes(filter);
  const std::string path = folder_.Write("cut.zvf", bytes.substr(0, bytes.size() - 20));
  ExpectOpen(QString::fromStdString(path));
  ExpectExclamation("Error loading filter " + path);
  ClickOn("openButton");
  EXPECT_EQ(TextOf("nameEdit"), "n");
  EXPECT_EQ(TextOf("versionEdit"), "42");
  EXPECT_EQ(TextOf("rulesCount"), "1");
  EXPECT_EQ(Caption(), "cut.zvf - Zarvo Composer");
  EXPECT_TRUE(Doc().Saved);
}

TEST_F(MainWindowTest, FileOfAnotherKindIsReported) {
  const std::string path = folder_.Write("other.zvf", "nothing of ours");
  ExpectExclamation("Error loading filter " + path);
  window_->LoadDocument(QString::fromStdString(path));
  EXPECT_EQ(Caption(), "other.zvf - Zarvo Composer");
  EXPECT_TRUE(Doc().Saved);
}

TEST_F(MainWindowTest, NewerFormatAnsweredNoShowsNothingMore) {
  Filter filter = Counted();
  std::string bytes = FilterFileBytes(filter);
  bytes[13] = 7;
  const std::string path = folder_.Write("newer.zvf", bytes);
  dialogs_.ExpectMessage(MessageIcon::Question, LoadNewerFormatText(7), MessageButtons::YesNo,
                         Answer::No);
  window_->LoadDocument(QString::fromStdString(path));
  EXPECT_TRUE(dialogs_.IsDone());
  EXPECT_EQ(TextOf("nameEdit"), "");
  EXPECT_EQ(Caption(), "newer.zvf - Zarvo Composer");
  EXPECT_TRUE(Doc().Saved);
  EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(MainWindowTest, NewerFormatAnsweredYesIsLoaded) {
  Filter filter = Counted();
  std::string bytes = FilterFileBytes(filter);
  bytes[13] = 7;
  const std::string path = folder_.Write("newer.zvf", bytes);
  dialogs_.ExpectMessage(
      MessageIcon::Question,
      "The filter you're about to load uses file format version 7, while the newest file format "
      "version I know about is 6. I may attempt to read this file, but success is not guaranteed. "
      "Attempting to read won't damage the filter, but may cause your current application to "
      "crash. Would you like to try it?",
      MessageButtons::YesNo, Answer::Yes);
  window_->LoadDocument(QString::fromStdString(path));
  EXPECT_EQ(TextOf("nameEdit"), "n");
  EXPECT_EQ(TextOf("setsCount"), "2");
}

// ---- Save

TEST_F(MainWindowTest, CtrlSOnAnUntitledFilterAsksForThePath) {
  Type("nameEdit", "typed");
  ExpectSaveAs({}, PathOf("new.zvf"));
  Press(Qt::Key_S, Qt::ControlModifier);
  EXPECT_TRUE(dialogs_.IsDone());
  EXPECT_EQ(ReadFilter("new.zvf").Name, "typed");
  EXPECT_EQ(Doc().Path, PathOf("new.zvf"));
  EXPECT_EQ(Caption(), "new.zvf - Zarvo Composer");
  EXPECT_TRUE(Doc().Saved);
  EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(MainWindowTest, CancelledSaveAsLeavesAllUnchanged) {
  Change();
  ExpectSaveAs({}, std::nullopt);
  window_->Save();
  EXPECT_TRUE(Doc().Path.isEmpty());
  EXPECT_FALSE(Doc().Saved);
  EXPECT_EQ(window_->windowTitle(), kUntitled);
  EXPECT_EQ(folder_.Count(), 0U);
}

TEST_F(MainWindowTest, SaveWritesToThePathWithoutAQuestion) {
  window_->LoadDocument(WriteFilter("f.zvf", Counted()));
  Type("authorEdit", "new author");
  Press(Qt::Key_S, Qt::ControlModifier);
  Filter expected = Counted();
  expected.Author = "new author";
  EXPECT_EQ(ReadFilter("f.zvf"), expected);
  EXPECT_TRUE(Doc().Saved);
}

TEST_F(MainWindowTest, AutoIncrementRaisesTheVersionAtEverySave) {
  Filter filter = Named("auto");
  filter.AutoIncrement = 1;
  filter.Version = 7;
  window_->LoadDocument(WriteFilter("f.zvf", filter));
  EXPECT_EQ(TextOf("versionEdit"), "7");
  Press(Qt::Key_S, Qt::ControlModifier);
  EXPECT_EQ(ReadFilter("f.zvf").Version, 8);
  EXPECT_EQ(TextOf("versionEdit"), "8");
  EXPECT_TRUE(Doc().Saved);
  Press(Qt::Key_S, Qt::ControlModifier);
  EXPECT_EQ(ReadFilter("f.zvf").Version, 9);
  ExpectSaveAs(PathOf("f.zvf"), PathOf("g.zvf"));
  window_->SaveAs();
  EXPECT_EQ(ReadFilter("g.zvf").Version, 10);
  EXPECT_EQ(ReadFilter("f.zvf").Version, 9);
}

TEST_F(MainWindowTest, SaveMenuOpensBelowItsButtonAndDispatches) {
  window_->LoadDocument(WriteFilter("f.zvf", Counted()));
  Change();
  QMenu* menu = OpenMenu("saveButton");
  ASSERT_NE(menu, nullptr);
  const auto& button = Get("saveButton");
  EXPECT_EQ(menu->pos(), button.mapToGlobal(QPoint(0, button.height())));
  ASSERT_EQ(Entries(*menu), (std::vector<std::string>{"Save", "Save As..."}));
  Choose(*menu, 0);
  EXPECT_EQ(ReadFilter("f.zvf").Name, "changed");
  EXPECT_TRUE(Doc().Saved);
  ExpectSaveAs(PathOf("f.zvf"), PathOf("g.zvf"));
  menu = OpenMenu("saveButton");
  ASSERT_NE(menu, nullptr);
  Choose(*menu, 1);
  EXPECT_TRUE(dialogs_.IsDone());
  EXPECT_EQ(ReadFilter("g.zvf").Name, "changed");
  EXPECT_EQ(Doc().Path, PathOf("g.zvf"));
  EXPECT_EQ(Caption(), "g.zvf - Zarvo Composer");
}

TEST_F(MainWindowTest, FailedSaveIsReportedAndTheDocumentStaysUnsaved) {
  Change();
  const QString path = PathOf("missing/f.zvf");
  ExpectSaveAs({}, path);
  ExpectExclamation("Error saving file " + path.toStdString());
  window_->Save();
  EXPECT_TRUE(dialogs_.IsDone());
  EXPECT_FALSE(Doc().Saved);
  EXPECT_EQ(Doc().Path, path);
  EXPECT_EQ(Caption(), "f.zvf - Zarvo Composer");
  EXPECT_EQ(TheFilter().Name, "changed");
  EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(MainWindowTest, FailedSaveOfASavedDocumentLeavesItSaved) {
  const QString path = WriteFilter("f.zvf", Named("f"));
  window_->LoadDocument(path);
  std::filesystem::remove(path.toStdString());
  std::filesystem::create_directory(path.toStdString());
  ExpectExclamation("Error saving file " + path.toStdString());
  window_->Save();
  EXPECT_TRUE(Doc().Saved);
}

TEST_F(MainWindowTest, OldFormatIsRaisedOrKeptByTheAnswer) {
  Filter filter = Named("old");
  filter.FormatVersion = 5;
  const std::string question =
      "The filter you're about to save uses file format version 5, while the newest file format "
      "version is 6. Would you like to save this filter in the newest format? Otherwise some "
      "filter properties won't be stored. On the other hand, applications using older versions of "
      "ZarvoFilter library may not be able to read this file.";
  window_->LoadDocument(WriteFilter("f.zvf", filter));
  dialogs_.ExpectMessage(MessageIcon::Question, question, MessageButtons::YesNo, Answer::No);
  window_->Save();
  EXPECT_EQ(ReadFilter("f.zvf").FormatVersion, 5);
  EXPECT_TRUE(Doc().Saved);
  dialogs_.ExpectMessage(MessageIcon::Question, question, MessageButtons::YesNo, Answer::Yes);
  window_->Save();
  EXPECT_EQ(ReadFilter("f.zvf").FormatVersion, 6);
  window_->Save();
}

// ---- About, help and the preview

TEST_F(MainWindowTest, AboutShowsTheProgramItsVersionAndPictures) {
  bool shown = false;
  testing::WithNextDialog<AboutDialog>([&shown](AboutDialog& about) {
    shown = true;
    EXPECT_TRUE(about.isModal());
    EXPECT_EQ(Find<QLabel>(about, "programLabel").text(), "Zarvo Composer");
    EXPECT_EQ(Find<QLabel>(about, "versionLabel").text(), "version 1.3 revision 4");
    EXPECT_FALSE(Find<QLabel>(about, "iconLabel").pixmap().isNull());
    const auto& splash = Find<QLabel>(about, "splashLabel");
    EXPECT_FALSE(splash.pixmap().isNull());
    EXPECT_GT(splash.y(), Find<QLabel>(about, "versionLabel").y());
    ASSERT_EQ(about.findChildren<QAbstractButton*>().size(), 1);
    EXPECT_EQ(Find<QAbstractButton>(about, "okButton").text(), "OK");
    testing::Click(Find<QWidget>(about, "okButton"));
  });
  ClickOn("aboutButton");
  EXPECT_TRUE(shown);
}

TEST_F(MainWindowTest, PreviewShowsItsWindowWithTheBarAtZero) {
  PreviewWindow& preview = window_->Preview();
  EXPECT_FALSE(preview.isVisible());
  Find<QProgressBar>(preview, "progressBar").setValue(50);
  Find<ByteTextEdit>(preview, "originalEdit").SetBytes("text");
  ClickOn("showPreviewButton");
  EXPECT_TRUE(preview.isVisible());
  EXPECT_EQ(Find<QProgressBar>(preview, "progressBar").value(), 0);
  EXPECT_EQ(Find<ByteTextEdit>(preview, "originalEdit").Bytes(), "text");
}

TEST_F(MainWindowTest, NewAndOpenResetThePreviewAndKeepTheOriginal) {
  PreviewWindow& preview = window_->Preview();
  auto& original = Find<ByteTextEdit>(preview, "originalEdit");
  auto& modified = Find<ByteTextEdit>(preview, "modifiedEdit");
  auto& bar = Find<QProgressBar>(preview, "progressBar");
  const QString path = WriteFilter("f.zvf", Counted());
  for (const bool open : {false, true}) {
    original.SetBytes("text");
    modified.SetBytes("other");
    bar.setValue(50);
    if (open) {
      window_->LoadDocument(path);
    } else {
      window_->NewDocument();
    }
    EXPECT_EQ(original.Bytes(), "text");
    EXPECT_EQ(modified.Bytes(), "");
    EXPECT_EQ(bar.value(), 0);
  }
}

TEST_F(MainWindowTest, CheckingAutoUpdateUpdatesThePreviewOnce) {
  window_->LoadDocument(WriteFilter("f.zvf", Counted()));
  Find<ByteTextEdit>(window_->Preview(), "originalEdit").SetBytes("aca");
  auto& modified = Find<ByteTextEdit>(window_->Preview(), "modifiedEdit");
  ClickOn("autoUpdateBox");
  EXPECT_EQ(modified.Bytes(), "bcb");
  modified.SetBytes("kept");
  ClickOn("autoUpdateBox");
  EXPECT_EQ(modified.Bytes(), "kept");
}

// ---- Exit. Last, for the program stays one that is quitting, whose fields commit nothing.

TEST_F(MainWindowTest, ExitEndsASavedProgramAtOnce) {
  EXPECT_EQ(RunProgram([this] { ClickOn("exitButton"); }), 0);
  EXPECT_TRUE(ProgramIsQuitting());
  EXPECT_FALSE(window_->isVisible());
}

TEST_F(MainWindowTest, EscapeIsExit) {
  EXPECT_EQ(RunProgram([this] { Press(Qt::Key_Escape); }), 0);
  EXPECT_FALSE(window_->isVisible());
}

TEST_F(MainWindowTest, ExitFromAFieldOfALockedFilterRaisesNoWarning) {
  LockFilter();
  Get("nameEdit").setFocus(Qt::TabFocusReason);
  EXPECT_EQ(RunProgram([this] { Press(Qt::Key_Escape); }), 0);
  EXPECT_FALSE(window_->isVisible());
}

TEST_F(MainWindowTest, CloseBoxOfASavedProgramAsksNothing) {
  EXPECT_EQ(RunProgram([this] { window_->close(); }), 0);
  EXPECT_FALSE(window_->isVisible());
}

TEST_F(MainWindowTest, ExitByButtonOrEscapeAsksOnceAndCancelGoesOn) {
  ClickOn("autoIncrementBox");
  const bool was_quitting = ProgramIsQuitting();
  ExpectSaveQuestion(Answer::Cancel);
  EXPECT_EQ(RunProgram([this] { ClickOn("exitButton"); }), std::nullopt);
  ExpectSaveQuestion(Answer::Cancel);
  EXPECT_EQ(RunProgram([this] { Press(Qt::Key_Escape); }), std::nullopt);
  EXPECT_TRUE(window_->isVisible());
  EXPECT_EQ(ProgramIsQuitting(), was_quitting);
  EXPECT_FALSE(Doc().Saved);
  ExpectSaveQuestion(Answer::No);
  EXPECT_EQ(RunProgram([this] { Press(Qt::Key_Escape); }), 0);
}

TEST_F(MainWindowTest, ExitAfterYesSavesAndEnds) {
  window_->LoadDocument(WriteFilter("f.zvf", Filter()));
  ClickOn("autoIncrementBox");
  ExpectSaveQuestion(Answer::Yes);
  EXPECT_EQ(RunProgram([this] { ClickOn("exitButton"); }), 0);
  EXPECT_EQ(ReadFilter("f.zvf").AutoIncrement, 1);
}

TEST_F(MainWindowTest, ExitAfterYesAndACancelledSaveAsEndsAllTheSame) {
  ClickOn("autoIncrementBox");
  ExpectSaveQuestion(Answer::Yes);
  ExpectSaveAs({}, std::nullopt);
  EXPECT_EQ(RunProgram([this] { ClickOn("exitButton"); }), 0);
}

TEST_F(MainWindowTest, CloseBoxAfterYesAsksOnce) {
  window_->LoadDocument(WriteFilter("f.zvf", Filter()));
  ClickOn("autoIncrementBox");
  ExpectSaveQuestion(Answer::Yes);
  EXPECT_EQ(RunProgram([this] { window_->close(); }), 0);
  EXPECT_EQ(ReadFilter("f.zvf").AutoIncrement, 1);
}

TEST_F(MainWindowTest, CloseBoxAsksTwiceAndASecondCancelGoesOn) {
  ClickOn("autoIncrementBox");
  for (const Answer first : {Answer::Cancel, Answer::No}) {
    ExpectSaveQuestion(first);
    ExpectSaveQuestion(Answer::Cancel);
    EXPECT_EQ(RunProgram([this] { window_->close(); }), std::nullopt);
    EXPECT_TRUE(dialogs_.IsDone());
    EXPECT_TRUE(window_->isVisible());
    EXPECT_FALSE(Doc().Saved);
  }
}

TEST_F(MainWindowTest, CloseBoxAfterCancelAndNoEnds) {
  ClickOn("autoIncrementBox");
  ExpectSaveQuestion(Answer::Cancel);
  ExpectSaveQuestion(Answer::No);
  EXPECT_EQ(RunProgram([this] { window_->close(); }), 0);
  EXPECT_FALSE(window_->isVisible());
}

TEST_F(MainWindowTest, CloseBoxAfterNoAndNoEnds) {
  ClickOn("autoIncrementBox");
  ExpectSaveQuestion(Answer::No);
  ExpectSaveQuestion(Answer::No);
  EXPECT_EQ(RunProgram([this] { window_->close(); }), 0);
  EXPECT_FALSE(window_->isVisible());
}

TEST_F(MainWindowTest, CloseBoxSecondYesSaves) {
  window_->LoadDocument(WriteFilter("f.zvf", Filter()));
  ClickOn("autoIncrementBox");
  ExpectSaveQuestion(Answer::No);
  ExpectSaveQuestion(Answer::Yes);
  EXPECT_EQ(RunProgram([this] { window_->close(); }), 0);
  EXPECT_EQ(ReadFilter("f.zvf").AutoIncrement, 1);
}

TEST_F(MainWindowTest, CloseBoxAsksAgainWhenTheSavingWasCancelled) {
  ClickOn("autoIncrementBox");
  ExpectSaveQuestion(Answer::Yes);
  ExpectSaveAs({}, std::nullopt);
  ExpectSaveQuestion(Answer::Cancel);
  EXPECT_EQ(RunProgram([this] { window_->close(); }), std::nullopt);
  EXPECT_TRUE(window_->isVisible());
}

}  // namespace
}  // namespace zarvo
