#include "engines/toolbox/copy/Annotations.h"

#include <vector>

#include "engines/toolbox/copy/CopyContext.h"
#include "engines/toolbox/copy/CopyParts.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines {

using pdf::Object;

void AnnotationCopier::Copy(std::string& page, const Object& annotations,
                            const PageRequest& request, bool is_repeated) {
  if (annotations.Items().empty()) {
    return;
  }
  arena_.Reset();
  pdf::ObjectCopier& objects = context_->objects();
  std::vector<Copied> copies;
  page += "/Annots[";
  // All of them get their numbers first, so that references among them hold in either direction.
  for (const Object& item : annotations.Items()) {
    const Object dictionary = context_->document().Resolve(item, arena_);
    if (!dictionary.IsDictionary()) {
      continue;
    }
    const std::uint32_t number = item.AsReference().number;
    if (number != 0 && objects.IsMapped(number) && !is_repeated) {
      pdf::AppendReference(page, objects.Map(number));
      continue;
    }
    const std::uint32_t target_number = context_->writer().Reserve();
    if (number != 0) {
      objects.Assign(number, target_number);
    }
    copies.push_back({dictionary, number, target_number});
    pdf::AppendReference(page, target_number);
  }
  page += ']';
  for (const Copied& copy : copies) {
    std::string text;
    AppendAnnotation(text, copy, request);
    context_->writer().WriteObject(copy.target_number, text);
  }
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
