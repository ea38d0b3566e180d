#pragma once
// Jet's rules for the literal values of its SQL: the character that chr(n) gives and the
// instant that a #...# date literal names. Shared by the translator (literals known when
// translating) and the functions registered on SQLite connections (values known per row).
#include <optional>
#include <string>
#include <string_view>

namespace cp::jetsql {

// The UTF-8 text of chr(code): Jet's chr works on the Windows-1252 code page, so 128..159
// give the typographic characters of that page (128 is the euro sign) and 160..255 Latin-1.
// Returns nullopt for a code outside 0..255 (the runtime's "invalid procedure call").
std::optional<std::string> ChrText(long code);

// name as an SQL quoted identifier: in double quotes, each double quote doubled. Both engines
// read it so; the translator and the SQLite schema checks write names through it.
std::string QuotedIdentifier(std::string_view name);

// The text between the two "#" of a Jet date literal as ISO text: "yyyy-mm-dd" at midnight,
// "yyyy-mm-dd hh:mm:ss" otherwise. Accepts m/d/yy, m/d/yyyy (two-digit years: 00-29 are
// 20xx, 30-99 are 19xx) and yyyy-mm-dd, each optionally followed by h:mm[:ss] [AM|PM].
// Returns nullopt for anything else, including a day that does not exist.
std::optional<std::string> DateLiteralToIso(std::string_view text);

}  // namespace cp::jetsql
