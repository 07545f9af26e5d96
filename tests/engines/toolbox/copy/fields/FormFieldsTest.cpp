
#include <gtest/gtest.h>

#include "engines/toolbox/copy/fields/FormFieldsFixture.h"
#include "support/Readers.h"
#include "support/TempDir.h"

namespace TarnixTools::engines::toolbox {
namespace {

using pdf::Object;

std::vector<std::string> ReportOf(const std::vector<PagesOf>& parts) {
  MemoryFile output;
  const TPdfStream stream = output.Descriptor();
  TPdfDocument* target = PdfDocumentCreateW(&stream, 0, nullptr);
  std::vector<std::string> lines;
  PdfDocumentSetReport(
      target,
      [](void* context, const TPdfReportEntry* entry) {
        const char* const outcomes[] = {"kept", "renamed", "dropped"};
        const std::string kind = entry->kind == TPdfCopiedKind::kFormField   ? "field"
                                 : entry->kind == TPdfCopiedKind::kSignature ? "signature"
                                 : entry->kind == TPdfCopiedKind::kXfaForm   ? "xfa"
                                                                             : "";
        if (!kind.empty()) {
          static_cast<std::vector<std::string>*>(context)->push_back(
              std::to_string(entry->count) + " " + kind + " " +
              outcomes[static_cast<int>(entry->outcome)]);
        }
      },
      &lines);
  for (const PagesOf& part : parts) {
    CopyInto(target, part);
  }
  EXPECT_EQ(PdfClose(target), 1);
  return lines;
}

// Two pages: a text field merged with its widget on the first, one on the second, a group with two
// fields, one on each page, and a radio button with a button on each page.
std::string TwoPages(const std::string& form = "/DA(/Helv 0 Tf 0 g)/DR<</Font<</Helv 30 0 R>>>>",
                     const std::string& value = "one") {
  return FormPdf("/Fields[10 0 R 11 0 R 12 0 R 15 0 R]/CO[11 0 R 14 0 R 10 0 R]" + form,
                 {"10 0 R 13 0 R 16 0 R", "17 0 R 14 0 R 11 0 R"})
      .Widget(10, "/FT/Tx/T(first)/V(" + value + ")/DV(none)/MaxLen 12/TU(Tip)/P 3 0 R")
      .Widget(11, "/FT/Tx/T(second)/V(two)/DA(/Helv 9 Tf)/Q 2")
      .Object(12, "/T(group)/FT/Tx/Ff 4096/Kids[13 0 R 14 0 R]")
      .Widget(13, "/T(a)/V(three)/Parent 12 0 R")
      .Widget(14, "/T(b)/V(four)/Parent 12 0 R")
      .Object(15, "/T(radio)/FT/Btn/Ff 49152/V/Two/Opt[(x)(y)]/Kids[16 0 R 17 0 R]")
      .Widget(16, "/Parent 15 0 R/AS/Off/AP<</N<</One 31 0 R>>>>")
      .Widget(17, "/Parent 15 0 R/AS/Two/AP<</N<</Two 31 0 R>>>>")
      .Object(30, "/Type/Font/Subtype/Type1/BaseFont/Helvetica")
      .Stream(31, "/Subtype/Form/BBox[0 0 9 9]", "0 0 m")
      .Bytes();
}

TEST(FormFields, ComeWithTheirPages) {
  CopiedForm copy({{TwoPages(), {0, 1}}});
  EXPECT_EQ(copy.fields(), (Names{"first=one @0", "second=two @1", "group.a=three @0",
                                  "group.b=four @1", "radio=Two @0@1"}));
  const Object first = copy.Field("first");
  EXPECT_EQ(first.Get("MaxLen").IntegerOr(0), 12);
  EXPECT_EQ(first.Get("DV").Text(), "none");
  EXPECT_EQ(first.Get("TU").Text(), "Tip");
  EXPECT_TRUE(first.Get("Subtype").IsName("Widget")) << "field and widget remain one object";
  EXPECT_EQ(copy.Field("group").Get("Ff").IntegerOr(0), 4096);
  EXPECT_FALSE(copy.Field("group.a").Has("FT")) << "what is inherited stays where it is";
  EXPECT_EQ(copy.Text(copy.Field("radio").Get("Opt")), "[(x)(y)]");
  EXPECT_EQ(copy.form().Get("DA").Text(), "/Helv 0 Tf 0 g");
  const Object font = copy.Follow(copy.Follow(copy.form().Get("DR").Get("Font")).Get("Helv"));
  EXPECT_TRUE(font.Get("BaseFont").IsName("Helvetica"));
  EXPECT_FALSE(copy.form().Has("NeedAppearances"));
}

TEST(FormFields, ComeWithSomePagesOnly) {
  CopiedForm copy({{TwoPages(), {1}}});
  EXPECT_EQ(copy.fields(), (Names{"second=two @0", "group.b=four @0", "radio=Two @0"}));
  EXPECT_EQ(copy.Field("radio").Get("Kids").Items().size(), 1U);
  EXPECT_EQ(copy.Count([](const Object& object) {
    return object.IsDictionary() && object.Get("V").Text() == "one";
  }),
            0)
      << "nothing of the other page is in the file";
}

TEST(FormFields, KeepTheFormsOrderWhateverOrderThePagesHave) {
  CopiedForm copy({{TwoPages(), {1, 0}}});
  EXPECT_EQ(copy.fields(), (Names{"first=one @1", "second=two @0", "group.a=three @1",
                                  "group.b=four @0", "radio=Two @1@0"}));
}

TEST(FormFields, KeepTheOrderOfCalculation) {
  CopiedForm whole({{TwoPages(), {0, 1}}});
  EXPECT_EQ(whole.Calculations(), (Names{"second", "b", "first"}));
  CopiedForm part({{TwoPages(), {1}}});
  EXPECT_EQ(part.Calculations(), (Names{"second", "b"}));
  CopiedForm merged({{TwoPages(), {0}}, {TwoPages(), {1}}});
  EXPECT_EQ(merged.Calculations(), (Names{"first", "second", "b"}));
}

TEST(FormFields, LeaveNoFormWhereThereIsNoField) {
  const std::string bytes =
      FormPdf("/Fields[10 0 R]", {"10 0 R", ""}).Widget(10, "/FT/Tx/T(a)").Bytes();
  CopiedForm copy({{bytes, {1}}});
  EXPECT_FALSE(copy.Catalog().Has("AcroForm"));
  EXPECT_EQ(ReportOf({{bytes, {1}}}), (Names{"1 field dropped"}));
}

TEST(FormFields, OfTwoSourcesStayIndependent) {
  CopiedForm copy({{TwoPages(), {0}}, {TwoPages("", "other"), {0}}, {TwoPages("", "third"), {0}}});
  EXPECT_EQ(copy.fields(), (Names{"first=one @0", "group.a=three @0", "radio=Two @0",
                                  "first_2=other @1", "group_2.a=three @1", "radio_2=Two @1",
                                  "first_3=third @2", "group_3.a=three @2", "radio_3=Two @2"}));
  EXPECT_EQ(ReportOf({{TwoPages(), {0, 1}}, {TwoPages(), {0}}}),
            (Names{"8 field kept", "3 field renamed", "2 field dropped"}));
}

TEST(FormFields, TakeTheNextNameThatNobodyHas) {
  const std::string one = FormPdf("/Fields[10 0 R]", {"10 0 R"}).Widget(10, "/FT/Tx/T(a)").Bytes();
  const std::string two = FormPdf("/Fields[10 0 R 11 0 R]", {"10 0 R 11 0 R"})
                              .Widget(10, "/FT/Tx/T(a)")
                              .Widget(11, "/FT/Tx/T(a_2)")
                              .Bytes();
  CopiedForm copy({{one, {0}}, {two, {0}}});
  EXPECT_EQ(copy.fields(), (Names{"a= @0", "a_3= @1", "a_2= @1"}));
}

TEST(FormFields, CompareNamesAsTextAndKeepTheirEncoding) {
  const std::string latin =
      FormPdf("/Fields[10 0 R]", {"10 0 R"}).Widget(10, "/FT/Tx/T<61>").Bytes();
  const std::string wide =
      FormPdf("/Fields[10 0 R]", {"10 0 R"}).Widget(10, "/FT/Tx/T<FEFF0061>").Bytes();
  CopiedForm copy({{latin, {0}}, {wide, {0}}});
  EXPECT_EQ(copy.Text(copy.Annotations(1)[0].Get("T")), "<FEFF0061005F0032>");
}

TEST(FormFields, OfOneSourceWithOneNameKeepIt) {
  const std::string bytes = FormPdf("/Fields[10 0 R 11 0 R]", {"10 0 R", "11 0 R"})
                                .Widget(10, "/FT/Tx/T(a)/V(x)")
                                .Widget(11, "/FT/Tx/T(a)/V(x)")
                                .Bytes();
  CopiedForm alone({{bytes, {0, 1}}});
  EXPECT_EQ(alone.fields(), (Names{"a=x @0", "a=x @1"}));
  CopiedForm second({{bytes, {0}}, {bytes, {0, 1}}});
  EXPECT_EQ(second.fields(), (Names{"a=x @0", "a_2=x @1", "a_2=x @2"}));
}

TEST(FormFields, OfAPageCopiedTwiceGetMoreWidgets) {
  CopiedForm copy({{TwoPages(), {0, 0}}});
  EXPECT_EQ(copy.fields(), (Names{"first=one @0@1", "group.a=three @0@1", "radio=Two @0@1"}));
  const Object first = copy.Field("first");
  EXPECT_FALSE(first.Has("Subtype"));
  EXPECT_FALSE(first.Has("Rect"));
  EXPECT_EQ(first.Get("MaxLen").IntegerOr(0), 12);
  const Object widget = copy.Follow(first.Get("Kids").Items()[1]);
  EXPECT_TRUE(widget.Get("Subtype").IsName("Widget"));
  EXPECT_EQ(copy.Text(widget.Get("Rect")), "[0 0 9 9]");
  EXPECT_FALSE(widget.Has("V"));
}

TEST(FormFields, ShareTheirActionsWithTheirWidgetsWhenSplit) {
  std::string events;
  for (const char* event : {"K", "F", "V", "C", "E", "X", "D", "U", "Fo", "Bl"}) {
    events += std::string("/") + event + "<</S/JavaScript/JS(x)>>";
  }
  const std::string bytes =
      FormPdf("/Fields[10 0 R]", {"10 0 R"})
          .Widget(10, "/FT/Tx/T(a)/A<</S/JavaScript/JS(a)>>/AA<<" + events + ">>")
          .Bytes();
  CopiedForm one({{bytes, {0}}});
  EXPECT_EQ(one.Field("a").Get("AA").Entries().size(), 10U);
  CopiedForm two({{bytes, {0, 0}}});
  const Object field = two.Field("a");
  const Object widget = two.Annotations(1)[0];
  for (const char* event : {"K", "F", "V", "C"}) {
    EXPECT_TRUE(field.Get("AA").Has(event)) << event;
    EXPECT_FALSE(widget.Get("AA").Has(event)) << event;
  }
  for (const char* event : {"E", "X", "D", "U", "Fo", "Bl"}) {
    EXPECT_FALSE(field.Get("AA").Has(event)) << event;
    EXPECT_TRUE(widget.Get("AA").Has(event)) << event;
  }
  EXPECT_FALSE(field.Has("A"));
  EXPECT_TRUE(widget.Has("A"));
}

TEST(FormFields, LeaveEachEntryWithTheOneItBelongsToWhenSplit) {
  const std::string bytes =
      FormPdf("/Fields[10 0 R]", {"10 0 R"})
          .Widget(10,
                  "/FT/Tx/T(a)/TU(b)/TM(c)/Ff 4096/V(x)/DV(y)/DA(/F 0 Tf)/Q 1/DS(d)/RV(r)/MaxLen 5"
                  "/Opt[(o)]/TI 1/I[0]/Lock<<>>/SV<<>>/AP<</N 11 0 R>>/OC 12 0 R/AF[12 0 R]"
                  "/Contents(e)/NM(n)/M(D:2020)/F 4/AS/N/Border[0 0 1]/C[0]/ca 1/CA 1/BM/Normal"
                  "/Lang(en)/H/N/MK<<>>/BS<<>>")
          .Stream(11, "/Subtype/Form/BBox[0 0 9 9]", "0 0 m")
          .Object(12, "/Type/OCG/Name(g)")
          .Bytes();
  CopiedForm copy({{bytes, {0, 0}}});
  const Object field = copy.Field("a");
  const Object widget = copy.Follow(field.Get("Kids").Items()[1]);
  for (const char* key : {"FT", "T", "TU", "TM", "Ff", "V", "DV", "DA", "Q", "DS", "RV", "MaxLen",
                          "Opt", "TI", "I", "Lock", "SV"}) {
    EXPECT_TRUE(field.Has(key)) << key;
    EXPECT_FALSE(widget.Has(key)) << key;
  }
  for (const char* key :
       {"Type", "Subtype", "Rect", "Contents", "NM", "M",  "F",    "AP", "AS", "Border",
        "C",    "OC",      "AF",   "ca",       "CA", "BM", "Lang", "H",  "MK", "BS"}) {
    EXPECT_TRUE(widget.Has(key)) << key;
    EXPECT_FALSE(field.Has(key)) << key;
  }
}

TEST(FormFields, OneWidgetOnTwoPages) {
  const std::string bytes = FormPdf("/Fields[10 0 R]", {"10 0 R", "10 0 R 10 0 R"})
                                .Widget(10, "/FT/Tx/T(a)/V(x)")
                                .Bytes();
  CopiedForm both({{bytes, {0, 1}}});
  EXPECT_EQ(both.fields(), (Names{"a=x @0@1"}));
  CopiedForm second({{bytes, {1}}});
  EXPECT_EQ(second.fields(), (Names{"a=x @0"}));
  EXPECT_TRUE(second.Field("a").Get("Subtype").IsName("Widget"));
}

TEST(FormFields, LoseSignaturesButKeepTheirLook) {
  const std::string bytes =
      FormPdf("/Fields[10 0 R]/SigFlags 3", {"10 0 R"})
          .Widget(10, "/FT/Sig/T(sig)/V 11 0 R/Lock 12 0 R/SV<</Type/SV>>/AP<</N 13 0 R>>/F 132")
          .Object(11, "/Type/Sig/Filter/Adobe.PPKLite/ByteRange[0 1 2 3]/Contents<00>")
          .Object(12, "/Type/SigFieldLock/Action/All")
          .Stream(13, "/Subtype/Form/BBox[0 0 9 9]", "1 0 0 rg 0 0 9 9 re f")
          .Bytes();
  CopiedForm copy({{bytes, {0}}});
  EXPECT_EQ(copy.fields(), (Names{"sig= @0"}));
  const Object field = copy.Field("sig");
  EXPECT_FALSE(field.Has("V"));
  EXPECT_FALSE(field.Has("Lock"));
  EXPECT_FALSE(field.Has("SV"));
  EXPECT_EQ(field.Get("F").IntegerOr(0), 132);
  EXPECT_EQ(copy.document().TryDecodeStream(field.Get("AP").Get("N").AsReference().number)->data,
            "1 0 0 rg 0 0 9 9 re f");
  EXPECT_FALSE(copy.form().Has("SigFlags"));
  EXPECT_EQ(copy.Count([](const Object& o) { return o.Has("ByteRange"); }), 0);
  EXPECT_EQ(ReportOf({{bytes, {0}}}), (Names{"1 signature dropped", "1 field kept"}));
}

TEST(FormFields, LeaveXfaBehind) {
  const std::string bytes = FormPdf("/Fields[10 0 R]/XFA 11 0 R", {"10 0 R"})
                                .Widget(10, "/FT/Tx/T(a)")
                                .Stream(11, "", "<xdp/>")
                                .Bytes();
  CopiedForm copy({{bytes, {0}}});
  EXPECT_FALSE(copy.form().Has("XFA"));
  EXPECT_EQ(copy.fields(), (Names{"a= @0"}));
  EXPECT_EQ(ReportOf({{bytes, {0}}}), (Names{"1 xfa dropped", "1 field kept"}));
}

std::string WithFont(const std::string& base_font, const std::string& form = "",
                     const std::string& descriptor = "") {
  return FormPdf("/Fields[10 0 R 11 0 R]/DR<</Font<</F1 12 0 R>>>>" + form, {"10 0 R 11 0 R"})
      .Widget(10, "/FT/Tx/T(a)/DA(0 g /F1 12 Tf)")
      .Widget(11, "/FT/Tx/T(b)")
      .Object(12, "/Type/Font/Subtype/Type1/BaseFont/" + base_font + descriptor)
      .Object(13, "/Type/FontDescriptor/FontFile 14 0 R")
      .Stream(14, "", "font")
      .Bytes();
}

Names FontsOf(CopiedForm& copy) {
  Names fonts;
  for (const auto& entry : copy.Follow(copy.form().Get("DR").Get("Font")).Entries()) {
    fonts.push_back(std::string(entry.Key()) + "=" +
                    std::string(copy.Follow(entry.value).Get("BaseFont").Text()));
  }
  return fonts;
}

TEST(FormFields, RenameResourcesThatClash) {
  CopiedForm copy({{WithFont("Helvetica", "/DA(/F1 8 Tf)"), {0}},
                   {WithFont("Courier", "/DA(/F1 8 Tf)/Q 1"), {0}}});
  EXPECT_EQ(FontsOf(copy), (Names{"F1=Helvetica", "F1_2=Courier"}));
  EXPECT_EQ(copy.form().Get("DA").Text(), "/F1 8 Tf");
  EXPECT_EQ(copy.Field("a").Get("DA").Text(), "0 g /F1 12 Tf");
  EXPECT_FALSE(copy.Field("b").Has("DA"));
  EXPECT_FALSE(copy.Field("b").Has("Q"));
  EXPECT_EQ(copy.Field("a_2").Get("DA").Text(), "0 g /F1_2 12 Tf");
  EXPECT_EQ(copy.Field("b_2").Get("DA").Text(), "/F1_2 8 Tf");
  EXPECT_EQ(copy.Field("b_2").Get("Q").IntegerOr(0), 1);
}

TEST(FormFields, RenameResourcesOfEverySort) {
  const auto with_resources = [](const std::string& width) {
    return FormPdf("/Fields[10 0 R]/Q 2/DR<</ExtGState<</G<</LW " + width +
                       ">>>>/ColorSpace<</C[/CalGray<</Gamma " + width +
                       ">>]>>/Pattern<</P 12 0 R>>/Font<</F 13 0 R>>>>",
                   {"10 0 R"})
        .Widget(10,
                "/FT/Tx/T(a)/DA(/G gs /C cs /C CS /P scn /P SCN /F 9 Tf /G Tf 0 g /C gs /G 1 w)")
        .Object(12, "/Type/Pattern/PatternType 2/Shading<</ShadingType 2/Own " + width + ">>")
        .Object(13, "/Type/Font/Subtype/Type1/BaseFont/F" + width)
        .Bytes();
  };
  CopiedForm copy({{with_resources("1"), {0}}, {with_resources("2"), {0}}});
  EXPECT_EQ(copy.form().Get("Q").IntegerOr(0), 2);
  EXPECT_EQ(copy.Field("a").Get("DA").Text(),
            "/G gs /C cs /C CS /P scn /P SCN /F 9 Tf /G Tf 0 g /C gs /G 1 w");
  EXPECT_EQ(copy.Field("a_2").Get("DA").Text(),
            "/G_2 gs /C_2 cs /C_2 CS /P_2 scn /P_2 SCN /F_2 9 Tf /G Tf 0 g /C gs /G 1 w");
  for (const char* category : {"ExtGState", "ColorSpace", "Pattern", "Font"}) {
    EXPECT_EQ(copy.Follow(copy.form().Get("DR").Get(category)).Entries().size(), 2U) << category;
  }
}

TEST(FormFields, ShareResourcesThatAreTheSame) {
  CopiedForm copy({{WithFont("Helvetica"), {0}},
                   {WithFont("Courier"), {0}},
                   {WithFont("Helvetica"), {0}},
                   {WithFont("Courier"), {0}}});
  EXPECT_EQ(FontsOf(copy), (Names{"F1=Helvetica", "F1_2=Courier"}));
  EXPECT_EQ(copy.Field("a_3").Get("DA").Text(), "0 g /F1 12 Tf");
  EXPECT_EQ(copy.Field("a_4").Get("DA").Text(), "0 g /F1_2 12 Tf");
}

TEST(FormFields, DoNotShareEmbeddedFonts) {
  const std::string embedded = WithFont("Own", "", "/FontDescriptor 13 0 R");
  CopiedForm copy({{embedded, {0}}, {embedded, {0}}});
  EXPECT_EQ(FontsOf(copy), (Names{"F1=Own", "F1_2=Own"}));
  EXPECT_EQ(copy.Field("a_2").Get("DA").Text(), "0 g /F1_2 12 Tf");
}

TEST(FormFields, LeaveEmbeddedFontsOfOthersBehind) {
  const std::string bytes =
      FormPdf(
          "/Fields[10 0 R 11 0 R]/DA(/F1 0 Tf)/DR<</Font<</F1 12 0 R/F2 13 0 R/F3 14 0 R"
          "/F4 15 0 R>>>>",
          {"10 0 R", "11 0 R"})
          .Widget(10, "/FT/Tx/T(a)/DA(/F2 12 Tf)")
          .Widget(11, "/FT/Tx/T(b)/DA(/F3 12 Tf)")
          .Object(12, "/Type/Font/BaseFont/One/FontDescriptor 16 0 R")
          .Object(13, "/Type/Font/BaseFont/Two/FontDescriptor 16 0 R")
          .Object(14, "/Type/Font/BaseFont/Three/FontDescriptor 16 0 R")
          .Object(15, "/Type/Font/BaseFont/Four")
          .Object(16, "/Type/FontDescriptor/FontFile 17 0 R")
          .Stream(17, "", "font")
          .Bytes();
  CopiedForm part({{bytes, {1}}});
  EXPECT_EQ(FontsOf(part), (Names{"F4=Four", "F1=One", "F3=Three"}));
  CopiedForm whole({{bytes, {0, 1}}});
  EXPECT_EQ(FontsOf(whole), (Names{"F1=One", "F2=Two", "F3=Three", "F4=Four"}));
  CopiedForm two({{bytes, {0}}, {bytes, {1}}});
  EXPECT_EQ(FontsOf(two), (Names{"F4=Four", "F1=One", "F2=Two", "F1_2=One", "F3_2=Three"}));
  EXPECT_EQ(two.Field("b").Get("DA").Text(), "/F3_2 12 Tf");
}

TEST(FormFields, AreNamedByActionsAsTheyAreInTheTarget) {
  const std::string bytes =
      FormPdf("/Fields[10 0 R 11 0 R]", {"10 0 R 12 0 R 13 0 R"})
          .Widget(10, "/FT/Tx/T(a)")
          .Object(11, "/T<FEFF0067>/FT/Tx/Kids[12 0 R]")
          .Widget(12, "/Parent 11 0 R/T(kid)")
          .Widget(13,
                  "/A<</S/ResetForm/Fields[(a) 12 0 R <FEFF0067002E006B> (other) 7]/Next"
                  "<</S/Hide/T(g.kid)/H true>>>>")
          .Bytes();
  CopiedForm copy({{bytes, {0}}, {bytes, {0}}});
  EXPECT_EQ(copy.Text(copy.Annotations(0)[2].Get("A").Get("Fields")).substr(0, 4), "[(a)");
  const Object action = copy.Annotations(1)[2].Get("A");
  const auto fields = action.Get("Fields").Items();
  ASSERT_EQ(fields.size(), 5U);
  EXPECT_EQ(fields[0].Text(), "a_2");
  EXPECT_EQ(copy.Follow(fields[1]).Get("T").Text(), "kid");
  EXPECT_EQ(copy.Text(fields[2]), "<FEFF0067005F0032002E006B>");
  EXPECT_EQ(fields[3].Text(), "other");
  EXPECT_EQ(copy.Follow(action.Get("Next")).Get("T").Text(), "g_2.kid");
}

TEST(FormFields, AreShownByTheViewerWhenOneSourceWantsThat) {
  CopiedForm copy({{TwoPages(), {0}}, {TwoPages("/NeedAppearances true"), {0}}});
  EXPECT_TRUE(copy.form().Get("NeedAppearances").BooleanOr(false));
  CopiedForm without({{TwoPages(), {0}}, {WithFont("Courier"), {0}}});
  EXPECT_FALSE(without.form().Has("NeedAppearances"));
}

TEST(FormFields, AreNotWantedWithoutTheirOption) {
  CopiedForm copy({{TwoPages(), {0}}}, 11);
  EXPECT_FALSE(copy.Catalog().Has("AcroForm"));
  EXPECT_TRUE(copy.Annotations(0).empty());
}

TEST(FormFields, OfCopiesMadeTwiceAreTheSame) {
  const std::vector<PagesOf> parts = {{TwoPages(), {0, 1, 0}}, {WithFont("Courier"), {0}}};
  EXPECT_EQ(CopyAll(parts), CopyAll(parts));
}

TEST(FormFields, AreThereForAnotherReader) {
  TARNIX_NEED_PROGRAM("qpdf");
  const ::TarnixTools::testing::TempDir directory;
  const std::string path = directory.Path("form.pdf");
  const std::string bytes = CopyAll({{TwoPages(), {0, 1}}, {TwoPages("", "other"), {1, 0}}});
  std::FILE* file = std::fopen(path.c_str(), "wb");
  ASSERT_NE(file, nullptr);
  std::fwrite(bytes.data(), 1, bytes.size(), file);
  std::fclose(file);
  EXPECT_EQ(::TarnixTools::testing::QpdfComplaints(path), "");
  const std::string json = ::TarnixTools::testing::QpdfJson(path);
  for (const char* name :
       {"\"first\"", "\"group.b\"", "\"first_2\"", "\"group_2.b\"", "\"radio_2\"", "\"u:other\""}) {
    EXPECT_NE(json.find(name), std::string::npos) << name;
  }
}

}  // namespace
}  // namespace TarnixTools::engines::toolbox
