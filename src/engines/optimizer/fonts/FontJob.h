// What is to be done to one font program, and what came of it.
#ifndef TARNIX_ENGINES_OPTIMIZER_FONTS_FONTJOB_H_
#define TARNIX_ENGINES_OPTIMIZER_FONTS_FONTJOB_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "engines/support/fonts/DocumentFont.h"

namespace TarnixTools::engines::optimizer {

// Why a font program stays as it was.
enum class FontLeftAlone : std::uint8_t {
  kSmallest,    // what it could become is not smaller
  kAnyCode,     // any of its glyphs may be shown: a form's font, or codes that are not surely known
  kUnreadable,  // it cannot be read
  kUnsure,      // it would not surely look and work as before
  kConformance,  // the document's standard wants lists of its glyphs
  kNoLibrary,    // there is no library that reads or cuts fonts
};

inline constexpr std::size_t kFontLeftAloneCount = 6;

struct FontReport {
  std::size_t programs = 0;
  std::size_t merged = 0;          // into another that is the same
  std::size_t dropped = 0;         // of standard fonts
  std::uint64_t bytes_before = 0;  // of their encoded data
  std::uint64_t bytes_after = 0;
  std::array<std::size_t, kFontLeftAloneCount> left_alone{};
};

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
