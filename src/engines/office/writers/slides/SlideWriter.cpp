#include "engines/office/writers/slides/SlideWriter.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <string>

#include "engines/office/Limits.h"
#include "engines/office/writers/slides/SlideContext.h"
#include "engines/office/writers/slides/SlideMaster.h"
#include "engines/office/writers/slides/SlideShapes.h"
#include "engines/office/writers/text/DrawnShapes.h"
#include "engines/office/writers/text/NoteText.h"
#include "engines/office/writers/text/ParagraphInitials.h"
#include "engines/office/writers/text/Units.h"
#include "engines/support/layout/Boxes.h"
#include "engines/support/pages/Cancellation.h"

namespace TarnixTools::engines::office {

namespace {

constexpr std::string_view kTypes = "application/vnd.openxmlformats-officedocument.presentationml.";
constexpr std::int64_t kLeastSide = 914'400;  // of a slide, as the standard has it
const std::int64_t kMostSide = Emu(limits::kMaxSlideSide);
constexpr std::int64_t kFirstSlideId = 256;
constexpr double kUsualWidth = 720;  // of a presentation without pages
constexpr double kUsualHeight = 540;
constexpr MeasureSettings kSlideText{.has_kerning = true, .grid = 600};

class OneSlide {
 public:
  OneSlide(SlidePart& slide, const SlideMaster& master) : slide_(slide), master_(master) {}

  void Write() {
    const PageLayout& page = slide_.page.layout;
    XmlWriter& xml = slide_.xml;
    OpenSlidePart(xml, "p:sld");
    xml.Open("p:cSld");
    if (page.background && !master_.HasBackground()) {
      WriteSlideBackground(xml, *page.background);
    }
    OpenShapes(xml);
    WriteImages(page);
    WriteText(page.header, 0, page.width);
    for (const Band& band : page.bands) {
      for (const Column& column : band.columns) {
        WriteText(column.blocks, column.box.left, column.box.right);
      }
    }
    for (const Note& note : page.notes) {
      WriteText(WithMark(note, page, slide_.context.measure, {}), 0, page.width);
    }
    WriteText(page.footer, 0, page.width);
    for (const Floating& floating : page.floats) {
      WriteFloating(floating);
    }
    xml.Close();
    xml.Close();
    xml.Open("p:clrMapOvr");
    xml.Leaf("a:masterClrMapping");
    xml.Close();
  }

 private:
  void WriteImages(const PageLayout& page) {
    for (const Block* block : ImagesOf(page)) {
      StopIfCancelled(slide_.context.is_cancelled);
      if (master_.Has(slide_.page, *block)) {
        continue;
      }
      if (const auto* picture = std::get_if<Picture>(&block->content)) {
        WritePictureShape(slide_, *picture);
      } else if (const auto* drawing = std::get_if<Drawing>(&block->content)) {
        WriteDrawingShapes(slide_, *drawing);
      }
    }
  }

  void WriteText(const std::vector<Block>& all, double left, double right) {
    const std::vector<Block> parts =
        HasInitials(all) ? WithInitialsApart(all) : std::vector<Block>();
    const std::vector<Block>& blocks = parts.empty() ? all : parts;
    std::vector<TextGroup> groups = GroupText(slide_, blocks, left, right);
    std::size_t next = 0;
    // In the order of the blocks: a table goes before the text that is below it.
    for (const Block& block : blocks) {
      const auto* table = std::get_if<Table>(&block.content);
      if (table == nullptr) {
        continue;
      }
      while (next < groups.size() && IsBefore(blocks, block, groups[next])) {
        WriteTextShape(slide_, groups[next], groups[next].box, 0);
        ++next;
      }
      WriteTableShape(slide_, *table);
      WritePicturesOf(*table);
      WriteTurnedTextOf(*table);
    }
    for (; next < groups.size(); ++next) {
      WriteTextShape(slide_, groups[next], groups[next].box, 0);
    }
  }

  // Cells of a slide hold text only: their pictures lie over them.
  void WritePicturesOf(const Table& table) {
    for (const TableCell& cell : table.cells) {
      for (const Block& block : cell.blocks) {
        if (const auto* picture = std::get_if<Picture>(&block.content)) {
          WritePictureShape(slide_, *picture);
        } else if (const auto* drawing = std::get_if<Drawing>(&block.content)) {
          WriteDrawingShapes(slide_, *drawing);
        }
      }
    }
  }

  void WriteTurnedTextOf(const Table& table) {
    for (const TableCell& cell : table.cells) {
      if (cell.angle != 0) {
        WriteTurned(cell.blocks, cell.TextBox(), cell.angle);
      }
    }
  }

  static bool IsBefore(const std::vector<Block>& blocks, const Block& block,
                       const TextGroup& group) {
    const Paragraph* first = group.paragraphs.front().paragraph;
    for (const Block& other : blocks) {
      if (&other == &block) {
        return false;
      }
      if (std::get_if<Paragraph>(&other.content) == first) {
        return true;
      }
    }
    return false;
  }

  void WriteFloating(const Floating& floating) {
    const double angle = Turned(floating.angle);
    if (angle == 0) {
      WriteText(floating.blocks, floating.box.left, floating.box.right);
    } else if (floating.is_vertical && angle == 90) {
      WriteVertical(floating);
    } else {
      WriteTurned(floating.blocks, floating.box, angle);
    }
  }

  // A shape whose text is vertical is not turned.
  void WriteVertical(const Floating& floating) {
    const pdf::Box& box = floating.box;
    for (const TextGroup& group : GroupText(slide_, floating.blocks, box.left, box.right)) {
      const double right = MiddleX(box) + MiddleY(box) - MiddleY(group.box);
      const double down = MiddleY(box) + MiddleX(group.box) - MiddleX(box);
      const double width = group.box.height() / 2;
      const double height = group.box.width() / 2;
      WriteTextShape(slide_, group, {right - width, down - height, right + width, down + height}, 0,
                     true);
    }
  }

  // The blocks lie in the box as if they were not turned about its middle.
  void WriteTurned(const std::vector<Block>& blocks, const pdf::Box& box, double angle) {
    const double x = MiddleX(box);
    const double y = MiddleY(box);
    const double cosine = std::cos(angle * std::numbers::pi / 180);
    const double sine = std::sin(angle * std::numbers::pi / 180);
    // A shape is turned about its own middle, and the text as a whole about that of its box.
    for (const TextGroup& group : GroupText(slide_, blocks, box.left, box.right)) {
      const double dx = MiddleX(group.box) - x;
      const double dy = MiddleY(group.box) - y;
      const double right = x + dx * cosine - dy * sine - MiddleX(group.box);
      const double down = y + dx * sine + dy * cosine - MiddleY(group.box);
      WriteTextShape(slide_, group,
                     {group.box.left + right, group.box.bottom + down, group.box.right + right,
                      group.box.top + down},
                     angle);
    }
  }

  SlidePart& slide_;
  const SlideMaster& master_;
};

class PresentationWriter {
 public:
  explicit PresentationWriter(SlideContext& context) : context_(context) {}

  void Write() {
    const auto& pages = context_.document.pages;
    for (std::size_t i = 0; i < pages.size(); ++i) {
      context_.slide_of_page.try_emplace(pages[i].model.number, i + 1);
    }
    SlideMaster master(context_);
    master.Write();
    for (std::size_t i = 0; i < pages.size(); ++i) {
      WriteSlide(master, i);
    }
    WritePresentation();
  }

 private:
  void WriteSlide(const SlideMaster& master, std::size_t index) {
    StopIfCancelled(context_.is_cancelled);
    const std::string name = "ppt/slides/slide" + std::to_string(index + 1) + ".xml";
    PackagePart part;
    Relationships relationships;
    relationships.Add("slideLayout", "../slideLayouts/slideLayout1.xml");
    SlidePart slide{context_, context_.document.pages[index], part.xml(), relationships};
    OneSlide(slide, master).Write();
    context_.package.AddPart(name, std::string(kTypes) + "slide+xml", part);
    context_.package.AddRelationships(name, relationships);
  }

  void WritePresentation() {
    Relationships relationships;
    const std::string master = relationships.Add("slideMaster", "slideMasters/slideMaster1.xml");
    relationships.Add("theme", "theme/theme1.xml");
    const std::size_t count = context_.document.pages.size();
    context_.package.AddPart(
        "ppt/presentation.xml", std::string(kTypes) + "presentation.main+xml", [&](XmlWriter& xml) {
          OpenSlidePart(xml, "p:presentation");
          xml.Open("p:sldMasterIdLst");
          xml.Leaf("p:sldMasterId", {{"id", "2147483648"}, {"r:id", master}});
          xml.Close();
          xml.Open("p:sldIdLst");
          for (std::size_t i = 0; i < count; ++i) {
            const std::string name = "slides/slide" + std::to_string(i + 1) + ".xml";
            xml.Leaf("p:sldId", {{"id", kFirstSlideId + static_cast<std::int64_t>(i)},
                                 {"r:id", relationships.Add("slide", name)}});
          }
          xml.Close();
          WriteSizes(xml);
        });
    context_.package.AddRelationships("ppt/presentation.xml", relationships);
  }

  // All slides of a presentation have one size, which has room for every page.
  void WriteSizes(XmlWriter& xml) {
    const auto& pages = context_.document.pages;
    double width = pages.empty() ? kUsualWidth : 0;
    double height = pages.empty() ? kUsualHeight : 0;
    for (const OfficePage& page : pages) {
      width = std::max(width, page.layout.width);
      height = std::max(height, page.layout.height);
    }
    xml.Leaf("p:sldSz", {{"cx", std::clamp(Emu(width), kLeastSide, kMostSide)},
                         {"cy", std::clamp(Emu(height), kLeastSide, kMostSide)}});
    xml.Leaf("p:notesSz", {{"cx", Emu(kUsualHeight)}, {"cy", Emu(kUsualWidth)}});
  }

  SlideContext& context_;
};

}  // namespace

void WriteSlides(const OfficeDocument& document, PictureSource& pictures,
                 const std::atomic<bool>& is_cancelled, pdf::ByteSink& sink) {
  PackageWriter package(sink, "ppt/presentation.xml");
  package.AddProperties(document.facts);
  SlideContext context{document, pictures, is_cancelled, package, TextMeasure(kSlideText), {}};
  PresentationWriter(context).Write();
  package.Finish();
}

}  // namespace TarnixTools::engines::office
