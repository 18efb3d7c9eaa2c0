#include "ui/rules_editor.h"

#include <QButtonGroup>
#include <QEvent>
#include <QSignalBlocker>
#include <algorithm>
#include <limits>
#include <utility>

#include "app/services/leading_integer.h"
#include "ui/byte_text.h"
#include "ui/radio_buttons.h"
#include "ui/stray_wheel.h"
#include "ui_rules_editor.h"

namespace zarvo {
namespace {

constexpr std::string_view kRuleFiles =
    "Binary Zarvo rules (*.ZarvoRule)|*.ZarvoRule|All files (*.*)|*.*|";

EditorKind RuleKind() {
  return {.Caption = QStringLiteral("Rules"),
          .CaptionHasFilterName = true,
          .HelpContext = 102,
          .DeleteQuestion = QStringLiteral("Do you really want to delete rule "),
          .NewName = [](std::size_t count) { return "Rule " + std::to_string(count); },
          .ImportFilters = kRuleFiles,
          .ExportFilters = kRuleFiles,
          .Extension = "ZarvoRule",
          .UpdatesPreview = true,
          .ReloadsOnTabClick = true,
          .ReloadsOnRefusedCommand = false,
          .ReloadsOnLeavingName = true};
}

std::int32_t ShownNumber(const QLineEdit& edit) {
  return LeadingInteger(edit.text().toStdString());
}

void ShowNumber(QLineEdit& edit, std::int32_t number) { edit.setText(QString::number(number)); }

}  // namespace

RulesEditor::RulesEditor(EditorHost host)
    : ObjectEditorWindow(host, RuleKind(), std::make_unique<EditedListOf<Rule>>(host.Filter.Rules)),
      ui_(std::make_unique<Ui::RulesEditor>()) {
  ui_->setupUi(this);
  AdoptControls({.Tabs = ui_->ruleTabs,
                 .Name = ui_->nameEdit,
                 .New = ui_->newButton,
                 .Delete = ui_->deleteButton,
                 .Export = ui_->exportButton,
                 .Import = ui_->importButton,
                 .Help = ui_->helpButton,
                 .Object = ui_->rulePanel});
  SetCommandIcon(*ui_->moveLeftButton, "left");
  SetCommandIcon(*ui_->moveRightButton, "right");
  SetCommandIcon(*ui_->anchorButton, "anchor");
  // Numbers of five digits.
  for (QLineEdit* edit : std::initializer_list<QLineEdit*>{ui_->fromEdit, ui_->toEdit,
                                                           ui_->afterEdit, ui_->probabilityEdit}) {
    edit->setFixedWidth(edit->fontMetrics().horizontalAdvance(QStringLiteral("0000000")));
  }
  StopStrayWheel(*ui_->setBox);
  ConnectControls();
}

RulesEditor::~RulesEditor() = default;

void RulesEditor::ConnectControls() {
  connect(ui_->moveLeftButton, &QPushButton::clicked, this, [this] { Move(-1); });
  connect(ui_->moveRightButton, &QPushButton::clicked, this, [this] { Move(1); });
  connect(ui_->anchorButton, &QPushButton::clicked, this, &RulesEditor::OnAnchor);
  connect(ui_->editPatternButton, &QPushButton::clicked, this,
          [this] { EditPattern(StringEditor::Mode::Pattern, &Rule::Pattern); });
  connect(ui_->editReplacementButton, &QPushButton::clicked, this,
          [this] { EditPattern(StringEditor::Mode::Replacement, &Rule::Replacement); });

  const auto set_source = [this](ReplacementSource source) {
    Change([source](Rule& rule) { rule.ReplacementSource = source; });
  };
  const auto on_source = [=, this](const QAbstractButton& button, ReplacementSource source) {
    OnChosen(
        button, [=, this] { return HasCurrent() && CurrentRule().ReplacementSource == source; },
        [=] { set_source(source); });
  };
  on_source(*ui_->stringRadio, ReplacementSource::String);
  on_source(*ui_->sequenceRadio, ReplacementSource::SetInSequence);
  on_source(*ui_->randomRadio, ReplacementSource::SetAtRandom);
  OnChosen(
      *ui_->fromSetRadio, [this] { return HasCurrent() && CurrentRule().DrawsFromSet(); },
      [=, this] {
        set_source(ui_->randomRadio->isChecked() ? ReplacementSource::SetAtRandom
                                                 : ReplacementSource::SetInSequence);
      });
  OnChosen(
      *ui_->insertRadio, [this] { return HasCurrent() && CurrentRule().Inserts(); },
      [this] { OnInsert(); });
  OnChosen(
      *ui_->replaceRadio, [this] { return HasCurrent() && !CurrentRule().Inserts(); },
      [this] { OnReplace(); });
  connect(ui_->onceBox, &QCheckBox::clicked, this,
          [this](bool checked) { Change([checked](Rule& rule) { rule.Once = checked ? 1 : 0; }); });
  connect(ui_->strictBox, &QCheckBox::clicked, this, [this](bool checked) {
    Change([checked](Rule& rule) { rule.Strict = checked ? 1 : 0; });
  });
  connect(ui_->setBox, &QComboBox::activated, this, [this](int index) {
    std::string name = set_names_[static_cast<std::size_t>(index)];
    Change([&name](Rule& rule) { rule.ReplacementSetName = std::move(name); });
  });

  OnSlider(*ui_->probabilitySlider,
           [](Rule& rule, int position) { rule.SetProbability(position); });
  OnSlider(*ui_->afterSlider, [](Rule& rule, int position) {
    rule.From = position;
    rule.To = Rule::kInsertMode;
  });
  OnSlider(*ui_->fromToSlider, [this](Rule& rule, int position) {
    const std::int32_t anchor = CurrentAnchor() == 0 ? position : CurrentAnchor();
    rule.From = std::min(anchor, position);
    rule.To = std::max(anchor, position);
  });
}

void RulesEditor::OnSlider(QAbstractSlider& slider, std::function<void(Rule&, int)> store) {
  connect(&slider, &QAbstractSlider::valueChanged, this,
          [this, &slider, store = std::move(store)](int position) {
            // The warning's box takes the release of the mouse that drags the slider.
            if (IsLocked()) slider.setSliderDown(false);
            Change([&](Rule& rule) { store(rule, position); });
          });
}

template <typename Edit>
void RulesEditor::Change(Edit edit) {
  if (!HasCurrent() || RefuseAndReload()) return;
  edit(CurrentRule());
  MarkEdited(CurrentRule());
  MarkModified();
  Reload();
}

void RulesEditor::OnInsert() {
  Change([this](Rule& rule) {
    rule.From = ShownNumber(*ui_->afterEdit);
    rule.To = Rule::kInsertMode;
  });
}

void RulesEditor::OnReplace() {
  Change([this](Rule& rule) {
    const auto from_one = [](std::int32_t number) { return number == 0 ? 1 : number; };
    rule.From = from_one(ShownNumber(*ui_->fromEdit));
    rule.To = from_one(ShownNumber(*ui_->toEdit));
  });
}

void RulesEditor::OnAnchor() {
  if (!HasCurrent() || Refuse()) return;
  CurrentAnchor() = ui_->fromToSlider->value();
}

void RulesEditor::EditPattern(StringEditor::Mode mode, Pattern Rule::*field) {
  if (!HasCurrent()) return;
  StringEditor dialog(Services(), mode, CurrentRule().*field, EditedFilter().Functions, IsLocked(),
                      this);
  if (dialog.exec() != QDialog::Accepted || IsLocked() || !HasCurrent()) return;
  // Not marked as a modification of the filter: taking a pattern back has never been one.
  CurrentRule().*field = dialog.Edited();
  MarkEdited(CurrentRule().*field);
  MarkEdited(CurrentRule());
  Reload();
}

void RulesEditor::Move(std::ptrdiff_t step) {
  const std::size_t target = Current() + static_cast<std::size_t>(step);
  if (!HasCurrent() || target >= List().Count() || RefuseAndReload()) return;
  List().Swap(Current(), target);
  MarkModified();
  BuildTabs();
  Select(target);
  Reload();
}

void RulesEditor::OnTabsBuilt() {
  const RuleList& rules = EditedFilter().Rules;
  anchors_.resize(std::max(anchors_.size(), rules.Count()));
  for (std::size_t i = 0; i < rules.Count(); ++i) OnAppended(i, Origin::File);
}

void RulesEditor::OnAppended(std::size_t position, Origin origin) {
  anchors_.resize(std::max(anchors_.size(), position + 1));
  const Rule& rule = EditedFilter().Rules[position];
  const std::int32_t stored = rule.Inserts() ? 1 : rule.To;
  anchors_[position] = origin == Origin::New ? 0 : stored;
}

void RulesEditor::changeEvent(QEvent* event) {
  // Sets may have come, gone or changed their names in their own editor meanwhile.
  if (event->type() == QEvent::ActivationChange && isActiveWindow()) LoadSetNames();
  ObjectEditorWindow::changeEvent(event);
}

void RulesEditor::LoadSetNames() {
  std::vector<std::string> names;
  for (const Set& set : EditedFilter().Sets) names.push_back(set.Name);
  if (names == set_names_) return;
  set_names_ = std::move(names);
  const QSignalBlocker blocker(ui_->setBox);
  ui_->setBox->clear();
  for (const std::string& name : set_names_) ui_->setBox->addItem(FromBytes(name));
  SelectSet();
}

void RulesEditor::SelectSet() {
  int selected = -1;
  if (HasCurrent()) {
    const auto found =
        std::find(set_names_.begin(), set_names_.end(), CurrentRule().ReplacementSetName);
    if (found != set_names_.end()) selected = static_cast<int>(found - set_names_.begin());
  }
  const QSignalBlocker blocker(ui_->setBox);
  ui_->setBox->setCurrentIndex(selected);
}

void RulesEditor::LoadSource(Rule& rule) {
  const bool draws = rule.DrawsFromSet();
  const bool is_random = rule.ReplacementSource == ReplacementSource::SetAtRandom;
  const bool is_string = rule.ReplacementSource == ReplacementSource::String;
  QAbstractButton* source = is_string ? ui_->stringRadio : nullptr;
  if (draws) {
    source = ui_->fromSetRadio;
    CheckOnly(*ui_->drawGroup, is_random ? ui_->randomRadio : ui_->sequenceRadio);
    if (ui_->setBox->currentIndex() < 0 && !set_names_.empty()) {
      ui_->setBox->setCurrentIndex(0);
      // Nobody's change, so the filter isn't marked as modified; a locked one keeps what it has.
      // The filter's own word counts: the editor's comes after the reset for a document just
      // opened.
      if (EditedFilter().Locked == 0) rule.ReplacementSetName = set_names_.front();
    }
  }
  CheckOnly(*ui_->sourceGroup, source);
  for (QWidget* control :
       std::initializer_list<QWidget*>{ui_->sequenceRadio, ui_->randomRadio, ui_->setBox}) {
    control->setEnabled(draws);
  }
  ui_->replacementEdit->setEnabled(is_string);
  ui_->editReplacementButton->setEnabled(is_string);
  ui_->onceBox->setEnabled(!is_random);
  ui_->onceBox->setChecked(rule.Once != 0);
}

void RulesEditor::LoadMode(const Rule& rule) {
  const int length = static_cast<int>(
      std::min<std::size_t>(rule.Pattern.Length(), std::numeric_limits<int>::max()));
  ui_->afterSlider->setRange(0, length);
  ui_->fromToSlider->setRange(1, length);
  const bool inserts = rule.Inserts();
  CheckOnly(*ui_->modeGroup, inserts ? ui_->insertRadio : ui_->replaceRadio);
  ui_->afterEdit->setEnabled(inserts);
  ui_->afterSlider->setEnabled(inserts);
  for (QWidget* control : std::initializer_list<QWidget*>{ui_->fromEdit, ui_->toEdit,
                                                          ui_->fromToSlider, ui_->anchorButton}) {
    control->setEnabled(!inserts);
  }
  ui_->afterSlider->setValue(rule.From);
  ShowNumber(*ui_->afterEdit, rule.From);
  ShowNumber(*ui_->fromEdit, rule.From);
  ShowNumber(*ui_->toEdit, inserts ? rule.From : rule.To);
  if (inserts) {
    ui_->fromToSlider->setValue(rule.From);
    ui_->fromToSlider->ClearSelection();
  } else {
    ui_->fromToSlider->setValue(rule.From != CurrentAnchor() ? rule.From : rule.To);
    ui_->fromToSlider->SetSelection(rule.From, rule.To);
  }
}

void RulesEditor::LoadObject() {
  std::vector<QSignalBlocker> blockers;
  for (QWidget* control : ui_->rulePanel->findChildren<QWidget*>()) blockers.emplace_back(control);
  ui_->moveLeftButton->setEnabled(HasCurrent() && Current() > 0);
  ui_->moveRightButton->setEnabled(HasCurrent() && Current() + 1 < List().Count());
  LoadSetNames();
  SelectSet();
  if (!HasCurrent()) {
    LoadNothing();
    return;
  }
  Rule& rule = CurrentRule();
  ui_->patternEdit->SetBytes(DisplayForm(rule.Pattern));
  ui_->replacementEdit->SetBytes(DisplayForm(rule.Replacement));
  ui_->probabilitySlider->setValue(rule.Probability);
  ShowNumber(*ui_->probabilityEdit, rule.Probability);
  LoadSource(rule);
  LoadMode(rule);
  ui_->strictBox->setChecked(rule.Strict != 0);
}

void RulesEditor::LoadNothing() {
  for (QLineEdit* edit : ui_->rulePanel->findChildren<QLineEdit*>()) edit->clear();
  for (QSlider* slider : ui_->rulePanel->findChildren<QSlider*>()) slider->setValue(0);
  ui_->fromToSlider->ClearSelection();
  CheckOnly(*ui_->sourceGroup, nullptr);
  CheckOnly(*ui_->modeGroup, nullptr);
  ui_->onceBox->setChecked(false);
  ui_->strictBox->setChecked(false);
}

}  // namespace zarvo
