#include "engines/support/layout/text/WordLines.h"

#include <algorithm>
#include <cmath>

#include "engines/support/layout/Boxes.h"
#include "engines/support/layout/Quantile.h"
#include "engines/support/layout/text/Characters.h"

namespace TarnixTools::engines {

namespace {

// All in ems.
constexpr double kWordGap = 0.14;              // beyond the spacing of the letters
constexpr double kWordGapBesideSpaces = 0.22;  // in a row that has spaces among its glyphs
constexpr double kGapWithoutSpaces = 0.4;      // between characters of scripts without spaces
constexpr double kSpaceGap = 0.02;             // that a space makes at least
constexpr double kMaxTracking = 0.5;           // letters further apart are words
constexpr double kLineGap = 1.0;               // that ends a line at least
constexpr double kWidestLineGap = 2.5;         // that ends every line
constexpr double kRaiseOffset = 0.1;

constexpr double kLineGapOfGaps = 2.2;  // gaps of the row's words, in the middle
constexpr double kOtherSize = 1.9;      // a text so many times larger is no part of the line
constexpr double kRaisedSize = 0.87;

bool IsSpaceGlyph(const PageModel& page, const PlacedGlyph& placed) {
  const Glyph& glyph = page.glyphs[placed.glyph];
  for (std::uint32_t i = 0; i < glyph.length; ++i) {
    if (!IsSpace(page.text[glyph.text + i])) {
      return false;
    }
  }
  return true;
}

char32_t CharacterOf(const PageModel& page, const PlacedGlyph& placed) {
  return page.text[page.glyphs[placed.glyph].text];
}

// A glyph that shows something, and what is between it and the one before it.
struct Step {
  const PlacedGlyph* glyph;
  double gap = 0;  // in ems
  bool has_space = false;
};

std::vector<Step> StepsOf(const PageModel& page, const GlyphRow& row) {
  std::vector<Step> steps;
  double right = 0;
  bool has_space = false;
  for (const PlacedGlyph& glyph : row.glyphs) {
    if (IsSpaceGlyph(page, glyph)) {
      has_space = true;
      continue;
    }
    const double gap = steps.empty() ? 0 : (glyph.left - right) / glyph.size;
    steps.push_back({.glyph = &glyph, .gap = gap, .has_space = has_space});
    right = steps.size() == 1 ? glyph.right : std::max(right, glyph.right);
    has_space = false;
  }
  return steps;
}

// Where the words and the lines of a row end.
class RowGaps {
 public:
  RowGaps(const PageModel& page, const std::vector<Step>& steps) : page_(&page) {
    std::vector<double> gaps;
    bool has_spaces = false;
    for (std::size_t i = 1; i < steps.size(); ++i) {
      gaps.push_back(steps[i].gap);
      has_spaces |= steps[i].has_space;
    }
    const double least = Quantile(gaps, 0.25);
    const double tracking = least > 0 && least < kMaxTracking ? least : 0;
    word_gap_ = tracking + (has_spaces ? kWordGapBesideSpaces : kWordGap);
    std::erase_if(gaps, [this](double gap) { return gap < word_gap_; });
    line_gap_ = std::clamp(kLineGapOfGaps * Quantile(gaps, 0.5), kLineGap, kWidestLineGap);
  }

  bool EndsWord(const Step& before, const Step& step) const {
    if (step.has_space && step.gap > kSpaceGap) {
      return true;
    }
    const bool is_dense = HasNoSpaces(CharacterOf(*page_, *before.glyph)) &&
                          HasNoSpaces(CharacterOf(*page_, *step.glyph));
    return step.gap > (is_dense ? std::max(kGapWithoutSpaces, word_gap_) : word_gap_);
  }

  bool EndsLine(const Step& before, const Step& step) const {
    const double ratio = step.glyph->size / before.glyph->size;
    const bool is_level =
        std::abs(step.glyph->baseline - before.glyph->baseline) < kRaiseOffset * before.glyph->size;
    return step.gap > line_gap_ || (is_level && (ratio > kOtherSize || ratio * kOtherSize < 1));
  }

 private:
  const PageModel* page_;
  double word_gap_ = 0;
  double line_gap_ = 0;
};

void MarkRaised(WordLine& line) {
  for (Word& word : line.words) {
    for (PlacedGlyph& glyph : word.glyphs) {
      const double above = line.baseline - glyph.baseline;
      if (glyph.size <= kRaisedSize * line.size && std::abs(above) > kRaiseOffset * line.size) {
        glyph.raise = above > 0 ? Raise::kSuperscript : Raise::kSubscript;
      }
    }
  }
}

enum class WordDirection { kNeither, kRight, kLeft };

WordDirection DirectionOf(const Word& word) {
  for (const char32_t character : word.text) {
    if (RunsLeft(character)) {
      return WordDirection::kLeft;
    }
  }
  return std::any_of(word.text.begin(), word.text.end(), RunsRight) ? WordDirection::kRight
                                                                    : WordDirection::kNeither;
}

bool KeepsItsOrder(const PageModel& page, const PlacedGlyph& glyph) {
  const char32_t character = CharacterOf(page, glyph);
  return !RunsLeft(character) &&
         (RunsRight(character) || IsDigit(character) ||
          (character >= 0x660 && character <= 0x669) || (character >= 0x6F0 && character <= 0x6F9));
}

// Turns a word around, but for its numbers and its letters that run to the right. Marks stay behind
// the letters that they stand on.
void TurnWord(const PageModel& page, Word& word) {
  std::vector<PlacedGlyph>& glyphs = word.glyphs;
  const std::vector<PlacedGlyph> seen = std::move(glyphs);
  glyphs.clear();
  for (std::size_t end = seen.size(); end > 0;) {
    std::size_t begin = end - 1;
    if (KeepsItsOrder(page, seen[begin])) {
      while (begin > 0 && KeepsItsOrder(page, seen[begin - 1])) {
        --begin;
      }
    } else {
      while (begin > 0 && IsCombining(CharacterOf(page, seen[begin]))) {
        --begin;
      }
    }
    glyphs.insert(glyphs.end(), seen.begin() + static_cast<std::ptrdiff_t>(begin),
                  seen.begin() + static_cast<std::ptrdiff_t>(end));
    end = begin;
  }
  MeasureWord(page, word);
}

// Turns around every run of words of a direction, with what is between them.
void TurnRuns(std::vector<Word>& words, WordDirection direction) {
  for (std::size_t begin = 0; begin < words.size(); ++begin) {
    if (DirectionOf(words[begin]) != direction) {
      continue;
    }
    std::size_t end = begin + 1;
    for (std::size_t i = end; i < words.size(); ++i) {
      const WordDirection other = DirectionOf(words[i]);
      if (other == direction) {
        end = i + 1;
      } else if (other != WordDirection::kNeither) {
        break;
      }
    }
    std::reverse(words.begin() + static_cast<std::ptrdiff_t>(begin),
                 words.begin() + static_cast<std::ptrdiff_t>(end));
    begin = end - 1;
  }
}

}  // namespace

void MeasureWord(const PageModel& page, Word& word) {
  std::vector<double> sizes;
  word.text.clear();
  for (const PlacedGlyph& glyph : word.glyphs) {
    sizes.push_back(glyph.size);
    const Glyph& source = page.glyphs[glyph.glyph];
    AppendPlain(word.text, std::u32string_view(page.text).substr(source.text, source.length));
  }
  word.size = Quantile(sizes, 0.5);
  bool is_first = true;
  for (const PlacedGlyph& glyph : word.glyphs) {
    const pdf::Box box{glyph.left, glyph.baseline - kAscent * glyph.size, glyph.right,
                       glyph.baseline + kDescent * glyph.size};
    word.box = is_first ? box : Around(word.box, box);
    if (is_first || (glyph.size == word.size && glyph.raise == Raise::kNone)) {
      word.baseline = glyph.baseline;
    }
    is_first = false;
  }
}

void MeasureLine(WordLine& line) {
  std::vector<double> sizes;
  for (const Word& word : line.words) {
    line.box = &word == &line.words.front() ? word.box : Around(line.box, word.box);
    for (const PlacedGlyph& glyph : word.glyphs) {
      sizes.push_back(glyph.size);
    }
  }
  line.size = Quantile(sizes, 0.5);
  std::vector<double> baselines;
  for (const Word& word : line.words) {
    for (const PlacedGlyph& glyph : word.glyphs) {
      if (glyph.size >= line.size * kRaisedSize) {
        baselines.push_back(glyph.baseline);
      }
    }
  }
  line.baseline = Quantile(baselines, 0.5);
}

void OrderWords(const PageModel& page, WordLine& line) {
  std::size_t to_left = 0;
  std::size_t to_right = 0;
  for (const Word& word : line.words) {
    const WordDirection direction = DirectionOf(word);
    to_left += direction == WordDirection::kLeft ? 1 : 0;
    to_right += direction == WordDirection::kRight ? 1 : 0;
  }
  if (to_left == 0) {
    return;
  }
  for (Word& word : line.words) {
    if (DirectionOf(word) == WordDirection::kLeft) {
      TurnWord(page, word);
    }
  }
  line.is_right_to_left = to_left >= to_right;
  if (line.is_right_to_left) {
    std::reverse(line.words.begin(), line.words.end());
    TurnRuns(line.words, WordDirection::kRight);
  } else {
    TurnRuns(line.words, WordDirection::kLeft);
  }
}

void CutIntoLines(const PageModel& page, const GlyphRow& row, std::vector<WordLine>& lines) {
  const std::vector<Step> steps = StepsOf(page, row);
  const RowGaps gaps(page, steps);
  const std::size_t first = lines.size();
  for (std::size_t i = 0; i < steps.size(); ++i) {
    const bool begins_line = i == 0 || gaps.EndsLine(steps[i - 1], steps[i]);
    if (begins_line) {
      lines.emplace_back();
    }
    if (begins_line || gaps.EndsWord(steps[i - 1], steps[i])) {
      lines.back().words.emplace_back();
    }
    lines.back().words.back().glyphs.push_back(*steps[i].glyph);
  }
  for (std::size_t i = first; i < lines.size(); ++i) {
    for (Word& word : lines[i].words) {
      MeasureWord(page, word);
    }
    MeasureLine(lines[i]);
    MarkRaised(lines[i]);
    OrderWords(page, lines[i]);
  }
}

}  // namespace TarnixTools::engines
