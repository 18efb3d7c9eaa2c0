// closing_program FILTER TEXT RUNS WAY: the editor, started as a user starts it, with nobody at it.
// It puts the file TEXT into the Preview, updates it, once more from within that run, and so on, as
// often as RUNS says. When that many runs are in progress it prints the time of the steady clock in
// nanoseconds and closes its main window. WAY says how: "close-box", "exit-button" or "escape".
#include <unistd.h>

#include <QApplication>
#include <QFile>
#include <QKeyEvent>
#include <QPushButton>
#include <QTimer>
#include <QWidget>
#include <chrono>
#include <cstdio>
#include <cstdlib>

#include "app/start_up.h"
#include "ui/byte_text_edit.h"

namespace zarvo {
namespace {

// Nobody is there to answer.
class NoDialogs : public Dialogs {
 public:
  Answer Message(QWidget* /*parent*/, MessageIcon /*icon*/, const QString& text,
                 MessageButtons /*buttons*/) override {
    Refuse(text);
  }
  std::optional<QString> OpenFile(QWidget* /*parent*/, const FileRequest& /*request*/) override {
    Refuse(QStringLiteral("open"));
  }
  std::optional<QString> SaveFile(QWidget* /*parent*/, const FileRequest& /*request*/) override {
    Refuse(QStringLiteral("save"));
  }

 private:
  [[noreturn]] static void Refuse(const QString& text) {
    static_cast<void>(std::fprintf(stderr, "unexpected dialog: %s\n", qPrintable(text)));
    std::_Exit(3);
  }
};

class Driver : public QObject {
 public:
  Driver(MainWindow& window, int runs, QString way)
      : window_(window), runs_(runs), way_(std::move(way)) {}

  void LoadText(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) std::_Exit(3);
    window_.Preview()
        .findChild<ByteTextEdit*>(QStringLiteral("originalEdit"))
        ->SetBytes(file.readAll().toStdString());
    window_.Preview().show();
  }

  // One run more than there are, and what is to be done in it.
  void Proceed() {
    if (runs_ == 0) {
      QTimer::singleShot(0, this, &Driver::Close);
      return;
    }
    --runs_;
    QTimer::singleShot(0, this, &Driver::Proceed);
    window_.Preview().Update();
  }

 private:
  void Close() {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    std::printf("%lld\n", static_cast<long long>(
                              std::chrono::duration_cast<std::chrono::nanoseconds>(now).count()));
    static_cast<void>(std::fflush(stdout));
    if (way_ == QStringLiteral("close-box")) window_.close();
    if (way_ == QStringLiteral("exit-button")) {
      window_.findChild<QPushButton*>(QStringLiteral("exitButton"))->click();
    }
    if (way_ == QStringLiteral("escape")) {
      QKeyEvent press(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
      QCoreApplication::sendEvent(&window_, &press);
    }
  }

  MainWindow& window_;
  int runs_;
  QString way_;
};

int Main(int argc, char** argv) {
  constexpr unsigned kLongest = 60;
  ::alarm(kLongest);  // a program that never ends must not outlive its test
  QApplication application(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  const QStringList arguments = QApplication::arguments();
  if (arguments.size() != 5) return 3;
  NoDialogs dialogs;
  StartUp start_up(dialogs);
  start_up.Begin(arguments[1]);
  Driver driver(start_up.Window(), arguments[3].toInt(), arguments[4]);
  driver.LoadText(arguments[2]);
  QTimer::singleShot(0, &driver, &Driver::Proceed);
  return QApplication::exec();
}

}  // namespace
}  // namespace zarvo

int main(int argc, char** argv) { return zarvo::Main(argc, argv); }
