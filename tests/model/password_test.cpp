#include "model/password.h"

#include <gtest/gtest.h>

#include "model/filter.h"

namespace zarvo {
namespace {

// A generator that gives one value and counts how often it was asked.
struct FixedDraw {
  int Value = 0;
  int* Calls = nullptr;
  int operator()() const {
    if (Calls != nullptr) ++*Calls;
    return Value;
  }
};

int MustNotDraw() {
  ADD_FAILURE() << "nothing is to be drawn";
  return 0;
}

Filter OfVersion(int version, std::string key = {}, std::string password = {}) {
  Filter filter;
  filter.FormatVersion = version;
  filter.PasswordKey = std::move(key);
  filter.Password = std::move(password);
  return filter;
}

TEST(ScramblePassword, Versions1To4CombineEachByteWithTheKey) {
  for (const int version : {1, 2, 3, 4}) {
    EXPECT_EQ(ScramblePassword("abc", 'x', version), "\x19\x1A\x1B") << version;
    EXPECT_EQ(ScramblePassword("\1", 'x', version), "\x79") << version;
  }
}

TEST(ScramblePassword, Version5KeepsTheByte1) {
  EXPECT_EQ(ScramblePassword("a\1b", 'x', 5), "\x19\1\x1A");
}

TEST(ScramblePassword, ByteEqualToTheKeyEndsTheStoredString) {
  for (const int version : {1, 2, 3, 4, 5}) {
    EXPECT_EQ(ScramblePassword("abxcd", 'x', version), "\x19\x1A") << version;
  }
}

TEST(ScramblePassword, Version5WithTheKeyZeroTurnsTheByteZeroInto1) {
  EXPECT_EQ(ScramblePassword(std::string_view("a\0\1", 3), '\0', 5), "a\1\1");
}

TEST(ScramblePassword, Version5WithTheKey1StillKeepsTheByte1) {
  EXPECT_EQ(ScramblePassword("\1\2", '\1', 5), "\1\3");
}

TEST(ScramblePassword, OtherVersionsGiveNothing) {
  for (const int version : {-1, 0, 6, 7}) EXPECT_EQ(ScramblePassword("abc", 'x', version), "");
}

TEST(CheckPassword, NewFilterAcceptsEveryPassword) {
  const Filter filter;
  EXPECT_TRUE(filter.CheckPassword(""));
  EXPECT_TRUE(filter.CheckPassword("anything"));
}

TEST(CheckPassword, ComparesTheScrambledText) {
  const Filter filter = OfVersion(4, "x", "\x19\x1A\x1B");
  EXPECT_TRUE(filter.CheckPassword("abc"));
  EXPECT_FALSE(filter.CheckPassword("abd"));
  EXPECT_FALSE(filter.CheckPassword("ab"));
  EXPECT_FALSE(filter.CheckPassword(""));
}

TEST(CheckPassword, ComparesUpToTheFirstZeroByte) {
  const Filter filter = OfVersion(4, "x", std::string("\x19\x1A\0zzz", 6));
  EXPECT_TRUE(filter.CheckPassword("ab"));
  EXPECT_TRUE(filter.CheckPassword("abxcd"));
}

TEST(CheckPassword, FilesWithoutAKeyAreCheckedWithTheKeyX) {
  EXPECT_TRUE(OfVersion(1, "x", "\x19").CheckPassword("a"));
  EXPECT_FALSE(OfVersion(1, "x", "\x19").CheckPassword("b"));
}

TEST(CheckPassword, UsesOnlyTheFirstByteOfTheKey) {
  EXPECT_TRUE(OfVersion(4, "xyz", "\x19").CheckPassword("a"));
}

TEST(CheckPassword, KeyInAFormatWithoutScramblingAcceptsAnythingOnlyForAnEmptyPassword) {
  EXPECT_TRUE(OfVersion(6, "x", "").CheckPassword("anything"));
  EXPECT_FALSE(OfVersion(6, "x", "\x19").CheckPassword("a"));
}

TEST(ChangePassword, WrongOldPasswordChangesNothing) {
  Filter filter = OfVersion(4, "x", "\x19");
  EXPECT_FALSE(filter.ChangePassword("b", "c", MustNotDraw));
  EXPECT_EQ(filter.Password, "\x19");
  EXPECT_EQ(filter.PasswordKey, "x");
}

TEST(ChangePassword, Versions1To3KeepTheirKey) {
  for (const int version : {1, 2, 3}) {
    Filter filter = OfVersion(version, "x");
    EXPECT_TRUE(filter.ChangePassword("", "abc", MustNotDraw)) << version;
    EXPECT_EQ(filter.PasswordKey, "x");
    EXPECT_EQ(filter.Password, "\x19\x1A\x1B");
    EXPECT_TRUE(filter.CheckPassword("abc"));
    EXPECT_FALSE(filter.CheckPassword(""));
  }
}

TEST(ChangePassword, Versions1To3WithoutAKeyReportSuccessButAcceptAnyPasswordStill) {
  for (const int version : {1, 2, 3}) {
    Filter filter = OfVersion(version);
    EXPECT_TRUE(filter.ChangePassword("whatever", "abc", MustNotDraw)) << version;
    EXPECT_EQ(filter.PasswordKey, "");
    EXPECT_TRUE(filter.CheckPassword("other"));
  }
}

TEST(ChangePassword, Versions4And5DrawAKeyFrom0To255) {
  for (const int version : {4, 5}) {
    const struct {
      int Drawn;
      unsigned char Key;
    } cases[] = {{0, 0}, {128, 0}, {129, 1}, {16384, 127}, {32766, 254}, {32767, 255}};
    for (const auto& expected : cases) {
      int calls = 0;
      Filter filter = OfVersion(version);
      EXPECT_TRUE(filter.ChangePassword("", "abc", FixedDraw{expected.Drawn, &calls}));
      EXPECT_EQ(calls, 1);
      ASSERT_EQ(filter.PasswordKey.size(), 1U);
      EXPECT_EQ(static_cast<unsigned char>(filter.PasswordKey[0]), expected.Key) << expected.Drawn;
      EXPECT_TRUE(filter.CheckPassword("abc"));
      EXPECT_FALSE(filter.CheckPassword("abd"));
    }
  }
}

TEST(ChangePassword, Version5PasswordWithTheByte1IsStoredUnscrambledAndChecks) {
  Filter filter = OfVersion(5);
  EXPECT_TRUE(filter.ChangePassword("", "a\1b", FixedDraw{16384}));
  EXPECT_EQ(filter.Password[1], '\1');
  EXPECT_TRUE(filter.CheckPassword("a\1b"));
  EXPECT_FALSE(filter.CheckPassword("a\2b"));
}

TEST(ChangePassword, CurrentFormatStoresNothingAndReportsSuccess) {
  Filter filter;
  EXPECT_TRUE(filter.ChangePassword("any old text", "abc", MustNotDraw));
  EXPECT_EQ(filter.Password, "");
  EXPECT_EQ(filter.PasswordKey, "");
  EXPECT_TRUE(filter.CheckPassword("not abc"));
}

TEST(ChangePassword, UnknownVersionsStoreNothing) {
  for (const int version : {0, -3, 7}) {
    Filter filter = OfVersion(version);
    EXPECT_TRUE(filter.ChangePassword("", "abc", MustNotDraw));
    EXPECT_EQ(filter.Password, "");
    EXPECT_EQ(filter.PasswordKey, "");
  }
}

// Whoever locks an unlocked filter, and unlocks it, does it through these two calls.
TEST(ChangePassword, TheNewPasswordReplacesTheOld) {
  Filter filter = OfVersion(4);
  EXPECT_TRUE(filter.ChangePassword("", "first", FixedDraw{20000}));
  EXPECT_FALSE(filter.ChangePassword("second", "third", MustNotDraw));
  EXPECT_TRUE(filter.ChangePassword("first", "second", FixedDraw{9999}));
  EXPECT_TRUE(filter.CheckPassword("second"));
  EXPECT_FALSE(filter.CheckPassword("first"));
}

}  // namespace
}  // namespace zarvo
