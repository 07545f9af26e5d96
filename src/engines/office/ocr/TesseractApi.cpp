#include "engines/office/ocr/TesseractApi.h"

#include <type_traits>

#include "engines/support/files/DynamicLibrary.h"

namespace TarnixTools::engines::office {

namespace {

struct Loaded {
  Loaded() {
    const DynamicLibrary library({"libtesseract.so.5"});
    is_complete = library.is_loaded();
#define TARNIX_TESSERACT_RESOLVE(name) \
  is_complete = is_complete && library.Resolve(#name, api.name);
    TARNIX_TESSERACT_FUNCTIONS(TARNIX_TESSERACT_RESOLVE)
#undef TARNIX_TESSERACT_RESOLVE
    library.Resolve("omp_get_max_active_levels", api.omp_get_max_active_levels);
    library.Resolve("omp_set_max_active_levels", api.omp_set_max_active_levels);
  }

  TesseractApi api;
  bool is_complete = false;
};

}  // namespace

const TesseractApi* LoadTesseract() {
  static const Loaded loaded;
  return loaded.is_complete ? &loaded.api : nullptr;
}

}  // namespace TarnixTools::engines::office
