// A Rule: what to look for, and what to put where in each match.
#pragma once

#include <cstdint>
#include <string>

#include "model/pattern.h"
#include "model/record_list.h"

namespace zarvo {

/// Where a Rule's replacement comes from. A file may hold any other number: it replaces nothing.
enum class ReplacementSource : std::int32_t {
  String = 0,         ///< the Rule's own Replacement
  SetInSequence = 1,  ///< the strings of a Set in turn, "Seq"
  SetAtRandom = 2,    ///< a string of a Set drawn at random, "Rnd"
};

struct Rule {
  static constexpr std::int32_t kNewestRecordVersion = 1;
  /// The value of To that makes a Rule insert instead of replace.
  static constexpr std::int32_t kInsertMode = -1;
  static constexpr int kMostProbability = 100;

  std::int32_t RecordVersion = kNewestRecordVersion;
  std::string Name;
  /// How often a match is replaced, in percent. SetProbability keeps it within 0 to 100; a file may
  /// hold any byte.
  std::uint8_t Probability = kMostProbability;
  zarvo::Pattern Pattern;
  zarvo::ReplacementSource ReplacementSource = zarvo::ReplacementSource::String;
  /// Replace mode: the first replaced byte of the match, from 1. Insert mode: how many bytes of the
  /// match stand before the inserted text.
  std::int32_t From = 0;
  /// Replace mode: the last replaced byte of the match, from 1. kInsertMode otherwise.
  std::int32_t To = kInsertMode;
  std::string ReplacementSetName;
  zarvo::Pattern Replacement;
  /// Flag: passes are repeated until one finds no match.
  std::int32_t Strict = 0;
  /// Flag: the first match only (or each string of a Set in sequence once).
  std::int32_t Once = 0;
  /// Set while the Rule is to stop; belongs to a run, is copied with the Rule and never stored.
  std::int32_t Stop = 0;

  [[nodiscard]] bool Inserts() const { return To == kInsertMode; }
  [[nodiscard]] bool DrawsFromSet() const {
    return ReplacementSource == zarvo::ReplacementSource::SetInSequence ||
           ReplacementSource == zarvo::ReplacementSource::SetAtRandom;
  }

  /// Takes a percentage; a value outside 0 to 100 changes nothing.
  void SetProbability(int percent) {
    if (percent >= 0 && percent <= kMostProbability) {
      Probability = static_cast<std::uint8_t>(percent);
    }
  }

  friend bool operator==(const Rule&, const Rule&) = default;
};

using RuleList = RecordList<Rule>;

}  // namespace zarvo
