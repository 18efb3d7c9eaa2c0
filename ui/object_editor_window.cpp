#include "ui/object_editor_window.h"

#include <QDir>
#include <QFile>
#include <QSignalBlocker>
#include <algorithm>
#include <utility>
#include <vector>

#include "model/file_io.h"
#include "ui/accessible_names.h"
#include "ui/byte_line_edit.h"
#include "ui/byte_text.h"
#include "ui/focus_loss.h"
#include "ui/icon_button.h"
#include "ui/object_tabs.h"
#include "ui/plain_text.h"

namespace zarvo {
namespace {

constexpr quint8 kIconSize = 16;

// A name as a file dialog may propose it: a separator would make folders of it.
QString ProposedFileName(std::string_view name) {
  return FromBytes(name)
      .replace(QLatin1Char('/'), QLatin1Char('_'))
      .replace(QDir::separator(), QLatin1Char('_'));
}

}  // namespace

ObjectEditorWindow::ObjectEditorWindow(EditorHost host, EditorKind kind,
                                       std::unique_ptr<EditedList> list)
    : host_(std::move(host)),
      kind_(std::move(kind)),
      list_(std::move(list)),
      lock_warning_(host_.Services.Dialogs) {
  setWindowFlag(Qt::WindowContextHelpButtonHint, false);
  setWindowFlag(Qt::WindowMinMaxButtonsHint, true);
}

void ObjectEditorWindow::AdoptControls(const CommonControls& controls) {
  controls_ = controls;
  const struct {
    IconButton* Button;
    const char* Icon;
    void (ObjectEditorWindow::*Command)();
  } commands[] = {{controls.New, "add", &ObjectEditorWindow::OnNew},
                  {controls.Delete, "delete", &ObjectEditorWindow::OnDelete},
                  {controls.Export, "export", &ObjectEditorWindow::OnExport},
                  {controls.Import, "import", &ObjectEditorWindow::OnImport},
                  {controls.Help, "help", &ObjectEditorWindow::OnHelp}};
  for (const auto& command : commands) {
    SetCommandIcon(*command.Button, command.Icon);
    connect(command.Button, &QPushButton::clicked, this, command.Command);
  }
  // Enter in a field must not press a command.
  for (IconButton* button : findChildren<IconButton*>()) button->setAutoDefault(false);
  connect(controls.Name, &QLineEdit::textChanged, this, &ObjectEditorWindow::OnNameTyped);
  controls.Name->installEventFilter(this);
  if (kind_.ReloadsOnTabClick) {
    connect(controls.Tabs, &ObjectTabs::Chosen, this, &ObjectEditorWindow::Reload);
  } else {
    connect(controls.Tabs, &QTabBar::currentChanged, this, &ObjectEditorWindow::Reload);
  }
  NameControlsByLabels(*this);
}

bool ObjectEditorWindow::eventFilter(QObject* watched, QEvent* event) {
  if (watched == controls_.Name && kind_.ReloadsOnLeavingName && EndsEditing(*event)) OnNameLeft();
  return QDialog::eventFilter(watched, event);
}

void ObjectEditorWindow::SetCommandIcon(IconButton& button, const char* icon) {
  const QString name = QStringLiteral(":/icons/") + QString::fromLatin1(icon);
  button.SetIcons(name + QStringLiteral(".svg"), name + QStringLiteral("-hot.svg"), kIconSize,
                  kIconSize);
}

void ObjectEditorWindow::setVisible(bool visible) {
  const bool opens = visible && !isVisible();
  if (opens) {
    BuildTabs();
    if (list_->Count() == 0 && !locked_) AddTab(AppendNew());
    Load();
  }
  QDialog::setVisible(visible);
  // Behind the window, which stands while the filter runs.
  if (opens) UpdatePreview();
}

void ObjectEditorWindow::Refresh() {
  // A hidden editor builds its tabs when it is shown.
  if (!isVisible()) return;
  BuildTabs();
  Reload();
}

void ObjectEditorWindow::Reset() {
  {
    const QSignalBlocker blocker(controls_.Tabs);
    controls_.Tabs->setCurrentIndex(0);
  }
  if (!isVisible()) return;
  BuildTabs();
  // The Preview isn't updated: a run would let the user act while the document is being replaced.
  Load();
}

bool ObjectEditorWindow::HasCurrent() const {
  const int index = controls_.Tabs->currentIndex();
  return index >= 0 && static_cast<std::size_t>(index) < list_->Count();
}

std::size_t ObjectEditorWindow::Current() const {
  return static_cast<std::size_t>(controls_.Tabs->currentIndex());
}

void ObjectEditorWindow::Select(std::size_t position) {
  const QSignalBlocker blocker(controls_.Tabs);
  controls_.Tabs->setCurrentIndex(static_cast<int>(position));
}

void ObjectEditorWindow::BuildTabs() {
  std::vector<QString> captions;
  captions.reserve(list_->Count());
  for (std::size_t i = 0; i < list_->Count(); ++i) captions.push_back(TabCaption(list_->NameAt(i)));
  const QSignalBlocker blocker(controls_.Tabs);
  controls_.Tabs->SetCaptions(captions);
  OnTabsBuilt();
}

void ObjectEditorWindow::Reload() {
  Load();
  UpdatePreview();
}

void ObjectEditorWindow::Load() {
  ShowCaption();
  host_.ShowCounts();
  const QWidget* const focused = focusWidget();
  const bool has_current = HasCurrent();
  controls_.Delete->setEnabled(list_->Count() >= 2);
  controls_.Export->setEnabled(has_current);
  controls_.Object->setEnabled(has_current);
  const std::string name = has_current ? list_->NameAt(Current()) : std::string();
  // A text that is the same already keeps its cursor.
  if (controls_.Name->Bytes() != name) {
    const QSignalBlocker blocker(controls_.Name);
    controls_.Name->SetBytes(name);
  }
  LoadObject();
  // The toolkit sends the focus of a button that is now disabled to the next one, which the next
  // press of the space bar would set off.
  if (focused != nullptr && !focused->isEnabled()) controls_.Tabs->setFocus();
}

void ObjectEditorWindow::ShowCaption() {
  QString caption = kind_.Caption;
  if (kind_.CaptionHasFilterName && !host_.Filter.Name.empty()) {
    caption += QStringLiteral(" - ") + FromBytes(host_.Filter.Name);
  }
  setWindowTitle(PlainTitle(caption));
}

void ObjectEditorWindow::changeEvent(QEvent* event) {
  // The filter may have got another name in the main window.
  if (event->type() == QEvent::ActivationChange && isActiveWindow()) ShowCaption();
  QDialog::changeEvent(event);
}

void ObjectEditorWindow::UpdatePreview() {
  if (kind_.UpdatesPreview && HasCurrent()) host_.AutoUpdatePreview();
}

bool ObjectEditorWindow::Refuse() {
  if (locked_) lock_warning_.Warn(this);
  return locked_;
}

bool ObjectEditorWindow::RefuseAndReload() {
  if (!Refuse()) return false;
  Reload();
  return true;
}

bool ObjectEditorWindow::RefuseCommand() {
  return kind_.ReloadsOnRefusedCommand ? RefuseAndReload() : Refuse();
}

void ObjectEditorWindow::StoreName() {
  list_->Rename(Current(), controls_.Name->Bytes());
  controls_.Tabs->SetCaption(static_cast<int>(Current()), TabCaption(list_->NameAt(Current())));
  MarkModified();
}

void ObjectEditorWindow::OnNameTyped() {
  if (HasCurrent() && !RefuseAndReload()) StoreName();
}

void ObjectEditorWindow::OnNameLeft() {
  // Each keystroke has stored the name already. Not at once: a run of the Preview would handle the
  // release of the mouse that took the focus before its press has reached the control under it.
  QMetaObject::invokeMethod(this, &ObjectEditorWindow::ReloadWhileShown, Qt::QueuedConnection);
}

void ObjectEditorWindow::ReloadWhileShown() {
  if (isVisible()) Reload();
}

std::size_t ObjectEditorWindow::AppendNew() {
  const std::size_t position = list_->Count();
  list_->AppendNew(kind_.NewName(position + 1));
  OnAppended(position, Origin::New);
  MarkModified();
  return position;
}

void ObjectEditorWindow::AddTab(std::size_t position) {
  const QSignalBlocker blocker(controls_.Tabs);
  controls_.Tabs->AppendCaption(TabCaption(list_->NameAt(position)));
  controls_.Tabs->setCurrentIndex(static_cast<int>(position));
}

void ObjectEditorWindow::OnNew() {
  if (RefuseCommand()) return;
  AddTab(AppendNew());
  Reload();
}

void ObjectEditorWindow::OnDelete() {
  if (RefuseCommand() || !HasCurrent()) return;
  const QString question = kind_.DeleteQuestion + QLatin1Char('"') +
                           FromBytes(list_->NameAt(Current())) + QStringLiteral("\"?");
  if (Services().Dialogs.Message(this, MessageIcon::Question, question, MessageButtons::YesNo) !=
          Answer::Yes ||
      !HasCurrent()) {
    return;
  }
  const std::size_t position = Current();
  {
    const QSignalBlocker blocker(controls_.Tabs);
    controls_.Tabs->removeTab(static_cast<int>(position));
  }
  list_->RemoveAt(position);
  MarkModified();
  Select(position == 0 ? 0 : position - 1);
  Reload();
}

void ObjectEditorWindow::OnExport() {
  if (!HasCurrent()) return;
  const std::optional<QString> path = Services().Dialogs.SaveFile(
      this, {kind_.ExportFilters, kind_.Extension, ProposedFileName(list_->NameAt(Current()))});
  if (!path) return;
  if (WriteFile(QFile::encodeName(*path).toStdString(), list_->RecordAt(Current()))) {
    Services().Dialogs.Message(
        this, MessageIcon::Exclamation,
        QStringLiteral("Error saving file ") + QDir::toNativeSeparators(*path), MessageButtons::Ok);
  }
}

void ObjectEditorWindow::OnImport() {
  if (Refuse()) return;
  const std::optional<QString> path =
      Services().Dialogs.OpenFile(this, {kind_.ImportFilters, kind_.Extension, QString()});
  if (!path) return;
  std::string bytes;
  const FileResult error = ReadFile(QFile::encodeName(*path).toStdString(), bytes);
  // A file that can't be opened has always been passed over in silence.
  if (error && error->Step == "open") return;
  if (error || !list_->AppendRecord(bytes)) {
    Services().Dialogs.Message(
        this, MessageIcon::Exclamation,
        QStringLiteral("Error loading file ") + QDir::toNativeSeparators(*path),
        MessageButtons::Ok);
    return;
  }
  const std::size_t position = list_->Count() - 1;
  OnAppended(position, Origin::File);
  MarkModified();
  AddTab(position);
  Reload();
}

void ObjectEditorWindow::OnHelp() { Services().ShowHelp(kind_.HelpContext); }

}  // namespace zarvo
