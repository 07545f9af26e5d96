#include "engines/support/drawing/PagePictures.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <optional>
#include <string_view>
#include <utility>

#include "engines/support/drawing/DrawingLimits.h"
#include "engines/support/drawing/PictureChoice.h"
#include "engines/support/images/ImageWalker.h"
#include "engines/support/images/Picture.h"
#include "engines/support/pictures/ReducedPicture.h"
#include "pdf/Error.h"
#include "pdf/tree/VisibleLayers.h"

namespace TarnixTools::engines {
namespace {

using pdf::Object;

// An image that the content draws.
struct ContentImage {
  std::uint32_t number = 0;
  pdf::Matrix matrix;
  bool is_clipped_by_text = false;
};

std::vector<ContentImage> ImagesOfContent(pdf::Document& document, const pdf::PageTree& pages,
                                          std::size_t page_index, std::size_t most) {
  const pdf::VisibleLayers layers(document);
  ImageWalker walker(document, pages, layers, page_index, false);
  std::vector<ContentImage> images;
  while (const DrawnImage* drawn = walker.Next()) {
    if (images.size() > most) {
      break;
    }
    images.push_back({drawn->image.number, drawn->matrix, drawn->is_clipped_by_text});
  }
  return images;
}

// PDFium decodes an image once, however often it is drawn.
bool IsDrawnOften(const std::vector<ContentImage>& content, std::uint32_t number) {
  return std::count_if(content.begin(), content.end(), [number](const ContentImage& image) {
           return image.number == number;
         }) > limits::kMaxTimesFitted;
}

void PaintRow(const std::uint8_t* row, PixelLayout layout, std::uint8_t* pixels,
              std::size_t count) {
  if (layout == PixelLayout::kGray) {
    for (std::size_t x = 0; x < count; ++x) {
      std::memset(pixels + 4 * x, row[x], 4);
    }
    return;
  }
  for (std::size_t x = 0; x < count; ++x) {
    pixels[4 * x] = row[3 * x + 2];
    pixels[4 * x + 1] = row[3 * x + 1];
    pixels[4 * x + 2] = row[3 * x];
  }
}

}  // namespace

// One of them, on its way to the bitmap.
class PagePictures::Picture {
 public:
  // picture: of the size that the fit gives, not turned yet.
  Picture(RowSourcePtr picture, const PictureFit& fit, const PixelBox& seen)
      : picture_(std::move(picture)), fit_(fit), seen_(seen) {
    line_.resize(static_cast<std::size_t>(fit.box.width()) * BytesPerPixel(picture_->layout()));
  }

  void Draw(std::uint8_t* pixels, int width, int top, int height) {
    const PixelBox part = seen_.With({0, top, width, top + height});
    if (part.IsEmpty()) {
      return;
    }
    for (int y = part.top; y < part.bottom; ++y) {
      const std::uint8_t* line = Line(y - fit_.box.top);
      const std::size_t bytes = BytesPerPixel(picture_->layout());
      PaintRow(line + static_cast<std::size_t>(part.left - fit_.box.left) * bytes,
               picture_->layout(),
               pixels + 4 * (static_cast<std::size_t>(y - top) * static_cast<std::size_t>(width) +
                             static_cast<std::size_t>(part.left)),
               static_cast<std::size_t>(part.width()));
    }
  }

 private:
  // A row of the box, the lines being asked for in their order.
  const std::uint8_t* Line(int y) {
    if (fit_.comes_in_order) {
      for (; rows_read_ <= y; ++rows_read_) {
        picture_->ReadRow(line_.data());
      }
      return line_.data();
    }
    if (held_.empty()) {
      HoldAll();
    }
    const std::size_t bytes = BytesPerPixel(picture_->layout());
    const std::size_t row_bytes = picture_->row_bytes();
    for (int x = 0; x < fit_.box.width(); ++x) {
      const auto [column, row] = fit_.SourceOf(x, y);
      std::memcpy(line_.data() + static_cast<std::size_t>(x) * bytes,
                  held_.data() + static_cast<std::size_t>(row) * row_bytes +
                      static_cast<std::size_t>(column) * bytes,
                  bytes);
    }
    return line_.data();
  }

  void HoldAll() {
    const std::size_t row_bytes = picture_->row_bytes();
    held_.resize(row_bytes * picture_->height());
    for (std::size_t y = 0; y < picture_->height(); ++y) {
      picture_->ReadRow(held_.data() + y * row_bytes);
    }
  }

  RowSourcePtr picture_;
  PictureFit fit_;
  PixelBox seen_;
  int rows_read_ = 0;
  std::vector<std::uint8_t> line_;
  std::vector<std::uint8_t> held_;
};

PagePictures::PagePictures() = default;
PagePictures::~PagePictures() = default;

void PagePictures::Choose(pdf::Document& document, const pdf::PageTree& pages,
                          std::size_t page_index, const Object& resources,
                          const PageObjects& objects) {
  const auto& images = objects.images;
  const bool has_candidate = std::any_of(images.begin(), images.end(),
                                         [](const ImageObject& image) { return FitOf(image); });
  if (!has_candidate || ChangesColors(document, resources)) {
    return;
  }
  const std::vector<ContentImage> content =
      ImagesOfContent(document, pages, page_index, images.size());
  if (content.size() != images.size()) {
    return;  // the two do not see the same page
  }
  std::vector<PixelBox> under;  // what PDFium draws before
  std::size_t next = 0;
  for (std::size_t i = 0; i < images.size(); ++i) {
    const ImageObject& image = images[i];
    under.insert(under.end(), objects.boxes.begin() + static_cast<std::ptrdiff_t>(next),
                 objects.boxes.begin() + static_cast<std::ptrdiff_t>(image.objects_before));
    next = image.objects_before;
    const std::optional<PictureFit> fit = FitOf(image);
    const bool is_covering =
        fit && std::any_of(under.begin(), under.end(), [&](const PixelBox& box) {
          return !box.With(fit->box).With(image.clip).IsEmpty();
        });
    if (fit && !is_covering && !content[i].is_clipped_by_text && content[i].number != 0 &&
        IsSamePlace(image.to_page, content[i].matrix) &&
        !IsDrawnOften(content, content[i].number) &&
        Add(document, content[i].number, image, *fit)) {
      ++next;  // PDFium does not draw it
    }
  }
}

bool PagePictures::Add(pdf::Document& document, std::uint32_t number, const ImageObject& object,
                       const PictureFit& fit) {
  if (pictures_.size() >= limits::kMaxFittedImages) {
    return false;
  }
  RowSourcePtr picture = OpenFitted(document, number, object, fit);
  if (picture == nullptr) {
    return false;
  }
  const std::uint64_t turned =
      fit.comes_in_order ? 0 : picture->row_bytes() * std::uint64_t{picture->height()};
  const std::uint64_t held = picture->held_bytes() + turned;
  if (!pictures_.empty() && held_bytes_ + held > limits::kMaxFittedImageBytes) {
    return false;
  }
  held_bytes_ += held;
  pictures_.push_back(
      std::make_unique<Picture>(std::move(picture), fit, fit.box.With(object.clip)));
  chosen_.push_back(object.object);
  return true;
}

void PagePictures::Draw(std::uint8_t* pixels, int width, int top, int height) {
  for (const auto& picture : pictures_) {
    picture->Draw(pixels, width, top, height);
  }
}

}  // namespace TarnixTools::engines
