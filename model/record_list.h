// The ordered lists that a Filter holds: elements by value behind a record version of their own.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

namespace zarvo {

/// An ordered list of Rules, Sets or Functions. It owns its elements; a copy is deep. Positions are
/// 0-based and must exist, but for InsertBefore, where the count means the end. Adding and removing
/// invalidate references to elements.
template <typename Element>
struct RecordList {
  static constexpr std::int32_t kNewestRecordVersion = 1;

  std::int32_t RecordVersion = kNewestRecordVersion;
  std::vector<Element> Elements;

  [[nodiscard]] std::size_t Count() const { return Elements.size(); }

  Element& operator[](std::size_t position) { return Elements[position]; }
  const Element& operator[](std::size_t position) const { return Elements[position]; }

  // Lists of other versions are stored as their number alone, so one that gets an element by a user
  // becomes one of the newest version.
  void Append(Element element) { InsertBefore(Count(), std::move(element)); }
  void InsertBefore(std::size_t position, Element element) {
    RecordVersion = kNewestRecordVersion;
    Elements.insert(At(position), std::move(element));
  }
  void RemoveAt(std::size_t position) { Elements.erase(At(position)); }
  void RemoveAll() { Elements.clear(); }

  /// The first element of this name, compared byte by byte, or null.
  [[nodiscard]] const Element* Find(std::string_view name) const {
    for (const Element& element : Elements) {
      if (element.Name == name) return &element;
    }
    return nullptr;
  }

  auto begin() { return Elements.begin(); }
  auto end() { return Elements.end(); }
  auto begin() const { return Elements.begin(); }
  auto end() const { return Elements.end(); }

  friend bool operator==(const RecordList&, const RecordList&) = default;

 private:
  auto At(std::size_t position) { return Elements.begin() + static_cast<std::ptrdiff_t>(position); }
};

}  // namespace zarvo
