#include <QLabel>

#include "model/password.h"
#include "tests/gui/main_window_fixture.h"
#include "ui/password_dialogs.h"

namespace zarvo {
namespace {

using testing::Click;
using testing::Find;
using testing::TypeInto;

class LockTest : public testing::MainWindowFixture {
 protected:
  LockTest() { LeaveField(); }

  // A filter of format 5 with this password.
  static zarvo::Filter Secret(const char* password, bool locked) {
    zarvo::Filter filter = Named("secret");
    filter.FormatVersion = 5;
    filter.Locked = locked ? 1 : 0;
    filter.PasswordKey = "K";
    filter.Password = ScramblePassword(password, 'K', 5);
    return filter;
  }

  // Clicks Lock, and in the dialog this button after this text.
  void ClickLock(const QString& password, const char* button = "okButton") {
    bool shown = false;
    testing::WithNextDialog<EnterPasswordDialog>([&](EnterPasswordDialog& dialog) {
      shown = true;
      TypeInto(Find<QWidget>(dialog, "passwordEdit"), password);
      Click(Find<QWidget>(dialog, button));
    });
    ClickOn("lockBox");
    EXPECT_TRUE(shown);
  }

  void ClickSetPassword(const QString& old_password, const QString& new_password,
                        const char* button = "okButton") {
    bool shown = false;
    testing::WithNextDialog<PasswordChangeDialog>([&](PasswordChangeDialog& dialog) {
      shown = true;
      TypeInto(Find<QWidget>(dialog, "oldPasswordEdit"), old_password);
      TypeInto(Find<QWidget>(dialog, "newPasswordEdit"), new_password);
      TypeInto(Find<QWidget>(dialog, "retypeEdit"), new_password);
      Click(Find<QWidget>(dialog, button));
    });
    ClickOn("setPasswordButton");
    EXPECT_TRUE(shown);
  }

  void ExpectPasswordChanged() {
    dialogs_.ExpectMessage(MessageIcon::Information, "Password succesfuly changed.",
                           MessageButtons::Ok, Answer::Ok);
  }

  void ExpectHidden(bool hidden) {
    EXPECT_EQ(Get("editRulesButton").isEnabled(), !hidden);
    EXPECT_EQ(Get("editSetsButton").isEnabled(), !hidden);
    EXPECT_EQ(Get("mergeButton").isEnabled(), !hidden);
    EXPECT_TRUE(Get("editFunctionsButton").isEnabled());
  }
};

// ---- Lock and unlock

TEST_F(LockTest, NewFilterIsLockedAndUnlockedWithAnEmptyBox) {
  ClickLock({});
  EXPECT_EQ(TheFilter().Locked, 1);
  EXPECT_TRUE(IsChecked("lockBox"));
  EXPECT_FALSE(Doc().Saved);
  Doc().Saved = true;
  ClickLock({});
  EXPECT_EQ(TheFilter().Locked, 0);
  EXPECT_FALSE(IsChecked("lockBox"));
  EXPECT_FALSE(Doc().Saved);
}

TEST_F(LockTest, NewFilterAcceptsAnyText) {
  ClickLock(QStringLiteral("anything"));
  EXPECT_EQ(TheFilter().Locked, 1);
  ClickLock(QStringLiteral("something else"));
  EXPECT_EQ(TheFilter().Locked, 0);
}

TEST_F(LockTest, KeyboardWorksTheLockToo) {
  testing::WithNextDialog<EnterPasswordDialog>(
      [](EnterPasswordDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Return); });
  Get("lockBox").setFocus(Qt::TabFocusReason);
  QTest::keyClick(&Get("lockBox"), Qt::Key_Space);
  EXPECT_EQ(TheFilter().Locked, 1);
  testing::WithNextDialog<EnterPasswordDialog>(
      [](EnterPasswordDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
  QTest::keyClick(&Get("lockBox"), Qt::Key_Space);
  EXPECT_EQ(TheFilter().Locked, 1);
  EXPECT_TRUE(IsChecked("lockBox"));
}

TEST_F(LockTest, CancelPutsTheBoxBack) {
  ClickLock({}, "cancelButton");
  EXPECT_EQ(TheFilter().Locked, 0);
  EXPECT_FALSE(IsChecked("lockBox"));
  EXPECT_TRUE(Doc().Saved);
}

TEST_F(LockTest, RightPasswordUnlocks) {
  window_->LoadDocument(WriteFilter("f.zvf", Secret("open", true)));
  ASSERT_TRUE(IsChecked("lockBox"));
  ClickLock(QStringLiteral("open"));
  EXPECT_EQ(TheFilter().Locked, 0);
  EXPECT_FALSE(IsChecked("lockBox"));
  EXPECT_FALSE(Doc().Saved);
}

TEST_F(LockTest, WrongPasswordLeavesTheFilterLockedAndTheBoxTicked) {
  window_->LoadDocument(WriteFilter("f.zvf", Secret("open", true)));
  ExpectExclamation("Sorry, the password is incorrect");
  ClickLock(QStringLiteral("Open"));
  EXPECT_TRUE(dialogs_.IsDone());
  EXPECT_EQ(TheFilter().Locked, 1);
  EXPECT_TRUE(IsChecked("lockBox"));
  EXPECT_TRUE(Doc().Saved);
}

TEST_F(LockTest, LockingAsksForThePasswordToo) {
  window_->LoadDocument(WriteFilter("f.zvf", Secret("open", false)));
  ExpectExclamation("Sorry, the password is incorrect");
  ClickLock({});
  EXPECT_EQ(TheFilter().Locked, 0);
  EXPECT_FALSE(IsChecked("lockBox"));
  EXPECT_TRUE(Doc().Saved);
  ClickLock(QStringLiteral("open"));
  EXPECT_EQ(TheFilter().Locked, 1);
}

TEST_F(LockTest, LockIsSavedWithTheFile) {
  window_->LoadDocument(WriteFilter("f.zvf", Named("f")));
  ClickLock({});
  window_->Save();
  EXPECT_EQ(ReadFilter("f.zvf").Locked, 1);
  EXPECT_TRUE(Doc().Saved);
}

TEST_F(LockTest, EnterPasswordDialogIsMaskedAndModal) {
  testing::WithNextDialog<EnterPasswordDialog>([](EnterPasswordDialog& dialog) {
    EXPECT_EQ(dialog.windowTitle(), "Enter password");
    EXPECT_TRUE(dialog.isModal());
    auto& edit = Find<QLineEdit>(dialog, "passwordEdit");
    EXPECT_EQ(edit.echoMode(), QLineEdit::Password);
    EXPECT_EQ(edit.text(), "");
    EXPECT_EQ(dialog.findChildren<QLineEdit*>().size(), 1);
    EXPECT_EQ(Find<QAbstractButton>(dialog, "okButton").text(), "OK");
    EXPECT_EQ(Find<QAbstractButton>(dialog, "cancelButton").text(), "Cancel");
    dialog.reject();
  });
  ClickOn("lockBox");
}

// ---- What the lock hides

TEST_F(LockTest, LockWithoutShowDisablesRulesSetsAndMerge) {
  ExpectHidden(false);
  ClickLock({});
  ExpectHidden(true);
  ClickLock({});
  ExpectHidden(false);
}

TEST_F(LockTest, LockWithShowDisablesNothing) {
  ClickOn("showWhenLockedBox");
  ClickLock({});
  EXPECT_EQ(TheFilter().Locked, 1);
  ExpectHidden(false);
}

TEST_F(LockTest, FunctionsButtonStaysActiveAndDoesNothing) {
  LockFilter();
  ClickOn("editFunctionsButton");
  EXPECT_FALSE(WindowNamed("FunctionsEditor").isVisible());
  EXPECT_EQ(QApplication::activeWindow(), window_.get());
  EXPECT_TRUE(dialogs_.IsDone());
}

TEST_F(LockTest, OpenAndNewApplyTheLockOfTheNewDocument) {
  window_->LoadDocument(WriteFilter("f.zvf", Secret("open", true)));
  ExpectHidden(true);
  window_->NewDocument();
  ExpectHidden(false);
  EXPECT_FALSE(IsChecked("lockBox"));
}

TEST_F(LockTest, PreviewIsShownInSpiteOfTheLock) {
  LockFilter();
  ClickOn("showPreviewButton");
  EXPECT_TRUE(window_->Preview().isVisible());
}

TEST_F(LockTest, AnyFlagButZeroIsALock) {
  TheFilter().Locked = -3;
  window_->RefreshFields();
  EXPECT_TRUE(IsChecked("lockBox"));
  ExpectHidden(true);
}

// ---- The warning

TEST_F(LockTest, EachFieldRefusesItsChangeAndShowsTheStoredTextAgain) {
  TheFilter().Name = TheFilter().Author = TheFilter().Language = "stored";
  TheFilter().Description = TheFilter().Type = "stored";
  TheFilter().Version = 5;
  const Filter stored = TheFilter();
  for (const char* name :
       {"nameEdit", "versionEdit", "typeBox", "authorEdit", "languageEdit", "descriptionEdit"}) {
    window_->NewDocument();  // arms the warning
    TheFilter() = stored;
    LockFilter();
    const Filter before = TheFilter();
    Doc().Saved = true;
    Type(name, "7");
    EXPECT_FALSE(Doc().Saved) << name << ": typing counts though it is refused";
    ExpectLockWarning();
    Doc().Saved = true;
    LeaveField();
    EXPECT_TRUE(dialogs_.IsDone()) << name;
    EXPECT_TRUE(Doc().Saved) << name << ": putting the text back is no change";
    EXPECT_EQ(TheFilter(), before) << name;
    for (const char* edit : {"nameEdit", "authorEdit", "languageEdit"}) {
      EXPECT_EQ(TextOf(edit), "stored") << edit;
    }
    EXPECT_EQ(TextOf("versionEdit"), "5");
    EXPECT_EQ(Get<QComboBox>("typeBox").currentText(), "stored");
    EXPECT_EQ(Get<ByteTextEdit>("descriptionEdit").Bytes(), "stored");
  }
}

TEST_F(LockTest, LeavingAFieldWarnsEvenWhenNothingWasTyped) {
  LockFilter();
  Get("nameEdit").setFocus(Qt::TabFocusReason);
  ExpectLockWarning();
  LeaveField();
  EXPECT_TRUE(dialogs_.IsDone());
  EXPECT_TRUE(Doc().Saved);
}

TEST_F(LockTest, TypingIntoNameMarksTheDocumentUnsavedThoughItIsRefused) {
  window_->LoadDocument(WriteFilter("f.zvf", Secret("open", true)));
  Type("nameEdit", "x");
  ExpectLockWarning();
  LeaveField();
  EXPECT_EQ(TheFilter().Name, "secret");
  EXPECT_EQ(TextOf("nameEdit"), "secret");
  EXPECT_FALSE(Doc().Saved);
}

TEST_F(LockTest, BothBoxesRefuseAndAreResetFromTheFilter) {
  for (const char* box : {"autoIncrementBox", "showWhenLockedBox"}) {
    for (const bool was_set : {false, true}) {
      window_->NewDocument();
      TheFilter().AutoIncrement = was_set ? 1 : 0;
      LockFilter(was_set);
      ExpectLockWarning();
      ClickOn(box);
      EXPECT_TRUE(dialogs_.IsDone()) << box;
      EXPECT_EQ(IsChecked(box), was_set) << box;
      EXPECT_EQ(TheFilter().AutoIncrement, was_set ? 1 : 0);
      EXPECT_EQ(TheFilter().ShowInEditorWhenLocked, was_set ? 1 : 0);
      EXPECT_TRUE(Doc().Saved) << box;
    }
  }
}

TEST_F(LockTest, SecondRefusalIsSilentAndStillPutsTheStoredValuesBack) {
  LockFilter();
  ExpectLockWarning();
  ClickOn("autoIncrementBox");
  ClickOn("autoIncrementBox");
  EXPECT_FALSE(IsChecked("autoIncrementBox"));
  Type("authorEdit", "x");
  LeaveField();
  EXPECT_EQ(TextOf("authorEdit"), "");
  EXPECT_EQ(TheFilter().Author, "");
}

TEST_F(LockTest, UnlockingDoesNotArmTheWarning) {
  LockFilter();
  ExpectLockWarning();
  ClickOn("autoIncrementBox");
  ClickLock({});
  ASSERT_EQ(TheFilter().Locked, 0);
  ClickLock({});
  ASSERT_EQ(TheFilter().Locked, 1);
  ClickOn("autoIncrementBox");
  EXPECT_FALSE(IsChecked("autoIncrementBox"));
}

TEST_F(LockTest, SavingDoesNotArmTheWarning) {
  window_->LoadDocument(WriteFilter("f.zvf", Secret("open", true)));
  ExpectLockWarning();
  ClickOn("autoIncrementBox");
  dialogs_.ExpectMessage(MessageIcon::Question, SaveInNewestFormatText(5), MessageButtons::YesNo,
                         Answer::No);
  window_->Save();
  ClickOn("autoIncrementBox");
}

TEST_F(LockTest, NewAndOpenArmTheWarning) {
  LockFilter();
  ExpectLockWarning();
  ClickOn("autoIncrementBox");
  window_->LoadDocument(WriteFilter("f.zvf", Secret("open", true)));
  ExpectLockWarning();
  ClickOn("autoIncrementBox");
  EXPECT_TRUE(dialogs_.IsDone());
  window_->NewDocument();
  LockFilter();
  ExpectLockWarning();
  ClickOn("autoIncrementBox");
}

TEST_F(LockTest, SavingALockedFilterStoresNothingThatWasTyped) {
  Filter filter = Named("stored");
  filter.Locked = 1;
  window_->LoadDocument(WriteFilter("f.zvf", filter));
  Type("nameEdit", "typed");
  Press(Qt::Key_S, Qt::ControlModifier);
  EXPECT_EQ(ReadFilter("f.zvf"), filter);
  EXPECT_EQ(TextOf("nameEdit"), "stored");
  EXPECT_TRUE(Doc().Saved);
  ExpectLockWarning();
  LeaveField();
}

TEST_F(LockTest, SavingALockedFilterRaisesItsVersionWithAutoIncrement) {
  Filter filter = Named("stored");
  filter.Locked = 1;
  filter.AutoIncrement = 1;
  filter.Version = 7;
  window_->LoadDocument(WriteFilter("f.zvf", filter));
  window_->Save();
  EXPECT_EQ(ReadFilter("f.zvf").Version, 8);
  EXPECT_EQ(TextOf("versionEdit"), "8");
}

// ---- Set password

TEST_F(LockTest, NewFilterTakesNoPasswordAndReportsSuccess) {
  const Filter before = TheFilter();
  ExpectPasswordChanged();
  ClickSetPassword(QStringLiteral("any old"), QStringLiteral("new"));
  EXPECT_TRUE(dialogs_.IsDone());
  EXPECT_FALSE(Doc().Saved);
  EXPECT_EQ(TheFilter(), before);
  ClickLock(QStringLiteral("not new"));
  EXPECT_EQ(TheFilter().Locked, 1);
}

TEST_F(LockTest, PasswordOfAFormatThatStoresOneIsChanged) {
  for (const int format : {4, 5}) {
    window_->NewDocument();
    TheFilter().FormatVersion = format;
    TheFilter().PasswordKey = "K";
    TheFilter().Password = ScramblePassword("old", 'K', format);
    ExpectPasswordChanged();
    ClickSetPassword(QStringLiteral("old"), QStringLiteral("new"));
    EXPECT_FALSE(Doc().Saved);
    EXPECT_EQ(TheFilter().PasswordKey.size(), 1U);
    EXPECT_TRUE(TheFilter().CheckPassword("new")) << format;
    Doc().Saved = true;
  }
}

TEST_F(LockTest, EarlyFormatsWithoutAKeyReportSuccessAndAcceptAnyPassword) {
  for (const int format : {1, 2, 3}) {
    window_->NewDocument();
    TheFilter().FormatVersion = format;
    ExpectPasswordChanged();
    ClickSetPassword({}, QStringLiteral("new"));
    EXPECT_FALSE(Doc().Saved);
    EXPECT_EQ(TheFilter().PasswordKey, "");
    EXPECT_TRUE(TheFilter().CheckPassword("other")) << format;
    Doc().Saved = true;
  }
}

TEST_F(LockTest, WrongOldPasswordChangesNothing) {
  window_->LoadDocument(WriteFilter("f.zvf", Secret("old", false)));
  const Filter before = TheFilter();
  ExpectExclamation("You've provided incorrect old password. Try again.");
  ClickSetPassword(QStringLiteral("wrong"), QStringLiteral("new"));
  EXPECT_TRUE(dialogs_.IsDone());
  EXPECT_EQ(TheFilter(), before);
  EXPECT_TRUE(Doc().Saved);
}

TEST_F(LockTest, CancelledPasswordChangeChangesNothing) {
  window_->LoadDocument(WriteFilter("f.zvf", Secret("old", false)));
  const Filter before = TheFilter();
  ClickSetPassword(QStringLiteral("old"), QStringLiteral("new"), "cancelButton");
  EXPECT_EQ(TheFilter(), before);
  EXPECT_TRUE(Doc().Saved);
}

TEST_F(LockTest, PasswordOfALockedFilterIsChangedWithoutAWarning) {
  window_->LoadDocument(WriteFilter("f.zvf", Secret("old", true)));
  ExpectPasswordChanged();
  ClickSetPassword(QStringLiteral("old"), QStringLiteral("new"));
  EXPECT_TRUE(TheFilter().CheckPassword("new"));
  EXPECT_EQ(TheFilter().Locked, 1);
  EXPECT_FALSE(Doc().Saved);
}

TEST_F(LockTest, PasswordWithTheByteOneChecksInFormatFive) {
  zarvo::Filter filter = Secret(
      "a\x01"
      "b",
      true);
  ASSERT_NE(filter.Password.find('\x01'), std::string::npos);
  window_->LoadDocument(WriteFilter("f.zvf", filter));
  testing::WithNextDialog<EnterPasswordDialog>([](EnterPasswordDialog& dialog) {
    Find<ByteLineEdit>(dialog, "passwordEdit")
        .SetBytes(
            "a\x01"
            "b");
    Click(Find<QWidget>(dialog, "okButton"));
  });
  ClickOn("lockBox");
  EXPECT_EQ(TheFilter().Locked, 0);
}

TEST_F(LockTest, DifferentNewPasswordsKeepTheDialogOpenWithBothEmptied) {
  window_->LoadDocument(WriteFilter("f.zvf", Secret("old", false)));
  ExpectExclamation(
      "The new and retyped new passwords are not the same. Type them again to ensure they're "
      "correct.");
  ExpectPasswordChanged();
  testing::WithNextDialog<PasswordChangeDialog>([this](PasswordChangeDialog& dialog) {
    EXPECT_EQ(dialog.windowTitle(), "Password change");
    auto& old_edit = Find<QLineEdit>(dialog, "oldPasswordEdit");
    auto& new_edit = Find<QLineEdit>(dialog, "newPasswordEdit");
    auto& retype_edit = Find<QLineEdit>(dialog, "retypeEdit");
    for (const QLineEdit* edit : {&old_edit, &new_edit, &retype_edit}) {
      EXPECT_EQ(edit->echoMode(), QLineEdit::Password);
    }
    EXPECT_EQ(Find<QLabel>(dialog, "oldPasswordLabel").text(), "Old password:");
    EXPECT_EQ(Find<QLabel>(dialog, "newPasswordLabel").text(), "New password:");
    EXPECT_EQ(Find<QLabel>(dialog, "retypeLabel").text(), "Retype new:");
    TypeInto(old_edit, QStringLiteral("old"));
    TypeInto(new_edit, QStringLiteral("new"));
    TypeInto(retype_edit, QStringLiteral("New"));
    Click(Find<QWidget>(dialog, "okButton"));
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(old_edit.text(), "old");
    EXPECT_EQ(new_edit.text(), "");
    EXPECT_EQ(retype_edit.text(), "");
    EXPECT_EQ(QApplication::focusWidget(), &new_edit);
    TypeInto(new_edit, QStringLiteral("new"));
    TypeInto(retype_edit, QStringLiteral("new"));
    QTest::keyClick(&retype_edit, Qt::Key_Return);
  });
  ClickOn("setPasswordButton");
  EXPECT_TRUE(dialogs_.IsDone());
  EXPECT_TRUE(TheFilter().CheckPassword("new"));
}

TEST_F(LockTest, WarningOfALeftFieldTakesNoClick) {
  LockFilter();
  TypeInto(Get("nameEdit"), {});
  bool asked = false;
  testing::WithNextDialog<EnterPasswordDialog>([&](EnterPasswordDialog& dialog) {
    asked = true;
    Click(Find<QWidget>(dialog, "cancelButton"));
  });
  // As with a hand: time passes before the button is let go.
  auto& box = Get("lockBox");
  const QPoint place = box.mapTo(window_.get(), QPoint(8, box.height() / 2));
  QTest::mousePress(window_->windowHandle(), Qt::LeftButton, {}, place);
  QTest::qWait(100);
  ExpectLockWarning();
  QTest::mouseRelease(window_->windowHandle(), Qt::LeftButton, {}, place);
  EXPECT_TRUE(asked);
  LeaveField();
  EXPECT_TRUE(dialogs_.IsDone());
}

TEST_F(LockTest, ListOrMenuOverAFieldRaisesNoWarning) {
  LockFilter();
  auto& type = Get<QComboBox>("typeBox");
  TypeInto(type, {});
  type.showPopup();
  QTest::qWait(100);
  type.hidePopup();
  QTest::qWait(100);
  EXPECT_TRUE(dialogs_.IsDone());
}

}  // namespace
}  // namespace zarvo
