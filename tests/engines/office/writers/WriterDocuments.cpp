#include "engines/office/writers/WriterDocuments.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <filesystem>
#include <memory>
#include <optional>

#include <gtest/gtest.h>
#include <zlib.h>

#include "engines/office/writers/slides/SlideWriter.h"
#include "engines/office/writers/text/TextMeasure.h"
#include "engines/office/writers/word/WordWriter.h"
#include "engines/support/metadata/XmlScanner.h"

namespace TarnixTools::engines::office {

namespace {

constexpr double kPitch = 12;

// Names of pages for pictures of them, four pixels wide: no program reads them.
class NamedPictures : public PictureSource {
 public:
  std::optional<OfficePicture> PictureOf(std::size_t page, std::span<const ImagePlace>,
                                         const pdf::Box&) override {
    return OfficePicture{"picture of " + std::to_string(page), false, 4, 4};
  }

  std::optional<OfficePicture> DrawingOf(std::size_t page, const pdf::Box&) override {
    return OfficePicture{"drawing of " + std::to_string(page), false, 4, 4};
  }
};

const std::shared_ptr<const Typeface>& TestFace() {
  static const auto face =
      std::make_shared<const Typeface>(Typeface{"Liberation Serif", false, false, true, false});
  return face;
}

TextLine LineAt(double left, double baseline, const std::string& text) {
  static TextMeasure measure;
  TextLine line;
  const double width = measure.WidthOf(*TestFace(), text, kTestSize);
  line.box = {left, baseline - 9, left + width, baseline + 2};
  line.baseline = baseline;
  TextPiece piece;
  piece.text = text;
  piece.x = left;
  piece.width = width;
  line.pieces.push_back(piece);
  return line;
}

std::uint32_t Number(std::string_view bytes, std::size_t at, int count) {
  std::uint32_t number = 0;
  for (int i = count; i-- > 0;) {
    number = number << 8 | static_cast<unsigned char>(bytes.at(at + static_cast<std::size_t>(i)));
  }
  return number;
}

std::string Inflated(std::string_view packed, std::size_t size) {
  std::string out(size + 1, '\0');
  z_stream stream{};
  stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(packed.data()));
  stream.avail_in = static_cast<uInt>(packed.size());
  stream.next_out = reinterpret_cast<Bytef*>(out.data());
  stream.avail_out = static_cast<uInt>(out.size());
  inflateInit2(&stream, -15);
  EXPECT_EQ(inflate(&stream, Z_FINISH), Z_STREAM_END);
  out.resize(stream.total_out);
  inflateEnd(&stream);
  return out;
}

// The children that an element may have, in order, as the schemas have it.
const std::map<std::string, std::vector<std::string>, std::less<>>& Orders() {
  static const std::map<std::string, std::vector<std::string>, std::less<>> orders = {
      {"w:pPr",
       {"w:pStyle", "w:keepNext", "w:keepLines", "w:pageBreakBefore", "w:framePr", "w:widowControl",
        "w:numPr", "w:pBdr", "w:shd", "w:tabs", "w:overflowPunct", "w:bidi", "w:spacing", "w:ind",
        "w:jc", "w:textAlignment", "w:outlineLvl", "w:rPr", "w:sectPr"}},
      {"w:rPr", {"w:rStyle",   "w:rFonts", "w:b",         "w:bCs",     "w:i",   "w:iCs",
                 "w:strike",   "w:vanish", "w:color",     "w:spacing", "w:w",   "w:kern",
                 "w:position", "w:sz",     "w:szCs",      "w:u",       "w:shd", "w:vertAlign",
                 "w:rtl",      "w:lang",   "w14:textFill"}},
      {"w:sectPr",
       {"w:headerReference", "w:footerReference", "w:type", "w:pgSz", "w:pgMar", "w:pgNumType",
        "w:cols", "w:titlePg", "w:textDirection", "w:bidi"}},
      {"w:tbl", {"w:tblPr", "w:tblGrid", "w:tr"}},
      {"w:tblPr",
       {"w:tblStyle", "w:bidiVisual", "w:tblW", "w:jc", "w:tblInd", "w:tblLayout", "w:tblCellMar"}},
      {"w:tblCellMar", {"w:top", "w:left", "w:bottom", "w:right"}},
      {"w:tr", {"w:trPr", "w:tc"}},
      {"w:tc", {"w:tcPr", "w:p", "w:tbl"}},
      {"w:tcPr",
       {"w:tcW", "w:gridSpan", "w:vMerge", "w:tcBorders", "w:shd", "w:textDirection", "w:vAlign"}},
      {"w:tcBorders", {"w:top", "w:left", "w:bottom", "w:right"}},
      {"w:lvl", {"w:start", "w:numFmt", "w:lvlText", "w:lvlJc", "w:pPr", "w:rPr"}},
      {"w:numbering", {"w:abstractNum", "w:num"}},
      {"w:style", {"w:name", "w:basedOn", "w:next", "w:qFormat", "w:pPr", "w:rPr", "w:tblPr"}},
      {"w:styles", {"w:docDefaults", "w:style"}},
      {"w:settings", {"w:defaultTabStop", "w:evenAndOddHeaders", "w:footnotePr", "w:compat"}},
      {"w:font", {"w:altName", "w:family", "w:pitch"}},
      {"wp:anchor",
       {"wp:simplePos", "wp:positionH", "wp:positionV", "wp:extent", "wp:effectExtent",
        "wp:wrapNone", "wp:docPr", "wp:cNvGraphicFramePr", "a:graphic"}},
      {"wp:inline", {"wp:extent", "wp:docPr", "wp:cNvGraphicFramePr", "a:graphic"}},
      {"wps:wsp", {"wps:cNvSpPr", "wps:spPr", "wps:txbx", "wps:bodyPr"}},
      {"wps:spPr", {"a:xfrm", "a:prstGeom", "a:noFill", "a:solidFill", "a:ln"}},
      {"p:spPr", {"a:xfrm", "a:prstGeom", "a:noFill", "a:solidFill", "a:ln"}},
      {"p:presentation", {"p:sldMasterIdLst", "p:sldIdLst", "p:sldSz", "p:notesSz"}},
      {"p:sld", {"p:cSld", "p:clrMapOvr"}},
      {"p:sldMaster", {"p:cSld", "p:clrMap", "p:sldLayoutIdLst"}},
      {"p:cSld", {"p:bg", "p:spTree"}},
      {"p:sp", {"p:nvSpPr", "p:spPr", "p:txBody"}},
      {"p:pic", {"p:nvPicPr", "p:blipFill", "p:spPr"}},
      {"p:graphicFrame", {"p:nvGraphicFramePr", "p:xfrm", "a:graphic"}},
      {"p:txBody", {"a:bodyPr", "a:lstStyle", "a:p"}},
      {"a:txBody", {"a:bodyPr", "a:lstStyle", "a:p"}},
      {"a:tbl", {"a:tblPr", "a:tblGrid", "a:tr"}},
      {"a:tc", {"a:txBody", "a:tcPr"}},
      {"a:tcPr", {"a:lnL", "a:lnR", "a:lnT", "a:lnB", "a:noFill", "a:solidFill"}},
      {"a:pPr",
       {"a:lnSpc", "a:spcBef", "a:spcAft", "a:buClr", "a:buFont", "a:buNone", "a:buChar",
        "a:tabLst"}},
      {"a:rPr", {"a:solidFill", "a:highlight", "a:latin", "a:ea", "a:cs", "a:hlinkClick"}}};
  return orders;
}

struct OpenElement {
  std::string name;
  std::size_t place = 0;  // of the last child in the order
};

std::string Complaint(OpenElement& parent, const std::string& child) {
  const auto order = Orders().find(parent.name);
  if (order == Orders().end()) {
    return "";
  }
  const auto found = std::find(order->second.begin(), order->second.end(), child);
  if (found == order->second.end()) {
    return child + " may not be in " + parent.name + "\n";
  }
  const auto place = static_cast<std::size_t>(found - order->second.begin());
  const bool is_late = place < parent.place && parent.name != "w:tc";
  parent.place = std::max(parent.place, place);
  return is_late ? child + " is too late in " + parent.name + "\n" : "";
}

// The part that a relationship leads to; empty for what is outside of the package.
std::string TargetOf(const XmlScanner& relationship, const std::filesystem::path& folder) {
  std::string target;
  for (const XmlAttribute& attribute : relationship.attributes()) {
    if (attribute.name == "TargetMode") {
      return "";
    }
    target = attribute.name == "Target" ? attribute.Content() : target;
  }
  return (folder / target).lexically_normal().string();
}

// The identifiers of a part's relationships, with the parts that they lead to.
std::map<std::string, std::string> TargetsOf(const Parts& parts, const std::string& name) {
  const std::filesystem::path path(name);
  const auto file = path.parent_path() / "_rels" / (path.filename().string() + ".rels");
  std::map<std::string, std::string> targets;
  const auto part = parts.find(file.string());
  XmlScanner scanner(part == parts.end() ? std::string_view() : part->second);
  while (scanner.Next()) {
    for (const XmlAttribute& attribute : scanner.attributes()) {
      if (attribute.name == "Id") {
        targets.emplace(attribute.Content(), TargetOf(scanner, path.parent_path()));
      }
    }
  }
  return targets;
}

}  // namespace

Paragraph TextAt(double left, double baseline, const std::vector<std::string>& lines) {
  Paragraph paragraph;
  for (const std::string& text : lines) {
    const double y = baseline + kPitch * static_cast<double>(paragraph.lines.size());
    paragraph.lines.push_back(LineAt(left, y, text));
    const pdf::Box& box = paragraph.lines.back().box;
    paragraph.box = paragraph.lines.size() == 1 ? box : paragraph.box;
    paragraph.box.right = std::max(paragraph.box.right, box.right);
    paragraph.box.top = box.top;
  }
  paragraph.line_pitch = lines.size() > 1 ? kPitch : 0;
  return paragraph;
}

Table TableAt(double left, double top, const std::vector<std::string>& texts) {
  constexpr double kCellWidth = 100;
  constexpr double kCellHeight = 20;
  Table table;
  table.columns = {left, left + kCellWidth, left + 2 * kCellWidth};
  table.rows = {top, top + kCellHeight, top + 2 * kCellHeight};
  table.box = {left, top, left + 2 * kCellWidth, top + 2 * kCellHeight};
  table.header_rows = 1;
  for (std::uint32_t i = 0; i < 4; ++i) {
    TableCell cell;
    cell.row = i / 2;
    cell.column = i % 2;
    const double x = table.columns[cell.column];
    const double y = table.rows[cell.row];
    cell.box = {x, y, x + kCellWidth, y + kCellHeight};
    cell.borders.fill({1, Rgb{0, 0, 0}});
    cell.blocks = {Block{TextAt(x + 4, y + 14, {texts.at(i)})}};
    table.cells.push_back(cell);
  }
  return table;
}

OfficePage PageWith(std::vector<Block> blocks) {
  OfficePage page;
  page.model.width = page.layout.width = kTestWidth;
  page.model.height = page.layout.height = kTestHeight;
  page.layout.looks = {TextLook{TestFace(), kTestSize, Rgb{}, std::nullopt}};
  AddBand(page, {std::move(blocks)});
  return page;
}

OfficePage PageWithPath(const PathShape& path) {
  Drawing drawing;
  drawing.box = path.box;
  drawing.paths = {0};
  drawing.is_simple = true;
  OfficePage page = PageWith({Block{drawing}});
  page.model.paths = {path};
  return page;
}

void AddBand(OfficePage& page, const std::vector<std::vector<Block>>& columns) {
  Band band;
  const double width = (kTestWidth - 144) / static_cast<double>(columns.size());
  double left = 72;
  for (const std::vector<Block>& blocks : columns) {
    band.columns.push_back({{left, 72, left + width - 10, kTestHeight - 72}, blocks});
    left += width;
  }
  page.layout.bands.push_back(std::move(band));
}

OfficeDocument DocumentOf(std::vector<OfficePage> pages) {
  OfficeDocument document;
  document.pages = std::move(pages);
  for (std::size_t i = 0; i < document.pages.size(); ++i) {
    document.pages[i].model.number = static_cast<std::uint32_t>(i);
  }
  return document;
}

Parts PartsOf(std::string_view archive) {
  Parts parts;
  std::size_t at = 0;
  while (at + 30 < archive.size() && Number(archive, at, 4) == 0x04034B50) {
    const std::size_t packed = Number(archive, at + 18, 4);
    const std::size_t size = Number(archive, at + 22, 4);
    const std::size_t name_size = Number(archive, at + 26, 2);
    const std::string name(archive.substr(at + 30, name_size));
    const std::string_view data = archive.substr(at + 30 + name_size, packed);
    const std::string bytes =
        Number(archive, at + 8, 2) == 8 ? Inflated(data, size) : std::string(data);
    EXPECT_EQ(bytes.size(), size) << name;
    EXPECT_EQ(crc32_z(0, reinterpret_cast<const Bytef*>(bytes.data()), bytes.size()),
              Number(archive, at + 14, 4))
        << name;
    EXPECT_TRUE(parts.emplace(name, bytes).second) << name << " is there twice";
    at += 30 + name_size + packed;
  }
  EXPECT_EQ(Number(archive, at, 4), 0x02014B50u) << "the directory does not follow the entries";
  return parts;
}

std::string WordBytesOf(const OfficeDocument& document, bool is_cancelled) {
  NamedPictures pictures;
  const std::atomic<bool> flag = is_cancelled;
  pdf::StringSink sink;
  WriteWord(document, pictures, flag, sink);
  return sink.Take();
}

std::string SlideBytesOf(const OfficeDocument& document, bool is_cancelled) {
  NamedPictures pictures;
  const std::atomic<bool> flag = is_cancelled;
  pdf::StringSink sink;
  WriteSlides(document, pictures, flag, sink);
  return sink.Take();
}

std::string OrderComplaints(std::string_view xml) {
  XmlScanner scanner(xml);
  std::vector<OpenElement> open;
  std::string complaints;
  while (scanner.Next()) {
    const std::string name(scanner.tag().name);
    if (scanner.tag().kind == XmlTag::Kind::kEnd) {
      complaints += open.empty() || open.back().name != name ? "stray end of " + name + "\n" : "";
      if (!open.empty()) {
        open.pop_back();
      }
      continue;
    }
    complaints += open.empty() ? "" : Complaint(open.back(), name);
    if (scanner.tag().kind == XmlTag::Kind::kStart) {
      open.push_back({name});
    }
  }
  complaints += scanner.is_malformed() ? "malformed\n" : "";
  complaints += open.empty() ? "" : open.back().name + " is not closed\n";
  return complaints;
}

std::string ReferenceComplaints(const Parts& parts) {
  std::string complaints;
  for (const auto& [name, part] : parts) {
    const std::map<std::string, std::string> targets = TargetsOf(parts, name);
    for (const auto& [id, target] : targets) {
      if (!target.empty() && !parts.contains(target)) {
        complaints += name + " refers to " + target + "\n";
      }
    }
    XmlScanner scanner(name.ends_with(".xml") ? std::string_view(part) : std::string_view());
    while (scanner.Next()) {
      for (const XmlAttribute& attribute : scanner.attributes()) {
        const bool is_reference = attribute.name == "r:id" || attribute.name == "r:embed";
        if (is_reference && !targets.contains(std::string(attribute.Content()))) {
          complaints += name + " has no " + std::string(attribute.Content()) + "\n";
        }
      }
    }
  }
  return complaints;
}

}  // namespace TarnixTools::engines::office
