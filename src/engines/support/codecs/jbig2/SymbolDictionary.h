// Dictionaries of symbols and of halftone patterns (ITU-T T.88, 6.5 and 6.7).
#ifndef TARNIX_ENGINES_SUPPORT_CODECS_JBIG2_SYMBOLDICTIONARY_H_
#define TARNIX_ENGINES_SUPPORT_CODECS_JBIG2_SYMBOLDICTIONARY_H_

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

#include "engines/support/codecs/jbig2/Regions.h"

namespace TarnixTools::engines::jbig2 {

// What may go on in the next dictionary.
struct LearntContexts {
  Contexts generic;
  Contexts refinement;
};

struct SymbolDictionary {
  int pattern = 0;
  std::array<Offset, 4> adaptive;
  bool refines = false;  // symbols are made of others
  int refinement_pattern = 0;
  std::array<Offset, 2> refinement_adaptive;
  std::uint32_t exported = 0;
  std::uint32_t added = 0;
};

// The symbols that it exports.
//   symbols - of the dictionaries that it refers to
//   learnt  - what to begin with; gets what has been learnt
Symbols DecodeSymbols(const SymbolDictionary& dictionary, const Symbols& symbols,
                      std::string_view data, Budget& budget, LearntContexts& learnt);

struct PatternDictionary {
  int pattern = 0;
  std::uint32_t width = 0;
  std::uint32_t height = 0;
  std::uint32_t last = 0;  // number of the last one
};

Symbols DecodePatterns(const PatternDictionary& dictionary, std::string_view data, Budget& budget);

}  // namespace TarnixTools::engines::jbig2

#endif  // TARNIX_ENGINES_SUPPORT_CODECS_JBIG2_SYMBOLDICTIONARY_H_
