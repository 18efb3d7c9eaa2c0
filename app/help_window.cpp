#include "app/help_window.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QTextBrowser>
#include <QUrl>
#include <QVBoxLayout>
#include <QWindow>

namespace zarvo {
namespace {

QString AnchorOf(int context) { return QStringLiteral("topic-%1").arg(context); }

}  // namespace

HelpWindow::HelpWindow(QString installation_folder, Dialogs& dialogs, QWidget* parent)
    : QDialog(parent),
      folder_(std::move(installation_folder)),
      dialogs_(dialogs),
      browser_(new QTextBrowser(this)) {
  setObjectName(QStringLiteral("HelpWindow"));
  setWindowTitle(tr("Help"));
  browser_->setObjectName(QStringLiteral("helpBrowser"));
  browser_->setAccessibleName(tr("Help text"));
  browser_->setOpenExternalLinks(false);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(browser_);
  // Some 70 characters by 30 lines at any font.
  const QFontMetrics metrics(font());
  resize(metrics.averageCharWidth() * 80, metrics.lineSpacing() * 32);
}

void HelpWindow::ShowContents(const QString& file_name) {
  ShowAnchor(folder_ + file_name, QString());
}

void HelpWindow::ShowTopic(const QString& file_name, int context) {
  ShowAnchor(folder_ + file_name, AnchorOf(context));
}

void HelpWindow::ShowDefaultTopic(const QString& program_file, int context) {
  const QFileInfo program(program_file);
  const QFileInfo file(program.dir(), program.completeBaseName() + QStringLiteral(".html"));
  ShowAnchor(file.isFile() ? file.filePath() : folder_ + kProgramHelp, AnchorOf(context));
}

void HelpWindow::ShowAnchor(const QString& path, const QString& anchor) {
  const QFileInfo file(path);
  if (!file.isFile()) {
    dialogs_.Message(parentWidget(), MessageIcon::Exclamation,
                     tr("The help file %1 can't be found.").arg(path), MessageButtons::Ok);
    return;
  }
  QUrl url = QUrl::fromLocalFile(file.absoluteFilePath());
  url.setFragment(anchor);
  browser_->setSource(url);
  show();
  StandAboveDialogs();
  raise();
  activateWindow();
}

void HelpWindow::StandAboveDialogs() {
  // A modal dialog blocks every window but those that belong to it.
  const QWidget* owner = QApplication::activeModalWidget();
  if (owner == nullptr || owner == this) owner = parentWidget();
  windowHandle()->setTransientParent(owner != nullptr ? owner->windowHandle() : nullptr);
}

}  // namespace zarvo
