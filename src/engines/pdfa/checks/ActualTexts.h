// Which marked content has an /ActualText by way of the structure that it belongs to (ISO 32000-1,
// 14.7.4.4 and 14.9.4): that of its element, or of one around it.
#ifndef TARNIX_ENGINES_PDFA_CHECKS_ACTUALTEXTS_H_
#define TARNIX_ENGINES_PDFA_CHECKS_ACTUALTEXTS_H_

#include <cstdint>
#include <optional>
#include <unordered_map>
#include <vector>

#include "pdf/file/Document.h"

namespace TarnixTools::engines::pdfa {

class ActualTexts {
 public:
  // The document outlives this.
  explicit ActualTexts(pdf::Document& document) : document_(&document) {}

  //   parents - /StructParents of the page or form that has the content
  //   id      - /MCID
  // Throws pdf::Error for a document that cannot be read any more.
  bool Has(std::int64_t parents, std::int64_t id);

 private:
  void ReadParents();
  bool HasElement(std::uint32_t element);

  pdf::Document* document_;
  // Numbers of elements by /MCID, by /StructParents; read when they are asked for first.
  std::optional<std::unordered_map<std::int64_t, std::vector<std::uint32_t>>> elements_;
  std::unordered_map<std::uint32_t, bool> known_;  // by number of the element
};

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CHECKS_ACTUALTEXTS_H_
