#include "cli/run_report.h"

#include <algorithm>

#include "cli/listing.h"

namespace zarvo {

void MessageCollector::ShowMessage(const std::string& text) {
  if (counts_[text]++ == 0) order_.push_back(text);
}

void MessageCollector::Report(std::ostream& out, const CodePage& code_page) const {
  for (const std::string& text : order_) {
    const std::size_t count = counts_.at(text);
    out << Printable(text, code_page) << " (" << count << (count == 1 ? " time" : " times")
        << ")\n";
  }
}

void TerminalProgress::Bar::SetRange(std::int64_t least, std::int64_t most) {
  static_cast<void>(least);
  most_ = most;
}

void TerminalProgress::Bar::SetPosition(std::int64_t position) {
  position_ = position;
  owner_.Draw();
}

double TerminalProgress::Bar::Done() const {
  if (most_ <= 0) return 0;
  return std::clamp(static_cast<double>(position_) / static_cast<double>(most_), 0.0, 1.0);
}

void TerminalProgress::Draw() {
  constexpr std::chrono::milliseconds kInterval(100);
  const auto now = std::chrono::steady_clock::now();
  if (now - last_drawn_ < kInterval) return;
  last_drawn_ = now;
  drawn_ = true;
  constexpr int kWidth = 30;
  const auto rules = static_cast<double>(std::max<std::int64_t>(RuleBar.Most(), 1));
  const double done = std::min(RuleBar.Done() + PositionBar.Done() / rules, 1.0);
  const auto filled = static_cast<std::size_t>(done * kWidth);
  const std::int64_t rule = std::min(RuleBar.Position() + 1, RuleBar.Most());
  std::string line = "[" + std::string(filled, '#') + std::string(kWidth - filled, '.') + "] " +
                     std::to_string(static_cast<int>(done * 100)) + " %, rule " +
                     std::to_string(rule) + " of " + std::to_string(RuleBar.Most());
  // The last column stays free: some terminals go on to the next line from there.
  line.resize(std::min(line.size(), std::max<std::size_t>(width_, 1) - 1));
  out_ << '\r' << line << "\x1B[K" << std::flush;
}

void TerminalProgress::Clear() {
  if (drawn_) out_ << "\r\x1B[K" << std::flush;
  drawn_ = false;
}

}  // namespace zarvo
