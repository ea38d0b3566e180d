#pragma once
// A compiled Jet LIKE pattern: wildcards * ? # [abc] [a-z] [!abc] ([] matches nothing), % and
// _ plain, an optional escape character that makes the next pattern character plain.
// Patterns and text are compared folded as Jet compares text (platform/sqlite/text_folding.h).
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace cp::sqlite {

class LikePattern {
 public:
  // Compiles a pattern; nullopt when a "[" is not closed (Jet's "invalid pattern string").
  static std::optional<LikePattern> Compile(std::string_view pattern, std::string_view escape);

  // True when the whole folded text (code points, see Fold) matches.
  bool Matches(std::u32string_view folded) const;
  // The same for ASCII text, read as it is stored (no copy, no decoding).
  bool MatchesAscii(std::string_view text) const;

 private:
  // One pattern position.
  struct PatternItem {
    enum class Kind { AnyRun, AnyOne, Digit, Literal, Class } kind = Kind::Literal;
    char32_t literal = 0;
    bool negated = false;
    std::vector<std::pair<char32_t, char32_t>> ranges;  // Class: inclusive, folded

    // True when c (folded) is a character this item takes.
    bool Matches(char32_t c) const;
  };

  // Patterns of plain text and "*" only (nearly all that selections write) are matched by
  // searching their literal runs left to right instead of item by item.
  struct Segments {
    bool anchoredStart = true, anchoredEnd = true, hasStar = false;
    std::vector<std::u32string> runs;
    std::vector<std::string> asciiRuns;  // the same runs, when all of them are ASCII
    bool allAscii = true;
  };
  static std::optional<Segments> SegmentsOf(const std::vector<PatternItem>& items);

  std::vector<PatternItem> items_;
  std::optional<Segments> segments_;
};

}  // namespace cp::sqlite
