#include "ui/byte_line_edit.h"

#include <QDropEvent>
#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QSignalBlocker>
#include <QValidator>
#include <limits>
#include <memory>

#include "ui/byte_text.h"

namespace zarvo {
namespace {

// Catches the text that comes in past the events, from assistive technology for example. The line
// edit forgets its undo history when a validator corrects it, so this is the last resort.
class StorableValidator : public QValidator {
 public:
  using QValidator::QValidator;

  State validate(QString& text, int& position) const override {
    if (!IsStorable(text)) {
      position = static_cast<int>(ToBytes(QStringView(text).left(position)).size());
      text = Storable(text);
    }
    return Acceptable;
  }
};

QClipboard& Clipboard() { return *QGuiApplication::clipboard(); }

}  // namespace

ByteLineEdit::ByteLineEdit(QWidget* parent) : QLineEdit(parent) {
  setMaxLength(std::numeric_limits<int>::max());
  setValidator(new StorableValidator(this));
}

std::string ByteLineEdit::Bytes() const { return ToBytes(text()); }

void ByteLineEdit::SetBytes(std::string_view bytes) { setText(FromBytes(UpToZero(bytes))); }

void ByteLineEdit::paste() { PasteFrom(QClipboard::Clipboard); }

void ByteLineEdit::PasteFrom(QClipboard::Mode mode) {
  const QMimeData* const source = Clipboard().mimeData(mode);
  if (source == nullptr || isReadOnly()) return;
  const QString text = Storable(FromMimeData(*source));
  if (text.isEmpty()) return;
  EndUndoStep();
  insert(text);
  EndUndoStep();
}

// The line edit ends a step where the cursor moves, and has no other way to be told.
void ByteLineEdit::EndUndoStep() {
  if (hasSelectedText() || text().isEmpty()) return;
  const QSignalBlocker blocker(this);
  const int position = cursorPosition();
  setCursorPosition(position == 0 ? 1 : position - 1);
  setCursorPosition(position);
}

void ByteLineEdit::keyPressEvent(QKeyEvent* event) {
  if (event->matches(QKeySequence::Paste)) {
    const bool of_selection = Clipboard().supportsSelection() && event->key() == Qt::Key_Insert &&
                              event->modifiers() == (Qt::ControlModifier | Qt::ShiftModifier);
    PasteFrom(of_selection ? QClipboard::Selection : QClipboard::Clipboard);
    event->accept();
    return;
  }
  const std::unique_ptr<QKeyEvent> storable = StorableCopy(*event);
  QLineEdit::keyPressEvent(storable ? storable.get() : event);
  if (storable) event->setAccepted(storable->isAccepted());
}

void ByteLineEdit::inputMethodEvent(QInputMethodEvent* event) {
  const std::unique_ptr<QInputMethodEvent> storable = StorableCopy(*event);
  QLineEdit::inputMethodEvent(storable ? storable.get() : event);
  if (storable) event->setAccepted(storable->isAccepted());
}

void ByteLineEdit::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() == Qt::MiddleButton && Clipboard().supportsSelection()) {
    if (isReadOnly()) return;
    deselect();
    PasteFrom(QClipboard::Selection);
    return;
  }
  QLineEdit::mouseReleaseEvent(event);
}

void ByteLineEdit::dropEvent(QDropEvent* event) {
  QMimeData dropped;
  dropped.setText(Storable(FromMimeData(*event->mimeData())));
  QDropEvent storable(event->position(), event->possibleActions(), &dropped, event->buttons(),
                      event->modifiers());
  storable.setDropAction(event->dropAction());
  QLineEdit::dropEvent(&storable);
  event->setDropAction(storable.dropAction());
  event->setAccepted(storable.isAccepted());
}

}  // namespace zarvo
