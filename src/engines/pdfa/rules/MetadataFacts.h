// Metadata (ISO 19005-1, 6.7; -2 and -3, 6.6): XMP packets, what they say of the document as PDF/A,
// and whether the document information agrees.
#ifndef TARNIX_ENGINES_PDFA_RULES_METADATAFACTS_H_
#define TARNIX_ENGINES_PDFA_RULES_METADATAFACTS_H_

#include <string_view>

#include "engines/pdfa/rules/Rule.h"
#include "engines/support/metadata/XmpExtensions.h"

namespace TarnixTools::engines::pdfa {

// What the catalog has.
struct DocumentMetadataFacts {
  bool has_stream = false;
  bool has_filter = false;  // on its way
};

// The packet of the document, or of one of its objects.
struct PacketFacts {
  bool has_bytes = false;     // the attribute of the header
  bool has_encoding = false;  // the attribute of the header
  bool is_sound = false;      // well-formed, and the RDF that XMP allows
  bool is_utf8 = true;
};

// A property of a packet.
struct PropertyFacts {
  bool is_defined = false;  // by the XMP Specification, or an extension schema
  bool has_right_type = false;
};

// The property that holds the extension schemas.
struct ExtensionsFacts {
  bool is_bag = false;
  bool has_right_prefix = false;
};

// A schema, property, value type or field that is described there.
struct ExtensionFacts {
  bool has_other_fields = false;
};

// One of the fields of such a description.
struct ExtensionEntryFacts {
  XmpExtensionPart part{};
  std::string_view name;
  bool is_there = false;
  bool is_right = false;  // of the right prefix, type and value

  bool Is(XmpExtensionPart wanted_part, std::string_view wanted_name) const {
    return part == wanted_part && name == wanted_name;
  }
};

// What the document's packet claims.
struct ClaimFacts {
  bool has_identification = false;
  std::string_view part;
  std::string_view conformance;
  // False for a property that is there under another prefix.
  bool part_has_prefix = true;
  bool conformance_has_prefix = true;
  bool amendment_has_prefix = true;
  bool corrigendum_has_prefix = true;
};

// Whether what the document information says is what the packet says. True for what it does not
// have.
struct InformationFacts {
  bool creation_date_agrees = true;
  bool title_agrees = true;
  bool author_agrees = true;
  bool subject_agrees = true;
  bool keywords_agree = true;
  bool creator_agrees = true;
  bool producer_agrees = true;
  bool modification_date_agrees = true;
};

template <>
std::span<const Rule<DocumentMetadataFacts>> RulesFor<DocumentMetadataFacts>();
template <>
std::span<const Rule<PacketFacts>> RulesFor<PacketFacts>();
template <>
std::span<const Rule<PropertyFacts>> RulesFor<PropertyFacts>();
template <>
std::span<const Rule<ExtensionsFacts>> RulesFor<ExtensionsFacts>();
template <>
std::span<const Rule<ExtensionFacts>> RulesFor<ExtensionFacts>();
template <>
std::span<const Rule<ExtensionEntryFacts>> RulesFor<ExtensionEntryFacts>();
template <>
std::span<const Rule<ClaimFacts>> RulesFor<ClaimFacts>();
template <>
std::span<const Rule<InformationFacts>> RulesFor<InformationFacts>();

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_RULES_METADATAFACTS_H_
