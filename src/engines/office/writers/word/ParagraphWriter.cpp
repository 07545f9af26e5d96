#include "engines/office/writers/word/ParagraphWriter.h"

#include <algorithm>
#include <string_view>

#include "engines/office/writers/text/Units.h"
#include "engines/office/writers/word/DrawingWriter.h"
#include "engines/office/writers/word/RunWriter.h"
#include "engines/office/writers/word/StyleSheet.h"
#include "engines/office/writers/word/WordNames.h"

namespace TarnixTools::engines::office {

namespace {

constexpr double kSameTab = 1;  // points
// Of a line's width. A line more makes the whole row higher.
constexpr double kSlackInCell = 0.008;
constexpr double kScriptGap = 0.2;  // ems that LibreOffice shows, and Word about as much
constexpr std::size_t kMostTabs = 50;
constexpr double kBelowBaseline = 1 - kAboveBaseline;

struct TabStop {
  double place = 0;  // from the left of the column
  bool is_right = false;
};

std::string_view Justification(const Paragraph& paragraph) {
  switch (paragraph.alignment) {
    case Alignment::kLeft:  // "left" is where lines begin
      return paragraph.is_right_to_left ? "right" : "left";
    case Alignment::kRight:
      return paragraph.is_right_to_left ? "left" : "right";
    case Alignment::kCenter:
      return "center";
    case Alignment::kJustified:
      return "both";
  }
  return "left";
}

void AddStop(std::vector<TabStop>& stops, const TabStop& stop) {
  const bool is_known = std::any_of(stops.begin(), stops.end(), [&stop](const TabStop& known) {
    return std::abs(known.place - stop.place) < kSameTab;
  });
  if (!is_known && stop.place > 0 && stops.size() < kMostTabs) {
    stops.push_back(stop);
  }
}

std::vector<TabStop> TabStops(const Paragraph& paragraph, const FittedParagraph& fitted,
                              const ParagraphPlace& place) {
  std::vector<TabStop> stops;
  if (paragraph.label) {
    AddStop(stops, {fitted.first_left - place.left, false});
  }
  for (const TextLine& line : paragraph.lines) {
    for (std::size_t i = 1; i < line.pieces.size(); ++i) {
      if (line.pieces[i - 1].kind != PieceKind::kTab) {
        continue;
      }
      const bool is_last =
          std::none_of(line.pieces.begin() + static_cast<std::ptrdiff_t>(i), line.pieces.end(),
                       [](const TextPiece& piece) { return piece.kind == PieceKind::kTab; });
      const bool is_right = is_last && paragraph.role == ParagraphRole::kContents;
      const TextPiece& end = line.pieces.back();
      AddStop(stops, {(is_right ? end.x + end.width : line.pieces[i].x) - place.left, is_right});
    }
  }
  std::sort(stops.begin(), stops.end(),
            [](const TabStop& a, const TabStop& b) { return a.place < b.place; });
  return stops;
}

void WriteTabs(XmlWriter& xml, const std::vector<TabStop>& stops) {
  if (stops.empty()) {
    return;
  }
  xml.Open("w:tabs");
  for (const TabStop& stop : stops) {
    xml.Open("w:tab", {{"w:val", stop.is_right ? "right" : "left"}});
    if (stop.is_right) {
      xml.Attribute({"w:leader", "dot"});
    }
    xml.Attribute({"w:pos", Twips(stop.place)});
    xml.Close();
  }
  xml.Close();
}

void WriteSpacing(XmlWriter& xml, const ParagraphPlace& place, std::string_view rule) {
  xml.Leaf("w:spacing",
           {{"w:before", std::max<std::int64_t>(Twips(place.before), 0)},
            {"w:after", std::max<std::int64_t>(Twips(place.after), 0)},
            {"w:line", rule == "auto" ? 240 : std::max<std::int64_t>(Twips(place.pitch), 1)},
            {"w:lineRule", rule}});
}

void WriteIndents(XmlWriter& xml, const Paragraph& paragraph, const FittedParagraph& fitted,
                  const ParagraphPlace& place) {
  double start = fitted.left - place.left;
  double end = place.right - fitted.right;
  double first = paragraph.label && paragraph.alignment != Alignment::kCenter
                     ? paragraph.label->x - fitted.left
                     : fitted.first_left - fitted.left;
  if (paragraph.is_right_to_left) {
    std::swap(start, end);
    first = 0;
  }
  xml.Open("w:ind", {{"w:left", Twips(start)}, {"w:right", Twips(end)}});
  if (Twips(first) < 0) {
    xml.Attribute({"w:hanging", -Twips(first)});
  } else {
    xml.Attribute({"w:firstLine", Twips(first)});
  }
  xml.Close();
}

void WriteNumbering(Story& story, const OfficePage& page, const Paragraph& paragraph) {
  if (!paragraph.label) {
    return;
  }
  const ListPlace place = story.context.numbering.Place(
      *paragraph.label, paragraph.role == ParagraphRole::kListItem ? paragraph.level : 0,
      page.layout.looks[paragraph.label->look]);
  story.xml.Open("w:numPr");
  story.xml.Leaf("w:ilvl", {{"w:val", place.level}});
  story.xml.Leaf("w:numId", {{"w:val", place.number}});
  story.xml.Close();
}

// What all paragraphs have before their text.
void WriteStart(Story& story, const ParagraphPlace& place) {
  if (place.begins_column) {
    story.xml.Open("w:r");
    story.xml.Leaf("w:br", {{"w:type", "column"}});
    story.xml.Close();
  }
  if (place.write_anchored) {
    place.write_anchored();
  }
}

void WriteMark(XmlWriter& xml, const TextLook* look) {
  xml.Open("w:rPr");
  if (look != nullptr) {
    WriteLook(xml, *look);
  } else {
    xml.Leaf("w:sz", {{"w:val", 2}});
    xml.Leaf("w:szCs", {{"w:val", 2}});
  }
  xml.Close();
}

const TextLook* LastLook(const Paragraph& paragraph, const PageLayout& page) {
  return paragraph.lines.empty() || paragraph.lines.back().pieces.empty()
             ? nullptr
             : &page.looks[paragraph.lines.back().pieces.back().look];
}

void WriteProperties(Story& story, const OfficePage& page, const Paragraph& paragraph,
                     const FittedParagraph& fitted, const ParagraphPlace& place) {
  XmlWriter& xml = story.xml;
  xml.Open("w:pPr");
  if (const std::string_view style = StyleSheet::IdOf(paragraph); !style.empty()) {
    xml.Leaf("w:pStyle", {{"w:val", style}});
  }
  if (place.begins_page) {
    xml.Leaf("w:pageBreakBefore");
  }
  WriteNumbering(story, page, paragraph);
  WriteTabs(xml, TabStops(paragraph, fitted, place));
  if (paragraph.is_right_to_left) {
    xml.Leaf("w:bidi");
  }
  WriteSpacing(xml, place, "exact");
  WriteIndents(xml, paragraph, fitted, place);
  xml.Leaf("w:jc", {{"w:val", Justification(paragraph)}});
  if (const TextLook* look = LastLook(paragraph, page.layout)) {
    WriteMark(xml, look);
  }
  if (place.write_section) {
    place.write_section();
  }
  xml.Close();
}

void WriteBookmarked(Story& story, const Paragraph& paragraph, const std::function<void()>& write) {
  if (paragraph.bookmark.empty()) {
    write();
    return;
  }
  const std::uint32_t id = story.context.bookmark_count++;
  story.xml.Leaf("w:bookmarkStart", {{"w:id", id}, {"w:name", paragraph.bookmark}});
  write();
  story.xml.Leaf("w:bookmarkEnd", {{"w:id", id}});
}

void WriteFrame(XmlWriter& xml, const Paragraph& paragraph) {
  const TextLine& letter = paragraph.initial->line;
  const double gap =
      paragraph.lines.empty() ? 0 : paragraph.lines.front().box.left - letter.box.right;
  xml.Leaf("w:framePr", {{"w:dropCap", "drop"},
                         {"w:lines", paragraph.initial->lines_beside},
                         {"w:hSpace", std::max<std::int64_t>(Twips(gap), 0)},
                         {"w:wrap", "around"},
                         {"w:vAnchor", "text"},
                         {"w:hAnchor", "text"}});
}

// The large letter that a paragraph begins with, in a frame that its first lines run around
// (ECMA-376, part 1, 17.3.1.11). It is lowered to the baseline of the last of them.
void WriteInitial(Story& story, const OfficePage& page, const Paragraph& paragraph,
                  const FittedParagraph& fitted, const ParagraphPlace& place) {
  XmlWriter& xml = story.xml;
  const double lines = paragraph.initial->lines_beside;
  xml.Open("w:p");
  xml.Open("w:pPr");
  xml.Leaf("w:keepNext");
  WriteFrame(xml, paragraph);
  WriteSpacing(xml, {.before = place.before, .pitch = lines * place.pitch}, "exact");
  xml.Leaf("w:ind", {{"w:left", Twips(fitted.first_left - place.left)}});
  xml.Leaf("w:textAlignment", {{"w:val", "baseline"}});
  xml.Close();
  for (const TextPiece& piece : paragraph.initial->line.pieces) {
    xml.Open("w:r");
    xml.Open("w:rPr");
    WriteLook(xml, page.layout.looks[piece.look],
              {.rise = -kBelowBaseline * (lines - 1) * place.pitch});
    xml.Close();
    xml.Element("w:t", piece.text, {{"xml:space", "preserve"}});
    xml.Close();
  }
  xml.Close();
}

}  // namespace

void WriteParagraph(Story& story, const OfficePage& page, const Paragraph& paragraph,
                    const ParagraphPlace& place) {
  FitSettings settings{.size_step = 0.5, .script_gap = kScriptGap};
  settings.slack_share = place.is_in_cell ? kSlackInCell : settings.slack_share;
  const FittedParagraph fitted = FitParagraph(paragraph, page.layout.looks, place.left, place.right,
                                              story.context.measure, settings);
  if (paragraph.initial) {
    WriteInitial(story, page, paragraph, fitted, place);
  }
  story.xml.Open("w:p");
  WriteProperties(story, page, paragraph, fitted, place);
  WriteStart(story, place);
  WriteBookmarked(story, paragraph, [&] { RunWriter(story, page, fitted).Write(paragraph); });
  story.xml.Close();
}

void WriteSpacer(Story& story, const ParagraphPlace& place) {
  XmlWriter& xml = story.xml;
  xml.Open("w:p");
  xml.Open("w:pPr");
  if (place.begins_page) {
    xml.Leaf("w:pageBreakBefore");
  }
  WriteSpacing(xml, place, "exact");
  WriteMark(xml, nullptr);
  if (place.write_section) {
    place.write_section();
  }
  xml.Close();
  WriteStart(story, place);
  xml.Close();
}

void WritePictureParagraph(Story& story, const OfficePage& page, const OfficePicture& picture,
                           const pdf::Box& box, const std::string& description,
                           const ParagraphPlace& place) {
  XmlWriter& xml = story.xml;
  xml.Open("w:p");
  xml.Open("w:pPr");
  if (place.begins_page) {
    xml.Leaf("w:pageBreakBefore");
  }
  WriteSpacing(xml, place, "auto");
  xml.Leaf("w:ind", {{"w:left", Twips(box.left - place.left)},
                     {"w:right", Twips(std::min(0.0, place.right - box.right))}});
  WriteMark(xml, nullptr);
  if (place.write_section) {
    place.write_section();
  }
  xml.Close();
  WriteStart(story, place);
  const bool is_link = OpenLinkOf(story, page, box);
  WriteInlinePicture(story, picture, box, description);
  if (is_link) {
    xml.Close();
  }
  xml.Close();
}

}  // namespace TarnixTools::engines::office
