#include "tests/gui/icon_button_fixture.h"

namespace zarvo::testing {
namespace {

// ---- Hovering

TEST_F(IconButtonTest, HoveringLightsItUpAndGivesItTheFocus) {
  MoveOnto(*button_);
  EXPECT_TRUE(button_->IsMouseOver());
  EXPECT_TRUE(button_->hasFocus());
}

TEST_F(IconButtonTest, MovingWithinItChangesNothing) {
  MoveOnto(*button_);
  Move(*button_, QPoint(0, 0));
  Move(*button_, button_->rect().bottomRight());
  EXPECT_TRUE(button_->IsMouseOver());
  EXPECT_TRUE(button_->hasFocus());
}

TEST_F(IconButtonTest, LeavingMakesItDarkAndLeavesItTheFocus) {
  MoveOnto(*button_);
  ASSERT_TRUE(button_->IsMouseOver());
  MoveAway();
  EXPECT_FALSE(button_->IsMouseOver());
  EXPECT_TRUE(button_->hasFocus());
}

TEST_F(IconButtonTest, LightGoesWithTheMouseFromButtonToButton) {
  MoveOnto(*button_);
  MoveOnto(*other_);
  EXPECT_FALSE(button_->IsMouseOver());
  EXPECT_TRUE(other_->IsMouseOver());
  EXPECT_TRUE(other_->hasFocus());
  MoveOnto(*button_);
  EXPECT_TRUE(button_->IsMouseOver());
  EXPECT_FALSE(other_->IsMouseOver());
}

TEST_F(IconButtonTest, TheMouseIsTheButtonsOnlyWhileItIsOverIt) {
  MoveOnto(*button_);
  QTest::mouseClick(window_.windowHandle(), Qt::LeftButton, Qt::NoModifier,
                    InWindow(*field_, Centre(*field_)));
  EXPECT_TRUE(field_->hasFocus());
  EXPECT_FALSE(button_->IsMouseOver());
}

TEST_F(IconButtonTest, StaysUnlitInAnInactiveWindow) {
  QDialog active;
  ASSERT_NO_FATAL_FAILURE(ShowActive(active));
  ASSERT_FALSE(window_.isActiveWindow());
  MoveOnto(*button_);
  EXPECT_FALSE(button_->IsMouseOver());
  EXPECT_NE(window_.focusWidget(), button_);
}

TEST_F(IconButtonTest, GoesDarkWhenItsWindowIsNoLongerActiveAndLightsUpWhenItIsAgain) {
  MoveOnto(*button_);
  ASSERT_TRUE(button_->IsMouseOver());
  QDialog active;
  ASSERT_NO_FATAL_FAILURE(ShowActive(active));
  EXPECT_FALSE(button_->IsMouseOver());
  MoveOnto(*button_);
  EXPECT_FALSE(button_->IsMouseOver());
  ASSERT_NO_FATAL_FAILURE(ShowActive(window_));
  MoveOnto(*button_);
  EXPECT_TRUE(button_->IsMouseOver());
}

TEST_F(IconButtonTest, AnotherWindowCanBeTheOneThatMustBeActive) {
  QDialog active;
  button_->SetActivityWindow(&active);
  MoveOnto(*button_);
  EXPECT_FALSE(button_->IsMouseOver());
  ASSERT_NO_FATAL_FAILURE(ShowActive(active));
  MoveOnto(*button_);
  EXPECT_TRUE(button_->IsMouseOver());
  EXPECT_EQ(window_.focusWidget(), button_);
}

TEST_F(IconButtonTest, TheParentTakesOverWhenTheActivityWindowIsGone) {
  auto window = std::make_unique<QWidget>();
  button_->SetActivityWindow(window.get());
  window.reset();
  MoveOnto(*button_);
  EXPECT_TRUE(button_->IsMouseOver());
}

TEST(IconButton, WithoutParentLooksAtItsOwnWindow) {
  IconButton button("Alone");
  button.resize(200, 60);
  ASSERT_NO_FATAL_FAILURE(ShowActive(button));
  MoveOnto(button);
  EXPECT_TRUE(button.IsMouseOver());
}

TEST_F(IconButtonTest, StaysUnlitWhileTheLeftButtonIsHeld) {
  // The toolkit itself never sends a drag that began elsewhere.
  const QPointF position = Centre(*button_);
  QMouseEvent move(QEvent::MouseMove, position, button_->mapToGlobal(position), Qt::NoButton,
                   Qt::LeftButton, Qt::NoModifier);
  QCoreApplication::sendEvent(button_, &move);
  EXPECT_FALSE(button_->IsMouseOver());
  EXPECT_TRUE(field_->hasFocus());
}

TEST_F(IconButtonTest, ADragFromTheFieldLightsNothing) {
  Press(*field_);
  MoveOnto(*button_);
  EXPECT_FALSE(button_->IsMouseOver());
  EXPECT_TRUE(field_->hasFocus());
  Release(*button_);
  MoveOnto(*button_);
  EXPECT_TRUE(button_->IsMouseOver());
}

TEST_F(IconButtonTest, StaysUnlitWhenItIsNotFlat) {
  button_->setFlat(false);
  MoveOnto(*button_);
  EXPECT_FALSE(button_->IsMouseOver());
  EXPECT_TRUE(field_->hasFocus());
}

TEST_F(IconButtonTest, GoesDarkWhenItLosesTheFocus) {
  MoveOnto(*button_);
  ASSERT_TRUE(button_->IsMouseOver());
  QTest::keyClick(&window_, Qt::Key_Tab);
  EXPECT_TRUE(other_->hasFocus());
  EXPECT_FALSE(button_->IsMouseOver());
}

TEST_F(IconButtonTest, DoesNotTakeTheFocusBackUntilTheMouseComesAnew) {
  MoveOnto(*button_);
  QTest::keyClick(&window_, Qt::Key_Tab);
  Move(*button_, QPoint(5, 5));
  EXPECT_FALSE(button_->IsMouseOver());
  EXPECT_TRUE(other_->hasFocus());
  MoveAway();
  MoveOnto(*button_);
  EXPECT_TRUE(button_->IsMouseOver());
  EXPECT_TRUE(button_->hasFocus());
}

TEST_F(IconButtonTest, LightsUpAgainAfterAPopup) {
  MoveOnto(*button_);
  QMenu menu;
  menu.addAction("Entry");
  menu.popup(window_.mapToGlobal(QPoint(0, 0)));
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&menu));
  EXPECT_FALSE(button_->IsMouseOver());
  menu.close();
  ASSERT_TRUE(QTest::qWaitFor([] { return QApplication::activePopupWidget() == nullptr; }));
  Move(*button_, QPoint(5, 5));
  EXPECT_TRUE(button_->IsMouseOver());
}

// ---- Pressing

TEST_F(IconButtonTest, AClickIsAClick) {
  const QSignalSpy clicked(button_, &QPushButton::clicked);
  MoveOnto(*button_);
  Press(*button_);
  EXPECT_TRUE(button_->isDown());
  EXPECT_TRUE(button_->IsMouseOver());
  EXPECT_EQ(clicked.count(), 0);
  Release(*button_);
  EXPECT_FALSE(button_->isDown());
  EXPECT_EQ(clicked.count(), 1);
}

TEST_F(IconButtonTest, TheReleaseEndsTheCaptureAndTheNextMoveLightsUp) {
  MoveOnto(*button_);
  Press(*button_);
  Release(*button_);
  EXPECT_FALSE(button_->IsMouseOver());
  Move(*button_, QPoint(5, 5));
  EXPECT_TRUE(button_->IsMouseOver());
}

TEST_F(IconButtonTest, AClickWithoutAnyMoveBeforeItWorks) {
  const QSignalSpy clicked(button_, &QPushButton::clicked);
  Press(*button_);
  Release(*button_);
  EXPECT_EQ(clicked.count(), 1);
}

TEST_F(IconButtonTest, DraggedOffItKeepsTheMouseUntilTheRelease) {
  const QSignalSpy clicked(button_, &QPushButton::clicked);
  const QSignalSpy other_clicked(other_, &QPushButton::clicked);
  MoveOnto(*button_);
  Press(*button_);
  MoveOnto(*other_);
  EXPECT_FALSE(button_->IsMouseOver());
  EXPECT_FALSE(button_->isDown());
  EXPECT_FALSE(other_->IsMouseOver());
  EXPECT_TRUE(button_->hasFocus());
  Release(*other_);
  EXPECT_EQ(clicked.count(), 0);
  EXPECT_EQ(other_clicked.count(), 0);
  MoveOnto(*other_);
  EXPECT_TRUE(other_->IsMouseOver());
  MoveOnto(*button_);
  EXPECT_TRUE(button_->IsMouseOver());
}

TEST_F(IconButtonTest, DraggedOffAndBackItIsPressedButUnlitAndClicks) {
  const QSignalSpy clicked(button_, &QPushButton::clicked);
  MoveOnto(*button_);
  Press(*button_);
  MoveOnto(*other_);
  MoveOnto(*button_);
  EXPECT_TRUE(button_->isDown());
  EXPECT_FALSE(button_->IsMouseOver());
  Release(*button_);
  EXPECT_EQ(clicked.count(), 1);
  Move(*button_, QPoint(5, 5));
  EXPECT_TRUE(button_->IsMouseOver());
}

TEST_F(IconButtonTest, ADragWithTheRightButtonLetsTheMouseGo) {
  MoveOnto(*button_);
  Press(*button_, Qt::RightButton);
  MoveOnto(*other_);
  EXPECT_FALSE(button_->IsMouseOver());
  MoveOnto(*button_);
  EXPECT_TRUE(button_->IsMouseOver());
  Release(*button_, Qt::RightButton);
  EXPECT_TRUE(button_->IsMouseOver());
}

TEST_F(IconButtonTest, AClickCanShowADialogThatGetsTheMouse) {
  int clicks_in_dialog = 0;
  QObject::connect(button_, &QPushButton::clicked, button_, [&] {
    QDialog dialog(&window_);
    auto* layout = new QHBoxLayout(&dialog);
    auto* close = new IconButton("Close");
    layout->addWidget(close);
    QObject::connect(close, &QPushButton::clicked, &dialog, [&] {
      ++clicks_in_dialog;
      dialog.accept();
    });
    QTimer::singleShot(0, &dialog, [&] {
      EXPECT_FALSE(button_->IsMouseOver());
      if (!QTest::qWaitForWindowActive(&dialog)) {
        ADD_FAILURE() << "the dialog is not active";
        dialog.reject();
        return;
      }
      EXPECT_TRUE(QTest::qWaitFor([&] {
        MoveOnto(*close);
        return close->IsMouseOver();
      }));
      Press(*close);
      Release(*close);
      if (clicks_in_dialog == 0) dialog.reject();
    });
    dialog.exec();
  });
  MoveOnto(*button_);
  Press(*button_);
  Release(*button_);
  EXPECT_EQ(clicks_in_dialog, 1);
}

TEST_F(IconButtonTest, AClickCanDeleteIt) {
  QObject::connect(button_, &QPushButton::clicked, [this] {
    delete button_;
    button_ = nullptr;
  });
  MoveOnto(*button_);
  const QPoint place = InWindow(*button_, Centre(*button_));
  Press(*button_);
  QTest::mouseRelease(window_.windowHandle(), Qt::LeftButton, Qt::NoModifier, place);
  EXPECT_EQ(button_, nullptr);
  MoveOnto(*other_);
  EXPECT_TRUE(other_->IsMouseOver());
}

TEST_F(IconButtonTest, SpaceClicksIt) {
  const QSignalSpy clicked(button_, &QPushButton::clicked);
  button_->setFocus();
  QTest::keyClick(button_, Qt::Key_Space);
  EXPECT_EQ(clicked.count(), 1);
}

TEST_F(IconButtonTest, EnterClicksTheHoveredButtonOfADialog) {
  button_->setAutoDefault(true);
  other_->setAutoDefault(true);
  const QSignalSpy clicked(button_, &QPushButton::clicked);
  const QSignalSpy other_clicked(other_, &QPushButton::clicked);
  MoveOnto(*other_);
  QTest::keyClick(&window_, Qt::Key_Return);
  EXPECT_EQ(clicked.count(), 0);
  EXPECT_EQ(other_clicked.count(), 1);
}

TEST_F(IconButtonTest, TheMnemonicOfItsCaptionClicksIt) {
  button_->setText("&Apply");
  const QSignalSpy clicked(button_, &QPushButton::clicked);
  QTest::keyClick(window_.windowHandle(), Qt::Key_A, Qt::AltModifier);
  EXPECT_TRUE(QTest::qWaitFor([&] { return clicked.count() == 1; }));
}

// ---- Disabled, hidden, deleted

TEST_F(IconButtonTest, NeverLightsUpWhileItIsDisabled) {
  button_->setEnabled(false);
  MoveOnto(*button_);
  EXPECT_FALSE(button_->IsMouseOver());
  EXPECT_TRUE(field_->hasFocus());
  button_->setEnabled(true);
  MoveOnto(*button_);
  EXPECT_TRUE(button_->IsMouseOver());
}

TEST_F(IconButtonTest, GoesDarkWhenItIsDisabled) {
  MoveOnto(*button_);
  button_->setEnabled(false);
  EXPECT_FALSE(button_->IsMouseOver());
  MoveOnto(*other_);
  EXPECT_TRUE(other_->IsMouseOver());
}

TEST_F(IconButtonTest, GoesDarkWithItsDisabledWindow) {
  MoveOnto(*button_);
  window_.setEnabled(false);
  EXPECT_FALSE(button_->IsMouseOver());
}

TEST_F(IconButtonTest, GoesDarkWhenItIsHidden) {
  MoveOnto(*button_);
  button_->hide();
  EXPECT_FALSE(button_->IsMouseOver());
  button_->show();
  MoveOnto(*button_);
  EXPECT_TRUE(button_->IsMouseOver());
}

TEST_F(IconButtonTest, HiddenWhilePressedItLetsTheMouseGo) {
  MoveOnto(*button_);
  Press(*button_);
  button_->hide();
  Release(*other_);
  MoveOnto(*other_);
  EXPECT_TRUE(other_->IsMouseOver());
}

TEST_F(IconButtonTest, DeletedWhileLitItLetsTheMouseGo) {
  MoveOnto(*button_);
  delete button_;
  EXPECT_EQ(QWidget::mouseGrabber(), nullptr);
  MoveOnto(*other_);
  EXPECT_TRUE(other_->IsMouseOver());
}

}  // namespace
}  // namespace zarvo::testing
