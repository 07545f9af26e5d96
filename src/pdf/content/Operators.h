// Names of content stream operators (ISO 32000-2, annex A) as numbers, so that they can be switched
// on:
//
//   switch (operation.code) {
//     case OperatorCode("Tf"): ...
#ifndef TARNIX_PDF_CONTENT_OPERATORS_H_
#define TARNIX_PDF_CONTENT_OPERATORS_H_

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

// Whether the standard has such an operator. ID and EI do not count: they are parts of BI.
constexpr bool IsOperator(std::uint32_t code) {
  switch (code) {
    case OperatorCode("b"):
    case OperatorCode("B"):
    case OperatorCode("b*"):
    case OperatorCode("B*"):
    case OperatorCode("BDC"):
    case OperatorCode("BI"):
    case OperatorCode("BMC"):
    case OperatorCode("BT"):
    case OperatorCode("BX"):
    case OperatorCode("c"):
    case OperatorCode("cm"):
    case OperatorCode("CS"):
    case OperatorCode("cs"):
    case OperatorCode("d"):
    case OperatorCode("d0"):
    case OperatorCode("d1"):
    case OperatorCode("Do"):
    case OperatorCode("DP"):
    case OperatorCode("EMC"):
    case OperatorCode("ET"):
    case OperatorCode("EX"):
    case OperatorCode("f"):
    case OperatorCode("F"):
    case OperatorCode("f*"):
    case OperatorCode("G"):
    case OperatorCode("g"):
    case OperatorCode("gs"):
    case OperatorCode("h"):
    case OperatorCode("i"):
    case OperatorCode("j"):
    case OperatorCode("J"):
    case OperatorCode("K"):
    case OperatorCode("k"):
    case OperatorCode("l"):
    case OperatorCode("m"):
    case OperatorCode("M"):
    case OperatorCode("MP"):
    case OperatorCode("n"):
    case OperatorCode("q"):
    case OperatorCode("Q"):
    case OperatorCode("re"):
    case OperatorCode("RG"):
    case OperatorCode("rg"):
    case OperatorCode("ri"):
    case OperatorCode("s"):
    case OperatorCode("S"):
    case OperatorCode("SC"):
    case OperatorCode("sc"):
    case OperatorCode("SCN"):
    case OperatorCode("scn"):
    case OperatorCode("sh"):
    case OperatorCode("T*"):
    case OperatorCode("Tc"):
    case OperatorCode("Td"):
    case OperatorCode("TD"):
    case OperatorCode("Tf"):
    case OperatorCode("Tj"):
    case OperatorCode("TJ"):
    case OperatorCode("TL"):
    case OperatorCode("Tm"):
    case OperatorCode("Tr"):
    case OperatorCode("Ts"):
    case OperatorCode("Tw"):
    case OperatorCode("Tz"):
    case OperatorCode("v"):
    case OperatorCode("w"):
    case OperatorCode("W"):
    case OperatorCode("W*"):
    case OperatorCode("y"):
    case OperatorCode("'"):
    case OperatorCode("\""):
      return true;
    default:
      return false;
  }
}

}  // namespace TarnixTools::pdf

#endif  // TARNIX_PDF_CONTENT_OPERATORS_H_
