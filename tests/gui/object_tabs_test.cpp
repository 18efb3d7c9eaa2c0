#include "ui/object_tabs.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QSignalSpy>
#include <QTest>
#include <string>

#include "ui/byte_text.h"

namespace zarvo {
namespace {

class ObjectTabsTest : public ::testing::Test {
 protected:
  ObjectTabsTest() {
    SetWindowCodePage(CodePage::Find("windows-1252").value());
    tabs_.resize(600, tabs_.sizeHint().height());
    Fill({"A", "B", "C"});
    tabs_.show();
    chosen_.clear();
  }

  void Fill(const std::vector<const char*>& captions) {
    std::vector<QString> texts;
    for (const char* caption : captions) texts.push_back(QString::fromLatin1(caption));
    tabs_.SetCaptions(texts);
  }
  std::vector<std::string> Captions() const {
    std::vector<std::string> captions;
    for (int i = 0; i < tabs_.count(); ++i) captions.push_back(tabs_.Caption(i).toStdString());
    return captions;
  }
  QPoint MiddleOf(int tab) const { return tabs_.tabRect(tab).center(); }
  using Strings = std::vector<std::string>;

  ObjectTabs tabs_;
  QSignalSpy chosen_{&tabs_, &ObjectTabs::Chosen};
};

TEST_F(ObjectTabsTest, AClickOnATabChoosesItOnce) {
  QTest::mouseClick(&tabs_, Qt::LeftButton, {}, MiddleOf(2));
  EXPECT_EQ(tabs_.currentIndex(), 2);
  EXPECT_EQ(chosen_.count(), 1);
}

TEST_F(ObjectTabsTest, AClickOnTheSelectedTabChoosesItToo) {
  QTest::mouseClick(&tabs_, Qt::LeftButton, {}, MiddleOf(0));
  EXPECT_EQ(tabs_.currentIndex(), 0);
  EXPECT_EQ(chosen_.count(), 1);
}

TEST_F(ObjectTabsTest, ATabPressedAndReleasedElsewhereIsChosen) {
  QTest::mousePress(&tabs_, Qt::LeftButton, {}, MiddleOf(1));
  QTest::mouseRelease(&tabs_, Qt::LeftButton, {}, QPoint(-50, 400));
  EXPECT_EQ(tabs_.currentIndex(), 1);
  EXPECT_EQ(chosen_.count(), 1);
}

TEST_F(ObjectTabsTest, OtherButtonsAndOtherPlacesChooseNothing) {
  QTest::mouseClick(&tabs_, Qt::RightButton, {}, MiddleOf(1));
  QTest::mouseClick(&tabs_, Qt::LeftButton, {}, QPoint(590, 5));
  QTest::mousePress(&tabs_, Qt::LeftButton, {}, QPoint(590, 5));
  QTest::mouseRelease(&tabs_, Qt::LeftButton, {}, MiddleOf(0));
  EXPECT_EQ(tabs_.currentIndex(), 0);
  EXPECT_EQ(chosen_.count(), 0);
}

TEST_F(ObjectTabsTest, ArrowKeysChooseANeighbourAndStopAtTheEnds) {
  QTest::keyClick(&tabs_, Qt::Key_Right);
  EXPECT_EQ(tabs_.currentIndex(), 1);
  EXPECT_EQ(chosen_.count(), 1);
  QTest::keyClick(&tabs_, Qt::Key_Left);
  QTest::keyClick(&tabs_, Qt::Key_Left);
  EXPECT_EQ(tabs_.currentIndex(), 0);
  EXPECT_EQ(chosen_.count(), 2);
}

TEST_F(ObjectTabsTest, CaptionsAreFilledInOrderAndKeepTheSelectedPosition) {
  tabs_.setCurrentIndex(1);
  Fill({"C", "A&&B", "x", "y"});
  EXPECT_EQ(Captions(), (Strings{"C", "A&&B", "x", "y"}));
  EXPECT_EQ(tabs_.currentIndex(), 1);
  Fill({"only"});
  EXPECT_EQ(Captions(), Strings{"only"});
  EXPECT_EQ(tabs_.currentIndex(), 0);
  Fill({});
  EXPECT_EQ(tabs_.count(), 0);
  EXPECT_EQ(tabs_.currentIndex(), -1);
}

TEST_F(ObjectTabsTest, AnAmpersandIsNoShortcut) {
  tabs_.SetCaption(1, QStringLiteral("&B & &&"));
  EXPECT_EQ(tabs_.Caption(1), QStringLiteral("&B & &&"));
  EXPECT_EQ(tabs_.tabText(1), QStringLiteral("&&B && &&&&"));
  QTest::keyClick(&tabs_, Qt::Key_B, Qt::AltModifier);
  EXPECT_EQ(tabs_.currentIndex(), 0);
}

TEST_F(ObjectTabsTest, ATabIsAsWideAsItsCaptionInTheFontOfTheMoment) {
  const int narrow = tabs_.tabRect(0).width();
  tabs_.SetCaption(0, QStringLiteral("a much longer caption"));
  const int wide = tabs_.tabRect(0).width();
  EXPECT_GT(wide, narrow);
  QFont font = tabs_.font();
  font.setPointSizeF(font.pointSizeF() * 2);
  tabs_.setFont(font);
  EXPECT_GT(tabs_.tabRect(0).width(), wide);
  tabs_.SetCaption(0, QStringLiteral("A"));
  EXPECT_GT(tabs_.tabRect(0).width(), narrow);
}

TEST_F(ObjectTabsTest, HoweverManyTabsAskForNoWidth) {
  std::vector<const char*> captions(1000, "a caption of some length");
  Fill(captions);
  EXPECT_EQ(tabs_.count(), 1000);
  EXPECT_EQ(tabs_.sizePolicy().horizontalPolicy(), QSizePolicy::Ignored);
  EXPECT_LT(tabs_.minimumSizeHint().width(), 600);
}

TEST_F(ObjectTabsTest, LineBreaksAndTabulatorsAreBlanks) {
  tabs_.SetCaption(1, QStringLiteral("\u00e9\t\r\nx"));
  EXPECT_EQ(tabs_.Caption(1), QStringLiteral("\u00e9   x"));
}

TEST_F(ObjectTabsTest, ThousandsOfCaptionsComeAndGoAndTheSelectedOneStays) {
  std::vector<QString> captions;
  for (int i = 0; i < 3000; ++i) captions.push_back(QString::number(i));
  tabs_.show();
  tabs_.SetCaptions(captions);
  ASSERT_EQ(tabs_.count(), 3000);
  EXPECT_TRUE(tabs_.isVisible());
  EXPECT_EQ(tabs_.currentIndex(), 0);
  for (const int i : {0, 1, 1500, 2999}) {
    EXPECT_EQ(tabs_.Caption(i), QString::number(i));
    EXPECT_TRUE(tabs_.isTabVisible(i));
  }
  tabs_.setCurrentIndex(100);
  captions.resize(200);
  tabs_.SetCaptions(captions);
  EXPECT_EQ(tabs_.count(), 200);
  EXPECT_EQ(tabs_.currentIndex(), 100);
  EXPECT_TRUE(tabs_.isVisible());
}

TEST(TabCaption, IsWholeUpTo23BytesAndElse20WithDots) {
  SetWindowCodePage(CodePage::Find("windows-1252").value());
  const std::string text = "abcdefghijklmnopqrstuvwxyz1234";
  EXPECT_EQ(TabCaption(""), "");
  EXPECT_EQ(TabCaption(text.substr(0, 23)), "abcdefghijklmnopqrstuvw");
  EXPECT_EQ(TabCaption(text.substr(0, 24)), "abcdefghijklmnopqrst...");
  EXPECT_EQ(TabCaption(text), "abcdefghijklmnopqrst...");
  // Each byte is a character.
  EXPECT_EQ(TabCaption(std::string(23, '\xE9')), QString(23, QChar(0xE9)));
  EXPECT_EQ(TabCaption(std::string(24, '\xE9')), QString(20, QChar(0xE9)) + QStringLiteral("..."));
}

}  // namespace
}  // namespace zarvo
