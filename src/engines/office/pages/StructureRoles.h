// What the structure tree of a tagged document says of the marked content of its pages (ISO
// 32000-2, 14.7).
//
//   const StructureRoles roles(document, destinations);
//   page.roles = roles.OfPage(page_index);
//
// Once it is made it may be asked by several threads.
#ifndef TARNIX_ENGINES_OFFICE_PAGES_STRUCTUREROLES_H_
#define TARNIX_ENGINES_OFFICE_PAGES_STRUCTUREROLES_H_

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "engines/office/pages/Destinations.h"
#include "engines/support/pages/PageModel.h"
#include "pdf/file/Document.h"

namespace TarnixTools::engines::office {

class StructureRoles {
 public:
  // Throws pdf::Error for a document that cannot be read any more.
  StructureRoles(pdf::Document& document, const Destinations& destinations);

  // By /MCID; content that no element has is without a path.
  std::vector<StructureRole> OfPage(std::uint32_t page_index) const;

  // Whether there are rows of tables anywhere: whoever made the tree told of them.
  bool has_tables() const { return has_tables_; }

 private:
  struct Element {
    std::uint32_t parent = 0;  // in elements_
    std::uint32_t depth = 0;
    std::uint32_t type = 0;       // in texts_
    std::uint32_t alternate = 0;  // in texts_
    std::uint32_t language = 0;   // in texts_
    std::optional<std::uint32_t> page;
  };

  // Marked content of a page, in the order of the tree.
  struct Item {
    std::uint32_t page = 0;
    std::uint32_t mark = 0;
    std::uint32_t element = 0;
    std::uint32_t order = 0;
  };

  // What is still to be looked at.
  struct Kid {
    std::uint32_t parent = 0;
    pdf::Object value;
  };

  void Read(pdf::Document& document, const pdf::Object& root);
  void ReadRoles(pdf::Document& document, const pdf::Object& map);
  void ReadKid(pdf::Document& document, const Kid& kid);
  void AddElement(pdf::Document& document, const Kid& kid, const pdf::Object& dictionary);
  void AddKids(pdf::Document& document, std::uint32_t parent, const pdf::Object& kids);
  void AddItem(std::uint32_t parent, const pdf::Object& kid);
  std::string_view MeaningOf(std::string_view type) const;
  std::uint32_t TextNumber(std::string_view text);

  const Destinations* destinations_;  // while the tree is read
  pdf::Arena arena_;
  std::vector<Kid> waiting_;
  std::vector<bool> seen_;  // by object number
  std::map<std::string, std::string, std::less<>> role_map_;
  std::map<std::string, std::uint32_t, std::less<>> text_numbers_;
  std::vector<std::string> texts_;
  std::vector<Element> elements_;
  std::vector<Item> items_;
  bool has_tables_ = false;
};

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_ENGINES_OFFICE_PAGES_STRUCTUREROLES_H_
