#include <unistd.h>

#include <QAbstractItemView>
#include <QAccessible>
#include <QLabel>
#include <QProgressBar>
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
using testing::TypeInto;

using DocumentCommandsTest = testing::MainWindowFixture;

// ---- New

TEST_F(DocumentCommandsTest, NewMakesAnEmptyUntitledDocument) {
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

TEST_F(DocumentCommandsTest, CtrlNIsNewAndCancelAbandonsIt) {
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

TEST_F(DocumentCommandsTest, NewAfterYesSavesFirst) {
  window_->LoadDocument(WriteFilter("f.zvf", Filter()));
  Change();
  ExpectSaveQuestion(Answer::Yes);
  ClickOn("newButton");
  EXPECT_EQ(ReadFilter("f.zvf").Name, "changed");
  EXPECT_EQ(TheFilter().Name, "");
  EXPECT_EQ(window_->windowTitle(), kUntitled);
}

TEST_F(DocumentCommandsTest, NewAfterYesAndACancelledSaveAsStillMakesANewDocument) {
  Change();
  ExpectSaveQuestion(Answer::Yes);
  ExpectSaveAs({}, std::nullopt);
  ClickOn("newButton");
  EXPECT_EQ(TheFilter(), Filter());
  EXPECT_TRUE(Doc().Saved);
}

TEST_F(DocumentCommandsTest, TypedTextThatStillHasTheFocusIsAskedAboutAndSaved) {
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

TEST_F(DocumentCommandsTest, OpenLoadsTheChosenFile) {
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

TEST_F(DocumentCommandsTest, CtrlOIsOpenAndACancelledDialogLeavesAllUnchanged) {
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

TEST_F(DocumentCommandsTest, OpenAsksToSaveAndCancelShowsNoFileDialog) {
  Change();
  ExpectSaveQuestion(Answer::Cancel);
  ClickOn("openButton");
  EXPECT_TRUE(dialogs_.IsDone());
  EXPECT_EQ(TheFilter().Name, "changed");
}

TEST_F(DocumentCommandsTest, OpenAfterYesSavesFirst) {
  window_->LoadDocument(WriteFilter("old.zvf", Filter()));
  Change();
  ExpectSaveQuestion(Answer::Yes);
  ExpectOpen(WriteFilter("f.zvf", Counted()));
  ClickOn("openButton");
  EXPECT_EQ(ReadFilter("old.zvf").Name, "changed");
  EXPECT_EQ(TheFilter(), Counted());
}

TEST_F(DocumentCommandsTest, MissingFileIsReportedAndItsPathStays) {
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

TEST_F(DocumentCommandsTest, DamagedFileIsReportedAndWhatCouldBeReadIsShown) {
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

TEST_F(DocumentCommandsTest, FileOfAnotherKindIsReported) {
  const std::string path = folder_.Write("other.zvf", "nothing of ours");
  ExpectExclamation("Error loading filter " + path);
  window_->LoadDocument(QString::fromStdString(path));
  EXPECT_EQ(Caption(), "other.zvf - Zarvo Composer");
  EXPECT_TRUE(Doc().Saved);
}

TEST_F(DocumentCommandsTest, NewerFormatAnsweredNoShowsNothingMore) {
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

TEST_F(DocumentCommandsTest, NewerFormatAnsweredYesIsLoaded) {
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

TEST_F(DocumentCommandsTest, CtrlSOnAnUntitledFilterAsksForThePath) {
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

TEST_F(DocumentCommandsTest, CancelledSaveAsLeavesAllUnchanged) {
  Change();
  ExpectSaveAs({}, std::nullopt);
  window_->Save();
  EXPECT_TRUE(Doc().Path.isEmpty());
  EXPECT_FALSE(Doc().Saved);
  EXPECT_EQ(window_->windowTitle(), kUntitled);
  EXPECT_EQ(folder_.Count(), 0U);
}

TEST_F(DocumentCommandsTest, SaveWritesToThePathWithoutAQuestion) {
  window_->LoadDocument(WriteFilter("f.zvf", Counted()));
  Type("authorEdit", "new author");
  Press(Qt::Key_S, Qt::ControlModifier);
  Filter expected = Counted();
  expected.Author = "new author";
  EXPECT_EQ(ReadFilter("f.zvf"), expected);
  EXPECT_TRUE(Doc().Saved);
}

TEST_F(DocumentCommandsTest, AutoIncrementRaisesTheVersionAtEverySave) {
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

TEST_F(DocumentCommandsTest, SaveMenuOpensBelowItsButtonAndDispatches) {
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

TEST_F(DocumentCommandsTest, FailedSaveIsReportedAndTheDocumentStaysUnsaved) {
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

TEST_F(DocumentCommandsTest, FailedSaveOfASavedDocumentLeavesItSaved) {
  const QString path = WriteFilter("f.zvf", Named("f"));
  window_->LoadDocument(path);
  std::filesystem::remove(path.toStdString());
  std::filesystem::create_directory(path.toStdString());
  ExpectExclamation("Error saving file " + path.toStdString());
  window_->Save();
  EXPECT_TRUE(Doc().Saved);
}

TEST_F(DocumentCommandsTest, OldFormatIsRaisedOrKeptByTheAnswer) {
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

// ---- A save that fails on the way to another document

TEST_F(DocumentCommandsTest, FailedSaveAfterYesAbandonsNewAndOpen) {
  const QString path = PathOf("missing/f.zvf");
  for (const bool open : {false, true}) {
    Doc().Path = path;
    Change();
    ExpectSaveQuestion(Answer::Yes);
    ExpectExclamation("Error saving file " + path.toStdString());
    if (open) {
      window_->OpenDocument();
    } else {
      window_->NewDocument();
    }
    EXPECT_TRUE(dialogs_.IsDone()) << "no file dialog";
    EXPECT_EQ(TheFilter().Name, "changed");
    EXPECT_FALSE(Doc().Saved);
    TheFilter().Name.clear();
    window_->RefreshFields();
  }
}

}  // namespace
}  // namespace zarvo
