// A library that decodes a kind of image, loaded when the first of these comes.
#ifndef TARNIX_ENGINES_SUPPORT_CODECS_CODECLIBRARY_H_
#define TARNIX_ENGINES_SUPPORT_CODECS_CODECLIBRARY_H_

#include <string>

#include "engines/support/files/DynamicLibrary.h"
#include "engines/support/pictures/ImageError.h"

namespace TarnixTools::engines {

[[noreturn]] inline void ThrowUnsupported(const std::string& text) {
  throw ImageError(ImageErrorCode::kUnsupported, text);
}

using CodecLibrary = RequiredLibrary<ThrowUnsupported>;

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_CODECS_CODECLIBRARY_H_
