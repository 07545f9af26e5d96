#include "engines/office/pages/DocumentPictures.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "engines/office/Limits.h"
#include "engines/office/pages/PictureFile.h"
#include "engines/support/drawing/DrawingError.h"
#include "engines/support/files/DiskFile.h"
#include "engines/support/pages/Cancellation.h"
#include "engines/support/pictures/ImageError.h"
#include "pdf/Error.h"

namespace TarnixTools::engines::office {

namespace {

constexpr double kPointsPerInch = 72;
constexpr double kDrawnDpi = 200;
constexpr double kMostDpi = 300;  // more than that nobody prints

std::uint32_t PixelsOf(double points) {
  const double pixels = std::ceil(points / kPointsPerInch * kMostDpi);
  return static_cast<std::uint32_t>(
      std::clamp(pixels, 16.0, static_cast<double>(limits::kMaxPictureSide)));
}

// Whether the image is seen as it is stored: upright, not mirrored, and whole.
bool IsSeenAsStored(const ImagePlace& image) {
  const pdf::Matrix& matrix = image.matrix;
  const double size = std::abs(matrix.a) + std::abs(matrix.d);
  const pdf::Box whole = pdf::Box{0, 0, 1, 1}.Through(matrix);
  return matrix.a > 0 && matrix.d < 0 && std::abs(matrix.b) + std::abs(matrix.c) < 0.01 * size &&
         image.box.width() > 0.97 * whole.width() && image.box.height() > 0.97 * whole.height();
}

// What a picture that cannot be had is instead: nothing.
template <typename Make>
std::optional<OfficePicture> UnlessUnreadable(const Make& make) {
  try {
    return make();
  } catch (const DrawingError&) {
    return std::nullopt;
  } catch (const ImageError&) {
    return std::nullopt;
  } catch (const pdf::Error& error) {
    if (!error.is_damage()) {
      throw;
    }
    return std::nullopt;
  }
}

}  // namespace

// Images as they are stored.
class DocumentPictures::Images {
 public:
  Images(const platform::WidePath& path, const std::string& password)
      : file_(OpenShared(path)),
        document_(pdf::Document::Open(std::make_unique<DiskSource>(file_), password)) {}

  std::optional<OfficePicture> Read(const ImagePlace& place) {
    pdf::Arena arena;
    const DocumentImage image = ImageObjectOf(*document_, place.number, arena);
    return FileOfImage(image, PixelsOf(place.box.width()), PixelsOf(place.box.height()));
  }

 private:
  std::shared_ptr<std::FILE> file_;
  std::unique_ptr<pdf::Document> document_;
};

// Parts of pages, drawn.
class DocumentPictures::Drawings {
 public:
  Drawings(const platform::WidePath& path, const std::string& password,
           const std::atomic<bool>& is_cancelled)
      : document_(path, password) {
    document_.time().set_cancel_flag(&is_cancelled);
  }

  //   box   - on the page as it is seen made smaller by the scale
  OfficePicture Draw(std::size_t page_index, const pdf::Box& box, double scale) {
    const double side = std::max({box.width(), box.height(), 1.0});
    const double dpi = std::min(kDrawnDpi, limits::kMaxPictureSide * kPointsPerInch / side);
    return FileOfBitmap(DrawRegionWithoutText(document_, static_cast<int>(page_index),
                                              box.Through({1 / scale, 0, 0, 1 / scale, 0, 0}),
                                              dpi * scale));
  }

 private:
  DrawnDocument document_;
};

DocumentPictures::DocumentPictures(platform::WidePath path, std::string password,
                                   const std::atomic<bool>& is_cancelled)
    : path_(std::move(path)), password_(std::move(password)), is_cancelled_(&is_cancelled) {}

DocumentPictures::~DocumentPictures() = default;

std::optional<OfficePicture> DocumentPictures::PictureOf(std::size_t page_index,
                                                         std::span<const ImagePlace> images,
                                                         const pdf::Box& box) {
  StopIfCancelled(*is_cancelled_);
  if (images.size() == 1 && images[0].number != 0 && IsSeenAsStored(images[0])) {
    auto picture = UnlessUnreadable([&] {
      if (images_ == nullptr) {
        images_ = std::make_unique<Images>(path_, password_);
      }
      return images_->Read(images[0]);
    });
    if (picture) {
      return picture;
    }
  }
  return DrawingOf(page_index, box);
}

std::optional<OfficePicture> DocumentPictures::DrawingOf(std::size_t page_index,
                                                         const pdf::Box& box) {
  StopIfCancelled(*is_cancelled_);
  if (box.IsEmpty()) {
    return std::nullopt;
  }
  return UnlessUnreadable([&]() -> std::optional<OfficePicture> {
    if (drawings_ == nullptr) {
      drawings_ = std::make_unique<Drawings>(path_, password_, *is_cancelled_);
    }
    const auto scale = scales_.find(page_index);
    return drawings_->Draw(page_index, box, scale == scales_.end() ? 1 : scale->second);
  });
}

}  // namespace TarnixTools::engines::office
