#include "ui/range_slider.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QSignalSpy>
#include <QTest>

#include "tests/gui/editor_fixture.h"

namespace zarvo {
namespace {

using testing::Drag;
using testing::HandleAt;

class RangeSliderTest : public ::testing::Test {
 protected:
  RangeSliderTest() {
    QPalette palette = slider_.palette();
    palette.setColor(QPalette::Highlight, kBar);
    palette.setColor(QPalette::Disabled, QPalette::Highlight, Qt::gray);
    slider_.setPalette(palette);
    slider_.setRange(1, 9);
    slider_.resize(400, 40);
    slider_.show();
  }

  QImage Picture() { return slider_.grab().toImage(); }
  // Whether the bar is drawn in the middle between two values.
  bool HasBarBetween(int value, int next) {
    const QPoint place = (HandleAt(slider_, value) + HandleAt(slider_, next)) / 2;
    return Picture().pixelColor(place) == kBar;
  }

  const QColor kBar = QColor(1, 200, 3);
  RangeSlider slider_;
};

TEST_F(RangeSliderTest, DrawsTheSelectionFromItsFirstToItsLastValue) {
  slider_.setValue(9);
  EXPECT_FALSE(HasBarBetween(4, 5));
  slider_.SetSelection(3, 6);
  EXPECT_TRUE(slider_.HasSelection());
  EXPECT_EQ(slider_.SelectionFrom(), 3);
  EXPECT_EQ(slider_.SelectionTo(), 6);
  EXPECT_FALSE(HasBarBetween(1, 2));
  EXPECT_FALSE(HasBarBetween(2, 3));
  for (const int value : {3, 4, 5}) EXPECT_TRUE(HasBarBetween(value, value + 1)) << value;
  EXPECT_FALSE(HasBarBetween(6, 7));
  slider_.ClearSelection();
  EXPECT_FALSE(slider_.HasSelection());
  for (const int value : {3, 4, 5}) EXPECT_FALSE(HasBarBetween(value, value + 1)) << value;
}

TEST_F(RangeSliderTest, ASelectionOfOneValueIsSeenWhereTheHandleIsElsewhere) {
  slider_.setValue(9);
  slider_.SetSelection(4, 4);
  EXPECT_EQ(Picture().pixelColor(HandleAt(slider_, 4)), kBar);
  EXPECT_FALSE(HasBarBetween(4, 5));
}

TEST_F(RangeSliderTest, TheHandleIsDrawnOverTheSelection) {
  slider_.SetSelection(3, 6);
  slider_.setValue(4);
  EXPECT_NE(Picture().pixelColor(HandleAt(slider_, 4)), kBar);
}

TEST_F(RangeSliderTest, ASelectionOutsideTheRangeEndsAtTheEnds) {
  slider_.setValue(5);
  slider_.SetSelection(-100, 100);
  for (const int value : {1, 2, 3, 6, 7, 8}) {
    EXPECT_TRUE(HasBarBetween(value, value + 1)) << value;
  }
}

TEST_F(RangeSliderTest, AnEmptySelectionIsNotDrawn) {
  slider_.setValue(9);
  slider_.SetSelection(6, 3);
  for (int value = 1; value < 8; ++value) EXPECT_FALSE(HasBarBetween(value, value + 1)) << value;
}

TEST_F(RangeSliderTest, LooksOffWhereItIsDisabled) {
  slider_.setValue(9);
  slider_.SetSelection(3, 6);
  slider_.setEnabled(false);
  EXPECT_FALSE(HasBarBetween(4, 5));
}

TEST_F(RangeSliderTest, ShowsTheFocus) {
  slider_.setValue(5);
  slider_.clearFocus();
  // As the Tab key sets it, which some styles wait for.
  slider_.setAttribute(Qt::WA_KeyboardFocusChange);
  const QImage without = Picture();
  testing::Activate(slider_);
  slider_.setFocus(Qt::TabFocusReason);
  EXPECT_NE(Picture(), without);
}

TEST_F(RangeSliderTest, MouseWheelAndKeysMoveTheHandleAndNotTheSelection) {
  slider_.SetSelection(3, 6);
  slider_.setValue(5);
  const QSignalSpy moved(&slider_, &QSlider::valueChanged);
  Drag(slider_, {6, 7, 8});
  EXPECT_EQ(slider_.value(), 8);
  QTest::keyClick(&slider_, Qt::Key_Left);
  EXPECT_EQ(slider_.value(), 7);
  testing::TurnWheel(slider_, true);
  EXPECT_GT(slider_.value(), 7);
  QTest::keyClick(&slider_, Qt::Key_Home);
  EXPECT_EQ(slider_.value(), 1);
  EXPECT_GE(moved.count(), 6);
  EXPECT_EQ(slider_.SelectionFrom(), 3);
  EXPECT_EQ(slider_.SelectionTo(), 6);
}

}  // namespace
}  // namespace zarvo
