#include "engines/support/layout/regions/Bands.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "engines/support/layout/Boxes.h"
#include "engines/support/layout/LayoutLimits.h"

namespace TarnixTools::engines {

namespace {

constexpr double kGutter = 0.85;           // ems between columns, at least
constexpr double kLeastGutter = 5;         // points
constexpr double kStripOverlap = 0.5;      // points that strips may share
constexpr std::size_t kLeastLines = 3;     // of a column
constexpr double kLeastLetters = 11;       // of its lines, in the middle
constexpr std::size_t kLongColumn = 8;     // lines
constexpr double kLeastThing = 30;         // points: height of a picture that is a column
constexpr std::size_t kLinesAhead = 4;     // by which a column may begin above those beside it
constexpr double kGapOfLines = 1.3;        // ems between lines of one column, at most
constexpr double kGapBeforeHeading = 1.6;  // ems that part what follows the columns from them

using Items = std::vector<std::uint32_t>;

struct Interval {
  double left;
  double right;
};

// What of the width is covered: intervals from left to right with gutters between them. Those
// beyond limits::kMaxColumnsOfBand are one.
class Coverage {
 public:
  explicit Coverage(double gutter) : gutter_(gutter) {}

  void Add(double left, double right);

  const std::vector<Interval>& parts() const { return parts_; }

  std::size_t gutters() const { return parts_.empty() ? 0 : parts_.size() - 1; }

 private:
  double gutter_;
  std::vector<Interval> parts_;
};

void Coverage::Add(double left, double right) {
  const auto first = std::find_if(parts_.begin(), parts_.end(), [&](const Interval& part) {
    return part.right + gutter_ > left;
  });
  auto last = first;
  Interval joined{left, right};
  while (last != parts_.end() && last->left - gutter_ < right) {
    joined.left = std::min(joined.left, last->left);
    joined.right = std::max(joined.right, last->right);
    ++last;
  }
  const auto at = parts_.erase(first, last);
  parts_.insert(at, joined);
  if (parts_.size() > limits::kMaxColumnsOfBand) {
    const double end = parts_.back().right;
    parts_.pop_back();
    parts_.back().right = end;
  }
}

// Items whose heights overlap.
struct Strip {
  Items items;
  double upper = 0;
  double lower = 0;
  Coverage coverage{0};
};

// Strips one below the other with the same gutters.
struct Band {
  std::vector<Strip> strips;
  Coverage coverage{0};
};

class BandCutter {
 public:
  BandCutter(const std::vector<RegionItem>& items, bool is_right_to_left)
      : items_(&items), is_right_to_left_(is_right_to_left), gutter_(UsualGutter()) {}

  std::vector<RegionBand> Cut(Items all) const;

 private:
  double UsualGutter() const;
  std::vector<Strip> StripsOf(Items items) const;
  std::vector<Band> JoinStrips(std::vector<Strip> strips) const;
  bool GoesOn(const Band& band, const Strip& strip, const Coverage& both) const;
  bool KeepsColumns(const Band& band, const Strip& strip) const;
  bool BeginsColumns(const Band& band, const Strip& strip, const Coverage& both) const;
  void CutTail(Band& band, std::vector<Strip>& tail) const;
  std::vector<Items> ColumnsOf(const Band& band) const;
  void JoinWeakColumns(std::vector<Items>& columns) const;
  bool Match(const RegionBand& above, const std::vector<Items>& columns) const;
  bool IsColumn(const Items& column) const;
  pdf::Box BoxOf(const Items& items) const;
  Items InOrder(Items items) const;
  void Append(std::vector<Items> columns, RegionBand& band) const;

  const std::vector<RegionItem>* items_;
  bool is_right_to_left_;
  double gutter_;
};

double BandCutter::UsualGutter() const {
  std::vector<double> sizes;
  for (const RegionItem& item : *items_) {
    if (item.size > 0) {
      sizes.push_back(item.size);
    }
  }
  if (sizes.empty()) {
    return kLeastGutter;
  }
  const auto middle = sizes.begin() + static_cast<std::ptrdiff_t>(sizes.size() / 2);
  std::nth_element(sizes.begin(), middle, sizes.end());
  return std::max(kLeastGutter, kGutter * *middle);
}

pdf::Box BandCutter::BoxOf(const Items& items) const {
  pdf::Box box = (*items_)[items.front()].box;
  for (const std::uint32_t item : items) {
    box = Around(box, (*items_)[item].box);
  }
  return box;
}

std::vector<Strip> BandCutter::StripsOf(Items items) const {
  std::sort(items.begin(), items.end(), [this](std::uint32_t a, std::uint32_t b) {
    return UpperEdge((*items_)[a].box) < UpperEdge((*items_)[b].box);
  });
  std::vector<Strip> strips;
  for (const std::uint32_t item : items) {
    const pdf::Box& box = (*items_)[item].box;
    if (strips.empty() || UpperEdge(box) > strips.back().lower - kStripOverlap) {
      strips.push_back(
          {.upper = UpperEdge(box), .lower = LowerEdge(box), .coverage = Coverage(gutter_)});
    }
    Strip& strip = strips.back();
    strip.items.push_back(item);
    strip.lower = std::max(strip.lower, LowerEdge(box));
    strip.coverage.Add(box.left, box.right);
  }
  return strips;
}

// A strip goes on with the columns of a band when it leaves their gutters free.
bool BandCutter::GoesOn(const Band& band, const Strip& strip, const Coverage& both) const {
  if (band.coverage.gutters() > 0) {
    return both.gutters() >= band.coverage.gutters() || KeepsColumns(band, strip);
  }
  return strip.coverage.gutters() == 0 || BeginsColumns(band, strip, both);
}

// Whether the gutters that the strip closes are but those between labels and what is beside them
// within one of long columns.
bool BandCutter::KeepsColumns(const Band& band, const Strip& strip) const {
  std::vector<Items> columns = ColumnsOf(band);
  JoinWeakColumns(columns);
  const bool are_long = std::all_of(columns.begin(), columns.end(), [this](const Items& column) {
    const auto lines = std::count_if(column.begin(), column.end(), [this](std::uint32_t item) {
      return (*items_)[item].size > 0;
    });
    return static_cast<std::size_t>(lines) >= kLongColumn;
  });
  if (columns.size() < 2 || !are_long) {
    return false;
  }
  Band joined = band;
  joined.strips.push_back(strip);
  std::vector<Items> others = ColumnsOf(joined);
  JoinWeakColumns(others);
  return others.size() == columns.size();
}

// Where one column begins higher than those beside it, its first lines are close above the others.
bool BandCutter::BeginsColumns(const Band& band, const Strip& strip, const Coverage& both) const {
  return band.strips.size() <= kLinesAhead && both.gutters() >= strip.coverage.gutters() &&
         strip.upper - band.strips.back().lower <= kGapOfLines * gutter_ / kGutter;
}

// What stands below the columns on one side only belongs to what follows when it is set off.
void BandCutter::CutTail(Band& band, std::vector<Strip>& tail) const {
  std::size_t keep = band.strips.size();
  for (std::size_t i = band.strips.size(); i-- > 1;) {
    if (band.strips[i].coverage.gutters() > 0) {
      break;
    }
    const double gap = band.strips[i].upper - band.strips[i - 1].lower;
    if (gap > kGapBeforeHeading * gutter_ / kGutter) {
      keep = i;
      break;
    }
  }
  tail.assign(std::make_move_iterator(band.strips.begin() + static_cast<std::ptrdiff_t>(keep)),
              std::make_move_iterator(band.strips.end()));
  band.strips.resize(keep);
}

std::vector<Band> BandCutter::JoinStrips(std::vector<Strip> strips) const {
  std::vector<Band> bands;
  for (Strip& strip : strips) {
    if (!bands.empty()) {
      Coverage both = bands.back().coverage;
      for (const Interval& part : strip.coverage.parts()) {
        both.Add(part.left, part.right);
      }
      if ((both.gutters() > 0 || bands.back().coverage.gutters() == 0) &&
          GoesOn(bands.back(), strip, both)) {
        bands.back().coverage = both;
        bands.back().strips.push_back(std::move(strip));
        continue;
      }
      if (bands.back().coverage.gutters() > 0) {
        std::vector<Strip> tail;
        CutTail(bands.back(), tail);
        if (!tail.empty() && strip.coverage.gutters() == 0) {
          Band next{.strips = std::move(tail), .coverage = strip.coverage};
          next.strips.push_back(std::move(strip));
          bands.push_back(std::move(next));
          continue;
        }
        std::move(tail.begin(), tail.end(), std::back_inserter(bands.back().strips));
      }
    }
    Coverage own = strip.coverage;
    bands.push_back({.coverage = std::move(own)});
    bands.back().strips.push_back(std::move(strip));
  }
  return bands;
}

std::vector<Items> BandCutter::ColumnsOf(const Band& band) const {
  Coverage coverage(gutter_);
  for (const Strip& strip : band.strips) {
    for (const Interval& part : strip.coverage.parts()) {
      coverage.Add(part.left, part.right);
    }
  }
  std::vector<Items> columns(coverage.parts().size());
  for (const Strip& strip : band.strips) {
    for (const std::uint32_t item : strip.items) {
      const double middle = MiddleX((*items_)[item].box);
      const auto part = std::find_if(coverage.parts().begin(), coverage.parts().end(),
                                     [middle](const Interval& p) { return middle <= p.right; });
      const auto at = std::min<std::ptrdiff_t>(part - coverage.parts().begin(),
                                               static_cast<std::ptrdiff_t>(columns.size()) - 1);
      columns[static_cast<std::size_t>(at)].push_back(item);
    }
  }
  std::erase_if(columns, [](const Items& column) { return column.empty(); });
  return columns;
}

bool BandCutter::IsColumn(const Items& column) const {
  std::vector<std::size_t> letters;
  double highest = 0;
  for (const std::uint32_t item : column) {
    const RegionItem& own = (*items_)[item];
    if (own.size > 0) {
      letters.push_back(own.letters);
    } else {
      highest = std::max(highest, own.box.height());
    }
  }
  if (highest >= kLeastThing) {
    return true;
  }
  if (letters.size() < kLeastLines) {
    return false;
  }
  const auto middle = letters.begin() + static_cast<std::ptrdiff_t>(letters.size() / 2);
  std::nth_element(letters.begin(), middle, letters.end());
  return static_cast<double>(*middle) >= kLeastLetters;
}

// What is too little for a column, as a page number beside one, goes with its nearer neighbour.
void BandCutter::JoinWeakColumns(std::vector<Items>& columns) const {
  for (std::size_t i = 0; columns.size() > 1 && i < columns.size();) {
    if (IsColumn(columns[i])) {
      ++i;
      continue;
    }
    const pdf::Box box = BoxOf(columns[i]);
    const bool has_left = i > 0;
    const bool has_right = i + 1 < columns.size();
    const double left = has_left ? -SharedWidth(box, BoxOf(columns[i - 1])) : 0;
    const double right = has_right ? -SharedWidth(box, BoxOf(columns[i + 1])) : 0;
    const std::size_t target = !has_right || (has_left && left < right) ? i - 1 : i;
    columns[target].insert(columns[target].end(), columns[target + 1].begin(),
                           columns[target + 1].end());
    columns.erase(columns.begin() + static_cast<std::ptrdiff_t>(target) + 1);
    i = target;
  }
}

// Whether columns stand below others with the same gutters.
bool BandCutter::Match(const RegionBand& above, const std::vector<Items>& columns) const {
  if (above.columns.size() != columns.size() || columns.size() < 2) {
    return false;
  }
  Coverage both(gutter_);
  for (std::size_t i = 0; i < columns.size(); ++i) {
    const pdf::Box own = BoxOf(columns[i]);
    both.Add(own.left, own.right);
    both.Add(above.columns[i].box.left, above.columns[i].box.right);
  }
  return both.parts().size() == columns.size();
}

// From the top, and what is level from the left.
Items BandCutter::InOrder(Items items) const {
  std::stable_sort(items.begin(), items.end(), [this](std::uint32_t a, std::uint32_t b) {
    return UpperEdge((*items_)[a].box) < UpperEdge((*items_)[b].box);
  });
  return items;
}

// To the columns of a band that has none yet, or as many, above them.
void BandCutter::Append(std::vector<Items> columns, RegionBand& band) const {
  band.columns.resize(columns.size());
  for (std::size_t i = 0; i < columns.size(); ++i) {
    RegionColumn& column = band.columns[i];
    const pdf::Box box = BoxOf(columns[i]);
    column.box = column.items.empty() ? box : Around(column.box, box);
    band.box = i == 0 && column.items.empty() ? box : Around(band.box, box);
    const Items more = InOrder(std::move(columns[i]));
    column.items.insert(column.items.end(), more.begin(), more.end());
  }
}

std::vector<RegionBand> BandCutter::Cut(Items all) const {
  std::vector<RegionBand> cut;
  for (const Band& band : JoinStrips(StripsOf(std::move(all)))) {
    std::vector<Items> columns = ColumnsOf(band);
    JoinWeakColumns(columns);
    if (is_right_to_left_) {
      std::reverse(columns.begin(), columns.end());
    }
    const bool goes_on = !cut.empty() && (Match(cut.back(), columns) ||
                                          (cut.back().columns.size() == 1 && columns.size() == 1));
    if (!goes_on) {
      cut.emplace_back();
    }
    Append(std::move(columns), cut.back());
  }
  return cut;
}

// A column with what is left to cut in it, in the order in which it is read.
struct Pending {
  Items items;
  std::size_t depth;
};

// The items of a column, columns within it one after the other.
Items ReadColumn(const BandCutter& cutter, const Items& column) {
  Items read;
  std::vector<Pending> pending{{column, 0}};
  while (!pending.empty()) {
    const Pending next = std::move(pending.back());
    pending.pop_back();
    std::vector<RegionBand> bands =
        next.depth < limits::kMaxColumnDepth ? cutter.Cut(next.items) : std::vector<RegionBand>();
    const bool is_whole = bands.empty() || (bands.size() == 1 && bands[0].columns.size() == 1);
    if (is_whole) {
      const Items& items = bands.empty() ? next.items : bands[0].columns[0].items;
      read.insert(read.end(), items.begin(), items.end());
      continue;
    }
    for (auto band = bands.rbegin(); band != bands.rend(); ++band) {
      for (auto part = band->columns.rbegin(); part != band->columns.rend(); ++part) {
        pending.push_back({std::move(part->items), next.depth + 1});
      }
    }
  }
  return read;
}

}  // namespace

std::vector<RegionBand> CutIntoBands(const std::vector<RegionItem>& items, bool is_right_to_left) {
  if (items.empty()) {
    return {};
  }
  const BandCutter cutter(items, is_right_to_left);
  Items all(items.size());
  std::iota(all.begin(), all.end(), 0U);
  std::vector<RegionBand> bands = cutter.Cut(std::move(all));
  for (RegionBand& band : bands) {
    for (RegionColumn& column : band.columns) {
      if (band.columns.size() > 1) {
        column.items = ReadColumn(cutter, column.items);
      }
    }
  }
  return bands;
}

}  // namespace TarnixTools::engines
