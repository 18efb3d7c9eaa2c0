// A slider that shows a range beside its handle.
#pragma once

#include <QSlider>

namespace zarvo {

/// The mouse, the wheel and the keys move the handle; the range is only shown.
class RangeSlider : public QSlider {
  Q_OBJECT

 public:
  explicit RangeSlider(QWidget* parent = nullptr);

  /// Values of the slider, the ends included; values outside its range are drawn at its end.
  void SetSelection(int from, int to);
  void ClearSelection();
  [[nodiscard]] bool HasSelection() const { return has_selection_; }
  [[nodiscard]] int SelectionFrom() const { return from_; }
  [[nodiscard]] int SelectionTo() const { return to_; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  // The middle of the handle when it stands at this value, in pixels.
  [[nodiscard]] int HandleCentre(int value) const;

  bool has_selection_ = false;
  int from_ = 0;
  int to_ = 0;
};

}  // namespace zarvo
