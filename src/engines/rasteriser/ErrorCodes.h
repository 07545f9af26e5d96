// What Pdf2ImgGetErrorCode answers. 0x80410112 is fixed; the others are listed with their meaning
// in docs/engines.md.
#ifndef TARNIX_ENGINES_RASTERISER_ERRORCODES_H_
#define TARNIX_ENGINES_RASTERISER_ERRORCODES_H_

#include <cstdint>

namespace TarnixTools::engines {

enum Pdf2ImgError : std::uint32_t {
  kPdf2ImgNoError = 0,
  kPdf2ImgInternalError = 0x80410101,
  kPdf2ImgMemoryError = 0x80410102,
  kPdf2ImgArgumentError = 0x80410103,     // a call out of order, or a value out of range
  kPdf2ImgNoRendererError = 0x80410104,   // PDFium is not installed
  kPdf2ImgFileError = 0x80410110,         // the file cannot be opened or read
  kPdf2ImgNotAPdfError = 0x80410111,      // the file is no PDF document, or damaged beyond reading
  kPdf2ImgPasswordError = 0x80410112,     // the password is missing or wrong
  kPdf2ImgPageError = 0x80410120,         // the page cannot be loaded
  kPdf2ImgImageSizeError = 0x80410121,    // the image would be larger than the format can be
  kPdf2ImgPartialPageError = 0x80410122,  // part of the page is left out
  kPdf2ImgCreateError = 0x80410130,       // the image file cannot be created
  kPdf2ImgWriteError = 0x80410131,        // the image file cannot be written
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_RASTERISER_ERRORCODES_H_
