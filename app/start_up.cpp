#include "app/start_up.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QScreen>
#include <QSessionManager>
#include <QSplashScreen>
#include <QTimer>
#include <QWindow>
#include <ctime>

#include "app/about_dialog.h"
#include "app/settings.h"
#include "engine/random.h"

namespace zarvo {

namespace {

// The toolkit's splash screen goes away when it is clicked; this one stays for its time.
class Splash : public QSplashScreen {
 public:
  using QSplashScreen::QSplashScreen;

 protected:
  void mousePressEvent(QMouseEvent* event) override { event->accept(); }
};

// What follows keeps the event loop waiting, so the picture has to be there before it.
void ShowAtOnce(QWidget& splash) {
  constexpr int kLongestWait = 100;  // ms
  splash.show();
  const QDeadlineTimer deadline(kLongestWait);
  while (!splash.windowHandle()->isExposed() && !deadline.hasExpired()) {
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents, 5);
  }
  splash.repaint();
}

}  // namespace

QString CommandLineTail(const QStringList& arguments) {
  return arguments.mid(1).join(QLatin1Char(' '));
}

StartUp::StartUp(Dialogs& dialogs) : dialogs_(dialogs) {}

StartUp::~StartUp() = default;

void StartUp::Begin(const QString& path, std::chrono::milliseconds splash_time) {
  ProcessRandom().Seed(static_cast<std::uint32_t>(std::time(nullptr)));
  splash_ =
      std::make_unique<Splash>(SplashPicture(QGuiApplication::primaryScreen()->devicePixelRatio()));
  ShowAtOnce(*splash_);
  window_ = std::make_unique<MainWindow>(InstallationFolder(), dialogs_);
  // The session's manager waits for the answer, so this may not be queued.
  QObject::connect(
      qApp, &QGuiApplication::commitDataRequest, window_.get(),
      [window = window_.get()](QSessionManager& manager) {
        if (!manager.allowsInteraction()) return;
        if (!window->AskBeforeSessionEnds()) manager.cancel();
        manager.release();
      },
      Qt::DirectConnection);
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
