// What the conversion library takes from the process that loads it, so that there is one PDFium
// with one lock, although the library is a shared library of its own.
#ifndef TARNIX_ENGINES_OFFICE_LOADING_HOSTSERVICES_H_
#define TARNIX_ENGINES_OFFICE_LOADING_HOSTSERVICES_H_

#include <cstdint>

#include "engines/office/Office.h"
#include "engines/support/pdfium/PdfiumSession.h"

namespace TarnixTools::engines::office {

// Changes with every change of what passes between the two libraries.
inline constexpr std::int32_t kConversionLibraryVersion = 3;
inline constexpr const char* kConversionLibraryEntry = "TarnixOfficeServices";

struct HostServices {
  PdfiumShare pdfium;
};

// The library's one function. Null for another version. The services live as long as the process.
using ConversionLibraryEntry = ConversionSdk::ConversionServices*(std::int32_t version,
                                                                  const HostServices& host);

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_ENGINES_OFFICE_LOADING_HOSTSERVICES_H_
