// The program zarvo itself, run as a user runs it.
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <thread>

#include "engine/random.h"
#include "model/filter_file.h"
#include "tests/support/builders.h"
#include "tests/support/execute.h"
#include "tests/support/temporary_folder.h"

namespace zarvo {
namespace {

using testing::Call;
using testing::Execute;
using testing::Execution;
using testing::FilterOf;
using testing::FromSet;
using testing::Of;
using testing::Replace;
using testing::SetOf;
using testing::Str;
using testing::TemporaryFolder;

Execution Zarvo(const std::vector<std::string>& arguments, const std::string& input = {}) {
  return Execute(ZARVO_PROGRAM, arguments, input);
}

class Commands : public ::testing::Test {
 protected:
  std::string WriteFilter(std::string_view name, Filter filter) const {
    return folder_.Write(name, FilterFileBytes(filter));
  }
  // Replaces "a" by "b".
  [[nodiscard]] std::string SimpleFilter() const {
    return WriteFilter("simple.zvf", FilterOf({Replace(Of({Str("a")}), Of({Str("b")}))}));
  }
  static Filter Locked() {
    Filter filter;
    filter.Name = "Secret";
    filter.Locked = 1;
    return filter;
  }

  TemporaryFolder folder_;
};

TEST_F(Commands, ApplyReadsAFileAndWritesToStandardOutput) {
  const std::string input("a\0a\r\n\xFF", 6);
  const Execution run = Zarvo({"apply", SimpleFilter(), folder_.Write("in", input)});
  EXPECT_EQ(run.ExitCode, 0);
  EXPECT_EQ(run.Output, std::string("b\0b\r\n\xFF", 6));
  EXPECT_EQ(run.Errors, "");
}

TEST_F(Commands, ApplyReadsStandardInputForADashOrNothing) {
  EXPECT_EQ(Zarvo({"apply", SimpleFilter(), "-"}, "banana").Output, "bbnbnb");
  EXPECT_EQ(Zarvo({"apply", SimpleFilter()}, "banana").Output, "bbnbnb");
  EXPECT_EQ(Zarvo({"apply", SimpleFilter()}, "").Output, "");
}

TEST_F(Commands, ApplyWritesToAFile) {
  const Execution run = Zarvo({"apply", SimpleFilter(), "-", "-o", folder_.File("out")}, "aa");
  EXPECT_EQ(run.ExitCode, 0);
  EXPECT_EQ(run.Output, "");
  EXPECT_EQ(folder_.Read("out"), "bb");
}

TEST_F(Commands, ApplyMayWriteOverItsOwnInput) {
  const std::string path = folder_.Write("text", "aa");
  EXPECT_EQ(Zarvo({"apply", SimpleFilter(), path, "--output", path}).ExitCode, 0);
  EXPECT_EQ(folder_.Read("text"), "bb");
}

TEST_F(Commands, ApplyWithASeedGivesTheSameTextAndFollowsTheGenerator) {
  const std::string filter = WriteFilter(
      "random.zvf", FilterOf({FromSet(Of({Str("a")}), ReplacementSource::SetAtRandom, "s")},
                             {SetOf("s", {Of({Str("0")}), Of({Str("1")}), Of({Str("2")})})}));
  const std::string input(300, 'a');
  const Execution run = Zarvo({"apply", filter, "--seed", "4294967295"}, input);
  std::string expected;
  RandomGenerator random(4294967295U);
  for (int i = 0; i < 300; ++i) {
    random.Next();
    expected += static_cast<char>('0' + random.NextUpTo(2));
  }
  EXPECT_EQ(run.Output, expected);
}

TEST_F(Commands, ApplyPrintsEachMessageOnceWithItsCount) {
  const std::string filter = WriteFilter(
      "faulty.zvf", FilterOf({Replace(Of({Str("a")}), Of({Call("Nope(1)"), Call("Up")})),
                              Replace(Of({Str("c")}), Of({Call("Up()")}))}));
  const Execution run = Zarvo({"apply", filter}, "aabac");
  EXPECT_EQ(run.ExitCode, 0);
  EXPECT_EQ(run.Output, "b");
  EXPECT_EQ(
      run.Errors,
      "DEBUG: Incorrect function call: \"Nope(1)\" - function \"Nope\" dosn't exist. (3 times)\n"
      "DEBUG: Incorrect function call: \"Up\" - \"(\" missing. (3 times)\n"
      "DEBUG: Incorrect function call: \"Up()\" - function argument missing. (1 time)\n");
}

TEST_F(Commands, ApplyWorksWithLockedFilters) {
  EXPECT_EQ(Zarvo({"apply", WriteFilter("locked.zvf", Locked())}, "text").Output, "text");
}

TEST_F(Commands, CheckSaysThatAllIsWell) {
  const Execution run = Zarvo({"check", SimpleFilter()});
  EXPECT_EQ(run.ExitCode, 0);
  EXPECT_EQ(run.Output, "Filter OK.\n");
}

TEST_F(Commands, CheckPrintsTheReportAndEndsWith1) {
  Filter filter = FilterOf({Replace(Of({Str("a")}), Of({Call("f(1)")}))});
  filter.Name = "Caf\xE9";
  filter.Rules[0].Name = "R\x80";
  filter.Locked = 1;
  const Execution run = Zarvo({"check", WriteFilter("findings.zvf", filter)});
  EXPECT_EQ(run.ExitCode, 1);
  EXPECT_EQ(
      run.Output,
      "Error report for filter \"Caf\xE9\"\n\nRule \"R\x80\":\nmissing referenced functions:\n"
      "\tf\n\n");
}

TEST_F(Commands, ShowListsAndPrintsJson) {
  Filter filter;
  filter.Name = "\x9Aum";  // s with caron in windows-1250 and 1252, another letter in 1251
  const std::string path = WriteFilter("named.zvf", filter);
  EXPECT_EQ(Zarvo({"show", path}).Output.substr(0, 17), "Name:        šum");
  EXPECT_NE(Zarvo({"show", path, "--json"}).Output.find("\"Name\": \"šum\""), std::string::npos);
  EXPECT_NE(Zarvo({"show", path, "--json", "--code-page", "windows-1251"})
                .Output.find("\"Name\": \"љum\""),
            std::string::npos);
}

TEST_F(Commands, ShowOfALockedFilterNeedsItsPassword) {
  Filter filter = Locked();
  filter.FormatVersion = 4;
  filter.PasswordKey = "x";
  filter.Password = "\x19\x1A\x1B";  // "abc"
  const std::string path = WriteFilter("locked.zvf", filter);
  for (const char* json : {"--json", "--code-page=windows-1252"}) {
    const Execution none = Zarvo({"show", path, json});
    EXPECT_EQ(none.ExitCode, 2);
    EXPECT_EQ(none.Output, "");
    EXPECT_EQ(none.Errors, "zarvo: " + path + " is locked; give its password with --password\n");
    for (const char* wrong : {"abd", "", "日"}) {
      const Execution refused = Zarvo({"show", path, json, "--password", wrong});
      EXPECT_EQ(refused.ExitCode, 2);
      EXPECT_EQ(refused.Output, "");
      EXPECT_EQ(refused.Errors, "zarvo: Sorry, the password is incorrect\n");
    }
    const Execution shown = Zarvo({"show", path, json, "--password", "abc"});
    EXPECT_EQ(shown.ExitCode, 0);
    EXPECT_NE(shown.Output.find("Secret"), std::string::npos);
  }
}

TEST_F(Commands, ShowOfALockedFilterWithoutAPasswordOrToBeShownAsksForNone) {
  EXPECT_EQ(Zarvo({"show", WriteFilter("no-password.zvf", Locked())}).ExitCode, 0);
  Filter filter = Locked();
  filter.FormatVersion = 4;
  filter.PasswordKey = "x";
  filter.Password = "\x19";
  filter.ShowInEditorWhenLocked = 1;
  EXPECT_EQ(Zarvo({"show", WriteFilter("shown.zvf", filter)}).ExitCode, 0);
  filter.ShowInEditorWhenLocked = 0;
  filter.Locked = 0;
  EXPECT_EQ(Zarvo({"show", WriteFilter("unlocked.zvf", filter)}).ExitCode, 0);
}

TEST_F(Commands, PasswordIsAskedForOnATerminalAndNotShown) {
  Filter filter = Locked();
  filter.Locked = 2;  // any value but 0 is on
  filter.FormatVersion = 4;
  filter.PasswordKey = "x";
  filter.Password = "\x19\x1A\x1B";  // "abc"
  const std::string path = WriteFilter("locked.zvf", filter);
  const std::string prompt = "Password of " + path + ": ";
  const Execution right =
      testing::ExecuteOnTerminal(ZARVO_PROGRAM, {"show", path}, prompt, "abc\n");
  EXPECT_EQ(right.ExitCode, 0);
  EXPECT_EQ(right.Output.find(prompt + "\r\nName:        Secret"), 0U) << right.Output;
  const Execution wrong =
      testing::ExecuteOnTerminal(ZARVO_PROGRAM, {"show", path}, prompt, "abd\n");
  EXPECT_EQ(wrong.ExitCode, 2);
  EXPECT_EQ(wrong.Output, prompt + "\r\nzarvo: Sorry, the password is incorrect\r\n");
  const Execution interrupted =
      testing::ExecuteOnTerminal(ZARVO_PROGRAM, {"show", path}, prompt, "\x03");
  EXPECT_EQ(interrupted.ExitCode, -1);
}

TEST_F(Commands, ApplyShowsItsProgressOnATerminalAndRemovesIt) {
  // Slow enough to be seen: passes over a long text that never end, stopped by a Ctrl+C.
  Filter filter = FilterOf({Replace(Of({Str("a")}), Of({Str("a")}))});
  filter.Rules[0].Strict = 1;
  const std::string path = WriteFilter("endless.zvf", filter);
  const std::string text = folder_.Write("text", std::string(100000, 'a'));
  const Execution run = testing::ExecuteOnTerminal(
      ZARVO_PROGRAM, {"apply", path, text, "-o", folder_.File("out")}, "rule 1 of 1", "\x03");
  EXPECT_EQ(run.ExitCode, -1);
  EXPECT_NE(run.Output.find("%, rule 1 of 1"), std::string::npos);
  EXPECT_FALSE(std::filesystem::exists(folder_.File("out")));
}

TEST_F(Commands, ApplyWithoutASeedTakesTheTime) {
  Rule rule = Replace(Of({Str("a")}), Of({Str("b")}));
  rule.Probability = 50;
  const std::string path = WriteFilter("half.zvf", FilterOf({rule}));
  const std::string text(2000, 'a');
  const std::string first = Zarvo({"apply", path}, text).Output;
  for (int second = 0; second < 5; ++second) {
    if (Zarvo({"apply", path}, text).Output != first) return;
    std::this_thread::sleep_for(std::chrono::seconds(1));
  }
  FAIL() << "the same random numbers in every second";
}

TEST_F(Commands, DashIsAStandardStream) {
  const std::string json = R"({"Name": "x"})";
  const Execution built = Zarvo({"build", "-", "-o", "-"}, json);
  EXPECT_EQ(built.ExitCode, 0);
  EXPECT_EQ(built.Output.substr(0, 13), "\x0CZARVO BINARY");
  EXPECT_EQ(Zarvo({"check", "-"}, built.Output).Output, "Filter OK.\n");
  EXPECT_EQ(Zarvo({"apply", "-", "-"}, built.Output).ExitCode, 2);
}

TEST_F(Commands, EmptyPathsAndUnknownCommandsAreRefused) {
  EXPECT_EQ(Zarvo({"apply", SimpleFilter(), ""}).ExitCode, 2);
  EXPECT_EQ(Zarvo({"apply", SimpleFilter(), "-", "-o", ""}, "a").Output, "");
  EXPECT_EQ(Zarvo({"aply"}).Errors.find("There is no command \"aply\".\n"), 0U);
}

TEST_F(Commands, BuildAndConvertSayWhatTheFormatHasNoPlaceFor) {
  const std::string json =
      folder_.Write("old.json", R"({"FormatVersion": 5, "Functions": [{"Name": "f"}]})");
  const std::string out = folder_.File("out.zvf");
  const Execution built = Zarvo({"build", json, "-o", out});
  EXPECT_EQ(built.ExitCode, 0);
  EXPECT_EQ(built.Errors, "zarvo: " + out +
                              ": format version 5 can't hold all of this filter; the "
                              "rest is not in the file\n");
  Filter filter;
  filter.Name = "From the future";
  std::string bytes = FilterFileBytes(filter);
  bytes[13] = 7;
  const std::string newer = folder_.Write("newer.zvf", bytes);
  EXPECT_NE(Zarvo({"convert", newer, "--allow-newer", "--keep-format", "-o", out}).Errors, "");
  EXPECT_EQ(Zarvo({"convert", newer, "--allow-newer", "--newest", "-o", out}).Errors, "");
}

TEST_F(Commands, MessagesCanNotSteerTheTerminal) {
  const std::string json = folder_.Write("red.json", "{\"\\u001b[31m\": 1}");
  EXPECT_EQ(Zarvo({"build", json, "-o", folder_.File("x")}).Errors,
            "zarvo: " + json + ": \\x1B[31m: there is no such key here\n");
}

TEST_F(Commands, OutputToANameOfStandardOutputGoesWhereThatStands) {
  const std::string log = folder_.Write("log", "first\n");
  const Execution run =
      Execute("/bin/sh", {"-c", "echo a | " + std::string(ZARVO_PROGRAM) + " apply " +
                                    SimpleFilter() + " -o /dev/stdout >> " + log});
  EXPECT_EQ(run.ExitCode, 0);
  EXPECT_EQ(folder_.Read("log"), "first\nb\n");
}

TEST_F(Commands, PasswordIsTakenThroughTheCodePage) {
  Filter filter = Locked();
  filter.FormatVersion = 4;
  filter.PasswordKey = "x";
  filter.Password = "\xC1";  // 0xB9, a with ogonek in windows-1250
  const std::string path = WriteFilter("locked.zvf", filter);
  EXPECT_EQ(Zarvo({"show", path, "--password", "ą", "--code-page", "windows-1250"}).ExitCode, 0);
  EXPECT_EQ(Zarvo({"show", path, "--password", "ą"}).ExitCode, 2);
}

TEST_F(Commands, BuildMakesTheBytesThatShowCameFrom) {
  Filter filter = FilterOf({Replace(Of({Str("a")}, 0), Of({Str("b")}, 0))});
  filter.AutoIncrement = 1;
  filter.Version = 5;
  const std::string path = WriteFilter("original.zvf", filter);
  folder_.Write("shown.json", Zarvo({"show", path, "--json"}).Output);
  const Execution run =
      Zarvo({"build", folder_.File("shown.json"), "-o", folder_.File("built.zvf")});
  EXPECT_EQ(run.ExitCode, 0);
  EXPECT_EQ(run.Output + run.Errors, "");
  EXPECT_EQ(folder_.Read("built.zvf"), folder_.Read("original.zvf"));
}

TEST_F(Commands, BuildNamesAMistakeAndLeavesTheOldFile) {
  const std::string json = folder_.Write("wrong.json", R"({"Rules": [{"Nmae": "x"}]})");
  folder_.Write("out.zvf", "old");
  const Execution run = Zarvo({"build", json, "-o", folder_.File("out.zvf")});
  EXPECT_EQ(run.ExitCode, 2);
  EXPECT_EQ(run.Errors, "zarvo: " + json + ": Rules[0].Nmae: there is no such key here\n");
  EXPECT_EQ(folder_.Read("out.zvf"), "old");
}

TEST_F(Commands, ConvertKeepsOrRaisesTheFormat) {
  Filter filter;
  filter.FormatVersion = 3;
  const std::string path = WriteFilter("old.zvf", filter);
  EXPECT_EQ(Zarvo({"convert", path, "-o", folder_.File("kept.zvf"), "--keep-format"}).ExitCode, 0);
  EXPECT_EQ(folder_.Read("kept.zvf"), folder_.Read("old.zvf"));
  EXPECT_EQ(Zarvo({"convert", path, "-o", folder_.File("new.zvf"), "--newest"}).ExitCode, 0);
  EXPECT_EQ(folder_.Read("new.zvf")[13], 6);
}

TEST_F(Commands, ConvertRaisesTheVersionOfAnAutoIncrementingFilter) {
  Filter filter;
  filter.AutoIncrement = 1;
  filter.Version = 7;
  const std::string path = WriteFilter("auto.zvf", filter);
  EXPECT_EQ(Zarvo({"convert", path, "-o", path, "--keep-format"}).ExitCode, 0);
  EXPECT_NE(Zarvo({"show", path}).Output.find("Version:     8"), std::string::npos);
}

TEST_F(Commands, ConvertNeedsExactlyOneOfItsTwoAnswers) {
  const std::string path = SimpleFilter();
  EXPECT_EQ(Zarvo({"convert", path, "-o", folder_.File("x")}).ExitCode, 2);
  EXPECT_EQ(Zarvo({"convert", path, "-o", folder_.File("x"), "--newest", "--keep-format"}).ExitCode,
            2);
  EXPECT_FALSE(std::filesystem::exists(folder_.File("x")));
}

TEST_F(Commands, NewerFormatsAreRefusedUnlessAllowed) {
  Filter filter;
  filter.Name = "From the future";
  std::string bytes = FilterFileBytes(filter);
  bytes[13] = 7;
  const std::string path = folder_.Write("newer.zvf", bytes);
  for (const char* command : {"apply", "check", "show"}) {
    const Execution refused = Zarvo({command, path});
    EXPECT_EQ(refused.ExitCode, 2);
    EXPECT_EQ(refused.Output, "");
    EXPECT_EQ(refused.Errors,
              "zarvo: " + path +
                  ": the file has a newer format than this program knows (FormatVersion at byte "
                  "13); --allow-newer tries to read it\n");
    EXPECT_EQ(Zarvo({command, path, "--allow-newer"}).ExitCode, 0);
  }
  EXPECT_NE(Zarvo({"show", path, "--allow-newer"}).Output.find("From the future"),
            std::string::npos);
  EXPECT_EQ(Zarvo({"convert", path, "--newest", "-o", folder_.File("x")}).ExitCode, 2);
  EXPECT_EQ(Zarvo({"convert", path, "--newest", "--allow-newer", "-o", folder_.File("x")}).ExitCode,
            0);
  bytes[13] = 6;
  EXPECT_EQ(folder_.Read("x"), bytes);
}

TEST_F(Commands, FileThatIsNoFilterIsNamed) {
  const std::string path = folder_.Write("text", "plain text");
  const Execution run = Zarvo({"check", path});
  EXPECT_EQ(run.ExitCode, 2);
  EXPECT_EQ(run.Errors.substr(0, 7 + path.size()), "zarvo: " + path);
  EXPECT_EQ(Zarvo({"check", folder_.File("missing")}).Errors,
            "zarvo: " + folder_.File("missing") + ": can't open: No such file or directory\n");
  EXPECT_EQ(Zarvo({"check", folder_.Path()}).ExitCode, 2);
}

TEST_F(Commands, MissingInputIsAnErrorAndMakesNoOutput) {
  EXPECT_EQ(
      Zarvo({"apply", SimpleFilter(), folder_.File("missing"), "-o", folder_.File("x")}).ExitCode,
      2);
  EXPECT_FALSE(std::filesystem::exists(folder_.File("x")));
}

TEST_F(Commands, UnknownCodePageIsAnError) {
  const Execution run = Zarvo({"show", SimpleFilter(), "--code-page", "UTF-8"});
  EXPECT_EQ(run.ExitCode, 2);
  EXPECT_EQ(run.Errors, "zarvo: \"UTF-8\" is not the name of a single-byte code page\n");
}

TEST_F(Commands, FullStandardOutputIsAnError) {
  const Execution run = Execute(
      "/bin/sh", {"-c", std::string(ZARVO_PROGRAM) + " check " + SimpleFilter() + " > /dev/full"});
  EXPECT_EQ(run.ExitCode, 2);
  EXPECT_EQ(run.Errors, "zarvo: standard output: can't write: No space left on device\n");
}

// A sanitizer takes more addresses than such a limit leaves.
#if !defined(__SANITIZE_ADDRESS__)
TEST_F(Commands, FileLargerThanTheMemoryIsAnError) {
  const std::string text = folder_.Write("text", "");
  const std::string apply = std::string(ZARVO_PROGRAM) + " apply " + SimpleFilter() + " " + text;
  const auto apply_with = [&](const char* kibibytes) {
    return Execute("/bin/sh", {"-c", std::string("ulimit -v ") + kibibytes + " && " + apply +
                                         " | wc -c && exit 0"});
  };
  constexpr std::uintmax_t kSize = std::uintmax_t{300} << 20;
  std::filesystem::resize_file(text, kSize);
  EXPECT_EQ(apply_with("200000").Errors,
            "zarvo: " + text + ": can't read: Cannot allocate memory\n");
  // Enough for the bytes, not for what they are to have beside them.
  const Execution run = apply_with("360000");
  EXPECT_EQ(run.Errors, "");
  EXPECT_EQ(std::stoull(run.Output), kSize);
}
#endif

TEST_F(Commands, WrongUsageEndsWith2AndIsExplained) {
  for (const std::vector<std::string>& arguments :
       std::vector<std::vector<std::string>>{{},
                                             {"bogus"},
                                             {"apply"},
                                             {"apply", SimpleFilter(), "--bogus"},
                                             {"apply", SimpleFilter(), "a", "b"},
                                             {"apply", SimpleFilter(), "--seed", "x"},
                                             {"apply", SimpleFilter(), "--seed", ""},
                                             {"apply", SimpleFilter(), "--seed", "010"},
                                             {"show", SimpleFilter(), "--json=0"},
                                             {"apply", SimpleFilter(), "--seed", "-1"},
                                             {"apply", SimpleFilter(), "--seed", "4294967296"},
                                             {"build", "x.json"},
                                             {"show", SimpleFilter(), "--password"}}) {
    const Execution run = Zarvo(arguments);
    EXPECT_EQ(run.ExitCode, 2) << (arguments.empty() ? "" : arguments.back());
    EXPECT_EQ(run.Output, "");
    EXPECT_NE(run.Errors, "");
  }
}

TEST_F(Commands, HelpIsThereAtEveryLevel) {
  EXPECT_NE(Zarvo({"--help"}).Output.find("apply"), std::string::npos);
  for (const char* command : {"apply", "check", "show", "build", "convert"}) {
    const Execution run = Zarvo({command, "--help"});
    EXPECT_EQ(run.ExitCode, 0);
    EXPECT_NE(run.Output.find(std::string("Usage: zarvo ") + command), std::string::npos);
  }
  EXPECT_EQ(Zarvo({"--version"}).Output, "zarvo 1.3 revision 4\n");
}

}  // namespace
}  // namespace zarvo
