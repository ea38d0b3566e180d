#include "platform/sqlite/iso_dates.h"

#include <cctype>

#include "platform/jetsql/literals.h"

namespace cp::sqlite {
namespace {

constexpr std::string_view kDay = "[0-9][0-9][0-9][0-9]-[0-9][0-9]-[0-9][0-9]";


// The position just past a quoted token or comment that starts at i, or i when none does.
std::size_t SkipQuotedOrComment(std::string_view sql, std::size_t i) {
  const char c = sql[i];
  if (c == '-' && sql.substr(i, 2) == "--") {
    const std::size_t end = sql.find('\n', i);
    return end == std::string_view::npos ? sql.size() : end + 1;
  }
  if (c == '/' && sql.substr(i, 2) == "/*") {
    const std::size_t end = sql.find("*/", i + 2);
    return end == std::string_view::npos ? sql.size() : end + 2;
  }
  const char close = c == '[' ? ']' : c;
  if (c != '\'' && c != '"' && c != '`' && c != '[') return i;
  // A doubled closing quote stands for itself and the token goes on.
  for (std::size_t j = i + 1; j < sql.size(); ++j) {
    if (sql[j] != close) continue;
    if (close != ']' && j + 1 < sql.size() && sql[j + 1] == close) {
      ++j;
      continue;
    }
    return j + 1;
  }
  return sql.size();
}

// The name in the double-quoted identifier at i (undoubling quotes), or "" when there is none.
std::string QuotedNameAt(std::string_view sql, std::size_t i) {
  if (i >= sql.size() || sql[i] != '"') return {};
  std::string name;
  for (std::size_t j = i + 1; j < sql.size(); ++j) {
    if (sql[j] != '"') {
      name += sql[j];
    } else if (j + 1 < sql.size() && sql[j + 1] == '"') {
      name += '"';
      ++j;
    } else {
      return name;
    }
  }
  return {};
}

}  // namespace

std::string IsoDateCheck(std::string_view column) {
  const std::string c = jetsql::QuotedIdentifier(column);
  return "CHECK (" + c + " IS NULL OR " + c + " GLOB '" + std::string(kDay) + "' OR (" + c +
         " GLOB '" + std::string(kDay) + " [0-9][0-9]:[0-9][0-9]:[0-9][0-9]' AND substr(" + c +
         ", 12) <> '00:00:00'))";
}

std::vector<std::string> IsoDateCheckedColumns(std::string_view createTable) {
  // Only text that SQLite parses counts: the same words inside a comment or a string
  // literal constrain nothing.
  constexpr std::string_view kStart = "CHECK (";
  std::vector<std::string> columns;
  std::size_t i = 0;
  while (i < createTable.size()) {
    const bool wordStart =
        i == 0 || !(std::isalnum(static_cast<unsigned char>(createTable[i - 1])) ||
                    createTable[i - 1] == '_');
    if (wordStart && createTable.substr(i, kStart.size()) == kStart) {
      const std::string name = QuotedNameAt(createTable, i + kStart.size());
      const std::string check = name.empty() ? std::string() : IsoDateCheck(name);
      if (!check.empty() && createTable.substr(i, check.size()) == check) {
        columns.push_back(name);
        i += check.size();
        continue;
      }
    }
    const std::size_t next = SkipQuotedOrComment(createTable, i);
    i = next == i ? i + 1 : next;
  }
  return columns;
}

}  // namespace cp::sqlite
