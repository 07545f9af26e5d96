#include "pdf/write/TreeWriter.h"

#include <cstdint>

#include "pdf/write/Serialize.h"

namespace TarnixTools::pdf {

namespace {

constexpr std::size_t kTreeFanOut = 64;

}  // namespace

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
