#include "app/start_up.h"

#include <QGuiApplication>
#include <QScreen>
#include <QSplashScreen>
#include <QTimer>
#include <ctime>

#include "app/about_dialog.h"
#include "app/settings.h"
#include "engine/random.h"

namespace zarvo {

QString CommandLineTail(const QStringList& arguments) {
  return arguments.mid(1).join(QLatin1Char(' '));
}

StartUp::StartUp(Dialogs& dialogs) : dialogs_(dialogs) {}

StartUp::~StartUp() = default;

void StartUp::Begin(const QString& path, std::chrono::milliseconds splash_time) {
  ProcessRandom().Seed(static_cast<std::uint32_t>(std::time(nullptr)));
  splash_ = std::make_unique<QSplashScreen>(
      SplashPicture(QGuiApplication::primaryScreen()->devicePixelRatio()));
  splash_->show();
  window_ = std::make_unique<MainWindow>(InstallationFolder(), dialogs_);
  if (!path.isEmpty()) {
    window_->LoadDocument(path);
    ShowWindow();
    return;
  }
  QTimer::singleShot(splash_time, window_.get(), [this] {
    window_->NewDocument();
    ShowWindow();
  });
}

void StartUp::ShowWindow() {
  window_->show();
  splash_.reset();
}

}  // namespace zarvo
