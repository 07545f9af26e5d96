// Content streams, and the images and forms that they paint (ISO 19005-1, 6.1.10, 6.2.4 to 6.2.7,
// 6.2.10 and 6.4; -2 and -3, 6.1.10, 6.2.2, 6.2.8 and 6.2.9).
#ifndef TARNIX_ENGINES_PDFA_RULES_CONTENTFACTS_H_
#define TARNIX_ENGINES_PDFA_RULES_CONTENTFACTS_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "engines/pdfa/rules/Rule.h"

namespace TarnixTools::engines::pdfa {

struct OperatorFacts {
  bool is_defined = true;
};

// A graphics state that is saved.
struct SavedStateFacts {
  std::size_t nesting = 0;  // with itself
};

// The names that one content stream uses.
struct ResourceNamesFacts {
  bool are_its_own = true;  // none of them is found in what it inherits only
};

// A filter of an inline image, as it stands.
struct InlineFilterFacts {
  std::string_view name;
};

// An image or a form.
struct PaintedObjectFacts {
  bool is_postscript = false;
  bool has_opi = false;
  bool has_soft_mask = false;
};

struct PaintedImageFacts {
  bool is_mask = false;
  bool has_alternates = false;
  bool has_opi = false;
  bool is_interpolated = false;
  std::optional<std::int64_t> bits;  // /BitsPerComponent
};

struct PaintedFormFacts {
  bool has_postscript = false;  // /PS, or /Subtype2 /PS
  bool has_opi = false;
  bool has_reference = false;  // /Ref
};

// JPEG 2000 data.
struct JpxFacts {
  bool has_own_space = false;  // the image's dictionary says a colour space
  std::size_t color_channels = 0;
  std::size_t color_spaces = 0;        // boxes that tell one
  std::size_t exact_color_spaces = 0;  // those of them that are said to be exact
  int method = 0;                      // of the one that counts; 0 where there is none
  std::optional<std::uint32_t> space;  // its number
  bool has_equal_depths = true;        // of all channels
  int bits = 0;
};

template <>
std::span<const Rule<OperatorFacts>> RulesFor<OperatorFacts>();
template <>
std::span<const Rule<SavedStateFacts>> RulesFor<SavedStateFacts>();
template <>
std::span<const Rule<ResourceNamesFacts>> RulesFor<ResourceNamesFacts>();
template <>
std::span<const Rule<InlineFilterFacts>> RulesFor<InlineFilterFacts>();
template <>
std::span<const Rule<PaintedObjectFacts>> RulesFor<PaintedObjectFacts>();
template <>
std::span<const Rule<PaintedImageFacts>> RulesFor<PaintedImageFacts>();
template <>
std::span<const Rule<PaintedFormFacts>> RulesFor<PaintedFormFacts>();
template <>
std::span<const Rule<JpxFacts>> RulesFor<JpxFacts>();

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_RULES_CONTENTFACTS_H_
