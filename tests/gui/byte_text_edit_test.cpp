// The multi-line edit of bytes: line ends.
#include <gtest/gtest.h>

#include <QApplication>
#include <QMimeData>
#include <QScrollBar>
#include <QTest>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <cstddef>
#include <string>

#include "tests/gui/byte_edits.h"

namespace zarvo {
namespace {

using testing::CanUndo;
using testing::Compose;
using testing::Cursor;
using testing::Paste;
using testing::Select;
using testing::UsePage;

class ByteTextEditTest : public ::testing::Test {
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

}  // namespace
}  // namespace zarvo
