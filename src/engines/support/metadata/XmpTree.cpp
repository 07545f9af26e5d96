#include "engines/support/metadata/XmpTree.h"

#include <algorithm>
#include <array>
#include <utility>

#include "engines/support/metadata/MetadataLimits.h"
#include "engines/support/metadata/RdfReader.h"
#include "engines/support/metadata/XmlNamespaces.h"
#include "engines/support/metadata/XmlScanner.h"
#include "foundation/Utf8.h"

namespace TarnixTools::engines {

namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

bool IsXmlText(std::string_view text) {
  while (!text.empty()) {
    const DecodedCharacter decoded = DecodeUtf8(text);
    if (!decoded.is_well_formed || !IsXmlCharacter(decoded.character)) {
      return false;
    }
    text.remove_prefix(decoded.length);
  }
  return true;
}

// The mark of the encoding that a header has is often spoiled by programs that take it for text;
// readers of XMP do not look at it.
std::string_view AfterHeader(std::string_view text) {
  const std::size_t start = text.find("<?xpacket");
  const std::size_t end = text.find("?>", start);
  return start <= kUtf8Mark.size() && end != std::string_view::npos ? text.substr(end) : text;
}

bool IsXmlName(std::string_view name) {
  constexpr std::string_view kNotFirst = "-.0123456789:";
  constexpr std::string_view kNotInNames = "!\"#$%&'()*+,/;<=>?@[\\]^`{|}~";
  const std::string_view local = XmlLocalPart(name);
  return !name.empty() && !local.empty() &&
         kNotFirst.find(name.front()) == std::string_view::npos &&
         kNotFirst.find(local.front()) == std::string_view::npos &&
         std::count(name.begin(), name.end(), ':') <= 1 &&
         name.find_first_of(kNotInNames) == std::string_view::npos;
}

bool HasDuplicates(const std::vector<XmlAttribute>& attributes) {
  std::vector<std::string_view> names;
  names.reserve(attributes.size());
  for (const XmlAttribute& attribute : attributes) {
    names.push_back(attribute.name);
  }
  std::sort(names.begin(), names.end());
  return std::adjacent_find(names.begin(), names.end()) != names.end();
}

std::optional<XmpHeader> HeaderOf(std::string_view text) {
  const std::size_t start = text.find("<?xpacket");
  if (start == std::string_view::npos) {
    return std::nullopt;
  }
  const std::string_view header = text.substr(start, text.find("?>", start) - start);
  const auto has = [&](std::string_view name) {
    const std::size_t found = header.find(name);
    return found != std::string_view::npos &&
           header.find_first_not_of(" \t\r\n", found + name.size()) == header.find('=', found);
  };
  return XmpHeader{has(" bytes"), has(" encoding")};
}

// Line ends and tabs in an attribute are spaces (XML 1.0, 3.3.3).
std::string WithSpaces(std::string_view raw) {
  std::string text(raw);
  std::replace_if(
      text.begin(), text.end(), [](char c) { return c == '\t' || c == '\r' || c == '\n'; }, ' ');
  return text;
}

// Reads XML and hands on what is below the first rdf:RDF.
class PacketReader {
 public:
  explicit PacketReader(std::string_view text) : scanner_(text, XmlScanner::Characters::kKeep) {}

  XmpState Read();

  std::vector<XmpNode> TakeProperties() { return rdf_.TakeProperties(); }

 private:
  struct Open {
    std::string_view name;
    std::size_t namespace_count;  // that held before it
  };

  // Each is false when reading is over; the state tells why.
  bool ReadText();
  bool ReadStart();
  bool ReadEnd();
  bool ReadAttributes(std::vector<RdfAttribute>& attributes);
  bool TakeName(std::string_view name, bool is_attribute, XmlQName& resolved);

  bool IsInRdf() const { return rdf_depth_ && open_.size() > *rdf_depth_; }

  bool Stop(XmpState state) {
    state_ = state;
    return false;
  }

  bool StopUnless(bool is_fine, XmpState state) { return is_fine || Stop(state); }

  XmlScanner scanner_;
  XmlNamespaces namespaces_;
  RdfReader rdf_;
  std::vector<Open> open_;
  std::optional<std::size_t> rdf_depth_;  // of the first rdf:RDF
  bool is_rdf_over_ = false;
  bool is_root_over_ = false;
  XmpState state_ = XmpState::kFine;
};

XmpState PacketReader::Read() {
  while (scanner_.Next()) {
    const bool is_end = scanner_.tag().kind == XmlTag::Kind::kEnd;
    if (!ReadText() || !(is_end ? ReadEnd() : ReadStart())) {
      return state_;
    }
  }
  if (scanner_.is_malformed() || !open_.empty() || !is_root_over_ || !ReadText()) {
    return XmpState::kMalformed;
  }
  return !rdf_depth_ ? XmpState::kNoRdf : rdf_.Finish() ? XmpState::kFine : XmpState::kBadRdf;
}

bool PacketReader::ReadText() {
  const std::string& characters = scanner_.characters();
  if (open_.empty()) {
    return StopUnless(characters.find_first_not_of(" \t\r\n") == std::string::npos,
                      XmpState::kMalformed);
  }
  return !IsInRdf() || is_rdf_over_ || StopUnless(rdf_.Text(characters), XmpState::kBadRdf);
}

bool PacketReader::ReadStart() {
  const XmlTag& tag = scanner_.tag();
  const std::size_t count = namespaces_.count();
  if (is_root_over_ || open_.size() == limits::kMaxXmlNesting ||
      !namespaces_.Declare(scanner_.attributes())) {
    return Stop(is_root_over_ ? XmpState::kMalformed : XmpState::kTooLarge);
  }
  XmlQName name;
  std::vector<RdfAttribute> attributes;
  if (!TakeName(tag.name, false, name) || !ReadAttributes(attributes)) {
    return Stop(XmpState::kMalformed);
  }
  const bool is_in_rdf = IsInRdf() && !is_rdf_over_;
  if (is_in_rdf && !rdf_.Start(name, attributes)) {
    return Stop(rdf_.is_too_large() ? XmpState::kTooLarge : XmpState::kBadRdf);
  }
  if (!rdf_depth_ && name.IsRdf("RDF")) {
    rdf_depth_ = open_.size();
  }
  open_.push_back({tag.name, count});
  return tag.kind == XmlTag::Kind::kStart || ReadEnd();
}

bool PacketReader::ReadEnd() {
  if (open_.empty() || open_.back().name != scanner_.tag().name) {
    return Stop(XmpState::kMalformed);
  }
  namespaces_.ResetTo(open_.back().namespace_count);
  open_.pop_back();
  is_root_over_ = open_.empty();
  if (rdf_depth_ == open_.size()) {
    is_rdf_over_ = true;
  }
  return !IsInRdf() || is_rdf_over_ || StopUnless(rdf_.End(), XmpState::kBadRdf);
}

bool PacketReader::ReadAttributes(std::vector<RdfAttribute>& attributes) {
  for (const XmlAttribute& attribute : scanner_.attributes()) {
    std::optional<std::string> value = ExpandXml(WithSpaces(attribute.Content()));
    XmlQName name;
    if (!value) {
      return false;
    }
    if (IsXmlDeclaration(attribute.name)) {
      continue;
    }
    if (!TakeName(attribute.name, true, name)) {
      return false;
    }
    attributes.push_back({name, std::move(*value)});
  }
  return !HasDuplicates(scanner_.attributes());
}

// False for what is no name, and for a prefix that is not declared. RDF's own attributes need no
// prefix for "about" and "ID" (RDF/XML Syntax, 6.1.4).
bool PacketReader::TakeName(std::string_view name, bool is_attribute, XmlQName& resolved) {
  const std::string_view prefix = XmlPrefix(name);
  resolved = {{}, prefix, XmlLocalPart(name)};
  if (is_attribute && prefix.empty()) {
    if (name == "about" || name == "ID") {
      resolved.name_space = kRdfNamespace;
    }
    return IsXmlName(name);
  }
  resolved.name_space = namespaces_.Of(prefix);
  return IsXmlName(name) && (prefix.empty() || !resolved.name_space.empty());
}

}  // namespace

const XmpNode* XmpNode::Field(std::string_view wanted_space, std::string_view wanted_name) const {
  const auto found = std::find_if(children.begin(), children.end(), [&](const XmpNode& child) {
    return child.Is(wanted_space, wanted_name);
  });
  return found == children.end() ? nullptr : &*found;
}

std::optional<std::string_view> XmpNode::Language() const {
  for (const XmpNode& qualifier : qualifiers) {
    if (qualifier.Is(kXmlNamespace, "lang")) {
      return qualifier.value;
    }
  }
  return std::nullopt;
}

const XmpNode* XmpTree::Find(std::string_view name_space, std::string_view name) const {
  const auto found = std::find_if(properties.begin(), properties.end(),
                                  [&](const XmpNode& node) { return node.Is(name_space, name); });
  return found == properties.end() ? nullptr : &*found;
}

XmpTree ReadXmp(std::string_view packet) {
  XmpTree tree;
  if (packet.size() > limits::kMaxMetadataBytes) {
    tree.state = XmpState::kTooLarge;
    return tree;
  }
  tree.encoding = XmpEncodingOf(packet);
  std::optional<std::string> text = XmpToUtf8(packet);
  if (!text || !IsXmlText(AfterHeader(*text))) {
    return tree;
  }
  tree.text = std::make_shared<const std::string>(std::move(*text));
  std::string_view xml = *tree.text;
  xml.remove_prefix(xml.starts_with(kUtf8Mark) ? kUtf8Mark.size() : 0);
  tree.header = HeaderOf(xml);
  PacketReader reader(xml);
  tree.state = reader.Read();
  if (tree.state == XmpState::kFine) {
    tree.properties = reader.TakeProperties();
  }
  return tree;
}

}  // namespace TarnixTools::engines
