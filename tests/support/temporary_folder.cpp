#include "tests/support/temporary_folder.h"

#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace zarvo::testing {

TemporaryFolder::TemporaryFolder()
    : path_((std::filesystem::temp_directory_path() / "zarvo-test-XXXXXX").string()) {
  if (::mkdtemp(path_.data()) == nullptr) throw std::runtime_error("no temporary folder");
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  std::filesystem::permissions(path_, std::filesystem::perms::owner_all, ignored);
  std::filesystem::remove_all(path_, ignored);
}

std::string TemporaryFolder::File(std::string_view name) const {
  return path_ + "/" + std::string(name);
}

std::string TemporaryFolder::Write(std::string_view name, std::string_view bytes) const {
  std::string path = File(name);
  std::ofstream out(path, std::ios::binary);
  out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  if (!out.flush()) throw std::runtime_error("can't write " + path);
  return path;
}

std::string TemporaryFolder::Read(std::string_view name) const { return ReadAllBytes(File(name)); }

std::size_t TemporaryFolder::Count() const {
  return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(path_), {}));
}

std::string ReadAllBytes(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) throw std::runtime_error("can't read " + path);
  return {std::istreambuf_iterator<char>(in), {}};
}

}  // namespace zarvo::testing
