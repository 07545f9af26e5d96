#include "engines/toolbox/copy/PageResources.h"

#include "engines/toolbox/copy/CopyContext.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines {

using pdf::Object;

void PageResourceCopier::Prepare() {}

void PageResourceCopier::Copy(std::string& page, const pdf::PageTree::Page& source_page,
                              const Object& dictionary) {
  page += "/Resources";
  if (dictionary.Has("Resources")) {
    context_->objects().Append(page, dictionary.Get("Resources"));
    return;
  }
  const auto inherited =
      context_->source().pages().InheritedBy(source_page, pdf::InheritableKey::kResources);
  if (inherited.value.IsNull()) {
    page += "<<>>";
    return;
  }
  if (inherited.value.IsReference()) {
    context_->objects().Append(page, inherited.value);
    return;
  }
  // Resources that stand in a node of the page tree become one object that all its pages refer to.
  std::uint32_t& number = inherited_[inherited.node];
  if (number == 0) {
    number = context_->writer().Reserve();
    std::string text;
    context_->objects().Append(text, inherited.value);
    context_->writer().WriteObject(number, text);
  }
  pdf::AppendReference(page, number);
}

}  // namespace TarnixTools::engines
