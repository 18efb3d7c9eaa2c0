#include "ui/string_editor.h"

#include <QEvent>
#include <QSignalBlocker>
#include <utility>
#include <vector>

#include "ui/accessible_names.h"
#include "ui/byte_text.h"
#include "ui/focus_loss.h"
#include "ui_string_editor.h"

namespace zarvo {
namespace {

// The context of the help.
constexpr int kStringEditorTopic = 104;
constexpr quint8 kCommandIconSize = 20;
constexpr quint8 kMenuIconSize = 16;
constexpr int kWidth = 96;  // of the window at first, in characters

// Where the bytes are there already, the caret stays.
void Fill(ByteLineEdit& edit, std::string_view bytes) {
  const bool is_same = edit.Bytes() == bytes;
  const int caret = edit.cursorPosition();
  edit.SetBytes(bytes);
  if (is_same) edit.setCursorPosition(caret);
}

}  // namespace

StringEditor::StringEditor(const EditorServices& services, Mode mode, Pattern pattern,
                           const FunctionList& functions, bool locked, QWidget* parent)
    : QDialog(parent),
      ui_(std::make_unique<Ui::StringEditor>()),
      services_(services),
      mode_(mode),
      functions_(functions),
      locked_(locked),
      lock_warning_(services.Dialogs),
      draft_(std::move(pattern)) {
  ui_->setupUi(this);
  NameControlsByLabels(*this);
  MakeIcons();
  // The height is the layout's least.
  resize(kWidth * fontMetrics().averageCharWidth(), 0);
  MakeMenus();
  ConnectCommands();
  ConnectFields();
  RestrictToMode();
  if (draft_.IsEmpty()) {
    OnNew();
  } else {
    Load();
  }
  FillMenus();
  lock_warning_.Rearm();
  ui_->textEdit->setFocus();
}

StringEditor::~StringEditor() = default;

void StringEditor::MakeIcons() {
  const struct {
    IconButton* Button;
    const char* Name;
    quint8 Size;
  } icons[] = {{ui_->newButton, "add", kCommandIconSize},
               {ui_->deleteButton, "delete", kCommandIconSize},
               {ui_->moveLeftButton, "left", kCommandIconSize},
               {ui_->moveRightButton, "right", kCommandIconSize},
               {ui_->stringsMenuButton, "menu", kMenuIconSize},
               {ui_->codesMenuButton, "menu", kMenuIconSize},
               {ui_->functionsMenuButton, "menu", kMenuIconSize},
               {ui_->listsMenuButton, "menu", kMenuIconSize}};
  for (const auto& icon : icons) {
    const QString name = QStringLiteral(":/icons/") + QString::fromLatin1(icon.Name);
    icon.Button->SetIcons(name + QStringLiteral(".svg"), name + QStringLiteral("-hot.svg"),
                          icon.Size, icon.Size);
  }
}

void StringEditor::ConnectCommands() {
  const auto on_click = [this](QPushButton* button, auto command) {
    connect(button, &QPushButton::clicked, this, command);
  };
  const auto change_on_click = [&](QPushButton* button, void (PatternDraft::*change)()) {
    on_click(button, [this, change] { Change([this, change] { (draft_.*change)(); }); });
  };
  on_click(ui_->newButton, &StringEditor::OnNew);
  change_on_click(ui_->deleteButton, &PatternDraft::Delete);
  change_on_click(ui_->moveLeftButton, &PatternDraft::MoveLeft);
  change_on_click(ui_->moveRightButton, &PatternDraft::MoveRight);
  on_click(ui_->findButton, &StringEditor::OnFind);
  on_click(ui_->okButton, &QDialog::accept);
  on_click(ui_->cancelButton, &QDialog::reject);
  on_click(ui_->helpButton, [this] { services_.ShowHelp(kStringEditorTopic); });
}

void StringEditor::ConnectFields() {
  // The toolkit checks each radio button of a group that an arrow key passes, and the kinds convert
  // the text, so that nobody would get from a string to a list by the keyboard: here the keys only
  // go from one to the next, and Space checks. A kind that none of them stands for checks none.
  for (QRadioButton* radio :
       {ui_->stringRadio, ui_->codeRadio, ui_->functionRadio, ui_->listRadio}) {
    radio->setAutoExclusive(false);
  }
  connect(ui_->subsTabs, &QTabBar::currentChanged, this, [this](int position) {
    draft_.Select(static_cast<std::size_t>(position));
    Load();
  });
  connect(ui_->textEdit, &QLineEdit::textChanged, this, [this] {
    if (!MayChange()) return;
    draft_.SetText(ui_->textEdit->Bytes());
    ShowCaption();
  });
  connect(ui_->renderEdit, &QLineEdit::textChanged, this, [this] {
    if (!MayChange()) return;
    draft_.SetRenderText(ui_->renderEdit->Bytes());
    ShowCaption();
  });
  for (ByteLineEdit* edit : {ui_->textEdit, ui_->renderEdit}) edit->installEventFilter(this);
  const auto change_on_click = [this](QAbstractButton* button, std::function<void()> change) {
    connect(button, &QAbstractButton::clicked, this,
            [this, change = std::move(change)] { Change(change); });
  };
  change_on_click(ui_->stringRadio, [this] { draft_.SetKind(SubpatternKind::String); });
  change_on_click(ui_->codeRadio, [this] { draft_.SetKind(SubpatternKind::CharacterCode); });
  change_on_click(ui_->functionRadio, [this] { draft_.SetKind(SubpatternKind::Function); });
  change_on_click(ui_->listRadio, [this] {
    draft_.SetKind(ui_->negatedBox->isChecked() ? SubpatternKind::NegatedCharacterList
                                                : SubpatternKind::CharacterList);
  });
  change_on_click(ui_->negatedBox, [this] { draft_.ToggleNegated(); });
  change_on_click(ui_->mostSignificantBox,
                  [this] { draft_.SetMostSignificant(ui_->mostSignificantBox->isChecked()); });
}

// Once, at the opening. A list in a replacement, which only a file can hold, gets its menu and its
// "Neg." back when it is shown, and so does a function in a pattern.
void StringEditor::RestrictToMode() {
  const std::vector<QWidget*> not_for_mode =
      mode_ == Mode::Replacement
          ? std::vector<QWidget*>{ui_->listRadio, ui_->listsMenuButton, ui_->negatedBox,
                                  ui_->mostSignificantBox, ui_->findButton}
          : std::vector<QWidget*>{ui_->functionRadio, ui_->functionsMenuButton};
  for (QWidget* control : not_for_mode) control->setEnabled(false);
}

bool StringEditor::MayChange() {
  if (!locked_) return true;
  // At the opening the dialog isn't there yet.
  lock_warning_.Warn(isVisible() ? this : parentWidget());
  if (!draft_.IsEmpty()) Load();
  return false;
}

void StringEditor::Change(const std::function<void()>& change) {
  if (!MayChange()) return;
  change();
  Load();
}

void StringEditor::OnNew() {
  // There is always one subpattern, and in a locked filter it goes no further than this dialog.
  if (!MayChange() && !draft_.IsEmpty()) return;
  draft_.Append();
  Load();
  ui_->textEdit->setFocus();
}

void StringEditor::OnFind() {
  Change([this] {
    if (draft_.HasMostSignificant() &&
        services_.Dialogs.Message(
            this, MessageIcon::Question,
            tr("There arleady is the most significant subpattern. Are you sure you want to "
               "evaluate the new most significant subpattern (the previous setting will be lost)?"),
            MessageButtons::YesNo) != Answer::Yes) {
      return;
    }
    draft_.FindMostSignificant();
  });
}

void StringEditor::Load() {
  std::vector<QSignalBlocker> blockers;
  for (QObject* control : std::initializer_list<QObject*>{
           ui_->subsTabs, ui_->textEdit, ui_->renderEdit, ui_->stringRadio, ui_->codeRadio,
           ui_->functionRadio, ui_->listRadio, ui_->negatedBox, ui_->mostSignificantBox}) {
    blockers.emplace_back(control);
  }
  LoadTabs();
  const QWidget* const focused = focusWidget();
  ui_->deleteButton->setEnabled(draft_.CanDelete());
  ui_->moveLeftButton->setEnabled(draft_.CanMoveLeft());
  ui_->moveRightButton->setEnabled(draft_.CanMoveRight());
  Fill(*ui_->textEdit, draft_.Text());
  Fill(*ui_->renderEdit, draft_.Current().RenderText);
  LoadKind();
  ui_->mostSignificantBox->setChecked(draft_.IsMostSignificant());
  ui_->outputEdit->SetBytes(DisplayForm(draft_.Edited()));
  ui_->outputEdit->setCursorPosition(0);
  // Not to the next control, where the next key would change something else.
  if (focused != nullptr && !focused->isEnabled()) ui_->subsTabs->setFocus();
}

void StringEditor::LoadTabs() {
  std::vector<QString> captions;
  for (std::size_t i = 0; i < draft_.Count(); ++i) captions.push_back(FromBytes(draft_.Caption(i)));
  ui_->subsTabs->SetCaptions(captions);
  for (std::size_t i = 0; i < draft_.Count(); ++i) NameTab(i);
  ui_->subsTabs->setCurrentIndex(static_cast<int>(draft_.Position()));
}

void StringEditor::ShowCaption() {
  ui_->subsTabs->SetCaption(static_cast<int>(draft_.Position()),
                            FromBytes(draft_.Caption(draft_.Position())));
  NameTab(draft_.Position());
}

void StringEditor::NameTab(std::size_t position) {
  const int tab = static_cast<int>(position);
  // An empty subpattern must not be silent for those who hear the tabs.
  ui_->subsTabs->setAccessibleTabName(
      tab, ui_->subsTabs->tabText(tab).isEmpty() ? tr("Subpattern %1").arg(tab + 1) : QString());
}

// Controls are only touched where they change: disabling the one that is just getting the focus
// would send it elsewhere.
void StringEditor::LoadKind() {
  const SubpatternKind kind = draft_.Current().Kind;
  const bool is_negated = kind == SubpatternKind::NegatedCharacterList;
  const bool is_list = kind == SubpatternKind::CharacterList || is_negated;
  const struct {
    QRadioButton* Radio;
    IconButton* MenuButton;
    bool IsOfKind;
  } kinds[] = {
      {ui_->stringRadio, ui_->stringsMenuButton, kind == SubpatternKind::String},
      {ui_->codeRadio, ui_->codesMenuButton, kind == SubpatternKind::CharacterCode},
      {ui_->functionRadio, ui_->functionsMenuButton, kind == SubpatternKind::Function},
      {ui_->listRadio, ui_->listsMenuButton, is_list},
  };
  for (const auto& of_kind : kinds) {
    of_kind.Radio->setChecked(of_kind.IsOfKind);
    of_kind.MenuButton->setEnabled(of_kind.IsOfKind);
  }
  if (is_list) ui_->negatedBox->setChecked(is_negated);
  ui_->negatedBox->setEnabled(is_list);
}

bool StringEditor::eventFilter(QObject* watched, QEvent* event) {
  // What was typed is stored already; the rest of the window shows it now.
  if (EndsEditing(*event)) Load();
  return QDialog::eventFilter(watched, event);
}

}  // namespace zarvo
