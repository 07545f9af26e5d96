#include "engines/support/codecs/Jbig2Decoder.h"

#include <algorithm>
#include <map>
#include <memory>
#include <span>
#include <utility>
#include <vector>

#include "engines/support/codecs/CcittDecoder.h"
#include "engines/support/codecs/jbig2/SymbolDictionary.h"

namespace TarnixTools::engines {
namespace {

using namespace jbig2;  // NOLINT(google-build-using-namespace): all of it is about that

enum SegmentType : unsigned {
  kSymbolDictionary = 0,
  kIntermediateText = 4,
  kText = 6,
  kLosslessText = 7,
  kPatternDictionary = 16,
  kIntermediateHalftone = 20,
  kHalftone = 22,
  kLosslessHalftone = 23,
  kIntermediateGeneric = 36,
  kGeneric = 38,
  kLosslessGeneric = 39,
  kIntermediateRefinement = 40,
  kRefinement = 42,
  kLosslessRefinement = 43,
  kPageInformation = 48,
};

constexpr std::size_t kMaxSegments = 100'000;
// What decoding may cost, in pixels: some for any picture, and some for each pixel of it.
constexpr std::uint64_t kLeastBudget = std::uint64_t{8} << 20U;
constexpr std::uint64_t kBudgetOfPixel = 8;
constexpr std::uint64_t kLearntCost = std::uint64_t{1} << 20U;  // pixels

// Big-endian numbers. Throws Failure behind the end.
class Fields {
 public:
  explicit Fields(std::string_view data) : data_(data) {}

  std::uint32_t Take(unsigned bytes) {
    if (data_.size() < bytes) {
      throw Failure();
    }
    std::uint32_t value = 0;
    for (unsigned i = 0; i < bytes; ++i) {
      value = value << 8U | static_cast<unsigned char>(data_[i]);
    }
    data_.remove_prefix(bytes);
    return value;
  }

  std::int32_t TakeSigned(unsigned bytes) {
    const std::uint32_t value = Take(bytes);
    return bytes == 1 ? static_cast<std::int8_t>(value) : static_cast<std::int32_t>(value);
  }

  void TakeOffsets(std::span<Offset> offsets) {
    for (Offset& offset : offsets) {
      offset.x = TakeSigned(1);
      offset.y = TakeSigned(1);
    }
  }

  std::string_view TakeBytes(std::size_t count) {
    const std::string_view bytes = data_.substr(0, count);
    data_.remove_prefix(bytes.size());
    return bytes;
  }

  std::string_view rest() const { return data_; }

 private:
  std::string_view data_;
};

struct Segment {
  std::uint32_t number = 0;
  unsigned type = 0;
  std::vector<std::uint32_t> referred;
  std::string_view data;
};

// 7.2. The data of the last one may be cut.
std::optional<Segment> TakeSegment(Fields& fields) {
  if (fields.rest().size() < 11) {
    return std::nullopt;
  }
  Segment segment;
  segment.number = fields.Take(4);
  const std::uint32_t flags = fields.Take(1);
  segment.type = flags & 0x3FU;
  const std::uint32_t short_count = fields.Take(1);
  std::uint32_t count = short_count >> 5U;
  if (count == 7) {
    count = (short_count & 0x1FU) << 24U | fields.Take(3);
    fields.TakeBytes(std::size_t{count} / 8 + 1);
  }
  if (count > fields.rest().size()) {
    throw Failure();
  }
  const unsigned size = segment.number <= 256 ? 1 : segment.number <= 65536 ? 2 : 4;
  for (; count > 0; --count) {
    segment.referred.push_back(fields.Take(size));
  }
  fields.Take((flags & 0x40U) != 0 ? 4 : 1);  // the page
  const std::uint32_t length = fields.Take(4);
  segment.data = fields.TakeBytes(length);
  return segment;
}

std::vector<Segment> SegmentsOf(std::string_view data) {
  std::vector<Segment> segments;
  Fields fields(data);
  while (std::optional<Segment> segment = TakeSegment(fields)) {
    segments.push_back(*std::move(segment));
    if (segments.size() > kMaxSegments) {
      throw Failure();
    }
  }
  return segments;
}

struct RegionInfo {
  std::uint32_t width = 0;
  std::uint32_t height = 0;
  std::int64_t left = 0;
  std::int64_t top = 0;
  Combination combination = Combination::kOr;
};

Combination CombinationOf(std::uint32_t value) {
  return static_cast<Combination>(std::min<std::uint32_t>(value, 4));
}

// 7.4.1.
RegionInfo TakeRegionInfo(Fields& fields) {
  RegionInfo info;
  info.width = fields.Take(4);
  info.height = fields.Take(4);
  info.left = fields.TakeSigned(4);
  info.top = fields.TakeSigned(4);
  info.combination = CombinationOf(fields.Take(1) & 7U);
  return info;
}

class PageDecoder {
 public:
  PageDecoder(std::uint32_t width, std::uint32_t height)
      : budget_(kLeastBudget + kBudgetOfPixel * width * height), page_(width, height) {}

  // Throws Failure.
  void Decode(const Segment& segment) {
    Fields fields(segment.data);
    switch (segment.type) {
      case kSymbolDictionary:
        return TakeSymbols(segment, fields);
      case kPatternDictionary:
        return TakePatterns(segment, fields);
      case kIntermediateText:
      case kText:
      case kLosslessText:
        return Place(segment, TakeRegionInfo(fields), fields, &PageDecoder::TakeText);
      case kIntermediateHalftone:
      case kHalftone:
      case kLosslessHalftone:
        return Place(segment, TakeRegionInfo(fields), fields, &PageDecoder::TakeHalftone);
      case kIntermediateGeneric:
      case kGeneric:
      case kLosslessGeneric:
        return Place(segment, TakeRegionInfo(fields), fields, &PageDecoder::TakeGeneric);
      case kIntermediateRefinement:
      case kRefinement:
      case kLosslessRefinement:
        return Place(segment, TakeRegionInfo(fields), fields, &PageDecoder::TakeRefinement);
      case kPageInformation:
        return TakePage(fields);
      default:
        return;  // ends of stripes, pages and files, and what tells nothing of the picture
    }
  }

  bool has_regions() const { return has_regions_; }

  // As a PDF document has it: black is 0.
  std::string Packed() const {
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

 private:
  using Taker = Bitmap (PageDecoder::*)(const Segment&, const RegionInfo&, Fields&);

  void Place(const Segment& segment, const RegionInfo& info, Fields& fields, Taker taker) {
    budget_.Spend(std::uint64_t{info.width} * info.height);
    Bitmap bitmap = (this->*taker)(segment, info, fields);
    if (segment.type == kIntermediateText || segment.type == kIntermediateHalftone ||
        segment.type == kIntermediateGeneric || segment.type == kIntermediateRefinement) {
      intermediate_.insert_or_assign(segment.number, std::move(bitmap));
      return;
    }
    page_.Combine(bitmap, info.left, info.top, info.combination);
    has_regions_ = true;
  }

  // 7.4.8. The picture's own size counts.
  void TakePage(Fields& fields) {
    fields.Take(4);
    fields.Take(4);
    fields.Take(4);
    fields.Take(4);
    const std::uint32_t flags = fields.Take(1);
    page_ = Bitmap(static_cast<std::uint32_t>(page_.width()),
                   static_cast<std::uint32_t>(page_.height()),
                   (flags & 4U) != 0 ? std::uint8_t{1} : std::uint8_t{0});
  }

  Symbols SymbolsFor(const Segment& segment) const {
    Symbols symbols;
    for (const std::uint32_t number : segment.referred) {
      if (const auto found = symbols_.find(number); found != symbols_.end()) {
        symbols.insert(symbols.end(), found->second.begin(), found->second.end());
      }
    }
    return symbols;
  }

  // 7.4.2.
  void TakeSymbols(const Segment& segment, Fields& fields) {
    const std::uint32_t flags = fields.Take(2);
    if ((flags & 1U) != 0) {
      throw Failure();  // Huffman codes
    }
    SymbolDictionary dictionary;
    dictionary.refines = (flags & 2U) != 0;
    dictionary.pattern = static_cast<int>(flags >> 10U & 3U);
    dictionary.refinement_pattern = static_cast<int>(flags >> 12U & 1U);
    fields.TakeOffsets(std::span(dictionary.adaptive).first(dictionary.pattern == 0 ? 4 : 1));
    if (dictionary.refines && dictionary.refinement_pattern == 0) {
      fields.TakeOffsets(dictionary.refinement_adaptive);
    }
    dictionary.exported = fields.Take(4);
    dictionary.added = fields.Take(4);
    LearntContexts learnt = {GenericContexts(), RefinementContexts()};
    if ((flags & 0x100U) != 0) {
      const auto last =
          segment.referred.empty() ? learnt_.end() : learnt_.find(segment.referred.back());
      if (last == learnt_.end()) {
        throw Failure();
      }
      learnt = last->second;
    }
    symbols_[segment.number] =
        DecodeSymbols(dictionary, SymbolsFor(segment), fields.rest(), budget_, learnt);
    if ((flags & 0x200U) != 0) {
      budget_.Spend(kLearntCost);
      learnt_[segment.number] = std::move(learnt);
    }
  }

  // 7.4.4.
  void TakePatterns(const Segment& segment, Fields& fields) {
    const std::uint32_t flags = fields.Take(1);
    if ((flags & 1U) != 0) {
      throw Failure();  // fax codes
    }
    PatternDictionary dictionary;
    dictionary.pattern = static_cast<int>(flags >> 1U & 3U);
    dictionary.width = fields.Take(1);
    dictionary.height = fields.Take(1);
    dictionary.last = fields.Take(4);
    symbols_[segment.number] = DecodePatterns(dictionary, fields.rest(), budget_);
  }

  // 7.4.3.
  Bitmap TakeText(const Segment& segment, const RegionInfo& info, Fields& fields) {
    const std::uint32_t flags = fields.Take(2);
    if ((flags & 1U) != 0) {
      throw Failure();  // Huffman codes
    }
    TextRegion region;
    region.width = info.width;
    region.height = info.height;
    region.refines = (flags & 2U) != 0;
    region.strip_size = 1 << (flags >> 2U & 3U);
    region.corner = static_cast<Corner>(flags >> 4U & 3U);
    region.is_transposed = (flags & 0x40U) != 0;
    region.combination = CombinationOf(flags >> 7U & 3U);
    region.default_pixel = static_cast<std::uint8_t>(flags >> 9U & 1U);
    const auto offset = static_cast<std::int32_t>(flags >> 10U & 31U);
    region.offset = offset >= 16 ? offset - 32 : offset;
    region.refinement_pattern = static_cast<int>(flags >> 15U & 1U);
    if (region.refines && region.refinement_pattern == 0) {
      fields.TakeOffsets(region.refinement_adaptive);
    }
    region.instances = fields.Take(4);
    const Symbols symbols = SymbolsFor(segment);
    budget_.Spend(64 * symbols.size());
    ArithmeticDecoder decoder(fields.rest(), budget_);
    TextContexts contexts(BitsFor(symbols.size()));
    Contexts refinement = RefinementContexts();
    return DecodeText(region, symbols, decoder, contexts, refinement);
  }

  // 7.4.5.
  Bitmap TakeHalftone(const Segment& segment, const RegionInfo& info, Fields& fields) {
    const std::uint32_t flags = fields.Take(1);
    if ((flags & 1U) != 0) {
      throw Failure();  // fax codes
    }
    HalftoneRegion region;
    region.width = info.width;
    region.height = info.height;
    region.pattern = static_cast<int>(flags >> 1U & 3U);
    region.skips = (flags & 8U) != 0;
    region.combination = CombinationOf(flags >> 4U & 7U);
    region.default_pixel = static_cast<std::uint8_t>(flags >> 7U & 1U);
    region.grid_width = fields.Take(4);
    region.grid_height = fields.Take(4);
    region.grid_x = fields.TakeSigned(4);
    region.grid_y = fields.TakeSigned(4);
    region.step_x = fields.Take(2);
    region.step_y = fields.Take(2);
    ArithmeticDecoder decoder(fields.rest(), budget_);
    return DecodeHalftone(region, SymbolsFor(segment), decoder);
  }

  // 7.4.6.
  Bitmap TakeGeneric(const Segment& /*segment*/, const RegionInfo& info, Fields& fields) {
    const std::uint32_t flags = fields.Take(1);
    if ((flags & 1U) != 0) {
      return TakeFax(info, fields.rest());
    }
    GenericRegion region;
    region.width = info.width;
    region.height = info.height;
    region.pattern = static_cast<int>(flags >> 1U & 3U);
    region.predicts_rows = (flags & 8U) != 0;
    fields.TakeOffsets(std::span(region.adaptive).first(region.pattern == 0 ? 4 : 1));
    ArithmeticDecoder decoder(fields.rest(), budget_);
    Contexts contexts = GenericContexts();
    return DecodeGeneric(region, decoder, contexts);
  }

  static Bitmap TakeFax(const RegionInfo& info, std::string_view data) {
    constexpr std::uint32_t kMaxColumns = 1'000'000;
    if (info.width == 0 || info.width > kMaxColumns) {
      throw Failure();
    }
    Bitmap bitmap(info.width, info.height);
    CcittDecoder decoder(data, {.k = -1, .columns = info.width, .black_is_1 = true});
    std::vector<std::uint8_t> row(decoder.row_bytes());
    for (std::int64_t y = 0; y < bitmap.height() && decoder.ReadRow(row.data()); ++y) {
      for (std::int64_t x = 0; x < bitmap.width(); ++x) {
        bitmap.Set(x, y, row[static_cast<std::size_t>(x / 8)] >> (7 - x % 8) & 1);
      }
    }
    return bitmap;
  }

  // 7.4.7.
  Bitmap TakeRefinement(const Segment& segment, const RegionInfo& info, Fields& fields) {
    const std::uint32_t flags = fields.Take(1);
    RefinementRegion region;
    region.width = info.width;
    region.height = info.height;
    region.pattern = static_cast<int>(flags & 1U);
    region.predicts_pixels = (flags & 2U) != 0;
    if (region.pattern == 0) {
      fields.TakeOffsets(region.adaptive);
    }
    const auto refined = segment.referred.empty() ? intermediate_.end()
                                                  : intermediate_.find(segment.referred.back());
    const Bitmap reference = refined != intermediate_.end()
                                 ? refined->second
                                 : page_.Part(info.left, info.top, info.width, info.height);
    region.reference = &reference;
    ArithmeticDecoder decoder(fields.rest(), budget_);
    Contexts contexts = RefinementContexts();
    return DecodeRefinement(region, decoder, contexts);
  }

  Budget budget_;
  Bitmap page_;
  bool has_regions_ = false;
  std::map<std::uint32_t, Symbols> symbols_;  // patterns too
  std::map<std::uint32_t, LearntContexts> learnt_;
  std::map<std::uint32_t, Bitmap> intermediate_;
};

bool IsOdd(const Segment& segment) {
  switch (segment.type) {
    case kSymbolDictionary:
    case kText:
    case kLosslessText:
    case kIntermediateText: {
      const std::size_t at = segment.type == kSymbolDictionary ? 1 : 18;
      return segment.data.size() > at && (static_cast<unsigned char>(segment.data[at]) & 2U) != 0;
    }
    case kHalftone:
    case kLosslessHalftone:
    case kIntermediateRefinement:
    case kRefinement:
    case kLosslessRefinement:
      return true;
    default:
      return false;
  }
}

}  // namespace

bool NeedsOwnJbig2(std::string_view globals, std::string_view data) {
  try {
    const std::vector<Segment> first = SegmentsOf(globals);
    const std::vector<Segment> second = SegmentsOf(data);
    return std::any_of(first.begin(), first.end(), IsOdd) ||
           std::any_of(second.begin(), second.end(), IsOdd);
  } catch (const Failure&) {
    return false;
  }
}

std::optional<std::string> DecodeJbig2(std::string_view globals, std::string_view data,
                                       std::uint32_t width, std::uint32_t height) {
  try {
    PageDecoder page(width, height);
    try {
      for (const std::string_view part : {globals, data}) {
        for (const Segment& segment : SegmentsOf(part)) {
          page.Decode(segment);
        }
      }
    } catch (const Failure&) {
      if (!page.has_regions()) {
        return std::nullopt;
      }
    }
    return page.Packed();
  } catch (const Failure&) {
    return std::nullopt;
  }
}

}  // namespace TarnixTools::engines
