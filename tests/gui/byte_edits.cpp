#include "tests/gui/byte_edits.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QDropEvent>
#include <QInputMethodEvent>
#include <QMenu>
#include <QMimeData>
#include <QTest>
#include <QTextCursor>
#include <QTextDocument>
#include <algorithm>

#include "model/code_page.h"
#include "ui/byte_text.h"

namespace zarvo::testing {

std::string AllBytes() {
  std::string bytes;
  for (int byte = 1; byte < 256; ++byte) bytes += static_cast<char>(byte);
  return bytes;
}

void UsePage(const char* name) { SetWindowCodePage(CodePage::Find(name).value()); }

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

}  // namespace zarvo::testing
