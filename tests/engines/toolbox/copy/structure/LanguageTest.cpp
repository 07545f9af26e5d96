// The language of text that copied pages keep.
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engines/toolbox/copy/CopiedDocument.h"
#include "support/RawPdf.h"

namespace TarnixTools::engines::toolbox {
namespace {

using pdf::Object;
using ::TarnixTools::testing::RawPdf;
using ::testing::ElementsAre;

std::string Catalog(const std::string& language, const std::string& entries) {
  return "<</Type/Catalog/Pages 2 0 R" + (language.empty() ? "" : "/Lang " + language) + entries +
         ">>";
}

std::string Untagged(const std::string& language) {
  return RawPdf().Pages(2).Object(1, Catalog(language, "")).Table();
}

// Each of two pages has a paragraph, both of them in an element with the entries.
std::string Tagged(const std::string& language, const std::string& entries = "") {
  RawPdf pdf;
  pdf.Pages(2).Object(1, Catalog(language, "/StructTreeRoot 20 0 R/MarkInfo<</Marked true>>"));
  for (const char* key : {"0", "1"}) {
    pdf.Object(
        3 + (key[0] - '0'),
        std::string("<</Type/Page/Parent 2 0 R/MediaBox[0 0 9 9]/StructParents ") + key + ">>");
  }
  return pdf.Object(20, "<</Type/StructTreeRoot/K 21 0 R/ParentTree<</Nums[0[22 0 R]1[23 0 R]]>>>>")
      .Object(21, "<</Type/StructElem/S/Sect/P 20 0 R/K[22 0 R 23 0 R]" + entries + ">>")
      .Object(22, "<</Type/StructElem/S/P/P 21 0 R/Pg 3 0 R/K 0>>")
      .Object(23, "<</Type/StructElem/S/P/P 21 0 R/Pg 4 0 R/K 0>>")
      .Table();
}

class Languages : public CopiedDocument {
 public:
  using CopiedDocument::CopiedDocument;

  std::string InCatalog() { return Text(Get(Catalog(), "Lang")); }

  // What the topmost elements of the sources say.
  std::vector<std::string> OfSources() {
    const Object root = Get(Catalog(), "StructTreeRoot");
    Object first = Get(root, "K");
    if (first.Get("S").IsName("Sect")) {
      return {Text(first.Get("Lang"))};
    }
    std::vector<std::string> languages;
    for (const Object& kid : first.Get("K").Items()) {
      languages.push_back(Text(Follow(kid).Get("Lang")));
    }
    return languages;
  }

  std::uint64_t Lost() const {
    return Reported(TPdfCopiedKind::kLanguage, TPdfCopyOutcome::kDropped);
  }
};

TEST(Language, StaysWithAPieceOfADocument) {
  Languages tagged({{Tagged("(de)"), {1}}});
  EXPECT_EQ(tagged.InCatalog(), "(de)");
  EXPECT_THAT(tagged.OfSources(), ElementsAre("null"));
  EXPECT_EQ(tagged.Reported(TPdfCopiedKind::kLanguage, TPdfCopyOutcome::kKept), 1U);
  EXPECT_EQ(Languages({{Untagged("(de)"), {0}}}).InCatalog(), "(de)");
}

TEST(Language, IsTheCatalogsWhereAllSourcesAgree) {
  Languages copy({{Tagged("(de-AT)")}, {Untagged("<64652D6174>"), {0}}, {Tagged("(DE-at)"), {1}}});
  EXPECT_EQ(copy.InCatalog(), "(de-AT)");
  EXPECT_THAT(copy.OfSources(), ElementsAre("null", "null"));
}

TEST(Language, IsTheSameInSmallLetters) {
  const auto common = [](const std::string& first, const std::string& second) {
    return Languages({{Untagged("(" + first + ")")}, {Untagged("(" + second + ")")}}).InCatalog();
  };
  EXPECT_EQ(common("ZA", "za"), "(ZA)");
  EXPECT_EQ(common("az", "AZ"), "(az)");
  EXPECT_EQ(common("a[", "a{"), "null");
  EXPECT_EQ(common("a@", "a`"), "null");
  EXPECT_EQ(common("de", "de-AT"), "null");
}

TEST(Language, IsTheElementsWhereSourcesDiffer) {
  Languages copy({{Tagged("(de)")}, {Tagged("(fr)"), {0}}, {Tagged("(de)", "/Lang(it)")}});
  EXPECT_EQ(copy.InCatalog(), "null");
  EXPECT_THAT(copy.OfSources(), ElementsAre("(de)", "(fr)", "(it)"));
  EXPECT_EQ(copy.Lost(), 0U);
}

TEST(Language, OfTaggedTextIsNotGivenToTextThatHasNone) {
  Languages copy({{Tagged("(de)")}, {Untagged("")}, {Tagged("")}});
  EXPECT_EQ(copy.InCatalog(), "null");
  EXPECT_THAT(copy.OfSources(), ElementsAre("(de)", "null"));
}

TEST(Language, OfUntaggedTextTakesTheCatalog) {
  Languages copy({{Tagged("(de)")}, {Untagged("(fr)")}, {Tagged("")}, {Tagged("(fr)")}});
  EXPECT_EQ(copy.InCatalog(), "(fr)");
  EXPECT_THAT(copy.OfSources(), ElementsAre("(de)", "()", "null")) << "() is no known language";
  EXPECT_EQ(copy.Lost(), 0U);
  EXPECT_EQ(copy.Reported(TPdfCopiedKind::kLanguage, TPdfCopyOutcome::kKept), 3U);
}

TEST(Language, OfUntaggedTextsThatDifferIsReportedAsLost) {
  Languages copy({{Untagged("(de)")}, {Untagged("(fr)")}, {Tagged("(it)")}});
  EXPECT_EQ(copy.InCatalog(), "null");
  EXPECT_THAT(copy.OfSources(), ElementsAre("(it)"));
  EXPECT_EQ(copy.Lost(), 2U);
}

TEST(Language, OfPagesWithoutTagsInATaggedDocumentTakesTheCatalog) {
  std::string bytes = Tagged("(de)");
  bytes.replace(bytes.find("/Pg 4 0 R/K 0"), 13, "/Pg 4 0 R    ");
  Languages copy({{bytes, {1}}, {Tagged("(fr)"), {0}}});
  EXPECT_EQ(copy.InCatalog(), "(de)");
  EXPECT_THAT(copy.OfSources(), ElementsAre("(fr)"));
}

TEST(Language, OfManyTopmostElementsNeedsNoMemoryForAllOfThem) {
  constexpr int kCount = 100;
  std::string kids;
  RawPdf pdf;
  pdf.Pages(1, "/MediaBox[0 0 9 9]/StructParents 0")
      .Object(1, Catalog("(de)", "/StructTreeRoot 20 0 R"));
  for (int i = 0; i < kCount; ++i) {
    kids += std::to_string(21 + i) + " 0 R ";
    pdf.Object(21 + i, "<</Type/StructElem/S/P/P 20 0 R/Pg 3 0 R/K " + std::to_string(i) + "/Alt(" +
                           std::string(100'000, 'x') + ")>>");
  }
  pdf.Object(20, "<</Type/StructTreeRoot/K[" + kids + "]>>");
  Languages copy({{pdf.Table()}});
  EXPECT_EQ(copy.InCatalog(), "(de)");
  const int naming =
      copy.Count([](const Object& o) { return o.Get("S").IsName("P") && o.Has("Lang"); });
  EXPECT_GT(naming, 0);
  EXPECT_LT(naming, kCount);
}

}  // namespace
}  // namespace TarnixTools::engines::toolbox
