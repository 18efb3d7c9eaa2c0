// What an object editor does with its list, whether that holds Rules, Sets or Functions.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

#include "model/records.h"

namespace zarvo {

/// Positions are 0-based and must exist.
class EditedList {
 public:
  virtual ~EditedList() = default;
  [[nodiscard]] virtual std::size_t Count() const = 0;
  [[nodiscard]] virtual const std::string& NameAt(std::size_t position) const = 0;
  virtual void Rename(std::size_t position, std::string name) = 0;
  /// Appends an object with the defaults of its kind.
  virtual void AppendNew(std::string name) = 0;
  virtual void RemoveAt(std::size_t position) = 0;
  virtual void Swap(std::size_t first, std::size_t second) = 0;
  /// The record of one object, which is the whole of an exchange file.
  [[nodiscard]] virtual std::string RecordAt(std::size_t position) const = 0;
  /// Appends the object of an exchange file; bytes behind its record are left alone. False where
  /// the record is damaged: then nothing is appended.
  [[nodiscard]] virtual bool AppendRecord(std::string_view bytes) = 0;
};

/// To be called when a user changes a record: one of another version would be stored as its number
/// alone, and the change be lost.
template <typename Record>
void MarkEdited(Record& record) {
  record.RecordVersion = Record::kNewestRecordVersion;
}

/// The list must outlive it.
template <typename Element>
class EditedListOf : public EditedList {
 public:
  explicit EditedListOf(RecordList<Element>& list) : list_(list) {}

  [[nodiscard]] std::size_t Count() const override { return list_.Count(); }
  [[nodiscard]] const std::string& NameAt(std::size_t position) const override {
    return list_[position].Name;
  }
  void Rename(std::size_t position, std::string name) override {
    Element& element = list_[position];
    element.Name = std::move(name);
    MarkEdited(element);
  }
  void AppendNew(std::string name) override {
    Element element;
    element.Name = std::move(name);
    list_.Append(std::move(element));
  }
  void RemoveAt(std::size_t position) override { list_.RemoveAt(position); }
  void Swap(std::size_t first, std::size_t second) override {
    std::swap(list_[first], list_[second]);
  }
  [[nodiscard]] std::string RecordAt(std::size_t position) const override {
    // Storing chooses most significant subpatterns, which is no change to make to the filter here.
    Element element = list_[position];
    std::string bytes;
    Archive archive = Archive::Storing(bytes);
    Serialize(archive, element);
    return bytes;
  }
  [[nodiscard]] bool AppendRecord(std::string_view bytes) override {
    Element element;
    Archive archive = Archive::Loading(bytes);
    if (!RunArchive([&] { Serialize(archive, element); }).Ok()) return false;
    list_.Append(std::move(element));
    return true;
  }

 private:
  RecordList<Element>& list_;
};

}  // namespace zarvo
