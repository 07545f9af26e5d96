#include "engines/optimizer/images/ImageReader.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "engines/optimizer/images/SamplePicture.h"
#include "engines/support/codecs/JpegMarkers.h"
#include "engines/support/images/ColorRows.h"
#include "engines/support/images/DocumentImage.h"
#include "engines/support/images/ImageLimits.h"
#include "engines/support/images/ImageSamples.h"
#include "engines/support/images/Jbig2Image.h"
#include "pdf/Error.h"
#include "pdf/file/ByteSource.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines::optimizer {

namespace {

using pdf::Object;

// What work takes beside the samples: the picture, what it is compared with, and what is coded.
constexpr std::uint64_t kCopies = 3;

class Reader {
 public:
  Reader(pdf::Document& document, std::uint32_t number, ImageRole role,
         const ImagePlacement& placement, const ImageGoals& goals)
      : document_(&document),
        role_(role),
        placement_(&placement),
        goals_(&goals),
        image_(ImageObjectOf(document, number, arena_)),
        facts_(FactsOf(image_, arena_)),
        space_(SpaceOf(image_, facts_)) {
    const std::optional<pdf::StreamData> stream = document.StreamOf(number);
    input_.encoded_bytes = stream ? document.PlainLength(*stream) : 0;
    input_.soft_mask = facts_.soft_mask;
    input_.stencil_mask = facts_.stencil_mask;
    input_.has_matte = HasMatte();
  }

  ImageInput Read() {
    if (facts_.width == 0 || facts_.height == 0 || facts_.filter == ImageFilter::kUnknown) {
      input_.task = LeftAlone::kUnreadable;
    } else if (!space_ || facts_.uses_jpx_alpha) {
      input_.task = LeftAlone::kUnhandled;
    } else if (IsOwnJbig2(image_, facts_)) {
      input_.task = LeftAlone::kUnhandled;  // readers do not agree on what it shows
    } else if (IsBitonal()) {
      ReadBitonal();
    } else {
      ReadContinuous();
    }
    return std::move(input_);
  }

 private:
  bool IsBitonal() const {
    return facts_.filter != ImageFilter::kDct && facts_.filter != ImageFilter::kJpx &&
           space_->components == 1 &&
           (facts_.is_mask || facts_.bits == 1 || facts_.filter != ImageFilter::kNone);
  }

  // Whether the colours have been mixed with others where they are transparent (ISO 32000-2,
  // 11.6.5.2): they and their mask go together sample by sample.
  bool HasMatte() {
    if (!facts_.matte.empty() || facts_.soft_mask == 0) {
      return !facts_.matte.empty();
    }
    const DocumentImage mask = ImageObjectOf(*document_, facts_.soft_mask, arena_);
    return !FactsOf(mask, arena_).matte.empty();
  }

  std::optional<ImageSamples> Open(PictureSize least) {
    try {
      return OpenSamples(image_, facts_, space_, least);
    } catch (const pdf::Error& error) {
      if (!error.is_damage() && error.code() != pdf::ErrorCode::kLimitExceeded) {
        throw;
      }
      return std::nullopt;
    }
  }

  void ReadBitonal() {
    std::optional<ImageSamples> samples = Open(kWholePicture);
    if (!samples || !samples->is_complete || samples->rows->format().height != facts_.height) {
      input_.task = LeftAlone::kUnreadable;
      return;
    }
    const SampleFormat& format = samples->rows->format();
    input_.held_bytes =
        samples->rows->held_bytes() + kCopies * std::uint64_t{format.row_bytes()} * format.height;
    input_.task =
        BitonalTask{.encoded_bytes = input_.encoded_bytes, .samples = std::move(samples->rows)};
  }

  void ReadContinuous() {
    ImageTask task;
    task.encoded_bytes = input_.encoded_bytes;
    task.width = facts_.width;
    task.height = facts_.height;
    task.is_soft_mask = role_ != ImageRole::kDrawn;
    task.is_placed = placement_->is_known && placement_->width_points > 0;
    task.width_points = placement_->width_points;
    task.height_points = placement_->height_points;
    task.keeps_samples = KeepsSamples();
    task.has_one_size = input_.has_matte;
    task.may_be_scan = MayBeScan(task);
    input_.part = ShownPart(task);
    std::optional<ImageSamples> samples =
        Open(input_.part ? kWholePicture : ReadSize(task, *goals_));
    if (!samples) {
      input_.task = LeftAlone::kUnreadable;
      return;
    }
    if ((facts_.filter == ImageFilter::kDct && !ReadJpeg(task)) ||
        (facts_.filter == ImageFilter::kJpx && !IsWholeJpx())) {
      input_.task = LeftAlone::kUnreadable;
      return;
    }
    if (IsOfInks(samples->space)) {
      SetInks(task, *std::move(samples));
      return;
    }
    if (!SetColors(task, *std::move(samples))) {
      input_.task = LeftAlone::kUnhandled;
      return;
    }
    if (input_.part) {
      TakePart(task, *input_.part);
    }
    task.may_be_scan = task.may_be_scan && HasLight(task);
    input_.held_bytes = task.rows->held_bytes() +
                        kCopies * std::uint64_t{task.rows->row_bytes()} * task.rows->height();
    input_.task = std::move(task);
  }

  // Of what is read here; its colours are another matter.
  bool MayBeScan(const ImageTask& task) const {
    return goals_->settings.reduces_color_complexity &&
           (goals_->settings.continuous_codecs & kContinuousJpeg) != 0 &&
           role_ == ImageRole::kDrawn && task.is_placed && placement_->is_page_picture &&
           !placement_->has_default_spaces && !task.keeps_samples && facts_.soft_mask == 0 &&
           facts_.stencil_mask == 0 && facts_.decode.empty();
  }

  // Where the data ends too early viewers do not agree on the rest: false.
  bool ReadJpeg(ImageTask& task) {
    std::string data = DecodeToImageFilter(image_, facts_, limits::kMaxSampleBytes);
    pdf::MemorySource source(data);
    ByteReader reader(source);
    const std::optional<JpegHeader> header = ReadJpegHeader(reader);
    if (!header || header->scan_start == 0 || FindJpegEnd(reader, header->scan_start) == 0) {
      return false;
    }
    if (facts_.steps.empty() && !input_.part) {
      task.jpeg = std::move(data);
    }
    return true;
  }

  // Whether the end of the code stream is there. Neither marker can stand within coded data (ISO/IEC
  // 15444-1, A.2), and both are looked for where boxes before the code stream cannot pass for them.
  bool IsWholeJpx() {
    constexpr std::string_view kStartOfData{"\xFF\x93", 2};
    constexpr std::string_view kEndOfCodes{"\xFF\xD9", 2};
    const std::string data = DecodeToImageFilter(image_, facts_, limits::kMaxSampleBytes);
    const std::size_t start = data.rfind(kStartOfData);
    return start != std::string::npos && data.find(kEndOfCodes, start) != std::string::npos;
  }

  // What is shown of an image by all its uses; nothing where that is most of it, and for an image
  // with masks, which would have to be cut as well.
  std::optional<ImagePart> ShownPart(const ImageTask& task) const {
    constexpr double kMostThatIsCut = 0.8;
    constexpr double kMargin = 2;  // pixels that viewers may mix in
    const pdf::Box& shown = placement_->shown;
    if (!goals_->settings.clips_images || !task.is_placed || role_ != ImageRole::kDrawn ||
        facts_.soft_mask != 0 || facts_.stencil_mask != 0 || placement_->has_default_spaces ||
        IsOfInks(*space_) || shown.IsEmpty() || shown.width() * shown.height() > kMostThatIsCut) {
      return std::nullopt;
    }
    const double left = std::max(0.0, std::floor(shown.left * task.width - kMargin));
    const double right =
        std::min<double>(task.width, std::ceil(shown.right * task.width + kMargin));
    const double top = std::max(0.0, std::floor((1 - shown.top) * task.height - kMargin));
    const double bottom =
        std::min<double>(task.height, std::ceil((1 - shown.bottom) * task.height + kMargin));
    return ImagePart{.left = static_cast<std::uint32_t>(left),
                     .top = static_cast<std::uint32_t>(top),
                     .width = static_cast<std::uint32_t>(right - left),
                     .height = static_cast<std::uint32_t>(bottom - top),
                     .whole = {task.width, task.height}};
  }

  static void TakePart(ImageTask& task, const ImagePart& part) {
    task.rows = PartOf(std::move(task.rows), part.left, part.top, part.width, part.height);
    task.width_points *= static_cast<double>(part.width) / task.width;
    task.height_points *= static_cast<double>(part.height) / task.height;
    task.width = part.width;
    task.height = part.height;
  }

  // Colours that are left out by their samples, and those whose components are no amounts of light
  // or ink.
  bool KeepsSamples() const { return !facts_.color_key.empty() || space_->kind == ColorKind::kLab; }

  // Whether components stand for inks that no other coding knows: one is as gray is, and four are as
  // those of CMYK are.
  static bool IsOfInks(const ColorSpace& space) {
    return space.kind == ColorKind::kInks && space.components != 1 && space.components != 4;
  }

  void SetInks(const ImageTask& task, ImageSamples samples) {
    const SampleFormat& format = samples.rows->format();
    input_.part.reset();
    if (!samples.is_complete || task.keeps_samples) {
      input_.task = LeftAlone::kUnhandled;
      return;
    }
    input_.held_bytes = samples.rows->held_bytes() +
                        kCopies * std::uint64_t{format.samples_in_row()} * format.height;
    input_.task = InkTask{.encoded_bytes = input_.encoded_bytes,
                          .wanted = WantedSize(task, *goals_),
                          .samples = std::move(samples.rows)};
  }

  // False for colours that are not worked on.
  bool SetColors(ImageTask& task, ImageSamples samples) {
    const ColorSpace& space = samples.space;
    const bool is_own = HasOwnSpace(space);
    const SampleFormat& format = samples.rows->format();
    if (!samples.is_complete ||
        (input_.part && (format.width != task.width || format.height != task.height))) {
      return false;
    }
    if (space.kind == ColorKind::kIndexed) {
      return facts_.color_key.empty() && ConvertIndexed(task, std::move(samples));
    }
    if (!IsPictureOf(space.components)) {
      return false;
    }
    const bool is_cmyk = space.components == 4 && space.is_computed();
    if ((is_cmyk && goals_->converts_to_rgb && !task.keeps_samples) ||
        (!is_own && space.kind == ColorKind::kIcc)) {
      return Convert(task, std::move(samples));
    }
    task.is_inverted = !samples.decode.empty() && samples.decode[0] > 0;
    task.may_lose_color = goals_->settings.reduces_color_complexity &&
                          !placement_->has_default_spaces && samples.decode.empty() &&
                          (!is_own || facts_.color_space.IsName());
    if (!is_own) {
      task.color_space = DeviceName(space.components);
    }
    task.rows = OwnSamples(std::move(samples.rows));
    return true;
  }

  // Whether the components are amounts of light, more of which is brighter.
  bool HasLight(const ImageTask& task) const {
    return space_->kind != ColorKind::kInks && space_->kind != ColorKind::kLab &&
           task.rows->layout() != PixelLayout::kBgrx;
  }

  // Whether the dictionary says what the samples mean. JPEG 2000 data may say it itself, and what
  // it says goes where the dictionary has another number of components.
  bool HasOwnSpace(const ColorSpace& found) const {
    return facts_.filter != ImageFilter::kJpx ||
           (!facts_.color_space.IsNull() && found.components == space_->components);
  }

  static std::string DeviceName(int components) {
    return components == 1 ? "/DeviceGray" : components == 3 ? "/DeviceRGB" : "/DeviceCMYK";
  }

  bool Convert(ImageTask& task, ImageSamples samples) {
    task.rows = std::make_unique<ColorRows>(std::move(samples));
    task.color_space = task.rows->layout() == PixelLayout::kGray ? "/DeviceGray" : "/DeviceRGB";
    task.may_lose_color =
        goals_->settings.reduces_color_complexity && !placement_->has_default_spaces;
    return !placement_->has_default_spaces;
  }

  // A palette's colours are taken in the space that they are given in.
  bool ConvertIndexed(ImageTask& task, ImageSamples samples) {
    const auto items = facts_.color_space.Items();
    if (items.size() < 4 || !samples.decode.empty()) {
      return false;
    }
    const std::optional<ColorSpace> base =
        ColorSpaceOf(*document_, document_->Resolve(items[1], arena_), arena_);
    if (!base || !IsPictureOf(base->components) || base->kind == ColorKind::kLab) {
      return false;
    }
    if (base->components == 4 && samples.space.is_computed() && goals_->converts_to_rgb) {
      return Convert(task, std::move(samples));
    }
    task.may_lose_color = !placement_->has_default_spaces && base->components != 4 &&
                          document_->Resolve(items[1], arena_).IsName();
    pdf::AppendObject(task.color_space, items[1]);
    task.rows = PaletteSamples(std::move(samples.rows), TableOf(items[3]), base->components);
    return !placement_->has_default_spaces;
  }

  std::string TableOf(const Object& table) {
    const pdf::Followed followed = document_->Follow(table, arena_);
    if (followed.value.IsString()) {
      return std::string(followed.value.Text());
    }
    const std::optional<pdf::Decoded> decoded =
        document_->TryDecodeStream(followed.number, limits::kMaxPaletteBytes);
    return decoded ? decoded->data : std::string();
  }

  pdf::Document* document_;
  ImageRole role_;
  const ImagePlacement* placement_;
  const ImageGoals* goals_;
  pdf::Arena arena_;
  DocumentImage image_;
  ImageFacts facts_;
  std::optional<ColorSpace> space_;
  ImageInput input_;
};

}  // namespace

ImageInput ReadImage(pdf::Document& document, std::uint32_t number, ImageRole role,
                     const ImagePlacement& placement, const ImageGoals& goals) {
  return Reader(document, number, role, placement, goals).Read();
}

}  // namespace TarnixTools::engines::optimizer
