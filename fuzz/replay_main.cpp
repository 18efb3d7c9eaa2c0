// Feeds the files of the given folders (or the given files) to a fuzz target, one after another.
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

std::size_t Replay(const std::filesystem::path& path) {
  std::size_t count = 0;
  if (std::filesystem::is_directory(path)) {
    for (const auto& entry : std::filesystem::directory_iterator(path)) count += Replay(entry);
    return count;
  }
  std::ifstream in(path, std::ios::binary);
  if (!in) return 0;
  const std::vector<char> bytes(std::istreambuf_iterator<char>(in), {});
  std::printf("%s\n", path.c_str());
  std::fflush(stdout);
  LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
  return 1;
}

}  // namespace

int main(int argc, char** argv) {
  std::size_t count = 0;
  for (int i = 1; i < argc; ++i) count += Replay(argv[i]);
  std::printf("%zu files replayed\n", count);
  return count > 0 ? 0 : 1;
}
