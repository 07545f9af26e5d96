// The headers and footers of a Word document's sections (ECMA-376, part 1, 17.10), each a part.
#ifndef TARNIX_ENGINES_OFFICE_WRITERS_WORD_HEADERWRITER_H_
#define TARNIX_ENGINES_OFFICE_WRITERS_WORD_HEADERWRITER_H_

#include <map>
#include <string>
#include <vector>

#include "engines/office/writers/word/SectionPlan.h"
#include "engines/office/writers/word/WordContext.h"

namespace TarnixTools::engines::office {

// What a section says of its headers and footers.
struct SectionHeaders {
  struct Reference {
    bool is_header = false;
    std::string_view pages;  // "default", "first", "even"
    std::string id;
  };

  std::vector<Reference> references;
  double header_distance = 36;  // points from the edge of the page
  double footer_distance = 36;
};

class HeaderWriter {
 public:
  // relationships: of the document. All outlive this.
  HeaderWriter(WordContext& context, Relationships& relationships, bool has_even_pages);

  // Writes the parts that the section needs and that are not there yet.
  SectionHeaders Write(const SectionPlan& section);

 private:
  struct Written {
    std::string id;
    double distance = 0;
  };

  void AddReferences(SectionHeaders& headers, const SectionPlan& section, std::size_t page,
                     std::string_view pages);
  const Written& PartOf(const SectionPlan& section, std::size_t page, bool is_header);
  Written WritePart(const SectionPlan& section, const OfficePage& page, bool is_header);

  WordContext& context_;
  Relationships& relationships_;
  bool has_even_pages_;
  bool has_any_ = false;
  std::map<std::string, Written> written_;
};

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_ENGINES_OFFICE_WRITERS_WORD_HEADERWRITER_H_
