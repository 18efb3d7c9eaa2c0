#include "app/services/subpattern_library.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <limits>

#include "tests/support/temporary_folder.h"

namespace zarvo {
namespace {

using namespace std::string_literals;
namespace fs = std::filesystem;
using testing::TemporaryFolder;

constexpr const char* kFile = "Subpatterns.dat";

using Entries = SubpatternLibrary::Entries;
using Names = std::vector<std::string>;

Names NamesOf(const Entries& entries) {
  Names names;
  for (const PredefinedSubpattern& entry : entries) names.push_back(entry.Name);
  return names;
}

class SubpatternLibraryTest : public ::testing::Test {
 protected:
  [[nodiscard]] SubpatternLibrary Library() const {
    return SubpatternLibrary(installation_.Path() + "/", user_.Path() + "/");
  }

  // What a file of these bytes holds.
  [[nodiscard]] Entries Read(const std::string& bytes,
                             LibrarySection section = LibrarySection::Strings) const {
    installation_.Write(kFile, bytes);
    return Library().Read(section);
  }

  // The file of these bytes after the entry went into it.
  std::string Appended(const std::string& bytes, LibrarySection section,
                       const PredefinedSubpattern& entry) {
    installation_.Write(kFile, bytes);
    const FileResult error = Library().Append(section, entry);
    EXPECT_FALSE(error) << error->Message();
    return installation_.Read(kFile);
  }

  TemporaryFolder installation_;
  TemporaryFolder user_;
};

using Reading = SubpatternLibraryTest;

TEST_F(Reading, MissingFileGivesEmptyLists) {
  for (const Entries& entries : Library().Read()) EXPECT_EQ(entries, Entries{});
}

TEST_F(Reading, AFolderInTheFilesPlaceGivesEmptyLists) {
  fs::create_directory(installation_.File(kFile));
  for (const Entries& entries : Library().Read()) EXPECT_EQ(entries, Entries{});
}

TEST_F(Reading, AllKeysOfAllSections) {
  installation_.Write(kFile,
                      "[General]\nStrings=2\nCharCodes=1\nCharLists=2\n"
                      "[Strings]\nShow1=1\nName1=first\nString1=abc\nRender1=r1\n"
                      "Show2=0\nName2=second\nString2=\" d \"\nRender2=r2\n"
                      "[CharCodes]\nShow1=1\nName1=line end\nCode1=13\nRender1=CR\n"
                      "[CharLists]\nShow1=1\nName1=vowels\nList1=aeiou\nMode1=1\nRender1=V\n"
                      "Show2=0\nName2=others\nList2=xyz\nMode2=0\nRender2=W\n");
  const auto lists = Library().Read();
  EXPECT_EQ(lists[0], (Entries{{"first", "abc", "r1", 1, 1, 1}, {"second", " d ", "r2", 1, 0, 2}}));
  EXPECT_EQ(lists[1], (Entries{{"line end", "\r", "CR", 1, 1, 1}}));
  EXPECT_EQ(lists[2],
            (Entries{{"vowels", "aeiou", "V", 1, 1, 1}, {"others", "xyz", "W", 0, 0, 2}}));
  EXPECT_EQ(Library().Read(LibrarySection::Strings), lists[0]);
  EXPECT_EQ(Library().Read(LibrarySection::CharacterCodes), lists[1]);
  EXPECT_EQ(Library().Read(LibrarySection::CharacterLists), lists[2]);
}

TEST_F(Reading, MissingKeysTakeTheirDefaults) {
  installation_.Write(kFile,
                      "[General]\nStrings=1\nCharCodes=1\nCharLists=1\n"
                      "[Strings]\nName1=s\n[CharCodes]\nName1=c\n[CharLists]\nName1=l\n");
  const auto lists = Library().Read();
  EXPECT_EQ(lists[0], (Entries{{"s", "", "", 1, 0, 1}}));
  EXPECT_EQ(lists[1], (Entries{{"c", "\0"s, "", 1, 0, 1}}));
  EXPECT_EQ(lists[2], (Entries{{"l", "", "", PredefinedSubpattern::kPlainList, 0, 1}}));
}

TEST_F(Reading, NumbersWithoutANameAreSkipped) {
  const Entries entries =
      Read("[General]\nStrings=3\n[Strings]\nName1=one\nString2=two\nShow2=1\nName3=three\n");
  EXPECT_EQ(NamesOf(entries), (Names{"one", "three"}));
  EXPECT_EQ(entries[1].Number, 3);
}

TEST_F(Reading, ANameThatStandsForAMissingOneIsSkipped) {
  EXPECT_EQ(NamesOf(Read("[General]\nStrings=3\n[Strings]\n"
                         "Name1=@$&*keyerr\nName2=@$&*keyerr!\nName3=\"@$&*keyerr\"\n")),
            Names{"@$&*keyerr!"});
}

TEST_F(Reading, AnEmptyNameIsAName) {
  EXPECT_EQ(NamesOf(Read("[General]\nStrings=1\n[Strings]\nName1=\n")), Names{""});
}

TEST_F(Reading, CountLargerThanTheEntriesGivesThose) {
  for (const char* const count : {"3", "2000000000", "2147483647", "99999999999999"}) {
    EXPECT_EQ(NamesOf(Read("[General]\nStrings="s + count + "\n[Strings]\nName2=b\nName1=a\n")),
              (Names{"a", "b"}));
  }
}

TEST_F(Reading, EntriesBeyondTheCountAreNotRead) {
  EXPECT_EQ(NamesOf(Read("[General]\nStrings=1\n[Strings]\nName1=a\nName2=b\n")), Names{"a"});
  for (const char* const count : {"0", "-1", "-99999999999", "", "many"}) {
    EXPECT_EQ(Read("[General]\nStrings="s + count + "\n[Strings]\nName1=a\nName0=b\nName-1=c\n"),
              Entries{});
  }
  EXPECT_EQ(Read("[Strings]\nName1=a\n"), Entries{});
}

TEST_F(Reading, LongValuesAreCutToTheirBuffers) {
  const std::string n(64, 'n');
  const std::string s(1024, 's');
  const std::string r(1024, 'r');
  const std::string l(256, 'l');
  installation_.Write(kFile, "[General]\nStrings=2\nCharLists=2\n[Strings]\nName1=" + n +
                                 "\nString1=" + s + "\nRender1=" + r + "\nName2=" + n.substr(1) +
                                 "\nString2=" + s.substr(1) + "\nRender2=" + r.substr(1) +
                                 "\n[CharLists]\nName1=a\nList1=" + l + "\nRender1=" + r +
                                 "\nName2=b\nList2=" + l.substr(1) + "\n");
  const auto lists = Library().Read();
  for (const PredefinedSubpattern& entry : lists[0]) {
    EXPECT_EQ(entry.Name, std::string(63, 'n'));
    EXPECT_EQ(entry.Value, std::string(1023, 's'));
    EXPECT_EQ(entry.RenderText, std::string(1023, 'r'));
  }
  ASSERT_EQ(lists[2].size(), 2U);
  EXPECT_EQ(lists[2][0].Value, std::string(255, 'l'));
  EXPECT_EQ(lists[2][0].RenderText, std::string(1023, 'r'));
  EXPECT_EQ(lists[2][1].Value, std::string(255, 'l'));
}

TEST_F(Reading, ACodeIsTheLowByteOfItsNumber) {
  const auto code = [this](const std::string& number) {
    return Read("[General]\nCharCodes=1\n[CharCodes]\nName1=c\nCode1=" + number + "\n",
                LibrarySection::CharacterCodes)[0]
        .Value;
  };
  EXPECT_EQ(code("0"), "\0"s);
  EXPECT_EQ(code("65"), "A");
  EXPECT_EQ(code("255"), "\xFF");
  EXPECT_EQ(code("321"), "A");
  EXPECT_EQ(code("-1"), "\xFF");
  EXPECT_EQ(code("A"), "\0"s);
}

TEST_F(Reading, ModeAndShowAreKeptAsTheyAre) {
  const Entries entries = Read("[General]\nCharLists=1\n[CharLists]\nName1=l\nMode1=7\nShow1=-2\n",
                               LibrarySection::CharacterLists);
  EXPECT_EQ(entries, (Entries{{"l", "", "", 7, -2, 1}}));
}

TEST_F(Reading, TheUsersOwnCopyStandsBeforeTheInstallations) {
  installation_.Write(kFile, "[General]\nStrings=1\n[Strings]\nName1=installed\n");
  EXPECT_EQ(NamesOf(Library().Read(LibrarySection::Strings)), Names{"installed"});
  user_.Write(kFile, "[General]\nStrings=1\n[Strings]\nName1=own\n");
  EXPECT_EQ(NamesOf(Library().Read(LibrarySection::Strings)), Names{"own"});
  user_.Write(kFile, "");
  EXPECT_EQ(Library().Read(LibrarySection::Strings), Entries{});
}

TEST_F(Reading, WithoutAUserFolderTheInstallationsFileIsRead) {
  installation_.Write(kFile, "[General]\nStrings=1\n[Strings]\nName1=installed\n");
  const SubpatternLibrary library(installation_.Path() + "/", "");
  EXPECT_EQ(NamesOf(library.Read(LibrarySection::Strings)), Names{"installed"});
}

TEST_F(Reading, AMillionNamelessKeysAndAHugeCountTakeNoTime) {
  std::string bytes = "[General]\nStrings=2000000000\nCharCodes=2000000000\n[Strings]\n";
  for (int n = 1; n <= 1'000'000; ++n) bytes += "Show" + std::to_string(n) + "=\n";
  bytes += "Name1999999999=last\n";
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(NamesOf(Read(bytes)), Names{"last"});
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(100));
}

using Appending = SubpatternLibraryTest;

TEST_F(Appending, MakesTheFileWhereThereIsNone) {
  EXPECT_FALSE(Library().Append(LibrarySection::Strings, {"n", "v", "r", 1, 1, 77}));
  EXPECT_EQ(installation_.Read(kFile),
            "[General]\nStrings=1\n[Strings]\nName1=n\nString1=v\nRender1=r\nShow1=1\n");
  EXPECT_EQ(user_.Count(), 0U);
}

TEST_F(Appending, WritesTheKeysOfItsSection) {
  EXPECT_EQ(Appended("", LibrarySection::CharacterCodes, {"n", "\xFFz", "", 0, 0, 0}),
            "[General]\nCharCodes=1\n[CharCodes]\nName1=n\nCode1=255\nRender1=\nShow1=0\n");
  EXPECT_EQ(Appended("", LibrarySection::CharacterCodes, {"n", "", "", 1, 5, 0}),
            "[General]\nCharCodes=1\n[CharCodes]\nName1=n\nCode1=0\nRender1=\nShow1=1\n");
  EXPECT_EQ(Appended("", LibrarySection::CharacterLists, {"n", "abc", "r", 0, 1, 0}),
            "[General]\nCharLists=1\n[CharLists]\nName1=n\nList1=abc\nMode1=0\nRender1=r\n"
            "Show1=1\n");
  EXPECT_EQ(Appended("", LibrarySection::CharacterLists, {"n", "abc", "r", 1, 1, 0}),
            "[General]\nCharLists=1\n[CharLists]\nName1=n\nList1=abc\nMode1=1\nRender1=r\n"
            "Show1=1\n");
}

TEST_F(Appending, LeavesAllOtherLinesAsTheyAre) {
  EXPECT_EQ(Appended("; mine\r\n\r\n[general]\r\n STRINGS = 2 \r\nCharLists=9\r\nodd\r\n"
                     "[Strings]\r\nName1=a\r\nName2=b\n; of lists\r\n[CharLists]\r\nName1=l",
                     LibrarySection::Strings, {"n", "v", "r", 1, 1, 0}),
            "; mine\r\n\r\n[general]\r\n STRINGS = 3 \r\nCharLists=9\r\nodd\r\n"
            "[Strings]\r\nName1=a\r\nName2=b\nName3=n\r\nString3=v\r\nRender3=r\r\nShow3=1\r\n"
            "; of lists\r\n[CharLists]\r\nName1=l");
}

TEST_F(Appending, ReadsBackWhole) {
  std::string bytes;
  for (int byte = 1; byte < 256; ++byte) {
    if (byte != '\r' && byte != '\n') bytes += static_cast<char>(byte);
  }
  const PredefinedSubpattern entry{" \"name\" ", bytes + " ", "'", 0, 1, 1};
  for (const LibrarySection section : {LibrarySection::Strings, LibrarySection::CharacterLists}) {
    PredefinedSubpattern expected = entry;
    if (section == LibrarySection::Strings) expected.Mode = PredefinedSubpattern::kPlainList;
    ASSERT_FALSE(Library().Append(section, entry));
    EXPECT_EQ(Library().Read(section), Entries{expected});
  }
  for (int byte = 0; byte < 256; ++byte) {
    const std::string code(1, static_cast<char>(byte));
    ASSERT_FALSE(Library().Append(LibrarySection::CharacterCodes, {"c", code, "", 1, 0, 0}));
    EXPECT_EQ(Library().Read(LibrarySection::CharacterCodes).back(),
              (PredefinedSubpattern{"c", code, "", 1, 0, byte + 1}));
  }
}

TEST_F(Appending, GetsTheNumberBehindTheCountWhateverIsMissingBefore) {
  installation_.Write(kFile, "[General]\nStrings=5\n[Strings]\nName2=b\n");
  ASSERT_FALSE(Library().Append(LibrarySection::Strings, {"n", "", "", 1, 0, 0}));
  const Entries entries = Library().Read(LibrarySection::Strings);
  EXPECT_EQ(NamesOf(entries), (Names{"b", "n"}));
  EXPECT_EQ(entries[1].Number, 6);
}

TEST_F(Appending, KeysThatWaitBeyondTheCountAreReplaced) {
  EXPECT_EQ(Appended("[General]\nStrings=1\n[Strings]\nString2=old\nName1=a\nRender2=old\n",
                     LibrarySection::Strings, {"n", "v", "r", 1, 1, 0}),
            "[General]\nStrings=2\n[Strings]\nString2=v\nName1=a\nRender2=r\nName2=n\nShow2=1\n");
}

TEST_F(Appending, ANegativeCountIsNone) {
  EXPECT_EQ(Appended("[General]\nStrings=-5\n", LibrarySection::Strings, {"n", "v", "", 1, 0, 0}),
            "[General]\nStrings=1\n[Strings]\nName1=n\nString1=v\nRender1=\nShow1=0\n");
}

TEST_F(Appending, TheLargestNumberIsTheLast) {
  Appended("[General]\nStrings=2147483646\n", LibrarySection::Strings, {"last", "", "", 1, 0, 0});
  const Entries entries = Library().Read(LibrarySection::Strings);
  EXPECT_EQ(NamesOf(entries), Names{"last"});
  EXPECT_EQ(entries[0].Number, std::numeric_limits<std::int32_t>::max());

  const std::string bytes = installation_.Read(kFile);
  const FileResult error = Library().Append(LibrarySection::Strings, {"n", "", "", 1, 0, 0});
  ASSERT_TRUE(error);
  EXPECT_EQ(error->Message(), installation_.File(kFile) +
                                  ": can't add the entry: no number is left behind its section's "
                                  "count");
  EXPECT_EQ(installation_.Read(kFile), bytes);
}

TEST_F(Appending, TextsThatNoLineHoldsAreRefused) {
  const std::string bytes = "[General]\nStrings=1\n";
  installation_.Write(kFile, bytes);
  for (const std::string& text : {"a\r\nb"s, "\n"s, "a\r"s, "a\0b"s}) {
    for (const PredefinedSubpattern& entry : {PredefinedSubpattern{text, "v", "r", 1, 1, 0},
                                              PredefinedSubpattern{"n", text, "r", 1, 1, 0},
                                              PredefinedSubpattern{"n", "v", text, 1, 1, 0}}) {
      const FileResult error = Library().Append(LibrarySection::Strings, entry);
      ASSERT_TRUE(error);
      EXPECT_EQ(error->Message(), installation_.File(kFile) +
                                      ": can't add the entry: a line of the file can't hold a line "
                                      "break or a zero byte");
    }
  }
  EXPECT_EQ(installation_.Read(kFile), bytes);
  EXPECT_EQ(user_.Count(), 0U);
}

TEST_F(Appending, GoesIntoTheUsersCopyWhereThereIsOne) {
  installation_.Write(kFile, "[General]\nStrings=7\n");
  user_.Write(kFile, "[General]\nStrings=1\n");
  ASSERT_FALSE(Library().Append(LibrarySection::Strings, {"n", "v", "", 1, 0, 0}));
  EXPECT_EQ(installation_.Read(kFile), "[General]\nStrings=7\n");
  EXPECT_EQ(user_.Read(kFile),
            "[General]\nStrings=2\n[Strings]\nName2=n\nString2=v\nRender2=\nShow2=0\n");
}

TEST_F(Appending, WithoutAnInstallationFolderMakesTheUsers) {
  const std::string user_folder = user_.Path() + "/a/b/";
  SubpatternLibrary library(installation_.Path() + "/missing/", user_folder);
  ASSERT_FALSE(library.Append(LibrarySection::Strings, {"n", "v", "", 1, 0, 0}));
  EXPECT_EQ(NamesOf(library.Read(LibrarySection::Strings)), Names{"n"});
  EXPECT_EQ(user_.Read(std::string("a/b/") + kFile),
            "[General]\nStrings=1\n[Strings]\nName1=n\nString1=v\nRender1=\nShow1=0\n");
}

TEST_F(Appending, SaysWhichFolderCannotBeMade) {
  user_.Write("file", "");
  const std::string user_folder = user_.Path() + "/file/folder/";
  SubpatternLibrary library(installation_.Path() + "/missing/", user_folder);
  const FileResult error = library.Append(LibrarySection::Strings, {"n", "v", "", 1, 0, 0});
  ASSERT_TRUE(error);
  EXPECT_EQ(error->Message(), user_folder + ": can't make the folder: Not a directory");
}

TEST_F(Appending, WithoutAUserFolderSaysWhyTheFileCannotBeWritten) {
  const std::string folder = installation_.Path() + "/missing/";
  const FileResult error =
      SubpatternLibrary(folder, "").Append(LibrarySection::Strings, {"n", "v", "", 1, 0, 0});
  ASSERT_TRUE(error);
  EXPECT_EQ(error->Path, folder + kFile);
  EXPECT_EQ(error->Reason, "No such file or directory");
}

TEST_F(Appending, AFileThatCannotBeReadIsNotReplaced) {
  fs::create_directory(user_.File(kFile));
  const FileResult error = Library().Append(LibrarySection::Strings, {"n", "v", "", 1, 0, 0});
  ASSERT_TRUE(error);
  EXPECT_EQ(error->Message(), user_.File(kFile) + ": can't read: Is a directory");
  EXPECT_EQ(installation_.Count(), 0U);
}

// While this stands, the user is one whom permissions bind: root is nobody meanwhile.
class OrdinaryUser {
 public:
  OrdinaryUser() : before_(::geteuid()) {
    if (before_ == 0) {
      EXPECT_EQ(::seteuid(kNobody), 0);
    }
  }
  ~OrdinaryUser() {
    if (before_ == 0) {
      EXPECT_EQ(::seteuid(0), 0);
    }
  }
  OrdinaryUser(const OrdinaryUser&) = delete;
  OrdinaryUser& operator=(const OrdinaryUser&) = delete;

  // Gives the folder to that user.
  static void Own(const std::string& path) {
    if (::geteuid() == 0) {
      EXPECT_EQ(::chown(path.c_str(), kNobody, kNobody), 0);
    }
  }

 private:
  static constexpr uid_t kNobody = 65534;
  uid_t before_;
};

TEST_F(Appending, WhereTheInstallationCannotBeWrittenGoesIntoACopyInTheUsersFolder) {
  const std::string bytes = "; installed\r\n[General]\r\nStrings=1\r\n[Strings]\r\nName1=a\r\n";
  installation_.Write(kFile, bytes);
  ASSERT_EQ(::chmod(installation_.File(kFile).c_str(), 0444), 0);
  ASSERT_EQ(::chmod(installation_.Path().c_str(), 0555), 0);
  OrdinaryUser::Own(user_.Path());
  {
    const OrdinaryUser ordinary_user;
    SubpatternLibrary library = Library();
    for (const char* const name : {"b", "c"}) {
      const FileResult error = library.Append(LibrarySection::Strings, {name, "v", "", 1, 0, 0});
      EXPECT_FALSE(error) << error->Message();
    }
    EXPECT_EQ(NamesOf(library.Read(LibrarySection::Strings)), (Names{"a", "b", "c"}));
  }
  ASSERT_EQ(::chmod(installation_.Path().c_str(), 0755), 0);
  EXPECT_EQ(installation_.Read(kFile), bytes);
  EXPECT_EQ(user_.Read(kFile),
            "; installed\r\n[General]\r\nStrings=3\r\n[Strings]\r\nName1=a\r\n"
            "Name2=b\r\nString2=v\r\nRender2=\r\nShow2=0\r\n"
            "Name3=c\r\nString3=v\r\nRender3=\r\nShow3=0\r\n");
}

// While this stands, no file can grow beyond so many bytes: a write is cut there, as on a disk that
// fills up.
class NoRoomBeyond {
 public:
  explicit NoRoomBeyond(rlim_t bytes) {
    handler_ = std::signal(SIGXFSZ, SIG_IGN);
    EXPECT_EQ(::getrlimit(RLIMIT_FSIZE, &before_), 0);
    const rlimit limit{bytes, before_.rlim_max};
    EXPECT_EQ(::setrlimit(RLIMIT_FSIZE, &limit), 0);
  }
  ~NoRoomBeyond() {
    EXPECT_EQ(::setrlimit(RLIMIT_FSIZE, &before_), 0);
    std::signal(SIGXFSZ, handler_);
  }
  NoRoomBeyond(const NoRoomBeyond&) = delete;
  NoRoomBeyond& operator=(const NoRoomBeyond&) = delete;

 private:
  rlimit before_{};
  void (*handler_)(int);
};

TEST_F(Appending, ADiskThatFillsUpLeavesTheFileAsItWas) {
  const std::string bytes = "[General]\nStrings=1\n[Strings]\nName1=a\n; " + std::string(5000, 'c');
  for (const TemporaryFolder* const folder : {&installation_, &user_}) {
    folder->Write(kFile, bytes);
    FileResult error;
    {
      const NoRoomBeyond no_room(bytes.size() + 10);
      error = Library().Append(LibrarySection::Strings, {"n", "v", "", 1, 0, 0});
    }
    ASSERT_TRUE(error);
    EXPECT_EQ(error->Message(),
              user_.File(kFile) + ": can't write all of it: No space left on device");
    EXPECT_EQ(folder->Read(kFile), bytes);
    EXPECT_EQ(folder->Count(), 1U);
  }
  ASSERT_FALSE(Library().Append(LibrarySection::Strings, {"n", "v", "", 1, 0, 0}));
  EXPECT_EQ(NamesOf(Library().Read(LibrarySection::Strings)), (Names{"a", "n"}));
}

}  // namespace
}  // namespace zarvo
