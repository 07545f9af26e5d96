#include "engines/repair/CheckTest.h"

namespace TarnixTools::engines::repair {
namespace {

using ::testing::Contains;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using testing::RawPdf;
using ::testing::UnorderedElementsAre;

using Code = ProblemCode;

class TreeCheckTest : public CheckTest {};

TEST_F(TreeCheckTest, FindsEntriesOfTheCatalogThatAreNone) {
  ExpectMended(OnePage("", "/Outlines(none)/AcroForm[1]").Table(),
               {Code::kCatalogEntryInvalid, Code::kCatalogEntryInvalid});
  Repair(OnePage("", "/Outlines null/Names 99 0 R").Table());
  EXPECT_THAT(Damage(), IsEmpty());
}

TEST_F(TreeCheckTest, WritesDamagedTreesAnew) {
  RawPdf file = OnePage("", "/Names<</Dests 10 0 R>>/PageLabels 13 0 R");
  file.Object(10, "<</Kids[11 0 R 12 0 R 10 0 R]>>")
      .Object(11, "<</Limits[(a)(b)]/Names[(a)[3 0 R/Fit](b)[3 0 R/Fit]]>>")
      .Object(12, "(no node)")
      .Object(13, "<</Nums[0<</S/D>>]/Kids[(no node)]>>");
  ExpectMended(file.Table(), {Code::kNameTreeDamaged, Code::kNumberTreeDamaged});
  RawPdf tagged = OnePage("", "/StructTreeRoot 10 0 R");
  tagged.Object(10, "<</Type/StructTreeRoot/ParentTree 11 0 R>>")
      .Object(11, "<</Nums[]/Kids[(no node)]>>");
  ExpectMended(tagged.Table(), {Code::kNumberTreeDamaged});
}

TEST_F(TreeCheckTest, FindsNothingInSoundTrees) {
  RawPdf file = OnePage("", "/Names<</Dests 10 0 R>>/PageLabels<</Nums[0<</S/D>>]>>");
  file.Object(10, "<</Kids[11 0 R]>>").Object(11, "<</Limits[(a)(a)]/Names[(a)[3 0 R/Fit]]>>");
  Repair(file.Table());
  EXPECT_THAT(Damage(), IsEmpty());
}

TEST_F(TreeCheckTest, EndsListsOfTheOutlineWhereTheyBreak) {
  RawPdf file = OnePage("", "/Outlines 10 0 R");
  file.Object(10, "<</First 11 0 R/Last 13 0 R/Count 3>>")
      .Object(11, "<</Title(a)/Parent 10 0 R/Next 12 0 R/First 14 0 R/Last 14 0 R>>")
      .Object(12, "<</Title(b)/Parent 10 0 R/Next 11 0 R>>")
      .Object(14, "<</Title(c)/Parent 11 0 R/Next 15 0 R>>");
  Repair(file.Table());
  EXPECT_THAT(Damage(), UnorderedElementsAre(Code::kOutlineLoop, Code::kOutlineDamaged));
  Repair(Output());
  EXPECT_THAT(Damage(), IsEmpty());
}

TEST_F(TreeCheckTest, LeavesOutWhatIsNoField) {
  RawPdf file = OnePage("", "/AcroForm<</Fields[10 0 R]>>");
  file.Object(10, "<</T(a)/FT/Tx/Kids[11 0 R 12 0 R 10 0 R 13 0 R]>>")
      .Object(11, "<</T(b)/Kids 14 0 R>>")
      .Object(12, "(none)")
      .Object(14, "[15 0 R]")
      .Object(15, "<</T(c)/Kids 14 0 R>>");
  Repair(file.Table());
  EXPECT_THAT(Damage(),
              UnorderedElementsAre(Code::kFieldDamaged, Code::kFieldLoop, Code::kFieldLoop));
  Repair(Output());
  EXPECT_THAT(Damage(), IsEmpty());
  ExpectMended(OnePage("", "/AcroForm 10 0 R").Object(10, "<</Fields(none)>>").Table(),
               {Code::kFieldTreeDamaged});
}

// What the catalog has in place is mended like objects of their own.
TEST_F(TreeCheckTest, MendsWhatTheCatalogHasInPlace) {
  ExpectMended(OnePage("", "/AcroForm<</Fields(none)/DA(/F 9 Tf)>>").Table(),
               {Code::kFieldTreeDamaged});
  EXPECT_THAT(Held(), HasSubstr("/DA (/F 9 Tf)"));
  ExpectMended(
      OnePage("", "/AcroForm<</Fields[10 0 R(none)]>>").Object(10, "<</T(kept)/FT/Tx>>").Table(),
      {Code::kFieldDamaged});
  EXPECT_THAT(Held(), HasSubstr("(kept)"));
  ExpectMended(OnePage("", "/Outlines<</First 11 0 R/Last 11 0 R/Count 1/Own 7>>").Table(),
               {Code::kOutlineDamaged});
  EXPECT_THAT(Held(), HasSubstr("/Outlines <<\n    /Own 7\n  >>"));
  ExpectMended(OnePage("", "/Outlines<</First 11 0 R/Last 12 0 R/Count 2>>")
                   .Object(11, "<</Title(kept)/Next 12 0 R>>")
                   .Table(),
               {Code::kOutlineDamaged});
  EXPECT_THAT(Held(), HasSubstr("(kept)"));
  ExpectMended(OnePage("",
                       "/Names<</Dests<</Names[(a)[3 0 R/Fit]]/Kids[(none)]>>/AP<</Kids[(none)]>>"
                       ">>/StructTreeRoot<</ParentTree<</Nums[]/Kids[(none)]>>>>")
                   .Table(),
               {Code::kNameTreeDamaged, Code::kNameTreeDamaged, Code::kNumberTreeDamaged});
}

TEST_F(TreeCheckTest, LeavesOutWhatIsNoAnnotation) {
  RawPdf file = OnePage("/Annots[10 0 R 11 0 R 12 0 R null]");
  file.Object(10, "<</Subtype/Text/Rect[0 0 9 9]>>")
      .Object(11, "<</Subtype/Text/Rect[0 0 9]>>")
      .Object(12, "(none)");
  ExpectMended(file.Table(), {Code::kAnnotationDamaged, Code::kAnnotationDamaged});
  ExpectMended(OnePage("/Annots(none)").Table(), {Code::kAnnotationDamaged});
}

// What is sound stays in the lists that damage is taken out of.
TEST_F(TreeCheckTest, KeepsWhatIsSound) {
  RawPdf file = OnePage("/Annots[10 0 R 11 0 R<</Subtype/Text/Rect[0 0 8 8]/Contents(third)>>]",
                        "/AcroForm<</Fields[<</T(f1)>><</T(f2)>>12 0 R(none)]>>"
                        "/StructTreeRoot 13 0 R");
  file.Object(10, "<</Subtype/Text/Rect[0 0 9 9]/Contents(first)>>")
      .Object(11, "<</Subtype/Text/Rect[0 0 9]/Contents(second)>>")
      .Object(12, "<</T(f3)/Kids[(none)14 0 R]>>")
      .Object(13, "<</Type/StructTreeRoot/K[15 0 R(none)16 0 R]>>")
      .Object(14, "<</T(f4)>>")
      .Object(15, "<</S/P/T(s1)/K[3(none)<</Type/MCR/MCID 4>>]>>")
      .Object(16, "<</S/P/T(s2)/K 17 0 R>>")
      .Object(17, "<</S/P/T(s3)>>");
  Repair(file.Table());
  const std::string held = Held();
  for (const char* kept :
       {"(first)", "(third)", "(f1)", "(f2)", "(f3)", "(f4)", "(s1)", "(s2)", "(s3)", "/MCID 4"}) {
    EXPECT_THAT(held, HasSubstr(kept));
  }
  for (const char* gone : {"(second)", "(none)"}) {
    EXPECT_THAT(held, ::testing::Not(HasSubstr(gone)));
  }
  EXPECT_THAT(Damage(), UnorderedElementsAre(Code::kAnnotationDamaged, Code::kFieldDamaged,
                                             Code::kFieldDamaged, Code::kStructureTreeDamaged,
                                             Code::kStructureTreeDamaged));
}

TEST_F(TreeCheckTest, LeavesOutKidsOfElementsThatAreNone) {
  RawPdf file = OnePage("", "/StructTreeRoot 10 0 R");
  file.Object(10, "<</Type/StructTreeRoot/K[11 0 R 12 0 R]>>")
      .Object(11, "<</S/P/K[0 <</Type/MCR/MCID 1>> 11 0 R(none)]>>")
      .Object(12, "<</S/P/K 11 0 R>>");
  Repair(file.Table());
  EXPECT_THAT(Lint(), Contains(Code::kStructureTreeLoop));
  ExpectMended(file.Table(), {Code::kStructureTreeDamaged});
}

}  // namespace
}  // namespace TarnixTools::engines::repair
