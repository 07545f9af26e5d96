// What is to be done to one font program, and what came of it.
#ifndef TARNIX_ENGINES_OPTIMIZER_FONTS_FONTJOB_H_
#define TARNIX_ENGINES_OPTIMIZER_FONTS_FONTJOB_H_

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "engines/optimizer/OptimizerReport.h"
#include "engines/support/fonts/DocumentFont.h"

namespace TarnixTools::engines::optimizer {

// A font program with all fonts that share it.
struct FontJob {
  struct Use {
    std::shared_ptr<const fonts::DocumentFont> font;
    std::vector<std::uint32_t> codes;  // that it shows
  };

  std::uint32_t program = 0;         // number of the stream
  std::vector<std::uint32_t> twins;  // of other streams with the same bytes
  fonts::ProgramEntry entry = fonts::ProgramEntry::kNone;
  std::uint64_t encoded_bytes = 0;
  bool drops_hints = false;
  std::vector<Use> uses;
};

// A program with the glyphs that are shown.
struct CutProgram {
  std::string data;              // deflated
  std::uint64_t byte_count = 0;  // before that
  // Of a Type 1 program: bytes before its encrypted part, and of that.
  std::uint64_t clear_bytes = 0;
  std::uint64_t encrypted_bytes = 0;
};

}  // namespace TarnixTools::engines::optimizer

#endif  // TARNIX_ENGINES_OPTIMIZER_FONTS_FONTJOB_H_
