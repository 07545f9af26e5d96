#include "engines/toolbox/copy/structure/TargetStructure.h"

#include <algorithm>

#include "pdf/write/FileWriter.h"
#include "pdf/write/Serialize.h"
#include "pdf/write/TreeWriter.h"

namespace TarnixTools::engines::toolbox {

std::int64_t TargetParentTree::Take(std::int64_t count) {
  const std::int64_t first = next_key_;
  next_key_ += count;
  return first;
}

std::string TargetParentTree::Write(pdf::FileWriter& writer) {
  std::sort(entries_.begin(), entries_.end());
  pdf::TreeWriter tree(writer, "Nums");
  std::string value;
  for (const auto& [key, number] : entries_) {
    value.clear();
    pdf::AppendReference(value, number);
    tree.Add(std::to_string(key), value);
  }
  return tree.Finish();
}

void TargetStructure::AddSource(const MarkInfo& marks, bool is_tagged) {
  ++sources_;
  tagged_sources_ += is_tagged ? 1 : 0;
  marked_sources_ += marks.is_marked ? 1 : 0;
  has_user_properties_ = has_user_properties_ || marks.has_user_properties;
  has_suspects_ = has_suspects_ || marks.has_suspects;
}

std::uint32_t TargetStructure::Top(pdf::FileWriter& writer) {
  if (top_ == 0) {
    top_ = writer.Reserve();
  }
  return top_;
}

void TargetStructure::EndSource(std::uint32_t top_namespace) {
  if (kids_.size() == ended_kids_) {
    return;
  }
  top_namespace_ = ended_kids_ == 0 || top_namespace_ == top_namespace ? top_namespace : 0;
  ended_kids_ = kids_.size();
  ++sources_with_kids_;
}

std::uint32_t TargetStructure::FindNamespace(const std::string& name) const {
  const auto found = namespaces_by_name_.find(name);
  return found == namespaces_by_name_.end() ? 0 : found->second;
}

void TargetStructure::AddNamespace(const std::string& name, std::uint32_t number) {
  if (!name.empty()) {
    namespaces_by_name_.emplace(name, number);
  }
  namespaces_.push_back(number);
}

void TargetStructure::Finish(pdf::FileWriter& writer, std::string& catalog) {
  AppendMarkInfo(catalog);
  if (tagged_sources_ == 0) {
    return;
  }
  // Elements of several sources have an element of their own between them and the root.
  const bool is_joined = sources_with_kids_ > 1;
  const std::uint32_t root = is_joined ? writer.Reserve() : Top(writer);
  std::string text = "<</Type/StructTreeRoot";
  if (is_joined) {
    WriteDocument(writer, root);
    text += "/K";
    pdf::AppendReference(text, Top(writer));
  } else {
    AppendKids(text);
  }
  text += "/ParentTree";
  pdf::AppendToken(text, parent_tree_.Write(writer));
  text += "/ParentTreeNextKey";
  pdf::AppendInteger(text, parent_tree_.next_key());
  if (!ids_.empty()) {
    text += "/IDTree";
    pdf::AppendToken(text, ids_.Write(writer));
  }
  if (!namespaces_.empty()) {
    text += "/Namespaces[";
    for (const std::uint32_t number : namespaces_) {
      pdf::AppendReference(text, number);
    }
    text += ']';
  }
  const std::pair<const char*, std::string> others[] = {
      {"/RoleMap", roles_.Text()},
      {"/ClassMap", classes_.Text()},
      {"/PronunciationLexicon", lexicons_.empty() ? "" : "[" + lexicons_ + "]"},
      {"/AF", files_.empty() ? "" : "[" + files_ + "]"}};
  for (const auto& [key, value] : others) {
    text += value.empty() ? "" : key + value;
  }
  writer.WriteObject(root, text + ">>");
  catalog += "/StructTreeRoot";
  pdf::AppendReference(catalog, root);
}

// A document counts as tagged when all that it was made of does.
void TargetStructure::AppendMarkInfo(std::string& catalog) const {
  if (sources_ == 1 && !has_untagged_content_ && !whole_mark_info_.empty()) {
    catalog += "/MarkInfo" + whole_mark_info_;
    return;
  }
  const bool is_marked = sources_ > 0 && marked_sources_ == sources_ && !has_untagged_content_;
  if (!is_marked && !has_user_properties_ && !has_suspects_) {
    return;
  }
  catalog += "/MarkInfo<<";
  catalog += is_marked ? "/Marked true" : "";
  catalog += has_user_properties_ ? "/UserProperties true" : "";
  catalog += has_suspects_ ? "/Suspects true" : "";
  catalog += ">>";
}

void TargetStructure::WriteDocument(pdf::FileWriter& writer, std::uint32_t parent) const {
  std::string text = "<</Type/StructElem/S/Document/P";
  pdf::AppendReference(text, parent);
  if (top_namespace_ != 0) {
    text += "/NS";
    pdf::AppendReference(text, top_namespace_);
  }
  AppendKids(text);
  writer.WriteObject(top_, text + ">>");
}

void TargetStructure::AppendKids(std::string& out) const {
  if (kids_.empty()) {
    return;
  }
  out += kids_.size() == 1 ? "/K" : "/K[";
  for (const std::uint32_t kid : kids_) {
    pdf::AppendReference(out, kid);
  }
  out += kids_.size() == 1 ? "" : "]";
}

}  // namespace TarnixTools::engines::toolbox
