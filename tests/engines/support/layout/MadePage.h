// Page models made by hand, for tests of the analysis.
//
//   PageModel page = MadePage().Text(72, 100, "Hello world").Take();
#ifndef TARNIX_TESTS_ENGINES_SUPPORT_LAYOUT_MADEPAGE_H_
#define TARNIX_TESTS_ENGINES_SUPPORT_LAYOUT_MADEPAGE_H_

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "engines/support/pages/PageModel.h"

namespace TarnixTools::engines {

struct MadeStyle {
  double size = 10;
  bool is_bold = false;
  double direction_x = 1;
  double direction_y = 0;
  double advance = 0.5;  // of every glyph, in ems
  bool is_vertical = false;
  bool is_hidden = false;
  Rgb color = {};
};

class MadePage {
 public:
  explicit MadePage(const std::string& family = "Plain") {
    page_.width = 600;
    page_.height = 800;
    plain_ = std::make_shared<const Typeface>(Typeface{.family = family});
    bold_ = std::make_shared<const Typeface>(Typeface{.family = family, .is_bold = true});
  }

  // A glyph for every character, spaces too, from x on along the baseline at y; of vertical writing,
  // downwards from y on with its middle at x.
  MadePage& Text(double x, double y, std::u32string_view text, MadeStyle made = {});

  MadePage& Line(pdf::Box box) { return Path(PathShape::Kind::kLine, box); }

  MadePage& Field(pdf::Box box) { return Path(PathShape::Kind::kRectangle, box); }

  MadePage& Curve(pdf::Box box) { return Path(PathShape::Kind::kOther, box); }

  MadePage& Image(pdf::Box box) {
    page_.images.push_back({.box = box});
    return *this;
  }

  MadePage& Rule(pdf::Box box, double width, Rgb color = {}) {
    page_.paths.push_back({.kind = PathShape::Kind::kLine,
                           .box = box,
                           .fill = {},
                           .stroke = color,
                           .line_width = width});
    return *this;
  }

  MadePage& Link(pdf::Box box) {
    page_.links.push_back({.box = box, .uri = "http://example.org/"});
    return *this;
  }

  MadePage& LinkTo(pdf::Box box, std::int32_t page, double y) {
    page_.links.push_back({.box = box, .uri = {}, .target_page = page, .target_y = y});
    return *this;
  }

  // Of the text that was added last, what the structure tree tells.
  MadePage& Role(std::vector<std::string> path, std::uint32_t element) {
    page_.roles.push_back({.path = std::move(path), .element = element});
    for (Glyph& glyph : page_.glyphs) {
      if (glyph.style + 1 == page_.styles.size()) {
        glyph.mark = static_cast<std::int32_t>(page_.roles.size() - 1);
      }
    }
    return *this;
  }

  PageModel Take() { return std::move(page_); }

 private:
  MadePage& Path(PathShape::Kind kind, pdf::Box box) {
    page_.paths.push_back({.kind = kind, .box = box, .fill = Rgb{200, 30, 30}, .stroke = {}});
    return *this;
  }

  PageModel page_;
  std::shared_ptr<const Typeface> plain_;
  std::shared_ptr<const Typeface> bold_;
};

inline MadePage& MadePage::Text(double x, double y, std::u32string_view text, MadeStyle made) {
  page_.styles.push_back({.face = made.is_bold ? bold_ : plain_,
                          .size = made.size,
                          .color = made.color,
                          .direction_x = made.direction_x,
                          .direction_y = made.direction_y,
                          .is_vertical = made.is_vertical,
                          .is_hidden = made.is_hidden});
  for (const char32_t character : text) {
    page_.glyphs.push_back({.text = static_cast<std::uint32_t>(page_.text.size()),
                            .length = 1,
                            .style = static_cast<std::uint32_t>(page_.styles.size() - 1),
                            .x = x,
                            .y = y,
                            .advance = made.advance * made.size});
    page_.text += character;
    const double advance = made.advance * made.size;
    x += advance * (made.is_vertical ? -made.direction_y : made.direction_x);
    y += advance * (made.is_vertical ? made.direction_x : made.direction_y);
  }
  return *this;
}

}  // namespace TarnixTools::engines

#endif  // TARNIX_TESTS_ENGINES_SUPPORT_LAYOUT_MADEPAGE_H_
