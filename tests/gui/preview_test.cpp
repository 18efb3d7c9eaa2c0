#include "tests/gui/preview_fixture.h"

namespace zarvo::testing {
namespace {

// ---- Updating

TEST_F(PreviewTest, IsAModelessWindowThatStartsIdleAndEmpty) {
  EXPECT_EQ(window_.windowTitle(), "Preview");
  EXPECT_FALSE(window_.isModal());
  EXPECT_EQ(Caption(), "Update");
  EXPECT_FALSE(window_.IsBusy());
  EXPECT_EQ(Original().Bytes(), "");
  EXPECT_FALSE(Original().isReadOnly());
  EXPECT_EQ(Modified().Bytes(), "");
  EXPECT_TRUE(Modified().isReadOnly());
  EXPECT_EQ(Bar().value(), 0);
  EXPECT_LT(Bar().minimum(), Bar().maximum());
}

TEST_F(PreviewTest, UpdateShowsWhatTheRulesMakeOfTheTextOneAfterAnother) {
  filter_ = FilterOf({Change("a", "b"), Change("bb", "c")});
  Original().SetBytes("aba");
  ClickUpdate();
  EXPECT_EQ(Modified().Bytes(), "cb");
  EXPECT_EQ(Original().Bytes(), "aba");
  EXPECT_EQ(Caption(), "Update");
  EXPECT_FALSE(window_.IsBusy());
}

TEST_F(PreviewTest, UpdateRunsOverWhatIsTypedWithCrLfForEnter) {
  filter_ = FilterOf({Change("a", "b")});
  Original().setFocus();
  QTest::keyClicks(&Original(), "ca");
  QTest::keyClick(&Original(), Qt::Key_Return);
  QTest::keyClicks(&Original(), "a");
  ClickUpdate();
  EXPECT_EQ(Original().Bytes(), "ca\r\na");
  EXPECT_EQ(Modified().Bytes(), "cb\r\nb");
}

TEST_F(PreviewTest, ReturnInAPanePressesNoButton) {
  filter_ = FilterOf({Never()});
  Modified().SetBytes("old");
  std::string lines;
  for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
    for (ByteTextEdit* pane : {&Original(), &Modified()}) {
      pane->setFocus();
      ASSERT_EQ(QApplication::focusWidget(), pane);
      QTest::keyClick(window_.windowHandle(), key);
      EXPECT_TRUE(window_.isVisible());
      EXPECT_EQ(Caption(), "Update");
    }
    lines += "\r\n";
    EXPECT_EQ(Original().Bytes(), lines);
    EXPECT_EQ(Modified().Bytes(), "old");
  }
}

TEST_F(PreviewTest, SpaceOnTheButtonUpdates) {
  filter_ = FilterOf({Change("a", "b")});
  Original().SetBytes("a");
  UpdateButton().setFocus();
  QTest::keyClick(&UpdateButton(), Qt::Key_Space);
  EXPECT_EQ(Modified().Bytes(), "b");
}

TEST_F(PreviewTest, AnUpdateTakesThePlaceOfTheLastOne) {
  filter_ = FilterOf({Change("a", "b")});
  Original().SetBytes("aa");
  ClickUpdate();
  filter_ = FilterOf({Change("a", "c")});
  Original().SetBytes("a");
  ClickUpdate();
  EXPECT_EQ(Modified().Bytes(), "c");
}

TEST_F(PreviewTest, AnEmptyTextGivesAnEmptyText) {
  filter_ = FilterOf({Change("a", "b"), Never()});
  Original().SetBytes("a");
  Modified().SetBytes("old");
  Original().SetBytes("");
  ClickUpdate();
  EXPECT_EQ(Modified().Bytes(), "");
}

TEST_F(PreviewTest, AFilterWithoutRulesGivesTheTextItself) {
  Original().SetBytes("a\r\nb");
  ClickUpdate();
  EXPECT_EQ(Modified().Bytes(), "a\r\nb");
}

TEST_F(PreviewTest, UpdateWorksWhileTheWindowIsHidden) {
  filter_ = FilterOf({Change("a", "b")});
  Original().SetBytes("a");
  window_.hide();
  window_.Update();
  EXPECT_EQ(Modified().Bytes(), "b");
}

TEST_F(PreviewTest, WhileItRunsTheButtonShowsCancel) {
  filter_ = FilterOf({Wait()}, {}, {StepInPlace()});
  Original().SetBytes("x");
  bool seen = false;
  MeanwhileOnce([&] {
    seen = true;
    EXPECT_EQ(Caption(), "Cancel");
    EXPECT_TRUE(window_.IsBusy());
    EXPECT_EQ(Modified().Bytes(), "");
    LetGo("y");
  });
  ClickUpdate();
  EXPECT_TRUE(seen);
  EXPECT_EQ(Caption(), "Update");
  EXPECT_FALSE(window_.IsBusy());
  EXPECT_EQ(Modified().Bytes(), "y");
}

TEST_F(PreviewTest, ARunKeepsToTheTextThatItBeganWith) {
  filter_ = FilterOf({Wait()}, {}, {StepInPlace()});
  Original().SetBytes("x");
  MeanwhileOnce([&] {
    Original().SetBytes("other");
    LetGo("y");
  });
  ClickUpdate();
  EXPECT_EQ(Modified().Bytes(), "y");
  EXPECT_EQ(Original().Bytes(), "other");
}

TEST_F(PreviewTest, ClosedDuringARunItHasTheResultWhenItIsShownAgain) {
  filter_ = FilterOf({Wait()}, {}, {StepInPlace()});
  Original().SetBytes("x");
  MeanwhileOnce([&] {
    window_.close();
    EXPECT_FALSE(window_.isVisible());
    LetGo("y");
  });
  ClickUpdate();
  window_.show();
  EXPECT_EQ(Original().Bytes(), "x");
  EXPECT_EQ(Modified().Bytes(), "y");
  EXPECT_EQ(Caption(), "Update");
}

// ---- The progress bar

class PreviewBar : public PreviewTest, public ::testing::WithParamInterface<int> {};

TEST_P(PreviewBar, IsBackAtZeroAndNeverBusyAfterARun) {
  for (int i = 0; i < GetParam(); ++i) filter_.Rules.Append(Change("a", "b"));
  Original().SetBytes("a");
  for (int run = 0; run < 2; ++run) {
    ClickUpdate();
    EXPECT_EQ(Bar().value(), 0);
    EXPECT_EQ(Bar().minimum(), 0);
    EXPECT_LT(Bar().minimum(), Bar().maximum());
  }
}

INSTANTIATE_TEST_SUITE_P(Rules, PreviewBar, ::testing::Values(0, 1, 2, 40));

TEST_F(PreviewTest, TheBarAdvancesByOneStepARule) {
  std::vector<Rule> rules(4, Change("a", "a"));
  rules.push_back(Wait());
  rules.resize(7, Change("a", "a"));
  filter_ = FilterOf(std::move(rules), {}, {StepInPlace()});
  Original().SetBytes("ax");
  bool seen = false;
  Meanwhile([&] {
    // Events may be handled in a rule before the one that waits.
    if (Bar().value() != 4) return false;
    seen = true;
    EXPECT_EQ(Bar().minimum(), 0);
    EXPECT_EQ(Bar().maximum(), 7);
    LetGo("y");
    return true;
  });
  ClickUpdate();
  EXPECT_TRUE(seen);
  EXPECT_EQ(Bar().value(), 0);
}

TEST_F(PreviewTest, ResetSetsTheBarBackAndTouchesNoText) {
  Original().SetBytes("before");
  Modified().SetBytes("after");
  Bar().setRange(0, 9);
  Bar().setValue(5);
  window_.Reset();
  EXPECT_EQ(Bar().value(), 0);
  EXPECT_EQ(Original().Bytes(), "before");
  EXPECT_EQ(Modified().Bytes(), "after");
}

TEST_F(PreviewTest, ResetForANewDocumentEmptiesModifiedToo) {
  Original().SetBytes("before");
  Modified().SetBytes("after");
  Bar().setRange(0, 9);
  Bar().setValue(5);
  window_.ResetForNewDocument();
  EXPECT_EQ(Bar().value(), 0);
  EXPECT_EQ(Original().Bytes(), "before");
  EXPECT_EQ(Modified().Bytes(), "");
}

// ---- Loading a text

TEST_F(PreviewTest, ALoadedFileReplacesOriginalAndLeavesModified) {
  Original().SetBytes("something longer than the file");
  Modified().SetBytes("after");
  Load("text");
  EXPECT_EQ(Original().Bytes(), "text");
  EXPECT_EQ(Modified().Bytes(), "after");
}

TEST_F(PreviewTest, LoadingStartsNoRun) {
  filter_ = FilterOf({Never()});
  Load("text");
  EXPECT_EQ(Caption(), "Update");
  EXPECT_EQ(Modified().Bytes(), "");
}

std::string LongText(std::size_t size) {
  std::string text;
  for (std::size_t i = 0; text.size() < size; ++i) text += "line " + std::to_string(i) + "\r\n";
  text.resize(size);
  return text;
}

TEST_F(PreviewTest, AFileOf20000BytesIsCutAfter16384) {
  const std::string text = LongText(20000);
  Load(text);
  EXPECT_EQ(Original().Bytes(), text.substr(0, 16384));
}

TEST_F(PreviewTest, AFileAroundTheLimitIsCutAtTheVeryByte) {
  for (const std::size_t size : {16383U, 16384U, 16385U}) {
    const std::string text = LongText(size);
    Load(text);
    EXPECT_EQ(Original().Bytes(), text.substr(0, 16384)) << size;
  }
}

TEST_F(PreviewTest, ALineEndMayBeCutInTwo) {
  const std::string text = std::string(16383, 'a') + "\r\nb";
  Load(text);
  EXPECT_EQ(Original().Bytes(), text.substr(0, 16384));
  ClickUpdate();
  EXPECT_EQ(Modified().Bytes(), text.substr(0, 16384));
}

TEST_F(PreviewTest, AFileThatIsMissingGivesAnEmptyTextAndNoMessage) {
  Original().SetBytes("before");
  LoadPath(QString::fromStdString(folder_.File("missing.txt")));
  EXPECT_EQ(Original().Bytes(), "");
}

TEST_F(PreviewTest, AFileThatCantBeReadGivesAnEmptyTextAndNoMessage) {
  Original().SetBytes("before");
  LoadPath(QString::fromStdString(folder_.Path()));
  EXPECT_EQ(Original().Bytes(), "");
}

TEST_F(PreviewTest, AnEmptyFileGivesAnEmptyText) {
  Original().SetBytes("before");
  Load("");
  EXPECT_EQ(Original().Bytes(), "");
}

TEST_F(PreviewTest, CancelOfTheFileDialogLeavesOriginal) {
  Original().SetBytes("before");
  LoadPath({});
  EXPECT_EQ(Original().Bytes(), "before");
}

TEST_F(PreviewTest, ALoadedTextEndsAtItsFirstZeroByte) {
  Load(std::string("ab\0cd\0", 6));
  EXPECT_EQ(Original().Bytes(), "ab");
  Load(std::string("\0cd", 3));
  EXPECT_EQ(Original().Bytes(), "");
}

TEST_F(PreviewTest, ATextLoadedDuringARunIsThatOfTheNextOne) {
  filter_ = FilterOf({Wait()}, {}, {StepInPlace()});
  Original().SetBytes("x");
  MeanwhileOnce([&] {
    Load("x!");
    LetGo("y");
  });
  ClickUpdate();
  EXPECT_EQ(Modified().Bytes(), "y");
  EXPECT_EQ(Original().Bytes(), "x!");
  ClickUpdate();
  EXPECT_EQ(Modified().Bytes(), "y!");
}

class PreviewBytes : public PreviewTest, public ::testing::WithParamInterface<const char*> {
 protected:
  PreviewBytes() { SetWindowCodePage(CodePage::Find(GetParam()).value()); }
  ~PreviewBytes() override { SetWindowCodePage(page_); }

 private:
  CodePage page_ = WindowCodePage();
};

TEST_P(PreviewBytes, AllBytesButZeroGoFromAFileToModified) {
  std::string bytes;
  for (int byte = 1; byte < 256; ++byte) bytes += static_cast<char>(byte);
  for (int byte = 255; byte > 0; --byte) bytes += static_cast<char>(byte);
  Load(bytes);
  EXPECT_EQ(Original().Bytes(), bytes);
  ClickUpdate();
  EXPECT_EQ(Modified().Bytes(), bytes);
}

TEST_P(PreviewBytes, MixedLineEndsGoFromAFileToModified) {
  for (const std::string bytes :
       {"a\rb\nc\r\nd\n\re\r\r\n\n", "\n", "\r", "\r\n", "\n\n\r\r", "\r\n\r", "a\n", "\ra"}) {
    Load(bytes);
    EXPECT_EQ(Original().Bytes(), bytes);
    ClickUpdate();
    EXPECT_EQ(Modified().Bytes(), bytes);
  }
}

TEST_P(PreviewBytes, TheEngineSeesTheBytesOfTheFile) {
  filter_ = FilterOf({Change("\r\n", "1"), Change("\n", "2"), Change("\r", "3"),
                      Change("\xA0", "4"), Change("\x81", "5"), Change("\xFF", "6")});
  Load("\r\n|\n|\r|\xA0|\x81|\xFF");
  ClickUpdate();
  EXPECT_EQ(Modified().Bytes(), "1|2|3|4|5|6");
}

INSTANTIATE_TEST_SUITE_P(Pages, PreviewBytes,
                         ::testing::Values("windows-1250", "windows-1251", "windows-1252",
                                           "windows-1255", "windows-1258", "CP874"));

}  // namespace
}  // namespace zarvo::testing
