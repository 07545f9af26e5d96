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
//   PdfTransformation logo(PdfTransformType::StampImage);
//   logo.SetInputImage("/data/logo.png");
//   logo.SetVerticalPosition(PdfTransformVerticalPos::Top);
//   logo.SetHorizontalPosition(PdfTransformHorizontalPos::Right);
//
//   std::vector<PdfTransformation> both = {number, logo};
//   PdfDoc("/data/report.pdf", "", true).Transform(both, "/data/decorated.pdf", "");
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
#include "PdfEngineTypes.h"
#include "PdfPagePoint.h"
#include "PdfPageRange.h"
#include "TarnixExport.h"

namespace TarnixTools {

class PdfText;

// What a transformation does. It is chosen when the object is made and stays; settings that belong
// to another type are kept and have no effect.
enum class PdfTransformType : std::int32_t {
  AddPageNumber = 0,  // a text with the page's number in it
  StampText = 1,      // a text of any number of lines
  StampImage = 2,     // a picture from an image file
  PdfA = 3,           // nothing is drawn: the document becomes PDF/A
};

// Between which edges something stands, before the vertical adjustment moves it.
//
//   Top     its upper edge is the margin below that of the page.
//   Bottom  its lower edge is the margin above that of the page.
//   Middle  an image's middle is that of the page; the top of a text is half its height below that.
enum class PdfTransformVerticalPos : std::int32_t {
  Top = 0,
  Bottom = 1,
  Middle = 2,
  Absolute = 3,  // at the absolute position
};

// Beside which edge something stands, before the horizontal adjustment moves it.
//
//   Left    its left edge is the margin to the right of that of the page.
//   Center  its middle is that of the page.
//   Right   its right edge is the margin to the left of that of the page.
enum class PdfTransformHorizontalPos : std::int32_t {
  Left = 0,
  Center = 1,
  Right = 2,
  Absolute = 3,  // at the absolute position
};

// How the lines of a block of text stand inside the width of the block: that of its longest line in
// bytes. Where the block stands on the page is not changed by it.
//
//   Left      lines begin at the left end of the block.
//   Center    their middles are that of the block.
//   Right     they end at the right end of the block.
enum class PdfTransformTextAlignment : std::int32_t {
  Left = 0,
  Center = 1,
  Right = 2,
};

// Whether a decoration or what the page has already hides the other where both are opaque. What is
// under the page is still within it: drawn before the page's own content, and printed with it.
enum class PdfTransformLayerPos : std::int32_t {
  Over = 0,   // painted over what the page has
  Under = 1,  // beneath what the page has: hidden where that is opaque, as scanned pages are
};

// What the width of an image is counted in.
enum class PdfTransformWidthUnit : std::int32_t {
  Points = 0,
  PercentOfPage = 1,  // of the width of the page as a viewer shows it
};

// A plain value. Setters store what they are given unless something else is said. Failures are
// PdfException with the code InvalidParameter and leave the field as it was.
//
// Drawing a page rewrites what belongs to that page: the effective horizontal position and
// adjustment and the page number text. A mosaic leaves the positions of its last tile, in the
// middle on the right, without adjustments.
//
// An object is used by one thread at a time. It opens no file and knows no document: what of it
// cannot be drawn is found when a document is decorated, by the operation that does so.
class TARNIX_EXPORT PdfTransformation {
 public:
  // Makes one with the defaults of the type. Throws for a value that is no type.
  explicit PdfTransformation(PdfTransformType type);

  // A copy has settings of its own. One that was moved from may be assigned to or destroyed.
  PdfTransformation(const PdfTransformation& other);
  PdfTransformation(PdfTransformation&& other) noexcept;
  PdfTransformation& operator=(const PdfTransformation& other);
  PdfTransformation& operator=(PdfTransformation&& other) noexcept;
  ~PdfTransformation();

  // What the object was made for.
  PdfTransformType GetType() const { return type_; }

  // The defaults of the object's type:
  //
  //   page numbers   "{n}" from 1 on, centred at the bottom, no margins
  //   stamps         in the middle of the page, margins of 15 points, 1.33 pixels per point
  //   both           all pages; Arial, 24 points, black, opaque; over the content; not rotated, no
  //                  mosaic
  //   PDF/A          no level, no downgrade; everything else stays as it is
  //
  // Pages that were added are forgotten, too, but for PDF/A.
  void SetDefaults();

  // Set the defaults of one type, whatever the object's own is, which stays.
  void SetAddPageNumberDefaults();
  void SetStampTextDefaults();
  void SetStampImageDefaults();
  void SetPdfADefaults();

  // ---- which pages -----------------------------------------------------------------------------
  //
  //   number.AddTargetPattern("2-10,12");
  //   number.AddTargetPage(15);
  //   number.GetTargetPagesNum();   // 11

  // Add to the pages that are decorated. Without any, all pages are. The document is not known
  // here: pages that it lacks are passed over when it is decorated. Throws for a page number below
  // 1.
  void AddTargetPage(int page_number);
  void AddTargetRange(const PdfPageRange& range);

  // Pages and ranges separated by commas, without blanks: "1,3-5,10". A range may come in either
  // order, a comma at the end and an empty pattern are fine. Throws for what is no such list and
  // for page 0; the items before the bad one stay added.
  void AddTargetPattern(const std::string& pattern);

  // One item of a pattern: "3" or "5-9". Throws for a range with only one end and for page 0; a
  // number that is too large for an int becomes the largest there is.
  void PatternToRange(const std::string& item);

  // Back to all pages.
  void ClearTargetPages();

  // Whether the page is one of those added; true for every page when there are none.
  bool IsTargetPage(int page_number) const;

  // Number of pages added, each counted once; 0 for all pages of the document.
  int GetTargetPagesNum() const;

  // The pages added, each once, in the order in which they were first added; empty for all pages of
  // the document. One number each: a range of a thousand million pages gives as many.
  std::list<int> GetTargetPages() const;

  // Every range ever added, in order; a single page is a range of one. The object's own list:
  // changing it does not change which pages are decorated.
  std::vector<PdfPageRange>& GetTargetRanges() { return target_ranges_; }

  // ---- where on the page -----------------------------------------------------------------------
  //
  // In numbers, for a page of W x H, a block of text of w x h, the margins mx and my and the ascent
  // A of the font, before adjustments:
  //
  //   Top       H - A - my        baseline     Left      mx              left end
  //   Middle    H/2 - h/2 - A     of the       Center    W/2 - w/2       of the
  //   Bottom    h - A + my        first        Right     W - w - mx      block
  //   Absolute  Y + my + h - A    line         Absolute  X + mx
  //
  // h is the ascent and the descent of the font and 1.2 times its size for each further line; w is
  // the width of the line that has the most bytes. An image has its lower-left corner at my, H/2 -
  // h/2 or H - h - my, and at mx, W/2 - w/2 or W - w - mx.

  // Bottom for page numbers, Middle for stamps, at first.
  PdfTransformVerticalPos GetVerticalPosition() const { return vertical_position_; }

  void SetVerticalPosition(PdfTransformVerticalPos position) { vertical_position_ = position; }

  // The effective position, that of the page drawn last where pages face each other. Center at
  // first.
  PdfTransformHorizontalPos GetHorizontalPosition() const { return horizontal_position_; }

  // What was set, which the effective position is made from.
  PdfTransformHorizontalPos GetBaseHorizontalPosition() const { return base_horizontal_position_; }

  // Sets the base position, too.
  void SetHorizontalPosition(PdfTransformHorizontalPos position);

  // Points by which what is drawn is moved upwards from its position; negative for downwards. 0 at
  // first. Under a rotation it is the point turned about that is moved.
  int GetVerticalAdjustment() const { return vertical_adjustment_; }

  void SetVerticalAdjustment(int adjustment) { vertical_adjustment_ = adjustment; }

  // Points by which what is drawn is moved to the right; negative for to the left, 0 at first. This
  // is the effective adjustment, that of the page drawn last where pages face each other.
  int GetHorizontalAdjustment() const { return horizontal_adjustment_; }

  // What was set, which the effective adjustment is made from.
  int GetBaseHorizontalAdjustment() const { return base_horizontal_adjustment_; }

  // Sets the base adjustment, too.
  void SetHorizontalAdjustment(int adjustment);

  // The distance from the left or right edge of the page, in points: 0 for page numbers, 15 for
  // stamps, at first. Not looked at for what is centred; added to an absolute position of a text,
  // not to that of an image. Negative ones push it over the edge.
  int GetMarginX() const { return margin_x_; }

  void SetMarginX(int margin) { margin_x_ = margin; }

  // The distance from the top or bottom edge of the page, in points, with the first values and the
  // effects of the horizontal one.
  int GetMarginY() const { return margin_y_; }

  void SetMarginY(int margin) { margin_y_ = margin; }

  // A fixed place in points from the lower-left corner of the page, where the lower-left corner of
  // a text goes. An image takes it crosswise: y from the point's x and x from its y. The origin at
  // first. The setters make both positions Absolute; the base horizontal position stays.
  // Coordinates are not checked by those of one number.
  PdfPagePoint& GetAbsolutePosition() { return absolute_position_; }

  const PdfPagePoint& GetAbsolutePosition() const { return absolute_position_; }

  double GetAbsolutePositionX() const { return absolute_position_.GetX(); }

  double GetAbsolutePositionY() const { return absolute_position_.GetY(); }

  void SetAbsolutePosition(const PdfPagePoint& point);
  void SetAbsolutePositionX(double x);
  void SetAbsolutePositionY(double y);

  // Over at first.
  PdfTransformLayerPos GetLayerPosition() const { return layer_position_; }

  void SetLayerPosition(PdfTransformLayerPos position) { layer_position_ = position; }

  // Degrees counter-clockwise about the left end of the first line's baseline, or about an image's
  // centre; 0 at first. Page numbers are never turned.
  double GetRotation() const { return rotation_; }

  void SetRotation(double degrees) { rotation_ = degrees; }

  // Whether a stamp is drawn nine times: at the top, the bottom and the middle, each left, centred
  // and right, without adjustments. False at first. Page numbers are never drawn so.
  bool GetMosaic() const { return mosaic_; }

  void SetMosaic(bool mosaic) { mosaic_ = mosaic; }

  // Left and right change sides on every other page: the page as set is the even one or, with a
  // first cover page, the odd one. The adjustment changes its sign on odd pages. False at first; of
  // no effect on what is centred or at an absolute position, nor on images.
  bool GetDoFacingPages() const { return do_facing_pages_; }

  void SetDoFacingPages(bool do_facing_pages) { do_facing_pages_ = do_facing_pages; }

  // Whether the first page stands alone, as a cover does; false at first. Looked at for facing
  // pages only.
  bool GetFirstCoverPage() const { return first_cover_page_; }

  void SetFirstCoverPage(bool first_cover_page) { first_cover_page_ = first_cover_page; }

  // ---- what is drawn ---------------------------------------------------------------------------
  //
  // A template for page numbers, a text or an image for stamps: what belongs to another type than
  // the object's is kept, and of no effect.

  // Text in which "{n}" stands for the page's number and "{p}" for the number of pages, both as
  // often as they come and in decimal digits; "{n}" at first. UTF-8, as all texts; line feeds
  // separate lines.
  std::string& GetPageNumberTextTemplate() { return page_number_template_; }

  const std::string& GetPageNumberTextTemplate() const { return page_number_template_; }

  void SetPageNumberTextTemplate(const std::string& text) { page_number_template_ = text; }

  // The template filled in. The text is the object's own and is there until the next call.
  //   number - what the page is numbered with, its first number counted in already.
  //   count  - of the document's pages.
  std::string& GetPageNumberText(int number, int count);

  // The number of the document's first page, 1 at first; 0 and negative ones will do, too. Pages
  // count on from it whether they are decorated or not.
  int GetStartingPageNum() const { return starting_page_num_; }

  void SetStartingPageNum(int number) { starting_page_num_ = number; }

  // What a text stamp shows: UTF-8, empty at first; line feeds separate lines. Nothing in it stands
  // for something else.
  std::string& GetInputText() { return input_text_; }

  const std::string& GetInputText() const { return input_text_; }

  void SetInputText(const std::string& text) { input_text_ = text; }

  // Path of an image file, UTF-8, empty at first. Opened when the document is decorated, not
  // before; which formats it may have, PdfStampImageTask tells.
  std::string& GetInputImage() { return input_image_; }

  const std::string& GetInputImage() const { return input_image_; }

  void SetInputImage(const std::string& path) { input_image_ = path; }

  // How many of the image's pixels come to a point, 1.33 at first: the image is its width and
  // height in pixels, seen upright, divided by this. Whatever resolution the file names is not
  // looked at. One that gives an image no size, or an infinite one, is refused with
  // InvalidParameter when a page is drawn.
  double GetPixelsPerPoint() const { return pixels_per_point_; }

  void SetPixelsPerPoint(double pixels) { pixels_per_point_ = pixels; }

  // How wide an image is, its proportions kept, in place of its pixels per point: in points, or in
  // percent of the width of the page that it is on. 0, as at first, leaves it to these pixels. Throws
  // for less, and for what is no number or infinite.
  double GetImageWidth() const { return image_width_; }

  PdfTransformWidthUnit GetImageWidthUnit() const { return image_width_unit_; }

  void SetImageWidth(double width, PdfTransformWidthUnit unit = PdfTransformWidthUnit::Points);

  // In percent, 1 to 100, 100 at first; the setter throws for anything else. Kept, and only applied
  // where that was set: images are painted opaque.
  int GetOpacity() const { return opacity_; }

  void SetOpacity(int percent);

  // Whether images are painted with their opacity, on top of what they leave transparent themselves;
  // false at first.
  bool GetApplyOpacity() const { return apply_opacity_; }

  void SetApplyOpacity(bool apply) { apply_opacity_ = apply; }

  // ---- the look of text ------------------------------------------------------------------------
  //
  // Of page numbers and text stamps; kept, and of no effect, for images. What is used of a font is
  // embedded in the output once, however many pages and decorations show it.

  // The family name of a font of this system, "Arial" at first; one that is not there, or that may
  // not be embedded, is replaced by Arial, or what the system has for it, and the report says so.
  std::string& GetFontName() { return font_name_; }

  const std::string& GetFontName() const { return font_name_; }

  void SetFontName(const std::string& name) { font_name_ = name; }

  // Words such as "Bold Italic", or a style's name, also of a named instance of a variable font;
  // empty, as at first, for the regular style. One that the family lacks is replaced by the closest
  // it has, and the report says so.
  std::string& GetFontStyle() { return font_style_; }

  const std::string& GetFontStyle() const { return font_style_; }

  void SetFontStyle(const std::string& style) { font_style_ = style; }

  // In points, 24 at first; must be above 0 when the text is drawn, which is when it is looked at.
  double GetFontSize() const { return font_size_; }

  void SetFontSize(double size) { font_size_ = size; }

  // "#" and six hexadecimal digits of either case, red, green, blue; further digits are ignored.
  // "#000000", black, at first. The setter throws for anything else.
  std::string& GetFontColor() { return font_color_; }

  const std::string& GetFontColor() const { return font_color_; }

  void SetFontColor(const std::string& color);

  // The colour as red, green and blue from 0 to 1, which is what text is painted with: a host that
  // changes it here leaves the font colour's text as it was.
  std::array<double, 3>& GetColors() { return colors_; }

  const std::array<double, 3>& GetColors() const { return colors_; }

  // The value of the first two characters as hexadecimal digits, 0 to 255. One that is missing
  // counts as 0; that they are digits is the caller's to know.
  double GetDoubleFromHexStr(const std::string& digits) const;

  // Center for page numbers, Left for stamps, at first.
  PdfTransformTextAlignment GetTextAlignment() const { return text_alignment_; }

  void SetTextAlignment(PdfTransformTextAlignment alignment) { text_alignment_ = alignment; }

  // In percent, 1 to 100, 100 (opaque) at first; the setter throws for anything else.
  int GetTextOpacity() const { return text_opacity_; }

  void SetTextOpacity(int percent);

  // ---- of a conversion to PDF/A ----------------------------------------------------------------

  // The level that the document is to have; None at first.
  PdfCompliance GetCompliance() const { return compliance_; }

  void SetCompliance(PdfCompliance compliance) { compliance_ = compliance; }

  // Whether a lower level will do where the document cannot have the one asked for; false at first.
  bool GetPdfaDowngrade() const { return pdfa_downgrade_; }

  void SetPdfaDowngrade(bool downgrade) { pdfa_downgrade_ = downgrade; }

  // ---- for a page that is drawn ----------------------------------------------------------------
  //
  // Called for each page by the operations of PdfDoc; a host calls them only to see beforehand
  // where something will stand; PdfFont.h has an example.

  // Gives the horizontal position and adjustment that hold on this page of the document, made from
  // what was set: the order in which pages come does not matter. Nothing changes unless pages face
  // each other.
  //   page_number - one-based; its being odd or even is what counts.
  void ApplyFacingPages(int page_number);

  // Where the baseline of the first line starts, after ApplyFacingPages of the page.
  //   page_size - of the page as a viewer shows it, in points.
  //   text_size - of the whole block, in points.
  //   text      - the block, for the ascent of its font.
  engines::TPdfPoint GetTextPosition(int page_number, const engines::TPdfSize& page_size,
                                     const engines::TPdfSize& text_size, const PdfText& text);

 private:
  void SetStampDefaults();
  void SetSharedDefaults();

  // The coordinates of the first line's start, in points from the lower-left corner of the page.
  double TextY(const engines::TPdfSize& page_size, const engines::TPdfSize& text_size,
               const PdfText& text) const;
  double TextX(const engines::TPdfSize& page_size, const engines::TPdfSize& text_size) const;

  PdfTransformType type_;

  // Every range ever added.
  std::vector<PdfPageRange> target_ranges_;

  // The selected pages: as runs of pages in the order of their first addition, and as first and
  // last pages of runs that do not touch, for look-ups.
  std::vector<PdfPageRange> target_runs_;
  std::map<int, int> selected_;

  PdfTransformVerticalPos vertical_position_{};

  // Those called base are what was set; the others are made from them for each page.
  PdfTransformHorizontalPos horizontal_position_{};
  PdfTransformHorizontalPos base_horizontal_position_{};
  PdfTransformLayerPos layer_position_{};
  PdfTransformTextAlignment text_alignment_{};

  // In points, as margins, the font size and the absolute position are.
  int vertical_adjustment_ = 0;
  int horizontal_adjustment_ = 0;
  int base_horizontal_adjustment_ = 0;

  // With placeholders, and filled in for the page drawn last.
  std::string page_number_template_;
  std::string page_number_text_;
  int starting_page_num_ = 0;
  std::string font_name_;
  std::string font_color_;
  std::string font_style_;
  double font_size_ = 0;
  bool first_cover_page_ = false;
  bool do_facing_pages_ = false;

  // The font colour as red, green and blue from 0 to 1.
  std::array<double, 3> colors_{};
  int margin_x_ = 0;
  int margin_y_ = 0;
  std::string input_image_;
  double rotation_ = 0;
  double pixels_per_point_ = 0;
  double image_width_ = 0;
  PdfTransformWidthUnit image_width_unit_{};
  bool mosaic_ = false;

  // In percent, 1 to 100.
  int opacity_ = 0;
  bool apply_opacity_ = false;
  int text_opacity_ = 0;
  std::string input_text_;
  PdfCompliance compliance_{};
  bool pdfa_downgrade_ = false;
  PdfPagePoint absolute_position_;
};

}  // namespace TarnixTools

#endif  // TARNIX_PDF_TRANSFORMATION_H_
