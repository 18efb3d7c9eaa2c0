#include "app/help_window.h"

#include <QFileInfo>
#include <QTextBrowser>
#include <QUrl>
#include <QVBoxLayout>

namespace zarvo {

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

void HelpWindow::ShowContents(const QString& file_name) { ShowAnchor(file_name, QString()); }

void HelpWindow::ShowTopic(const QString& file_name, int context) {
  ShowAnchor(file_name, QStringLiteral("topic-%1").arg(context));
}

void HelpWindow::ShowAnchor(const QString& file_name, const QString& anchor) {
  const QFileInfo file(folder_ + file_name);
  if (!file.isFile()) {
    dialogs_.Message(parentWidget(), MessageIcon::Exclamation,
                     tr("The help file %1 can't be found.").arg(folder_ + file_name),
                     MessageButtons::Ok);
    return;
  }
  QUrl url = QUrl::fromLocalFile(file.absoluteFilePath());
  url.setFragment(anchor);
  browser_->setSource(url);
  show();
  raise();
  activateWindow();
}

}  // namespace zarvo
