// Of a resource that a script has in several languages one is taken.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "rc/report.h"
#include "rc/script.h"

namespace vm::rc {

/// "german", "LANG_GERMAN", "german,SUBLANG_GERMAN_SWISS", "0x407" or "7,1"; nothing for what is no
/// language. A language without its variant has the variant 0.
std::optional<Language> LanguageNamed(std::string_view name);

/// "7,1 (german)"
std::string LanguageText(Language language);

/// Of those with the same type and number (of texts: the same number) the asked language, else another
/// variant of it, else neutral, else the first in the script. Each that is left out is in the report,
/// texts once a table.
std::vector<Resource> SelectLanguage(std::vector<Resource> resources,
                                     const std::optional<Language>& asked, Report& report);

} // namespace vm::rc
