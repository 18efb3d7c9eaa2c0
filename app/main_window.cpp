#include "app/main_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QFile>
#include <QLayout>
#include <QMenu>
#include <QScreen>
#include <QShortcut>
#include <QSignalBlocker>
#include <QTimer>
#include <vector>

#include "app/caption.h"
#include "app/services/leading_integer.h"
#include "app/settings.h"
#include "ui/accessible_names.h"
#include "ui/byte_text.h"
#include "ui/digits_validator.h"
#include "ui/focus_loss.h"
#include "ui/functions_editor.h"
#include "ui/plain_text.h"
#include "ui/pop_up_below.h"
#include "ui/rules_editor.h"
#include "ui/run_pump.h"
#include "ui/sets_editor.h"
#include "ui/stray_wheel.h"
#include "ui_main_window.h"

namespace zarvo {
namespace {

// The contexts of the help.
constexpr int kMainWindowTopic = 101;
constexpr quint8 kCommandIconSize = 24;  // buttons of 32 by 32

std::string_view Latin1(const QByteArray& bytes) {
  return {bytes.constData(), static_cast<std::size_t>(bytes.size())};
}

// Takes a field's text over. What stands behind a zero byte isn't shown, and stays while the rest
// is as it was.
void Store(std::string& text, std::string shown) {
  if (shown != UpToZero(text)) text = std::move(shown);
}

}  // namespace

MainWindow::MainWindow(QString installation_folder, Dialogs& dialogs)
    : ui_(std::make_unique<Ui::MainWindow>()),
      dialogs_(dialogs),
      library_(QFile::encodeName(installation_folder).toStdString(),
               QFile::encodeName(UserDataFolder()).toStdString()),
      lock_warning_(dialogs),
      preview_(std::make_unique<PreviewWindow>(document_.Filter, dialogs)),
      help_(std::make_unique<HelpWindow>(std::move(installation_folder), dialogs, this)) {
  ui_->setupUi(this);
  setWindowFlag(Qt::WindowContextHelpButtonHint, false);
  setWindowFlag(Qt::WindowMinimizeButtonHint, true);
  type_edit_ = &ui_->typeBox->Edit();
  type_edit_->setObjectName(QStringLiteral("typeEdit"));
  version_validator_ = new DigitsValidator(ui_->versionEdit);
  ui_->versionEdit->setValidator(version_validator_);
  StopStrayWheel(*ui_->typeBox);
  refusal_timer_ = new QTimer(this);
  refusal_timer_->setObjectName(QStringLiteral("refusalTimer"));
  refusal_timer_->setSingleShot(true);
  connect(refusal_timer_, &QTimer::timeout, this, &MainWindow::RefuseChangeSoon);
  NameControlsByLabels(*this);
  KeepSize();
  MakeIcons();
  MakeMenus();
  MakeEditors();
  ConnectCommands();
  ConnectFields();
  RefreshFields();
  RefreshTitle();
}

MainWindow::~MainWindow() = default;

void MainWindow::KeepSize() {
  // With a large font on a small screen the user may need a smaller Description instead.
  const QSize room = screen()->availableSize();
  const QSize wanted = sizeHint();
  if (wanted.width() <= room.width() && wanted.height() <= room.height()) {
    layout()->setSizeConstraint(QLayout::SetFixedSize);
  }
}

void MainWindow::MakeIcons() {
  const struct {
    IconButton* Button;
    const char* Name;
  } icons[] = {{ui_->newButton, "new"},     {ui_->openButton, "open"},   {ui_->saveButton, "save"},
               {ui_->mergeButton, "merge"}, {ui_->checkButton, "check"}, {ui_->helpButton, "help"},
               {ui_->aboutButton, "about"}, {ui_->exitButton, "exit"}};
  for (const auto& icon : icons) {
    const QString name = QStringLiteral(":/icons/") + QString::fromLatin1(icon.Name);
    icon.Button->SetIcons(name + QStringLiteral(".svg"), name + QStringLiteral("-hot.svg"),
                          kCommandIconSize, kCommandIconSize);
  }
  // Enter in a field must not press a command.
  for (IconButton* button : findChildren<IconButton*>()) button->setAutoDefault(false);
}

void MainWindow::MakeMenus() {
  save_menu_ = new QMenu(this);
  save_menu_->setObjectName(QStringLiteral("saveMenu"));
  save_menu_->addAction(tr("Save"), this, &MainWindow::Save);
  save_menu_->addAction(tr("Save As..."), this, &MainWindow::SaveAs);
  help_menu_ = new QMenu(this);
  help_menu_->setObjectName(QStringLiteral("helpMenu"));
  help_menu_->addAction(tr("The Zarvo Reference"), this,
                        [this] { help_->ShowContents(kReferenceHelp); });
  help_menu_->addAction(tr("Zarvo Composer Help contents"), this,
                        [this] { help_->ShowContents(kProgramHelp); });
  help_menu_->addAction(tr("About this window"), this,
                        [this] { help_->ShowTopic(kProgramHelp, kMainWindowTopic); });
}

void MainWindow::MakeEditors() {
  const EditorHost host = {
      .Services = {dialogs_, library_,
                   [this](int context) { help_->ShowTopic(kProgramHelp, context); }},
      .Filter = document_.Filter,
      .MarkModified = [this] { ClearSaved(); },
      .ShowCounts = [this] { RefreshCounts(); },
      .AutoUpdatePreview =
          [this] {
            if (ui_->autoUpdateBox->isChecked()) preview_->Update();
          }};
  editors_[kRulesEditor] = std::make_unique<RulesEditor>(host);
  editors_[kFunctionsEditor] = std::make_unique<FunctionsEditor>(host);
  editors_[kSetsEditor] = std::make_unique<SetsEditor>(host);
}

void MainWindow::ConnectCommands() {
  const auto on_click = [this](QPushButton* button, auto command) {
    connect(button, &QPushButton::clicked, this, command);
  };
  on_click(ui_->newButton, &MainWindow::NewDocument);
  on_click(ui_->openButton, &MainWindow::OpenDocument);
  on_click(ui_->saveButton, [this] { PopUpBelow(*save_menu_, *ui_->saveButton); });
  on_click(ui_->mergeButton, &MainWindow::Merge);
  on_click(ui_->checkButton, &MainWindow::CheckIntegrity);
  on_click(ui_->helpButton, [this] { PopUpBelow(*help_menu_, *ui_->helpButton); });
  on_click(ui_->aboutButton, &MainWindow::About);
  on_click(ui_->exitButton, &MainWindow::Exit);
  on_click(ui_->setPasswordButton, &MainWindow::OnSetPassword);
  on_click(ui_->editRulesButton, [this] { ShowEditor(kRulesEditor, true); });
  on_click(ui_->editFunctionsButton, [this] { ShowEditor(kFunctionsEditor, false); });
  on_click(ui_->editSetsButton, [this] { ShowEditor(kSetsEditor, true); });
  on_click(ui_->showPreviewButton, &MainWindow::ShowPreview);
  const auto on_key = [this](QKeySequence::StandardKey key, auto command) {
    auto* const shortcut = new QShortcut(key, this);
    connect(shortcut, &QShortcut::activated, this, command);
    return shortcut;
  };
  on_key(QKeySequence::New, &MainWindow::NewDocument);
  on_key(QKeySequence::Open, &MainWindow::OpenDocument);
  on_key(QKeySequence::Save, &MainWindow::Save)->setContext(Qt::ApplicationShortcut);
}

void MainWindow::ConnectFields() {
  for (QLineEdit* edit : std::initializer_list<QLineEdit*>{ui_->nameEdit, ui_->authorEdit,
                                                           ui_->languageEdit, ui_->versionEdit}) {
    connect(edit, &QLineEdit::textChanged, this, &MainWindow::ClearSaved);
    edit->installEventFilter(this);
  }
  connect(ui_->descriptionEdit, &QPlainTextEdit::textChanged, this, &MainWindow::ClearSaved);
  ui_->descriptionEdit->installEventFilter(this);
  // Typing counts as a change; choosing from the list doesn't.
  connect(type_edit_, &QLineEdit::textEdited, this, &MainWindow::ClearSaved);
  ui_->typeBox->installEventFilter(this);
  connect(ui_->autoIncrementBox, &QCheckBox::clicked, this,
          [this] { OnFlagClicked(*ui_->autoIncrementBox, document_.Filter.AutoIncrement); });
  connect(ui_->showWhenLockedBox, &QCheckBox::clicked, this, [this] {
    OnFlagClicked(*ui_->showWhenLockedBox, document_.Filter.ShowInEditorWhenLocked);
  });
  connect(ui_->lockBox, &QCheckBox::clicked, this, &MainWindow::OnLockClicked);
  connect(ui_->autoUpdateBox, &QCheckBox::clicked, this, [this](bool checked) {
    if (checked) preview_->Update();
  });
}

void MainWindow::RefreshFields() {
  const Filter& filter = document_.Filter;
  std::vector<QSignalBlocker> blockers;
  for (QObject* control : std::initializer_list<QObject*>{
           ui_->nameEdit, ui_->versionEdit, ui_->authorEdit, ui_->languageEdit, ui_->typeBox,
           type_edit_, ui_->descriptionEdit, ui_->autoIncrementBox, ui_->showWhenLockedBox,
           ui_->lockBox}) {
    blockers.emplace_back(control);
  }
  ui_->nameEdit->SetBytes(filter.Name);
  version_validator_->AllowMinus(filter.Version < 0);
  ui_->versionEdit->setText(QString::number(filter.Version));
  ui_->authorEdit->SetBytes(filter.Author);
  ui_->languageEdit->SetBytes(filter.Language);
  // Where the list has the type, the arrow keys go on from it.
  ui_->typeBox->setCurrentIndex(ui_->typeBox->findText(FromBytes(filter.Type), Qt::MatchExactly));
  type_edit_->SetBytes(filter.Type);
  ui_->descriptionEdit->SetBytes(filter.Description);
  ui_->autoIncrementBox->setChecked(filter.AutoIncrement != 0);
  ui_->showWhenLockedBox->setChecked(filter.ShowInEditorWhenLocked != 0);
  ui_->lockBox->setChecked(filter.Locked != 0);
  RefreshCounts();
  // Functions stay open to view: their own command refuses instead.
  const bool is_hidden = IsHiddenByLock();
  if (is_hidden) {
    for (const EditorIndex index : {kRulesEditor, kSetsEditor}) {
      if (editors_[index]) editors_[index]->Window().hide();
    }
  }
  ui_->editRulesButton->setEnabled(!is_hidden);
  ui_->editSetsButton->setEnabled(!is_hidden);
  ui_->mergeButton->setEnabled(!is_hidden);
}

void MainWindow::RefreshCounts() {
  const Filter& filter = document_.Filter;
  ui_->rulesCount->setText(QString::number(filter.Rules.Count()));
  ui_->functionsCount->setText(QString::number(filter.Functions.Count()));
  ui_->setsCount->setText(QString::number(filter.Sets.Count()));
}

void MainWindow::RefreshTitle() { setWindowTitle(PlainTitle(CaptionForPath(document_.Path))); }

bool MainWindow::IsHiddenByLock() const {
  return IsLocked() && document_.Filter.ShowInEditorWhenLocked == 0;
}

void MainWindow::CommitField(QObject* field) {
  if (IsLocked()) {
    refusal_timer_->start(0);
    return;
  }
  Filter& filter = document_.Filter;
  if (field == ui_->nameEdit) Store(filter.Name, ui_->nameEdit->Bytes());
  if (field == ui_->authorEdit) Store(filter.Author, ui_->authorEdit->Bytes());
  if (field == ui_->languageEdit) Store(filter.Language, ui_->languageEdit->Bytes());
  if (field == ui_->descriptionEdit) Store(filter.Description, ui_->descriptionEdit->Bytes());
  if (field == ui_->typeBox) Store(filter.Type, type_edit_->Bytes());
  if (field == ui_->versionEdit) {
    filter.Version = LeadingInteger(Latin1(ui_->versionEdit->text().toLatin1()));
  }
}

void MainWindow::CommitFocusedField() {
  // What was typed last is to be saved too, though its field keeps the focus.
  if (!IsLocked()) CommitField(focusWidget());
}

void MainWindow::RefuseChange() {
  lock_warning_.Warn(this);
  RefreshFields();
}

void MainWindow::RefuseChangeSoon() {
  constexpr int kNextLook = 20;  // ms
  if (!IsLocked() || ProgramIsQuitting()) return;
  // A box that opens while a button is held down would take its release, and with it the click.
  if (QGuiApplication::mouseButtons() != Qt::NoButton ||
      QApplication::activeModalWidget() != nullptr) {
    refusal_timer_->start(kNextLook);
    return;
  }
  RefuseChange();
}

bool MainWindow::eventFilter(QObject* watched, QEvent* event) {
  if (EndsEditing(*event)) CommitField(watched);
  return QDialog::eventFilter(watched, event);
}

void MainWindow::closeEvent(QCloseEvent* event) {
  // The close box has always run Exit and then, as Cancel, Exit again: where changes are still not
  // saved after the first answer, it asks a second time, and that answer decides.
  event->ignore();
  static_cast<void>(AskToSaveChanges());
  Exit();
}

}  // namespace zarvo
