// The contexts of the arithmetic coder, and how a context's estimate of the probability of its next
// decision changes (ISO/IEC 14492, annex E and table E.1).
#ifndef TARNIX_ENGINES_SUPPORT_CODECS_JBIG2_QETABLE_H_
#define TARNIX_ENGINES_SUPPORT_CODECS_JBIG2_QETABLE_H_

#include <array>
#include <cstdint>
#include <vector>

namespace TarnixTools::engines::jbig2 {

// What has been learnt about the decisions of one context, CX in the standard; all zero at first.
struct Context {
  std::uint8_t index = 0;  // of a row of kQeTable, I(CX)
  std::uint8_t mps = 0;    // the more probable symbol, MPS(CX): 0 or 1
};

using Contexts = std::vector<Context>;

// One row of the table.
struct QeRow {
  std::uint16_t qe;   // the probability of the less probable symbol
  std::uint8_t nmps;  // the row after the more probable symbol
  std::uint8_t nlps;  // the row after the less probable one
  bool switches;      // whether the two change places then
};

inline constexpr std::array<QeRow, 47> kQeTable = {
    {{0x5601, 1, 1, true},    {0x3401, 2, 6, false},   {0x1801, 3, 9, false},
     {0x0AC1, 4, 12, false},  {0x0521, 5, 29, false},  {0x0221, 38, 33, false},
     {0x5601, 7, 6, true},    {0x5401, 8, 14, false},  {0x4801, 9, 14, false},
     {0x3801, 10, 14, false}, {0x3001, 11, 17, false}, {0x2401, 12, 18, false},
     {0x1C01, 13, 20, false}, {0x1601, 29, 21, false}, {0x5601, 15, 14, true},
     {0x5401, 16, 14, false}, {0x5101, 17, 15, false}, {0x4801, 18, 16, false},
     {0x3801, 19, 17, false}, {0x3401, 20, 18, false}, {0x3001, 21, 19, false},
     {0x2801, 22, 19, false}, {0x2401, 23, 20, false}, {0x2201, 24, 21, false},
     {0x1C01, 25, 22, false}, {0x1801, 26, 23, false}, {0x1601, 27, 24, false},
     {0x1401, 28, 25, false}, {0x1201, 29, 26, false}, {0x1101, 30, 27, false},
     {0x0AC1, 31, 28, false}, {0x09C1, 32, 29, false}, {0x08A1, 33, 30, false},
     {0x0521, 34, 31, false}, {0x0441, 35, 32, false}, {0x02A1, 36, 33, false},
     {0x0221, 37, 34, false}, {0x0141, 38, 35, false}, {0x0111, 39, 36, false},
     {0x0085, 40, 37, false}, {0x0049, 41, 38, false}, {0x0025, 42, 39, false},
     {0x0015, 43, 40, false}, {0x0009, 44, 41, false}, {0x0005, 45, 42, false},
     {0x0001, 45, 43, false}, {0x5601, 46, 46, false}}};

}  // namespace TarnixTools::engines::jbig2

#endif  // TARNIX_ENGINES_SUPPORT_CODECS_JBIG2_QETABLE_H_
