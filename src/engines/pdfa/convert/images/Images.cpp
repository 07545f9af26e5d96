#include "engines/pdfa/convert/images/Images.h"

#include <algorithm>
#include <array>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "engines/support/images/ImageHeaders.h"
#include "engines/support/images/ImageSamples.h"
#include "engines/support/images/Picture.h"
#include "pdf/content/ResourceGraph.h"
#include "pdf/write/EntryText.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines::pdfa {

using pdf::Arena;
using pdf::Object;
using pdf::ObjectChange;

namespace {

constexpr int kMaxJpxBits = 38;
constexpr std::uint32_t kJab = 19;  // a colour space that no reader has

// What is said anew of an image that is stored in another way, and at the end what masks it.
constexpr std::array<std::string_view, 11> kCodingAndMaskKeys = {
    "Width",       "Height",      "BitsPerComponent", "ColorSpace", "Filter", "Decode",
    "DecodeParms", "SMaskInData", "Length",           "SMask",      "Mask"};
constexpr std::span kCodingKeys = std::span(kCodingAndMaskKeys).first<9>();

// ISO 19005-2, 6.2.8.3. What the dictionary says of the colours goes before what the data says.
bool IsAllowedJpx(const JpxHeader& header, bool has_color_space) {
  const std::size_t colors = header.components.size();  // as validators count, alpha included
  const bool is_even = std::all_of(
      header.components.begin(), header.components.end(), [&](const JpxComponent& component) {
        return component.bits == header.components.front().bits && component.bits <= kMaxJpxBits;
      });
  const auto exact = std::count_if(header.colors.begin(), header.colors.end(),
                                   [](const JpxColor& color) { return color.approximation == 1; });
  const bool has_one_space = header.colors.size() == 1 || exact == 1;
  const bool is_known =
      std::all_of(header.colors.begin(), header.colors.end(), [](const JpxColor& color) {
        return color.method >= 1 && color.method <= 3 && color.space != kJab;
      });
  return (colors == 1 || colors == 3 || colors == 4) && is_even &&
         (has_color_space || (has_one_space && is_known));
}

const char* DeviceSpaceOf(int components) {
  return components == 1 ? "/DeviceGray" : components == 3 ? "/DeviceRGB" : "/DeviceCMYK";
}

std::string GrayDictionary(const SampleFormat& format) {
  return "<</Type/XObject/Subtype/Image/Width " + std::to_string(format.width) + "/Height " +
         std::to_string(format.height) + "/ColorSpace/DeviceGray/BitsPerComponent 8>>";
}

class ImageMender {
 public:
  explicit ImageMender(Conversion& conversion) : conversion_(&conversion) {}

  void Mend(std::uint32_t number) {
    Arena arena;
    const DocumentImage image = ImageObjectOf(conversion_->document, number, arena);
    const ImageFacts facts = FactsOf(image, arena);
    if (conversion_->rewriter.IsChanged(number)) {
      return;
    }
    if (conversion_->is_part1() && (facts.soft_mask != 0 || facts.uses_jpx_alpha)) {
      conversion_->report.Changed("half transparent images into images on white");
      conversion_->rewriter.ChangeLater(
          number, [mender = *this, number] { return mender.OnWhite(number); });
    } else if (!IsAllowed(image, facts)) {
      conversion_->report.Changed("images whose data is not allowed");
      conversion_->rewriter.ChangeLater(
          number, [mender = *this, number] { return mender.Recoded(number); });
    }
  }

 private:
  bool IsAllowed(const DocumentImage& image, const ImageFacts& facts) const {
    if (conversion_->is_part1() && facts.bits == 16 && facts.filter == ImageFilter::kNone) {
      return false;
    }
    if (facts.filter != ImageFilter::kJpx) {
      return true;
    }
    const std::optional<JpxHeader> header = JpxHeaderOf(image);
    return !conversion_->is_part1() && header &&
           IsAllowedJpx(*header, image.dictionary.Has("ColorSpace"));
  }

  ObjectChange Recoded(std::uint32_t number) const {
    Arena arena;
    const DocumentImage image = ImageObjectOf(conversion_->document, number, arena);
    const ImageFacts facts = FactsOf(image, arena);
    std::optional<ImageSamples> samples = OpenSamples(image, facts);
    if (!samples) {
      return ObjectChange::Keep();
    }
    std::string text = Dictionary(image.dictionary, facts, *samples);
    return ObjectChange::Stream(std::move(text), Samples(*samples->rows));
  }

  // What is half transparent as it is seen on white; what is all transparent is not painted.
  ObjectChange OnWhite(std::uint32_t number) const {
    Arena arena;
    const DocumentImage image = ImageObjectOf(conversion_->document, number, arena);
    const ImageFacts facts = FactsOf(image, arena);
    const RowSourcePtr picture = OpenPicture(image, facts);
    if (picture == nullptr) {
      return ObjectChange::Keep();
    }
    const bool is_gray = picture->layout() == PixelLayout::kGray;
    std::string text = OtherEntries(image.dictionary);
    text += "/Width " + std::to_string(picture->width()) + "/Height " +
            std::to_string(picture->height()) + "/BitsPerComponent 8/ColorSpace";
    text += is_gray ? "/DeviceGray" : "/DeviceRGB";
    if (facts.soft_mask != 0) {
      text += "/Mask";
      pdf::AppendReference(text, conversion_->rewriter.Add(Stencil(facts.soft_mask)));
    }
    return ObjectChange::Stream(text + ">>", Pixels(*picture));
  }

  static std::string Pixels(RowSource& picture) {
    std::string data;
    std::vector<std::uint8_t> row(picture.row_bytes());
    const std::size_t pixel = BytesPerPixel(picture.layout());
    for (std::uint32_t y = 0; y < picture.height(); ++y) {
      if (!picture.ReadRow(row.data())) {
        std::fill(row.begin(), row.end(), std::uint8_t{255});
      }
      for (std::size_t x = 0; x < row.size(); x += pixel) {
        const bool is_turned = picture.layout() == PixelLayout::kBgrx;
        for (std::size_t i = 0; i < std::min<std::size_t>(pixel, 3); ++i) {
          data += static_cast<char>(row[x + (is_turned ? 2 - i : i)]);
        }
      }
    }
    return data;
  }

  // A mask that keeps from being painted what a soft mask makes all transparent.
  ObjectChange Stencil(std::uint32_t soft_mask) const {
    Arena arena;
    const DocumentImage image = ImageObjectOf(conversion_->document, soft_mask, arena);
    const ImageFacts facts = FactsOf(image, arena);
    const std::optional<ImageSamples> samples = OpenSamples(image, facts);
    const bool is_turned = !facts.decode.empty() && facts.decode.front() != 0;
    if (!samples || samples->rows->format().components != 1) {
      return ObjectChange::Value("null");
    }
    const SampleFormat& format = samples->rows->format();
    const std::uint8_t nothing =
        is_turned ? static_cast<std::uint8_t>((1U << std::min(format.bits, 8)) - 1) : 0;
    std::string data;
    std::vector<std::uint8_t> row(format.width);
    for (std::uint32_t y = 0; y < format.height; ++y) {
      ReadUnpacked(*samples->rows, row);
      std::string bits((format.width + 7) / 8, '\0');
      for (std::size_t x = 0; x < row.size(); ++x) {
        bits[x / 8] = static_cast<char>(bits[x / 8] | (row[x] == nothing ? 0x80 >> x % 8 : 0));
      }
      data += bits;
    }
    return ObjectChange::Stream("<</Type/XObject/Subtype/Image/ImageMask true/Width " +
                                    std::to_string(format.width) + "/Height " +
                                    std::to_string(format.height) + "/BitsPerComponent 1>>",
                                std::move(data));
  }

  // A byte for each sample; what is missing is 0.
  static void ReadUnpacked(SampleRows& rows, std::vector<std::uint8_t>& samples) {
    const auto row = rows.ReadRow();
    std::fill(samples.begin(), samples.end(), std::uint8_t{0});
    const auto bits = static_cast<std::size_t>(rows.format().bits);
    const std::size_t there = std::min(samples.size(), row.size() * 8 / bits);
    UnpackSamples(row.data(), rows.format().bits, there, samples.data());
  }

  static std::string OtherEntries(const Object& dictionary) {
    std::string text = "<<";
    pdf::AppendEntries(text, dictionary, kCodingAndMaskKeys);
    return text;
  }

  // Eight bits each.
  static std::string Samples(SampleRows& rows) {
    const SampleFormat& format = rows.format();
    std::string data;
    std::vector<std::uint8_t> samples(format.samples_in_row());
    for (std::uint32_t y = 0; y < format.height; ++y) {
      ReadUnpacked(rows, samples);
      data.append(samples.begin(), samples.end());
    }
    return data;
  }

  std::string Dictionary(const Object& dictionary, const ImageFacts& facts,
                         const ImageSamples& samples) const {
    const SampleFormat& format = samples.rows->format();
    std::string text = "<<";
    pdf::AppendEntries(text, dictionary, kCodingKeys);
    text += "/Width " + std::to_string(format.width) + "/Height " + std::to_string(format.height) +
            "/BitsPerComponent 8/ColorSpace";
    if (KeepsSpace(dictionary, samples)) {
      pdf::AppendObject(text, dictionary.Get("ColorSpace"));
    } else {
      text += DeviceSpaceOf(format.components);
    }
    if (const Object decode = dictionary.Get("Decode");
        !decode.IsNull() && facts.filter != ImageFilter::kJpx) {
      text += "/Decode";
      pdf::AppendObject(text, decode);
    }
    if (samples.alpha && !conversion_->is_part1()) {
      const std::string alpha(samples.alpha->samples.begin(), samples.alpha->samples.end());
      text += "/SMask";
      pdf::AppendReference(
          text, conversion_->rewriter.Add(ObjectChange::Stream(GrayDictionary(format), alpha)));
    }
    return text + ">>";
  }

  static bool KeepsSpace(const Object& dictionary, const ImageSamples& samples) {
    return dictionary.Has("ColorSpace") &&
           samples.space.components == samples.rows->format().components;
  }

  Conversion* conversion_;
};

}  // namespace

void MendImages(Conversion& conversion) {
  ImageMender mender(conversion);
  pdf::ResourceGraph graph(conversion.document);
  for (std::size_t i = 0; i < conversion.pages.pages().size(); ++i) {
    graph.AddPage(conversion.pages, i);
    while (const pdf::ResourceNode* node = graph.Next()) {
      const bool is_image =
          node->kind == pdf::ResourceKind::kImage || node->kind == pdf::ResourceKind::kImageMask;
      if (is_image && node->number != 0) {
        mender.Mend(node->number);
      }
    }
  }
}

}  // namespace TarnixTools::engines::pdfa
