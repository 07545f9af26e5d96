#include "engines/toolbox/copy/fields/FieldDefaults.h"

#include <algorithm>

#include "engines/toolbox/Limits.h"
#include "pdf/file/Document.h"
#include "pdf/syntax/Lexer.h"
#include "pdf/write/ObjectCopier.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines::toolbox {

using pdf::Object;
using pdf::Token;

namespace {

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

ResourceNames::Entry* ResourceNames::Find(std::string_view category, std::string_view name) {
  const auto found = entries_.find({std::string(category), std::string(name)});
  return found == entries_.end() ? nullptr : &found->second;
}

std::string ResourceNames::Apply(std::string_view appearance) {
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
    if (Entry* entry = Find(CategoryNamedBy(token.text), decoded)) {
      entry->is_used = true;
      const auto start = static_cast<std::size_t>(name.data() - appearance.data());
      result += appearance.substr(copied, start - copied);
      pdf::AppendName(result, entry->name);
      copied = start + name.size();
    }
    name = {};
  }
  return result += appearance.substr(copied);
}

SourceFieldDefaults::SourceFieldDefaults(pdf::Document& document, const Object& form,
                                         pdf::Arena& arena)
    : document_(&document), loads_left_(limits::kMaxComparedObjects) {
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
  return AppendContent(content, value, 0) && content.size() <= limits::kMaxComparedBytes ? content
                                                                                         : "";
}

bool SourceFieldDefaults::AppendContent(std::string& out, const Object& value, int depth) {
  bool is_whole = true;
  pdf::SerializeHooks hooks;
  hooks.reference = [&](std::string& text, pdf::Reference reference) {
    is_whole = is_whole && depth < limits::kMaxComparedDepth &&
               text.size() <= limits::kMaxComparedBytes && loads_left_ > 0 &&
               !document_->IsStream(reference.number);
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
                                                          pdf::ObjectCopier& objects,
                                                          bool is_whole) {
  Differences differences;
  source.ReadContents();
  for (const SourceFieldDefaults::Category& category : source.categories()) {
    AddCategory(category, objects, is_whole, differences.names);
  }
  std::optional<std::string> appearance;
  if (source.appearance()) {
    appearance = differences.names.Apply(*source.appearance());
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

void TargetFieldDefaults::AddCategory(const SourceFieldDefaults::Category& source,
                                      pdf::ObjectCopier& objects, bool is_whole,
                                      ResourceNames& names) {
  Category& target = CategoryOf(source.name);
  std::unordered_set<std::string> source_names;
  for (const SourceFieldDefaults::Resource& resource : source.resources) {
    source_names.emplace(resource.name);
  }
  for (const SourceFieldDefaults::Resource& resource : source.resources) {
    std::string name(resource.name);
    const bool is_taken = target.names.Contains(name);
    if (const auto shared = is_taken ? SharedName(target, resource) : std::nullopt) {
      if (*shared != name) {
        names.Add(source.name, name, *shared);
      }
      continue;
    }
    if (is_taken) {
      name += target.names.SuffixFor(
          name, [&](const std::string& other) { return source_names.contains(other); });
    }
    target.names.Add(name);
    if (resource.content.empty() && !is_whole) {
      names.Add(source.name, resource.name, name, resource.value);
      continue;
    }
    if (is_taken) {
      names.Add(source.name, resource.name, name);
    }
    AddEntry(target, name, resource.value, objects);
    if (!resource.content.empty()) {
      target.contents.emplace(name, resource.content);
      target.names_by_content.emplace(resource.content, name);
    }
  }
}

// The name under which the very same resource is there already.
std::optional<std::string> TargetFieldDefaults::SharedName(
    const Category& category, const SourceFieldDefaults::Resource& resource) {
  if (resource.content.empty()) {
    return std::nullopt;
  }
  const auto own = category.contents.find(std::string(resource.name));
  if (own != category.contents.end() && own->second == resource.content) {
    return own->first;
  }
  const auto other = category.names_by_content.find(resource.content);
  if (other == category.names_by_content.end()) {
    return std::nullopt;
  }
  return other->second;
}

void TargetFieldDefaults::AddEntry(Category& category, const std::string& name, const Object& value,
                                   pdf::ObjectCopier& objects) {
  if (value.IsReference() && objects.Map(value.AsReference().number) == 0) {
    return;  // it is not there
  }
  pdf::AppendName(category.entries, name);
  objects.Append(category.entries, value);
}

void TargetFieldDefaults::AddUsed(const Differences& differences, pdf::ObjectCopier& objects) {
  for (const auto& [key, entry] : differences.names.entries()) {
    if (entry.is_used && !entry.value.IsNull()) {
      AddEntry(CategoryOf(key.first), entry.name, entry.value, objects);
    }
  }
}

TargetFieldDefaults::Category& TargetFieldDefaults::CategoryOf(std::string_view name) {
  const auto [found, is_new] = category_places_.try_emplace(std::string(name), categories_.size());
  if (is_new) {
    categories_.emplace_back().name = name;
  }
  return categories_[found->second];
}

void TargetFieldDefaults::AppendTo(std::string& form) const {
  std::string resources;
  for (const Category& category : categories_) {
    if (!category.entries.empty()) {
      pdf::AppendName(resources, category.name);
      resources += "<<" + category.entries + ">>";
    }
  }
  if (!resources.empty()) {
    form += "/DR<<" + resources + ">>";
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

}  // namespace TarnixTools::engines::toolbox
