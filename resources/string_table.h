#pragma once

#include "resources/string_ids.h"

#include <cstdint>
#include <string_view>

namespace cvlog::resources {

// The texts the component shows, in three languages. The ids are 100..152 and 500..516:
//   100..106  column headers                   132..138  the same, for the log control
//   107..119  log popup menu                   139..151  the same, for the log control
//   120..125  history popup menu               126..127  alert window: button, text
//   128..129  cancel dialog: text, button      130..131  log window: menu, item
//   152, 501  history window caption           500       the same while it deletes records
//   502..509  outcome messages; 509 has one placeholder "%1" for the decimal return code
//   510..511  lines two and three of the question at a series' end
//   512       row that stands for hidden rows  513       the log's name in captions and reports
//   514       row above the current session    515, 516  joiners between method and object
// To add a language, add a strings_<language> pair beside the others, a value here and its
// row in string_table.cpp. To add a text, widen the runs in string_ids.h; each language
// that lacks the text then fails to compile.

enum class Language { English, Japanese, Korean };

/// The text of `id`, valid for the life of the program; empty for any other id.
/// Blanks at either end and "&" mnemonics are part of the text.
std::u16string_view text(Language language, int id);

/// The language for a Windows language id (LANGID). Only its primary language, the low ten
/// bits, counts: 0x11 is Japanese, 0x12 Korean, anything else English.
Language languageForLangId(std::uint16_t windowsLanguageId);

} // namespace cvlog::resources
