// The functions of Tesseract that are called here, from its library, which is loaded when the first
// page is to be recognised: documents that have text do without it.
#ifndef TARNIX_ENGINES_OFFICE_OCR_TESSERACTAPI_H_
#define TARNIX_ENGINES_OFFICE_OCR_TESSERACTAPI_H_

#include <tesseract/capi.h>

namespace TarnixTools::engines::office {

#define TARNIX_TESSERACT_FUNCTIONS(X)         \
  X(TessBaseAPICreate)                        \
  X(TessBaseAPIDelete)                        \
  X(TessBaseAPIInit3)                         \
  X(TessBaseAPIGetAvailableLanguagesAsVector) \
  X(TessBaseAPISetPageSegMode)                \
  X(TessBaseAPISetImage)                      \
  X(TessBaseAPISetSourceResolution)           \
  X(TessBaseAPISetVariable)                   \
  X(TessBaseAPIRecognize)                     \
  X(TessBaseAPIGetIterator)                   \
  X(TessBaseAPIClear)                         \
  X(TessBaseAPIDetectOrientationScript)       \
  X(TessDeleteText)                           \
  X(TessDeleteTextArray)                      \
  X(TessPageIteratorBoundingBox)              \
  X(TessPageIteratorBaseline)                 \
  X(TessPageIteratorIsAtBeginningOf)          \
  X(TessResultIteratorDelete)                 \
  X(TessResultIteratorGetPageIteratorConst)   \
  X(TessResultIteratorNext)                   \
  X(TessResultIteratorGetUTF8Text)            \
  X(TessResultIteratorConfidence)             \
  X(TessMonitorCreate)                        \
  X(TessMonitorDelete)                        \
  X(TessMonitorSetCancelFunc)                 \
  X(TessMonitorSetCancelThis)

struct TesseractApi {
// NOLINTNEXTLINE(bugprone-macro-parentheses): what the macro declares is its argument.
#define TARNIX_TESSERACT_MEMBER(name) decltype(&::name) name = nullptr;
  TARNIX_TESSERACT_FUNCTIONS(TARNIX_TESSERACT_MEMBER)
#undef TARNIX_TESSERACT_MEMBER
  // Of the OpenMP that Tesseract is built with, for the calling thread; null without one.
  int (*omp_get_max_active_levels)() = nullptr;
  void (*omp_set_max_active_levels)(int) = nullptr;
};

// Null when Tesseract is not installed, or is another one.
const TesseractApi* LoadTesseract();

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_ENGINES_OFFICE_OCR_TESSERACTAPI_H_
