#include "engines/pdfa/checks/PaintedObjectCheck.h"

#include <algorithm>

#include "engines/pdfa/Limits.h"
#include "engines/pdfa/checks/GraphicsStateCheck.h"
#include "engines/pdfa/rules/ContentFacts.h"
#include "engines/pdfa/rules/GraphicsFacts.h"
#include "engines/support/codecs/JpxHeader.h"
#include "engines/support/images/DocumentImage.h"

namespace TarnixTools::engines::pdfa {

using pdf::Arena;
using pdf::Object;

namespace {

// The colour space that counts is the one that is said to be exact, where there are several.
void TakeColors(const JpxHeader& header, JpxFacts& facts) {
  facts.color_spaces = header.colors.size();
  for (const JpxColor& color : header.colors) {
    facts.exact_color_spaces += color.approximation == 1 ? 1 : 0;
  }
  for (const JpxColor& color : header.colors) {
    const bool is_exact = facts.exact_color_spaces == 1 && color.approximation == 1;
    if (facts.color_spaces == 1 || is_exact) {
      facts.method = color.method;
      facts.space = color.space;
    }
  }
}

// Channels count as the header box has them, those of alpha included; a code stream without boxes
// has none, and no depth.
JpxFacts FactsOfJpx(const JpxHeader& header) {
  JpxFacts facts;
  TakeColors(header, facts);
  if (!header.has_boxes) {
    return facts;
  }
  facts.color_channels = header.components.size();
  facts.bits = header.components.front().bits;
  facts.has_equal_depths =
      std::all_of(header.components.begin(), header.components.end(),
                  [&](const JpxComponent& component) { return component.bits == facts.bits; });
  return facts;
}

void CheckJpx(CheckedDocument& checked, const DocumentImage& image, const Place& place) {
  Arena arena;
  const auto facts_of_image = FactsOf(image, arena);
  if (facts_of_image.filter != ImageFilter::kJpx) {
    return;
  }
  const std::string data = DecodeToImageFilter(image, facts_of_image, limits::kMaxJpxBytes);
  const std::optional<JpxHeader> header = ReadJpxHeader(data);
  JpxFacts facts = header ? FactsOfJpx(*header) : JpxFacts{};
  facts.has_own_space = image.dictionary.Has("ColorSpace");
  checked.findings().Check(facts, place);
}

// What XObjects and inline images have in common.
void CheckImageEntries(CheckedDocument& checked, const Object& image, const Place& place) {
  Arena arena;
  PaintedImageFacts facts;
  facts.is_mask = checked.Get(image, "ImageMask", arena).BooleanOr(false);
  facts.has_alternates = image.Has("Alternates");
  facts.has_opi = image.Has("OPI");
  facts.is_interpolated = checked.Get(image, "Interpolate", arena).BooleanOr(false);
  const Object bits = checked.Get(image, "BitsPerComponent", arena);
  if (bits.IsInteger()) {
    facts.bits = bits.IntegerOr(0);
  }
  checked.findings().Check(facts, place);
  CheckRenderingIntent(checked, checked.Get(image, "Intent", arena), place);
}

void CheckImage(CheckedDocument& checked, const Object& dictionary, std::uint32_t number,
                const Place& place) {
  CheckImageEntries(checked, dictionary, place);
  CheckJpx(checked, {.document = &checked.document(), .number = number, .dictionary = dictionary},
           place);
  Arena arena;
  const pdf::Followed mask = checked.document().Follow(dictionary.Get("SMask"), arena);
  if (mask.value.IsDictionary()) {
    Place place_of_mask = place;
    place_of_mask.object = mask.number;
    CheckImageEntries(checked, mask.value, place_of_mask);
  }
}

void CheckForm(CheckedDocument& checked, const Object& form, const Place& place) {
  Arena arena;
  checked.findings().Check(
      PaintedFormFacts{
          .has_postscript = form.Has("PS") || checked.Get(form, "Subtype2", arena).IsName("PS"),
          .has_opi = form.Has("OPI"),
          .has_reference = form.Has("Ref")},
      place);
  const Object group = checked.Get(form, "Group", arena);
  checked.findings().Check(GroupFacts{checked.Get(group, "S", arena).IsName("Transparency")},
                           place);
}

}  // namespace

void CheckPaintedObject(CheckedDocument& checked, const Object& dictionary, std::uint32_t number,
                        const Place& place) {
  Arena arena;
  const Object subtype = checked.Get(dictionary, "Subtype", arena);
  checked.findings().Check(PaintedObjectFacts{.is_postscript = subtype.IsName("PS"),
                                              .has_opi = dictionary.Has("OPI"),
                                              .has_soft_mask = dictionary.Has("SMask")},
                           place);
  if (subtype.IsName("Image")) {
    CheckImage(checked, dictionary, number, place);
  } else {
    CheckForm(checked, dictionary, place);
  }
}

void CheckInlineImage(CheckedDocument& checked, const Object& dictionary, const Object& entries,
                      const Place& place) {
  CheckImageEntries(checked, dictionary, place);
  Arena arena;
  const Object filter = checked.document().Resolve(
      entries.Has("F") ? entries.Get("F") : entries.Get("Filter"), arena);
  if (filter.IsName()) {
    checked.findings().Check(InlineFilterFacts{filter.Text()}, place);
  }
  for (const Object& item : filter.Items()) {
    checked.findings().Check(InlineFilterFacts{item.Text()}, place);
  }
}

bool IsTransparent(CheckedDocument& checked, const Object& dictionary) {
  Arena arena;
  if (checked.Get(dictionary, "Subtype", arena).IsName("Image")) {
    return checked.Get(dictionary, "SMask", arena).IsDictionary() ||
           checked.Get(dictionary, "SMaskInData", arena).IntegerOr(0) > 0;
  }
  const Object group = checked.Get(dictionary, "Group", arena);
  return checked.Get(group, "S", arena).IsName("Transparency");
}

}  // namespace TarnixTools::engines::pdfa
