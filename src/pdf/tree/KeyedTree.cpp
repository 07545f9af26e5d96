#include "pdf/tree/KeyedTree.h"

#include <algorithm>
#include <span>
#include <unordered_set>

#include "pdf/write/Serialize.h"

namespace TarnixTools::pdf {

namespace {

constexpr std::size_t kTreeFanOut = 64;

class TreeReader {
 public:
  TreeReader(Document& document, std::string_view leaf_key,
             const std::function<void(const Object&, const Object&)>& visit)
      : document_(&document),
        leaf_key_(leaf_key),
        key_kind_(leaf_key == "Nums" ? Object::Kind::kInteger : Object::Kind::kString),
        visit_(&visit) {}

  void Read(const Object& root) {
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
  }

 private:
  void Wait(const Object& node) {
    waiting_.push_back(node);
    direct_waiting_ += node.IsReference() ? 0 : 1;
  }

  void ReadNode(const Object& node) {
    ReadPairs(ResolveOnce(node.Get(leaf_key_)).Items());
    const auto kids = ResolveOnce(node.Get("Kids")).Items();
    for (auto kid = kids.rbegin(); kid != kids.rend(); ++kid) {
      if (kid->IsReference() || kid->IsDictionary()) {
        Wait(*kid);
      }
    }
  }

  // Null for an object that was resolved before.
  Object ResolveOnce(const Object& value) {
    Object current = value;
    while (current.IsReference()) {
      if (!visited_.insert(current.AsReference().number).second) {
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
        continue;
      }
      (*visit_)(key, items[i + 1]);
      i += 2;
    }
  }

  Document* document_;
  std::string_view leaf_key_;
  Object::Kind key_kind_;
  const std::function<void(const Object&, const Object&)>* visit_;
  Arena arena_;
  std::vector<Object> waiting_;
  std::size_t direct_waiting_ = 0;  // those in waiting_ that are no references
  std::unordered_set<std::uint32_t> visited_;
};

}  // namespace

void ForEachInTree(Document& document, const Object& root, std::string_view leaf_key,
                   const std::function<void(const Object& key, const Object& value)>& visit) {
  TreeReader(document, leaf_key, visit).Read(root);
}

void TreeWriter::Add(std::string_view key, std::string_view value) {
  std::string pair(key);
  AppendToken(pair, value);
  AddTo(0, key, key, pair);
}

void TreeWriter::AddTo(std::size_t level, std::string_view first_key, std::string_view last_key,
                       std::string_view text) {
  if (level == levels_.size()) {
    levels_.emplace_back();
  }
  if (levels_[level].count == kTreeFanOut) {
    WriteNode(level);
  }
  Level& node = levels_[level];
  if (node.count++ == 0) {
    node.first_key = first_key;
  }
  node.last_key = last_key;
  AppendToken(node.text, text);
}

// Writes the node that a level has gathered and hands it up.
void TreeWriter::WriteNode(std::size_t level) {
  const Level node = std::move(levels_[level]);
  levels_[level] = {};
  const std::uint32_t number = writer_->Reserve();
  std::string text = "<</Limits[" + node.first_key;
  AppendToken(text, node.last_key);
  text += "]/" + (level == 0 ? leaf_key_ : "Kids") + '[' + node.text + "]>>";
  writer_->WriteObject(number, text);
  std::string reference;
  AppendReference(reference, number);
  AddTo(level + 1, node.first_key, node.last_key, reference);
}

std::string TreeWriter::Finish() {
  for (std::size_t level = 0; level + 1 < levels_.size(); ++level) {
    if (levels_[level].count > 0) {
      WriteNode(level);
    }
  }
  if (levels_.empty()) {
    return "<</" + leaf_key_ + "[]>>";
  }
  const std::string key = levels_.size() == 1 ? leaf_key_ : "Kids";
  return "<</" + key + '[' + levels_.back().text + "]>>";
}

}  // namespace TarnixTools::pdf
