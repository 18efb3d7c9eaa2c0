#include "ui/dialogs.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextCursor>
#include <QTimer>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "app/help_window.h"
#include "tests/gui/scripted_dialogs.h"
#include "tests/support/temporary_folder.h"
#include "ui/lock_warning.h"

namespace zarvo {
namespace {

using testing::ScriptedDialogs;
using testing::TemporaryFolder;

// ---- The filters of file dialogs

TEST(ToolkitFilters, AreOneForEachPairAndAllFilesNeedNoDot) {
  const std::pair<const char*, const char*> cases[] = {
      {"Text files (*.txt)|*.txt|All files (*.*)|*.*|", "Text files (*.txt)"},
      {"Binary Zarvo filters (*.zvf)|*.zvf|All files (*.*)|*.*|", "Binary Zarvo filters (*.zvf)"},
      {"Binary Zarvo rules (*.ZarvoRule)|*.ZarvoRule|All files (*.*)|*.*|",
       "Binary Zarvo rules (*.ZarvoRule)"},
      {"Binary Zarvo set (*.ZarvoSet)|*.ZarvoSet|All files (*.*)|*.*|",
       "Binary Zarvo set (*.ZarvoSet)"},
      {"Binary Zarvo sets (*.ZarvoSet)|*.ZarvoSet|All files (*.*)|*.*|",
       "Binary Zarvo sets (*.ZarvoSet)"},
      {"Binary Zarvo functions (*.ZarvoFunction)|*.ZarvoFunction|All files (*.*)|*.*|",
       "Binary Zarvo functions (*.ZarvoFunction)"},
  };
  for (const auto& [filters, first] : cases) {
    EXPECT_EQ(ToolkitFilters(filters), QStringList({first, "All files (*)"})) << filters;
  }
}

TEST(ToolkitFilters, AreNoneForNoPair) { EXPECT_EQ(ToolkitFilters(""), QStringList()); }

// ---- Dialogs that really show

// Calls the user's part once a dialog of this kind has come up. Whatever happens the dialog closes.
template <typename Box>
class User {
 public:
  explicit User(std::function<void(Box&)> act) : act_(std::move(act)) {
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] {
      QPointer<Box> box = qobject_cast<Box*>(QApplication::activeModalWidget());
      if (box == nullptr || !box->isVisible()) return;
      timer_.stop();
      acted_ = true;
      act_(*box);
    });
    timer_.start(0);
  }
  ~User() { EXPECT_TRUE(acted_) << "no dialog came up"; }
  User(const User&) = delete;
  User& operator=(const User&) = delete;

 private:
  std::function<void(Box&)> act_;
  QTimer timer_;
  bool acted_ = false;
};

void Press(QMessageBox& box, QMessageBox::StandardButton which) {
  QAbstractButton* button = box.button(which);
  if (button == nullptr || !button->isEnabled()) {
    ADD_FAILURE() << "no such button";
    box.reject();
    return;
  }
  QTest::mouseClick(button, Qt::LeftButton);
}

TEST(ToolkitMessage, ShowsItsTextAsItIsUnderTheNameOfTheProgram) {
  const QString text = QStringLiteral("<b>&amp;</b>\n&File <br> \u017C");
  ToolkitDialogs dialogs;
  const User<QMessageBox> user([&](QMessageBox& box) {
    EXPECT_EQ(box.windowTitle(), "Zarvo Composer");
    EXPECT_EQ(box.text(), text);
    EXPECT_EQ(box.textFormat(), Qt::PlainText);
    const auto* label = box.findChild<QLabel*>("qt_msgbox_label");
    ASSERT_NE(label, nullptr);
    EXPECT_EQ(label->text(), text);
    EXPECT_EQ(label->textFormat(), Qt::PlainText);
    EXPECT_EQ(label->buddy(), nullptr);
    Press(box, QMessageBox::Ok);
  });
  EXPECT_EQ(dialogs.Message(nullptr, MessageIcon::Stop, text, MessageButtons::Ok), Answer::Ok);
}

TEST(ToolkitMessage, HasTheToolkitsIcon) {
  const std::pair<MessageIcon, QMessageBox::Icon> icons[] = {
      {MessageIcon::Information, QMessageBox::Information},
      {MessageIcon::Question, QMessageBox::Question},
      {MessageIcon::Exclamation, QMessageBox::Warning},
      {MessageIcon::Stop, QMessageBox::Critical}};
  for (const auto& [icon, shown] : icons) {
    ToolkitDialogs dialogs;
    const User<QMessageBox> user([shown = shown](QMessageBox& box) {
      EXPECT_EQ(box.icon(), shown);
      Press(box, QMessageBox::Ok);
    });
    dialogs.Message(nullptr, icon, "text", MessageButtons::Ok);
  }
}

struct ButtonCase {
  MessageButtons Buttons;
  QMessageBox::StandardButtons Shown;
  QMessageBox::StandardButton Pressed;
  Answer Expected;
};

TEST(ToolkitMessage, GivesTheButtonThatWasPressed) {
  const QMessageBox::StandardButtons yes_no = QMessageBox::Yes | QMessageBox::No;
  const QMessageBox::StandardButtons all = yes_no | QMessageBox::Cancel;
  for (const ButtonCase& each : std::initializer_list<ButtonCase>{
           {MessageButtons::Ok, QMessageBox::Ok, QMessageBox::Ok, Answer::Ok},
           {MessageButtons::YesNo, yes_no, QMessageBox::Yes, Answer::Yes},
           {MessageButtons::YesNo, yes_no, QMessageBox::No, Answer::No},
           {MessageButtons::YesNoCancel, all, QMessageBox::Yes, Answer::Yes},
           {MessageButtons::YesNoCancel, all, QMessageBox::No, Answer::No},
           {MessageButtons::YesNoCancel, all, QMessageBox::Cancel, Answer::Cancel}}) {
    ToolkitDialogs dialogs;
    const User<QMessageBox> user([&each](QMessageBox& box) {
      EXPECT_EQ(box.standardButtons(), each.Shown);
      Press(box, each.Pressed);
    });
    EXPECT_EQ(dialogs.Message(nullptr, MessageIcon::Question, "text", each.Buttons), each.Expected);
  }
}

TEST(ToolkitMessage, ClosedByEscapeOrItsCloseBoxGivesTheAnswerThatChangesLeast) {
  const std::pair<MessageButtons, Answer> cases[] = {{MessageButtons::Ok, Answer::Ok},
                                                     {MessageButtons::YesNo, Answer::No},
                                                     {MessageButtons::YesNoCancel, Answer::Cancel}};
  for (const auto& [buttons, expected] : cases) {
    ToolkitDialogs dialogs;
    {
      const User<QMessageBox> user([](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Escape); });
      EXPECT_EQ(dialogs.Message(nullptr, MessageIcon::Question, "text", buttons), expected);
    }
    const User<QMessageBox> user([](QMessageBox& box) { box.close(); });
    EXPECT_EQ(dialogs.Message(nullptr, MessageIcon::Question, "text", buttons), expected);
  }
}

class ToolkitFiles : public ::testing::Test {
 protected:
  QString Path(const char* name) const { return QString::fromStdString(folder_.File(name)); }

  // Types a name over what stands there and confirms.
  static void Choose(QFileDialog& dialog, const QString& path) {
    auto* edit = dialog.findChild<QLineEdit*>("fileNameEdit");
    if (edit == nullptr || !edit->isEnabled()) {
      ADD_FAILURE() << "no edit for the name";
      dialog.reject();
      return;
    }
    edit->setText(path);
    QTest::keyClick(edit, Qt::Key_Return);
  }

  TemporaryFolder folder_;
  ToolkitDialogs dialogs_;
  FileRequest request_{"Text files (*.txt)|*.txt|All files (*.*)|*.*|", "txt", QString()};
};

TEST_F(ToolkitFiles, OpenGivesTheExistingFileThatWasChosen) {
  folder_.Write("a.txt", "text");
  const User<QFileDialog> user([&](QFileDialog& dialog) {
    EXPECT_EQ(dialog.acceptMode(), QFileDialog::AcceptOpen);
    EXPECT_EQ(dialog.fileMode(), QFileDialog::ExistingFile);
    EXPECT_EQ(dialog.nameFilters(), QStringList({"Text files (*.txt)", "All files (*)"}));
    EXPECT_EQ(dialog.defaultSuffix(), "txt");
    Choose(dialog, Path("a.txt"));
  });
  EXPECT_EQ(dialogs_.OpenFile(nullptr, request_), Path("a.txt"));
}

TEST_F(ToolkitFiles, CancelGivesNothing) {
  {
    const User<QFileDialog> user(
        [](QFileDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
    EXPECT_EQ(dialogs_.OpenFile(nullptr, request_), std::nullopt);
  }
  const User<QFileDialog> user(
      [](QFileDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
  EXPECT_EQ(dialogs_.SaveFile(nullptr, request_), std::nullopt);
}

TEST_F(ToolkitFiles, SaveAppendsTheExtensionToANameWithoutOne) {
  const User<QFileDialog> user([&](QFileDialog& dialog) {
    EXPECT_EQ(dialog.acceptMode(), QFileDialog::AcceptSave);
    EXPECT_EQ(dialog.fileMode(), QFileDialog::AnyFile);
    Choose(dialog, Path("new"));
  });
  EXPECT_EQ(dialogs_.SaveFile(nullptr, request_), Path("new.txt"));
  EXPECT_EQ(folder_.Count(), 0U);
}

TEST_F(ToolkitFiles, SaveBeginsWithTheGivenName) {
  request_.InitialName = Path("given.txt");
  const User<QFileDialog> user([&](QFileDialog& dialog) {
    EXPECT_EQ(dialog.selectedFiles(), QStringList({Path("given.txt")}));
    QTest::keyClick(dialog.findChild<QLineEdit*>("fileNameEdit"), Qt::Key_Return);
  });
  EXPECT_EQ(dialogs_.SaveFile(nullptr, request_), Path("given.txt"));
}

TEST_F(ToolkitFiles, SaveAsksBeforeAnExistingFileIsChosen) {
  folder_.Write("old.txt", "text");
  const User<QFileDialog> user([&](QFileDialog& dialog) {
    {
      const User<QMessageBox> refuser([](QMessageBox& box) { Press(box, QMessageBox::No); });
      Choose(dialog, Path("old.txt"));
    }
    EXPECT_TRUE(dialog.isVisible());
    const User<QMessageBox> agreer([](QMessageBox& box) { Press(box, QMessageBox::Yes); });
    Choose(dialog, Path("old.txt"));
  });
  EXPECT_EQ(dialogs_.SaveFile(nullptr, request_), Path("old.txt"));
}

// ---- The refusal of changes to a locked filter

TEST(LockWarning, IsShownOnceUntilItIsArmedAgain) {
  const std::string text =
      "This module is locked. You must unlock it before attempting to make any changes.";
  ScriptedDialogs dialogs;
  LockWarning warning(dialogs);
  // A refusal that the open box itself brings about shows no second one.
  dialogs.ExpectMessage(MessageIcon::Exclamation, text, MessageButtons::Ok, Answer::Ok,
                        [&] { warning.Warn(nullptr); });
  warning.Warn(nullptr);
  warning.Warn(nullptr);
  EXPECT_TRUE(dialogs.IsDone());
  warning.Rearm();
  dialogs.ExpectMessage(MessageIcon::Exclamation, text, MessageButtons::Ok, Answer::Ok);
  warning.Warn(nullptr);
  EXPECT_TRUE(dialogs.IsDone());
}

// ---- Help

class HelpWindowTest : public ::testing::Test {
 protected:
  HelpWindowTest() {
    std::string html = "<html><body><h1>Contents</h1>";
    for (int topic = 100; topic < 108; ++topic) {
      html += "<h2><a name=\"topic-" + std::to_string(topic) + "\"></a>Topic " +
              std::to_string(topic) + "</h2>";
      for (int line = 0; line < 60; ++line) html += "<p>line</p>";
    }
    folder_.Write(kProgramHelp.toStdString(), html + "</body></html>");
    folder_.Write(kReferenceHelp.toStdString(), "<h1>Reference</h1>");
    Make(QString::fromStdString(folder_.Path()) + '/');
  }

  void Make(const QString& folder) { window_ = std::make_unique<HelpWindow>(folder, dialogs_); }
  QTextBrowser& Browser() { return *window_->findChild<QTextBrowser*>("helpBrowser"); }
  // The heading at the upper edge of what is shown.
  std::string FirstLine() {
    return Browser().cursorForPosition(QPoint(5, 12)).block().text().toStdString();
  }

  TemporaryFolder folder_;
  ScriptedDialogs dialogs_;
  std::unique_ptr<HelpWindow> window_;
};

TEST_F(HelpWindowTest, ShowsTheFileOfTheInstallationFolderFromItsStart) {
  window_->ShowContents(kProgramHelp);
  ASSERT_TRUE(QTest::qWaitForWindowExposed(window_.get()));
  EXPECT_EQ(window_->windowTitle(), "Help");
  EXPECT_FALSE(window_->isModal());
  EXPECT_TRUE(Browser().isReadOnly());
  EXPECT_EQ(Browser().verticalScrollBar()->value(), 0);
  EXPECT_TRUE(Browser().toPlainText().startsWith("Contents"));
  window_->ShowContents(kReferenceHelp);
  EXPECT_EQ(Browser().toPlainText(), "Reference");
}

TEST_F(HelpWindowTest, ShowsATopicAtItsAnchor) {
  window_->ShowTopic(kProgramHelp, 103);
  ASSERT_TRUE(QTest::qWaitForWindowExposed(window_.get()));
  EXPECT_EQ(Browser().source().fragment(), "topic-103");
  EXPECT_TRUE(QTest::qWaitFor([&] { return FirstLine() == "Topic 103"; })) << FirstLine();
  window_->ShowTopic(kProgramHelp, 101);
  EXPECT_TRUE(QTest::qWaitFor([&] { return FirstLine() == "Topic 101"; })) << FirstLine();
}

TEST_F(HelpWindowTest, ShowsTheSameTopicAgainAfterTheUserScrolledAway) {
  window_->ShowTopic(kProgramHelp, 103);
  ASSERT_TRUE(QTest::qWaitForWindowExposed(window_.get()));
  Browser().verticalScrollBar()->setValue(0);
  window_->ShowTopic(kProgramHelp, 103);
  EXPECT_TRUE(QTest::qWaitFor([&] { return FirstLine() == "Topic 103"; })) << FirstLine();
}

TEST_F(HelpWindowTest, ContentsAfterATopicAreShownFromTheStart) {
  window_->ShowTopic(kProgramHelp, 103);
  ASSERT_TRUE(QTest::qWaitForWindowExposed(window_.get()));
  window_->ShowContents(kProgramHelp);
  EXPECT_TRUE(QTest::qWaitFor([&] { return Browser().verticalScrollBar()->value() == 0; }));
}

TEST_F(HelpWindowTest, ClosedItIsShownAgain) {
  window_->ShowContents(kProgramHelp);
  window_->close();
  EXPECT_FALSE(window_->isVisible());
  window_->ShowContents(kProgramHelp);
  EXPECT_TRUE(window_->isVisible());
}

TEST_F(HelpWindowTest, AMissingFileGivesAMessageWithItsPathAndNoWindow) {
  dialogs_.ExpectMessage(MessageIcon::Exclamation,
                         "The help file " + folder_.File("Missing.html") + " can't be found.",
                         MessageButtons::Ok, Answer::Ok);
  window_->ShowContents("Missing.html");
  EXPECT_TRUE(dialogs_.IsDone());
  EXPECT_FALSE(window_->isVisible());
  dialogs_.ExpectMessage(MessageIcon::Exclamation,
                         "The help file " + folder_.File("Missing.html") + " can't be found.",
                         MessageButtons::Ok, Answer::Ok);
  window_->ShowTopic("Missing.html", 101);
  EXPECT_FALSE(window_->isVisible());
}

TEST_F(HelpWindowTest, AFolderInPlaceOfTheFileCountsAsMissing) {
  ASSERT_TRUE(QDir(QString::fromStdString(folder_.Path())).mkdir("Folder.html"));
  dialogs_.ExpectMessage(MessageIcon::Exclamation,
                         "The help file " + folder_.File("Folder.html") + " can't be found.",
                         MessageButtons::Ok, Answer::Ok);
  window_->ShowContents("Folder.html");
  EXPECT_FALSE(window_->isVisible());
}

TEST_F(HelpWindowTest, AFolderMayHaveAnyName) {
  const QString name = QStringLiteral("a #b%20c \u017C?");
  ASSERT_TRUE(QDir(QString::fromStdString(folder_.Path())).mkdir(name));
  const std::string file = (name + "/Help.html").toStdString();
  folder_.Write(file, "<h1>Found</h1>");
  Make(QString::fromStdString(folder_.Path()) + '/' + name + '/');
  window_->ShowTopic("Help.html", 101);
  EXPECT_EQ(Browser().toPlainText(), "Found");
}

TEST_F(ToolkitFiles, OpenTakesAFileWithoutAnExtensionAsItIs) {
  folder_.Write("plain", "text");
  folder_.Write("other.txt", "text");
  request_.Filters = "All files (*.*)|*.*|";
  {
    const User<QFileDialog> user([&](QFileDialog& dialog) { Choose(dialog, Path("plain")); });
    EXPECT_EQ(dialogs_.OpenFile(nullptr, request_), Path("plain"));
  }
  const User<QFileDialog> user([&](QFileDialog& dialog) { Choose(dialog, Path("other")); });
  EXPECT_EQ(dialogs_.OpenFile(nullptr, request_), Path("other.txt"));
}

TEST(ToolkitMessage, OfARunBlocksItsOwnWindowAlone) {
  QWidget window;
  window.show();
  ToolkitDialogs dialogs;
  const QString text = QStringLiteral("<b>text");
  const User<QMessageBox> user([&](QMessageBox& box) {
    EXPECT_EQ(box.windowModality(), Qt::WindowModal);
    EXPECT_EQ(box.parentWidget(), &window);
    EXPECT_EQ(box.icon(), QMessageBox::Critical);
    EXPECT_EQ(box.windowTitle(), "Zarvo Composer");
    EXPECT_EQ(box.text(), text);
    EXPECT_EQ(box.textFormat(), Qt::PlainText);
    EXPECT_EQ(box.standardButtons(), QMessageBox::Ok);
    Press(box, QMessageBox::Ok);
  });
  dialogs.RunMessage(&window, text);
}

TEST(ToolkitMessage, ShowsAnArrowWhileTheProgramIsAtWork) {
  QGuiApplication::setOverrideCursor(Qt::WaitCursor);
  ToolkitDialogs dialogs;
  {
    const User<QMessageBox> user([](QMessageBox& box) {
      ASSERT_NE(QGuiApplication::overrideCursor(), nullptr);
      EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::ArrowCursor);
      Press(box, QMessageBox::Ok);
    });
    dialogs.Message(nullptr, MessageIcon::Stop, QStringLiteral("text"), MessageButtons::Ok);
  }
  ASSERT_NE(QGuiApplication::overrideCursor(), nullptr);
  EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
  QGuiApplication::restoreOverrideCursor();
}

}  // namespace
}  // namespace zarvo
