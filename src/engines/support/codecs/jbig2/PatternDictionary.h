// Pattern dictionaries of JBIG2 (ISO/IEC 14492, 6.7), which halftone regions paint with, as far as
// they are coded arithmetically.
#ifndef TARNIX_ENGINES_SUPPORT_CODECS_JBIG2_PATTERNDICTIONARY_H_
#define TARNIX_ENGINES_SUPPORT_CODECS_JBIG2_PATTERNDICTIONARY_H_

#include <cstdint>
#include <string_view>

#include "engines/support/codecs/jbig2/Regions.h"

namespace TarnixTools::engines::jbig2 {

// The parameters of the pattern dictionary decoding procedure.
struct PatternDictionary {
  int template_number = 0;          // HDTEMPLATE
  std::uint32_t width = 0;          // HDPW, of each pattern
  std::uint32_t height = 0;         // HDPH
  std::uint32_t largest_value = 0;  // GRAYMAX: there is a pattern for each value from 0 to this
};

// The patterns by gray value. Throws Failure.
Symbols DecodePatternDictionary(const PatternDictionary& dictionary, std::string_view data,
                                Budget& budget);

}  // namespace TarnixTools::engines::jbig2

#endif  // TARNIX_ENGINES_SUPPORT_CODECS_JBIG2_PATTERNDICTIONARY_H_
