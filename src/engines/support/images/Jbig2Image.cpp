#include "engines/support/images/Jbig2Image.h"

#include <string>
#include <utility>

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
  return pdf::UnlessDamaged(std::optional<Jbig2Data>(), [&]() -> std::optional<Jbig2Data> {
    Jbig2Data jbig2;
    const std::uint32_t globals = facts.filter_parameters.Get("JBIG2Globals").AsReference().number;
    if (globals != 0) {
      auto decoded = image.document->TryDecodeStream(globals, limits::kMaxSampleBytes);
      if (decoded && decoded->is_lost()) {
        return std::nullopt;
      }
      jbig2.globals = decoded ? std::move(decoded->data) : std::string();
    }
    jbig2.data = DecodeToImageFilter(image, facts, limits::kMaxSampleBytes);
    return jbig2;
  });
}

}  // namespace

bool IsOwnJbig2(const DocumentImage& image, const ImageFacts& facts) {
  const std::optional<Jbig2Data> jbig2 = DataOf(image, facts);
  return jbig2 && NeedsOwnJbig2(jbig2->globals, jbig2->data);
}

std::optional<Jbig2Rows> DecodeJbig2Image(const DocumentImage& image, const ImageFacts& facts) {
  const std::optional<Jbig2Data> jbig2 = DataOf(image, facts);
  return jbig2 ? DecodeJbig2(jbig2->globals, jbig2->data, facts.width, facts.height) : std::nullopt;
}

}  // namespace TarnixTools::engines
