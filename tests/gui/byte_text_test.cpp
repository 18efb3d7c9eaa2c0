// Bytes and the characters that stand for them.
#include "ui/byte_text.h"

#include <gtest/gtest.h>

#include <QMimeData>
#include <memory>

#include "model/code_page.h"
#include "tests/gui/byte_edits.h"

namespace zarvo {
namespace {

using testing::AllBytes;
using testing::kCodePages;
using testing::UsePage;

class ByteText : public ::testing::Test {
 protected:
  ByteText() { UsePage("windows-1252"); }
};

TEST_F(ByteText, EachByteIsOneCharacterInEachPage) {
  for (const char* page : kCodePages) {
    UsePage(page);
    const QString text = FromBytes(AllBytes());
    EXPECT_EQ(text.size(), 255) << page;
    EXPECT_EQ(ToBytes(text), AllBytes()) << page;
    EXPECT_TRUE(IsStorable(text)) << page;
    EXPECT_EQ(Storable(text), text) << page;
  }
}

TEST_F(ByteText, PageDecides) {
  EXPECT_EQ(ToBytes(u"\u20AC\u0105"), "\x80?");
  UsePage("windows-1250");
  EXPECT_EQ(ToBytes(u"\u20AC\u0105"), "\x80\xB9");
  EXPECT_EQ(WindowCodePage().Character(0xB9), U'\u0105');
}

TEST_F(ByteText, LackedCharacterIsOneQuestionMark) {
  EXPECT_EQ(ToBytes(u"a\u4E2Db"), "a?b");
  EXPECT_EQ(ToBytes(u"a\U0001F600b"), "a?b");
  EXPECT_EQ(ToBytes(u"\U0001F600\U0001F600"), "??");
  const char16_t halves[] = {0xDE00, u'a', 0xD83D, u'b', 0xD83D};
  EXPECT_EQ(ToBytes(QStringView(halves, 5)), "?a?b?");
  EXPECT_EQ(ToBytes(QStringView(u"a\0b", 3)), "a?b");
  EXPECT_EQ(Storable(QStringLiteral("a\u4E2Db")), QStringLiteral("a?b"));
  EXPECT_FALSE(IsStorable(u"\u2028"));
}

TEST_F(ByteText, ClipboardHasOrdinaryTextAndTheExactOne) {
  const QString text = QStringLiteral("a\r\nb\rc\nd\r\r\n\u00A0");
  const std::unique_ptr<QMimeData> mime_data = ToMimeData(text);
  EXPECT_EQ(mime_data->text(), QStringLiteral("a\nb\nc\nd\n\n\u00A0"));
  EXPECT_EQ(FromMimeData(*mime_data), text);
}

}  // namespace
}  // namespace zarvo
