// A page with words and rules on it, to look for tables on.
//
//   TableScene scene;
//   scene.Text(100, 100, "Name").Text(200, 100, "12.5").Line(90, 110, 300, 110);
//   EXPECT_THAT(scene.Find(), ElementsAre(...));
#ifndef TARNIX_TESTS_ENGINES_SUPPORT_LAYOUT_TABLES_TABLESCENE_H_
#define TARNIX_TESTS_ENGINES_SUPPORT_LAYOUT_TABLES_TABLESCENE_H_

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "engines/support/layout/tables/TableFinder.h"

namespace TarnixTools::engines {

class TableScene {
 public:
  static constexpr double kSize = 10;  // of the text, where it has no other
  static constexpr double kWidth = 5;  // of a letter of that size
  static constexpr double kSpace = 2.5;

  TableScene() {
    page_.width = 600;
    page_.height = 800;
    for (const int number : {0, 1, 2}) {
      TextStyle style;
      Typeface face{"Test", number == 1};
      face.is_fixed_pitch = number == 2;
      style.face = std::make_shared<const Typeface>(std::move(face));
      style.size = kSize;
      page_.styles.push_back(style);
    }
  }

  // Of what is added from now on.
  TableScene& OfSize(double size) {
    size_ = size;
    return *this;
  }

  // Words of ASCII, from a place on the baseline.
  TableScene& Text(double x, double y, std::string_view text) { return Add(x, y, text, 0); }

  TableScene& Bold(double x, double y, std::string_view text) { return Add(x, y, text, 1); }

  // As typewriters do.
  TableScene& Typed(double x, double y, std::string_view text) { return Add(x, y, text, 2); }

  // In a table that tags tell of.
  TableScene& Tagged(double x, double y, std::string_view text, std::uint32_t table) {
    page_.roles.push_back({.path = {"Table"}, .table = table, .description = {}, .language = {}});
    return Marked(x, y, text);
  }

  // In a paragraph that tags tell of.
  TableScene& TaggedText(double x, double y, std::string_view text) {
    page_.roles.push_back({.path = {"P"}, .description = {}, .language = {}});
    return Marked(x, y, text);
  }

  // The tags tell of tables, on this page or on others.
  TableScene& TreeWithTables() {
    page_.tree_has_tables = true;
    return *this;
  }

  // In a cell of such a table.
  TableScene& TaggedCell(double x, double y, std::string_view text, std::uint32_t row,
                         std::uint32_t cell) {
    Tagged(x, y, text, 1);
    page_.roles.back().row = row;
    page_.roles.back().cell = cell;
    return *this;
  }

  TableScene& Link(const pdf::Box& box) {
    page_.links.push_back({.box = box, .uri = "http://example.org/"});
    return *this;
  }

  // Ends at that place.
  TableScene& RightText(double x, double y, std::string_view text) {
    return Text(x - WidthOf(text), y, text);
  }

  TableScene& Line(double x0, double y0, double x1, double y1, double width = 0.5) {
    PathShape path;
    path.kind = PathShape::Kind::kLine;
    path.box = pdf::Box::OfCorners(x0, y0, x1, y1);
    path.stroke = Rgb{};
    path.line_width = width;
    page_.paths.push_back(path);
    return *this;
  }

  TableScene& Fill(double x0, double y0, double x1, double y1, Rgb color) {
    PathShape path;
    path.kind = PathShape::Kind::kRectangle;
    path.box = pdf::Box::OfCorners(x0, y0, x1, y1);
    path.fill = color;
    page_.paths.push_back(path);
    return *this;
  }

  // Every line of a grid.
  TableScene& Grid(const std::vector<double>& xs, const std::vector<double>& ys) {
    for (const double x : xs) {
      Line(x, ys.front(), x, ys.back());
    }
    for (const double y : ys) {
      Line(xs.front(), y, xs.back(), y);
    }
    return *this;
  }

  std::vector<FoundTable> Tables() const { return FindTables(page_, text_).tables; }

  std::vector<pdf::Box> RuledText() const { return FindTables(page_, text_).ruled_text; }

  // Each table as its cells in words: "a|b" a row, "a||b" with a blank place. A cell that spans has
  // "<" at the places to its right and "^" at those below.
  std::vector<std::vector<std::string>> Find() const;

  // The same in one line: each row ends with ";", each table with the number of its header rows and
  // "! ".
  std::string TablesText() const;

 private:
  // With the role that was given last.
  TableScene& Marked(double x, double y, std::string_view text) {
    const std::size_t first = page_.glyphs.size();
    Text(x, y, text);
    for (std::size_t i = first; i < page_.glyphs.size(); ++i) {
      page_.glyphs[i].mark = static_cast<std::int32_t>(page_.roles.size() - 1);
    }
    return *this;
  }

  double WidthOf(std::string_view text) const;
  TableScene& Add(double x, double y, std::string_view text, std::uint32_t style);

  PageModel page_;
  TurnedText text_;
  std::vector<std::string> words_;
  double size_ = kSize;
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_TESTS_ENGINES_SUPPORT_LAYOUT_TABLES_TABLESCENE_H_
