// Line ends. The toolkit's document splits its text into blocks and knows one kind of separator
// between them. The separator is a character of the document all the same, and has a character
// format, as every character has. So the kind of a line end is a property of that format: it comes
// and goes with the separator, and the document's own undo history brings it back with it. No
// property means CR LF, which makes a line end that the toolkit inserts by itself one of ours.
// A block hands its "character format" out, which is the format of the separator before it.
//
// What is typed takes over the format of the character before it. It must not take the property
// of a line end: the layout treats formats as borders that no ligature or accent crosses.

#include "ui/byte_text_edit.h"

#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QScopedValueRollback>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <algorithm>
#include <array>
#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

#include "ui/byte_text.h"

namespace zarvo {
namespace {

enum class LineEnd { CrLf, Lf, Cr };

constexpr int kLineEndProperty = QTextFormat::UserProperty + 1;

QStringView CharactersOf(LineEnd line_end) {
  switch (line_end) {
    case LineEnd::Lf:
      return u"\n";
    case LineEnd::Cr:
      return u"\r";
    case LineEnd::CrLf:
      break;
  }
  return u"\r\n";
}

QTextCharFormat FormatOf(LineEnd line_end) {
  QTextCharFormat format;
  if (line_end != LineEnd::CrLf) format.setProperty(kLineEndProperty, static_cast<int>(line_end));
  return format;
}

// The line ends before the blocks of one document. A document has few formats and many blocks.
class LineEndReader {
 public:
  [[nodiscard]] LineEnd Before(const QTextBlock& block) {
    const auto format = static_cast<std::size_t>(block.charFormatIndex());
    if (format >= known_.size()) known_.resize(format + 1, kUnknown);
    int& line_end = known_[format];
    if (line_end == kUnknown) line_end = block.charFormat().intProperty(kLineEndProperty);
    return static_cast<LineEnd>(line_end);
  }

 private:
  static constexpr int kUnknown = -1;
  std::vector<int> known_;
};

// A part of the document's own text, which begins in this block, with its line ends.
QString WithLineEnds(QStringView raw, QTextBlock block) {
  LineEndReader reader;
  QString text;
  text.reserve(raw.size() + raw.count(QChar::ParagraphSeparator));
  qsizetype position = 0;
  while (true) {
    const qsizetype end = raw.indexOf(QChar::ParagraphSeparator, position);
    if (end < 0) break;
    block = block.next();
    text += raw.mid(position, end - position);
    text += CharactersOf(reader.Before(block));
    position = end + 1;
  }
  text += raw.mid(position);
  return text;
}

// Moves position behind the line end that stands there.
LineEnd TakeLineEnd(QStringView text, qsizetype& position) {
  if (text[position++] == u'\n') return LineEnd::Lf;
  if (position == text.size() || text[position] != u'\n') return LineEnd::Cr;
  ++position;
  return LineEnd::CrLf;
}

// Replaces the cursor's selection with storable text.
void Insert(QTextCursor& cursor, const QString& text) {
  const std::array line_ends{FormatOf(LineEnd::CrLf), FormatOf(LineEnd::Lf), FormatOf(LineEnd::Cr)};
  const QTextCharFormat unmarked;
  const QTextBlockFormat block_format;
  const auto is_line_end = [](QChar character) { return character == u'\r' || character == u'\n'; };
  cursor.beginEditBlock();
  cursor.removeSelectedText();
  qsizetype position = 0;
  while (position < text.size()) {
    const auto end = std::find_if(text.cbegin() + position, text.cend(), is_line_end);
    const qsizetype length = end - text.cbegin() - position;
    if (length > 0) cursor.insertText(text.mid(position, length), unmarked);
    position += length;
    if (position == text.size()) break;
    const LineEnd line_end = TakeLineEnd(text, position);
    cursor.insertBlock(block_format, line_ends[static_cast<std::size_t>(line_end)]);
  }
  cursor.endEditBlock();
}

// Storable text, its line ends among those that the document tells apart.
QString StorableLines(QString text) {
  const QString enter = CharactersOf(LineEnd::CrLf).toString();
  text.replace(QChar(QChar::LineSeparator), enter);
  text.replace(QChar(QChar::ParagraphSeparator), enter);
  return Storable(text);
}

}  // namespace

ByteTextEdit::ByteTextEdit(QWidget* parent) : QPlainTextEdit(parent) {
  connect(document(), &QTextDocument::contentsChange, this, &ByteTextEdit::NoteForeign);
  connect(document(), &QTextDocument::contentsChanged, this, &ByteTextEdit::ReplaceForeign);
}

std::string ByteTextEdit::Bytes() const {
  return ToBytes(WithLineEnds(document()->toRawText(), document()->begin()));
}

void ByteTextEdit::SetBytes(std::string_view bytes) {
  const QScopedValueRollback trusted(trusted_, true);
  const bool with_undo = isUndoRedoEnabled();
  setUndoRedoEnabled(false);
  QTextCursor cursor(document());
  cursor.beginEditBlock();
  document()->clear();
  Insert(cursor, FromBytes(UpToZero(bytes)));
  cursor.endEditBlock();
  setUndoRedoEnabled(with_undo);
  document()->setModified(false);
  cursor.movePosition(QTextCursor::Start);
  setTextCursor(cursor);
}

bool ByteTextEdit::IsEditable() const { return textInteractionFlags().testFlag(Qt::TextEditable); }

void ByteTextEdit::InsertAtCursor(const QString& text) {
  const QScopedValueRollback trusted(trusted_, true);
  QTextCursor cursor = textCursor();
  Insert(cursor, text);
  setTextCursor(cursor);
}

void ByteTextEdit::TypeUnmarked() {
  // With a selection this would format the selection.
  if (IsEditable() && !textCursor().hasSelection()) setCurrentCharFormat(QTextCharFormat());
}

void ByteTextEdit::keyPressEvent(QKeyEvent* event) {
  const bool enter = event->matches(QKeySequence::InsertParagraphSeparator) ||
                     event->matches(QKeySequence::InsertLineSeparator);
  if (enter && IsEditable()) {
    InsertAtCursor(CharactersOf(LineEnd::CrLf).toString());
    event->accept();
    return;
  }
  TypeUnmarked();
  const std::unique_ptr<QKeyEvent> storable = StorableCopy(*event);
  QPlainTextEdit::keyPressEvent(storable ? storable.get() : event);
  if (storable) event->setAccepted(storable->isAccepted());
}

void ByteTextEdit::inputMethodEvent(QInputMethodEvent* event) {
  TypeUnmarked();
  const std::unique_ptr<QInputMethodEvent> storable = StorableCopy(*event);
  QPlainTextEdit::inputMethodEvent(storable ? storable.get() : event);
  if (storable) event->setAccepted(storable->isAccepted());
}

QMimeData* ByteTextEdit::createMimeDataFromSelection() const {
  const QTextCursor cursor = textCursor();
  const QTextBlock first = document()->findBlock(cursor.selectionStart());
  return ToMimeData(WithLineEnds(cursor.selectedText(), first)).release();
}

void ByteTextEdit::insertFromMimeData(const QMimeData* source) {
  if (source == nullptr || !IsEditable()) return;
  const QString text = StorableLines(FromMimeData(*source));
  if (!text.isEmpty()) InsertAtCursor(text);
}

// ---- Text that comes in past the events, from assistive technology for example

void ByteTextEdit::NoteForeign(int position, int /*removed*/, int added) {
  if (trusted_) return;
  const int end = position + added;
  for (QTextBlock block = document()->findBlock(position);
       block.isValid() && block.position() < end; block = block.next()) {
    if (IsStorable(block.text())) continue;
    if (foreign_begin_ == foreign_end_) foreign_begin_ = block.position();
    foreign_end_ = block.position() + block.length();
  }
}

void ByteTextEdit::ReplaceForeign() {
  const int begin = std::exchange(foreign_begin_, 0);
  const int end = std::exchange(foreign_end_, 0);
  if (begin == end) return;
  const QScopedValueRollback trusted(trusted_, true);
  // No step of the history may lead back to these characters.
  const bool with_undo = isUndoRedoEnabled();
  setUndoRedoEnabled(false);
  QTextCursor cursor(document());
  cursor.beginEditBlock();
  // Backwards, so that what is still to do stays where it is.
  for (QTextBlock block = document()->findBlock(end - 1);
       block.isValid() && block.position() >= begin; block = block.previous()) {
    const QString text = block.text();
    for (qsizetype last = text.size() - 1; last >= 0; --last) {
      if (IsStorable(QStringView(text).mid(last, 1))) continue;
      qsizetype first = last;
      if (first > 0 && text[last].isLowSurrogate() && text[first - 1].isHighSurrogate()) --first;
      cursor.setPosition(block.position() + static_cast<int>(first));
      cursor.setPosition(block.position() + static_cast<int>(last) + 1, QTextCursor::KeepAnchor);
      Insert(cursor, StorableLines(text.mid(first, last - first + 1)));
      last = first;
    }
  }
  cursor.endEditBlock();
  setUndoRedoEnabled(with_undo);
  document()->setModified(true);
}

}  // namespace zarvo
