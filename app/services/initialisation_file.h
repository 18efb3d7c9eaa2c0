// Initialisation files: sections in square brackets, each with lines of "key=value".
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zarvo {

/// One section of the text of a file, indexed once.
///
/// Names of sections and keys match without regard to the case of ASCII letters, and of several
/// equal ones the first counts. Blanks and tabs around names, keys and values don't belong to them,
/// nor does one pair of equal quotation marks, single or double, around a value. A value ends at
/// its first zero byte. A line whose first character is ";" is a comment; lines that are neither
/// section nor key are skipped. CR LF, LF and CR each end a line.
class InitialisationSection {
 public:
  /// A section that the text hasn't got is an empty one. The text must outlive this.
  InitialisationSection(std::string_view text, std::string_view name);

  /// The integer that the key's value begins with, 0 when it begins with none; the fallback when
  /// there is no such key.
  [[nodiscard]] std::int32_t Integer(std::string_view key, std::int32_t fallback) const;

  /// The key's value, or the fallback when there is no such key; cut to what a buffer of this many
  /// bytes holds beside a terminating zero.
  [[nodiscard]] std::string Text(std::string_view key, std::string_view fallback,
                                 std::size_t buffer_size) const;

  /// The numbers n from 1 to most, ascending, that have a key of this word with n behind it, in
  /// decimal without leading zeros. Takes as long as there are keys, however great most is.
  [[nodiscard]] std::vector<std::int32_t> Numbers(std::string_view word, std::int32_t most) const;

 private:
  struct Entry {
    std::string_view Key;
    std::string_view Value;
  };

  [[nodiscard]] const Entry* Find(std::string_view key) const;

  // Each key once, in alphabetical order.
  std::vector<Entry> entries_;
};

/// False for a text with a line break or a zero byte, which no value of such a file can hold.
[[nodiscard]] bool FitsInitialisationLine(std::string_view value);

/// The text of the file with this value, which must fit in a line. The key's own line is changed
/// where there is one, else a line is added behind the section's last key, and a section that isn't
/// there at the end of the file; all other lines stay as they are, byte for byte. Lines end as the
/// file's first line does. A value that begins or ends with a blank, a tab or a quotation mark gets
/// a pair of quotation marks around it, so that it reads back whole.
[[nodiscard]] std::string WithInitialisationValue(std::string_view text, std::string_view section,
                                                  std::string_view key, std::string_view value);

}  // namespace zarvo
