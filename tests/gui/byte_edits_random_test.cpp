// Random edits against a model that is a plain list.
#include <gtest/gtest.h>

#include <QTest>
#include <QTextDocument>
#include <algorithm>
#include <cstddef>
#include <map>
#include <random>
#include <string>
#include <type_traits>
#include <vector>

#include "tests/gui/byte_edits.h"
#include "ui/byte_text.h"

namespace zarvo {
namespace {

using testing::CanUndo;
using testing::Cursor;
using testing::kLackedEverywhere;
using testing::kPair;
using testing::Paste;
using testing::Select;
using testing::Type;
using testing::UsePage;

// Bytes of one position of the edit: a character, or a line end.
using Units = std::vector<std::string>;

std::string Joined(const Units& units) {
  std::string bytes;
  for (const std::string& unit : units) bytes += unit;
  return bytes;
}

// A line end of two bytes is one unit where the edit takes it for one.
Units Split(const std::string& bytes, bool with_line_ends) {
  Units units;
  for (const char byte : bytes) {
    if (with_line_ends && byte == '\n' && !units.empty() && units.back() == "\r") {
      units.back() += byte;
    } else {
      units.emplace_back(1, byte);
    }
  }
  return units;
}

class RandomUser {
 public:
  explicit RandomUser(unsigned seed) : random_(seed) {}

  int Below(std::size_t limit) {
    return static_cast<int>(random_() % static_cast<std::mt19937::result_type>(limit));
  }

  // Many line ends, no zero.
  std::string Text(std::size_t limit) {
    std::string text;
    for (int left = Below(limit); left > 0; --left) {
      switch (Below(4)) {
        case 0:
          text += '\r';
          break;
        case 1:
          text += '\n';
          break;
        default:
          text += static_cast<char>(1 + Below(255));
      }
    }
    return text;
  }

 private:
  std::mt19937 random_;
};

// Does something at random to the edit and the same to the units. Moves the cursor first.
template <typename Edit>
void EditAtRandom(RandomUser& user, Edit& edit, Units& units) {
  constexpr bool kWithLineEnds = std::is_same_v<Edit, ByteTextEdit>;
  const int size = static_cast<int>(units.size());
  // Mostly where it is already, so that steps of undo grow.
  int from = std::min(Cursor(edit), size);
  if (user.Below(3) == 0) from = user.Below(units.size() + 1);
  const bool selects = user.Below(6) == 0;
  const int to = selects ? std::min(size, from + user.Below(8)) : from;
  Select(edit, from, to);
  const auto replace = [&](int begin, int end, const Units& by) {
    units.erase(units.begin() + begin, units.begin() + end);
    units.insert(units.begin() + begin, by.begin(), by.end());
  };
  switch (user.Below(kWithLineEnds ? 6 : 5)) {
    case 0: {
      const char letter = static_cast<char>('a' + user.Below(26));
      QTest::keyClick(&edit, letter);
      replace(from, to, {std::string(1, letter)});
      break;
    }
    case 1:
      Type(edit, user.Below(2) == 0 ? kPair : kLackedEverywhere);
      replace(from, to, {"?"});
      break;
    case 2: {
      const std::string text = user.Text(6);
      Paste(edit, FromBytes(text) + (text.size() == 3 ? QStringLiteral("\u4E2D") : QString()));
      const std::string stored = text.size() == 3 ? text + "?" : text;
      if (!stored.empty()) replace(from, to, Split(stored, kWithLineEnds));
      break;
    }
    case 3:
      QTest::keyClick(&edit, Qt::Key_Backspace);
      if (from != to || from > 0) replace(from == to ? from - 1 : from, to, {});
      break;
    case 4:
      QTest::keyClick(&edit, Qt::Key_Delete);
      if (from != to || to < size) replace(from, from == to ? to + 1 : to, {});
      break;
    default:
      QTest::keyClick(&edit, Qt::Key_Return);
      replace(from, to, {"\r\n"});
  }
}

TEST(ByteTextEdit, RandomEditsAgreeWithAPlainModel) {
  UsePage("windows-1252");
  ByteTextEdit edit;
  for (unsigned seed = 1; seed <= 20; ++seed) {
    RandomUser user(seed);
    const std::string start = user.Text(200);
    edit.SetBytes(start);
    Units units = Split(start, true);
    // What the text was at each length of the undo history.
    std::map<int, Units> history;
    int steps = edit.document()->availableUndoSteps();
    history[steps] = units;
    for (int step = 0; step < 400; ++step) {
      const int kind = user.Below(8);
      if (kind == 0) {
        edit.undo();
      } else if (kind == 1) {
        edit.redo();
      } else {
        const std::string before = Joined(units);
        EditAtRandom(user, edit, units);
        steps = edit.document()->availableUndoSteps();
        if (Joined(units) != before) history.erase(history.upper_bound(steps), history.end());
        history[steps] = units;
      }
      steps = edit.document()->availableUndoSteps();
      ASSERT_TRUE(history.contains(steps)) << "seed " << seed << ", step " << step;
      units = history[steps];
      ASSERT_EQ(edit.Bytes(), Joined(units)) << "seed " << seed << ", step " << step;
      ASSERT_EQ(edit.document()->characterCount(), static_cast<int>(units.size()) + 1);
    }
    while (CanUndo(edit)) edit.undo();
    ASSERT_EQ(edit.Bytes(), start) << "seed " << seed;
    while (edit.document()->isRedoAvailable()) edit.redo();
    ASSERT_EQ(edit.Bytes(), Joined(history.rbegin()->second)) << "seed " << seed;
  }
}

TEST(ByteLineEdit, RandomEditsAgreeWithAPlainModel) {
  UsePage("windows-1252");
  for (unsigned seed = 1; seed <= 20; ++seed) {
    RandomUser user(seed);
    const std::string start = user.Text(60);
    ByteLineEdit edit;
    edit.SetBytes(start);
    // How far a step goes is the toolkit's business, but it leads to a text that was there.
    std::vector<Units> history{Split(start, false)};
    std::size_t now = 0;
    for (int step = 0; step < 400; ++step) {
      const int kind = user.Below(8);
      if (kind == 0) {
        const bool possible = edit.isUndoAvailable();
        edit.undo();
        while (possible && now > 0 && Joined(history[--now]) != edit.Bytes()) {
        }
      } else if (kind == 1) {
        const bool possible = edit.isRedoAvailable();
        edit.redo();
        while (possible && now + 1 < history.size() && Joined(history[++now]) != edit.Bytes()) {
        }
      } else {
        Units units = history[now];
        EditAtRandom(user, edit, units);
        if (units != history[now]) {
          history.resize(++now);
          history.push_back(units);
        }
      }
      ASSERT_EQ(edit.Bytes(), Joined(history[now])) << "seed " << seed << ", step " << step;
    }
    while (edit.isUndoAvailable()) edit.undo();
    ASSERT_EQ(edit.Bytes(), start) << "seed " << seed;
  }
}

}  // namespace
}  // namespace zarvo
