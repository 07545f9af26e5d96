#include "DecorationOptions.h"

#include <vector>

#include "Failure.h"
#include "NearestWord.h"

namespace TarnixTools::cli {
namespace {

struct NamedColor {
  std::string_view name;
  const char* digits;
};

// The names of HTML 4, and orange.
constexpr NamedColor kColors[] = {
    {"black", "#000000"}, {"white", "#FFFFFF"},  {"gray", "#808080"},   {"silver", "#C0C0C0"},
    {"red", "#FF0000"},   {"maroon", "#800000"}, {"orange", "#FFA500"}, {"yellow", "#FFFF00"},
    {"olive", "#808000"}, {"lime", "#00FF00"},   {"green", "#008000"},  {"aqua", "#00FFFF"},
    {"teal", "#008080"},  {"blue", "#0000FF"},   {"navy", "#000080"},   {"fuchsia", "#FF00FF"},
    {"purple", "#800080"}};

}  // namespace

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

std::string ColorOf(const std::string& word) {
  if (word.starts_with('#')) {
    return word;
  }
  std::vector<std::string> names;
  for (const NamedColor& color : kColors) {
    if (color.name == word) {
      return color.digits;
    }
    names.emplace_back(color.name);
  }
  throw UsageError("--color: '" + word + "' is not a color" + Suggestion(word, names));
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

ImageWidth ImageWidthOf(const std::string& text) {
  const bool is_percent = text.ends_with('%');
  const auto value = ToNumber(std::string_view(text).substr(0, text.size() - (is_percent ? 1 : 0)));
  if (!value || !(*value > 0)) {
    throw UsageError("--width: '" + text + "' is not a width such as 120 or 25%");
  }
  return {*value,
          is_percent ? PdfTransformWidthUnit::PercentOfPage : PdfTransformWidthUnit::Points};
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
