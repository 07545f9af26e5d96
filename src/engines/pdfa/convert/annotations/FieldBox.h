// The appearance of a field, or of free text, before anything is written into it: its box, border
// and ground, turned as the field is (ISO 32000-2, 12.5.6.19).
#ifndef TARNIX_ENGINES_PDFA_CONVERT_ANNOTATIONS_FIELDBOX_H_
#define TARNIX_ENGINES_PDFA_CONVERT_ANNOTATIONS_FIELDBOX_H_

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "engines/pdfa/convert/annotations/FieldEntries.h"
#include "engines/pdfa/convert/annotations/MadeAppearance.h"

namespace TarnixTools::engines::pdfa {

// How text is written, by a default appearance string (12.7.4.3).
struct FieldStyle {
  std::string font;           // as /BaseFont has it
  double size = 0;            // 0 for what fits
  std::vector<double> color;  // components, as ColorOperator takes them
};

class FieldBox {
 public:
  // Of a widget; its look is in /MK.
  static FieldBox OfWidget(FieldEntries& entries);
  // Of free text.
  static FieldBox OfFreeText(FieldEntries& entries);

  // As if the field were not turned.
  double width() const { return width_; }

  double height() const { return height_; }

  double border() const { return border_; }

  // Operators that paint ground and border: of a rectangle, or of a circle.
  std::string Rectangle() const;
  std::string Circle() const;

  // The form XObject with this content, which shows text in the font if its number is not 0.
  //   state - of a graphics state that is /G in the resources; empty for none
  MadeAppearance Form(std::string content, std::uint32_t font, std::string_view state = {}) const;

 private:
  double width_ = 0;
  double height_ = 0;
  double border_ = 0;
  int turn_ = 0;        // degrees counter-clockwise, of the field
  std::string ground_;  // the operator of its colour
  std::string frame_;   // the operator of its colour, and how it is dashed
  bool is_underline_ = false;
};

FieldStyle ReadStyle(FieldEntries& entries);

// The path of a circle, or of an ellipse, in the box.
std::string CirclePath(const pdf::Box& box);

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CONVERT_ANNOTATIONS_FIELDBOX_H_
