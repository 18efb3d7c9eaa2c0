// The dialog in which the user chooses what to add from another filter.
#pragma once

#include <QDialog>
#include <functional>
#include <memory>
#include <vector>

#include "app/services/merge_lists.h"

class QListView;

namespace Ui {
class MergeDialog;
}

namespace zarvo {

class MergeListModel;

/// Shows the lists of one kind at a time.
class MergeDialog : public QDialog {
  Q_OBJECT

 public:
  /// Works on the lists of the merge, which must outlive the dialog; after Cancel they are to be
  /// thrown away. show_help is called by the Help button.
  MergeDialog(FilterMerge& merge, const std::function<void()>& show_help,
              QWidget* parent = nullptr);
  ~MergeDialog() override;

 private:
  // A list box and what it shows.
  struct ListBox {
    QListView* View;
    MergeListModel* Model;
  };
  using MoveFunction = void (MergeLists::*)(const std::vector<std::size_t>& positions);

  [[nodiscard]] MergeLists& ShownLists();
  void ShowKind();
  void MoveSelected(const ListBox& from, MoveFunction move_items, const ListBox& to);

  std::unique_ptr<Ui::MergeDialog> ui_;
  FilterMerge& merge_;
  ListBox existing_;
  ListBox available_;
  ListBox to_add_;
};

}  // namespace zarvo
