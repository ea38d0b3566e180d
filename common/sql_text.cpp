#include "common/sql_text.h"

#include <limits>

#include "common/error_handler.h"

namespace cp {
namespace {

std::string ReplaceAll(const std::string& text, const std::string& from, const std::string& to) {
  std::string out;
  out.reserve(text.size());
  std::size_t start = 0;
  for (std::size_t hit; (hit = text.find(from, start)) != std::string::npos;
       start = hit + from.size()) {
    out.append(text, start, hit - start);
    out += to;
  }
  out.append(text, start, std::string::npos);
  return out;
}

// Length in characters of UTF-8 text (continuation bytes do not count).
long CharacterCount(const std::string& text) {
  long count = 0;
  for (unsigned char c : text) count += (c & 0xC0) != 0x80;
  return count;
}

}  // namespace

std::string Comilla(const std::string& texto) {
  std::string result;
  Atrapar("Comilla() de RutinasErr", [&] {
    std::string t = ReplaceAll(texto, "'", "''");
    t = ReplaceAll(t, "|", "' + chr(124) + '");
    result = std::move(t);
  });
  return result;
}

std::string ComillaSQL(const std::string& texto) {
  std::string result;
  Atrapar("ComillaSQL() de RutinasErr", [&] { result = "'" + Comilla(texto) + "'"; });
  return result;
}

std::string Padding(const std::string& texto, std::int16_t ancho) {
  std::string result;
  Atrapar("Padding() de RutinasErr", [&] {
    long k = static_cast<long>(ancho) - CharacterCount(texto);
    if (k < std::numeric_limits<std::int16_t>::min() ||
        k > std::numeric_limits<std::int16_t>::max()) {
      Raise(err::kOverflow);
    }
    if (k < 0) k = 0;
    result = std::string(static_cast<std::size_t>(k), '0') + texto;
  });
  return result;
}

}  // namespace cp
