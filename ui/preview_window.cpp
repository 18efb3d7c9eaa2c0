#include "ui/preview_window.h"

#include <QElapsedTimer>
#include <QFile>
#include <QPointer>
#include <QProgressBar>
#include <algorithm>
#include <limits>

#include "engine/apply_filter.h"
#include "ui/accessible_names.h"
#include "ui/run_pump.h"
#include "ui_preview_window.h"

namespace zarvo {
namespace {

/// The most of a text file that is loaded, in bytes.
constexpr qint64 kMostTextBytes = 16384;

int Clamped(std::int64_t value) {
  return static_cast<int>(std::clamp<std::int64_t>(value, 0, std::numeric_limits<int>::max()));
}

// The toolkit's progress bar as the engine drives it. The control makes its text anew and paints
// itself at each change, which takes longer than many a rule. So a change is shown when events are
// handled, which is when somebody may look, and otherwise only now and then.
class WindowBar : public ProgressBar {
 public:
  WindowBar(QProgressBar* bar, RunPump& pump) : bar_(bar) {
    pump.BeforeEvents([this] { Show(); });
  }
  ~WindowBar() override { Show(); }
  WindowBar(const WindowBar&) = delete;
  WindowBar& operator=(const WindowBar&) = delete;

  void SetRange(std::int64_t least, std::int64_t most) override {
    // An empty range would show a bar that is busy for ever.
    if (bar_) bar_->setRange(Clamped(least), std::max(Clamped(most), 1));
  }
  void SetStep(std::int64_t step) override { step_ = step; }
  void SetPosition(std::int64_t position) override {
    constexpr qint64 kInterval = 20;
    position_ = position;
    is_shown_ = false;
    if (!since_shown_.isValid() || since_shown_.elapsed() >= kInterval) Show();
  }
  // From where the control stands, which somebody may have set back.
  void Step() override {
    if (bar_) SetPosition((is_shown_ ? bar_->value() : position_) + step_);
  }
  bool Exists() override { return !bar_.isNull(); }

 private:
  void Show() {
    if (is_shown_) return;
    is_shown_ = true;
    since_shown_.start();
    if (bar_) bar_->setValue(Clamped(position_));
  }

  QPointer<QProgressBar> bar_;
  QElapsedTimer since_shown_;
  std::int64_t position_ = 0;
  std::int64_t step_ = 1;
  bool is_shown_ = true;
};

}  // namespace

PreviewWindow::PreviewWindow(Filter& filter, Dialogs& dialogs, QWidget* parent)
    : QDialog(parent),
      ui_(std::make_unique<Ui::PreviewWindow>()),
      filter_(filter),
      dialogs_(dialogs) {
  ui_->setupUi(this);
  NameControlsByLabels(*this);
  ui_->loadTextButton->SetIcons(QStringLiteral(":/icons/load-text.svg"),
                                QStringLiteral(":/icons/load-text-hot.svg"), 32, 32);
  // Return in a pane must not press a button.
  for (IconButton* button : {ui_->loadTextButton, ui_->updateButton}) {
    button->setAutoDefault(false);
  }
  ui_->originalEdit->setFocus();
  connect(ui_->updateButton, &QPushButton::clicked, this, &PreviewWindow::OnUpdateButton);
  connect(ui_->loadTextButton, &QPushButton::clicked, this, &PreviewWindow::OnLoadText);
}

PreviewWindow::~PreviewWindow() = default;

void PreviewWindow::Update() {
  SetBusy(true);
  std::string text = ui_->originalEdit->Bytes();
  RunPump pump(dialogs_, this);
  WindowBar bar(ui_->progressBar, pump);
  // Whether it was completed or stopped, the text is what is to be shown.
  static_cast<void>(
      ApplyFilter({ProcessEngineState(), ProcessRandom(), pump}, filter_, text, &bar, nullptr));
  // Where the program ends nobody sees it any more, and a long text would keep the program waiting.
  if (!ProgramIsQuitting()) ui_->modifiedEdit->SetBytes(text);
  SetBusy(false);
}

void PreviewWindow::Reset() { ui_->progressBar->setValue(0); }

void PreviewWindow::ResetForNewDocument() {
  Reset();
  ui_->modifiedEdit->SetBytes({});
}

void PreviewWindow::OnUpdateButton() {
  if (!busy_) {
    Update();
    return;
  }
  CancelRun(filter_);
  SetBusy(false);
}

void PreviewWindow::OnLoadText() {
  const std::optional<QString> path =
      dialogs_.OpenFile(this, {"Text files (*.txt)|*.txt|All files (*.*)|*.*|", "txt", QString()});
  if (!path) return;
  QFile file(*path);
  QByteArray bytes;
  // A file that can't be read gives what could be read, and no message.
  if (file.open(QIODevice::ReadOnly)) bytes = file.read(kMostTextBytes);
  ui_->originalEdit->SetBytes(
      std::string_view(bytes.constData(), static_cast<std::size_t>(bytes.size())));
}

void PreviewWindow::SetBusy(bool busy) {
  busy_ = busy;
  ui_->updateButton->setText(busy ? tr("Cancel") : tr("Update"));
}

}  // namespace zarvo
