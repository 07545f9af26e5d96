// Reads XML tag by tag, without a tree: start tags with their attributes, and end tags. Comments and
// processing instructions are passed over, and character data unless it is asked for. No entities
// are expanded but the five of XML itself and character references.
#ifndef TARNIX_ENGINES_SUPPORT_METADATA_XMLSCANNER_H_
#define TARNIX_ENGINES_SUPPORT_METADATA_XMLSCANNER_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace TarnixTools::engines {

struct XmlAttribute {
  std::string_view name;   // with its prefix
  std::string_view value;  // as written, with its quotes
  std::size_t begin = 0;   // of the white space before it
  std::size_t end = 0;

  // As written, without its quotes.
  std::string_view Content() const { return value.substr(1, value.size() - 2); }
};

struct XmlTag {
  enum class Kind : unsigned char { kStart, kEmpty, kEnd };

  Kind kind = Kind::kStart;
  std::string_view name;  // with its prefix
  std::size_t begin = 0;  // of "<"
  std::size_t end = 0;    // after ">"
};

// A text with its references expanded; nullopt for one to another entity or to no character of XML.
std::optional<std::string> ExpandXml(std::string_view raw);

bool IsXmlCharacter(char32_t character);

class XmlScanner {
 public:
  enum class Characters : std::uint8_t { kPassOver, kKeep };

  // The text outlives the scanner.
  explicit XmlScanner(std::string_view text, Characters characters = Characters::kPassOver)
      : text_(text), keeps_characters_(characters == Characters::kKeep) {}

  // Goes to the next tag; false at the end of the text, and at what is no XML or declares a
  // document type.
  bool Next();

  bool is_malformed() const { return is_malformed_; }

  const XmlTag& tag() const { return tag_; }

  // What is kept of the character data between the tag before and this one, or the text's end.
  const std::string& characters() const { return characters_; }

  // Of the current start tag.
  const std::vector<XmlAttribute>& attributes() const { return attributes_; }

 private:
  bool GoToMarkup();
  bool SkipMarkup();
  bool SkipSection();
  bool ReadTag();
  bool ReadAttribute();
  bool SkipPast(std::string_view mark);
  bool SkipSpace();
  std::string_view ReadName();
  bool Fail();

  std::string_view text_;
  bool keeps_characters_;
  std::size_t at_ = 0;
  XmlTag tag_;
  std::vector<XmlAttribute> attributes_;
  std::string characters_;
  bool is_malformed_ = false;
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_METADATA_XMLSCANNER_H_
