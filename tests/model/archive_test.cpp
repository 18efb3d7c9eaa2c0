#include "model/archive.h"

#include <gtest/gtest.h>

namespace zarvo {
namespace {

std::string StoredText(std::string text) {
  std::string bytes;
  Archive archive = Archive::Storing(bytes);
  archive.Text("Text", text);
  return bytes;
}

ArchiveResult LoadText(std::string_view bytes, std::string& text) {
  Archive archive = Archive::Loading(bytes);
  return RunArchive([&] { archive.Text("Text", text); });
}

TEST(ArchiveInt32, IsLittleEndianTwosComplement) {
  std::string bytes;
  Archive storing = Archive::Storing(bytes);
  std::int32_t value = 0x12345678;
  storing.Int32("A", value);
  value = -2;
  storing.Int32("B", value);
  EXPECT_EQ(bytes, std::string("\x78\x56\x34\x12\xFE\xFF\xFF\xFF"));
  Archive loading = Archive::Loading(bytes);
  loading.Int32("A", value);
  EXPECT_EQ(value, 0x12345678);
  loading.Int32("B", value);
  EXPECT_EQ(value, -2);
  EXPECT_EQ(loading.Offset(), 8U);
}

TEST(ArchiveText, PrefixGrowsWithTheLength) {
  const struct {
    std::size_t Length;
    std::string Prefix;
  } cases[] = {
      {0, std::string("\0", 1)},
      {1, "\1"},
      {254, "\xFE"},
      {255, std::string("\xFF\xFF\x00", 3)},
      {256, std::string("\xFF\x00\x01", 3)},
      {65533, std::string("\xFF\xFD\xFF", 3)},
      {65534, std::string("\xFF\xFF\xFF\xFE\xFF\x00\x00", 7)},
      {65535, std::string("\xFF\xFF\xFF\xFF\xFF\x00\x00", 7)},
      {70000, std::string("\xFF\xFF\xFF\x70\x11\x01\x00", 7)},
  };
  for (const auto& expected : cases) {
    const std::string text(expected.Length, 'a');
    const std::string bytes = StoredText(text);
    EXPECT_TRUE(bytes == expected.Prefix + text) << expected.Length;
    std::string loaded;
    EXPECT_TRUE(LoadText(bytes, loaded).Ok());
    EXPECT_TRUE(loaded == text) << expected.Length;
  }
}

TEST(ArchiveText, ReaderAcceptsAllThreePrefixesForAShortText) {
  for (const std::string& prefix :
       {std::string("\2"), std::string("\xFF\2\0", 3), std::string("\xFF\xFF\xFF\2\0\0\0", 7)}) {
    std::string text;
    EXPECT_TRUE(LoadText(prefix + "ab", text).Ok());
    EXPECT_EQ(text, "ab");
  }
}

TEST(ArchiveText, WideCharacterMarkerIsAnErrorOfItsOwn) {
  std::string text;
  const ArchiveResult result = LoadText(std::string("\xFF\xFE\xFF\2ab", 6), text);
  EXPECT_EQ(result.Code, ArchiveCode::WideText);
  EXPECT_EQ(result.Field, "Text");
  EXPECT_EQ(result.Offset, 0U);
}

TEST(ArchiveText, EveryTruncationIsTheEndOfTheFile) {
  for (const std::size_t length : {3, 300, 70000}) {
    const std::string bytes = StoredText(std::string(length, 'a'));
    for (const std::size_t kept :
         {std::size_t{0}, std::size_t{1}, std::size_t{2}, bytes.size() / 2, bytes.size() - 1}) {
      std::string text = "as before";
      const ArchiveResult result = LoadText(std::string_view(bytes).substr(0, kept), text);
      EXPECT_EQ(result.Code, ArchiveCode::EndOfFile) << length << " " << kept;
      EXPECT_EQ(text, "as before");
    }
  }
}

TEST(ArchiveText, KeepsZeroBytes) {
  const std::string text("a\0b", 3);
  std::string loaded;
  EXPECT_TRUE(LoadText(StoredText(text), loaded).Ok());
  EXPECT_EQ(loaded, text);
}

TEST(ArchiveCount, NegativeCountsAsZero) {
  Archive archive = Archive::Loading(std::string_view("\xFF\xFF\xFF\xFF", 4));
  EXPECT_EQ(archive.Count("Count", 0, 4), 0U);
}

TEST(ArchiveCount, MoreThanTheBytesLeftCanHoldIsAnError) {
  const std::string bytes("\2\0\0\0abcdefg", 11);
  Archive enough = Archive::Loading(bytes);
  EXPECT_EQ(enough.Count("Count", 0, 3), 2U);
  Archive short_by_one = Archive::Loading(bytes);
  const ArchiveResult result =
      RunArchive([&] { static_cast<void>(short_by_one.Count("Count", 0, 4)); });
  EXPECT_EQ(result.Code, ArchiveCode::CountPastEnd);
  EXPECT_EQ(result.Offset, 0U);
}

TEST(ArchiveResult, MessageNamesTheFieldAndTheByte) {
  Archive archive = Archive::Loading("ab");
  const ArchiveResult result = RunArchive([&] {
    const Archive::Scope rules(archive, "Rules", 2);
    const Archive::Scope pattern(archive, "Pattern");
    std::uint8_t byte = 0;
    archive.Byte("First", byte);
    std::int32_t number = 0;
    archive.Int32("MostSignificant", number);
  });
  EXPECT_EQ(result.Message(),
            "the file ends too early (Rules[2].Pattern.MostSignificant at byte 1)");
}

}  // namespace
}  // namespace zarvo
