// Whether spot colours of the same name are the same everywhere (ISO 19005-2, 6.2.4.4): the objects
// that define them are compared, whether they are written in place or not, and compressed or not.
#ifndef TARNIX_ENGINES_PDFA_CHECKS_SPOTDEFINITIONS_H_
#define TARNIX_ENGINES_PDFA_CHECKS_SPOTDEFINITIONS_H_

#include <string>
#include <string_view>
#include <unordered_map>

#include "pdf/file/Document.h"

namespace TarnixTools::engines::pdfa {

class SpotDefinitions {
 public:
  // The document outlives this.
  explicit SpotDefinitions(pdf::Document& document) : document_(&document) {}

  // False: the name was noted before with another definition. Throws pdf::Error for a document that
  // cannot be read any more.
  bool Note(std::string_view name, const pdf::Object& alternate, const pdf::Object& tint);

 private:
  bool Compare(std::string_view name, const pdf::Object& alternate, const pdf::Object& tint);

  pdf::Document* document_;
  std::unordered_map<std::string, std::string> definitions_;  // by name
  std::unordered_map<std::string, bool> known_;  // answers, by name, alternate and object of tint
};

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CHECKS_SPOTDEFINITIONS_H_
