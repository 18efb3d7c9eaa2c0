// The About box.
#pragma once

#include <QDialog>
#include <memory>

namespace Ui {
class AboutDialog;
}

namespace zarvo {

class AboutDialog : public QDialog {
  Q_OBJECT

 public:
  explicit AboutDialog(QWidget* parent = nullptr);
  ~AboutDialog() override;

 private:
  std::unique_ptr<Ui::AboutDialog> ui_;
};

/// The splash picture at this width in the window's own pixels, crisp at any scale factor.
[[nodiscard]] QPixmap SplashPicture(qreal device_pixel_ratio);

}  // namespace zarvo
