// Embedded files (ISO 19005-1, 6.1.11; -2 and -3, 6.8).
#ifndef TARNIX_ENGINES_PDFA_RULES_EMBEDDEDFILEFACTS_H_
#define TARNIX_ENGINES_PDFA_RULES_EMBEDDEDFILEFACTS_H_

#include <string_view>

#include "engines/pdfa/rules/Rule.h"

namespace TarnixTools::engines::pdfa {

struct FileSpecificationFacts {
  bool embeds_file = false;       // /EF
  bool has_names = true;          // /F and /UF
  bool has_relationship = false;  // /AFRelationship
  bool is_associated = false;     // some /AF refers to it
};

struct EmbeddedFileFacts {
  std::string_view media_type;  // /Subtype
  bool is_pdfa = false;         // it is valid by PDF/A-1 or -2, as it claims
};

template <>
std::span<const Rule<FileSpecificationFacts>> RulesFor<FileSpecificationFacts>();
template <>
std::span<const Rule<EmbeddedFileFacts>> RulesFor<EmbeddedFileFacts>();

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_RULES_EMBEDDEDFILEFACTS_H_
