// Names of content stream operators (ISO 32000-2, annex A) as numbers, so that they can be switched
// on:
//
//   switch (operation.code) {
//     case OperatorCode("Tf"): ...
#ifndef TARNIX_PDF_CONTENT_OPERATORS_H_
#define TARNIX_PDF_CONTENT_OPERATORS_H_

#include <array>
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

// What is known of an operator.
struct OperatorFacts {
  std::uint32_t code = 0;
  OperatorGroup group = OperatorGroup::kNone;
  // How many operands it has (annex A), the fewest of those that take a number of them; -1 for what
  // is no operator.
  int operands = -1;
};

struct OperatorRow {
  std::string_view name;
  OperatorGroup group;
  int operands;
};

inline constexpr std::array<OperatorRow, 71> kOperators = {{
    {"q", OperatorGroup::kSpace, 0},          {"Q", OperatorGroup::kSpace, 0},
    {"cm", OperatorGroup::kSpace, 6},         {"w", OperatorGroup::kState, 1},
    {"J", OperatorGroup::kState, 1},          {"j", OperatorGroup::kState, 1},
    {"M", OperatorGroup::kState, 1},          {"d", OperatorGroup::kState, 2},
    {"ri", OperatorGroup::kState, 1},         {"i", OperatorGroup::kState, 1},
    {"gs", OperatorGroup::kState, 1},         {"CS", OperatorGroup::kColor, 1},
    {"cs", OperatorGroup::kColor, 1},         {"SC", OperatorGroup::kColor, 1},
    {"sc", OperatorGroup::kColor, 1},         {"SCN", OperatorGroup::kColor, 1},
    {"scn", OperatorGroup::kColor, 1},        {"G", OperatorGroup::kColor, 1},
    {"g", OperatorGroup::kColor, 1},          {"RG", OperatorGroup::kColor, 3},
    {"rg", OperatorGroup::kColor, 3},         {"K", OperatorGroup::kColor, 4},
    {"k", OperatorGroup::kColor, 4},          {"m", OperatorGroup::kPath, 2},
    {"l", OperatorGroup::kPath, 2},           {"c", OperatorGroup::kPath, 6},
    {"v", OperatorGroup::kPath, 4},           {"y", OperatorGroup::kPath, 4},
    {"h", OperatorGroup::kPath, 0},           {"re", OperatorGroup::kPath, 4},
    {"S", OperatorGroup::kPaint, 0},          {"s", OperatorGroup::kPaint, 0},
    {"f", OperatorGroup::kPaint, 0},          {"F", OperatorGroup::kPaint, 0},
    {"f*", OperatorGroup::kPaint, 0},         {"B", OperatorGroup::kPaint, 0},
    {"B*", OperatorGroup::kPaint, 0},         {"b", OperatorGroup::kPaint, 0},
    {"b*", OperatorGroup::kPaint, 0},         {"n", OperatorGroup::kPaint, 0},
    {"W", OperatorGroup::kClip, 0},           {"W*", OperatorGroup::kClip, 0},
    {"BT", OperatorGroup::kText, 0},          {"ET", OperatorGroup::kText, 0},
    {"Tc", OperatorGroup::kText, 1},          {"Tw", OperatorGroup::kText, 1},
    {"Tz", OperatorGroup::kText, 1},          {"TL", OperatorGroup::kText, 1},
    {"Tf", OperatorGroup::kText, 2},          {"Ts", OperatorGroup::kText, 1},
    {"Td", OperatorGroup::kText, 2},          {"TD", OperatorGroup::kText, 2},
    {"Tm", OperatorGroup::kText, 6},          {"T*", OperatorGroup::kText, 0},
    {"Tr", OperatorGroup::kTextMode, 1},      {"Tj", OperatorGroup::kShowText, 1},
    {"TJ", OperatorGroup::kShowText, 1},      {"'", OperatorGroup::kShowText, 1},
    {"\"", OperatorGroup::kShowText, 3},      {"BMC", OperatorGroup::kMark, 1},
    {"BDC", OperatorGroup::kMark, 2},         {"EMC", OperatorGroup::kMark, 0},
    {"MP", OperatorGroup::kMark, 1},          {"DP", OperatorGroup::kMark, 2},
    {"Do", OperatorGroup::kObject, 1},        {"BI", OperatorGroup::kInlineImage, 0},
    {"sh", OperatorGroup::kShading, 1},       {"d0", OperatorGroup::kGlyph, 2},
    {"d1", OperatorGroup::kGlyph, 6},         {"BX", OperatorGroup::kCompatibility, 0},
    {"EX", OperatorGroup::kCompatibility, 0},
}};

// Operators by a hash of their codes; one whose slot is taken is in the next that is free.
inline constexpr std::size_t kOperatorSlots = 256;

constexpr std::size_t OperatorSlot(std::uint32_t code) {
  return (code * 0x9E3779B1U >> 24U) % kOperatorSlots;
}

constexpr std::array<OperatorFacts, kOperatorSlots> MakeOperatorSlots() {
  std::array<OperatorFacts, kOperatorSlots> slots{};
  for (const OperatorRow& row : kOperators) {
    std::size_t slot = OperatorSlot(OperatorCode(row.name));
    while (slots[slot].code != 0) {
      slot = (slot + 1) % kOperatorSlots;
    }
    slots[slot] = {OperatorCode(row.name), row.group, row.operands};
  }
  return slots;
}

inline constexpr std::array<OperatorFacts, kOperatorSlots> kOperatorsBySlot = MakeOperatorSlots();

// Those of what is no operator are the facts as they are made.
constexpr const OperatorFacts& FactsOf(std::uint32_t code) {
  std::size_t slot = OperatorSlot(code);
  while (kOperatorsBySlot[slot].code != code && kOperatorsBySlot[slot].code != 0) {
    slot = (slot + 1) % kOperatorSlots;
  }
  return kOperatorsBySlot[slot];
}

constexpr OperatorGroup GroupOf(std::uint32_t code) {
  return FactsOf(code).group;
}

// Whether the standard has such an operator.
constexpr bool IsOperator(std::uint32_t code) {
  return GroupOf(code) != OperatorGroup::kNone;
}

constexpr int OperandsOf(std::uint32_t code) {
  return FactsOf(code).operands;
}

}  // namespace TarnixTools::pdf

#endif  // TARNIX_PDF_CONTENT_OPERATORS_H_
