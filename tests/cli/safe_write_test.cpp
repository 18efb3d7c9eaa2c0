// A write that fails, in every way and by every command, leaves the old file whole, leaves nothing
// beside it, says so and ends with 2.
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>

#include "model/filter_file.h"
#include "tests/support/builders.h"
#include "tests/support/execute.h"
#include "tests/support/temporary_folder.h"

namespace zarvo {
namespace {

namespace fs = std::filesystem;
using testing::Execute;
using testing::Execution;
using testing::TemporaryFolder;

using Environment = std::vector<std::pair<std::string, std::string>>;

Environment Failing(const std::string& how, long after_bytes = 0) {
  return {{"LD_PRELOAD", ZARVO_FAILING_IO},
          {"ZARVO_FAIL", how},
          {"ZARVO_FAIL_AFTER", std::to_string(after_bytes)},
          // A sanitized program must accept a library before its own.
          {"ASAN_OPTIONS", "verify_asan_link_order=0"}};
}

class SafeWrite : public ::testing::Test {
 protected:
  SafeWrite() {
    Filter filter;
    filter.Description = std::string(3000, 'd');
    folder_.Write("filter.zvf", FilterFileBytes(filter));
    folder_.Write("filter.json", R"({"Description": ")" + std::string(3000, 'd') + "\"}");
    folder_.Write("text", std::string(3000, 't'));
    folder_.Write("out", kOld);
    entries_ = folder_.Count();
  }

  // Each command that writes a file, writing to "out".
  [[nodiscard]] std::vector<std::vector<std::string>> Writers() const {
    const std::string out = folder_.File("out");
    return {{"apply", folder_.File("filter.zvf"), folder_.File("text"), "-o", out},
            {"build", folder_.File("filter.json"), "-o", out},
            {"convert", folder_.File("filter.zvf"), "-o", out, "--keep-format"}};
  }

  void ExpectOldFileWhole(const Environment& environment, const std::string& reason) const {
    for (const std::vector<std::string>& arguments : Writers()) {
      const Execution run = Execute(ZARVO_PROGRAM, arguments, "", environment);
      EXPECT_EQ(run.ExitCode, 2) << arguments[0];
      EXPECT_EQ(run.Output, "");
      EXPECT_EQ(run.Errors, "zarvo: " + folder_.File("out") + ": can't " + reason + "\n")
          << arguments[0];
      EXPECT_EQ(folder_.Read("out"), kOld) << arguments[0];
      EXPECT_EQ(folder_.Count(), entries_) << arguments[0];
    }
  }

  static constexpr const char* kOld = "the old file";
  TemporaryFolder folder_;
  std::size_t entries_ = 0;
};

TEST_F(SafeWrite, WithoutAFailureReplacesTheFile) {
  for (const std::vector<std::string>& arguments : Writers()) {
    EXPECT_EQ(Execute(ZARVO_PROGRAM, arguments, "", Failing("nothing")).ExitCode, 0);
    EXPECT_GE(folder_.Read("out").size(), 3000U);
    EXPECT_EQ(folder_.Count(), entries_);
  }
}

TEST_F(SafeWrite, DiskFullAtTheFirstByte) {
  ExpectOldFileWhole(Failing("full"), "write: No space left on device");
}

TEST_F(SafeWrite, DiskFullOnTheWay) {
  ExpectOldFileWhole(Failing("full", 1000), "write all of it: No space left on device");
}

TEST_F(SafeWrite, ShortWrite) {
  ExpectOldFileWhole(Failing("short", 2999), "write all of it: No space left on device");
}

TEST_F(SafeWrite, FailingSynchronisation) {
  ExpectOldFileWhole(Failing("fsync"), "synchronise: Input/output error");
}

TEST_F(SafeWrite, FailingClose) {
  ExpectOldFileWhole(Failing("close"), "close: Input/output error");
}

TEST_F(SafeWrite, FailingRename) {
  ExpectOldFileWhole(Failing("rename"), "replace: Input/output error");
}

TEST_F(SafeWrite, WhereTheFolderLetsNobodyReplaceTheFileItIsWrittenInPlace) {
  for (const std::vector<std::string>& arguments : Writers()) {
    folder_.Write("out", kOld);
    const Execution run = Execute(ZARVO_PROGRAM, arguments, "", Failing("rename-refused", 1 << 20));
    EXPECT_EQ(run.ExitCode, 0) << run.Errors;
    EXPECT_GE(folder_.Read("out").size(), 3000U);
    EXPECT_EQ(folder_.Count(), entries_);
  }
}

TEST_F(SafeWrite, FailingSynchronisationOfTheFolderIsReportedWithTheNewFileInPlace) {
  for (const std::vector<std::string>& arguments : Writers()) {
    const Execution run = Execute(ZARVO_PROGRAM, arguments, "", Failing("fsync-folder"));
    EXPECT_EQ(run.ExitCode, 2);
    EXPECT_EQ(run.Errors, "zarvo: " + folder_.File("out") +
                              ": can't synchronise its folder: Input/output error\n");
    EXPECT_GE(folder_.Read("out").size(), 3000U);
    EXPECT_EQ(folder_.Count(), entries_);
  }
}

// What permissions forbid can't be seen as root, who may do anything.
class AsAnotherUser : public SafeWrite {
 protected:
  Execution Run(const std::vector<std::string>& arguments, const Environment& environment = {}) {
    if (::getuid() != 0) return Execute(ZARVO_PROGRAM, arguments, "", environment);
    constexpr int kNobody = 65534;
    const std::string id = std::to_string(kNobody);
    EXPECT_EQ(::chown(folder_.File("out").c_str(), kNobody, kNobody), 0);
    if (owns_folder_) {
      EXPECT_EQ(::chown(folder_.Path().c_str(), kNobody, kNobody), 0);
    }
    std::vector<std::string> all = {"--reuid", id, "--regid", id, "--clear-groups", ZARVO_PROGRAM};
    // The program may stand in a folder that only root may enter.
    const fs::path copy = fs::temp_directory_path() / ("zarvo-" + std::to_string(::getpid()));
    fs::copy_file(ZARVO_PROGRAM, copy, fs::copy_options::overwrite_existing);
    const fs::path shim = copy.string() + ".so";
    fs::copy_file(ZARVO_FAILING_IO, shim, fs::copy_options::overwrite_existing);
    fs::permissions(copy, fs::perms(0755));
    fs::permissions(shim, fs::perms(0755));
    all.back() = copy.string();
    all.insert(all.end(), arguments.begin(), arguments.end());
    Environment moved = environment;
    for (auto& [name, value] : moved) {
      if (name == "LD_PRELOAD") value = shim.string();
    }
    Execution run = Execute("/usr/bin/setpriv", all, "", moved);
    fs::remove(copy);
    fs::remove(shim);
    return run;
  }

  bool owns_folder_ = true;
};

TEST_F(AsAnotherUser, UnwritableFileInAWritableFolderIsRefused) {
  fs::permissions(folder_.Path(), fs::perms(0755));
  fs::permissions(folder_.File("out"), fs::perms(0444));
  const Execution run = Run(Writers()[1]);
  EXPECT_EQ(run.ExitCode, 2);
  EXPECT_EQ(run.Errors, "zarvo: " + folder_.File("out") + ": can't write: Permission denied\n");
  EXPECT_EQ(folder_.Read("out"), kOld);
}

TEST_F(AsAnotherUser, UnwritableFolderAndNoFileIsAnError) {
  fs::remove(folder_.File("out"));
  fs::create_directory(folder_.File("closed"));
  fs::permissions(folder_.Path(), fs::perms(0755));
  fs::permissions(folder_.File("closed"), fs::perms(0555));
  folder_.Write("out", kOld);
  const std::string target = folder_.File("closed/out");
  const Execution run = Run({"build", folder_.File("filter.json"), "-o", target});
  EXPECT_EQ(run.ExitCode, 2);
  EXPECT_EQ(run.Errors,
            "zarvo: " + target + ": can't make a temporary file beside it: Permission denied\n");
}

TEST_F(AsAnotherUser, WritableFileInAnUnwritableFolderIsWrittenInPlace) {
  owns_folder_ = false;
  fs::permissions(folder_.Path(), fs::perms(0555));
  const Execution run = Run(Writers()[0]);
  EXPECT_EQ(run.ExitCode, 0) << run.Errors;
  EXPECT_EQ(folder_.Read("out"), std::string(3000, 't'));
}

TEST_F(AsAnotherUser, WrittenInPlaceByAShorterTextIsCut) {
  owns_folder_ = false;
  folder_.Write("out", std::string(9000, 'o'));
  fs::permissions(folder_.Path(), fs::perms(0555));
  EXPECT_EQ(Run(Writers()[0]).ExitCode, 0);
  EXPECT_EQ(folder_.Read("out"), std::string(3000, 't'));
}

TEST_F(AsAnotherUser, FailureInPlaceBringsTheOldContentsBack) {
  owns_folder_ = false;
  fs::permissions(folder_.Path(), fs::perms(0555));
  const Execution run = Run(Writers()[0], Failing("short", 1000));
  EXPECT_EQ(run.ExitCode, 2);
  EXPECT_EQ(run.Errors,
            "zarvo: " + folder_.File("out") + ": can't write all of it: No space left on device\n");
  EXPECT_EQ(folder_.Read("out"), kOld);
}

}  // namespace
}  // namespace zarvo
