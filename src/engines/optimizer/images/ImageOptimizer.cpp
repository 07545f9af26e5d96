#include "engines/optimizer/images/ImageOptimizer.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "engines/optimizer/images/JpegSearch.h"
#include "engines/optimizer/images/PictureFeatures.h"
#include "engines/optimizer/images/Similarity.h"
#include "engines/support/codecs/JpegMarkers.h"
#include "engines/support/codecs/JpegTables.h"
#include "engines/support/codecs/JpegTranscoder.h"
#include "engines/support/pictures/ReducedPicture.h"

namespace TarnixTools::engines::optimizer {

namespace {

// Between the resolution that is asked for and that which an image has, these are tried too.
constexpr double kScaleStep = 1.4;
// Images of up to this many times the resolution that is needed are tried in their own size, too.
constexpr double kWholeUpTo = 1.7;
// Of similarity, between a part of a picture and all of it.
constexpr double kToleratedLoss = 0.005;
// Packing densely saves up to a twelfth of what packing quickly gives: more than this many times the
// bytes that are wanted is too many.
constexpr double kMostForDense = 1.08;

std::uint32_t PixelsFor(double points, double dpi, std::uint32_t most) {
  const double pixels = std::ceil(points * dpi / 72 - 0.01);
  return static_cast<std::uint32_t>(std::clamp(pixels, 1.0, static_cast<double>(most)));
}

double DpiOf(const ImageTask& task) {
  return std::min(task.width * 72 / task.width_points, task.height * 72 / task.height_points);
}

bool IsResampled(const ImageTask& task, const OptimizerSettings& settings) {
  return task.is_placed && !task.keeps_samples && settings.threshold_dpi > 0 &&
         settings.resolution_dpi > 0 && DpiOf(task) > static_cast<double>(settings.threshold_dpi);
}

// For text, no more pixels than these are wanted.
PictureSize ScanSizeOf(const ImageTask& task) {
  constexpr double kEnoughDpi = 300;
  constexpr double kMostDpi = 400;
  if (DpiOf(task) <= kMostDpi) {
    return {task.width, task.height};
  }
  return {PixelsFor(task.width_points, kEnoughDpi, task.width),
          PixelsFor(task.height_points, kEnoughDpi, task.height)};
}

class Optimizer {
 public:
  Optimizer(ImageTask& task, const ImageGoals& goals) : task_(&task), goals_(&goals) {}

  ImageOutcome Run() {
    Read();
    if (!picture_.is_whole) {
      return LeaveAlone(LeftAlone::kUnreadable);
    }
    features_ = FeaturesOf(picture_);
    SetClass();
    DropColor();
    if (MayBeJpeg()) {
      TryJpeg();
    }
    TryLossless();
    TryPackedJpeg();
    TryLayers();
    if (best_) {
      outcome_.coded = std::move(best_);
    } else {
      outcome_.left_alone = LeftAlone::kSmallest;
    }
    return std::move(outcome_);
  }

 private:
  ImageOutcome LeaveAlone(LeftAlone reason) {
    outcome_.left_alone = reason;
    return std::move(outcome_);
  }

  // The picture in the size that the best candidate may have: as it is seen, where it is resampled.
  void Read() {
    SetSeenSize();
    is_resampled_ = IsResampled(*task_, goals_->settings);
    ReadScan();
    const PictureSize wanted = WantedSize(*task_, *goals_);
    const std::uint32_t width = std::min(wanted.width, task_->rows->width());
    const std::uint32_t height = std::min(wanted.height, task_->rows->height());
    task_->rows = ReducePicture(std::move(task_->rows), width, height);
    picture_ = ReadPicture(*task_->rows);
    picture_.is_whole = picture_.is_whole && whole_.is_whole;
    task_->rows.reset();
    whole_ = {};
  }

  // Taken apart, a scanned page has as many pixels as there are for its text.
  void ReadScan() {
    if (!task_->may_be_scan) {
      return;
    }
    const PictureSize size = ScanSizeOf(*task_);
    if (size.width * std::uint64_t{size.height} > kMostForScan) {
      return;
    }
    const std::uint32_t width = std::min(size.width, task_->rows->width());
    const std::uint32_t height = std::min(size.height, task_->rows->height());
    task_->rows = ReducePicture(std::move(task_->rows), width, height);
    whole_ = ReadPicture(*task_->rows);
    const double dpi = whole_.width * 72 / task_->width_points;
    if (whole_.is_whole) {
      const PictureSize wanted = WantedSize(*task_, *goals_);
      scan_ =
          TakeApart(whole_, dpi,
                    {std::min(wanted.width, whole_.width), std::min(wanted.height, whole_.height)});
    }
    if (scan_) {
      seen_ = Scaled(whole_, seen_width_, seen_height_);
      look_.emplace(whole_, false, seen_width_, seen_height_);
    }
    task_->rows = RowsOf(whole_);
  }

  void SetSeenSize() {
    if (!task_->is_placed) {
      seen_width_ = task_->width;
      seen_height_ = task_->height;
      return;
    }
    constexpr std::uint32_t kMostSeen = 4096;
    seen_width_ = PixelsFor(task_->width_points, kSeenDpi, kMostSeen);
    seen_height_ = PixelsFor(task_->height_points, kSeenDpi, kMostSeen);
  }

  void SetClass() {
    outcome_.kind = scan_                 ? ImageClass::kTextScan
                    : task_->is_soft_mask ? ImageClass::kSoftMask
                    : features_.is_flat() ? ImageClass::kFlatArt
                                          : ImageClass::kPhotograph;
  }

  void DropColor() {
    if (features_.is_gray && task_->may_lose_color && !task_->keeps_samples) {
      picture_ = GrayOf(picture_);
      if (scan_) {
        scan_->background = GrayOf(scan_->background);
        seen_ = GrayOf(seen_);
      }
      task_->color_space = "/DeviceGray";
    }
  }

  // As a background with inks on it, where that costs less than the best so far.
  void TryLayers() {
    if (!scan_) {
      return;
    }
    CodedScan coded = CodeScan(*scan_, seen_, *look_, BackgroundSizes(), *goals_);
    if (CostOf(coded.bytes(), coded.similarity, *goals_) < CostOfBest()) {
      best_ = std::move(coded.background);
      best_->color_space = task_->color_space;
      outcome_.inks = std::move(coded.inks);
    }
  }

  double CostOfBest() const {
    if (!best_) {
      return CostOf(task_->encoded_bytes, 1, *goals_);
    }
    const bool is_lossy = best_->filter == "DCTDecode";
    const std::optional<SamplePicture> decoded =
        is_lossy ? DecodedForLook(best_->data) : std::nullopt;
    return CostOf(SizeOf(*best_), decoded ? look_->SimilarityOf(*decoded) : 1, *goals_);
  }

  std::vector<PictureSize> BackgroundSizes() const {
    std::vector<PictureSize> sizes;
    const SamplePicture& most = scan_->background;
    for (double dpi = goals_->settings.resolution_dpi; is_resampled_; dpi *= kScaleStep) {
      const PictureSize size = {PixelsFor(task_->width_points, dpi, most.width),
                                PixelsFor(task_->height_points, dpi, most.height)};
      if (size.width >= most.width || size.height >= most.height) {
        break;
      }
      sizes.push_back(size);
    }
    sizes.push_back({most.width, most.height});
    return sizes;
  }

  // Photographs are not worth a try, unless they have been coded so and stay in their size.
  bool IsWorthLossless() const {
    return features_.is_flat() || picture_.pixels() < kSmallPicture ||
           (task_->jpeg.empty() && !is_resampled_);
  }

  void TryLossless() {
    if (!IsWorthLossless()) {
      return;
    }
    if (features_.is_one_color && !task_->keeps_samples && !task_->has_one_size) {
      picture_ = Scaled(picture_, 1, 1);
    }
    const bool keeps_space = !task_->may_lose_color || task_->keeps_samples;
    const CodedPicture quick = CodeWithoutLoss(picture_, keeps_space, Packing::kQuick);
    if (SizeOf(quick) < MostBytes() * kMostForDense) {
      Offer(CodeWithoutLoss(picture_, keeps_space, Packing::kDense), keeps_space);
    }
  }

  double MostBytes() const {
    return static_cast<double>(best_ ? SizeOf(*best_) : task_->encoded_bytes);
  }

  // keeps_space: the candidate is in the colours that the task has come to.
  void Offer(CodedPicture candidate, bool keeps_space) {
    if (keeps_space) {
      candidate.color_space = task_->color_space;
      if (!task_->color_space.empty()) {
        candidate.decode = "";
      }
    }
    if (SizeOf(candidate) < (best_ ? SizeOf(*best_) : task_->encoded_bytes)) {
      best_ = std::move(candidate);
    }
  }

  static std::uint64_t SizeOf(const CodedPicture& coded) {
    return coded.data.size() + coded.palette.size();
  }

  void TryJpeg() {
    if (features_.is_one_color || picture_.pixels() < kLeastForJpeg) {
      return;
    }
    const std::optional<SamplePicture> bands = BandsOf(picture_);
    if (!bands || !TryJpegBy(*bands)) {
      TryJpegBy(picture_);
    }
  }

  // Codes the picture as is best for some bands of it, or all. False where the picture, made smaller,
  // does not look as well as the bands did: the quality of JPEG is alike all over a picture, what is
  // lost with pixels is not.
  bool TryJpegBy(const SamplePicture& bands) {
    const double part = static_cast<double>(bands.height) / picture_.height;
    const Look look(bands, task_->is_inverted, seen_width_, RowsOfPart(seen_height_, part));
    JpegSearch search(look, *goals_,
                      static_cast<std::uint64_t>(static_cast<double>(task_->encoded_bytes) * part));
    TryReduced(search, bands, part);
    if (!search.found()) {
      return true;
    }
    JpegChoice choice = search.found()->choice;
    choice.is_final = true;
    const PictureSize size = search.found()->whole;
    const bool is_reduced = size.width != picture_.width || size.height != picture_.height;
    CodedPicture coded = is_reduced ? CodeAsJpeg(Scaled(picture_, size.width, size.height), choice)
                                    : CodeAsJpeg(picture_, choice);
    if (bands.height != picture_.height && is_reduced &&
        SimilarityOf(coded) < search.found()->similarity - kToleratedLoss) {
      return false;
    }
    Offer(std::move(coded), true);
    return true;
  }

  double SimilarityOf(const CodedPicture& coded) const {
    const std::optional<SamplePicture> decoded = DecodedForLook(coded.data);
    return decoded ? Look(picture_, task_->is_inverted, seen_width_, seen_height_)
                         .SimilarityOf(*decoded)
                   : 0;
  }

  static std::uint32_t RowsOfPart(std::uint32_t rows, double part) {
    return std::max(1U, static_cast<std::uint32_t>(std::lround(rows * part)));
  }

  // Data that is as coarse as what would be made of it is not coded anew, so that another run
  // changes nothing.
  bool MayBeJpeg() const {
    if (task_->keeps_samples || (goals_->settings.continuous_codecs & kContinuousJpeg) == 0) {
      return false;
    }
    if (task_->jpeg.empty() || is_resampled_) {
      return true;
    }
    const std::optional<JpegHeader> header = ReadJpegHeader(std::string_view(task_->jpeg));
    return header && !AreStepsAsCoarse(*header, goals_->settings.image_quality);
  }

  // JPEG data as it is, in fewer bytes: it stays in its own colours, whatever the picture has become.
  void TryPackedJpeg() {
    if (best_ || task_->jpeg.empty()) {
      return;
    }
    if (std::optional<std::string> packed = OptimizeJpeg(task_->jpeg)) {
      CodedPicture coded;
      coded.width = task_->width;
      coded.height = task_->height;
      coded.keeps_filter = true;
      coded.data = *std::move(packed);
      Offer(std::move(coded), false);
    }
  }

  // Sizes from the smallest on, as long as a larger one is better, and the largest: pixels that are
  // those of the image lose nothing by being seen in yet another size.
  void TryReduced(JpegSearch& search, const SamplePicture& bands, double part) {
    double last_cost = std::numeric_limits<double>::infinity();
    if (is_resampled_ && !task_->has_one_size) {
      for (double dpi = goals_->settings.resolution_dpi;; dpi *= kScaleStep) {
        const std::uint32_t width = PixelsFor(task_->width_points, dpi, picture_.width);
        const std::uint32_t height = PixelsFor(task_->height_points, dpi, picture_.height);
        if (width >= picture_.width || height >= picture_.height) {
          break;
        }
        const SamplePicture reduced = Scaled(bands, width, RowsOfPart(height, part));
        const double cost = search.Try(reduced, {width, height}, features_.is_flat());
        if (cost > last_cost) {
          break;
        }
        last_cost = cost;
      }
    }
    search.Try(bands, {picture_.width, picture_.height}, features_.is_flat());
  }

  // Pixels.
  static constexpr std::uint64_t kMostForScan = std::uint64_t{24} << 20;
  static constexpr std::uint64_t kSmallPicture = 4096;
  static constexpr std::uint64_t kLeastForJpeg = 256;

  ImageTask* task_;
  const ImageGoals* goals_;
  SamplePicture picture_;
  SamplePicture whole_;             // of what may be a scanned page
  std::optional<ScanLayers> scan_;  // with what it looks like
  SamplePicture seen_;
  std::optional<Look> look_;
  PictureFeatures features_;
  bool is_resampled_ = false;
  std::uint32_t seen_width_ = 1;
  std::uint32_t seen_height_ = 1;
  std::optional<CodedPicture> best_;
  ImageOutcome outcome_;
};

}  // namespace

PictureSize WantedSize(const ImageTask& task, const ImageGoals& goals) {
  if (!IsResampled(task, goals.settings)) {
    return {task.width, task.height};
  }
  const double target = goals.settings.resolution_dpi;
  const double most = std::max(target, kSeenDpi);
  const double dpi = task.has_one_size                 ? target
                     : DpiOf(task) < most * kWholeUpTo ? DpiOf(task)
                                                       : most;
  return {PixelsFor(task.width_points, dpi, task.width),
          PixelsFor(task.height_points, dpi, task.height)};
}

PictureSize ReadSize(const ImageTask& task, const ImageGoals& goals) {
  return task.may_be_scan ? ScanSizeOf(task) : WantedSize(task, goals);
}

ImageOutcome OptimizeImage(ImageTask& task, const ImageGoals& goals) {
  return Optimizer(task, goals).Run();
}

}  // namespace TarnixTools::engines::optimizer
