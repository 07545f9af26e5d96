#include "engines/support/codecs/jpeg/CoefficientArrays.h"

namespace TarnixTools::engines::jpeg {

bool CoefficientArrays::Allocate(std::span<const ArraySize> sizes) {
  return Try([&] {
    jpeg_create_compress(&state_);
    auto* const common = reinterpret_cast<j_common_ptr>(&state_);
    for (std::size_t i = 0; i < sizes.size(); ++i) {
      arrays_[i] = state_.mem->request_virt_barray(common, JPOOL_IMAGE, TRUE, sizes[i].across,
                                                   sizes[i].down, sizes[i].unit_down);
    }
    state_.mem->realize_virt_arrays(common);
    return true;
  });
}

JBLOCKROW CoefficientArrays::Row(std::size_t component, std::uint32_t row) {
  JBLOCKROW blocks = nullptr;
  const bool is_there = Try([&] {
    blocks = *state_.mem->access_virt_barray(reinterpret_cast<j_common_ptr>(&state_),
                                             arrays_[component], row, 1, TRUE);
    return true;
  });
  return is_there ? blocks : nullptr;
}

}  // namespace TarnixTools::engines::jpeg
