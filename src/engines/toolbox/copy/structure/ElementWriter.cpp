#include "engines/toolbox/copy/structure/ElementWriter.h"

#include <algorithm>

#include "engines/toolbox/Limits.h"
#include "engines/toolbox/copy/CopyContext.h"
#include "engines/toolbox/copy/structure/StructureReader.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines::toolbox {

using pdf::Object;

namespace {

std::span<const Object> FirstOf(const Object& list, std::size_t count) {
  return list.Items().first(std::min(list.Items().size(), count));
}

}  // namespace

ElementWriter::ElementWriter(CopyContext& context, SourceStructure& source, const Places& places)
    : context_(&context), source_(&source), target_(&context.parts().structure), places_(places) {}

void ElementWriter::RenameIds(const std::function<bool(std::uint32_t index)>& is_kept) {
  const TargetIds& taken = target_->ids();
  if (taken.empty()) {
    return;
  }
  std::unordered_set<std::string> own;
  for (const auto& [index, id] : source_->ids()) {
    own.insert(id);
  }
  for (const auto& [index, id] : source_->ids()) {
    if (!taken.Has(id) || !is_kept(index) || ids_.contains(id)) {
      continue;
    }
    std::string renamed;
    for (int i = 2; renamed.empty() || taken.Has(renamed) || own.contains(renamed); ++i) {
      renamed = id + "-" + std::to_string(i);
    }
    own.insert(renamed);
    ids_.emplace(id, renamed);
  }
}

void ElementWriter::Write(std::uint32_t index, std::uint32_t target_number,
                          std::uint32_t parent_number, std::span<const Kid> kids) {
  arena_.Reset();
  const SourceStructure::Loaded loaded = source_->Load(index, arena_);
  const bool has_namespace = loaded.dictionary.Has("NS");
  text_ = "<<";
  for (const pdf::DictionaryEntry& entry : loaded.dictionary.Entries()) {
    AppendEntry(text_, entry, has_namespace);
  }
  const std::uint32_t inherited_page = source_->InheritedPage(index);
  const std::uint32_t own_page = loaded.dictionary.Get("Pg").AsReference().number;
  if (const PageRequest* request = context_->CopyOfPage(inherited_page)) {
    text_ += "/Pg";
    pdf::AppendReference(text_, request->target_number);
  }
  text_ += "/P";
  pdf::AppendReference(text_, parent_number);
  AppendKids(text_, loaded.kids, kids, own_page != 0 ? own_page : inherited_page);
  if (source_->elements()[index].parent == 0) {
    context_->parts().language.WriteTopElement(context_->writer(), target_number, text_,
                                               loaded.dictionary.Has("Lang"));
  } else {
    context_->writer().WriteObject(target_number, text_ + ">>");
  }
  if (const Object id = context_->document().Resolve(loaded.dictionary.Get("ID"), arena_);
      id.IsString()) {
    const auto renamed = ids_.find(std::string(id.Text()));
    target_->ids().Add(renamed == ids_.end() ? std::string(id.Text()) : renamed->second,
                       target_number);
  }
}

void ElementWriter::AppendEntry(std::string& out, const pdf::DictionaryEntry& entry,
                                bool has_namespace) {
  const std::string_view key = entry.Key();
  if (key == "K" || key == "P") {
    return;
  }
  if (key == "Pg") {
    AppendPage(out, entry.value);
  } else if (key == "S" && entry.value.IsName()) {
    if (has_namespace) {
      KeepRole(entry.value.Text());
    }
    out += "/S";
    pdf::AppendName(out, has_namespace ? entry.value.Text() : RoleOf(entry.value.Text()));
  } else if (key == "C") {
    AppendClasses(out, context_->document().Resolve(entry.value, arena_));
  } else if (key == "A") {
    AppendAttributes(out, entry.value);
  } else if (key == "ID") {
    AppendId(out, context_->document().Resolve(entry.value, arena_));
  } else if (key == "Ref") {
    AppendRelated(out, context_->document().Resolve(entry.value, arena_));
  } else {
    pdf::AppendName(out, key);
    context_->objects().Append(out, entry.value);
  }
}

void ElementWriter::AppendPage(std::string& out, const Object& page) {
  if (const PageRequest* request = context_->CopyOfPage(page.AsReference().number)) {
    out += "/Pg";
    pdf::AppendReference(out, request->target_number);
  }
}

// A name, or an array of names each of which a revision number may follow.
void ElementWriter::AppendClasses(std::string& out, const Object& classes) {
  out += "/C";
  if (classes.IsName()) {
    pdf::AppendName(out, ClassOf(classes.Text()));
    return;
  }
  out += '[';
  for (const Object& item : FirstOf(classes, 2 * limits::kMaxElementClasses)) {
    if (item.IsName()) {
      pdf::AppendName(out, ClassOf(item.Text()));
    } else if (item.IsInteger()) {
      pdf::AppendInteger(out, item.IntegerOr(0));
    }
  }
  out += ']';
}

// A dictionary, or an array of dictionaries each of which a revision number may follow.
void ElementWriter::AppendAttributes(std::string& out, const Object& attributes) {
  out += "/A";
  if (ids_.empty()) {
    context_->objects().Append(out, attributes);
    return;
  }
  const Object resolved = context_->document().Resolve(attributes, arena_);
  if (resolved.Items().size() > limits::kMaxElementAttributes) {
    context_->objects().Append(out, attributes);
    return;
  }
  if (!resolved.IsArray()) {
    AppendAttributesRenamed(out, attributes);
    return;
  }
  out += '[';
  for (const Object& item : resolved.Items()) {
    AppendAttributesRenamed(out, item);
  }
  out += ']';
}

// Attributes of a table's cell name its header cells by their ids (14.8.5.7).
void ElementWriter::AppendAttributesRenamed(std::string& out, const Object& attributes) {
  const Object dictionary = context_->document().Resolve(attributes, arena_);
  if (!dictionary.IsDictionary() || !dictionary.Has("Headers")) {
    context_->objects().Append(out, attributes);
    return;
  }
  out += "<<";
  for (const pdf::DictionaryEntry& entry : dictionary.Entries()) {
    pdf::AppendName(out, entry.Key());
    if (entry.Key() != "Headers") {
      context_->objects().Append(out, entry.value);
      continue;
    }
    out += '[';
    for (const Object& item : context_->document().Resolve(entry.value, arena_).Items()) {
      const Object id = context_->document().Resolve(item, arena_);
      const auto renamed = ids_.find(std::string(id.Text()));
      pdf::AppendString(out, renamed == ids_.end() ? id.Text() : renamed->second, id.is_hex());
    }
    out += ']';
  }
  out += ">>";
}

void ElementWriter::AppendId(std::string& out, const Object& id) {
  const auto renamed = ids_.find(std::string(id.Text()));
  out += "/ID";
  pdf::AppendString(out, renamed == ids_.end() ? id.Text() : renamed->second, id.is_hex());
}

void ElementWriter::AppendRelated(std::string& out, const Object& elements) {
  std::string kept;
  for (const Object& item : FirstOf(elements, limits::kMaxRelatedElements)) {
    const std::uint32_t number = item.AsReference().number;
    if (number != 0 && context_->objects().IsMapped(number)) {
      pdf::AppendReference(kept, context_->objects().Map(number));
    }
  }
  if (!kept.empty()) {
    out += "/Ref[" + kept + "]";
  }
}

void ElementWriter::AppendKids(std::string& out, std::span<const Object> all,
                               std::span<const Kid> kids, std::uint32_t page_number) {
  if (kids.empty()) {
    return;
  }
  out += kids.size() == 1 ? "/K" : "/K[";
  for (const Kid& kid : kids) {
    if (kid.target_number != 0) {
      pdf::AppendReference(out, kid.target_number);
    } else if (kid.position < all.size()) {
      AppendContent(out, context_->document().Resolve(all[kid.position], arena_), page_number);
    }
  }
  out += kids.size() == 1 ? "" : "]";
}

// page_number: of the element's page, which is that of content that names none.
void ElementWriter::AppendContent(std::string& out, const Object& kid, std::uint32_t page_number) {
  if (!kid.IsDictionary()) {
    AppendNumber(out, kid.IntegerOr(0), page_number);
    return;
  }
  pdf::ObjectCopier& objects = context_->objects();
  const auto stream = places_.stream_pages.find(kid.Get("Stm").AsReference().number);
  const std::uint32_t own_page = kid.Get("Pg").AsReference().number;
  const bool is_elsewhere = context_->CopyOfPage(own_page) == nullptr;
  out += "<<";
  for (const pdf::DictionaryEntry& entry : kid.Entries()) {
    const auto annotation = places_.annotations.find(entry.value.AsReference().number);
    if (entry.Key() == "Pg") {
      AppendPage(out, entry.value);
    } else if (entry.Key() == "Obj" && annotation != places_.annotations.end()) {
      out += "/Obj";
      pdf::AppendReference(out, annotation->second);
    } else {
      pdf::AppendName(out, entry.Key());
      objects.Append(out, entry.value);
    }
  }
  if (kid.Has("MCID") && !kid.Has("Stm")) {
    AppendForm(out, own_page != 0 ? own_page : page_number);
  }
  // The page that the source names is not copied, but another that shows the stream is.
  if (is_elsewhere && stream != places_.stream_pages.end()) {
    out += "/Pg";
    pdf::AppendReference(out, stream->second);
  }
  out += ">>";
}

// A mere number is for the page's own content only.
void ElementWriter::AppendNumber(std::string& out, std::int64_t mcid, std::uint32_t page_number) {
  if (!places_.page_forms.contains(page_number)) {
    pdf::AppendInteger(out, mcid);
    return;
  }
  out += "<</Type/MCR";
  AppendForm(out, page_number);
  out += "/MCID";
  pdf::AppendInteger(out, mcid);
  out += ">>";
}

void ElementWriter::AppendForm(std::string& out, std::uint32_t page_number) {
  const auto form = places_.page_forms.find(page_number);
  if (form != places_.page_forms.end()) {
    out += "/Stm";
    pdf::AppendReference(out, form->second);
  }
}

// What the role map says of a type that has its meaning from a namespace is for readers that know no
// namespaces. The type keeps its name, so another source's entry for the name stands.
void ElementWriter::KeepRole(std::string_view name) {
  if (target_->roles().HasRoomFor(name, target_->is_first())) {
    RoleOf(name);
  } else if (const Object role = source_->roles().Get(name);
             role.IsName() && target_->roles().Meaning(name) != MeaningOf(source_->roles(), name)) {
    lost_roles_.emplace(name);
  }
}

std::string ElementWriter::RoleOf(std::string_view name) {
  const auto found = roles_.find(std::string(name));
  return found != roles_.end()
             ? found->second
             : target_->roles().Join(source_->roles(), name, target_->is_first(), roles_);
}

const std::string& ElementWriter::ClassOf(std::string_view name) {
  const auto [found, is_new] = classes_.try_emplace(std::string(name), name);
  const Object value = source_->classes().Get(name);
  if (is_new && !value.IsNull()) {
    std::string text;
    context_->objects().Append(text, value);
    found->second = target_->classes().Join(source_->classes(), name, text);
  }
  return found->second;
}

void ElementWriter::JoinAllNames() {
  for (const std::string_view name : source_->roles().names()) {
    RoleOf(name);
  }
  for (const std::string_view name : source_->classes().names()) {
    ClassOf(name);
  }
}

void ElementWriter::Report() {
  for (const Names* names : {&roles_, &classes_, &ids_}) {
    const auto count = std::count_if(names->begin(), names->end(),
                                     [](const auto& name) { return name.first != name.second; });
    const std::string_view what = names == &roles_     ? "element type has another meaning"
                                  : names == &classes_ ? "attribute class has another meaning"
                                                       : "id is used in another document";
    context_->report().Add(CopiedKind::kStructureElement, CopyOutcome::kRenamed, what,
                           static_cast<std::uint64_t>(count));
  }
  context_->report().Add(CopiedKind::kStructureElement, CopyOutcome::kDropped,
                         "role of a type that has another one in another document",
                         lost_roles_.size());
}

}  // namespace TarnixTools::engines::toolbox
