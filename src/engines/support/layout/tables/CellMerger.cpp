#include "engines/support/layout/tables/CellMerger.h"

#include <algorithm>
#include <cmath>

namespace TarnixTools::engines {

namespace {

constexpr double kSamePlace = 4;       // between a rule and the edge that it makes
constexpr double kCoveredShare = 0.5;  // of an edge, that a rule must run along

// How much of an edge has rules on it.
double Covered(std::span<const Rule> rules, double at, double from, double to) {
  double covered = 0;
  for (const Rule& rule : rules) {
    if (std::abs(rule.at - at) <= kSamePlace) {
      covered = std::max(covered, std::min(rule.to, to) - std::max(rule.from, from));
    }
  }
  return covered;
}

bool IsRuled(std::span<const Rule> rules, double at, double from, double to) {
  return Covered(rules, at, from, to) >= kCoveredShare * (to - from);
}

bool IsRulePlace(std::span<const double> places, double at) {
  return std::any_of(places.begin(), places.end(),
                     [at](double place) { return std::abs(place - at) <= 0.5; });
}

}  // namespace

CellGrid::CellGrid(std::span<const double> columns, std::span<const double> rows)
    : columns_(columns), rows_(rows), width_(columns.size() - 1), height_(rows.size() - 1) {
  places_.resize(width_ * height_);
  spans_.resize(places_.size());
  for (std::size_t i = 0; i < places_.size(); ++i) {
    places_[i].cell = i;
    spans_[i] = {i / width_, i % width_, i / width_, i % width_};
  }
}

void CellGrid::Merge(std::size_t row, std::size_t column, std::size_t last_row,
                     std::size_t last_column) {
  Span span = {row, column, last_row, last_column};
  for (bool is_grown = true; is_grown;) {
    is_grown = false;
    for (std::size_t r = span.row; r <= span.last_row; ++r) {
      for (std::size_t c = span.column; c <= span.last_column; ++c) {
        const Span& other = spans_[At(r, c).cell];
        const Span around = {std::min(span.row, other.row), std::min(span.column, other.column),
                             std::max(span.last_row, other.last_row),
                             std::max(span.last_column, other.last_column)};
        is_grown = is_grown || around.row < span.row || around.column < span.column ||
                   around.last_row > span.last_row || around.last_column > span.last_column;
        span = around;
      }
    }
  }
  const std::size_t cell = span.row * width_ + span.column;
  spans_[cell] = span;
  for (std::size_t r = span.row; r <= span.last_row; ++r) {
    for (std::size_t c = span.column; c <= span.last_column; ++c) {
      At(r, c).cell = cell;
    }
  }
}

bool CellGrid::IsClosed(std::size_t row, std::size_t column, const TableArea& area) const {
  const Span& span = spans_[places_[row * width_ + column].cell];
  return IsRuled(area.vertical, columns_[span.column], rows_[row], rows_[row + 1]) &&
         IsRuled(area.vertical, columns_[span.last_column + 1], rows_[row], rows_[row + 1]);
}

void CellGrid::MergeWithoutRules(const TableArea& area) {
  for (std::size_t r = 0; r < height_; ++r) {
    for (std::size_t c = 0; c + 1 < width_; ++c) {
      const bool has_both = !At(r, c).inks.empty() && !At(r, c + 1).inks.empty();
      if (!has_both && IsRulePlace(area.columns, columns_[c + 1]) &&
          !IsRuled(area.vertical, columns_[c + 1], rows_[r], rows_[r + 1])) {
        Merge(r, c, r, c + 1);
      }
    }
  }
  for (std::size_t r = 0; r + 1 < height_; ++r) {
    for (std::size_t c = 0; c < width_; ++c) {
      if (IsRulePlace(area.rows, rows_[r + 1]) && IsClosed(r, c, area) &&
          IsClosed(r + 1, c, area) &&
          !IsRuled(area.horizontal, rows_[r + 1], columns_[c], columns_[c + 1])) {
        Merge(r, c, r + 1, c);
      }
    }
  }
}

std::vector<CellShape> CellGrid::Cells() const {
  std::vector<CellShape> cells;
  for (std::size_t i = 0; i < places_.size(); ++i) {
    if (places_[i].cell != i) {
      continue;
    }
    const Span& span = spans_[i];
    CellShape cell{span.row, span.column, span.last_row + 1, span.last_column + 1, {}};
    for (std::size_t r = span.row; r <= span.last_row; ++r) {
      for (std::size_t c = span.column; c <= span.last_column; ++c) {
        const std::vector<Ink>& inks = places_[r * width_ + c].inks;
        cell.inks.insert(cell.inks.end(), inks.begin(), inks.end());
      }
    }
    std::stable_sort(cell.inks.begin(), cell.inks.end(), [](const Ink& a, const Ink& b) {
      return a.row != b.row ? a.row < b.row : a.left < b.left;
    });
    cells.push_back(std::move(cell));
  }
  return cells;
}

}  // namespace TarnixTools::engines
