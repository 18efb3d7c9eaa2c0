// A folder for one test.
#pragma once

#include <string>
#include <string_view>

namespace zarvo::testing {

/// Made empty, and removed with all that is in it.
class TemporaryFolder {
 public:
  TemporaryFolder();
  ~TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  [[nodiscard]] const std::string& Path() const { return path_; }
  [[nodiscard]] std::string File(std::string_view name) const;

  /// Writes and reads by the language's own streams, not by the code under test.
  std::string Write(std::string_view name, std::string_view bytes) const;
  [[nodiscard]] std::string Read(std::string_view name) const;
  /// How many entries the folder has.
  [[nodiscard]] std::size_t Count() const;

 private:
  std::string path_;
};

/// The bytes of a file that must be there.
std::string ReadAllBytes(const std::string& path);

}  // namespace zarvo::testing
