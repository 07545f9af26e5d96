#include "engines/support/layout/paragraphs/TextRows.h"

#include <algorithm>
#include <cmath>
#include <map>

#include "engines/support/layout/Boxes.h"
#include "engines/support/layout/paragraphs/ListLabels.h"

namespace TarnixTools::engines {

namespace {

constexpr double kRowTolerance = 0.3;   // ems between the baselines of a row
constexpr double kBulletAbove = 0.45;   // ems of its text
constexpr double kOverlap = 0.3;        // ems that lines of a row may share in width
constexpr std::size_t kMostLines = 64;  // of a row

bool IsBullet(const WordLine& line) {
  if (line.words.size() != 1) {
    return false;
  }
  const auto label = ReadLabel(line.words.front().text);
  return label && label->kind == ListKind::kBullet;
}

// A bullet smaller than its text is shown at the middle of the letters, not on their baseline.
bool IsBulletOf(const WordLine& bullet, double baseline, double size) {
  const double above = baseline - bullet.baseline;
  return bullet.size < size && above >= 0 && above <= kBulletAbove * size && IsBullet(bullet);
}

bool IsLevel(const TextRow& row, const WordLine& line) {
  return std::abs(line.baseline - row.baseline) <= kRowTolerance * std::min(row.size, line.size) ||
         IsBulletOf(line, row.baseline, row.size) ||
         std::all_of(row.lines.begin(), row.lines.end(), [&line](const WordLine* other) {
           return IsBulletOf(*other, line.baseline, line.size);
         });
}

bool Belongs(const TextRow& row, const WordLine& line) {
  const double size = std::min(row.size, line.size);
  if (!IsLevel(row, line) || row.lines.size() >= kMostLines) {
    return false;
  }
  return std::none_of(row.lines.begin(), row.lines.end(), [&](const WordLine* other) {
    return SharedWidth(other->box, line.box) > kOverlap * size;
  });
}

template <typename Key>
Key MostOf(const std::map<Key, std::size_t>& counts) {
  const auto most =
      std::max_element(counts.begin(), counts.end(),
                       [](const auto& a, const auto& b) { return a.second < b.second; });
  return most == counts.end() ? Key{} : most->first;
}

void Measure(const PageModel& page, TextRow& row) {
  std::map<std::uint32_t, std::size_t> styles;
  std::map<std::uint32_t, std::size_t> elements;
  bool is_bold = true;
  for (const WordLine* line : row.lines) {
    for (const Word& word : line->words) {
      for (const PlacedGlyph& glyph : word.glyphs) {
        const std::uint32_t style = page.glyphs[glyph.glyph].style;
        ++styles[style];
        const auto& face = page.styles[style].face;
        is_bold = is_bold && (glyph.is_doubled || (face != nullptr && face->is_bold));
        const StructureRole* role = RoleOf(page, glyph);
        ++elements[role != nullptr ? role->element : 0];
      }
    }
  }
  row.is_bold = is_bold;
  row.style = MostOf(styles);
  row.element = MostOf(elements);
}

void PutInOrder(TextRow& row) {
  std::size_t to_left = 0;
  for (const WordLine* line : row.lines) {
    to_left += line->is_right_to_left ? 1 : 0;
  }
  row.is_right_to_left = 2 * to_left > row.lines.size();
  std::sort(row.lines.begin(), row.lines.end(), [&row](const WordLine* a, const WordLine* b) {
    return row.is_right_to_left ? a->box.right > b->box.right : a->box.left < b->box.left;
  });
}

}  // namespace

const StructureRole* RoleOf(const PageModel& page, const PlacedGlyph& glyph) {
  const std::int32_t mark = page.glyphs[glyph.glyph].mark;
  const bool is_known = mark >= 0 && static_cast<std::size_t>(mark) < page.roles.size();
  return is_known && !page.roles[static_cast<std::size_t>(mark)].path.empty()
             ? &page.roles[static_cast<std::size_t>(mark)]
             : nullptr;
}

std::vector<TextRow> JoinIntoRows(const PageModel& page,
                                  const std::vector<const WordLine*>& lines) {
  std::vector<const WordLine*> sorted = lines;
  std::stable_sort(sorted.begin(), sorted.end(),
                   [](const WordLine* a, const WordLine* b) { return a->baseline < b->baseline; });
  std::vector<TextRow> rows;
  for (const WordLine* line : sorted) {
    if (rows.empty() || !Belongs(rows.back(), *line)) {
      rows.push_back({.box = line->box, .baseline = line->baseline, .size = line->size});
    }
    TextRow& row = rows.back();
    if (line->box.width() > row.box.width()) {
      row.baseline = line->baseline;
      row.size = line->size;
    }
    row.box = Around(row.box, line->box);
    row.lines.push_back(line);
  }
  for (TextRow& row : rows) {
    PutInOrder(row);
    row.inset = row.first().inset;
    row.box.left -= row.inset;
    Measure(page, row);
  }
  return rows;
}

}  // namespace TarnixTools::engines
