#include "engines/optimizer/images/JpegSearch.h"

#include <algorithm>
#include <utility>

namespace TarnixTools::engines::optimizer {

namespace {

constexpr int kBestQuality = 92;
constexpr int kQualityStep = 8;

}  // namespace

void JpegSearch::Try(SamplePicture picture, bool is_flat) {
  JpegChoice choice{.quality = goals_->settings.image_quality, .is_subsampled = !is_flat};
  for (;;) {
    const CodedPicture coded = CodeAsJpeg(picture, choice);
    if (coded.data.size() >= most_bytes_) {
      return;  // and it would only grow
    }
    const std::optional<SamplePicture> decoded = DecodedJpeg(coded.data);
    if (decoded && look_->SimilarityOf(*decoded) >= goals_->least_similarity) {
      most_bytes_ = coded.data.size();
      picture_ = std::move(picture);
      choice_ = choice;
      return;
    }
    if (!decoded || choice.quality >= kBestQuality) {
      return;
    }
    choice.quality = std::min(kBestQuality, choice.quality + kQualityStep);
  }
}

std::optional<CodedPicture> JpegSearch::Result() {
  if (!picture_) {
    return std::nullopt;
  }
  choice_.is_final = true;
  return CodeAsJpeg(*picture_, choice_);
}

}  // namespace TarnixTools::engines::optimizer
