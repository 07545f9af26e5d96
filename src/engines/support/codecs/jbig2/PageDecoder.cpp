#include "engines/support/codecs/jbig2/PageDecoder.h"

#include <span>
#include <utility>
#include <vector>

#include "engines/support/codecs/CcittDecoder.h"
#include "engines/support/codecs/jbig2/Jbig2Limits.h"
#include "engines/support/codecs/jbig2/PatternDictionary.h"
#include "engines/support/pictures/PictureLimits.h"

namespace TarnixTools::engines::jbig2 {
namespace {

// Huffman codes, and MMR in dictionaries and halftones, are left to others.
void RequireArithmetic(std::uint32_t flags) {
  if ((flags & 1U) != 0) {
    throw Failure();
  }
}

bool IsIntermediate(SegmentType type) {
  return type == SegmentType::kIntermediateTextRegion ||
         type == SegmentType::kIntermediateHalftoneRegion ||
         type == SegmentType::kIntermediateGenericRegion ||
         type == SegmentType::kIntermediateRefinementRegion;
}

// The adaptive template pixels of a generic region, and of a dictionary's symbols.
AdaptivePixels TakeAdaptivePixels(SegmentFields& fields, int template_number) {
  AdaptivePixels pixels;
  fields.TakePixels(std::span(pixels).first(template_number == 0 ? 4 : 1));
  return pixels;
}

// Those of a refinement; only template 0 has some.
RefinementAdaptivePixels TakeRefinementPixels(SegmentFields& fields, int template_number) {
  RefinementAdaptivePixels pixels;
  if (template_number == 0) {
    fields.TakePixels(pixels);
  }
  return pixels;
}

// 7.4.2.1.
SymbolDictionary TakeSymbolDictionary(std::uint32_t flags, SegmentFields& fields) {
  SymbolDictionary dictionary;
  dictionary.uses_refinement_and_aggregation = (flags & 2U) != 0;
  dictionary.template_number = static_cast<int>(flags >> 10U & 3U);
  dictionary.refinement_template = static_cast<int>(flags >> 12U & 1U);
  dictionary.adaptive = TakeAdaptivePixels(fields, dictionary.template_number);
  if (dictionary.uses_refinement_and_aggregation) {
    dictionary.refinement_adaptive = TakeRefinementPixels(fields, dictionary.refinement_template);
  }
  dictionary.exported_symbols = fields.Take(4);
  dictionary.new_symbols = fields.Take(4);
  return dictionary;
}

// 7.4.3.1.
TextRegion TakeTextRegion(const RegionInformation& information, std::uint32_t flags,
                          SegmentFields& fields) {
  TextRegion region;
  region.width = information.width;
  region.height = information.height;
  region.uses_refinement = (flags & 2U) != 0;
  region.strip_size = 1 << (flags >> 2U & 3U);
  region.reference_corner = static_cast<ReferenceCorner>(flags >> 4U & 3U);
  region.is_transposed = (flags & 0x40U) != 0;
  region.combination_operator = CombinationOperatorOf(flags >> 7U & 3U);
  region.default_pixel = static_cast<std::uint8_t>(flags >> 9U & 1U);
  const auto s_offset = static_cast<std::int32_t>(flags >> 10U & 31U);
  region.s_offset = s_offset >= 16 ? s_offset - 32 : s_offset;
  region.refinement_template = static_cast<int>(flags >> 15U & 1U);
  if (region.uses_refinement) {
    region.refinement_adaptive = TakeRefinementPixels(fields, region.refinement_template);
  }
  region.instances = fields.Take(4);
  return region;
}

// 7.4.5.1.
HalftoneRegion TakeHalftoneRegion(const RegionInformation& information, std::uint32_t flags,
                                  SegmentFields& fields) {
  HalftoneRegion region;
  region.width = information.width;
  region.height = information.height;
  region.template_number = static_cast<int>(flags >> 1U & 3U);
  region.enables_skip = (flags & 8U) != 0;
  region.combination_operator = CombinationOperatorOf(flags >> 4U & 7U);
  region.default_pixel = static_cast<std::uint8_t>(flags >> 7U & 1U);
  region.grid_width = fields.Take(4);
  region.grid_height = fields.Take(4);
  region.grid_x = fields.TakeSigned(4);
  region.grid_y = fields.TakeSigned(4);
  region.grid_vector_x = fields.Take(2);
  region.grid_vector_y = fields.Take(2);
  return region;
}

// A generic region coded as fax, group 4 (6.2.6).
Bitmap DecodeMmr(const RegionInformation& information, std::string_view data) {
  if (information.width == 0 || information.width > engines::limits::kMaxSide) {
    throw Failure();
  }
  Bitmap bitmap(information.width, information.height);
  CcittDecoder decoder(data, {.k = -1, .columns = information.width, .black_is_1 = true});
  std::vector<std::uint8_t> row(decoder.row_bytes());
  for (std::int64_t y = 0; y < bitmap.height() && decoder.ReadRow(row.data()); ++y) {
    for (std::int64_t x = 0; x < bitmap.width(); ++x) {
      bitmap.Set(x, y, row[static_cast<std::size_t>(x / 8)] >> (7 - x % 8) & 1);
    }
  }
  return bitmap;
}

}  // namespace

PageDecoder::PageDecoder(std::uint32_t width, std::uint32_t height)
    : budget_(limits::kLeastBudget + limits::kBudgetOfPixel * width * height),
      page_(width, height) {}

void PageDecoder::Decode(const Segment& segment) {
  SegmentFields fields(segment.data);
  switch (segment.type) {
    case SegmentType::kSymbolDictionary:
      return DecodeSymbolDictionarySegment(segment, fields);
    case SegmentType::kPatternDictionary:
      return DecodePatternDictionarySegment(segment, fields);
    case SegmentType::kIntermediateTextRegion:
    case SegmentType::kImmediateTextRegion:
    case SegmentType::kImmediateLosslessTextRegion:
      return DecodeRegion(segment, &PageDecoder::DecodeText);
    case SegmentType::kIntermediateHalftoneRegion:
    case SegmentType::kImmediateHalftoneRegion:
    case SegmentType::kImmediateLosslessHalftoneRegion:
      return DecodeRegion(segment, &PageDecoder::DecodeHalftone);
    case SegmentType::kIntermediateGenericRegion:
    case SegmentType::kImmediateGenericRegion:
    case SegmentType::kImmediateLosslessGenericRegion:
      return DecodeRegion(segment, &PageDecoder::DecodeGeneric);
    case SegmentType::kIntermediateRefinementRegion:
    case SegmentType::kImmediateRefinementRegion:
    case SegmentType::kImmediateLosslessRefinementRegion:
      return DecodeRegion(segment, &PageDecoder::DecodeRefinement);
    case SegmentType::kPageInformation:
      return DecodePageInformation(fields);
  }
}

std::string PageDecoder::Packed() const {
  const auto row_bytes = static_cast<std::size_t>((page_.width() + 7) / 8);
  std::string packed(row_bytes * static_cast<std::size_t>(page_.height()), '\xFF');
  for (std::int64_t y = 0; y < page_.height(); ++y) {
    char* const row = packed.data() + static_cast<std::size_t>(y) * row_bytes;
    for (std::int64_t x = 0; x < page_.width(); ++x) {
      if (page_.Get(x, y) != 0) {
        row[x / 8] = static_cast<char>(static_cast<unsigned char>(row[x / 8]) &
                                       ~(0x80U >> static_cast<unsigned>(x % 8)));
      }
    }
  }
  return packed;
}

// 7.4.8. Of the page's size, resolution and stripes nothing is needed.
void PageDecoder::DecodePageInformation(SegmentFields& fields) {
  constexpr std::size_t kBytesBeforeFlags = 16;
  fields.TakeBytes(kBytesBeforeFlags);
  const std::uint32_t flags = fields.Take(1);
  page_ =
      Bitmap(static_cast<std::uint32_t>(page_.width()), static_cast<std::uint32_t>(page_.height()),
             (flags & 4U) != 0 ? std::uint8_t{1} : std::uint8_t{0});
}

// 7.4.2.
void PageDecoder::DecodeSymbolDictionarySegment(const Segment& segment, SegmentFields& fields) {
  const std::uint32_t flags = fields.Take(2);
  RequireArithmetic(flags);
  const SymbolDictionary dictionary = TakeSymbolDictionary(flags, fields);
  const bool uses_retained = (flags & 0x100U) != 0;
  const bool retains = (flags & 0x200U) != 0;
  BitmapContexts contexts = ContextsFor(segment, uses_retained);
  symbols_[segment.number] =
      DecodeSymbolDictionary(dictionary, SymbolsFor(segment), fields.rest(), budget_, contexts);
  if (retains) {
    budget_.Spend(limits::kRetainingCost);
    retained_[segment.number] = std::move(contexts);
  }
}

// 7.4.4.
void PageDecoder::DecodePatternDictionarySegment(const Segment& segment, SegmentFields& fields) {
  const std::uint32_t flags = fields.Take(1);
  RequireArithmetic(flags);
  PatternDictionary dictionary;
  dictionary.template_number = static_cast<int>(flags >> 1U & 3U);
  dictionary.width = fields.Take(1);
  dictionary.height = fields.Take(1);
  dictionary.largest_value = fields.Take(4);
  symbols_[segment.number] = DecodePatternDictionary(dictionary, fields.rest(), budget_);
}

void PageDecoder::DecodeRegion(const Segment& segment, RegionDecoder decode) {
  SegmentFields fields(segment.data);
  const RegionInformation information = TakeRegionInformation(fields);
  budget_.Spend(std::uint64_t{information.width} * information.height);
  Bitmap bitmap = (this->*decode)(segment, information, fields);
  if (IsIntermediate(segment.type)) {
    intermediate_.insert_or_assign(segment.number, std::move(bitmap));
    return;
  }
  page_.Combine(bitmap, information.x, information.y, information.combination_operator);
  has_regions_ = true;
}

// 7.4.3.
Bitmap PageDecoder::DecodeText(const Segment& segment, const RegionInformation& information,
                               SegmentFields& fields) {
  const std::uint32_t flags = fields.Take(2);
  RequireArithmetic(flags);
  const TextRegion region = TakeTextRegion(information, flags, fields);
  const Symbols symbols = SymbolsFor(segment);
  budget_.Spend(limits::kReferringCost * symbols.size());
  ArithmeticDecoder decoder(fields.rest(), budget_);
  TextDecoders decoders(CodeLength(symbols.size()));
  Contexts refinement_contexts = RefinementContexts();
  return DecodeTextRegion(region, symbols, decoder, decoders, refinement_contexts);
}

// 7.4.5.
Bitmap PageDecoder::DecodeHalftone(const Segment& segment, const RegionInformation& information,
                                   SegmentFields& fields) {
  const std::uint32_t flags = fields.Take(1);
  RequireArithmetic(flags);
  const HalftoneRegion region = TakeHalftoneRegion(information, flags, fields);
  ArithmeticDecoder decoder(fields.rest(), budget_);
  return DecodeHalftoneRegion(region, SymbolsFor(segment), decoder);
}

// 7.4.6.
Bitmap PageDecoder::DecodeGeneric(const Segment& /*segment*/, const RegionInformation& information,
                                  SegmentFields& fields) {
  const std::uint32_t flags = fields.Take(1);
  if ((flags & 1U) != 0) {
    return DecodeMmr(information, fields.rest());
  }
  GenericRegion region;
  region.width = information.width;
  region.height = information.height;
  region.template_number = static_cast<int>(flags >> 1U & 3U);
  region.typical_prediction = (flags & 8U) != 0;
  region.adaptive = TakeAdaptivePixels(fields, region.template_number);
  ArithmeticDecoder decoder(fields.rest(), budget_);
  Contexts contexts = GenericContexts();
  return DecodeGenericRegion(region, decoder, contexts);
}

// 7.4.7. Without a segment that it refers to, a region refines what the page has there.
Bitmap PageDecoder::DecodeRefinement(const Segment& segment, const RegionInformation& information,
                                     SegmentFields& fields) {
  const std::uint32_t flags = fields.Take(1);
  RefinementRegion region;
  region.width = information.width;
  region.height = information.height;
  region.template_number = static_cast<int>(flags & 1U);
  region.typical_prediction = (flags & 2U) != 0;
  region.adaptive = TakeRefinementPixels(fields, region.template_number);
  const auto refined = segment.referred_to.empty() ? intermediate_.end()
                                                   : intermediate_.find(segment.referred_to.back());
  const Bitmap reference =
      refined != intermediate_.end()
          ? refined->second
          : page_.Part(information.x, information.y, information.width, information.height);
  region.reference = &reference;
  ArithmeticDecoder decoder(fields.rest(), budget_);
  Contexts contexts = RefinementContexts();
  return DecodeRefinementRegion(region, decoder, contexts);
}

Symbols PageDecoder::SymbolsFor(const Segment& segment) const {
  Symbols symbols;
  for (const std::uint32_t number : segment.referred_to) {
    if (const auto found = symbols_.find(number); found != symbols_.end()) {
      symbols.insert(symbols.end(), found->second.begin(), found->second.end());
    }
  }
  return symbols;
}

// Fresh contexts, or those that the last dictionary retained that the segment refers to.
BitmapContexts PageDecoder::ContextsFor(const Segment& segment, bool uses_retained) const {
  if (!uses_retained) {
    return {GenericContexts(), RefinementContexts()};
  }
  const auto last =
      segment.referred_to.empty() ? retained_.end() : retained_.find(segment.referred_to.back());
  if (last == retained_.end()) {
    throw Failure();
  }
  return last->second;
}

}  // namespace TarnixTools::engines::jbig2
