// The line edit of every window: what it shows is what the document stores.
#pragma once

#include <QClipboard>
#include <QLineEdit>
#include <string>
#include <string_view>

namespace zarvo {

/// A character that the window's code page lacks becomes "?" as it comes in, by whatever way.
/// Every byte but zero is kept, line breaks too (which are shown as blanks).
class ByteLineEdit : public QLineEdit {
  Q_OBJECT

 public:
  explicit ByteLineEdit(QWidget* parent = nullptr);

  [[nodiscard]] std::string Bytes() const;

  /// As setText: the undo history starts anew, the cursor stands at the end. Ends at a zero byte.
  void SetBytes(std::string_view bytes);

  /// Hides QLineEdit's own, also from the context menu, which calls it by name.
  Q_SLOT void paste();

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void inputMethodEvent(QInputMethodEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  void PasteFrom(QClipboard::Mode mode);
  void EndUndoStep();
};

}  // namespace zarvo
