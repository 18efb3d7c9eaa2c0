// Starting the editor: splash, seed, settings, the first document.
#pragma once

#include <QString>
#include <QStringList>
#include <chrono>
#include <memory>

#include "app/main_window.h"

class QSplashScreen;

namespace zarvo {

/// The command line behind the program's name, after the toolkit took its own options: the path of
/// the first document, taken as it stands.
[[nodiscard]] QString CommandLineTail(const QStringList& arguments);

/// The whole program but its event loop.
class StartUp {
 public:
  /// How long the splash stays when there is no document to load.
  static constexpr std::chrono::milliseconds kSplashTime{2000};

  explicit StartUp(Dialogs& dialogs);
  ~StartUp();
  StartUp(const StartUp&) = delete;
  StartUp& operator=(const StartUp&) = delete;

  /// Seeds the random generator, shows the splash, makes the windows, and shows the main window:
  /// at once with the document at path, or with a new one after the splash time.
  void Begin(const QString& path, std::chrono::milliseconds splash_time = kSplashTime);

  [[nodiscard]] MainWindow& Window() { return *window_; }

 private:
  void ShowWindow();

  Dialogs& dialogs_;
  std::unique_ptr<QSplashScreen> splash_;
  std::unique_ptr<MainWindow> window_;
};

}  // namespace zarvo
