#include "engines/toolbox/copy/FormFields.h"

#include "engines/toolbox/copy/CopyContext.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines {

SourceFormFields::SourceFormFields(SourceDocument&) {}

void TargetFormFields::Finish(pdf::FileWriter&, std::string&) {}

void FormFieldCopier::Prepare() {}

void FormFieldCopier::CopyWidget(std::string& out, const pdf::Object& dictionary, std::uint32_t,
                                 std::uint32_t) {
  for (const pdf::DictionaryEntry& entry : dictionary.Entries()) {
    // A widget's field reaches the widgets of other pages.
    if (entry.Key() != "P" && entry.Key() != "StructParent" && entry.Key() != "Parent") {
      pdf::AppendName(out, entry.Key());
      context_->objects().Append(out, entry.value);
    }
  }
}

void FormFieldCopier::Copy() {}

}  // namespace TarnixTools::engines
