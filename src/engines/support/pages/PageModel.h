// A page as a model: what it shows, each thing with its place and its look. Lengths
// are points (1/72 inch) on the page as it is seen, from its upper-left corner, y downwards.
#ifndef TARNIX_ENGINES_SUPPORT_PAGES_PAGEMODEL_H_
#define TARNIX_ENGINES_SUPPORT_PAGES_PAGEMODEL_H_

#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "pdf/Box.h"
#include "pdf/Matrix.h"

namespace TarnixTools::engines {

// The place of what no operator of the page's own content paints.
inline constexpr std::uint32_t kNoPlace = std::numeric_limits<std::uint32_t>::max();

struct Rgb {
  std::uint8_t red = 0;
  std::uint8_t green = 0;
  std::uint8_t blue = 0;

  friend bool operator==(const Rgb&, const Rgb&) = default;
};

// A typeface, as the name and the descriptor of a font tell of it.
struct Typeface {
  std::string family;  // as it is known to people: "Times New Roman"
  bool is_bold = false;
  bool is_italic = false;
  bool is_serif = false;
  bool is_fixed_pitch = false;
};

// What glyphs that follow each other have in common.
struct TextStyle {
  std::shared_ptr<const Typeface> face;
  double size = 0;  // points of the em, upwards from the baseline
  Rgb color;
  double direction_x = 1;  // of the baseline, one point long
  double direction_y = 0;
  bool is_vertical = false;  // glyphs stand below each other
  bool is_hidden = false;    // it is there to be found, not to be seen
};

struct Glyph {
  std::uint32_t text = 0;    // its first character in PageModel::text
  std::uint32_t length = 0;  // its characters; 0 where nothing tells what it stands for
  std::uint32_t style = 0;   // in PageModel::styles
  std::int32_t mark = -1;    // the /MCID of the marked content around it; -1 for none
  // Of the operator, in the content of the page; of several strings that it shows, of the string.
  std::uint32_t place = kNoPlace;
  // Its origin: on the baseline, or above its middle in vertical writing.
  double x = 0;
  double y = 0;
  double advance = 0;  // along the direction, without spacing; downwards in vertical writing
};

// A path that is painted.
struct PathShape {
  enum class Kind : std::uint8_t { kRectangle, kLine, kOther };

  Kind kind = Kind::kOther;
  pdf::Box box;  // of its points; a line leads from one corner to the opposite one
  std::optional<Rgb> fill;
  std::optional<Rgb> stroke;
  double line_width = 0;
  std::uint32_t order = 0;  // among all that is painted
  bool rises = false;       // a line leads from the lower-left corner up to the right one
  // Of the operator, in the content of the page.
  std::uint32_t place = kNoPlace;
};

// An image that is drawn; the unit square that it fills is led to its place by the matrix.
struct ImagePlace {
  std::uint32_t number = 0;  // of its object; 0 for an inline image
  pdf::Matrix matrix;
  pdf::Box box;  // what of it is seen
  std::uint32_t order = 0;
  // Of the operator, in the content of the page.
  std::uint32_t place = kNoPlace;
  std::int32_t mark = -1;  // the /MCID of the marked content around it; -1 for none
};

// A place that leads somewhere when it is clicked on.
struct PageLink {
  pdf::Box box;
  std::string uri;                // UTF-8; empty for a link into the document
  std::int32_t target_page = -1;  // zero-based; -1 for a link out of the document
  double target_y = 0;            // on that page
};

// What the structure tree says of marked content; the /RoleMap is applied.
struct StructureRole {
  std::vector<std::string> path;  // the types from the outermost element down: "Table", "TR", "TD"
  std::uint32_t element = 0;      // the number of the innermost element; equal for one element
  std::uint32_t table = 0;        // the number of the innermost table around it; 0 for none
  std::uint32_t row = 0;          // of the innermost row of that table; 0 for none
  std::uint32_t cell = 0;         // of the innermost cell of that row; 0 for none
  std::uint32_t order = 0;        // among the marked content of the page, as the tree is read
  std::string description;        // its /Alt, or that of an element around it
  std::string language;
};

struct PageModel {
  std::uint32_t number = 0;  // zero-based, in the document
  double width = 0;
  double height = 0;
  // Points here in one of the page as it is seen: less than 1 where it has too little room.
  double scale = 1;
  std::u32string text;  // of all glyphs
  std::vector<TextStyle> styles;
  std::vector<Glyph> glyphs;  // as they are painted
  std::vector<PathShape> paths;
  std::vector<ImagePlace> images;
  std::vector<PageLink> links;
  std::vector<StructureRole> roles;  // by /MCID; empty without a sound tree
  bool tree_has_tables = false;      // of this page or of others
  bool has_shadings = false;         // smooth shades are painted, which no path tells of
  bool is_partial = false;           // a bound was passed, or something of it cannot be read
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_PAGES_PAGEMODEL_H_
