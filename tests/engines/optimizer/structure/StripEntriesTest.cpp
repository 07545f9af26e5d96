#include <string>

#include <gtest/gtest.h>

#include "engines/optimizer/OptimizerSettings.h"
#include "engines/optimizer/structure/StripEntries.h"
#include "pdf/write/RewriteFixture.h"

namespace TarnixTools::engines::optimizer {
namespace {

using pdf::Arena;
using pdf::Object;
using ::TarnixTools::testing::Expanded;
using ::TarnixTools::testing::RawPdf;
using ::TarnixTools::testing::RewriteCase;

// A page (3) with a form (4) and an image (5) that has something of everything that can be taken
// out; both pages and the catalog take more entries.
RawPdf Full(const std::string& catalog, const std::string& page = "") {
  return RawPdf()
      .Object(1, "<</Type/Catalog/Pages 2 0 R/Lang(en)" + catalog + ">>")
      .Object(2, "<</Type/Pages/Kids[3 0 R]/Count 1>>")
      .Object(3,
              "<</Type/Page/Parent 2 0 R/MediaBox[0 0 9 9]/Resources<</XObject<</Metadata 4 0 R"
              "/Im 5 0 R>>>>" +
                  page + ">>")
      .Stream(4, "/Type/XObject/Subtype/Form/BBox[0 0 9 9]/PieceInfo<</App<<>>>>/LastModified(D:1)",
              "")
      .Stream(5,
              "/Subtype/Image/Width 1/Height 1/BitsPerComponent 8/ColorSpace/DeviceGray"
              "/Metadata 6 0 R/StructParent 7/ID(capture)/Alternates[<</Image 8 0 R>>]",
              "x")
      .Stream(6, "/Type/Metadata/Subtype/XML", "<x/>")
      .Stream(8, "/Subtype/Image/Width 1/Height 1/BitsPerComponent 8/ColorSpace/DeviceGray", "y");
}

class Stripped {
 public:
  Stripped(RawPdf file, std::uint32_t strip) : case_(std::move(file)) {
    const pdf::PageTree pages(case_.source());
    counts_ = StripEntries(case_.source(), pages, strip, case_.rewriter());
    case_.Write();
  }

  // The written catalog's entry, expanded.
  std::string Catalog(const std::string& key) {
    pdf::Document& written = case_.Write();
    Arena arena;
    return Expanded(written, written.Catalog(arena).Get(key), 3);
  }

  // An entry of the written page, of its form or of its image.
  std::string Page(const std::string& key) { return Entry("", key); }

  std::string Form(const std::string& key) { return Entry("Metadata", key); }

  std::string Image(const std::string& key) { return Entry("Im", key); }

  const StrippedCounts& counts() const { return counts_; }

  int CountObjects() { return case_.CountObjects(); }

 private:
  std::string Entry(const std::string& name, const std::string& key) {
    pdf::Document& written = case_.Write();
    const pdf::PageTree pages(written);
    Arena arena;
    const Object page = pages.Load(pages.pages()[0], arena);
    const Object resources = written.Resolve(page.Get("Resources"), arena);
    const Object owner =
        name.empty()
            ? page
            : written.Resolve(written.Resolve(resources.Get("XObject"), arena).Get(name), arena);
    EXPECT_TRUE(owner.IsDictionary());
    return Expanded(written, owner.Get(key), 3);
  }

  RewriteCase case_;
  StrippedCounts counts_;
};

TEST(StripEntries, TakesNothingOutUnasked) {
  RewriteCase test(Full("/Threads[]/MarkInfo<</Marked true>>", "/Thumb 8 0 R"));
  const pdf::PageTree pages(test.source());
  StripEntries(test.source(), pages, 0xB80, test.rewriter());
  EXPECT_EQ(testing::DifferenceOf(test.source(), test.Write()), "");
}

TEST(StripEntries, TakesThreadsAndBeadsAwayFromActionsToo) {
  RawPdf file = Full("/Threads 20 0 R/OpenAction<</S/Thread/D 21 0 R/B 22 0 R>>", "/B[23 0 R]");
  file.Object(20, "[21 0 R]")
      .Object(21, "<</Type/Thread/F 22 0 R/I<</Title(article)>>>>")
      .Object(22, "<</Type/Bead/T 21 0 R/N 23 0 R/V 23 0 R/P 3 0 R/R[0 0 1 1]>>")
      .Object(23, "<</Type/Bead/T 21 0 R/N 22 0 R/V 22 0 R/P 3 0 R/R[0 0 1 1]>>");
  Stripped kept(file, kStripMetadata);
  EXPECT_EQ(kept.CountObjects(), 10);
  Stripped test(file, kStripThreads);
  EXPECT_EQ(test.Catalog("Threads"), "null");
  EXPECT_EQ(test.Catalog("OpenAction"), "<</S/Thread>>");
  EXPECT_EQ(test.Page("B"), "null");
  EXPECT_EQ(test.counts().beads, 2U);
  EXPECT_EQ(kept.counts().beads, 0U);
  EXPECT_EQ(test.CountObjects(), 7);
}

TEST(StripEntries, KeepsPagesThatCallThemselvesBeads) {
  Stripped test(Full("/Threads[<</F 3 0 R>>]", "/R[0 0 1 1]/N 3 0 R/V 3 0 R/B[3 0 R]"),
                kStripThreads);
  EXPECT_EQ(test.Page("Type"), "/Page");
}

TEST(StripEntries, TakesMetadataOfComponentsAndNotOfTheDocument) {
  RawPdf file = Full("/Metadata 30 0 R", "/Metadata 6 0 R");
  file.Stream(30, "/Type/Metadata/Subtype/XML", "<document/>");
  Stripped test(file, kStripMetadata);
  EXPECT_EQ(test.Image("Metadata"), "null");
  EXPECT_EQ(test.Page("Metadata"), "null");
  EXPECT_NE(test.Catalog("Metadata").find("<document/>"), std::string::npos);
  EXPECT_EQ(test.Form("Subtype"), "/Form");  // that goes by the name Metadata
}

TEST(StripEntries, TakesPrivateDataWithItsDate) {
  RawPdf file = Full("/PieceInfo<</App<<>>>>", "/LastModified(D:2)");
  Stripped test(file, kStripPrivateData);
  EXPECT_EQ(test.Catalog("PieceInfo"), "null");
  EXPECT_EQ(test.Form("PieceInfo"), "null");
  EXPECT_EQ(test.Form("LastModified"), "null");
  EXPECT_EQ(test.Page("LastModified"), "(D:2)");
}

TEST(StripEntries, TakesTheStructureThoughOutlinesLeadIntoIt) {
  RawPdf file =
      Full("/StructTreeRoot 20 0 R/MarkInfo<</Marked true>>/Outlines<</First 30 0 R/Last 30 0 R>>",
           "/StructParents 0");
  file.Object(20, "<</Type/StructTreeRoot/K[21 0 R]/ParentTree<</Nums[0[22 0 R]]>>>>")
      .Object(21, "<</Type/StructElem/S/Document/P 20 0 R/K 23 0 R>>")
      .Object(22, "<</S/P/P 21 0 R/Pg 3 0 R/K[0<</Type/OBJR/Obj 5 0 R>>]>>")
      .Object(23, "[22 0 R 3 0 R]")
      .Object(30, "<</Title(item)/SE 22 0 R/Dest[3 0 R/Fit]>>");
  Stripped test(file, kStripStructure);
  EXPECT_EQ(test.Catalog("StructTreeRoot"), "null");
  EXPECT_EQ(test.counts().structure_elements, 2U);
  EXPECT_EQ(test.Catalog("MarkInfo"), "null");
  EXPECT_EQ(test.Catalog("Lang"), "(en)");
  EXPECT_EQ(test.Page("StructParents"), "null");
  EXPECT_EQ(test.Image("StructParent"), "null");
  EXPECT_EQ(test.Catalog("Outlines").find("/SE"), std::string::npos);
  EXPECT_NE(test.Catalog("Outlines").find("/Dest"), std::string::npos);
  EXPECT_EQ(test.CountObjects(), 8);
}

TEST(StripEntries, TakesThumbnails) {
  Stripped test(Full("", "/Thumb 8 0 R"), kStripThumbnails);
  EXPECT_EQ(test.Page("Thumb"), "null");
  EXPECT_EQ(test.counts().thumbnails, 1U);
}

TEST(StripEntries, TakesWhatWebCaptureLeft) {
  const std::string names = "<</Dests<<>>/IDS<</Names[(a)40 0 R]>>/URLS<<>>>>";
  for (const bool is_object : {false, true}) {
    RawPdf file =
        Full(std::string("/SpiderInfo<</V 1.0>>/Names ") + (is_object ? "41 0 R" : names.c_str()),
             "/ID(digest)");
    file.Object(40, "<</S/SPS/O[3 0 R]>>").Object(41, names);
    Stripped test(file, kStripWebCapture);
    EXPECT_EQ(test.Catalog("SpiderInfo"), "null");
    EXPECT_EQ(test.Catalog("Names"), "<</Dests<<>>>>");
    EXPECT_EQ(test.Page("ID"), "null");
    EXPECT_EQ(test.Image("ID"), "null");
  }
}

TEST(StripEntries, TakesAlternates) {
  Stripped test(Full(""), kStripAlternates);
  EXPECT_EQ(test.Image("Alternates"), "null");
  EXPECT_EQ(test.Image("Metadata").substr(0, 7), "<</Type");
}

TEST(StripEntries, TakesPrintSettingsAndKeepsOutputIntents) {
  Stripped test(Full("/ViewerPreferences<</Duplex/Simplex/HideMenubar true/PrintScaling/None>>"
                     "/OutputIntents[<</S/GTS_PDFX>>]",
                     "/BoxColorInfo<</CropBox<<>>>>/SeparationInfo<</DeviceColorant/Cyan>>"),
                kStripAuthoringOutput);
  EXPECT_EQ(test.Catalog("ViewerPreferences"), "<</HideMenubar true>>");
  EXPECT_EQ(test.Catalog("OutputIntents"), "[<</S/GTS_PDFX>>]");
  EXPECT_EQ(test.Page("BoxColorInfo"), "null");
  EXPECT_NE(test.Page("SeparationInfo"), "null");
}

TEST(StripEntries, TakesEveryPrintSetting) {
  Stripped test(Full("/ViewerPreferences<</PrintArea/CropBox/PrintClip/CropBox/PrintScaling/None"
                     "/Duplex/Simplex/PickTrayByPDFSize true/PrintPageRange[1 1]/NumCopies 2"
                     "/Enforce[/PrintScaling]/FitWindow true>>"),
                kStripAuthoringOutput);
  EXPECT_EQ(test.Catalog("ViewerPreferences"), "<</FitWindow true>>");
}

TEST(StripEntries, LeavesNoPreferencesWhereNoneAreLeft) {
  Stripped test(Full("/ViewerPreferences<</Duplex/Simplex>>"), kStripAuthoringOutput);
  EXPECT_EQ(test.Catalog("ViewerPreferences"), "null");
}

}  // namespace
}  // namespace TarnixTools::engines::optimizer
