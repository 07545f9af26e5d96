#include "engines/img2pdf/Img2PdfFailure.h"

namespace TarnixTools::engines::img2pdf {

Img2PdfError Img2PdfErrors::Of(const pdf::Error& error) {
  switch (error.code()) {
    case pdf::ErrorCode::kReadFailed:
      return kImg2PdfReadError;
    case pdf::ErrorCode::kWriteFailed:
      return kImg2PdfWriteError;
    case pdf::ErrorCode::kLimitExceeded:
      return kImg2PdfLimitError;
    case pdf::ErrorCode::kSourceChanged:
      return kImg2PdfSourceChangedError;
    default:
      return kImg2PdfInternalError;
  }
}

Img2PdfError Img2PdfErrors::Of(const ImageError& error) {
  switch (error.code()) {
    case ImageErrorCode::kUnknownFormat:
      return kImg2PdfUnknownFormatError;
    case ImageErrorCode::kUnsupported:
      return kImg2PdfUnsupportedError;
    case ImageErrorCode::kDamaged:
      return kImg2PdfDamagedError;
    case ImageErrorCode::kLimit:
      return kImg2PdfLimitError;
  }
  return kImg2PdfInternalError;
}

}  // namespace TarnixTools::engines::img2pdf
