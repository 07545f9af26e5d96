// Which entries of dictionaries PDF/A forbids, as rows of a table.
#ifndef TARNIX_ENGINES_PDFA_CONVERT_STRUCTURE_ENTRYRULES_H_
#define TARNIX_ENGINES_PDFA_CONVERT_STRUCTURE_ENTRYRULES_H_

#include <cstdint>
#include <map>
#include <string_view>

#include "engines/pdfa/Level.h"
#include "pdf/file/Document.h"

namespace TarnixTools::engines::pdfa {

// By number of an embedded file, once it was asked about: whether it is PDF/A.
using KnownFiles = std::map<std::uint32_t, bool>;

// An entry, with the dictionary that it stands in.
struct EntryLook {
  pdf::Object OwnerEntry(std::string_view key) const {
    return document->Resolve(owner.Get(key), *arena);
  }

  bool OwnerIs(std::string_view subtype) const { return OwnerEntry("Subtype").IsName(subtype); }

  pdf::Document* document = nullptr;
  pdf::Arena* arena = nullptr;
  pdf::Object owner;
  pdf::Object value;  // resolved
  Level level{};
  KnownFiles* files = nullptr;  // of the document; never null
  bool is_stream = false;       // the owner is the dictionary of a stream
};

struct EntryRule {
  std::string_view key;
  bool (*forbids)(const EntryLook& look);
  LevelSet levels;
  const char* what;  // for the report
};

// Null for an entry that may stay.
const EntryRule* RuleAgainst(std::string_view key, const EntryLook& look);
// Whether any rule is about the key.
bool IsRuledKey(std::string_view key);

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CONVERT_STRUCTURE_ENTRYRULES_H_
