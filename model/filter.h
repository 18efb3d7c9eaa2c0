// The Filter: the document that the editor edits, the engine applies and files hold.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "model/function.h"
#include "model/rule.h"
#include "model/set.h"

namespace zarvo {

/// The fields that describe a Filter, in the order in which they are held.
struct FilterHeader {
  /// The newest file format that this build writes.
  static constexpr std::int32_t kNewestFormatVersion = 6;

  /// The format the Filter was read in, even one newer than the newest.
  std::int32_t FormatVersion = kNewestFormatVersion;
  std::int32_t Locked = 0;                  ///< flag
  std::int32_t ShowInEditorWhenLocked = 0;  ///< flag
  std::string Password;                     ///< scrambled
  std::string PasswordKey;                  ///< one byte, or empty: no password is set
  std::int32_t AutoIncrement = 0;           ///< flag: every save raises Version by one
  std::string Name;
  std::int32_t Version = 0;
  std::string Author;
  std::string Language;
  std::string Description;
  std::string Type;

  friend bool operator==(const FilterHeader&, const FilterHeader&) = default;
};

/// A word about one Filter object rather than about its contents: copying or assigning a Filter
/// leaves the target's word alone, so that a run in progress stays one when a filter is loaded
/// over it. Two words always compare equal.
class RunWord {
 public:
  RunWord() = default;
  RunWord(const RunWord&) {}
  RunWord& operator=(const RunWord&) { return *this; }
  RunWord& operator=(std::int32_t value) {
    value_ = value;
    return *this;
  }
  operator std::int32_t() const { return value_; }
  friend bool operator==(const RunWord&, const RunWord&) { return true; }

 private:
  std::int32_t value_ = 0;
};

struct Filter : FilterHeader {
  RuleList Rules;
  FunctionList Functions;
  SetList Sets;

  /// 1 while the engine applies the filter. Never stored.
  RunWord Applying;
  /// Set to stop a run before its next Rule; cleared when a run starts. Never stored.
  RunWord Cancel;

  /// True when the candidate is the password, and for every candidate when no password is set.
  [[nodiscard]] bool CheckPassword(std::string_view candidate) const;

  /// Stores a new password when the old one is accepted, and then returns true, even for the
  /// formats that store none (those but 1 to 5). draw gives the next value of the process's random
  /// generator, 0 to 32767; versions 4 and 5 draw a new key with it, versions 1 to 3 keep theirs,
  /// so a password set there while the key is empty has no effect.
  [[nodiscard]] bool ChangePassword(std::string_view old_password, std::string_view new_password,
                                    const std::function<int()>& draw);

  friend bool operator==(const Filter&, const Filter&) = default;
};

}  // namespace zarvo
