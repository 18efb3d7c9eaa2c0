#include "model/code_page.h"

#include <gtest/gtest.h>

namespace zarvo {
namespace {

std::string AllBytes() {
  std::string bytes;
  for (int byte = 0; byte < 256; ++byte) bytes += static_cast<char>(byte);
  return bytes;
}

TEST(CodePage, EveryByteSurvivesTheWayToCharactersAndBackInEachPage) {
  for (const char* name :
       {"windows-1250", "windows-1251", "windows-1252", "windows-1253", "windows-1254",
        "windows-1255", "windows-1256", "windows-1257", "windows-1258", "CP874", "ISO-8859-2"}) {
    const std::optional<CodePage> page = CodePage::Find(name);
    ASSERT_TRUE(page) << name;
    const CodePage::Encoded encoded = page->FromUtf8(page->ToUtf8(AllBytes()));
    EXPECT_FALSE(encoded.Lacking) << name;
    EXPECT_EQ(encoded.Bytes, AllBytes()) << name;
  }
}

TEST(CodePage, UndefinedByteIsTheControlCharacterOfTheSameNumber) {
  const CodePage page = *CodePage::Find("windows-1252");
  EXPECT_EQ(page.Character(0x81), U'\x81');
  EXPECT_EQ(page.Byte(U'\x81'), '\x81');
}

TEST(CodePage, PagesDiffer) {
  EXPECT_EQ(CodePage::Find("windows-1252")->Character(0x80), U'€');
  EXPECT_EQ(CodePage::Find("windows-1250")->Character(0xB9), U'ą');
  EXPECT_EQ(CodePage::Find("windows-1251")->Character(0xE0), U'а');
  EXPECT_EQ(CodePage::Find("windows-1258")->Character(0xCC), U'\u0300');
}

TEST(CodePage, CharacterThatThePageLacksIsNamed) {
  const CodePage page = *CodePage::Find("windows-1252");
  EXPECT_EQ(page.Byte(U'ą'), std::nullopt);
  EXPECT_EQ(page.FromUtf8("caf\xC3\xA9 \xC4\x85").Lacking, U'ą');
  EXPECT_EQ(page.FromUtf8("\xF0\x9F\x98\x80").Lacking, char32_t{0x1F600});
}

TEST(CodePage, NamesOfNoPageAndOfPagesOfSeveralBytesAreRefused) {
  for (const char* name : {"no such page", "UTF-8", "UTF-16", "SHIFT_JIS", "GBK", "EUC-JP", "",
                           "windows-1250//TRANSLIT"}) {
    EXPECT_FALSE(CodePage::Find(name)) << name;
  }
}

TEST(AppendUtf8, OneToFourBytes) {
  std::string text;
  for (const char32_t character : {U'a', U'é', U'€', char32_t{0x1F600}}) {
    AppendUtf8(text, character);
  }
  EXPECT_EQ(text, "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80");
}

}  // namespace
}  // namespace zarvo
