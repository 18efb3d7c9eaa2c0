#include "ui/icon_button.h"

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

// Resources that stand in a library are taken in only where somebody asks for them. The macro
// doesn't work inside a namespace.
static void LoadResources() { Q_INIT_RESOURCE(resources); }

namespace zarvo {
namespace {

using Alignment = IconButton::IconAlignment;

// ---- The mouse, as the window system sends it: the toolkit finds out who gets what.

QPoint Centre(const QWidget& widget) { return widget.rect().center(); }

QPoint InWindow(const QWidget& widget, const QPoint& position) {
  return widget.mapTo(widget.window(), position);
}

void Move(const QWidget& widget, const QPoint& position) {
  QTest::mouseMove(widget.window()->windowHandle(), InWindow(widget, position));
}

void MoveOnto(const QWidget& widget) {
  Move(widget, Centre(widget) - QPoint(1, 0));
  Move(widget, Centre(widget));
}

void Press(const QWidget& widget, Qt::MouseButton button = Qt::LeftButton) {
  QTest::mousePress(widget.window()->windowHandle(), button, Qt::NoModifier,
                    InWindow(widget, Centre(widget)));
}

void Release(const QWidget& widget, Qt::MouseButton button = Qt::LeftButton) {
  QTest::mouseRelease(widget.window()->windowHandle(), button, Qt::NoModifier,
                      InWindow(widget, Centre(widget)));
}

void Activate(QWidget& window) {
  window.show();
  window.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
}

// ---- Pictures

// Colours that can't be taken for one another.
const QColor kFace(200, 200, 200);
const QColor kLight(255, 0, 0);
const QColor kMidlight(0, 255, 0);
const QColor kDark(0, 0, 255);
const QColor kShadow(255, 0, 255);
const QColor kText(0, 0, 0);
const QColor kDisabledText(120, 130, 140);
const QColor kNormalIcon(255, 160, 0);
const QColor kHotIcon(0, 160, 255);

QPalette TestPalette() {
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

QIcon IconOf(const QColor& color, int size = 16) {
  QPixmap pixmap(size, size);
  pixmap.fill(color);
  return QIcon(pixmap);
}

QImage Picture(QWidget& widget, int scale = 1) {
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

QRect PlaceOf(const QImage& image, const QColor& color) {
  return PlaceOf(image, [&](const QColor& pixel) { return pixel == color; });
}

// The lines of a frame without its corners, in which two colours meet.
void ExpectFrame(const QImage& image, int inset, const QColor& top_left,
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

void ExpectFrame(const QImage& image, int inset, const QColor& color) {
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
    ASSERT_NO_FATAL_FAILURE(Activate(window_));
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

TEST(IconButton, ReportsItsVersion) {
  EXPECT_EQ(IconButton::VersionText(), "2.1");
  EXPECT_EQ(IconButton::VersionNumber(), 21);
}

TEST(IconButton, IsFlatWithItsBorderAndUnlitAtFirst) {
  const IconButton button;
  EXPECT_TRUE(button.isFlat());
  EXPECT_TRUE(button.DrawBorder());
  EXPECT_EQ(button.Alignment(), Alignment::BesideText);
  EXPECT_FALSE(button.IsMouseOver());
  EXPECT_TRUE(button.icon().isNull());
  EXPECT_TRUE(button.HotIcon().isNull());
  EXPECT_EQ(button.ActivityWindow(), nullptr);
}

TEST(IconButton, KeepsWhatIsSet) {
  IconButton button;
  QWidget window;
  button.SetDrawBorder(false);
  EXPECT_FALSE(button.DrawBorder());
  button.SetAlignment(Alignment::AboveText);
  EXPECT_EQ(button.Alignment(), Alignment::AboveText);
  button.setFlat(false);
  EXPECT_FALSE(button.isFlat());
  button.SetActivityWindow(&window);
  EXPECT_EQ(button.ActivityWindow(), &window);
}

TEST(IconButton, AlignmentsAreNumbered) {
  EXPECT_EQ(static_cast<int>(Alignment::BesideText), 0);
  EXPECT_EQ(static_cast<int>(Alignment::AboveText), 1);
}

TEST(IconButton, FormsCanSetItsProperties) {
  IconButton button;
  ASSERT_TRUE(button.setProperty("drawBorder", false));
  ASSERT_TRUE(button.setProperty("alignment", 1));
  ASSERT_TRUE(button.setProperty("hotIcon", IconOf(kHotIcon)));
  EXPECT_FALSE(button.DrawBorder());
  EXPECT_EQ(button.Alignment(), Alignment::AboveText);
  EXPECT_FALSE(button.HotIcon().isNull());
}

TEST(IconButton, TakesIconsFromTheResourcesInAByteOfPixels) {
  LoadResources();
  IconButton button;
  button.SetIcons(":/icons/new.svg", ":/icons/new-hot.svg", 255, 17);
  EXPECT_FALSE(button.icon().isNull());
  EXPECT_FALSE(button.HotIcon().isNull());
  EXPECT_EQ(button.IconWidth(), 255);
  EXPECT_EQ(button.IconHeight(), 17);
  button.SetIcons(":/icons/new.svg", QString(), 16, 16);
  EXPECT_TRUE(button.HotIcon().isNull());
  button.SetIcons(QString(), QString(), 16, 16);
  EXPECT_TRUE(button.icon().isNull());
}

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
  ASSERT_NO_FATAL_FAILURE(Activate(active));
  ASSERT_FALSE(window_.isActiveWindow());
  MoveOnto(*button_);
  EXPECT_FALSE(button_->IsMouseOver());
  EXPECT_NE(window_.focusWidget(), button_);
}

TEST_F(IconButtonTest, GoesDarkWhenItsWindowIsNoLongerActiveAndLightsUpWhenItIsAgain) {
  MoveOnto(*button_);
  ASSERT_TRUE(button_->IsMouseOver());
  QDialog active;
  ASSERT_NO_FATAL_FAILURE(Activate(active));
  EXPECT_FALSE(button_->IsMouseOver());
  MoveOnto(*button_);
  EXPECT_FALSE(button_->IsMouseOver());
  ASSERT_NO_FATAL_FAILURE(Activate(window_));
  MoveOnto(*button_);
  EXPECT_TRUE(button_->IsMouseOver());
}

TEST_F(IconButtonTest, AnotherWindowCanBeTheOneThatMustBeActive) {
  QDialog active;
  button_->SetActivityWindow(&active);
  MoveOnto(*button_);
  EXPECT_FALSE(button_->IsMouseOver());
  ASSERT_NO_FATAL_FAILURE(Activate(active));
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
  ASSERT_NO_FATAL_FAILURE(Activate(button));
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

// ---- The border

TEST_F(IconButtonTest, FlatAndColdHasNoBorder) {
  const QImage image = Picture(*button_);
  ExpectFrame(image, 0, kFace);
  ExpectFrame(image, 1, kFace);
}

TEST_F(IconButtonTest, FlatAndLitHasAThinRaisedBorder) {
  MoveOnto(*button_);
  const QImage image = Picture(*button_);
  ExpectFrame(image, 0, kLight, kDark);
  ExpectFrame(image, 1, kFace);
}

TEST_F(IconButtonTest, FlatAndPressedHasAThinSunkenBorder) {
  MoveOnto(*button_);
  button_->setDown(true);
  const QImage image = Picture(*button_);
  ExpectFrame(image, 0, kDark, kLight);
  ExpectFrame(image, 1, kFace);
}

TEST_F(IconButtonTest, FlatWithoutDrawnBorderNeverHasOne) {
  button_->SetDrawBorder(false);
  MoveOnto(*button_);
  ASSERT_TRUE(button_->IsMouseOver());
  ExpectFrame(Picture(*button_), 0, kFace);
  button_->setDown(true);
  ExpectFrame(Picture(*button_), 0, kFace);
}

TEST_F(IconButtonTest, NotFlatHasABevelOfFourLines) {
  button_->setFlat(false);
  const QImage image = Picture(*button_);
  ExpectFrame(image, 0, kLight, kShadow);
  ExpectFrame(image, 1, kMidlight, kDark);
  ExpectFrame(image, 2, kFace);
}

TEST_F(IconButtonTest, NotFlatAndPressedHasAFrame) {
  button_->setFlat(false);
  button_->setDown(true);
  const QImage image = Picture(*button_);
  ExpectFrame(image, 0, kDark);
  ExpectFrame(image, 1, kFace);
}

TEST_F(IconButtonTest, NotFlatWithTheFocusHasABlackFrameAroundItsBevel) {
  button_->setFlat(false);
  button_->setFocus();
  const QImage image = Picture(*button_);
  ExpectFrame(image, 0, kText);
  ExpectFrame(image, 1, kLight, kShadow);
  ExpectFrame(image, 2, kMidlight, kDark);
}

TEST_F(IconButtonTest, TheFocusRectangleIsDottedThreePixelsInside) {
  button_->setText(QString());
  EXPECT_FALSE(PlaceOf(Picture(*button_), kText).isValid());
  button_->setFocus();
  ASSERT_TRUE(button_->hasFocus());
  const QImage image = Picture(*button_);
  EXPECT_EQ(PlaceOf(image, kText), image.rect().adjusted(3, 3, -3, -3));
  for (int x = 4; x < image.width() - 4; ++x) {
    ASSERT_NE(image.pixelColor(x, 3), image.pixelColor(x + 1, 3)) << x;
    ASSERT_EQ(image.pixelColor(x, 4), kFace) << x;
  }
}

TEST_F(IconButtonTest, IsDrawnSharplyAtTwiceTheScale) {
  button_->setText(QString());
  MoveOnto(*button_);
  const QImage image = Picture(*button_, 2);
  ExpectFrame(image, 0, kLight, kDark);
  ExpectFrame(image, 1, kLight, kDark);
  ExpectFrame(image, 2, kFace);
  EXPECT_EQ(PlaceOf(image, kText), image.rect().adjusted(6, 6, -6, -6));
  EXPECT_EQ(PlaceOf(image.copy(6, 6, 4, 4), kText), QRect(0, 0, 2, 2)) << "the first dot";
}

// ---- The icon

TEST_F(IconButtonTest, TheIconStandsInTheMiddleInItsSize) {
  button_->setText(QString());
  button_->setIcon(IconOf(kNormalIcon));
  button_->setIconSize(QSize(16, 16));
  EXPECT_EQ(PlaceOf(Picture(*button_), kNormalIcon), QRect(22, 12, 16, 16));
}

TEST_F(IconButtonTest, PressedTheIconMovesRightAndDown) {
  button_->setText(QString());
  button_->setIcon(IconOf(kNormalIcon));
  button_->setIconSize(QSize(16, 16));
  button_->setDown(true);
  EXPECT_EQ(PlaceOf(Picture(*button_), kNormalIcon), QRect(23, 13, 16, 16));
}

TEST_F(IconButtonTest, TheHotIconIsShownWhileLit) {
  button_->setIcon(IconOf(kNormalIcon));
  button_->SetHotIcon(IconOf(kHotIcon));
  EXPECT_FALSE(PlaceOf(Picture(*button_), kHotIcon).isValid());
  MoveOnto(*button_);
  QImage image = Picture(*button_);
  EXPECT_TRUE(PlaceOf(image, kHotIcon).isValid());
  EXPECT_FALSE(PlaceOf(image, kNormalIcon).isValid());
  MoveAway();
  image = Picture(*button_);
  EXPECT_FALSE(PlaceOf(image, kHotIcon).isValid());
  EXPECT_TRUE(PlaceOf(image, kNormalIcon).isValid());
}

TEST_F(IconButtonTest, WithoutAHotIconTheNormalOneStays) {
  button_->setIcon(IconOf(kNormalIcon));
  MoveOnto(*button_);
  ASSERT_TRUE(button_->IsMouseOver());
  EXPECT_TRUE(PlaceOf(Picture(*button_), kNormalIcon).isValid());
}

TEST_F(IconButtonTest, DisabledTheIconIsGrey) {
  button_->setText(QString());
  button_->setIcon(IconOf(kNormalIcon));
  button_->SetHotIcon(IconOf(kHotIcon));
  button_->setIconSize(QSize(16, 16));
  button_->setEnabled(false);
  MoveOnto(*button_);
  const QImage image = Picture(*button_);
  const QRect place = PlaceOf(image, [](const QColor& pixel) { return pixel != kFace; });
  EXPECT_EQ(place, QRect(22, 12, 16, 16));
  const QRect coloured =
      PlaceOf(image, [](const QColor& pixel) { return pixel.hsvSaturation() > 20; });
  EXPECT_FALSE(coloured.isValid());
}

// ---- The caption

// Smoothed letters are seldom quite black.
QRect CaptionPlace(QWidget& button) {
  return PlaceOf(Picture(button), [](const QColor& pixel) {
    return pixel.hsvSaturation() < 30 && pixel.value() < kFace.value() - 20;
  });
}

TEST_F(IconButtonTest, TheCaptionStandsInTheMiddle) {
  button_->setText("HHH");
  const QRect place = CaptionPlace(*button_);
  ASSERT_TRUE(place.isValid());
  EXPECT_NEAR(place.center().x(), Centre(*button_).x(), 2);
  EXPECT_NEAR(place.center().y(), Centre(*button_).y(), 3);
}

TEST_F(IconButtonTest, PressedTheCaptionMovesRightAndDown) {
  const QRect place = CaptionPlace(*button_);
  button_->setDown(true);
  EXPECT_EQ(CaptionPlace(*button_), place.translated(1, 1));
}

TEST_F(IconButtonTest, DisabledTheCaptionHasTheDisabledColour) {
  button_->setEnabled(false);
  const QImage image = Picture(*button_);
  EXPECT_FALSE(PlaceOf(image, kText).isValid());
  EXPECT_TRUE(PlaceOf(image, kDisabledText).isValid());
}

TEST_F(IconButtonTest, TheIconStandsLeftOfTheCaption) {
  button_->setFixedSize(120, 40);
  button_->setIcon(IconOf(kNormalIcon));
  const QRect icon = PlaceOf(Picture(*button_), kNormalIcon);
  const QRect caption = CaptionPlace(*button_);
  EXPECT_LT(icon.right(), caption.left());
  EXPECT_NEAR(icon.center().y(), caption.center().y(), 3);
  EXPECT_NEAR((icon | caption).center().x(), Centre(*button_).x(), 2);
}

TEST_F(IconButtonTest, TheIconStandsAboveTheCaption) {
  button_->setFixedSize(120, 80);
  button_->setIcon(IconOf(kNormalIcon));
  button_->SetAlignment(Alignment::AboveText);
  const QRect icon = PlaceOf(Picture(*button_), kNormalIcon);
  const QRect caption = CaptionPlace(*button_);
  EXPECT_LT(icon.bottom(), caption.top());
  EXPECT_NEAR(icon.center().x(), caption.center().x(), 2);
  EXPECT_NEAR((icon | caption).center().y(), Centre(*button_).y(), 4);
}

// ---- Sizes

TEST(IconButtonSize, AnIconAloneTakesItselfAndTheFocusRectangle) {
  IconButton button;
  button.setIcon(IconOf(kNormalIcon));
  button.setIconSize(QSize(24, 24));
  EXPECT_EQ(button.sizeHint(), QSize(32, 32));
  EXPECT_EQ(button.minimumSizeHint(), QSize(32, 32));
}

class IconButtonFontSize : public ::testing::TestWithParam<int> {};

TEST_P(IconButtonFontSize, CutsNoCaption) {
  for (const Alignment alignment : {Alignment::BesideText, Alignment::AboveText}) {
    IconButton button("Wjg &Update...");
    QFont font = button.font();
    font.setPointSize(GetParam());
    button.setFont(font);
    button.setPalette(TestPalette());
    button.setIcon(IconOf(kNormalIcon));
    button.SetAlignment(alignment);
    button.resize(button.minimumSizeHint());
    const QRect needed = CaptionPlace(button);
    const QRect icon = PlaceOf(Picture(button), kNormalIcon);
    button.resize(button.size() + QSize(100, 100));
    EXPECT_EQ(CaptionPlace(button).size(), needed.size());
    EXPECT_EQ(PlaceOf(Picture(button), kNormalIcon).size(), icon.size());
  }
}

INSTANTIATE_TEST_SUITE_P(Sizes, IconButtonFontSize, ::testing::Values(6, 9, 13, 20, 36));

// ---- The accessible name

TEST(IconButtonName, IsTheToolTipWhereThereIsNoCaption) {
  IconButton button;
  EXPECT_EQ(button.accessibleName(), "");
  button.setToolTip("Merge");
  EXPECT_EQ(button.accessibleName(), "Merge");
  button.setToolTip("Merge filters");
  EXPECT_EQ(button.accessibleName(), "Merge filters");
}

TEST(IconButtonName, IsLeftAloneWhereThereIsACaption) {
  IconButton button("Edit...");
  button.setToolTip("Edits the rules");
  EXPECT_EQ(button.accessibleName(), "");
}

TEST(IconButtonName, IsLeftAloneWhereSomebodyGaveOne) {
  IconButton button;
  button.setAccessibleName("Anchor");
  button.setToolTip("Pins the anchor");
  EXPECT_EQ(button.accessibleName(), "Anchor");
}

TEST(IconButtonName, FollowsACaptionThatCameAfterTheToolTip) {
  IconButton button;
  button.setToolTip("Edits the rules");
  button.setText("Edit...");
  button.show();
  EXPECT_EQ(button.accessibleName(), "");
}

// ---- The pictures of the program

class Artwork : public ::testing::TestWithParam<const char*> {
 protected:
  void SetUp() override { LoadResources(); }
};

QImage IconImage(const QString& path, int size) {
  return QIcon(path).pixmap(size).toImage().convertToFormat(QImage::Format_ARGB32);
}

TEST_P(Artwork, IsThereInBothStatesAndStaysWithinItsSquare) {
  const QString name = GetParam();
  for (const int size : {16, 32, 64}) {
    const QImage normal = IconImage(":/icons/" + name + ".svg", size);
    const QImage hot = IconImage(":/icons/" + name + "-hot.svg", size);
    ASSERT_EQ(normal.size(), QSize(size, size));
    ASSERT_EQ(hot.size(), QSize(size, size));
    EXPECT_NE(normal, hot);
    EXPECT_EQ(normal.convertToFormat(QImage::Format_Alpha8),
              hot.convertToFormat(QImage::Format_Alpha8))
        << "the hot icon is another drawing";
    const auto is_drawn = [](const QColor& pixel) { return pixel.alpha() > 128; };
    EXPECT_TRUE(PlaceOf(normal, is_drawn).isValid());
    EXPECT_EQ(normal.pixelColor(0, 0).alpha(), 0);
    EXPECT_EQ(normal.pixelColor(size - 1, size - 1).alpha(), 0);
  }
}

INSTANTIATE_TEST_SUITE_P(Icons, Artwork,
                         ::testing::Values("new", "open", "save", "merge", "check", "help", "about",
                                           "exit", "load-text", "add", "remove", "left", "right",
                                           "up", "down", "delete", "export", "import", "anchor",
                                           "menu"));

TEST(ArtworkOfTheProgram, HasAnIconAndASplashPicture) {
  LoadResources();
  EXPECT_FALSE(IconImage(":/app.svg", 64).isNull());
  EXPECT_FALSE(QPixmap(":/splash.svg").isNull());
}

}  // namespace
}  // namespace zarvo
