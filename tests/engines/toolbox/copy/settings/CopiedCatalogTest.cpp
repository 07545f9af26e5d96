// What the catalog leads to comes along wherever the catalog is.
#include <algorithm>

#include <gtest/gtest.h>

#include "engines/toolbox/copy/CopiedDocument.h"
#include "pdf/tree/KeyedTree.h"
#include "support/TestPdf.h"

namespace TarnixTools::engines::toolbox {
namespace {

using pdf::Object;
using ::TarnixTools::testing::TestPdf;

TestPdf Book() {
  return TestPdf()
      .Page("first")
      .Page("second")
      .Annotation("/Subtype/Link/Rect[0 0 9 9]/Dest(there)")
      .Annotation("/Subtype/Widget/FT/Tx/T(field)/V(value)/Rect[0 0 9 9]")
      .Object("item", "<</Title(Item)/Dest[{{page 2}}/Fit]>>")
      .Object("layer", "<</Type/OCG/Name(Layer)>>")
      .Object("tag", "<</S/P/P {{tags}}/Pg {{page 1}}/K 0>>")
      .Object("tags", "<</Type/StructTreeRoot/K {{tag}}/ParentTree<</Nums[0[{{tag}}]]>>>>")
      .CatalogEntry("/Outlines<</First {{item}}/Last {{item}}/Count 1>>")
      .CatalogEntry("/Names<</Dests<</Names[(there)[{{page 1}}/Fit]]>>>>")
      .CatalogEntry("/PageLabels<</Nums[0<</S/r>>]>>/Lang(de)/PageMode/UseOutlines")
      .CatalogEntry("/OCProperties<</OCGs[{{layer}}]/D<</OFF[{{layer}}]>>>>")
      .CatalogEntry("/AcroForm<</DA(/F1 9 Tf)/DR<<>>>>/MarkInfo<</Marked true>>")
      .CatalogEntry("/StructTreeRoot {{tags}}/OutputIntents[<</S/GTS_PDFX>>]");
}

class Copied : public CopiedDocument {
 public:
  explicit Copied(TestPdf pdf, const std::vector<int>& pages = {})
      : CopiedDocument({{pdf.Bytes(), pages}}) {}

  // What the catalog has, as text without the numbers of objects.
  std::string Story() {
    std::string story;
    for (const pdf::DictionaryEntry& entry : Catalog().Entries()) {
      story += "/" + std::string(entry.Key()) + " ";
    }
    story += Get(Get(Catalog(), "Outlines"), "First").Get("Title").Text();
    pdf::ForEachInTree(document(), Catalog().Get("PageLabels"), "Nums",
                       [&](const Object&, const Object& value) { story += Text(value); });
    story += Catalog().Get("Lang").Text();
    story += Catalog().Get("PageMode").Text();
    story += Text(Get(Catalog(), "MarkInfo"));
    story += std::to_string(Get(Get(Catalog(), "OCProperties"), "OCGs").Items().size());
    story += std::to_string(Get(Get(Catalog(), "AcroForm"), "Fields").Items().size());
    return story;
  }
};

TEST(CopiedCatalog, GivesAsMuchFromTheTrailer) {
  Copied as_object(Book());
  Copied in_trailer(Book().CatalogInTrailer());
  const std::string story = as_object.Story();
  for (const char* part : {"Item", "<</S/r>>", "de", "UseOutlines", "<</Marked true>>", "/Outlines",
                           "/StructTreeRoot", "/OutputIntents", "/AcroForm", "/OCProperties"}) {
    EXPECT_NE(story.find(part), std::string::npos) << part << " in " << story;
  }
  EXPECT_EQ(in_trailer.Story(), story);
  for (Copied* copy : {&as_object, &in_trailer}) {
    const Object destination = copy->Follow(copy->Annotations(1).at(0).Get("Dest"));
    ASSERT_FALSE(destination.IsNull());
    EXPECT_EQ(copy->PageCount(), 2U);
  }
}

TEST(CopiedCatalog, GivesAsMuchToPiecesFromTheTrailer) {
  for (int page = 0; page < 2; ++page) {
    Copied as_object(Book(), {page});
    Copied in_trailer(Book().CatalogInTrailer(), {page});
    EXPECT_EQ(in_trailer.Story(), as_object.Story());
  }
}

TEST(CopiedCatalog, IsReportedWhereItStandsInTheTrailer) {
  std::vector<ReportedEntry> report;
  CopyAll({{Book().CatalogInTrailer().Bytes()}}, 15, &report);
  const bool is_told = std::any_of(report.begin(), report.end(), [](const ReportedEntry& entry) {
    return entry.kind == TPdfCopiedKind::kDamage &&
           entry.reason == "document catalog no object of its own";
  });
  EXPECT_TRUE(is_told);
}

}  // namespace
}  // namespace TarnixTools::engines::toolbox
