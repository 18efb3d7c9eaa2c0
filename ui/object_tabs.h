// The tab strip of the editors: one tab for each object of a list.
#pragma once

#include <QCache>
#include <QTabBar>
#include <string_view>
#include <vector>

namespace zarvo {

/// A tab's size is computed once for each caption, so that thousands of tabs stay quick to fill and
/// to change. Captions are plain text.
class ObjectTabs : public QTabBar {
  Q_OBJECT

 public:
  explicit ObjectTabs(QWidget* parent = nullptr);

  /// As many tabs as captions, in their order. The selected position stays where there is one.
  void SetCaptions(const std::vector<QString>& captions);
  void SetCaption(int position, const QString& caption);
  void AppendCaption(const QString& caption);
  /// As it is shown.
  [[nodiscard]] QString Caption(int position) const;

 signals:
  /// Another tab was selected, by whatever way, or the user clicked on the selected one.
  void Chosen();

 protected:
  [[nodiscard]] QSize tabSizeHint(int index) const override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  // A strip without tabs is as high as one with them.
  void KeepHeight();
  void NameForReaders(int position, const QString& text);
  [[nodiscard]] bool IsOnSelected(const QMouseEvent& event) const;

  mutable QCache<QString, QSize> sizes_;
  // Whether the mouse button went down on the tab that was selected by then.
  bool pressed_selected_ = false;
};

/// The caption for an object's name: the name when it is shorter than 24 bytes, else its first 20
/// and "...".
[[nodiscard]] QString TabCaption(std::string_view name);

}  // namespace zarvo
