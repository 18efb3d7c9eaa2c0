// Keeps the windows alive while a filter runs.
#pragma once

#include <QElapsedTimer>
#include <functional>

#include "engine/run_host.h"
#include "ui/dialogs.h"

class QWidget;

namespace zarvo {

/// True from the moment the main window has closed for good; runs stop then.
[[nodiscard]] bool ProgramIsQuitting();
/// Marks the program as quitting and ends its event loop: with 1 when a run is in progress, else 0.
void QuitProgram();

/// How often events are handled in a run. For tests.
constexpr qint64 kUsualPumpInterval = 5;  // ms
void UsePumpInterval(qint64 milliseconds);

/// Counts as a run in progress while it lives. Handles the waiting events at most every 5 ms, and
/// looks at the clock for that at least at every 16th call.
class RunPump final : public RunHost {
 public:
  /// Messages of the run have this window as their parent.
  RunPump(Dialogs& dialogs, QWidget* parent);
  ~RunPump() override;
  RunPump(const RunPump&) = delete;
  RunPump& operator=(const RunPump&) = delete;

  /// The action is done whenever events are about to be handled.
  void BeforeEvents(std::function<void()> action);

  Attention Attend() override;
  bool Pump() override;
  void ShowMessage(const std::string& text) override;

 private:
  Dialogs& dialogs_;
  QWidget* parent_;
  std::function<void()> before_events_ = [] {};
  QElapsedTimer since_last_pump_;
  qint64 elapsed_at_last_look_ = 0;
  // Above 1 while calls come many in a millisecond.
  int calls_until_look_ = 1;
  bool has_pumped_ = false;
};

}  // namespace zarvo
