// The fields of an interactive form, found once per source: which objects they are and how they
// hang together (ISO 32000-2, 12.7.4).
//
// Fields and their widgets are nodes alike. What stands twice is taken once, where it comes first;
// what is no field is passed over. Fields that only a widget's /Parent leads to are adopted when a
// copy meets that widget.
#ifndef TARNIX_ENGINES_TOOLBOX_COPY_FIELDS_FIELDTREE_H_
#define TARNIX_ENGINES_TOOLBOX_COPY_FIELDS_FIELDTREE_H_

#include <cstdint>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "pdf/syntax/Arena.h"
#include "pdf/syntax/Object.h"

namespace TarnixTools::pdf {
class Document;
}  // namespace TarnixTools::pdf

namespace TarnixTools::engines::toolbox {

class SourceDocument;

class FieldTree {
 public:
  static constexpr std::uint32_t kNone = 0xFFFFFFFF;

  struct Node {
    std::uint32_t number = 0;                // of the object
    std::uint32_t parent = kNone;            // index of its node
    std::uint32_t calculation_rank = kNone;  // place in the order of calculation
    std::uint32_t depth : 8 = 0;
    std::uint32_t is_field : 1 = 0;      // rather than a widget and nothing else
    std::uint32_t is_widget : 1 = 0;     // a widget and, with is_field, a field in one object
    std::uint32_t has_type : 1 = 0;      // /FT is there, its own or inherited
    std::uint32_t is_signature : 1 = 0;  // that type
    std::uint32_t has_kids : 1 = 0;      // nodes whose parent it is
    std::uint32_t has_field_kids : 1 = 0;
  };

  // Reads the fields of the form dictionary; none when it is null.
  FieldTree(SourceDocument& source, const pdf::Object& form);

  // Fields before their kids, in the form's order; those adopted come last.
  const std::vector<Node>& nodes() const { return nodes_; }

  // Index of an object's node, or kNone.
  std::uint32_t Find(std::uint32_t number) const;

  // Takes in a widget that the form does not lead to, with what its /Parent leads to. number: 0 for
  // one that is no object of its own. Returns its node, for one without number that of its parent;
  // kNone when it belongs to no field that has a name and a type.
  std::uint32_t Adopt(std::uint32_t number, const pdf::Object& widget);

  // Whether a node is a field that has no fields below it, only widgets.
  static bool IsTerminal(const Node& node) {
    return node.is_field && node.has_type && !node.has_field_kids;
  }

  // How many such there are.
  std::uint32_t terminal_count() const { return terminal_count_; }

 private:
  struct Waiting {
    std::uint32_t number;
    std::uint32_t parent;
  };

  // The way from an object up to a node, or to where it ends.
  struct Climb {
    std::vector<std::uint32_t> numbers;  // the lowest first
    std::uint32_t above = kNone;         // the node that was reached
    bool has_name = false;
    bool has_type = false;
  };

  Climb ClimbFrom(std::uint32_t number, const pdf::Object& dictionary);
  std::uint32_t AddClimbed(const Climb& climb);
  void AddRoots(const pdf::Object& fields);
  void AddSubtree(std::uint32_t number, std::uint32_t parent);
  void AddNode(const Waiting& place, const pdf::Object& dictionary);
  bool IsNode(std::uint32_t number, const pdf::Object& dictionary) const;
  pdf::Object ResolveOnce(const pdf::Object& value);
  void RankCalculations(const pdf::Object& order);

  SourceDocument* source_;
  pdf::Document* document_;
  pdf::Arena arena_;
  std::vector<Node> nodes_;
  std::uint32_t terminal_count_ = 0;
  std::unordered_map<std::uint32_t, std::uint32_t> by_number_;  // kNone: looked at, but no node
  std::unordered_set<std::uint32_t> lists_;        // objects of /Kids that have been read
  std::unordered_set<std::uint32_t> passed_over_;  // parents that lead to no field
  std::vector<Waiting> waiting_;
};

}  // namespace TarnixTools::engines::toolbox

#endif  // TARNIX_ENGINES_TOOLBOX_COPY_FIELDS_FIELDTREE_H_
