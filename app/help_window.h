// The window that shows the program's help.
#pragma once

#include <QDialog>

#include "ui/dialogs.h"

class QTextBrowser;

namespace zarvo {

/// Shows the HTML files of the installation folder. It can be read while a modal dialog is open.
class HelpWindow : public QDialog {
  Q_OBJECT

 public:
  HelpWindow(QString installation_folder, Dialogs& dialogs, QWidget* parent = nullptr);

  /// Shows the file of this name (with its ending) from its start, or at a context number. A file
  /// that isn't there gives a message box with its path.
  void ShowContents(const QString& file_name);
  void ShowTopic(const QString& file_name, int context);

  /// Shows a context number of the program's default help file: the one beside the program file,
  /// which bears its name, or else the program's help in the installation folder.
  void ShowDefaultTopic(const QString& program_file, int context);

 private:
  void ShowAnchor(const QString& path, const QString& anchor);
  void StandAboveDialogs();

  QString folder_;
  Dialogs& dialogs_;
  QTextBrowser* browser_;
};

/// The two help files.
inline const QString kProgramHelp = QStringLiteral("Zarvo Composer.html");
inline const QString kReferenceHelp = QStringLiteral("Zarvo Reference.html");

}  // namespace zarvo
