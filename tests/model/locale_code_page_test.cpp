#include "model/locale_code_page.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>
#include <utility>
#include <vector>

#include "model/code_page.h"

namespace zarvo {
namespace {

const std::vector<std::pair<const char*, const char*>>& Cases() {
  static const std::vector<std::pair<const char*, const char*>> cases = {
      {"pl_PL.UTF-8", "windows-1250"},
      {"cs_CZ.UTF-8", "windows-1250"},
      {"hu_HU.ISO-8859-2", "windows-1250"},
      {"sk_SK", "windows-1250"},
      {"sl_SI", "windows-1250"},
      {"hr_HR@euro", "windows-1250"},
      {"ro_RO", "windows-1250"},
      {"sq_AL", "windows-1250"},
      {"bs_BA", "windows-1250"},
      {"bs_BA@cyrillic", "windows-1251"},
      {"sh_YU", "windows-1250"},

      {"ru_RU.KOI8-R", "windows-1251"},
      {"uk_UA.UTF-8", "windows-1251"},
      {"bg_BG", "windows-1251"},
      {"be_BY", "windows-1251"},
      {"mk_MK", "windows-1251"},
      {"kk_KZ", "windows-1251"},
      {"sah_RU", "windows-1251"},

      {"sr_RS", "windows-1251"},
      {"sr_RS.UTF-8", "windows-1251"},
      {"sr_RS@latin", "windows-1250"},
      {"sr_RS.UTF-8@latin", "windows-1250"},
      {"sr_Latn_RS", "windows-1250"},
      {"sr-Latn-RS", "windows-1250"},
      {"sr_Cyrl_RS", "windows-1251"},

      {"el_GR.UTF-8", "windows-1253"},
      {"tr_TR.UTF-8", "windows-1254"},
      {"az_AZ", "windows-1254"},
      {"az_AZ@cyrillic", "windows-1251"},
      {"uz_UZ", "windows-1254"},
      {"uz_UZ@cyrillic", "windows-1251"},
      {"he_IL.UTF-8", "windows-1255"},
      {"iw_IL", "windows-1255"},
      {"ar_EG.UTF-8", "windows-1256"},
      {"fa_IR", "windows-1256"},
      {"ur_PK", "windows-1256"},
      {"et_EE", "windows-1257"},
      {"lv_LV", "windows-1257"},
      {"lt_LT", "windows-1257"},
      {"vi_VN", "windows-1258"},
      {"th_TH", "CP874"},

      {"en_US.UTF-8", "windows-1252"},
      {"de_DE@euro", "windows-1252"},
      {"fr_FR", "windows-1252"},
      {"ja_JP.UTF-8", "windows-1252"},
      {"C", "windows-1252"},
      {"C.UTF-8", "windows-1252"},
      {"POSIX", "windows-1252"},
      {"", "windows-1252"},
      // Words that begin like a language, and parts of a locale that look like one.
      {"polish", "windows-1252"},
      {"p", "windows-1252"},
      {"en_PL", "windows-1252"},
      {"_pl", "windows-1252"},
      // Spellings.
      {"PL_pl", "windows-1250"},
      {"pl", "windows-1250"},
      {"pl.UTF-8", "windows-1250"},
      {"ru@euro", "windows-1251"},
  };
  return cases;
}

TEST(CodePageOfLocale, PageOfTheLanguage) {
  for (const auto& [locale, page] : Cases()) EXPECT_EQ(CodePageOfLocale(locale), page) << locale;
}

TEST(CodePageOfLocale, EveryPageIsThere) {
  for (const auto& [locale, page] : Cases()) {
    EXPECT_TRUE(CodePage::Find(CodePageOfLocale(locale))) << locale << ", " << page;
  }
}

// A variable of the environment with another value, until the end of the scope.
class Variable {
 public:
  // Null unsets it.
  Variable(const char* name, const char* value) : name_(name) {
    const char* const before = std::getenv(name);
    if (before != nullptr) before_ = before;
    Set(value);
  }
  ~Variable() { Set(before_ ? before_->c_str() : nullptr); }
  Variable(const Variable&) = delete;
  Variable& operator=(const Variable&) = delete;

 private:
  void Set(const char* value) const {
    if (value != nullptr) {
      ::setenv(name_, value, 1);
    } else {
      ::unsetenv(name_);
    }
  }

  const char* name_;
  std::optional<std::string> before_;
};

TEST(LocaleCodePageName, FirstOfTheVariablesThatIsNotEmpty) {
  struct Case {
    const char* All;
    const char* Characters;
    const char* Language;
    const char* Page;
  };
  const Case cases[] = {
      {"pl_PL", "ru_RU", "el_GR", "windows-1250"},
      {nullptr, "ru_RU", "el_GR", "windows-1251"},
      {"", "ru_RU", "el_GR", "windows-1251"},
      {nullptr, nullptr, "el_GR", "windows-1253"},
      {"", "", "el_GR", "windows-1253"},
      {nullptr, nullptr, nullptr, "windows-1252"},
      {"", "", "", "windows-1252"},
      {"C", "ru_RU", "el_GR", "windows-1252"},
  };
  for (const Case& one : cases) {
    const Variable all("LC_ALL", one.All);
    const Variable characters("LC_CTYPE", one.Characters);
    const Variable language("LANG", one.Language);
    EXPECT_EQ(LocaleCodePageName(), one.Page);
  }
}

}  // namespace
}  // namespace zarvo
