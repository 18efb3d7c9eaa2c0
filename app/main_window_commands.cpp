// The commands of the main window.
#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QMenu>

#include "app/about_dialog.h"
#include "app/main_window.h"
#include "app/services/integrity_check.h"
#include "app/services/merge_lists.h"
#include "model/platform.h"
#include "ui/merge_dialog.h"
#include "ui/password_dialogs.h"
#include "ui/run_pump.h"
#include "ui_main_window.h"

namespace zarvo {
namespace {

constexpr std::string_view kFilterFiles = "Binary Zarvo filters (*.zvf)|*.zvf|All files (*.*)|*.*|";
constexpr std::string_view kFilterExtension = "zvf";
constexpr int kMergeTopic = 106;

// While it lives the pointer says that the program is working.
class WaitCursor {
 public:
  WaitCursor() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
  ~WaitCursor() { QGuiApplication::restoreOverrideCursor(); }
  WaitCursor(const WaitCursor&) = delete;
  WaitCursor& operator=(const WaitCursor&) = delete;
};

// Asks the version questions in message boxes.
class QuestionBoxes : public VersionQuestions {
 public:
  QuestionBoxes(Dialogs& dialogs, QWidget* parent) : dialogs_(dialogs), parent_(parent) {}

  bool SaveInNewestFormat(std::int32_t own_version) override {
    return Ask(SaveInNewestFormatText(own_version));
  }
  bool LoadNewerFormat(std::int32_t file_version) override {
    return Ask(LoadNewerFormatText(file_version));
  }

 private:
  bool Ask(const std::string& text) {
    return dialogs_.Message(parent_, MessageIcon::Question, QString::fromStdString(text),
                            MessageButtons::YesNo) == Answer::Yes;
  }

  Dialogs& dialogs_;
  QWidget* parent_;
};

}  // namespace

void MainWindow::ReportFileError(const QString& error, const QString& path) {
  dialogs_.Message(this, MessageIcon::Exclamation, error + u' ' + QDir::toNativeSeparators(path),
                   MessageButtons::Ok);
}

bool MainWindow::AskToSaveChanges() {
  if (document_.Saved) return true;
  const Answer answer =
      dialogs_.Message(this, MessageIcon::Question,
                       QStringLiteral("Would you like to save changes in current filter?"),
                       MessageButtons::YesNoCancel);
  if (answer == Answer::Cancel) return false;
  // Where the user gives up choosing a path the command goes on all the same; a file that can't be
  // written must not cost the work.
  return answer != Answer::Yes || Save();
}

void MainWindow::NewDocument() {
  if (!AskToSaveChanges()) return;
  document_.Filter = Filter();
  document_.Path.clear();
  RefreshFields();
  RefreshTitle();
  for (const auto& editor : editors_) {
    if (editor) editor->Reset();
  }
  preview_->ResetForNewDocument();
  document_.Saved = true;
  lock_warning_.Rearm();
}

void MainWindow::OpenDocument() {
  if (!AskToSaveChanges()) return;
  const std::optional<QString> path =
      dialogs_.OpenFile(this, {kFilterFiles, kFilterExtension, QString()});
  if (path) LoadDocument(*path);
}

void MainWindow::LoadDocument(const QString& path) {
  const WaitCursor cursor;
  // Before reading, so that the new path stands also after a failure.
  document_.Path = path;
  QuestionBoxes questions(dialogs_, this);
  if (document_.Load(questions) == Document::Result::Failed) {
    ReportFileError(QStringLiteral("Error loading filter"), path);
  }
  RefreshFields();
  RefreshTitle();
  for (const auto& editor : editors_) {
    if (!editor) continue;
    editor->Reset();
    editor->SetLocked(IsLocked());
  }
  // The Functions editor's warning stays as it was: it is armed by the Lock box alone.
  for (const EditorIndex index : {kRulesEditor, kSetsEditor}) {
    if (editors_[index]) editors_[index]->RearmLockWarning();
  }
  lock_warning_.Rearm();
  preview_->ResetForNewDocument();
  document_.Saved = true;
}

bool MainWindow::Save() {
  CommitFocusedField();
  if (document_.Path.isEmpty()) return SaveAs();
  const WaitCursor cursor;
  QuestionBoxes questions(dialogs_, this);
  const Document::Result result = document_.Save(questions);
  RefreshFields();
  RefreshTitle();
  if (result == Document::Result::Done) {
    document_.Saved = true;
  } else {
    ReportFileError(QStringLiteral("Error saving file"), document_.Path);
  }
  return result == Document::Result::Done;
}

bool MainWindow::SaveAs() {
  CommitFocusedField();
  const std::optional<QString> path =
      dialogs_.SaveFile(this, {kFilterFiles, kFilterExtension, document_.Path});
  if (!path) return true;
  document_.Path = *path;
  return Save();
}

void MainWindow::Merge() {
  if (IsLocked()) {
    dialogs_.Message(this, MessageIcon::Exclamation,
                     QStringLiteral("You can't merge any data to locked filter. Unlock current "
                                    "filter and try again."),
                     MessageButtons::Ok);
    return;
  }
  const std::optional<QString> path =
      dialogs_.OpenFile(this, {kFilterFiles, kFilterExtension, QString()});
  if (!path) return;
  Document source;
  source.Path = *path;
  const Document::Result result = [&] {
    const WaitCursor cursor;
    QuestionBoxes questions(dialogs_, this);
    return source.Load(questions);
  }();
  if (result != Document::Result::Done) {
    ReportFileError(QStringLiteral("Error loading filter"), *path);
    return;
  }
  if (!AskForPasswordOf(source.Filter)) return;
  FilterMerge merge(document_.Filter, std::move(source.Filter));
  const auto show_help = [this] {
    help_->ShowDefaultTopic(QCoreApplication::applicationFilePath(), kMergeTopic);
  };
  MergeDialog dialog(merge, show_help, this);
  if (dialog.exec() != QDialog::Accepted) return;
  merge.AppendTo(document_.Filter);
  RefreshFields();
  for (const auto& editor : editors_) {
    if (editor) editor->Reset();
  }
  ClearSaved();
}

bool MainWindow::AskForPasswordOf(const Filter& source) {
  if (source.Locked == 0) return true;
  dialogs_.Message(this, MessageIcon::Information,
                   QStringLiteral("The filter you have selected is locked. Press OK and enter "
                                  "password for filter you're trying to merge."),
                   MessageButtons::Ok);
  EnterPasswordDialog dialog(this);
  if (dialog.exec() != QDialog::Accepted) return false;
  if (source.CheckPassword(dialog.Password())) return true;
  dialogs_.Message(this, MessageIcon::Exclamation,
                   QStringLiteral("Sorry, the password you've provided is wrong."),
                   MessageButtons::Ok);
  return false;
}

void MainWindow::CheckIntegrity() {
  const std::vector<std::string> findings = CollectFindings(document_.Filter);
  if (findings.empty()) {
    dialogs_.Message(this, MessageIcon::Information, QStringLiteral("Filter OK."),
                     MessageButtons::Ok);
    return;
  }
  const Answer answer = dialogs_.Message(
      this, MessageIcon::Question,
      QStringLiteral("Some incorrect/unmatched references to sets/functions were found. Would you "
                     "like to save the error report to the file \"report.txt\" (existing file will "
                     "be overwritten)?"),
      MessageButtons::YesNo);
  if (answer == Answer::Yes) WriteReport(findings);
}

void MainWindow::WriteReport(const std::vector<std::string>& findings) {
  const QString path = QDir::current().filePath(QStringLiteral("report.txt"));
  const std::string report = ErrorReport(document_.Filter.Name, findings, kTextFileLineEnd);
  // An old report must not be taken for this one.
  if (WriteFile(QFile::encodeName(path).toStdString(), report)) {
    ReportFileError(QStringLiteral("Error saving file"), path);
    return;
  }
  if (dialogs_.OpenWithAssociatedProgram(path)) return;
  ReportFileError(tr("No program can be started to show the file"), path);
}

void MainWindow::Exit() {
  if (!AskToSaveChanges()) return;
  QuitProgram();
  hide();
}

bool MainWindow::AskBeforeSessionEnds() {
  CommitFocusedField();
  return AskToSaveChanges();
}

void MainWindow::About() {
  AboutDialog dialog(this);
  dialog.exec();
}

void MainWindow::OnFlagClicked(const QCheckBox& box, std::int32_t& flag) {
  if (IsLocked()) {
    RefuseChange();
    return;
  }
  flag = box.isChecked() ? 1 : 0;
  ClearSaved();
}

void MainWindow::OnLockClicked() {
  EnterPasswordDialog dialog(this);
  if (dialog.exec() == QDialog::Accepted) {
    const bool locked = ui_->lockBox->isChecked();
    if (document_.Filter.CheckPassword(dialog.Password())) {
      document_.Filter.Locked = locked ? 1 : 0;
      ClearSaved();
    } else {
      dialogs_.Message(this, MessageIcon::Exclamation,
                       QStringLiteral("Sorry, the password is incorrect"), MessageButtons::Ok);
    }
    for (const auto& editor : editors_) {
      if (!editor) continue;
      editor->SetLocked(IsLocked());
      editor->RearmLockWarning();
    }
  }
  RefreshFields();
}

void MainWindow::OnSetPassword() {
  PasswordChangeDialog dialog(dialogs_, this);
  if (dialog.exec() != QDialog::Accepted) return;
  const bool changed = document_.Filter.ChangePassword(dialog.OldPassword(), dialog.NewPassword(),
                                                       [] { return ProcessRandom().Next(); });
  if (changed) {
    dialogs_.Message(this, MessageIcon::Information, QStringLiteral("Password succesfuly changed."),
                     MessageButtons::Ok);
    ClearSaved();
  } else {
    dialogs_.Message(this, MessageIcon::Exclamation,
                     QStringLiteral("You've provided incorrect old password. Try again."),
                     MessageButtons::Ok);
  }
}

void MainWindow::ShowEditor(EditorIndex index, bool refresh) {
  if (IsHiddenByLock() || !editors_[index]) return;
  if (refresh) editors_[index]->Refresh();
  // A run of the Preview lets the user lock the filter meanwhile.
  if (IsHiddenByLock()) return;
  ShowOnTop(editors_[index]->Window());
}

void MainWindow::ShowPreview() {
  preview_->Reset();
  ShowOnTop(*preview_);
}

void MainWindow::ShowOnTop(QWidget& window) {
  if (!window.isVisible() && !shown_windows_.insert(&window).second) {
    // Else the toolkit would find a new place and size for a window that was closed.
    window.move(window.pos());
    window.resize(window.size());
  }
  if (window.isMinimized()) window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
  window.show();
  window.raise();
  window.activateWindow();
}

}  // namespace zarvo
