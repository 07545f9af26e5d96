// A part of a package as a tree, for tests that ask what an element has.
//
//   const XmlNode body = ParsedXml(parts.at("word/document.xml"));
//   EXPECT_EQ(Shown(*All(body, "w:jc").front()), "<w:jc w:val=\"center\"/>");
#ifndef TARNIX_TESTS_ENGINES_OFFICE_WRITERS_SCHEMA_XMLNODE_H_
#define TARNIX_TESTS_ENGINES_OFFICE_WRITERS_SCHEMA_XMLNODE_H_

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace TarnixTools::engines::office {

struct XmlNode {
  std::string name;                                             // with its prefix
  std::vector<std::pair<std::string, std::string>> attributes;  // as they are written
  std::string text;                                             // of its own
  std::vector<XmlNode> children;

  // Null for an attribute that it does not have.
  const std::string* Attribute(std::string_view attribute) const;
};

// The root. What is no XML, or is not closed, is a failure of the test.
XmlNode ParsedXml(std::string_view xml);

// The elements of a name within one, in their order, that element included.
std::vector<const XmlNode*> All(const XmlNode& node, std::string_view name);
std::vector<const XmlNode*> All(XmlNode&& node, std::string_view name) = delete;

// What the attribute is of all elements of a name, in their order; "-" for one without it.
std::vector<std::string> Values(const XmlNode& node, std::string_view name,
                                std::string_view attribute);

// As it is written, in one line.
std::string Shown(const XmlNode& node);

// The elements of a name within one as they are written, a line each.
std::string ShownAll(const XmlNode& node, std::string_view name);

// All text within the element.
std::string TextWithin(const XmlNode& node);

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_TESTS_ENGINES_OFFICE_WRITERS_SCHEMA_XMLNODE_H_
