// Writes XML as it comes, without holding it: elements are opened and closed in order.
//
//   XmlWriter xml(sink);
//   xml.Open("w:p");
//   xml.Leaf("w:jc", {{"w:val", "center"}});
//   xml.Element("w:t", "text", {{"xml:space", "preserve"}});
//   xml.Close();
//
// Text is UTF-8; characters that XML 1.0 forbids (2.2) are left out, and what is malformed is
// U+FFFD. Names are literals.
#ifndef TARNIX_ENGINES_OFFICE_WRITERS_PACKAGE_XMLWRITER_H_
#define TARNIX_ENGINES_OFFICE_WRITERS_PACKAGE_XMLWRITER_H_

#include <concepts>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "pdf/file/ByteSink.h"

namespace TarnixTools::engines::office {

struct XmlAttribute {
  XmlAttribute(std::string_view attribute, std::string_view text) : name(attribute), value(text) {}

  template <std::integral Number>
  XmlAttribute(std::string_view attribute, Number number)
      : name(attribute), value(std::to_string(number)) {}

  std::string_view name;
  std::string value;
};

using XmlAttributes = std::initializer_list<XmlAttribute>;

class XmlWriter {
 public:
  // Begins with the declaration. The sink outlives this, and has everything after Finish.
  explicit XmlWriter(pdf::ByteSink& sink);

  void Open(std::string_view name, XmlAttributes attributes = {});
  // One more of the element that was opened last, before anything is in it.
  void Attribute(const XmlAttribute& attribute);
  void Text(std::string_view text);
  // The element that was opened last.
  void Close();

  // An element without content.
  void Leaf(std::string_view name, XmlAttributes attributes = {}) {
    Open(name, attributes);
    Close();
  }

  // An element with text only.
  void Element(std::string_view name, std::string_view text, XmlAttributes attributes = {}) {
    Open(name, attributes);
    Text(text);
    Close();
  }

  // Closes what is open, and hands over what was held back.
  void Finish();

 private:
  void EndTag();
  void Append(std::string_view text);
  void AppendEscaped(std::string_view text, bool is_attribute);
  void FlushIfLong();

  pdf::ByteSink* sink_;
  std::string held_;
  std::vector<std::string_view> open_;
  bool is_tag_open_ = false;
};

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_ENGINES_OFFICE_WRITERS_PACKAGE_XMLWRITER_H_
