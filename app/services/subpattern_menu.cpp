#include "app/services/subpattern_menu.h"

#include <cstddef>
#include <utility>

namespace zarvo {

SubpatternMenu::SubpatternMenu(SubpatternLibrary::Entries entries) : shown_(std::move(entries)) {
  std::erase_if(shown_, [](const PredefinedSubpattern& entry) { return entry.Show == 0; });
}

std::vector<SubpatternMenuItem> SubpatternMenu::Items() const {
  std::vector<SubpatternMenuItem> items;
  for (const PredefinedSubpattern& entry : shown_) {
    items.push_back({entry.Name, std::int64_t{kFirstItemCommand} + entry.Number - 1});
  }
  return items;
}

const PredefinedSubpattern* SubpatternMenu::Resolve(std::int64_t command) const {
  if (!IsItemCommand(command)) return nullptr;
  const auto position = static_cast<std::size_t>(command - kFirstItemCommand);
  return position < shown_.size() ? &shown_[position] : nullptr;
}

}  // namespace zarvo
