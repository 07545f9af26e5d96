#include "TableScene.h"

#include <utility>

namespace TarnixTools::engines {

double TableScene::WidthOf(std::string_view text) const {
  double width = 0;
  for (const char c : text) {
    width += c == ' ' ? kSpace : kWidth;
  }
  return width * size_ / kSize;
}

TableScene& TableScene::Add(double x, double y, std::string_view text, std::uint32_t style) {
  WordLine line;
  line.baseline = y;
  line.size = size_;
  for (std::size_t begin = 0; begin < text.size();) {
    const std::size_t end = std::min(text.find(' ', begin), text.size());
    const std::string_view part = text.substr(begin, end - begin);
    Word word;
    word.box = {x, y - kAscent * size_, x + WidthOf(part), y + kDescent * size_};
    word.baseline = y;
    word.size = size_;
    word.text = std::u32string(part.begin(), part.end());
    PlacedGlyph glyph;
    glyph.glyph = static_cast<std::uint32_t>(page_.glyphs.size());
    word.glyphs.push_back(glyph);
    page_.glyphs.push_back({.style = style});
    words_.emplace_back(part);
    line.words.push_back(std::move(word));
    x += WidthOf(part) + WidthOf(" ");
    begin = end + 1;
  }
  text_.lines.push_back(std::move(line));
  return *this;
}

std::vector<std::vector<std::string>> TableScene::Find() const {
  std::vector<std::vector<std::string>> tables;
  for (const FoundTable& found : Tables()) {
    const Table& table = found.table;
    const std::size_t width = table.columns.size() - 1;
    std::vector<std::string> places((table.rows.size() - 1) * width);
    for (std::size_t i = 0; i < table.cells.size(); ++i) {
      const TableCell& cell = table.cells[i];
      for (std::uint32_t r = 0; r < cell.row_span; ++r) {
        for (std::uint32_t c = 0; c < cell.column_span; ++c) {
          places[(cell.row + r) * width + cell.column + c] = r > 0 ? "^" : (c > 0 ? "<" : "");
        }
      }
      std::string& place = places[cell.row * width + cell.column];
      for (const std::uint32_t word : found.words[i]) {
        place += (place.empty() ? "" : " ") + words_[word];
      }
    }
    std::vector<std::string>& rows = tables.emplace_back();
    for (std::size_t i = 0; i < places.size(); ++i) {
      if (i % width == 0) {
        rows.emplace_back(places[i]);
      } else {
        rows.back() += "|" + places[i];
      }
    }
  }
  return tables;
}

std::string TableScene::TablesText() const {
  std::string text;
  const std::vector<std::vector<std::string>> tables = Find();
  const std::vector<FoundTable> found = Tables();
  for (std::size_t i = 0; i < tables.size(); ++i) {
    for (const std::string& row : tables[i]) {
      text += row + ";";
    }
    text += std::to_string(found[i].table.header_rows) + "! ";
  }
  return text;
}

}  // namespace TarnixTools::engines
