// Symbol dictionaries of JBIG2 (ISO/IEC 14492, 6.5), as far as they are coded arithmetically.
#ifndef TARNIX_ENGINES_SUPPORT_CODECS_JBIG2_SYMBOLDICTIONARY_H_
#define TARNIX_ENGINES_SUPPORT_CODECS_JBIG2_SYMBOLDICTIONARY_H_

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

#include "engines/support/codecs/jbig2/Regions.h"

namespace TarnixTools::engines::jbig2 {

// The contexts that a dictionary may retain for one that goes on with them (7.4.2.2).
struct BitmapContexts {
  Contexts generic;
  Contexts refinement;
};

// The parameters of the symbol dictionary decoding procedure.
struct SymbolDictionary {
  int template_number = 0;                       // SDTEMPLATE
  AdaptivePixels adaptive;                       // SDAT
  bool uses_refinement_and_aggregation = false;  // SDREFAGG: symbols are made of others
  int refinement_template = 0;                   // SDRTEMPLATE
  RefinementAdaptivePixels refinement_adaptive;  // SDRAT
  std::uint32_t exported_symbols = 0;            // SDNUMEXSYMS
  std::uint32_t new_symbols = 0;                 // SDNUMNEWSYMS
};

// The symbols that the dictionary exports. Throws Failure.
//   input_symbols - SDINSYMS: those that the dictionaries export that it refers to
//   contexts      - what to begin with; gets what has been learnt
Symbols DecodeSymbolDictionary(const SymbolDictionary& dictionary, const Symbols& input_symbols,
                               std::string_view data, Budget& budget, BitmapContexts& contexts);

}  // namespace TarnixTools::engines::jbig2

#endif  // TARNIX_ENGINES_SUPPORT_CODECS_JBIG2_SYMBOLDICTIONARY_H_
