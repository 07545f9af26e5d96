#include "engines/office/writers/WriterDocuments.h"

#include <algorithm>
#include <atomic>
#include <memory>
#include <optional>

#include <gtest/gtest.h>
#include <zlib.h>

#include "engines/office/writers/slides/SlideWriter.h"
#include "engines/office/writers/text/TextMeasure.h"
#include "engines/office/writers/word/WordWriter.h"

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

Paragraph LineBetween(double left, double right, double baseline, const std::string& text) {
  Paragraph paragraph = TextAt(left, baseline, {text});
  paragraph.box.right = paragraph.lines[0].box.right = right;
  paragraph.lines[0].pieces[0].width = right - left;
  return paragraph;
}

OfficePage FacelessPage(std::vector<Block> blocks) {
  OfficePage page = PageWith(std::move(blocks));
  page.layout.looks = {TextLook{nullptr, kTestSize, Rgb{}, std::nullopt}};
  return page;
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

}  // namespace TarnixTools::engines::office
