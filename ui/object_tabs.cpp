#include "ui/object_tabs.h"

#include <QMouseEvent>
#include <QStyle>
#include <QStyleOptionTab>
#include <algorithm>
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
  KeepHeight();
}

void ObjectTabs::SetCaptions(const std::vector<QString>& captions) {
  constexpr int kFew = 20;
  const int wanted = static_cast<int>(captions.size());
  // The toolkit lays all tabs out anew for each one that comes, goes or changes while the strip is
  // shown, and for each one that comes even while it isn't, unless its tabs are invisible.
  const bool are_many = std::max(count(), wanted) > kFew;
  const bool was_shown = are_many && isVisible();
  const bool had_focus = hasFocus();
  if (was_shown) hide();
  while (count() > wanted) removeTab(count() - 1);
  for (int i = 0; i < count(); ++i) SetCaption(i, captions[static_cast<std::size_t>(i)]);
  const int first_new = count();
  while (count() < wanted) {
    AppendCaption(captions[static_cast<std::size_t>(count())]);
    if (are_many) setTabVisible(count() - 1, false);
  }
  if (are_many) {
    for (int i = first_new; i < wanted; ++i) setTabVisible(i, true);
    if (currentIndex() < 0 && wanted > 0) setCurrentIndex(0);
  }
  if (was_shown) show();
  if (was_shown && had_focus) setFocus();
}

void ObjectTabs::SetCaption(int position, const QString& caption) {
  const QString text = PlainCaption(caption);
  if (tabText(position) == text) return;
  setTabText(position, text);
  NameForReaders(position, text);
}

void ObjectTabs::AppendCaption(const QString& caption) {
  const QString text = PlainCaption(caption);
  const int position = addTab(text);
  NameForReaders(position, text);
}

// A screen reader has to say something.
void ObjectTabs::NameForReaders(int position, const QString& text) {
  setAccessibleTabName(position, text.isEmpty() ? tr("Unnamed") : QString());
}

QString ObjectTabs::Caption(int position) const {
  return tabText(position).replace(QStringLiteral("&&"), QStringLiteral("&"));
}

void ObjectTabs::KeepHeight() {
  QStyleOptionTab option;
  initStyleOption(&option, -1);
  const QSize text(
      0, fontMetrics().height() + style()->pixelMetric(QStyle::PM_TabBarTabVSpace, &option, this));
  setMinimumHeight(style()->sizeFromContents(QStyle::CT_TabBarTab, &option, text, this).height());
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
  const bool sizes_change =
      event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange;
  if (sizes_change) sizes_.clear();
  QTabBar::changeEvent(event);
  if (sizes_change) KeepHeight();
}

QString TabCaption(std::string_view name) {
  constexpr std::size_t kLimit = 24;
  constexpr std::size_t kKept = 20;
  if (name.size() < kLimit) return FromBytes(name);
  return FromBytes(name.substr(0, kKept)) + QStringLiteral("...");
}

}  // namespace zarvo
