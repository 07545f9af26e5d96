#include "PdfTransformation.h"

#include <cmath>

#include "PdfException.h"
#include "PdfText.h"
#include "engines/toolbox/Toolbox.h"

namespace TarnixTools {
namespace {

constexpr const char* kDefaultFontName = "Arial";
constexpr const char* kDefaultFontColor = "#000000";
constexpr const char* kDefaultTemplate = "{n}";
constexpr double kDefaultFontSize = 24.0;
constexpr int kStampMargin = 15;
constexpr double kStampPixelsPerPoint = 1.33;

constexpr const char* kColorCharacters = "#0123456789ABCDEFabcdef";
constexpr std::size_t kColorLength = 7;

constexpr int kMinOpacity = 1;
constexpr int kMaxOpacity = 100;

bool IsOpacity(int percent) {
  return kMinOpacity <= percent && percent <= kMaxOpacity;
}

std::string Replaced(const std::string& text, const std::string& placeholder,
                     const std::string& value) {
  std::string replaced;
  std::size_t start = 0;
  for (std::size_t found = text.find(placeholder); found != std::string::npos;
       found = text.find(placeholder, start)) {
    replaced.append(text, start, found - start).append(value);
    start = found + placeholder.size();
  }
  return replaced.append(text, start);
}

// A digit that is missing counts as 0.
int DigitAt(const std::string& digits, std::size_t index) {
  char digit = index < digits.size() ? digits[index] : '0';
  if ('a' <= digit && digit <= 'z') {
    digit = static_cast<char>(digit - 'a' + 'A');
  }
  return 'A' <= digit && digit <= 'F' ? digit - 'A' + 10 : digit - '0';
}

PdfTransformHorizontalPos Mirrored(PdfTransformHorizontalPos position) {
  return position == PdfTransformHorizontalPos::Left ? PdfTransformHorizontalPos::Right
                                                     : PdfTransformHorizontalPos::Left;
}

}  // namespace

PdfTransformation::PdfTransformation(PdfTransformType type) : type_(type) {
  SetDefaults();
}

PdfTransformation::PdfTransformation(const PdfTransformation& other) = default;
PdfTransformation::PdfTransformation(PdfTransformation&& other) noexcept = default;
PdfTransformation& PdfTransformation::operator=(const PdfTransformation& other) = default;
PdfTransformation& PdfTransformation::operator=(PdfTransformation&& other) noexcept = default;
PdfTransformation::~PdfTransformation() = default;

void PdfTransformation::SetDefaults() {
  switch (type_) {
    case PdfTransformType::AddPageNumber:
      SetAddPageNumberDefaults();
      return;
    case PdfTransformType::StampText:
      SetStampTextDefaults();
      return;
    case PdfTransformType::StampImage:
      SetStampImageDefaults();
      return;
    case PdfTransformType::PdfA:
      SetPdfADefaults();
      return;
  }
  throw PdfException(PdfExceptionCode::InvalidParameter, 0, "Invalid transformation type [%d]",
                     static_cast<int>(type_));
}

void PdfTransformation::SetAddPageNumberDefaults() {
  SetSharedDefaults();
  vertical_position_ = PdfTransformVerticalPos::Bottom;
  text_alignment_ = PdfTransformTextAlignment::Center;
  margin_x_ = 0;
  margin_y_ = 0;
  pixels_per_point_ = 0;
  absolute_position_ = PdfPagePoint();
}

void PdfTransformation::SetStampTextDefaults() {
  SetStampDefaults();
}

void PdfTransformation::SetStampImageDefaults() {
  SetStampDefaults();
}

void PdfTransformation::SetStampDefaults() {
  SetSharedDefaults();
  vertical_position_ = PdfTransformVerticalPos::Middle;
  text_alignment_ = PdfTransformTextAlignment::Left;
  margin_x_ = kStampMargin;
  margin_y_ = kStampMargin;
  pixels_per_point_ = kStampPixelsPerPoint;
}

void PdfTransformation::SetSharedDefaults() {
  ClearTargetPages();
  SetHorizontalPosition(PdfTransformHorizontalPos::Center);
  layer_position_ = PdfTransformLayerPos::Over;
  vertical_adjustment_ = 0;
  SetHorizontalAdjustment(0);
  page_number_template_ = kDefaultTemplate;
  page_number_text_ = page_number_template_;
  starting_page_num_ = 1;
  font_name_ = kDefaultFontName;
  font_color_ = kDefaultFontColor;
  colors_ = {};
  font_style_.clear();
  first_cover_page_ = false;
  do_facing_pages_ = false;
  font_size_ = kDefaultFontSize;
  input_image_.clear();
  rotation_ = 0;
  mosaic_ = false;
  image_width_ = 0;
  image_width_unit_ = PdfTransformWidthUnit::Points;
  opacity_ = kMaxOpacity;
  apply_opacity_ = false;
  text_opacity_ = kMaxOpacity;
}

void PdfTransformation::SetPdfADefaults() {
  compliance_ = PdfCompliance::None;
  pdfa_downgrade_ = false;
}

void PdfTransformation::SetHorizontalPosition(PdfTransformHorizontalPos position) {
  horizontal_position_ = position;
  base_horizontal_position_ = position;
}

void PdfTransformation::SetHorizontalAdjustment(int adjustment) {
  horizontal_adjustment_ = adjustment;
  base_horizontal_adjustment_ = adjustment;
}

void PdfTransformation::SetAbsolutePosition(const PdfPagePoint& point) {
  absolute_position_ = point;
  vertical_position_ = PdfTransformVerticalPos::Absolute;
  horizontal_position_ = PdfTransformHorizontalPos::Absolute;
}

void PdfTransformation::SetAbsolutePositionX(double x) {
  PdfPagePoint point = absolute_position_;
  point.SetX(x);
  SetAbsolutePosition(point);
}

void PdfTransformation::SetAbsolutePositionY(double y) {
  PdfPagePoint point = absolute_position_;
  point.SetY(y);
  SetAbsolutePosition(point);
}

// Digits never make a new placeholder, so that one pass for each placeholder is enough.
std::string& PdfTransformation::GetPageNumberText(int number, int count) {
  page_number_text_ = Replaced(Replaced(page_number_template_, "{n}", std::to_string(number)),
                               "{p}", std::to_string(count));
  return page_number_text_;
}

void PdfTransformation::SetImageWidth(double width, PdfTransformWidthUnit unit) {
  if (!std::isfinite(width) || width < 0) {
    throw PdfException(PdfExceptionCode::InvalidParameter, 0, "Invalid image width [%g]", width);
  }
  image_width_ = width;
  image_width_unit_ = unit;
}

void PdfTransformation::SetOpacity(int percent) {
  if (!IsOpacity(percent)) {
    throw PdfException(PdfExceptionCode::InvalidParameter, 0,
                       "Invalid image opacity value [%d] (expected [%d-%d] value)", percent,
                       kMinOpacity, kMaxOpacity);
  }
  opacity_ = percent;
}

void PdfTransformation::SetTextOpacity(int percent) {
  if (!IsOpacity(percent)) {
    throw PdfException(PdfExceptionCode::InvalidParameter, 0,
                       "Invalid text opacity value [%d] (expected [%d-%d] value)", percent,
                       kMinOpacity, kMaxOpacity);
  }
  text_opacity_ = percent;
}

void PdfTransformation::SetFontColor(const std::string& color) {
  if (color.find_first_not_of(kColorCharacters) != std::string::npos || color.rfind('#') != 0 ||
      color.size() < kColorLength) {
    throw PdfException(PdfExceptionCode::InvalidParameter, 0, "Invalid RGB font color pattern [%s]",
                       color.c_str());
  }
  font_color_ = color;
  for (std::size_t i = 0; i < colors_.size(); ++i) {
    colors_[i] = GetDoubleFromHexStr(color.substr(1 + 2 * i, 2)) / 255.0;
  }
}

double PdfTransformation::GetDoubleFromHexStr(const std::string& digits) const {
  return DigitAt(digits, 0) * 16 | DigitAt(digits, 1);
}

void PdfTransformation::ApplyFacingPages(int page_number) {
  if (!do_facing_pages_ || (base_horizontal_position_ != PdfTransformHorizontalPos::Left &&
                            base_horizontal_position_ != PdfTransformHorizontalPos::Right)) {
    return;
  }
  const bool is_odd = page_number % 2 != 0;
  const bool is_mirrored = is_odd != first_cover_page_;
  horizontal_position_ =
      is_mirrored ? Mirrored(base_horizontal_position_) : base_horizontal_position_;
  horizontal_adjustment_ = is_odd ? -base_horizontal_adjustment_ : base_horizontal_adjustment_;
}

engines::TPdfPoint PdfTransformation::GetTextPosition(int page_number,
                                                      const engines::TPdfSize& page_size,
                                                      const engines::TPdfSize& text_size,
                                                      const PdfText& text) {
  ApplyFacingPages(page_number);
  return {TextX(page_size, text_size), TextY(page_size, text_size, text)};
}

// In the middle, the top of the block is half its height below the middle of the page: as intended.
double PdfTransformation::TextY(const engines::TPdfSize& page_size,
                                const engines::TPdfSize& text_size, const PdfText& text) const {
  const double ascent = text.GetAscent();
  double y = page_size.height * 0.5 - text_size.height * 0.5 - ascent;
  switch (vertical_position_) {
    case PdfTransformVerticalPos::Top:
      y = page_size.height - ascent - margin_y_;
      break;
    case PdfTransformVerticalPos::Bottom:
      y = text_size.height - ascent + margin_y_;
      break;
    case PdfTransformVerticalPos::Middle:
      break;
    case PdfTransformVerticalPos::Absolute:
      y = absolute_position_.GetY() + margin_y_ + text_size.height - ascent;
      break;
  }
  return y + vertical_adjustment_;
}

double PdfTransformation::TextX(const engines::TPdfSize& page_size,
                                const engines::TPdfSize& text_size) const {
  double x = page_size.width * 0.5 - text_size.width * 0.5;
  const double to_margin = x - margin_x_;
  switch (horizontal_position_) {
    case PdfTransformHorizontalPos::Left:
      x -= to_margin;
      break;
    case PdfTransformHorizontalPos::Center:
      break;
    case PdfTransformHorizontalPos::Right:
      x += to_margin;
      break;
    case PdfTransformHorizontalPos::Absolute:
      x = absolute_position_.GetX() + margin_x_;
      break;
  }
  return x + horizontal_adjustment_;
}

}  // namespace TarnixTools
