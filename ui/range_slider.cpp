#include "ui/range_slider.h"

#include <QStyle>
#include <QStyleOptionSlider>
#include <QStylePainter>
#include <algorithm>

namespace zarvo {
namespace {

constexpr int kBarHeight = 6;
constexpr double kBarRounding = kBarHeight / 2.0;

}  // namespace

RangeSlider::RangeSlider(QWidget* parent) : QSlider(Qt::Horizontal, parent) {}

void RangeSlider::SetSelection(int from, int to) {
  has_selection_ = true;
  from_ = from;
  to_ = to;
  update();
}

void RangeSlider::ClearSelection() {
  has_selection_ = false;
  update();
}

int RangeSlider::HandleCentre(int value) const {
  QStyleOptionSlider option;
  initStyleOption(&option);
  option.sliderPosition = std::clamp(value, minimum(), maximum());
  return style()
      ->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, this)
      .center()
      .x();
}

void RangeSlider::paintEvent(QPaintEvent* /*event*/) {
  QStylePainter painter(this);
  QStyleOptionSlider option;
  initStyleOption(&option);
  QStyleOptionSlider groove = option;
  groove.subControls = QStyle::SC_SliderGroove | QStyle::SC_SliderTickmarks;
  // Some styles fill the groove up to the handle, which would look like a range.
  groove.sliderPosition = minimum();
  painter.drawComplexControl(QStyle::CC_Slider, groove);
  if (has_selection_ && from_ <= to_) {
    QRect bar = style()->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderGroove, this);
    const QPoint centre = bar.center();
    bar.setHeight(kBarHeight);
    bar.moveCenter(centre);
    bar.setLeft(HandleCentre(from_) - kBarHeight / 2);
    bar.setRight(HandleCentre(to_) + kBarHeight / 2);
    painter.setPen(Qt::NoPen);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(
        palette().brush(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::Highlight));
    painter.drawRoundedRect(bar, kBarRounding, kBarRounding);
    painter.setRenderHint(QPainter::Antialiasing, false);
  }
  option.subControls = QStyle::SC_SliderHandle;
  if (hasFocus()) option.state |= QStyle::State_HasFocus;
  painter.drawComplexControl(QStyle::CC_Slider, option);
}

}  // namespace zarvo
