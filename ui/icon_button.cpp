// The capture. A lit button must learn that the mouse has left it, and a pressed one must keep the
// mouse until it is released. The toolkit grants both to every widget: a leave event comes whatever
// lies beside the button, and the widget that was pressed gets all mouse events until the release.
// So captured_ only remembers that the mouse is the button's; the mouse of the whole display is
// never grabbed. A real grab would be let go a moment after the mouse has left, and a click that
// comes within that moment, as from a remote desktop or a touch screen, would be lost.

#include "ui/icon_button.h"

#include <QApplication>
#include <QEvent>
#include <QFocusEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>
#include <algorithm>
#include <limits>

namespace zarvo {
namespace {

constexpr int kFocusInset = 3;
// The content stays within the focus rectangle.
constexpr int kMargin = kFocusInset + 1;
constexpr int kIconGap = 4;
constexpr int kCaptionFlags = Qt::AlignCenter | Qt::TextShowMnemonic;

quint8 ToByte(int size) {
  return static_cast<quint8>(std::clamp<int>(size, 0, std::numeric_limits<quint8>::max()));
}

// A frame one pixel wide along the inside of the rectangle.
void DrawFrame(QPainter& painter, const QRect& area, const QBrush& top_left,
               const QBrush& bottom_right) {
  painter.fillRect(area.left(), area.top(), area.width() - 1, 1, top_left);
  painter.fillRect(area.left(), area.top() + 1, 1, area.height() - 2, top_left);
  painter.fillRect(area.left(), area.bottom(), area.width(), 1, bottom_right);
  painter.fillRect(area.right(), area.top(), 1, area.height() - 1, bottom_right);
}

// Every other pixel along the inside of the rectangle, in pixels of the button, not of the screen:
// the dots are as large as the lines at any scale.
void DrawDots(QPainter& painter, const QRect& area, const QColor& color) {
  const auto draw_dot = [&](int x, int y) {
    if ((x + y) % 2 == 0) painter.fillRect(x, y, 1, 1, color);
  };
  for (int x = area.left(); x <= area.right(); ++x) {
    draw_dot(x, area.top());
    draw_dot(x, area.bottom());
  }
  for (int y = area.top(); y <= area.bottom(); ++y) {
    draw_dot(area.left(), y);
    draw_dot(area.right(), y);
  }
}

QRect Shrunk(const QRect& area, int by) { return area.adjusted(by, by, -by, -by); }

}  // namespace

IconButton::IconButton(QWidget* parent) : IconButton(QString(), parent) {}

IconButton::IconButton(const QString& text, QWidget* parent) : QPushButton(text, parent) {
  setFlat(true);
  setMouseTracking(true);
  setAttribute(Qt::WA_OpaquePaintEvent);
}

void IconButton::SetIcons(const QString& normal, const QString& hot, quint8 width, quint8 height) {
  setIconSize(QSize(width, height));
  setIcon(normal.isEmpty() ? QIcon() : QIcon(normal));
  SetHotIcon(hot.isEmpty() ? QIcon() : QIcon(hot));
}

void IconButton::SetHotIcon(const QIcon& icon) {
  hot_icon_ = icon;
  updateGeometry();
  update();
}

quint8 IconButton::IconWidth() const { return ToByte(iconSize().width()); }

quint8 IconButton::IconHeight() const { return ToByte(iconSize().height()); }

void IconButton::SetDrawBorder(bool draw_border) {
  draw_border_ = draw_border;
  update();
}

void IconButton::SetAlignment(IconAlignment alignment) {
  alignment_ = alignment;
  updateGeometry();
  update();
}

void IconButton::SetActivityWindow(QWidget* widget) {
  activity_window_ = widget;
  update();
}

// ---- The mouse and the focus

bool IconButton::IsActivityWindowActive() const {
  const QWidget* widget = activity_window_;
  if (widget == nullptr) widget = parentWidget() != nullptr ? parentWidget() : this;
  return QApplication::activeWindow() == widget->window();
}

void IconButton::LightUp() {
  mouse_over_ = true;
  captured_ = true;
  // The hovered button is the one that Space and Enter press.
  setFocus(Qt::MouseFocusReason);
  update();
}

void IconButton::GoDark() {
  if (!mouse_over_) return;
  mouse_over_ = false;
  update();
}

void IconButton::LeaveMouse(Qt::MouseButtons held) {
  GoDark();
  if (!held.testFlag(Qt::LeftButton)) captured_ = false;
}

void IconButton::EndCapture() {
  captured_ = false;
  GoDark();
}

void IconButton::mouseMoveEvent(QMouseEvent* event) {
  QPushButton::mouseMoveEvent(event);
  if (event->buttons().testFlag(Qt::LeftButton) && !mouse_over_) return;
  if (!isFlat()) return;
  // While any button is held, moves outside come too.
  if (!rect().contains(event->position().toPoint())) {
    LeaveMouse(event->buttons());
  } else if (!captured_ && IsActivityWindowActive()) {
    LightUp();
  }
}

void IconButton::enterEvent(QEnterEvent* event) {
  QPushButton::enterEvent(event);
  // A mouse that comes in anew isn't captured, even where the release never arrived.
  if (!event->buttons().testFlag(Qt::LeftButton)) captured_ = false;
}

void IconButton::leaveEvent(QEvent* event) {
  QPushButton::leaveEvent(event);
  LeaveMouse(QGuiApplication::mouseButtons());
}

void IconButton::mouseReleaseEvent(QMouseEvent* event) {
  // Before the click goes out: what it runs may show a dialog, or delete the button.
  if (event->button() == Qt::LeftButton) EndCapture();
  QPushButton::mouseReleaseEvent(event);
}

void IconButton::focusOutEvent(QFocusEvent* event) {
  QPushButton::focusOutEvent(event);
  // The mouse stays the button's: otherwise its next move would take the focus back from the
  // control to which the user has just tabbed. A popup, however, takes the mouse with the focus.
  if (event->reason() == Qt::PopupFocusReason) {
    EndCapture();
  } else {
    GoDark();
  }
}

bool IconButton::event(QEvent* event) {
  switch (event->type()) {
    case QEvent::WindowDeactivate:
      EndCapture();
      break;
    case QEvent::ToolTipChange:
    case QEvent::Show:
      BorrowNameFromToolTip();
      break;
    default:
      break;
  }
  return QPushButton::event(event);
}

void IconButton::changeEvent(QEvent* event) {
  QPushButton::changeEvent(event);
  if (event->type() == QEvent::EnabledChange && !isEnabled()) EndCapture();
}

void IconButton::hideEvent(QHideEvent* event) {
  QPushButton::hideEvent(event);
  EndCapture();
}

void IconButton::BorrowNameFromToolTip() {
  // A name that somebody else gave stays.
  if (accessibleName() != borrowed_name_) return;
  const QString name = text().isEmpty() ? toolTip() : QString();
  if (name == borrowed_name_) return;
  borrowed_name_ = name;
  setAccessibleName(name);
}

// ---- Sizes and places

QSize IconButton::IconSpace() const { return HasIcon() ? iconSize() : QSize(0, 0); }

QSize IconButton::CaptionSpace() const {
  return text().isEmpty() ? QSize(0, 0) : fontMetrics().size(Qt::TextShowMnemonic, text());
}

QSize IconButton::ContentSize() const {
  const QSize icon = IconSpace();
  const QSize caption = CaptionSpace();
  const int gap = HasIcon() && !text().isEmpty() ? kIconGap : 0;
  if (alignment_ == IconAlignment::AboveText) {
    return QSize(std::max(icon.width(), caption.width()), icon.height() + gap + caption.height());
  }
  return QSize(icon.width() + gap + caption.width(), std::max(icon.height(), caption.height()));
}

QSize IconButton::minimumSizeHint() const {
  return ContentSize() + QSize(2 * kMargin, 2 * kMargin);
}

QSize IconButton::sizeHint() const {
  // Room to breathe around a caption; an icon brings its own.
  const int side = text().isEmpty() ? 0 : fontMetrics().averageCharWidth();
  return minimumSizeHint() + QSize(2 * side, 0);
}

QRect IconButton::ContentRect() const {
  return QStyle::alignedRect(layoutDirection(), Qt::AlignCenter, ContentSize(), rect());
}

QRect IconButton::IconRect() const {
  const bool above = alignment_ == IconAlignment::AboveText;
  return QStyle::alignedRect(
      layoutDirection(), above ? Qt::AlignTop | Qt::AlignHCenter : Qt::AlignLeft | Qt::AlignVCenter,
      IconSpace(), ContentRect());
}

QRect IconButton::CaptionRect() const {
  const bool below = alignment_ == IconAlignment::AboveText;
  return QStyle::alignedRect(
      layoutDirection(),
      below ? Qt::AlignBottom | Qt::AlignHCenter : Qt::AlignRight | Qt::AlignVCenter,
      CaptionSpace(), ContentRect());
}

// ---- Drawing

void IconButton::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const QRect area = DrawFocusFrame(painter);
  painter.fillRect(area, palette().button());
  if (isDown()) {
    DrawPressedEdge(painter, area);
  } else {
    DrawRaisedEdge(painter, area);
  }
  DrawIcon(painter);
  DrawCaption(painter);
  DrawFocusDots(painter);
}

// Returns what is left for the button itself.
QRect IconButton::DrawFocusFrame(QPainter& painter) const {
  if (isFlat() || !hasFocus()) return rect();
  // Black, or what stands for it on a dark desktop.
  DrawFrame(painter, rect(), palette().buttonText(), palette().buttonText());
  return Shrunk(rect(), 1);
}

void IconButton::DrawRaisedEdge(QPainter& painter, const QRect& area) const {
  if (!isFlat()) {
    DrawFrame(painter, area, palette().light(), palette().shadow());
    DrawFrame(painter, Shrunk(area, 1), palette().midlight(), palette().dark());
  } else if (mouse_over_ && draw_border_) {
    DrawFrame(painter, area, palette().light(), palette().dark());
  }
}

void IconButton::DrawPressedEdge(QPainter& painter, const QRect& area) const {
  if (!isFlat()) {
    DrawFrame(painter, area, palette().dark(), palette().dark());
  } else if (draw_border_) {
    DrawFrame(painter, area, palette().dark(), palette().light());
  }
}

void IconButton::DrawIcon(QPainter& painter) const {
  const QIcon& shown = mouse_over_ && !hot_icon_.isNull() ? hot_icon_ : icon();
  shown.paint(&painter, IconRect().translated(PressedShift()), Qt::AlignCenter,
              isEnabled() ? QIcon::Normal : QIcon::Disabled);
}

void IconButton::DrawCaption(QPainter& painter) const {
  if (text().isEmpty()) return;
  painter.setPen(palette().color(QPalette::ButtonText));
  painter.drawText(CaptionRect().translated(PressedShift()), kCaptionFlags, text());
}

void IconButton::DrawFocusDots(QPainter& painter) const {
  if (!hasFocus()) return;
  DrawDots(painter, Shrunk(rect(), kFocusInset), palette().color(QPalette::ButtonText));
}

}  // namespace zarvo
