// The options of page numbers and stamps, shared by their jobs and by the entries of a recipe: the
// rows that describe them, and how their values reach the settings, those of a task or of a
// PdfTransformation.
#ifndef TARNIX_CLI_DECORATION_OPTIONS_H_
#define TARNIX_CLI_DECORATION_OPTIONS_H_

#include <string>
#include <string_view>

#include "OptionTable.h"
#include "PageList.h"
#include "PdfDoc.h"
#include "PdfTransformation.h"

namespace TarnixTools::cli {

// ---- rows --------------------------------------------------------------------------------------

inline constexpr OptionRow kPagesRow = {
    .name = "pages",
    .kind = ValueKind::Pages,
    .argument = "PAGES",
    .help = "pages to put it on, as in 1-3,5,8-,:odd (default: all pages)"};

inline constexpr OptionRow kPositionRow = {
    .name = "position",
    .kind = ValueKind::Choice,
    .argument =
        "top-left|top-center|top-right|middle-left|middle-center|middle-right|bottom-left|"
        "bottom-center|bottom-right",
    .help = "place on the page"};

inline constexpr OptionRow kAtRow = {
    .name = "at",
    .kind = ValueKind::NumberPair,
    .argument = "X,Y",
    .help =
        "left and lower end of the text in points from the lower left corner of the page, "
        "margins not counted",
    .excludes = "position"};

inline constexpr OptionRow kAdjustRow = {
    .name = "adjust",
    .kind = ValueKind::IntegerPair,
    .argument = "DX,DY",
    .help = "move it by DX points to the right and DY points upwards"};

inline constexpr OptionRow kMarginRow = {
    .name = "margin",
    .kind = ValueKind::IntegerPair,
    .argument = "X,Y",
    .help = "points from the edges of the page (default: 15,15)"};

inline constexpr OptionRow kNumberMarginRow = {
    .name = "margin",
    .kind = ValueKind::IntegerPair,
    .argument = "X,Y",
    .help = "points from the edges of the page (default: 20,20)",
    .excludes = "at"};

inline constexpr OptionRow kNumberFontSizeRow = {
    .name = "font-size",
    .kind = ValueKind::Integer,
    .argument = "N",
    .help = "size of the font in points (default: 10)"};

inline constexpr OptionRow kUnderRow = {.name = "under",
                                        .help = "put it beneath what the page shows"};

inline constexpr OptionRow kRotateRow = {.name = "rotate",
                                         .kind = ValueKind::Number,
                                         .argument = "DEG",
                                         .help = "turn it counter-clockwise by DEG degrees"};

inline constexpr OptionRow kMosaicRow = {
    .name = "mosaic", .help = "put it nine times on the page, at every position"};

inline constexpr OptionRow kFontRow = {
    .name = "font",
    .kind = ValueKind::Text,
    .argument = "NAME",
    .help = "an installed font (default: Arial, which also replaces one that is not installed)"};

inline constexpr OptionRow kFontStyleRow = {.name = "font-style",
                                            .kind = ValueKind::Text,
                                            .argument = "S",
                                            .help = "style of the font, as in \"Bold Italic\""};

inline constexpr OptionRow kFontSizeRow = {.name = "font-size",
                                           .kind = ValueKind::Integer,
                                           .argument = "N",
                                           .help = "size of the font in points (default: 24)"};

inline constexpr OptionRow kColorRow = {
    .name = "color",
    .kind = ValueKind::Text,
    .argument = "#RRGGBB|name",
    .help =
        "colour of the text: red, green and blue in hexadecimal digits, or one of the names black, "
        "white, gray, silver, red, maroon, orange, yellow, olive, lime, green, aqua, teal, blue, "
        "navy, fuchsia, purple (default: black)"};

inline constexpr OptionRow kOpacityRow = {
    .name = "opacity",
    .kind = ValueKind::Integer,
    .argument = "PCT",
    .help = "opacity of the text in percent, 1 to 100 (default: 100)"};

inline constexpr OptionRow kImageOpacityRow = {
    .name = "opacity",
    .kind = ValueKind::Integer,
    .argument = "PCT",
    .help = "opacity of the image in percent, 1 to 100 (default: 100)"};

inline constexpr OptionRow kImageAtRow = {
    .name = "at",
    .kind = ValueKind::NumberPair,
    .argument = "X,Y",
    .help =
        "left and lower edge of the image in points from the lower left corner of the page, "
        "margins not counted",
    .excludes = "position"};

inline constexpr OptionRow kWidthRow = {
    .name = "width",
    .kind = ValueKind::Text,
    .argument = "W",
    .help = "width of the image, in points or, as in 25%, in percent of the page's",
    .excludes = "pixels-per-point"};

inline constexpr OptionRow kAlignRow = {
    .name = "align",
    .kind = ValueKind::Choice,
    .argument = "left|center|right",
    .help = "alignment of the lines of a text of several lines"};

// ---- values ------------------------------------------------------------------------------------

PdfTransformVerticalPos VerticalPosition(std::string_view position);
PdfTransformHorizontalPos HorizontalPosition(std::string_view position);
PdfTransformTextAlignment TextAlignment(std::string_view alignment);

// "#RRGGBB" of a name; what starts with "#" is returned as it is. Throws UsageError for another word.
std::string ColorOf(const std::string& word);

// The text of an option in which "\n" stands for a line break and "\\" for a backslash.
std::string Unescaped(std::string_view text);

// Throws UsageError for a value that is not above 0.
double PixelsPerPoint(const OptionValues& options, double default_value);

// A length in points or in percent of the page's width.
struct ImageWidth {
  double value = 0;
  PdfTransformWidthUnit unit = PdfTransformWidthUnit::Points;
};

// Throws UsageError for what is neither, and for what is not above 0.
ImageWidth ImageWidthOf(const std::string& text);

// Limits settings to the pages that the options name, of which the document has to have all.
template <typename Settings>
void SetTargets(const OptionValues& options, const PdfDoc& document, Settings& settings) {
  if (options.Has("pages")) {
    settings.AddTargetPattern(PatternOf(PagesOf("--pages", options.Text("pages"), document)));
  }
}

// What every decoration has: position in words, adjustment, layer.
template <typename Settings>
void SetPlacement(const OptionValues& options, Settings& settings) {
  if (options.Has("position")) {
    settings.SetVerticalPosition(VerticalPosition(options.Text("position")));
    settings.SetHorizontalPosition(HorizontalPosition(options.Text("position")));
  }
  if (options.Has("adjust")) {
    const auto [dx, dy] = options.IntegerPair("adjust");
    settings.SetHorizontalAdjustment(dx);
    settings.SetVerticalAdjustment(dy);
  }
  if (options.Has("under")) {
    settings.SetLayerPosition(PdfTransformLayerPos::Under);
  }
}

// The look of text, and where it is placed absolutely.
template <typename Settings>
void SetTextLook(const OptionValues& options, Settings& settings) {
  settings.SetFontName(options.Text("font", settings.GetFontName()));
  settings.SetFontStyle(options.Text("font-style", settings.GetFontStyle()));
  if (options.Has("font-size")) {
    settings.SetFontSize(options.Integer("font-size", 0));
  }
  if (options.Has("color")) {
    settings.SetFontColor(ColorOf(options.Text("color")));
  }
  if (options.Has("opacity")) {
    settings.SetTextOpacity(options.Integer("opacity", 0));
  }
  if (options.Has("align")) {
    settings.SetTextAlignment(TextAlignment(options.Text("align")));
  }
  if (options.Has("at")) {
    const auto [x, y] = options.NumberPair("at");
    settings.SetAbsolutePositionX(x);
    settings.SetAbsolutePositionY(y);
  }
}

// What stamps have: margins, which do not count where the place is given, rotation, mosaic.
template <typename Settings>
void SetStampLook(const OptionValues& options, Settings& settings) {
  if (options.Has("at")) {
    settings.SetMarginX(0);
    settings.SetMarginY(0);
  }
  if (options.Has("margin")) {
    const auto [x, y] = options.IntegerPair("margin");
    settings.SetMarginX(x);
    settings.SetMarginY(y);
  }
  settings.SetRotation(options.Number("rotate", settings.GetRotation()));
  settings.SetMosaic(options.Has("mosaic"));
}

inline constexpr int kNumberFontSize = 10;

// Distances from the edges, which do not count for a number that has a place of its own.
template <typename Settings>
void SetNumberMargin(const OptionValues& options, Settings& settings) {
  constexpr int kMargin = 20;
  if (options.Has("at")) {
    return;
  }
  const auto [x, y] =
      options.Has("margin") ? options.IntegerPair("margin") : PairOf<int>{kMargin, kMargin};
  settings.SetMarginX(x);
  settings.SetMarginY(y);
}

// All options of the three jobs. The settings are a task's or a PdfTransformation's of that type.
template <typename Settings>
void SetNumberOptions(const OptionValues& options, Settings& settings) {
  SetPlacement(options, settings);
  settings.SetFontSize(kNumberFontSize);
  SetTextLook(options, settings);
  SetNumberMargin(options, settings);
  if (options.Has("template")) {
    settings.SetPageNumberTextTemplate(options.Text("template"));
  }
  settings.SetStartingPageNum(options.Integer("start", settings.GetStartingPageNum()));
  settings.SetDoFacingPages(options.Has("facing-pages"));
  settings.SetFirstCoverPage(options.Has("cover-page"));
}

template <typename Settings>
void SetStampTextOptions(const OptionValues& options, Settings& settings) {
  SetPlacement(options, settings);
  SetTextLook(options, settings);
  SetStampLook(options, settings);
  settings.SetInputText(Unescaped(options.Text("text")));
}

template <typename Settings>
void SetStampImageOptions(const OptionValues& options, Settings& settings) {
  SetPlacement(options, settings);
  SetStampLook(options, settings);
  settings.SetInputImage(options.Text("image"));
  if (options.Has("at")) {  // an image takes its place crosswise
    const auto [x, y] = options.NumberPair("at");
    settings.SetAbsolutePositionX(y);
    settings.SetAbsolutePositionY(x);
  }
  if (options.Has("opacity")) {
    settings.SetOpacity(options.Integer("opacity", 0));
    settings.SetApplyOpacity(true);
  }
  if (options.Has("width")) {
    const ImageWidth width = ImageWidthOf(options.Text("width"));
    settings.SetImageWidth(width.value, width.unit);
  }
  settings.SetPixelsPerPoint(PixelsPerPoint(options, settings.GetPixelsPerPoint()));
}

}  // namespace TarnixTools::cli

#endif  // TARNIX_CLI_DECORATION_OPTIONS_H_
