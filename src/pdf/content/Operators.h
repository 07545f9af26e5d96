// Names of content stream operators (ISO 32000-2, annex A) as numbers, so that they can be switched
// on:
//
//   switch (operation.code) {
//     case OperatorCode("Tf"): ...
#ifndef TARNIX_PDF_CONTENT_OPERATORS_H_
#define TARNIX_PDF_CONTENT_OPERATORS_H_

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace TarnixTools::pdf {

// Different for any two names of at most three bytes; 0 for none and for longer ones.
constexpr std::uint32_t OperatorCode(std::string_view name) {
  if (name.size() > 3) {
    return 0;
  }
  std::uint32_t code = 0;
  for (const char c : name) {
    code = code << 8 | static_cast<unsigned char>(c);
  }
  return code;
}

// Operators by what they are about (ISO 32000-2, annex A).
enum class OperatorGroup : std::uint8_t {
  kNone,   // not in the standard, or a part of another one, as ID and EI are of BI
  kSpace,  // what the graphics state is kept in, and the matrix: q Q cm
  kState,  // other parameters of it
  kColor,
  kPath,  // construction of paths
  kPaint,
  kClip,      // of paths
  kText,      // text objects, state and position
  kTextMode,  // Tr
  kShowText,
  kMark,    // marked content
  kObject,  // Do
  kInlineImage,
  kShading,
  kGlyph,          // d0 d1
  kCompatibility,  // BX EX
};
inline constexpr std::size_t kOperatorGroups = 16;

constexpr OperatorGroup GroupOf(std::uint32_t code) {
  switch (code) {
    case OperatorCode("q"):
    case OperatorCode("Q"):
    case OperatorCode("cm"):
      return OperatorGroup::kSpace;
    case OperatorCode("w"):
    case OperatorCode("J"):
    case OperatorCode("j"):
    case OperatorCode("M"):
    case OperatorCode("d"):
    case OperatorCode("ri"):
    case OperatorCode("i"):
    case OperatorCode("gs"):
      return OperatorGroup::kState;
    case OperatorCode("CS"):
    case OperatorCode("cs"):
    case OperatorCode("SC"):
    case OperatorCode("sc"):
    case OperatorCode("SCN"):
    case OperatorCode("scn"):
    case OperatorCode("G"):
    case OperatorCode("g"):
    case OperatorCode("RG"):
    case OperatorCode("rg"):
    case OperatorCode("K"):
    case OperatorCode("k"):
      return OperatorGroup::kColor;
    case OperatorCode("m"):
    case OperatorCode("l"):
    case OperatorCode("c"):
    case OperatorCode("v"):
    case OperatorCode("y"):
    case OperatorCode("h"):
    case OperatorCode("re"):
      return OperatorGroup::kPath;
    case OperatorCode("S"):
    case OperatorCode("s"):
    case OperatorCode("f"):
    case OperatorCode("F"):
    case OperatorCode("f*"):
    case OperatorCode("B"):
    case OperatorCode("B*"):
    case OperatorCode("b"):
    case OperatorCode("b*"):
    case OperatorCode("n"):
      return OperatorGroup::kPaint;
    case OperatorCode("W"):
    case OperatorCode("W*"):
      return OperatorGroup::kClip;
    case OperatorCode("BT"):
    case OperatorCode("ET"):
    case OperatorCode("Tc"):
    case OperatorCode("Tw"):
    case OperatorCode("Tz"):
    case OperatorCode("TL"):
    case OperatorCode("Tf"):
    case OperatorCode("Ts"):
    case OperatorCode("Td"):
    case OperatorCode("TD"):
    case OperatorCode("Tm"):
    case OperatorCode("T*"):
      return OperatorGroup::kText;
    case OperatorCode("Tr"):
      return OperatorGroup::kTextMode;
    case OperatorCode("Tj"):
    case OperatorCode("TJ"):
    case OperatorCode("'"):
    case OperatorCode("\""):
      return OperatorGroup::kShowText;
    case OperatorCode("BMC"):
    case OperatorCode("BDC"):
    case OperatorCode("EMC"):
    case OperatorCode("MP"):
    case OperatorCode("DP"):
      return OperatorGroup::kMark;
    case OperatorCode("Do"):
      return OperatorGroup::kObject;
    case OperatorCode("BI"):
      return OperatorGroup::kInlineImage;
    case OperatorCode("sh"):
      return OperatorGroup::kShading;
    case OperatorCode("d0"):
    case OperatorCode("d1"):
      return OperatorGroup::kGlyph;
    case OperatorCode("BX"):
    case OperatorCode("EX"):
      return OperatorGroup::kCompatibility;
    default:
      return OperatorGroup::kNone;
  }
}

// Whether the standard has such an operator.
constexpr bool IsOperator(std::uint32_t code) {
  return GroupOf(code) != OperatorGroup::kNone;
}

// How many operands an operator has (ISO 32000-2, annex A), and the fewest of those that take a
// number of them; -1 for what is no operator.
constexpr int OperandsOf(std::uint32_t code) {
  switch (code) {
    case OperatorCode("q"):
    case OperatorCode("Q"):
    case OperatorCode("h"):
    case OperatorCode("S"):
    case OperatorCode("s"):
    case OperatorCode("f"):
    case OperatorCode("F"):
    case OperatorCode("f*"):
    case OperatorCode("B"):
    case OperatorCode("B*"):
    case OperatorCode("b"):
    case OperatorCode("b*"):
    case OperatorCode("n"):
    case OperatorCode("W"):
    case OperatorCode("W*"):
    case OperatorCode("BT"):
    case OperatorCode("ET"):
    case OperatorCode("T*"):
    case OperatorCode("EMC"):
    case OperatorCode("BI"):
    case OperatorCode("BX"):
    case OperatorCode("EX"):
      return 0;
    case OperatorCode("w"):
    case OperatorCode("J"):
    case OperatorCode("j"):
    case OperatorCode("M"):
    case OperatorCode("ri"):
    case OperatorCode("i"):
    case OperatorCode("gs"):
    case OperatorCode("CS"):
    case OperatorCode("cs"):
    case OperatorCode("SC"):
    case OperatorCode("sc"):
    case OperatorCode("SCN"):
    case OperatorCode("scn"):
    case OperatorCode("G"):
    case OperatorCode("g"):
    case OperatorCode("Tc"):
    case OperatorCode("Tw"):
    case OperatorCode("Tz"):
    case OperatorCode("TL"):
    case OperatorCode("Tr"):
    case OperatorCode("Ts"):
    case OperatorCode("Tj"):
    case OperatorCode("TJ"):
    case OperatorCode("'"):
    case OperatorCode("BMC"):
    case OperatorCode("MP"):
    case OperatorCode("Do"):
    case OperatorCode("sh"):
      return 1;
    case OperatorCode("d"):
    case OperatorCode("m"):
    case OperatorCode("l"):
    case OperatorCode("Tf"):
    case OperatorCode("Td"):
    case OperatorCode("TD"):
    case OperatorCode("BDC"):
    case OperatorCode("DP"):
    case OperatorCode("d0"):
      return 2;
    case OperatorCode("RG"):
    case OperatorCode("rg"):
    case OperatorCode("\""):
      return 3;
    case OperatorCode("K"):
    case OperatorCode("k"):
    case OperatorCode("v"):
    case OperatorCode("y"):
    case OperatorCode("re"):
      return 4;
    case OperatorCode("c"):
    case OperatorCode("cm"):
    case OperatorCode("Tm"):
    case OperatorCode("d1"):
      return 6;
    default:
      return -1;
  }
}

}  // namespace TarnixTools::pdf

#endif  // TARNIX_PDF_CONTENT_OPERATORS_H_
