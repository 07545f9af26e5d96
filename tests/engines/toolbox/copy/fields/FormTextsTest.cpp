// Copied forms as a whole.
#include <gtest/gtest.h>

#include "engines/toolbox/copy/ChangedSources.h"
#include "engines/toolbox/copy/CopiedText.h"
#include "support/RawPdf.h"

namespace TarnixTools::engines::toolbox {
namespace {

using testing::IsAsExpected;

// Three pages with fields of every shape: merged with a widget, with several widgets, in groups,
// without a widget, on two pages, not in the form's list, and with widgets that are no objects of
// their own.
std::string Form() {
  return testing::RawPdf()
      .Lines(R"(1 <</Type/Catalog/Pages 2 0 R/AcroForm 9 0 R>>
2 <</Type/Pages/Kids[3 0 R 4 0 R 5 0 R]/Count 3/MediaBox[0 0 90 80]>>
3 <</Type/Page/Parent 2 0 R/Annots[10 0 R 12 0 R 16 0 R 21 0 R 26 0 R 27 0 R 28 0 R 33 0 R 10 0 R]>>
4 <</Type/Page/Parent 2 0 R/Annots[13 0 R 19 0 R 21 0 R 31 0 R
 <</Subtype/Widget/Rect[1 2 3 4]/FT/Tx/T(inline)/V(i)/DA(/Helv 5 Tf)>>
 <</Subtype/Widget/Rect[1 2 3 5]/Parent 11 0 R/AS/On>>
 <</Subtype/Widget/Rect[1 2 3 6]/MK<</CA(x)>>>>
 <</Subtype/Widget/Rect[1 2 3 7]/FT/Sig/T(inline sig)/V 60 0 R>>
 <</Subtype/Widget/Rect[1 2 3 8]/Parent 40 0 R/V 60 0 R>>
 <</Subtype/Widget/Rect[1 2 3 9]/FT/Tx/T 5>><</Subtype/Widget/Rect[1 2 3 10]/Parent 41 0 R/FT/Tx>>]>>
5 <</Type/Page/Parent 2 0 R/Annots[18 0 R 22 0 R 23 0 R 34 0 R 36 0 R 37 0 R 42 0 R]>>
9 <</Fields[10 0 R 11 0 R 15 0 R 16 0 R 19 0 R 20 0 R 21 0 R 25 0 R 26 0 R 27 0 R 28 0 R 38 0 R 3 0 R 99 0 R]
 /CO[21 0 R 10 0 R 20 0 R 10 0 R 98 0 R]/DA(/Helv 8 Tf 0 g)/Q 1/NeedAppearances true/XFA(x)
 /DR<</Font<</Helv 50 0 R/ZaDb 51 0 R/Lost 97 0 R/Flat<</Type/Font>>/No 5>>/ProcSet[/PDF]
 /ExtGState<</G 53 0 R>>/ColorSpace<</C[/Indexed/DeviceRGB 1<000000FFFFFF>]/N/DeviceGray>>>>>>
10 <</Type/Annot/Subtype/Widget/Rect[0 0 10 10]/P 3 0 R/FT/Tx/T(name)/TU(Name)/V(x)/F 4/DA(/Helv 9 Tf 0 g)
 /AA<</K<</S/JavaScript/JS(k)>>/F<</S/JavaScript/JS(f)>>/E<</S/GoTo/D[4 0 R/Fit]>>>>/StructParent 7>>
11 <</FT/Btn/Ff 49152/T(choice)/V/On/Kids[12 0 R 13 0 R]/AA<</C<</S/JavaScript/JS(c)>>>>/Opt[(a)(b)]>>
12 <</Type/Annot/Subtype/Widget/Rect[0 0 12 12]/Parent 11 0 R/AS/On/MK<</CA(8)>>/BS<</W 2>>
 /AA<</E<</S/JavaScript/JS(e)>>/K<</S/JavaScript/JS(not a field's)>>>>>>
13 <</Type/Annot/Subtype/Widget/Rect[0 0 13 13]/Parent 11 0 R/AS/Off/H/P/C[1 0 0]>>
15 <</T(group)/Kids[16 0 R 17 0 R]/TM(group mapped)/FT/Tx/DA(/ZaDb 6 Tf)>>
16 <</Type/Annot/Subtype/Widget/Rect[0 0 16 16]/Parent 15 0 R/T(a)/V(1)/MaxLen 5/Q 2>>
17 <</T(b)/Parent 15 0 R/Kids[18 0 R]/V(2)/DV(3)/DS(font)/RV(rich)>>
18 <</Type/Annot/Subtype/Widget/Rect[0 0 18 18]/Parent 17 0 R/Border[0 0 1]/NM(nm)/M(D:2020)>>
19 <</Type/Annot/Subtype/Widget/Rect[0 0 19 19]/FT/Sig/T(sig)/V 60 0 R/Lock<</Type/SigFieldLock/Action/All>>/SV<</Type/SV>>>>
20 <</FT/Tx/T(hidden)/V(none)/AA<</C<</S/JavaScript/JS(sum)>>>>>>
21 <</Type/Annot/Subtype/Widget/Rect[0 0 21 21]/FT/Tx/T(both)/V(21)/A<</S/URI/URI(x:)>>/PA<</S/URI/URI(y:)>>
 /AA<</K<</S/JavaScript/JS(k)>>/E<</S/JavaScript/JS(e)>>>>>>
22 <</Type/Annot/Subtype/Widget/Rect[0 0 22 22]/FT/Ch/T(unlisted)/Opt[(x)(y)]/I[0]/TI 1/V(x)>>
23 <</Type/Annot/Subtype/Widget/Rect[0 0 23 23]/Parent 24 0 R/AS/Yes>>
24 <</FT/Btn/T(climbed)/Kids[23 0 R]/V/Yes>>
25 <</Type/Annot/Subtype/Widget/Rect[0 0 25 25]/FT/Tx/T(odd)/Kids[31 0 R 32 0 R]/V(25)/AP<</N 61 0 R>>>>
26 <</Type/Annot/Subtype/Widget/Rect[0 0 26 26]/FT/Btn/Ff 65536/T(reset)
 /A<</S/ResetForm/Fields[(name)(group.a)10 0 R(other)]/Next<</S/SubmitForm/F(x:)/Fields(choice)>>>>>>
27 <</Type/Annot/Subtype/Widget/Rect[0 0 27 27]/FT/Btn/T<FEFF00680069>/A<</S/Hide/T[(hi)(name.b)]/H false>>>>
28 <</Type/Annot/Subtype/Widget/Rect[0 0 28 28]/FT/Tx/T()/V(no name)/DA(/Flat 3 Tf /G gs /C cs /N CS)>>
31 <</Type/Annot/Subtype/Widget/Rect[0 0 31 31]/Parent 25 0 R>>
32 <</Type/Annot/Subtype/Widget/Rect[0 0 32 32]/Parent 25 0 R>>
33 <</Type/Annot/Subtype/Widget/Rect[0 0 33 33]/Parent 39 0 R>>
34 <</Type/Annot/Subtype/Widget/Rect[0 0 34 34]/FT/Tx/V(no field)>>
36 <</Type/Annot/Subtype/Widget/Rect[0 0 36 36]/Parent 38 0 R>>
37 <</Type/Annot/Subtype/Widget/Rect[0 0 37 37]/Parent 11 0 R/T(late)>>
38 <</T(untyped)/Kids[36 0 R]>>
39 <</Type/Font/BaseFont/None>>
40 <</FT/Sig/T(signed)/Kids[42 0 R]/V 60 0 R>>
41 <</T(typed below)/Kids[]>>
42 <</Type/Annot/Subtype/Widget/Rect[0 0 42 42]/Parent 40 0 R>>
50 <</Type/Font/Subtype/Type1/BaseFont/Helvetica/Encoding 52 0 R>>
51 <</Type/Font/Subtype/Type1/BaseFont/ZapfDingbats>>
52 <</Type/Encoding/Differences[24/breve]>>
53 <</Type/ExtGState/CA 1>>
60 <</Type/Sig/Filter/Own/Contents<00>/ByteRange[0 1 2 3]>>
61 <</Type/XObject/Subtype/Form/BBox[0 0 9 9]>> stream q Q
)")
      .Table();
}

// Its names meet those of the other document, and so do the names of its resources.
std::string OtherForm() {
  return testing::RawPdf()
      .Lines(R"(1 <</Type/Catalog/Pages 2 0 R/AcroForm 9 0 R>>
2 <</Type/Pages/Kids[3 0 R 4 0 R]/Count 2/MediaBox[0 0 90 80]>>
3 <</Type/Page/Parent 2 0 R/Annots[10 0 R 11 0 R 12 0 R 13 0 R]>>
4 <</Type/Page/Parent 2 0 R/Annots[14 0 R 15 0 R 16 0 R]>>
9 <</Fields[10 0 R 11 0 R 12 0 R 13 0 R 14 0 R 15 0 R 16 0 R]/DA(0 g /Helv 7 Tf % c
 (/Helv) Tj)/CO[14 0 R]
 /DR<</Font<</Helv 50 0 R/Zapf 51 0 R/Helv_2 52 0 R/Own 53 0 R>>/ExtGState<</G 54 0 R>>
 /ColorSpace<</C[/Indexed/DeviceRGB 1<000000FF0000>]/N/DeviceGray>>/Pattern<</P 55 0 R>>>>>>
10 <</Type/Annot/Subtype/Widget/Rect[0 0 10 10]/FT/Tx/T(name)/V(y)/DA(/Helv 9 Tf /Zapf 1 Tf/G gs/C cs/C CS /P scn /P SCN)>>
11 <</Type/Annot/Subtype/Widget/Rect[0 0 11 11]/FT/Tx/T(name_2)/V(taken)>>
12 <</Type/Annot/Subtype/Widget/Rect[0 0 12 12]/FT/Tx/T<FEFF00670072006F00750070>/V(a group before)/Q 2>>
13 <</Type/Annot/Subtype/Widget/Rect[0 0 13 13]/FT/Tx/T(name)/V(twice)>>
14 <</Type/Annot/Subtype/Widget/Rect[0 0 14 14]/FT/Tx/T(fresh)/V(f)/DA(/Own 2 Tf)>>
15 <</Type/Annot/Subtype/Widget/Rect[0 0 15 15]/FT/Btn/T(choice)/A<</S/ResetForm/Fields[(name)(choice.x)<FEFF00670072006F00750070002E0061>(fresh)]>>>>
16 <</Type/Annot/Subtype/Widget/Rect[0 0 16 16]/FT/Btn/T(hide)/A<</S/Hide/T(name)/Next[<</S/Hide/T 14 0 R>><</S/JavaScript/JS(j)>>]>>>>
50 <</Type/Font/Subtype/Type1/BaseFont/Courier>>
51 <</Type/Font/Subtype/Type1/BaseFont/ZapfDingbats>>
52 <</Type/Font/Subtype/Type1/BaseFont/Times-Roman>>
53 <</Type/Font/Subtype/Type0/BaseFont/Own/ToUnicode 56 0 R>>
54 <</Type/ExtGState/CA 0.5>>
55 <</PatternType 2/Shading<</ShadingType 2/ColorSpace/DeviceGray>>>>
56 <<>> stream cmap
)")
      .Table();
}

TEST(FormTexts, OfAWholeDocument) {
  EXPECT_TRUE(IsAsExpected("copy/form_whole.txt", CopiedText({{Form()}})));
}

TEST(FormTexts, OfItsPages) {
  EXPECT_TRUE(IsAsExpected("copy/form_first_page.txt", CopiedText({{Form(), {0}}})));
  EXPECT_TRUE(IsAsExpected("copy/form_other_pages.txt", CopiedText({{Form(), {2, 1}}})));
}

TEST(FormTexts, OfPagesCopiedTwice) {
  EXPECT_TRUE(IsAsExpected("copy/form_twice.txt", CopiedText({{Form(), {0, 1, 0}}})));
}

TEST(FormTexts, OfPagesWithoutTheirFields) {
  EXPECT_TRUE(IsAsExpected("copy/form_without_fields.txt",
                           CopiedText({{Form()}}, kCopyLinks | kCopyAnnotations)));
}

TEST(FormTexts, OfDocumentsWithTheSameNames) {
  EXPECT_TRUE(IsAsExpected("copy/forms_with_the_same_names.txt",
                           CopiedText({{Form(), {0, 1}}, {OtherForm()}, {OtherForm(), {1}}})));
  EXPECT_TRUE(IsAsExpected("copy/forms_the_other_way.txt", CopiedText({{OtherForm()}, {Form()}})));
}

TEST(FormTexts, AsTheyAreSpelled) {
  EXPECT_TRUE(IsAsExpected("copy/form_as_written.txt", WrittenText({{Form()}})));
  EXPECT_TRUE(
      IsAsExpected("copy/forms_as_written.txt", WrittenText({{Form(), {0, 1}}, {OtherForm()}})));
}

TEST(FormTexts, OfOtherKeys) {
  EXPECT_TRUE(IsAsExpected("copy/form_with_other_keys.txt", KeysChangedText(Form())));
}

TEST(FormTexts, OfOtherDigits) {
  EXPECT_TRUE(IsAsExpected("copy/form_with_other_digits.txt", DigitsChangedText(Form())));
}

TEST(FormTexts, AreTheSameWhicheverObjectIsTheFirst) {
  ExpectNumbersNotToMatter(Form());
}

// Widgets that are no objects of their own, below fields with and without a type.
TEST(FormTexts, OfWidgetsWrittenInPlace) {
  const std::string bytes =
      testing::RawPdf()
          .Lines(R"(1 <</Type/Catalog/Pages 2 0 R/AcroForm<</Fields[5 0 R 6 0 R 7 0 R]>>>>
2 <</Type/Pages/Kids[3 0 R]/Count 1/MediaBox[0 0 9 9]>>
3 <</Type/Page/Parent 2 0 R/Annots[<</Subtype/Widget/Rect[0 0 1 1]/Parent 5 0 R>>
 <</Subtype/Widget/Rect[0 0 2 2]/Parent 5 0 R/FT/Tx>><</Subtype/Widget/Rect[0 0 3 3]/Parent 6 0 R>>
 <</Subtype/Widget/Rect[0 0 4 4]/Parent 7 0 R/T(below)>><</Subtype/Widget/Rect[0 0 5 5]/Parent 8 0 R>>
 <</Subtype/Widget/Rect[0 0 6 6]/T(own)>><</Subtype/Widget/Rect[0 0 7 7]/T(typed)/FT/Sig/V 3 0 R>>]>>
5 <</T(no type)>>
6 <</T(text)/FT/Tx/Ff 4096/V(v)>>
7 <</T(signed)/FT/Sig/V<</Type/Sig>>/Kids[]>>
)")
          .Table();
  EXPECT_TRUE(IsAsExpected("copy/form_in_place.txt", WrittenText({{bytes}})));
}

TEST(FormTexts, AreTheSameEncrypted) {
  ExpectEncryptionNotToMatter(Form());
}

TEST(FormTexts, AreTheSameInAnyLayout) {
  ExpectLayoutNotToMatter(Form());
}

// Every entry that pages, annotations and fields have by the standard (ISO 32000-2, tables 31, 166 to
// 199 and 226 to 235), and one more: in a page, in a field that is its own widget, and in a field and
// another below it. Where a page comes twice, a field and its widgets part.
TEST(FormTexts, OfEveryEntry) {
  std::string page;
  for (const std::string key : {"LastModified",
                                "CropBox",
                                "BleedBox",
                                "TrimBox",
                                "ArtBox",
                                "BoxColorInfo",
                                "Rotate",
                                "Group",
                                "Thumb",
                                "B",
                                "Dur",
                                "Trans",
                                "AA",
                                "Metadata",
                                "PieceInfo",
                                "ID",
                                "PZ",
                                "SeparationInfo",
                                "Tabs",
                                "UserUnit",
                                "VP",
                                "AF",
                                "OutputIntents",
                                "DPart",
                                "TemplateInstantiated",
                                "PresSteps",
                                "Hid",
                                "Count",
                                "Own"}) {
    page += "/" + key + "(p)";
  }
  std::string entries;
  for (const std::string key :
       {"Contents", "NM",   "M",    "F",     "AP",   "AS", "Border",       "C",     "OC",
        "AF",       "ca",   "CA",   "BM",    "Lang", "H",  "MK",           "BS",    "FT",
        "T",        "TU",   "TM",   "Ff",    "V",    "DV", "DA",           "Q",     "DS",
        "RV",       "Opt",  "TI",   "I",     "Lock", "SV", "MaxLen",       "Popup", "IRT",
        "RT",       "Open", "Name", "State", "RC",   "IT", "CreationDate", "Own"}) {
    entries += "/" + key + "(" + key + ")";
  }
  std::string events = "/AA<<";
  for (const char* event :
       {"E", "X", "D", "U", "Fo", "Bl", "PO", "PC", "PV", "PI", "K", "F", "V", "C", "Own"}) {
    events += std::string("/") + event + "<</S/JavaScript/JS(" + event + ")>>";
  }
  events += ">>";
  const auto form = [&](const std::string& type) {
    const std::string typed = entries.substr(0, entries.find("/FT(")) + "/FT/" + type +
                              entries.substr(entries.find("/T("));
    return testing::RawPdf()
        .Object(1, "<</Type/Catalog/Pages 2 0 R/AcroForm<</Fields[4 0 R 5 0 R]>>>>")
        .Object(2, "<</Type/Pages/Kids[3 0 R]/Count 1/MediaBox[0 0 9 9]>>")
        .Object(3, "<</Type/Page/Parent 2 0 R/Annots[4 0 R 6 0 R 7 0 R]" + page + ">>")
        .Object(4, "<</Type/Annot/Subtype/Widget/Rect[0 0 1 1]" + typed + events + ">>")
        .Object(5, "<</Kids[6 0 R]" + typed + events + ">>")
        .Object(6,
                "<</Type/Annot/Subtype/Widget/Rect[0 0 2 2]/Parent 5 0 R" + entries + events + ">>")
        .Object(7, "<</Type/Annot/Subtype/Stamp/Rect[0 0 3 3]" + entries + events + ">>")
        .Table();
  };
  EXPECT_TRUE(IsAsExpected("copy/every_entry.txt",
                           WrittenText({{form("Tx"), {0, 0}}}) + WrittenText({{form("Sig")}})));
}

}  // namespace
}  // namespace TarnixTools::engines::toolbox
