// The main window: the document's header, its commands, and the way to all other windows.
#pragma once

#include <QDialog>
#include <QPointer>
#include <array>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "app/document.h"
#include "app/help_window.h"
#include "app/services/subpattern_library.h"
#include "ui/dialogs.h"
#include "ui/lock_warning.h"
#include "ui/object_editor.h"
#include "ui/preview_window.h"

class QCheckBox;
class QComboBox;
class QLineEdit;
class QMenu;
class QShortcut;
class QTimer;

namespace Ui {
class MainWindow;
}

namespace zarvo {

class ByteLineEdit;
class DigitsValidator;

/// Owns the document and every other window.
class MainWindow : public QDialog {
  Q_OBJECT

 public:
  /// installation_folder ends with a separator. The dialogs must outlive the window.
  MainWindow(QString installation_folder, Dialogs& dialogs);
  ~MainWindow() override;

  [[nodiscard]] Document& CurrentDocument() { return document_; }
  [[nodiscard]] PreviewWindow& Preview() { return *preview_; }

  // The commands, each with all of its questions and messages.
  void NewDocument();
  void OpenDocument();
  // False when the file couldn't be written. Giving up the choice of a path is no failure.
  bool Save();
  bool SaveAs();
  void Merge();
  void CheckIntegrity();
  void Exit();
  void About();

  /// Asks about unsaved changes when the user's session ends. False when it is to go on.
  [[nodiscard]] bool AskBeforeSessionEnds();

  /// Makes the file at this path the document: also when it can't be read, with what could.
  void LoadDocument(const QString& path);
  /// Puts the filter into the controls and applies what its lock hides.
  void RefreshFields();
  void RefreshTitle();
  void RefreshCounts();

  /// Escape, and what the close box comes to in the end.
  void reject() override { Exit(); }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  enum EditorIndex { kRulesEditor, kFunctionsEditor, kSetsEditor, kEditorCount };

  void ConnectCommands();
  void ConnectFields();
  void MakeMenus();
  void KeepSize();
  void MakeIcons();
  void MakeEditors();

  // False when the command is to be abandoned.
  [[nodiscard]] bool AskToSaveChanges();
  void CommitField(QObject* field);
  void CommitFocusedField();
  void ClearSaved() { document_.Saved = false; }
  // What the filter's lock hides is neither shown nor opened.
  [[nodiscard]] bool IsHiddenByLock() const;
  [[nodiscard]] bool IsLocked() const { return document_.Filter.Locked != 0; }
  void RefuseChange();
  // As RefuseChange, once the mouse is let go and no dialog is open.
  void RefuseChangeSoon();
  void ReportFileError(const QString& error, const QString& path);
  void OnFlagClicked(const QCheckBox& box, std::int32_t& flag);
  void OnLockClicked();
  void OnSetPassword();
  // Whether the user may read this filter, which is asked for its password where it is locked.
  [[nodiscard]] bool AskForPasswordOf(const Filter& source);
  void WriteReport(const std::vector<std::string>& findings);
  void ShowEditor(EditorIndex index, bool refresh);
  void ShowPreview();
  void ShowOnTop(QWidget& window);

  std::unique_ptr<Ui::MainWindow> ui_;
  Dialogs& dialogs_;
  Document document_;
  SubpatternLibrary library_;
  LockWarning lock_warning_;
  std::unique_ptr<PreviewWindow> preview_;
  std::unique_ptr<HelpWindow> help_;
  std::array<std::unique_ptr<ObjectEditor>, kEditorCount> editors_;
  ByteLineEdit* type_edit_ = nullptr;
  // Those that have a place of their own already.
  std::set<const QWidget*> shown_windows_;
  QTimer* refusal_timer_ = nullptr;
  DigitsValidator* version_validator_ = nullptr;
  QMenu* save_menu_ = nullptr;
  QMenu* help_menu_ = nullptr;
};

}  // namespace zarvo
