#include "ui/password_dialogs.h"

#include "ui/accessible_names.h"
#include "ui_enter_password_dialog.h"
#include "ui_password_change_dialog.h"

namespace zarvo {
namespace {

// A dialog of so few controls would else be narrower than its own title between the title bar's
// buttons.
void MakeRoomForTitle(QDialog& dialog) {
  constexpr int kButtonsInEms = 12;
  const QFontMetrics metrics = dialog.fontMetrics();
  dialog.setMinimumWidth(metrics.horizontalAdvance(dialog.windowTitle()) +
                         kButtonsInEms * metrics.horizontalAdvance(QLatin1Char('M')));
}

}  // namespace

EnterPasswordDialog::EnterPasswordDialog(QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::EnterPasswordDialog>()) {
  ui_->setupUi(this);
  MakeRoomForTitle(*this);
  NameControlsByLabels(*this);
  connect(ui_->okButton, &QPushButton::clicked, this, &QDialog::accept);
  connect(ui_->cancelButton, &QPushButton::clicked, this, &QDialog::reject);
}

EnterPasswordDialog::~EnterPasswordDialog() = default;

std::string EnterPasswordDialog::Password() const { return ui_->passwordEdit->Bytes(); }

PasswordChangeDialog::PasswordChangeDialog(Dialogs& dialogs, QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::PasswordChangeDialog>()), dialogs_(dialogs) {
  ui_->setupUi(this);
  MakeRoomForTitle(*this);
  NameControlsByLabels(*this);
  connect(ui_->okButton, &QPushButton::clicked, this, &QDialog::accept);
  connect(ui_->cancelButton, &QPushButton::clicked, this, &QDialog::reject);
}

PasswordChangeDialog::~PasswordChangeDialog() = default;

std::string PasswordChangeDialog::OldPassword() const { return ui_->oldPasswordEdit->Bytes(); }

std::string PasswordChangeDialog::NewPassword() const { return ui_->newPasswordEdit->Bytes(); }

void PasswordChangeDialog::accept() {
  if (ui_->newPasswordEdit->Bytes() == ui_->retypeEdit->Bytes()) {
    QDialog::accept();
    return;
  }
  dialogs_.Message(this, MessageIcon::Exclamation,
                   QStringLiteral("The new and retyped new passwords are not the same. Type them "
                                  "again to ensure they're correct."),
                   MessageButtons::Ok);
  ui_->newPasswordEdit->clear();
  ui_->retypeEdit->clear();
  ui_->newPasswordEdit->setFocus();
}

}  // namespace zarvo
