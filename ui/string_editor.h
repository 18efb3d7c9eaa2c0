// The dialog that edits one Pattern: a Rule's pattern, its replacement, or one string of a Set.
#pragma once

#include <QDialog>
#include <array>
#include <cstdint>
#include <functional>
#include <memory>

#include "app/services/pattern_draft.h"
#include "app/services/subpattern_menu.h"
#include "model/function.h"
#include "model/pattern.h"
#include "ui/editor_services.h"
#include "ui/lock_warning.h"

class QAction;
class QMenu;

namespace Ui {
class StringEditor;
}

namespace zarvo {

/// Works on a copy: the caller takes Edited() when the dialog was accepted and the filter isn't
/// locked.
class StringEditor : public QDialog {
  Q_OBJECT

 public:
  enum class Mode { Pattern = 0, Replacement = 1 };

  /// The functions must outlive the dialog; their names fill the Function menu.
  StringEditor(const EditorServices& services, Mode mode, Pattern pattern,
               const FunctionList& functions, bool locked, QWidget* parent);
  ~StringEditor() override;

  /// Never without a subpattern: an empty Pattern gets one at once.
  [[nodiscard]] const Pattern& Edited() const { return draft_.Edited(); }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void MakeIcons();
  void MakeMenus();
  void ConnectCommands();
  void ConnectFields();
  void RestrictToMode();

  // The one gate of all changes: false when the filter is locked, after the warning and with the
  // controls set back.
  [[nodiscard]] bool MayChange();
  void Change(const std::function<void()>& change);

  // Fills every control from the draft.
  void Load();
  void LoadTabs();
  void LoadKind();
  void ShowCaption(std::size_t position);

  void OnNew();
  void OnFind();

  // ---- The menus, in string_editor_menus.cpp

  void FillMenus();
  void OnCommand(std::int64_t command);
  void ChooseItem(std::int64_t command);
  void CallFunction(std::int64_t command);
  void AddToPredefined();
  void ChooseFromLibrary();

  std::unique_ptr<Ui::StringEditor> ui_;
  EditorServices services_;
  Mode mode_;
  const FunctionList& functions_;
  bool locked_;
  LockWarning lock_warning_;
  PatternDraft draft_;
  // By LibrarySection.
  std::array<SubpatternMenu, kLibrarySectionCount> library_menus_;
  std::array<QMenu*, kLibrarySectionCount> library_popups_{};
  QMenu* functions_popup_ = nullptr;
};

}  // namespace zarvo
