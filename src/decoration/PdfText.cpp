#include "PdfText.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "PdfException.h"
#include "engines/toolbox/Toolbox.h"

namespace TarnixTools {
namespace {

// Leading over font size: 1.2 in single precision, as positions have always been computed.
constexpr double kLeadingFactor = 1.2F;
static_assert(kLeadingFactor == 1.2000000476837158);

int Rounded(double value) {
  constexpr double kMost = std::numeric_limits<int>::max();
  return std::isnan(value) ? 0 : static_cast<int>(std::lround(std::clamp(value, -kMost, kMost)));
}

}  // namespace

PdfText::PdfText(const std::string& text, engines::TPdfFont* font, double size) {
  if (font == nullptr) {
    throw PdfException(PdfExceptionCode::InvalidParameter, 0, "Invalid pdf text font");
  }
  if (!(size > 0.0)) {
    throw PdfException(PdfExceptionCode::InvalidParameter, 0, "Invalid pdf text font size [%d]",
                       Rounded(size));
  }
  SetDefaults();
  text_ = text;
  font_size_ = size;
  font_ = font;
  SplitLines();
  ascent_ = engines::PdfFontGetAscent(font_) * font_size_;
  descent_ = engines::PdfFontGetDescent(font_) * font_size_;
  leading_ = font_size_ * kLeadingFactor;
  text_height_ = static_cast<double>(lines_.size() - 1) * leading_ + ascent_ - descent_;
}

PdfText::PdfText(const PdfText& other) = default;
PdfText::PdfText(PdfText&& other) noexcept = default;
PdfText& PdfText::operator=(const PdfText& other) = default;
PdfText& PdfText::operator=(PdfText&& other) noexcept = default;
PdfText::~PdfText() = default;

void PdfText::SetDefaults() {
  text_.clear();
  lines_.clear();
  font_ = nullptr;
  font_size_ = 0;
  longest_line_.clear();
  text_height_ = 0;
  ascent_ = 0;
  descent_ = 0;
  leading_ = 0;
}

void PdfText::SplitLines() {
  std::size_t start = 0;
  for (std::size_t end = text_.find('\n'); end != std::string::npos;
       end = text_.find('\n', start)) {
    AddLine(text_.substr(start, end - start));
    start = end + 1;
  }
  if (start < text_.size() || lines_.empty()) {
    AddLine(text_.substr(start));
  }
}

void PdfText::AddLine(const std::string& line) {
  lines_.push_back(line);
  if (line.size() > longest_line_.size()) {
    longest_line_ = line;
  }
}

}  // namespace TarnixTools
