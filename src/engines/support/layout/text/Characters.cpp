#include "engines/support/layout/text/Characters.h"

#include <algorithm>
#include <array>

#include "foundation/Utf8.h"

namespace TarnixTools::engines {

namespace {

struct Range {
  char32_t first;
  char32_t last;
};

template <std::size_t kCount>
bool IsIn(const std::array<Range, kCount>& ranges, char32_t character) {
  return std::any_of(ranges.begin(), ranges.end(), [character](const Range& range) {
    return character >= range.first && character <= range.last;
  });
}

constexpr std::array<Range, 8> kSpaces = {{{0x0000, 0x0020},
                                           {0x007F, 0x00A0},
                                           {0x1680, 0x1680},
                                           {0x2000, 0x200B},
                                           {0x2028, 0x2029},
                                           {0x202F, 0x202F},
                                           {0x205F, 0x2060},
                                           {0x3000, 0x3000}}};
constexpr std::array<Range, 4> kFromRight = {
    {{0x0590, 0x08FF}, {0xFB1D, 0xFDFF}, {0xFE70, 0xFEFC}, {0x10800, 0x10FFF}}};
constexpr std::array<Range, 3> kArabicNumbers = {
    {{0x0660, 0x066C}, {0x06F0, 0x06F9}, {0x0600, 0x0605}}};
constexpr std::array<Range, 10> kWithoutSpaces = {{{0x0E00, 0x0EFF},
                                                   {0x1000, 0x109F},
                                                   {0x1780, 0x17FF},
                                                   {0x2E80, 0x303F},
                                                   {0x3040, 0x31FF},
                                                   {0x3400, 0x9FFF},
                                                   {0xF900, 0xFAFF},
                                                   {0xFE30, 0xFE4F},
                                                   {0xFF00, 0xFFEF},
                                                   {0x20000, 0x3FFFF}}};
constexpr std::array<Range, 16> kCombining = {{{0x0300, 0x036F},
                                               {0x0483, 0x0489},
                                               {0x0591, 0x05BD},
                                               {0x05BF, 0x05BF},
                                               {0x05C1, 0x05C2},
                                               {0x05C4, 0x05C5},
                                               {0x05C7, 0x05C7},
                                               {0x0610, 0x061A},
                                               {0x064B, 0x065F},
                                               {0x0670, 0x0670},
                                               {0x06D6, 0x06DC},
                                               {0x0E31, 0x0E31},
                                               {0x0E34, 0x0E3A},
                                               {0x0E47, 0x0E4E},
                                               {0x1AB0, 0x1AFF},
                                               {0x20D0, 0x20FF}}};
// From U+FB00 on.
constexpr std::array<std::u32string_view, 7> kLigatures = {U"ff",  U"fi", U"fl", U"ffi",
                                                           U"ffl", U"st", U"st"};
constexpr char32_t kFirstLigature = 0xFB00;
constexpr char32_t kSoftHyphen = 0xAD;
constexpr char32_t kByteOrderMark = 0xFEFF;

bool IsLatin(char32_t c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

// Of Latin Extended-A, where letters of both cases take turns: in two runs the upper case is odd.
bool IsUpperCaseExtended(char32_t c) {
  const bool is_odd_upper = (c >= 0x138 && c <= 0x148) || (c >= 0x179 && c <= 0x17E);
  return (c % 2 == 1) == is_odd_upper;
}

}  // namespace

bool IsSpace(char32_t character) {
  return IsIn(kSpaces, character);
}

bool IsHyphen(char32_t character) {
  return character == '-' || character == kSoftHyphen || character == 0x2010;
}

bool IsDigit(char32_t character) {
  return character >= '0' && character <= '9';
}

bool IsUpperCase(char32_t c) {
  return (c >= 'A' && c <= 'Z') || (c >= 0xC0 && c <= 0xDE && c != 0xD7) ||
         (c >= 0x100 && c < 0x180 && IsUpperCaseExtended(c)) || (c >= 0x391 && c <= 0x3A9) ||
         (c >= 0x400 && c <= 0x42F);
}

bool IsLowerCase(char32_t c) {
  return (c >= 'a' && c <= 'z') || (c >= 0xDF && c <= 0xFF && c != 0xF7) ||
         (c >= 0x100 && c < 0x180 && !IsUpperCaseExtended(c)) || (c >= 0x3B1 && c <= 0x3C9) ||
         (c >= 0x430 && c <= 0x45F) || (c >= kFirstLigature && c <= kFirstLigature + 6);
}

bool RunsLeft(char32_t character) {
  return IsIn(kFromRight, character) && !IsIn(kArabicNumbers, character);
}

bool RunsRight(char32_t character) {
  return IsLatin(character) ||
         (character >= 0xAA && !IsIn(kFromRight, character) && !IsSpace(character) &&
          !IsCombining(character) && (character < 0x2000 || character > 0x2BFF) &&
          character != 0xAB && character != 0xBB && character != 0xB7);
}

bool HasNoSpaces(char32_t character) {
  return IsIn(kWithoutSpaces, character);
}

bool IsCombining(char32_t character) {
  return IsIn(kCombining, character);
}

void AppendPlain(std::u32string& out, std::u32string_view text) {
  for (const char32_t character : text) {
    if (character >= kFirstLigature && character < kFirstLigature + kLigatures.size()) {
      out += kLigatures[character - kFirstLigature];
    } else if (character != kByteOrderMark && (character >= ' ' || character == '\t')) {
      out += character;
    }
  }
}

std::string ToUtf8(std::u32string_view text) {
  std::string out;
  for (const char32_t character : text) {
    AppendUtf8(out, character);
  }
  return out;
}

}  // namespace TarnixTools::engines
