#include "engines/support/drawing/PageObjects.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

#include "engines/support/drawing/DrawingLimits.h"

namespace TarnixTools::engines {
namespace {

using pdfium::PageObject;

// Kept free around what is painted: strokes and glyphs reach a little beyond their boxes.
constexpr double kMargin = 3;

// Where lines meet, in pixels; what is this near to a whole pixel does not reach into the next.
constexpr double kTolerance = 0.02;

struct Point {
  double x = 0;
  double y = 0;
};

Point Apply(const pdf::Matrix& matrix, double x, double y) {
  return {matrix.a * x + matrix.c * y + matrix.e, matrix.b * x + matrix.d * y + matrix.f};
}

int ToPixel(double value) {
  constexpr double kMost = 10'000'000;
  return static_cast<int>(std::clamp(std::isnan(value) ? kMost : value, -kMost, kMost));
}

PixelBox Around(double left, double top, double right, double bottom) {
  return {ToPixel(std::floor(left)), ToPixel(std::floor(top)), ToPixel(std::ceil(right)),
          ToPixel(std::ceil(bottom))};
}

bool IsNear(double a, double b) {
  return std::abs(a - b) < kTolerance;
}

// The rectangle that an object's clip path is, when its sides go along the pixels.
std::optional<PixelBox> RectangleOf(const std::vector<Point>& points) {
  if (points.size() < 4 || points.size() > 5) {
    return std::nullopt;
  }
  const auto [left, right] = std::minmax({points[0].x, points[2].x});
  const auto [top, bottom] = std::minmax({points[0].y, points[2].y});
  for (std::size_t i = 0; i < points.size(); ++i) {
    const Point& point = points[i];
    const Point& next = points[(i + 1) % 4];
    const bool is_corner = (IsNear(point.x, left) || IsNear(point.x, right)) &&
                           (IsNear(point.y, top) || IsNear(point.y, bottom));
    const bool is_straight = IsNear(point.x, next.x) || IsNear(point.y, next.y);
    const bool closes = i < 4 || (IsNear(point.x, points[0].x) && IsNear(point.y, points[0].y));
    if (!is_corner || !closes || (i < 4 && !is_straight)) {
      return std::nullopt;
    }
  }
  return Around(left + kTolerance, top + kTolerance, right - kTolerance, bottom - kTolerance);
}

class ObjectReader {
 public:
  ObjectReader(const PdfiumLock& pdfium, pdfium::Page* page, const Placement& placement)
      : pdfium_(&pdfium), page_(page), placement_(placement) {}

  PageObjects Read() {
    const pdfium::Api& api = Api();
    const int count = api.FPDFPage_CountObjects(page_);
    if (count > limits::kMaxObjectsLookedAt || !HasImages(count) || !ReadPageMatrix()) {
      return {};
    }
    for (int i = 0; i < count; ++i) {
      PageObject* object = api.FPDFPage_GetObject(page_, i);
      if (api.FPDFPageObj_GetType(object) == pdfium::kImageObject) {
        AddImage(object);
      }
      found_.boxes.push_back(BoxOf(object));
    }
    return std::move(found_);
  }

 private:
  const pdfium::Api& Api() const { return *pdfium_->operator->(); }

  bool HasImages(int count) const {
    for (int i = 0; i < count; ++i) {
      if (Api().FPDFPageObj_GetType(Api().FPDFPage_GetObject(page_, i)) == pdfium::kImageObject) {
        return true;
      }
    }
    return false;
  }

  // PDFium tells what is where on the page; this is the other way round.
  bool ReadPageMatrix() {
    const auto at = [this](int x, int y) {
      Point point;
      Api().FPDF_DeviceToPage(page_, placement_.left, placement_.top, placement_.width,
                              placement_.height, 0, placement_.left + x, placement_.top + y,
                              &point.x, &point.y);
      return point;
    };
    const Point origin = at(0, 0);
    const Point right = at(placement_.width, 0);
    const Point down = at(0, placement_.height);
    const double a = (right.x - origin.x) / placement_.width;
    const double b = (right.y - origin.y) / placement_.width;
    const double c = (down.x - origin.x) / placement_.height;
    const double d = (down.y - origin.y) / placement_.height;
    const double determinant = a * d - b * c;
    if (!(std::abs(determinant) > 0) || !std::isfinite(determinant)) {
      return false;
    }
    to_bitmap_ = {d / determinant, -b / determinant, -c / determinant, a / determinant, 0, 0};
    const Point moved = Apply(to_bitmap_, origin.x, origin.y);
    to_bitmap_.e = placement_.left - moved.x;
    to_bitmap_.f = placement_.top - moved.y;
    return true;
  }

  PixelBox BoxOf(PageObject* object) const {
    const pdfium::Api& api = Api();
    if (api.FPDFPageObj_GetType(object) == pdfium::kTextObject &&
        api.FPDFTextObj_GetTextRenderMode(object) == pdfium::kInvisibleText) {
      return {};
    }
    float left = 0;
    float bottom = 0;
    float right = 0;
    float top = 0;
    if (api.FPDFPageObj_GetBounds(object, &left, &bottom, &right, &top) == 0) {
      return Whole();
    }
    const Point first = Apply(to_bitmap_, left, bottom);
    const Point second = Apply(to_bitmap_, right, top);
    return Around(std::min(first.x, second.x) - kMargin, std::min(first.y, second.y) - kMargin,
                  std::max(first.x, second.x) + kMargin, std::max(first.y, second.y) + kMargin);
  }

  PixelBox Whole() const {
    return {placement_.left, placement_.top, placement_.left + placement_.width,
            placement_.top + placement_.height};
  }

  void AddImage(PageObject* object) {
    ImageObject image;
    image.object = object;
    image.objects_before = found_.boxes.size();
    pdfium::ImageMetadata metadata{};
    pdfium::Matrix matrix{};
    if (Api().FPDFImageObj_GetImageMetadata(object, nullptr, &metadata) != 0 &&
        Api().FPDFPageObj_GetMatrix(object, &matrix) != 0) {
      image.width = metadata.width;
      image.height = metadata.height;
      image.matrix =
          pdf::Matrix{matrix.a, matrix.b, matrix.c, matrix.d, matrix.e, matrix.f} * to_bitmap_;
      image.to_page = image.matrix * ToPoints();
      const std::optional<PixelBox> clip = ClipOf(object);
      image.is_opaque =
          clip && Api().FPDFPageObj_HasTransparency(object) == 0 && !IsInLayer(object);
      image.clip = Whole().With(clip.value_or(PixelBox{}));
    }
    found_.images.push_back(image);
  }

  // The matrix from the bitmap to the page as it is seen.
  pdf::Matrix ToPoints() const {
    const double x = Api().FPDF_GetPageWidth(page_) / placement_.width;
    const double y = Api().FPDF_GetPageHeight(page_) / placement_.height;
    return {x, 0, 0, -y, -placement_.left * x, (placement_.top + placement_.height) * y};
  }

  // Nothing for a clip that is no rectangle.
  std::optional<PixelBox> ClipOf(PageObject* object) const {
    PixelBox box = Whole();
    pdfium::ClipPath* clip = Api().FPDFPageObj_GetClipPath(object);
    const int count = clip != nullptr ? Api().FPDFClipPath_CountPaths(clip) : 0;
    for (int i = 0; i < count; ++i) {
      const std::optional<PixelBox> rectangle = RectangleOf(PointsOf(clip, i));
      if (!rectangle) {
        return std::nullopt;
      }
      box = box.With(*rectangle);
    }
    return box;
  }

  // None for a path that has more than some lines.
  std::vector<Point> PointsOf(pdfium::ClipPath* clip, int index) const {
    std::vector<Point> points;
    const int count = Api().FPDFClipPath_CountPathSegments(clip, index);
    for (int i = 0; i < count; ++i) {
      pdfium::PathSegment* segment = Api().FPDFClipPath_GetPathSegment(clip, index, i);
      const int type = segment != nullptr ? Api().FPDFPathSegment_GetType(segment) : -1;
      float x = 0;
      float y = 0;
      if (count > 5 || type != (i == 0 ? pdfium::kMoveSegment : pdfium::kLineSegment) ||
          Api().FPDFPathSegment_GetPoint(segment, &x, &y) == 0) {
        return {};
      }
      points.push_back(Apply(to_bitmap_, x, y));
    }
    return points;
  }

  // Whether the object belongs to a layer, or may.
  bool IsInLayer(PageObject* object) const {
    const int count = Api().FPDFPageObj_CountMarks(object);
    for (int i = 0; i < count; ++i) {
      pdfium::Mark* mark = Api().FPDFPageObj_GetMark(object, static_cast<unsigned long>(i));
      std::array<char16_t, 3> name{};
      unsigned long size = 0;
      if (mark == nullptr ||
          Api().FPDFPageObjMark_GetName(mark, name.data(), sizeof(name), &size) == 0 ||
          (size <= sizeof(name) && name[0] == u'O' && name[1] == u'C')) {
        return true;
      }
    }
    return false;
  }

  const PdfiumLock* pdfium_;
  pdfium::Page* page_;
  Placement placement_;
  pdf::Matrix to_bitmap_;
  PageObjects found_;
};

}  // namespace

PageObjects ObjectsOf(const PdfiumLock& pdfium, pdfium::Page* page, const Placement& placement) {
  return pdfium->has_object_functions ? ObjectReader(pdfium, page, placement).Read()
                                      : PageObjects();
}

}  // namespace TarnixTools::engines
