#include "ui/add_to_predefined_dialog.h"

#include "ui/accessible_names.h"
#include "ui_add_to_predefined_dialog.h"

namespace zarvo {
namespace {

constexpr int kWidth = 56;  // of the window at first, in characters

}  // namespace

AddToPredefinedDialog::AddToPredefinedDialog(QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::AddToPredefinedDialog>()) {
  ui_->setupUi(this);
  NameControlsByLabels(*this);
  // The height is the layout's least.
  resize(kWidth * fontMetrics().averageCharWidth(), 0);
  connect(ui_->okButton, &QPushButton::clicked, this, &QDialog::accept);
  connect(ui_->cancelButton, &QPushButton::clicked, this, &QDialog::reject);
}

AddToPredefinedDialog::~AddToPredefinedDialog() = default;

std::string AddToPredefinedDialog::Name() const { return ui_->nameEdit->Bytes(); }

bool AddToPredefinedDialog::ShowInMenu() const { return ui_->showInMenuBox->isChecked(); }

}  // namespace zarvo
