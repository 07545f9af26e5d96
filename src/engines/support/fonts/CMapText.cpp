#include "engines/support/fonts/CMapText.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "foundation/Utf8.h"
#include "pdf/syntax/HexText.h"

namespace TarnixTools::engines::fonts {

namespace {

constexpr std::size_t kMaxInBlock = 100;  // of one operator (Adobe Technical Note 5014)
constexpr std::size_t kMaxTextUnits = 256;

std::string CodeText(std::uint32_t code, int code_bytes) {
  std::string text = "<";
  pdf::AppendHex(text, code, 2 * code_bytes);
  return text + ">";
}

std::string Utf16Text(std::u32string_view text) {
  std::string hex = "<";
  for (const char32_t c : text.substr(0, kMaxTextUnits)) {
    for (const char16_t unit : EncodeUtf16(c)) {
      pdf::AppendHex(hex, unit, 4);
    }
  }
  return hex + ">";
}

std::string Start(std::string_view ordering, std::string_view name, int type, int code_bytes,
                  bool is_vertical) {
  std::string text = "/CIDInit/ProcSet findresource begin\n12 dict begin\nbegincmap\n";
  text += "/CIDSystemInfo 3 dict dup begin\n/Registry(Adobe)def\n/Ordering(";
  text += ordering;
  text += ")def\n/Supplement 0 def\nend def\n/CMapName/";
  text += name;
  text += " def\n/CMapType " + std::to_string(type) + " def\n";
  text += type == 1 ? "/WMode " + std::string(is_vertical ? "1" : "0") + " def\n" : "";
  const std::uint32_t last = code_bytes == 1 ? 0xFF : 0xFFFF;
  return text + "1 begincodespacerange\n" + CodeText(0, code_bytes) + CodeText(last, code_bytes) +
         "\nendcodespacerange\n";
}

constexpr std::string_view kEnd =
    "endcmap\nCMapName currentdict/CMap defineresource pop\nend\nend\n";

// Rows by blocks: "2 beginbfchar\n...\nendbfchar\n".
template <typename Values, typename RowText>
std::string Blocks(const Values& values, const std::string& kind, RowText row_text) {
  std::string text;
  std::size_t left = values.size();
  std::size_t in_block = 0;
  for (const auto& value : values) {
    if (in_block == 0) {
      in_block = std::min(left, kMaxInBlock);
      text += std::to_string(in_block) + " begin" + kind + "\n";
    }
    text += row_text(value) + "\n";
    --left;
    if (--in_block == 0) {
      text += "end" + kind + "\n";
    }
  }
  return text;
}

}  // namespace

std::string CodeMapEntries(bool is_vertical) {
  return std::string("/Type/CMap/CMapName/") + kCodeMapName +
         "/CIDSystemInfo<</Registry(Adobe)/Ordering(Identity)/Supplement 0>>/WMode " +
         (is_vertical ? "1" : "0");
}

std::string CodeMapText(const std::map<std::uint32_t, std::uint32_t>& cids, int code_bytes,
                        bool is_vertical) {
  std::string text = Start("Identity", kCodeMapName, 1, code_bytes, is_vertical);
  text += Blocks(cids, "cidchar", [code_bytes](const auto& row) {
    return CodeText(row.first, code_bytes) + " " + std::to_string(row.second);
  });
  return text.append(kEnd);
}

std::string ToUnicodeText(const std::map<std::uint32_t, std::u32string>& texts, int code_bytes) {
  std::string text = Start("UCS", "Adobe-Identity-UCS", 2, code_bytes, false);
  text += Blocks(texts, "bfchar", [code_bytes](const auto& row) {
    return CodeText(row.first, code_bytes) + Utf16Text(row.second);
  });
  return text.append(kEnd);
}

}  // namespace TarnixTools::engines::fonts
