#include "engines/support/layout/graphics/PageGraphics.h"

#include <algorithm>
#include <string>
#include <utility>

#include "engines/support/layout/Boxes.h"
#include "engines/support/layout/Colors.h"
#include "engines/support/layout/LayoutLimits.h"
#include "engines/support/layout/graphics/BoxGroups.h"

namespace TarnixTools::engines {

namespace {

constexpr double kWholePage = 0.85;   // of the page, that a background covers at least
constexpr double kLeastSide = 2;      // points of a picture
constexpr double kTouching = 1;       // points between the parts of a picture
constexpr double kNearby = 6;         // points between the parts of a drawing
constexpr double kThinDrawing = 10;   // points: rules, no drawing
constexpr double kSmallDrawing = 24;  // points of both sides: a sign beside text
constexpr double kSmallPicture = 14;
constexpr double kShapesOfLine = 1.5;   // of plain shapes that are fields behind text, not a chart
constexpr double kTextOver = 0.12;      // of a drawing's area: text that runs over it
constexpr double kWideText = 0.4;       // of a drawing's width: lines that are no labels
constexpr std::size_t kWordsOver = 25;  // of a picture, that are no labels
constexpr double kMostOfTable = 0.7;
constexpr double kThickestReach = 20;  // points that a line reaches beyond its path

bool IsWithin(const pdf::Box& box, double side) {
  return box.width() <= side && box.height() <= side;
}

// Text that lies over a box.
struct TextOver {
  std::size_t lines = 0;
  std::size_t words = 0;
  std::size_t wide_lines = 0;
  double area = 0;
};

class GraphicsFinder {
 public:
  GraphicsFinder(const PageModel& page, const std::vector<WordLine>& lines,
                 const std::vector<std::uint32_t>& used, const std::vector<pdf::Box>& tables)
      : page_(&page),
        lines_(&lines),
        used_(&used),
        tables_(&tables),
        paper_{0, 0, page.width, page.height} {
    for (const WordLine& line : lines) {
      by_baseline_.push_back(&line);
    }
    std::sort(by_baseline_.begin(), by_baseline_.end(),
              [](const WordLine* a, const WordLine* b) { return a->baseline < b->baseline; });
  }

  PageGraphics Find();

 private:
  void FindPictures();
  void FindDrawings();
  void PlaceDrawing(Drawing drawing);
  std::vector<std::uint32_t> SeenPaths();
  bool IsBackground(const PathShape& path);
  pdf::Box InkBox(const Drawing& drawing) const;
  std::string DescriptionOf(const Picture& picture) const;
  TextOver TextIn(const pdf::Box& box);

  bool CoversPage(const pdf::Box& box) const { return CoveredShare(paper_, box) >= kWholePage; }

  const PageModel* page_;
  const std::vector<WordLine>* lines_;
  const std::vector<std::uint32_t>* used_;
  const std::vector<pdf::Box>* tables_;
  pdf::Box paper_;
  std::vector<const WordLine*> by_baseline_;
  std::size_t compared_ = 0;  // lines with boxes
  PageGraphics found_;
};

TextOver GraphicsFinder::TextIn(const pdf::Box& box) {
  TextOver over;
  const auto first =
      std::lower_bound(by_baseline_.begin(), by_baseline_.end(), UpperEdge(box),
                       [](const WordLine* line, double upper) { return line->baseline < upper; });
  for (auto line = first; line != by_baseline_.end() && (*line)->baseline <= LowerEdge(box);
       ++line) {
    if (++compared_ > limits::kMaxBoxComparisons) {
      return {};
    }
    if (CoveredShare((*line)->box, box) < 0.5) {
      continue;
    }
    ++over.lines;
    over.words += (*line)->words.size();
    over.wide_lines += (*line)->box.width() > kWideText * box.width() ? 1 : 0;
    over.area += AreaOf((*line)->box);
  }
  return over;
}

// What the structure tree says of the first of its images that it describes.
std::string GraphicsFinder::DescriptionOf(const Picture& picture) const {
  for (const std::uint32_t image : picture.images) {
    const std::int32_t mark = page_->images[image].mark;
    if (mark >= 0 && static_cast<std::size_t>(mark) < page_->roles.size() &&
        !page_->roles[static_cast<std::size_t>(mark)].description.empty()) {
      return page_->roles[static_cast<std::size_t>(mark)].description;
    }
  }
  return {};
}

void GraphicsFinder::FindPictures() {
  std::vector<std::uint32_t> seen;
  std::vector<pdf::Box> boxes;
  for (std::uint32_t i = 0; i < page_->images.size(); ++i) {
    const pdf::Box box = page_->images[i].box.Within(paper_);
    if (box.IsEmpty() || std::max(box.width(), box.height()) < kLeastSide) {
      continue;
    }
    if (CoversPage(box)) {
      found_.behind_pictures.push_back({.box = box, .images = {i}, .description = {}});
      continue;
    }
    seen.push_back(i);
    boxes.push_back(box);
  }
  for (const std::vector<std::uint32_t>& group : GroupBoxes(boxes, kTouching)) {
    Picture picture{.box = boxes[group.front()], .images = {}, .description = {}};
    for (const std::uint32_t member : group) {
      picture.box = Around(picture.box, boxes[member]);
      picture.images.push_back(seen[member]);
    }
    picture.description = DescriptionOf(picture);
    const TextOver over = TextIn(picture.box);
    const bool is_behind = CoversPage(picture.box) || over.words >= kWordsOver ||
                           over.wide_lines > 0 || IsWithin(picture.box, kSmallPicture);
    (is_behind ? found_.behind_pictures : found_.pictures).push_back(std::move(picture));
  }
  if (lines_->empty() && found_.pictures.empty()) {
    found_.pictures = std::exchange(found_.behind_pictures, {});
  }
}

bool GraphicsFinder::IsBackground(const PathShape& path) {
  if (!path.fill || !CoversPage(path.box.Within(paper_))) {
    return false;
  }
  found_.background = *path.fill;
  return true;
}

std::vector<std::uint32_t> GraphicsFinder::SeenPaths() {
  std::vector<std::uint32_t> seen;
  for (std::uint32_t i = 0; i < page_->paths.size(); ++i) {
    const PathShape& path = page_->paths[i];
    const pdf::Box box = path.box.Within(Grown(paper_, 1));
    const bool is_seen = path.stroke || (path.fill && !IsWhite(*path.fill));
    const bool is_there =
        box.width() >= 0 && box.height() >= 0 && std::max(box.width(), box.height()) >= kLeastSide;
    if (std::binary_search(used_->begin(), used_->end(), i) || IsBackground(path) || !is_seen ||
        !is_there) {
      continue;
    }
    seen.push_back(i);
  }
  if (found_.background && IsWhite(*found_.background)) {
    found_.background.reset();
  }
  return seen;
}

// Text of any length runs over frames and fields of colour; a chart has labels only.
bool IsBehindText(const Drawing& drawing, const TextOver& over) {
  const pdf::Box& box = drawing.box;
  const auto shapes = static_cast<double>(drawing.paths.size());
  const bool is_rule =
      drawing.is_simple && (box.height() <= kThinDrawing || box.width() <= kThinDrawing);
  const bool has_text =
      over.area > kTextOver * AreaOf(box) || (over.wide_lines > 1 && over.words >= kWordsOver);
  const bool is_field = drawing.is_simple && over.lines > 0 &&
                        shapes <= kShapesOfLine * static_cast<double>(over.lines) + 2;
  return is_rule || has_text || is_field || IsWithin(box, kSmallDrawing);
}

void GraphicsFinder::PlaceDrawing(Drawing drawing) {
  const bool is_of_table =
      std::any_of(tables_->begin(), tables_->end(), [&drawing](const pdf::Box& table) {
        return CoveredShare(table, drawing.box) > kMostOfTable ||
               (drawing.is_simple && CoveredShare(drawing.box, table) > kMostOfTable);
      });
  const bool is_behind = is_of_table || CoversPage(drawing.box) ||
                         IsBehindText(drawing, TextIn(Grown(drawing.box, 1)));
  (is_behind ? found_.behind_drawings : found_.drawings).push_back(std::move(drawing));
}

// What a picture of the drawing has to hold: lines reach beyond their paths by half of their width.
pdf::Box GraphicsFinder::InkBox(const Drawing& drawing) const {
  pdf::Box box = drawing.box;
  for (const std::uint32_t i : drawing.paths) {
    const PathShape& path = page_->paths[i];
    if (path.stroke) {
      const double reach = std::min(path.line_width / 2, kThickestReach);
      box = Around(box, Grown(path.box.Within(paper_), reach).Within(paper_));
    }
  }
  return box;
}

void GraphicsFinder::FindDrawings() {
  const std::vector<std::uint32_t> seen = SeenPaths();
  std::vector<pdf::Box> boxes;
  boxes.reserve(seen.size());
  for (const std::uint32_t path : seen) {
    boxes.push_back(page_->paths[path].box.Within(Grown(paper_, 1)));
  }
  for (const std::vector<std::uint32_t>& group : GroupBoxes(boxes, kNearby)) {
    Drawing drawing{.box = boxes[group.front()], .paths = {}, .is_simple = true, .description = {}};
    for (const std::uint32_t member : group) {
      const std::uint32_t path = seen[member];
      drawing.box = Around(drawing.box, boxes[member]);
      drawing.paths.push_back(path);
      drawing.is_simple = drawing.is_simple && page_->paths[path].kind != PathShape::Kind::kOther;
    }
    if (!drawing.is_simple) {
      drawing.box = InkBox(drawing);
    }
    PlaceDrawing(std::move(drawing));
  }
}

PageGraphics GraphicsFinder::Find() {
  FindPictures();
  FindDrawings();
  return std::move(found_);
}

}  // namespace

PageGraphics FindGraphics(const PageModel& page, const std::vector<WordLine>& lines,
                          const std::vector<std::uint32_t>& used,
                          const std::vector<pdf::Box>& tables) {
  return GraphicsFinder(page, lines, used, tables).Find();
}

}  // namespace TarnixTools::engines
