// PageDecorator: images.
#include <cmath>

#include "PdfException.h"
#include "document/PageDecorator.h"

namespace TarnixTools {
namespace {

[[noreturn]] void ThrowEngineError(const char* message) {
  throw PdfException(PdfExceptionCode::EngineError, engines::PdfGetLastError(), "%s", message);
}

[[noreturn]] void ThrowPaintingError(const char* what) {
  const std::int32_t error = engines::PdfGetLastError();
  throw PdfException(PdfExceptionCode::EngineError, error, "%s. ERROR [%d]", what, error);
}

// An image of no size, or of one without end, cannot be painted.
void RequirePixelsPerPoint(const PdfTransformation& transformation) {
  const double pixels = transformation.GetPixelsPerPoint();
  if (transformation.GetImageWidth() > 0) {
    return;
  }
  if (!std::isfinite(pixels) || !std::isfinite(1 / pixels)) {
    throw PdfException(PdfExceptionCode::InvalidParameter, 0,
                       "Invalid image resolution [%g] (expected a number of pixels per point)",
                       pixels);
  }
}

double PointsPerPixel(const PdfTransformation& transformation, double page_width,
                      double image_pixels) {
  const double width = transformation.GetImageWidth();
  if (width <= 0) {
    return 1 / transformation.GetPixelsPerPoint();
  }
  const bool is_of_page =
      transformation.GetImageWidthUnit() == PdfTransformWidthUnit::PercentOfPage;
  return (is_of_page ? width * 0.01 * page_width : width) / image_pixels;
}

int Paint(engines::TPdfContentGenerator* generator, engines::TPdfImage* image,
          const engines::TPdfRectangle& rectangle, const PdfTransformation& transformation) {
  const double alpha = transformation.GetApplyOpacity() ? transformation.GetOpacity() * 0.01 : 1;
  return engines::PdfContentGeneratorPaintAlphaImage(generator, image, &rectangle, alpha);
}

// Where an image goes on a page of this size, before it is rotated; image_size becomes its size in
// points. An absolute position is taken crosswise, y from the point's x and x from its y, and has no
// margins; pages do not face each other: as intended.
void CalculateImgRectangle(const PdfTransformation& transformation,
                           const engines::TPdfSize& page_size, engines::TPdfImage* image,
                           engines::TPdfRectangle& rectangle, engines::TPdfSize& image_size) {
  const std::int32_t pixels = engines::PdfImageGetWidth(image);
  const double points_per_pixel = PointsPerPixel(transformation, page_size.width, pixels);
  const double width = pixels * points_per_pixel;
  const double height = engines::PdfImageGetHeight(image) * points_per_pixel;
  double x = page_size.width * 0.5 - width * 0.5;
  double y = page_size.height * 0.5 - height * 0.5;
  const double to_margin_x = x - transformation.GetMarginX();
  const double to_margin_y = y - transformation.GetMarginY();
  switch (transformation.GetVerticalPosition()) {
    case PdfTransformVerticalPos::Top:
      y += to_margin_y;
      break;
    case PdfTransformVerticalPos::Bottom:
      y -= to_margin_y;
      break;
    case PdfTransformVerticalPos::Middle:
      break;
    case PdfTransformVerticalPos::Absolute:
      y = transformation.GetAbsolutePositionX();
      break;
  }
  y += transformation.GetVerticalAdjustment();
  switch (transformation.GetHorizontalPosition()) {
    case PdfTransformHorizontalPos::Left:
      x -= to_margin_x;
      break;
    case PdfTransformHorizontalPos::Center:
      break;
    case PdfTransformHorizontalPos::Right:
      x += to_margin_x;
      break;
    case PdfTransformHorizontalPos::Absolute:
      x = transformation.GetAbsolutePositionY();
      break;
  }
  x += transformation.GetHorizontalAdjustment();
  rectangle = {x, y, x + width, y + height};
  image_size = {width, height};
}

// About the image's centre.
TransformationPtr RotationOf(const PdfTransformation& transformation,
                             const engines::TPdfPoint& center) {
  TransformationPtr rotation(engines::PdfNewTransformationIdentity());
  if (rotation == nullptr) {
    ThrowEngineError("Unable to create PDF transformation");
  }
  engines::PdfTransformationTranslate(rotation.get(), center.x, center.y);
  if (engines::PdfTransformationRotate(rotation.get(), transformation.GetRotation()) == 0) {
    ThrowPaintingError("Img rotation definition failed");
  }
  engines::PdfTransformationTranslate(rotation.get(), -center.x, -center.y);
  return rotation;
}

void PaintRotated(engines::TPdfContentGenerator* generator, engines::TPdfImage* image,
                  const engines::TPdfRectangle& rectangle, const PdfTransformation& transformation,
                  TransformationPtr rotation) {
  if (engines::PdfContentGeneratorTransform(generator, rotation.get()) == 0) {
    ThrowPaintingError("Img rotation execution failed");
  }
  if (Paint(generator, image, rectangle, transformation) == 0) {
    ThrowPaintingError("Could not paint rotated image");
  }
}

}  // namespace

bool PageDecorator::StampImageIntoPage(const DecoratedPage& page, PdfTransformation& transformation,
                                       const DecorationHandles& handles) const {
  RequirePixelsPerPoint(transformation);
  const engines::TPdfSize page_size = PageSizeOf(page);
  if (transformation.GetMosaic()) {
    PaintImgMosaicOnPage(page, page_size, transformation, handles);
    return true;
  }
  return PaintImageOnPage(page, page_size, transformation, handles);
}

void PageDecorator::PaintImgMosaicOnPage(const DecoratedPage& page,
                                         const engines::TPdfSize& page_size,
                                         PdfTransformation& transformation,
                                         const DecorationHandles& handles) const {
  ForEachTile(transformation, [&] { PaintImageOnPage(page, page_size, transformation, handles); });
}

bool PageDecorator::PaintImageOnPage(const DecoratedPage& page, const engines::TPdfSize& page_size,
                                     const PdfTransformation& transformation,
                                     const DecorationHandles& handles) const {
  const ContentPtr content(engines::PdfPageGetContent(page.page));
  ContentGeneratorPtr generator(
      engines::PdfNewContentGenerator(content.get(), IsPrepended(transformation)));
  if (generator == nullptr) {
    ThrowEngineError("Unable to create stamp image generator");
  }
  engines::TPdfRectangle rectangle;
  engines::TPdfSize image_size;
  CalculateImgRectangle(transformation, page_size, handles.image.get(), rectangle, image_size);
  const engines::TPdfPoint center = {rectangle.left + image_size.width * 0.5,
                                     rectangle.bottom + image_size.height * 0.5};
  const bool is_rotated = transformation.GetRotation() != 0.0;
  if (is_rotated) {
    engines::PdfContentGeneratorSave(generator.get());
    PaintRotated(generator.get(), handles.image.get(), rectangle, transformation,
                 RotationOf(transformation, center));
    engines::PdfContentGeneratorRestore(generator.get());
  } else if (Paint(generator.get(), handles.image.get(), rectangle, transformation) == 0) {
    ThrowPaintingError("Could not paint image on page without rotation");
  }
  if (engines::PdfClose(generator.release()) == 0) {
    ThrowPaintingError(is_rotated ? "Could not paint rotated image"
                                  : "Could not paint image on page without rotation");
  }
  return IsOnPage(rectangle, center, transformation.GetRotation(), page_size);
}

}  // namespace TarnixTools
