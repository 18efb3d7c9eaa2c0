#include "ui/run_pump.h"

#include <QCoreApplication>
#include <utility>

#include "ui/byte_text.h"

namespace zarvo {
namespace {

bool is_quitting = false;
int runs_in_progress = 0;
qint64 pump_interval = kUsualPumpInterval;

}  // namespace

bool ProgramIsQuitting() { return is_quitting; }

void QuitProgram() {
  is_quitting = true;
  QCoreApplication::exit(runs_in_progress > 0 ? 1 : 0);
}

void UsePumpInterval(qint64 milliseconds) { pump_interval = milliseconds; }

RunPump::RunPump(Dialogs& dialogs, QWidget* parent) : dialogs_(dialogs), parent_(parent) {
  ++runs_in_progress;
  since_last_pump_.start();
}

void RunPump::BeforeEvents(std::function<void()> action) { before_events_ = std::move(action); }

RunPump::~RunPump() { --runs_in_progress; }

Attention RunPump::Attend() {
  has_pumped_ = false;
  const bool goes_on = Pump();
  // Nobody gets at the filter between two pumps.
  return {goes_on, has_pumped_};
}

bool RunPump::Pump() {
  if (is_quitting) return false;
  if (--calls_until_look_ > 0) return true;
  const qint64 elapsed = since_last_pump_.elapsed();
  // Looking at the clock takes as long as a quick match.
  constexpr int kQuickCalls = 16;
  calls_until_look_ = elapsed == elapsed_at_last_look_ ? kQuickCalls : 1;
  elapsed_at_last_look_ = elapsed;
  if (elapsed < pump_interval) return true;
  has_pumped_ = true;
  before_events_();
  QCoreApplication::processEvents();
  since_last_pump_.start();
  elapsed_at_last_look_ = 0;
  return !is_quitting;
}

void RunPump::ShowMessage(const std::string& text) {
  if (is_quitting) return;
  before_events_();
  dialogs_.RunMessage(parent_, FromBytes(text));
}

}  // namespace zarvo
