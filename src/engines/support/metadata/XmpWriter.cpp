#include "engines/support/metadata/XmpWriter.h"

#include <algorithm>
#include <array>
#include <set>
#include <string_view>
#include <utility>
#include <vector>

#include "engines/support/metadata/XmlNamespaces.h"
#include "engines/support/metadata/XmpEdit.h"

namespace TarnixTools::engines {

namespace {

struct Prefix {
  std::string_view name_space;
  std::string_view prefix;
};

// Those of the specifications; ISO 19005 demands its own.
constexpr std::array<Prefix, 12> kPrefixes = {{
    {kXmlNamespace, "xml"},
    {kRdfNamespace, "rdf"},
    {kPdfAIdNamespace, "pdfaid"},
    {kPdfAExtensionNamespace, "pdfaExtension"},
    {kPdfASchemaNamespace, "pdfaSchema"},
    {kPdfAPropertyNamespace, "pdfaProperty"},
    {kPdfATypeNamespace, "pdfaType"},
    {kPdfAFieldNamespace, "pdfaField"},
    {kDcNamespace, "dc"},
    {kXmpNamespace, "xmp"},
    {kPdfNamespace, "pdf"},
    {"http://ns.adobe.com/xap/1.0/mm/", "xmpMM"},
}};

constexpr std::size_t kMostIndent = 16;

std::string AttributeText(std::string_view value) {
  std::string text;
  for (const char c : XmlText(value)) {
    switch (c) {
      case '"':
        text += "&quot;";
        break;
      case '\n':
        text += "&#xA;";
        break;
      case '\t':
        text += "&#x9;";
        break;
      default:
        text += c;
    }
  }
  return text;
}

// Which prefix stands for which namespace.
class Prefixes {
 public:
  Prefixes() {
    for (const Prefix& prefix : kPrefixes) {
      taken_.emplace(prefix.prefix);
    }
  }

  // The prefix for the namespace of a node.
  const std::string& Of(const XmpNode& node) {
    const auto found = std::find_if(own_.begin(), own_.end(),
                                    [&](const auto& own) { return own.first == node.name_space; });
    return found != own_.end() ? found->second : Add(node);
  }

 private:
  const std::string& Add(const XmpNode& node) {
    const auto known = std::find_if(kPrefixes.begin(), kPrefixes.end(), [&](const Prefix& prefix) {
      return prefix.name_space == node.name_space;
    });
    std::string prefix(known != kPrefixes.end() ? known->prefix : node.prefix);
    for (int i = 1; known == kPrefixes.end() && (prefix.empty() || taken_.contains(prefix)); ++i) {
      prefix = "ns" + std::to_string(i);
    }
    taken_.insert(prefix);
    return own_.emplace_back(node.name_space, prefix).second;
  }

  std::set<std::string, std::less<>> taken_;
  std::vector<std::pair<std::string_view, std::string>> own_;
};

class PacketWriter {
 public:
  std::string Write(std::span<const XmpNode> properties);

 private:
  // What is still to be written: a node, or an end tag.
  struct Step {
    const XmpNode* node;
    std::string text;
    std::size_t level;
  };

  void WriteNode(const XmpNode& node, std::size_t level);
  void WriteValue(const XmpNode& node, const std::string& name, std::size_t level);
  void PushChildren(const XmpNode& node, std::size_t level);
  void Line(std::size_t level, const std::string& text);
  std::string NameOf(const XmpNode& node);
  void WriteDescription(std::span<const XmpNode* const> properties);

  Prefixes prefixes_;
  std::set<std::string_view> declared_;
  std::string declarations_;
  std::vector<Step> steps_;  // the next one last
  std::string out_;
};

std::string PacketWriter::Write(std::span<const XmpNode> properties) {
  std::vector<const XmpNode*> nodes;
  for (const XmpNode& property : properties) {
    nodes.push_back(&property);
  }
  std::string body;
  while (!nodes.empty()) {
    const std::string_view name_space = nodes.front()->name_space;
    const auto rest = std::stable_partition(nodes.begin(), nodes.end(), [&](const XmpNode* node) {
      return node->name_space == name_space;
    });
    WriteDescription({nodes.begin(), rest});
    nodes.erase(nodes.begin(), rest);
    body += out_;
  }
  return "<?xpacket begin=\"\xEF\xBB\xBF\" id=\"W5M0MpCehiHzreSzNTczkc9d\"?>\n"
         "<x:xmpmeta xmlns:x=\"adobe:ns:meta/\">\n"
         "<rdf:RDF xmlns:rdf=\"" +
         std::string(kRdfNamespace) + "\">\n" + body +
         "</rdf:RDF>\n</x:xmpmeta>\n<?xpacket end=\"w\"?>";
}

// The properties of one namespace, with all namespaces that they use.
void PacketWriter::WriteDescription(std::span<const XmpNode* const> properties) {
  declared_.clear();
  declarations_.clear();
  out_.clear();
  for (auto property = properties.rbegin(); property != properties.rend(); ++property) {
    steps_.push_back({*property, {}, 1});
  }
  while (!steps_.empty()) {
    const Step step = std::move(steps_.back());
    steps_.pop_back();
    if (step.node == nullptr) {
      Line(step.level, step.text);
    } else {
      WriteNode(*step.node, step.level);
    }
  }
  out_ = "<rdf:Description rdf:about=\"\"" + declarations_ + ">\n" + out_ + "</rdf:Description>\n";
}

void PacketWriter::WriteNode(const XmpNode& node, std::size_t level) {
  const std::string name = NameOf(node);
  const bool has_own_qualifiers =
      std::any_of(node.qualifiers.begin(), node.qualifiers.end(),
                  [](const XmpNode& qualifier) { return qualifier.name_space != kXmlNamespace; });
  std::string start = "<" + name;
  if (const std::optional<std::string_view> language = node.Language()) {
    start += " xml:lang=\"" + AttributeText(*language) + "\"";
  }
  if (!has_own_qualifiers) {
    WriteValue(node, start, level);
    return;
  }
  Line(level, start + " rdf:parseType=\"Resource\">");
  steps_.push_back({nullptr, "</" + name + ">", level});
  for (auto qualifier = node.qualifiers.rbegin(); qualifier != node.qualifiers.rend();
       ++qualifier) {
    if (qualifier->name_space != kXmlNamespace) {
      steps_.push_back({&*qualifier, {}, level + 1});
    }
  }
  WriteValue(node, "<rdf:value", level + 1);
}

// start: the start tag, without its ">".
void PacketWriter::WriteValue(const XmpNode& node, const std::string& start, std::size_t level) {
  constexpr std::array<std::string_view, 5> kArrays = {"", "", "rdf:Bag", "rdf:Seq", "rdf:Alt"};
  const std::string name = start.substr(1, start.find(' ') - 1);
  const std::string end = "</" + name + ">";
  if (node.kind == XmpKind::kSimple) {
    Line(level, node.is_uri ? start + " rdf:resource=\"" + AttributeText(node.value) + "\"/>"
                            : start + ">" + XmlText(node.value) + end);
    return;
  }
  if (node.kind == XmpKind::kStruct) {
    Line(level, start + " rdf:parseType=\"Resource\">");
    steps_.push_back({nullptr, end, level});
    PushChildren(node, level + 1);
    return;
  }
  const std::string array(kArrays[static_cast<std::size_t>(node.kind)]);
  Line(level, start + ">");
  Line(level + 1, "<" + array + ">");
  steps_.push_back({nullptr, end, level});
  steps_.push_back({nullptr, "</" + array + ">", level + 1});
  PushChildren(node, level + 2);
}

void PacketWriter::PushChildren(const XmpNode& node, std::size_t level) {
  for (auto child = node.children.rbegin(); child != node.children.rend(); ++child) {
    steps_.push_back({&*child, {}, level});
  }
}

void PacketWriter::Line(std::size_t level, const std::string& text) {
  out_.append(std::min(level, kMostIndent), ' ');
  out_ += text;
  out_ += '\n';
}

std::string PacketWriter::NameOf(const XmpNode& node) {
  if (node.name.empty()) {
    return "rdf:li";
  }
  const std::string& prefix = prefixes_.Of(node);
  if (node.name_space != kRdfNamespace && declared_.insert(node.name_space).second) {
    declarations_ += " xmlns:" + prefix + "=\"" + AttributeText(node.name_space) + "\"";
  }
  return prefix + ":" + std::string(node.name);
}

}  // namespace

std::string WriteXmp(std::span<const XmpNode> properties) {
  return PacketWriter().Write(properties);
}

}  // namespace TarnixTools::engines
