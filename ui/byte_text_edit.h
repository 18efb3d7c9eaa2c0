// The multi-line edit of every window: what it shows is what the document stores.
#pragma once

#include <QPlainTextEdit>
#include <string>
#include <string_view>

namespace zarvo {

/// A character that the window's code page lacks becomes "?" as it comes in, by whatever way.
/// Every byte but zero is kept, and so are the bytes of each line end; Enter makes CR LF.
/// What QPlainTextEdit itself offers for filling and reading (setPlainText, toPlainText, …) knows
/// nothing of line ends: a line end that comes in so is CR LF.
class ByteTextEdit : public QPlainTextEdit {
  Q_OBJECT

 public:
  explicit ByteTextEdit(QWidget* parent = nullptr);

  [[nodiscard]] std::string Bytes() const;

  /// As setPlainText: one textChanged, the undo history starts anew, the cursor stands at the
  /// start. Ends at a zero byte.
  void SetBytes(std::string_view bytes);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void inputMethodEvent(QInputMethodEvent* event) override;
  [[nodiscard]] QMimeData* createMimeDataFromSelection() const override;
  void insertFromMimeData(const QMimeData* source) override;

 private:
  [[nodiscard]] bool IsEditable() const;
  // Storable text, in place of the selection.
  void InsertAtCursor(const QString& text);
  // What is typed next has no line end's format.
  void TypeUnmarked();

  void NoteForeign(int position, int removed, int added);
  void ReplaceForeign();

  // While text goes in that is known to be storable.
  bool trusted_ = false;
  // The part of the document where characters have just come in that the page lacks.
  int foreign_begin_ = 0;
  int foreign_end_ = 0;
};

}  // namespace zarvo
