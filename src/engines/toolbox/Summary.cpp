// What a document is, in short, through the contract.
#include "engines/support/metadata/PdfAClaim.h"
#include "engines/toolbox/Guard.h"
#include "engines/toolbox/Handles.h"
#include "engines/toolbox/copy/fields/FormFields.h"
#include "engines/toolbox/copy/settings/DocumentSettings.h"
#include "pdf/crypt/Security.h"

namespace TarnixTools::engines {

using namespace toolbox;

namespace {

bool IsTagged(pdf::Document& document) {
  pdf::Arena arena;
  const pdf::Object catalog = document.Catalog(arena);
  const pdf::Object marks = document.Resolve(catalog.Get("MarkInfo"), arena);
  return document.Resolve(marks.Get("Marked"), arena).BooleanOr(false) &&
         document.Resolve(catalog.Get("StructTreeRoot"), arena).IsDictionary();
}

std::int64_t CountSigned(SourceDocument& source, const FieldTree& fields) {
  std::int64_t count = 0;
  for (const FieldTree::Node& node : fields.nodes()) {
    if (node.is_signature && node.is_field) {
      pdf::Arena arena;
      pdf::Document& document = source.document();
      const pdf::Object field = document.Load({node.number, 0}, arena);
      count += document.Resolve(field.Get("V"), arena).IsDictionary() ? 1 : 0;
    }
  }
  return count;
}

}  // namespace

int PdfDocumentGetSummary(TPdfDocument* source, TPdfSummary* summary) {
  return Guarded({source, summary}, [&] {
    Require(source->source != nullptr);
    SourceDocument& document = *source->source;
    const pdf::Security* security = document.document().security();
    const FieldTree& fields = document.parts().form_fields().tree();
    const SourceDocumentSettings& settings = document.parts().settings();
    *summary = {
        .version = settings.version(),
        .is_encrypted = document.document().is_encrypted() ? 1 : 0,
        .is_owner = security != nullptr && security->opened_as_owner() ? 1 : 0,
        .permissions =
            security == nullptr ? 0 : static_cast<std::uint32_t>(security->facts().permissions),
        .compliance = ComplianceOf(document.document()),
        .is_tagged = IsTagged(document.document()) ? 1 : 0,
        .signature_count = CountSigned(document, fields),
        .field_count = fields.terminal_count(),
        .attachment_count = static_cast<std::int64_t>(settings.attachment_count()),
    };
  });
}

int PdfPageGetRotation(TPdfPage* page, std::int32_t* degrees) {
  return Guarded({page, degrees}, [&] { *degrees = page->Geometry().rotation; });
}

}  // namespace TarnixTools::engines
