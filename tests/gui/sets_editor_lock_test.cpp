// The Sets editor of a locked filter.
#include "tests/gui/sets_editor_fixture.h"
#include "ui/string_editor.h"

namespace zarvo {
namespace {

using testing::Click;
using testing::Find;
using testing::SetOf;
using SetsEditorTest = testing::SetsEditorFixture;

class LockedSetsEditorTest : public SetsEditorTest {
 protected:
  static Filter TwoSets() {
    Filter filter = WithStrings({"a", "b", "c"});
    filter.Sets.Append(SetOf("other", {}));
    return filter;
  }

  /// Everything that would change the filter.
  std::vector<std::pair<const char*, std::function<void()>>> Changes() {
    return {{"name", [this] { testing::TypeInto(Name(), QStringLiteral("x")); }},
            {"new", [this] { ClickIn("newButton"); }},
            {"delete", [this] { ClickIn("deleteButton"); }},
            {"import", [this] { ClickIn("importButton"); }},
            {"add", [this] { ClickIn("addStringButton"); }},
            {"delete string", [this] { Command("deleteStringButton"); }},
            {"move up", [this] { Command("moveUpButton"); }},
            {"move down", [this] { Command("moveDownButton"); }}};
  }

  void ExpectUntouched(const std::string& before, const char* what) {
    Settle();
    EXPECT_EQ(testing::BytesOf(TheFilter()), before) << what;
    EXPECT_FALSE(WasModified()) << what;
    EXPECT_EQ(Captions(), (Texts{"letters", "other"})) << what;
    EXPECT_EQ(Selected(), 0) << what;
    EXPECT_EQ(ShownIn("nameEdit"), "letters") << what;
    EXPECT_EQ(Lines(), (Texts{"a", "b", "c"})) << what;
    EXPECT_EQ(Count(), "2") << what;
    EXPECT_TRUE(dialogs_.IsDone()) << what;
  }

 private:
  void Command(const char* button) {
    ClickLine(1);
    ClickIn(button);
  }
};

TEST_F(LockedSetsEditorTest, EachChangeIsRefusedWithTheWarning) {
  for (const auto& [what, change] : Changes()) {
    ShowLocked(TwoSets());  // arms the warning
    const std::string before = testing::BytesOf(TheFilter());
    ExpectLockWarning();
    change();
    ExpectUntouched(before, what);
  }
}

TEST_F(LockedSetsEditorTest, TheWarningIsShownOnce) {
  ShowLocked(TwoSets());
  const std::string before = testing::BytesOf(TheFilter());
  ExpectLockWarning();
  for (const auto& [what, change] : Changes()) {
    change();
    ExpectUntouched(before, what);
  }
}

TEST_F(LockedSetsEditorTest, RefusalsReloadButForImport) {
  ShowLocked(TwoSets());
  AutoUpdate();
  ExpectLockWarning();
  for (const auto& [what, change] : Changes()) {
    change();
    EXPECT_EQ(WasPreviewUpdated(), std::string(what) != "import") << what;
  }
}

TEST_F(LockedSetsEditorTest, ControlsThatOnlyShowWorkWithoutAWarning) {
  ShowLocked(TwoSets());
  const std::string before = testing::BytesOf(TheFilter());
  ClickTab(1);
  EXPECT_EQ(ShownIn("nameEdit"), "other");
  ClickTab(0);
  ClickLine(2);
  EXPECT_EQ(EnabledCommands(), "delete edit up ");
  QTest::keyClick(&List(), Qt::Key_Up);
  FocusOn("nameEdit");
  FocusOn("stringList");
  dialogs_.ExpectSave("Binary Zarvo sets (*.ZarvoSet)|*.ZarvoSet|All files (*.*)|*.*|", "ZarvoSet",
                      "letters", std::nullopt);
  ClickIn("exportButton");
  ExpectUntouched(before, "showing");
}

TEST_F(LockedSetsEditorTest, AStringIsShownButNotTakenBack) {
  ShowLocked(TwoSets());
  const std::string before = testing::BytesOf(TheFilter());
  for (const bool by_mouse : {false, true}) {
    ClickLine(1);
    // The String Editor refuses by itself.
    ExpectLockWarning();
    bool shown = false;
    testing::WithNextDialog<StringEditor>([&shown](StringEditor& dialog) {
      shown = true;
      auto& text = Find<ByteLineEdit>(dialog, "textEdit");
      EXPECT_EQ(text.Bytes(), "b");
      testing::TypeInto(text, QStringLiteral("x"));
      EXPECT_EQ(text.Bytes(), "b");
      Click(Find<QWidget>(dialog, "okButton"));
    });
    if (by_mouse) {
      DoubleClickLine(1);
    } else {
      ClickIn("editStringButton");
    }
    EXPECT_TRUE(shown);
    ExpectUntouched(before, "edit");
  }
}

TEST_F(LockedSetsEditorTest, OpenArmsTheWarningAgain) {
  for (int i = 0; i < 2; ++i) {
    ShowLocked(TwoSets());
    ExpectLockWarning();
    ClickIn("newButton");
    ClickIn("newButton");
    EXPECT_TRUE(dialogs_.IsDone());
  }
}

TEST_F(LockedSetsEditorTest, LockingArmsTheWarningAgainAndUnlockingAllowsChanges) {
  ShowLocked(TwoSets());
  ExpectLockWarning();
  ClickIn("newButton");
  ClickLock();
  ClickIn("newButton");
  EXPECT_EQ(Captions(), (Texts{"letters", "other", "Set 3"}));
  ClickLock();
  ExpectLockWarning();
  ClickIn("newButton");
  EXPECT_TRUE(dialogs_.IsDone());
  EXPECT_EQ(TheFilter().Sets.Count(), 3U);
}

TEST_F(LockedSetsEditorTest, ANewDocumentKeepsTheEditorsLockAndItsWarning) {
  ShowLocked(TwoSets());
  ExpectLockWarning();
  ClickIn("newButton");
  window_->NewDocument();
  ASSERT_EQ(TheFilter().Locked, 0);
  ClickIn("newButton");
  EXPECT_EQ(TheFilter().Sets.Count(), 0U);
  EXPECT_TRUE(dialogs_.IsDone());
  ClickLock();
  ClickLock();
  ShowEditor();
  EXPECT_EQ(Captions(), Texts{"Set 1"});
}

}  // namespace
}  // namespace zarvo
