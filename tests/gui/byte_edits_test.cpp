#include <gtest/gtest.h>

#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QDropEvent>
#include <QInputMethodEvent>
#include <QMenu>
#include <QMimeData>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QSignalSpy>
#include <QTest>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <algorithm>
#include <cstddef>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <type_traits>
#include <vector>

#include "model/code_page.h"
#include "ui/byte_line_edit.h"
#include "ui/byte_text.h"
#include "ui/byte_text_edit.h"

namespace zarvo {
namespace {

constexpr const char* kPages[] = {"windows-1250", "windows-1251", "windows-1252", "windows-1253",
                                  "windows-1254", "windows-1255", "windows-1256", "windows-1257",
                                  "windows-1258", "CP874"};

// Of no single-byte page.
const QString kLackedEverywhere = QStringLiteral("\u4E2D");
const QString kPair = QStringLiteral("\U0001F600");

// Every byte that a text may hold.
std::string AllBytes() {
  std::string bytes;
  for (int byte = 1; byte < 256; ++byte) bytes += static_cast<char>(byte);
  return bytes;
}

void UsePage(const char* name) { SetWindowCodePage(CodePage::Find(name).value()); }

// ---- What differs between the two edits

int Cursor(const ByteLineEdit& edit) { return edit.cursorPosition(); }
int Cursor(const ByteTextEdit& edit) { return edit.textCursor().position(); }

void Select(ByteLineEdit& edit, int from, int to) {
  if (from == to) {
    edit.setCursorPosition(from);
  } else {
    edit.setSelection(from, to - from);
  }
}
void Select(ByteTextEdit& edit, int from, int to) {
  QTextCursor cursor = edit.textCursor();
  cursor.setPosition(from);
  cursor.setPosition(to, QTextCursor::KeepAnchor);
  edit.setTextCursor(cursor);
}

bool CanUndo(const ByteLineEdit& edit) { return edit.isUndoAvailable(); }
bool CanUndo(const ByteTextEdit& edit) { return edit.document()->isUndoAvailable(); }

QString Shown(const ByteLineEdit& edit) { return edit.text(); }
QString Shown(const ByteTextEdit& edit) { return edit.document()->toRawText(); }

QWidget& DropTarget(ByteLineEdit& edit) { return edit; }
QWidget& DropTarget(ByteTextEdit& edit) { return *edit.viewport(); }

// ---- What users do

void Type(QWidget& edit, const QString& text) {
  QTest::sendKeyEvent(QTest::Click, &edit, Qt::Key_unknown, text, Qt::NoModifier);
}

void PressPaste(QWidget& edit) { QTest::keyClick(&edit, Qt::Key_V, Qt::ControlModifier); }

void Paste(QWidget& edit, const QString& text) {
  QApplication::clipboard()->setText(text);
  PressPaste(edit);
}

void Compose(QWidget& edit, const QString& preedit, const QString& commit) {
  QInputMethodEvent event(preedit, {});
  event.setCommitString(commit);
  QApplication::sendEvent(&edit, &event);
}

void Drop(QWidget& target, const QString& text) {
  QMimeData data;
  data.setText(text);
  // Only a widget that the drag has entered gets the drop.
  QDragEnterEvent enter(QPoint(1, 1), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(&target, &enter);
  QDropEvent drop(QPointF(1, 1), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(&target, &drop);
}

void TriggerPaste(QMenu& menu) {
  const QList<QAction*> actions = menu.actions();
  const auto paste = std::find_if(actions.begin(), actions.end(), [](const QAction* action) {
    return action->text().contains(QStringLiteral("Paste"));
  });
  ASSERT_NE(paste, actions.end());
  ASSERT_TRUE((*paste)->isEnabled());
  (*paste)->trigger();
}

class ByteText : public testing::Test {
 protected:
  ByteText() { UsePage("windows-1252"); }
};

TEST_F(ByteText, EachByteIsOneCharacterInEachPage) {
  for (const char* page : kPages) {
    UsePage(page);
    const QString text = FromBytes(AllBytes());
    EXPECT_EQ(text.size(), 255) << page;
    EXPECT_EQ(ToBytes(text), AllBytes()) << page;
    EXPECT_TRUE(IsStorable(text)) << page;
    EXPECT_EQ(Storable(text), text) << page;
  }
}

TEST_F(ByteText, PageDecides) {
  EXPECT_EQ(ToBytes(u"\u20AC\u0105"), "\x80?");
  UsePage("windows-1250");
  EXPECT_EQ(ToBytes(u"\u20AC\u0105"), "\x80\xB9");
  EXPECT_EQ(WindowCodePage().Character(0xB9), U'\u0105');
}

TEST_F(ByteText, LackedCharacterIsOneQuestionMark) {
  EXPECT_EQ(ToBytes(u"a\u4E2Db"), "a?b");
  EXPECT_EQ(ToBytes(u"a\U0001F600b"), "a?b");
  EXPECT_EQ(ToBytes(u"\U0001F600\U0001F600"), "??");
  const char16_t halves[] = {0xDE00, u'a', 0xD83D, u'b', 0xD83D};
  EXPECT_EQ(ToBytes(QStringView(halves, 5)), "?a?b?");
  EXPECT_EQ(ToBytes(QStringView(u"a\0b", 3)), "a?b");
  EXPECT_EQ(Storable(QStringLiteral("a\u4E2Db")), QStringLiteral("a?b"));
  EXPECT_FALSE(IsStorable(u"\u2028"));
}

TEST_F(ByteText, ClipboardHasOrdinaryTextAndTheExactOne) {
  const QString text = QStringLiteral("a\r\nb\rc\nd\r\r\n\u00A0");
  const std::unique_ptr<QMimeData> mime_data = ToMimeData(text);
  EXPECT_EQ(mime_data->text(), QStringLiteral("a\nb\nc\nd\n\n\u00A0"));
  EXPECT_EQ(FromMimeData(*mime_data), text);
}

template <typename Edit>
class BothByteEdits : public testing::Test {
 protected:
  BothByteEdits() { UsePage("windows-1252"); }

  Edit edit_;
};

class EditNames {
 public:
  template <typename Edit>
  static std::string GetName(int) {
    return Edit::staticMetaObject.className() + std::string("zarvo::").size();
  }
};

using Edits = testing::Types<ByteLineEdit, ByteTextEdit>;
TYPED_TEST_SUITE(BothByteEdits, Edits, EditNames);

TYPED_TEST(BothByteEdits, KeepsEveryByteOfEveryPage) {
  for (const char* page : kPages) {
    UsePage(page);
    TypeParam edit;
    EXPECT_EQ(edit.Bytes(), "") << page;
    edit.SetBytes(AllBytes());
    EXPECT_EQ(edit.Bytes(), AllBytes()) << page;
  }
}

TYPED_TEST(BothByteEdits, TypingLeavesTheOtherBytesOfEveryPageAlone) {
  for (const char* page : kPages) {
    UsePage(page);
    TypeParam edit;
    edit.SetBytes(AllBytes());
    Select(edit, 255, 255);
    QTest::keyClicks(&edit, QStringLiteral("end"));
    Select(edit, 128, 128);
    QTest::keyClicks(&edit, QStringLiteral("middle"));
    Select(edit, 0, 0);
    QTest::keyClicks(&edit, QStringLiteral("start"));
    const std::string expected = std::string("start") + AllBytes().substr(0, 128) + "middle" +
                                 AllBytes().substr(128) + "end";
    EXPECT_EQ(edit.Bytes(), expected) << page;
    while (CanUndo(edit)) edit.undo();
    EXPECT_EQ(edit.Bytes(), AllBytes()) << page;
  }
}

TYPED_TEST(BothByteEdits, EveryPrintedCharacterOfThePageCanBeTyped) {
  for (const char* page : kPages) {
    UsePage(page);
    TypeParam edit;
    std::string expected;
    for (const char byte : AllBytes()) {
      const QString text = FromBytes(std::string_view(&byte, 1));
      if (!text[0].isPrint()) continue;
      expected += byte;
      Type(edit, text);
    }
    EXPECT_EQ(edit.Bytes(), expected) << page;
    EXPECT_GE(expected.size(), 200U) << page;
  }
}

TYPED_TEST(BothByteEdits, LackedCharacterBecomesAQuestionMarkWhenTyped) {
  this->edit_.SetBytes("ab");
  Select(this->edit_, 1, 1);
  Type(this->edit_, kLackedEverywhere);
  EXPECT_EQ(Shown(this->edit_), QStringLiteral("a?b"));
  Type(this->edit_, kPair);
  Type(this->edit_, QStringLiteral("x"));
  EXPECT_EQ(Shown(this->edit_), QStringLiteral("a??xb"));
  EXPECT_EQ(this->edit_.Bytes(), "a??xb");
  EXPECT_EQ(Cursor(this->edit_), 4);
  this->edit_.undo();
  EXPECT_EQ(this->edit_.Bytes(), "ab");
  this->edit_.redo();
  EXPECT_EQ(this->edit_.Bytes(), "a??xb");
}

TYPED_TEST(BothByteEdits, LackedCharacterBecomesAQuestionMarkWhenPasted) {
  this->edit_.SetBytes("abc");
  Select(this->edit_, 1, 2);
  Paste(this->edit_, QStringLiteral("1\u4E2D2\U0001F6003\u00E94"));
  EXPECT_EQ(Shown(this->edit_), QStringLiteral("a1?2?3\u00E94c"));
  EXPECT_EQ(this->edit_.Bytes(),
            "a1?2?3\xE9"
            "4c");
  EXPECT_EQ(Cursor(this->edit_), 8);
  this->edit_.undo();
  EXPECT_EQ(this->edit_.Bytes(), "abc");
  this->edit_.redo();
  EXPECT_EQ(this->edit_.Bytes(),
            "a1?2?3\xE9"
            "4c");
}

TYPED_TEST(BothByteEdits, PasteIsAnUndoStepOfItsOwn) {
  for (const char* start : {"", "z"}) {
    this->edit_.SetBytes(start);
    Select(this->edit_, 0, 0);
    QTest::keyClicks(&this->edit_, QStringLiteral("ab"));
    Paste(this->edit_, kLackedEverywhere);
    QTest::keyClicks(&this->edit_, QStringLiteral("cd"));
    EXPECT_EQ(this->edit_.Bytes(), std::string("ab?cd") + start);
  }
  this->edit_.undo();
  if (std::is_same_v<TypeParam, ByteLineEdit>) {
    EXPECT_EQ(this->edit_.Bytes(), "ab?z");
    this->edit_.undo();
    EXPECT_EQ(this->edit_.Bytes(), "abz");
    this->edit_.undo();
  } else {
    // The toolkit's document takes what is pasted and what is typed right behind for one step.
    while (CanUndo(this->edit_)) this->edit_.undo();
  }
  EXPECT_EQ(this->edit_.Bytes(), "z");
}

TYPED_TEST(BothByteEdits, LackedCharacterBecomesAQuestionMarkInTheContextMenusPaste) {
  this->edit_.SetBytes("ab");
  Select(this->edit_, 1, 1);
  QApplication::clipboard()->setText(kPair);
  const std::unique_ptr<QMenu> menu(this->edit_.createStandardContextMenu());
  TriggerPaste(*menu);
  EXPECT_EQ(Shown(this->edit_), QStringLiteral("a?b"));
  this->edit_.undo();
  EXPECT_EQ(this->edit_.Bytes(), "ab");
}

TYPED_TEST(BothByteEdits, LackedCharacterBecomesAQuestionMarkWhenDropped) {
  this->edit_.resize(200, 100);
  this->edit_.SetBytes("ab");
  Drop(DropTarget(this->edit_), QStringLiteral("1\u4E2D2\U0001F6003"));
  EXPECT_EQ(Shown(this->edit_), QStringLiteral("1?2?3ab"));
  EXPECT_EQ(this->edit_.Bytes(), "1?2?3ab");
  this->edit_.undo();
  EXPECT_EQ(this->edit_.Bytes(), "ab");
}

TYPED_TEST(BothByteEdits, LackedCharacterBecomesAQuestionMarkWhenComposed) {
  this->edit_.SetBytes("ab");
  Select(this->edit_, 1, 1);
  Compose(this->edit_, kLackedEverywhere, QString());
  EXPECT_EQ(this->edit_.Bytes(), "ab");
  Compose(this->edit_, QString(), QStringLiteral("\u4E2D\u00E9"));
  EXPECT_EQ(Shown(this->edit_), QStringLiteral("a?\u00E9"
                                               "b"));
  EXPECT_EQ(this->edit_.Bytes(),
            "a?\xE9"
            "b");
  this->edit_.undo();
  EXPECT_EQ(this->edit_.Bytes(), "ab");
}

TYPED_TEST(BothByteEdits, LackedCharacterBecomesAQuestionMarkFromAssistiveTechnology) {
  this->edit_.SetBytes("ab");
  QAccessibleInterface* const accessible = QAccessible::queryAccessibleInterface(&this->edit_);
  ASSERT_NE(accessible, nullptr);
  ASSERT_NE(accessible->editableTextInterface(), nullptr);
  accessible->editableTextInterface()->insertText(1, QStringLiteral("\U0001F600\u4E2D"));
  EXPECT_EQ(Shown(this->edit_), QStringLiteral("a??b"));
  EXPECT_EQ(this->edit_.Bytes(), "a??b");
  EXPECT_TRUE(accessible->textInterface() != nullptr);
}

TYPED_TEST(BothByteEdits, ZeroByteEndsTheText) {
  this->edit_.SetBytes(std::string_view("ab\0cd", 5));
  EXPECT_EQ(this->edit_.Bytes(), "ab");
  this->edit_.SetBytes(std::string_view("\0cd", 3));
  EXPECT_EQ(this->edit_.Bytes(), "");
  Paste(this->edit_, QStringLiteral("a\0b"));
  EXPECT_EQ(this->edit_.Bytes(), "a?b");
}

TYPED_TEST(BothByteEdits, FillingIsSilentUnderABlocker) {
  this->edit_.SetBytes("ab");
  QSignalSpy changed(&this->edit_, &TypeParam::textChanged);
  QSignalSpy moved(&this->edit_, &TypeParam::cursorPositionChanged);
  {
    const QSignalBlocker blocker(&this->edit_);
    this->edit_.SetBytes("cd\r\nef");
    this->edit_.SetBytes("");
    this->edit_.SetBytes("gh");
  }
  EXPECT_EQ(changed.count(), 0);
  EXPECT_EQ(moved.count(), 0);
  EXPECT_EQ(this->edit_.Bytes(), "gh");
  this->edit_.SetBytes("ij");
  EXPECT_EQ(changed.count(), 1);
}

TYPED_TEST(BothByteEdits, EachChangeByTheUserIsToldOnce) {
  this->edit_.SetBytes("ab");
  QSignalSpy changed(&this->edit_, &TypeParam::textChanged);
  Type(this->edit_, kPair);
  EXPECT_EQ(changed.count(), 1);
  Paste(this->edit_, kPair);
  EXPECT_EQ(changed.count(), 2);
  Compose(this->edit_, QString(), kPair);
  EXPECT_EQ(changed.count(), 3);
  QTest::keyClick(&this->edit_, Qt::Key_Backspace);
  EXPECT_EQ(changed.count(), 4);
  this->edit_.undo();
  EXPECT_EQ(changed.count(), 5);
  QTest::keyClick(&this->edit_, Qt::Key_Left);
  QTest::keyClick(&this->edit_, Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(changed.count(), 5);
}

TYPED_TEST(BothByteEdits, FillingForgetsTheUndoHistory) {
  this->edit_.SetBytes("ab");
  QTest::keyClicks(&this->edit_, QStringLiteral("x"));
  EXPECT_TRUE(CanUndo(this->edit_));
  this->edit_.SetBytes("cd");
  EXPECT_FALSE(CanUndo(this->edit_));
  this->edit_.undo();
  EXPECT_EQ(this->edit_.Bytes(), "cd");
  QTest::keyClicks(&this->edit_, QStringLiteral("x"));
  EXPECT_TRUE(CanUndo(this->edit_));
}

TYPED_TEST(BothByteEdits, ReadOnlyEditKeepsItsText) {
  this->edit_.setReadOnly(true);
  this->edit_.SetBytes(AllBytes());
  Select(this->edit_, 5, 5);
  QTest::keyClicks(&this->edit_, QStringLiteral("a"));
  Type(this->edit_, kPair);
  Paste(this->edit_, QStringLiteral("a"));
  QTest::keyClick(&this->edit_, Qt::Key_Return);
  QTest::keyClick(&this->edit_, Qt::Key_Return, Qt::ShiftModifier);
  QTest::keyClick(&this->edit_, Qt::Key_Delete);
  Drop(DropTarget(this->edit_), QStringLiteral("a"));
  EXPECT_EQ(this->edit_.Bytes(), AllBytes());
  QTest::keyClick(&this->edit_, Qt::Key_A, Qt::ControlModifier);
  QTest::keyClick(&this->edit_, Qt::Key_C, Qt::ControlModifier);
  TypeParam other;
  PressPaste(other);
  EXPECT_EQ(other.Bytes(), AllBytes());
}

TYPED_TEST(BothByteEdits, LineEndsGoThroughTheClipboardFromEditToEdit) {
  const std::string bytes = "a\r\nb\rc\nd\n\re\r\r\n\xA0";
  this->edit_.SetBytes(bytes);
  QTest::keyClick(&this->edit_, Qt::Key_A, Qt::ControlModifier);
  QTest::keyClick(&this->edit_, Qt::Key_C, Qt::ControlModifier);
  ByteLineEdit line;
  PressPaste(line);
  EXPECT_EQ(line.Bytes(), bytes);
  ByteTextEdit text;
  PressPaste(text);
  EXPECT_EQ(text.Bytes(), bytes);
}

// ---- The line edit alone

TEST(ByteLineEdit, TakesTextsOfAnyLength) {
  const std::string bytes(100000, 'a');
  ByteLineEdit edit;
  edit.SetBytes(bytes);
  EXPECT_EQ(edit.Bytes(), bytes);
}

TEST(ByteLineEdit, PasswordIsKeptToo) {
  UsePage("windows-1252");
  ByteLineEdit edit;
  edit.setEchoMode(QLineEdit::Password);
  edit.SetBytes(AllBytes());
  EXPECT_EQ(edit.Bytes(), AllBytes());
  edit.clear();
  Type(edit, kPair);
  EXPECT_EQ(edit.Bytes(), "?");
}

TEST(ByteLineEdit, CursorStaysBehindWhatAssistiveTechnologyInserted) {
  UsePage("windows-1252");
  ByteLineEdit edit;
  edit.SetBytes("ab");
  Select(edit, 1, 1);
  edit.insert(QStringLiteral("\U0001F600\U0001F600"));
  EXPECT_EQ(edit.Bytes(), "a??b");
  EXPECT_EQ(Cursor(edit), 3);
}

// ---- The multi-line edit alone

class ByteTextEditTest : public testing::Test {
 protected:
  ByteTextEditTest() { UsePage("windows-1252"); }

  ByteTextEdit edit_;
};

constexpr const char* kLineEnds[] = {"\r\n", "\n", "\r"};

TEST_F(ByteTextEditTest, KeepsEveryMixtureOfLineEnds) {
  // Every text of up to eight of these.
  const std::string letters = "a\r\n";
  for (std::size_t length = 0; length <= 8; ++length) {
    std::size_t count = 1;
    for (std::size_t i = 0; i < length; ++i) count *= letters.size();
    for (std::size_t number = 0; number < count; ++number) {
      std::string bytes;
      for (std::size_t left = number; bytes.size() < length; left /= letters.size()) {
        bytes += letters[left % letters.size()];
      }
      edit_.SetBytes(bytes);
      ASSERT_EQ(edit_.Bytes(), bytes);
    }
  }
}

TEST_F(ByteTextEditTest, EachLineEndIsOne) {
  edit_.SetBytes("a\r\nb\rc\nd\r\r\n\n\re");
  EXPECT_EQ(edit_.blockCount(), 8);
  edit_.SetBytes("\v\f\x85\xA0");
  EXPECT_EQ(edit_.blockCount(), 1);
}

TEST_F(ByteTextEditTest, EnterMakesCrLf) {
  for (const char* line_end : kLineEnds) {
    const std::string end = line_end;
    edit_.SetBytes("ab" + end + end + "cd");
    Select(edit_, 1, 1);
    QTest::keyClick(&edit_, Qt::Key_Return);
    EXPECT_EQ(edit_.Bytes(), "a\r\nb" + end + end + "cd");
    edit_.undo();
    // In the empty line.
    Select(edit_, 3, 3);
    QTest::keyClick(&edit_, Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_EQ(edit_.Bytes(), "ab" + end + "\r\n" + end + "cd");
    QTest::keyClicks(&edit_, QStringLiteral("x"));
    QTest::keyClick(&edit_, Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_EQ(edit_.Bytes(), "ab" + end + "\r\nx\r\n" + end + "cd");
    // In place of a selection that ends in the midst of lines.
    Select(edit_, 1, edit_.document()->characterCount() - 2);
    QTest::keyClick(&edit_, Qt::Key_Return);
    EXPECT_EQ(edit_.Bytes(), "a\r\nd");
    EXPECT_EQ(Cursor(edit_), 2);
    while (CanUndo(edit_)) edit_.undo();
    EXPECT_EQ(edit_.Bytes(), "ab" + end + end + "cd");
    edit_.redo();
    EXPECT_EQ(edit_.Bytes(), "ab" + end + "\r\n" + end + "cd");
  }
}

TEST_F(ByteTextEditTest, LineEndIsDeletedWholeAndComesBackAsItWas) {
  for (const char* before : {"a", ""}) {
    for (const char* after : {"b", ""}) {
      for (const char* first : kLineEnds) {
        for (const char* second : kLineEnds) {
          for (const char* third : kLineEnds) {
            const auto text = [&](const std::string& middle) {
              return std::string("x") + first + before + middle + after + third + "y";
            };
            edit_.SetBytes(text(second));
            if (edit_.blockCount() != 4) continue;  // two of them became one
            const int left = 2 + static_cast<int>(std::string(before).size());
            Select(edit_, left, left);
            QTest::keyClick(&edit_, Qt::Key_Delete);
            ASSERT_EQ(edit_.Bytes(), text(""));
            edit_.undo();
            ASSERT_EQ(edit_.Bytes(), text(second));
            Select(edit_, left + 1, left + 1);
            QTest::keyClick(&edit_, Qt::Key_Backspace);
            ASSERT_EQ(edit_.Bytes(), text(""));
            edit_.undo();
            edit_.redo();
            ASSERT_EQ(edit_.Bytes(), text(""));
            edit_.undo();
            Select(edit_, left, left + 1);
            QTest::keyClicks(&edit_, QStringLiteral("z"));
            ASSERT_EQ(edit_.Bytes(), text("z"));
            edit_.undo();
            ASSERT_EQ(edit_.Bytes(), text(second));
          }
        }
      }
    }
  }
}

TEST_F(ByteTextEditTest, PastedLineEndsStayAsTheyAre) {
  edit_.SetBytes("ab");
  Select(edit_, 1, 1);
  Paste(edit_, QStringLiteral("1\r\n2\n3\r4\n\r5"));
  EXPECT_EQ(edit_.Bytes(), "a1\r\n2\n3\r4\n\r5b");
  edit_.undo();
  EXPECT_EQ(edit_.Bytes(), "ab");
  edit_.redo();
  EXPECT_EQ(edit_.Bytes(), "a1\r\n2\n3\r4\n\r5b");
}

TEST_F(ByteTextEditTest, LineEndsOfNoByteArePastedAsCrLf) {
  Paste(edit_, QStringLiteral("1\u2028"
                              "2\u2029"
                              "3"));
  EXPECT_EQ(edit_.Bytes(), "1\r\n2\r\n3");
}

TEST_F(ByteTextEditTest, LineEndsThatComeInOtherwiseAreCrLf) {
  edit_.SetBytes("a\n\nb");
  Select(edit_, 2, 2);
  Compose(edit_, QString(), QStringLiteral("1\n2"));
  EXPECT_EQ(edit_.Bytes(), "a\n1\r\n2\nb");
  edit_.undo();
  EXPECT_EQ(edit_.Bytes(), "a\n\nb");
  edit_.insertPlainText(QStringLiteral("\u2028"));
  EXPECT_EQ(edit_.Bytes(), "a\n\r\n\nb");
  edit_.setPlainText(QStringLiteral("1\n2\r3"));
  EXPECT_EQ(edit_.Bytes(), "1\r\n2\r\n3");
}

TEST_F(ByteTextEditTest, TypedTextHasNoLineEndsFormat) {
  edit_.SetBytes("a\n\nb");
  Select(edit_, 2, 2);
  QTest::keyClicks(&edit_, QStringLiteral("x"));
  Select(edit_, 4, 4);
  QTest::keyClicks(&edit_, QStringLiteral("y"));
  EXPECT_EQ(edit_.Bytes(), "a\nx\nyb");
  EXPECT_EQ(edit_.document()->findBlock(4).textFormats().size(), 1);
}

TEST_F(ByteTextEditTest, ClipboardHasOrdinaryText) {
  edit_.SetBytes(
      "a\xA0"
      "b\r\nc\rd\ne");
  Select(edit_, 1, 7);
  edit_.copy();
  EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("\u00A0"
                                                              "b\nc\nd"));
  EXPECT_FALSE(QApplication::clipboard()->mimeData()->hasHtml());
  Select(edit_, 9, 9);
  edit_.paste();
  EXPECT_EQ(edit_.Bytes(),
            "a\xA0"
            "b\r\nc\rd\ne\xA0"
            "b\r\nc\rd");
}

TEST_F(ByteTextEditTest, CutAndPasteMoveTheBytes) {
  const std::string bytes = "a\r\rb\n\nc\r\n\r\nd";
  for (int from = 0; from < 10; ++from) {
    for (int to = from + 1; to <= 10; ++to) {
      edit_.SetBytes(bytes);
      Select(edit_, from, to);
      edit_.cut();
      edit_.paste();
      ASSERT_EQ(edit_.Bytes(), bytes) << from << " to " << to;
      edit_.undo();
      edit_.undo();
      ASSERT_EQ(edit_.Bytes(), bytes) << from << " to " << to;
    }
  }
}

TEST_F(ByteTextEditTest, FillingStartsAtTheTop) {
  edit_.resize(200, 100);
  edit_.show();
  std::string bytes;
  for (int line = 0; line < 500; ++line) bytes += "some line\n";
  edit_.SetBytes(bytes);
  edit_.moveCursor(QTextCursor::End);
  ASSERT_GT(edit_.verticalScrollBar()->value(), 0);
  edit_.SetBytes(bytes);
  EXPECT_EQ(Cursor(edit_), 0);
  EXPECT_EQ(edit_.verticalScrollBar()->value(), 0);
  EXPECT_FALSE(edit_.document()->isModified());
}

// ---- Random edits against a model that is a plain list

// Bytes of one position of the edit: a character, or a line end.
using Units = std::vector<std::string>;

std::string Joined(const Units& units) {
  std::string bytes;
  for (const std::string& unit : units) bytes += unit;
  return bytes;
}

// A line end of two bytes is one unit where the edit takes it for one.
Units Split(const std::string& bytes, bool with_line_ends) {
  Units units;
  for (const char byte : bytes) {
    if (with_line_ends && byte == '\n' && !units.empty() && units.back() == "\r") {
      units.back() += byte;
    } else {
      units.emplace_back(1, byte);
    }
  }
  return units;
}

class RandomUser {
 public:
  explicit RandomUser(unsigned seed) : random_(seed) {}

  int Below(std::size_t limit) {
    return static_cast<int>(random_() % static_cast<std::mt19937::result_type>(limit));
  }

  // Many line ends, no zero.
  std::string Text(std::size_t limit) {
    std::string text;
    for (int left = Below(limit); left > 0; --left) {
      switch (Below(4)) {
        case 0:
          text += '\r';
          break;
        case 1:
          text += '\n';
          break;
        default:
          text += static_cast<char>(1 + Below(255));
      }
    }
    return text;
  }

 private:
  std::mt19937 random_;
};

// Does something at random to the edit and the same to the units. Moves the cursor first.
template <typename Edit>
void EditAtRandom(RandomUser& user, Edit& edit, Units& units) {
  constexpr bool kWithLineEnds = std::is_same_v<Edit, ByteTextEdit>;
  const int size = static_cast<int>(units.size());
  // Mostly where it is already, so that steps of undo grow.
  int from = std::min(Cursor(edit), size);
  if (user.Below(3) == 0) from = user.Below(units.size() + 1);
  const bool selects = user.Below(6) == 0;
  const int to = selects ? std::min(size, from + user.Below(8)) : from;
  Select(edit, from, to);
  const auto replace = [&](int begin, int end, const Units& by) {
    units.erase(units.begin() + begin, units.begin() + end);
    units.insert(units.begin() + begin, by.begin(), by.end());
  };
  switch (user.Below(kWithLineEnds ? 6 : 5)) {
    case 0: {
      const char letter = static_cast<char>('a' + user.Below(26));
      QTest::keyClick(&edit, letter);
      replace(from, to, {std::string(1, letter)});
      break;
    }
    case 1:
      Type(edit, user.Below(2) == 0 ? kPair : kLackedEverywhere);
      replace(from, to, {"?"});
      break;
    case 2: {
      const std::string text = user.Text(6);
      Paste(edit, FromBytes(text) + (text.size() == 3 ? QStringLiteral("\u4E2D") : QString()));
      const std::string stored = text.size() == 3 ? text + "?" : text;
      if (!stored.empty()) replace(from, to, Split(stored, kWithLineEnds));
      break;
    }
    case 3:
      QTest::keyClick(&edit, Qt::Key_Backspace);
      if (from != to || from > 0) replace(from == to ? from - 1 : from, to, {});
      break;
    case 4:
      QTest::keyClick(&edit, Qt::Key_Delete);
      if (from != to || to < size) replace(from, from == to ? to + 1 : to, {});
      break;
    default:
      QTest::keyClick(&edit, Qt::Key_Return);
      replace(from, to, {"\r\n"});
  }
}

TEST_F(ByteTextEditTest, RandomEditsAgreeWithAPlainModel) {
  for (unsigned seed = 1; seed <= 20; ++seed) {
    RandomUser user(seed);
    const std::string start = user.Text(200);
    edit_.SetBytes(start);
    Units units = Split(start, true);
    // What the text was at each length of the undo history.
    std::map<int, Units> history;
    int steps = edit_.document()->availableUndoSteps();
    history[steps] = units;
    for (int step = 0; step < 400; ++step) {
      const int kind = user.Below(8);
      if (kind == 0) {
        edit_.undo();
      } else if (kind == 1) {
        edit_.redo();
      } else {
        const std::string before = Joined(units);
        EditAtRandom(user, edit_, units);
        steps = edit_.document()->availableUndoSteps();
        if (Joined(units) != before) history.erase(history.upper_bound(steps), history.end());
        history[steps] = units;
      }
      steps = edit_.document()->availableUndoSteps();
      ASSERT_TRUE(history.contains(steps)) << "seed " << seed << ", step " << step;
      units = history[steps];
      ASSERT_EQ(edit_.Bytes(), Joined(units)) << "seed " << seed << ", step " << step;
      ASSERT_EQ(edit_.document()->characterCount(), static_cast<int>(units.size()) + 1);
    }
    while (CanUndo(edit_)) edit_.undo();
    ASSERT_EQ(edit_.Bytes(), start) << "seed " << seed;
    while (edit_.document()->isRedoAvailable()) edit_.redo();
    ASSERT_EQ(edit_.Bytes(), Joined(history.rbegin()->second)) << "seed " << seed;
  }
}

TEST(ByteLineEdit, RandomEditsAgreeWithAPlainModel) {
  UsePage("windows-1252");
  for (unsigned seed = 1; seed <= 20; ++seed) {
    RandomUser user(seed);
    const std::string start = user.Text(60);
    ByteLineEdit edit;
    edit.SetBytes(start);
    // How far a step goes is the toolkit's business, but it leads to a text that was there.
    std::vector<Units> history{Split(start, false)};
    std::size_t now = 0;
    for (int step = 0; step < 400; ++step) {
      const int kind = user.Below(8);
      if (kind == 0) {
        const bool possible = edit.isUndoAvailable();
        edit.undo();
        while (possible && now > 0 && Joined(history[--now]) != edit.Bytes()) {
        }
      } else if (kind == 1) {
        const bool possible = edit.isRedoAvailable();
        edit.redo();
        while (possible && now + 1 < history.size() && Joined(history[++now]) != edit.Bytes()) {
        }
      } else {
        Units units = history[now];
        EditAtRandom(user, edit, units);
        if (units != history[now]) {
          history.resize(++now);
          history.push_back(units);
        }
      }
      ASSERT_EQ(edit.Bytes(), Joined(history[now])) << "seed " << seed << ", step " << step;
    }
    while (edit.isUndoAvailable()) edit.undo();
    ASSERT_EQ(edit.Bytes(), start) << "seed " << seed;
  }
}

}  // namespace
}  // namespace zarvo
