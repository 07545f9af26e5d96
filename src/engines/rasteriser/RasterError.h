// What the rasteriser throws inside.
#ifndef TARNIX_ENGINES_RASTERISER_RASTERERROR_H_
#define TARNIX_ENGINES_RASTERISER_RASTERERROR_H_

#include <exception>

#include "engines/rasteriser/ErrorCodes.h"
#include "pdf/Error.h"

namespace TarnixTools::engines {

class RasterError : public std::exception {
 public:
  explicit RasterError(Pdf2ImgError code) : code_(code) {}

  Pdf2ImgError code() const { return code_; }

  const char* what() const noexcept override { return "rasteriser error"; }

 private:
  Pdf2ImgError code_;
};

// The code for the exception that is being handled.
Pdf2ImgError CodeOfCurrentException() noexcept;

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_RASTERISER_RASTERERROR_H_
