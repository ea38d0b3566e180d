#pragma once
// Numbers and dates to and from text under the component's fixed text conventions
// (independent of the machine's locale): numbers are digits with an optional sign, "."
// grouping thousands in groups of three and "," as the decimal mark ("150.000" is 150000,
// "2,5" is 2.5); plain digits always parse.
#include <optional>
#include <string>
#include <string_view>

#include "platform/core/date.h"

namespace cp {

// Parses a number typed under the text conventions; blanks around it are ignored.
// Returns nullopt for anything else (empty text, letters, misplaced grouping, "1e3").
std::optional<double> ParseNumber(std::string_view text);

// Parses a number as C and SQL write it ("2.5", "-1e3", ".5"), whatever the machine's locale;
// the whole text must be the number. Returns nullopt for anything else, infinities included.
std::optional<double> ParsePlainNumber(std::string_view text);

// Formats a date with the runtime's tokens: d dd m mm yy yyyy (always four digits: "0100")
// h hh n nn s ss; "m"/"mm" right after an hour token or right before a seconds token is
// minutes. Other characters are copied.
std::string FormatDate(Date date, std::string_view pattern);
// Formats a number with a "#,###"-style mask: "," in the mask groups thousands with ".",
// "#" digits are optional (zero gives ""), "0" digits are mandatory; a "," or "." decimal part
// ("#,##0,00") gives decimals with "," as the mark. Rounds half away from zero, as Format does.
std::string FormatNumber(double value, std::string_view mask);

// Parses "yyyy-mm-dd" (optionally with " hh:mm[:ss]" or "Thh:mm[:ss]") or "dd/mm/yyyy".
std::optional<Date> ParseDate(std::string_view text);

}  // namespace cp
