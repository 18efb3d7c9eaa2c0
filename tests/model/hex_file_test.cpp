#include "tests/support/hex_file.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace zarvo {
namespace {

TEST(HexFile, ReadsBytesRepeatsAndComments) {
  EXPECT_EQ(testing::ParseHex("# FF\n 0A\tfe 41*3 # 42\r\n\n43", "t"),
            "\x0A\xFE"
            "AAAC");
}

TEST(HexFile, NamesTheLineOfASyntaxError) {
  for (const char* const wrong : {"4", "4G", "414", "41*", "41*0", "41*-1", "41*x", "*2", "-1",
                                  "+1", "0x", "41*99999999999", "41,"}) {
    try {
      testing::ParseHex("00\n" + std::string(wrong), "name");
      ADD_FAILURE() << wrong << " was taken";
    } catch (const std::runtime_error& error) {
      EXPECT_EQ(std::string(error.what()).rfind("name:2: \"", 0), 0U) << error.what();
    }
  }
}

TEST(HexFile, ThatIsMissingFails) {
  EXPECT_THROW(testing::ReadHexFile(ZARVO_TEST_DATA "/golden/missing.hex"), std::runtime_error);
}

}  // namespace
}  // namespace zarvo
