#include "engines/support/codecs/jbig2/PatternDictionary.h"

#include <memory>

#include "engines/support/codecs/jbig2/Jbig2Limits.h"

namespace TarnixTools::engines::jbig2 {

Symbols DecodePatternDictionary(const PatternDictionary& dictionary, std::string_view data,
                                Budget& budget) {
  if (dictionary.largest_value >= limits::kMaxPatterns || dictionary.width == 0 ||
      dictionary.height == 0) {
    throw Failure();
  }
  const std::uint32_t count = dictionary.largest_value + 1;
  budget.Spend(std::uint64_t{count} *
               (limits::kPatternCost + std::uint64_t{dictionary.width} * dictionary.height));
  ArithmeticDecoder decoder(data, budget);
  Contexts contexts = GenericContexts();
  const auto width = static_cast<std::int32_t>(dictionary.width);
  // The patterns side by side.
  const Bitmap collective_bitmap =
      DecodeGenericRegion({.width = count * dictionary.width,
                           .height = dictionary.height,
                           .template_number = dictionary.template_number,
                           .adaptive = {{{-width, 0}, {-3, -1}, {2, -2}, {-2, -2}}}},
                          decoder, contexts);
  Symbols patterns;
  for (std::uint32_t i = 0; i < count; ++i) {
    patterns.push_back(std::make_shared<const Bitmap>(collective_bitmap.Part(
        std::int64_t{i} * dictionary.width, 0, dictionary.width, dictionary.height)));
  }
  return patterns;
}

}  // namespace TarnixTools::engines::jbig2
