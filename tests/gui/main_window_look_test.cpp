// What the main window shows beside its contents: tool tips, the wait cursor, its frame.
#include <QCursor>
#include <QGuiApplication>
#include <QHelpEvent>
#include <QToolTip>
#include <filesystem>
#include <initializer_list>
#include <vector>

#include "tests/gui/main_window_fixture.h"
#include "ui/icon_button.h"

namespace zarvo {
namespace {

using testing::Find;

class MainWindowLookTest : public testing::MainWindowFixture {
 protected:
  static bool IsWaiting() {
    const QCursor* cursor = QGuiApplication::overrideCursor();
    return cursor != nullptr && cursor->shape() == Qt::WaitCursor;
  }

  // Notes the pointer at every change of the caption, which comes in the middle of the work.
  void NotePointer() {
    QObject::connect(window_.get(), &QWidget::windowTitleChanged, window_.get(),
                     [this] { was_waiting_.push_back(IsWaiting()); });
  }
  void ExpectWaitingMessage(MessageIcon icon, const std::string& text, MessageButtons buttons,
                            Answer answer) {
    dialogs_.ExpectMessage(icon, text, buttons, answer, [] { EXPECT_TRUE(IsWaiting()); });
  }

  std::vector<bool> was_waiting_;
};

// ---- Tool tips

// The tip that appears where the pointer rests on the control.
std::string TipOf(QWidget& control) {
  QToolTip::hideText();
  EXPECT_TRUE(QTest::qWaitFor([] { return !QToolTip::isVisible(); }));
  const QPoint place = control.rect().center();
  QHelpEvent event(QEvent::ToolTip, place, control.mapToGlobal(place));
  QApplication::sendEvent(&control, &event);
  return QToolTip::isVisible() ? QToolTip::text().toStdString() : "";
}

TEST_F(MainWindowLookTest, EightIconButtonsShowTheirTipsAndNothingElseHasOne) {
  int tips = 0;
  for (QWidget* control : window_->findChildren<QWidget*>()) {
    if (control->toolTip().isEmpty()) continue;
    ++tips;
    EXPECT_FALSE(Get<IconButton>(qUtf8Printable(control->objectName())).icon().isNull());
    EXPECT_EQ(TipOf(*control), control->toolTip().toStdString());
  }
  EXPECT_EQ(tips, 8);
  EXPECT_EQ(TipOf(Get("nameEdit")), "");
}

TEST_F(MainWindowLookTest, PreviewNamesItsButtonWithoutText) {
  ClickOn("showPreviewButton");
  PreviewWindow& preview = window_->Preview();
  EXPECT_EQ(TipOf(Find<QWidget>(preview, "loadTextButton")), "Load text file");
  for (const char* name : {"updateButton", "originalEdit", "modifiedEdit", "progressBar"}) {
    EXPECT_EQ(TipOf(Find<QWidget>(preview, name)), "") << name;
  }
}

// ---- The wait cursor

TEST_F(MainWindowLookTest, PointerWaitsWhileAFilterIsLoaded) {
  const QString path = WriteFilter("f.zvf", Named("f"));
  NotePointer();
  ExpectOpen(path);
  EXPECT_FALSE(IsWaiting());
  ClickOn("openButton");
  EXPECT_EQ(was_waiting_, std::vector<bool>{true});
  EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST_F(MainWindowLookTest, PointerWaitsWhileTheMessagesOfALoadStand) {
  Filter filter;
  std::string bytes = FilterFileBytes(filter);
  bytes[13] = 7;
  const std::string path = folder_.Write("newer.zvf", bytes.substr(0, bytes.size() - 1));
  ExpectWaitingMessage(MessageIcon::Question, LoadNewerFormatText(7), MessageButtons::YesNo,
                       Answer::Yes);
  ExpectWaitingMessage(MessageIcon::Exclamation, "Error loading filter " + path, MessageButtons::Ok,
                       Answer::Ok);
  window_->LoadDocument(QString::fromStdString(path));
  EXPECT_TRUE(dialogs_.IsDone());
  EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST_F(MainWindowLookTest, PointerWaitsWhileAFilterIsSaved) {
  NotePointer();
  ExpectSaveAs({}, PathOf("new.zvf"));
  Press(Qt::Key_S, Qt::ControlModifier);
  EXPECT_EQ(was_waiting_, std::vector<bool>{true});
  EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST_F(MainWindowLookTest, PointerWaitsWhileTheMessagesOfASaveStand) {
  Filter old = Named("old");
  old.FormatVersion = 5;
  const QString path = WriteFilter("f.zvf", old);
  window_->LoadDocument(path);
  std::filesystem::remove(path.toStdString());
  std::filesystem::create_directory(path.toStdString());
  ExpectWaitingMessage(MessageIcon::Question, SaveInNewestFormatText(5), MessageButtons::YesNo,
                       Answer::Yes);
  ExpectWaitingMessage(MessageIcon::Exclamation, "Error saving file " + path.toStdString(),
                       MessageButtons::Ok, Answer::Ok);
  window_->Save();
  EXPECT_TRUE(dialogs_.IsDone());
  EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

// ---- The order of the controls

// How many controls follow each other in the order of Tab, and of Shift+Tab the other way round,
// until the window is reached again. 0 where the two ways part.
qsizetype ControlsInOrder(QWidget& window) {
  qsizetype count = 0;
  for (QWidget* control = window.nextInFocusChain(); control != &window;
       control = control->nextInFocusChain()) {
    if (control->previousInFocusChain()->nextInFocusChain() != control) return 0;
    if (control->nextInFocusChain()->previousInFocusChain() != control) return 0;
    ++count;
  }
  return count;
}

TEST_F(MainWindowLookTest, EachControlStandsInTheOrderOnce) {
  for (QWidget* window : std::initializer_list<QWidget*>{window_.get(), &window_->Preview()}) {
    qsizetype controls = 0;
    for (const QWidget* control : window->findChildren<QWidget*>()) {
      if (control->window() == window) ++controls;
    }
    EXPECT_EQ(ControlsInOrder(*window), controls);
  }
}

// ---- The frame

TEST_F(MainWindowLookTest, CanBeMinimisedAndComesBack) {
  const Qt::WindowFlags flags = window_->windowFlags();
  EXPECT_TRUE(flags.testFlag(Qt::WindowMinimizeButtonHint));
  EXPECT_TRUE(flags.testFlag(Qt::WindowCloseButtonHint));
  EXPECT_TRUE(flags.testFlag(Qt::WindowSystemMenuHint));
  EXPECT_FALSE(flags.testFlag(Qt::WindowMaximizeButtonHint));
  EXPECT_FALSE(flags.testFlag(Qt::WindowContextHelpButtonHint));
  Type("nameEdit", "typed");
  const QRect place = window_->geometry();
  window_->showMinimized();
  ASSERT_TRUE(QTest::qWaitFor([this] { return window_->isMinimized(); }));
  EXPECT_TRUE(window_->isVisible()) << "the program goes on";
  window_->showNormal();
  ASSERT_TRUE(QTest::qWaitFor([this] { return !window_->isMinimized(); }));
  testing::Activate(*window_);
  EXPECT_EQ(window_->geometry().size(), place.size());
  EXPECT_EQ(TextOf("nameEdit"), "typed");
}

}  // namespace
}  // namespace zarvo
