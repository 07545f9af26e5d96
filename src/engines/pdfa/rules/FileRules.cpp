#include <array>

#include "engines/pdfa/rules/FileFacts.h"
#include "engines/pdfa/vocabulary/OneOf.h"

namespace TarnixTools::engines::pdfa {

namespace {

constexpr const char* kSaveAgain =
    "Write the document again with a program that keeps to the form.";
constexpr std::uint32_t kMostObjects = 8'388'607;

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

// "%PDF-1.4" is how the line starts.
bool StartsWithVersion(std::string_view line) {
  return line.size() >= 8 && line.starts_with("%PDF-") && IsDigit(line[5]) && line[6] == '.' &&
         IsDigit(line[7]);
}

constexpr std::array<Rule<HeaderFacts>, 3> kHeaderRules = {{
    {.levels = kPart1,
     .part1 = {"6.1.2", 1},
     .holds =
         [](const HeaderFacts& header) {
           return header.is_first && StartsWithVersion(header.line);
         },
     .wrong = "The file does not start with a header that names the version of PDF.",
     .cure = kSaveAgain},
    {.levels = kParts2And3,
     .later = {"6.1.2", 1},
     .holds =
         [](const HeaderFacts& header) {
           return header.is_first && header.line.size() == 8 &&
                  header.line.starts_with("%PDF-1.") && header.line[7] >= '0' &&
                  header.line[7] <= '7';
         },
     .wrong = "The file does not start with a line that is %PDF-1.0 to %PDF-1.7 and nothing else.",
     .cure = kSaveAgain},
    {.levels = kAllLevels,
     .part1 = {"6.1.2", 2},
     .later = {"6.1.2", 2},
     .holds = [](const HeaderFacts& header) { return header.has_binary_comment; },
     .wrong = "No comment with four bytes above 127 follows the header, which would tell programs "
              "that move files that this one is binary.",
     .cure = kSaveAgain},
}};

constexpr std::array<Rule<FileFacts>, 6> kFileRules = {{
    {.levels = kPart1,
     .part1 = {"6.1.3", 1},
     .holds =
         [](const FileFacts& file) {
           return (file.is_linearized ? file.first_id : file.last_id).has_value();
         },
     .wrong = "The trailer has no /ID.",
     .cure = "Give the file an identifier."},
    {.levels = kParts2And3,
     .later = {"6.1.3", 1},
     .holds =
         [](const FileFacts& file) {
           const std::optional<std::string>& id = file.is_linearized ? file.first_id : file.last_id;
           return id && !id->empty();
         },
     .wrong = "The trailer has no /ID, or an empty one.",
     .cure = "Give the file an identifier."},
    {.levels = kAllLevels,
     .part1 = {"6.1.3", 3},
     .later = {"6.1.3", 3},
     .holds = [](const FileFacts& file) { return file.has_nothing_after_end; },
     .wrong = "More than a line end follows the last end-of-file marker.",
     .cure = "Cut off what is behind the marker."},
    {.levels = kPart1,
     .part1 = {"6.1.3", 4},
     .holds =
         [](const FileFacts& file) {
           return !file.is_linearized || !file.last_id || file.first_id == file.last_id;
         },
     .wrong = "The two trailers of the linearized file have different identifiers.",
     .cure = kSaveAgain},
    {.levels = kPart1,
     .part1 = {"6.1.4", 3},
     .holds = [](const FileFacts& file) { return !file.has_xref_stream; },
     .wrong = "The cross-reference is a stream.",
     .cure = "Write the document with a cross-reference table."},
    {.levels = kAllLevels,
     .part1 = {"6.1.12", 7},
     .later = {"6.1.13", 7},
     .holds = [](const FileFacts& file) { return file.objects <= kMostObjects; },
     .wrong = "The file has more than 8,388,607 objects.",
     .cure = "Split the document."},
}};

constexpr std::array<Rule<TrailerFacts>, 1> kTrailerRules = {{
    {.levels = kAllLevels,
     .part1 = {"6.1.3", 2},
     .later = {"6.1.3", 2},
     .holds = [](const TrailerFacts& trailer) { return !trailer.is_encrypted; },
     .wrong = "The document is encrypted.",
     .cure = "Remove the encryption."},
}};

constexpr std::array<Rule<XrefFacts>, 2> kXrefRules = {{
    {.levels = kPart1,
     .part1 = {"6.1.4", 1},
     .holds = [](const XrefFacts& xref) { return xref.numbers_have_a_space; },
     .wrong =
         "The numbers at the head of a cross-reference subsection are not separated by one space.",
     .cure = kSaveAgain},
    {.levels = kAllLevels,
     .part1 = {"6.1.4", 2},
     .later = {"6.1.4", 2},
     .holds = [](const XrefFacts& xref) { return xref.keyword_ends_line; },
     .wrong = "The keyword xref is not followed by one line end and the numbers of a subsection.",
     .cure = kSaveAgain},
}};

constexpr std::array<Rule<ObjectFacts>, 1> kObjectRules = {{
    {.levels = kAllLevels,
     .part1 = {"6.1.8", 1},
     .later = {"6.1.9", 1},
     .holds = [](const ObjectFacts& object) { return object.spacing_is_regular; },
     .wrong =
         "The numbers of an object and its keywords obj and endobj are not spaced as they must "
         "be: single white space within, line ends around.",
     .cure = kSaveAgain},
}};

constexpr std::array<Rule<StreamFacts>, 3> kStreamRules = {{
    {.levels = kAllLevels,
     .part1 = {"6.1.7", 1},
     .later = {"6.1.7.1", 1},
     .holds = [](const StreamFacts& stream) { return stream.length_is_right; },
     .wrong = "A stream's /Length is not the number of its bytes.",
     .cure = kSaveAgain},
    {.levels = kAllLevels,
     .part1 = {"6.1.7", 2},
     .later = {"6.1.7.1", 2},
     .holds = [](const StreamFacts& stream) { return stream.keywords_are_on_lines; },
     .wrong =
         "The keyword stream is not followed, or endstream not preceded, by a proper line end.",
     .cure = kSaveAgain},
    {.levels = kAllLevels,
     .part1 = {"6.1.7", 3},
     .later = {"6.1.7.1", 3},
     .holds = [](const StreamFacts& stream) { return !stream.is_in_other_file; },
     .wrong = "A stream's data is in another file.",
     .cure = "Bring the data into the document."},
}};

constexpr std::array<std::string_view, 8> kPlainFilters = {
    "ASCIIHexDecode", "ASCII85Decode", "FlateDecode", "RunLengthDecode",
    "CCITTFaxDecode", "JBIG2Decode",   "DCTDecode",   "JPXDecode"};

constexpr std::array<Rule<FilterFacts>, 2> kFilterRules = {{
    {.levels = kPart1,
     .part1 = {"6.1.10", 1},
     .holds = [](const FilterFacts& filter) { return filter.name != "LZWDecode"; },
     .wrong = "A stream is compressed by LZW.",
     .cure = "Compress it by deflate instead."},
    {.levels = kParts2And3,
     .later = {"6.1.7.2", 1},
     .holds =
         [](const FilterFacts& filter) {
           return IsOneOf(filter.name, kPlainFilters) ||
                  (filter.name == "Crypt" && filter.is_identity_crypt);
         },
     .wrong =
         "A stream has a filter that is not allowed: LZW, encryption, or one that is not in the "
         "standard.",
     .cure = "Compress it by deflate instead."},
}};

constexpr std::array<Rule<IntegerFacts>, 1> kIntegerRules = {{
    {.levels = kAllLevels,
     .part1 = {"6.1.12", 1},
     .later = {"6.1.13", 1},
     .holds =
         [](const IntegerFacts& integer) {
           return integer.value >= -2'147'483'648 && integer.value <= 2'147'483'647;
         },
     .wrong = "An integer is too large.",
     .cure = "Use numbers from -2,147,483,648 to 2,147,483,647."},
}};

constexpr std::array<Rule<RealFacts>, 3> kRealRules = {{
    {.levels = kPart1,
     .part1 = {"6.1.12", 2},
     .holds = [](const RealFacts& real) { return real.value >= -32767 && real.value <= 32767; },
     .wrong = "A real number is too large.",
     .cure = "Use numbers from -32,767 to 32,767."},
    {.levels = kParts2And3,
     .later = {"6.1.13", 2},
     .holds =
         [](const RealFacts& real) { return real.value >= -3.403e38 && real.value <= 3.403e38; },
     .wrong = "A real number is too large.",
     .cure = "Use numbers that 32 bits can hold."},
    {.levels = kParts2And3,
     .later = {"6.1.13", 5},
     .holds =
         [](const RealFacts& real) {
           return real.value == 0 || real.value <= -1.175e-38 || real.value >= 1.175e-38;
         },
     .wrong = "A real number is too near to zero.",
     .cure = "Write 0 instead."},
}};

constexpr std::array<Rule<StringFacts>, 4> kStringRules = {{
    {.levels = kAllLevels,
     .part1 = {"6.1.6", 1},
     .later = {"6.1.6", 1},
     .holds =
         [](const StringFacts& string) { return !string.is_hex || string.hex_characters % 2 == 0; },
     .wrong = "A hexadecimal string has an odd number of digits.",
     .cure = "Add the digit 0 at its end."},
    {.levels = kAllLevels,
     .part1 = {"6.1.6", 2},
     .later = {"6.1.6", 2},
     .holds =
         [](const StringFacts& string) { return !string.is_hex || string.has_only_hex_digits; },
     .wrong = "A hexadecimal string has other characters than digits and white space.",
     .cure = kSaveAgain},
    {.levels = kPart1,
     .part1 = {"6.1.12", 3},
     .holds = [](const StringFacts& string) { return string.bytes < 65'536; },
     .wrong = "A string is longer than 65,535 bytes.",
     .cure = "Shorten it, or put the text into a stream."},
    {.levels = kParts2And3,
     .later = {"6.1.13", 3},
     .holds = [](const StringFacts& string) { return string.bytes < 32'768; },
     .wrong = "A string is longer than 32,767 bytes.",
     .cure = "Shorten it, or put the text into a stream."},
}};

constexpr std::array<Rule<NameFacts>, 1> kNameRules = {{
    {.levels = kAllLevels,
     .part1 = {"6.1.12", 4},
     .later = {"6.1.13", 4},
     .holds = [](const NameFacts& name) { return name.bytes <= 127; },
     .wrong = "A name is longer than 127 bytes.",
     .cure = "Shorten it, wherever it is used."},
}};

constexpr std::array<Rule<ArrayFacts>, 1> kArrayRules = {{
    {.levels = kPart1,
     .part1 = {"6.1.12", 5},
     .holds = [](const ArrayFacts& array) { return array.items <= 8191; },
     .wrong = "An array has more than 8,191 items.",
     .cure = "Split it, or validate by PDF/A-2, which has no such bound."},
}};

constexpr std::array<Rule<DictionaryFacts>, 1> kDictionaryRules = {{
    {.levels = kPart1,
     .part1 = {"6.1.12", 6},
     .holds = [](const DictionaryFacts& dictionary) { return dictionary.entries <= 4095; },
     .wrong = "A dictionary has more than 4,095 entries.",
     .cure = "Split it, or validate by PDF/A-2, which has no such bound."},
}};

constexpr std::array<Rule<ReadableNameFacts>, 1> kReadableNameRules = {{
    {.levels = kParts2And3,
     .later = {"6.1.8", 1},
     .holds = [](const ReadableNameFacts& name) { return name.is_utf8; },
     .wrong = "The name of a font, a colorant or a structure type is not UTF-8.",
     .cure = "Give it a name in UTF-8, wherever it is used."},
}};

}  // namespace

template <>
std::span<const Rule<HeaderFacts>> RulesFor<HeaderFacts>() {
  return kHeaderRules;
}

template <>
std::span<const Rule<FileFacts>> RulesFor<FileFacts>() {
  return kFileRules;
}

template <>
std::span<const Rule<TrailerFacts>> RulesFor<TrailerFacts>() {
  return kTrailerRules;
}

template <>
std::span<const Rule<XrefFacts>> RulesFor<XrefFacts>() {
  return kXrefRules;
}

template <>
std::span<const Rule<ObjectFacts>> RulesFor<ObjectFacts>() {
  return kObjectRules;
}

template <>
std::span<const Rule<StreamFacts>> RulesFor<StreamFacts>() {
  return kStreamRules;
}

template <>
std::span<const Rule<FilterFacts>> RulesFor<FilterFacts>() {
  return kFilterRules;
}

template <>
std::span<const Rule<IntegerFacts>> RulesFor<IntegerFacts>() {
  return kIntegerRules;
}

template <>
std::span<const Rule<RealFacts>> RulesFor<RealFacts>() {
  return kRealRules;
}

template <>
std::span<const Rule<StringFacts>> RulesFor<StringFacts>() {
  return kStringRules;
}

template <>
std::span<const Rule<NameFacts>> RulesFor<NameFacts>() {
  return kNameRules;
}

template <>
std::span<const Rule<ArrayFacts>> RulesFor<ArrayFacts>() {
  return kArrayRules;
}

template <>
std::span<const Rule<DictionaryFacts>> RulesFor<DictionaryFacts>() {
  return kDictionaryRules;
}

template <>
std::span<const Rule<ReadableNameFacts>> RulesFor<ReadableNameFacts>() {
  return kReadableNameRules;
}

}  // namespace TarnixTools::engines::pdfa
