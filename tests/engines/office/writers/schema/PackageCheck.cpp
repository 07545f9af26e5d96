#include "engines/office/writers/schema/PackageCheck.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <set>
#include <string_view>
#include <vector>

#include "engines/office/writers/schema/OfficeSchema.h"
#include "engines/office/writers/schema/XmlNode.h"

namespace TarnixTools::engines::office {

namespace {

constexpr std::string_view kOffice =
    "http://schemas.openxmlformats.org/officeDocument/2006/relationships/";
constexpr std::string_view kTypes = "application/vnd.openxmlformats-officedocument.";

// Parts by their names without numbers: content types and roots, what leads to them, and what they
// have to lead to themselves without an element that says so.
struct PartKind {
  std::string_view name;
  std::string_view type;  // behind kTypes
  std::string_view root;
  std::string_view relation;  // behind kOffice
  std::set<std::string> implied;
};

const std::vector<PartKind>& Kinds() {
  static const std::vector<PartKind> kinds = {
      {"word/document.xml",
       "wordprocessingml.document.main+xml",
       "w:document",
       "officeDocument",
       {"styles", "fontTable", "settings"}},
      {"word/styles.xml", "wordprocessingml.styles+xml", "w:styles", "styles", {}},
      {"word/fontTable.xml", "wordprocessingml.fontTable+xml", "w:fonts", "fontTable", {}},
      {"word/settings.xml", "wordprocessingml.settings+xml", "w:settings", "settings", {}},
      {"word/numbering.xml", "wordprocessingml.numbering+xml", "w:numbering", "numbering", {}},
      {"word/footnotes.xml", "wordprocessingml.footnotes+xml", "w:footnotes", "footnotes", {}},
      {"word/header.xml", "wordprocessingml.header+xml", "w:hdr", "header", {}},
      {"word/footer.xml", "wordprocessingml.footer+xml", "w:ftr", "footer", {}},
      {"ppt/presentation.xml",
       "presentationml.presentation.main+xml",
       "p:presentation",
       "officeDocument",
       {"theme"}},
      {"ppt/slides/slide.xml", "presentationml.slide+xml", "p:sld", "slide", {"slideLayout"}},
      {"ppt/slideMasters/slideMaster.xml",
       "presentationml.slideMaster+xml",
       "p:sldMaster",
       "slideMaster",
       {"theme"}},
      {"ppt/slideLayouts/slideLayout.xml",
       "presentationml.slideLayout+xml",
       "p:sldLayout",
       "slideLayout",
       {"slideMaster"}},
      {"ppt/theme/theme.xml", "theme+xml", "a:theme", "theme", {}}};
  return kinds;
}

constexpr std::string_view kProperties = "docProps/core.xml";
constexpr std::string_view kCoreRelation =
    "http://schemas.openxmlformats.org/package/2006/relationships/metadata/core-properties";
constexpr std::string_view kCoreType = "application/vnd.openxmlformats-package.core-properties+xml";

// The relationships that attributes of elements name.
const std::map<std::string, std::set<std::string>>& References() {
  static const std::map<std::string, std::set<std::string>> references = {
      {"w:headerReference", {"header"}},        {"w:footerReference", {"footer"}},
      {"w:hyperlink", {"hyperlink"}},           {"a:blip", {"image"}},
      {"a:hlinkClick", {"hyperlink", "slide"}}, {"p:sldId", {"slide"}},
      {"p:sldMasterId", {"slideMaster"}},       {"p:sldLayoutId", {"slideLayout"}}};
  return references;
}

struct Relation {
  std::string type;
  std::string target;  // a part, or a URI
  bool is_external = false;
  bool is_used = false;
};

const PartKind* KindOf(std::string name) {
  std::erase_if(name, [](char c) { return c >= '0' && c <= '9'; });
  const auto found = std::ranges::find(Kinds(), name, &PartKind::name);
  return found == Kinds().end() ? nullptr : &*found;
}

std::string KindName(const Relation& relation) {
  return relation.type.starts_with(kOffice) ? relation.type.substr(kOffice.size()) : "";
}

std::string AttributeOf(const XmlNode& node, std::string_view name) {
  const std::string* value = node.Attribute(name);
  return value == nullptr ? "" : *value;
}

std::string RelationsPart(const std::string& part) {
  const std::filesystem::path path(part);
  return (path.parent_path() / "_rels" / (path.filename().string() + ".rels")).string();
}

class Package {
 public:
  explicit Package(const std::map<std::string, std::string>& parts) : parts_(parts) {
    for (const auto& [name, part] : parts) {
      if (name.ends_with(".xml") || name.ends_with(".rels")) {
        roots_.emplace(name, ParsedXml(part));
      }
    }
  }

  std::string Check() {
    for (const auto& [name, root] : roots_) {
      const std::string complaints = SchemaComplaints(root);
      Complain(complaints.empty() ? "" : name + ": " + complaints);
    }
    CheckRelations("", "_rels/.rels");
    for (const auto& [name, root] : roots_) {
      if (!name.ends_with(".rels") && name != "[Content_Types].xml") {
        CheckPart(name, root);
      }
    }
    for (const auto& [name, part] : parts_) {
      if (!targets_.contains(name) && !name.ends_with(".rels") && name != "[Content_Types].xml") {
        Complain("nothing leads to " + name);
      }
      if (name.ends_with(".rels") && !relation_parts_.contains(name)) {
        Complain(name + " belongs to no part");
      }
    }
    CheckTypes();
    CheckIdentifiers();
    CheckWord();
    return complaints_;
  }

 private:
  void Complain(const std::string& complaint) {
    complaints_ += complaint.empty() ? "" : complaint + "\n";
  }

  // The relationships of a part; the package's own belong to "".
  std::map<std::string, Relation> CheckRelations(const std::string& part, const std::string& name) {
    std::map<std::string, Relation> relations;
    const auto found = roots_.find(name);
    if (found == roots_.end()) {
      return relations;
    }
    relation_parts_.insert(name);
    for (const XmlNode& child : found->second.children) {
      Relation relation{AttributeOf(child, "Type"), AttributeOf(child, "Target")};
      relation.is_external = AttributeOf(child, "TargetMode") == "External";
      if (!relation.is_external) {
        const auto folder = std::filesystem::path(part).parent_path();
        relation.target = (folder / relation.target).lexically_normal().string();
        CheckTarget(name, relation);
      } else if (KindName(relation) != "hyperlink") {
        Complain(name + " leads out of the package by " + relation.type);
      }
      if (!relations.emplace(AttributeOf(child, "Id"), relation).second) {
        Complain(name + " has an identifier twice");
      }
    }
    return relations;
  }

  void CheckTarget(const std::string& name, const Relation& relation) {
    targets_.insert(relation.target);
    if (!parts_.contains(relation.target)) {
      Complain(name + " leads to " + relation.target + ", which is missing");
    }
    const PartKind* kind = KindOf(relation.target);
    const bool is_media = relation.target.find("/media/image") != std::string::npos;
    const std::string wanted = kind != nullptr ? std::string(kOffice) + std::string(kind->relation)
                               : is_media      ? std::string(kOffice) + "image"
                                               : std::string(kCoreRelation);
    if (relation.type != wanted) {
      Complain(name + " leads to " + relation.target + " by " + relation.type);
    }
  }

  void CheckPart(const std::string& name, const XmlNode& root) {
    const PartKind* kind = KindOf(name);
    if (kind == nullptr && name != kProperties) {
      Complain(name + " is of no known kind");
      return;
    }
    const std::string_view wanted = kind == nullptr ? "cp:coreProperties" : kind->root;
    Complain(root.name == wanted ? "" : name + " has the root " + root.name);
    std::map<std::string, Relation> relations = CheckRelations(name, RelationsPart(name));
    UseRelations(name, root, relations);
    std::multiset<std::string> implied;
    for (const auto& [id, relation] : relations) {
      if (!relation.is_used) {
        implied.insert(KindName(relation));
      }
    }
    implied.erase("numbering");
    implied.erase("footnotes");
    const std::set<std::string> expected =
        kind == nullptr ? std::set<std::string>() : kind->implied;
    if (!std::ranges::equal(implied, expected)) {
      std::string list;
      for (const std::string& one : implied) {
        list += " " + one;
      }
      Complain(name + " leads to these parts for no element:" + list);
    }
  }

  void UseRelations(const std::string& name, const XmlNode& node,
                    std::map<std::string, Relation>& relations) {
    for (const auto& [attribute, value] : node.attributes) {
      if (attribute != "r:id" && attribute != "r:embed") {
        continue;
      }
      const auto relation = relations.find(value);
      const auto kinds = References().find(node.name);
      if (relation == relations.end()) {
        Complain(name + " has no relationship " + value);
      } else if (kinds == References().end() ||
                 !kinds->second.contains(KindName(relation->second))) {
        Complain(name + ": " + node.name + " names one of " + relation->second.type);
      } else {
        relation->second.is_used = true;
      }
    }
    for (const XmlNode& child : node.children) {
      UseRelations(name, child, relations);
    }
  }

  void CheckTypes() {
    const auto found = roots_.find("[Content_Types].xml");
    if (found == roots_.end()) {
      Complain("there are no content types");
      return;
    }
    std::map<std::string, std::string> defaults;
    std::map<std::string, std::string> overrides;
    for (const XmlNode& child : found->second.children) {
      const bool is_default = child.name == "Default";
      auto& types = is_default ? defaults : overrides;
      const std::string key = AttributeOf(child, is_default ? "Extension" : "PartName");
      if (!types.emplace(key, AttributeOf(child, "ContentType")).second) {
        Complain("two content types of " + key);
      }
    }
    for (const auto& [name, part] : parts_) {
      if (name == "[Content_Types].xml") {
        continue;
      }
      const std::string extension = name.substr(name.rfind('.') + 1);
      const auto own = overrides.find("/" + name);
      const std::string type = own == overrides.end() ? defaults[extension] : own->second;
      const PartKind* kind = KindOf(name);
      const std::string wanted = kind != nullptr ? std::string(kTypes) + std::string(kind->type)
                                 : name == kProperties ? std::string(kCoreType)
                                 : extension == "rels"
                                     ? "application/vnd.openxmlformats-package.relationships+xml"
                                     : "image/" + extension;
      Complain(type == wanted ? "" : name + " is of the type " + type);
    }
    for (const auto& [name, type] : overrides) {
      Complain(parts_.contains(name.substr(1)) ? "" : name + " has a type and is missing");
    }
  }

  void CheckUnique(const std::string& where, std::vector<std::string> values) {
    std::ranges::sort(values);
    const auto twice = std::ranges::adjacent_find(values);
    Complain(twice == values.end() ? "" : where + " has " + *twice + " twice");
  }

  // Drawings and bookmarks are told apart all over a document, shapes within their slide.
  void CheckIdentifiers() {
    std::vector<std::string> drawings;
    std::vector<std::string> bookmarks;
    for (const auto& [name, root] : roots_) {
      std::ranges::copy(Values(root, "wp:docPr", "id"), std::back_inserter(drawings));
      std::ranges::copy(Values(root, "w:bookmarkStart", "w:id"), std::back_inserter(bookmarks));
      CheckUnique(name, Values(root, "p:cNvPr", "id"));
      CheckUnique(name, Values(root, "w:bookmarkStart", "w:name"));
      CheckUnique(name, Values(root, "w:style", "w:styleId"));
      CheckUnique(name, Values(root, "w:abstractNum", "w:abstractNumId"));
      CheckUnique(name, Values(root, "w:num", "w:numId"));
      CheckUnique(name, Values(root, "w:footnote", "w:id"));
      CheckUnique(name, Values(root, "p:sldId", "id"));
      for (const XmlNode* list : All(root, "w:abstractNum")) {
        CheckUnique(name, Values(*list, "w:lvl", "w:ilvl"));
      }
      if (Values(root, "w:bookmarkStart", "w:id") != Values(root, "w:bookmarkEnd", "w:id")) {
        Complain(name + " has bookmarks that do not end");
      }
    }
    CheckUnique("the drawings", drawings);
    CheckUnique("the bookmarks", bookmarks);
  }

  std::set<std::string> Known(const std::string& part, std::string_view name,
                              std::string_view attribute) {
    const auto found = roots_.find(part);
    const std::vector<std::string> values =
        found == roots_.end() ? std::vector<std::string>() : Values(found->second, name, attribute);
    return {values.begin(), values.end()};
  }

  void CheckKnown(const std::string& name, const XmlNode& root, std::string_view element,
                  const std::set<std::string>& known, std::string_view attribute = "w:val") {
    for (const std::string& value : Values(root, element, attribute)) {
      if (value != "-" && !known.contains(value)) {
        Complain(name + ": " + std::string(element) + " names " + value + ", which is missing");
      }
    }
  }

  void CheckWord() {
    const std::set<std::string> styles = Known("word/styles.xml", "w:style", "w:styleId");
    const std::set<std::string> lists = Known("word/numbering.xml", "w:num", "w:numId");
    const std::set<std::string> patterns =
        Known("word/numbering.xml", "w:abstractNum", "w:abstractNumId");
    const std::set<std::string> notes = Known("word/footnotes.xml", "w:footnote", "w:id");
    const std::set<std::string> bookmarks = Known("word/document.xml", "w:bookmarkStart", "w:name");
    for (const auto& [name, root] : roots_) {
      for (const std::string_view element : {"w:pStyle", "w:rStyle", "w:basedOn", "w:next"}) {
        CheckKnown(name, root, element, styles);
      }
      CheckKnown(name, root, "w:numId", lists);
      CheckKnown(name, root, "w:footnoteReference", notes, "w:id");
      CheckKnown(name, root, "w:hyperlink", bookmarks, "w:anchor");
      for (const XmlNode* list : All(root, "w:num")) {
        CheckKnown(name, *list, "w:abstractNumId", patterns);
      }
      CheckGraphics(name, root);
      for (const XmlNode* box : All(root, "w:txbxContent")) {
        const bool is_nested = All(*box, "w:txbxContent").size() > 1;
        const bool has_notes = !All(*box, "w:footnoteReference").empty();
        Complain(is_nested || has_notes ? name + " has a text box with what none may have" : "");
      }
    }
  }

  // What a graphic is said to be is what it has.
  void CheckGraphics(const std::string& name, const XmlNode& root) {
    const std::map<std::string, std::string_view> kinds = {
        {"pic:pic", "picture"}, {"wps:wsp", "wordprocessingShape"}, {"a:tbl", "table"}};
    for (const XmlNode* data : All(root, "a:graphicData")) {
      const std::string child = data->children.empty() ? "" : data->children.front().name;
      const auto kind = kinds.find(child);
      if (kind == kinds.end() || !AttributeOf(*data, "uri").ends_with(kind->second)) {
        Complain(name + ": " + child + " is in " + AttributeOf(*data, "uri"));
      }
    }
  }

  const std::map<std::string, std::string>& parts_;
  std::map<std::string, XmlNode> roots_;
  std::set<std::string> targets_;
  std::set<std::string> relation_parts_;
  std::string complaints_;
};

}  // namespace

std::string PackageComplaints(const std::map<std::string, std::string>& parts) {
  return Package(parts).Check();
}

}  // namespace TarnixTools::engines::office
