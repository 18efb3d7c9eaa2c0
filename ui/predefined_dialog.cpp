#include "ui/predefined_dialog.h"

#include <QAbstractTableModel>
#include <QHeaderView>
#include <QSignalBlocker>
#include <QTabBar>
#include <algorithm>
#include <vector>

#include "ui/byte_text.h"
#include "ui_predefined_dialog.h"

namespace zarvo {
namespace {

bool IsNegated(const PredefinedSubpattern& entry) {
  return entry.Mode == PredefinedSubpattern::kNegatedList;
}

QString NameText(const PredefinedSubpattern& entry) { return FromBytes(entry.Name); }
QString ValueText(const PredefinedSubpattern& entry) { return FromBytes(entry.Value); }
QString RenderText(const PredefinedSubpattern& entry) { return FromBytes(entry.RenderText); }

QString CodeText(const PredefinedSubpattern& entry) {
  return QString::number(static_cast<unsigned char>(entry.Value.front()));
}

QString TypeText(const PredefinedSubpattern& entry) {
  return IsNegated(entry) ? QStringLiteral("Neg") : QStringLiteral("Pos");
}

struct Column {
  const char* Heading;
  int Width;  // in pixels
  QString (*Text)(const PredefinedSubpattern&);
};

struct SectionPage {
  const char* Caption;
  SubpatternKind Kind;  // of the entries
  std::vector<Column> Columns;
};

const SectionPage& PageOf(LibrarySection section) {
  static const std::array<SectionPage, kLibrarySectionCount> kPages = {
      {{"Strings",
        SubpatternKind::String,
        {{"Name", 110, NameText}, {"String", 110, ValueText}, {"Render", 80, RenderText}}},
       {"Character codes",
        SubpatternKind::CharacterCode,
        {{"Name", 170, NameText}, {"Code", 50, CodeText}, {"Render", 80, RenderText}}},
       {"Character lists",
        SubpatternKind::CharacterList,
        {{"Name", 110, NameText},
         {"Type", 40, TypeText},
         {"List", 100, ValueText},
         {"Render", 50, RenderText}}}}};
  return kPages[static_cast<std::size_t>(section)];
}

Subpattern Made(const PredefinedSubpattern& entry, LibrarySection section) {
  Subpattern subpattern;
  subpattern.Kind = PageOf(section).Kind;
  if (subpattern.Kind == SubpatternKind::CharacterList && IsNegated(entry)) {
    subpattern.Kind = SubpatternKind::NegatedCharacterList;
  }
  subpattern.Contents = entry.Value;
  subpattern.RenderText = entry.RenderText;
  return subpattern;
}

// The dialog units of a system's own dialogs: quarters of a character's width, eighths of its
// height.
QSize FromDialogUnits(const QFontMetrics& metrics, QSize units) {
  return {units.width() * metrics.averageCharWidth() / 4, units.height() * metrics.height() / 8};
}

}  // namespace

// The entries of one section as rows. A file may hold a million of them, so each text is made when
// it is drawn.
class PredefinedList : public QAbstractTableModel {
 public:
  // The entries must outlive their showing.
  void Show(const SectionPage& page, const SubpatternLibrary::Entries& entries) {
    beginResetModel();
    page_ = &page;
    entries_ = &entries;
    endResetModel();
  }

  [[nodiscard]] int rowCount(const QModelIndex& parent) const override {
    return parent.isValid() || entries_ == nullptr ? 0 : static_cast<int>(entries_->size());
  }

  [[nodiscard]] int columnCount(const QModelIndex& parent) const override {
    return parent.isValid() || page_ == nullptr ? 0 : static_cast<int>(page_->Columns.size());
  }

  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override {
    if (role != Qt::DisplayRole) return {};
    return ColumnAt(index.column()).Text((*entries_)[static_cast<std::size_t>(index.row())]);
  }

  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                    int role) const override {
    if (role != Qt::DisplayRole || orientation != Qt::Horizontal) return {};
    return QString::fromLatin1(ColumnAt(section).Heading);
  }

 private:
  [[nodiscard]] const Column& ColumnAt(int number) const {
    return page_->Columns[static_cast<std::size_t>(number)];
  }

  const SectionPage* page_ = nullptr;
  const SubpatternLibrary::Entries* entries_ = nullptr;
};

PredefinedDialog::PredefinedDialog(const SubpatternLibrary& library, LibrarySection first,
                                   bool without_lists, QWidget* parent)
    : QDialog(parent),
      ui_(std::make_unique<Ui::PredefinedDialog>()),
      entries_(library.Read()),
      list_(std::make_unique<PredefinedList>()) {
  ui_->setupUi(this);
  resize(FromDialogUnits(fontMetrics(), QSize(223, 129)));
  // The widths of the columns are the whole truth: no heading widens one.
  ui_->entriesList->header()->setMinimumSectionSize(1);
  ui_->entriesList->header()->setSectionsClickable(false);
  ui_->entriesList->header()->setSectionsMovable(false);
  ui_->entriesList->setModel(list_.get());
  const QSignalBlocker blocker(ui_->sectionTabs);
  for (const LibrarySection section :
       {LibrarySection::Strings, LibrarySection::CharacterCodes, LibrarySection::CharacterLists}) {
    if (without_lists && section == LibrarySection::CharacterLists) continue;
    ui_->sectionTabs->addTab(QString::fromLatin1(PageOf(section).Caption));
  }
  ui_->sectionTabs->setCurrentIndex(static_cast<int>(first));
  ShowSection(ui_->sectionTabs->currentIndex());
  connect(ui_->sectionTabs, &QTabBar::currentChanged, this, &PredefinedDialog::ShowSection);
  connect(ui_->okButton, &QPushButton::clicked, this, &QDialog::accept);
  connect(ui_->cancelButton, &QPushButton::clicked, this, &QDialog::reject);
}

PredefinedDialog::~PredefinedDialog() = default;

void PredefinedDialog::ShowSection(int tab) {
  const auto section = static_cast<std::size_t>(tab);
  const SectionPage& page = PageOf(static_cast<LibrarySection>(section));
  list_->Show(page, entries_[section]);
  int column = 0;
  for (const auto& [heading, width, text] : page.Columns) {
    ui_->entriesList->header()->resizeSection(column++, width);
  }
}

void PredefinedDialog::accept() {
  const auto section = static_cast<std::size_t>(ui_->sectionTabs->currentIndex());
  const QModelIndex focused = ui_->entriesList->currentIndex();
  if (focused.isValid()) {
    chosen_ = Made(entries_[section][static_cast<std::size_t>(focused.row())],
                   static_cast<LibrarySection>(section));
  }
  QDialog::accept();
}

}  // namespace zarvo
