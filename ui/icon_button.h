// The push button of every window: flat, with an optional icon, and lit while the mouse is over it.
// Forms use it as a promoted QPushButton.
#pragma once

#include <QIcon>
#include <QPointer>
#include <QPushButton>
#include <QString>

class QPainter;

namespace zarvo {

/// Flat with its border drawn unless told otherwise. The normal icon is the button's icon(), the
/// size of both icons its iconSize().
class IconButton : public QPushButton {
  Q_OBJECT
  Q_PROPERTY(bool drawBorder READ DrawBorder WRITE SetDrawBorder)
  Q_PROPERTY(IconAlignment alignment READ Alignment WRITE SetAlignment)
  Q_PROPERTY(QIcon hotIcon READ HotIcon WRITE SetHotIcon)

 public:
  enum class IconAlignment { BesideText = 0, AboveText = 1 };
  Q_ENUM(IconAlignment)

  explicit IconButton(QWidget* parent = nullptr);
  explicit IconButton(const QString& text, QWidget* parent = nullptr);

  [[nodiscard]] static QString VersionText() { return QStringLiteral("2.1"); }
  [[nodiscard]] static constexpr int VersionNumber() { return 21; }

  /// Paths of images, in the program's resources for example, and the size in pixels (independent
  /// of the screen's scale) at which both are drawn. An empty path is no icon; without a hot icon
  /// the normal one stays while the button is lit.
  void SetIcons(const QString& normal, const QString& hot, quint8 width, quint8 height);

  void SetHotIcon(const QIcon& icon);
  [[nodiscard]] QIcon HotIcon() const { return hot_icon_; }
  [[nodiscard]] quint8 IconWidth() const;
  [[nodiscard]] quint8 IconHeight() const;

  /// Whether a flat button has its thin border while it is lit or pressed.
  void SetDrawBorder(bool draw_border);
  [[nodiscard]] bool DrawBorder() const { return draw_border_; }

  void SetAlignment(IconAlignment alignment);
  [[nodiscard]] IconAlignment Alignment() const { return alignment_; }

  /// The button lights up only while the window of this widget is the active one; with null, while
  /// the window of its parent is. Not owned.
  void SetActivityWindow(QWidget* widget);
  [[nodiscard]] QWidget* ActivityWindow() const { return activity_window_; }

  [[nodiscard]] bool IsMouseOver() const { return mouse_over_; }

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  bool event(QEvent* event) override;
  void changeEvent(QEvent* event) override;
  void hideEvent(QHideEvent* event) override;
  void enterEvent(QEnterEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  [[nodiscard]] bool IsActivityWindowActive() const;
  void LightUp();
  void GoDark();
  void LeaveMouse(Qt::MouseButtons held);
  void EndCapture();

  // An icon button without a caption is called what its tool tip says.
  void BorrowNameFromToolTip();

  [[nodiscard]] bool HasIcon() const { return !icon().isNull() || !hot_icon_.isNull(); }
  [[nodiscard]] QSize IconSpace() const;
  [[nodiscard]] QSize CaptionSpace() const;
  [[nodiscard]] QSize ContentSize() const;
  // Where icon and caption stand while the button isn't pressed.
  [[nodiscard]] QRect ContentRect() const;
  [[nodiscard]] QRect IconRect() const;
  [[nodiscard]] QRect CaptionRect() const;
  [[nodiscard]] QPoint PressedShift() const { return isDown() ? QPoint(1, 1) : QPoint(); }

  [[nodiscard]] QRect DrawFocusFrame(QPainter& painter) const;
  void DrawRaisedEdge(QPainter& painter, const QRect& area) const;
  void DrawPressedEdge(QPainter& painter, const QRect& area) const;
  void DrawIcon(QPainter& painter) const;
  void DrawCaption(QPainter& painter) const;
  void DrawFocusDots(QPainter& painter) const;

  QIcon hot_icon_;
  IconAlignment alignment_ = IconAlignment::BesideText;
  bool draw_border_ = true;
  QPointer<QWidget> activity_window_;
  bool mouse_over_ = false;
  bool captured_ = false;
  QString borrowed_name_;
};

}  // namespace zarvo
