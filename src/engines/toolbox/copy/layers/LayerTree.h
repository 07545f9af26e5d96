// Lists that name layers, nested as they may be, of which a copy keeps the layers that came along:
// what leads to none of them goes.
#ifndef TARNIX_ENGINES_TOOLBOX_COPY_LAYERS_LAYERTREE_H_
#define TARNIX_ENGINES_TOOLBOX_COPY_LAYERS_LAYERTREE_H_

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace TarnixTools::engines::toolbox {

// A layer that came along: its index among those of the source, and its number in the target.
struct KeptLayer {
  std::uint32_t index = 0;
  std::uint32_t target_number = 0;
};

class LayerTree {
 public:
  // Built from first to last. A list opened right after a layer holds what belongs under that
  // layer, unless it begins with a label.
  void AddLayer(std::uint32_t index);
  // Text for people; goes with what follows up to the next label. `text` is a PDF string.
  void AddLabel(std::string text);
  // What is added up to the matching Close is in the list. opening: what is written in front of it.
  void Open(std::string opening = "[");
  void Close(std::string_view closing = "]");

  bool is_empty() const { return nodes_.empty(); }

  std::size_t depth() const { return open_.size(); }

  // Once, when all is added.
  void Finish();

  // Appends what is left when only these layers are there, which are sorted by index: the items
  // without brackets around them. The work is in proportion to what is left.
  void AppendKept(std::string& out, std::span<const KeptLayer> kept) const;

 private:
  static constexpr std::uint32_t kNone = 0xFFFFFFFF;

  enum class Kind : std::uint8_t { kLayer, kLabel, kList };

  struct Node {
    Kind kind;
    std::uint32_t value = 0;        // index of the layer, or of a label's or a list's text
    std::uint32_t closing = kNone;  // index of the text after a list; none: "]"
    std::uint32_t parent = kNone;   // the list that it is in
    std::uint32_t label = kNone;    // the label that it goes with
    std::uint32_t owner = kNone;    // of a list: the layer that it belongs under
    std::uint32_t end = 0;          // index after its last descendant
  };

  // Where adding goes on in an open list.
  struct OpenList {
    std::uint32_t node = kNone;
    std::uint32_t label = kNone;
    std::uint32_t previous_layer = kNone;  // when it is what was added last
  };

  OpenList& Top();
  std::uint32_t Add(Kind kind, std::uint32_t value);
  std::uint32_t AddText(std::string text);
  std::vector<std::uint32_t> NodesOf(std::span<const KeptLayer> kept) const;
  void AppendNode(std::string& out, const Node& node, std::span<const KeptLayer> kept) const;

  std::vector<Node> nodes_;  // each before what is in it
  std::vector<std::string> texts_;
  std::vector<OpenList> open_;
  OpenList outside_;
  std::vector<std::pair<std::uint32_t, std::uint32_t>> places_;  // layer and node, sorted
};

}  // namespace TarnixTools::engines::toolbox

#endif  // TARNIX_ENGINES_TOOLBOX_COPY_LAYERS_LAYERTREE_H_
