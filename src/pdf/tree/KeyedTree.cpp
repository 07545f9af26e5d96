#include "pdf/tree/KeyedTree.h"

#include <span>
#include <unordered_set>
#include <vector>

namespace TarnixTools::pdf {

namespace {

class TreeReader {
 public:
  TreeReader(Document& document, std::string_view leaf_key,
             const std::function<void(const Object&, const Object&)>& visit)
      : document_(&document),
        leaf_key_(leaf_key),
        key_kind_(leaf_key == "Nums" ? Object::Kind::kInteger : Object::Kind::kString),
        visit_(&visit) {}

  TreeDamage Read(const Object& root) {
    Wait(root);
    while (!waiting_.empty()) {
      const Object node = waiting_.back();
      waiting_.pop_back();
      // Nodes that are no objects of their own lie in the arena of the node they stand in.
      if (node.IsReference() && direct_waiting_ == 0) {
        arena_.Reset();
      }
      direct_waiting_ -= node.IsReference() ? 0 : 1;
      ReadNode(ResolveOnce(node));
    }
    return damage_;
  }

 private:
  void Wait(const Object& node) {
    waiting_.push_back(node);
    direct_waiting_ += node.IsReference() ? 0 : 1;
  }

  void ReadNode(const Object& node) {
    damage_.nodes += node.IsNull() || node.IsDictionary() ? 0 : 1;
    ReadPairs(ResolveOnce(node.Get(leaf_key_)).Items());
    const auto kids = ResolveOnce(node.Get("Kids")).Items();
    for (auto kid = kids.rbegin(); kid != kids.rend(); ++kid) {
      if (kid->IsReference() || kid->IsDictionary()) {
        Wait(*kid);
      } else if (!kid->IsNull()) {
        ++damage_.nodes;
      }
    }
  }

  // Null for an object that was resolved before.
  Object ResolveOnce(const Object& value) {
    Object current = value;
    while (current.IsReference()) {
      if (!visited_.insert(current.AsReference().number).second) {
        ++damage_.loops;
        return {};
      }
      current = document_->Load(current.AsReference(), arena_);
    }
    return current;
  }

  void ReadPairs(std::span<const Object> items) {
    std::size_t i = 0;
    while (i + 1 < items.size()) {
      const Object key = ResolveOnce(items[i]);
      if (key.kind() != key_kind_) {
        ++i;  // perhaps the next one is a key
        ++damage_.entries;
        continue;
      }
      (*visit_)(key, items[i + 1]);
      i += 2;
    }
    damage_.entries += items.size() - i;
  }

  Document* document_;
  std::string_view leaf_key_;
  Object::Kind key_kind_;
  const std::function<void(const Object&, const Object&)>* visit_;
  Arena arena_;
  std::vector<Object> waiting_;
  std::size_t direct_waiting_ = 0;  // those in waiting_ that are no references
  std::unordered_set<std::uint32_t> visited_;
  TreeDamage damage_;
};

}  // namespace

TreeDamage ForEachInTree(Document& document, const Object& root, std::string_view leaf_key,
                         const std::function<void(const Object& key, const Object& value)>& visit) {
  return TreeReader(document, leaf_key, visit).Read(root);
}

}  // namespace TarnixTools::pdf
