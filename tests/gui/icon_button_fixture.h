// Icon buttons under a mouse, and what their pictures show.
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QHBoxLayout>
#include <QImage>
#include <QLineEdit>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <memory>

#include "ui/icon_button.h"

// Resources that stand in a library are taken in only where somebody asks for them. The macro
// doesn't work inside a namespace.
inline void LoadResources() { Q_INIT_RESOURCE(resources); }

namespace zarvo::testing {

using Alignment = IconButton::IconAlignment;

// ---- The mouse, as the window system sends it: the toolkit finds out who gets what.

inline QPoint Centre(const QWidget& widget) { return widget.rect().center(); }

inline QPoint InWindow(const QWidget& widget, const QPoint& position) {
  return widget.mapTo(widget.window(), position);
}

inline void Move(const QWidget& widget, const QPoint& position) {
  QTest::mouseMove(widget.window()->windowHandle(), InWindow(widget, position));
}

inline void MoveOnto(const QWidget& widget) {
  Move(widget, Centre(widget) - QPoint(1, 0));
  Move(widget, Centre(widget));
}

inline void Press(const QWidget& widget, Qt::MouseButton button = Qt::LeftButton) {
  QTest::mousePress(widget.window()->windowHandle(), button, Qt::NoModifier,
                    InWindow(widget, Centre(widget)));
}

inline void Release(const QWidget& widget, Qt::MouseButton button = Qt::LeftButton) {
  QTest::mouseRelease(widget.window()->windowHandle(), button, Qt::NoModifier,
                      InWindow(widget, Centre(widget)));
}

inline void ShowActive(QWidget& window) {
  window.show();
  window.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
}

// ---- Pictures

// Colours that can't be taken for one another.
inline const QColor kFace(200, 200, 200);
inline const QColor kLight(255, 0, 0);
inline const QColor kMidlight(0, 255, 0);
inline const QColor kDark(0, 0, 255);
inline const QColor kShadow(255, 0, 255);
inline const QColor kText(0, 0, 0);
inline const QColor kDisabledText(120, 130, 140);
inline const QColor kNormalIcon(255, 160, 0);
inline const QColor kHotIcon(0, 160, 255);

inline QPalette TestPalette() {
  QPalette palette;
  palette.setColor(QPalette::Button, kFace);
  palette.setColor(QPalette::Light, kLight);
  palette.setColor(QPalette::Midlight, kMidlight);
  palette.setColor(QPalette::Dark, kDark);
  palette.setColor(QPalette::Shadow, kShadow);
  palette.setColor(QPalette::ButtonText, kText);
  palette.setColor(QPalette::Disabled, QPalette::ButtonText, kDisabledText);
  return palette;
}

inline QIcon IconOf(const QColor& color, int size = 16) {
  QPixmap pixmap(size, size);
  pixmap.fill(color);
  return QIcon(pixmap);
}

inline QImage Picture(QWidget& widget, int scale = 1) {
  QImage image(widget.size() * scale, QImage::Format_RGB32);
  image.setDevicePixelRatio(scale);
  image.fill(Qt::white);
  widget.render(&image);
  return image;
}

template <typename Predicate>
QRect PlaceOf(const QImage& image, Predicate predicate) {
  QRect place;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      if (predicate(image.pixelColor(x, y))) place |= QRect(x, y, 1, 1);
    }
  }
  return place;
}

inline QRect PlaceOf(const QImage& image, const QColor& color) {
  return PlaceOf(image, [&](const QColor& pixel) { return pixel == color; });
}

// The lines of a frame without its corners, in which two colours meet.
inline void ExpectFrame(const QImage& image, int inset, const QColor& top_left,
                        const QColor& bottom_right) {
  const QRect frame = image.rect().adjusted(inset, inset, -inset, -inset);
  const int corner = qRound(image.devicePixelRatio());
  for (int x = frame.left() + corner; x <= frame.right() - corner; ++x) {
    ASSERT_EQ(image.pixelColor(x, frame.top()), top_left) << "top, inset " << inset;
    ASSERT_EQ(image.pixelColor(x, frame.bottom()), bottom_right) << "bottom, inset " << inset;
  }
  for (int y = frame.top() + corner; y <= frame.bottom() - corner; ++y) {
    ASSERT_EQ(image.pixelColor(frame.left(), y), top_left) << "left, inset " << inset;
    ASSERT_EQ(image.pixelColor(frame.right(), y), bottom_right) << "right, inset " << inset;
  }
}

inline void ExpectFrame(const QImage& image, int inset, const QColor& color) {
  ExpectFrame(image, inset, color, color);
}

// ---- A window with a field, which has the focus, and two buttons

class IconButtonTest : public ::testing::Test {
 protected:
  void SetUp() override {
    auto* layout = new QHBoxLayout(&window_);
    layout->setSpacing(20);
    layout->addWidget(field_);
    layout->addWidget(button_);
    layout->addWidget(other_);
    field_->setFocusPolicy(Qt::StrongFocus);
    for (IconButton* button : {button_, other_}) {
      button->setFixedSize(60, 40);
      button->setAutoDefault(false);
      button->setPalette(TestPalette());
    }
    ASSERT_NO_FATAL_FAILURE(ShowActive(window_));
    field_->setFocus();
    ASSERT_TRUE(QTest::qWaitFor([this] { return field_->hasFocus(); }));
    ASSERT_TRUE(button_->isEnabled());
    ASSERT_TRUE(other_->isEnabled());
    MoveAway();
  }

  void TearDown() override {
    // No test hands a held mouse button on to the next.
    ASSERT_EQ(QGuiApplication::mouseButtons(), Qt::NoButton);
  }

  // Onto the margin of the window.
  void MoveAway() { QTest::mouseMove(window_.windowHandle(), QPoint(1, 1)); }

  QDialog window_;
  QLineEdit* field_ = new QLineEdit;
  IconButton* button_ = new IconButton("One");
  IconButton* other_ = new IconButton("Two");
};

}  // namespace zarvo::testing
