// What copies say of things that they change or leave out: in which words.
#include <map>
#include <set>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engines/toolbox/copy/CopiedDocument.h"
#include "support/RawPdf.h"

namespace TarnixTools::engines::toolbox {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::IsSupersetOf;
using ::testing::UnorderedElementsAre;
using Kind = TPdfCopiedKind;

constexpr auto kDropped = TPdfCopyOutcome::kDropped;
constexpr auto kRenamed = TPdfCopyOutcome::kRenamed;

// Two pages with a bit of everything.
//   alignment - of a class of attributes; other types have another meaning, too
std::string Everything(const std::string& alignment = "Start") {
  testing::RawPdf file;
  file.Object(1,
              "<</Type/Catalog/Pages 2 0 R/AA<</WC<</S/JavaScript/JS(x)>>>>/Threads[40 0 R]"
              "/OpenAction[3 0 R/Fit]/StructTreeRoot 20 0 R/MarkInfo<</Marked true>>"
              "/Outlines 50 0 R/AcroForm<</Fields[10 0 R 11 0 R]/XFA(x)>>"
              "/Names<</EmbeddedFiles<</Names[(a)60 0 R(b)62 0 R]>>"
              "/Dests<</Names[(one)[3 0 R/Fit](two)[4 0 R/Fit]]>>>>>>")
      .Object(2, "<</Type/Pages/Kids[3 0 R 4 0 R]/Count 2>>")
      .Object(3,
              "<</Type/Page/Parent 2 0 R/MediaBox[0 0 9 9]/StructParents 0/Thumb 41 0 R/B[42 0 R]"
              "/AA<</O<</S/JavaScript/JS(x)>>>>/Annots[10 0 R 12 0 R 13 0 R]/Contents 5 0 R"
              "/Resources 16 0 R>>")
      .Object(4,
              "<</Type/Page/Parent 2 0 R/MediaBox[0 0 9 9]/StructParents 1/Annots[11 0 R]"
              "/Resources 16 0 R/Contents 6 0 R>>")
      .Stream(6, "", "BT /G 9 Tf (x) Tj ET")
      .Object(16, "<</Font<</F 15 0 R/G 17 0 R>>>>")
      .Stream(5, "", "BT /F 9 Tf (x) Tj ET")
      .Object(10, "<</Type/Annot/Subtype/Widget/Rect[0 0 9 9]/FT/Tx/T(a)/V(x)>>")
      .Object(11, "<</Type/Annot/Subtype/Widget/Rect[0 0 9 9]/FT/Sig/T(b)/V 14 0 R>>")
      .Object(12, "<</Type/Annot/Subtype/Link/Rect[0 0 9 9]/Dest[4 0 R/Fit]>>")
      .Object(13, "<</Type/Annot/Subtype/Link/Rect[0 0 9 9]/Dest(nowhere)>>")
      .Object(14, "<</Type/Sig/Filter/Own/Contents<00>/ByteRange[0 1 2 3]>>")
      .Object(15, "<</Type/Font/Subtype/Type1/BaseFont/Helvetica>>")
      .Object(17, "<</Type/Font/Subtype/Type1/BaseFont/Courier>>")
      .Object(20,
              "<</Type/StructTreeRoot/K[21 0 R 22 0 R]/ParentTree<</Nums[0[21 0 R]1[22 0 R]]>>"
              "/RoleMap<</Own/" +
                  std::string(alignment == "Start" ? "P" : "H1") +
                  ">>/ClassMap<</C<</O/Layout/TextAlign/" + alignment + ">>>>>>")
      .Object(21, "<</Type/StructElem/S/Own/P 20 0 R/Pg 3 0 R/K 0/ID(i)/C/C>>")
      .Object(22, "<</Type/StructElem/S/P/P 20 0 R/Pg 4 0 R/K 0>>")
      .Object(40, "<</F 42 0 R>>")
      .Stream(41, "/Width 1/Height 1/ColorSpace/DeviceGray/BitsPerComponent 8", "x")
      .Object(42, "<</T 40 0 R/P 3 0 R/R[0 0 9 9]/N 42 0 R/V 42 0 R>>")
      .Object(50, "<</First 51 0 R/Last 51 0 R/Count 1>>")
      .Object(51, "<</Title(t)/Parent 50 0 R/Dest[4 0 R/Fit]>>")
      .Object(60, "<</Type/Filespec/F(a.txt)/UF(a.txt)/EF<</F 61 0 R>>>>")
      .Stream(61, "/Type/EmbeddedFile", "data")
      .Object(62, "<</Type/Filespec/F(b.txt)>>");
  return file.Table();
}

TEST(CopyReasons, OfWhatStaysBehindWithAPage) {
  CopiedDocument copy({{Everything(), {0}}});
  const auto reasons = [&](Kind kind) { return copy.Reasons(kind, kDropped); };
  EXPECT_THAT(reasons(Kind::kThumbnail), ElementsAre("not carried over"));
  EXPECT_THAT(reasons(Kind::kArticleThread),
              UnorderedElementsAre("not carried over", "leads through the whole document"));
  EXPECT_THAT(reasons(Kind::kScript),
              UnorderedElementsAre("runs when a page is opened", "runs when the document is used"));
  EXPECT_THAT(reasons(Kind::kXfaForm), ElementsAre("not carried over"));
  EXPECT_THAT(reasons(Kind::kFormField), ElementsAre("on none of the copied pages"));
  EXPECT_THAT(reasons(Kind::kLink),
              UnorderedElementsAre("leads to a page that is not copied", "leads nowhere"));
  EXPECT_THAT(reasons(Kind::kOutlineItem), ElementsAre("leads to a page that is not copied"));
  EXPECT_THAT(reasons(Kind::kNamedDestination), ElementsAre("leads to a page that is not copied"));
  EXPECT_THAT(reasons(Kind::kAttachment), ElementsAre("belongs to the whole document"));
  EXPECT_THAT(reasons(Kind::kViewerSettings), ElementsAre("where the document opens"));
  EXPECT_THAT(reasons(Kind::kStructureElement),
              ElementsAre("belongs to pages that are not copied"));
  EXPECT_THAT(reasons(Kind::kResource), ElementsAre("not used by the pages copied"));
  EXPECT_THAT(reasons(Kind::kSignature), IsEmpty());
}

TEST(CopyReasons, OfWhatAWholeDocumentLoses) {
  CopiedDocument copy({{Everything()}});
  EXPECT_THAT(copy.Reasons(Kind::kSignature, kDropped),
              ElementsAre("does not hold in another file"));
  EXPECT_THAT(copy.Reasons(Kind::kAttachment, kDropped), ElementsAre("holds no file"));
  EXPECT_THAT(copy.Reasons(Kind::kFormField, kDropped), IsEmpty());
  EXPECT_THAT(copy.Reasons(Kind::kStructureElement, kDropped), IsEmpty());
}

TEST(CopyReasons, OfNewNames) {
  CopiedDocument copy({{Everything()}, {Everything("End")}});
  const auto reasons = [&](Kind kind) { return copy.Reasons(kind, kRenamed); };
  EXPECT_THAT(reasons(Kind::kFormField), ElementsAre("another document has that name"));
  EXPECT_THAT(reasons(Kind::kAttachment), ElementsAre("another attachment has the name"));
  EXPECT_THAT(reasons(Kind::kNamedDestination), ElementsAre("the name is taken"));
  EXPECT_THAT(reasons(Kind::kStructureElement),
              UnorderedElementsAre("element type has another meaning",
                                   "attribute class has another meaning",
                                   "id is used in another document"));
}

TEST(CopyReasons, OfAPageThatIsCopiedAgain) {
  CopiedDocument copy({{Everything(), {0, 0}}});
  EXPECT_THAT(copy.Reasons(Kind::kStructureElement, kDropped),
              IsSupersetOf({"holds content of a page that is copied again"}));
}

}  // namespace
}  // namespace TarnixTools::engines::toolbox
