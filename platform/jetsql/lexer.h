#pragma once
// Splits Jet SQL text into tokens. Keywords are not told apart here: a keyword is a Word
// that the parser recognises, case-insensitively.
#include <string>
#include <string_view>
#include <vector>

namespace cp::jetsql {

struct Token {
  enum class Kind {
    Word,        // a name or keyword: letters, digits, "_" and non-ASCII letters
    Bracketed,   // [any name], text without the brackets
    Number,      // 12, 1.5, .5, 1E3
    String,      // 'text' or "text", text unescaped
    Date,        // #...#, text between the signs
    Symbol,      // = <> < > <= >= + - * / & ( ) , . ; and the unsupported \ ^ ! ? :
    Invalid,     // text that cannot start a token, or an unclosed literal: runs to the end
    End,
  };
  Kind kind = Kind::End;
  std::string text;
  std::size_t offset = 0;  // byte offset of the token in the source
  std::size_t length = 0;  // byte length of the token in the source
};

// Tokenizes the whole text; the last token is End. An unterminated string, bracket or date
// literal (one holding a NUL counts as such), or a character that Jet SQL does not use,
// becomes an Invalid token that takes the rest of the text, so that the parser reports the
// clause it belongs to.
std::vector<Token> Tokenize(std::string_view source);

}  // namespace cp::jetsql
