// What a document may make a copy do, on both sides of each bound.
#include <string>

#include <gtest/gtest.h>

#include "engines/toolbox/copy/CopiedDocument.h"
#include "support/RawPdf.h"

namespace TarnixTools::engines::toolbox {
namespace {

using testing::RawPdf;

std::string WithCatalog(const std::string& entries, const std::string& objects = "",
                        const std::string& page_entries = "/MediaBox[0 0 9 9]") {
  return RawPdf()
      .Pages(1, page_entries)
      .Object(1, "<</Type/Catalog/Pages 2 0 R" + entries + ">>")
      .Lines(objects)
      .Table();
}

std::string Repeated(const std::string& text, int count) {
  std::string all;
  for (int i = 0; i < count; ++i) {
    all += text;
  }
  return all;
}

int CountOf(const std::string& text, const std::string& part) {
  int count = 0;
  for (std::size_t at = 0; (at = text.find(part, at)) != std::string::npos; ++at) {
    ++count;
  }
  return count;
}

// An object that the catalog of the copy refers to, as text.
std::string CopiedEntry(const std::vector<PagesOf>& parts, const char* key) {
  CopiedDocument copy(parts);
  return WrittenDocument::Text(copy.Follow(copy.Catalog().Get(key)));
}

TEST(CopyBounds, OfPrefixesOfPageLabels) {
  const auto copied = [](std::size_t size) {
    return CopiedEntry(
        {{WithCatalog("/PageLabels<</Nums[0<</P(" + std::string(size, 'x') + ")>>]>>")}},
        "PageLabels");
  };
  EXPECT_EQ(copied(4096), "<</Nums[0<</P(" + std::string(4096, 'x') + ")>>]>>");
  EXPECT_EQ(copied(4097), "<</Nums[0<<>>]>>");
}

TEST(CopyBounds, OfNumbersOfPageLabels) {
  const auto copied = [](const std::string& start) {
    return CopiedEntry({{WithCatalog("/PageLabels<</Nums[0<</S/D/St " + start + ">>]>>")}},
                       "PageLabels");
  };
  EXPECT_EQ(copied("0"), "<</Nums[0<</S/D>>]>>");
  EXPECT_EQ(copied("2"), "<</Nums[0<</S/D/St 2>>]>>");
  EXPECT_EQ(copied("2147483647"), "<</Nums[0<</S/D/St 2147483647>>]>>");
  EXPECT_EQ(copied("2147483648"), "<</Nums[0<</S/D/St 2147483647>>]>>");
}

TEST(CopyBounds, OfLevelsOfTheOutline) {
  const auto levels = [](int count) {
    std::string objects = "10 <</First 11 0 R/Last 11 0 R>>\n";
    for (int i = 1; i <= count; ++i) {
      const std::string next = std::to_string(11 + i) + " 0 R";
      objects += std::to_string(10 + i) + " <</Title(t)/Dest[3 0 R/Fit]" +
                 (i < count ? "/First " + next + "/Last " + next : "") + ">>\n";
    }
    CopiedDocument copy({{WithCatalog("/Outlines 10 0 R", objects)}});
    int depth = 0;
    pdf::Object item = copy.Follow(copy.Catalog().Get("Outlines"));
    while (item.Has("First")) {
      item = copy.Follow(item.Get("First"));
      ++depth;
    }
    return depth;
  };
  EXPECT_EQ(levels(1), 1);
  EXPECT_EQ(levels(100), 100);
  EXPECT_EQ(levels(101), 100);
}

// How many actions are left of as many, one after the other, that lead to the page.
int ActionsLeft(int count) {
  std::string objects = "9 <</Type/Annot/Subtype/Link/Rect[0 0 1 1]/A 10 0 R>>\n";
  for (int i = 0; i < count; ++i) {
    objects += std::to_string(10 + i) + " <</S/GoTo/D[3 0 R/Fit]" +
               (i + 1 < count ? "/Next " + std::to_string(11 + i) + " 0 R" : "") + ">>\n";
  }
  CopiedDocument copy({{WithCatalog("", objects, "/MediaBox[0 0 9 9]/Annots[9 0 R]")}});
  return CountOf(WrittenDocument::Text(copy.Follow(copy.Annotations(0).at(0).Get("A"))), "/GoTo");
}

TEST(CopyBounds, OfChainsOfActions) {
  EXPECT_EQ(ActionsLeft(1), 1);
  EXPECT_EQ(ActionsLeft(2), 2);
  EXPECT_EQ(ActionsLeft(100), 100);
  EXPECT_EQ(ActionsLeft(101), 100);
}

TEST(CopyBounds, OfEventsOfAnAnnotation) {
  const auto events = [](int count) {
    std::string all;
    for (int i = 0; i < count; ++i) {
      all += "/E" + std::to_string(i) + "<</S/URI/URI(x)>>";
    }
    CopiedDocument copy(
        {{WithCatalog("", "9 <</Type/Annot/Subtype/Text/Rect[0 0 1 1]/AA<<" + all + ">>>>\n",
                      "/MediaBox[0 0 9 9]/Annots[9 0 R]")}});
    return CountOf(WrittenDocument::Text(copy.Annotations(0).at(0)), "/S/URI");
  };
  EXPECT_EQ(events(64), 64);
  EXPECT_EQ(events(65), 64);
}

TEST(CopyBounds, OfConfigurationsOfLayersAndTheirIntents) {
  const auto layers = [](int intents, int configurations) {
    const std::string text = CopiedEntry(
        {{WithCatalog("/OCProperties<</OCGs[9 0 R]/D<</Intent[" + Repeated("/I", intents) +
                          "]>>/Configs[" + Repeated("<</Name(c)>>", configurations) + "]>>",
                      "9 <</Type/OCG/Name(l)>>\n")}},
        "OCProperties");
    return std::to_string(CountOf(text.substr(0, text.find("/Configs")), "/I/")) + " " +
           std::to_string(CountOf(text, "/Name(c)"));
  };
  EXPECT_EQ(layers(16, 256), layers(17, 257));
  EXPECT_EQ(layers(2, 256).substr(layers(2, 256).find(' ')), " 256");
  EXPECT_EQ(layers(2, 255).substr(layers(2, 255).find(' ')), " 255");
}

TEST(CopyBounds, OfNamesOfFields) {
  const auto renamed = [](std::size_t size) {
    const std::string form = WithCatalog("/AcroForm<</Fields[9 0 R]>>",
                                         "9 <</FT/Tx/T(" + std::string(size, 'n') + ")>>\n");
    CopiedDocument copy({{form}, {form}});
    return copy.Reported(TPdfCopiedKind::kFormField, TPdfCopyOutcome::kRenamed);
  };
  EXPECT_EQ(renamed(4096), 1U);
  EXPECT_EQ(renamed(4097), 0U);
}

TEST(CopyBounds, OfClassesAndRelationsOfElements) {
  const auto counts = [](int classes, int related) {
    CopiedDocument copy({{WithCatalog(
        "/StructTreeRoot 10 0 R", "10 <</Type/StructTreeRoot/K 11 0 R>>\n11 <</S/P/P 10 0 R/C[" +
                                      Repeated("/C", classes) + "]/Ref[" +
                                      Repeated("11 0 R ", related) + "]>>\n")}});
    const std::string text = WrittenDocument::Text(
        copy.Follow(copy.Follow(copy.Catalog().Get("StructTreeRoot")).Get("K")));
    const std::size_t ref = text.find("/Ref[");
    return std::to_string(CountOf(text, "/C") - 1) + " " +
           std::to_string(CountOf(text.substr(ref, text.find(']', ref) - ref), " R"));
  };
  EXPECT_EQ(counts(512, 4096), "512 4096");
  EXPECT_EQ(counts(513, 4097), "512 4096");
}

}  // namespace
}  // namespace TarnixTools::engines::toolbox
