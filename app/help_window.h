// The window that shows the program's help.
#pragma once

#include <QDialog>

#include "ui/dialogs.h"

class QTextBrowser;

namespace zarvo {

/// Shows the HTML files of the installation folder.
class HelpWindow : public QDialog {
  Q_OBJECT

 public:
  HelpWindow(QString installation_folder, Dialogs& dialogs, QWidget* parent = nullptr);

  /// Shows the file of this name (with its ending) from its start, or at a context number. A file
  /// that isn't there gives a message box with its path.
  void ShowContents(const QString& file_name);
  void ShowTopic(const QString& file_name, int context);

 private:
  void ShowAnchor(const QString& file_name, const QString& anchor);

  QString folder_;
  Dialogs& dialogs_;
  QTextBrowser* browser_;
};

/// The two help files.
inline const QString kProgramHelp = QStringLiteral("Zarvo Composer.html");
inline const QString kReferenceHelp = QStringLiteral("Zarvo Reference.html");

}  // namespace zarvo
