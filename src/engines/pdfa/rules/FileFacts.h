// How a file is written (ISO 19005-1, -2 and -3, 6.1): its frame, and each object, token and stream.
#ifndef TARNIX_ENGINES_PDFA_RULES_FILEFACTS_H_
#define TARNIX_ENGINES_PDFA_RULES_FILEFACTS_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "engines/pdfa/rules/Rule.h"

namespace TarnixTools::engines::pdfa {

struct HeaderFacts {
  bool is_first = false;            // it stands at the very start
  std::string_view line;            // without its line end
  bool has_binary_comment = false;  // a comment with four bytes above 127 is the next line
};

// The whole file.
struct FileFacts {
  bool is_linearized = false;
  // The identifiers in the first and the last trailer of the file; nothing where there is none.
  std::optional<std::string> first_id;
  std::optional<std::string> last_id;
  bool has_nothing_after_end = true;  // but one line end
  bool has_xref_stream = false;
  std::uint32_t objects = 0;
};

struct TrailerFacts {
  bool is_encrypted = false;
};

// One section of a cross-reference table.
struct XrefFacts {
  bool keyword_ends_line =
      true;  // one line end, and nothing else, is between "xref" and the numbers
  bool numbers_have_a_space = true;  // one space is between the numbers of each subsection
};

// An indirect object of the file.
struct ObjectFacts {
  bool spacing_is_regular = true;
};

struct StreamFacts {
  bool length_is_right = true;
  bool keywords_are_on_lines = true;
  bool is_in_other_file = false;  // it has /F, /FFilter or /FDecodeParms
};

// A filter of a stream.
struct FilterFacts {
  std::string_view name;
  bool is_identity_crypt = false;
};

struct IntegerFacts {
  std::int64_t value = 0;
};

struct RealFacts {
  double value = 0;
};

struct StringFacts {
  std::size_t bytes = 0;  // without delimiters and escapes
  bool is_hex = false;
  std::size_t hex_characters = 0;   // that are no white space
  bool has_only_hex_digits = true;  // and white space
};

struct NameFacts {
  std::size_t bytes = 0;  // without the slash, escapes resolved
};

struct ArrayFacts {
  std::size_t items = 0;
};

struct DictionaryFacts {
  std::size_t entries = 0;
};

// A name that is meant to be read: of a font, a colorant, a structure type.
struct ReadableNameFacts {
  bool is_utf8 = true;
};

template <>
std::span<const Rule<HeaderFacts>> RulesFor<HeaderFacts>();
template <>
std::span<const Rule<FileFacts>> RulesFor<FileFacts>();
template <>
std::span<const Rule<TrailerFacts>> RulesFor<TrailerFacts>();
template <>
std::span<const Rule<XrefFacts>> RulesFor<XrefFacts>();
template <>
std::span<const Rule<ObjectFacts>> RulesFor<ObjectFacts>();
template <>
std::span<const Rule<StreamFacts>> RulesFor<StreamFacts>();
template <>
std::span<const Rule<FilterFacts>> RulesFor<FilterFacts>();
template <>
std::span<const Rule<IntegerFacts>> RulesFor<IntegerFacts>();
template <>
std::span<const Rule<RealFacts>> RulesFor<RealFacts>();
template <>
std::span<const Rule<StringFacts>> RulesFor<StringFacts>();
template <>
std::span<const Rule<NameFacts>> RulesFor<NameFacts>();
template <>
std::span<const Rule<ArrayFacts>> RulesFor<ArrayFacts>();
template <>
std::span<const Rule<DictionaryFacts>> RulesFor<DictionaryFacts>();
template <>
std::span<const Rule<ReadableNameFacts>> RulesFor<ReadableNameFacts>();

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_RULES_FILEFACTS_H_
