#include "pdf/write/NameTreeWriter.h"

#include <algorithm>
#include <span>

#include "pdf/write/Serialize.h"

namespace TarnixTools::pdf {

namespace {

constexpr std::size_t kFanOut = 64;

struct Node {
  std::uint32_t number;
  const std::string* first;
  const std::string* last;
};

std::string TextOfLeaf(std::span<const NamedObject> objects) {
  std::string text = "/Names[";
  for (const NamedObject& object : objects) {
    AppendString(text, object.name, false);
    AppendReference(text, object.number);
  }
  return text + "]";
}

std::string TextOfNode(std::span<const Node> kids) {
  std::string text = "/Kids[";
  for (const Node& kid : kids) {
    AppendReference(text, kid.number);
  }
  return text + "]";
}

// The root has no limits.
Node WriteNode(FileWriter& writer, std::string text, const std::string& first,
               const std::string& last, bool is_root) {
  if (!is_root) {
    text += "/Limits[";
    AppendString(text, first, false);
    AppendString(text, last, false);
    text += ']';
  }
  const std::uint32_t number = writer.Reserve();
  writer.WriteObject(number, "<<" + text + ">>");
  return {number, &first, &last};
}

}  // namespace

std::uint32_t WriteNameTree(FileWriter& writer, std::vector<NamedObject> objects) {
  std::sort(objects.begin(), objects.end(),
            [](const NamedObject& a, const NamedObject& b) { return a.name < b.name; });
  const std::span<const NamedObject> all = objects;
  std::vector<Node> nodes;
  for (std::size_t i = 0; i < all.size(); i += kFanOut) {
    const auto part = all.subspan(i, std::min(kFanOut, all.size() - i));
    nodes.push_back(WriteNode(writer, TextOfLeaf(part), part.front().name, part.back().name,
                              all.size() <= kFanOut));
  }
  while (nodes.size() > 1) {
    std::vector<Node> parents;
    for (std::size_t i = 0; i < nodes.size(); i += kFanOut) {
      const auto kids =
          std::span<const Node>(nodes).subspan(i, std::min(kFanOut, nodes.size() - i));
      parents.push_back(WriteNode(writer, TextOfNode(kids), *kids.front().first, *kids.back().last,
                                  nodes.size() <= kFanOut));
    }
    nodes = std::move(parents);
  }
  if (nodes.empty()) {
    const std::uint32_t number = writer.Reserve();
    writer.WriteObject(number, "<</Names[]>>");
    return number;
  }
  return nodes.front().number;
}

}  // namespace TarnixTools::pdf
