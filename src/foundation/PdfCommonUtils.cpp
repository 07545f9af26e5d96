#include "PdfCommonUtils.h"

#include <cerrno>

#include "PdfException.h"
#include "foundation/Platform.h"
#include "foundation/Utf8.h"

namespace TarnixTools {

const std::string PdfCommonUtils::PDF_COMMON_MAJOR_VERSION = "5";
const std::string PdfCommonUtils::PDF_COMMON_MINOR_VERSION = "4";
const std::string PdfCommonUtils::PDF_COMMON_REVISION_VERSION = "0";
const std::string PdfCommonUtils::PDF_LIB_VERSION =
    PDF_COMMON_MAJOR_VERSION + "." + PDF_COMMON_MINOR_VERSION + "." + PDF_COMMON_REVISION_VERSION;

bool PdfCommonUtils::IsDirectory(const std::string& path) {
  return platform::IsDirectory(path);
}

void PdfCommonUtils::RemoveFile(const std::string& path) {
  if (platform::RemoveFile(path) || errno == ENOENT) {
    return;
  }
  const std::string reason = platform::ErrorText(errno);
  // Kept on purpose: the path is passed in its wide form, of which a narrow format shows the first
  // character.
  const std::wstring wide_path = Utf8ToWide(path);
  throw PdfException(PdfExceptionCode::FileNotFound, 0, "Error deleting file [%s] (%s)",
                     reinterpret_cast<const char*>(wide_path.c_str()), reason.c_str());
}

const std::string& PdfCommonUtils::GetLibVersion() {
  return PDF_LIB_VERSION;
}

}  // namespace TarnixTools
