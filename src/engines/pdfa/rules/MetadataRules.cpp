#include <array>

#include "engines/pdfa/rules/MetadataFacts.h"

namespace TarnixTools::engines::pdfa {

namespace {

constexpr const char* kAgree =
    "Make the two say the same, or remove the entry of the document information.";
constexpr const char* kClaimCure =
    "Let the packet say it in the schema pdfaid, once everything else is as it should be.";

constexpr std::array<Rule<DocumentMetadataFacts>, 2> kDocumentMetadataRules = {{
    {.levels = kAllLevels,
     .part1 = {"6.7.2", 1},
     .later = {"6.6.2.1", 1},
     .holds = [](const DocumentMetadataFacts& metadata) { return metadata.has_stream; },
     .wrong = "The document has no XMP metadata.",
     .cure = "Add a metadata stream to the catalog."},
    {.levels = kPart1,
     .part1 = {"6.7.2", 2},
     .holds = [](const DocumentMetadataFacts& metadata) { return !metadata.has_filter; },
     .wrong = "The metadata of the document is compressed.",
     .cure = "Write the stream without a filter."},
}};

constexpr std::array<Rule<PacketFacts>, 4> kPacketRules = {{
    {.levels = kAllLevels,
     .part1 = {"6.7.5", 1},
     .later = {"6.6.2.1", 2},
     .holds = [](const PacketFacts& packet) { return !packet.has_bytes; },
     .wrong = "The header of an XMP packet has the attribute bytes.",
     .cure = "Remove the attribute."},
    {.levels = kAllLevels,
     .part1 = {"6.7.5", 2},
     .later = {"6.6.2.1", 3},
     .holds = [](const PacketFacts& packet) { return !packet.has_encoding; },
     .wrong = "The header of an XMP packet has the attribute encoding.",
     .cure = "Remove the attribute."},
    {.levels = kAllLevels,
     .part1 = {"6.7.9", 1},
     .later = {"6.6.2.1", 4},
     .holds = [](const PacketFacts& packet) { return packet.is_sound; },
     .wrong =
         "An XMP packet cannot be read: it is no well-formed XML, or not the RDF that XMP allows.",
     .cure = "Write the packet anew."},
    {.levels = kParts2And3,
     .later = {"6.6.2.1", 5},
     .holds = [](const PacketFacts& packet) { return packet.is_utf8; },
     .wrong = "An XMP packet is not in UTF-8.",
     .cure = "Write the packet in UTF-8."},
}};

constexpr std::array<Rule<PropertyFacts>, 2> kPropertyRules = {{
    {.levels = kAllLevels,
     .part1 = {"6.7.9", 2},
     .later = {"6.6.2.3.1", 1},
     .holds = [](const PropertyFacts& property) { return property.is_defined; },
     .wrong = "A metadata property is defined neither by XMP nor by an extension schema.",
     .cure = "Describe it in an extension schema, or remove it."},
    {.levels = kAllLevels,
     .part1 = {"6.7.9", 3},
     .later = {"6.6.2.3.1", 2},
     .holds = [](const PropertyFacts& property) { return property.has_right_type; },
     .wrong = "A metadata property is not of the type that its schema gives it.",
     .cure = "Write the value in the form that the schema wants, or remove the property."},
}};

constexpr std::array<Rule<InformationFacts>, 8> kInformationRules = {{
    {.levels = kPart1,
     .part1 = {"6.7.3", 1},
     .holds = [](const InformationFacts& information) { return information.creation_date_agrees; },
     .wrong =
         "The document information has another creation date than the metadata, or none is there.",
     .cure = kAgree},
    {.levels = kPart1,
     .part1 = {"6.7.3", 2},
     .holds = [](const InformationFacts& information) { return information.title_agrees; },
     .wrong = "The document information has another title than the metadata.",
     .cure = kAgree},
    {.levels = kPart1,
     .part1 = {"6.7.3", 3},
     .holds = [](const InformationFacts& information) { return information.author_agrees; },
     .wrong =
         "The document information has another author than the metadata, which may name only one.",
     .cure = kAgree},
    {.levels = kPart1,
     .part1 = {"6.7.3", 4},
     .holds = [](const InformationFacts& information) { return information.subject_agrees; },
     .wrong =
         "The document information has another subject than the metadata has as its description.",
     .cure = kAgree},
    {.levels = kPart1,
     .part1 = {"6.7.3", 5},
     .holds = [](const InformationFacts& information) { return information.keywords_agree; },
     .wrong = "The document information has other keywords than the metadata.",
     .cure = kAgree},
    {.levels = kPart1,
     .part1 = {"6.7.3", 6},
     .holds = [](const InformationFacts& information) { return information.creator_agrees; },
     .wrong =
         "The document information has another creator than the metadata has as the creator tool.",
     .cure = kAgree},
    {.levels = kPart1,
     .part1 = {"6.7.3", 7},
     .holds = [](const InformationFacts& information) { return information.producer_agrees; },
     .wrong = "The document information has another producer than the metadata.",
     .cure = kAgree},
    {.levels = kPart1,
     .part1 = {"6.7.3", 8},
     .holds =
         [](const InformationFacts& information) { return information.modification_date_agrees; },
     .wrong = "The document information has another modification date than the metadata, or none "
              "is there.",
     .cure = kAgree},
}};

constexpr std::array<Rule<ClaimFacts>, 12> kClaimRules = {{
    {.levels = kAllLevels,
     .part1 = {"6.7.11", 1},
     .later = {"6.6.4", 1},
     .holds = [](const ClaimFacts& claim) { return claim.has_identification; },
     .wrong = "The metadata does not say that the document is PDF/A.",
     .cure = kClaimCure},
    {.levels = kPart1,
     .part1 = {"6.7.11", 2},
     .holds = [](const ClaimFacts& claim) { return claim.part == "1"; },
     .wrong = "The metadata does not name part 1 of PDF/A.",
     .cure = kClaimCure},
    {.levels = kPart2,
     .later = {"6.6.4", 2},
     .holds = [](const ClaimFacts& claim) { return claim.part == "2"; },
     .wrong = "The metadata does not name part 2 of PDF/A.",
     .cure = kClaimCure},
    {.levels = kPart3,
     .later = {"6.6.4", 2},
     .holds = [](const ClaimFacts& claim) { return claim.part == "3"; },
     .wrong = "The metadata does not name part 3 of PDF/A.",
     .cure = kClaimCure},
    {.levels = kTaggedLevels,
     .part1 = {"6.7.11", 3},
     .later = {"6.6.4", 3},
     .holds = [](const ClaimFacts& claim) { return claim.conformance == "A"; },
     .wrong = "The metadata does not name level A.",
     .cure = kClaimCure},
    {.levels = SetOf(Level::k1b),
     .part1 = {"6.7.11", 3},
     .holds =
         [](const ClaimFacts& claim) {
           return claim.conformance == "B" || claim.conformance == "A";
         },
     .wrong = "The metadata names no level of the part.",
     .cure = kClaimCure},
    {.levels = SetOf(Level::k2b, Level::k3b),
     .later = {"6.6.4", 3},
     .holds =
         [](const ClaimFacts& claim) {
           return claim.conformance == "B" || claim.conformance == "U" || claim.conformance == "A";
         },
     .wrong = "The metadata names no level of the part.",
     .cure = kClaimCure},
    {.levels = SetOf(Level::k2u, Level::k3u),
     .later = {"6.6.4", 3},
     .holds =
         [](const ClaimFacts& claim) {
           return claim.conformance == "U" || claim.conformance == "A";
         },
     .wrong = "The metadata does not name level U.",
     .cure = kClaimCure},
    {.levels = kAllLevels,
     .part1 = {"6.7.11", 4},
     .later = {"6.6.4", 4},
     .holds = [](const ClaimFacts& claim) { return claim.part_has_prefix; },
     .wrong = "The part of PDF/A is not named under the prefix pdfaid.",
     .cure = kClaimCure},
    {.levels = kAllLevels,
     .part1 = {"6.7.11", 5},
     .later = {"6.6.4", 5},
     .holds = [](const ClaimFacts& claim) { return claim.conformance_has_prefix; },
     .wrong = "The level of PDF/A is not named under the prefix pdfaid.",
     .cure = kClaimCure},
    {.levels = kAllLevels,
     .part1 = {"6.7.11", 6},
     .later = {"6.6.4", 6},
     .holds = [](const ClaimFacts& claim) { return claim.amendment_has_prefix; },
     .wrong = "The amendment of PDF/A is not named under the prefix pdfaid.",
     .cure = kClaimCure},
    {.levels = kParts2And3,
     .later = {"6.6.4", 7},
     .holds = [](const ClaimFacts& claim) { return claim.corrigendum_has_prefix; },
     .wrong = "The corrigendum of PDF/A is not named under the prefix pdfaid.",
     .cure = kClaimCure},
}};

}  // namespace

template <>
std::span<const Rule<DocumentMetadataFacts>> RulesFor<DocumentMetadataFacts>() {
  return kDocumentMetadataRules;
}

template <>
std::span<const Rule<PacketFacts>> RulesFor<PacketFacts>() {
  return kPacketRules;
}

template <>
std::span<const Rule<PropertyFacts>> RulesFor<PropertyFacts>() {
  return kPropertyRules;
}

template <>
std::span<const Rule<InformationFacts>> RulesFor<InformationFacts>() {
  return kInformationRules;
}

template <>
std::span<const Rule<ClaimFacts>> RulesFor<ClaimFacts>() {
  return kClaimRules;
}

}  // namespace TarnixTools::engines::pdfa
