#include "engines/parser/Parser.h"

#include <cerrno>
#include <cstdio>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "engines/parser/ExpaFailure.h"
#include "engines/parser/ImageStore.h"
#include "engines/parser/Limits.h"
#include "engines/parser/OriginalImage.h"
#include "engines/support/contract/Registry.h"
#include "engines/support/files/DiskFile.h"
#include "engines/support/files/SavedFile.h"
#include "engines/support/images/ImageWalker.h"
#include "engines/support/metadata/PdfAClaim.h"
#include "engines/support/metadata/XmpPacket.h"
#include "foundation/Utf8.h"
#include "pdf/Error.h"
#include "pdf/tree/VisibleLayers.h"

namespace TarnixTools::engines {

using namespace parser;

struct TExpaGraphicsState {
  TExpaMatrix matrix;
};

struct TExpaImage {
  TExpaDoc* document = nullptr;
  DocumentImage image;
  pdf::Arena arena;
  ImageFacts facts;
  std::optional<PreparedImage> prepared;
  int orientation = 1;
};

struct TExpaContent {
  TExpaDoc* document = nullptr;
  std::size_t page_index = 0;
  std::optional<ImageWalker> walker;
  std::optional<TExpaImage> image;
  TExpaGraphicsState state;
};

struct TExpaPage {
  TExpaDoc* document = nullptr;
  TExpaContent content;
};

struct TExpaDoc {
  ExpaError last_error = kExpaNoError;
  TExpaReport report = nullptr;
  void* report_handle = nullptr;
  std::unique_ptr<pdf::Document> document;
  std::unique_ptr<pdf::PageTree> pages;
  std::optional<pdf::VisibleLayers> layers;
  std::optional<TExpaPage> page;
  ImageStore store;

  void Open(const platform::WidePath& path, const std::wstring& password) {
    const std::shared_ptr<std::FILE> file = OpenShared(path);
    if (file == nullptr) {
      throw ExpaFailure(kExpaFileError);
    }
    document = pdf::Document::Open(std::make_unique<DiskSource>(file), WideToUtf8(password));
    pages = std::make_unique<pdf::PageTree>(*document);
    layers.emplace(*document);
  }

  void Close() {
    page.reset();
    layers.reset();
    pages.reset();
    document.reset();
    store = ImageStore();
  }

  void Tell(std::size_t page_index, TExpaTrouble trouble) const {
    if (report != nullptr) {
      report(report_handle, static_cast<std::int32_t>(page_index) + 1, trouble);
    }
  }
};

namespace {

using Documents = Registry<TExpaDoc>;

// For what is had from a document.
template <typename Part, typename Operation>
GuardedResult<Operation> GuardedPart(Part* part, Operation&& operation) noexcept {
  return Guarded<ExpaErrors>(part != nullptr ? part->document : nullptr, operation);
}

void Require(bool condition) {
  engines::Require<ExpaErrors>(condition);
}

TExpaMatrix ToContract(const pdf::Matrix& matrix) {
  return {matrix.a,
          matrix.b,
          matrix.c,
          matrix.d,
          matrix.e,
          matrix.f,
          IsSkewed(matrix) ? 1 : 0,
          OrientationOf(matrix)};
}

// Takes the image when something of it can be drawn.
bool TakeImage(TExpaContent& content, const DrawnImage& drawn) {
  TExpaImage& image = content.image.emplace();
  image.document = content.document;
  image.image = drawn.image;
  image.facts = FactsOf(image.image, image.arena);
  content.state.matrix = ToContract(drawn.matrix);
  if (image.facts.width == 0 || image.facts.height == 0 ||
      image.facts.filter == ImageFilter::kUnknown) {
    return false;
  }
  image.prepared =
      content.document->store.Prepare(image.image, image.facts, content.state.matrix.orientation);
  return image.prepared.has_value();
}

std::string PacketOf(pdf::Document& document) {
  const std::uint32_t number = XmpPacketNumber(document);
  if (number == 0) {
    throw ExpaFailure(kExpaNoMetadataError);
  }
  std::optional<pdf::Decoded> packet = document.TryDecodeStream(number, limits::kMaxPacketBytes);
  if (!packet || (packet->data.empty() && !packet->complete)) {
    throw ExpaFailure(kExpaMetadataError);
  }
  return std::move(packet->data);
}

void WritePacket(std::string_view packet, const platform::WidePath& path) {
  std::optional<platform::OutputFile> output = platform::OutputFile::Create(path);
  if (!output) {
    throw ExpaFailure(kExpaCreateError, errno);
  }
  platform::FilePtr stream = output->TakeStream();
  DiskSink(stream.get()).Write(packet);
  CompleteFile(std::move(stream), *output);
}

}  // namespace

void ExpaInitialize() {
  Documents::BeginSession();
}

void ExpaUnInitialize() {
  Documents::EndSession();
}

TExpaDoc* ExpaDocCreateObject() {
  return GuardedWithoutObject<ExpaErrors>(
      [] { return Documents::Add(std::make_unique<TExpaDoc>()); });
}

void ExpaDocDestroyObject(TExpaDoc* document) {
  Documents::Destroy(document);
}

std::int32_t ExpaDocGetLastError(const TExpaDoc* document) {
  return LastErrorOf<ExpaErrors>(document);
}

int ExpaDocOpenW(TExpaDoc* document, const platform::WidePath& path, const std::wstring& password) {
  return Guarded<ExpaErrors>(document, [&] {
    document->Close();
    try {
      document->Open(path, password);
    } catch (...) {
      document->Close();
      throw;
    }
  });
}

int ExpaDocClose(TExpaDoc* document) {
  return Guarded<ExpaErrors>(document, [&] { document->Close(); });
}

int ExpaDocSetReport(TExpaDoc* document, TExpaReport report, void* handle) {
  return Guarded<ExpaErrors>(document, [&] {
    document->report = report;
    document->report_handle = handle;
  });
}

std::int32_t ExpaDocGetPageCount(const TExpaDoc* document) {
  return document != nullptr && document->pages != nullptr
             ? static_cast<std::int32_t>(document->pages->pages().size())
             : 0;
}

int ExpaDocGetXMPMetadataW(TExpaDoc* document, const platform::WidePath& path) {
  return Guarded<ExpaErrors>(document, [&] {
    Require(document->document != nullptr);
    WritePacket(PacketOf(*document->document), path);
  });
}

std::int32_t ExpaDocGetCompliance(TExpaDoc* document) {
  return Guarded<ExpaErrors>(document, [&] {
    Require(document->document != nullptr);
    return ComplianceOf(*document->document);
  });
}

int ExpaDocSetPageNo(TExpaDoc* document, std::int32_t page_number) {
  return Guarded<ExpaErrors>(document, [&] {
    Require(page_number >= 1 && page_number <= ExpaDocGetPageCount(document));
    TExpaPage& page = document->page.emplace();
    page.document = document;
    page.content.document = document;
    page.content.page_index = static_cast<std::size_t>(page_number) - 1;
  });
}

TExpaPage* ExpaDocGetPage(TExpaDoc* document) {
  return Guarded<ExpaErrors>(document, [&] {
    Require(document->page.has_value());
    return &*document->page;
  });
}

TExpaContent* ExpaPageGetContent(TExpaPage* page) {
  return GuardedPart(page, [&] { return &page->content; });
}

int ExpaContentResetContent(TExpaContent* content, int with_forms) {
  return GuardedPart(content, [&] {
    TExpaDoc& document = *content->document;
    content->image.reset();
    content->walker.emplace(*document.document, *document.pages, *document.layers,
                            content->page_index, with_forms != 0);
  });
}

int ExpaContentGetNextImage(TExpaContent* content) {
  return GuardedPart(content, [&] {
    content->image.reset();
    Require(content->walker.has_value());
    while (const DrawnImage* drawn = content->walker->Next()) {
      if (TakeImage(*content, *drawn)) {
        return 1;
      }
      content->image.reset();
      content->document->Tell(content->page_index, kExpaImageLost);
    }
    return 0;
  });
}

TExpaImage* ExpaContentGetImage(TExpaContent* content) {
  return GuardedPart(content, [&] { return content->image ? &*content->image : nullptr; });
}

const TExpaGraphicsState* ExpaContentGetGraphicsState(TExpaContent* content) {
  return GuardedPart(content, [&]() -> const TExpaGraphicsState* {
    return content->image ? &content->state : nullptr;
  });
}

const TExpaMatrix* ExpaGSGetCTM(const TExpaGraphicsState* state) {
  return state != nullptr ? &state->matrix : nullptr;
}

int ExpaImageChangeOrientation(TExpaImage* image, std::int32_t orientation) {
  return GuardedPart(image, [&] {
    Require(orientation >= 1 && orientation <= 8);
    image->orientation = orientation;
  });
}

std::int32_t ExpaImageGetOriginal(TExpaImage* image) {
  return GuardedPart(image, [&]() -> std::int32_t {
    switch (OriginalFormatOf(image->image, image->facts)) {
      case OriginalFormat::kJpeg:
        return kExpaOriginalJpeg;
      case OriginalFormat::kJpx:
        return kExpaOriginalJpx;
      case OriginalFormat::kTiff:
        return kExpaOriginalTiff;
      case OriginalFormat::kPng:
        break;
    }
    return kExpaOriginalPng;
  });
}

int ExpaImageStoreOriginalW(TExpaImage* image, const platform::WidePath& path) {
  return GuardedPart(image, [&] {
    if (!ImageStore::StoreOriginal(image->image, image->facts, path)) {
      image->document->Tell(image->document->page->content.page_index, kExpaImagePartial);
    }
  });
}

int ExpaImageStoreW(TExpaImage* image, const platform::WidePath& path, std::int32_t format) {
  return GuardedPart(image, [&] {
    Require(format == kExpaJpeg);
    ImageStore& store = image->document->store;
    if (!image->prepared || image->prepared->orientation != image->orientation) {
      image->prepared = store.Prepare(image->image, image->facts, image->orientation);
    }
    if (!image->prepared) {
      throw ExpaFailure(kExpaImageError);
    }
    const auto outcome = store.Store(*image->prepared, path);
    if (outcome == ImageStore::Outcome::kPartial) {
      image->document->Tell(image->document->page->content.page_index, kExpaImagePartial);
    }
  });
}

}  // namespace TarnixTools::engines
