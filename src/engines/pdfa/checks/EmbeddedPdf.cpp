#include "engines/pdfa/checks/EmbeddedPdf.h"

#include <memory>
#include <optional>
#include <utility>

#include "engines/pdfa/Claim.h"
#include "engines/pdfa/Validation.h"
#include "pdf/Error.h"
#include "pdf/file/ByteSource.h"

namespace TarnixTools::engines::pdfa {

bool IsEmbeddedPdfA(pdf::Document& document, std::uint32_t number, int depth) {
  if (depth >= limits::kMaxEmbeddedDepth) {
    return false;
  }
  std::optional<pdf::Decoded> stream = document.TryDecodeStream(number, limits::kMaxEmbeddedFile);
  if (!stream || !stream->data.starts_with("%PDF-")) {
    return false;
  }
  return pdf::UnlessDamaged(false, [&] {
    const auto embedded =
        pdf::Document::Open(std::make_unique<pdf::MemorySource>(std::move(stream->data)), "");
    const std::optional<Level> claim = ClaimedLevel(*embedded);
    ValidationOptions options{.most_of_rule = 1, .embedded_depth = depth + 1};
    return claim && PartOf(*claim) <= 2 && Validate(*embedded, *claim, options).is_valid();
  });
}

}  // namespace TarnixTools::engines::pdfa
