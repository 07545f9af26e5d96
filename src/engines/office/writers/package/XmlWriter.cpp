#include "engines/office/writers/package/XmlWriter.h"

#include "engines/support/metadata/XmlScanner.h"
#include "foundation/Utf8.h"

namespace TarnixTools::engines::office {

namespace {

constexpr std::size_t kHeldBytes = 1 << 15;

// Empty for a character that stands for itself. A tabulator or a line's end of an attribute would
// be read as a space.
std::string_view EscapeOf(char32_t character, bool is_attribute) {
  switch (character) {
    case '&':
      return "&amp;";
    case '<':
      return "&lt;";
    case '>':
      return "&gt;";
    case '"':
      return is_attribute ? "&quot;" : "";
    case '\t':
      return is_attribute ? "&#9;" : "";
    case '\n':
      return is_attribute ? "&#10;" : "";
    case '\r':
      return "&#13;";
    default:
      return "";
  }
}

}  // namespace

XmlWriter::XmlWriter(pdf::ByteSink& sink) : sink_(&sink) {
  held_ = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n";
}

void XmlWriter::Open(std::string_view name, XmlAttributes attributes) {
  EndTag();
  Append("<");
  Append(name);
  open_.push_back(name);
  is_tag_open_ = true;
  for (const XmlAttribute& attribute : attributes) {
    Attribute(attribute);
  }
}

void XmlWriter::Attribute(const XmlAttribute& attribute) {
  Append(" ");
  Append(attribute.name);
  Append("=\"");
  AppendEscaped(attribute.value, true);
  Append("\"");
}

void XmlWriter::Text(std::string_view text) {
  EndTag();
  AppendEscaped(text, false);
  FlushIfLong();
}

void XmlWriter::Close() {
  if (is_tag_open_) {
    Append("/>");
    is_tag_open_ = false;
  } else {
    Append("</");
    Append(open_.back());
    Append(">");
  }
  open_.pop_back();
  FlushIfLong();
}

void XmlWriter::Finish() {
  while (!open_.empty()) {
    Close();
  }
  sink_->Write(held_);
  held_.clear();
}

void XmlWriter::EndTag() {
  if (is_tag_open_) {
    Append(">");
    is_tag_open_ = false;
  }
}

void XmlWriter::Append(std::string_view text) {
  held_ += text;
}

void XmlWriter::AppendEscaped(std::string_view text, bool is_attribute) {
  while (!text.empty()) {
    const DecodedCharacter next = DecodeUtf8(text);
    const std::string_view escape = EscapeOf(next.character, is_attribute);
    if (!escape.empty()) {
      held_ += escape;
    } else if (IsXmlCharacter(next.character)) {
      AppendUtf8(held_, next.character);
    }
    text.remove_prefix(next.length);
  }
}

void XmlWriter::FlushIfLong() {
  if (held_.size() >= kHeldBytes) {
    sink_->Write(held_);
    held_.clear();
  }
}

}  // namespace TarnixTools::engines::office
