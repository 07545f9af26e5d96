// Checks file specifications and the files that they embed (ISO 19005-1, 6.1.11; -2 and -3, 6.8).
// They are noted in the pass over all objects, and checked when all that refers to them is known.
#ifndef TARNIX_ENGINES_PDFA_CHECKS_EMBEDDEDFILECHECK_H_
#define TARNIX_ENGINES_PDFA_CHECKS_EMBEDDEDFILECHECK_H_

#include <cstdint>
#include <unordered_set>
#include <vector>

#include "engines/pdfa/checks/CheckedDocument.h"

namespace TarnixTools::engines::pdfa {

class EmbeddedFileCheck {
 public:
  explicit EmbeddedFileCheck(CheckedDocument& checked) : checked_(&checked) {}

  // Any dictionary of the document.
  //   number - of the object that it is, or that it stands in
  void Note(const pdf::Object& dictionary, std::uint32_t number, bool is_whole_object);

  // What was noted.
  void Run();

 private:
  void CheckSpecification(const pdf::Object& dictionary, std::uint32_t number);
  void CheckFile(const pdf::Object& stream);
  void FindAssociated();

  CheckedDocument* checked_;
  std::vector<std::uint32_t> specifications_;
  std::vector<pdf::Object> lists_;                // of associated files: references
  std::unordered_set<std::uint32_t> associated_;  // specifications
  std::unordered_set<std::uint32_t> checked_files_;
};

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CHECKS_EMBEDDEDFILECHECK_H_
