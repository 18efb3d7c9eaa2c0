#include "ui/dialogs.h"

#include <QDesktopServices>
#include <QFileDialog>
#include <QMessageBox>
#include <QStringList>
#include <QUrl>

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

std::optional<QString> AskForFile(QFileDialog& dialog, const FileRequest& request) {
  dialog.setNameFilters(ToolkitFilters(request.Filters));
  dialog.setDefaultSuffix(Text(request.DefaultExtension));
  if (!request.InitialName.isEmpty()) dialog.selectFile(request.InitialName);
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return {};
  return dialog.selectedFiles().constFirst();
}

}  // namespace

Answer ToolkitDialogs::Message(QWidget* parent, MessageIcon icon, const QString& text,
                               MessageButtons buttons) {
  QMessageBox box(ToolkitIcon(icon), QString::fromUtf8(kProgramName), text, ToolkitButtons(buttons),
                  parent);
  box.setTextFormat(Qt::PlainText);
  switch (box.exec()) {
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

std::optional<QString> ToolkitDialogs::OpenFile(QWidget* parent, const FileRequest& request) {
  QFileDialog dialog(parent);
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

bool ToolkitDialogs::OpenWithAssociatedProgram(const QString& path) {
  return QDesktopServices::openUrl(QUrl::fromLocalFile(path));
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
