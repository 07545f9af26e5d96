#include "engines/toolbox/content/ContentText.h"

#include "foundation/Utf8.h"
#include "pdf/syntax/HexText.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines::toolbox {

namespace {

constexpr int kMatrixDecimals = 6;

}  // namespace

void AppendTransform(std::string& out, const pdf::Matrix& matrix) {
  for (const double value : {matrix.a, matrix.b, matrix.c, matrix.d}) {
    pdf::AppendNumber(out, value, kMatrixDecimals);
  }
  pdf::AppendNumber(out, matrix.e);
  pdf::AppendNumber(out, matrix.f);
  out += " cm";
}

void AppendCode(std::string& out, unsigned code) {
  pdf::AppendHex(out, code, 4);
}

void AppendUtf16Hex(std::string& out, std::u32string_view text) {
  for (const char32_t c : text) {
    for (const char16_t unit : EncodeUtf16(c)) {
      AppendCode(out, unit);
    }
  }
}

}  // namespace TarnixTools::engines::toolbox
