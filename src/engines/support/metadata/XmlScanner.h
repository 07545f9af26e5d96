// Reads XML tag by tag, without a tree: start tags with their attributes, and end tags. Comments,
// character data and processing instructions are passed over.
#ifndef TARNIX_ENGINES_SUPPORT_METADATA_XMLSCANNER_H_
#define TARNIX_ENGINES_SUPPORT_METADATA_XMLSCANNER_H_

#include <cstddef>
#include <string_view>
#include <vector>

namespace TarnixTools::engines {

struct XmlAttribute {
  std::string_view name;   // with its prefix
  std::string_view value;  // as written, with its quotes
  std::size_t begin = 0;   // of the white space before it
  std::size_t end = 0;
};

struct XmlTag {
  enum class Kind : unsigned char { kStart, kEmpty, kEnd };

  Kind kind = Kind::kStart;
  std::string_view name;  // with its prefix
  std::size_t begin = 0;  // of "<"
  std::size_t end = 0;    // after ">"
};

class XmlScanner {
 public:
  // The text outlives the scanner.
  explicit XmlScanner(std::string_view text) : text_(text) {}

  // Goes to the next tag; false at the end of the text, and at what is no XML or declares a
  // document type.
  bool Next();

  bool is_malformed() const { return is_malformed_; }

  const XmlTag& tag() const { return tag_; }

  // Of the current start tag.
  const std::vector<XmlAttribute>& attributes() const { return attributes_; }

 private:
  bool SkipMarkup();
  bool ReadTag();
  bool ReadAttribute();
  bool SkipPast(std::string_view mark);
  bool SkipSpace();
  std::string_view ReadName();
  bool Fail();

  std::string_view text_;
  std::size_t at_ = 0;
  XmlTag tag_;
  std::vector<XmlAttribute> attributes_;
  bool is_malformed_ = false;
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_METADATA_XMLSCANNER_H_
