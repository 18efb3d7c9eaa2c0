// What a run of the command line shows while it works, and afterwards.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <map>
#include <ostream>
#include <string>
#include <vector>

#include "engine/run_host.h"
#include "model/code_page.h"

namespace zarvo {

/// Collects the engine's messages instead of showing a box for each.
class MessageCollector : public RunHost {
 public:
  void ShowMessage(const std::string& text) override;
  /// Nothing here touches the filter while it runs.
  [[nodiscard]] bool TakesTurns() const override { return false; }

  /// Writes each distinct message in the order of their first appearance, with how often it came.
  void Report(std::ostream& out, const CodePage& code_page) const;

 private:
  std::vector<std::string> order_;
  std::map<std::string, std::size_t> counts_;
};

/// A progress bar in one line of a terminal: how far the run is through the Rules, and how far the
/// Rule in progress is through the text. Draws ten times a second, after the first tenth; never
/// wider than the terminal. The line is gone with the object.
class TerminalProgress {
 public:
  TerminalProgress(std::ostream& out, std::size_t width)
      : RuleBar(*this), PositionBar(*this), out_(out), width_(width) {}
  ~TerminalProgress() { Clear(); }
  TerminalProgress(const TerminalProgress&) = delete;
  TerminalProgress& operator=(const TerminalProgress&) = delete;

  class Bar : public ProgressBar {
   public:
    explicit Bar(TerminalProgress& owner) : owner_(owner) {}
    void SetRange(std::int64_t least, std::int64_t most) override;
    void SetStep(std::int64_t step) override { step_ = step; }
    void SetPosition(std::int64_t position) override;
    void Step() override { SetPosition(position_ + step_); }
    bool Exists() override { return true; }

    [[nodiscard]] std::int64_t Most() const { return most_; }
    [[nodiscard]] std::int64_t Position() const { return position_; }
    /// The part that is done, 0 to 1.
    [[nodiscard]] double Done() const;

   private:
    TerminalProgress& owner_;
    std::int64_t most_ = 0;
    std::int64_t step_ = 1;
    std::int64_t position_ = 0;
  };

  Bar RuleBar;
  Bar PositionBar;

  /// Removes the line.
  void Clear();

 private:
  void Draw();

  std::ostream& out_;
  std::size_t width_;
  std::chrono::steady_clock::time_point last_drawn_ = std::chrono::steady_clock::now();
  bool drawn_ = false;
};

}  // namespace zarvo
