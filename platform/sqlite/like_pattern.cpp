#include "platform/sqlite/like_pattern.h"

#include "platform/sqlite/text_folding.h"

namespace cp::sqlite {
namespace {

// Literal runs separated by "*": the first must start the text when the pattern does not start
// with "*", the last must end it likewise, and each run is taken at its first place after the
// one before (the leftmost choice never loses a match). Same(textChar, runChar) compares.
template <class Char, class RunChar, class Same>
bool MatchRuns(std::basic_string_view<Char> text, const std::vector<std::basic_string<RunChar>>& runs,
               bool anchoredStart, bool anchoredEnd, bool hasStar, Same same) {
  auto runAt = [&](std::size_t at, const std::basic_string<RunChar>& run) {
    for (std::size_t k = 0; k < run.size(); ++k)
      if (!same(text[at + k], run[k])) return false;
    return true;
  };
  if (!hasStar) {
    if (runs.empty()) return text.empty();
    return text.size() == runs.front().size() && runAt(0, runs.front());
  }
  std::size_t first = 0, last = runs.size();
  std::size_t from = 0, to = text.size();
  if (anchoredStart && !runs.empty()) {
    if (runs.front().size() > to || !runAt(0, runs.front())) return false;
    from = runs.front().size();
    first = 1;
  }
  if (anchoredEnd && last > first) {
    const auto& end = runs.back();
    if (end.size() > to - from || !runAt(to - end.size(), end)) return false;
    to -= end.size();
    --last;
  }
  for (std::size_t i = first; i < last; ++i) {
    const auto& run = runs[i];
    std::size_t at = from;
    while (at + run.size() <= to && !runAt(at, run)) ++at;
    if (at + run.size() > to) return false;
    from = at + run.size();
  }
  return true;
}

}  // namespace

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
  compiled.segments_ = SegmentsOf(items);
  return compiled;
}

std::optional<LikePattern::Segments> LikePattern::SegmentsOf(
    const std::vector<PatternItem>& items) {
  Segments s;
  bool inRun = false;
  for (const PatternItem& item : items) {
    if (item.kind == PatternItem::Kind::AnyRun) {
      s.hasStar = true;
      inRun = false;
    } else if (item.kind == PatternItem::Kind::Literal) {
      if (!inRun) s.runs.emplace_back();
      s.runs.back().push_back(item.literal);
      inRun = true;
    } else {
      return std::nullopt;
    }
  }
  if (!items.empty()) {
    s.anchoredStart = items.front().kind != PatternItem::Kind::AnyRun;
    s.anchoredEnd = items.back().kind != PatternItem::Kind::AnyRun;
  }
  for (const std::u32string& run : s.runs) {
    std::string ascii;
    for (char32_t c : run) {
      if (c >= 0x80) s.allAscii = false;
      ascii.push_back(static_cast<char>(c));
    }
    s.asciiRuns.push_back(std::move(ascii));
  }
  return s;
}

bool LikePattern::MatchesAscii(std::string_view text) const {
  if (segments_) {
    // A run with a letter beyond ASCII cannot be found in ASCII text.
    if (!segments_->allAscii) return false;
    return MatchRuns(text, segments_->asciiRuns, segments_->anchoredStart,
                     segments_->anchoredEnd, segments_->hasStar,
                     [](char t, char r) { return AsciiLower(t) == r; });
  }
  std::u32string wide;
  for (char c : text) wide.push_back(static_cast<char32_t>(AsciiLower(c)));
  return Matches(wide);
}

// Greedy match with one resume point: every item but "*" takes exactly one character.
bool LikePattern::Matches(std::u32string_view text) const {
  if (segments_)
    return MatchRuns(text, segments_->runs, segments_->anchoredStart, segments_->anchoredEnd,
                     segments_->hasStar, [](char32_t t, char32_t r) { return t == r; });
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
