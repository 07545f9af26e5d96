// Decodes the segments of a JBIG2 page, one after the other (ISO/IEC 14492, 7.4 and 8.2).
//
//   PageDecoder page(width, height);
//   for (const Segment& segment : SegmentsOf(data)) {
//     page.Decode(segment);
//   }
//   Use(page.Packed());
//
// A page that comes in stripes needs nothing more: its picture's size is known to the PDF document.
#ifndef TARNIX_ENGINES_SUPPORT_CODECS_JBIG2_PAGEDECODER_H_
#define TARNIX_ENGINES_SUPPORT_CODECS_JBIG2_PAGEDECODER_H_

#include <cstdint>
#include <map>
#include <string>

#include "engines/support/codecs/jbig2/Segments.h"
#include "engines/support/codecs/jbig2/SymbolDictionary.h"

namespace TarnixTools::engines::jbig2 {

class PageDecoder {
 public:
  // Throws Failure for more pixels than are allowed.
  PageDecoder(std::uint32_t width, std::uint32_t height);

  // What is told by segments of other types is passed over. Throws Failure for data that makes no
  // sense, that is coded by Huffman codes or that would take too much; what was decoded before stays.
  void Decode(const Segment& segment);

  // Whether a region has been put onto the page.
  bool has_regions() const { return has_regions_; }

  // The page as a PDF document has it: rows padded to whole bytes, a bit for each pixel, 0 for black.
  std::string Packed() const;

 private:
  using RegionDecoder = Bitmap (PageDecoder::*)(const Segment&, const RegionInformation&,
                                                SegmentFields&);

  void DecodePageInformation(SegmentFields& fields);
  void DecodeSymbolDictionarySegment(const Segment& segment, SegmentFields& fields);
  void DecodePatternDictionarySegment(const Segment& segment, SegmentFields& fields);

  // Decodes a region and puts it onto the page, or keeps it for the segments that refer to it.
  void DecodeRegion(const Segment& segment, RegionDecoder decode);
  Bitmap DecodeText(const Segment& segment, const RegionInformation& information,
                    SegmentFields& fields);
  Bitmap DecodeHalftone(const Segment& segment, const RegionInformation& information,
                        SegmentFields& fields);
  Bitmap DecodeGeneric(const Segment& segment, const RegionInformation& information,
                       SegmentFields& fields);
  Bitmap DecodeRefinement(const Segment& segment, const RegionInformation& information,
                          SegmentFields& fields);

  // What the segments export that this one refers to.
  Symbols SymbolsFor(const Segment& segment) const;
  BitmapContexts ContextsFor(const Segment& segment, bool uses_retained) const;

  Budget budget_;
  Bitmap page_;
  bool has_regions_ = false;
  std::map<std::uint32_t, Symbols> symbols_;  // patterns too, by the number of their segment
  std::map<std::uint32_t, BitmapContexts> retained_;
  std::map<std::uint32_t, Bitmap> intermediate_;
};

}  // namespace TarnixTools::engines::jbig2

#endif  // TARNIX_ENGINES_SUPPORT_CODECS_JBIG2_PAGEDECODER_H_
