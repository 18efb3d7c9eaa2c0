// What the editors of Rules, Sets and Functions have in common: they edit the filter's own list,
// one object at a time, without a copy and so without OK and Cancel.
#pragma once

#include <QDialog>
#include <functional>
#include <memory>

#include "model/filter.h"
#include "ui/edited_list.h"
#include "ui/editor_services.h"
#include "ui/lock_warning.h"
#include "ui/object_editor.h"

namespace zarvo {

class ByteLineEdit;
class IconButton;
class ObjectTabs;

/// What an editor needs of the main window. All of it outlives the editor.
struct EditorHost {
  EditorServices Services;
  zarvo::Filter& Filter;
  /// Says that the filter has changes that no file has.
  std::function<void()> MarkModified;
  /// Shows how many objects the filter's lists hold.
  std::function<void()> ShowCounts;
  /// Updates the Preview where the user wants that after each change.
  std::function<void()> AutoUpdatePreview;
};

/// What the editors' texts and numbers are for one kind of object.
struct EditorKind {
  QString Caption;
  bool CaptionHasFilterName;
  int HelpContext;
  /// Asks before the object is deleted; its name in quotation marks and "?" follow.
  QString DeleteQuestion;
  /// The name of a new object when the list then holds this many.
  std::function<std::string(std::size_t count)> NewName;
  std::string_view ImportFilters;
  std::string_view ExportFilters;
  std::string_view Extension;
  /// Each reload has the Preview updated.
  bool UpdatesPreview;
  /// A click on the selected tab reloads the object too; else only the choice of another tab does.
  bool ReloadsOnTabClick;
  /// A refused New or Delete reloads the object, as every refused change of a control does.
  bool ReloadsOnRefusedCommand;
  /// The object is reloaded when the name edit loses the focus.
  bool ReloadsOnLeavingName;
};

class ObjectEditorWindow : public QDialog, public ObjectEditor {
  Q_OBJECT

 public:
  [[nodiscard]] QWidget& Window() override { return *this; }
  void Refresh() override;
  void Reset() override;
  void SetLocked(bool locked) override { locked_ = locked; }
  void RearmLockWarning() override { lock_warning_.Rearm(); }

  /// Showing the hidden editor builds its tabs, and makes the first object where there is none.
  void setVisible(bool visible) override;

 protected:
  /// The controls that each editor's form has.
  struct CommonControls {
    ObjectTabs* Tabs;
    ByteLineEdit* Name;
    IconButton* New;
    IconButton* Delete;
    IconButton* Export;
    IconButton* Import;
    IconButton* Help;
    /// Holds all controls of the object.
    QWidget* Object;
  };

  ObjectEditorWindow(EditorHost host, EditorKind kind, std::unique_ptr<EditedList> list);

  /// To be called once the form stands.
  void AdoptControls(const CommonControls& controls);
  static void SetCommandIcon(IconButton& button, const char* icon);

  /// Fills the controls of the selected object, with their signals blocked, or empties them when
  /// there is none. Part of every reload.
  virtual void LoadObject() = 0;
  /// All tabs were made anew.
  virtual void OnTabsBuilt() {}
  enum class Origin { New, File };
  /// An object was appended to the list; its tab comes next.
  virtual void OnAppended(std::size_t /*position*/, Origin /*origin*/) {}

  [[nodiscard]] Filter& EditedFilter() { return host_.Filter; }
  [[nodiscard]] const EditorServices& Services() const { return host_.Services; }
  [[nodiscard]] EditedList& List() { return *list_; }
  [[nodiscard]] bool IsLocked() const { return locked_; }

  [[nodiscard]] bool HasCurrent() const;
  /// The selected position, which must exist.
  [[nodiscard]] std::size_t Current() const;
  void Select(std::size_t position);

  /// Makes the tabs anew; the selected position stays where it can.
  void BuildTabs();
  /// Shows the selected object, and has the Preview updated.
  void Reload();
  void MarkModified() { host_.MarkModified(); }
  /// When the filter is locked: warns, and returns true.
  [[nodiscard]] bool Refuse();
  /// As Refuse, and puts the controls back to what the filter holds.
  [[nodiscard]] bool RefuseAndReload();

  bool eventFilter(QObject* watched, QEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void Load();
  void ShowCaption();
  void UpdatePreview();
  void ReloadWhileShown();
  void StoreName();
  // As Refuse, for New and Delete.
  [[nodiscard]] bool RefuseCommand();
  // Gives the position of the new object, which has no tab yet.
  std::size_t AppendNew();
  // Adds the tab of the last object and selects it.
  void AddTab(std::size_t position);
  void OnNameTyped();
  void OnNameLeft();
  void OnNew();
  void OnDelete();
  void OnExport();
  void OnImport();
  void OnHelp();

  EditorHost host_;
  EditorKind kind_;
  std::unique_ptr<EditedList> list_;
  CommonControls controls_{};
  LockWarning lock_warning_;
  bool locked_ = false;
};

}  // namespace zarvo
