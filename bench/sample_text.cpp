#include "bench/sample_text.h"

#include <array>

#include "engine/random.h"

namespace zarvo {
namespace {

constexpr std::array<std::string_view, 64> kWords = {
    "the",   "of",      "and",    "to",     "in",     "a",       "is",      "that",
    "it",    "was",     "for",    "on",     "are",    "as",      "with",    "his",
    "they",  "at",      "be",     "this",   "from",   "have",    "or",      "by",
    "one",   "had",     "not",    "but",    "what",   "all",     "were",    "when",
    "we",    "there",   "can",    "an",     "your",   "which",   "their",   "said",
    "if",    "do",      "will",   "each",   "about",  "how",     "up",      "out",
    "them",  "then",    "she",    "many",   "some",   "so",      "these",   "would",
    "other", "letters", "jackal", "quince", "velvet", "bizarre", "kitchen", "garden",
};

// What stands behind a word, drawn at random: mostly a blank.
constexpr std::array<std::string_view, 16> kBreaks = {
    " ", " ", " ", " ", " ", " ", " ", " ", " ", " ", " ", " ", "  ", ", ", "; ", ". ",
};

constexpr std::size_t kLineLength = 70;
constexpr std::size_t kMarkDistance = 4096;

}  // namespace

std::string SampleText(std::size_t size) {
  RandomGenerator random(1);
  std::string text;
  text.reserve(size + kLineLength);
  std::size_t line_start = 0;
  std::size_t next_mark = kMarkDistance / 2;
  while (text.size() < size) {
    text += kWords[static_cast<std::size_t>(random.Next()) % kWords.size()];
    if (text.size() >= next_mark) {
      text += ' ';
      text += kMark;
      next_mark += kMarkDistance;
    }
    if (text.size() - line_start >= kLineLength) {
      text += '\n';
      line_start = text.size();
    } else {
      text += kBreaks[static_cast<std::size_t>(random.Next()) % kBreaks.size()];
    }
  }
  text.resize(size);
  return text;
}

std::string SampleAlphabet(std::string_view without) {
  std::array<bool, 256> left_out{};
  for (const char byte : without) left_out[static_cast<unsigned char>(byte)] = true;
  std::string alphabet;
  const auto add = [&](std::string_view bytes) {
    for (const char byte : bytes) {
      bool& is_known = left_out[static_cast<unsigned char>(byte)];
      if (!is_known) alphabet += byte;
      is_known = true;
    }
  };
  for (const std::string_view word : kWords) add(word);
  for (const std::string_view between : kBreaks) add(between);
  add(kMark);
  add("\n");
  return alphabet;
}

}  // namespace zarvo
