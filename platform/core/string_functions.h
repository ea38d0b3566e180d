#pragma once
// The runtime's string functions that the component relies on, on UTF-8 text.
#include <string>
#include <string_view>
#include <vector>

namespace cp {

// String functions on UTF-8 text. Trim removes blanks (U+0020) only, as the runtime does.
std::string Trim(std::string_view text);
std::string LTrim(std::string_view text);
std::string RTrim(std::string_view text);
// Splits on every occurrence of the delimiter, keeping empty items ("a;;b" gives 3 items,
// "a;" gives "a" and ""). An empty text gives no items, as the runtime's Split does.
std::vector<std::string> Split(std::string_view text, std::string_view delimiter);
// Replaces every occurrence, left to right, binary comparison.
std::string Replace(std::string_view text, std::string_view find, std::string_view with);
// Length in characters (code points) of UTF-8 text.
int Len(std::string_view text);

}  // namespace cp
