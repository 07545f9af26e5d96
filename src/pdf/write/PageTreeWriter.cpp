#include "pdf/write/PageTreeWriter.h"

#include <algorithm>
#include <string>
#include <utility>

#include "pdf/write/Serialize.h"

namespace TarnixTools::pdf {

namespace {

constexpr std::size_t kFanOut = 64;

}  // namespace

PageTreeWriter::Leaf PageTreeWriter::AddPage() {
  const std::uint32_t page = writer_->Reserve();
  const std::uint32_t parent = LeafFor(pages_.size());
  pages_.push_back(page);
  return {page, parent};
}

std::uint32_t PageTreeWriter::LeafFor(std::size_t position) {
  const std::size_t leaf = position / kFanOut;
  while (leaves_.size() <= leaf) {
    leaves_.push_back(writer_->Reserve());
  }
  return leaves_[leaf];
}

// Level by level from the leaves up.
std::uint32_t PageTreeWriter::Finish() {
  LeafFor(0);
  std::vector<std::uint32_t> nodes = leaves_;
  std::vector<std::uint32_t> kids = pages_;
  std::size_t pages_per_node = kFanOut;
  for (;;) {
    std::vector<std::uint32_t> parents;
    if (nodes.size() > 1) {
      parents.resize((nodes.size() + kFanOut - 1) / kFanOut);
      std::generate(parents.begin(), parents.end(), [this] { return writer_->Reserve(); });
    }
    for (std::size_t i = 0; i < nodes.size(); ++i) {
      const std::size_t first_kid = std::min(i * kFanOut, kids.size());
      const std::size_t first_page = std::min(i * pages_per_node, pages_.size());
      WriteNode(nodes[i], parents.empty() ? 0 : parents[i / kFanOut], kids.data() + first_kid,
                std::min(kFanOut, kids.size() - first_kid),
                std::min(pages_per_node, pages_.size() - first_page));
    }
    if (parents.empty()) {
      return nodes.front();
    }
    kids = std::move(nodes);
    nodes = std::move(parents);
    pages_per_node *= kFanOut;
  }
}

void PageTreeWriter::WriteNode(std::uint32_t number, std::uint32_t parent,
                               const std::uint32_t* kids, std::size_t kid_count,
                               std::size_t page_count) {
  std::string text = "<</Type/Pages";
  if (parent != 0) {
    text += "/Parent";
    AppendReference(text, parent);
  }
  text += "/Kids[";
  for (std::size_t i = 0; i < kid_count; ++i) {
    AppendReference(text, kids[i]);
  }
  text += "]/Count";
  AppendInteger(text, static_cast<std::int64_t>(page_count));
  writer_->WriteObject(number, text + ">>");
}

}  // namespace TarnixTools::pdf
