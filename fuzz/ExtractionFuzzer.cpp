// Opens any bytes as a document, goes through what its pages lead to and paint, and reads the
// images that they draw, as they are stored in files. Nothing worse may come of it than an Error.
// What PDFium or OpenJPEG would decode is passed over: they are fuzzed elsewhere.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "ContentProbe.h"
#include "engines/support/codecs/JpegMarkers.h"
#include "engines/support/codecs/JpegTables.h"
#include "engines/support/codecs/JpegTranscoder.h"
#include "engines/support/codecs/JpxHeader.h"
#include "engines/support/images/ColorSpace.h"
#include "engines/support/images/DocumentImage.h"
#include "engines/support/images/ImageAlpha.h"
#include "engines/support/images/ImageSamples.h"
#include "engines/support/images/ImageWalker.h"
#include "engines/support/images/Picture.h"
#include "engines/support/pictures/DrawnOrientation.h"
#include "engines/support/pictures/UprightPicture.h"
#include "pdf/Error.h"
#include "pdf/file/ByteSource.h"
#include "pdf/file/Document.h"
#include "pdf/tree/PageTree.h"
#include "pdf/tree/VisibleLayers.h"

namespace {

using namespace TarnixTools;
using engines::DocumentImage;
using engines::ImageFacts;
using engines::ImageFilter;

// Larger or more is slow, not different.
constexpr std::size_t kMaxPages = 4;
constexpr int kMaxImages = 16;
constexpr std::uint64_t kMaxPixels = std::uint64_t{1} << 20;
constexpr std::uint32_t kMaxRows = 4096;
constexpr std::int64_t kMaxFaxColumns = 10'000;

bool NeedsOthers(const DocumentImage& image, const ImageFacts& facts) {
  if (facts.filter == ImageFilter::kJpx || facts.filter == ImageFilter::kJbig2) {
    return true;
  }
  pdf::Arena arena;
  const auto space = facts.is_mask
                         ? std::optional(engines::DeviceSpace(1))
                         : engines::ColorSpaceOf(*image.document, facts.color_space, arena);
  const bool is_fax = facts.filter == ImageFilter::kCcitt;
  const std::int64_t columns =
      image.document->Resolve(facts.filter_parameters.Get("Columns"), arena).IntegerOr(1728);
  return !space || !space->is_computed() ||
         (is_fax && (space->components != 1 || columns < 1 || columns > kMaxFaxColumns));
}

bool IsSmall(const ImageFacts& facts) {
  return std::uint64_t{facts.width} * facts.height <= kMaxPixels;
}

bool IsOfInterest(const DocumentImage& image, const ImageFacts& facts) {
  return IsSmall(facts) && !NeedsOthers(image, facts);
}

bool IsMaskOfInterest(pdf::Document& document, std::uint32_t number) {
  if (number == 0) {
    return true;
  }
  pdf::Arena arena;
  const DocumentImage mask = engines::ImageObjectOf(document, number, arena);
  return IsOfInterest(mask, FactsOf(mask, arena));
}

void ReadPixels(engines::RowSource& picture) {
  std::vector<std::uint8_t> row(picture.row_bytes());
  const std::uint32_t rows = std::min(picture.height(), kMaxRows);
  for (std::uint32_t y = 0; y < rows; ++y) {
    if (picture.is_bilevel()) {
      picture.ReadBits(row.data());
    } else {
      picture.ReadRow(row.data());
    }
  }
}

// Samples of any colour space, as they are.
void ReadSamples(const DocumentImage& image, const ImageFacts& facts) {
  std::optional<engines::ImageSamples> samples = OpenSamples(image, facts);
  const std::uint32_t rows = samples ? std::min(samples->rows->format().height, kMaxRows) : 0;
  std::vector<std::uint8_t> row;
  for (std::uint32_t y = 0; y < rows; ++y) {
    const auto packed = samples->rows->ReadRow();
    row.assign(packed.begin(), packed.end());
  }
}

void ReadImage(const engines::DrawnImage& drawn) {
  pdf::Arena arena;
  const DocumentImage& image = drawn.image;
  const ImageFacts facts = FactsOf(image, arena);
  if (IsSmall(facts) && facts.filter == ImageFilter::kNone) {
    try {
      ReadSamples(image, facts);
    } catch (const pdf::Error&) {
    }
  }
  if (!IsOfInterest(image, facts) || !IsMaskOfInterest(*image.document, facts.soft_mask) ||
      !IsMaskOfInterest(*image.document, facts.stencil_mask)) {
    return;
  }
  try {
    if (std::optional<engines::ImageAlpha> alpha = OpenAlpha(image, facts);
        alpha && std::uint64_t{alpha->rows->width()} * alpha->rows->height() <= kMaxPixels) {
      ReadPixels(*alpha->rows);
    }
    engines::RowSourcePtr picture = OpenPicture(image, facts);
    if (picture != nullptr && std::uint64_t{picture->width()} * picture->height() <= kMaxPixels) {
      picture = MakeUpright(std::move(picture), engines::OrientationOf(drawn.matrix));
      ReadPixels(*picture);
    }
  } catch (const pdf::Error&) {
  }
}

void ReadImages(std::string_view bytes) {
  const auto document = pdf::Document::Open(std::make_unique<pdf::MemorySource>(bytes), "");
  const pdf::PageTree pages(*document);
  const pdf::VisibleLayers layers(*document);
  pdf::ResourceGraph graph(*document);
  for (std::size_t i = 0; i < std::min(pages.pages().size(), kMaxPages); ++i) {
    pdf::ProbeResources(*document, pages, i, graph);
    pdf::ProbePage(*document, pages, i);
    engines::ImageWalker walker(*document, pages, layers, i, true);
    for (int found = 0; found < kMaxImages; ++found) {
      const engines::DrawnImage* drawn = walker.Next();
      if (drawn == nullptr) {
        break;
      }
      ReadImage(*drawn);
    }
  }
}

// Images that are made smaller are asked how coarse they are, and coded anew.
void ReadJpeg(std::string_view bytes) {
  const std::optional<engines::JpegHeader> header = engines::ReadJpegHeader(bytes);
  if (header && std::uint64_t{header->width} * header->height <= kMaxPixels) {
    engines::EstimateQuality(*header);
    engines::AreStepsAsCoarse(*header, 50);
    engines::OptimizeJpeg(bytes);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  ReadJpeg({reinterpret_cast<const char*>(data), size});
  engines::ReadJpxHeader({reinterpret_cast<const char*>(data), size});
  try {
    ReadImages({reinterpret_cast<const char*>(data), size});
  } catch (const pdf::Error&) {
  }
  return 0;
}
