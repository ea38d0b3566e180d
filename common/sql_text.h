#pragma once
// Putting user text into Jet SQL: quoting for single-quoted literals and zero padding.
// Each runs under the error trap; on an error it returns what its result held (empty).
#include <cstdint>
#include <string>

namespace cp {

// texto for use between single quotes in Jet SQL, without the quotes: "'" becomes "''"
// and "|" becomes "' + chr(124) + '" (the literal is closed around chr(124), so the result
// is only valid between single quotes). Wildcards ("*", "?", "#", "[") are left alone.
std::string Comilla(const std::string& texto);

// The complete Jet literal: "'" + Comilla(texto) + "'".
std::string ComillaSQL(const std::string& texto);

// texto with "0"s on the left up to ancho characters; a longer text comes back whole.
// ancho minus the text's length is 16-bit arithmetic: beyond it, error 6 is reported and
// the result is empty.
std::string Padding(const std::string& texto, std::int16_t ancho);

}  // namespace cp
