// Whether a control was painted.
#pragma once

#include <QEvent>
#include <QObject>
#include <QWidget>
#include <functional>
#include <utility>

namespace zarvo::testing {

/// Counts the paint events of a control from its making on, if told so only those at which this
/// holds.
class PaintCounter : public QObject {
 public:
  explicit PaintCounter(
      QWidget& control, std::function<bool()> counts = [] { return true; })
      : counts_(std::move(counts)) {
    control.installEventFilter(this);
  }
  int Paints = 0;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Paint && counts_()) ++Paints;
    return QObject::eventFilter(watched, event);
  }

 private:
  std::function<bool()> counts_;
};

}  // namespace zarvo::testing
