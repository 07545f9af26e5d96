#include "engines/optimizer/images/JpegSearch.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace TarnixTools::engines::optimizer {

namespace {

constexpr int kBestQuality = 92;
constexpr int kQualityStep = 8;
// What the loss of look has to cost for the next quality to be worth a try: that adds more than half of
// this to the logarithm of the bytes, and takes away little more than half of the loss.
constexpr double kLeastLoss = 0.25;

}  // namespace

JpegSearch::JpegSearch(const Look& look, const ImageGoals& goals, std::uint64_t bytes_now)
    : look_(&look), goals_(&goals), least_cost_(CostOf(bytes_now, 1, goals)) {}

double JpegSearch::Try(const SamplePicture& picture, PictureSize whole, bool is_flat) {
  JpegChoice choice{.quality = goals_->settings.image_quality, .is_subsampled = !is_flat};
  double last_cost = std::numeric_limits<double>::infinity();
  for (;;) {
    const CodedPicture coded = CodeAsJpeg(picture, choice);
    const std::optional<SamplePicture> decoded = DecodedForLook(coded.data);
    if (!decoded) {
      return last_cost;
    }
    const double similarity = look_->SimilarityOf(*decoded);
    const double cost = CostOf(coded.data.size(), similarity, *goals_);
    if (cost < least_cost_) {
      least_cost_ = cost;
      found_ = Found{.whole = whole, .choice = choice, .similarity = similarity};
    }
    const bool may_gain = goals_->worth_of_look * (1 - similarity) > kLeastLoss;
    if (cost >= last_cost || choice.quality >= kBestQuality || !may_gain) {
      return std::min(cost, last_cost);
    }
    last_cost = cost;
    choice.quality = std::min(kBestQuality, choice.quality + kQualityStep);
  }
}

}  // namespace TarnixTools::engines::optimizer
