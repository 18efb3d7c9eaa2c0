#include "app/start_up.h"

#include <QElapsedTimer>
#include <QSettings>
#include <QSplashScreen>
#include <QTextBrowser>
#include <QWindow>
#include <ctime>
#include <filesystem>

#include "app/settings.h"
#include "engine/random.h"
#include "tests/gui/main_window_fixture.h"

namespace zarvo {
namespace {

using testing::Find;
using testing::kUntitled;

class StartUpTest : public ::testing::Test {
 protected:
  static QSplashScreen* Splash() {
    for (QWidget* widget : QApplication::topLevelWidgets()) {
      auto* splash = qobject_cast<QSplashScreen*>(widget);
      if (splash != nullptr && splash->isVisible()) return splash;
    }
    return nullptr;
  }

  testing::TemporaryFolder folder_;
  testing::ScriptedDialogs dialogs_;
  StartUp start_up_{dialogs_};
};

// ---- The command line

TEST(CommandLineTail, IsAllBehindTheProgramsNameJoinedByBlanks) {
  EXPECT_EQ(CommandLineTail({"zarvo-composer"}), "");
  EXPECT_EQ(CommandLineTail({"zarvo-composer", "/a/f.zvf"}), "/a/f.zvf");
  EXPECT_EQ(CommandLineTail({"zarvo-composer", "my", "filter.zvf"}), "my filter.zvf");
  EXPECT_EQ(CommandLineTail({"zarvo-composer", " two  blanks "}), " two  blanks ");
  EXPECT_EQ(CommandLineTail({"zarvo-composer", "\"f.zvf\""}), "\"f.zvf\"");
}

// ---- The setting

// The installation folder where the machine's setting has this text.
std::string FolderWith(const char* setting) {
  const testing::TemporaryFolder machine;
  QSettings::setPath(QSettings::NativeFormat, QSettings::SystemScope,
                     QString::fromStdString(machine.Path()));
  std::filesystem::create_directory(machine.File("Tormelin"));
  machine.Write("Tormelin/Zarvo Composer.conf", setting);
  return InstallationFolder().toStdString();
}

TEST(Settings, InstallationFolderIsTheSettingWithASeparator) {
  EXPECT_EQ(FolderWith("[General]\nPath=/opt/zarvo composer\n"), "/opt/zarvo composer/");
  EXPECT_EQ(FolderWith("[General]\nPath=relative\n"), "relative/");
}

TEST(Settings, MissingOrEmptySettingMeansTheCurrentFolder) {
  EXPECT_EQ(FolderWith(""), "./");
  EXPECT_EQ(FolderWith("[General]\nPath=\n"), "./");
}

// ---- The first document

TEST_F(StartUpTest, WithoutAFileTheSplashStaysAndThenAnEmptyDocumentIsShown) {
  EXPECT_EQ(StartUp::kSplashTime, std::chrono::seconds(2));
  QElapsedTimer since_start;
  since_start.start();
  start_up_.Begin({});
  ASSERT_NE(Splash(), nullptr);
  EXPECT_FALSE(start_up_.Window().isVisible());
  EXPECT_TRUE(start_up_.Window().CurrentDocument().Saved);
  ASSERT_TRUE(QTest::qWaitFor([this] { return start_up_.Window().isVisible(); }));
  EXPECT_GE(since_start.elapsed(), 1900);
  EXPECT_EQ(Splash(), nullptr);
  EXPECT_EQ(start_up_.Window().windowTitle(), kUntitled);
  EXPECT_TRUE(start_up_.Window().CurrentDocument().Saved);
  for (const char* count : {"rulesCount", "functionsCount", "setsCount"}) {
    EXPECT_EQ(Find<QLineEdit>(start_up_.Window(), count).text(), "0");
  }
}

TEST_F(StartUpTest, SplashIsAPictureInTheMiddleOfTheScreen) {
  start_up_.Begin({});
  QSplashScreen* splash = Splash();
  ASSERT_NE(splash, nullptr);
  EXPECT_FALSE(splash->pixmap().isNull());
  EXPECT_TRUE(splash->windowFlags().testFlag(Qt::FramelessWindowHint));
  const QPoint off = splash->geometry().center() - splash->screen()->geometry().center();
  EXPECT_LE(off.manhattanLength(), 2);
}

TEST_F(StartUpTest, FileIsShownAtOnce) {
  Filter filter;
  filter.Name = "from the start";
  const std::string path = folder_.Write("f.zvf", FilterFileBytes(filter));
  start_up_.Begin(QString::fromStdString(path));
  EXPECT_TRUE(start_up_.Window().isVisible());
  EXPECT_EQ(Splash(), nullptr);
  EXPECT_EQ(Find<QLineEdit>(start_up_.Window(), "nameEdit").text(), "from the start");
  EXPECT_EQ(start_up_.Window().windowTitle(), "f.zvf - Zarvo Composer");
  EXPECT_TRUE(start_up_.Window().CurrentDocument().Saved);
}

TEST_F(StartUpTest, QuotationMarksArePartOfThePathAndTheLoadFails) {
  const std::string path = "\"" + folder_.Write("f.zvf", "") + "\"";
  dialogs_.ExpectMessage(MessageIcon::Exclamation, "Error loading filter " + path,
                         MessageButtons::Ok, Answer::Ok);
  start_up_.Begin(QString::fromStdString(path));
  EXPECT_TRUE(dialogs_.IsDone());
  EXPECT_TRUE(start_up_.Window().isVisible());
  EXPECT_EQ(Splash(), nullptr);
  EXPECT_EQ(start_up_.Window().CurrentDocument().Path.toStdString(), path);
  EXPECT_EQ(start_up_.Window().windowTitle(), "f.zvf\" - Zarvo Composer");
}

TEST_F(StartUpTest, BareNameIsShownWithoutItsFirstCharacter) {
  Filter filter;
  folder_.Write("filter.zvf", FilterFileBytes(filter));
  const std::filesystem::path before = std::filesystem::current_path();
  std::filesystem::current_path(folder_.Path());
  start_up_.Begin(QStringLiteral("filter.zvf"));
  std::filesystem::current_path(before);
  EXPECT_EQ(start_up_.Window().windowTitle(), "ilter.zvf - Zarvo Composer");
}

TEST_F(StartUpTest, PreviewIsMadeHidden) {
  const std::string path = folder_.Write("f.zvf", "no filter");
  dialogs_.ExpectMessage(MessageIcon::Exclamation, "Error loading filter " + path,
                         MessageButtons::Ok, Answer::Ok);
  start_up_.Begin(QString::fromStdString(path));
  EXPECT_FALSE(start_up_.Window().Preview().isVisible());
}

TEST_F(StartUpTest, GeneratorIsSeededWithTheTimeInSeconds) {
  const auto first = static_cast<std::uint32_t>(std::time(nullptr));
  start_up_.Begin({});
  const auto last = static_cast<std::uint32_t>(std::time(nullptr));
  const int drawn = ProcessRandom().Next();
  bool is_seeded = false;
  for (std::uint32_t seed = first; seed <= last; ++seed) {
    is_seeded = is_seeded || RandomGenerator(seed).Next() == drawn;
  }
  EXPECT_TRUE(is_seeded);
}

// ---- The help

class HelpTest : public testing::MainWindowFixture {
 protected:
  QMenu* OpenHelpMenu() {
    ClickOn("helpButton");
    return qobject_cast<QMenu*>(QApplication::activePopupWidget());
  }
  void Choose(int index) {
    QMenu* menu = OpenHelpMenu();
    ASSERT_NE(menu, nullptr);
    QAction* action = menu->actions().at(index);
    ASSERT_TRUE(action->isEnabled());
    QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(action).center());
  }
  QWidget& Help() { return Get("HelpWindow"); }
};

TEST_F(HelpTest, MenuOpensBelowItsButtonWithThreeEntries) {
  QMenu* menu = OpenHelpMenu();
  ASSERT_NE(menu, nullptr);
  const auto& button = Get("helpButton");
  EXPECT_EQ(menu->pos(), button.mapToGlobal(QPoint(0, button.height())));
  ASSERT_EQ(menu->actions().size(), 3);
  EXPECT_EQ(menu->actions()[0]->text(), "The Zarvo Reference");
  EXPECT_EQ(menu->actions()[1]->text(), "Zarvo Composer Help contents");
  EXPECT_EQ(menu->actions()[2]->text(), "About this window");
  menu->close();
}

TEST_F(HelpTest, EntriesOpenTheFilesOfTheInstallationFolder) {
  folder_.Write("Zarvo Reference.html", "<p>reference</p>");
  folder_.Write("Zarvo Composer.html", "<p>contents</p><h2 id='topic-101'>window</h2>");
  const auto& browser = Get<QTextBrowser>("helpBrowser");
  Choose(0);
  EXPECT_TRUE(Help().isVisible());
  EXPECT_TRUE(browser.toPlainText().contains(QStringLiteral("reference")));
  EXPECT_EQ(browser.source().toLocalFile(), PathOf("Zarvo Reference.html"));
  Help().close();
  Choose(1);
  EXPECT_TRUE(Help().isVisible());
  EXPECT_EQ(browser.source().toLocalFile(), PathOf("Zarvo Composer.html"));
  EXPECT_EQ(browser.source().fragment(), "");
  Help().close();
  Choose(2);
  EXPECT_TRUE(Help().isVisible());
  EXPECT_EQ(browser.source().toLocalFile(), PathOf("Zarvo Composer.html"));
  EXPECT_EQ(browser.source().fragment(), "topic-101");
}

TEST_F(HelpTest, MissingFileIsReportedWithItsPath) {
  for (int entry = 0; entry < 3; ++entry) {
    const char* name = entry == 0 ? "Zarvo Reference.html" : "Zarvo Composer.html";
    ExpectExclamation("The help file " + folder_.File(name) + " can't be found.");
    Choose(entry);
    EXPECT_TRUE(dialogs_.IsDone());
    EXPECT_FALSE(Help().isVisible());
  }
}

TEST_F(StartUpTest, SplashStandsBeforeTheFileIsReadAndStaysWhenItIsClicked) {
  start_up_.Begin({});
  QSplashScreen* splash = Splash();
  ASSERT_NE(splash, nullptr);
  EXPECT_TRUE(splash->windowHandle()->isExposed());
  QTest::mouseClick(splash, Qt::LeftButton);
  EXPECT_TRUE(splash->isVisible());
}

}  // namespace
}  // namespace zarvo
