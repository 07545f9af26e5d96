#include "engines/rasteriser/RasterError.h"

#include <new>

#include "engines/support/drawing/DrawingError.h"

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

Pdf2ImgError CodeOf(DrawingErrorCode code) {
  switch (code) {
    case DrawingErrorCode::kFile:
      return kPdf2ImgFileError;
    case DrawingErrorCode::kPassword:
      return kPdf2ImgPasswordError;
    case DrawingErrorCode::kNotAPdf:
      return kPdf2ImgNotAPdfError;
    case DrawingErrorCode::kNoRenderer:
      return kPdf2ImgNoRendererError;
    case DrawingErrorCode::kScratch:
      return kPdf2ImgWriteError;
    case DrawingErrorCode::kPage:
      return kPdf2ImgPageError;
    case DrawingErrorCode::kMemory:
      return kPdf2ImgMemoryError;
  }
  return kPdf2ImgInternalError;
}

}  // namespace

Pdf2ImgError CodeOfCurrentException() noexcept {
  try {
    throw;
  } catch (const RasterError& error) {
    return error.code();
  } catch (const DrawingError& error) {
    return CodeOf(error.code());
  } catch (const pdf::Error& error) {
    return CodeOf(error.code());
  } catch (const std::bad_alloc&) {
    return kPdf2ImgMemoryError;
  } catch (...) {
    return kPdf2ImgInternalError;
  }
}

}  // namespace TarnixTools::engines
