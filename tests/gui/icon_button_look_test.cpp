#include "tests/gui/icon_button_fixture.h"

namespace zarvo::testing {
namespace {

// ---- Its state

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
}  // namespace zarvo::testing
