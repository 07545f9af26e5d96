// The settings of one decoration: what is put onto which pages, and where. Also those of a
// conversion to PDF/A.
//
//   PdfTransformation number(PdfTransformType::AddPageNumber);
//   number.SetPageNumberTextTemplate("Page {n} of {p}");
//   number.SetVerticalPosition(PdfTransformVerticalPos::Top);
//   number.AddTargetPattern("2-10,12");
//
//   PdfDoc("/data/report.pdf", "", true).Transform(number, "/data/numbered.pdf", "");
//
// Lengths are points (1/72 inch), from the lower-left corner of the page as a viewer shows it, y
// upwards; angles are degrees, counter-clockwise; page numbers are one-based.
#ifndef TARNIX_PDF_TRANSFORMATION_H_
#define TARNIX_PDF_TRANSFORMATION_H_

#include <array>
#include <cstdint>
#include <list>
#include <map>
#include <string>
#include <vector>

#include "PdfCompliance.h"
#include "PdfPagePoint.h"
#include "PdfPageRange.h"
#include "TarnixExport.h"

namespace TarnixTools {

namespace engines {
struct TPdfPoint;
struct TPdfSize;
}  // namespace engines

class PdfText;

enum class PdfTransformType : std::int32_t {
  AddPageNumber = 0,
  StampText = 1,
  StampImage = 2,
  PdfA = 3,
};

enum class PdfTransformVerticalPos : std::int32_t {
  Top = 0,
  Bottom = 1,
  Middle = 2,
  Absolute = 3,  // at the absolute position
};

enum class PdfTransformHorizontalPos : std::int32_t {
  Left = 0,
  Center = 1,
  Right = 2,
  Absolute = 3,  // at the absolute position
};

// Of the lines of a block of text, each inside the width of the block.
enum class PdfTransformTextAlignment : std::int32_t {
  Left = 0,
  Center = 1,
  Right = 2,
};

enum class PdfTransformLayerPos : std::int32_t {
  Over = 0,   // painted over what the page has
  Under = 1,  // beneath it
};

// A plain value. Setters store what they are given unless something else is said. Failures are
// PdfException with the code InvalidParameter and leave the field as it was.
//
// Drawing a page rewrites what belongs to that page: the effective horizontal position and
// adjustment and the page number text. A mosaic leaves the positions of its last tile.
class TARNIX_EXPORT PdfTransformation {
 public:
  // With the defaults of the type. Throws for a value that is no type.
  explicit PdfTransformation(PdfTransformType type);

  PdfTransformation(const PdfTransformation& other);
  PdfTransformation(PdfTransformation&& other) noexcept;
  PdfTransformation& operator=(const PdfTransformation& other);
  PdfTransformation& operator=(PdfTransformation&& other) noexcept;
  ~PdfTransformation();

  PdfTransformType GetType() const { return type_; }

  // The defaults of the object's type:
  //
  //   page numbers   "{n}" from 1 on, centred at the bottom, no margins
  //   stamps         in the middle of the page, margins of 15 points, 1.33 pixels per point
  //   both           all pages; Arial, 24 points, black, opaque; over the content; not rotated, no
  //                  mosaic
  //   PDF/A          no level, no downgrade; everything else stays as it is
  void SetDefaults();
  void SetAddPageNumberDefaults();
  void SetStampTextDefaults();
  void SetStampImageDefaults();
  void SetPdfADefaults();

  // ---- which pages -----------------------------------------------------------------------------

  // Add to the pages that are decorated. Without any, all pages are.
  void AddTargetPage(int page_number);
  void AddTargetRange(const PdfPageRange& range);

  // Pages and ranges separated by commas, without blanks: "1,3-5,10". A range may come in either
  // order, a comma at the end and an empty pattern are fine. Throws for what is no such list and
  // for page 0; the items before the bad one stay added.
  void AddTargetPattern(const std::string& pattern);

  // One item of a pattern: "3" or "5-9".
  void PatternToRange(const std::string& item);
  void ClearTargetPages();
  bool IsTargetPage(int page_number) const;

  // Number of pages added, each counted once; 0 for all pages of the document.
  int GetTargetPagesNum() const;

  // Those pages, in the order in which they were first added.
  std::list<int> GetTargetPages() const;

  // Every range ever added, in order.
  std::vector<PdfPageRange>& GetTargetRanges() { return target_ranges_; }

  // ---- where on the page -----------------------------------------------------------------------

  PdfTransformVerticalPos GetVerticalPosition() const { return vertical_position_; }

  void SetVerticalPosition(PdfTransformVerticalPos position) { vertical_position_ = position; }

  // The effective position, that of the page drawn last where pages face each other.
  PdfTransformHorizontalPos GetHorizontalPosition() const { return horizontal_position_; }

  // What was set, which the effective position is made from.
  PdfTransformHorizontalPos GetBaseHorizontalPosition() const { return base_horizontal_position_; }

  // Sets the base position, too.
  void SetHorizontalPosition(PdfTransformHorizontalPos position);

  // Added to the position, in points.
  int GetVerticalAdjustment() const { return vertical_adjustment_; }

  void SetVerticalAdjustment(int adjustment) { vertical_adjustment_ = adjustment; }

  // The effective adjustment, as with the position.
  int GetHorizontalAdjustment() const { return horizontal_adjustment_; }

  int GetBaseHorizontalAdjustment() const { return base_horizontal_adjustment_; }

  // Sets the base adjustment, too.
  void SetHorizontalAdjustment(int adjustment);

  // The distance from the edges of the page, in points.
  int GetMarginX() const { return margin_x_; }

  void SetMarginX(int margin) { margin_x_ = margin; }

  int GetMarginY() const { return margin_y_; }

  void SetMarginY(int margin) { margin_y_ = margin; }

  // The setters make both positions Absolute; the base horizontal position stays.
  PdfPagePoint& GetAbsolutePosition() { return absolute_position_; }

  const PdfPagePoint& GetAbsolutePosition() const { return absolute_position_; }

  double GetAbsolutePositionX() const { return absolute_position_.GetX(); }

  double GetAbsolutePositionY() const { return absolute_position_.GetY(); }

  void SetAbsolutePosition(const PdfPagePoint& point);
  void SetAbsolutePositionX(double x);
  void SetAbsolutePositionY(double y);

  PdfTransformLayerPos GetLayerPosition() const { return layer_position_; }

  void SetLayerPosition(PdfTransformLayerPos position) { layer_position_ = position; }

  // About the first line's left end, or an image's centre.
  double GetRotation() const { return rotation_; }

  void SetRotation(double degrees) { rotation_ = degrees; }

  // Nine times: at the top, the bottom and the middle, each left, centred and right.
  bool GetMosaic() const { return mosaic_; }

  void SetMosaic(bool mosaic) { mosaic_ = mosaic; }

  // Left and right change sides on every other page: the page as set is the even one or, with a
  // first cover page, the odd one. The adjustment changes its sign on odd pages.
  bool GetDoFacingPages() const { return do_facing_pages_; }

  void SetDoFacingPages(bool do_facing_pages) { do_facing_pages_ = do_facing_pages; }

  bool GetFirstCoverPage() const { return first_cover_page_; }

  void SetFirstCoverPage(bool first_cover_page) { first_cover_page_ = first_cover_page; }

  // ---- what is drawn ---------------------------------------------------------------------------

  // Text in which "{n}" stands for the page's number and "{p}" for the number of pages. UTF-8, as
  // all texts; line feeds separate lines.
  std::string& GetPageNumberTextTemplate() { return page_number_template_; }

  const std::string& GetPageNumberTextTemplate() const { return page_number_template_; }

  void SetPageNumberTextTemplate(const std::string& text) { page_number_template_ = text; }

  // The template filled in. The text is the object's own and is there until the next call.
  std::string& GetPageNumberText(int number, int count);

  // The number of the document's first page.
  int GetStartingPageNum() const { return starting_page_num_; }

  void SetStartingPageNum(int number) { starting_page_num_ = number; }

  std::string& GetInputText() { return input_text_; }

  const std::string& GetInputText() const { return input_text_; }

  void SetInputText(const std::string& text) { input_text_ = text; }

  // Path of an image file.
  std::string& GetInputImage() { return input_image_; }

  const std::string& GetInputImage() const { return input_image_; }

  void SetInputImage(const std::string& path) { input_image_ = path; }

  // How many of the image's pixels come to a point.
  double GetPixelsPerPoint() const { return pixels_per_point_; }

  void SetPixelsPerPoint(double pixels) { pixels_per_point_ = pixels; }

  // In percent, 1 to 100. Kept, and not applied: images are painted opaque.
  int GetOpacity() const { return opacity_; }

  void SetOpacity(int percent);

  // ---- the look of text ------------------------------------------------------------------------

  // A font of this system; one that is not there is replaced by Arial.
  std::string& GetFontName() { return font_name_; }

  const std::string& GetFontName() const { return font_name_; }

  void SetFontName(const std::string& name) { font_name_ = name; }

  // Words such as "Bold Italic"; empty for the regular style.
  std::string& GetFontStyle() { return font_style_; }

  const std::string& GetFontStyle() const { return font_style_; }

  void SetFontStyle(const std::string& style) { font_style_ = style; }

  // In points; looked at when the text is drawn.
  double GetFontSize() const { return font_size_; }

  void SetFontSize(double size) { font_size_ = size; }

  // "#" and six hexadecimal digits, red, green, blue; what follows them is ignored. Throws for
  // anything else.
  std::string& GetFontColor() { return font_color_; }

  const std::string& GetFontColor() const { return font_color_; }

  void SetFontColor(const std::string& color);

  // The colour as red, green and blue from 0 to 1.
  std::array<double, 3>& GetColors() { return colors_; }

  const std::array<double, 3>& GetColors() const { return colors_; }

  // The value of the first two characters as hexadecimal digits, 0 to 255.
  double GetDoubleFromHexStr(const std::string& digits) const;

  PdfTransformTextAlignment GetTextAlignment() const { return text_alignment_; }

  void SetTextAlignment(PdfTransformTextAlignment alignment) { text_alignment_ = alignment; }

  // In percent, 1 to 100.
  int GetTextOpacity() const { return text_opacity_; }

  void SetTextOpacity(int percent);

  // ---- of a conversion to PDF/A ----------------------------------------------------------------

  PdfCompliance GetCompliance() const { return compliance_; }

  void SetCompliance(PdfCompliance compliance) { compliance_ = compliance; }

  // Whether a lower level will do.
  bool GetPdfaDowngrade() const { return pdfa_downgrade_; }

  void SetPdfaDowngrade(bool downgrade) { pdfa_downgrade_ = downgrade; }

  // ---- for a page that is drawn ----------------------------------------------------------------

  // Gives the horizontal position and adjustment that hold on this page of the document. Nothing
  // changes unless pages face each other.
  void ApplyFacingPages(int page_number);

  // Where the baseline of the first line starts, after ApplyFacingPages of the page. text_size: of
  // the block.
  engines::TPdfPoint GetTextPosition(int page_number, const engines::TPdfSize& page_size,
                                     const engines::TPdfSize& text_size, const PdfText& text);

 private:
  void SetStampDefaults();
  void SetSharedDefaults();
  double TextY(const engines::TPdfSize& page_size, const engines::TPdfSize& text_size,
               const PdfText& text) const;
  double TextX(const engines::TPdfSize& page_size, const engines::TPdfSize& text_size) const;

  PdfTransformType type_;
  std::vector<PdfPageRange> target_ranges_;
  // The selected pages: as runs of pages in the order of their first addition, and as first and
  // last pages of runs that do not touch, for look-ups.
  std::vector<PdfPageRange> target_runs_;
  std::map<int, int> selected_;
  PdfTransformVerticalPos vertical_position_{};
  PdfTransformHorizontalPos horizontal_position_{};
  PdfTransformHorizontalPos base_horizontal_position_{};
  PdfTransformLayerPos layer_position_{};
  PdfTransformTextAlignment text_alignment_{};
  int vertical_adjustment_ = 0;
  int horizontal_adjustment_ = 0;
  int base_horizontal_adjustment_ = 0;
  std::string page_number_template_;
  std::string page_number_text_;
  int starting_page_num_ = 0;
  std::string font_name_;
  std::string font_color_;
  std::string font_style_;
  double font_size_ = 0;
  bool first_cover_page_ = false;
  bool do_facing_pages_ = false;
  std::array<double, 3> colors_{};
  int margin_x_ = 0;
  int margin_y_ = 0;
  std::string input_image_;
  double rotation_ = 0;
  double pixels_per_point_ = 0;
  bool mosaic_ = false;
  int opacity_ = 0;
  int text_opacity_ = 0;
  std::string input_text_;
  PdfCompliance compliance_{};
  bool pdfa_downgrade_ = false;
  PdfPagePoint absolute_position_;
};

}  // namespace TarnixTools

#endif  // TARNIX_PDF_TRANSFORMATION_H_
