#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "engines/toolbox/copy/CopiedDocument.h"
#include "engines/toolbox/copy/settings/DocumentSettings.h"
#include "support/TestPdf.h"

namespace TarnixTools::engines::toolbox {
namespace {

using pdf::Object;
using ::TarnixTools::testing::TestPdf;

std::string FileWith(const std::string& catalog_entries, int page_count = 2) {
  return TestPdf().Pages(page_count).CatalogEntry(catalog_entries).Bytes();
}

class Settings : public CopiedDocument {
 public:
  using CopiedDocument::CopiedDocument;

  std::string InCatalog(std::string_view key) { return Text(Get(Catalog(), key)); }
};

constexpr const char* kEverything =
    "/Lang(de)/PageMode/FullScreen/PageLayout/TwoPageLeft/URI<</Base(http://x/)>>"
    "/ViewerPreferences<</FitWindow true/PrintPageRange[0 1]>>"
    "/Extensions<</ADBE<</BaseVersion/1.7/ExtensionLevel 3>>>>";

TEST(DocumentSettings, ComeWithAWholeDocument) {
  Settings copy({{FileWith(kEverything)}});
  EXPECT_EQ(copy.InCatalog("Lang"), "(de)");
  EXPECT_EQ(copy.InCatalog("PageMode"), "/FullScreen");
  EXPECT_EQ(copy.InCatalog("PageLayout"), "/TwoPageLeft");
  EXPECT_EQ(copy.InCatalog("URI"), "<</Base(http://x/)>>");
  EXPECT_EQ(copy.InCatalog("ViewerPreferences"), "<</FitWindow true/PrintPageRange[0 1]>>");
  EXPECT_EQ(copy.InCatalog("Extensions"), "<</ADBE<</BaseVersion/1.7/ExtensionLevel 3>>>>");
  EXPECT_EQ(copy.Reported(TPdfCopiedKind::kViewerSettings, TPdfCopyOutcome::kKept), 3U);
}

TEST(DocumentSettings, StayBehindWhenAPageDoes) {
  Settings copy({{FileWith(kEverything), {0}}});
  for (const char* key : {"PageMode", "PageLayout", "ViewerPreferences"}) {
    EXPECT_FALSE(copy.Catalog().Has(key)) << key;
  }
  EXPECT_EQ(copy.InCatalog("URI"), "<</Base(http://x/)>>");  // the page's links need it
  EXPECT_EQ(copy.InCatalog("Lang"), "(de)");                 // its text has it
  EXPECT_EQ(copy.InCatalog("Extensions"), "<</ADBE<</BaseVersion/1.7/ExtensionLevel 3>>>>");
}

TEST(DocumentSettings, DropPrintRangesThatCountOtherPages) {
  Settings turned({{FileWith(kEverything), {1, 0}}});
  EXPECT_EQ(turned.InCatalog("ViewerPreferences"), "<</FitWindow true>>");
  Settings merged({{FileWith(kEverything)}, {FileWith("")}});
  EXPECT_EQ(merged.InCatalog("ViewerPreferences"), "<</FitWindow true>>");
}

TEST(DocumentSettings, OfSeveralComeFromTheFirstThatIsWhole) {
  Settings copy({{FileWith("/PageLayout/OneColumn"), {0}},
                 {FileWith("/PageLayout/TwoPageLeft")},
                 {FileWith("/PageLayout/SinglePage/PageMode/UseThumbs")}});
  EXPECT_EQ(copy.InCatalog("PageLayout"), "/TwoPageLeft");
  EXPECT_FALSE(copy.Catalog().Has("PageMode"));
}

TEST(DocumentSettings, KeepALanguageThatNoSourceContradicts) {
  const auto language_of = [](const std::vector<std::string>& languages) {
    std::vector<PagesOf> sources;
    for (const std::string& language : languages) {
      sources.push_back({FileWith(language.empty() ? "" : "/Lang(" + language + ")")});
    }
    return Settings(sources).InCatalog("Lang");
  };
  EXPECT_EQ(language_of({"de", "de"}), "(de)");
  EXPECT_EQ(language_of({"", "de", ""}), "(de)");
  EXPECT_EQ(language_of({"de", "fr", "de"}), "null");
  EXPECT_EQ(language_of({"de", "fr", "fr"}), "null");
  EXPECT_EQ(language_of({"", ""}), "null");
}

TEST(DocumentSettings, KeepTheHighestLevelOfAnExtension) {
  const auto file = [](const std::string& version, const std::string& level) {
    return FileWith("/Extensions<</ADBE<</BaseVersion/" + version + "/ExtensionLevel " + level +
                    ">>/ISO_[<</BaseVersion/" + version + "/ExtensionLevel " + level + ">>7]>>");
  };
  Settings copy({{file("1.7", "3"), {0}}, {file("1.7", "8"), {1}}, {file("1.6", "9")}});
  EXPECT_EQ(copy.InCatalog("Extensions"),
            "<</ADBE<</BaseVersion/1.7/ExtensionLevel 8>>"
            "/ISO_[<</BaseVersion/1.7/ExtensionLevel 8>>7]>>");
}

TEST(DocumentSettings, KeepABaseAddressThatAllSourcesShare) {
  const std::string x = FileWith("/URI<</Base(x)>>");
  const std::string y = FileWith("/URI<</Base(y)>>");
  EXPECT_TRUE(Settings({{x}, {x}}).Catalog().Has("URI"));
  EXPECT_FALSE(Settings({{x}, {y}}).Catalog().Has("URI"));
  EXPECT_FALSE(Settings({{FileWith("")}, {y}}).Catalog().Has("URI"));
  EXPECT_FALSE(Settings({{x}, {y}, {y}}).Catalog().Has("URI"));
}

TEST(DocumentSettings, KeepAPageModeOnlyWhereItHasSomethingToShow) {
  EXPECT_EQ(Settings({{FileWith("/PageMode/UseOutlines")}}).InCatalog("PageMode"), "null");
  EXPECT_EQ(Settings({{FileWith("/PageMode/UseAttachments")}}).InCatalog("PageMode"), "null");
  EXPECT_EQ(Settings({{FileWith("/PageMode/UseOC")}}).InCatalog("PageMode"), "null");
  const std::string layers = TestPdf()
                                 .Pages(1)
                                 .Object("a", "<</Type/OCG/Name(a)>>")
                                 .CatalogEntry("/PageMode/UseOC/OCProperties<</OCGs[{{a}}]/D<<>>>>")
                                 .Bytes();
  EXPECT_EQ(Settings({{layers}}).InCatalog("PageMode"), "/UseOC");
}

TEST(DocumentSettings, KeepEveryLayoutAndPreferenceOfTheStandard) {
  for (const char* layout : {"/SinglePage", "/OneColumn", "/TwoColumnLeft", "/TwoColumnRight",
                             "/TwoPageLeft", "/TwoPageRight"}) {
    EXPECT_EQ(Settings({{FileWith("/PageLayout" + std::string(layout))}}).InCatalog("PageLayout"),
              layout);
  }
  for (const char* mode : {"/UseThumbs", "/FullScreen"}) {
    EXPECT_EQ(Settings({{FileWith("/PageMode" + std::string(mode))}}).InCatalog("PageMode"), mode);
  }
  const std::string preferences =
      "<</HideToolbar true/HideMenubar true/HideWindowUI true/FitWindow true/CenterWindow true"
      "/DisplayDocTitle true/NonFullScreenPageMode/UseThumbs/Direction/R2L/ViewArea/CropBox"
      "/ViewClip/CropBox/PrintArea/CropBox/PrintClip/CropBox/PrintScaling/None/Duplex/Simplex"
      "/PickTrayByPDFSize true/NumCopies 2/Enforce[/PrintScaling]>>";
  EXPECT_EQ(
      Settings({{FileWith("/ViewerPreferences" + preferences)}}).InCatalog("ViewerPreferences"),
      preferences);
}

TEST(DocumentSettings, LeaveOutWhatViewersDoNotKnow) {
  Settings copy(
      {{FileWith("/PageMode/Fancy/PageLayout 7/Lang/de"
                 "/ViewerPreferences<</Direction/R2L/Enforce[/PrintScaling]"
                 "/Other true/HideMenubar{{page 1}}/FitWindow<</A 1>>/NumCopies 2>>")}});
  EXPECT_FALSE(copy.Catalog().Has("PageMode"));
  EXPECT_FALSE(copy.Catalog().Has("PageLayout"));
  EXPECT_FALSE(copy.Catalog().Has("Lang"));
  EXPECT_EQ(copy.InCatalog("ViewerPreferences"),
            "<</Direction/R2L/Enforce[/PrintScaling]/NumCopies 2>>");
}

TEST(DocumentSettings, KeepOutputIntentsOfTheFirst) {
  const auto file = [](const std::string& name) {
    return TestPdf()
        .Pages(1)
        .Object("profile", "<</N 3/Length 5>>\nstream\n" + name + "\nendstream")
        .Object("intent", "<</S/GTS_PDFA1/DestOutputProfile {{profile}}>>")
        .CatalogEntry("/OutputIntents[{{intent}} <</S/GTS_PDFX>> 7 null]")
        .Bytes();
  };
  Settings copy({{file("first")}, {file("other")}});
  const auto intents = copy.Catalog().Get("OutputIntents").Items();
  ASSERT_EQ(intents.size(), 2U);
  EXPECT_EQ(copy.Data(copy.Follow(intents[0]).Get("DestOutputProfile")), "first");
  EXPECT_TRUE(intents[1].Get("S").IsName("GTS_PDFX"));
  EXPECT_EQ(copy.Reported(TPdfCopiedKind::kOutputIntent, TPdfCopyOutcome::kKept), 2U);
}

TEST(DocumentSettings, SayWhenASourceIsPdf2) {
  std::string header = FileWith("");
  header[5] = '2';
  header[7] = '0';
  EXPECT_EQ(Settings({{header}}).InCatalog("Version"), "/2.0");
  EXPECT_EQ(Settings({{FileWith("")}, {header, {0}}}).InCatalog("Version"), "/2.0");
  EXPECT_EQ(Settings({{FileWith("/Version/2.0")}}).InCatalog("Version"), "/2.0");
  EXPECT_EQ(Settings({{FileWith("/Version/1.5")}}).InCatalog("Version"), "null");
  EXPECT_EQ(Settings({{FileWith("/Version/1.9")}}).InCatalog("Version"), "null");
  EXPECT_EQ(Settings({{FileWith("/Version/2.1")}, {header}}).InCatalog("Version"), "/2.1");
}

TEST(DocumentSettings, NeedNoVersionWhereTheHeaderSaysIt) {
  const TPdfEncryption encryption{L"", L"owner", 3900};
  const std::string bytes = CopyAll({{FileWith("/Version/2.0")}}, 15, nullptr, &encryption);
  EXPECT_TRUE(bytes.starts_with("%PDF-2.0"));
  const auto document = pdf::Document::Open(std::make_unique<pdf::MemorySource>(bytes), "");
  pdf::Arena arena;
  EXPECT_FALSE(document->Catalog(arena).Has("Version"));
}

TEST(DocumentSettings, LeaveScriptsAndPrivateDataBehind) {
  Settings copy({{FileWith(
      "/OpenAction<</S/JavaScript/JS(x)>>/AA<</WC<</S/JavaScript/JS(y)>>/DP<</S/Named/N/Print>>>>"
      "/Names<</JavaScript<</Names[(a)<</S/JavaScript/JS(z)>>(b)<<>>]>>/URLS<</Names[]>>>>"
      "/Metadata{{page 1}}/Perms<<>>/Legal<<>>/PieceInfo<<>>/SpiderInfo<<>>/Requirements[]"
      "/DPartRoot<<>>/Threads[<<>><<>>]")}});
  for (const char* key : {"OpenAction", "AA", "Names", "Metadata", "Perms", "Legal", "PieceInfo",
                          "SpiderInfo", "Requirements", "DPartRoot", "Threads"}) {
    EXPECT_FALSE(copy.Catalog().Has(key)) << key;
  }
  EXPECT_EQ(copy.bytes().find("/JS"), std::string::npos);
  EXPECT_EQ(copy.Reported(TPdfCopiedKind::kScript, TPdfCopyOutcome::kDropped), 5U);
  EXPECT_EQ(copy.Reported(TPdfCopiedKind::kArticleThread, TPdfCopyOutcome::kDropped), 2U);
}

// An action that names a place, of a document whose second page has the name "there".
std::string OpensAt(const std::string& action) {
  return FileWith("/OpenAction " + action +
                  "/Names<</Dests<</Names[(there)[{{page 2}}/FitH 7]]>>>>/Dests<</there 5>>");
}

TEST(DocumentSettings, OpenWhereAWholeDocumentDoes) {
  const auto opening = [](const std::string& action) {
    Settings copy({{OpensAt(action), {1, 0}}});
    EXPECT_EQ(copy.Reported(TPdfCopiedKind::kViewerSettings, TPdfCopyOutcome::kKept), 1U) << action;
    EXPECT_EQ(copy.Reported(TPdfCopiedKind::kViewerSettings, TPdfCopyOutcome::kDropped), 0U);
    const Object value = copy.Get(copy.Catalog(), "OpenAction");
    const Object place = copy.Follow(value.IsDictionary() ? value.Get("D") : value);
    EXPECT_EQ(value.Get("S").IsName("GoTo"), value.IsDictionary());
    return place.IsString() ? std::string(place.Text()) : copy.Place(place);
  };
  EXPECT_EQ(opening("[{{page 2}}/XYZ 1 2 null]"), "0/XYZ 1 2 null");
  EXPECT_EQ(opening("[0/Fit]"), "1/Fit");
  EXPECT_EQ(opening("<</S/GoTo/D[{{page 1}}/FitB]>>"), "1/FitB");
  EXPECT_EQ(opening("<</Type/Action/S/GoTo/D(there)>>"), "there");
  EXPECT_EQ(opening("(there)"), "there");
}

TEST(DocumentSettings, OpenAtThePlaceWithoutWhatFollows) {
  Settings copy({{OpensAt("<</S/GoTo/D[1/Fit]/Next<</S/JavaScript/JS(x)>>>>")}});
  EXPECT_EQ(copy.Place(copy.Get(copy.Catalog(), "OpenAction").Get("D")), "1/Fit");
  EXPECT_EQ(copy.bytes().find("/JS"), std::string::npos);
  EXPECT_EQ(copy.Reported(TPdfCopiedKind::kScript, TPdfCopyOutcome::kDropped), 1U);
}

TEST(DocumentSettings, OpenWhereTheFirstDocumentDoes) {
  Settings merged({{OpensAt("[1/Fit]")}, {OpensAt("[0/Fit]")}});
  EXPECT_EQ(merged.Place(merged.Catalog().Get("OpenAction")), "1/Fit");
  EXPECT_EQ(merged.Reported(TPdfCopiedKind::kViewerSettings, TPdfCopyOutcome::kDropped), 1U);
  EXPECT_FALSE(Settings({{FileWith("")}, {OpensAt("[0/Fit]")}}).Catalog().Has("OpenAction"));
  EXPECT_FALSE(Settings({{OpensAt("[0/Fit]"), {0}}}).Catalog().Has("OpenAction"));
}

TEST(DocumentSettings, ReportAnOpeningViewThatLeadsNowhere) {
  for (const char* opening : {"[9/Fit]", "<</S/GoTo/D(x)>>", "(name)", "[]", "<<>>"}) {
    Settings copy({{OpensAt(opening)}});
    EXPECT_FALSE(copy.Catalog().Has("OpenAction")) << opening;
    EXPECT_EQ(copy.Reported(TPdfCopiedKind::kViewerSettings, TPdfCopyOutcome::kDropped), 1U);
    EXPECT_EQ(copy.Reported(TPdfCopiedKind::kScript, TPdfCopyOutcome::kDropped), 0U);
  }
}

TEST(DocumentSettings, SurviveValuesOfAnyType) {
  for (const char* value :
       {"7", "[7 [] <<>>]", "(a)", "99 0 R", "1 0 R", "2 0 R", "<</A 1 0 R>>"}) {
    std::string entries;
    for (const char* key :
         {"Lang", "PageMode", "PageLayout", "ViewerPreferences", "OutputIntents", "Extensions",
          "URI", "Version", "Names", "AF", "Collection", "OpenAction", "AA", "Threads"}) {
      entries += std::string("/") + key + " " + value;
    }
    Settings copy({{FileWith(entries)}, {FileWith(entries)}});
    EXPECT_EQ(copy.PageCount(), 4U) << value;
  }
}

}  // namespace
}  // namespace TarnixTools::engines::toolbox
