// The two dialogs that ask for passwords.
#pragma once

#include <QDialog>
#include <memory>
#include <string>

#include "ui/dialogs.h"

namespace Ui {
class EnterPasswordDialog;
class PasswordChangeDialog;
}  // namespace Ui

namespace zarvo {

/// Asks for one password.
class EnterPasswordDialog : public QDialog {
  Q_OBJECT

 public:
  explicit EnterPasswordDialog(QWidget* parent = nullptr);
  ~EnterPasswordDialog() override;

  /// What was typed, in the code page's bytes.
  [[nodiscard]] std::string Password() const;

 private:
  std::unique_ptr<Ui::EnterPasswordDialog> ui_;
};

/// Asks for the old password and twice for the new one; stays open until both times are the same.
class PasswordChangeDialog : public QDialog {
  Q_OBJECT

 public:
  PasswordChangeDialog(Dialogs& dialogs, QWidget* parent = nullptr);
  ~PasswordChangeDialog() override;

  [[nodiscard]] std::string OldPassword() const;
  [[nodiscard]] std::string NewPassword() const;

  void accept() override;

 private:
  std::unique_ptr<Ui::PasswordChangeDialog> ui_;
  Dialogs& dialogs_;
};

}  // namespace zarvo
