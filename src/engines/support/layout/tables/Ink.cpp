#include "engines/support/layout/tables/Ink.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "engines/support/layout/text/Characters.h"

namespace TarnixTools::engines {

namespace {

constexpr double kWordGap = 0.6;        // of the font's size: wider ones part chunks
constexpr double kSpacedWordGap = 1.0;  // where spaces are wide themselves
constexpr double kNumberGap = 0.18;     // between two numbers
constexpr double kGroupGap = 0.36;      // between groups of three digits, at most
constexpr double kMarkGap = 0.8;        // from a number to the mark of a note
constexpr double kSignGap = 8;          // from the sign of a currency to its number
constexpr double kBaselineSlack = 0.3;

bool IsPartOfNumber(char32_t c) {
  constexpr std::u32string_view kParts = U".,'%$€£¥()+-–−*:/’‰†‡¹²³ⁿ\u00a0\u2009";
  return IsDigit(c) || kParts.find(c) != std::u32string_view::npos;
}

bool IsPlaceholder(std::u32string_view text) {
  constexpr std::array<std::u32string_view, 16> kPlaceholders = {
      U"-",   U"–",    U"—",   U"−",  U"--", U"---", U"NA", U"N/A",
      U"n/a", U"n.a.", U"n.d", U"na", U"..", U"...", U":",  U"†"};
  return std::find(kPlaceholders.begin(), kPlaceholders.end(), text) != kPlaceholders.end();
}

// A footnote's mark, as a letter in brackets or behind the digits, does not make a number text.
std::u32string_view WithoutMark(std::u32string_view text) {
  if (text.size() >= 2 && IsDigit(text[text.size() - 2]) && text.back() >= U'a' &&
      text.back() <= U'z') {
    text.remove_suffix(1);
  }
  return text;
}

// Dots and nothing else.
bool IsLeader(std::u32string_view text) {
  return text.size() >= 4 && std::all_of(text.begin(), text.end(), [](char32_t c) {
           return c == U'.' || c == U'…' || c == U'_';
         });
}

bool IsLabel(std::u32string_view text) {
  constexpr std::u32string_view kBullets = U"•◦▪■●○–-*·❖➢✓";
  constexpr std::size_t kLongest = 6;
  if (text.size() == 1) {
    return kBullets.find(text[0]) != std::u32string_view::npos;
  }
  const bool ends = !text.empty() && (text.back() == U'.' || text.back() == U')');
  return ends && text.size() <= kLongest &&
         (IsDigit(text[0]) || text.size() <= 3 || text[0] == U'(');
}

// "(1)", "(a)", "**"
bool IsMark(std::u32string_view text) {
  const bool is_bracketed = text.size() == 3 && text.front() == U'(' && text.back() == U')';
  return is_bracketed || (!text.empty() && text.size() <= 3 &&
                          std::all_of(text.begin(), text.end(), [](char32_t c) {
                            return c == U'*' || c == U'†' || c == U'‡';
                          }));
}

bool AreOneChunk(const Ink& a, const Ink& b) {
  const double size = std::max(a.size, b.size);
  const double gap = b.left - a.right;
  if (a.is_sign && b.kind != InkKind::kText) {
    return gap <= kSignGap * size;
  }
  if (a.kind == InkKind::kNumber && !a.is_mark && b.is_mark) {
    return gap <= kMarkGap * size;
  }
  if (a.IsNumeric() && b.IsNumeric() && gap > kNumberGap * size) {
    return a.is_lead && b.is_group && gap <= kGroupGap * size;
  }
  return gap <= (a.is_spaced || b.is_spaced ? kSpacedWordGap : kWordGap) * size;
}

bool IsParted(const Ink& a, const Ink& b, std::span<const Rule> vertical) {
  const double middle_of_a = (a.left + a.right) / 2;
  const double middle_of_b = (b.left + b.right) / 2;
  const double y = (a.upper + a.lower + b.upper + b.lower) / 4;
  return std::any_of(vertical.begin(), vertical.end(), [&](const Rule& rule) {
    return rule.at > middle_of_a && rule.at < middle_of_b && rule.from < y && rule.to > y;
  });
}

// A sign of percent or of a currency alone is no number, as over a column of them.
bool IsNumeric(const InkRow& row, const Chunk& chunk) {
  bool has_number = false;
  for (std::size_t i = chunk.first; i <= chunk.last; ++i) {
    if (!row.inks[i].IsNumeric()) {
      return false;
    }
    has_number = has_number || !row.inks[i].is_unit;
  }
  return has_number;
}

void FindChunks(std::span<const Rule> vertical, InkRow& row) {
  for (std::size_t i = 0; i < row.inks.size(); ++i) {
    const Ink& ink = row.inks[i];
    if (i > 0 && AreOneChunk(row.inks[i - 1], ink) && !IsParted(row.inks[i - 1], ink, vertical)) {
      Chunk& chunk = row.chunks.back();
      chunk.last = i;
      chunk.right = std::max(chunk.right, ink.right);
    } else {
      row.chunks.push_back({i, i, ink.left, ink.right, false});
    }
  }
  for (Chunk& chunk : row.chunks) {
    chunk.is_numeric = IsNumeric(row, chunk);
  }
}

void AddInk(const Ink& ink, InkRow& row) {
  const bool is_first = row.inks.empty();
  row.upper = is_first ? ink.upper : std::min(row.upper, ink.upper);
  row.lower = is_first ? ink.lower : std::max(row.lower, ink.lower);
  if (is_first || ink.size > row.size) {
    row.size = ink.size;
    row.baseline = ink.baseline;
  }
  row.inks.push_back(ink);
}

}  // namespace

InkKind KindOfWord(std::u32string_view text) {
  if (IsPlaceholder(text)) {
    return InkKind::kBlank;
  }
  text = WithoutMark(text);
  const bool has_digit = std::any_of(text.begin(), text.end(), IsDigit);
  if (has_digit && std::all_of(text.begin(), text.end(), IsPartOfNumber)) {
    return InkKind::kNumber;
  }
  return text == U"%" || text == U"$" || text == U"€" || text == U"£" || text == U"¥"
             ? InkKind::kNumber
             : InkKind::kText;
}

void Classify(std::u32string_view text, Ink& ink) {
  ink.kind = KindOfWord(text);
  ink.is_leader = IsLeader(text);
  ink.is_label = IsLabel(text);
  ink.is_mark = IsMark(text);
  const bool is_digits = std::all_of(text.begin(), text.end(), IsDigit);
  ink.is_sign = text == U"$" || text == U"€" || text == U"£" || text == U"¥";
  if (is_digits && !text.empty() && text.size() <= 4) {
    ink.number = 0;
    for (const char32_t digit : text) {
      ink.number = 10 * ink.number + static_cast<std::int32_t>(digit - U'0');
    }
  }
  ink.is_unit = ink.is_sign || text == U"%";
  ink.is_lead = is_digits && !text.empty() && text.size() <= 3;
  const auto end = std::find_if(text.begin(), text.end(), [](char32_t c) { return !IsDigit(c); });
  ink.is_group = end - text.begin() == 3;
  ink.starts_small = !text.empty() && ((text[0] >= U'a' && text[0] <= U'z') || text[0] == U'(');
}

bool InkRow::HasNumber() const {
  return std::any_of(chunks.begin(), chunks.end(), [](const Chunk& c) { return c.is_numeric; });
}

std::vector<InkRow> RowsOf(std::span<const Ink> inks, std::span<const Rule> vertical) {
  std::vector<Ink> sorted(inks.begin(), inks.end());
  std::stable_sort(sorted.begin(), sorted.end(),
                   [](const Ink& a, const Ink& b) { return a.baseline < b.baseline; });
  std::vector<InkRow> rows;
  double last = 0;
  for (const Ink& ink : sorted) {
    const double slack = kBaselineSlack * (rows.empty() ? 0 : std::min(rows.back().size, ink.size));
    const bool goes_on = !rows.empty() && ink.baseline - last <= slack &&
                         ink.baseline - rows.back().inks.front().baseline <= 2 * slack;
    if (!goes_on) {
      rows.emplace_back();
    }
    AddInk(ink, rows.back());
    last = ink.baseline;
  }
  for (InkRow& row : rows) {
    std::stable_sort(row.inks.begin(), row.inks.end(),
                     [](const Ink& a, const Ink& b) { return a.left < b.left; });
    for (Ink& ink : row.inks) {
      ink.row = static_cast<std::uint32_t>(&row - rows.data());
    }
    FindChunks(vertical, row);
  }
  return rows;
}

}  // namespace TarnixTools::engines
