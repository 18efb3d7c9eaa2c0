#include "ui/object_tabs.h"

#include <QMouseEvent>
#include <utility>

#include "ui/byte_text.h"
#include "ui/plain_text.h"

namespace zarvo {
namespace {

constexpr int kKeptSizes = 100000;

}  // namespace

ObjectTabs::ObjectTabs(QWidget* parent) : QTabBar(parent), sizes_(kKeptSizes) {
  setElideMode(Qt::ElideNone);
  setUsesScrollButtons(true);
  setExpanding(false);
  // However many tabs there are, they ask for no width: they scroll.
  setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
  connect(this, &QTabBar::currentChanged, this, &ObjectTabs::Chosen);
}

void ObjectTabs::SetCaptions(const std::vector<std::string>& captions) {
  const int wanted = static_cast<int>(captions.size());
  while (count() > wanted) removeTab(count() - 1);
  for (int i = 0; i < count(); ++i) SetCaption(i, captions[static_cast<std::size_t>(i)]);
  while (count() < wanted) AppendCaption(captions[static_cast<std::size_t>(count())]);
}

void ObjectTabs::SetCaption(int position, std::string_view caption) {
  const QString text = PlainCaption(FromBytes(caption));
  if (tabText(position) != text) setTabText(position, text);
}

void ObjectTabs::AppendCaption(std::string_view caption) {
  addTab(PlainCaption(FromBytes(caption)));
}

QString ObjectTabs::Caption(int position) const {
  return tabText(position).replace(QStringLiteral("&&"), QStringLiteral("&"));
}

QSize ObjectTabs::tabSizeHint(int index) const {
  const QString caption = tabText(index);
  if (const QSize* known = sizes_.object(caption)) return *known;
  const QSize size = QTabBar::tabSizeHint(index);
  sizes_.insert(caption, new QSize(size));
  return size;
}

void ObjectTabs::mousePressEvent(QMouseEvent* event) {
  pressed_selected_ = event->button() == Qt::LeftButton && IsOnSelected(*event);
  QTabBar::mousePressEvent(event);
}

void ObjectTabs::mouseReleaseEvent(QMouseEvent* event) {
  QTabBar::mouseReleaseEvent(event);
  if (event->button() != Qt::LeftButton) return;
  if (std::exchange(pressed_selected_, false) && IsOnSelected(*event)) emit Chosen();
}

bool ObjectTabs::IsOnSelected(const QMouseEvent& event) const {
  const int tab = tabAt(event.position().toPoint());
  return tab >= 0 && tab == currentIndex();
}

void ObjectTabs::changeEvent(QEvent* event) {
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) sizes_.clear();
  QTabBar::changeEvent(event);
}

std::string TabCaption(std::string_view name) {
  constexpr std::size_t kLimit = 24;
  constexpr std::size_t kKept = 20;
  if (name.size() < kLimit) return std::string(name);
  return std::string(name.substr(0, kKept)) + "...";
}

}  // namespace zarvo
