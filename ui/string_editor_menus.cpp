// The String Editor's four menus and what their commands do.

#include <QAction>
#include <QDir>
#include <QFile>
#include <QMenu>
#include <utility>

#include "ui/add_to_predefined_dialog.h"
#include "ui/byte_text.h"
#include "ui/plain_text.h"
#include "ui/pop_up_below.h"
#include "ui/predefined_dialog.h"
#include "ui/string_editor.h"
#include "ui_string_editor.h"

namespace zarvo {
namespace {

// A menu can't be used with more, adding to it becomes ever slower, and no command beyond the first
// thirty does anything. "More..." lists all.
constexpr std::size_t kMostItems = 1000;

void AddCommand(QMenu& menu, const QString& caption, std::int64_t command) {
  menu.addAction(caption)->setData(static_cast<qlonglong>(command));
}

// The action that was just chosen may be among them, so they go later.
void Empty(QMenu& menu) {
  for (QAction* action : menu.actions()) {
    menu.removeAction(action);
    action->deleteLater();
  }
}

}  // namespace

void StringEditor::MakeMenus() {
  const auto make = [this](const char* name, QPushButton* button) {
    auto* menu = new QMenu(this);
    menu->setObjectName(QString::fromLatin1(name));
    connect(button, &QPushButton::clicked, this, [menu, button] { PopUpBelow(*menu, *button); });
    connect(menu, &QMenu::triggered, this,
            [this](const QAction* action) { OnCommand(action->data().toLongLong()); });
    return menu;
  };
  library_popups_ = {make("stringsMenu", ui_->stringsMenuButton),
                     make("codesMenu", ui_->codesMenuButton),
                     make("listsMenu", ui_->listsMenuButton)};
  functions_popup_ = make("functionsMenu", ui_->functionsMenuButton);
}

void StringEditor::FillMenus() {
  auto sections = services_.Library.Read();
  for (std::size_t i = 0; i < kLibrarySectionCount; ++i) {
    library_menus_[i] = SubpatternMenu(std::move(sections[i]));
    QMenu& popup = *library_popups_[i];
    Empty(popup);
    for (const SubpatternMenuItem& item : library_menus_[i].Items()) {
      if (static_cast<std::size_t>(popup.actions().size()) >= kMostItems) break;
      AddCommand(popup, PlainCaption(FromBytes(item.Name)), item.Command);
    }
    if (!popup.isEmpty()) popup.addSeparator();
    AddCommand(popup, tr("Add to predefined..."), kAddToPredefinedCommand);
    AddCommand(popup, tr("More..."), kMoreCommand);
  }
  Empty(*functions_popup_);
  std::int64_t command = kFirstItemCommand;
  for (const Function& function : functions_) {
    if (static_cast<std::size_t>(functions_popup_->actions().size()) >= kMostItems) break;
    AddCommand(*functions_popup_, PlainCaption(FromBytes(function.Name)), command++);
  }
}

void StringEditor::OnCommand(std::int64_t command) {
  if (command == kAddToPredefinedCommand) AddToPredefined();
  if (command == kMoreCommand) ChooseFromLibrary();
  if (IsItemCommand(command)) ChooseItem(command);
}

void StringEditor::ChooseItem(std::int64_t command) {
  if (!MayChange()) return;
  if (draft_.Current().Kind == SubpatternKind::Function) {
    CallFunction(command);
    return;
  }
  const PredefinedSubpattern* entry =
      library_menus_[static_cast<std::size_t>(draft_.Section())].Resolve(command);
  if (entry != nullptr) Change([this, entry] { draft_.Take(*entry); });
}

void StringEditor::CallFunction(std::int64_t command) {
  const auto position = static_cast<std::size_t>(command - kFirstItemCommand);
  if (position >= functions_.Count()) return;
  Change([&] { draft_.Call(functions_[position].Name); });
  // The argument comes next, between the brackets.
  ui_->textEdit->setFocus();
  ui_->textEdit->setCursorPosition(static_cast<int>(ui_->textEdit->text().size()) - 1);
}

void StringEditor::AddToPredefined() {
  AddToPredefinedDialog dialog(this);
  if (dialog.exec() != QDialog::Accepted) return;
  const FileResult error = services_.Library.Append(
      draft_.Section(), draft_.AsEntry(dialog.Name(), dialog.ShowInMenu()));
  if (error) {
    // With the reason: it may be a text that the file can't hold, and no fault of the file.
    const QString path = QFile::decodeName(QByteArray::fromStdString(error->Path));
    services_.Dialogs.Message(this, MessageIcon::Exclamation,
                              tr("Error saving file %1").arg(QDir::toNativeSeparators(path)) +
                                  QStringLiteral(": ") +
                                  QString::fromLocal8Bit(QByteArray::fromStdString(error->Reason)),
                              MessageButtons::Ok);
  }
  FillMenus();
}

void StringEditor::ChooseFromLibrary() {
  if (!MayChange()) return;
  const LibrarySection section = draft_.Section();
  // A replacement has no use for lists, except where a file brought one in.
  const bool without_lists =
      mode_ == Mode::Replacement && section != LibrarySection::CharacterLists;
  PredefinedDialog dialog(services_.Library, section, without_lists, this);
  if (dialog.exec() != QDialog::Accepted) return;
  const std::optional<Subpattern> chosen = dialog.Chosen();
  if (chosen) Change([&] { draft_.Replace(*chosen); });
}

}  // namespace zarvo
