#include "engines/optimizer/images/ImagePass.h"

#include <algorithm>
#include <array>
#include <utility>
#include <variant>

#include "engines/optimizer/images/BitonalImage.h"
#include "foundation/JobWatch.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines::optimizer {

namespace {

using pdf::Object;
using pdf::ObjectChange;

// Entries of an image that say how its samples are stored.
constexpr std::array<std::string_view, 8> kCodingKeys = {"Length",           "Width",      "Height",
                                                         "BitsPerComponent", "ColorSpace", "Filter",
                                                         "DecodeParms",      "Decode"};

void AppendEntry(std::string& text, std::string_view key, std::string_view value) {
  pdf::AppendName(text, key);
  pdf::AppendToken(text, value);
}

void OptimizeBitonal(BitonalTask& task, const ImageGoals& goals, ImageOutcome& outcome) {
  outcome.kind = ImageClass::kBitonal;
  std::variant<LeftAlone, CodedPicture> coded =
      CodeBitonal(*task.samples, goals.settings.bitonal_codecs, task.encoded_bytes);
  if (const auto* reason = std::get_if<LeftAlone>(&coded)) {
    outcome.left_alone = *reason;
  } else {
    outcome.coded = std::get<CodedPicture>(std::move(coded));
  }
  task.samples.reset();
}

void AppendCoding(std::string& text, const CodedPicture& coded) {
  if (!coded.filter.empty()) {
    AppendEntry(text, "Filter", "/" + coded.filter);
  }
  if (!coded.parameters.empty()) {
    AppendEntry(text, "DecodeParms", "<<" + coded.parameters + ">>");
  }
}

// What makes the unit square that of a part of an image.
std::string PlaceOf(const ImagePart& part) {
  constexpr int kDecimals = 7;
  const double width = part.whole.width;
  const double height = part.whole.height;
  std::string content;
  pdf::AppendNumber(content, part.width / width, kDecimals);
  content += " 0 0";
  pdf::AppendNumber(content, part.height / height, kDecimals);
  pdf::AppendNumber(content, part.left / width, kDecimals);
  pdf::AppendNumber(content, (height - part.top - part.height) / height, kDecimals);
  return content + " cm";
}

// Sets the colour of an ink, in the colour space that is set.
void AppendColor(std::string& content, const CodedInk& ink) {
  constexpr int kDecimals = 4;
  for (std::size_t i = 0; i < ink.components; ++i) {
    pdf::AppendNumber(content, ink.color[i], kDecimals);
  }
  content += " scn";
}

ObjectChange StencilOf(const CodedPicture& coded, const StoredData& data) {
  std::string text = "<</Type/XObject/Subtype/Image/ImageMask true/BitsPerComponent 1";
  AppendEntry(text, "Width", std::to_string(coded.width));
  AppendEntry(text, "Height", std::to_string(coded.height));
  AppendCoding(text, coded);
  return ObjectChange::StreamFrom(text + ">>",
                                  [&data](pdf::ByteSink& sink) { data.WriteTo(sink); });
}

void OptimizeInks(InkTask& task, ImageOutcome& outcome) {
  outcome.coded = CodeInks(task);
  if (!outcome.coded) {
    outcome.left_alone = LeftAlone::kSmallest;
  }
}

}  // namespace

std::uint64_t ImagePass::Entry::BytesAfter() const {
  std::uint64_t bytes = data.size();
  for (const StoredData& stencil : stencils) {
    bytes += stencil.size();
  }
  return bytes;
}

ImagePass::ImagePass(pdf::Document& document, const DocumentSurvey& survey,
                     const OptimizerSettings& settings)
    : document_(&document), survey_(&survey), goals_(GoalsOf(settings, HasCmykIntent())) {}

bool ImagePass::HasCmykIntent() {
  pdf::Arena arena;
  const Object intents = document_->Resolve(document_->Catalog(arena).Get("OutputIntents"), arena);
  return std::any_of(intents.Items().begin(), intents.Items().end(), [&](const Object& item) {
    const Object intent = document_->Resolve(item, arena);
    const Object profile = document_->Resolve(intent.Get("DestOutputProfile"), arena);
    return document_->Resolve(profile.Get("N"), arena).IntegerOr(0) == 4;
  });
}

void ImagePass::Run(pdf::DocumentRewriter& rewriter, WorkPool& pool, DataStore& store) {
  const Workshop workshop{&pool, &store};
  Placements drawn;
  for (const std::uint32_t number : survey_->Images()) {
    AddUse(drawn, rewriter.Successor(number), *survey_->PlacementOf(number));
  }
  JobSteps steps(static_cast<std::int64_t>(drawn.size()));
  for (const auto& [number, placement] : drawn) {
    Add(number, ImageRole::kDrawn, placement, rewriter, workshop);
    steps.Done();
  }
  for (const auto& [number, placement] : soft_masks_) {
    Add(number, ImageRole::kSoftMask, placement, rewriter, workshop);
  }
  for (const auto& [number, placement] : stencil_masks_) {
    Add(number, ImageRole::kStencilMask, placement, rewriter, workshop);
  }
  pool.Finish();
  KeepPairsTogether();
}

// Images that are mixed with a matte by their mask stay as they were unless both have become smaller
// and have the same size again.
void ImagePass::KeepPairsTogether() {
  for (auto& [number, entry] : entries_) {
    if (entry.matte_mask == 0) {
      continue;
    }
    std::optional<CodedPicture>& image = entry.outcome.coded;
    std::optional<CodedPicture>& mask = entries_[entry.matte_mask].outcome.coded;
    if (!image || !mask || image->width != mask->width || image->height != mask->height) {
      image.reset();
      mask.reset();
      entry.outcome.left_alone = LeftAlone::kSmallest;
      entries_[entry.matte_mask].outcome.left_alone = LeftAlone::kSmallest;
    }
  }
}

// number: 0 for none.
void ImagePass::AddUse(Placements& placements, std::uint32_t number,
                       const ImagePlacement& placement) {
  if (number != 0) {
    const auto [place, is_new] = placements.try_emplace(number, placement);
    if (!is_new) {
      place->second.Include(placement);
    }
  }
}

void ImagePass::Add(std::uint32_t number, ImageRole role, const ImagePlacement& placement,
                    pdf::DocumentRewriter& rewriter, const Workshop& workshop) {
  const auto [place, is_new] = entries_.try_emplace(number);
  if (!is_new) {
    return;
  }
  ImageInput input = ReadImage(*document_, number, role, placement, goals_);
  // A mask is seen as large as what it masks.
  if (role == ImageRole::kDrawn) {
    AddUse(soft_masks_, rewriter.Successor(input.soft_mask), placement);
    AddUse(stencil_masks_, rewriter.Successor(input.stencil_mask), placement);
  }
  if (role == ImageRole::kDrawn && input.has_matte) {
    place->second.matte_mask = rewriter.Successor(input.soft_mask);
  }
  place->second.part = input.part;
  place->second.bytes_before = input.encoded_bytes;
  place->second.outcome.kind =
      role == ImageRole::kDrawn ? ImageClass::kPhotograph : ImageClass::kSoftMask;
  Start(place->second, std::move(input), workshop);
}

void ImagePass::Start(Entry& entry, ImageInput input, const Workshop& workshop) const {
  if (const auto* reason = std::get_if<LeftAlone>(&input.task)) {
    entry.outcome.left_alone = *reason;
    return;
  }
  const auto shared = std::make_shared<ImageInput>(std::move(input));
  workshop.pool->Add(shared->held_bytes, [&entry, shared, store = workshop.store, this] {
    if (auto* bitonal = std::get_if<BitonalTask>(&shared->task)) {
      OptimizeBitonal(*bitonal, goals_, entry.outcome);
    } else if (auto* inks = std::get_if<InkTask>(&shared->task)) {
      OptimizeInks(*inks, entry.outcome);
    } else {
      entry.outcome = OptimizeImage(std::get<ImageTask>(shared->task), goals_);
    }
    if (entry.outcome.coded) {
      entry.data = store->Keep(std::exchange(entry.outcome.coded->data, {}));
      for (CodedInk& ink : entry.outcome.inks) {
        entry.stencils.push_back(store->Keep(std::exchange(ink.stencil.data, {})));
      }
    }
  });
}

void ImagePass::Apply(pdf::DocumentRewriter& rewriter) {
  for (const auto& [number, entry] : entries_) {
    if (!entry.outcome.coded) {
      continue;
    }
    if (entry.part || !entry.outcome.inks.empty()) {
      PutForm(number, entry, rewriter);
    } else {
      rewriter.Change(number, StreamOf(number, entry, rewriter));
    }
  }
}

ObjectChange ImagePass::StreamOf(std::uint32_t number, const Entry& entry,
                                 pdf::DocumentRewriter& rewriter) const {
  return ObjectChange::StreamFrom(
      DictionaryOf(number, *entry.outcome.coded, rewriter),
      [&data = entry.data](pdf::ByteSink& sink) { data.WriteTo(sink); });
}

// A form takes the image's place, which draws what is left of it where it has been: nothing that
// draws the image has to change.
void ImagePass::PutForm(std::uint32_t number, const Entry& entry,
                        pdf::DocumentRewriter& rewriter) const {
  const ImageOutcome& outcome = entry.outcome;
  std::string content = entry.part ? PlaceOf(*entry.part) : "";
  content += "/Im Do";
  std::string images = "/Im";
  pdf::AppendReference(images, rewriter.Add(StreamOf(number, entry, rewriter)));
  if (!outcome.inks.empty()) {
    content += "/Cs cs";
  }
  for (std::size_t i = 0; i < outcome.inks.size(); ++i) {
    const std::string name = "/Ink" + std::to_string(i);
    AppendColor(content, outcome.inks[i]);
    content += name + " Do";
    images += name;
    pdf::AppendReference(images,
                         rewriter.Add(StencilOf(outcome.inks[i].stencil, entry.stencils[i])));
  }
  std::string text =
      "<</Type/XObject/Subtype/Form/BBox[0 0 1 1]/Resources<</XObject<<" + images + ">>";
  if (!outcome.inks.empty()) {
    text += "/ColorSpace<</Cs " + ColorSpaceOf(number, *outcome.coded) + ">>";
  }
  text += ">>";
  pdf::Arena arena;
  const Object dictionary = document_->Load({.number = number, .generation = 0}, arena);
  for (const std::string_view key : {"OC", "StructParent"}) {
    if (const Object value = dictionary.Get(key); !value.IsNull()) {
      pdf::AppendName(text, key);
      pdf::AppendObject(text, value);
    }
  }
  rewriter.Change(number, ObjectChange::Stream(text + ">>", std::move(content)));
}

// As text: that which the picture has got, or the image's own.
std::string ImagePass::ColorSpaceOf(std::uint32_t number, const CodedPicture& coded) const {
  if (!coded.color_space.empty()) {
    return coded.color_space;
  }
  pdf::Arena arena;
  std::string text;
  pdf::AppendObject(text,
                    document_->Load({.number = number, .generation = 0}, arena).Get("ColorSpace"));
  return text;
}

std::string ImagePass::DictionaryOf(std::uint32_t number, const CodedPicture& coded,
                                    pdf::DocumentRewriter& rewriter) const {
  pdf::Arena arena;
  const Object dictionary = document_->Load({.number = number, .generation = 0}, arena);
  std::string text = "<<";
  const auto keep = [&](std::string_view key, const Object& value) {
    if (!value.IsNull()) {
      pdf::AppendName(text, key);
      pdf::AppendObject(text, value);
    }
  };
  for (const pdf::DictionaryEntry& entry : dictionary.Entries()) {
    if (std::find(kCodingKeys.begin(), kCodingKeys.end(), entry.Key()) == kCodingKeys.end()) {
      keep(entry.Key(), entry.value);
    }
  }
  AppendEntry(text, "Width", std::to_string(coded.width));
  AppendEntry(text, "Height", std::to_string(coded.height));
  AppendEntry(text, "BitsPerComponent", std::to_string(coded.bits));
  if (coded.keeps_filter) {
    keep("Filter", dictionary.Get("Filter"));
    keep("DecodeParms", dictionary.Get("DecodeParms"));
  } else {
    AppendCoding(text, coded);
  }
  if (!coded.palette.empty()) {
    std::string space = "[/Indexed" + coded.color_space;
    pdf::AppendInteger(space, static_cast<std::int64_t>(coded.palette.size() / 3) - 1);
    pdf::AppendString(space, coded.palette, false);
    std::string reference;
    pdf::AppendReference(reference, rewriter.Add(ObjectChange::Value(space + "]")));
    AppendEntry(text, "ColorSpace", reference);
  } else if (!coded.color_space.empty()) {
    AppendEntry(text, "ColorSpace", coded.color_space);
  } else {
    keep("ColorSpace", dictionary.Get("ColorSpace"));
  }
  if (!coded.decode) {
    keep("Decode", dictionary.Get("Decode"));
  } else if (!coded.decode->empty()) {
    AppendEntry(text, "Decode", "[" + *coded.decode + "]");
  }
  return text + ">>";
}

std::array<ClassFigures, kImageClassCount> ImagePass::Figures() const {
  std::array<ClassFigures, kImageClassCount> all{};
  for (const auto& [number, entry] : entries_) {
    ClassFigures& figures = all[static_cast<std::size_t>(entry.outcome.kind)];
    ++figures.images;
    figures.bytes_before += entry.bytes_before;
    figures.bytes_after += entry.outcome.coded ? entry.BytesAfter() : entry.bytes_before;
    if (entry.outcome.left_alone) {
      ++figures.left_alone[static_cast<std::size_t>(*entry.outcome.left_alone)];
    }
  }
  return all;
}

}  // namespace TarnixTools::engines::optimizer
