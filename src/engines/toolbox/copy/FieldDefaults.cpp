#include "engines/toolbox/copy/FieldDefaults.h"

#include <algorithm>

#include "pdf/file/Document.h"
#include "pdf/syntax/Lexer.h"
#include "pdf/write/ObjectCopier.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines {

using pdf::Object;
using pdf::Token;

namespace {

// Bounds on comparing resources of two sources: those that are larger count as different.
constexpr std::size_t kMaxContent = 4096;
constexpr int kMaxContentDepth = 8;
constexpr std::uint32_t kMaxContentLoads = 20'000;

// The category of the resource that an operator's name operand names; empty for other operators.
std::string_view CategoryNamedBy(std::string_view operation) {
  if (operation == "Tf") {
    return "Font";
  }
  if (operation == "gs") {
    return "ExtGState";
  }
  if (operation == "cs" || operation == "CS") {
    return "ColorSpace";
  }
  if (operation == "scn" || operation == "SCN") {
    return "Pattern";
  }
  return {};
}

}  // namespace

const std::string* ResourceRenames::Find(std::string_view category, std::string_view name) const {
  const auto found = names_.find({std::string(category), std::string(name)});
  return found == names_.end() ? nullptr : &found->second;
}

std::string ResourceRenames::Apply(std::string_view appearance) const {
  std::string result;
  pdf::Lexer lexer(appearance, true);
  std::size_t copied = 0;  // bytes of the appearance that are in the result
  std::string_view name;   // the last operand that is one
  for (Token token = lexer.Next(); token.kind != Token::Kind::kEnd; token = lexer.Next()) {
    if (token.kind == Token::Kind::kName) {
      name = token.text;
      continue;
    }
    if (token.kind != Token::Kind::kKeyword || name.empty()) {
      continue;
    }
    std::string decoded;
    pdf::DecodeName(name, decoded);
    if (const std::string* renamed = Find(CategoryNamedBy(token.text), decoded)) {
      const auto start = static_cast<std::size_t>(name.data() - appearance.data());
      result += appearance.substr(copied, start - copied);
      pdf::AppendName(result, *renamed);
      copied = start + name.size();
    }
    name = {};
  }
  return result += appearance.substr(copied);
}

SourceFieldDefaults::SourceFieldDefaults(pdf::Document& document, const Object& form,
                                         pdf::Arena& arena)
    : document_(&document), loads_left_(kMaxContentLoads) {
  const Object appearance = document_->Resolve(form.Get("DA"), arena);
  if (appearance.IsString()) {
    appearance_ = appearance.Text();
  }
  alignment_ = document_->Resolve(form.Get("Q"), arena).IntegerOr(0);
  ReadResources(document_->Resolve(form.Get("DR"), arena), arena);
}

void SourceFieldDefaults::ReadResources(const Object& resources, pdf::Arena& arena) {
  for (const pdf::DictionaryEntry& entry : resources.Entries()) {
    const Object values = document_->Resolve(entry.value, arena);
    if (!values.IsDictionary()) {
      continue;  // ProcSet, which nobody needs any more
    }
    Category& category = categories_.emplace_back();
    category.name = entry.Key();
    for (const pdf::DictionaryEntry& value : values.Entries()) {
      if (value.value.IsReference() || value.value.IsDictionary() || value.value.IsArray() ||
          value.value.IsName()) {
        category.resources.push_back({value.Key(), value.value, {}});
      }
    }
  }
}

void SourceFieldDefaults::ReadContents() {
  if (has_contents_) {
    return;
  }
  has_contents_ = true;
  for (Category& category : categories_) {
    for (Resource& resource : category.resources) {
      resource.content = ContentOf(resource.value);
    }
  }
}

std::string SourceFieldDefaults::ContentOf(const Object& value) {
  std::string content;
  return AppendContent(content, value, 0) && content.size() <= kMaxContent ? content : "";
}

bool SourceFieldDefaults::AppendContent(std::string& out, const Object& value, int depth) {
  bool is_whole = true;
  pdf::SerializeHooks hooks;
  hooks.reference = [&](std::string& text, pdf::Reference reference) {
    is_whole = is_whole && depth < kMaxContentDepth && text.size() <= kMaxContent &&
               loads_left_ > 0 && !document_->IsStream(reference.number);
    if (is_whole) {
      --loads_left_;
      pdf::Arena arena;
      is_whole = AppendContent(text, document_->Load(reference, arena), depth + 1);
    }
  };
  pdf::AppendObject(out, value, hooks);
  return is_whole;
}

TargetFieldDefaults::Differences TargetFieldDefaults::Add(SourceFieldDefaults& source,
                                                          pdf::ObjectCopier& objects) {
  Differences differences;
  source.ReadContents();
  for (const SourceFieldDefaults::Category& category : source.categories()) {
    Category& target = CategoryOf(category.name);
    std::unordered_set<std::string> source_names;
    for (const SourceFieldDefaults::Resource& resource : category.resources) {
      source_names.emplace(resource.name);
    }
    for (const SourceFieldDefaults::Resource& resource : category.resources) {
      AddResource(target, resource, source_names, objects, differences.renames);
    }
  }
  std::optional<std::string> appearance;
  if (source.appearance()) {
    appearance = differences.renames.Apply(*source.appearance());
  }
  if (is_empty_) {
    appearance_ = appearance;
    alignment_ = source.alignment();
  } else {
    if (appearance && appearance != appearance_) {
      differences.appearance = appearance;
    }
    if (source.alignment() != alignment_) {
      differences.alignment = source.alignment();
    }
  }
  is_empty_ = false;
  return differences;
}

TargetFieldDefaults::Category& TargetFieldDefaults::CategoryOf(std::string_view name) {
  const auto found = std::find_if(categories_.begin(), categories_.end(),
                                  [name](const Category& c) { return c.name == name; });
  if (found != categories_.end()) {
    return *found;
  }
  Category& category = categories_.emplace_back();
  category.name = name;
  return category;
}

void TargetFieldDefaults::AddResource(Category& category,
                                      const SourceFieldDefaults::Resource& resource,
                                      const std::unordered_set<std::string>& source_names,
                                      pdf::ObjectCopier& objects, ResourceRenames& renames) {
  std::string name(resource.name);
  if (category.names.Contains(name)) {
    const auto same = category.names_by_content.find(resource.content);
    if (category.contents[name] == resource.content && !resource.content.empty()) {
      return;
    }
    if (same != category.names_by_content.end()) {
      renames.Add(category.name, name, same->second);
      return;
    }
    name += category.names.SuffixFor(
        name, [&](const std::string& other) { return source_names.contains(other); });
    renames.Add(category.name, resource.name, name);
  }
  if (resource.value.IsReference() && objects.Map(resource.value.AsReference().number) == 0) {
    return;  // it is not there
  }
  pdf::AppendName(category.entries, name);
  objects.Append(category.entries, resource.value);
  category.names.Add(name);
  if (!resource.content.empty()) {
    category.contents.emplace(name, resource.content);
    category.names_by_content.emplace(resource.content, name);
  }
}

void TargetFieldDefaults::AppendTo(std::string& form) const {
  if (!categories_.empty()) {
    form += "/DR<<";
    for (const Category& category : categories_) {
      pdf::AppendName(form, category.name);
      form += "<<" + category.entries + ">>";
    }
    form += ">>";
  }
  if (appearance_) {
    form += "/DA";
    pdf::AppendString(form, *appearance_, false);
  }
  if (alignment_ != 0) {
    form += "/Q";
    pdf::AppendInteger(form, alignment_);
  }
}

}  // namespace TarnixTools::engines
