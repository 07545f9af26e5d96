#include "support/RandomDocument.h"

#include <array>
#include <cstdio>
#include <random>
#include <stdexcept>

#include "support/Readers.h"

namespace TarnixTools::testing {
namespace {

constexpr std::array<const char*, 8> kFeatureNames = {
    "inherited boxes", "outline",       "tags",           "layers",
    "page labels",     "named targets", "object streams", "linearized"};

constexpr const char* kFont =
    "<</Type/Font/Subtype/Type1/BaseFont/Helvetica/Encoding/WinAnsiEncoding>>";

std::string StreamObject(const std::string& entries, const std::string& data) {
  return "<<" + entries + "/Length " + std::to_string(data.size()) + ">>\nstream\n" + data +
         "\nendstream";
}

std::string Number(std::size_t value) {
  return std::to_string(value);
}

}  // namespace

RandomDocument::RandomDocument(std::uint32_t seed) : seed_(seed) {
  std::mt19937 random(seed);
  const auto below = [&](unsigned bound) { return static_cast<int>(random() % bound); };
  const auto one_in = [&](unsigned count) { return below(count) == 0; };
  const int page_count = 1 + below(6);
  for (int i = 0; i < page_count; ++i) {
    pages_.push_back({.number = i + 1,
                      .width = 200 + 50 * below(9),
                      .height = 200 + 50 * below(9),
                      .rotation = one_in(2) ? 0 : 90 * below(4),
                      .is_cropped = one_in(4),
                      .has_image = one_in(3),
                      .has_note = one_in(4),
                      .has_field = one_in(4),
                      .has_link = one_in(3)});
  }
  for (std::size_t i = 0; i < has_.size(); ++i) {
    has_[i] = one_in(3);
  }
  if (one_in(4)) {
    key_bits_ = one_in(2) ? 256 : 128;
    password_ = one_in(2) ? "open sesame" : "";
  }
}

std::string RandomDocument::SecretOf(std::size_t page) const {
  return "secret " + Number(seed_) + " of page " + std::to_string(pages_[page].number) + ";";
}

std::string RandomDocument::Write(const std::string& path) const {
  TestPdf pdf;
  for (std::size_t i = 0; i < pages_.size(); ++i) {
    AddPage(pdf, i);
  }
  AddBeside(pdf);
  const std::vector<std::string> options = RewriteOptions();
  if (options.empty()) {
    pdf.Write(path);
  } else {
    std::vector<std::string> command = {"qpdf", pdf.Write(path + ".plain"), path};
    command.insert(command.begin() + 1, options.begin(), options.end());
    const ProgramResult result = RunProgram(command);
    std::remove((path + ".plain").c_str());
    if (result.exit_status != 0) {
      throw std::runtime_error("qpdf: " + result.errors);
    }
  }
  return path;
}

std::vector<std::string> RandomDocument::RewriteOptions() const {
  std::vector<std::string> options;
  if (Has(kObjectStreams)) {
    options.emplace_back("--object-streams=generate");
  }
  if (Has(kLinearized)) {
    options.emplace_back("--linearize");
  }
  if (key_bits_ != 0) {
    options.insert(options.end(), {"--encrypt", password_, "owner", std::to_string(key_bits_)});
    if (key_bits_ == 128) {
      options.emplace_back("--use-aes=y");
    }
    options.emplace_back("--");
  }
  return options;
}

void RandomDocument::AddPage(TestPdf& pdf, std::size_t index) const {
  const Page& page = pages_[index];
  const std::string number = Number(index + 1);
  pdf.Page().Size(page.width, page.height).Content(ContentOf(index));
  if (Has(kInherits) && index == 0) {
    pdf.NoMediaBox().InheritedEntry("/MediaBox[0 0 " + std::to_string(page.width) + " " +
                                    std::to_string(page.height) + "]/Rotate " +
                                    std::to_string(page.rotation));
  } else {
    pdf.Rotate(page.rotation);
  }
  if (page.is_cropped) {
    pdf.PageEntry("/CropBox[20 30 " + std::to_string(page.width - 10) + " " +
                  std::to_string(page.height - 20) + "]");
  }
  pdf.PageEntry(std::string("/Resources<</Font<</F1 {{font}}>>/XObject<</I {{image}}>>") +
                (Has(kLayers) ? "/Properties<</On {{on}}/Off {{off}}>>>>" : ">>"));
  std::string annotations;
  if (page.has_link) {
    const std::string target = Number((index + 1) % pages_.size() + 1);
    pdf.Object("link" + number,
               "<</Type/Annot/Subtype/Link/Border[0 0 0]/Rect[30 40 90 60]/Dest" +
                   (Has(kNames) ? "(to " + target + ")" : "[{{page " + target + "}}/Fit]") + ">>");
    annotations += "{{link" + number + "}} ";
  }
  if (page.has_note) {
    pdf.Object("note" + number,
               "<</Type/Annot/Subtype/Square/C[1 0 0]/F 4/Rect[100 40 140 60]/Contents(" +
                   SecretOf(index) + ")/AP<</N {{box}}>>>>");
    annotations += "{{note" + number + "}} ";
  }
  if (page.has_field) {
    pdf.Object("field" + number,
               "<</Type/Annot/Subtype/Widget/F 4/Rect[30 70 90 90]/FT/Tx/T(field " + number +
                   ")/V(" + SecretOf(index) + ")/AP<</N {{box}}>>>>");
    annotations += "{{field" + number + "}} ";
  }
  if (!annotations.empty()) {
    pdf.PageEntry("/Annots[" + annotations + "]");
  }
  if (Has(kTags)) {
    pdf.PageEntry("/StructParents " + Number(index));
    pdf.Object("tag" + number, "<</Type/StructElem/S/P/P {{top}}/K 0/Pg {{page " + number +
                                   "}}/Alt(" + SecretOf(index) + ")>>");
  }
}

// A colour and the page's number, so that no page looks like another one.
std::string RandomDocument::ContentOf(std::size_t index) const {
  const Page& page = pages_[index];
  const auto shade = [&](unsigned step) {
    return "0." +
           std::to_string((seed_ * 7U + static_cast<unsigned>(page.number) * 3U) * step % 9U);
  };
  std::string content = shade(1) + " " + shade(2) + " " + shade(5) + " rg 30 100 120 60 re f\n";
  if (page.has_image) {
    content += "q 60 0 0 40 40 110 cm /I Do Q\n";
  }
  if (Has(kLayers)) {
    content +=
        "/OC /On BDC 0 0 1 rg 150 40 20 20 re f EMC\n/OC /Off BDC 0 g 0 0 900 900 re f EMC\n";
  }
  const std::string text =
      "0 g BT /F1 40 Tf 30 50 Td (" + Number(seed_) + "." + std::to_string(page.number) + ") Tj ET";
  return content + (Has(kTags) ? "/P <</MCID 0>> BDC " + text + " EMC" : text);
}

// The objects that pages share, and what stands in the catalog.
void RandomDocument::AddBeside(TestPdf& pdf) const {
  pdf.Object("font", kFont);
  pdf.Object("image", StreamObject("/Type/XObject/Subtype/Image/Width 2/Height 2/BitsPerComponent 8"
                                   "/ColorSpace/DeviceRGB/Filter/ASCIIHexDecode",
                                   "FF0000 00FF00 0000FF FFFF00>"));
  pdf.Object("box", StreamObject("/Type/XObject/Subtype/Form/BBox[0 0 60 20]",
                                 "1 0.5 0 rg 0 0 60 20 re f"));
  pdf.Object("on", "<</Type/OCG/Name(shown)>>").Object("off", "<</Type/OCG/Name(hidden)>>");
  std::string fields;
  std::string items;
  std::string tags;
  std::string parents;
  std::string names;
  for (std::size_t i = 0; i < pages_.size(); ++i) {
    const std::string number = Number(i + 1);
    fields += pages_[i].has_field ? "{{field" + number + "}} " : "";
    tags += "{{tag" + number + "}} ";
    parents += Number(i) + "[{{tag" + number + "}}]";
    names += "(to " + number + ")[{{page " + number + "}}/Fit]";
    if (Has(kOutline)) {
      const std::string next = i + 1 < pages_.size() ? "/Next {{item" + Number(i + 2) + "}}" : "";
      const std::string previous = i > 0 ? "/Prev {{item" + Number(i) + "}}" : "";
      pdf.Object("item" + number, "<</Title(" + SecretOf(i) + ")/Parent {{items}}/Dest[{{page " +
                                      number + "}}/Fit]" + next + previous + ">>");
    }
  }
  if (!fields.empty()) {
    pdf.CatalogEntry("/AcroForm<</Fields[" + fields + "]/DR<</Font<</F1 {{font}}>>>>>>");
  }
  if (Has(kOutline)) {
    pdf.Object("items", "<</Type/Outlines/First {{item1}}/Last {{item" + Number(pages_.size()) +
                            "}}/Count " + Number(pages_.size()) + ">>");
    pdf.CatalogEntry("/Outlines {{items}}");
  }
  if (Has(kTags)) {
    pdf.Object("root", "<</Type/StructTreeRoot/K {{top}}/ParentTree<</Nums[" + parents + "]>>>>");
    pdf.Object("top", "<</Type/StructElem/S/Document/P {{root}}/K[" + tags + "]>>");
    pdf.CatalogEntry("/StructTreeRoot {{root}}/MarkInfo<</Marked true>>/Lang(en)");
  }
  if (Has(kLayers)) {
    pdf.CatalogEntry(
        "/OCProperties<</OCGs[{{on}} {{off}}]/D<</OFF[{{off}}]/Order[{{on}} {{off}}]>>>>");
  }
  if (Has(kLabels)) {
    pdf.CatalogEntry("/PageLabels<</Nums[0<</S/r>>]>>");
  }
  if (Has(kNames)) {
    pdf.CatalogEntry("/Names<</Dests<</Names[" + names + "]>>>>");
  }
}

std::vector<RandomDocument> RandomDocument::Simpler() const {
  std::vector<RandomDocument> simpler;
  const auto add = [&](auto change) {
    RandomDocument document = *this;
    change(document);
    if (document.Description() != Description()) {
      simpler.push_back(document);
    }
  };
  for (std::size_t i = 0; pages_.size() > 1 && i < pages_.size(); ++i) {
    add([i](RandomDocument& document) {
      document.pages_.erase(document.pages_.begin() + static_cast<std::ptrdiff_t>(i));
    });
  }
  for (std::size_t i = 0; i < has_.size(); ++i) {
    add([i](RandomDocument& document) { document.has_[i] = false; });
  }
  add([](RandomDocument& document) {
    document.key_bits_ = 0;
    document.password_.clear();
  });
  for (std::size_t i = 0; i < pages_.size(); ++i) {
    add([i](RandomDocument& document) { document.pages_[i].rotation = 0; });
    for (bool Page::*part : {&Page::is_cropped, &Page::has_image, &Page::has_note, &Page::has_field,
                             &Page::has_link}) {
      add([i, part](RandomDocument& document) { document.pages_[i].*part = false; });
    }
  }
  return simpler;
}

std::string RandomDocument::Description() const {
  std::string text = "seed " + Number(seed_);
  for (std::size_t i = 0; i < has_.size(); ++i) {
    text += has_[i] ? std::string(", ") + kFeatureNames[i] : "";
  }
  if (key_bits_ != 0) {
    text += ", encrypted by " + std::to_string(key_bits_) + " bits with \"" + password_ + "\"";
  }
  for (const Page& page : pages_) {
    text += "; page " + std::to_string(page.number) + " of " + std::to_string(page.width) + " x " +
            std::to_string(page.height) + " turned by " + std::to_string(page.rotation) +
            (page.is_cropped ? ", cropped" : "") + (page.has_image ? ", image" : "") +
            (page.has_note ? ", note" : "") + (page.has_field ? ", field" : "") +
            (page.has_link ? ", link" : "");
  }
  return text;
}

}  // namespace TarnixTools::testing
