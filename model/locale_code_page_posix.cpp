#include <algorithm>
#include <array>
#include <cstdlib>

#include "model/locale_code_page.h"

namespace zarvo {
namespace {

constexpr const char* kWestern = "windows-1252";

enum class Script { Latin, Cyrillic };

struct PageOfLanguage {
  std::string_view Language;
  const char* Page;
  // Of the languages with two scripts: the page of the other one.
  const char* InOtherScript = nullptr;
  Script Usual = Script::Latin;
};

// "sh" and "iw" are old codes of Serbo-Croatian and Hebrew that locales still carry.
constexpr auto kPages = std::to_array<PageOfLanguage>({
    {"bs", "windows-1250", "windows-1251", Script::Latin},
    {"cs", "windows-1250"},
    {"hr", "windows-1250"},
    {"hu", "windows-1250"},
    {"pl", "windows-1250"},
    {"ro", "windows-1250"},
    {"sh", "windows-1250", "windows-1251", Script::Latin},
    {"sk", "windows-1250"},
    {"sl", "windows-1250"},
    {"sq", "windows-1250"},
    {"tk", "windows-1250"},

    {"ba", "windows-1251"},
    {"be", "windows-1251"},
    {"bg", "windows-1251"},
    {"kk", "windows-1251"},
    {"ky", "windows-1251"},
    {"mk", "windows-1251"},
    {"mn", "windows-1251"},
    {"ru", "windows-1251"},
    {"sah", "windows-1251"},
    {"sr", "windows-1251", "windows-1250", Script::Cyrillic},
    {"tg", "windows-1251"},
    {"tt", "windows-1251"},
    {"uk", "windows-1251"},

    {"el", "windows-1253"},

    {"az", "windows-1254", "windows-1251", Script::Latin},
    {"tr", "windows-1254"},
    {"uz", "windows-1254", "windows-1251", Script::Latin},

    {"he", "windows-1255"},
    {"iw", "windows-1255"},

    {"ar", "windows-1256"},
    {"ckb", "windows-1256"},
    {"fa", "windows-1256"},
    {"prs", "windows-1256"},
    {"ug", "windows-1256"},
    {"ur", "windows-1256"},

    {"et", "windows-1257"},
    {"lt", "windows-1257"},
    {"lv", "windows-1257"},

    {"vi", "windows-1258"},

    {"th", "CP874"},
});

std::string LowerCase(std::string_view text) {
  std::string lower(text);
  for (char& letter : lower) {
    if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter - 'A' + 'a');
  }
  return lower;
}

// Scripts are told as in "sr_RS@latin" or, by systems with longer names, as in "sr_Latn_RS".
Script ScriptOf(std::string_view locale, Script usual) {
  const auto says = [&](std::string_view word) {
    return locale.find(word) != std::string_view::npos;
  };
  if (says("@latin") || says("_latn") || says("-latn")) return Script::Latin;
  if (says("@cyrillic") || says("_cyrl") || says("-cyrl")) return Script::Cyrillic;
  return usual;
}

}  // namespace

std::string CodePageOfLocale(std::string_view locale) {
  const std::string lower = LowerCase(locale);
  const std::string_view language = std::string_view(lower).substr(0, lower.find_first_of("_-.@"));
  const auto* const found =
      std::find_if(kPages.begin(), kPages.end(),
                   [&](const PageOfLanguage& candidate) { return candidate.Language == language; });
  if (found == kPages.end()) return kWestern;
  if (found->InOtherScript != nullptr && ScriptOf(lower, found->Usual) != found->Usual) {
    return found->InOtherScript;
  }
  return found->Page;
}

std::string LocaleCodePageName() {
  for (const char* variable : {"LC_ALL", "LC_CTYPE", "LANG"}) {
    const char* const locale = std::getenv(variable);
    if (locale != nullptr && *locale != '\0') return CodePageOfLocale(locale);
  }
  return CodePageOfLocale("");
}

}  // namespace zarvo
