// What every check works on: the document, what is known of it as a whole, and where findings go.
//
//   void CheckPage(CheckedDocument& checked, std::size_t page_index) {
//     pdf::Arena arena;
//     const pdf::Object page = checked.LoadPage(page_index, arena);
//     checked.findings().Check(PageFacts{.has_actions = page.Has("AA")}, {...});
//   }
#ifndef TARNIX_ENGINES_PDFA_CHECKS_CHECKEDDOCUMENT_H_
#define TARNIX_ENGINES_PDFA_CHECKS_CHECKEDDOCUMENT_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "engines/pdfa/rules/FindingList.h"
#include "pdf/file/Document.h"
#include "pdf/tree/PageTree.h"

namespace TarnixTools::engines::pdfa {

class CheckedDocument {
 public:
  // Reads the page tree and the output intent. Document and list outlive this. Throws pdf::Error for
  // a document that cannot be read.
  //   embedded_depth - of the document within others
  CheckedDocument(pdf::Document& document, FindingList& findings, int embedded_depth = 0);

  pdf::Document& document() const { return *document_; }

  FindingList& findings() const { return *findings_; }

  const pdf::PageTree& pages() const { return pages_; }

  Level level() const { return findings_->level(); }

  int embedded_depth() const { return embedded_depth_; }

  // The colour space of the profile of the document's PDF/A output intent, four letters as the
  // profile has them ("RGB ", "CMYK", "GRAY"); empty where there is none. Colours of a device may
  // be used when it is theirs.
  std::string_view output_space() const { return output_space_; }

  // The streams that say that they are metadata, of the document or of anything in it.
  const std::vector<std::uint32_t>& metadata() const { return metadata_; }

  void NoteMetadata(std::uint32_t number) { metadata_.push_back(number); }

  pdf::Object LoadPage(std::size_t page_index, pdf::Arena& arena) const {
    return pages_.Load(pages_.pages()[page_index], arena);
  }

  // A dictionary's value, resolved; null where there is none or it cannot be read.
  pdf::Object Get(const pdf::Object& dictionary, std::string_view key, pdf::Arena& arena) const {
    return document_->Resolve(dictionary.Get(key), arena);
  }

 private:
  pdf::Document* document_;
  FindingList* findings_;
  int embedded_depth_;
  pdf::PageTree pages_;
  std::string output_space_;
  std::vector<std::uint32_t> metadata_;
};

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CHECKS_CHECKEDDOCUMENT_H_
