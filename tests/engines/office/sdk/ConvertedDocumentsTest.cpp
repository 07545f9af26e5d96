// A document with something of everything, converted: from its file to all that is in the output.
#include <string>

#include <gtest/gtest.h>

#include "engines/office/pages/DocumentReader.h"
#include "engines/office/sdk/Conversion.h"
#include "engines/office/writers/PackageText.h"
#include "engines/support/layout/LayoutDump.h"
#include "foundation/Utf8.h"
#include "support/Expected.h"
#include "support/JpegImage.h"
#include "support/Surroundings.h"
#include "support/TempDir.h"
#include "support/TestPdf.h"

namespace TarnixTools::engines::office {
namespace {

using ConversionSdk::OfficeFormat;
using testing::IsAsExpected;
using testing::TestPdf;

class NoEvents : public ConversionSdk::ConversionEvents {
 public:
  void Progress(std::int32_t /*page*/, std::int32_t /*page_count*/) override {}

  void Warning(std::int32_t /*page*/, const std::wstring& text) override {
    ADD_FAILURE() << WideToUtf8(text);
  }
};

std::string Stream(const std::string& entries, const std::string& data) {
  return "<<" + entries + "/Length " + std::to_string(data.size()) + ">>stream\n" + data +
         "\nendstream";
}

// Text in marked content, each with a number of its own.
class Marked {
 public:
  Marked& Text(double x, double y, double size, const std::string& text) {
    content_ += "/P <</MCID " + std::to_string(count_++) + ">> BDC BT /F1 " + std::to_string(size) +
                " Tf " + std::to_string(x) + " " + std::to_string(y) + " Td (" + text +
                ") Tj ET EMC\n";
    return *this;
  }

  Marked& Raw(const std::string& content) {
    content_ += content + "\n";
    return *this;
  }

  const std::string& content() const { return content_; }

 private:
  std::string content_;
  int count_ = 0;
};

void AddImages(TestPdf& pdf) {
  const std::string gray("\x10\x50\x90\xD0", 4);
  const std::string image = "/Type/XObject/Subtype/Image/Width 2/Height 2/BitsPerComponent 8";
  pdf.Object("gray", Stream(image + "/ColorSpace/DeviceGray", gray));
  pdf.Object("mask", Stream(image + "/ColorSpace/DeviceGray", gray));
  pdf.Object("alpha", Stream(image + "/ColorSpace/DeviceRGB/SMask {{mask}}", gray + gray + gray));
  const std::string jpeg = testing::MakeJpeg(8, 8, {200, 100, 50});
  pdf.Object("photo", Stream("/Type/XObject/Subtype/Image/Width 8/Height 8/BitsPerComponent 8"
                             "/ColorSpace/DeviceRGB/Filter/DCTDecode",
                             jpeg));
}

void AddTree(TestPdf& pdf) {
  pdf.Object("tree", "<</Type/StructTreeRoot/K {{doc}}/RoleMap<</Big/H1/Line/TR>>>>");
  pdf.Object(
      "doc",
      "<</S/Document/Lang(en)/Pg {{page 1}}/K[{{head}} {{text}} {{list}} {{table}} {{figure}}]>>");
  pdf.Object("head", "<</S/Big/K 0>>").Object("text", "<</S/P/K[1 2 3]>>");
  pdf.Object("list", "<</S/L/K[<</S/LI/K<</S/LBody/K 4>>>> <</S/LI/K<</S/LBody/K 5>>>>]>>");
  pdf.Object(
      "table",
      "<</S/Table/K[<</S/Line/K[<</S/TH/K 6>> <</S/TH/K 7>>]>>"
      "<</S/TR/K[<</S/TD/K 8>> <</S/TD/K 9>>]>> <</S/TR/K[<</S/TD/K 10>> <</S/TD/K 11>>]>>]>>");
  pdf.Object("figure", "<</S/Figure/Alt(A gray picture)/K 12>>");
  pdf.CatalogEntry("/StructTreeRoot {{tree}}/MarkInfo<</Marked true>>/Lang(en-GB)");
}

std::string FirstPage() {
  Marked page;
  page.Text(72, 720, 18, "A heading of it");
  page.Text(72, 690, 10, "Some words that are there for no other purpose than to fill");
  page.Text(72, 678, 10, "a line of the page, and to go on in the next one below it");
  page.Text(72, 666, 10, "and to end there.");
  page.Text(80, 640, 10, "\225 an item").Text(80, 626, 10, "\225 another item");
  for (int i = 0; i < 6; ++i) {
    page.Text(72 + 100 * (i % 2), 600 - 16 * (i / 2), 10,
              i < 2 ? "Head" : "1,234." + std::to_string(i));
  }
  page.Raw("/Figure <</MCID 12>> BDC q 100 0 0 80 72 400 cm /Gray Do Q EMC");
  page.Raw("q 100 0 0 80 200 400 cm /Alpha Do Q q 0 80 -100 0 430 400 cm /Gray Do Q");
  page.Raw("q 60 0 0 60 450 400 cm /Photo Do Q");
  page.Raw("1 0 0 rg 100 300 m 150 350 200 250 250 300 c 250 260 l 100 260 l f");
  page.Raw("0 0 1 RG 2 w 300 250 100 50 re S 300 200 m 400 200 l S");
  page.Raw("0 g BT /F1 10 Tf 1 0 0 1 72 150 Tm (See the next page, or ) Tj (an address) Tj ET");
  return page.content();
}

TestPdf Everything() {
  TestPdf pdf;
  pdf.Page().Content(FirstPage());
  pdf.PageEntry(
      "/Resources<</Font<</F1 {{font}}>>/XObject<</Gray {{gray}}/Alpha {{alpha}}"
      "/Photo {{photo}}>>>>");
  pdf.Annotation("/Subtype/Link/Rect[70 145 130 162]/Dest(there)");
  pdf.Annotation("/Subtype/Link/Rect[170 145 240 162]/A<</S/URI/URI(http://example.org/a?b=c)>>");
  pdf.Page().Rotate(90).PageEntry("/CropBox[50 50 562 700]");
  pdf.PageEntry("/Resources<</Font<</F1 {{font}}>>>>");
  pdf.Content(
      "BT /F1 12 Tf 0 1 -1 0 200 100 Tm (Text of a page that is turned) Tj "
      "0 1 -1 0 214 100 Tm (and one more line of it) Tj ET");
  pdf.Annotation("/Subtype/Widget/FT/Tx/T(a)/Rect[300 300 320 400]/AP<</N {{look}}>>");
  pdf.Object("font", "<</Type/Font/Subtype/Type1/BaseFont/Helvetica/Encoding/WinAnsiEncoding>>");
  pdf.Object("look", Stream("/Type/XObject/Subtype/Form/BBox[0 0 20 100]/Matrix[1 0 0 1 0 0]"
                            "/Resources<</Font<</F1 {{font}}>>>>",
                            "BT /F1 10 Tf 0 1 -1 0 14 5 Tm (In a field) Tj ET"));
  AddImages(pdf);
  AddTree(pdf);
  pdf.Object("root", "<</First {{one}}>>");
  pdf.Object("one", "<</Title(A heading of it)/Dest[{{page 1}}/XYZ 0 740 0]/First {{two}}>>");
  pdf.Object("two", "<</Title(Text)/A<</S/GoTo/D(there)>>>>");
  pdf.Object("names", "<</Names[(there)[{{page 2}}/FitH 400]]>>");
  pdf.CatalogEntry("/Outlines {{root}}/Names<</Dests {{names}}>>");
  pdf.InfoEntry("/Title(A title)/Author(Someone)/Subject(Something)/Keywords(one, two)");
  return pdf;
}

class ConvertedDocuments : public ::testing::Test {
 protected:
  ConvertedDocuments() : path_(Everything().Write(directory_.Path("a.pdf"))) {}

  std::string Converted(OfficeFormat format, std::int32_t type) {
    ConversionSdk::ConversionRequest request;
    request.format = format;
    request.output_type = type;
    request.source_files = {Utf8ToWide(path_)};
    request.output_file = Utf8ToWide(directory_.Path("out"));
    request.may_overwrite = true;
    ConversionSdk::ConversionState state;
    NoEvents events;
    ConversionLog log;
    EXPECT_EQ(Convert(request, state, events, log), ConversionSdk::kConversionDone);
    return PackageText(PartsOf(testing::ReadBytes(directory_.Path("out"))));
  }

  testing::TempDir directory_;
  std::string path_;
};

TEST_F(ConvertedDocuments, AreReadAsTheyAre) {
  const auto reader = DocumentReader::Open(platform::WidePath(path_), "");
  const DocumentFacts& facts = reader->facts();
  std::string text = facts.title + "|" + facts.author + "|" + facts.subject + "|" + facts.keywords +
                     "|" + facts.language + (facts.is_tagged ? " tagged\n" : "\n");
  for (const OutlineEntry& entry : facts.outline) {
    text += std::to_string(entry.level) + " " + entry.title + " " + std::to_string(entry.page) +
            " " + ShownNumber(entry.y) + "\n";
  }
  for (std::size_t i = 0; i < reader->page_count(); ++i) {
    const PageModel page = reader->Read(i);
    text += "page " + std::to_string(page.number) + " " + ShownNumber(page.width) + " x " +
            ShownNumber(page.height) + (page.tree_has_tables ? " with tables\n" : "\n");
    for (const PageLink& link : page.links) {
      text += "link " + ShownNumber(link.box.left) + " " + ShownNumber(link.box.bottom) + " " +
              ShownNumber(link.box.right) + " " + ShownNumber(link.box.top) + " " + link.uri + " " +
              std::to_string(link.target_page) + " " + ShownNumber(link.target_y) + "\n";
    }
    for (const StructureRole& role : page.roles) {
      text += "role";
      for (const std::string& type : role.path) {
        text += " " + type;
      }
      text += " " + std::to_string(role.element) + " " + std::to_string(role.table) + " " +
              std::to_string(role.row) + " " + std::to_string(role.cell) + " " +
              std::to_string(role.order) + " " + role.description + " " + role.language + "\n";
    }
  }
  EXPECT_TRUE(IsAsExpected("office/everything.txt", text));
}

TEST_F(ConvertedDocuments, HaveAllThatTheyHad) {
  EXPECT_TRUE(IsAsExpected("office/everything.docx.txt", Converted(OfficeFormat::kWord, 4)));
  EXPECT_TRUE(IsAsExpected("office/everything.pptx.txt", Converted(OfficeFormat::kPowerPoint, 0)));
  EXPECT_TRUE(IsAsExpected("office/everything.xlsx.txt", Converted(OfficeFormat::kExcel, 1)));
}

}  // namespace
}  // namespace TarnixTools::engines::office
