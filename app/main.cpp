#include <QApplication>
#include <QIcon>

#include "app/start_up.h"
#include "model/locale_code_page.h"
#include "ui/byte_text.h"

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QApplication::setApplicationName(QString::fromUtf8(zarvo::kProgramName));
  QApplication::setOrganizationName(QStringLiteral("Tormelin"));
  QApplication::setWindowIcon(QIcon(QStringLiteral(":/app.svg")));
  // The program ends with its main window, whatever else is open.
  QApplication::setQuitOnLastWindowClosed(false);
  zarvo::ToolkitDialogs dialogs;
  zarvo::StartUp start_up(dialogs);
  start_up.Begin(zarvo::CommandLineTail(QApplication::arguments()));
  return QApplication::exec();
}
