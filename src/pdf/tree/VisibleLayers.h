// Which layers of a document are seen (ISO 32000-2, 8.11), in its default configuration.
#ifndef TARNIX_PDF_TREE_VISIBLELAYERS_H_
#define TARNIX_PDF_TREE_VISIBLELAYERS_H_

#include <cstdint>
#include <optional>
#include <unordered_set>

#include "pdf/file/Document.h"

namespace TarnixTools::pdf {

class VisibleLayers {
 public:
  // The document outlives this. Throws Error for one that cannot be read any more.
  explicit VisibleLayers(Document& document);

  // Whether content that belongs to this is seen: a reference to an optional content group or to a
  // membership dictionary, or such a dictionary itself. Everything else is seen.
  bool IsSeen(const Object& membership) const;

 private:
  bool IsGroupSeen(const Object& group) const;
  bool IsMembershipSeen(const Object& membership, Arena& arena) const;
  bool IsSeenByPolicy(const Object& membership, Arena& arena) const;
  std::optional<bool> Evaluate(const Object& expression, Arena& arena) const;

  Document* document_;
  bool has_layers_ = false;
  bool is_seen_by_default_ = true;
  std::unordered_set<std::uint32_t> exceptions_;  // groups with the other state
};

}  // namespace TarnixTools::pdf

#endif  // TARNIX_PDF_TREE_VISIBLELAYERS_H_
