#include "engines/support/layout/tables/TableColumns.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "engines/support/layout/LayoutLimits.h"

namespace TarnixTools::engines {

namespace {

constexpr double kCrossingShare = 0.07;  // of the rows may run over a gap
constexpr double kOverhang = 0.4;        // of a column, or of a chunk
constexpr double kNarrowest = 0.25;      // of the font's size: a gap

struct Stretch {
  double left = 0;
  double right = 0;
  std::size_t row = 0;
  bool is_numeric = false;
};

// The chunks of the rows that show columns best.
class Coverage {
 public:
  Coverage(std::span<const InkRow> rows, double left, double right) {
    std::vector<std::vector<Stretch>> all;
    std::size_t most = 0;
    for (std::size_t r = 0; r < rows.size(); ++r) {
      std::vector<Stretch> stretches;
      for (const Chunk& chunk : rows[r].chunks) {
        if (chunk.right > left && chunk.left < right) {
          stretches.push_back({chunk.left, chunk.right, r, chunk.is_numeric});
        }
      }
      most = std::max(most, stretches.size());
      size_ = std::max(size_, rows[r].size);
      all.push_back(std::move(stretches));
    }
    for (const std::vector<Stretch>& stretches : all) {
      if (stretches.size() >= 2 && 2 * stretches.size() >= most) {
        stretches_.insert(stretches_.end(), stretches.begin(), stretches.end());
        ++row_count_;
      }
    }
  }

  std::vector<double> Gaps(std::size_t min_rows) const;

 private:
  struct Gap {
    double from = 0;
    double to = 0;
  };

  std::vector<Gap> WhiteGaps() const;
  std::size_t RowsBetween(double from, double to) const;

  std::vector<Stretch> stretches_;
  std::size_t row_count_ = 0;
  double size_ = 0;
};

std::vector<Coverage::Gap> Coverage::WhiteGaps() const {
  struct Event {
    double x;
    int step;
  };

  std::vector<Event> events;
  for (const Stretch& stretch : stretches_) {
    events.push_back({stretch.left, 1});
    events.push_back({stretch.right, -1});
  }
  std::sort(events.begin(), events.end(), [](const Event& a, const Event& b) { return a.x < b.x; });
  const int allowed = static_cast<int>(kCrossingShare * static_cast<double>(row_count_));
  std::vector<Gap> gaps;
  int open = 0;
  bool is_white = false;
  for (const Event& event : events) {
    open += event.step;
    if (open <= allowed && !is_white) {
      gaps.push_back({event.x, event.x});
      is_white = true;
    } else if (open > allowed && is_white) {
      gaps.back().to = event.x;
      is_white = false;
    }
  }
  if (is_white) {
    gaps.pop_back();  // what follows the last column
  }
  std::erase_if(gaps, [this](const Gap& gap) { return gap.to - gap.from < kNarrowest * size_; });
  return gaps;
}

// How many rows have something that lies mostly between two gaps.
std::size_t Coverage::RowsBetween(double from, double to) const {
  std::size_t count = 0;
  std::size_t last = static_cast<std::size_t>(-1);
  for (const Stretch& stretch : stretches_) {
    const double middle = (stretch.left + stretch.right) / 2;
    if (middle > from && middle < to && stretch.row != last) {
      ++count;
      last = stretch.row;
    }
  }
  return count;
}

std::vector<double> Coverage::Gaps(std::size_t min_rows) const {
  if (row_count_ < min_rows) {
    return {};
  }
  std::vector<Gap> gaps = WhiteGaps();
  if (gaps.size() > limits::kMaxTableColumns) {
    return {};
  }
  // A column that hardly any row has is no column: what it holds belongs to the one beside it.
  for (std::size_t i = 0; i <= gaps.size() && !gaps.empty();) {
    const double from = i == 0 ? -1e9 : gaps[i - 1].to;
    const double to = i == gaps.size() ? 1e9 : gaps[i].from;
    if (RowsBetween(from, to) >= std::min<std::size_t>(min_rows, 2)) {
      ++i;
      continue;
    }
    gaps.erase(gaps.begin() + static_cast<std::ptrdiff_t>(i == gaps.size() ? i - 1 : i));
  }
  std::vector<double> places;
  places.reserve(gaps.size());
  for (const Gap& gap : gaps) {
    places.push_back((gap.from + gap.to) / 2);
  }
  return places;
}

}  // namespace

std::pair<std::size_t, std::size_t> ColumnsOf(const Chunk& chunk, std::span<const double> edges) {
  const double width = chunk.right - chunk.left;
  std::size_t first = edges.size();
  std::size_t last = 0;
  std::size_t best = 0;
  double most = -std::numeric_limits<double>::infinity();
  for (std::size_t c = 0; c + 1 < edges.size(); ++c) {
    const double shared = std::min(chunk.right, edges[c + 1]) - std::max(chunk.left, edges[c]);
    if (shared > most) {
      most = shared;
      best = c;
    }
    // It reaches well into the column: over a good part of it, or of itself.
    if (shared > kOverhang * (edges[c + 1] - edges[c]) || shared > kOverhang * width) {
      first = std::min(first, c);
      last = c;
    }
  }
  return first == edges.size() ? std::pair{best, best} : std::pair{first, std::max(first, last)};
}

std::vector<double> FindColumnGaps(std::span<const InkRow> rows, double left, double right,
                                   std::size_t min_rows) {
  return Coverage(rows, left, right).Gaps(min_rows);
}

}  // namespace TarnixTools::engines
