// What Img2PdfGetErrorCode answers; docs/engines.md lists the meanings.
#ifndef TARNIX_ENGINES_IMG2PDF_ERRORCODES_H_
#define TARNIX_ENGINES_IMG2PDF_ERRORCODES_H_

#include <cstdint>

namespace TarnixTools::engines {

enum Img2PdfError : std::int32_t {
  kImg2PdfNoError = 0,
  kImg2PdfInternalError = 1,
  kImg2PdfReadError = 2,
  kImg2PdfWriteError = 3,
  kImg2PdfUnknownFormatError = 4,
  kImg2PdfUnsupportedError = 5,
  kImg2PdfDamagedError = 6,
  kImg2PdfLimitError = 8,
  kImg2PdfSourceChangedError = 10,
  kImg2PdfArgumentError = 11,
  kImg2PdfMemoryError = 12,
  kImg2PdfOpenError = 13,
  kImg2PdfCreateError = 14,
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_IMG2PDF_ERRORCODES_H_
