// What the types of structure elements stand for (ISO 32000-1, 14.7.3 and 14.8.4): standard types,
// and others that a role map leads to one of those.
//
//   const StructureRoles roles(document, root.Get("RoleMap"), 2);
//   if (!roles.RoleOf("Chapter").is_standard) ...
#ifndef TARNIX_ENGINES_PDFA_VOCABULARY_STRUCTUREROLES_H_
#define TARNIX_ENGINES_PDFA_VOCABULARY_STRUCTUREROLES_H_

#include <string>
#include <string_view>
#include <unordered_map>

#include "pdf/file/Document.h"

namespace TarnixTools::engines::pdfa {

struct StructureRole {
  bool is_standard = false;  // the type is a standard one, or the map leads to one
  bool is_circle = false;    // the map leads from the type back to itself
  bool is_remapped = false;  // from a standard type to one that is none
};

class StructureRoles {
 public:
  //   map  - /RoleMap
  //   part - of PDF/A, since later ones have more standard types
  StructureRoles(pdf::Document& document, const pdf::Object& map, int part);

  StructureRole RoleOf(std::string_view type) const;

 private:
  bool IsStandard(std::string_view type) const;

  int part_;
  std::unordered_map<std::string, std::string> roles_;
};

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_VOCABULARY_STRUCTUREROLES_H_
