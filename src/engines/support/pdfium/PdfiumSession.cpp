#include "engines/support/pdfium/PdfiumSession.h"

#include "engines/support/files/DynamicLibrary.h"

#ifndef TARNIX_PDFIUM_LIBRARY
#define TARNIX_PDFIUM_LIBRARY ""
#endif

namespace TarnixTools::engines {
namespace {

// The one found when this was built, then those of the system and of LibreOffice.
DynamicLibrary LoadLibrary() {
  return DynamicLibrary(
      {TARNIX_PDFIUM_LIBRARY, "libpdfium.so", "/usr/lib/libreoffice/program/libpdfiumlo.so",
       "/usr/lib64/libreoffice/program/libpdfiumlo.so", "/opt/libreoffice/program/libpdfiumlo.so"});
}

struct Session {
  Session() {
    const DynamicLibrary library = LoadLibrary();
    is_complete = library.is_loaded();
#define TARNIX_PDFIUM_RESOLVE(result, name, parameters) \
  is_complete = library.Resolve(#name, api.name) && is_complete;
    TARNIX_PDFIUM_FUNCTIONS(TARNIX_PDFIUM_RESOLVE)
#undef TARNIX_PDFIUM_RESOLVE
    api.has_object_functions = is_complete;
#define TARNIX_PDFIUM_RESOLVE(result, name, parameters) \
  api.has_object_functions = library.Resolve(#name, api.name) && api.has_object_functions;
    TARNIX_PDFIUM_OBJECT_FUNCTIONS(TARNIX_PDFIUM_RESOLVE)
#undef TARNIX_PDFIUM_RESOLVE
    if (is_complete) {
      const pdfium::LibraryConfig config{2, nullptr, nullptr, 0};
      api.FPDF_InitLibraryWithConfig(&config);
    }
  }

  pdfium::Api api;
  bool is_complete = false;
};

std::mutex& OwnMutex() {
  static std::mutex mutex;
  return mutex;
}

// Never destroyed: documents may be closed while static objects go.
const pdfium::Api* OwnApi() {
  static const Session* const session = new Session;
  return session->is_complete ? &session->api : nullptr;
}

PdfiumShare& CurrentShare() {
  static PdfiumShare share{&OwnMutex(), &OwnApi};
  return share;
}

}  // namespace

PdfiumLock::PdfiumLock() : lock_(*CurrentShare().mutex) {
  api_ = CurrentShare().api();
}

PdfiumShare PdfiumLock::Share() {
  return CurrentShare();
}

void PdfiumLock::Use(const PdfiumShare& share) {
  CurrentShare() = share;
}

}  // namespace TarnixTools::engines
