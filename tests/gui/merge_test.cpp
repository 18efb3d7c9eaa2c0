#include "tests/gui/merge_fixture.h"

namespace zarvo::testing {
namespace {

// ---- Before the dialog

TEST_F(MergeTest, LockedFilterIsRefusedBeforeAFileIsChosen) {
  LoadTarget();
  LockFilter(true);
  ASSERT_TRUE(Get("mergeButton").isEnabled());
  ExpectExclamation(kLockedTarget);
  ExpectRefused();
}

TEST_F(MergeTest, LockThatHidesTheEditorsDisablesTheButton) {
  LockFilter(false);
  EXPECT_FALSE(Get("mergeButton").isEnabled());
}

TEST_F(MergeTest, CancelledFileDialogStops) {
  LoadTarget();
  ExpectOpen(std::nullopt);
  ExpectRefused();
}

TEST_F(MergeTest, MissingFileIsReported) {
  LoadTarget();
  const QString path = PathOf("missing & <b>.zvf");
  ExpectOpen(path);
  ExpectExclamation("Error loading filter " + path.toStdString());
  ExpectRefused();
  EXPECT_EQ(Doc().Path, PathOf("target.zvf"));
  EXPECT_EQ(Caption(), "target.zvf - Zarvo Composer");
}

TEST_F(MergeTest, DamagedFileIsReportedThoughPartOfItCouldBeRead) {
  LoadTarget();
  for (const char* name : {"truncated-second-rule", "wrong-magic", "count-too-large"}) {
    const std::string path = folder_.Write(name, testing::Golden(name));
    ExpectOpen(QString::fromStdString(path));
    ExpectExclamation("Error loading filter " + path);
    ExpectRefused();
  }
}

TEST_F(MergeTest, DamagedFileIsReportedThoughItIsLocked) {
  const std::string bytes = testing::Golden("format-v1");
  const std::string path = folder_.Write("cut.zvf", bytes.substr(0, bytes.size() - 1));
  ExpectOpen(QString::fromStdString(path));
  ExpectExclamation("Error loading filter " + path);
  ExpectRefused();
}

TEST_F(MergeTest, NewerFormatAnsweredNoIsReported) {
  LoadTarget();
  const std::string path = folder_.Write("newer.zvf", testing::Golden("format-v7"));
  ExpectOpen(QString::fromStdString(path));
  dialogs_.ExpectMessage(MessageIcon::Question, LoadNewerFormatText(7), MessageButtons::YesNo,
                         Answer::No, [] {
                           ASSERT_NE(QApplication::overrideCursor(), nullptr);
                           EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
                         });
  dialogs_.ExpectMessage(MessageIcon::Exclamation, "Error loading filter " + path,
                         MessageButtons::Ok, Answer::Ok,
                         [] { EXPECT_EQ(QApplication::overrideCursor(), nullptr); });
  ExpectRefused();
}

TEST_F(MergeTest, NewerFormatAnsweredYesIsOffered) {
  LoadTarget();
  const std::string path = folder_.Write("newer.zvf", testing::Golden("format-v7"));
  ExpectOpen(QString::fromStdString(path));
  dialogs_.ExpectMessage(MessageIcon::Question, LoadNewerFormatText(7), MessageButtons::YesNo,
                         Answer::Yes);
  ShowDialog([](MergeDialog& dialog) {
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    ExpectShown(dialog, {"r"}, {}, {});
    AddAll(dialog);
    PressOk(dialog);
  });
  EXPECT_EQ(NamesOf(TheFilter().Sets), Names({"s", "S"}));
  EXPECT_EQ(NamesOf(TheFilter().Functions), Names({"f", "f"}));
  EXPECT_EQ(TheFilter().FormatVersion, 6);
}

// ---- A locked source

TEST_F(MergeTest, LockedSourceOpensWithItsPasswordAndStaysLocked) {
  LoadTarget();
  const std::string path = folder_.Write("locked.zvf", testing::Golden("format-v1"));
  ExpectOpen(QString::fromStdString(path));
  dialogs_.ExpectMessage(MessageIcon::Information, kLockedSource, MessageButtons::Ok, Answer::Ok,
                         [this] {
                           EXPECT_EQ(QApplication::overrideCursor(), nullptr);
                           AnswerPassword(QStringLiteral("cat"));
                         });
  ShowDialog([](MergeDialog& dialog) {
    ExpectShown(dialog, {"r"}, {"dash"}, {});
    AddAll(dialog);
    PressOk(dialog);
  });
  EXPECT_EQ(NamesOf(TheFilter().Rules), Names({"r", "dash"}));
  EXPECT_EQ(TheFilter().Locked, 0);
  EXPECT_EQ(TheFilter().Password, "");
  EXPECT_EQ(folder_.Read("locked.zvf"), testing::Golden("format-v1"));
}

TEST_F(MergeTest, WrongPasswordOfTheSourceStops) {
  LoadTarget();
  for (const char* password : {"dog", ""}) {
    ExpectOpen(QString::fromStdString(folder_.Write("locked.zvf", testing::Golden("format-v1"))));
    ExpectLockedSource();
    ExpectExclamation(kWrongPassword);
    AnswerPassword(QString::fromLatin1(password));
    ExpectRefused();
  }
}

TEST_F(MergeTest, CancelledPasswordOfTheSourceStopsWithoutAMessage) {
  LoadTarget();
  ExpectOpen(QString::fromStdString(folder_.Write("locked.zvf", testing::Golden("format-v1"))));
  ExpectLockedSource();
  AnswerPassword(QStringLiteral("cat"), "cancelButton");
  ExpectRefused();
}

TEST_F(MergeTest, LockedSourceWithoutAPasswordOpensWithAnyText) {
  zarvo::Filter source = Source();
  source.Locked = 1;
  for (const char* password : {"", "anything"}) {
    ExpectOpen(WriteFilter("source.zvf", source));
    ExpectLockedSource();
    AnswerPassword(QString::fromLatin1(password));
    ShowDialog([](MergeDialog& dialog) { PressCancel(dialog); });
  }
}

TEST_F(MergeTest, SourceThatIsNotLockedIsOpenedWithoutItsPassword) {
  zarvo::Filter source = Source();
  source.FormatVersion = 5;
  source.PasswordKey = "K";
  source.Password = ScramblePassword("secret", 'K', 5);
  Merge(source, [](MergeDialog& dialog) { PressCancel(dialog); });
}

// ---- OK and Cancel

TEST_F(MergeTest, OkAppendsAllKindsAndShowsTheCounts) {
  LoadTarget();
  ASSERT_TRUE(Doc().Saved);
  Merge(Source(), [](MergeDialog& dialog) {
    AddAll(dialog);
    PressOk(dialog);
  });
  EXPECT_EQ(NamesOf(TheFilter().Rules), Names({"r", "r1", "r2"}));
  EXPECT_EQ(NamesOf(TheFilter().Functions), Names({"f", "f1", "f2"}));
  EXPECT_EQ(NamesOf(TheFilter().Sets), Names({"s", "s1", "s2"}));
  for (const char* count : {"rulesCount", "functionsCount", "setsCount"}) {
    EXPECT_EQ(TextOf(count), "3") << count;
  }
  EXPECT_FALSE(Doc().Saved);
  EXPECT_EQ(TheFilter().Name, "target");
  EXPECT_EQ(Doc().Path, PathOf("target.zvf"));
  EXPECT_EQ(Caption(), "target.zvf - Zarvo Composer");
}

TEST_F(MergeTest, OkWithNothingChosenStillRefreshesAndClearsTheSavedFlag) {
  LoadTarget();
  TheFilter().Author = "not shown yet";
  zarvo::Filter before = TheFilter();
  Merge(Source(), [](MergeDialog& dialog) { PressOk(dialog); });
  EXPECT_EQ(TheFilter(), before);
  EXPECT_FALSE(Doc().Saved);
  EXPECT_EQ(TextOf("authorEdit"), "not shown yet");
}

TEST_F(MergeTest, CancelEscapeAndCloseChangeNothing) {
  LoadTarget();
  const zarvo::Filter before = TheFilter();
  const std::function<void(MergeDialog&)> ways[] = {
      [](MergeDialog& dialog) { PressCancel(dialog); },
      [](MergeDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); },
      [](MergeDialog& dialog) { dialog.close(); }};
  for (const auto& way : ways) {
    Merge(Source(), [&](MergeDialog& dialog) {
      AddAll(dialog);
      way(dialog);
    });
    EXPECT_EQ(TheFilter(), before);
    EXPECT_TRUE(Doc().Saved);
    EXPECT_EQ(TextOf("rulesCount"), "1");
  }
}

TEST_F(MergeTest, ExistingNameIsAddedASecondTime) {
  LoadTarget();
  zarvo::Filter source = WithRules({"r"});
  source.Rules[0].Probability = 7;
  Merge(source, [](MergeDialog& dialog) {
    ExpectShown(dialog, {"r"}, {"r"}, {});
    AddAll(dialog);
    PressOk(dialog);
  });
  ASSERT_EQ(NamesOf(TheFilter().Rules), Names({"r", "r"}));
  EXPECT_EQ(TheFilter().Rules[0].Probability, RuleNamed("r").Probability);
  EXPECT_EQ(TheFilter().Rules[1].Probability, 7);
}

TEST_F(MergeTest, RuleWithoutItsSetIsAddedAndTheIntegrityCheckFindsIt) {
  LoadTarget();
  zarvo::Filter source =
      testing::FilterOf({testing::FromSet(testing::Of({testing::Str("a")}, 0),
                                          ReplacementSource::SetInSequence, "left behind")},
                        {testing::SetOf("left behind", {})});
  Merge(source, [](MergeDialog& dialog) {
    SelectAll(List(dialog, "availableList"));
    Click(Find<QWidget>(dialog, "addButton"));
    PressOk(dialog);
  });
  EXPECT_EQ(TheFilter().Rules.Count(), 2U);
  dialogs_.ExpectMessage(
      MessageIcon::Question,
      "Some incorrect/unmatched references to sets/functions were found. Would you like to save "
      "the error report to the file \"report.txt\" (existing file will be overwritten)?",
      MessageButtons::YesNo, Answer::No);
  ClickOn("checkButton");
}

TEST_F(MergeTest, DocumentsOwnFileCanBeMergedIntoIt) {
  LoadTarget();
  Merge(PathOf("target.zvf"), [](MergeDialog& dialog) {
    AddAll(dialog);
    PressOk(dialog);
  });
  EXPECT_EQ(NamesOf(TheFilter().Rules), Names({"r", "r"}));
}

TEST_F(MergeTest, OpenEditorsShowTheNewContentFromItsStart) {
  LoadTarget();
  TheFilter().Rules.Append(RuleNamed("last"));
  for (const char* button : {"editRulesButton", "editFunctionsButton", "editSetsButton"}) {
    ClickOn(button);
  }
  auto& rules = Find<ObjectTabs>(Editor("RulesEditor"), "ruleTabs");
  const auto& functions = Find<ObjectTabs>(Editor("FunctionsEditor"), "functionTabs");
  const auto& sets = Find<ObjectTabs>(Editor("SetsEditor"), "setTabs");
  QTest::mouseClick(&rules, Qt::LeftButton, {}, rules.tabRect(1).center());
  ASSERT_EQ(rules.currentIndex(), 1);
  Doc().Saved = true;
  Merge(Source(), [](MergeDialog& dialog) {
    AddAll(dialog);
    PressOk(dialog);
  });
  EXPECT_EQ(rules.count(), 4);
  EXPECT_EQ(rules.Caption(3), "r2");
  EXPECT_EQ(rules.currentIndex(), 0);
  EXPECT_EQ(functions.count(), 3);
  EXPECT_EQ(functions.Caption(2), "f2");
  EXPECT_EQ(sets.count(), 3);
  EXPECT_EQ(sets.Caption(2), "s2");
  EXPECT_FALSE(Doc().Saved);
}

TEST_F(MergeTest, PreviewIsNotReset) {
  auto& bar = Find<QProgressBar>(window_->Preview(), "progressBar");
  auto& modified = Find<ByteTextEdit>(window_->Preview(), "modifiedEdit");
  bar.setValue(50);
  modified.SetBytes("result");
  Merge(Source(), [](MergeDialog& dialog) {
    AddAll(dialog);
    PressOk(dialog);
  });
  EXPECT_EQ(bar.value(), 50);
  EXPECT_EQ(modified.Bytes(), "result");
}

TEST_F(MergeTest, MergedAndSavedItIsTheFileLaidDownByHand) {
  window_->LoadDocument(
      QString::fromStdString(folder_.Write("target.zvf", testing::Golden("worked-example"))));
  ExpectOpen(QString::fromStdString(folder_.Write("source.zvf", testing::Golden("format-v1"))));
  ExpectLockedSource();
  AnswerPassword(QStringLiteral("cat"));
  ShowDialog([](MergeDialog& dialog) {
    AddAll(dialog);
    PressOk(dialog);
  });
  window_->Save();
  EXPECT_TRUE(Doc().Saved);
  EXPECT_EQ(folder_.Read("target.zvf"), testing::Golden("merged"));
}

TEST_F(MergeTest, ListsOfOtherVersionsStoreWhatIsAddedToThem) {
  window_->LoadDocument(
      QString::fromStdString(folder_.Write("target.zvf", testing::Golden("other-lists"))));
  Merge(Source(), [](MergeDialog& dialog) {
    AddAll(dialog);
    PressOk(dialog);
  });
  window_->Save();
  const zarvo::Filter saved = ReadFilter("target.zvf");
  EXPECT_EQ(NamesOf(saved.Rules), Names({"r1", "r2"}));
  EXPECT_EQ(NamesOf(saved.Functions), Names({"f1", "f2"}));
  EXPECT_EQ(NamesOf(saved.Sets), Names({"s1", "s2"}));
}

// ---- Help

TEST_F(MergeTest, HelpShowsItsTopicAndCanBeReadMeanwhile) {
  folder_.Write("Zarvo Composer.html", "<p>contents</p><h2 id='topic-106'>Merge</h2>");
  Merge(Source(), [this](MergeDialog& dialog) {
    Click(Find<QWidget>(dialog, "helpButton"));
    auto& help = Get("HelpWindow");
    EXPECT_TRUE(help.isVisible());
    EXPECT_TRUE(dialog.isVisible());
    const QUrl shown = Get<QTextBrowser>("helpBrowser").source();
    EXPECT_EQ(shown.toLocalFile(), PathOf("Zarvo Composer.html"));
    EXPECT_EQ(shown.fragment(), "topic-106");
    // Keys that come from the system reach it, as they don't reach a window that is blocked.
    testing::Activate(help);
    QTest::keyClick(window_->windowHandle(), Qt::Key_Escape);
    EXPECT_TRUE(window_->isVisible());
    QTest::keyClick(help.windowHandle(), Qt::Key_Escape);
    EXPECT_FALSE(help.isVisible());
    testing::Activate(dialog);
    PressCancel(dialog);
  });
}

TEST_F(MergeTest, HelpThatStaysOpenIsThereAfterTheDialog) {
  folder_.Write("Zarvo Composer.html", "<h2 id='topic-106'>Merge</h2>");
  Merge(Source(), [this](MergeDialog& dialog) {
    Click(Find<QWidget>(dialog, "helpButton"));
    testing::Activate(dialog);
    PressCancel(dialog);
  });
  EXPECT_TRUE(Get("HelpWindow").isVisible());
  Merge(Source(), [this](MergeDialog& dialog) {
    Click(Find<QWidget>(dialog, "helpButton"));
    testing::Activate(Get("HelpWindow"));
    QTest::keyClick(Get("HelpWindow").windowHandle(), Qt::Key_Escape);
    EXPECT_FALSE(Get("HelpWindow").isVisible());
    testing::Activate(dialog);
    PressCancel(dialog);
  });
}

TEST_F(MergeTest, MissingHelpIsReportedWithItsPath) {
  Merge(Source(), [this](MergeDialog& dialog) {
    ExpectExclamation("The help file " + folder_.File("Zarvo Composer.html") + " can't be found.");
    Click(Find<QWidget>(dialog, "helpButton"));
    EXPECT_TRUE(dialogs_.IsDone());
    PressCancel(dialog);
  });
}

}  // namespace
}  // namespace zarvo::testing
