#include "model/file_io.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "tests/support/temporary_folder.h"

namespace zarvo {
namespace {

namespace fs = std::filesystem;
using testing::TemporaryFolder;

mode_t ModeOf(const std::string& path) {
  struct stat status {};
  EXPECT_EQ(::stat(path.c_str(), &status), 0);
  return status.st_mode & 07777;
}

TEST(ReadFile, GivesEveryByte) {
  const TemporaryFolder folder;
  std::string all(100000, '\0');
  for (std::size_t i = 0; i < all.size(); ++i) all[i] = static_cast<char>(i * 7);
  std::string bytes = "as before";
  EXPECT_EQ(ReadFile(folder.Write("file", all), bytes), std::nullopt);
  EXPECT_EQ(bytes, all);
  EXPECT_EQ(ReadFile(folder.Write("empty", ""), bytes), std::nullopt);
  EXPECT_EQ(bytes, "");
}

TEST(ReadFile, SaysWhatCanNotBeDone) {
  const TemporaryFolder folder;
  std::string bytes;
  const FileResult missing = ReadFile(folder.File("missing"), bytes);
  ASSERT_TRUE(missing);
  EXPECT_EQ(missing->Message(), folder.File("missing") + ": can't open: No such file or directory");
  const FileResult directory = ReadFile(folder.Path(), bytes);
  ASSERT_TRUE(directory);
  EXPECT_EQ(directory->Message(), folder.Path() + ": can't read: Is a directory");
}

TEST(WriteFile, MakesANewFileWithThePermissionsThatTheUserGivesNewFiles) {
  const TemporaryFolder folder;
  const mode_t old_mask = ::umask(027);
  EXPECT_EQ(WriteFile(folder.File("new"), std::string("a\0b", 3)), std::nullopt);
  ::umask(old_mask);
  EXPECT_EQ(folder.Read("new"), std::string("a\0b", 3));
  EXPECT_EQ(ModeOf(folder.File("new")), 0640U);
  EXPECT_EQ(folder.Count(), 1U);
}

TEST(WriteFile, ReplacesAndKeepsThePermissions) {
  const TemporaryFolder folder;
  const std::string path = folder.Write("file", "a long old text");
  fs::permissions(path, fs::perms(0606));
  EXPECT_EQ(WriteFile(path, "new"), std::nullopt);
  EXPECT_EQ(folder.Read("file"), "new");
  EXPECT_EQ(ModeOf(path), 0606U);
  EXPECT_EQ(folder.Count(), 1U);
}

TEST(WriteFile, ReaderOfTheOldFileKeepsTheOldFile) {
  const TemporaryFolder folder;
  const std::string path = folder.Write("file", "old");
  fs::create_hard_link(path, folder.File("other name"));
  EXPECT_EQ(WriteFile(path, "new"), std::nullopt);
  EXPECT_EQ(folder.Read("other name"), "old");
}

TEST(WriteFile, ASymbolicLinkStaysALink) {
  const TemporaryFolder folder;
  fs::create_directory(folder.File("elsewhere"));
  folder.Write("elsewhere/file", "old");
  fs::create_symlink("elsewhere/file", folder.File("second"));
  fs::create_symlink(folder.File("second"), folder.File("first"));
  EXPECT_EQ(WriteFile(folder.File("first"), "new"), std::nullopt);
  EXPECT_TRUE(fs::is_symlink(folder.File("first")));
  EXPECT_TRUE(fs::is_symlink(folder.File("second")));
  EXPECT_EQ(folder.Read("elsewhere/file"), "new");
}

TEST(WriteFile, ALinkToNothingYetMakesItsTarget) {
  const TemporaryFolder folder;
  fs::create_symlink("target", folder.File("link"));
  EXPECT_EQ(WriteFile(folder.File("link"), "new"), std::nullopt);
  EXPECT_TRUE(fs::is_symlink(folder.File("link")));
  EXPECT_EQ(folder.Read("target"), "new");
}

TEST(WriteFile, ACircleOfLinksIsAnError) {
  const TemporaryFolder folder;
  fs::create_symlink("b", folder.File("a"));
  fs::create_symlink("a", folder.File("b"));
  EXPECT_TRUE(WriteFile(folder.File("a"), "new"));
}

TEST(WriteFile, IntoAMissingFolderIsAnError) {
  const TemporaryFolder folder;
  const FileResult result = WriteFile(folder.File("missing/file"), "new");
  ASSERT_TRUE(result);
  EXPECT_EQ(result->Message(), folder.File("missing/file") +
                                   ": can't make a temporary file beside it: "
                                   "No such file or directory");
}

TEST(WriteFile, ToAFolderIsAnError) {
  const TemporaryFolder folder;
  EXPECT_TRUE(WriteFile(folder.Path(), "new"));
}

TEST(WriteFile, ADeviceIsWrittenToAndStaysOne) {
  EXPECT_EQ(WriteFile("/dev/null", "gone"), std::nullopt);
  EXPECT_TRUE(fs::is_character_file("/dev/null"));
  const FileResult full = WriteFile("/dev/full", "too much");
  ASSERT_TRUE(full);
  EXPECT_EQ(full->Reason, "No space left on device");
}

TEST(WriteFile, ANameOfAnOwnDescriptorIsWrittenToWhereItStands) {
  const TemporaryFolder folder;
  const int descriptor = ::open(folder.Write("log", "").c_str(), O_WRONLY | O_APPEND);
  ASSERT_EQ(::write(descriptor, "first ", 6), 6);
  EXPECT_EQ(WriteFile("/dev/fd/" + std::to_string(descriptor), "second "), std::nullopt);
  EXPECT_EQ(WriteFile("/proc/self/fd/" + std::to_string(descriptor), "third"), std::nullopt);
  ::close(descriptor);
  EXPECT_EQ(folder.Read("log"), "first second third");
}

TEST(WriteFile, APathWithoutAFolderIsInTheCurrentOne) {
  const TemporaryFolder folder;
  const fs::path before = fs::current_path();
  fs::current_path(folder.Path());
  EXPECT_EQ(WriteFile("plain", "new"), std::nullopt);
  fs::current_path(before);
  EXPECT_EQ(folder.Read("plain"), "new");
}

TEST(WriteFile, ALongNameLeavesRoomForTheTemporaryOne) {
  const TemporaryFolder folder;
  const std::string name(255, 'n');
  EXPECT_EQ(WriteFile(folder.File(name), "new"), std::nullopt);
  EXPECT_EQ(folder.Read(name), "new");
}

TEST(WriteFile, LeftoversOfACrashAreNotInTheWay) {
  const TemporaryFolder folder;
  folder.Write(".zarvo-" + std::to_string(::getpid()) + "-0", "left over");
  EXPECT_EQ(WriteFile(folder.File("file"), "new"), std::nullopt);
  EXPECT_EQ(folder.Read("file"), "new");
  EXPECT_EQ(folder.Count(), 2U);
}

}  // namespace
}  // namespace zarvo
