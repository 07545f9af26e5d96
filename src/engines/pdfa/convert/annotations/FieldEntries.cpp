#include "engines/pdfa/convert/annotations/FieldEntries.h"

#include <algorithm>
#include <array>
#include <utility>

#include "pdf/Limits.h"
#include "pdf/tree/PageGeometry.h"
#include "pdf/tree/TextString.h"

namespace TarnixTools::engines::pdfa {

using pdf::Object;

namespace {

// Names that programs give to the fonts of forms, for default appearances whose form has no
// resources.
constexpr std::array<std::pair<std::string_view, std::string_view>, 13> kUsualNames = {{
    {"Helv", "Helvetica"},
    {"HeBo", "Helvetica-Bold"},
    {"HeOb", "Helvetica-Oblique"},
    {"HeBO", "Helvetica-BoldOblique"},
    {"TiRo", "Times-Roman"},
    {"TiBo", "Times-Bold"},
    {"TiIt", "Times-Italic"},
    {"TiBI", "Times-BoldItalic"},
    {"Cour", "Courier"},
    {"CoBo", "Courier-Bold"},
    {"CoOb", "Courier-Oblique"},
    {"CoBO", "Courier-BoldOblique"},
    {"ZaDb", "ZapfDingbats"},
}};

}  // namespace

Object FieldEntries::Inherited(std::string_view key) {
  Object field = annotation_;
  for (int i = 0; i < pdf::limits::kMaxReferenceSteps && field.IsDictionary(); ++i) {
    if (const Object value = Get(field, key); !value.IsNull()) {
      return value;
    }
    field = Get(field, "Parent");
  }
  return {};
}

Object FieldEntries::Form() {
  return document_->Resolve(document_->Catalog(arena_).Get("AcroForm"), arena_);
}

Object FieldEntries::OfForm(std::string_view key) {
  const Object value = Inherited(key);
  return value.IsNull() ? Get(Form(), key) : value;
}

std::string FieldEntries::Text(const Object& value) {
  return value.IsString() ? pdf::TextStringToUtf8(value.Text()) : std::string();
}

std::string FieldEntries::FontName(std::string_view resource) {
  const Object fonts = Get(Get(Form(), "DR"), "Font");
  const Object name = Get(Get(fonts, resource), "BaseFont");
  if (name.IsName()) {
    return std::string(name.Text());
  }
  const auto* usual = std::find_if(kUsualNames.begin(), kUsualNames.end(),
                                   [&](const auto& row) { return row.first == resource; });
  return std::string(usual == kUsualNames.end() ? resource : usual->second);
}

pdf::Box FieldEntries::Rectangle() {
  return pdf::ReadPageBox(*document_, annotation_.Get("Rect")).value_or(pdf::Box{0, 0, 1, 1});
}

double FieldEntries::BorderWidth(double usual) {
  const Object width = Get(Own("BS"), "W");
  if (width.IsNumber()) {
    return width.NumberOr(usual);
  }
  const Object border = Own("Border");
  return border.Items().size() > 2 ? Resolved(border.Items()[2]).NumberOr(0) : usual;
}

}  // namespace TarnixTools::engines::pdfa
