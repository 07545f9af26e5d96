// The cost of a page, which is counted quickly, against a walk through all that the page draws: never
// less.
#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include <gtest/gtest.h>

#include "engines/support/drawing/DrawingCost.h"
#include "pdf/Error.h"
#include "pdf/content/ContentWalker.h"
#include "pdf/file/ByteSource.h"
#include "pdf/file/Document.h"
#include "pdf/tree/PageTree.h"
#include "support/RawPdf.h"
#include "support/Readers.h"
#include "support/Surroundings.h"

namespace TarnixTools::engines {
namespace {

const std::string kForm = "/Type/XObject/Subtype/Form/BBox[0 0 9 9]";

constexpr std::size_t kMaxPages = 5;  // of each document

// Counts the bytes of content that are gone through. The cell of a pattern and a glyph count once:
// PDFium reads them once for a page. What is longer when it is decoded counts as it stands, for so
// does little data where nothing in it matters.
class ByteCounter : public pdf::ContentVisitor {
 public:
  explicit ByteCounter(pdf::Document& document) : document_(&document) {}

  bool EnterContent(const pdf::ContentEntry& entry) override {
    const bool is_kept =
        entry.kind == pdf::ResourceKind::kGlyph || entry.kind == pdf::ResourceKind::kTilingPattern;
    if (is_kept && !kept_.insert(entry.number).second) {
      return false;
    }
    if (entry.kind != pdf::ResourceKind::kPage) {
      bytes += SizeOf(entry.number);
    }
    for (const pdf::PageContents::Part& part : entry.parts) {
      bytes += SizeOf(part.number);
    }
    return true;
  }

  std::uint64_t bytes = 0;

 private:
  std::uint64_t SizeOf(std::uint32_t number) {
    const auto [place, is_new] = sizes_.emplace(number, 0);
    if (is_new) {
      const auto content = document_->TryDecodeStream(number, pdf::limits::kMaxContentBytes);
      const auto stream = document_->StreamOf(number);
      place->second = content && stream
                          ? std::min<std::uint64_t>(content->data.size(), stream->extent.length)
                          : 0;
    }
    return place->second;
  }

  pdf::Document* document_;
  std::unordered_map<std::uint32_t, std::uint64_t> sizes_;
  std::unordered_set<std::uint32_t> kept_;
};

std::uint64_t BytesWalked(pdf::Document& document, const pdf::PageTree& pages, std::size_t index) {
  ByteCounter counter(document);
  pdf::ContentWalker walker(
      document, counter,
      {.forms = true, .patterns = true, .soft_masks = true, .glyphs = true, .appearances = true});
  walker.BeginPage(pages, index);
  walker.Run();
  return counter.bytes;
}

std::uint64_t BytesCounted(DrawingCost& cost, const pdf::PageTree& pages, std::size_t index) {
  const DrawingCost::PageCost page = cost.CostOf(pages, index);
  std::uint64_t bytes = page.contents;
  for (const auto& resource : page.resources) {
    bytes += resource.second;
  }
  for (const std::uint64_t annotation : page.annotations) {
    bytes += annotation;
  }
  return bytes;
}

void Compare(const std::string& bytes, const std::string& name) {
  const auto document = pdf::Document::Open(std::make_unique<pdf::MemorySource>(bytes), "");
  const pdf::PageTree pages(*document);
  DrawingCost cost(*document);
  for (std::size_t i = 0; i < std::min(pages.pages().size(), kMaxPages); ++i) {
    EXPECT_LE(BytesWalked(*document, pages, i), BytesCounted(cost, pages, i))
        << name << ", page " << i + 1;
  }
}

// A page with content 4 and these resources; 5 is a form that draws 6 twice, 7 a pattern, 8 a
// graphics state with the soft mask 9, 10 a Type 3 font with the glyph 11, 12 an annotation.
std::string Made(const std::string& resources, const std::string& content) {
  testing::RawPdf file;
  file.Object(1, "<</Type/Catalog/Pages 2 0 R>>")
      .Object(2, "<</Type/Pages/Count 1/Kids[3 0 R]>>")
      .Object(3, "<</Type/Page/Parent 2 0 R/Contents[4 0 R]/Annots[12 0 R]/Resources<<" +
                     resources + ">>>>")
      .Stream(4, "", content)
      .Stream(5, kForm + "/Resources<</XObject<</G 6 0 R>>>>", "/G Do /G Do")
      .Stream(6, kForm, std::string(1000, ' '))
      .Stream(7, "/PatternType 1/Resources<</XObject<</F 5 0 R>>>>", "/F Do")
      .Object(8, "<</SMask<</S/Alpha/G 9 0 R>>>>")
      .Stream(9, kForm, "/F Do")
      .Object(10, "<</Subtype/Type3/Encoding<</Differences[97/a]>>/CharProcs<</a 11 0 R>>>>")
      .Stream(11, "", "/F Do")
      .Object(12, "<</Subtype/Stamp/AP<</N 5 0 R/D 6 0 R>>>>");
  return file.Table();
}

TEST(DrawingCostWalk, NoLessForDocumentsThatAreMade) {
  const std::string all =
      "/XObject<</F 5 0 R/L 13 0 R>>/Pattern<</P 7 0 R>>/ExtGState<</M 8 0 R>>/Font<</T 10 0 R>>";
  for (const char* const content :
       {"/F Do", "/F Do /F Do", "/P scn 0 0 9 9 re f /P SCN 0 0 9 9 re S", "/M gs /M gs",
        "BT /T 9 Tf (aaa)Tj /T 8 Tf (a)' ET", "/F Do /P scn 0 0 9 9 re B /M gs BT /T 9 Tf (a)Tj ET",
        "/#46 Do", "(/F Do) Tj %/F Do\n/F Do"}) {
    Compare(Made(all, content), content);
  }
}

// The same bytes are counted where nothing is drawn more than it is named.
TEST(DrawingCostWalk, AsMuchForForms) {
  const std::string bytes = Made("/XObject<</F 5 0 R>>", "/F Do /F Do");
  const auto document = pdf::Document::Open(std::make_unique<pdf::MemorySource>(bytes), "");
  const pdf::PageTree pages(*document);
  DrawingCost cost(*document);
  // Content, twice a form with two of 1,000 bytes, and an annotation with both.
  const std::uint64_t form = 11 + 2 * 1000;
  EXPECT_EQ(BytesWalked(*document, pages, 0), 11 + 2 * form + form);
  // One byte more for each form, and the appearance that is not shown.
  EXPECT_EQ(BytesCounted(cost, pages, 0), 11 + 2 * (form + 3) + (form + 3) + 1001);
}

TEST(DrawingCostWalk, NoLessForTheCorpus) {
  TARNIX_NEED_CORPUS("general");
  for (const auto& entry : std::filesystem::directory_iterator(testing::CorpusDir() + "/general")) {
    try {
      Compare(testing::ReadBytes(entry.path().string()), entry.path().filename().string());
    } catch (const pdf::Error&) {
      // A document that cannot be opened draws nothing.
    }
  }
}

}  // namespace
}  // namespace TarnixTools::engines
