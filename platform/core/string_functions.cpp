#include "platform/core/string_functions.h"

namespace cp {

std::string LTrim(std::string_view text) {
  const auto first = text.find_first_not_of(' ');
  return first == std::string_view::npos ? std::string() : std::string(text.substr(first));
}

std::string RTrim(std::string_view text) {
  const auto last = text.find_last_not_of(' ');
  return last == std::string_view::npos ? std::string() : std::string(text.substr(0, last + 1));
}

std::string Trim(std::string_view text) { return LTrim(RTrim(text)); }

std::vector<std::string> Split(std::string_view text, std::string_view delimiter) {
  std::vector<std::string> items;
  if (text.empty()) return items;
  if (delimiter.empty()) return {std::string(text)};
  std::size_t start = 0;
  for (;;) {
    const auto pos = text.find(delimiter, start);
    if (pos == std::string_view::npos) {
      items.emplace_back(text.substr(start));
      return items;
    }
    items.emplace_back(text.substr(start, pos - start));
    start = pos + delimiter.size();
  }
}

std::string Replace(std::string_view text, std::string_view find, std::string_view with) {
  if (find.empty()) return std::string(text);
  std::string out;
  std::size_t start = 0;
  for (auto pos = text.find(find); pos != std::string_view::npos; pos = text.find(find, start)) {
    out.append(text.substr(start, pos - start)).append(with);
    start = pos + find.size();
  }
  out.append(text.substr(start));
  return out;
}

int Len(std::string_view text) {
  int n = 0;
  for (unsigned char c : text)
    if ((c & 0xC0) != 0x80) ++n;
  return n;
}

}  // namespace cp
