#include "engines/support/metadata/XmpEdit.h"

#include <algorithm>
#include <utility>

#include "engines/support/metadata/MetadataLimits.h"
#include "engines/support/metadata/XmlNamespaces.h"
#include "engines/support/metadata/XmlScanner.h"
#include "engines/support/metadata/XmpEncoding.h"
#include "engines/support/metadata/XmpNames.h"
#include "foundation/Utf8.h"

namespace TarnixTools::engines {

namespace {

bool IsAbout(const XmpChange& change, std::string_view name_space, std::string_view local) {
  return change.name_space == name_space && (change.name.empty() || change.name == local);
}

// Finds the properties in a packet: the children and the attributes of the descriptions in it.
class PacketReader {
 public:
  PacketReader(std::string_view text, std::span<const XmpChange> changes)
      : text_(text),
        changes_(changes),
        scanner_(text),
        found_(changes.size()),
        values_(changes.size()) {}

  // False for what EditXmp refuses.
  bool Read();
  std::string Cut() const;

  bool has_found() const { return !cuts_.empty(); }

  const std::vector<std::size_t>& found() const { return found_; }

  const std::vector<std::string>& values() const { return values_; }

 private:
  struct Open {
    std::string_view name;
    std::size_t namespace_count;        // that held before it
    std::optional<std::size_t> cut_at;  // it goes, from there on
    std::size_t content = 0;            // where what is in it begins
  };

  // How far below the descriptions' parent an element is.
  std::size_t LevelOf(std::size_t depth) const { return rdf_depth_ ? depth - *rdf_depth_ : 0; }

  bool ReadStart();
  bool ReadEnd();
  void LookAtDescription();
  bool IsWanted(std::string_view name_space, std::string_view local) const;
  void Note(std::string_view name_space, std::string_view local, std::string_view value);
  std::size_t WithSpaceBefore(std::size_t position) const;
  std::string NewValues() const;

  std::string_view text_;
  std::span<const XmpChange> changes_;
  XmlScanner scanner_;
  std::vector<Open> open_;
  XmlNamespaces namespaces_;
  bool has_rdf_ = false;
  std::optional<std::size_t> rdf_depth_;  // of the open rdf:RDF
  std::optional<std::size_t> rdf_end_;    // where the end tag of the first one stands
  std::string_view about_ = "\"\"";       // with its quotes
  bool has_about_ = false;
  std::vector<std::pair<std::size_t, std::size_t>> cuts_;
  std::vector<std::size_t> found_;
  std::vector<std::string> values_;
};

bool PacketReader::Read() {
  while (scanner_.Next()) {
    const bool is_fine = scanner_.tag().kind == XmlTag::Kind::kEnd ? ReadEnd() : ReadStart();
    if (!is_fine) {
      return false;
    }
  }
  return !scanner_.is_malformed() && open_.empty() && has_rdf_;
}

bool PacketReader::ReadStart() {
  const XmlTag& tag = scanner_.tag();
  const std::size_t depth = open_.size();
  const std::size_t level = LevelOf(depth);
  Open element{tag.name, namespaces_.count(), std::nullopt, tag.end};
  if (depth == limits::kMaxXmlNesting ||
      (level <= 2 && !namespaces_.Declare(scanner_.attributes()))) {
    return false;
  }
  if (!rdf_depth_) {
    if (namespaces_.Of(XmlPrefix(tag.name)) == kRdfNamespace && XmlLocalPart(tag.name) == "RDF") {
      rdf_depth_ = depth;
      has_rdf_ = true;
    }
  } else if (level == 1) {
    LookAtDescription();
  } else if (level == 2 && IsWanted(namespaces_.Of(XmlPrefix(tag.name)), XmlLocalPart(tag.name))) {
    element.cut_at = WithSpaceBefore(tag.begin);
  }
  open_.push_back(element);
  return tag.kind == XmlTag::Kind::kStart || ReadEnd();
}

// Of an empty element, too.
bool PacketReader::ReadEnd() {
  const XmlTag& tag = scanner_.tag();
  if (open_.empty() || open_.back().name != tag.name) {
    return false;
  }
  const Open element = open_.back();
  open_.pop_back();
  if (element.cut_at) {
    cuts_.emplace_back(*element.cut_at, tag.end);
    const std::size_t content_end = std::max(element.content, tag.begin);
    Note(namespaces_.Of(XmlPrefix(tag.name)), XmlLocalPart(tag.name),
         text_.substr(element.content, content_end - element.content));
  }
  namespaces_.ResetTo(element.namespace_count);
  if (rdf_depth_ == open_.size()) {
    rdf_depth_.reset();
    if (!rdf_end_ && tag.kind == XmlTag::Kind::kEnd) {
      rdf_end_ = tag.begin;
    }
  }
  return true;
}

void PacketReader::LookAtDescription() {
  for (const XmlAttribute& attribute : scanner_.attributes()) {
    const std::string_view prefix = XmlPrefix(attribute.name);
    if (prefix.empty()) {
      continue;
    }
    const std::string_view name_space = namespaces_.Of(prefix);
    const std::string_view local = XmlLocalPart(attribute.name);
    if (IsWanted(name_space, local)) {
      cuts_.emplace_back(attribute.begin, attribute.end);
      Note(name_space, local, attribute.Content());
    } else if (!has_about_ && name_space == kRdfNamespace && local == "about") {
      about_ = attribute.value;
      has_about_ = true;
    }
  }
}

bool PacketReader::IsWanted(std::string_view name_space, std::string_view local) const {
  return std::any_of(changes_.begin(), changes_.end(),
                     [&](const XmpChange& change) { return IsAbout(change, name_space, local); });
}

// A property that is taken out.
void PacketReader::Note(std::string_view name_space, std::string_view local,
                        std::string_view value) {
  for (std::size_t i = 0; i < changes_.size(); ++i) {
    if (IsAbout(changes_[i], name_space, local) && found_[i]++ == 0) {
      values_[i] = value;
    }
  }
}

std::size_t PacketReader::WithSpaceBefore(std::size_t position) const {
  const std::size_t last = text_.substr(0, position).find_last_not_of(" \t\r\n");
  return last != std::string_view::npos && text_[last] == '>' ? last + 1 : position;
}

std::string PacketReader::Cut() const {
  const std::string values = NewValues();
  std::string text;
  std::size_t at = 0;
  bool is_inserted = false;
  const auto copy_to = [&](std::size_t end) {
    if (!is_inserted && rdf_end_ && *rdf_end_ < end) {
      text += text_.substr(at, *rdf_end_ - at);
      text += values;
      at = *rdf_end_;
      is_inserted = true;
    }
    text += text_.substr(at, end - at);
  };
  for (const auto& [begin, end] : cuts_) {
    copy_to(begin);
    at = end;
  }
  copy_to(text_.size());
  return text;
}

// A description of its own, so that no prefix of the packet's matters.
std::string PacketReader::NewValues() const {
  std::string values;
  for (std::size_t i = 0; i < changes_.size(); ++i) {
    const XmpChange& change = changes_[i];
    if (found_[i] > 0 && !change.value.empty()) {
      const std::string name = std::string(change.prefix) + ":" + std::string(change.name);
      values += "<" + name + " xmlns:" + std::string(change.prefix) + "=\"" +
                std::string(change.name_space) + "\">" + change.value + "</" + name + ">";
    }
  }
  if (values.empty()) {
    return values;
  }
  return "<rdf:Description xmlns:rdf=\"" + std::string(kRdfNamespace) +
         "\" rdf:about=" + std::string(about_) + ">" + values + "</rdf:Description>\n";
}

}  // namespace

std::optional<EditedXmp> EditXmp(std::string_view packet, std::span<const XmpChange> changes) {
  const std::optional<std::string> text = XmpToUtf8(packet);
  if (!text) {
    return std::nullopt;
  }
  PacketReader reader(*text, changes);
  if (!reader.Read()) {
    return std::nullopt;
  }
  return EditedXmp{reader.has_found() ? reader.Cut() : std::string(packet), reader.found(),
                   reader.values()};
}

std::string XmlText(std::string_view utf8) {
  std::string text;
  for (const char32_t character : Utf8ToUtf32(utf8)) {
    if (character == U'&') {
      text += "&amp;";
    } else if (character == U'<') {
      text += "&lt;";
    } else if (character == U'>') {
      text += "&gt;";
    } else if (character == U'\r') {
      text += "&#xD;";
    } else if ((character >= 0x20 || character == U'\t' || character == U'\n') &&
               character != 0xFFFE && character != 0xFFFF) {
      AppendUtf8(text, character);
    }
  }
  return text;
}

}  // namespace TarnixTools::engines
