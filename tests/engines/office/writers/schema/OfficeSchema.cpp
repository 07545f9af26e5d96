#include "engines/office/writers/schema/OfficeSchema.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <map>
#include <ranges>
#include <set>
#include <vector>

#include "engines/office/writers/schema/SchemaRules.h"

namespace TarnixTools::engines::office {

namespace {

using Words = std::vector<std::string_view>;

constexpr std::array<std::pair<std::string_view, std::string_view>, 13> kNamespaces = {
    {{"w", "http://schemas.openxmlformats.org/wordprocessingml/2006/main"},
     {"r", "http://schemas.openxmlformats.org/officeDocument/2006/relationships"},
     {"wp", "http://schemas.openxmlformats.org/drawingml/2006/wordprocessingDrawing"},
     {"a", "http://schemas.openxmlformats.org/drawingml/2006/main"},
     {"pic", "http://schemas.openxmlformats.org/drawingml/2006/picture"},
     {"p", "http://schemas.openxmlformats.org/presentationml/2006/main"},
     {"mc", "http://schemas.openxmlformats.org/markup-compatibility/2006"},
     {"wps", "http://schemas.microsoft.com/office/word/2010/wordprocessingShape"},
     {"w14", "http://schemas.microsoft.com/office/word/2010/wordml"},
     {"cp", "http://schemas.openxmlformats.org/package/2006/metadata/core-properties"},
     {"dc", "http://purl.org/dc/elements/1.1/"},
     {"Relationships", "http://schemas.openxmlformats.org/package/2006/relationships"},
     {"Types", "http://schemas.openxmlformats.org/package/2006/content-types"}}};

Words Split(std::string_view text, char mark) {
  Words words;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find(mark), text.size());
    if (end > 0) {
      words.push_back(text.substr(0, end));
    }
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return words;
}

// The namespace of a prefix, or of a root that has none.
std::string_view NamespaceOf(std::string_view name) {
  const auto found =
      std::ranges::find(kNamespaces, name, [](const auto& entry) { return entry.first; });
  return found == kNamespaces.end() ? "" : found->second;
}

std::string_view PrefixOf(std::string_view name) {
  const std::size_t colon = name.find(':');
  return colon == std::string_view::npos ? "" : name.substr(0, colon);
}

struct Item {
  Words names;
  bool may_lack = false;
  bool may_repeat = false;
};

std::vector<Item> ItemsOf(std::string_view children) {
  std::vector<Item> items;
  for (std::string_view word : Split(children, ' ')) {
    if (word == "#text") {
      continue;
    }
    Item item;
    const char last = word.back();
    item.may_lack = last == '?' || last == '*';
    item.may_repeat = last == '+' || last == '*';
    word.remove_suffix(item.may_lack || item.may_repeat ? 1 : 0);
    word = word.front() == '(' ? word.substr(1, word.size() - 2) : word;
    item.names = Split(word, '|');
    items.push_back(item);
  }
  return items;
}

using Children = std::span<const XmlNode>;

bool Fits(std::span<const Item> items, Children children, bool is_again = false) {
  if (items.empty()) {
    return children.empty();
  }
  const Item& item = items.front();
  const bool may_go_on = is_again || item.may_lack;
  if (may_go_on && Fits(items.subspan(1), children)) {
    return true;
  }
  const bool is_next =
      !children.empty() && std::ranges::find(item.names, children.front().name) != item.names.end();
  return is_next && (item.may_repeat ? Fits(items, children.subspan(1), true)
                                     : Fits(items.subspan(1), children.subspan(1)));
}

bool IsInRange(std::string_view value, std::string_view range) {
  const std::size_t dots = range.find("..");
  if (dots == std::string_view::npos) {
    return false;
  }
  const auto number = [](std::string_view text, std::int64_t& out) {
    const auto result = std::from_chars(text.data(), text.data() + text.size(), out);
    return result.ec == std::errc() && result.ptr == text.data() + text.size();
  };
  std::int64_t least = 0;
  std::int64_t most = 0;
  std::int64_t found = 0;
  return number(range.substr(0, dots), least) && number(range.substr(dots + 2), most) &&
         number(value, found) && found >= least && found <= most;
}

bool IsOf(std::string_view value, std::string_view word) {
  if (word == "any" || word == "text") {
    return word == "any" || !value.empty();
  }
  if (word == "hex6") {
    return value.size() == 6 &&
           value.find_first_not_of("0123456789ABCDEF") == std::string_view::npos;
  }
  if (word == "id") {
    return value.starts_with("rId") && IsInRange(value.substr(3), "1..2147483647");
  }
  return value == (word == "field" ? " PAGE " : word) || IsInRange(value, word);
}

class Checker {
 public:
  std::string Check(const XmlNode& root) {
    CheckNamespaces(root);
    CheckElement(root, "");
    return complaints_;
  }

 private:
  static const std::map<std::string_view, const ElementRule*>& Rules() {
    static const auto rules = [] {
      std::map<std::string_view, const ElementRule*> all;
      for (const auto& some : {WordRules(), DrawingRules(), SlideRules(), PackageRules()}) {
        for (const ElementRule& rule : some) {
          all.emplace(rule.name, &rule);
        }
      }
      return all;
    }();
    return rules;
  }

  static const ElementRule* RuleOf(const std::string& name, const std::string& parent) {
    const auto& rules = Rules();
    const auto own = rules.find(parent + "/" + name);
    const auto found = own == rules.end() ? rules.find(name) : own;
    return found == rules.end() ? nullptr : found->second;
  }

  void Complain(const std::string& complaint) { complaints_ += complaint + "\n"; }

  void CheckNamespaces(const XmlNode& root) {
    for (const auto& [name, value] : root.attributes) {
      if (name == "xmlns" && value != NamespaceOf(root.name)) {
        Complain(root.name + " is of " + value);
      } else if (name.starts_with("xmlns:") && value != NamespaceOf(name.substr(6))) {
        Complain(name + " is " + value);
      }
      if (name.starts_with("xmlns:")) {
        prefixes_.insert(name.substr(6));
      }
    }
    if (PrefixOf(root.name).empty() && root.Attribute("xmlns") == nullptr) {
      Complain(root.name + " has no namespace");
    }
  }

  void CheckPrefix(std::string_view name) {
    const std::string prefix(PrefixOf(name));
    if (!prefix.empty() && prefix != "xml" && !prefixes_.contains(prefix)) {
      Complain(std::string(name) + " has a prefix without a namespace");
    }
  }

  void CheckElement(const XmlNode& node, const std::string& parent) {
    CheckPrefix(node.name);
    const ElementRule* rule = RuleOf(node.name, parent);
    if (rule == nullptr) {
      Complain(node.name + " is not known in " + parent);
      return;
    }
    if (!Fits(ItemsOf(rule->children), node.children)) {
      std::string children;
      for (const XmlNode& child : node.children) {
        children += " " + child.name;
      }
      Complain(node.name + " has the children" + children);
    }
    if (!node.text.empty() && rule->children != "#text") {
      Complain(node.name + " has the text " + node.text);
    }
    CheckAttributes(node, *rule);
    for (const XmlNode& child : node.children) {
      CheckElement(child, node.name);
    }
  }

  void CheckAttributes(const XmlNode& node, const ElementRule& rule) {
    std::map<std::string_view, std::string_view> allowed;
    for (const std::string_view word : Split(rule.attributes, ' ')) {
      const std::size_t equals = word.find('=');
      const bool may_lack = word[equals - 1] == '?';
      const std::string_view name = word.substr(0, equals - (may_lack ? 1 : 0));
      allowed.emplace(name, word.substr(equals + 1));
      if (!may_lack && node.Attribute(name) == nullptr) {
        Complain(node.name + " has no " + std::string(name));
      }
    }
    std::set<std::string_view> seen;
    for (const auto& [name, value] : node.attributes) {
      if (!seen.insert(name).second) {
        Complain(node.name + " has " + name + " twice");
      }
      if (name != "xmlns" && !name.starts_with("xmlns:")) {
        CheckPrefix(name);
        CheckValue(node, name, value, allowed);
      }
    }
  }

  void CheckValue(const XmlNode& node, const std::string& name, const std::string& value,
                  const std::map<std::string_view, std::string_view>& allowed) {
    const auto found = allowed.find(name);
    if (found == allowed.end()) {
      Complain(node.name + " may have no " + name);
      return;
    }
    const Words words = Split(found->second, '|');
    if (std::ranges::none_of(words, [&](std::string_view word) { return IsOf(value, word); })) {
      Complain(node.name + " has " + name + "=" + value);
    }
  }

  std::set<std::string> prefixes_;
  std::string complaints_;
};

}  // namespace

std::string SchemaComplaints(const XmlNode& root) {
  return Checker().Check(root);
}

std::string SchemaComplaints(std::string_view xml) {
  return SchemaComplaints(ParsedXml(xml));
}

}  // namespace TarnixTools::engines::office
