#include "ui/predefined_dialog.h"

#include <gtest/gtest.h>

#include <QHeaderView>
#include <QSignalSpy>
#include <QTabBar>
#include <QTest>
#include <QTreeView>
#include <chrono>
#include <vector>

#include "model/code_page.h"
#include "tests/gui/main_window_fixture.h"
#include "tests/support/temporary_folder.h"
#include "ui/byte_text.h"

namespace zarvo {
namespace {

using testing::Click;
using testing::Find;
using testing::TemporaryFolder;

using Row = std::vector<std::string>;
using Rows = std::vector<Row>;

constexpr const char* kFile =
    "[General]\nStrings=3\nCharCodes=2\nCharLists=4\n"
    "[Strings]\n"
    "Name1=one\nString1=abc\nRender1=r1\nShow1=1\n"
    "Name3=three & <b>\nString3=\" d\xE9 \"\nShow3=0\n"
    "[CharCodes]\n"
    "Name1=line end\nCode1=13\nRender1=CR\n"
    "Name2=last\nCode2=255\n"
    "[CharLists]\n"
    "Name1=vowels\nList1=aeiou\nMode1=1\nRender1=V\n"
    "Name2=no digit\nList2=0123456789\nMode2=0\n"
    "Name3=no mode\nList3=xyz\n"
    "Name4=odd mode\nList4=x\nMode4=7\n";

Subpattern Of(SubpatternKind kind, const char* contents, const char* render_text = "") {
  Subpattern subpattern;
  subpattern.Kind = kind;
  subpattern.Contents = contents;
  subpattern.RenderText = render_text;
  return subpattern;
}

class PredefinedDialogTest : public ::testing::Test {
 protected:
  PredefinedDialogTest() { SetWindowCodePage(CodePage::Find("windows-1252").value()); }

  void Open(LibrarySection first = LibrarySection::Strings, bool without_lists = false,
            const std::string& file = kFile) {
    folder_.Write("Subpatterns.dat", file);
    dialog_ = std::make_unique<PredefinedDialog>(SubpatternLibrary(folder_.Path() + "/", ""), first,
                                                 without_lists, nullptr);
    dialog_->show();
    testing::Activate(*dialog_);
  }

  QTabBar& Tabs() { return Find<QTabBar>(*dialog_, "sectionTabs"); }
  QTreeView& List() { return Find<QTreeView>(*dialog_, "entriesList"); }

  void ClickTab(int number) {
    ASSERT_LT(number, Tabs().count());
    QTest::mouseClick(&Tabs(), Qt::LeftButton, {}, Tabs().tabRect(number).center());
    ASSERT_EQ(Tabs().currentIndex(), number);
  }
  void ClickRow(int number) {
    const QRect place = List().visualRect(List().model()->index(number, 0));
    ASSERT_FALSE(place.isEmpty());
    QTest::mouseClick(List().viewport(), Qt::LeftButton, {}, place.center());
  }
  void ClickOk() {
    Click(Find<QWidget>(*dialog_, "okButton"));
    ASSERT_FALSE(dialog_->isVisible());
    ASSERT_EQ(dialog_->result(), QDialog::Accepted);
  }
  void Press(Qt::Key key) { QTest::keyClick(dialog_->windowHandle(), key); }
  bool HasFocus(const QWidget& control) { return dialog_->focusWidget() == &control; }

  Row Captions() {
    Row captions;
    for (int i = 0; i < Tabs().count(); ++i) captions.push_back(Tabs().tabText(i).toStdString());
    return captions;
  }
  // Each column's heading and width, such as "Name 110".
  Row Columns() {
    Row columns;
    for (int i = 0; i < List().model()->columnCount(); ++i) {
      const QString heading = List().model()->headerData(i, Qt::Horizontal).toString();
      columns.push_back((heading + u' ' + QString::number(List().columnWidth(i))).toStdString());
    }
    return columns;
  }
  Rows ShownRows() {
    Rows rows;
    const QAbstractItemModel& model = *List().model();
    for (int i = 0; i < model.rowCount(); ++i) {
      rows.emplace_back();
      for (int j = 0; j < model.columnCount(); ++j) {
        rows.back().push_back(model.index(i, j).data().toString().toStdString());
      }
    }
    return rows;
  }

  TemporaryFolder folder_;
  std::unique_ptr<PredefinedDialog> dialog_;
};

TEST_F(PredefinedDialogTest, HasItsCaptionTabsAndButtons) {
  Open();
  EXPECT_EQ(dialog_->windowTitle(), "Predefined subpatterns");
  EXPECT_EQ(Captions(), (Row{"Strings", "Character codes", "Character lists"}));
  EXPECT_EQ(Find<QAbstractButton>(*dialog_, "okButton").text(), "OK");
  EXPECT_EQ(Find<QAbstractButton>(*dialog_, "cancelButton").text(), "Cancel");
}

TEST_F(PredefinedDialogTest, OpensInTheProportionsOfItsDialogUnits) {
  Open();
  const QFontMetrics metrics = dialog_->fontMetrics();
  EXPECT_EQ(dialog_->width(), 223 * metrics.averageCharWidth() / 4);
  EXPECT_EQ(dialog_->height(), 129 * metrics.height() / 8);
}

TEST_F(PredefinedDialogTest, OpensOnTheCallersTab) {
  for (const LibrarySection first :
       {LibrarySection::Strings, LibrarySection::CharacterCodes, LibrarySection::CharacterLists}) {
    Open(first);
    EXPECT_EQ(Tabs().currentIndex(), static_cast<int>(first));
  }
  EXPECT_EQ(ShownRows()[0][0], "vowels");
}

TEST_F(PredefinedDialogTest, LeavesTheListsOutWhenTold) {
  Open(LibrarySection::CharacterCodes, true);
  EXPECT_EQ(Captions(), (Row{"Strings", "Character codes"}));
  EXPECT_EQ(Tabs().currentIndex(), 1);
  EXPECT_EQ(ShownRows()[0][0], "line end");
}

TEST_F(PredefinedDialogTest, WithoutTheCallersTabShowsTheFirst) {
  Open(LibrarySection::CharacterLists, true);
  EXPECT_EQ(Tabs().currentIndex(), 0);
  EXPECT_EQ(ShownRows()[0][0], "one");
}

TEST_F(PredefinedDialogTest, ListsEveryStringWhateverItsShowFlag) {
  Open();
  EXPECT_EQ(Columns(), (Row{"Name 110", "String 110", "Render 80"}));
  EXPECT_EQ(ShownRows(), (Rows{{"one", "abc", "r1"}, {"three & <b>", " d\u00E9 ", ""}}));
}

TEST_F(PredefinedDialogTest, ListsCodesInDecimal) {
  Open();
  ClickTab(1);
  EXPECT_EQ(Columns(), (Row{"Name 170", "Code 50", "Render 80"}));
  EXPECT_EQ(ShownRows(), (Rows{{"line end", "13", "CR"}, {"last", "255", ""}}));
}

TEST_F(PredefinedDialogTest, ListsCharacterListsWithTheirType) {
  Open();
  ClickTab(2);
  EXPECT_EQ(Columns(), (Row{"Name 110", "Type 40", "List 100", "Render 50"}));
  EXPECT_EQ(ShownRows(), (Rows{{"vowels", "Pos", "aeiou", "V"},
                               {"no digit", "Neg", "0123456789", ""},
                               {"no mode", "Pos", "xyz", ""},
                               {"odd mode", "Pos", "x", ""}}));
}

TEST_F(PredefinedDialogTest, ColumnsTakeTheirWidthsAgainOnEveryTabChange) {
  Open();
  List().setColumnWidth(0, 200);
  ClickTab(1);
  EXPECT_EQ(List().columnWidth(0), 170);
  ClickTab(0);
  EXPECT_EQ(Columns(), (Row{"Name 110", "String 110", "Render 80"}));
}

TEST_F(PredefinedDialogTest, BytesAreShownInTheCodePage) {
  SetWindowCodePage(CodePage::Find("windows-1250").value());
  Open(LibrarySection::Strings, false,
       "[General]\nStrings=1\n[Strings]\nName1=\xB9\nString1=\xE6\nRender1=\xEA\n");
  EXPECT_EQ(ShownRows(), (Rows{{"\u0105", "\u0107", "\u0119"}}));
}

TEST_F(PredefinedDialogTest, SelectsOneWholeRow) {
  Open();
  ClickRow(0);
  QTest::mouseClick(List().viewport(), Qt::LeftButton, Qt::ControlModifier,
                    List().visualRect(List().model()->index(1, 1)).center());
  ASSERT_EQ(List().selectionModel()->selectedRows().size(), 1);
  EXPECT_EQ(List().selectionModel()->selectedRows()[0].row(), 1);
}

TEST_F(PredefinedDialogTest, HeadingsAreNotForClicking) {
  Open();
  EXPECT_FALSE(List().header()->sectionsClickable());
  EXPECT_FALSE(List().header()->sectionsMovable());
  QSignalSpy clicks(List().header(), &QHeaderView::sectionClicked);
  const Rows before = ShownRows();
  QTest::mouseClick(List().header()->viewport(), Qt::LeftButton, {},
                    QPoint(20, List().header()->height() / 2));
  EXPECT_EQ(clicks.count(), 0);
  EXPECT_EQ(ShownRows(), before);
}

TEST_F(PredefinedDialogTest, OkReturnsTheChosenString) {
  Open();
  ClickRow(0);
  ClickOk();
  EXPECT_EQ(dialog_->Chosen(), Of(SubpatternKind::String, "abc", "r1"));
}

TEST_F(PredefinedDialogTest, SecondRowIsTheThirdEntryWhereTheSecondIsMissing) {
  Open();
  ClickRow(1);
  ClickOk();
  EXPECT_EQ(dialog_->Chosen(), Of(SubpatternKind::String, " d\xE9 "));
}

TEST_F(PredefinedDialogTest, OkReturnsTheChosenCode) {
  Open();
  ClickTab(1);
  ClickRow(1);
  ClickOk();
  EXPECT_EQ(dialog_->Chosen(), Of(SubpatternKind::CharacterCode, "\xFF"));
}

TEST_F(PredefinedDialogTest, OkReturnsListsByTheirMode) {
  const std::vector<Subpattern> expected = {Of(SubpatternKind::CharacterList, "aeiou", "V"),
                                            Of(SubpatternKind::NegatedCharacterList, "0123456789"),
                                            Of(SubpatternKind::CharacterList, "xyz"),
                                            Of(SubpatternKind::CharacterList, "x")};
  for (std::size_t i = 0; i < expected.size(); ++i) {
    Open(LibrarySection::CharacterLists);
    ClickRow(static_cast<int>(i));
    ClickOk();
    EXPECT_EQ(dialog_->Chosen(), expected[i]);
  }
}

TEST_F(PredefinedDialogTest, OkWithoutAFocusedRowChoosesNothing) {
  Open();
  ASSERT_EQ(ShownRows().size(), 2U);
  ClickOk();
  EXPECT_EQ(dialog_->Chosen(), std::nullopt);
}

TEST_F(PredefinedDialogTest, OkWithAnEmptyListChoosesNothing) {
  Open(LibrarySection::Strings, false, "");
  EXPECT_EQ(ShownRows(), Rows{});
  QTest::mouseClick(List().viewport(), Qt::LeftButton, {}, QPoint(5, 5));
  ClickOk();
  EXPECT_EQ(dialog_->Chosen(), std::nullopt);
}

TEST_F(PredefinedDialogTest, ATabChangeForgetsTheFocusedRow) {
  Open();
  ClickRow(1);
  ClickTab(1);
  ClickTab(0);
  ClickOk();
  EXPECT_EQ(dialog_->Chosen(), std::nullopt);
}

TEST_F(PredefinedDialogTest, AFocusedRowIsReturnedThoughItIsNotHighlighted) {
  Open();
  ClickRow(1);
  // A click beside the rows takes the highlight away and leaves the focus.
  QTest::mouseClick(List().viewport(), Qt::LeftButton, {},
                    QPoint(5, List().viewport()->height() - 5));
  ASSERT_FALSE(List().selectionModel()->hasSelection());
  ClickOk();
  EXPECT_EQ(dialog_->Chosen(), Of(SubpatternKind::String, " d\xE9 "));
}

TEST_F(PredefinedDialogTest, CancelAndEscapeChooseNothing) {
  Open();
  ClickRow(0);
  Click(Find<QWidget>(*dialog_, "cancelButton"));
  EXPECT_FALSE(dialog_->isVisible());
  EXPECT_EQ(dialog_->result(), QDialog::Rejected);
  EXPECT_EQ(dialog_->Chosen(), std::nullopt);

  Open();
  ClickRow(0);
  Press(Qt::Key_Escape);
  EXPECT_FALSE(dialog_->isVisible());
  EXPECT_EQ(dialog_->Chosen(), std::nullopt);
}

TEST_F(PredefinedDialogTest, TheKeyboardAloneChooses) {
  Open();
  EXPECT_TRUE(HasFocus(Tabs()));
  Press(Qt::Key_Right);
  Press(Qt::Key_Right);
  EXPECT_EQ(ShownRows()[0][0], "vowels");
  Press(Qt::Key_Tab);
  EXPECT_TRUE(HasFocus(List()));
  Press(Qt::Key_Down);
  Press(Qt::Key_Return);
  EXPECT_FALSE(dialog_->isVisible());
  EXPECT_EQ(dialog_->Chosen(), Of(SubpatternKind::NegatedCharacterList, "0123456789"));
}

TEST_F(PredefinedDialogTest, TheListGivesItsFirstRowTheFocusWhenItGetsIt) {
  Open();
  Press(Qt::Key_Tab);
  Press(Qt::Key_Backtab);
  Press(Qt::Key_Right);
  EXPECT_FALSE(List().currentIndex().isValid());
  Press(Qt::Key_Tab);
  ASSERT_TRUE(HasFocus(List()));
  EXPECT_EQ(List().currentIndex().row(), 0);
  EXPECT_FALSE(List().selectionModel()->hasSelection());
  Press(Qt::Key_Return);
  EXPECT_EQ(dialog_->Chosen(), Of(SubpatternKind::CharacterCode, "\r", "CR"));
}

TEST_F(PredefinedDialogTest, EnterOnTheTabsChoosesNothing) {
  Open();
  Press(Qt::Key_Return);
  EXPECT_FALSE(dialog_->isVisible());
  EXPECT_EQ(dialog_->result(), QDialog::Accepted);
  EXPECT_EQ(dialog_->Chosen(), std::nullopt);
}

TEST_F(PredefinedDialogTest, ReadsTheFileAtEachOpening) {
  Open();
  Open(LibrarySection::Strings, false, "[General]\nStrings=1\n[Strings]\nName1=new\n");
  EXPECT_EQ(ShownRows(), (Rows{{"new", "", ""}}));
}

TEST_F(PredefinedDialogTest, AHundredThousandEntriesAreShownAtOnce) {
  std::string file = "[General]\nStrings=2000000000\n[Strings]\n";
  for (int n = 1; n <= 100'000; ++n) file += "Name" + std::to_string(n) + "=n\n";
  const auto start = std::chrono::steady_clock::now();
  Open(LibrarySection::Strings, false, file);
  EXPECT_EQ(List().model()->rowCount(), 100'000);
  Press(Qt::Key_Tab);
  Press(Qt::Key_End);
  EXPECT_EQ(List().currentIndex().row(), 99'999);
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(100));
}

}  // namespace
}  // namespace zarvo
