#include "engines/repair/checks/ImageCheck.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "engines/repair/Limits.h"
#include "engines/repair/checks/StreamEntries.h"
#include "engines/support/images/ColorSpace.h"
#include "engines/support/images/DocumentImage.h"
#include "engines/support/images/ImageHeaders.h"
#include "engines/support/images/ImageLimits.h"
#include "engines/support/images/ImageSamples.h"
#include "pdf/content/ResourceKind.h"
#include "pdf/filters/Filters.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines::repair {

namespace {

using pdf::Object;

// What samples that are missing become: white where that is all ones.
char FillOf(const ImageFacts& facts, const std::optional<ColorSpace>& space) {
  const bool is_white =
      facts.is_mask ||
      (space && (space->kind == ColorKind::kGray || space->kind == ColorKind::kRgb ||
                 (space->kind == ColorKind::kIcc && space->components != 4)));
  return is_white ? '\xFF' : '\0';
}

// The image with all samples that its size asks for, not encoded.
pdf::ObjectChange Filled(pdf::Document& document, std::uint32_t number, std::size_t size,
                         char fill) {
  pdf::Arena arena;
  const DocumentImage image = ImageObjectOf(document, number, arena);
  std::string text = "<<";
  AppendEntriesWithoutData(text, image.dictionary);
  auto decoded = document.TryDecodeStream(number, limits::kMaxCheckedStream);
  std::string samples = decoded ? std::move(decoded->data) : std::string();
  samples.resize(std::max(samples.size(), size), fill);
  return pdf::ObjectChange::Stream(text + ">>", std::move(samples));
}

class Checker {
 public:
  Checker(CheckContext& context, const pdf::ResourceNode& node, std::uint32_t page)
      : context_(&context),
        node_(&node),
        page_(page),
        image_({.document = &context.document,
                .number = node.number,
                .dictionary = node.value,
                .data = {},
                .color_spaces = {}}),
        facts_(FactsOf(image_, arena_)) {}

  void Run() {
    CheckMask("SMask");
    CheckMask("Mask");
    switch (facts_.filter) {
      case ImageFilter::kDct:
        return CheckJpeg();
      case ImageFilter::kJpx:
        return CheckJpx();
      case ImageFilter::kNone:
        return CheckSamples();
      default:
        CheckSize();
    }
  }

 private:
  void Add(ProblemCode code, Outcome outcome, std::string detail = {}) {
    context_->problems.Add({.code = code,
                            .outcome = outcome,
                            .page = page_,
                            .object = node_->number,
                            .detail = std::move(detail)});
  }

  void SetEntry(std::string_view key, std::string text) {
    context_->rewriter.SetEntry(node_->number, key, std::move(text));
  }

  // What a mask is, or a list of colours; anything else is neither.
  void CheckMask(std::string_view key) {
    pdf::Arena arena;
    const pdf::Followed mask = context_->document.Follow(node_->value.Get(key), arena);
    const bool is_list = key == "Mask" && mask.value.IsArray();
    if (mask.value.IsNull() || is_list || mask.value.IsName("None") ||
        (mask.number != 0 && mask.value.IsDictionary())) {
      return;
    }
    Add(ProblemCode::kImageMaskInvalid, Outcome::kLost, std::string(key));
    context_->rewriter.RemoveEntry(node_->number, key);
  }

  bool CheckSize() {
    const bool has_size = facts_.width != 0 && facts_.height != 0;
    if (!has_size) {
      Add(ProblemCode::kImageInvalid, Outcome::kLost, "Width, Height");
    }
    return has_size;
  }

  // The picture's own size goes before that of the dictionary.
  void CheckCodedSize(std::uint32_t width, std::uint32_t height) {
    if (facts_.width == width && facts_.height == height) {
      return;
    }
    Add(ProblemCode::kImageSizeWrong, Outcome::kFixed,
        std::to_string(width) + " x " + std::to_string(height));
    SetEntry("Width", std::to_string(width));
    SetEntry("Height", std::to_string(height));
  }

  void CheckJpeg() {
    if (!facts_.steps.empty()) {
      CheckSize();
      return;
    }
    const std::optional<JpegHeader> header = JpegHeaderOf(image_);
    if (!header) {
      ReportNoHeader();
      return;
    }
    CheckCodedSize(header->width, header->height);
    if (facts_.is_mask || FindSpace()) {
      return;
    }
    ReplaceSpace(header->components);
  }

  // JPEG 2000 data has a colour space of its own (8.9.5.1).
  void CheckJpx() {
    if (!facts_.steps.empty()) {
      return;
    }
    if (!JpxHeaderOf(image_)) {
      ReportNoHeader();
    }
  }

  // Unless the data is so long that the header may be behind what was looked at.
  void ReportNoHeader() {
    const auto stream = context_->document.StreamOf(node_->number);
    if (stream && stream->extent.length <= engines::limits::kMaxHeaderBytes) {
      Add(ProblemCode::kImageDataDamaged, Outcome::kLost);
    }
  }

  std::optional<ColorSpace> FindSpace() {
    return facts_.color_space.IsNull() ? std::nullopt : SpaceOf(image_, facts_);
  }

  void ReplaceSpace(int components) {
    constexpr std::array<std::string_view, 5> kSpaces = {"", "/DeviceGray", "", "/DeviceRGB",
                                                         "/DeviceCMYK"};
    const bool is_known = components >= 1 && components <= 4 &&
                          !kSpaces[static_cast<std::size_t>(components)].empty();
    Add(ProblemCode::kImageColorSpaceInvalid, is_known ? Outcome::kWorkedAround : Outcome::kLost);
    if (is_known) {
      SetEntry("ColorSpace", std::string(kSpaces[static_cast<std::size_t>(components)]));
    }
  }

  std::uint64_t RowBytes(int components) const {
    const std::uint64_t bits = std::uint64_t{facts_.width} *
                               static_cast<std::uint64_t>(components) *
                               static_cast<std::uint64_t>(facts_.bits);
    return (bits + 7) / 8;
  }

  void CheckSamples() {
    if (!CheckSize()) {
      return;
    }
    const auto space = FindSpace();
    if (RowBytes(1) * facts_.height > limits::kMaxCheckedStream) {
      return;
    }
    const auto decoded =
        context_->document.TryDecodeStream(node_->number, limits::kMaxCheckedStream);
    if (!decoded || decoded->is_too_long) {
      return;
    }
    if (!facts_.is_mask && !space) {
      ReplaceSpace(ComponentsIn(decoded->data.size()));
      return;
    }
    const std::uint64_t wanted = RowBytes(facts_.is_mask ? 1 : space->components) * facts_.height;
    if (decoded->data.size() >= wanted) {
      return;
    }
    Add(ProblemCode::kImageDataShort, Outcome::kWorkedAround,
        std::to_string(decoded->data.size()) + " bytes of " + std::to_string(wanted));
    Fill(wanted, FillOf(facts_, space));
  }

  // As many components as there is data for; 0 for none that a device has.
  int ComponentsIn(std::uint64_t size) const {
    for (const int components : {4, 3, 1}) {
      if (size >= RowBytes(components) * facts_.height) {
        return components;
      }
    }
    return 0;
  }

  void Fill(std::uint64_t size, char fill) {
    if (size <= limits::kMaxCheckedStream) {
      context_->rewriter.ChangeLater(node_->number,
                                     [&document = context_->document, number = node_->number,
                                      count = static_cast<std::size_t>(size),
                                      fill] { return Filled(document, number, count, fill); });
    }
  }

  CheckContext* context_;
  const pdf::ResourceNode* node_;
  std::uint32_t page_;
  pdf::Arena arena_;
  DocumentImage image_;
  ImageFacts facts_;
};

}  // namespace

// An alternate or a mask may be what is no image at all; nothing is painted then.
void CheckImage(CheckContext& context, const pdf::ResourceNode& image, std::uint32_t page) {
  if (image.number != 0 && context.document.IsStream(image.number)) {
    Checker(context, image, page).Run();
  }
}

}  // namespace TarnixTools::engines::repair
