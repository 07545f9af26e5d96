// Images that are decoded by PDFium: those with filters or colour spaces that are not computed
// here, as JBIG2, Separation and DeviceN.
#ifndef TARNIX_ENGINES_SUPPORT_IMAGES_PDFIUMPICTURE_H_
#define TARNIX_ENGINES_SUPPORT_IMAGES_PDFIUMPICTURE_H_

#include "engines/support/images/DocumentImage.h"
#include "engines/support/pictures/RowSource.h"

namespace TarnixTools::engines {

// The picture with its masks, on white. Null when PDFium is not installed or cannot make sense of
// it. The image is copied, so the document may be closed before.
//   is_gray - the picture has no colours
RowSourcePtr OpenWithPdfium(const DocumentImage& image, const ImageFacts& facts, bool is_gray);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_IMAGES_PDFIUMPICTURE_H_
