// The encryption of Type 1 font programs and the code of their glyphs (Adobe Type 1 Font Format, 6
// and 7).
#ifndef TARNIX_ENGINES_OPTIMIZER_FONTS_TYPE1CODE_H_
#define TARNIX_ENGINES_OPTIMIZER_FONTS_TYPE1CODE_H_

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace TarnixTools::engines::optimizer {

inline constexpr std::uint16_t kType1ProgramKey = 55665;
inline constexpr std::uint16_t kType1CodeKey = 4330;

// All bytes, those at the start included that are there for the encryption only.
std::string DecryptType1(std::string_view cipher, std::uint16_t key);
std::string EncryptType1(std::string_view plain, std::uint16_t key);

// What the code of a glyph or of a subroutine uses.
struct Type1Calls {
  // Numbers of subroutines, and others that may be: those that are handed to a routine of the
  // interpreter come back from there.
  std::vector<std::int64_t> subroutines;
  // Codes in StandardEncoding of the glyphs that this one is put together of.
  std::vector<std::uint8_t> parts;
};

// code: decrypted.
Type1Calls ReadType1Calls(std::string_view code);

}  // namespace TarnixTools::engines::optimizer

#endif  // TARNIX_ENGINES_OPTIMIZER_FONTS_TYPE1CODE_H_
