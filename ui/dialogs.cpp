#include "ui/dialogs.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QGuiApplication>
#include <QLineEdit>
#include <QMessageBox>
#include <QStringList>

namespace zarvo {
namespace {

QMessageBox::Icon ToolkitIcon(MessageIcon icon) {
  switch (icon) {
    case MessageIcon::Information:
      return QMessageBox::Information;
    case MessageIcon::Question:
      return QMessageBox::Question;
    case MessageIcon::Exclamation:
      return QMessageBox::Warning;
    case MessageIcon::Stop:
      return QMessageBox::Critical;
  }
  return QMessageBox::NoIcon;
}

QMessageBox::StandardButtons ToolkitButtons(MessageButtons buttons) {
  switch (buttons) {
    case MessageButtons::Ok:
      return QMessageBox::Ok;
    case MessageButtons::YesNo:
      return QMessageBox::Yes | QMessageBox::No;
    case MessageButtons::YesNoCancel:
      return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
  }
  return QMessageBox::NoButton;
}

QString Text(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

// While it lives, the pointer of a program that waits for its user doesn't say that it is working.
class AnswerCursor {
 public:
  AnswerCursor() : is_needed_(QGuiApplication::overrideCursor() != nullptr) {
    if (is_needed_) QGuiApplication::setOverrideCursor(Qt::ArrowCursor);
  }
  ~AnswerCursor() {
    if (is_needed_) QGuiApplication::restoreOverrideCursor();
  }
  AnswerCursor(const AnswerCursor&) = delete;
  AnswerCursor& operator=(const AnswerCursor&) = delete;

 private:
  bool is_needed_;
};

int Show(QMessageBox& box) {
  box.setTextFormat(Qt::PlainText);
  const AnswerCursor cursor;
  return box.exec();
}

// The toolkit appends the default extension to every name without one, and then doesn't find the
// file of just that name.
class OpenFileDialog : public QFileDialog {
 public:
  using QFileDialog::QFileDialog;

  void accept() override {
    const QString suffix = defaultSuffix();
    const auto* const name = findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    if (name != nullptr && QFileInfo(directory(), name->text()).isFile()) setDefaultSuffix({});
    QFileDialog::accept();
    // Once it is accepted the dialog would append it to what it gives.
    if (result() != QDialog::Accepted) setDefaultSuffix(suffix);
  }
};

std::optional<QString> AskForFile(QFileDialog& dialog, const FileRequest& request) {
  const AnswerCursor cursor;
  dialog.setNameFilters(ToolkitFilters(request.Filters));
  dialog.setDefaultSuffix(Text(request.DefaultExtension));
  if (!request.InitialName.isEmpty()) dialog.selectFile(request.InitialName);
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return {};
  return dialog.selectedFiles().constFirst();
}

}  // namespace

Answer ToolkitDialogs::Message(QWidget* parent, MessageIcon icon, const QString& text,
                               MessageButtons buttons) {
  // A window that isn't shown yet has no place to stand over.
  QWidget* const visible_parent = parent != nullptr && parent->isVisible() ? parent : nullptr;
  QMessageBox box(ToolkitIcon(icon), QString::fromUtf8(kProgramName), text, ToolkitButtons(buttons),
                  visible_parent);
  switch (Show(box)) {
    case QMessageBox::Yes:
      return Answer::Yes;
    case QMessageBox::No:
      return Answer::No;
    case QMessageBox::Cancel:
      return Answer::Cancel;
    default:
      return buttons == MessageButtons::YesNo ? Answer::No : Answer::Ok;
  }
}

void ToolkitDialogs::RunMessage(QWidget* parent, const QString& text) {
  QMessageBox box(QMessageBox::Critical, QString::fromUtf8(kProgramName), text, QMessageBox::Ok,
                  parent);
  box.setWindowModality(Qt::WindowModal);
  static_cast<void>(Show(box));
}

std::optional<QString> ToolkitDialogs::OpenFile(QWidget* parent, const FileRequest& request) {
  OpenFileDialog dialog(parent);
  dialog.setAcceptMode(QFileDialog::AcceptOpen);
  dialog.setFileMode(QFileDialog::ExistingFile);
  return AskForFile(dialog, request);
}

std::optional<QString> ToolkitDialogs::SaveFile(QWidget* parent, const FileRequest& request) {
  QFileDialog dialog(parent);
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setFileMode(QFileDialog::AnyFile);
  return AskForFile(dialog, request);
}

QStringList ToolkitFilters(std::string_view filters) {
  const QStringList parts = Text(filters).split(u'|');
  QStringList converted;
  for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
    const QString& description = parts[i];
    const QString pattern = parts[i + 1] == u"*.*" ? QStringLiteral("*") : parts[i + 1];
    // The description shows the pattern in brackets already; the toolkit reads it from there.
    converted += description.left(description.lastIndexOf(u'(')) + u'(' + pattern + u')';
  }
  return converted;
}

}  // namespace zarvo
