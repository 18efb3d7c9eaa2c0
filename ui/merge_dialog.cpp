#include "ui/merge_dialog.h"

#include <QAbstractListModel>
#include <QScrollBar>
#include <algorithm>

#include "ui/accessible_names.h"
#include "ui/byte_text.h"
#include "ui_merge_dialog.h"

namespace zarvo {

/// Gives a list box the names of a list that may be long: only what is seen is turned into
/// characters.
class MergeListModel : public QAbstractListModel {
 public:
  using QAbstractListModel::QAbstractListModel;

  /// Shows this list, which must stay where it is.
  void Show(const std::vector<MergeItem>& items) {
    beginResetModel();
    items_ = &items;
    row_count_ = Size();
    endResetModel();
  }

  /// Shows what is left after items of the list are gone; nothing stays selected.
  void ShowRemaining() { Show(*items_); }

  /// Shows the items that the list has got at its end; selection and scrolling stay.
  void ShowAppended() {
    beginInsertRows({}, row_count_, Size() - 1);
    row_count_ = Size();
    endInsertRows();
  }

  [[nodiscard]] int rowCount(const QModelIndex& parent) const override {
    return parent.isValid() ? 0 : row_count_;
  }

  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override {
    // The tip shows the whole of a name that the list has no room for.
    if (role != Qt::DisplayRole && role != Qt::ToolTipRole) return {};
    return FromBytes((*items_)[static_cast<std::size_t>(index.row())].Name);
  }

 private:
  [[nodiscard]] int Size() const { return static_cast<int>(items_->size()); }

  const std::vector<MergeItem>* items_ = nullptr;
  int row_count_ = 0;
};

namespace {

constexpr quint8 kArrowIconSize = 24;

MergeListModel* MakeModel(QListView* view) {
  auto* model = new MergeListModel(view);
  view->setModel(model);
  return model;
}

std::vector<std::size_t> SelectedPositions(const QListView& view) {
  std::vector<std::size_t> positions;
  for (const QItemSelectionRange& range : view.selectionModel()->selection()) {
    for (int row = range.top(); row <= range.bottom(); ++row) {
      positions.push_back(static_cast<std::size_t>(row));
    }
  }
  return positions;
}

}  // namespace

MergeDialog::MergeDialog(FilterMerge& merge, const std::function<void()>& show_help,
                         QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::MergeDialog>()), merge_(merge) {
  ui_->setupUi(this);
  NameControlsByLabels(*this);
  for (const QString& kind : {tr("Rules"), tr("Functions"), tr("Sets")}) {
    ui_->kindTabs->addTab(kind);
  }
  existing_ = {ui_->existingList, MakeModel(ui_->existingList)};
  available_ = {ui_->availableList, MakeModel(ui_->availableList)};
  to_add_ = {ui_->toAddList, MakeModel(ui_->toAddList)};
  ui_->addButton->SetIcons(QStringLiteral(":/icons/add.svg"), QString(), kArrowIconSize,
                           kArrowIconSize);
  ui_->removeButton->SetIcons(QStringLiteral(":/icons/remove.svg"), QString(), kArrowIconSize,
                              kArrowIconSize);
  ShowKind();
  // A click on the tab that is shown fills the lists anew too.
  connect(ui_->kindTabs, &QTabBar::tabBarClicked, this, &MergeDialog::ShowKind);
  connect(ui_->kindTabs, &QTabBar::currentChanged, this, &MergeDialog::ShowKind);
  connect(ui_->addButton, &QPushButton::clicked, this,
          [this] { MoveSelected(available_, &MergeLists::Add, to_add_); });
  connect(ui_->removeButton, &QPushButton::clicked, this,
          [this] { MoveSelected(to_add_, &MergeLists::TakeBack, available_); });
  connect(ui_->okButton, &QPushButton::clicked, this, &QDialog::accept);
  connect(ui_->cancelButton, &QPushButton::clicked, this, &QDialog::reject);
  connect(ui_->helpButton, &QPushButton::clicked, this, show_help);
  // 219 by 162 dialog units, of which a character has 4 by 8.
  resize(fontMetrics().averageCharWidth() * 219 / 4, fontMetrics().height() * 162 / 8);
}

MergeDialog::~MergeDialog() = default;

MergeLists& MergeDialog::ShownLists() {
  return merge_.Lists(static_cast<MergeKind>(ui_->kindTabs->currentIndex()));
}

void MergeDialog::ShowKind() {
  const MergeLists& lists = ShownLists();
  existing_.Model->Show(lists.Existing);
  available_.Model->Show(lists.Available);
  to_add_.Model->Show(lists.ToAdd);
}

void MergeDialog::MoveSelected(const ListBox& from, MoveFunction move_items, const ListBox& to) {
  const std::vector<std::size_t> positions = SelectedPositions(*from.View);
  if (positions.empty()) return;
  const int scrolled = from.View->verticalScrollBar()->value();
  const auto first = static_cast<int>(*std::min_element(positions.begin(), positions.end()));
  (ShownLists().*move_items)(positions);
  from.Model->ShowRemaining();
  to.Model->ShowAppended();
  // The keyboard goes on where the first of them was, and what is seen stays.
  from.View->doItemsLayout();
  from.View->verticalScrollBar()->setValue(scrolled);
  const QModelIndex next = from.Model->index(std::min(first, from.Model->rowCount({}) - 1));
  from.View->selectionModel()->setCurrentIndex(next, QItemSelectionModel::NoUpdate);
}

}  // namespace zarvo
