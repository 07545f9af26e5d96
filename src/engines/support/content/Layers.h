// Which layers of a document are seen (ISO 32000-2, 8.11), in its default configuration.
#ifndef TARNIX_ENGINES_SUPPORT_CONTENT_LAYERS_H_
#define TARNIX_ENGINES_SUPPORT_CONTENT_LAYERS_H_

#include <cstdint>
#include <unordered_set>

#include "pdf/file/Document.h"

namespace TarnixTools::engines {

class Layers {
 public:
  // The document outlives this. Throws pdf::Error for one that cannot be read any more.
  explicit Layers(pdf::Document& document);

  // Whether content that belongs to this is seen: a reference to an optional content group or to a
  // membership dictionary, or such a dictionary itself. Everything else is seen.
  bool IsSeen(const pdf::Object& membership) const;

 private:
  bool IsGroupSeen(const pdf::Object& group) const;
  bool IsMembershipSeen(const pdf::Object& membership, pdf::Arena& arena) const;

  pdf::Document* document_;
  bool has_layers_ = false;
  bool is_seen_by_default_ = true;
  std::unordered_set<std::uint32_t> exceptions_;  // groups with the other state
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_CONTENT_LAYERS_H_
