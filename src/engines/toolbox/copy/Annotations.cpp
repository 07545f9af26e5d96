#include "engines/toolbox/copy/Annotations.h"

#include <algorithm>

#include "engines/toolbox/copy/CopyContext.h"
#include "engines/toolbox/copy/CopyParts.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines {

using pdf::Object;

SourceAnnotations::SourceAnnotations(SourceDocument& source) {
  const pdf::PageTree& tree = source.pages();
  pdf::Document& document = source.document();
  pdf::Arena arena;
  for (std::size_t index = 0; index < tree.pages().size(); ++index) {
    const pdf::PageTree::Page& page = tree.pages()[index];
    if (!page.has_annotations) {
      continue;
    }
    arena.Reset();
    const Object annotations = document.Resolve(tree.Load(page, arena).Get("Annots"), arena);
    starts_.resize(index + 1, static_cast<std::uint32_t>(numbers_.size()));
    for (const Object& item : annotations.Items()) {
      const std::uint32_t number = item.AsReference().number;
      if (number != 0 && !tree.IsPage(number) && !tree.IsNode(number)) {
        numbers_.push_back(number);
      }
    }
  }
  if (!numbers_.empty()) {
    starts_.resize(tree.pages().size() + 1, static_cast<std::uint32_t>(numbers_.size()));
  }
  sorted_ = numbers_;
  std::sort(sorted_.begin(), sorted_.end());
}

bool SourceAnnotations::Contains(std::uint32_t number) const {
  return std::binary_search(sorted_.begin(), sorted_.end(), number);
}

std::span<const std::uint32_t> SourceAnnotations::OfPage(std::uint32_t page_index) const {
  if (numbers_.empty()) {
    return {};
  }
  return std::span(numbers_).subspan(starts_[page_index],
                                     starts_[page_index + 1] - starts_[page_index]);
}

void AnnotationCopier::Prepare() {
  const SourceAnnotations& annotations = context_->source().parts().annotations();
  pdf::ObjectCopier& objects = context_->objects();
  for (const PageRequest& request : context_->requests()) {
    for (const std::uint32_t number : annotations.OfPage(request.page_index)) {
      if (!objects.IsMapped(number) && promised_.insert(number).second) {
        objects.Assign(number, context_->writer().Reserve());
      }
    }
  }
}

void AnnotationCopier::Copy(std::string& page, const Object& annotations,
                            const PageRequest& request) {
  if (annotations.Items().empty()) {
    return;
  }
  arena_.Reset();
  std::vector<Copied> copies;
  std::vector<Copied> others;  // of annotations that have been copied before
  page += "/Annots[";
  // All of them get their numbers first, so that references among them hold in either direction.
  for (const Object& item : annotations.Items()) {
    const Object dictionary = context_->document().Resolve(item, arena_);
    const std::uint32_t number = item.AsReference().number;
    if (!dictionary.IsDictionary() || IsPageOrNode(number)) {
      continue;
    }
    copies.push_back({dictionary, number, NumberFor(number, others)});
    pdf::AppendReference(page, copies.back().target_number);
  }
  page += ']';
  for (const Copied& copy : copies) {
    std::string text;
    AppendAnnotation(text, copy, request);
    context_->writer().WriteObject(copy.target_number, text);
  }
  for (const Copied& other : others) {
    context_->objects().Assign(other.source_number, other.target_number);
  }
}

bool AnnotationCopier::IsPageOrNode(std::uint32_t number) {
  const pdf::PageTree& tree = context_->source().pages();
  return number != 0 && (tree.IsPage(number) || tree.IsNode(number));
}

// The number that was promised for an annotation, or a new one, by which it is known while its page
// is written: one that is on a page that is copied again, or on several.
std::uint32_t AnnotationCopier::NumberFor(std::uint32_t number, std::vector<Copied>& others) {
  pdf::ObjectCopier& objects = context_->objects();
  if (promised_.erase(number) != 0) {
    return objects.Map(number);
  }
  const std::uint32_t target_number = context_->writer().Reserve();
  if (number != 0) {
    others.push_back({Object(), number, objects.Map(number)});
    objects.Assign(number, target_number);
  }
  return target_number;
}

void AnnotationCopier::AppendAnnotation(std::string& out, const Copied& copy,
                                        const PageRequest& request) {
  out += "<<";
  if (copy.dictionary.Get("Subtype").IsName("Widget")) {
    parts_->form_fields.CopyWidget(out, copy.dictionary, copy.source_number, copy.target_number);
  } else {
    AppendEntries(out, copy.dictionary);
  }
  parts_->structure.CopyAnnotationKey(out, copy.dictionary);
  out += "/P";
  pdf::AppendReference(out, request.target_number);
  out += ">>";
}

void AnnotationCopier::AppendEntries(std::string& out, const Object& dictionary) {
  for (const pdf::DictionaryEntry& entry : dictionary.Entries()) {
    if (entry.Key() != "P" && entry.Key() != "StructParent") {
      pdf::AppendName(out, entry.Key());
      context_->objects().Append(out, entry.value);
    }
  }
}

}  // namespace TarnixTools::engines
