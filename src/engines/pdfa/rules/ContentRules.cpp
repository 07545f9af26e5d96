#include <algorithm>
#include <array>

#include "engines/pdfa/rules/ContentFacts.h"

namespace TarnixTools::engines::pdfa {

namespace {

constexpr std::size_t kDeepestSave = 28;

// Those of ISO 32000-1, tables 6 and 94, without LZW and encryption.
constexpr std::array<std::string_view, 12> kInlineFilters = {"ASCIIHexDecode",
                                                             "ASCII85Decode",
                                                             "FlateDecode",
                                                             "RunLengthDecode",
                                                             "CCITTFaxDecode",
                                                             "DCTDecode",
                                                             "AHx",
                                                             "A85",
                                                             "Fl",
                                                             "RL",
                                                             "CCF",
                                                             "DCT"};

constexpr std::array<Rule<OperatorFacts>, 1> kOperatorRules = {{
    {.levels = kAllLevels,
     .part1 = {"6.2.10", 1},
     .later = {"6.2.2", 1},
     .holds = [](const OperatorFacts& facts) { return facts.is_defined; },
     .wrong = "A content stream has an operator that the standard does not know.",
     .cure = "Remove the operator with its operands."},
}};

constexpr std::array<Rule<SavedStateFacts>, 1> kSavedStateRules = {{
    {.levels = kAllLevels,
     .part1 = {"6.1.12", 8},
     .later = {"6.1.13", 8},
     .holds = [](const SavedStateFacts& state) { return state.nesting <= kDeepestSave; },
     .wrong = "A content stream saves the graphics state more than 28 times without restoring it.",
     .cure = "Nest q and Q less deeply."},
}};

constexpr std::array<Rule<ResourceNamesFacts>, 1> kResourceNamesRules = {{
    {.levels = kParts2And3,
     .later = {"6.2.2", 2},
     .holds = [](const ResourceNamesFacts& names) { return names.are_its_own; },
     .wrong = "A content stream uses resources that it only inherits.",
     .cure = "Give the page, form, pattern or font /Resources with all that its content names."},
}};

constexpr std::array<Rule<InlineFilterFacts>, 2> kInlineFilterRules = {{
    {.levels = kPart1,
     .part1 = {"6.1.10", 2},
     .holds =
         [](const InlineFilterFacts& filter) {
           return filter.name != "LZWDecode" && filter.name != "LZW";
         },
     .wrong = "An inline image is compressed with LZW.",
     .cure = "Compress the image with Flate."},
    {.levels = kParts2And3,
     .later = {"6.1.10", 1},
     .holds =
         [](const InlineFilterFacts& filter) {
           return std::find(kInlineFilters.begin(), kInlineFilters.end(), filter.name) !=
                  kInlineFilters.end();
         },
     .wrong = "An inline image has a filter that is not allowed there.",
     .cure = "Compress the image with Flate."},
}};

constexpr std::array<Rule<PaintedObjectFacts>, 3> kPaintedObjectRules = {{
    {.levels = kPart1,
     .part1 = {"6.2.4", 2},
     .holds = [](const PaintedObjectFacts& object) { return !object.has_opi; },
     .wrong = "An image or a form has the key /OPI, by which another picture may be put in its "
              "place.",
     .cure = "Remove /OPI."},
    {.levels = kAllLevels,
     .part1 = {"6.2.7", 1},
     .later = {"6.2.9", 3},
     .holds = [](const PaintedObjectFacts& object) { return !object.is_postscript; },
     .wrong = "Content paints a PostScript XObject.",
     .cure = "Remove it, or put a form in its place."},
    {.levels = kPart1,
     .part1 = {"6.4", 2},
     .holds = [](const PaintedObjectFacts& object) { return !object.has_soft_mask; },
     .wrong = "An image or a form has a soft mask.",
     .cure = "Flatten the transparency, or choose a later part of PDF/A."},
}};

constexpr std::array<Rule<PaintedImageFacts>, 6> kPaintedImageRules = {{
    {.levels = kAllLevels,
     .part1 = {"6.2.4", 1},
     .later = {"6.2.8", 1},
     .holds = [](const PaintedImageFacts& image) { return !image.has_alternates; },
     .wrong = "An image has alternate images.",
     .cure = "Remove /Alternates."},
    {.levels = kParts2And3,
     .later = {"6.2.8", 2},
     .holds = [](const PaintedImageFacts& image) { return !image.has_opi; },
     .wrong = "An image has the key /OPI, by which another picture may be put in its place.",
     .cure = "Remove /OPI."},
    {.levels = kAllLevels,
     .part1 = {"6.2.4", 3},
     .later = {"6.2.8", 3},
     .holds = [](const PaintedImageFacts& image) { return !image.is_interpolated; },
     .wrong = "An image asks for interpolation.",
     .cure = "Set /Interpolate to false, or remove it."},
    {.levels = kPart1,
     .part1 = {"6.2.4", 4},
     .holds =
         [](const PaintedImageFacts& image) {
           const std::int64_t bits = image.bits.value_or(1);
           return image.is_mask || bits == 1 || bits == 2 || bits == 4 || bits == 8;
         },
     .wrong = "The bits of an image's component are not 1, 2, 4 or 8.",
     .cure = "Write the image with 8 bits for each component."},
    {.levels = kParts2And3,
     .later = {"6.2.8", 4},
     .holds =
         [](const PaintedImageFacts& image) {
           const std::int64_t bits = image.bits.value_or(1);
           return image.is_mask || bits == 1 || bits == 2 || bits == 4 || bits == 8 || bits == 16;
         },
     .wrong = "The bits of an image's component are not 1, 2, 4, 8 or 16.",
     .cure = "Write the image with 8 bits for each component."},
    {.levels = kAllLevels,
     .part1 = {"6.2.4", 5},
     .later = {"6.2.8", 5},
     .holds =
         [](const PaintedImageFacts& image) {
           return !image.is_mask || image.bits.value_or(1) == 1;
         },
     .wrong = "An image mask has more than one bit for each pixel.",
     .cure = "Set /BitsPerComponent to 1."},
}};

constexpr std::array<Rule<PaintedFormFacts>, 3> kPaintedFormRules = {{
    {.levels = kPart1,
     .part1 = {"6.2.5", 1},
     .holds = [](const PaintedFormFacts& form) { return !form.has_postscript; },
     .wrong = "A form has a fragment of PostScript.",
     .cure = "Remove /PS, and /Subtype2 where it is /PS."},
    {.levels = kParts2And3,
     .later = {"6.2.9", 1},
     .holds = [](const PaintedFormFacts& form) { return !form.has_postscript && !form.has_opi; },
     .wrong = "A form has a fragment of PostScript, or the key /OPI.",
     .cure = "Remove /OPI and /PS, and /Subtype2 where it is /PS."},
    {.levels = kAllLevels,
     .part1 = {"6.2.6", 1},
     .later = {"6.2.9", 2},
     .holds = [](const PaintedFormFacts& form) { return !form.has_reference; },
     .wrong = "A form stands for a page of another document.",
     .cure = "Remove /Ref."},
}};

constexpr std::array<Rule<JpxFacts>, 5> kJpxRules = {{
    {.levels = kParts2And3,
     .later = {"6.2.8.3", 1},
     .holds =
         [](const JpxFacts& jpx) {
           return jpx.color_channels == 1 || jpx.color_channels == 3 || jpx.color_channels == 4;
         },
     .wrong = "A JPEG 2000 image does not have 1, 3 or 4 colour channels.",
     .cure = "Write the image with gray, RGB or CMYK."},
    {.levels = kParts2And3,
     .later = {"6.2.8.3", 2},
     .holds =
         [](const JpxFacts& jpx) {
           return jpx.has_own_space || jpx.color_spaces == 1 || jpx.exact_color_spaces == 1;
         },
     .wrong = "A JPEG 2000 image does not say which of its colour spaces is the exact one.",
     .cure = "Keep one colour space in the image, or give the image's dictionary a /ColorSpace."},
    {.levels = kParts2And3,
     .later = {"6.2.8.3", 3},
     .holds =
         [](const JpxFacts& jpx) {
           return jpx.has_own_space || (jpx.method >= 1 && jpx.method <= 3);
         },
     .wrong = "A JPEG 2000 image tells its colour space by a method that is not allowed.",
     .cure = "Give the image's dictionary a /ColorSpace, or write the image again."},
    {.levels = kParts2And3,
     .later = {"6.2.8.3", 4},
     .holds =
         [](const JpxFacts& jpx) {
           constexpr std::uint32_t kCieJab = 19;
           return jpx.has_own_space || jpx.space != kCieJab;
         },
     .wrong = "A JPEG 2000 image is in the colour space CIEJab.",
     .cure = "Write the image in another colour space."},
    {.levels = kParts2And3,
     .later = {"6.2.8.3", 5},
     .holds =
         [](const JpxFacts& jpx) {
           constexpr int kMostBits = 38;
           return jpx.has_equal_depths && jpx.bits >= 1 && jpx.bits <= kMostBits;
         },
     .wrong = "The channels of a JPEG 2000 image do not all have the same number of bits, 1 to 38.",
     .cure = "Write the image with 8 bits for each channel."},
}};

}  // namespace

template <>
std::span<const Rule<OperatorFacts>> RulesFor<OperatorFacts>() {
  return kOperatorRules;
}

template <>
std::span<const Rule<SavedStateFacts>> RulesFor<SavedStateFacts>() {
  return kSavedStateRules;
}

template <>
std::span<const Rule<ResourceNamesFacts>> RulesFor<ResourceNamesFacts>() {
  return kResourceNamesRules;
}

template <>
std::span<const Rule<InlineFilterFacts>> RulesFor<InlineFilterFacts>() {
  return kInlineFilterRules;
}

template <>
std::span<const Rule<PaintedObjectFacts>> RulesFor<PaintedObjectFacts>() {
  return kPaintedObjectRules;
}

template <>
std::span<const Rule<PaintedImageFacts>> RulesFor<PaintedImageFacts>() {
  return kPaintedImageRules;
}

template <>
std::span<const Rule<PaintedFormFacts>> RulesFor<PaintedFormFacts>() {
  return kPaintedFormRules;
}

template <>
std::span<const Rule<JpxFacts>> RulesFor<JpxFacts>() {
  return kJpxRules;
}

}  // namespace TarnixTools::engines::pdfa
