#include "engines/rasteriser/Pdf2ImgFailure.h"

namespace TarnixTools::engines::rasteriser {

Pdf2ImgError Pdf2ImgErrors::Of(const pdf::Error& error) {
  switch (error.code()) {
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

Pdf2ImgError Pdf2ImgErrors::Of(const DrawingError& error) {
  switch (error.code()) {
    case DrawingErrorCode::kFile:
      return kPdf2ImgFileError;
    case DrawingErrorCode::kPassword:
      return kPdf2ImgPasswordError;
    case DrawingErrorCode::kNotAPdf:
      return kPdf2ImgNotAPdfError;
    case DrawingErrorCode::kNoRenderer:
      return kPdf2ImgNoRendererError;
    case DrawingErrorCode::kPage:
      return kPdf2ImgPageError;
    case DrawingErrorCode::kMemory:
      return kPdf2ImgMemoryError;
  }
  return kPdf2ImgInternalError;
}

}  // namespace TarnixTools::engines::rasteriser
