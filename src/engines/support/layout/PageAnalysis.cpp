#include "engines/support/layout/PageAnalysis.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "engines/support/layout/Boxes.h"
#include "engines/support/layout/Colors.h"
#include "engines/support/layout/LayoutLimits.h"
#include "engines/support/layout/TableMaker.h"
#include "engines/support/layout/graphics/BoxGroups.h"
#include "engines/support/layout/graphics/PageGraphics.h"
#include "engines/support/layout/paragraphs/FlowParagraphs.h"
#include "engines/support/layout/paragraphs/LookTable.h"
#include "engines/support/layout/paragraphs/ParagraphMaker.h"
#include "engines/support/layout/regions/Bands.h"
#include "engines/support/layout/tables/TableFinder.h"
#include "engines/support/layout/text/Initials.h"
#include "engines/support/layout/text/PageText.h"

namespace TarnixTools::engines {

namespace {

constexpr double kSmallLetters = 0.5;  // ems: their height
constexpr double kInCell = 0.85;       // of a picture's area, that the cell has which holds it
constexpr double kLabelGap = 4;        // points between the lines of a label on a drawing
constexpr double kTurnedGap = 6;       // points between lines of one turned text
constexpr double kVerticalGap = 4;     // ems between lines of one vertical text
constexpr double kRadians = 0.017453292519943295;  // in a degree

// A part of the flow before it is in its column: lines of text that stay together, or a block.
struct FlowPart {
  std::vector<const WordLine*> lines;  // from the top
  Block block;                         // without lines
};

std::size_t LettersOf(const WordLine& line) {
  std::size_t letters = 0;
  for (const Word& word : line.words) {
    letters += word.text.size() + 1;
  }
  return letters;
}

RegionItem ItemOf(const WordLine& line) {
  return {.box = {line.box.left - line.inset, line.baseline - kSmallLetters * line.size,
                  line.box.right, line.baseline},
          .size = line.size,
          .letters = LettersOf(line)};
}

// Before what stands lower.
void InsertByPlace(Block block, TableCell& cell) {
  const double upper = UpperEdge(BoxOf(block));
  const auto below =
      std::find_if(cell.blocks.begin(), cell.blocks.end(),
                   [upper](const Block& own) { return UpperEdge(BoxOf(own)) > upper; });
  cell.blocks.insert(below, std::move(block));
}

class PageAnalyzer {
 public:
  explicit PageAnalyzer(const PageModel& page)
      : page_(&page), looks_(page, layout_.looks), paragraphs_(page, looks_) {
    layout_.number = page.number;
    layout_.width = page.width;
    layout_.height = page.height;
  }

  PageLayout Analyze();

 private:
  void CopyLinks();
  void PlaceTables();
  void Uncover(const Drawing& drawing);
  void PlaceBehind(PageGraphics& graphics);
  TableCell* CellAround(const pdf::Box& picture);
  void PlacePicture(Picture picture);
  void PlaceDrawing(Drawing drawing);
  void PlaceLines();
  void PlaceTogether(std::vector<const WordLine*> lines);
  void PlaceLabels(const std::vector<const WordLine*>& lines);
  void PlaceTurned(const TurnedText& turned);
  void PlaceVertical(const TurnedText& turned);
  void AddTurned(const std::vector<const WordLine*>& lines, const TurnedText& turned);
  bool MoveIntoCell(Floating& floating);
  void AddFloat(const std::vector<const WordLine*>& lines);
  template <typename Thing>
  void AddThing(Thing thing);
  void MakeBands();
  void FillColumn(const RegionColumn& source, Column& column);
  void FlushLines(std::vector<const WordLine*>& lines, Column& column);

  const PageModel* page_;
  PageLayout layout_;
  LookTable looks_;
  ParagraphMaker paragraphs_;
  PageText text_;
  std::vector<std::uint32_t> used_;  // in PageModel::paths: of words and of tables
  std::vector<pdf::Box> tables_;
  std::vector<pdf::Box> ruled_text_;
  std::vector<FlowPart> parts_;
  std::vector<RegionItem> items_;  // of the parts
  std::vector<pdf::Box> things_;   // pictures and drawings of the flow, whose text is labels
};

void PageAnalyzer::CopyLinks() {
  for (const PageLink& link : page_->links) {
    layout_.links.push_back(
        {.uri = link.uri, .bookmark = {}, .page = link.target_page, .y = link.target_y});
  }
}

// What tables have taken is no text of the flow any more.
void PageAnalyzer::PlaceTables() {
  used_ = text_.marks;
  TableMaker tables(text_.upright.lines, paragraphs_);
  PageTables page_tables = FindTables(*page_, text_.upright);
  ruled_text_ = std::move(page_tables.ruled_text);
  for (FoundTable& found : page_tables.tables) {
    used_.insert(used_.end(), found.paths.begin(), found.paths.end());
    tables_.push_back(found.table.box);
    items_.push_back({.box = found.table.box});
    parts_.push_back({.lines = {}, .block = Block{tables.Make(std::move(found))}});
  }
  std::sort(used_.begin(), used_.end());
  if (!parts_.empty()) {
    text_.upright.lines = tables.LinesOutside();
  }
}

// The cell that holds the picture; null for none.
TableCell* PageAnalyzer::CellAround(const pdf::Box& picture) {
  for (FlowPart& part : parts_) {
    auto* table = std::get_if<Table>(&part.block.content);
    if (table == nullptr || CoveredShare(picture, table->box) < kInCell) {
      continue;
    }
    const auto cell = std::find_if(
        table->cells.begin(), table->cells.end(),
        [&picture](const TableCell& own) { return CoveredShare(picture, own.box) >= kInCell; });
    return cell == table->cells.end() ? nullptr : &*cell;
  }
  return nullptr;
}

void PageAnalyzer::PlacePicture(Picture picture) {
  TableCell* cell = CellAround(picture.box);
  if (cell == nullptr) {
    AddThing(std::move(picture));
    return;
  }
  InsertByPlace(Block{std::move(picture)}, *cell);
}

// In a cell, whose fill would lie over it, unless it lies behind the text there.
void PageAnalyzer::PlaceDrawing(Drawing drawing) {
  TableCell* cell = drawing.is_simple ? nullptr : CellAround(drawing.box);
  const bool has_room =
      cell != nullptr &&
      std::none_of(cell->blocks.begin(), cell->blocks.end(), [&drawing](const Block& block) {
        return UpperEdge(BoxOf(block)) < LowerEdge(drawing.box) &&
               LowerEdge(BoxOf(block)) > UpperEdge(drawing.box);
      });
  if (!has_room) {
    AddThing(std::move(drawing));
    return;
  }
  InsertByPlace(Block{std::move(drawing)}, *cell);
}

template <typename Thing>
void PageAnalyzer::AddThing(Thing thing) {
  things_.push_back(thing.box);
  items_.push_back({.box = thing.box});
  parts_.push_back({.lines = {}, .block = Block{std::move(thing)}});
}

// The picture of a drawing shows what is painted with it. White cells over it would hide all else.
void PageAnalyzer::Uncover(const Drawing& drawing) {
  for (FlowPart& part : parts_) {
    auto* table = std::get_if<Table>(&part.block.content);
    if (drawing.is_simple || table == nullptr || drawing.box.Within(table->box).IsEmpty()) {
      continue;
    }
    for (TableCell& cell : table->cells) {
      if (cell.fill && IsWhite(*cell.fill) && CoveredShare(cell.box, drawing.box) > kInCell) {
        cell.fill.reset();
      }
    }
  }
}

void PageAnalyzer::PlaceBehind(PageGraphics& graphics) {
  std::ranges::for_each(graphics.behind_drawings,
                        [this](const Drawing& drawing) { Uncover(drawing); });
  const auto place = [this](auto& things) {
    for (auto& thing : things) {
      Floating floating{.box = thing.box, .is_behind = true};
      floating.blocks.push_back(Block{std::move(thing)});
      layout_.floats.push_back(std::move(floating));
    }
  };
  place(graphics.behind_pictures);
  place(graphics.behind_drawings);
}

// The first box that the line lies in.
std::vector<pdf::Box>::const_iterator BoxAround(const WordLine& line,
                                                const std::vector<pdf::Box>& boxes) {
  const double x = MiddleX(line.box);
  const double y = line.baseline - kSmallLetters * line.size / 2;
  return std::find_if(boxes.begin(), boxes.end(),
                      [&](const pdf::Box& box) { return Holds(box, x, y); });
}

// Lines in pictures and drawings are labels, all others are part of the flow.
void PageAnalyzer::PlaceLines() {
  std::vector<const WordLine*> labels;
  std::vector<std::vector<const WordLine*>> between_rules(ruled_text_.size());
  std::vector<WordLine*> flow;
  std::size_t compared = 0;
  for (WordLine& line : text_.upright.lines) {
    compared += things_.size();
    const bool is_label =
        compared <= limits::kMaxBoxComparisons && BoxAround(line, things_) != things_.end();
    if (is_label) {
      labels.push_back(&line);
    } else {
      flow.push_back(&line);
    }
  }
  for (const WordLine* line : TakeInitials(flow)) {
    const auto ruled = BoxAround(*line, ruled_text_);
    if (ruled != ruled_text_.end()) {
      between_rules[static_cast<std::size_t>(ruled - ruled_text_.begin())].push_back(line);
      continue;
    }
    items_.push_back(ItemOf(*line));
    parts_.push_back({.lines = {line}, .block = {}});
  }
  for (std::vector<const WordLine*>& lines : between_rules) {
    PlaceTogether(std::move(lines));
  }
  PlaceLabels(labels);
}

void PageAnalyzer::PlaceTogether(std::vector<const WordLine*> lines) {
  if (lines.empty()) {
    return;
  }
  std::stable_sort(lines.begin(), lines.end(),
                   [](const WordLine* a, const WordLine* b) { return a->baseline < b->baseline; });
  pdf::Box box = lines.front()->box;
  for (const WordLine* line : lines) {
    box = Around(box, line->box);
  }
  items_.push_back({.box = box});
  parts_.push_back({.lines = std::move(lines), .block = {}});
}

void PageAnalyzer::AddFloat(const std::vector<const WordLine*>& lines) {
  Floating floating{.box = lines.front()->box};
  for (const WordLine* line : lines) {
    floating.box = Around(floating.box, line->box);
  }
  for (Paragraph& paragraph : paragraphs_.Make(lines, floating.box)) {
    floating.blocks.push_back(Block{std::move(paragraph)});
  }
  layout_.floats.push_back(std::move(floating));
}

void PageAnalyzer::PlaceLabels(const std::vector<const WordLine*>& lines) {
  std::vector<pdf::Box> boxes;
  boxes.reserve(lines.size());
  for (const WordLine* line : lines) {
    boxes.push_back(line->box);
  }
  for (const std::vector<std::uint32_t>& group : GroupBoxes(boxes, kLabelGap)) {
    std::vector<const WordLine*> members;
    members.reserve(group.size());
    for (const std::uint32_t member : group) {
      members.push_back(lines[member]);
    }
    AddFloat(members);
  }
}

// The text lies as if it were turned upright about its middle.
void PageAnalyzer::PlaceTurned(const TurnedText& turned) {
  std::vector<pdf::Box> boxes;
  boxes.reserve(turned.lines.size());
  for (const WordLine& line : turned.lines) {
    boxes.push_back(line.box);
  }
  for (const std::vector<std::uint32_t>& group : GroupBoxes(boxes, kTurnedGap)) {
    std::vector<const WordLine*> lines;
    lines.reserve(group.size());
    for (const std::uint32_t member : group) {
      lines.push_back(&turned.lines[member]);
    }
    AddTurned(lines, turned);
  }
}

// What stands above each other are columns, read from the top; their lines go on to the left.
void PageAnalyzer::PlaceVertical(const TurnedText& turned) {
  std::vector<RegionItem> items;
  for (const WordLine& line : turned.lines) {
    items.push_back(ItemOf(line));
  }
  for (const RegionBand& band : CutIntoBands(items, false)) {
    for (const RegionColumn& column : band.columns) {
      std::vector<const WordLine*> lines;
      for (const std::uint32_t item : column.items) {
        const WordLine& line = turned.lines[item];
        const double pitch = lines.empty() ? 0 : line.baseline - lines.back()->baseline;
        if (pitch < -line.size || pitch > kVerticalGap * line.size) {
          AddTurned(std::exchange(lines, {}), turned);
        }
        lines.push_back(&line);
      }
      AddTurned(lines, turned);
    }
  }
}

void PageAnalyzer::AddTurned(const std::vector<const WordLine*>& lines, const TurnedText& turned) {
  AddFloat(lines);
  Floating& floating = layout_.floats.back();
  floating.angle = turned.angle;
  floating.is_vertical = turned.is_vertical;
  const double cosine = std::cos(turned.angle * kRadians);
  const double sine = std::sin(turned.angle * kRadians);
  const double x = MiddleX(floating.box);
  const double y = MiddleY(floating.box);
  const double dx = x * cosine - y * sine - x;
  const double dy = x * sine + y * cosine - y;
  floating.box = {floating.box.left + dx, floating.box.bottom + dy, floating.box.right + dx,
                  floating.box.top + dy};
  for (Block& block : floating.blocks) {
    MoveBy(std::get<Paragraph>(block.content), dx, dy);
  }
  if (MoveIntoCell(floating)) {
    layout_.floats.pop_back();
  }
}

// Text that runs upwards or downwards in a cell which has no other. What is read from the right
// would begin at the wrong end.
bool PageAnalyzer::MoveIntoCell(Floating& floating) {
  const bool runs_down = floating.angle == 90;
  const bool runs_left = std::any_of(
      floating.blocks.begin(), floating.blocks.end(),
      [](const Block& block) { return std::get<Paragraph>(block.content).is_right_to_left; });
  if (runs_left || (!runs_down && floating.angle != 270)) {
    return false;
  }
  const pdf::Box seen = QuarterTurned(floating.box);
  TableCell* cell = CellAround(seen);
  if (cell == nullptr || (!cell->blocks.empty() && cell->angle != floating.angle)) {
    return false;
  }
  cell->angle = floating.angle;
  const double x = MiddleX(seen) - MiddleX(cell->box);
  const double y = MiddleY(seen) - MiddleY(cell->box);
  for (Block& block : floating.blocks) {
    MoveBy(std::get<Paragraph>(block.content), (runs_down ? y : -y) - x, (runs_down ? -x : x) - y);
    InsertByPlace(std::move(block), *cell);
  }
  return true;
}

void PageAnalyzer::FlushLines(std::vector<const WordLine*>& lines, Column& column) {
  for (Paragraph& paragraph : paragraphs_.Make(lines, column.box)) {
    column.blocks.push_back(Block{std::move(paragraph)});
  }
  lines.clear();
}

// Lines that follow each other downwards make paragraphs together; where the order goes up again,
// a column within the column begins.
void PageAnalyzer::FillColumn(const RegionColumn& source, Column& column) {
  std::vector<const WordLine*> lines;
  for (const std::uint32_t item : source.items) {
    FlowPart& part = parts_[item];
    if (part.lines.empty()) {
      FlushLines(lines, column);
      column.blocks.push_back(std::move(part.block));
      continue;
    }
    const WordLine& first = *part.lines.front();
    if (!lines.empty() && first.baseline < lines.back()->baseline - first.size) {
      FlushLines(lines, column);
    }
    lines.insert(lines.end(), part.lines.begin(), part.lines.end());
  }
  FlushLines(lines, column);
}

void PageAnalyzer::MakeBands() {
  if (items_.empty()) {
    return;
  }
  pdf::Box all = items_.front().box;
  std::size_t to_left = 0;
  for (std::size_t i = 0; i < items_.size(); ++i) {
    all = Around(all, items_[i].box);
    to_left += !parts_[i].lines.empty() && parts_[i].lines.front()->is_right_to_left ? 1 : 0;
  }
  for (const RegionBand& source : CutIntoBands(items_, 2 * to_left > items_.size())) {
    Band band{.box = {all.left, source.box.bottom, all.right, source.box.top}, .columns = {}};
    for (const RegionColumn& part : source.columns) {
      Column column{.box = source.columns.size() == 1 ? band.box : part.box, .blocks = {}};
      FillColumn(part, column);
      band.columns.push_back(std::move(column));
    }
    layout_.bands.push_back(std::move(band));
  }
}

PageLayout PageAnalyzer::Analyze() {
  text_ = ReadPageText(*page_);
  CopyLinks();
  PlaceTables();
  PageGraphics graphics = FindGraphics(*page_, text_.upright.lines, used_, tables_);
  layout_.background = graphics.background;
  PlaceBehind(graphics);
  for (Picture& picture : graphics.pictures) {
    PlacePicture(std::move(picture));
  }
  for (Drawing& drawing : graphics.drawings) {
    PlaceDrawing(std::move(drawing));
  }
  PlaceLines();
  for (const TurnedText& turned : text_.turned) {
    turned.is_vertical ? PlaceVertical(turned) : PlaceTurned(turned);
  }
  MakeBands();
  return std::move(layout_);
}

}  // namespace

PageLayout AnalyzePage(const PageModel& page) {
  return PageAnalyzer(page).Analyze();
}

}  // namespace TarnixTools::engines
