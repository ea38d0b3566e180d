#include "platform/sqlite/like_pattern.h"

#include "platform/sqlite/text_folding.h"

namespace cp::sqlite {

bool LikePattern::PatternItem::Matches(char32_t c) const {
  switch (kind) {
    case Kind::AnyOne: return true;
    case Kind::Digit: return c >= U'0' && c <= U'9';
    case Kind::Literal: return c == literal;
    case Kind::Class: {
      char32_t base = BaseLetter(c);
      bool in = false;
      for (auto [lo, hi] : ranges) {
        in = in || (c >= lo && c <= hi) || (base >= lo && base <= hi);
      }
      return in != negated;
    }
    case Kind::AnyRun: return false;
  }
  return false;
}

std::optional<LikePattern> LikePattern::Compile(std::string_view pattern,
                                                std::string_view escape) {
  std::u32string p = CodePoints(Fold(pattern, false));
  std::u32string esc = CodePoints(Fold(escape, false));
  LikePattern compiled;
  std::vector<PatternItem>& items = compiled.items_;
  for (std::size_t i = 0; i < p.size(); ++i) {
    char32_t c = p[i];
    PatternItem item;
    if (!esc.empty() && c == esc[0] && i + 1 < p.size()) {
      item.literal = p[++i];
    } else if (c == U'*') {
      if (!items.empty() && items.back().kind == PatternItem::Kind::AnyRun) continue;
      item.kind = PatternItem::Kind::AnyRun;
    } else if (c == U'?') {
      item.kind = PatternItem::Kind::AnyOne;
    } else if (c == U'#') {
      item.kind = PatternItem::Kind::Digit;
    } else if (c == U'[') {
      std::size_t close = p.find(U']', i + 1);
      if (close == std::u32string::npos) return std::nullopt;
      std::u32string body = p.substr(i + 1, close - i - 1);
      i = close;
      if (body.empty()) continue;  // "[]" matches the empty text: nothing to consume
      item.kind = PatternItem::Kind::Class;
      std::size_t k = 0;
      if (body[0] == U'!' && body.size() > 1) {
        item.negated = true;
        k = 1;
      }
      for (; k < body.size(); ++k) {
        if (k + 2 < body.size() && body[k + 1] == U'-') {
          item.ranges.emplace_back(body[k], body[k + 2]);
          k += 2;
        } else {
          item.ranges.emplace_back(body[k], body[k]);
        }
      }
    } else {
      item.literal = c;
    }
    items.push_back(std::move(item));
  }
  return compiled;
}

// Greedy match with one resume point: every item but "*" takes exactly one character.
bool LikePattern::Matches(const std::u32string& text) const {
  const std::vector<PatternItem>& items = items_;
  std::size_t p = 0, t = 0;
  std::size_t starItem = std::string::npos, starText = 0;
  while (t < text.size()) {
    if (p < items.size() && items[p].kind == PatternItem::Kind::AnyRun) {
      starItem = p++;
      starText = t;
    } else if (p < items.size() && items[p].Matches(text[t])) {
      ++p;
      ++t;
    } else if (starItem != std::string::npos) {
      p = starItem + 1;
      t = ++starText;
    } else {
      return false;
    }
  }
  while (p < items.size() && items[p].kind == PatternItem::Kind::AnyRun) ++p;
  return p == items.size();
}

}  // namespace cp::sqlite
