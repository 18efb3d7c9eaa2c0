#include "ui/functions_editor.h"

#include <QButtonGroup>
#include <QSignalBlocker>
#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <utility>
#include <vector>

#include "ui/byte_text.h"
#include "ui/plain_text.h"
#include "ui/radio_buttons.h"
#include "ui_functions_editor.h"

namespace zarvo {
namespace {

constexpr std::string_view kFunctionFiles =
    "Binary Zarvo functions (*.ZarvoFunction)|*.ZarvoFunction|All files (*.*)|*.*|";

EditorKind FunctionKind() {
  return {.Caption = QStringLiteral("Functions"),
          .CaptionHasFilterName = false,
          .HelpContext = 107,
          .DeleteQuestion = QStringLiteral("Do you really want to delete function "),
          .NewName = NewFunctionName,
          .ImportFilters = kFunctionFiles,
          .ExportFilters = kFunctionFiles,
          .Extension = "ZarvoFunction",
          .UpdatesPreview = false,
          .ReloadsOnTabClick = false,
          .ReloadsOnRefusedCommand = true,
          .ReloadsOnLeavingName = false};
}

}  // namespace

std::string PairLine(const FunctionEntry& entry) {
  return entry.Argument + " \x97> " + entry.Value;
}

std::string NewFunctionName(std::size_t count) {
  constexpr int kBase = 14;
  std::array<char, std::numeric_limits<std::size_t>::digits> digits{};
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), count, kBase).ptr;
  return "Function " + std::string(digits.data(), end);
}

FunctionsEditor::FunctionsEditor(EditorHost host)
    : ObjectEditorWindow(host, FunctionKind(),
                         std::make_unique<EditedListOf<Function>>(host.Filter.Functions)),
      ui_(std::make_unique<Ui::FunctionsEditor>()) {
  ui_->setupUi(this);
  AdoptControls({.Tabs = ui_->functionTabs,
                 .Name = ui_->nameEdit,
                 .New = ui_->newButton,
                 .Delete = ui_->deleteButton,
                 .Export = ui_->exportButton,
                 .Import = ui_->importButton,
                 .Help = ui_->helpButton,
                 .Object = ui_->functionPanel});
  const auto on_default = [this](const QAbstractButton& button, std::uint8_t value) {
    OnChosen(
        button,
        [this, value] { return HasCurrent() && CurrentFunction().DefaultReturnsArgument == value; },
        [this] { OnDefaultReturn(); });
  };
  on_default(*ui_->emptyRadio, Function::kReturnEmpty);
  on_default(*ui_->argumentRadio, Function::kReturnArgument);
  connect(ui_->addPairButton, &QPushButton::clicked, this, &FunctionsEditor::OnAddPair);
  connect(ui_->deletePairButton, &QPushButton::clicked, this, &FunctionsEditor::OnDeletePair);
}

FunctionsEditor::~FunctionsEditor() = default;

void FunctionsEditor::LoadObject() {
  std::vector<QSignalBlocker> blockers;
  for (QWidget* control : std::initializer_list<QWidget*>{
           ui_->argumentEdit, ui_->valueEdit, ui_->pairList, ui_->emptyRadio, ui_->argumentRadio}) {
    blockers.emplace_back(control);
  }
  ui_->argumentEdit->clear();
  ui_->valueEdit->clear();
  ui_->pairList->clear();
  // Any other number that a file holds checks neither.
  QAbstractButton* checked = nullptr;
  if (HasCurrent()) {
    const Function& function = CurrentFunction();
    for (const FunctionEntry& entry : function.Entries) {
      ui_->pairList->addItem(PlainLine(FromBytes(PairLine(entry))));
    }
    if (function.DefaultReturnsArgument == Function::kReturnEmpty) checked = ui_->emptyRadio;
    if (function.DefaultReturnsArgument == Function::kReturnArgument) checked = ui_->argumentRadio;
  }
  CheckOnly(*ui_->returnGroup, checked);
}

template <typename Edit>
void FunctionsEditor::Change(Edit edit) {
  if (!HasCurrent() || RefuseAndReload()) return;
  edit(CurrentFunction());
  MarkEdited(CurrentFunction());
  MarkModified();
  Reload();
}

void FunctionsEditor::OnDefaultReturn() {
  Change([this](Function& function) {
    function.DefaultReturnsArgument =
        ui_->emptyRadio->isChecked() ? Function::kReturnEmpty : Function::kReturnArgument;
  });
}

void FunctionsEditor::OnAddPair() {
  Change([this](Function& function) {
    function.Entries.push_back({ui_->argumentEdit->Bytes(), ui_->valueEdit->Bytes()});
  });
}

void FunctionsEditor::OnDeletePair() {
  // Not the current row: a list that gets the focus has one without a selection.
  const QModelIndexList selected = ui_->pairList->selectionModel()->selectedRows();
  Change([&selected](Function& function) {
    for (const QModelIndex& pair : selected) {
      if (static_cast<std::size_t>(pair.row()) < function.Entries.size()) {
        function.Entries.erase(function.Entries.begin() + pair.row());
      }
    }
  });
}

}  // namespace zarvo
