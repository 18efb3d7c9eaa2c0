// What the line edit and the multi-line edit of bytes have in common, and the line edit.
#include "tests/gui/byte_edits.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QMenu>
#include <QSignalBlocker>
#include <QSignalSpy>
#include <QTest>
#include <memory>
#include <string>
#include <type_traits>

#include "ui/byte_text.h"

namespace zarvo {
namespace {

using testing::AllBytes;
using testing::CanUndo;
using testing::Compose;
using testing::Cursor;
using testing::Drop;
using testing::DropTarget;
using testing::kCodePages;
using testing::kLackedEverywhere;
using testing::kPair;
using testing::Paste;
using testing::PressPaste;
using testing::Select;
using testing::Shown;
using testing::TriggerPaste;
using testing::Type;
using testing::UsePage;

template <typename Edit>
class BothByteEdits : public ::testing::Test {
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

using Edits = ::testing::Types<ByteLineEdit, ByteTextEdit>;
TYPED_TEST_SUITE(BothByteEdits, Edits, EditNames);

TYPED_TEST(BothByteEdits, KeepsEveryByteOfEveryPage) {
  for (const char* page : kCodePages) {
    UsePage(page);
    TypeParam edit;
    EXPECT_EQ(edit.Bytes(), "") << page;
    edit.SetBytes(AllBytes());
    EXPECT_EQ(edit.Bytes(), AllBytes()) << page;
  }
}

TYPED_TEST(BothByteEdits, TypingLeavesTheOtherBytesOfEveryPageAlone) {
  for (const char* page : kCodePages) {
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
  for (const char* page : kCodePages) {
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

}  // namespace
}  // namespace zarvo
