#include "ui/sets_editor.h"

#include <QSignalBlocker>
#include <utility>

#include "ui/byte_text.h"
#include "ui/plain_text.h"
#include "ui/string_editor.h"
#include "ui_sets_editor.h"

namespace zarvo {
namespace {

EditorKind SetKind() {
  return {.Caption = QStringLiteral("Sets"),
          .CaptionHasFilterName = true,
          .HelpContext = 103,
          .DeleteQuestion = QStringLiteral("Do you really want to delete set "),
          .NewName = [](std::size_t count) { return "Set " + std::to_string(count); },
          // One file to import, any of several to export to.
          .ImportFilters = "Binary Zarvo set (*.ZarvoSet)|*.ZarvoSet|All files (*.*)|*.*|",
          .ExportFilters = "Binary Zarvo sets (*.ZarvoSet)|*.ZarvoSet|All files (*.*)|*.*|",
          .Extension = "ZarvoSet",
          .UpdatesPreview = true,
          .ReloadsOnTabClick = true,
          .ReloadsOnRefusedCommand = true,
          .ReloadsOnLeavingName = true};
}

}  // namespace

SetsEditor::SetsEditor(EditorHost host)
    : ObjectEditorWindow(host, SetKind(), std::make_unique<EditedListOf<Set>>(host.Filter.Sets)),
      ui_(std::make_unique<Ui::SetsEditor>()) {
  ui_->setupUi(this);
  AdoptControls({.Tabs = ui_->setTabs,
                 .Name = ui_->nameEdit,
                 .New = ui_->newButton,
                 .Delete = ui_->deleteButton,
                 .Export = ui_->exportButton,
                 .Import = ui_->importButton,
                 .Help = ui_->helpButton,
                 .Object = ui_->setPanel});
  SetCommandIcon(*ui_->moveUpButton, "up");
  SetCommandIcon(*ui_->moveDownButton, "down");
  connect(ui_->addStringButton, &QPushButton::clicked, this, &SetsEditor::OnAddString);
  connect(ui_->deleteStringButton, &QPushButton::clicked, this, &SetsEditor::OnDeleteString);
  connect(ui_->editStringButton, &QPushButton::clicked, this, &SetsEditor::OnEditString);
  connect(ui_->stringList, &QListWidget::itemDoubleClicked, this, &SetsEditor::OnEditString);
  connect(ui_->moveUpButton, &QPushButton::clicked, this, [this] { MoveString(-1); });
  connect(ui_->moveDownButton, &QPushButton::clicked, this, [this] { MoveString(1); });
  connect(ui_->stringList, &QListWidget::itemSelectionChanged, this,
          &SetsEditor::EnableStringCommands);
}

SetsEditor::~SetsEditor() = default;

void SetsEditor::LoadObject() {
  {
    const QSignalBlocker blocker(ui_->stringList);
    ui_->stringList->clear();
    if (HasCurrent()) {
      for (const Pattern& string : CurrentSet().Strings) {
        ui_->stringList->addItem(PlainLine(FromBytes(DisplayForm(string))));
      }
    }
    // Before the commands are enabled, so that the one that was pressed keeps the focus.
    if (string_to_select_) ui_->stringList->setCurrentRow(static_cast<int>(*string_to_select_));
    string_to_select_.reset();
  }
  EnableStringCommands();
}

std::optional<std::size_t> SetsEditor::SelectedString() {
  const QModelIndexList selected = ui_->stringList->selectionModel()->selectedRows();
  if (selected.isEmpty() || !HasCurrent()) return {};
  const auto row = static_cast<std::size_t>(selected.front().row());
  if (row >= CurrentSet().Strings.size()) return {};
  return row;
}

void SetsEditor::EnableStringCommands() {
  const std::optional<std::size_t> selected = SelectedString();
  ui_->deleteStringButton->setEnabled(selected.has_value());
  ui_->editStringButton->setEnabled(selected.has_value());
  ui_->moveUpButton->setEnabled(selected && *selected > 0);
  ui_->moveDownButton->setEnabled(selected && *selected + 1 < CurrentSet().Strings.size());
}

std::optional<Pattern> SetsEditor::Edit(Pattern pattern) {
  StringEditor dialog(Services(), StringEditor::Mode::Replacement, std::move(pattern),
                      EditedFilter().Functions, IsLocked(), this);
  if (dialog.exec() != QDialog::Accepted || IsLocked()) return {};
  Pattern edited = dialog.Edited();
  MarkEdited(edited);
  return edited;
}

template <typename EditSet>
void SetsEditor::Change(EditSet edit) {
  edit(CurrentSet());
  MarkEdited(CurrentSet());
  MarkModified();
  Reload();
}

void SetsEditor::OnAddString() {
  if (!HasCurrent() || RefuseAndReload()) return;
  std::optional<Pattern> string = Edit({});
  if (!string || !HasCurrent()) return;
  Change([&string](Set& set) { set.Strings.push_back(std::move(*string)); });
}

void SetsEditor::OnEditString() {
  const std::optional<std::size_t> selected = SelectedString();
  if (!selected) return;
  std::optional<Pattern> string = Edit(CurrentSet().Strings[*selected]);
  if (!string || !HasCurrent() || *selected >= CurrentSet().Strings.size()) return;
  // Not marked as a modification of the filter, unlike an added string.
  CurrentSet().Strings[*selected] = std::move(*string);
  MarkEdited(CurrentSet());
  Reload();
}

void SetsEditor::OnDeleteString() {
  const std::optional<std::size_t> selected = SelectedString();
  if (!selected || RefuseAndReload()) return;
  Change([&selected](Set& set) {
    set.Strings.erase(set.Strings.begin() + static_cast<std::ptrdiff_t>(*selected));
  });
}

void SetsEditor::MoveString(std::ptrdiff_t step) {
  const std::optional<std::size_t> selected = SelectedString();
  if (!selected) return;
  const std::size_t target = *selected + static_cast<std::size_t>(step);
  if (target >= CurrentSet().Strings.size() || RefuseAndReload()) return;
  string_to_select_ = target;
  Change([&](Set& set) { std::swap(set.Strings[*selected], set.Strings[target]); });
}

}  // namespace zarvo
