// The combo box in which a text of the document is typed or chosen.
#pragma once

#include <QComboBox>

#include "ui/byte_line_edit.h"

namespace zarvo {

/// Editable, by a line edit that holds bytes; completes nothing.
class ByteComboBox : public QComboBox {
  Q_OBJECT

 public:
  explicit ByteComboBox(QWidget* parent = nullptr);

  [[nodiscard]] ByteLineEdit& Edit() { return *edit_; }

 private:
  // Made with the box: one that is put in later stands at the end of the window's tab order, and
  // the toolkit leaves the order damaged, and later writes to freed memory, when it is moved from
  // there.
  ByteLineEdit* edit_;
};

}  // namespace zarvo
