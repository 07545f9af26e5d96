#include <gtest/gtest.h>

#include "engines/toolbox/copy/CopiedDocument.h"
#include "pdf/tree/KeyedTree.h"
#include "support/RawPdf.h"
#include "support/TestPdf.h"

namespace TarnixTools::engines::toolbox {
namespace {

using pdf::Object;
using ::TarnixTools::testing::RawPdf;
using ::TarnixTools::testing::TestPdf;

// The number tree as text: "0<</S/r>>4<</S/D>>"; "" without one.
std::string LabelsOf(const std::vector<PagesOf>& parts) {
  CopiedDocument copy(parts);
  std::string text;
  pdf::ForEachInTree(
      copy.document(), copy.Catalog().Get("PageLabels"), "Nums",
      [&](const Object& key, const Object& value) { text += copy.Text(key) + copy.Text(value); });
  return text;
}

// i, ii, A-5, A-6, (cover), 1, 2, 3
std::string Labelled() {
  return TestPdf()
      .Pages(8)
      .CatalogEntry("/PageLabels<</Kids[{{late}} {{early}}]>>")
      .Object("early", "<</Limits[0 2]/Nums[0<</S/r>>2<</S/D/St 5/P(A-)>>]>>")
      .Object("late", "<</Nums[4<</P(cover)>>5 {{plain}}]>>")
      .Object("plain", "<</S/D>>")
      .Bytes();
}

TEST(PageLabels, ComeAsAWhole) {
  EXPECT_EQ(LabelsOf({{Labelled(), {0, 1, 2, 3, 4, 5, 6, 7}}}),
            "0<</S/r>>2<</S/D/P(A-)/St 5>>4<</P(cover)>>5<</S/D>>");
}

TEST(PageLabels, GoWithTheirPages) {
  EXPECT_EQ(LabelsOf({{Labelled(), {3}}}), "0<</S/D/P(A-)/St 6>>");
  EXPECT_EQ(LabelsOf({{Labelled(), {6, 7, 1, 2, 3, 3, 0}}}),
            "0<</S/D/St 2>>2<</S/r/St 2>>3<</S/D/P(A-)/St 5>>5<</S/D/P(A-)/St 6>>6<</S/r>>");
}

TEST(PageLabels, StandBesidePlainNumbersOfOtherDocuments) {
  const std::string plain = TestPdf().Pages(3).Bytes();
  EXPECT_EQ(LabelsOf({{plain, {0, 1, 2}}}), "");
  EXPECT_EQ(LabelsOf({{plain, {1, 2}}, {Labelled(), {0, 1}}, {plain, {0}}}),
            "0<</S/D/St 2>>2<</S/r>>4<</S/D>>");
}

TEST(PageLabels, JoinAcrossDocuments) {
  EXPECT_EQ(LabelsOf({{Labelled(), {0}}, {Labelled(), {1, 2}}, {Labelled(), {3}}}),
            "0<</S/r>>2<</S/D/P(A-)/St 5>>")
      << "numbers that go on are one range";
}

TEST(PageLabels, SurvivesNonsense) {
  RawPdf file;
  file.Pages(4)
      .Object(1, "<</Type/Catalog/Pages 2 0 R/PageLabels 10 0 R>>")
      .Object(10,
              "<</Nums[-1<</S/r>>(a)<</S/r>>1<</S/Q/St -5/P 7>>2<</S/D/St 99999999999>>2<</S/a>>"
              "3 7 99<</S/R>>3]/Kids[10 0 R null 7]>>");
  EXPECT_EQ(LabelsOf({{file.Table(), {0, 1, 2, 3}}}), "0<</S/D>>1<<>>2<</S/D/St 2147483647>>");
}

}  // namespace
}  // namespace TarnixTools::engines::toolbox
