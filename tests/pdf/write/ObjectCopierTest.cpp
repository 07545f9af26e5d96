#include <gtest/gtest.h>

#include "pdf/Limits.h"
#include "pdf/filters/Filters.h"
#include "pdf/write/ObjectCopier.h"
#include "support/RawPdf.h"

namespace TarnixTools::pdf {
namespace {

using ::TarnixTools::testing::RawPdf;

// Copies object 10 of a document, and what it needs, and opens the result; object 2 and the pages
// are barred.
class CopyOf {
 public:
  explicit CopyOf(const RawPdf& pdf, const Security* security = nullptr)
      : source_bytes_(RawPdf(pdf).Table()) {
    const auto source = Document::Open(std::make_unique<MemorySource>(source_bytes_), "");
    NumberMap numbers;
    StringSink sink;
    FileWriter writer(sink, security);
    const std::uint32_t catalog = writer.Reserve();
    const std::uint32_t pages = writer.Reserve();
    writer.WriteObject(catalog, "<</Type/Catalog/Pages 2 0 R>>");
    writer.WriteObject(pages, "<</Type/Pages/Kids[]/Count 0>>");
    ObjectCopier copier(*source, writer, numbers, [](std::uint32_t number) { return number <= 3; });
    root_ = copier.Map(10);
    copier.CopyPending();
    writer.Finish(catalog, 0);
    bytes_ = sink.bytes();
    target_ = Document::Open(std::make_unique<MemorySource>(bytes_), "");
  }

  Object Root() { return target_->Load({root_, 0}, arena_); }

  Object Follow(const Object& value) { return target_->Resolve(value, arena_); }

  std::string Data(const Object& reference) {
    return target_->TryDecodeStream(reference.AsReference().number)->data;
  }

  std::string RootText() {
    std::string text;
    AppendObject(text, Root());
    return text;
  }

 private:
  std::string source_bytes_;
  std::string bytes_;
  std::unique_ptr<Document> target_;
  std::uint32_t root_ = 0;
  Arena arena_;
};

TEST(ObjectCopier, BringsEverythingReferredToOnce) {
  RawPdf pdf;
  pdf.Pages(1)
      .Object(10, "[11 0 R 11 0 R 12 0 R]")
      .Object(11, "<</Back 10 0 R>>")
      .Object(12, "(text)");
  CopyOf copy(pdf);
  const auto items = copy.Root().Items();
  EXPECT_EQ(items[0].AsReference(), items[1].AsReference());
  EXPECT_EQ(copy.Follow(items[2]).Text(), "text");
  EXPECT_TRUE(copy.Follow(copy.Follow(items[0]).Get("Back")).IsArray());
}

TEST(ObjectCopier, LeavesBarredAndMissingObjectsOut) {
  RawPdf pdf;
  pdf.Pages(1).Object(10, "<</Page 3 0 R/Tree 2 0 R/Gone 77 0 R/Own 1>>");
  EXPECT_EQ(CopyOf(pdf).RootText(), "<</Page null/Tree null/Gone null/Own 1>>");
}

TEST(ObjectCopier, CopiesObjectsThatAreNoContainers) {
  for (const char* text : {"12", "-1.5", "(a)", "/Name", "true", "null"}) {
    RawPdf pdf;
    pdf.Pages(1).Object(10, text);
    EXPECT_EQ(CopyOf(pdf).RootText(), text);
  }
}

TEST(ObjectCopier, CopiesIrregularObjects) {
  RawPdf pdf;
  pdf.Pages(1).Object(10, "<</A[1 --2 foo/B 3").Object(11, "(never reached)");
  EXPECT_EQ(CopyOf(pdf).RootText(), "<</A[1 -2 null/B 3]>>");
}

TEST(ObjectCopier, KeepsTheLengthOfWhatIsNoStream) {
  RawPdf pdf;
  pdf.Pages(1).Object(10, "<</Length 11 0 R/A 1>>").Object(11, "5");
  CopyOf copy(pdf);
  EXPECT_EQ(copy.Follow(copy.Root().Get("Length")).IntegerOr(0), 5);
}

TEST(ObjectCopier, WritesLengthsOfStreamsDirectly) {
  RawPdf pdf;
  std::string deflated;
  DeflateTo(deflated, "stream data", 6);
  pdf.Pages(1)
      .Object(10, "[11 0 R]")
      .Object(11, "<</Filter/FlateDecode/Length 12 0 R>>\nstream\r\n" + deflated + "\r\nendstream")
      .Object(12, std::to_string(deflated.size()));
  CopyOf copy(pdf);
  EXPECT_EQ(copy.Data(copy.Root().Items()[0]), "stream data");
  EXPECT_TRUE(copy.Follow(copy.Root().Items()[0]).Get("Length").IsInteger());
}

TEST(ObjectCopier, DeflatesPlainStreams) {
  RawPdf pdf;
  const std::string text(5000, 'a');
  pdf.Pages(1)
      .Object(10, "[11 0 R 12 0 R 13 0 R]")
      .Stream(11, "", text)
      .Stream(12, "/Type/Metadata", text)
      .Stream(13, "", "short");
  CopyOf copy(pdf);
  const auto items = copy.Root().Items();
  EXPECT_TRUE(copy.Follow(items[0]).Get("Filter").IsName("FlateDecode"));
  EXPECT_EQ(copy.Data(items[0]), text);
  EXPECT_TRUE(copy.Follow(items[1]).Get("Filter").IsNull())
      << "metadata stays readable for every program";
  EXPECT_TRUE(copy.Follow(items[2]).Get("Filter").IsNull());
  EXPECT_EQ(copy.Data(items[2]), "short");
}

TEST(ObjectCopier, TakesWastefulFiltersOff) {
  RawPdf pdf;
  std::string hex;
  for (int i = 0; i < 300; ++i) {
    hex += "6162";
  }
  pdf.Pages(1)
      .Object(10, "[11 0 R 12 0 R 13 0 R]")
      .Stream(11, "/Filter/ASCIIHexDecode", hex + ">")
      .Stream(12, "/Filter[/ASCIIHexDecode/DCTDecode]/DecodeParms[null<</ColorTransform 0>>]",
              hex + ">")
      .Stream(13, "/Filter/ASCIIHexDecode", "61 62 (damaged");
  CopyOf copy(pdf);
  const auto items = copy.Root().Items();
  EXPECT_TRUE(copy.Follow(items[0]).Get("Filter").IsName("FlateDecode"));
  EXPECT_EQ(copy.Data(items[0]).substr(0, 4), "abab");
  const Object image = copy.Follow(items[1]);
  ASSERT_EQ(image.Get("Filter").Items().size(), 1U);
  EXPECT_TRUE(image.Get("Filter").Items()[0].IsName("DCTDecode"));
  EXPECT_EQ(image.Get("DecodeParms").Items()[0].Get("ColorTransform").IntegerOr(9), 0);
  EXPECT_EQ(image.Get("Length").IntegerOr(0), 600);
  EXPECT_TRUE(copy.Follow(items[2]).Get("Filter").IsName("ASCIIHexDecode"))
      << "damaged data stays as it is";
}

TEST(ObjectCopier, LeavesStreamsWithTooManyFiltersAsTheyAre) {
  std::string filters;
  for (int i = 0; i <= limits::kMaxFilters; ++i) {
    filters += "/ASCIIHexDecode";
  }
  RawPdf pdf;
  pdf.Pages(1).Object(10, "[11 0 R]").Stream(11, "/Filter[" + filters + "]", "41>");
  CopyOf copy(pdf);
  const Object dictionary = copy.Follow(copy.Root().Items()[0]);
  EXPECT_EQ(dictionary.Get("Filter").Items().size(), limits::kMaxFilters + 1U);
  EXPECT_EQ(dictionary.Get("Length").IntegerOr(0), 3);
}

TEST(ObjectCopier, CopiesLargeStreamsInBlocks) {
  RawPdf pdf;
  std::string data;
  unsigned state = 1;
  for (int i = 0; i < 6'000'000; ++i) {
    state = state * 1664525U + 1013904223U;
    data += static_cast<char>(state >> 24);
  }
  pdf.Pages(1).Object(10, "[11 0 R]").Stream(11, "", data);
  CopyOf copy(pdf);
  EXPECT_EQ(copy.Data(copy.Root().Items()[0]), data);
  const Security security = Security::Create("", "", 3900);
  CopyOf encrypted(pdf, &security);
  EXPECT_EQ(encrypted.Data(encrypted.Root().Items()[0]), data);
}

TEST(ObjectCopier, EncryptsStringsInStreamDictionariesOnly) {
  RawPdf pdf;
  pdf.Pages(1)
      .Object(10, "[11 0 R(plain)]")
      .Stream(11, "/Title(of a stream)/More<</S(deep)>>", "data");
  const Security security = Security::Create("", "", 3900);
  CopyOf copy(pdf, &security);
  EXPECT_EQ(copy.Root().Items()[1].Text(), "plain");
  const Object stream = copy.Follow(copy.Root().Items()[0]);
  EXPECT_EQ(stream.Get("Title").Text(), "of a stream");
  EXPECT_EQ(stream.Get("More").Get("S").Text(), "deep");
}

TEST(NumberMap, ForgetsWhatWasSet) {
  NumberMap numbers;
  numbers.Set(5, 7);
  numbers.Set(500, 8);
  EXPECT_EQ(numbers.Get(500), 8U);
  numbers.Clear();
  EXPECT_EQ(numbers.Get(5), 0U);
  EXPECT_EQ(numbers.Get(500), 0U);
  EXPECT_EQ(numbers.Get(1'000'000), 0U);
}

}  // namespace
}  // namespace TarnixTools::pdf
