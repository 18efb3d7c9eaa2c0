// What the editors of Rules, Sets and Functions have in common.
#include <QTextBrowser>

#include "app/help_window.h"
#include "tests/gui/editor_fixture.h"

namespace zarvo {
namespace {

using testing::BytesOf;
using testing::EditorNames;
using testing::FilterOf;
using testing::FunctionOf;
using testing::SetOf;

struct EditorCase {
  const char* Kind;
  EditorNames Editor;
  const char* Question;
  const char* FirstName;
  const char* FourthName;
  int HelpContext;
  bool HasFilterName;
  std::function<zarvo::Filter(const std::vector<std::string>& names)> Make;
  std::function<std::vector<std::string>(const zarvo::Filter& filter)> Names;
};

void PrintTo(const EditorCase& editor, std::ostream* out) { *out << editor.Kind; }

template <typename List>
std::vector<std::string> NamesOf(const List& list) {
  std::vector<std::string> names;
  for (const auto& object : list) names.push_back(object.Name);
  return names;
}

std::vector<EditorCase> EditorCases() {
  return {{"Rules", testing::kRulesEditor, "Do you really want to delete rule ", "Rule 1", "Rule 4",
           102, true,
           [](const std::vector<std::string>& names) {
             zarvo::Filter filter;
             for (const std::string& name : names) {
               filter.Rules.Append({});
               filter.Rules[filter.Rules.Count() - 1].Name = name;
             }
             return filter;
           },
           [](const zarvo::Filter& filter) { return NamesOf(filter.Rules); }},
          {"Sets", testing::kSetsEditor, "Do you really want to delete set ", "Set 1", "Set 4", 103,
           true,
           [](const std::vector<std::string>& names) {
             zarvo::Filter filter;
             for (const std::string& name : names) filter.Sets.Append(SetOf(name, {}));
             return filter;
           },
           [](const zarvo::Filter& filter) { return NamesOf(filter.Sets); }},
          {"Functions", testing::kFunctionsEditor, "Do you really want to delete function ",
           "Function 1", "Function 4", 107, false,
           [](const std::vector<std::string>& names) {
             zarvo::Filter filter;
             for (const std::string& name : names) filter.Functions.Append(FunctionOf(name, {}));
             return filter;
           },
           [](const zarvo::Filter& filter) { return NamesOf(filter.Functions); }}};
}

class EveryEditor : public testing::EditorFixture,
                    public ::testing::WithParamInterface<EditorCase> {
 protected:
  using Strings = std::vector<std::string>;

  EveryEditor() : EditorFixture(GetParam().Editor) {}

  static zarvo::Filter Make(const Strings& names) { return GetParam().Make(names); }
  void ShowNames(const Strings& names) { Show(Make(names)); }
  Strings Names() { return GetParam().Names(TheFilter()); }
  std::string Count() { return TextOf(GetParam().Editor.Count).toStdString(); }
  void ExpectQuestion(const std::string& name, Answer answer) {
    dialogs_.ExpectMessage(MessageIcon::Question,
                           std::string(GetParam().Question) + "\"" + name + "\"?",
                           MessageButtons::YesNo, answer);
  }
  void ExpectEmpty() {
    EXPECT_EQ(Tabs().count(), 0);
    EXPECT_EQ(Name().text(), "");
    EXPECT_FALSE(IsEnabled(GetParam().Editor.Panel));
    EXPECT_FALSE(IsEnabled("deleteButton"));
    EXPECT_FALSE(IsEnabled("exportButton"));
    for (const char* name : {"newButton", "importButton", "helpButton"}) {
      EXPECT_TRUE(IsEnabled(name)) << name;
    }
  }
};

// ---- The window

TEST_P(EveryEditor, IsAHiddenTopLevelWindowAtFirst) {
  EXPECT_FALSE(Editor().isVisible());
  EXPECT_EQ(Editor().parentWidget(), nullptr);
  EXPECT_TRUE(Editor().isWindow());
  EXPECT_FALSE(Editor().isModal());
}

TEST_P(EveryEditor, OpensWithTheFirstOfAnEmptyFilter) {
  ShowEditor();
  EXPECT_EQ(Names(), Strings{GetParam().FirstName});
  EXPECT_EQ(Captions(), Names());
  EXPECT_EQ(Count(), "1");
  EXPECT_FALSE(IsEnabled("deleteButton"));
  EXPECT_FALSE(Doc().Saved);
}

TEST_P(EveryEditor, OpensALockedEmptyFilterWithNothingAndInSilence) {
  Show(Locked({}));
  EXPECT_EQ(Names(), Strings{});
  ExpectEmpty();
  EXPECT_TRUE(Doc().Saved);
}

TEST_P(EveryEditor, ShowsTheListAsTabsInItsOrder) {
  ShowNames({"c", "a", "b", "a"});
  EXPECT_EQ(Captions(), (Strings{"c", "a", "b", "a"}));
  EXPECT_EQ(Selected(), 0);
  EXPECT_EQ(Name().text(), "c");
  EXPECT_EQ(Count(), "4");
  EXPECT_TRUE(Doc().Saved);
}

TEST_P(EveryEditor, ClosingItOnlyHidesItAndItsPlaceStays) {
  ShowNames({"a", "b"});
  ClickTab(1);
  Editor().move(77, 99);
  const QSize size = Editor().size() + QSize(30, 20);
  Editor().resize(size);
  EXPECT_TRUE(Editor().close());
  EXPECT_FALSE(Editor().isVisible());
  ShowEditor();
  EXPECT_EQ(Editor().pos(), QPoint(77, 99));
  EXPECT_EQ(Editor().size(), size);
  EXPECT_EQ(Selected(), 1);
  QTest::keyClick(&Editor(), Qt::Key_Escape);
  EXPECT_FALSE(Editor().isVisible());
  EXPECT_TRUE(window_->isVisible());
}

TEST_P(EveryEditor, HasTheFilterNameInItsCaptionWhereItEditsOne) {
  zarvo::Filter filter = Make({"a"});
  filter.Name = "x[*]y & \xE9";
  Show(filter);
  const QString kind = QString::fromLatin1(GetParam().Kind);
  // "[*]" stands for the mark of a modified document unless it is doubled.
  EXPECT_EQ(Editor().windowTitle(),
            GetParam().HasFilterName ? kind + QStringLiteral(" - x[*][*]y & \u00e9") : kind);
  window_->NewDocument();
  EXPECT_EQ(Editor().windowTitle(), kind);
}

TEST_P(EveryEditor, HelpShowsItsTopic) {
  folder_.Write("Zarvo Composer.html", "<a name='topic-102'>x</a>");
  ShowNames({"a"});
  ClickIn("helpButton");
  auto* help = window_->findChild<HelpWindow*>();
  ASSERT_NE(help, nullptr);
  EXPECT_TRUE(help->isVisible());
  auto* browser = help->findChild<QTextBrowser*>();
  ASSERT_NE(browser, nullptr);
  EXPECT_EQ(browser->source().fragment(), QStringLiteral("topic-%1").arg(GetParam().HelpContext));
}

// ---- New and Delete

TEST_P(EveryEditor, NewAppendsSelectsAndMarksTheFilter) {
  ShowNames({"a", "b", "c"});
  ClickIn("newButton");
  EXPECT_EQ(Names(), (Strings{"a", "b", "c", GetParam().FourthName}));
  EXPECT_EQ(Captions(), Names());
  EXPECT_EQ(Selected(), 3);
  EXPECT_EQ(Name().text(), GetParam().FourthName);
  EXPECT_EQ(Count(), "4");
  EXPECT_FALSE(Doc().Saved);
}

TEST_P(EveryEditor, DeleteAsksAndOnAnyAnswerButYesKeeps) {
  ShowNames({"a", "b & \"c\""});
  ClickTab(1);
  ExpectQuestion("b & \"c\"", Answer::No);
  ClickIn("deleteButton");
  EXPECT_EQ(Names(), (Strings{"a", "b & \"c\""}));
  EXPECT_TRUE(Doc().Saved);
}

TEST_P(EveryEditor, DeleteSelectsTheOneBeforeAndNotBelowTheFirst) {
  ShowNames({"a", "b", "c"});
  ClickTab(2);
  ExpectQuestion("c", Answer::Yes);
  ClickIn("deleteButton");
  EXPECT_EQ(Names(), (Strings{"a", "b"}));
  EXPECT_EQ(Selected(), 1);
  EXPECT_EQ(Name().text(), "b");
  EXPECT_EQ(Count(), "2");
  EXPECT_FALSE(Doc().Saved);
  ClickTab(0);
  ExpectQuestion("a", Answer::Yes);
  ClickIn("deleteButton");
  EXPECT_EQ(Selected(), 0);
  EXPECT_EQ(Name().text(), "b");
  EXPECT_FALSE(IsEnabled("deleteButton"));
}

TEST_P(EveryEditor, DeleteIsEnabledFromTwoOn) {
  ShowNames({"a"});
  EXPECT_FALSE(IsEnabled("deleteButton"));
  ClickIn("newButton");
  EXPECT_TRUE(IsEnabled("deleteButton"));
}

// ---- Names and tabs

TEST_P(EveryEditor, EachKeystrokeStoresTheNameAndTheCursorStays) {
  ShowNames({"ac", "x"});
  testing::TypeInto(Name(), {});
  QTest::keyClick(&Name(), Qt::Key_Home);
  QTest::keyClick(&Name(), Qt::Key_Right);
  QTest::keyClick(&Name(), Qt::Key_B);
  EXPECT_EQ(Names(), (Strings{"abc", "x"}));
  EXPECT_EQ(Captions(), (Strings{"abc", "x"}));
  EXPECT_EQ(Name().cursorPosition(), 2);
  EXPECT_FALSE(Doc().Saved);
  QTest::keyClick(&Name(), Qt::Key_B);
  EXPECT_EQ(Names()[0], "abbc");
  EXPECT_EQ(Name().cursorPosition(), 3);
}

TEST_P(EveryEditor, NamesMayBeEmptyOrRepeated) {
  ShowNames({"a", "b"});
  TypeName("b");
  EXPECT_EQ(Names(), (Strings{"b", "b"}));
  QTest::keyClick(&Name(), Qt::Key_Backspace);
  EXPECT_EQ(Names(), (Strings{"", "b"}));
  EXPECT_EQ(Captions(), (Strings{"", "b"}));
}

TEST_P(EveryEditor, NamesKeepTheBytesOfTheCodePage) {
  ShowNames({"a"});
  TypeName("&[*]");
  for (const char16_t character : {u'\u00e9', u'\u00ff'}) {
    QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, QString(QChar(character)));
    QApplication::sendEvent(&Name(), &press);
  }
  EXPECT_EQ(Names(), Strings{"&[*]\xE9\xFF"});
  EXPECT_EQ(Captions(), Strings{"&[*]\u00e9\u00ff"});
  Load(TheFilter());
  EXPECT_EQ(Name().Bytes(), "&[*]\xE9\xFF");
}

TEST_P(EveryEditor, AtTwentyFourBytesATabShowsTheFirstTwenty) {
  ShowNames({"a"});
  TypeName("12345678901234567890123");
  EXPECT_EQ(Captions(), Strings{"12345678901234567890123"});
  QTest::keyClicks(&Name(), QStringLiteral("4"));
  EXPECT_EQ(Captions(), Strings{"12345678901234567890..."});
  EXPECT_EQ(Names(), Strings{"123456789012345678901234"});
  QTest::keyClick(&Name(), Qt::Key_Backspace);
  EXPECT_EQ(Captions(), Strings{"12345678901234567890123"});
}

TEST_P(EveryEditor, LeavingAnUnchangedNameMarksNothing) {
  ShowNames({"a", "b"});
  testing::TypeInto(Name(), {});
  QTest::keyClick(&Name(), Qt::Key_Tab);
  Settle();
  testing::TypeInto(Name(), {});
  testing::Activate(*window_);
  Settle();
  EXPECT_TRUE(Doc().Saved);
}

TEST_P(EveryEditor, EnterInTheNamePressesNoCommand) {
  ShowNames({"a", "b"});
  testing::TypeInto(Name(), {});
  QTest::keyClick(&Name(), Qt::Key_Return);
  EXPECT_TRUE(Editor().isVisible());
  EXPECT_EQ(Names(), (Strings{"a", "b"}));
}

TEST_P(EveryEditor, ATabShowsItsObjectByMouseAndByKeys) {
  ShowNames({"a", "b", "c"});
  ClickTab(2);
  EXPECT_EQ(Name().text(), "c");
  testing::TypeInto(Tabs(), {});
  QTest::keyClick(&Tabs(), Qt::Key_Left);
  EXPECT_EQ(Name().text(), "b");
  QTest::mousePress(&Tabs(), Qt::LeftButton, {}, Tabs().tabRect(0).center());
  QTest::mouseRelease(&Tabs(), Qt::LeftButton, {}, QPoint(3, 400));
  EXPECT_EQ(Selected(), 0);
  EXPECT_EQ(Name().text(), "a");
  EXPECT_TRUE(Doc().Saved);
  TypeName("A");
  EXPECT_EQ(Names(), (Strings{"A", "b", "c"}));
}

// ---- Other documents

TEST_P(EveryEditor, NewEmptiesAnOpenEditor) {
  ShowNames({"a", "b"});
  ClickTab(1);
  window_->NewDocument();
  EXPECT_TRUE(Editor().isVisible());
  ExpectEmpty();
  EXPECT_EQ(Names(), Strings{});
  EXPECT_EQ(Count(), "0");
  EXPECT_TRUE(Doc().Saved);
  ClickIn("newButton");
  EXPECT_EQ(Names(), Strings{GetParam().FirstName});
  EXPECT_TRUE(IsEnabled(GetParam().Editor.Panel));
}

TEST_P(EveryEditor, OpenSelectsTheFirstOfTheOtherDocument) {
  ShowNames({"a", "b", "c"});
  ClickTab(2);
  Load(Make({"x", "y", "z", "w"}));
  EXPECT_EQ(Captions(), (Strings{"x", "y", "z", "w"}));
  EXPECT_EQ(Selected(), 0);
  EXPECT_EQ(Name().text(), "x");
  EXPECT_TRUE(Doc().Saved);
  Editor().close();
  ClickOn(GetParam().Editor.EditButton);
  ClickTab(3);
  Editor().close();
  Load(Make({"1", "2", "3", "4", "5"}));
  ShowEditor();
  EXPECT_EQ(Captions(), (Strings{"1", "2", "3", "4", "5"}));
  EXPECT_EQ(Selected(), 0);
}

TEST_P(EveryEditor, TheEditButtonBringsAnOpenEditorBackWithItsSelection) {
  ShowNames({"a", "b", "c"});
  ClickTab(1);
  testing::Activate(*window_);
  ShowEditor();
  testing::Activate(Editor());
  EXPECT_EQ(Selected(), 1);
  EXPECT_EQ(Name().text(), "b");
  EXPECT_TRUE(Doc().Saved);
}

TEST_P(EveryEditor, AFailedOpenShowsWhatCouldBeRead) {
  ShowNames({"a"});
  const std::string path = folder_.File("no folder/f.zvf");
  ExpectExclamation("Error loading filter " + path);
  window_->LoadDocument(QString::fromStdString(path));
  EXPECT_EQ(Captions(), Names());
}

TEST_P(EveryEditor, ALockedFilterLetsItsNamesAlone) {
  Show(Locked(Make({"a", "b"})));
  const std::string before = BytesOf(TheFilter());
  ExpectLockWarning();
  testing::TypeInto(Name(), QStringLiteral("xyz"));
  Settle();
  EXPECT_EQ(Name().text(), "a");
  EXPECT_EQ(Captions(), (Strings{"a", "b"}));
  ClickIn("newButton");
  ClickIn("deleteButton");
  EXPECT_EQ(BytesOf(TheFilter()), before);
  EXPECT_TRUE(Doc().Saved);
  EXPECT_TRUE(dialogs_.IsDone());
}

INSTANTIATE_TEST_SUITE_P(All, EveryEditor, ::testing::ValuesIn(EditorCases()),
                         [](const ::testing::TestParamInfo<EditorCase>& editor) {
                           return std::string(editor.param.Kind);
                         });

}  // namespace
}  // namespace zarvo
