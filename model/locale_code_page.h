// The code page that texts have on the computer of this user.
#pragma once

#include <string>
#include <string_view>

namespace zarvo {

/// The name of the single-byte page in which people write the language of a locale such as
/// "pl_PL.UTF-8" or "sr_RS@latin". The locale's own character set doesn't count: texts are
/// exchanged with systems that know only these pages. Every other language, "C" and "" have
/// "windows-1252". CodePage::Find knows each name.
[[nodiscard]] std::string CodePageOfLocale(std::string_view locale);

/// The page of the locale that this process was started with.
[[nodiscard]] std::string LocaleCodePageName();

}  // namespace zarvo
