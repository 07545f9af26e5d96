#include "engines/parser/OriginalImage.h"

#include <optional>
#include <string>
#include <vector>

#include "engines/parser/ExpaFailure.h"
#include "engines/support/codecs/PngRowWriter.h"
#include "engines/support/images/ImageLimits.h"
#include "engines/support/images/ImageSamples.h"
#include "engines/support/images/Picture.h"
#include "engines/support/pictures/RowSource.h"
#include "pdf/syntax/Arena.h"

namespace TarnixTools::engines::parser {
namespace {

// Fields, types and values of TIFF 6.0 and of its T.4 and T.6 codings.
constexpr std::uint16_t kShort = 3;
constexpr std::uint16_t kLong = 4;
constexpr std::uint32_t kHuffmanRows = 2;
constexpr std::uint32_t kT4 = 3;
constexpr std::uint32_t kT6 = 4;
constexpr std::uint32_t kHeaderBytes = 8;

struct FaxCoding {
  std::uint32_t compression = kT6;
  std::uint32_t options = 0;  // of T.4: 1 for rows in two dimensions
  bool is_white_zero = true;
};

// Nothing for data that a TIFF file has no way to say.
std::optional<FaxCoding> CodingOf(const CcittParameters& parameters) {
  FaxCoding coding;
  if (parameters.k < 0) {
    return parameters.is_byte_aligned ? std::nullopt : std::optional(coding);
  }
  if (parameters.has_ends_of_line && !parameters.is_byte_aligned) {
    coding.compression = kT4;
    coding.options = parameters.k > 0 ? 1 : 0;
    return coding;
  }
  if (parameters.k == 0 && parameters.is_byte_aligned && !parameters.has_ends_of_line) {
    coding.compression = kHuffmanRows;
    return coding;
  }
  return std::nullopt;
}

std::optional<FaxCoding> FaxCodingOf(const DocumentImage& image, const ImageFacts& facts) {
  if (facts.filter != ImageFilter::kCcitt) {
    return std::nullopt;
  }
  const std::optional<CcittParameters> parameters = CcittParametersOf(image, facts);
  const std::optional<ColorSpace> space = SpaceOf(image, facts);
  if (!parameters || parameters->columns != facts.width || !space ||
      space->kind != ColorKind::kGray) {
    return std::nullopt;
  }
  std::optional<FaxCoding> coding = CodingOf(*parameters);
  if (coding) {
    coding->is_white_zero = parameters->black_is_1 != facts.decode.empty();
  }
  return coding;
}

void AppendNumber(std::string& out, std::uint32_t value, int bytes) {
  for (int i = 0; i < bytes; ++i) {
    out += static_cast<char>(value >> 8 * i & 0xFF);
  }
}

void AppendField(std::string& out, std::uint16_t tag, std::uint16_t type, std::uint32_t value) {
  AppendNumber(out, tag, 2);
  AppendNumber(out, type, 2);
  AppendNumber(out, 1, 4);
  AppendNumber(out, value, 4);
}

// A file of one strip (TIFF 6.0, sections 2, 10 and 11).
void WriteTiff(const ImageFacts& facts, const FaxCoding& coding, const std::string& data,
               pdf::ByteSink& sink) {
  const auto size = static_cast<std::uint32_t>(data.size());
  std::string header("II*\0", 4);
  AppendNumber(header, kHeaderBytes + size + size % 2, 4);
  sink.Write(header);
  sink.Write(data);
  std::string directory(size % 2, '\0');
  AppendNumber(directory, 10, 2);
  AppendField(directory, 256, kLong, facts.width);
  AppendField(directory, 257, kLong, facts.height);
  AppendField(directory, 258, kShort, 1);
  AppendField(directory, 259, kShort, coding.compression);
  AppendField(directory, 262, kShort, coding.is_white_zero ? 0 : 1);
  AppendField(directory, 273, kLong, kHeaderBytes);
  AppendField(directory, 277, kShort, 1);
  AppendField(directory, 278, kLong, facts.height);
  AppendField(directory, 279, kLong, size);
  AppendField(directory, coding.compression == kT6 ? 293 : 292, kLong, coding.options);
  AppendNumber(directory, 0, 4);
  sink.Write(directory);
}

bool WritePng(const DocumentImage& image, const ImageFacts& facts, pdf::ByteSink& sink) {
  const RowSourcePtr picture = OpenPicture(image, facts);
  if (picture == nullptr || picture->layout() == PixelLayout::kBgrx) {
    throw ExpaFailure(kExpaImageError);
  }
  PngRowWriter writer(sink, {.width = picture->width(),
                             .height = picture->height(),
                             .is_gray = picture->layout() == PixelLayout::kGray,
                             .dpi = 0});
  std::vector<std::uint8_t> row(picture->row_bytes());
  bool is_complete = true;
  for (std::uint32_t y = 0; y < picture->height(); ++y) {
    is_complete = picture->ReadRow(row.data()) && is_complete;
    writer.WriteRow(row.data());
  }
  writer.Finish();
  return is_complete;
}

}  // namespace

OriginalFormat OriginalFormatOf(const DocumentImage& image, const ImageFacts& facts) {
  return facts.filter == ImageFilter::kDct   ? OriginalFormat::kJpeg
         : facts.filter == ImageFilter::kJpx ? OriginalFormat::kJpx
         : FaxCodingOf(image, facts)         ? OriginalFormat::kTiff
                                             : OriginalFormat::kPng;
}

bool WriteOriginal(const DocumentImage& image, const ImageFacts& facts, pdf::ByteSink& sink) {
  const OriginalFormat format = OriginalFormatOf(image, facts);
  if (format == OriginalFormat::kPng) {
    return WritePng(image, facts, sink);
  }
  if (facts.steps.empty() && format != OriginalFormat::kTiff) {
    CopyEncoded(image, sink);
    return true;
  }
  const std::string data = DecodeToImageFilter(image, facts, limits::kMaxSampleBytes);
  if (format == OriginalFormat::kTiff) {
    WriteTiff(facts, *FaxCodingOf(image, facts), data, sink);
  } else {
    sink.Write(data);
  }
  return true;
}

}  // namespace TarnixTools::engines::parser
