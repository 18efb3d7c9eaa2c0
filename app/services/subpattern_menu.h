// What the String Editor's menu of one library section offers, and which entry a command stands
// for, without the window.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "app/services/subpattern_library.h"

namespace zarvo {

/// The command numbers of the String Editor's menus.
inline constexpr int kAddToPredefinedCommand = 102;
inline constexpr int kMoreCommand = 103;
inline constexpr int kFirstItemCommand = 104;
inline constexpr int kLastItemCommand = 133;

/// Whether the command chooses an item of the menu. What numbers above do is nothing.
[[nodiscard]] constexpr bool IsItemCommand(std::int64_t command) {
  return command >= kFirstItemCommand && command <= kLastItemCommand;
}

struct SubpatternMenuItem {
  std::string Name;
  std::int64_t Command = 0;

  friend bool operator==(const SubpatternMenuItem&, const SubpatternMenuItem&) = default;
};

/// The entries of one section that are to be shown. An item's command comes from its entry's number
/// in the file, but is resolved by counting the shown entries: behind one that is hidden or
/// missing, an item stands for a later entry than its name says, or for none. Commands have always
/// been resolved so.
class SubpatternMenu {
 public:
  SubpatternMenu() = default;
  explicit SubpatternMenu(SubpatternLibrary::Entries entries);

  [[nodiscard]] std::vector<SubpatternMenuItem> Items() const;

  /// The entry that the command stands for, or null. Lives as long as the menu.
  [[nodiscard]] const PredefinedSubpattern* Resolve(std::int64_t command) const;

 private:
  SubpatternLibrary::Entries shown_;
};

}  // namespace zarvo
