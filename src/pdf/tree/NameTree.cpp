#include "pdf/tree/NameTree.h"

#include <unordered_set>
#include <vector>

namespace TarnixTools::pdf {

namespace {

class Reading {
 public:
  Reading(Document& document, const TakeNamed& take) : document_(&document), take_(&take) {}

  void Read(const Object& root) {
    Wait(root);
    while (!waiting_.empty()) {
      const Object node = waiting_.back();
      waiting_.pop_back();
      ReadNode(node);
    }
  }

 private:
  void Wait(const Object& node) {
    waiting_.push_back(node);
    direct_waiting_ += node.IsReference() ? 0 : 1;
  }

  void ReadNode(const Object& value) {
    // Nodes that are no objects of their own lie in the arena of the node they stand in.
    if (value.IsReference() && direct_waiting_ == 0) {
      arena_.Reset();
    }
    direct_waiting_ -= value.IsReference() ? 0 : 1;
    const Object node = ResolveOnce(value);
    ReadNames(ResolveOnce(node.Get("Names")));
    const auto kids = ResolveOnce(node.Get("Kids")).Items();
    for (auto kid = kids.rbegin(); kid != kids.rend(); ++kid) {
      if (kid->IsReference() || kid->IsDictionary()) {
        Wait(*kid);
      }
    }
  }

  void ReadNames(const Object& names) {
    const auto items = names.Items();
    for (std::size_t i = 0; i + 1 < items.size(); i += 2) {
      const Object name = ResolveOnce(items[i]);
      if (name.IsString()) {
        (*take_)(name.Text(), items[i + 1]);
      }
    }
  }

  // Null for an object that was resolved before.
  Object ResolveOnce(const Object& value) {
    Object current = value;
    while (current.IsReference()) {
      if (!seen_.insert(current.AsReference().number).second) {
        return {};
      }
      current = document_->Load(current.AsReference(), arena_);
    }
    return current;
  }

  Document* document_;
  const TakeNamed* take_;
  Arena arena_;
  std::vector<Object> waiting_;
  std::size_t direct_waiting_ = 0;  // those in waiting_ that are no references
  std::unordered_set<std::uint32_t> seen_;
};

}  // namespace

void ReadNameTree(Document& document, const Object& root, const TakeNamed& take) {
  if (root.IsReference() || root.IsDictionary()) {
    Reading(document, take).Read(root);
  }
}

}  // namespace TarnixTools::pdf
