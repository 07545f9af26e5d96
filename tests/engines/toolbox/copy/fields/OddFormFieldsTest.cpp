#include <set>

#include <gtest/gtest.h>

#include "engines/toolbox/copy/fields/FormFieldsFixture.h"

namespace TarnixTools::engines::toolbox {
namespace {

using pdf::Object;
using ::TarnixTools::testing::RawPdf;

TEST(OddFormFields, WithoutWidgetsStayInWholeDocuments) {
  const std::string bytes = FormPdf("/Fields[10 0 R 11 0 R 12 0 R]", {"10 0 R", ""})
                                .Widget(10, "/FT/Tx/T(a)")
                                .Object(11, "/FT/Tx/T(total)/V(5)")
                                .Widget(12, "/FT/Tx/T(lost)/V(6)")
                                .Bytes();
  CopiedForm whole({{bytes, {0, 1}}});
  EXPECT_EQ(whole.fields(), (Names{"a= @0", "total=5", "lost=6"}));
  EXPECT_FALSE(whole.Field("lost").Has("Subtype"));
  CopiedForm part({{bytes, {0}}});
  EXPECT_EQ(part.fields(), (Names{"a= @0"}));
}

TEST(OddFormFields, ThatTheFormDoesNotListAreAdopted) {
  const std::string bytes =
      FormPdf("/Fields[10 0 R 15 0 R]", {"11 0 R 12 0 R 13 0 R 16 0 R 10 0 R"})
          .Widget(10, "/FT/Tx/T(listed)")
          .Widget(11, "/FT/Tx/T(alone)/V(x)")
          .Widget(12, "/Parent 14 0 R")
          .Widget(13, "/Parent 14 0 R")
          .Object(14, "/FT/Btn/T(parent)/V/On/Kids[13 0 R]")
          .Object(15, "/FT/Tx/T(forgetful)/Kids[]")
          .Widget(16, "/Parent 15 0 R")
          .Bytes();
  CopiedForm copy({{bytes, {0}}});
  EXPECT_EQ(copy.fields(), (Names{"listed= @0", "forgetful= @0", "alone=x @0", "parent=On @0@0"}));
  CopiedForm twice({{bytes, {0, 0}}});
  EXPECT_EQ(twice.fields(),
            (Names{"listed= @0@1", "forgetful= @0@1", "alone=x @0@1", "parent=On @0@1@0@1"}));
}

TEST(OddFormFields, OfADocumentWithoutFormAreAdopted) {
  RawPdf file;
  file.Pages(1)
      .Object(3, "<</Type/Page/Parent 2 0 R/Annots[10 0 R]>>")
      .Object(10, "<</Subtype/Widget/Rect[0 0 9 9]/FT/Tx/T(a)/V(x)>>");
  CopiedForm copy({{file.Table(), {0}}});
  EXPECT_EQ(copy.fields(), (Names{"a=x @0"}));
}

TEST(OddFormFields, OfWidgetsThatAreNoObjects) {
  const std::string direct = "<</Subtype/Widget/Rect[0 0 9 9]/FT/Tx/T(direct)/V(x)>>";
  const std::string kid = "<</Subtype/Widget/Rect[0 0 9 9]/Parent 10 0 R>>";
  const std::string bytes =
      FormPdf("/Fields[10 0 R]", {direct + kid}).Object(10, "/FT/Tx/T(parent)/V(y)").Bytes();
  CopiedForm copy({{bytes, {0}}});
  EXPECT_EQ(copy.fields(), (Names{"parent=y @0", "direct=x @0"}));
}

TEST(OddFormFields, WithoutTypeOrNameArePlainAnnotations) {
  const std::string bytes = FormPdf("/Fields[12 0 R]", {"10 0 R 11 0 R 12 0 R"})
                                .Widget(10, "/T(untyped)/AP<<>>")
                                .Widget(11, "/FT/Tx")
                                .Widget(12, "/T(listed)")
                                .Bytes();
  CopiedForm copy({{bytes, {0}}});
  EXPECT_FALSE(copy.Catalog().Has("AcroForm"));
  EXPECT_EQ(copy.Annotations(0).size(), 3U);
}

TEST(OddFormFields, ListedTwiceOrBesideTheirParentAreOne) {
  const std::string bytes = FormPdf("/Fields[11 0 R 10 0 R 10 0 R 12 0 R]", {"11 0 R 12 0 R"})
                                .Object(10, "/FT/Tx/T(group)/Kids[11 0 R 12 0 R 11 0 R]")
                                .Widget(11, "/T(a)/Parent 10 0 R")
                                .Widget(12, "/T(b)/Parent 10 0 R")
                                .Bytes();
  CopiedForm copy({{bytes, {0}}});
  const std::set<std::string> fields(copy.fields().begin(), copy.fields().end());
  EXPECT_EQ(fields, (std::set<std::string>{"group.a= @0", "group.b= @0"}));
  EXPECT_EQ(copy.fields().size(), 2U);
}

TEST(OddFormFields, WithLoopsComeOutAllTheSame) {
  const std::string bytes =
      FormPdf("/Fields[10 0 R 12 0 R 2 0 R 3 0 R 1 0 R 99 0 R 7 (x)]", {"11 0 R 14 0 R"})
          .Object(10, "/FT/Tx/T(a)/Parent 12 0 R/Kids[11 0 R 12 0 R 10 0 R]")
          .Widget(11, "/Parent 10 0 R")
          .Object(12, "/T(b)/Parent 10 0 R/Kids[10 0 R 2 0 R]")
          .Object(13, "/T(c)/FT/Tx/Parent 13 0 R")
          .Widget(14, "/Parent 13 0 R")
          .Bytes();
  CopiedForm copy({{bytes, {0}}});
  EXPECT_EQ(copy.PageCount(), 1U);
  EXPECT_EQ(copy.Annotations(0).size(), 2U);
  EXPECT_EQ(copy.fields().size(), 2U);
}

TEST(OddFormFields, WithWrongTypesComeOutAllTheSame) {
  for (const char* form : {"/Fields 5/CO 6/DR 7/DA 8/Q(x)/NeedAppearances 1", "/Fields<<>>",
                           "/Fields[10 0 R]/CO[(x) 77 0 R 10 0 R]/DR<</Font 5/XObject[1]>>/DA 7",
                           "/Fields[10 0 R]/DR<</Font<</F 77 0 R/G 5/H null/I<<>>>>>>"}) {
    const std::string bytes =
        FormPdf(form, {"10 0 R"}).Widget(10, "/FT/Tx/T(a)/Kids 5/DA 7/AA 5/A(x)/V 99 0 R").Bytes();
    CopiedForm copy({{bytes, {0}}, {bytes, {0}}});
    EXPECT_EQ(copy.fields(), (Names{"a= @0", "a_2= @1"})) << form;
  }
}

TEST(OddFormFields, NestedTooDeeplyAreLeftOut) {
  FormPdf file("/Fields[10 0 R]", {"3000 0 R 11 0 R", ""});
  file.Object(10, "/FT/Tx/T(t)/Kids[11 0 R 12 0 R]").Widget(11, "/Parent 10 0 R/T(w)");
  for (int i = 12; i < 3000; ++i) {
    const std::string above = i == 12 ? "10" : std::to_string(i - 1);
    file.Object(i, "/T(t)/Parent " + above + " 0 R/Kids[" + std::to_string(i + 1) + " 0 R]");
  }
  file.Widget(3000, "/Parent 2999 0 R");
  CopiedForm copy({{file.Bytes(), {0}}});
  EXPECT_EQ(copy.fields(), (Names{"t.w= @0"}));
  EXPECT_EQ(copy.Annotations(0).size(), 2U);
}

}  // namespace
}  // namespace TarnixTools::engines::toolbox
