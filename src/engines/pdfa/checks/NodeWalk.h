// Goes through dictionaries that lead to each other (outline items, actions, fields, structure
// elements), each object once, without recursion.
//
//   NodeWalk walk(document);
//   walk.Add(outlines.Get("First"));
//   while (const pdf::Followed* node = walk.Next()) {
//     walk.Add(node->value.Get("Next"));
//   }
#ifndef TARNIX_ENGINES_PDFA_CHECKS_NODEWALK_H_
#define TARNIX_ENGINES_PDFA_CHECKS_NODEWALK_H_

#include <cstddef>
#include <cstdint>
#include <memory>
#include <unordered_set>
#include <vector>

#include "pdf/file/Document.h"

namespace TarnixTools::engines::pdfa {

class NodeWalk {
 public:
  // The document outlives this.
  explicit NodeWalk(pdf::Document& document) : document_(&document) {}

  // To come next: a dictionary, the items of an array, or what a reference to one leads to. What
  // stands in place is of the node that was told last, or outlives the walk to the end.
  void Add(const pdf::Object& value);

  // The next dictionary and the number of its object, valid until the next call; null at the end.
  // What was told once is not told again, after the end neither. number: of the object in which a
  // dictionary stands that is none itself.
  const pdf::Followed* Next();

 private:
  struct Item {
    pdf::Object value;
    std::uint32_t holder = 0;           // number of the object that it stands in
    std::size_t depth = 0;              // of arrays, within each other
    std::shared_ptr<pdf::Arena> arena;  // of the value
  };

  void AddItems(const Item& array);

  pdf::Document* document_;
  std::vector<Item> waiting_;  // the next one last
  std::unordered_set<std::uint32_t> seen_;
  pdf::Followed node_;
  std::shared_ptr<pdf::Arena> arena_;  // of the node
};

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CHECKS_NODEWALK_H_
