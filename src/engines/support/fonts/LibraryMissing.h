// What is thrown when one of the font libraries, or a function of it, cannot be had.
#ifndef TARNIX_ENGINES_SUPPORT_FONTS_LIBRARYMISSING_H_
#define TARNIX_ENGINES_SUPPORT_FONTS_LIBRARYMISSING_H_

#include <stdexcept>
#include <string>

namespace TarnixTools::engines::fonts {

class LibraryMissing : public std::runtime_error {
 public:
  explicit LibraryMissing(const std::string& name) : std::runtime_error(name) {}
};

}  // namespace TarnixTools::engines::fonts

#endif  // TARNIX_ENGINES_SUPPORT_FONTS_LIBRARYMISSING_H_
