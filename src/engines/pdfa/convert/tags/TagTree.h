// The structure of a document, made of what its pages show (ISO 32000-2, 14.7 and 14.8): elements
// for paragraphs, headings, lists, tables and pictures, in the order in which they are read, and for
// each annotation.
//
//   TagTree tree(conversion);
//   for (...) tree.Add(page_index, scan.Scan(page_index));
//   tree.Write();
#ifndef TARNIX_ENGINES_PDFA_CONVERT_TAGS_TAGTREE_H_
#define TARNIX_ENGINES_PDFA_CONVERT_TAGS_TAGTREE_H_

#include <cstddef>
#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "engines/pdfa/convert/Conversion.h"
#include "engines/pdfa/convert/tags/PageElements.h"
#include "engines/pdfa/convert/tags/PageMarks.h"

namespace TarnixTools::engines::pdfa {

class TagTree {
 public:
  explicit TagTree(Conversion& conversion) : conversion_(&conversion) {}

  // A page that is an object of its own, each once.
  void Add(std::size_t page_index, PageMarks marks);

  // Writes the elements, sets what leads to them, and edits the pages of which there was something
  // to be marked.
  void Write();

 private:
  struct TaggedPage {
    std::uint32_t number = 0;
    PageMarks marks;
  };

  // An annotation, with its element.
  struct Note {
    std::uint32_t number = 0;
    std::uint32_t element = 0;
    const char* type = "";
    pdf::Box box;
  };

  void ChooseHeadings();
  void WritePage(TaggedPage& page);
  PageElements ElementsOf(const TaggedPage& page);
  void MarkContent(TaggedPage& page, PageElements& elements);
  void AddNotes(const TaggedPage& page, PageElements& elements);
  void WriteElements(const TaggedPage& page, PageElements& elements);
  std::vector<Note> NotesOf(const TaggedPage& page);
  void WriteNote(const TaggedPage& page, const Note& note, std::uint32_t parent);
  const char* TypeOfNote(const pdf::Object& subtype) const;
  std::uint32_t AddObject();
  std::uint32_t ParentOf(std::uint32_t element);
  void CloseGroup();
  std::string ParentTree();
  void WriteRoot();

  Conversion* conversion_;
  std::vector<TaggedPage> pages_;
  std::size_t most_elements_ = 0;
  std::uint64_t figures_ = 0;
  std::uint32_t root_ = 0;
  std::uint32_t document_ = 0;  // the element of all
  std::string kids_;            // of the document
  // An element that holds others, where there are too many for one list; 0 for none.
  std::uint32_t group_ = 0;
  std::string group_kids_;
  std::size_t group_size_ = 0;
  std::map<std::size_t, std::string> parents_;  // by key: what /ParentTree has
  std::size_t next_key_ = 0;
  std::set<std::uint32_t> noted_;  // numbers of annotations
  std::vector<Note> alone_;        // of the page, over no text
};

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CONVERT_TAGS_TAGTREE_H_
