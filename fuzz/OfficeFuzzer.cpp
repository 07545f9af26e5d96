// The content of a page, whatever it is, on its way into a Word document: read into a model,
// analysed and written. Nothing worse may come of it than an Error.
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <utility>

#include "engines/office/layout/DocumentAnalysis.h"
#include "engines/office/writers/word/WordWriter.h"
#include "engines/support/layout/PageAnalysis.h"
#include "engines/support/pages/PageReader.h"
#include "pdf/Error.h"
#include "support/RawPdf.h"

namespace {

using namespace TarnixTools;
using namespace engines;
using namespace engines::office;

constexpr std::size_t kMaxBytes = std::size_t{1} << 16;

class NoSink : public pdf::ByteSink {
 public:
  void Write(std::string_view /*bytes*/) override {}
};

class NoPictures : public PictureSource {
 public:
  std::optional<OfficePicture> PictureOf(std::size_t /*page_index*/,
                                         std::span<const ImagePlace> /*images*/,
                                         const pdf::Box& /*box*/) override {
    return std::nullopt;
  }

  std::optional<OfficePicture> DrawingOf(std::size_t /*page_index*/,
                                         const pdf::Box& /*box*/) override {
    return std::nullopt;
  }
};

std::string DocumentWith(const std::string& content) {
  return testing::RawPdf()
      .Object(1, "<</Type/Catalog/Pages 2 0 R>>")
      .Object(2, "<</Type/Pages/Kids[3 0 R]/Count 1>>")
      .Object(3,
              "<</Type/Page/Parent 2 0 R/MediaBox[0 0 600 800]/Contents 4 0 R"
              "/Resources<</Font<</F<</Type/Font/Subtype/Type1/BaseFont/Courier>>>>>>>>")
      .Stream(4, "", content)
      .Table();
}

void Convert(const std::string& content) {
  const std::string bytes = DocumentWith(content);
  const auto document = pdf::Document::Open(std::make_unique<pdf::MemorySource>(bytes), "");
  const pdf::PageTree pages(*document);
  const pdf::VisibleLayers layers(*document);
  PageReader reader(*document, pages, layers);
  OfficePage page;
  page.model = reader.Read(0);
  page.layout = AnalyzePage(page.model);
  OfficeDocument converted;
  converted.pages.push_back(std::move(page));
  AnalyzeDocument(converted);
  NoPictures pictures;
  NoSink sink;
  const std::atomic<bool> is_cancelled{false};
  WriteWord(converted, pictures, is_cancelled, sink);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size > kMaxBytes) {
    return 0;
  }
  try {
    Convert({reinterpret_cast<const char*>(data), size});
  } catch (const pdf::Error&) {
  }
  return 0;
}
