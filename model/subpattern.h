// One element of a Pattern: a literal, a list of characters, a character code or a function call.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace zarvo {

/// What the contents of a Subpattern mean. A file may hold any other number: such a kind matches
/// nothing, displays as nothing and is never chosen as most significant. 1 is never produced.
enum class SubpatternKind : std::int32_t {
  String = 0,
  CharacterList = 2,
  NegatedCharacterList = 3,
  CharacterCode = 4,
  Function = 5,
};

struct Subpattern {
  static constexpr std::int32_t kNewestRecordVersion = 1;

  /// The version of this object's record; only version 1 has contents in a file.
  std::int32_t RecordVersion = kNewestRecordVersion;
  SubpatternKind Kind = SubpatternKind::String;
  /// By Kind: the literal text; the characters of the list, one byte each; the character, in the
  /// first byte (empty stands for the byte 0); the call text.
  std::string Contents;
  /// Shown instead of the generated display form unless empty. Never takes part in matching.
  std::string RenderText;

  /// The byte that a Character code stands for.
  [[nodiscard]] char Code() const { return Contents.empty() ? '\0' : Contents.front(); }

  /// How many bytes of a text the Subpattern covers: a String its length, any other kind one.
  [[nodiscard]] std::size_t Width() const {
    return Kind == SubpatternKind::String ? Contents.size() : 1;
  }

  friend bool operator==(const Subpattern&, const Subpattern&) = default;
};

/// The text shown for a Subpattern in pattern fields and lists.
[[nodiscard]] std::string DisplayForm(const Subpattern& subpattern);

/// The name of the Function that a call text calls: everything before the first "(", or all of it
/// when there is none. Nothing is trimmed.
[[nodiscard]] std::string_view CalledFunctionName(std::string_view call_text);

}  // namespace zarvo
