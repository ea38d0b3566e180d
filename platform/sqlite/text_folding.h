#pragma once
// Jet's text comparison: case folded (accented capitals too, 'ÁVILA' = 'ávila'), accents kept
// for equality but ignored first when ordering, so 'ávila' sorts between 'avila' and 'b'.
// Text that is not valid UTF-8 is taken byte for byte.
#include <string>
#include <string_view>

namespace cp::sqlite {

// True when every byte is ASCII (the fast paths below need no Unicode tables).
bool IsAscii(std::string_view s);
// The ASCII lower case of c; other bytes unchanged.
char AsciiLower(char c);
// Case-folded NFC text; with stripMarks, accents removed as well.
std::string Fold(std::string_view s, bool stripMarks);
// -1, 0 or 1 as Jet orders a and b: without case and accents, then without case only.
int CompareJetText(std::string_view a, std::string_view b);
// The code points of UTF-8 text; an invalid byte stands for itself.
std::u32string CodePoints(std::string_view s);
// CodePoints(Fold(s, false)), remembered per thread for the texts seen last: columns hold few
// distinct texts, and LIKE asks for the same ones row after row.
const std::u32string& FoldedCodePoints(std::string_view s);
// The letter without its accent ('á' gives 'a').
char32_t BaseLetter(char32_t cp);

}  // namespace cp::sqlite
