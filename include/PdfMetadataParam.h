// Which entry of the document information is meant.
#ifndef TARNIX_PDF_METADATA_PARAM_H_
#define TARNIX_PDF_METADATA_PARAM_H_

#include <cstdint>

namespace TarnixTools {

enum class PdfMetadataParam : std::int32_t {
  Author = 0,
  Keywords = 1,
  Creator = 2,
  Producer = 3,
};

}  // namespace TarnixTools

#endif  // TARNIX_PDF_METADATA_PARAM_H_
