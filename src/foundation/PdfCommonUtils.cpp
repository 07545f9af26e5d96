#include "PdfCommonUtils.h"

#include <cerrno>
#include <string_view>

#include "PdfException.h"
#include "foundation/PageNumber.h"
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

std::string PdfCommonUtils::GetNativePath(const std::string& path) {
  return platform::NativePath(path);
}

std::string PdfCommonUtils::FormName(const std::string& pattern, const std::string& stem,
                                     const std::string& number) {
  constexpr std::string_view kStem = "{stem}";
  constexpr std::string_view kNumber = "{n}";
  std::string name;
  for (std::size_t i = 0; i < pattern.size();) {
    const std::string_view rest = std::string_view(pattern).substr(i);
    if (rest.starts_with(kStem)) {
      name += stem;
      i += kStem.size();
    } else if (rest.starts_with(kNumber)) {
      name += number;
      i += kNumber.size();
    } else {
      name += pattern[i++];
    }
  }
  return name;
}

std::string PdfCommonUtils::FormName(const std::string& pattern, const std::string& stem,
                                     int number) {
  constexpr std::size_t kDigits = 4;
  return FormName(pattern, stem, PaddedNumber(number, kDigits));
}

const std::string& PdfCommonUtils::GetLibVersion() {
  return PDF_LIB_VERSION;
}

}  // namespace TarnixTools
