#include "engines/support/layout/tables/TableFinder.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <optional>
#include <span>
#include <utility>

#include "engines/support/layout/Colors.h"
#include "engines/support/layout/LayoutLimits.h"
#include "engines/support/layout/paragraphs/TextRows.h"
#include "engines/support/layout/tables/CellLooks.h"
#include "engines/support/layout/tables/TableArea.h"
#include "engines/support/layout/tables/TableBuilder.h"
#include "engines/support/layout/tables/TableJudge.h"
#include "engines/support/layout/tables/TaggedTable.h"

namespace TarnixTools::engines {

namespace {

constexpr double kMargin = 2;  // points that words may stand out of an area

constexpr double kPartHeight = 1.15;  // of a part, the whole has at least
constexpr double kPathMargin = 8;     // that rules may
constexpr double kSmallBox = 20;      // points
constexpr double kThinBox = 3;        // what is thinner is a rule
constexpr double kTaggedShare = 0.6;  // of the words of a page, where its text is tagged

// Words that are rules made of characters.
bool IsDrawnRule(std::u32string_view text) {
  return text.size() >= 6 && std::all_of(text.begin(), text.end(), [](char32_t c) {
           return c == U'-' || c == U'_' || c == U'=' || c == U'–' || c == U'—';
         });
}

bool IsIn(const Ink& ink, const pdf::Box& box) {
  const double x = (ink.left + ink.right) / 2;
  const double y = (ink.upper + ink.lower) / 2;
  return x >= box.left - kMargin && x <= box.right + kMargin && y >= box.bottom - kMargin &&
         y <= box.top + kMargin;
}

double AreaSize(const TableArea& area) {
  return area.box.width() * area.box.height();
}

class Finder {
 public:
  Finder(const PageModel& page, const TurnedText& text) : page_(&page), rules_(RulesOf(page)) {
    Read(text);
  }

  PageTables Find();

 private:
  void Read(const TurnedText& text);
  const Typeface* FaceOf(const Word& word) const;
  void SetTags(const Word& word, Ink& ink);
  bool TryTags(std::uint32_t table, std::span<const Ink> inks);
  bool MayGoOn() const;
  bool TagsTellAll() const;
  void TryArea(const TableArea& area, std::span<const Ink> inks);
  void Try(std::vector<TableArea> areas);
  void TryPanels();
  void TryFills();
  void TryTagged();
  void AddPaths(FoundTable& found, AreaKind kind) const;
  void Keep(const TableArea& area, TableShape shape);

  const PageModel* page_;
  Rules rules_;
  std::vector<Ink> inks_;     // those that are in no table yet
  std::vector<Ink> leaders_;  // those at the end of a word too
  std::vector<Ink> fillers_;
  std::vector<FoundTable> tables_;
  std::map<std::uint32_t, std::size_t> tagged_;  // words of each table that tags tell of
  std::size_t word_count_ = 0;
  std::size_t tagged_words_ = 0;
  std::size_t looked_at_ = 0;  // words, once for each area that they are in
};

// Null where nothing tells it.
const Typeface* Finder::FaceOf(const Word& word) const {
  if (word.glyphs.empty()) {
    return nullptr;
  }
  const Glyph& glyph = page_->glyphs[word.glyphs.front().glyph];
  return page_->styles[glyph.style].face.get();
}

void Finder::SetTags(const Word& word, Ink& ink) {
  const StructureRole* role = word.glyphs.empty() ? nullptr : RoleOf(*page_, word.glyphs.front());
  tagged_words_ += role != nullptr && !role->path.empty() ? 1 : 0;
  if (role != nullptr && role->table != 0) {
    ink.table = role->table;
    ink.tagged_row = role->row;
    ink.tagged_cell = role->cell;
    ++tagged_[role->table];
  }
}

void Finder::Read(const TurnedText& text) {
  std::uint32_t number = 0;
  for (const WordLine& line : text.lines) {
    word_count_ += line.words.size();
    for (const Word& word : line.words) {
      const Typeface* face = FaceOf(word);
      Ink ink{.left = word.box.left,
              .right = word.box.right,
              .upper = word.box.bottom,
              .lower = word.box.top,
              .baseline = word.baseline,
              .size = word.size,
              .is_bold = face != nullptr && face->is_bold,
              .is_spaced = face != nullptr && face->is_fixed_pitch,
              .word = number++};
      if (IsDrawnRule(word.text)) {
        if (rules_.horizontal.size() + rules_.vertical.size() < limits::kMaxRulesOfPage) {
          const double y = (ink.upper + ink.lower) / 2;
          rules_.horizontal.push_back({y, ink.left, ink.right, 0, Rgb{}, false});
        }
        fillers_.push_back(ink);
        continue;
      }
      Classify(word.text, ink);
      if (!ink.is_leader) {
        SetTags(word, ink);
      }
      if (ink.is_leader || word.text.find(U".....") != std::u32string::npos) {
        leaders_.push_back(ink);
      }
      (ink.is_leader ? fillers_ : inks_).push_back(ink);
    }
  }
  std::sort(rules_.horizontal.begin(), rules_.horizontal.end(),
            [](const Rule& a, const Rule& b) { return a.at < b.at; });
}

void Finder::Keep(const TableArea& area, TableShape shape) {
  FoundTable found;
  Table& table = found.table;
  table.box = {shape.columns.front(), shape.rows.front(), shape.columns.back(), shape.rows.back()};
  table.is_ruled = area.kind == AreaKind::kGrid;
  table.header_rows = static_cast<std::uint32_t>(shape.header_rows);
  std::vector<bool> is_used;
  for (const CellShape& cell : shape.cells) {
    table.cells.push_back({.row = static_cast<std::uint32_t>(cell.row),
                           .column = static_cast<std::uint32_t>(cell.column),
                           .row_span = static_cast<std::uint32_t>(cell.row_end - cell.row),
                           .column_span = static_cast<std::uint32_t>(cell.column_end - cell.column),
                           .box = {shape.columns[cell.column], shape.rows[cell.row],
                                   shape.columns[cell.column_end], shape.rows[cell.row_end]}});
    std::vector<std::uint32_t>& words = found.words.emplace_back();
    for (const Ink& ink : cell.inks) {
      words.push_back(ink.word);
      is_used.resize(std::max<std::size_t>(is_used.size(), ink.word + 1));
      is_used[ink.word] = true;
    }
  }
  std::erase_if(
      inks_, [&is_used](const Ink& ink) { return ink.word < is_used.size() && is_used[ink.word]; });
  table.columns = std::move(shape.columns);
  table.rows = std::move(shape.rows);
  std::erase_if(fillers_, [&found](const Ink& ink) {
    const bool is_in = IsIn(ink, found.table.box);
    if (is_in) {
      found.fillers.push_back(ink.word);
    }
    return is_in;
  });
  SetLooks(area, rules_, table);
  AddPaths(found, area.kind);
  tables_.push_back(std::move(found));
}

// As of a box to tick.
bool IsSmallBox(const PathShape& path) {
  const pdf::Box& box = path.box;
  return path.kind == PathShape::Kind::kRectangle && box.width() <= kSmallBox &&
         box.height() <= kSmallBox && box.width() > kThinBox && box.height() > kThinBox;
}

// A field of colour that cells do not show: it lies behind a part of one.
bool IsLostField(const PathShape& path, const Table& table) {
  const pdf::Box& box = path.box;
  return path.kind == PathShape::Kind::kRectangle && path.fill && !path.stroke &&
         !IsWhite(*path.fill) && box.width() > kThinBox && box.height() > kThinBox &&
         !HasFilledCells(box, table);
}

// What is painted within a table and is no drawing belongs to it. Rules and fills make the cells of
// tables that tags tell of, too, small boxes do not.
void Finder::AddPaths(FoundTable& found, AreaKind kind) const {
  const pdf::Box& table = found.table.box;
  std::size_t compared = 0;
  for (std::size_t i = 0; i < page_->paths.size(); ++i) {
    const PathShape& path = page_->paths[i];
    const pdf::Box& box = path.box;
    const bool is_apart = kind == AreaKind::kTagged && IsSmallBox(path);
    if (path.kind != PathShape::Kind::kOther && !is_apart && box.left >= table.left - kPathMargin &&
        box.right <= table.right + kPathMargin && box.bottom >= table.bottom - kPathMargin &&
        box.top <= table.top + kPathMargin) {
      compared += found.table.cells.size();
      if (compared > limits::kMaxBoxComparisons || !IsLostField(path, found.table)) {
        found.paths.push_back(static_cast<std::uint32_t>(i));
      }
    }
  }
}

bool Finder::MayGoOn() const {
  return looked_at_ <= limits::kMaxWordsLookedAt && tables_.size() < limits::kMaxTablesOfPage;
}

void Finder::TryArea(const TableArea& area, std::span<const Ink> inks) {
  std::optional<TableShape> shape = BuildTable(area, inks);
  if (shape && IsTable(*shape, area.kind, leaders_)) {
    Keep(area, std::move(*shape));
  }
}

void Finder::Try(std::vector<TableArea> areas) {
  std::stable_sort(areas.begin(), areas.end(), [](const TableArea& a, const TableArea& b) {
    return AreaSize(a) > AreaSize(b);
  });
  for (const TableArea& area : areas) {
    if (!MayGoOn()) {
      return;
    }
    std::vector<Ink> inks;
    std::copy_if(inks_.begin(), inks_.end(), std::back_inserter(inks),
                 [&area](const Ink& ink) { return IsIn(ink, area.box); });
    looked_at_ += inks.size();
    if (!CutsText(area.vertical.empty() ? rules_.vertical : area.vertical, inks)) {
      TryArea(area, inks);
    }
  }
}

// Whether the filled boxes are but a part of what rules bound above and below, as stripes behind the
// body of a table are.
bool IsPartOfAny(const TableArea& fills, const std::vector<TableArea>& stripes) {
  return std::any_of(stripes.begin(), stripes.end(), [&fills](const TableArea& area) {
    const pdf::Box& box = area.box;
    return fills.box.left >= box.left - kPathMargin && fills.box.right <= box.right + kPathMargin &&
           fills.box.bottom >= box.bottom - kPathMargin && fills.box.top <= box.top + kPathMargin &&
           box.height() > kPartHeight * fills.box.height();
  });
}

// The headings of panels are no words of tables.
void Finder::TryPanels() {
  Panels panels = FindPanels(rules_, inks_);
  Try(std::move(panels.areas));
  std::sort(panels.headings.begin(), panels.headings.end());
  std::erase_if(inks_, [&panels](const Ink& ink) {
    return std::binary_search(panels.headings.begin(), panels.headings.end(), ink.word);
  });
}

// Tables whose cells are filled boxes.
void Finder::TryFills() {
  std::vector<pdf::Box> areas;
  for (const FoundTable& found : tables_) {
    areas.push_back(found.table.box);
  }
  Rules rules = rules_;
  AddFillEdges(areas, rules);
  std::vector<TableArea> grids = FindGrids(rules);
  const std::vector<TableArea> stripes = FindStripes(rules_, inks_);
  std::erase_if(grids, [&stripes](const TableArea& area) { return IsPartOfAny(area, stripes); });
  Try(std::move(grids));
}

// Believes tags that tell the cells of a table which has its place to itself.
bool Finder::TryTags(std::uint32_t table, std::span<const Ink> inks) {
  if (inks.size() != tagged_[table]) {
    return false;
  }
  std::optional<TaggedTable> found = BuildTaggedTable(inks, rules_);
  const bool is_sound =
      found && std::none_of(inks_.begin(), inks_.end(), [&](const Ink& ink) {
        const double x = (ink.left + ink.right) / 2;
        const double y = (ink.upper + ink.lower) / 2;
        const pdf::Box& box = found->area.box;
        return ink.table != table && x > box.left && x < box.right && y > box.bottom && y < box.top;
      });
  if (is_sound) {
    Keep(found->area, std::move(found->shape));
  }
  return is_sound;
}

// Tables that tags tell of and no rules show.
void Finder::TryTagged() {
  std::map<std::uint32_t, std::vector<Ink>> tagged;
  for (const Ink& ink : inks_) {
    if (ink.table != 0) {
      tagged[ink.table].push_back(ink);
    }
  }
  for (const auto& [table, inks] : tagged) {
    if (!MayGoOn()) {
      return;
    }
    looked_at_ += inks.size();
    if (!TryTags(table, inks)) {
      TryArea(AreaAround(inks, rules_), inks);
    }
  }
}

// Whether a table that is not ruled would have tags as the text has, and as other tables of the
// document do.
bool Finder::TagsTellAll() const {
  const double words = static_cast<double>(word_count_);
  return page_->tree_has_tables && static_cast<double>(tagged_words_) >= kTaggedShare * words;
}

PageTables Finder::Find() {
  if (inks_.size() > limits::kMaxWordsOfTables) {
    return {};
  }
  const bool is_told = TagsTellAll();
  Try(FindGrids(rules_));
  if (!is_told) {
    TryPanels();
  }
  TryFills();
  TryTagged();
  const std::size_t count = tables_.size();
  Try(FindStripes(rules_, inks_));
  std::vector<pdf::Box> ruled_text;
  if (is_told) {
    for (std::size_t i = count; i < tables_.size(); ++i) {
      ruled_text.push_back(tables_[i].table.box);
    }
    tables_.resize(count);
  } else if (tagged_.empty()) {
    Try(FindTextAreas(rules_, inks_));
  }
  std::stable_sort(tables_.begin(), tables_.end(), [](const FoundTable& a, const FoundTable& b) {
    return std::pair(a.table.box.bottom, a.table.box.left) <
           std::pair(b.table.box.bottom, b.table.box.left);
  });
  return {std::move(tables_), std::move(ruled_text)};
}

}  // namespace

PageTables FindTables(const PageModel& page, const TurnedText& text) {
  return Finder(page, text).Find();
}

}  // namespace TarnixTools::engines
