#include "app/services/initialisation_file.h"

#include <algorithm>
#include <charconv>
#include <system_error>
#include <utility>

#include "app/services/leading_integer.h"
#include "model/platform.h"

namespace zarvo {
namespace {

constexpr char Folded(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool FoldedLess(std::string_view a, std::string_view b) {
  return std::ranges::lexicographical_compare(a, b, {}, Folded, Folded);
}

bool FoldedEqual(std::string_view a, std::string_view b) {
  return std::ranges::equal(a, b, {}, Folded, Folded);
}

bool IsBlank(char c) { return c == ' ' || c == '\t'; }
bool IsQuotationMark(char c) { return c == '"' || c == '\''; }
bool IsLineEnd(char c) { return c == '\r' || c == '\n'; }

std::string_view Trimmed(std::string_view text) {
  while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
  return text;
}

enum class LineKind { Other, Section, Key };

struct Line {
  LineKind Kind = LineKind::Other;
  std::string_view Name;   // of the section or the key
  std::string_view Value;  // of the key, as it stands in the file
};

Line ParsedLine(std::string_view line) {
  line = Trimmed(line);
  if (line.empty() || line.front() == ';') return {};
  if (line.front() == '[') {
    const std::size_t end = line.find(']');
    if (end == std::string_view::npos) return {};
    return {LineKind::Section, Trimmed(line.substr(1, end - 1)), {}};
  }
  const std::size_t sign = line.find('=');
  if (sign == std::string_view::npos) return {};
  return {LineKind::Key, Trimmed(line.substr(0, sign)), Trimmed(line.substr(sign + 1))};
}

// Goes through the lines of a text.
class LineReader {
 public:
  explicit LineReader(std::string_view text) : text_(text) {}

  [[nodiscard]] bool AtEnd() const { return position_ == text_.size(); }
  // Where the next line begins, or the text ends.
  [[nodiscard]] std::size_t Position() const { return position_; }
  // What ended the line that was read last; empty when the end of the text did.
  [[nodiscard]] std::string_view LineEnd() const { return line_end_; }

  Line Next() {
    const std::size_t begin = position_;
    while (!AtEnd() && !IsLineEnd(text_[position_])) ++position_;
    const std::size_t end = position_;
    if (!AtEnd()) position_ += text_.substr(position_).starts_with("\r\n") ? 2 : 1;
    line_end_ = text_.substr(end, position_ - end);
    return ParsedLine(text_.substr(begin, end - begin));
  }

  // Reads on until the heading of this section was read. False when there is none.
  bool FindSection(std::string_view name) {
    while (!AtEnd()) {
      const Line line = Next();
      if (line.Kind == LineKind::Section && FoldedEqual(line.Name, name)) return true;
    }
    return false;
  }

 private:
  std::string_view text_;
  std::size_t position_ = 0;
  std::string_view line_end_;
};

std::string_view LineEndOf(std::string_view text) {
  LineReader reader(text);
  reader.Next();
  return reader.LineEnd().empty() ? kTextFileLineEnd : reader.LineEnd();
}

std::string_view WithoutQuotationMarks(std::string_view value) {
  if (value.size() < 2 || value.front() != value.back() || !IsQuotationMark(value.front())) {
    return value;
  }
  return value.substr(1, value.size() - 2);
}

std::string Written(std::string_view value) {
  const auto needs_protection = [](char c) { return IsBlank(c) || IsQuotationMark(c); };
  std::string written(value);
  if (!value.empty() && (needs_protection(value.front()) || needs_protection(value.back()))) {
    written = '"' + written + '"';
  }
  return written;
}

}  // namespace

InitialisationSection::InitialisationSection(std::string_view text, std::string_view name) {
  LineReader reader(text);
  if (!reader.FindSection(name)) return;
  while (!reader.AtEnd()) {
    const Line line = reader.Next();
    if (line.Kind == LineKind::Section) break;
    if (line.Kind != LineKind::Key) continue;
    std::string_view value = WithoutQuotationMarks(line.Value);
    value = value.substr(0, value.find('\0'));
    entries_.push_back({line.Name, value});
  }
  // Stable, so that the first of equal keys stays the first.
  std::ranges::stable_sort(entries_, FoldedLess, &Entry::Key);
  const auto same_key = [](const Entry& a, const Entry& b) { return FoldedEqual(a.Key, b.Key); };
  entries_.erase(std::unique(entries_.begin(), entries_.end(), same_key), entries_.end());
}

const InitialisationSection::Entry* InitialisationSection::Find(std::string_view key) const {
  const auto found = std::ranges::lower_bound(entries_, key, FoldedLess, &Entry::Key);
  if (found == entries_.end() || !FoldedEqual(found->Key, key)) return nullptr;
  return &*found;
}

std::int32_t InitialisationSection::Integer(std::string_view key, std::int32_t fallback) const {
  const Entry* const entry = Find(key);
  return entry == nullptr ? fallback : LeadingInteger(entry->Value);
}

std::string InitialisationSection::Text(std::string_view key, std::string_view fallback,
                                        std::size_t buffer_size) const {
  const Entry* const entry = Find(key);
  const std::string_view text = entry == nullptr ? fallback : entry->Value;
  return std::string(text.substr(0, buffer_size == 0 ? 0 : buffer_size - 1));
}

std::vector<std::int32_t> InitialisationSection::Numbers(std::string_view word,
                                                         std::int32_t most) const {
  std::vector<std::int32_t> numbers;
  for (const Entry& entry : entries_) {
    if (!FoldedEqual(entry.Key.substr(0, word.size()), word)) continue;
    const std::string_view digits = entry.Key.substr(word.size());
    if (digits.starts_with('0')) continue;
    std::uint32_t number = 0;
    const char* const end = digits.data() + digits.size();
    const auto [rest, error] = std::from_chars(digits.data(), end, number);
    if (error != std::errc() || rest != end || std::cmp_greater(number, most)) continue;
    numbers.push_back(static_cast<std::int32_t>(number));
  }
  std::ranges::sort(numbers);
  return numbers;
}

bool FitsInitialisationLine(std::string_view value) {
  return std::ranges::none_of(value, [](char c) { return IsLineEnd(c) || c == '\0'; });
}

std::string WithInitialisationValue(std::string_view text, std::string_view section,
                                    std::string_view key, std::string_view value) {
  const auto spliced = [text](std::size_t position, std::size_t removed, std::string_view added) {
    std::string result;
    result.reserve(text.size() - removed + added.size());
    result.append(text.substr(0, position)).append(added).append(text.substr(position + removed));
    return result;
  };
  const std::string written = Written(value);
  const std::string line_end(LineEndOf(text));
  std::string added = std::string(key) + '=' + written + line_end;

  LineReader reader(text);
  const bool has_section = reader.FindSection(section);
  if (!has_section) added = '[' + std::string(section) + ']' + line_end + added;
  std::size_t position = reader.Position();
  while (!reader.AtEnd()) {
    const Line line = reader.Next();
    if (line.Kind == LineKind::Section) break;
    if (line.Kind != LineKind::Key) continue;
    if (FoldedEqual(line.Name, key)) {
      const auto begin = static_cast<std::size_t>(line.Value.data() - text.data());
      return spliced(begin, line.Value.size(), written);
    }
    position = reader.Position();
  }
  if (position > 0 && !IsLineEnd(text[position - 1])) added = line_end + added;
  return spliced(position, 0, added);
}

}  // namespace zarvo
