// Writes shaped lines as the operators of a content stream (ISO 32000-2, 9.4).
#ifndef TARNIX_ENGINES_TOOLBOX_CONTENT_TEXTPAINTER_H_
#define TARNIX_ENGINES_TOOLBOX_CONTENT_TEXTPAINTER_H_

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "engines/support/fonts/TextShaper.h"
#include "engines/toolbox/Toolbox.h"
#include "engines/toolbox/content/PageContent.h"

namespace TarnixTools::engines::toolbox {

class TargetContent;

struct Paint {
  std::array<double, 3> rgb{};  // 0 to 1
  double alpha = 1;             // 0 to 1

  friend bool operator==(const Paint&, const Paint&) = default;
};

// A line of a text object.
struct PaintedLine {
  std::shared_ptr<const fonts::ShapedLine> line;
  double size = 0;  // of the font, in points
  TPdfPoint start;  // left end of the baseline
  Paint paint;
};

// Appends the operators to `out`, and to `resources` what they name.
void PaintLines(const std::vector<PaintedLine>& lines, TargetContent& target, std::string& out,
                PageContent& resources);

}  // namespace TarnixTools::engines::toolbox

#endif  // TARNIX_ENGINES_TOOLBOX_CONTENT_TEXTPAINTER_H_
