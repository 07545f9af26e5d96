#include "engines/optimizer/images/InlineImages.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

#include "engines/optimizer/images/BitonalImage.h"
#include "engines/optimizer/images/ImageOptimizer.h"
#include "engines/optimizer/images/InkImage.h"
#include "engines/optimizer/images/SamplePicture.h"
#include "engines/optimizer/structure/StreamRecoder.h"
#include "engines/support/images/DocumentImage.h"
#include "engines/support/images/ImageSamples.h"
#include "pdf/Error.h"
#include "pdf/Limits.h"
#include "pdf/content/ContentReader.h"
#include "pdf/syntax/Chars.h"
#include "pdf/write/EntryText.h"

namespace TarnixTools::engines::optimizer {

namespace {

using pdf::Object;

// Smaller ones are not worth it.
constexpr std::size_t kLeastBytes = 1024;

// Entries that say how samples are stored, in full and short.
constexpr std::array<std::string_view, 12> kCodingKeys = {
    "W", "Width",  "H",  "Height",      "BPC", "BitsPerComponent",
    "F", "Filter", "DP", "DecodeParms", "L",   "Length"};

// Readers that know nothing of a filter take this for the end of its data.
bool HasEndMark(std::string_view data) {
  for (std::size_t at = data.find("EI"); at != std::string_view::npos;
       at = data.find("EI", at + 1)) {
    const bool is_after_space = at > 0 && pdf::IsSpace(data[at - 1]);
    if (is_after_space && (at + 2 == data.size() || pdf::IsSpace(data[at + 2]))) {
      return true;
    }
  }
  return false;
}

class InlineCoder {
 public:
  InlineCoder(pdf::Document& document, const pdf::Operation& operation, const ImageGoals& goals)
      : document_(&document),
        goals_(&goals),
        entries_(pdf::ParseInlineEntries(operation.image_entries, arena_)),
        image_{.document = document_,
               .number = 0,
               .dictionary = FullInlineDictionary(document, entries_, Object(), arena_),
               .data = operation.image_data,
               .color_spaces = {}},
        facts_(FactsOf(image_, arena_)) {}

  // What stands between BI and EI. Nothing where that is not smaller.
  std::optional<std::string> Run() {
    std::optional<CodedPicture> coded = Code();
    if (!coded || coded->keeps_filter || HasEndMark(coded->data)) {
      return std::nullopt;
    }
    return TextOf(*coded);
  }

 private:
  std::optional<CodedPicture> Code() {
    const std::optional<ColorSpace> space = SpaceOf(image_, facts_);
    const bool is_plain =
        facts_.filter == ImageFilter::kNone || facts_.filter == ImageFilter::kCcitt;
    if (facts_.width == 0 || facts_.height == 0 || !is_plain || !space) {
      return std::nullopt;
    }
    std::optional<ImageSamples> samples = Open(space);
    if (!samples || !samples->is_complete || samples->rows->format().height != facts_.height) {
      return std::nullopt;
    }
    const SampleFormat& format = samples->rows->format();
    if (format.bits == 1 && format.components == 1) {
      return CodeBits(*samples->rows);
    }
    const bool is_device = space->kind == ColorKind::kGray || space->kind == ColorKind::kRgb ||
                           space->kind == ColorKind::kCmyk;
    return is_device ? CodeColors(*std::move(samples)) : CodeSamples(*std::move(samples));
  }

  std::optional<CodedPicture> CodeBits(SampleRows& rows) {
    std::variant<LeftAlone, CodedPicture> coded = CodeBitonal(rows, 0, image_.data.size());
    if (auto* picture = std::get_if<CodedPicture>(&coded)) {
      return std::move(*picture);
    }
    return std::nullopt;
  }

  std::optional<ImageSamples> Open(const std::optional<ColorSpace>& space) {
    try {
      return OpenSamples(image_, facts_, space, {facts_.width, facts_.height});
    } catch (const pdf::Error& error) {
      if (!error.is_damage() && error.code() != pdf::ErrorCode::kLimitExceeded) {
        throw;
      }
      return std::nullopt;
    }
  }

  std::optional<CodedPicture> CodeColors(ImageSamples samples) {
    ImageTask task;
    task.encoded_bytes = image_.data.size();
    task.width = facts_.width;
    task.height = facts_.height;
    task.is_inverted = !samples.decode.empty() && samples.decode[0] > 0;
    task.rows = OwnSamples(std::move(samples.rows));
    return OptimizeImage(task, *goals_).coded;
  }

  std::optional<CodedPicture> CodeSamples(ImageSamples samples) {
    InkTask task{.encoded_bytes = image_.data.size(),
                 .wanted = {facts_.width, facts_.height},
                 .samples = std::move(samples.rows)};
    return CodeInks(task);
  }

  std::string TextOf(const CodedPicture& coded) const {
    std::string text;
    pdf::AppendEntries(text, entries_, kCodingKeys);
    text += "/W " + std::to_string(coded.width) + "/H " + std::to_string(coded.height);
    text += "/BPC " + std::to_string(coded.bits);
    text += coded.filter.empty() ? "" : "/F/" + coded.filter;
    text += coded.parameters.empty() ? "" : "/DP<<" + coded.parameters + ">>";
    return text + " ID " + coded.data + "\n";
  }

  pdf::Document* document_;
  const ImageGoals* goals_;
  pdf::Arena arena_;
  Object entries_;
  DocumentImage image_;
  ImageFacts facts_;
};

// The content with its images coded anew; nothing where none has become smaller.
std::optional<std::string> WithSmallImages(pdf::Document& document, std::string_view content,
                                           const ImageGoals& goals) {
  std::string changed;
  std::size_t done = 0;
  pdf::ContentReader reader(content);
  pdf::Operation operation;
  while (reader.Next(operation)) {
    if (operation.image_data.size() < kLeastBytes) {
      continue;
    }
    if (const auto text = InlineCoder(document, operation, goals).Run()) {
      const auto begin = static_cast<std::size_t>(operation.image_entries.data() - content.data());
      changed.append(content.substr(done, begin - done));
      changed += *text;
      done = static_cast<std::size_t>(operation.image_data.data() - content.data()) +
             operation.image_data.size();
    }
  }
  if (done == 0 || reader.is_damaged()) {
    return std::nullopt;
  }
  return changed.append(content.substr(done));
}

}  // namespace

void RecodeInlineImages(pdf::Document& document, std::uint32_t number, const ImageGoals& goals,
                        DataStore& store, pdf::DocumentRewriter& rewriter) {
  const std::optional<EncodedStream> encoded =
      rewriter.IsChanged(number) ? std::nullopt : ReadEncoded(document, number);
  if (!encoded) {
    return;
  }
  const pdf::Decoded decoded =
      pdf::TryDecode(encoded->steps, encoded->data, pdf::limits::kMaxTakenOff);
  if (!decoded.complete) {
    return;
  }
  std::optional<std::string> changed = WithSmallImages(document, decoded.data, goals);
  if (!changed) {
    return;
  }
  std::optional<RecodedStream> recoded =
      Recode({.data = *std::move(changed), .steps = {}, .entry_bytes = 0});
  const std::optional<RecodedStream> before = Recode(*encoded);
  const std::size_t most = before ? before->data.size() : encoded->data.size();
  if (recoded && recoded->data.size() < most) {
    PutRecoded(document, number, recoded->coding, store.Keep(std::move(recoded->data)), rewriter);
  }
}

}  // namespace TarnixTools::engines::optimizer
