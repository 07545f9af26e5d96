#include "engines/office/writers/sheets/Workbook.h"

#include <cerrno>
#include <ctime>
#include <vector>

#include <unistd.h>
#include <xlsxwriter.h>

#include "engines/office/writers/sheets/SheetText.h"
#include "engines/support/files/DiskFile.h"
#include "pdf/Error.h"

namespace TarnixTools::engines::office {

namespace {

constexpr std::size_t kBlock = std::size_t{64} << 10;
constexpr std::size_t kLongestFamily = 31;  // characters of a font's name
static_assert(3 * kLongestFamily < LXW_FORMAT_FIELD_LEN, "the library has room for it in UTF-8");
constexpr std::size_t kLongestProperty = 255;  // characters of a title
constexpr double kThinBorder = 1.2;            // points, at most
constexpr double kMediumBorder = 2.2;          // points, at most
constexpr std::time_t kFixedDate = 315532800;  // 1980-01-01, as in the archive itself

[[noreturn]] void ThrowWriteFailed() {
  throw pdf::Error(pdf::ErrorCode::kWriteFailed, "the workbook cannot be written", errno);
}

lxw_color_t ColorOf(const Rgb& color) {
  return static_cast<lxw_color_t>(color.red << 16 | color.green << 8 | color.blue);
}

std::uint8_t BorderStyle(const Border& border) {
  if (border.width <= 0) {
    return LXW_BORDER_NONE;
  }
  return border.width <= kThinBorder     ? LXW_BORDER_THIN
         : border.width <= kMediumBorder ? LXW_BORDER_MEDIUM
                                         : LXW_BORDER_THICK;
}

void SetFont(const CellFormat& look, lxw_format* format) {
  const std::string family = SheetText(look.family, kLongestFamily);
  if (!family.empty()) {
    format_set_font_name(format, family.c_str());
  }
  if (look.size > 0) {
    format_set_font_size(format, look.size);
  }
  if (look.is_bold) {
    format_set_bold(format);
  }
  if (look.is_italic) {
    format_set_italic(format);
  }
  if (look.is_underlined) {
    format_set_underline(format, LXW_UNDERLINE_SINGLE);
  }
  if (look.is_struck) {
    format_set_font_strikeout(format);
  }
  if (look.color != Rgb{}) {
    format_set_font_color(format, ColorOf(look.color));
  }
}

void SetBorders(const CellFormat& look, lxw_format* format) {
  using Set = void (*)(lxw_format*, std::uint8_t);
  using SetColor = void (*)(lxw_format*, lxw_color_t);
  constexpr std::array<Set, 4> kStyles = {format_set_top, format_set_right, format_set_bottom,
                                          format_set_left};
  constexpr std::array<SetColor, 4> kColors = {format_set_top_color, format_set_right_color,
                                               format_set_bottom_color, format_set_left_color};
  for (std::size_t side = 0; side < kStyles.size(); ++side) {
    if (look.borders[side].width > 0) {
      kStyles[side](format, BorderStyle(look.borders[side]));
      kColors[side](format, ColorOf(look.borders[side].color));
    }
  }
}

void SetAlignment(const CellFormat& look, lxw_format* format) {
  if (look.is_aligned) {
    format_set_align(format, look.alignment == Alignment::kRight    ? LXW_ALIGN_RIGHT
                             : look.alignment == Alignment::kCenter ? LXW_ALIGN_CENTER
                                                                    : LXW_ALIGN_LEFT);
  }
  format_set_align(format, look.vertical == VerticalAlignment::kTop ? LXW_ALIGN_VERTICAL_TOP
                           : look.vertical == VerticalAlignment::kMiddle
                               ? LXW_ALIGN_VERTICAL_CENTER
                               : LXW_ALIGN_VERTICAL_BOTTOM);
  if (look.is_wrapped) {
    format_set_text_wrap(format);
  }
}

std::string KeyOf(const CellFormat& look) {
  std::string key = look.number + '\n' + look.family + '\n' + std::to_string(look.size);
  for (const bool flag : {look.is_bold, look.is_italic, look.is_underlined, look.is_struck,
                          look.is_wrapped, look.is_aligned, look.fill.has_value()}) {
    key += flag ? '1' : '0';
  }
  key += std::to_string(static_cast<int>(look.alignment)) +
         std::to_string(static_cast<int>(look.vertical)) + ' ' +
         std::to_string(ColorOf(look.color)) + ' ' +
         std::to_string(ColorOf(look.fill.value_or(Rgb{})));
  for (const Border& border : look.borders) {
    key += ' ' + std::to_string(BorderStyle(border)) + ',' + std::to_string(ColorOf(border.color));
  }
  return key;
}

}  // namespace

Workbook::Workbook(const DocumentFacts& facts) : file_(OpenScratchFile()) {
  const std::string path = "/proc/self/fd/" + std::to_string(fileno(file_.get()));
  book_ = workbook_new(path.c_str());
  if (book_ == nullptr) {
    ThrowWriteFailed();
  }
  std::string title = SheetText(facts.title, kLongestProperty);
  std::string author = SheetText(facts.author, kLongestProperty);
  lxw_doc_properties properties = {};
  properties.title = title.data();
  properties.author = author.data();
  properties.created = kFixedDate;
  workbook_set_properties(book_, &properties);
}

Workbook::~Workbook() {
  if (book_ != nullptr) {
    lxw_workbook_free(book_);
  }
}

lxw_worksheet* Workbook::AddSheet(const std::string& name) {
  lxw_worksheet* sheet = workbook_add_worksheet(book_, name.c_str());
  if (sheet == nullptr) {
    ThrowWriteFailed();
  }
  return sheet;
}

lxw_format* Workbook::FormatFor(const CellFormat& look) {
  lxw_format*& format = formats_[KeyOf(look)];
  if (format != nullptr) {
    return format;
  }
  format = workbook_add_format(book_);
  if (format == nullptr) {
    ThrowWriteFailed();
  }
  if (!look.number.empty()) {
    format_set_num_format(format, look.number.c_str());
  }
  if (look.fill) {
    format_set_pattern(format, LXW_PATTERN_SOLID);
    format_set_bg_color(format, ColorOf(*look.fill));
  }
  SetFont(look, format);
  SetBorders(look, format);
  SetAlignment(look, format);
  return format;
}

void Workbook::WriteTo(pdf::ByteSink& sink) {
  const lxw_error error = workbook_close(book_);
  book_ = nullptr;  // it is freed in any case
  if (error != LXW_NO_ERROR || std::fseek(file_.get(), 0, SEEK_SET) != 0) {
    ThrowWriteFailed();
  }
  std::vector<char> block(kBlock);
  for (std::size_t count = 0;
       (count = std::fread(block.data(), 1, block.size(), file_.get())) > 0;) {
    sink.Write({block.data(), count});
  }
  if (std::ferror(file_.get()) != 0) {
    ThrowWriteFailed();
  }
}

}  // namespace TarnixTools::engines::office
