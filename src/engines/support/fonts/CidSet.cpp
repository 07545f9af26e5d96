#include "engines/support/fonts/CidSet.h"

#include <algorithm>
#include <cstddef>

#include "engines/support/fonts/FontProgram.h"

namespace TarnixTools::engines::fonts {

namespace {
constexpr std::uint32_t kMaxCid = 0xFFFF;
}  // namespace

void CidSet::Add(std::uint32_t cid) {
  if (cid <= kMaxCid) {
    bits_.resize(std::max<std::size_t>(bits_.size(), cid / 8 + 1));
    bits_[cid / 8] = static_cast<char>(bits_[cid / 8] | 0x80 >> cid % 8);
  }
}

void CidSet::AddAllOf(const FontProgram& program) {
  for (std::uint32_t cid = 1; cid <= kMaxCid; ++cid) {
    if (program.is_cid_keyed() ? program.GlyphOfCid(cid) != 0 : cid < program.glyph_count()) {
      Add(cid);
    }
  }
}

}  // namespace TarnixTools::engines::fonts
