#include "app/about_dialog.h"

#include <QIcon>

#include "ui_about_dialog.h"

namespace zarvo {

AboutDialog::AboutDialog(QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::AboutDialog>()) {
  ui_->setupUi(this);
  constexpr int kIconSize = 48;
  ui_->iconLabel->setPixmap(
      QIcon(QStringLiteral(":/app.svg")).pixmap(QSize(kIconSize, kIconSize), devicePixelRatioF()));
  ui_->splashLabel->setPixmap(SplashPicture(devicePixelRatioF()));
  connect(ui_->okButton, &QPushButton::clicked, this, &QDialog::accept);
}

AboutDialog::~AboutDialog() = default;

QPixmap SplashPicture(qreal device_pixel_ratio) {
  constexpr QSize kSize(440, 240);
  return QIcon(QStringLiteral(":/splash.svg")).pixmap(kSize, device_pixel_ratio);
}

}  // namespace zarvo
