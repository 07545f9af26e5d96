#include "engines/office/writers/slides/TableRoom.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <limits>
#include <utility>
#include <vector>

namespace TarnixTools::engines::office {

namespace {

constexpr double kCrossing = 0.5;  // points by which text may cross the edge of its cell
constexpr double kPadding = 3;  // between an edge that is moved and the text, where there is room
constexpr double kLeastWidth = 1;  // of a column
constexpr double kFar = std::numeric_limits<double>::max();
constexpr std::size_t kRight = 1;  // in TableCell::borders
constexpr std::size_t kLeft = 3;

struct PlacedCell {
  const TableCell* cell = nullptr;
  double left = 0;
  double right = 0;
  double text_left = kFar;
  double text_right = -kFar;
  bool is_gone = false;  // its place is another cell's

  bool HasText() const { return text_left <= text_right; }
};

PlacedCell Place(const Table& table, const TableCell& cell) {
  PlacedCell placed;
  placed.cell = &cell;
  const std::size_t last = table.columns.size() - 1;
  const std::size_t end = std::size_t{cell.column} + std::max(cell.column_span, 1U);
  placed.left = table.columns[std::min<std::size_t>(cell.column, last)];
  placed.right = table.columns[std::min(end, last)];
  if (cell.angle != 0) {  // its text lies as if it were upright: it is taken to fill the cell
    placed.text_left = placed.left;
    placed.text_right = placed.right;
    return placed;
  }
  for (const Block& block : cell.blocks) {
    const auto* paragraph = std::get_if<Paragraph>(&block.content);
    for (const TextLine& line : paragraph == nullptr ? std::vector<TextLine>() : paragraph->lines) {
      for (const TextPiece& piece : line.pieces) {
        placed.text_left = std::min(placed.text_left, piece.x);
        placed.text_right = std::max(placed.text_right, piece.x + piece.width);
      }
    }
  }
  return placed;
}

// Two cells side by side that share a whole edge.
struct Neighbours {
  PlacedCell* left = nullptr;
  PlacedCell* right = nullptr;

  bool HasRule() const {
    return left->cell->borders[kRight].width > 0 || right->cell->borders[kLeft].width > 0;
  }

  bool MayMove() const { return !HasRule() && left->cell->fill == right->cell->fill; }

  bool IsCrossed() const {
    return left->text_right > left->right + kCrossing || right->text_left < left->right - kCrossing;
  }

  // Where their edge may be: from first to second; none where first is greater.
  std::pair<double, double> Range() const {
    const double from = left->HasText() ? left->text_right : left->left + kLeastWidth;
    const double to = right->HasText() ? right->text_left : right->right - kLeastWidth;
    if (to - from < 2 * kPadding) {
      return {std::max((from + to) / 2, from), std::min((from + to) / 2, to)};
    }
    return {from + (left->HasText() ? kPadding : 0), to - (right->HasText() ? kPadding : 0)};
  }
};

class RoomMaker {
 public:
  explicit RoomMaker(const Table& table) : table_(table) {
    cells_.reserve(table.cells.size());
    for (const TableCell& cell : table.cells) {
      cells_.push_back(Place(table, cell));
    }
    std::ranges::stable_sort(cells_, {}, [](const PlacedCell& placed) { return placed.cell->row; });
  }

  Table Make() {
    for (PlacedCell& cell : cells_) {
      TakeEmptyCells(cell);
    }
    for (std::size_t i = 1; i + 1 < table_.columns.size(); ++i) {
      MoveEdge(table_.columns[i]);
    }
    return Result();
  }

 private:
  PlacedCell* BesideOf(const PlacedCell& cell, bool is_right) {
    const auto row_of = [](const PlacedCell& placed) { return placed.cell->row; };
    const auto first = std::ranges::lower_bound(cells_, cell.cell->row, {}, row_of);
    const auto last = std::ranges::upper_bound(cells_, cell.cell->row, {}, row_of);
    for (auto at = first; at != last; ++at) {
      PlacedCell& other = *at;
      const bool is_beside = is_right ? other.left == cell.right : other.right == cell.left;
      if (!other.is_gone && is_beside && other.cell->row_span == cell.cell->row_span) {
        return &other;
      }
    }
    return nullptr;
  }

  // Cells without anything that the text covers wholly become part of its cell.
  void TakeEmptyCells(PlacedCell& cell) {
    for (const bool is_right : {false, true}) {
      while (!cell.is_gone && cell.HasText()) {
        PlacedCell* other = BesideOf(cell, is_right);
        if (other == nullptr || !other->cell->blocks.empty() ||
            !(is_right ? Neighbours{&cell, other} : Neighbours{other, &cell}).MayMove()) {
          break;
        }
        if (is_right ? cell.text_right < other->right - kLeastWidth
                     : cell.text_left > other->left + kLeastWidth) {
          break;
        }
        (is_right ? cell.right : cell.left) = is_right ? other->right : other->left;
        other->is_gone = true;
      }
    }
  }

  // For all rows where all allow it, otherwise for those where text crosses it.
  void MoveEdge(double edge) {
    std::vector<Neighbours> pairs;
    std::size_t users = 0;
    for (PlacedCell& cell : cells_) {
      users += !cell.is_gone && (cell.left == edge || cell.right == edge) ? 1 : 0;
      PlacedCell* right = !cell.is_gone && cell.right == edge ? BesideOf(cell, true) : nullptr;
      if (right != nullptr && Neighbours{&cell, right}.MayMove()) {
        pairs.push_back({&cell, right});
      }
    }
    std::vector<Neighbours> crossed;
    std::ranges::copy_if(pairs, std::back_inserter(crossed),
                         [](const Neighbours& pair) { return pair.IsCrossed(); });
    if (crossed.empty() || (users == 2 * pairs.size() && MoveTogether(pairs))) {
      return;
    }
    if (!MoveTogether(crossed)) {
      for (const Neighbours& pair : crossed) {
        MoveTogether({pair});
      }
    }
  }

  static bool MoveTogether(const std::vector<Neighbours>& pairs) {
    double from = -kFar;
    double to = kFar;
    for (const Neighbours& pair : pairs) {
      const auto [first, second] = pair.Range();
      from = std::max(from, first);
      to = std::min(to, second);
    }
    if (from > to) {
      return false;
    }
    const double edge = std::clamp(pairs.front().left->right, from, to);
    for (const Neighbours& pair : pairs) {
      pair.left->right = pair.right->left = edge;
    }
    return true;
  }

  Table Result() const {
    Table result = table_;
    result.columns = {table_.columns.front(), table_.columns.back()};
    result.cells.clear();
    for (const PlacedCell& cell : cells_) {
      if (!cell.is_gone) {
        result.columns.insert(result.columns.end(), {cell.left, cell.right});
      }
    }
    std::ranges::sort(result.columns);
    result.columns.erase(std::unique(result.columns.begin(), result.columns.end()),
                         result.columns.end());
    for (const PlacedCell& cell : cells_) {
      if (!cell.is_gone) {
        result.cells.push_back(*cell.cell);
        result.cells.back().column = IndexOf(result, cell.left);
        result.cells.back().column_span = IndexOf(result, cell.right) - result.cells.back().column;
      }
    }
    return result;
  }

  static std::uint32_t IndexOf(const Table& table, double edge) {
    return static_cast<std::uint32_t>(std::ranges::lower_bound(table.columns, edge) -
                                      table.columns.begin());
  }

  const Table& table_;
  std::vector<PlacedCell> cells_;
};

}  // namespace

Table WithRoomForText(const Table& table) {
  const bool is_crossed = std::ranges::any_of(table.cells, [&table](const TableCell& cell) {
    const PlacedCell placed = Place(table, cell);
    return placed.text_right > placed.right + kCrossing ||
           placed.text_left < placed.left - kCrossing;
  });
  return is_crossed ? RoomMaker(table).Make() : table;
}

}  // namespace TarnixTools::engines::office
