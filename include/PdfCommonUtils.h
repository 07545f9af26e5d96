// The few file operations that jobs need beside PDF work, and the library's version.
//
//   std::cout << "TarnixTools " << PdfCommonUtils::GetLibVersion();   // 5.4.0
//   if (!PdfCommonUtils::IsDirectory("/data/out")) { ... }
//
// Paths are UTF-8 with backslashes or slashes, as everywhere in the library; bytes that are not
// valid UTF-8 reach the system unchanged.
#ifndef TARNIX_PDF_COMMON_UTILS_H_
#define TARNIX_PDF_COMMON_UTILS_H_

#include <string>

#include "TarnixExport.h"

namespace TarnixTools {

// Functions without state, which may be called from any thread.
class TARNIX_EXPORT PdfCommonUtils {
 public:
  PdfCommonUtils() = delete;

  // The three numbers of the version, in decimal digits. The binary interface changes with the
  // first only, so that a host may be run with any later version of its major one.
  static const std::string PDF_COMMON_MAJOR_VERSION;
  static const std::string PDF_COMMON_MINOR_VERSION;
  static const std::string PDF_COMMON_REVISION_VERSION;
  // The three numbers, joined by full stops.
  static const std::string PDF_LIB_VERSION;

  // True when the path (UTF-8, either separator, with or without one at its end) is an existing
  // directory, or a symbolic link to one. False for everything else, also for what cannot be looked
  // at. Throws nothing.
  static bool IsDirectory(const std::string& path);

  // Deletes a file; of a symbolic link, the link. A file that does not exist is no error. Throws
  // PdfException with the code FileNotFound for every other failure, a directory included; of the
  // path, that message shows the first character only.
  static void RemoveFile(const std::string& path);

  // A path in the form of the system, with slashes on this one: what tasks hand back has backslashes.
  static std::string GetNativePath(const std::string& path);

  // A name made by a pattern: every "{stem}" in it becomes the stem and every "{n}" the number; what
  // the two hold is taken as it is.
  static std::string FormName(const std::string& pattern, const std::string& stem,
                              const std::string& number);

  // With a number in four digits, or as many more as it takes.
  static std::string FormName(const std::string& pattern, const std::string& stem, int number);

  // PDF_LIB_VERSION. The text is there as long as the library is loaded.
  static const std::string& GetLibVersion();
};

}  // namespace TarnixTools

#endif  // TARNIX_PDF_COMMON_UTILS_H_
