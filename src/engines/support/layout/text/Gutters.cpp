#include "engines/support/layout/text/Gutters.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <utility>

#include "engines/support/layout/Boxes.h"
#include "engines/support/layout/text/WordLines.h"

namespace TarnixTools::engines {

namespace {

constexpr double kLeastGap = 0.55;     // ems
constexpr double kPlace = 2;           // points: places of gutters that are looked at
constexpr std::size_t kLeastRows = 5;  // with the gap, one below the other
constexpr std::size_t kMostPlaces = 16;
constexpr double kRowTolerance = 0.3;    // ems between the baselines of lines of one row
constexpr double kWidestPitch = 2.5;     // ems between rows that follow each other
constexpr std::size_t kWidestGap = 100;  // places of one gap that are counted

struct Gap {
  double left;
  double right;
};

// Lines of one baseline, with the gaps between all their words.
struct Row {
  std::size_t first = 0;  // of its lines
  std::size_t end = 0;
  double baseline = 0;
  double size = 0;
  double left = 0;
  double right = 0;
  std::vector<Gap> gaps;
};

// Words from left to right, whatever the order in which they are read.
std::vector<pdf::Box> BoxesOf(const std::vector<WordLine>& lines, const Row& row) {
  std::vector<pdf::Box> boxes;
  for (std::size_t i = row.first; i < row.end; ++i) {
    for (const Word& word : lines[i].words) {
      boxes.push_back(word.box);
    }
  }
  std::sort(boxes.begin(), boxes.end(),
            [](const pdf::Box& a, const pdf::Box& b) { return a.left < b.left; });
  return boxes;
}

void FindGaps(const std::vector<WordLine>& lines, Row& row) {
  const std::vector<pdf::Box> boxes = BoxesOf(lines, row);
  row.left = boxes.front().left;
  row.right = row.left;
  for (const pdf::Box& box : boxes) {
    if (box.left - row.right >= kLeastGap * row.size) {
      row.gaps.push_back({row.right, box.left});
    }
    row.right = std::max(row.right, box.right);
  }
}

std::vector<Row> RowsOf(const std::vector<WordLine>& lines) {
  std::vector<Row> rows;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const bool goes_on = !rows.empty() && std::abs(lines[i].baseline - rows.back().baseline) <=
                                              kRowTolerance * lines[i].size;
    if (!goes_on) {
      rows.push_back({.first = i, .baseline = lines[i].baseline, .size = lines[i].size});
    }
    rows.back().end = i + 1;
  }
  for (Row& row : rows) {
    FindGaps(lines, row);
  }
  return rows;
}

// Where most rows have gaps, the best first.
std::vector<double> PlacesOf(const std::vector<Row>& rows) {
  std::map<long, std::size_t> counts;
  for (const Row& row : rows) {
    for (const Gap& gap : row.gaps) {
      const long first = std::lround(std::ceil(gap.left / kPlace));
      const long last = std::min(std::lround(std::floor(gap.right / kPlace)),
                                 first + static_cast<long>(kWidestGap));
      for (long place = first; place <= last; ++place) {
        ++counts[place];
      }
    }
  }
  std::vector<std::pair<std::size_t, long>> best;
  for (const auto& [place, count] : counts) {
    if (count >= kLeastRows) {
      best.emplace_back(count, place);
    }
  }
  std::sort(best.rbegin(), best.rend());
  best.resize(std::min(best.size(), kMostPlaces));
  std::vector<double> places;
  places.reserve(best.size());
  for (const auto& [count, place] : best) {
    places.push_back(static_cast<double>(place) * kPlace);
  }
  return places;
}

bool HasGapAt(const Row& row, double x) {
  return std::any_of(row.gaps.begin(), row.gaps.end(),
                     [x](const Gap& gap) { return x >= gap.left && x <= gap.right; });
}

class GutterCutter {
 public:
  explicit GutterCutter(std::vector<WordLine>& lines) : lines_(&lines), rows_(RowsOf(lines)) {}

  void Cut();

 private:
  void MarkRows(double x);

  std::vector<WordLine>* lines_;
  std::vector<Row> rows_;
  std::map<std::size_t, std::vector<double>> cuts_;  // by line
};

// Rows that follow each other and leave the place free; a row that ends before it does not matter.
void GutterCutter::MarkRows(double x) {
  std::vector<std::size_t> open;
  double last = 0;
  const auto settle = [&] {
    for (const std::size_t row : open.size() >= kLeastRows ? open : std::vector<std::size_t>()) {
      for (std::size_t i = rows_[row].first; i < rows_[row].end; ++i) {
        cuts_[i].push_back(x);
      }
    }
    open.clear();
  };
  for (std::size_t i = 0; i < rows_.size(); ++i) {
    const Row& row = rows_[i];
    if (row.baseline - last > kWidestPitch * row.size) {
      settle();
    }
    last = row.baseline;
    if (row.right < x || row.left > x) {
      continue;
    }
    if (HasGapAt(row, x)) {
      open.push_back(i);
    } else {
      settle();
    }
  }
  settle();
}

// The parts of a line between the places, each a line with its words in their order.
std::vector<WordLine> PartsOf(WordLine& line, std::vector<double> places) {
  std::sort(places.begin(), places.end());
  std::map<std::size_t, WordLine> parts;
  for (Word& word : line.words) {
    const auto part = static_cast<std::size_t>(
        std::upper_bound(places.begin(), places.end(), MiddleX(word.box)) - places.begin());
    parts[part].words.push_back(std::move(word));
  }
  std::vector<WordLine> all;
  for (auto& [place, part] : parts) {
    part.is_right_to_left = line.is_right_to_left;
    MeasureLine(part);
    all.push_back(std::move(part));
  }
  return all;
}

void GutterCutter::Cut() {
  for (const double x : PlacesOf(rows_)) {
    MarkRows(x);
  }
  if (cuts_.empty()) {
    return;
  }
  std::vector<WordLine> cut;
  for (std::size_t i = 0; i < lines_->size(); ++i) {
    const auto places = cuts_.find(i);
    if (places == cuts_.end()) {
      cut.push_back(std::move((*lines_)[i]));
      continue;
    }
    for (WordLine& part : PartsOf((*lines_)[i], places->second)) {
      cut.push_back(std::move(part));
    }
  }
  *lines_ = std::move(cut);
}

}  // namespace

void CutAtGutters(std::vector<WordLine>& lines) {
  GutterCutter(lines).Cut();
}

}  // namespace TarnixTools::engines
