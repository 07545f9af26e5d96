#include <algorithm>
#include <array>

#include "engines/pdfa/rules/EmbeddedFileFacts.h"

namespace TarnixTools::engines::pdfa {

namespace {

bool IsOfMediaType(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' ||
         c == '_' || c == '+' || c == '.';
}

bool IsPartOfMediaType(std::string_view text) {
  return !text.empty() && std::all_of(text.begin(), text.end(), IsOfMediaType);
}

// "text/plain".
bool IsMediaType(std::string_view type) {
  const std::size_t slash = type.find('/');
  return slash != std::string_view::npos && IsPartOfMediaType(type.substr(0, slash)) &&
         IsPartOfMediaType(type.substr(slash + 1));
}

constexpr std::array<Rule<FileSpecificationFacts>, 4> kFileSpecificationRules = {{
    {.levels = kPart1,
     .part1 = {"6.1.11", 1},
     .holds = [](const FileSpecificationFacts& file) { return !file.embeds_file; },
     .wrong = "A file is embedded.",
     .cure = "Remove it, or validate by PDF/A-3."},
    {.levels = kParts2And3,
     .later = {"6.8", 2},
     .holds =
         [](const FileSpecificationFacts& file) { return !file.embeds_file || file.has_names; },
     .wrong = "An embedded file lacks a name.",
     .cure = "Give it /F and /UF."},
    {.levels = kPart3,
     .later = {"6.8", 3},
     .holds = [](const FileSpecificationFacts& file) { return file.has_relationship; },
     .wrong = "An embedded file does not say how it is related to the document.",
     .cure = "Give it /AFRelationship; Unspecified will do."},
    {.levels = kPart3,
     .later = {"6.8", 4},
     .holds = [](const FileSpecificationFacts& file) { return file.is_associated; },
     .wrong = "An embedded file is associated with no part of the document.",
     .cure = "Refer to it in the catalog's /AF."},
}};

constexpr std::array<Rule<EmbeddedFileFacts>, 2> kEmbeddedFileRules = {{
    {.levels = kPart3,
     .later = {"6.8", 1},
     .holds = [](const EmbeddedFileFacts& file) { return IsMediaType(file.media_type); },
     .wrong = "An embedded file does not say of what type it is.",
     .cure = "Give it a media type as its /Subtype; application/octet-stream will do."},
    {.levels = kPart2,
     .later = {"6.8", 5},
     .holds = [](const EmbeddedFileFacts& file) { return file.is_pdfa; },
     .wrong = "An embedded file is no valid PDF/A-1 or -2.",
     .cure = "Remove it, convert it, or validate by PDF/A-3."},
}};

}  // namespace

template <>
std::span<const Rule<FileSpecificationFacts>> RulesFor<FileSpecificationFacts>() {
  return kFileSpecificationRules;
}

template <>
std::span<const Rule<EmbeddedFileFacts>> RulesFor<EmbeddedFileFacts>() {
  return kEmbeddedFileRules;
}

}  // namespace TarnixTools::engines::pdfa
