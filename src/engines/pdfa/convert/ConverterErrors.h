// What Pdf2PdfGetErrorCode answers. 17 and 0x83410540 are fixed; the others are listed with their
// meaning in docs/engines.md.
#ifndef TARNIX_ENGINES_PDFA_CONVERT_CONVERTERERRORS_H_
#define TARNIX_ENGINES_PDFA_CONVERT_CONVERTERERRORS_H_

#include <cstdint>

namespace TarnixTools::engines {

enum Pdf2PdfError : std::uint32_t {
  kConverterNoError = 0,
  kConverterInternalError = 1,
  kConverterReadError = 2,
  kConverterWriteError = 3,
  kConverterNotAPdfError = 4,
  kConverterNoPagesError = 5,
  kConverterUnsupportedSecurityError = 6,
  kConverterDamagedSecurityError = 7,
  kConverterLimitError = 8,
  kConverterFilterError = 9,
  kConverterSourceChangedError = 10,
  kConverterArgumentError = 11,
  kConverterMemoryError = 12,
  kConverterOpenError = 13,
  kConverterCreateError = 14,
  kConverterNotReachedError = 15,  // not even PDF/A-2b
  kConverterMetadataError = 16,
  kConverterPasswordError = 17,
  kConverterNoRendererError = 18,
  kConverterLibraryError = 19,  // one of those for fonts
  kConverterDowngradedError = 0x83410540,
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_PDFA_CONVERT_CONVERTERERRORS_H_
