// The user's library of ready-made subpatterns: the file "Subpatterns.dat".
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "model/file_io.h"

namespace zarvo {

/// The sections of the file, in their order there.
enum class LibrarySection : std::size_t { Strings, CharacterCodes, CharacterLists };
inline constexpr std::size_t kLibrarySectionCount = 3;

/// One entry of the library.
struct PredefinedSubpattern {
  /// Values of Mode.
  static constexpr std::int32_t kPlainList = 1;
  static constexpr std::int32_t kNegatedList = 0;

  std::string Name;
  /// The string; the one character of a code; the characters of a list.
  std::string Value;
  std::string RenderText;
  /// Of character lists only.
  std::int32_t Mode = kPlainList;
  /// Flag: offered in the String Editor's menu too, and not only in the dialog.
  std::int32_t Show = 0;
  /// The n of the entry's keys, from 1. Entries that are not there leave gaps.
  std::int32_t Number = 0;

  friend bool operator==(const PredefinedSubpattern&, const PredefinedSubpattern&) = default;
};

/// Reads the file anew at each call, since it may be edited by hand at any time.
class SubpatternLibrary {
 public:
  using Entries = std::vector<PredefinedSubpattern>;

  /// Folders end with their separator, so that the file's name is simply appended. The user's own
  /// copy stands before the installation's; an empty user_folder means that there is none.
  SubpatternLibrary(std::string installation_folder, std::string user_folder);

  /// The entries of each section in the file's order, whatever Show says. A missing file or key is
  /// no error; numbers without an entry are skipped.
  [[nodiscard]] std::array<Entries, kLibrarySectionCount> Read() const;
  [[nodiscard]] Entries Read(LibrarySection section) const;

  /// Appends an entry with the number behind the section's count (entry.Number is ignored), and
  /// leaves all other lines of the file as they are. Where the installation's file can't be written
  /// the entry goes into a copy of it in the user's folder, which is made. A text with a line break
  /// or a zero byte, which the file can't hold, is an error, and so is a count that can't grow.
  /// After an error the file is as it was.
  [[nodiscard]] FileResult Append(LibrarySection section, const PredefinedSubpattern& entry);

 private:
  // The user's own copy where there is one.
  [[nodiscard]] std::string CurrentPath() const;
  [[nodiscard]] std::string ReadText() const;
  [[nodiscard]] FileResult Write(const std::string& path, std::string_view text) const;

  std::string installation_path_;
  std::string user_folder_;
};

}  // namespace zarvo
