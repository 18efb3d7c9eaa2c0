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

using testing::Choose;
using testing::Counted;
using testing::Entries;
using testing::Find;
using testing::kUntitled;
using testing::TypeInto;

using MainWindowTest = testing::MainWindowFixture;

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
      {"/dir/a & <b>.zvf", "a & <b>.zvf - Zarvo Composer"},
      {"/dir/a[*]b.zvf", "a[*][*]b.zvf - Zarvo Composer"}};  // one mark, as the toolkit writes it
  for (const auto& [path, caption] : captions) {
    Doc().Path = QString::fromLatin1(path);
    window_->RefreshTitle();
    EXPECT_EQ(Caption(), caption);
  }
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

TEST_F(MainWindowTest, EachCommandHasItsOwnPicture) {
  const std::pair<const char*, const char*> icons[] = {
      {"newButton", "new"},     {"openButton", "open"},   {"saveButton", "save"},
      {"mergeButton", "merge"}, {"checkButton", "check"}, {"helpButton", "help"},
      {"aboutButton", "about"}, {"exitButton", "exit"}};
  constexpr QSize kSize(24, 24);
  for (const auto& [name, icon] : icons) {
    const QString path = QStringLiteral(":/icons/") + QString::fromLatin1(icon);
    const auto& button = Get<IconButton>(name);
    EXPECT_EQ(button.icon().pixmap(kSize).toImage(),
              QIcon(path + QStringLiteral(".svg")).pixmap(kSize).toImage())
        << name;
    EXPECT_EQ(button.HotIcon().pixmap(kSize).toImage(),
              QIcon(path + QStringLiteral("-hot.svg")).pixmap(kSize).toImage())
        << name;
  }
}

TEST_F(MainWindowTest, GroupsHaveTheirLabels) {
  std::vector<std::string> texts;
  for (const QLabel* label : window_->findChildren<QLabel*>()) {
    texts.push_back(label->text().toStdString());
  }
  for (const char* text :
       {"Security:", "Stats:", "Preview:", "Name:", "Version:", "Type:", "Author:", "Language:",
        "Description:", "Rules:", "Functions:", "Sets:"}) {
    EXPECT_EQ(std::count(texts.begin(), texts.end(), text), 1) << text;
  }
}

TEST_F(MainWindowTest, IsAFixedDialogThatCanBeMinimised) {
  EXPECT_EQ(window_->minimumSize(), window_->maximumSize());
  EXPECT_TRUE(window_->windowFlags().testFlag(Qt::WindowMinimizeButtonHint));
}

TEST_F(MainWindowTest, WindowShownAgainKeepsItsPlaceAndSize) {
  for (const auto& [button, name] : {std::pair("showPreviewButton", "PreviewWindow"),
                                     std::pair("editRulesButton", "RulesEditor"),
                                     std::pair("editFunctionsButton", "FunctionsEditor"),
                                     std::pair("editSetsButton", "SetsEditor")}) {
    ClickOn(button);
    QWidget& window = WindowNamed(name);
    ASSERT_TRUE(window.isVisible()) << name;
    const QRect place(131, 77, 720, 500);
    window.setGeometry(place);
    ASSERT_TRUE(QTest::qWaitFor([&] { return window.geometry() == place; })) << name;
    window.close();
    ASSERT_FALSE(window.isVisible()) << name;
    ClickOn(button);
    EXPECT_TRUE(window.isVisible()) << name;
    EXPECT_EQ(window.geometry(), place) << name;
    window.hide();
  }
}

TEST_F(MainWindowTest, MinimisedWindowIsShownAgain) {
  ClickOn("showPreviewButton");
  window_->Preview().showMinimized();
  ASSERT_TRUE(window_->Preview().isMinimized());
  ClickOn("showPreviewButton");
  EXPECT_FALSE(window_->Preview().isMinimized());
}

}  // namespace
}  // namespace zarvo
