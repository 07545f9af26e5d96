#include "engines/support/images/Jbig2Image.h"

#include <utility>

#include "engines/support/codecs/Jbig2Decoder.h"
#include "engines/support/images/ImageLimits.h"
#include "pdf/Error.h"

namespace TarnixTools::engines {
namespace {

struct Jbig2Data {
  std::string globals;
  std::string data;
};

std::optional<Jbig2Data> DataOf(const DocumentImage& image, const ImageFacts& facts) {
  if (facts.filter != ImageFilter::kJbig2) {
    return std::nullopt;
  }
  try {
    Jbig2Data jbig2;
    const std::uint32_t globals = facts.filter_parameters.Get("JBIG2Globals").AsReference().number;
    if (globals != 0) {
      if (auto decoded = image.document->DecodeStream(globals, limits::kMaxSampleBytes)) {
        jbig2.globals = std::move(decoded->data);
      }
    }
    jbig2.data = DecodeToImageFilter(image, facts, limits::kMaxSampleBytes);
    return jbig2;
  } catch (const pdf::Error& error) {
    if (error.code() == pdf::ErrorCode::kReadFailed) {
      throw;
    }
    return std::nullopt;
  }
}

}  // namespace

bool IsOwnJbig2(const DocumentImage& image, const ImageFacts& facts) {
  const std::optional<Jbig2Data> jbig2 = DataOf(image, facts);
  return jbig2 && NeedsOwnJbig2(jbig2->globals, jbig2->data);
}

std::optional<std::string> DecodeOwnJbig2(const DocumentImage& image, const ImageFacts& facts) {
  const std::optional<Jbig2Data> jbig2 = DataOf(image, facts);
  if (!jbig2 || !NeedsOwnJbig2(jbig2->globals, jbig2->data)) {
    return std::nullopt;
  }
  return DecodeJbig2(jbig2->globals, jbig2->data, facts.width, facts.height);
}

}  // namespace TarnixTools::engines
