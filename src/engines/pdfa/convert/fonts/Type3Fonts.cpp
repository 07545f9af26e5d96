#include "engines/pdfa/convert/fonts/Type3Fonts.h"

#include <map>
#include <string>
#include <string_view>

#include "pdf/write/EntryText.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines::pdfa {

using pdf::Arena;
using pdf::Object;

namespace {

constexpr unsigned kCodes = 256;

// Names for the codes that are shown without a glyph.
std::map<std::uint32_t, std::string> CodesWithoutGlyph(const FontUse& use, const Object& glyphs) {
  std::map<std::uint32_t, std::string> names;
  for (const std::uint32_t code : use.codes) {
    const std::string_view name = use.font->GlyphNameOf(static_cast<std::uint8_t>(code));
    if (name.empty() || name == ".notdef" || !glyphs.Has(name)) {
      names[code] = "blank" + std::to_string(code);
    }
  }
  return names;
}

std::string EncodingText(const FontUse& use, const std::map<std::uint32_t, std::string>& added) {
  std::string text = "<</Type/Encoding/Differences[";
  for (unsigned code = 0; code < kCodes; ++code) {
    const auto own = added.find(code);
    const std::string_view name =
        own != added.end() ? own->second : use.font->GlyphNameOf(static_cast<std::uint8_t>(code));
    if (!name.empty()) {
      pdf::AppendInteger(text, code);
      pdf::AppendName(text, name);
    }
  }
  return text + "]>>";
}

}  // namespace

void MendType3Font(Conversion& conversion, const FontUse& use) {
  Arena arena;
  const Object font = conversion.document.Load({use.font->number(), 0}, arena);
  const Object glyphs = conversion.document.Resolve(font.Get("CharProcs"), arena);
  const auto added = CodesWithoutGlyph(use, glyphs);
  if (added.empty()) {
    return;
  }
  std::string text = "<<";
  pdf::AppendEntries(text, glyphs);
  for (const auto& [code, name] : added) {
    pdf::AppendName(text, name);
    if (const Object shown = glyphs.Get(".notdef"); shown.IsReference()) {
      pdf::AppendObject(text, shown);
      continue;
    }
    const double width = use.font->WidthOf(static_cast<std::uint8_t>(code)).value_or(0);
    std::string content;
    pdf::AppendNumber(content, width);
    pdf::AppendReference(
        text, conversion.rewriter.Add(pdf::ObjectChange::Stream("<<>>", content + " 0 d0")));
  }
  conversion.rewriter.SetEntry(use.font->number(), "CharProcs", text + ">>");
  conversion.rewriter.SetEntry(use.font->number(), "Encoding", EncodingText(use, added));
  conversion.report.Changed("characters of Type 3 fonts that have no glyph");
}

}  // namespace TarnixTools::engines::pdfa
