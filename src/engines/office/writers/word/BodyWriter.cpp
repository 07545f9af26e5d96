#include "engines/office/writers/word/BodyWriter.h"

#include <algorithm>
#include <set>

#include "engines/office/writers/text/Units.h"
#include "engines/office/writers/word/AnchoredWriter.h"

namespace TarnixTools::engines::office {

namespace {

constexpr std::int64_t kLeastSide = 144;  // of a page, in twips

std::string_view NameOf(NumberFormat format) {
  switch (format) {
    case NumberFormat::kDecimal:
      return "decimal";
    case NumberFormat::kLowerRoman:
      return "lowerRoman";
    case NumberFormat::kUpperRoman:
      return "upperRoman";
  }
  return "decimal";
}

void WriteColumns(XmlWriter& xml, const SectionPlan& section) {
  if (section.columns.empty()) {
    xml.Leaf("w:cols", {{"w:space", 720}});
    return;
  }
  xml.Open("w:cols", {{"w:num", section.columns.size()}, {"w:equalWidth", 0}});
  for (std::size_t i = 0; i < section.columns.size(); ++i) {
    const ColumnPlace& column = section.columns[i];
    const bool is_last = i + 1 == section.columns.size();
    const double space = is_last ? 0 : section.columns[i + 1].left - column.right;
    xml.Leaf("w:col", {{"w:w", Twips(column.right - column.left)}, {"w:space", Twips(space)}});
  }
  xml.Close();
}

// Text reaches out of a page that has hardly any width; no margin is less than none.
std::int64_t MarginTwips(double points) {
  return std::max<std::int64_t>(Twips(points), 0);
}

void WritePage(XmlWriter& xml, const SectionPlan& section, const SectionHeaders& headers) {
  xml.Open("w:pgSz", {{"w:w", std::max(Twips(section.width), kLeastSide)},
                      {"w:h", std::max(Twips(section.height), kLeastSide)}});
  if (section.width > section.height) {
    xml.Attribute({"w:orient", "landscape"});
  }
  xml.Close();
  xml.Leaf("w:pgMar", {{"w:top", Twips(section.top)},
                       {"w:right", MarginTwips(section.width - section.right)},
                       {"w:bottom", MarginTwips(section.height - section.bottom)},
                       {"w:left", Twips(section.left)},
                       {"w:header", Twips(headers.header_distance)},
                       {"w:footer", Twips(headers.footer_distance)},
                       {"w:gutter", 0}});
}

void WriteProperties(XmlWriter& xml, const SectionPlan& section, const SectionHeaders& headers) {
  xml.Open("w:sectPr");
  for (const bool is_header : {true, false}) {
    for (const SectionHeaders::Reference& reference : headers.references) {
      if (reference.is_header == is_header) {
        xml.Leaf(is_header ? "w:headerReference" : "w:footerReference",
                 {{"w:type", reference.pages}, {"r:id", reference.id}});
      }
    }
  }
  xml.Leaf("w:type", {{"w:val", section.is_continuous ? "continuous" : "nextPage"}});
  WritePage(xml, section, headers);
  if (section.start) {
    xml.Leaf("w:pgNumType",
             {{"w:fmt", NameOf(section.start->format)}, {"w:start", section.start->value}});
  }
  WriteColumns(xml, section);
  if (section.margins.first) {
    xml.Leaf("w:titlePg");
  }
  if (section.runs_down) {
    xml.Leaf("w:textDirection", {{"w:val", "tbRl"}});
  }
  if (section.is_right_to_left) {
    xml.Leaf("w:bidi");
  }
  xml.Close();
}

// Where the text of a section goes, as it is when its lines run to the right.
FlowRoom RoomOf(const SectionPlan& section) {
  if (section.runs_down) {
    return {.left = section.top,
            .right = section.bottom,
            .top = section.width - section.right,
            .page_bottom = section.width - section.left};
  }
  return {.left = section.left,
          .right = section.right,
          .top = section.top,
          .page_bottom = section.bottom};
}

void AddMarks(const std::vector<Block>& blocks, std::set<std::size_t>& marks) {
  for (const Block& block : blocks) {
    if (const auto* paragraph = std::get_if<Paragraph>(&block.content)) {
      for (const TextLine& line : paragraph->lines) {
        for (const TextPiece& piece : line.pieces) {
          if (piece.kind == PieceKind::kNoteMark) {
            marks.insert(piece.number);
          }
        }
      }
    } else if (const auto* table = std::get_if<Table>(&block.content)) {
      for (const TableCell& cell : table->cells) {
        for (const Block& inside : cell.blocks) {
          if (std::holds_alternative<Paragraph>(inside.content)) {
            AddMarks({inside}, marks);
          }
        }
      }
    }
  }
}

// The blocks of notes that no mark refers to: they are text like any other.
std::vector<const std::vector<Block>*> LooseNotes(const PageLayout& page) {
  std::set<std::size_t> marks;
  for (const Band& band : page.bands) {
    for (const Column& column : band.columns) {
      AddMarks(column.blocks, marks);
    }
  }
  std::vector<const std::vector<Block>*> loose;
  for (std::size_t i = 0; i < page.notes.size(); ++i) {
    if (!marks.contains(i)) {
      loose.push_back(&page.notes[i].blocks);
    }
  }
  return loose;
}

bool EndsPage(const SectionPart& part, const PageLayout& page) {
  return part.first_band + part.band_count == page.bands.size();
}

// The column of the section that the column of the page is.
ColumnPlace PlaceOf(const SectionPlan& section, const Column& column) {
  return *std::min_element(section.columns.begin(), section.columns.end(),
                           [&column](const ColumnPlace& a, const ColumnPlace& b) {
                             return std::abs(a.left - column.box.left) <
                                    std::abs(b.left - column.box.left);
                           });
}

}  // namespace

void BodyWriter::Write() {
  for (std::size_t i = 0; i < plan_.sections.size(); ++i) {
    const SectionPlan& section = plan_.sections[i];
    const SectionHeaders headers = headers_.Write(section);
    const bool is_last = i + 1 == plan_.sections.size();
    const SectionEnd end = [&] { WriteProperties(story_.xml, section, headers); };
    WriteSection(section, is_last ? SectionEnd() : end, is_last);
    if (is_last) {
      end();
    }
  }
}

void BodyWriter::WriteSection(const SectionPlan& section, const SectionEnd& end, bool is_last) {
  for (std::size_t part = 0; part < section.parts.size(); ++part) {
    if (part > 0 || !section.is_continuous) {
      cursor_ = RoomOf(section).top;
    }
    const bool is_last_part = part + 1 == section.parts.size();
    WritePart(section, part, is_last_part ? end : SectionEnd(), is_last && is_last_part);
  }
}

FlowStart BodyWriter::StartOf(const SectionPlan& section, std::size_t part) {
  FlowStart start;
  start.begins_page = part > 0;
  start.has_spacer = !section.columns.empty();
  if (section.parts[part].first_band == 0) {
    const OfficePage& page = story_.context.document.pages[section.parts[part].page];
    start.write_anchored = [this, &page] { WriteAnchoredOfPage(story_, page); };
    floats_ = section.runs_down ? std::vector<const Floating*>() : FloatsWithText(page.layout);
  }
  return start;
}

void BodyWriter::WritePart(const SectionPlan& section, std::size_t index, const SectionEnd& end,
                           bool is_last) {
  const SectionPart& part = section.parts[index];
  const PageLayout& page = story_.context.document.pages[part.page].layout;
  const BlockLists notes = EndsPage(part, page) ? LooseNotes(page) : BlockLists();
  if (section.columns.empty()) {
    WriteOneColumn(section, index, notes, end, is_last);
  } else {
    WriteColumnsOf(section, index, notes, end, is_last);
  }
}

void BodyWriter::WriteOneColumn(const SectionPlan& section, std::size_t index,
                                const BlockLists& notes, const SectionEnd& end, bool is_last) {
  const SectionPart& part = section.parts[index];
  const OfficePage& page = story_.context.document.pages[part.page];
  BlockLists lists;
  for (std::size_t i = part.first_band; i < part.first_band + part.band_count; ++i) {
    for (const Column& column : page.layout.bands[i].columns) {
      lists.push_back(&column.blocks);
    }
  }
  if (section.runs_down) {
    lists = {&part.down};
  }
  lists.insert(lists.end(), notes.begin(), notes.end());
  FlowRoom room = RoomOf(section);
  room.top = cursor_;
  FlowWriter flow(story_, page, room);
  flow.Begin(StartOf(section, index));
  WriteFlow(flow, lists, end, is_last, EndsPage(part, page.layout));
  cursor_ = flow.cursor();
}

void BodyWriter::WriteColumnsOf(const SectionPlan& section, std::size_t index,
                                const BlockLists& notes, const SectionEnd& end, bool is_last) {
  const SectionPart& part = section.parts[index];
  const OfficePage& page = story_.context.document.pages[part.page];
  const std::vector<Column>& columns = page.layout.bands[part.first_band].columns;
  double lowest = cursor_;
  for (std::size_t i = 0; i < columns.size(); ++i) {
    const bool is_last_column = i + 1 == columns.size();
    const ColumnPlace place = PlaceOf(section, columns[i]);
    FlowWriter flow(story_, page,
                    {.left = place.left,
                     .right = place.right,
                     .top = cursor_,
                     .is_column = true,
                     .page_bottom = section.bottom});
    flow.Begin(i == 0 ? StartOf(section, index) : FlowStart{.begins_column = true});
    BlockLists lists = {&columns[i].blocks};
    if (is_last_column) {
      lists.insert(lists.end(), notes.begin(), notes.end());
    }
    WriteFlow(flow, lists, is_last_column ? end : SectionEnd(), is_last && is_last_column,
              is_last_column && EndsPage(part, page.layout));
    lowest = std::max(lowest, flow.cursor());
  }
  cursor_ = lowest;
}

void BodyWriter::WriteFlow(FlowWriter& flow, const BlockLists& lists, const SectionEnd& end,
                           bool is_last, bool ends_page) {
  std::size_t last = lists.size();
  while (last > 0 && lists[last - 1]->empty()) {
    --last;
  }
  flow.SetApart(BlocksApart(lists));
  flow.SetFloats(floats_, ends_page && last > 0 ? lists[last - 1] : nullptr);
  if (ends_page && last == 0) {
    flow.TakeAllFloats();
  }
  for (std::size_t i = 0; i < last; ++i) {
    if (!lists[i]->empty()) {
      flow.Write(*lists[i], i + 1 == last ? end : SectionEnd());
    }
  }
  const bool has_end = last == 0 && end;
  if (has_end || flow.has_start() || (is_last && !flow.ends_with_paragraph())) {
    flow.SkipTo(flow.cursor(), has_end ? end : SectionEnd());
  }
}

}  // namespace TarnixTools::engines::office
