#include "platform/jetsql/lexer.h"

#include <cctype>


namespace cp::jetsql {
namespace {

bool IsWordStart(unsigned char c) { return std::isalpha(c) || c == '_' || c >= 0x80; }
bool IsWordChar(unsigned char c) { return IsWordStart(c) || std::isdigit(c); }
bool IsDigit(unsigned char c) { return std::isdigit(c) != 0; }

}  // namespace

std::vector<Token> Tokenize(std::string_view src) {
  std::vector<Token> tokens;
  std::size_t i = 0;
  auto push = [&](Token::Kind kind, std::string text, std::size_t start) {
    tokens.push_back(Token{kind, std::move(text), start, i - start});
  };
  auto invalid = [&](std::size_t start) {
    i = src.size();
    push(Token::Kind::Invalid, std::string(src.substr(start)), start);
  };
  while (i < src.size()) {
    unsigned char c = src[i];
    std::size_t start = i;
    if (std::isspace(c)) {
      ++i;
    } else if (IsWordStart(c)) {
      while (i < src.size() && IsWordChar(src[i])) ++i;
      // Jet's string-returning twins (Chr$) keep the sign in the name.
      if (i < src.size() && src[i] == '$') ++i;
      push(Token::Kind::Word, std::string(src.substr(start, i - start)), start);
    } else if (IsDigit(c) || (c == '.' && i + 1 < src.size() && IsDigit(src[i + 1]))) {
      while (i < src.size() && IsDigit(src[i])) ++i;
      if (i < src.size() && src[i] == '.') {
        ++i;
        while (i < src.size() && IsDigit(src[i])) ++i;
      }
      if (i < src.size() && (src[i] == 'e' || src[i] == 'E')) {
        std::size_t j = i + 1;
        if (j < src.size() && (src[j] == '+' || src[j] == '-')) ++j;
        if (j < src.size() && IsDigit(src[j])) {
          i = j;
          while (i < src.size() && IsDigit(src[i])) ++i;
        }
      }
      if (i < src.size() && IsWordChar(src[i])) {
        invalid(start);
        break;
      }
      push(Token::Kind::Number, std::string(src.substr(start, i - start)), start);
    } else if (c == '\'' || c == '"') {
      std::string text;
      ++i;
      bool closed = false;
      // No engine takes a NUL inside SQL text (SQLite's and libpq's text ends there), so a
      // literal that holds one cannot be translated: it stays unclosed.
      while (i < src.size() && src[i] != '\0') {
        if (src[i] == static_cast<char>(c)) {
          if (i + 1 < src.size() && src[i + 1] == static_cast<char>(c)) {
            text += static_cast<char>(c);
            i += 2;
            continue;
          }
          ++i;
          closed = true;
          break;
        }
        text += src[i++];
      }
      if (!closed) {
        invalid(start);
        break;
      }
      push(Token::Kind::String, std::move(text), start);
    } else if (c == '[' || c == '#') {
      char close = c == '[' ? ']' : '#';
      std::size_t end = src.find(close, i + 1);
      if (end == std::string_view::npos ||
          src.substr(start, end - start).find('\0') != std::string_view::npos) {
        invalid(start);
        break;
      }
      i = end + 1;
      push(c == '[' ? Token::Kind::Bracketed : Token::Kind::Date,
           std::string(src.substr(start + 1, end - start - 1)), start);
    } else if ((c == '<' || c == '>') && i + 1 < src.size() &&
               (src[i + 1] == '=' || (c == '<' && src[i + 1] == '>'))) {
      i += 2;
      push(Token::Kind::Symbol, std::string(src.substr(start, 2)), start);
    } else if (std::string_view("=<>+-*/&(),.;\\^!?:").find(static_cast<char>(c)) !=
               std::string_view::npos) {
      ++i;
      push(Token::Kind::Symbol, std::string(1, static_cast<char>(c)), start);
    } else {
      invalid(start);
    }
  }
  tokens.push_back(Token{Token::Kind::End, {}, src.size(), 0});
  return tokens;
}

}  // namespace cp::jetsql
