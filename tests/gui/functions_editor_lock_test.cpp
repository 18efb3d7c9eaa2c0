// The Functions editor of a locked filter.
#include "tests/gui/functions_editor_fixture.h"

namespace zarvo {
namespace {

using testing::FunctionOf;
using FunctionsEditorTest = testing::FunctionsEditorFixture;

class LockedFunctionsEditorTest : public FunctionsEditorTest {
 protected:
  static Filter TwoFunctions() {
    return WithFunctions({FunctionOf("upper", {{"a", "A"}, {"b", "B"}}), FunctionOf("other", {})});
  }

  /// Everything that would change the filter.
  std::vector<std::pair<const char*, std::function<void()>>> Changes() {
    return {{"name", [this] { testing::TypeInto(Name(), QStringLiteral("x")); }},
            {"new", [this] { ClickIn("newButton"); }},
            {"delete", [this] { ClickIn("deleteButton"); }},
            {"import", [this] { ClickIn("importButton"); }},
            {"radio", [this] { ClickIn("argumentRadio"); }},
            {"radio by keyboard",
             [this] {
               FocusOn("emptyRadio");
               QTest::keyClick(&In("emptyRadio"), Qt::Key_Right);
             }},
            {"add", [this] { AddPair("c", "C"); }},
            {"delete pair",
             [this] {
               ClickLine(1);
               ClickIn("deletePairButton");
             }},
            {"delete no pair", [this] { ClickIn("deletePairButton"); }}};
  }

  void ExpectUntouched(const std::string& before, const char* what) {
    Settle();
    EXPECT_EQ(testing::BytesOf(TheFilter()), before) << what;
    EXPECT_FALSE(WasModified()) << what;
    EXPECT_EQ(Captions(), (Texts{"upper", "other"})) << what;
    EXPECT_EQ(Selected(), 0) << what;
    EXPECT_EQ(ShownIn("nameEdit"), "upper") << what;
    EXPECT_EQ(CheckedReturn(), "empty ") << what;
    EXPECT_EQ(Lines(), (Texts{"a \u2014> A", "b \u2014> B"})) << what;
    EXPECT_EQ(Count(), "2") << what;
    EXPECT_TRUE(dialogs_.IsDone()) << what;
  }

  /// Unlocks and locks, which arms the warning.
  void Rearm() {
    ClickLock();
    ClickLock();
    ASSERT_EQ(TheFilter().Locked, 1);
    Doc().Saved = true;
  }
};

TEST_F(LockedFunctionsEditorTest, EachChangeIsRefusedWithTheWarning) {
  ShowLocked(TwoFunctions());
  const std::string before = testing::BytesOf(TheFilter());
  for (const auto& [what, change] : Changes()) {
    Rearm();
    ExpectLockWarning();
    change();
    ExpectUntouched(before, what);
  }
}

TEST_F(LockedFunctionsEditorTest, TheWarningIsShownOnce) {
  ShowLocked(TwoFunctions());
  const std::string before = testing::BytesOf(TheFilter());
  ExpectLockWarning();
  for (const auto& [what, change] : Changes()) {
    change();
    ExpectUntouched(before, what);
  }
}

TEST_F(LockedFunctionsEditorTest, RefusalsReloadButForImport) {
  ShowLocked(TwoFunctions());
  ExpectLockWarning();
  for (const auto& [what, change] : Changes()) {
    TypeIn("argumentEdit", "typed");
    change();
    EXPECT_EQ(ShownIn("argumentEdit"), std::string(what) == "import" ? "typed" : "") << what;
  }
}

TEST_F(LockedFunctionsEditorTest, ControlsThatOnlyShowWorkWithoutAWarning) {
  ShowLocked(TwoFunctions());
  const std::string before = testing::BytesOf(TheFilter());
  ClickTab(1);
  EXPECT_EQ(ShownIn("nameEdit"), "other");
  ClickTab(0);
  ClickLine(1);
  QTest::keyClick(&List(), Qt::Key_Up);
  FocusOn("nameEdit");
  FocusOn("pairList");
  TypeIn("argumentEdit", "typed");
  TypeIn("valueEdit", "typed");
  ClickIn("emptyRadio");
  dialogs_.ExpectSave(
      "Binary Zarvo functions (*.ZarvoFunction)|*.ZarvoFunction|All files (*.*)|*.*|",
      "ZarvoFunction", "upper", std::nullopt);
  ClickIn("exportButton");
  ExpectUntouched(before, "showing");
}

TEST_F(LockedFunctionsEditorTest, OpenLeavesTheWarningAsItWas) {
  ShowLocked(TwoFunctions());
  ExpectLockWarning();
  ClickIn("newButton");
  EXPECT_TRUE(dialogs_.IsDone());
  ShowLocked(TwoFunctions());
  const std::string before = testing::BytesOf(TheFilter());
  ClickIn("newButton");
  ExpectUntouched(before, "refused in silence");
  Rearm();
  ExpectLockWarning();
  ClickIn("newButton");
  ExpectUntouched(before, "refused with the warning");
}

TEST_F(LockedFunctionsEditorTest, UnlockingAllowsChanges) {
  ShowLocked(TwoFunctions());
  ClickLock();
  AddPair("c", "C");
  EXPECT_EQ(FunctionAt(0).Entries, (Entries{{"a", "A"}, {"b", "B"}, {"c", "C"}}));
}

TEST_F(LockedFunctionsEditorTest, AConfirmedWrongPasswordArmsTheWarningToo) {
  Filter secret = TwoFunctions();
  secret.FormatVersion = 6;
  secret.PasswordKey = "K";
  secret.Password = "not empty";
  ShowLocked(secret);
  ExpectLockWarning();
  ClickIn("newButton");
  ExpectExclamation("Sorry, the password is incorrect");
  ClickLock();
  ExpectLockWarning();
  ClickIn("newButton");
  EXPECT_TRUE(dialogs_.IsDone());
  EXPECT_EQ(TheFilter().Functions.Count(), 2U);
}

TEST_F(LockedFunctionsEditorTest, ANewDocumentKeepsTheEditorsLockAndItsWarning) {
  ShowLocked(TwoFunctions());
  ExpectLockWarning();
  ClickIn("newButton");
  window_->NewDocument();
  ASSERT_EQ(TheFilter().Locked, 0);
  ClickIn("newButton");
  EXPECT_EQ(TheFilter().Functions.Count(), 0U);
  ClickLock();
  ClickLock();
  ClickIn("newButton");
  EXPECT_EQ(Captions(), Texts{"Function 1"});
}

}  // namespace
}  // namespace zarvo
