// The places of a table, of which some are one cell.
#ifndef TARNIX_ENGINES_SUPPORT_LAYOUT_TABLES_CELLMERGER_H_
#define TARNIX_ENGINES_SUPPORT_LAYOUT_TABLES_CELLMERGER_H_

#include <cstddef>
#include <span>
#include <vector>

#include "engines/support/layout/tables/TableArea.h"
#include "engines/support/layout/tables/TableBuilder.h"

namespace TarnixTools::engines {

class CellGrid {
 public:
  // The edges outlive this.
  CellGrid(std::span<const double> columns, std::span<const double> rows);

  struct Place {
    std::vector<Ink> inks;
    std::size_t cell = 0;  // the number of the place that stands for its cell
  };

  Place& At(std::size_t row, std::size_t column) { return places_[row * width_ + column]; }

  // The places from one corner to the other become one cell, with all that hangs on them.
  void Merge(std::size_t row, std::size_t column, std::size_t last_row, std::size_t last_column);

  // Places between which a rule is missing that parts others.
  void MergeWithoutRules(const TableArea& area);

  // By row, then by column.
  std::vector<CellShape> Cells() const;

 private:
  struct Span {
    std::size_t row = 0;
    std::size_t column = 0;
    std::size_t last_row = 0;
    std::size_t last_column = 0;
  };

  // Whether rules stand on both sides of the cell there.
  bool IsClosed(std::size_t row, std::size_t column, const TableArea& area) const;

  std::span<const double> columns_;
  std::span<const double> rows_;
  std::size_t width_;
  std::size_t height_;
  std::vector<Place> places_;
  std::vector<Span> spans_;  // of the cell of each place that stands for one
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_LAYOUT_TABLES_CELLMERGER_H_
