#include "engines/optimizer/fonts/SamePrograms.h"

#include "engines/optimizer/fonts/FontLimits.h"
#include "pdf/crypt/Digests.h"

namespace TarnixTools::engines::optimizer {

std::map<std::uint32_t, std::uint32_t> FindSamePrograms(pdf::Document& document,
                                                        const std::vector<std::uint32_t>& streams) {
  std::map<std::uint32_t, std::uint32_t> same;
  std::map<pdf::crypt::Block<32>, std::uint32_t> known;
  for (const std::uint32_t number : streams) {
    const auto program = document.TryDecodeStream(number, limits::kMaxProgramBytes);
    if (!program || !program->complete) {
      continue;
    }
    const auto [first, is_new] = known.emplace(pdf::crypt::Sha256({program->data}), number);
    if (!is_new) {
      same.emplace(number, first->second);
    }
  }
  return same;
}

}  // namespace TarnixTools::engines::optimizer
