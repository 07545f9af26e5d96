// A library that decodes a kind of image, loaded when the first of these comes.
#ifndef TARNIX_ENGINES_SUPPORT_CODECS_CODECLIBRARY_H_
#define TARNIX_ENGINES_SUPPORT_CODECS_CODECLIBRARY_H_

#include <string>

#include "engines/support/files/DynamicLibrary.h"
#include "engines/support/pictures/ImageError.h"

namespace TarnixTools::engines {

class CodecLibrary {
 public:
  // Throws ImageError(kUnsupported) when it is not installed.
  explicit CodecLibrary(const char* name) : library_({name}) {
    if (!library_.is_loaded()) {
      throw ImageError(ImageErrorCode::kUnsupported, std::string(name) + " is not installed");
    }
  }

  // Throws ImageError(kUnsupported) when the library has no such function.
  template <typename Function>
  void Resolve(Function*& function, const char* name) const {
    if (!library_.Resolve(name, function)) {
      throw ImageError(ImageErrorCode::kUnsupported,
                       std::string("a library for images has no ") + name);
    }
  }

 private:
  DynamicLibrary library_;
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_CODECS_CODECLIBRARY_H_
