#include <string>

#include <gtest/gtest.h>

#include "engines/optimizer/structure/CanonicalForm.h"
#include "engines/optimizer/structure/DuplicateObjects.h"
#include "pdf/write/RewriteFixture.h"

namespace TarnixTools::engines::optimizer {
namespace {

using pdf::Arena;
using pdf::Object;
using ::TarnixTools::testing::DifferenceOf;
using ::TarnixTools::testing::RawPdf;
using ::TarnixTools::testing::RewriteCase;

const std::string kImage =
    "/Subtype/Image/Width 1/Height 1/BitsPerComponent 8/ColorSpace/DeviceGray";

// A page with these resources.
RawPdf WithResources(const std::string& resources, const std::string& page = "",
                     const std::string& catalog = "") {
  return RawPdf()
      .Object(1, "<</Type/Catalog/Pages 2 0 R" + catalog + ">>")
      .Object(2, "<</Type/Pages/Kids[3 0 R]/Count 1>>")
      .Object(3, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 9 9]/Resources<<" + resources + ">>" +
                     page + ">>");
}

class Merged {
 public:
  explicit Merged(RawPdf file, std::unordered_set<std::uint32_t> taken = {},
                  const std::string& password = "")
      : case_(std::move(file), "/Root 1 0 R", password) {
    const pdf::PageTree pages(case_.source());
    count_ = MergeDuplicateObjects(case_.source(), pages, taken, case_.rewriter());
  }

  std::size_t count() const { return count_; }

  std::uint32_t StandIn(std::uint32_t number) { return case_.rewriter().Successor(number); }

  RewriteCase& written() {
    case_.Write();
    return case_;
  }

 private:
  RewriteCase case_;
  std::size_t count_ = 0;
};

TEST(DuplicateObjects, BecomeOneFromTheirLeavesUp) {
  RawPdf file = WithResources("/Font<</A 10 0 R/B 20 0 R>>");
  for (const int first : {10, 20}) {
    const auto reference = [&](int offset) { return std::to_string(first + offset) + " 0 R"; };
    file.Object(first, "<</Type/Font/BaseFont/Own/FontDescriptor " + reference(1) + "/Widths " +
                           reference(3) + ">>")
        .Object(first + 1, "<</Type/FontDescriptor/Flags 4/FontFile2 " + reference(2) + ">>")
        .Stream(first + 2, "/Length1 7", "program")
        .Object(first + 3, "[1 2 3]");
  }
  Merged test(file);
  EXPECT_EQ(test.count(), 4U);
  EXPECT_EQ(test.StandIn(20), 10U);
  EXPECT_EQ(test.StandIn(22), 12U);
  EXPECT_EQ(test.written().CountObjects(), 7);
}

TEST(DuplicateObjects, AreThoseWithTheSameData) {
  RawPdf file = WithResources("/XObject<</A 10 0 R/B 11 0 R/C 12 0 R/D 13 0 R/E 14 0 R>>");
  file.Stream(10, kImage, "abc")
      .Stream(11, kImage, "abd")
      .Stream(12, kImage, "abd")
      .Stream(13, kImage, "abc")
      .Stream(14, kImage, "abcd");
  Merged test(file);
  EXPECT_EQ(test.StandIn(11), 11U);
  EXPECT_EQ(test.StandIn(12), 11U);
  EXPECT_EQ(test.StandIn(13), 10U);
  EXPECT_EQ(test.StandIn(14), 14U);
}

TEST(DuplicateObjects, MayBeWrittenInAnotherWay) {
  RawPdf file = WithResources("/ExtGState<</A 10 0 R/B 11 0 R/C 12 0 R>>");
  file.Object(10, "<</CA 0.50/LW 1/Font null/TR/Identity/X(ab)>>")
      .Object(11, "<</X<6162>/LW 1/TR/Ident#69ty/CA +.5>>")
      .Object(12, "<</X<6162>/LW 1.0/TR/Identity/CA .5>>");
  Merged test(file);
  EXPECT_EQ(test.StandIn(11), 10U);
  EXPECT_EQ(test.StandIn(12), 12U);
}

TEST(DuplicateObjects, AreContentAndAppearancesToo) {
  RawPdf file = WithResources("",
                              "/Contents[10 0 R 11 0 R]/Annots[<</Subtype/Stamp/Rect[0 0 9 9]"
                              "/AP<</N 12 0 R/D 13 0 R>>>>]");
  file.Stream(10, "", "0 0 9 9 re f")
      .Stream(11, "", "0 0 9 9 re f")
      .Stream(12, "/Subtype/Form/BBox[0 0 9 9]", "f")
      .Stream(13, "/Subtype/Form/BBox[0 0 9 9]", "f");
  Merged test(file);
  EXPECT_EQ(test.StandIn(11), 10U);
  EXPECT_EQ(test.StandIn(13), 12U);
}

TEST(DuplicateObjects, AreFoundWhereverResourcesLead) {
  const auto is_merged = [](const std::string& entries_of) {
    const auto entries = [&](int number) {
      std::string text = entries_of;
      return text.replace(text.find('@'), 1, std::to_string(number) + " 0 R");
    };
    RawPdf file = WithResources("/XObject<</A 10 0 R/B 11 0 R>>");
    file.Stream(10, kImage + entries(20), "a").Stream(11, kImage + entries(21), "b");
    file.Object(20, "<</Q 1>>").Object(21, "<</Q 1>>");
    return Merged(file).StandIn(21) == 20;
  };
  for (const char* key : {"Resources",    "ProcSet",
                          "CIDSet",       "CIDSystemInfo",
                          "CIDToGIDMap",  "DescendantFonts",
                          "Differences",  "Encoding",
                          "FontBBox",     "FontDescriptor",
                          "FontFile",     "FontFile2",
                          "FontFile3",    "FontMatrix",
                          "Style",        "ToUnicode",
                          "UseCMap",      "W",
                          "W2",           "Widths",
                          "BBox",         "Decode",
                          "DecodeParms",  "Group",
                          "JBIG2Globals", "Mask",
                          "Matrix",       "SMask",
                          "Alternate",    "BG",
                          "BG2",          "Background",
                          "Bounds",       "C0",
                          "C1",           "CS",
                          "Coords",       "Domain",
                          "Encode",       "Function",
                          "Functions",    "G",
                          "HT",           "Process",
                          "Range",        "TR",
                          "TR2",          "UCR",
                          "UCR2"}) {
    EXPECT_TRUE(is_merged("/" + std::string(key) + " @")) << key;
    EXPECT_TRUE(is_merged("/" + std::string(key) + "[1 @]")) << key;
    EXPECT_FALSE(is_merged("/" + std::string(key) + "<</Name @>>")) << key;
  }
  for (const char* key : {"ColorSpace", "ExtGState", "Font", "Pattern", "Shading", "XObject",
                          "CharProcs", "FD", "Colorants"}) {
    EXPECT_TRUE(is_merged("/" + std::string(key) + "<</Name @>>")) << key;
  }
  for (const char* key : {"OC", "Properties", "Metadata", "PieceInfo", "Measure", "Own"}) {
    EXPECT_FALSE(is_merged("/" + std::string(key) + " @")) << key;
  }
}

TEST(DuplicateObjects, MaySayWhatTheyAre) {
  const auto is_merged = [](const std::string& type) {
    RawPdf file = WithResources("/ExtGState<</A 10 0 R/B 11 0 R>>");
    file.Object(10, "<</Type" + type + ">>").Object(11, "<</Type" + type + ">>");
    return Merged(file).StandIn(11) == 10;
  };
  for (const char* type : {"/Font", "/FontDescriptor", "/XObject", "/ExtGState", "/Pattern",
                           "/Encoding", "/CMap", "/Halftone", "/Mask", "/Group"}) {
    EXPECT_TRUE(is_merged(type)) << type;
  }
  for (const char* type : {"/OCG", "/Page", "/Annot", "/Metadata", "/Filespec"}) {
    EXPECT_FALSE(is_merged(type)) << type;
  }
}

TEST(DuplicateObjects, StayWhereTheStructureKnowsThem) {
  RawPdf file = WithResources("/XObject<</A 10 0 R/B 11 0 R>>");
  file.Stream(10, kImage + "/StructParent 1", "a").Stream(11, kImage + "/StructParent 1", "a");
  EXPECT_EQ(Merged(file).count(), 0U);
}

TEST(DuplicateObjects, StayWhenTheyCountAsThemselves) {
  // Layers, annotations and fields; nothing merges pages, whoever calls them a form.
  RawPdf file = WithResources(
      "/Properties<</A 10 0 R/B 11 0 R>>/XObject<</C 12 0 R/D 13 0 R/P 3 0 R/Q 4 0 R>>",
      "/Annots[14 0 R 15 0 R]");
  file.Object(4, "<</Type/Page/Parent 2 0 R>>")
      .Object(10, "<</Type/OCG/Name(layer)>>")
      .Object(11, "<</Type/OCG/Name(layer)>>")
      .Stream(12, kImage + "/OC 10 0 R", "a")
      .Stream(13, kImage + "/OC 11 0 R", "a")
      .Object(14, "<</Subtype/Link/Rect[0 0 9 9]>>")
      .Object(15, "<</Subtype/Link/Rect[0 0 9 9]>>");
  EXPECT_EQ(Merged(file).count(), 0U);
}

TEST(DuplicateObjects, StayWhenAnotherPassHasThem) {
  RawPdf file = WithResources("/XObject<</A 10 0 R/B 11 0 R/C 12 0 R>>");
  file.Stream(10, kImage, "a").Stream(11, kImage, "a").Stream(12, kImage, "a");
  Merged test(file, {10});
  EXPECT_EQ(test.StandIn(11), 11U);
  EXPECT_EQ(test.StandIn(12), 11U);
}

TEST(DuplicateObjects, GoByWhatTheRewriterWasTold) {
  RewriteCase test(WithResources("/ExtGState<</A 10 0 R/B 11 0 R/C 12 0 R/D 13 0 R>>")
                       .Object(10, "<</CA 1/Metadata 1 0 R>>")
                       .Object(11, "<</CA 1>>")
                       .Object(12, "<</CA 1>>")
                       .Object(13, "<</CA 1>>"));
  test.rewriter().RemoveEntry(10, "Metadata");
  test.rewriter().Change(11, pdf::ObjectChange::Value("<</CA 0>>"));
  test.rewriter().SetEntry(13, "CA", "0");
  const pdf::PageTree pages(test.source());
  EXPECT_EQ(MergeDuplicateObjects(test.source(), pages, {}, test.rewriter()), 1U);
  EXPECT_EQ(test.rewriter().Successor(12), 10U);
}

TEST(DuplicateObjects, MayLeadBackToThemselves) {
  RawPdf file = WithResources("/XObject<</A 10 0 R/B 11 0 R>>");
  file.Stream(10, "/Subtype/Form/BBox[0 0 9 9]/Resources<</XObject<</Self 10 0 R>>>>", "")
      .Stream(11, "/Subtype/Form/BBox[0 0 9 9]/Resources<</XObject<</Self 11 0 R>>>>", "");
  Merged test(file);
  EXPECT_EQ(test.count(), 0U);
  EXPECT_EQ(test.written().CountObjects(), 5);
}

TEST(DuplicateObjects, MayBeAVeryLongChain) {
  constexpr int kLength = 20'000;
  RawPdf file = WithResources("/ColorSpace<</A 10 0 R/B 11 0 R>>");
  for (int i = 0; i < 2 * kLength; ++i) {
    file.Object(10 + i, i < 2 * kLength - 2 ? "[/Pattern " + std::to_string(12 + i) + " 0 R]"
                                            : "[/CalGray<<>>]");
  }
  EXPECT_EQ(Merged(file).count(), static_cast<std::size_t>(kLength));
}

TEST(DuplicateObjects, OfTheWholeDocumentMeanTheSame) {
  RawPdf file = WithResources("/Font<</A 10 0 R/B 11 0 R>>", "",
                              "/AcroForm<</Fields[]/DR<</Font<</F 12 0 R>>>>>>");
  for (const int number : {10, 11, 12}) {
    file.Object(number, "<</Type/Font/Subtype/Type1/BaseFont/Courier>>");
  }
  Merged test(file);
  EXPECT_EQ(test.count(), 2U);
  EXPECT_EQ(test.written().CountObjects(), 4);
}

TEST(CanonicalForm, TellsApartWhatDiffers) {
  const auto of = [](const Object& value) {
    return CanonicalForm(value, [](std::uint32_t number) { return number; });
  };
  EXPECT_EQ(of(Object::Real("00.50")), of(Object::Real(".5")));
  EXPECT_EQ(of(Object::Real("-1.")), of(Object::Real("-01.00")));
  EXPECT_NE(of(Object::Real("100.0")), of(Object::Real("1.0")));
  EXPECT_NE(of(Object::Real("1.")), of(Object::Integer(1)));
  EXPECT_NE(of(Object::Real("1.5")), of(Object::Real("-1.5")));
  EXPECT_NE(of(Object::Name("a")), of(Object::String("a")));
}

}  // namespace
}  // namespace TarnixTools::engines::optimizer
