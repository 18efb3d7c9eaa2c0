// One session from an empty document to a file and back, by keys and clicks alone.

#include <QListWidget>

#include "tests/gui/editor_fixture.h"
#include "tests/support/golden.h"
#include "ui/string_editor.h"

namespace zarvo {
namespace {

using testing::Click;
using testing::Find;
using testing::SelectAllAndType;

class WholeSession : public testing::MainWindowFixture {
 protected:
  /// Clicks the main window's button and takes the editor that it opens as the one at work.
  void OpenEditor(const testing::EditorNames& names) {
    ClickOn(names.EditButton);
    editor_ = &testing::TopLevel(names.Window);
    ASSERT_TRUE(editor_->isVisible());
    testing::Activate(*editor_);
  }
  template <typename Control = QWidget>
  Control& In(const char* name) {
    return Find<Control>(*editor_, name);
  }
  void ClickIn(const char* name) { Click(In(name)); }
  void TypeIn(const char* name, const char* text) {
    SelectAllAndType(In(name), QString::fromLatin1(text));
  }
  /// Clicks a button of the editor and works in the String Editor that it opens, up to OK.
  void WithStringEditor(const char* button, const std::function<void(StringEditor&)>& work) {
    bool shown = false;
    testing::WithNextDialog<StringEditor>([&](StringEditor& dialog) {
      shown = true;
      work(dialog);
      Click(Find<QWidget>(dialog, "okButton"));
    });
    ClickIn(button);
    ASSERT_TRUE(shown) << button;
  }
  /// Clicks the button and chooses this entry of its menu.
  static void Choose(QWidget& button, const char* entry) {
    Click(button);
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr) << button.objectName().toStdString();
    for (QAction* action : menu->actions()) {
      if (action->text() != QString::fromLatin1(entry)) continue;
      ASSERT_TRUE(action->isEnabled());
      QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(action).center());
      return;
    }
    menu->close();
    FAIL() << "no entry " << entry;
  }

  void WriteHeader() {
    Type("nameEdit", "Session");
    Type("authorEdit", "Ann");
    Type("languageEdit", "en");
    // The last of the five types.
    testing::TypeInto(Get("typeBox"), {});
    for (int i = 0; i < 5; ++i) QTest::keyClick(&Get("typeBox"), Qt::Key_Down);
    testing::TypeInto(Get("descriptionEdit"), QStringLiteral("one"));
    QTest::keyClick(&Get("descriptionEdit"), Qt::Key_Return);
    QTest::keyClicks(&Get("descriptionEdit"), QStringLiteral("two"));
    ClickOn("autoIncrementBox");
  }

  void WriteFunction() {
    OpenEditor(testing::kFunctionsEditor);
    TypeIn("nameEdit", "Upper");
    ClickIn("argumentRadio");
    for (const auto& [argument, value] : {std::pair("a", "A"), std::pair("b", "B")}) {
      TypeIn("argumentEdit", argument);
      TypeIn("valueEdit", value);
      ClickIn("addPairButton");
    }
    QTest::keyClick(editor_, Qt::Key_Escape);
  }

  void WriteSet() {
    OpenEditor(testing::kSetsEditor);
    TypeIn("nameEdit", "ends");
    for (const char* string : {"!", "?"}) {
      WithStringEditor("addStringButton", [string](StringEditor& dialog) {
        SelectAllAndType(Find<QWidget>(dialog, "textEdit"), QString::fromLatin1(string));
      });
    }
    QTest::keyClick(editor_, Qt::Key_Escape);
  }

  void WriteRuleWithCall() {
    TypeIn("nameEdit", "capital");
    WithStringEditor("editPatternButton", [](StringEditor& dialog) {
      Choose(Find<QWidget>(dialog, "stringsMenuButton"), "Full stop");
      Click(Find<QWidget>(dialog, "newButton"));
      Click(Find<QWidget>(dialog, "listRadio"));
      SelectAllAndType(Find<QWidget>(dialog, "textEdit"), QStringLiteral("ab"));
      Click(Find<QWidget>(dialog, "newButton"));
      Click(Find<QWidget>(dialog, "codeRadio"));
      SelectAllAndType(Find<QWidget>(dialog, "textEdit"), QStringLiteral("99"));
      Click(Find<QWidget>(dialog, "findButton"));
      EXPECT_EQ(Find<ByteLineEdit>(dialog, "outputEdit").Bytes(), "stop[a, b]c");
    });
    WithStringEditor("editReplacementButton", [](StringEditor& dialog) {
      Click(Find<QWidget>(dialog, "functionRadio"));
      Choose(Find<QWidget>(dialog, "functionsMenuButton"), "Upper");
      // The caret stands between the brackets.
      auto& text = Find<QWidget>(dialog, "textEdit");
      ASSERT_TRUE(text.hasFocus());
      QTest::keyClicks(&text, QStringLiteral("3"));
      Click(Find<QWidget>(dialog, "newButton"));
      SelectAllAndType(text, QStringLiteral("C"));
      EXPECT_EQ(Find<ByteLineEdit>(dialog, "outputEdit").Bytes(), "{Upper(3)}");
    });
    EXPECT_EQ(In<ByteLineEdit>("replacementEdit").Bytes(), "{Upper(3)}C");
    ClickIn("replaceRadio");
    testing::Drag(In<QSlider>("fromToSlider"), {2, 3});
    ClickIn("anchorButton");
    testing::Drag(In<QSlider>("fromToSlider"), {4});
    EXPECT_EQ(In<QLineEdit>("fromEdit").text(), "3");
    EXPECT_EQ(In<QLineEdit>("toEdit").text(), "4");
  }

  void WriteRuleWithSet() {
    ClickIn("newButton");
    TypeIn("nameEdit", "marker");
    WithStringEditor("editPatternButton", [](StringEditor& dialog) {
      SelectAllAndType(Find<QWidget>(dialog, "textEdit"), QStringLiteral("x"));
    });
    ClickIn("fromSetRadio");
    EXPECT_EQ(In<QComboBox>("setBox").currentText(), "ends");
    ClickIn("replaceRadio");
  }

  /// The filter tried on the text that was typed.
  std::string Update() {
    Click(Find<QWidget>(window_->Preview(), "updateButton"));
    return Find<ByteTextEdit>(window_->Preview(), "modifiedEdit").Bytes();
  }

  void ExpectCounts(const char* rules, const char* functions, const char* sets) {
    EXPECT_EQ(TextOf("rulesCount").toStdString(), rules);
    EXPECT_EQ(TextOf("functionsCount").toStdString(), functions);
    EXPECT_EQ(TextOf("setsCount").toStdString(), sets);
  }

 private:
  QDialog* editor_ = nullptr;
};

TEST_F(WholeSession, AFilterIsWrittenTriedSavedAndOpenedAgain) {
  folder_.Write("Subpatterns.dat",
                "[General]\r\nStrings=1\r\n[Strings]\r\nName1=Full stop\r\nString1=\". \"\r\n"
                "Render1=stop\r\nShow1=1\r\n");
  ClickOn("newButton");
  WriteHeader();
  WriteFunction();
  WriteSet();
  OpenEditor(testing::kRulesEditor);
  WriteRuleWithCall();
  WriteRuleWithSet();
  ExpectCounts("2", "1", "1");
  EXPECT_FALSE(Doc().Saved);

  ClickOn("showPreviewButton");
  testing::TypeInto(Find<QWidget>(window_->Preview(), "originalEdit"),
                    QStringLiteral("x. ac x. bc x. cc"));
  EXPECT_EQ(Update(), "!. AC ?. BC !. cc");

  const QString path = PathOf("session.zvf");
  ExpectSaveAs(QString(), path);
  Choose(Get("saveButton"), "Save");
  EXPECT_TRUE(dialogs_.IsDone());
  EXPECT_TRUE(Doc().Saved);
  EXPECT_EQ(Caption(), "session.zvf - Zarvo Composer");
  EXPECT_EQ(TextOf("versionEdit"), "1");
  EXPECT_EQ(folder_.Read("session.zvf"), testing::Golden("whole-session"));

  ClickOn("newButton");
  ExpectCounts("0", "0", "0");
  EXPECT_EQ(Update(), "x. ac x. bc x. cc");
  ExpectOpen(path);
  ClickOn("openButton");
  EXPECT_TRUE(dialogs_.IsDone());
  EXPECT_EQ(Caption(), "session.zvf - Zarvo Composer");
  EXPECT_EQ(TextOf("nameEdit"), "Session");
  EXPECT_EQ(TextOf("authorEdit"), "Ann");
  ExpectCounts("2", "1", "1");
  EXPECT_TRUE(Doc().Saved);
  EXPECT_EQ(Update(), "!. AC ?. BC !. cc");
}

}  // namespace
}  // namespace zarvo
