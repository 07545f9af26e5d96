// What copies keep of what a document says of itself as a whole.
#include <gtest/gtest.h>

#include "engines/toolbox/copy/ChangedSources.h"
#include "engines/toolbox/copy/CopiedText.h"
#include "support/RawPdf.h"

namespace TarnixTools::engines::toolbox {
namespace {

using testing::IsAsExpected;

constexpr const char* kAllPreferences =
    "/HideToolbar true/HideMenubar true/HideWindowUI false/FitWindow true/CenterWindow true"
    "/DisplayDocTitle true/NonFullScreenPageMode/UseOC/Direction/R2L/ViewArea/CropBox"
    "/ViewClip/CropBox/PrintArea/MediaBox/PrintClip/MediaBox/PrintScaling/None/Duplex/Simplex"
    "/PickTrayByPDFSize true/PrintPageRange[1 2]/NumCopies 2/Enforce[/PrintScaling]"
    "/Own true";

// Two pages; the entries are the catalog's.
std::string Settings(const std::string& entries) {
  return testing::RawPdf()
      .Lines("1 <</Type/Catalog/Pages 2 0 R" + entries + R"(>>
2 <</Type/Pages/Kids[3 0 R 4 0 R]/Count 2/MediaBox[0 0 90 80]>>
3 <</Type/Page/Parent 2 0 R/Thumb 30 0 R/B[31 0 R]/AA<</O<</S/Named/N/NextPage>>>>/Annots[32 0 R]>>
4 <</Type/Page/Parent 2 0 R/AF[10 0 R]/PieceInfo<</Own<</Private(x)>>>>/Tabs/S/UserUnit 2/Dur 3/Group<</S/Transparency>>>>
10 <</Type/Filespec/F(a.txt)/UF<FEFF0061002E007400780074>/Desc(first)/EF<</F 20 0 R/UF 20 0 R>>/AFRelationship/Data>>
11 <</Type/Filespec/F(dir/a.b/c)/EF<</Unix 21 0 R>>>>
12 <</Type/Filespec/Unix(.profile)/Mac(x.y)/DOS(D.E)/EF<</DOS 22 0 R>>/F()>>
13 <</Type/Filespec/F(none.txt)/EF<</F 99 0 R>>>>
14 <</Type/Filespec/F(page.txt)/EF<</F 3 0 R>>>>
20 <</Type/EmbeddedFile/Subtype/text#2Fplain/Params<</Size 4>>>> stream data
21 <</Type/EmbeddedFile>> stream more
22 <</Type/EmbeddedFile>> stream most
25 <</Type/OutputIntent/S/GTS_PDFX/OutputConditionIdentifier(CGATS)>>
26 <</F 31 0 R/I<</Title(thread)>>>>
30 <</Width 1/Height 1/ColorSpace/DeviceGray/BitsPerComponent 8>> stream x
31 <</T 26 0 R/P 3 0 R/R[0 0 9 9]/N 31 0 R/V 31 0 R>>
32 <</Type/Annot/Subtype/FileAttachment/Rect[0 0 1 1]/FS 11 0 R>>
)")
      .Table();
}

std::string Everything() {
  return Settings(
      "/Lang(de-DE)/URI<</Base(http://a/)>>/Version/2.0/PageMode/UseAttachments"
      "/PageLayout/TwoColumnRight/ViewerPreferences<<" +
      std::string(kAllPreferences) +
      ">>/Extensions<</Type/Extensions/ADBE<</BaseVersion/1.7/ExtensionLevel 3>>"
      "/ISO_[<</BaseVersion/2.0/ExtensionLevel 1>><</BaseVersion/2.0/ExtensionLevel 9>>]"
      "/No 3>>/OpenAction[4 0 R/XYZ 1 2 3]/OutputIntents[25 0 R<</S/Own>>7 98 0 R]"
      "/AF[10 0 R 11 0 R]/Threads[26 0 R]/AA<</WC<</S/Named/N/A>>/WS<</S/Named/N/B>>>>"
      "/Collection<</View/T/D(a)>>/MarkInfo<</Suspects true/UserProperties true>>"
      "/Names<</EmbeddedFiles<</Names[(a)10 0 R(b)11 0 R(c.d)12 0 R(e)13 0 R(f)14 0 R"
      "(g)<</F(g.txt)/EF<</F 21 0 R>>>>(a)10 0 R(h)10 0 R]>>"
      "/JavaScript<</Names[(s)<</S/JavaScript/JS(x)>>(t)<</S/JavaScript/JS(y)>>]>>>>");
}

std::string Others() {
  return Settings(
      "/Lang(DE-de)/URI<</Base(http://b/)>>/Version/1.3/PageMode/FullScreen"
      "/PageLayout/SinglePage/ViewerPreferences<</HideToolbar false>>"
      "/Extensions<</ADBE<</BaseVersion/1.7/ExtensionLevel 8>>"
      "/ISO_<</BaseVersion/1.7/ExtensionLevel 99>>/GWG<</BaseVersion/1.6>>>>"
      "/OpenAction<</S/JavaScript/JS(x)>>/OutputIntents<</S/Second>>/AF 12 0 R"
      "/MarkInfo<</Marked true>>"
      "/Names<</EmbeddedFiles<</Names[(a)10 0 R(a \\(2\\))11 0 R(c.d)12 0 R(z)21 0 R]>>>>");
}

TEST(SettingTexts, OfAWholeDocument) {
  EXPECT_TRUE(IsAsExpected("copy/settings_whole.txt", CopiedText({{Everything()}})));
}

TEST(SettingTexts, OfItsPages) {
  EXPECT_TRUE(IsAsExpected("copy/settings_first_page.txt", CopiedText({{Everything(), {0}}})));
  EXPECT_TRUE(IsAsExpected("copy/settings_turned_round.txt", CopiedText({{Everything(), {1, 0}}})));
}

TEST(SettingTexts, OfSeveralDocuments) {
  EXPECT_TRUE(IsAsExpected("copy/settings_of_two.txt", CopiedText({{Everything()}, {Others()}})));
  EXPECT_TRUE(IsAsExpected("copy/settings_of_the_second.txt",
                           CopiedText({{Everything(), {1}}, {Others()}, {Everything()}})));
}

// What the entries of a copy's catalog are for these of its source.
std::string CopiedEntries(const std::string& entries) {
  CopiedDocument copy({{Settings(entries)}});
  std::string text = WrittenDocument::Text(copy.Catalog());
  EXPECT_TRUE(text.starts_with("<</Type/Catalog/Pages ")) << text;
  text.erase(0, text.find(" R", 22) + 2);
  return text.substr(0, text.size() - 2);
}

TEST(SettingTexts, OfEachPageModeAndLayout) {
  for (const char* mode : {"UseNone", "UseThumbs", "FullScreen"}) {
    EXPECT_EQ(CopiedEntries("/PageMode/" + std::string(mode)), "/PageMode/" + std::string(mode));
  }
  for (const char* mode : {"UseOutlines", "UseOC", "UseAttachments", "Own"}) {
    EXPECT_EQ(CopiedEntries("/PageMode/" + std::string(mode)), "");
  }
  for (const char* layout : {"SinglePage", "OneColumn", "TwoColumnLeft", "TwoColumnRight",
                             "TwoPageLeft", "TwoPageRight"}) {
    const std::string entry = "/PageLayout/" + std::string(layout);
    EXPECT_EQ(CopiedEntries(entry), entry);
  }
  EXPECT_EQ(CopiedEntries("/PageLayout/Own"), "");
  EXPECT_EQ(CopiedEntries("/PageLayout(SinglePage)/PageMode(UseNone)"), "");
}

TEST(SettingTexts, OfPreferencesThatArePlain) {
  EXPECT_EQ(CopiedEntries("/ViewerPreferences<</HideToolbar(x)/NumCopies 1.5/Duplex<<>>>>"), "");
  EXPECT_EQ(CopiedEntries("/ViewerPreferences<</Enforce[/A(x)]/HideToolbar 1>>"),
            "/ViewerPreferences<</HideToolbar 1>>");
}

TEST(SettingTexts, OfPlacesToOpenAt) {
  CopiedDocument named({{Settings("/OpenAction<</S/GoTo/D/there>>/Dests<</there[4 0 R/Fit]>>")}});
  EXPECT_EQ(WrittenDocument::Text(named.Follow(named.Catalog().Get("OpenAction"))),
            "<</S/GoTo/D(there)>>");
  EXPECT_EQ(CopiedEntries("/OpenAction(nowhere)"), "");
  EXPECT_EQ(CopiedEntries("/OpenAction[9 0 R/Fit]"), "");
  EXPECT_EQ(CopiedEntries("/OpenAction<</S/URI/URI(x)>>"), "");
}

TEST(SettingTexts, OfLanguagesAndAddresses) {
  EXPECT_EQ(CopiedEntries("/Lang()/URI<</Base()>>"), "");
  EXPECT_EQ(CopiedEntries("/Lang/de/URI<</Base/x>>"), "");
  EXPECT_EQ(CopiedEntries("/Lang<6465>/URI<</Base(x)>>"), "/Lang(de)/URI<</Base(x)>>");
}

TEST(SettingTexts, AsTheyAreSpelled) {
  EXPECT_TRUE(
      IsAsExpected("copy/settings_as_written.txt", WrittenText({{Everything()}, {Others()}})));
}

TEST(SettingTexts, OfOtherKeys) {
  EXPECT_TRUE(IsAsExpected("copy/settings_with_other_keys.txt", KeysChangedText(Everything())));
}

TEST(SettingTexts, OfOtherDigits) {
  EXPECT_TRUE(IsAsExpected("copy/settings_with_other_digits.txt", DigitsChangedText(Everything())));
}

TEST(SettingTexts, AreTheSameWhicheverObjectIsTheFirst) {
  ExpectNumbersNotToMatter(Everything());
}

TEST(SettingTexts, AreTheSameEncrypted) {
  ExpectEncryptionNotToMatter(Everything());
}

TEST(SettingTexts, AreTheSameInAnyLayout) {
  ExpectLayoutNotToMatter(Everything());
}

}  // namespace
}  // namespace TarnixTools::engines::toolbox
