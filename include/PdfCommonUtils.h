// The few file operations that jobs need beside PDF work, and the library's version.
#ifndef TARNIX_PDF_COMMON_UTILS_H_
#define TARNIX_PDF_COMMON_UTILS_H_

#include <string>

#include "TarnixExport.h"

namespace TarnixTools {

class TARNIX_EXPORT PdfCommonUtils {
 public:
  PdfCommonUtils() = delete;

  static const std::string PDF_COMMON_MAJOR_VERSION;
  static const std::string PDF_COMMON_MINOR_VERSION;
  static const std::string PDF_COMMON_REVISION_VERSION;
  // The three above, joined by full stops.
  static const std::string PDF_LIB_VERSION;

  // True when the path (UTF-8, either separator, with or without one at its end) is an existing
  // directory.
  static bool IsDirectory(const std::string& path);

  // Deletes a file. A file that does not exist is no error. Throws FileNotFound for every other
  // failure, a directory included; of the path, that message shows the first character only.
  static void RemoveFile(const std::string& path);

  // PDF_LIB_VERSION.
  static const std::string& GetLibVersion();
};

}  // namespace TarnixTools

#endif  // TARNIX_PDF_COMMON_UTILS_H_
