#include "engines/office/writers/slides/SlideMaster.h"

#include <algorithm>
#include <array>
#include <map>

#include "engines/office/writers/slides/SlideShapes.h"
#include "engines/office/writers/text/Units.h"
#include "engines/support/layout/Boxes.h"
#include "engines/support/pages/Cancellation.h"

namespace TarnixTools::engines::office {

namespace {

constexpr std::size_t kFewestPages = 3;  // on fewer, nothing is told from what is there by chance
constexpr std::string_view kTypes = "application/vnd.openxmlformats-officedocument.presentationml.";

void AddImages(const std::vector<Block>& blocks, std::vector<const Block*>& images) {
  for (const Block& block : blocks) {
    if (std::holds_alternative<Picture>(block.content) ||
        std::holds_alternative<Drawing>(block.content)) {
      images.push_back(&block);
    }
  }
}

std::string PlaceKey(const pdf::Box& box) {
  return std::to_string(Rounded(box.left, 1)) + "," + std::to_string(Rounded(box.bottom, 1)) + "," +
         std::to_string(Rounded(box.right, 1)) + "," + std::to_string(Rounded(box.top, 1));
}

void WriteColorMap(XmlWriter& xml) {
  xml.Leaf("p:clrMap", {{"bg1", "lt1"},
                        {"tx1", "dk1"},
                        {"bg2", "lt2"},
                        {"tx2", "dk2"},
                        {"accent1", "accent1"},
                        {"accent2", "accent2"},
                        {"accent3", "accent3"},
                        {"accent4", "accent4"},
                        {"accent5", "accent5"},
                        {"accent6", "accent6"},
                        {"hlink", "hlink"},
                        {"folHlink", "folHlink"}});
}

void WriteColors(XmlWriter& xml) {
  constexpr std::array<std::pair<std::string_view, std::string_view>, 12> kColors = {
      {{"a:dk1", "000000"},
       {"a:lt1", "FFFFFF"},
       {"a:dk2", "44546A"},
       {"a:lt2", "E7E6E6"},
       {"a:accent1", "3366AA"},
       {"a:accent2", "CC6633"},
       {"a:accent3", "888888"},
       {"a:accent4", "DDAA33"},
       {"a:accent5", "4499CC"},
       {"a:accent6", "66AA44"},
       {"a:hlink", "0563C1"},
       {"a:folHlink", "954F72"}}};
  xml.Open("a:clrScheme", {{"name", "Document"}});
  for (const auto& [name, color] : kColors) {
    xml.Open(name);
    xml.Leaf("a:srgbClr", {{"val", color}});
    xml.Close();
  }
  xml.Close();
}

void WriteFonts(XmlWriter& xml) {
  xml.Open("a:fontScheme", {{"name", "Document"}});
  for (const std::string_view name : {"a:majorFont", "a:minorFont"}) {
    xml.Open(name);
    xml.Leaf("a:latin", {{"typeface", "Arial"}});
    xml.Leaf("a:ea", {{"typeface", ""}});
    xml.Leaf("a:cs", {{"typeface", ""}});
    xml.Close();
  }
  xml.Close();
}

// A scheme has three of each kind (ECMA-376, part 1, 20.1.4.1.14).
void WriteFormats(XmlWriter& xml) {
  const auto fills = [&xml](std::string_view name) {
    xml.Open(name);
    for (int i = 0; i < 3; ++i) {
      xml.Open("a:solidFill");
      xml.Leaf("a:schemeClr", {{"val", "phClr"}});
      xml.Close();
    }
    xml.Close();
  };
  xml.Open("a:fmtScheme", {{"name", "Document"}});
  fills("a:fillStyleLst");
  xml.Open("a:lnStyleLst");
  for (int i = 0; i < 3; ++i) {
    xml.Open("a:ln", {{"w", 6350}});
    xml.Open("a:solidFill");
    xml.Leaf("a:schemeClr", {{"val", "phClr"}});
    xml.Close();
    xml.Close();
  }
  xml.Close();
  xml.Open("a:effectStyleLst");
  for (int i = 0; i < 3; ++i) {
    xml.Open("a:effectStyle");
    xml.Leaf("a:effectLst");
    xml.Close();
  }
  xml.Close();
  fills("a:bgFillStyleLst");
  xml.Close();
}

void WriteTheme(XmlWriter& xml) {
  xml.Open("a:theme", {{"xmlns:a", "http://schemas.openxmlformats.org/drawingml/2006/main"},
                       {"name", "Document"}});
  xml.Open("a:themeElements");
  WriteColors(xml);
  WriteFonts(xml);
  WriteFormats(xml);
  xml.Close();
  xml.Close();
}

void WriteLayout(XmlWriter& xml) {
  OpenSlidePart(xml, "p:sldLayout");
  xml.Attribute({"type", "blank"});
  xml.Open("p:cSld", {{"name", "Blank"}});
  OpenShapes(xml);
  xml.Close();
  xml.Close();
  xml.Open("p:clrMapOvr");
  xml.Leaf("a:masterClrMapping");
  xml.Close();
}

}  // namespace

void OpenSlidePart(XmlWriter& xml, std::string_view element) {
  xml.Open(element,
           {{"xmlns:a", "http://schemas.openxmlformats.org/drawingml/2006/main"},
            {"xmlns:r", "http://schemas.openxmlformats.org/officeDocument/2006/relationships"},
            {"xmlns:p", "http://schemas.openxmlformats.org/presentationml/2006/main"}});
}

void WriteSlideBackground(XmlWriter& xml, const Rgb& color) {
  xml.Open("p:bg");
  xml.Open("p:bgPr");
  xml.Open("a:solidFill");
  xml.Leaf("a:srgbClr", {{"val", Hex(color)}});
  xml.Close();
  xml.Leaf("a:effectLst");
  xml.Close();
  xml.Close();
}

void OpenShapes(XmlWriter& xml) {
  xml.Open("p:spTree");
  xml.Open("p:nvGrpSpPr");
  xml.Leaf("p:cNvPr", {{"id", 1}, {"name", ""}});
  xml.Leaf("p:cNvGrpSpPr");
  xml.Leaf("p:nvPr");
  xml.Close();
  xml.Leaf("p:grpSpPr");
}

std::vector<const Block*> ImagesOf(const PageLayout& page) {
  std::vector<const Block*> images;
  for (const Floating& floating : page.floats) {
    if (floating.is_behind) {
      AddImages(floating.blocks, images);
    }
  }
  AddImages(page.header, images);
  AddImages(page.footer, images);
  for (const Band& band : page.bands) {
    for (const Column& column : band.columns) {
      AddImages(column.blocks, images);
    }
  }
  for (const Floating& floating : page.floats) {
    if (!floating.is_behind) {
      AddImages(floating.blocks, images);
    }
  }
  return images;
}

SlideMaster::SlideMaster(SlideContext& context) : context_(context) {
  const auto& pages = context.document.pages;
  if (pages.size() < kFewestPages) {
    return;
  }
  background_ = pages.front().layout.background;
  std::map<std::string, std::size_t> counts;
  for (const OfficePage& page : pages) {
    background_ = page.layout.background == background_ ? background_ : std::nullopt;
    std::set<std::string> keys;
    for (const Block* block : ImagesOf(page.layout)) {
      keys.insert(KeyOf(page, *block));
    }
    for (const std::string& key : keys) {
      ++counts[key];
    }
  }
  for (const auto& [key, count] : counts) {
    if (!key.empty() && count == pages.size()) {
      repeated_.insert(key);
    }
  }
}

bool SlideMaster::Has(const OfficePage& page, const Block& block) const {
  return !repeated_.empty() && repeated_.contains(KeyOf(page, block));
}

// Empty for what cannot be told from others like it.
std::string SlideMaster::KeyOf(const OfficePage& page, const Block& block) {
  std::string key;
  if (const auto* picture = std::get_if<Picture>(&block.content)) {
    key = "picture" + PlaceKey(picture->box);
    for (const std::uint32_t number : picture->images) {
      if (number >= page.model.images.size() || page.model.images[number].number == 0) {
        return "";
      }
      key += "#" + std::to_string(page.model.images[number].number);
    }
  } else if (const auto* drawing = std::get_if<Drawing>(&block.content)) {
    if (!drawing->is_simple) {
      return "";
    }
    key = "drawing";
    for (const std::uint32_t number : drawing->paths) {
      if (number < page.model.paths.size()) {
        const PathShape& path = page.model.paths[number];
        key += PlaceKey(path.box) + (path.fill ? Hex(*path.fill) : "") + (path.rises ? "/" : "|") +
               (path.stroke ? Hex(*path.stroke) : "") + ";";
      }
    }
  }
  return key;
}

void SlideMaster::Write() {
  PackagePart part;
  Relationships relationships;
  const std::string layout = relationships.Add("slideLayout", "../slideLayouts/slideLayout1.xml");
  relationships.Add("theme", "../theme/theme1.xml");
  XmlWriter& xml = part.xml();
  OpenSlidePart(xml, "p:sldMaster");
  xml.Open("p:cSld");
  WriteSlideBackground(xml, background_.value_or(Rgb{255, 255, 255}));
  OpenShapes(xml);
  if (!context_.document.pages.empty()) {
    SlidePart slide{context_, context_.document.pages.front(), xml, relationships};
    for (const Block* block : ImagesOf(slide.page.layout)) {
      StopIfCancelled(context_.is_cancelled);
      if (!Has(slide.page, *block)) {
        continue;
      }
      if (const auto* picture = std::get_if<Picture>(&block->content)) {
        WritePictureShape(slide, *picture);
      } else if (const auto* drawing = std::get_if<Drawing>(&block->content)) {
        WriteDrawingShapes(slide, *drawing);
      }
    }
  }
  xml.Close();
  xml.Close();
  WriteColorMap(xml);
  xml.Open("p:sldLayoutIdLst");
  xml.Leaf("p:sldLayoutId", {{"id", "2147483649"}, {"r:id", layout}});
  xml.Close();
  PackageWriter& package = context_.package;
  package.AddPart("ppt/slideMasters/slideMaster1.xml", std::string(kTypes) + "slideMaster+xml",
                  part);
  package.AddRelationships("ppt/slideMasters/slideMaster1.xml", relationships);
  package.AddPart("ppt/slideLayouts/slideLayout1.xml", std::string(kTypes) + "slideLayout+xml",
                  WriteLayout);
  Relationships of_layout;
  of_layout.Add("slideMaster", "../slideMasters/slideMaster1.xml");
  package.AddRelationships("ppt/slideLayouts/slideLayout1.xml", of_layout);
  package.AddPart("ppt/theme/theme1.xml", "application/vnd.openxmlformats-officedocument.theme+xml",
                  WriteTheme);
}

}  // namespace TarnixTools::engines::office
