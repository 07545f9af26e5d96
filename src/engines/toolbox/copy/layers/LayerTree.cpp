#include "engines/toolbox/copy/layers/LayerTree.h"

#include <algorithm>

#include "pdf/write/Serialize.h"

namespace TarnixTools::engines::toolbox {

namespace {

const KeptLayer* FindKept(std::span<const KeptLayer> kept, std::uint32_t index) {
  const auto found = std::lower_bound(
      kept.begin(), kept.end(), index,
      [](const KeptLayer& layer, std::uint32_t wanted) { return layer.index < wanted; });
  return found != kept.end() && found->index == index ? &*found : nullptr;
}

}  // namespace

LayerTree::OpenList& LayerTree::Top() {
  return open_.empty() ? outside_ : open_.back();
}

std::uint32_t LayerTree::Add(Kind kind, std::uint32_t value) {
  const auto index = static_cast<std::uint32_t>(nodes_.size());
  Node& node = nodes_.emplace_back(Node{kind});
  node.value = value;
  node.parent = Top().node;
  node.label = Top().label;
  node.end = index + 1;
  return index;
}

std::uint32_t LayerTree::AddText(std::string text) {
  texts_.push_back(std::move(text));
  return static_cast<std::uint32_t>(texts_.size() - 1);
}

void LayerTree::AddLayer(std::uint32_t index) {
  const std::uint32_t node = Add(Kind::kLayer, index);
  Top().previous_layer = node;
  places_.emplace_back(index, node);
}

void LayerTree::AddLabel(std::string text) {
  OpenList& list = Top();
  if (list.node != kNone && nodes_.size() == list.node + std::size_t{1}) {
    nodes_[list.node].owner = kNone;  // a labelled list is a collection of its own
  }
  const std::uint32_t node = Add(Kind::kLabel, AddText(std::move(text)));
  nodes_[node].label = kNone;
  list.label = node;
  list.previous_layer = kNone;
}

void LayerTree::Open(std::string opening) {
  const std::uint32_t node = Add(Kind::kList, AddText(std::move(opening)));
  nodes_[node].owner = Top().previous_layer;
  Top().previous_layer = kNone;
  open_.push_back({node});
}

void LayerTree::Close(std::string_view closing) {
  Node& node = nodes_[open_.back().node];
  node.end = static_cast<std::uint32_t>(nodes_.size());
  if (closing != "]") {
    node.closing = AddText(std::string(closing));
  }
  open_.pop_back();
}

void LayerTree::Finish() {
  std::sort(places_.begin(), places_.end());
}

// The nodes that lead to kept layers, those included, in order.
std::vector<std::uint32_t> LayerTree::NodesOf(std::span<const KeptLayer> kept) const {
  std::vector<std::uint32_t> chosen;
  std::vector<bool> is_chosen(nodes_.size());
  for (const KeptLayer& layer : kept) {
    auto place = std::lower_bound(places_.begin(), places_.end(), std::pair(layer.index, 0U));
    for (; place != places_.end() && place->first == layer.index; ++place) {
      for (std::uint32_t node = place->second; node != kNone && !is_chosen[node];
           node = nodes_[node].parent) {
        is_chosen[node] = true;
        chosen.push_back(node);
        const std::uint32_t label = nodes_[node].label;
        if (label != kNone && !is_chosen[label]) {
          is_chosen[label] = true;
          chosen.push_back(label);
        }
      }
    }
  }
  std::sort(chosen.begin(), chosen.end());
  return chosen;
}

void LayerTree::AppendNode(std::string& out, const Node& node,
                           std::span<const KeptLayer> kept) const {
  if (node.kind == Kind::kLayer) {
    pdf::AppendReference(out, FindKept(kept, node.value)->target_number);
  } else {
    out += texts_[node.value];
  }
}

void LayerTree::AppendKept(std::string& out, std::span<const KeptLayer> kept) const {
  std::vector<const Node*> open;
  const auto close_before = [&](std::uint32_t index) {
    while (!open.empty() && open.back()->end <= index) {
      out += open.back()->closing == kNone ? std::string_view("]")
                                           : std::string_view(texts_[open.back()->closing]);
      open.pop_back();
    }
  };
  for (const std::uint32_t index : NodesOf(kept)) {
    const Node& node = nodes_[index];
    close_before(index);
    // What belonged under a layer that is not there moves up into that layer's place.
    if (node.owner != kNone && FindKept(kept, nodes_[node.owner].value) == nullptr) {
      continue;
    }
    AppendNode(out, node, kept);
    if (node.kind == Kind::kList) {
      open.push_back(&node);
    }
  }
  close_before(kNone);
}

}  // namespace TarnixTools::engines::toolbox
