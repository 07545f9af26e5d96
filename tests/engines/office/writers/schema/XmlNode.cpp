#include "engines/office/writers/schema/XmlNode.h"

#include <algorithm>

#include <gtest/gtest.h>

#include "engines/support/metadata/XmlScanner.h"

namespace TarnixTools::engines::office {

namespace {

XmlNode NodeOf(const XmlScanner& scanner) {
  XmlNode node;
  node.name = scanner.tag().name;
  for (const engines::XmlAttribute& attribute : scanner.attributes()) {
    node.attributes.emplace_back(attribute.name, ExpandXml(attribute.Content()).value_or("?"));
  }
  return node;
}

void AddAll(const XmlNode& node, std::string_view name, std::vector<const XmlNode*>& found) {
  if (node.name == name) {
    found.push_back(&node);
  }
  for (const XmlNode& child : node.children) {
    AddAll(child, name, found);
  }
}

}  // namespace

const std::string* XmlNode::Attribute(std::string_view attribute) const {
  const auto found = std::ranges::find(
      attributes, attribute, [](const auto& entry) -> const auto& { return entry.first; });
  return found == attributes.end() ? nullptr : &found->second;
}

XmlNode ParsedXml(std::string_view xml) {
  XmlScanner scanner(xml, XmlScanner::Characters::kKeep);
  std::vector<XmlNode> open(1);  // the first has the root
  while (scanner.Next()) {
    open.back().text += open.size() > 1 ? scanner.characters() : "";
    if (scanner.tag().kind != XmlTag::Kind::kEnd) {
      open.push_back(NodeOf(scanner));
    }
    if (scanner.tag().kind != XmlTag::Kind::kStart) {
      if (open.size() < 2 || open.back().name != scanner.tag().name) {
        ADD_FAILURE() << "a stray end of " << scanner.tag().name;
        return {};
      }
      XmlNode closed = std::move(open.back());
      open.pop_back();
      open.back().children.push_back(std::move(closed));
    }
  }
  EXPECT_FALSE(scanner.is_malformed()) << xml.substr(0, 200);
  EXPECT_EQ(open.size(), 1u) << open.back().name << " is not closed";
  EXPECT_EQ(open.front().children.size(), 1u) << "roots";
  return open.front().children.empty() ? XmlNode() : open.front().children.front();
}

std::vector<const XmlNode*> All(const XmlNode& node, std::string_view name) {
  std::vector<const XmlNode*> found;
  AddAll(node, name, found);
  return found;
}

std::vector<std::string> Values(const XmlNode& node, std::string_view name,
                                std::string_view attribute) {
  std::vector<std::string> values;
  for (const XmlNode* found : All(node, name)) {
    const std::string* value = found->Attribute(attribute);
    values.push_back(value == nullptr ? "-" : *value);
  }
  return values;
}

std::string Shown(const XmlNode& node) {
  std::string shown = "<" + node.name;
  for (const auto& [name, value] : node.attributes) {
    shown += " " + name + "=\"" + value + "\"";
  }
  if (node.children.empty() && node.text.empty()) {
    return shown + "/>";
  }
  shown += ">" + node.text;
  for (const XmlNode& child : node.children) {
    shown += Shown(child);
  }
  return shown + "</" + node.name + ">";
}

std::string ShownAll(const XmlNode& node, std::string_view name) {
  std::string shown;
  for (const XmlNode* found : All(node, name)) {
    shown += Shown(*found) + "\n";
  }
  return shown;
}

std::string TextWithin(const XmlNode& node) {
  std::string text = node.text;
  for (const XmlNode& child : node.children) {
    text += TextWithin(child);
  }
  return text;
}

}  // namespace TarnixTools::engines::office
