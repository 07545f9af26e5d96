#include "DecorationOptions.h"

#include "Failure.h"

namespace TarnixTools::cli {

PdfTransformVerticalPos VerticalPosition(std::string_view position) {
  if (position.starts_with("top")) {
    return PdfTransformVerticalPos::Top;
  }
  return position.starts_with("bottom") ? PdfTransformVerticalPos::Bottom
                                        : PdfTransformVerticalPos::Middle;
}

PdfTransformHorizontalPos HorizontalPosition(std::string_view position) {
  if (position.ends_with("left")) {
    return PdfTransformHorizontalPos::Left;
  }
  return position.ends_with("right") ? PdfTransformHorizontalPos::Right
                                     : PdfTransformHorizontalPos::Center;
}

PdfTransformTextAlignment TextAlignment(std::string_view alignment) {
  if (alignment == "left") {
    return PdfTransformTextAlignment::Left;
  }
  return alignment == "right" ? PdfTransformTextAlignment::Right
                              : PdfTransformTextAlignment::Center;
}

std::string Unescaped(std::string_view text) {
  std::string unescaped;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char next = i + 1 < text.size() ? text[i + 1] : ' ';
    if (text[i] == '\\' && (next == 'n' || next == '\\')) {
      unescaped += next == 'n' ? '\n' : '\\';
      ++i;
    } else {
      unescaped += text[i];
    }
  }
  return unescaped;
}

double PixelsPerPoint(const OptionValues& options, double default_value) {
  const double pixels = options.Number("pixels-per-point", default_value);
  if (!(pixels > 0)) {
    throw UsageError("--pixels-per-point: '" + options.Text("pixels-per-point") +
                     "' is not above 0");
  }
  return pixels;
}

}  // namespace TarnixTools::cli
