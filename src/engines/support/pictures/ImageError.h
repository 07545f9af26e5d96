// What the image code throws when a file cannot be turned into an image of a PDF document. A source
// that cannot be read is a pdf::Error.
#ifndef TARNIX_ENGINES_SUPPORT_PICTURES_IMAGEERROR_H_
#define TARNIX_ENGINES_SUPPORT_PICTURES_IMAGEERROR_H_

#include <stdexcept>
#include <string>

namespace TarnixTools::engines {

enum class ImageErrorCode {
  kUnknownFormat,  // the content is no image of a kind we know
  kUnsupported,    // a variant of a known format that cannot be read here
  kDamaged,        // nothing of the picture can be had
  kLimit,          // a bound of a Limits.h was passed
};

class ImageError : public std::runtime_error {
 public:
  ImageError(ImageErrorCode code, const std::string& message)
      : std::runtime_error(message), code_(code) {}

  ImageErrorCode code() const { return code_; }

 private:
  ImageErrorCode code_;
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_PICTURES_IMAGEERROR_H_
