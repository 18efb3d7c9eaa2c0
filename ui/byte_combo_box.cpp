#include "ui/byte_combo_box.h"

namespace zarvo {

ByteComboBox::ByteComboBox(QWidget* parent) : QComboBox(parent), edit_(new ByteLineEdit(this)) {
  setLineEdit(edit_);
  setCompleter(nullptr);
}

}  // namespace zarvo
