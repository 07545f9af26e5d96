// Owners of the rasteriser's handles: what a guard holds is released on every path.
#ifndef TARNIX_CONVERSIONS_RASTERISER_HANDLES_H_
#define TARNIX_CONVERSIONS_RASTERISER_HANDLES_H_

#include <memory>

#include "engines/rasteriser/Rasteriser.h"

namespace TarnixTools {

struct RasteriserSession {
  RasteriserSession() { engines::Pdf2ImgInitialize(); }

  ~RasteriserSession() { engines::Pdf2ImgUnInitialize(); }

  RasteriserSession(const RasteriserSession&) = delete;
  RasteriserSession& operator=(const RasteriserSession&) = delete;
};

struct Pdf2ImgDestroyer {
  void operator()(engines::TPdf2Img* object) const noexcept {
    engines::Pdf2ImgDestroyObject(object);
  }
};

using Pdf2ImgPtr = std::unique_ptr<engines::TPdf2Img, Pdf2ImgDestroyer>;

}  // namespace TarnixTools

#endif  // TARNIX_CONVERSIONS_RASTERISER_HANDLES_H_
