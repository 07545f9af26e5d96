// Pictures through the contract.
#include <cmath>

#include "engines/toolbox/Guard.h"
#include "engines/toolbox/Handles.h"
#include "engines/toolbox/content/ContentText.h"

namespace TarnixTools::engines {

using namespace toolbox;

TPdfImage* PdfDocumentCreateImage(TPdfDocument* target, const TPdfStream* stream) {
  return Guarded({target, stream}, [&] {
    Require(target->target != nullptr);
    auto image = std::make_unique<TPdfImage>();
    image->target = &target->target->content();
    image->file = std::make_unique<StreamSource>(*stream);
    image->stored = image->target->images().Open(*image->file);
    image->stream = *stream;
    return image.release();
  });
}

std::int32_t PdfImageGetWidth(TPdfImage* image) {
  return image == nullptr ? 0 : static_cast<std::int32_t>(image->stored->width);
}

std::int32_t PdfImageGetHeight(TPdfImage* image) {
  return image == nullptr ? 0 : static_cast<std::int32_t>(image->stored->height);
}

int PdfContentGeneratorPaintImage(TPdfContentGenerator* generator, TPdfImage* image,
                                  const TPdfRectangle* rectangle) {
  return PdfContentGeneratorPaintAlphaImage(generator, image, rectangle, 1);
}

int PdfContentGeneratorPaintAlphaImage(TPdfContentGenerator* generator, TPdfImage* image,
                                       const TPdfRectangle* rectangle, double alpha) {
  return Guarded({generator, image, rectangle}, [&] {
    const double width = rectangle->right - rectangle->left;
    const double height = rectangle->top - rectangle->bottom;
    const pdf::Matrix place = {width, 0, 0, height, rectangle->left, rectangle->bottom};
    Require(image->target == generator->content.target && place.IsFinite() && width != 0 &&
            height != 0 && alpha >= 0 && alpha <= 1);
    const AddedResource resource = image->target->Write(
        [&] { return image->target->images().ResourceOf(*image->stored, *image->file); });
    generator->used.Add(resource);
    std::string& out = generator->operators;
    out += 'q';
    AppendAlpha(alpha, *image->target, out, generator->used);
    AppendTransform(out, image->stored->orientation * place);
    out += '/';
    out += kNamePrefix;
    out += resource.name + " Do Q\n";
  });
}

int PdfClose(TPdfImage* image) {
  return Guarded({image}, [&] {
    const std::unique_ptr<TPdfImage> owned(image);
    owned->stream.release(owned->stream.handle);
  });
}

}  // namespace TarnixTools::engines
