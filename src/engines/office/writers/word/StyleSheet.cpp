#include "engines/office/writers/word/StyleSheet.h"

#include <algorithm>
#include <array>

#include "engines/office/writers/text/Units.h"
#include "engines/office/writers/word/WordNames.h"

namespace TarnixTools::engines::office {

namespace {

struct StyleKind {
  std::string_view id;
  std::string_view name;
  int outline_level = -1;
};

constexpr std::array<StyleKind, 16> kStyles = {{{"Title", "Title"},
                                                {"Heading1", "heading 1", 0},
                                                {"Heading2", "heading 2", 1},
                                                {"Heading3", "heading 3", 2},
                                                {"Heading4", "heading 4", 3},
                                                {"Heading5", "heading 5", 4},
                                                {"Heading6", "heading 6", 5},
                                                {"ListParagraph", "List Paragraph"},
                                                {"Caption", "caption"},
                                                {"TOC1", "toc 1"},
                                                {"TOC2", "toc 2"},
                                                {"TOC3", "toc 3"},
                                                {"Quote", "Quote"},
                                                {"Code", "Code"},
                                                {"Header", "header"},
                                                {"Footer", "footer"}}};

constexpr std::array<std::string_view, 6> kHeadings = {"Heading1", "Heading2", "Heading3",
                                                       "Heading4", "Heading5", "Heading6"};
constexpr std::array<std::string_view, 3> kContents = {"TOC1", "TOC2", "TOC3"};

std::string KeyOf(const TextLook& look) {
  return (look.face ? look.face->family : std::string()) +
         (look.face && look.face->is_bold ? "|b" : "|") +
         (look.face && look.face->is_italic ? "i|" : "|") + std::to_string(Rounded(look.size, 2)) +
         Hex(look.color);
}

void WriteStyle(XmlWriter& xml, const StyleKind& kind, const TextLook* look) {
  xml.Open("w:style", {{"w:type", "paragraph"}, {"w:styleId", kind.id}});
  xml.Leaf("w:name", {{"w:val", kind.name}});
  xml.Leaf("w:basedOn", {{"w:val", "Normal"}});
  if (kind.outline_level >= 0) {
    xml.Leaf("w:next", {{"w:val", "Normal"}});
  }
  xml.Leaf("w:qFormat");
  if (kind.outline_level >= 0) {
    xml.Open("w:pPr");
    xml.Leaf("w:outlineLvl", {{"w:val", kind.outline_level}});
    xml.Close();
  }
  if (look != nullptr) {
    xml.Open("w:rPr");
    WriteLook(xml, *look);
    xml.Close();
  }
  xml.Close();
}

void WriteCharacterStyles(XmlWriter& xml) {
  xml.Open("w:style", {{"w:type", "character"}, {"w:styleId", "Hyperlink"}});
  xml.Leaf("w:name", {{"w:val", "Hyperlink"}});
  xml.Close();
  xml.Open("w:style", {{"w:type", "character"}, {"w:styleId", "FootnoteReference"}});
  xml.Leaf("w:name", {{"w:val", "footnote reference"}});
  xml.Open("w:rPr");
  xml.Leaf("w:vertAlign", {{"w:val", "superscript"}});
  xml.Close();
  xml.Close();
}

void WriteTableStyle(XmlWriter& xml) {
  xml.Open("w:style", {{"w:type", "table"}, {"w:default", "1"}, {"w:styleId", "TableNormal"}});
  xml.Leaf("w:name", {{"w:val", "Normal Table"}});
  xml.Open("w:tblPr");
  xml.Leaf("w:tblInd", {{"w:w", "0"}, {"w:type", "dxa"}});
  xml.Open("w:tblCellMar");
  for (const std::string_view side : {"w:top", "w:left", "w:bottom", "w:right"}) {
    xml.Leaf(side, {{"w:w", "0"}, {"w:type", "dxa"}});
  }
  xml.Close();
  xml.Close();
  xml.Close();
}

}  // namespace

StyleSheet::StyleSheet(const OfficeDocument& document) {
  for (const OfficePage& page : document.pages) {
    for (const Band& band : page.layout.bands) {
      for (const Column& column : band.columns) {
        CountBlocks(column.blocks, page.layout.looks);
      }
    }
  }
}

std::string_view StyleSheet::IdOf(const Paragraph& paragraph) {
  switch (paragraph.role) {
    case ParagraphRole::kBody:
      return "";
    case ParagraphRole::kTitle:
      return "Title";
    case ParagraphRole::kHeading:
      return kHeadings[std::clamp<std::size_t>(paragraph.level, 1, kHeadings.size()) - 1];
    case ParagraphRole::kListItem:
      return "ListParagraph";
    case ParagraphRole::kCaption:
      return "Caption";
    case ParagraphRole::kContents:
      return kContents[std::min<std::size_t>(paragraph.level, kContents.size() - 1)];
    case ParagraphRole::kQuote:
      return "Quote";
    case ParagraphRole::kCode:
      return "Code";
  }
  return "";
}

void StyleSheet::CountBlocks(const std::vector<Block>& blocks, const std::vector<TextLook>& looks) {
  for (const Block& block : blocks) {
    if (const auto* paragraph = std::get_if<Paragraph>(&block.content)) {
      Count(*paragraph, looks);
    }
  }
}

void StyleSheet::Count(const Paragraph& paragraph, const std::vector<TextLook>& looks) {
  auto& uses = uses_[std::string(IdOf(paragraph))];
  for (const TextLine& line : paragraph.lines) {
    for (const TextPiece& piece : line.pieces) {
      const TextLook& look = looks[piece.look];
      if (piece.kind == PieceKind::kText && look.raise == Raise::kNone && !look.is_hidden) {
        Use& use = uses[KeyOf(look)];
        use.look = look;
        use.bytes += piece.text.size();
      }
    }
  }
}

const TextLook* StyleSheet::LookOf(std::string_view id) const {
  const auto uses = uses_.find(id);
  if (uses == uses_.end() || uses->second.empty()) {
    return nullptr;
  }
  const auto most = std::max_element(
      uses->second.begin(), uses->second.end(),
      [](const auto& a, const auto& b) { return a.second.bytes < b.second.bytes; });
  return &most->second.look;
}

void StyleSheet::Write(XmlWriter& xml, const std::string& language) const {
  OpenStory(xml, "w:styles");
  WriteDefaults(xml, language);
  xml.Open("w:style", {{"w:type", "paragraph"}, {"w:default", "1"}, {"w:styleId", "Normal"}});
  xml.Leaf("w:name", {{"w:val", "Normal"}});
  xml.Leaf("w:qFormat");
  if (const TextLook* look = LookOf("")) {
    xml.Open("w:rPr");
    WriteLook(xml, *look);
    xml.Close();
  }
  xml.Close();
  for (const StyleKind& kind : kStyles) {
    WriteStyle(xml, kind, LookOf(kind.id));
  }
  WriteStyle(xml, {"FootnoteText", "footnote text"}, nullptr);
  WriteCharacterStyles(xml);
  WriteTableStyle(xml);
  xml.Close();
}

void StyleSheet::WriteDefaults(XmlWriter& xml, const std::string& language) const {
  const std::string tag = language.empty() ? "en-US" : language;
  xml.Open("w:docDefaults");
  xml.Open("w:rPrDefault");
  xml.Open("w:rPr");
  xml.Leaf("w:kern", {{"w:val", 0}});  // advances are as fonts have them
  xml.Leaf("w:lang", {{"w:val", tag}, {"w:eastAsia", tag}, {"w:bidi", tag}});
  xml.Close();
  xml.Close();
  xml.Open("w:pPrDefault");
  xml.Open("w:pPr");
  xml.Leaf("w:widowControl", {{"w:val", "0"}});
  xml.Leaf("w:overflowPunct", {{"w:val", "0"}});  // lines end where widths say so
  xml.Leaf("w:spacing",
           {{"w:before", "0"}, {"w:after", "0"}, {"w:line", "240"}, {"w:lineRule", "auto"}});
  xml.Close();
  xml.Close();
  xml.Close();
}

}  // namespace TarnixTools::engines::office
