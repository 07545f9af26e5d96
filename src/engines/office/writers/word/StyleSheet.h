// The styles of a Word document (ECMA-376, part 1, 17.7): which one a paragraph has, and how each
// looks, as most of the document's text of its kind does.
#ifndef TARNIX_ENGINES_OFFICE_WRITERS_WORD_STYLESHEET_H_
#define TARNIX_ENGINES_OFFICE_WRITERS_WORD_STYLESHEET_H_

#include <map>
#include <string>
#include <string_view>

#include "engines/office/layout/OfficeDocument.h"
#include "engines/office/writers/package/XmlWriter.h"

namespace TarnixTools::engines::office {

class StyleSheet {
 public:
  explicit StyleSheet(const OfficeDocument& document);

  // Empty for the style that paragraphs have without naming one.
  static std::string_view IdOf(const Paragraph& paragraph);

  void Write(XmlWriter& xml, const std::string& language) const;

 private:
  void CountBlocks(const std::vector<Block>& blocks, const std::vector<TextLook>& looks);
  void Count(const Paragraph& paragraph, const std::vector<TextLook>& looks);
  void WriteDefaults(XmlWriter& xml, const std::string& language) const;
  const TextLook* LookOf(std::string_view id) const;

  // A look, and how many bytes of text have it.
  struct Use {
    TextLook look;
    std::size_t bytes = 0;
  };

  std::map<std::string, std::map<std::string, Use>, std::less<>> uses_;  // by style, by look
};

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_ENGINES_OFFICE_WRITERS_WORD_STYLESHEET_H_
