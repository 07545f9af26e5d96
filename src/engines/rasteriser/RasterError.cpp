#include "engines/rasteriser/RasterError.h"

#include <new>

namespace TarnixTools::engines {
namespace {

Pdf2ImgError CodeOf(pdf::ErrorCode code) {
  switch (code) {
    case pdf::ErrorCode::kPasswordRequired:
      return kPdf2ImgPasswordError;
    case pdf::ErrorCode::kReadFailed:
    case pdf::ErrorCode::kSourceChanged:
      return kPdf2ImgFileError;
    case pdf::ErrorCode::kWriteFailed:
      return kPdf2ImgWriteError;
    case pdf::ErrorCode::kInternal:
      return kPdf2ImgInternalError;
    default:
      return kPdf2ImgNotAPdfError;
  }
}

}  // namespace

Pdf2ImgError CodeOfCurrentException() noexcept {
  try {
    throw;
  } catch (const RasterError& error) {
    return error.code();
  } catch (const pdf::Error& error) {
    return CodeOf(error.code());
  } catch (const std::bad_alloc&) {
    return kPdf2ImgMemoryError;
  } catch (...) {
    return kPdf2ImgInternalError;
  }
}

}  // namespace TarnixTools::engines
