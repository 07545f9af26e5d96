// Destinations: explicit ones, and those that have a name in the document (ISO 32000-2, 12.3.2).
#ifndef TARNIX_ENGINES_TOOLBOX_COPY_DESTINATIONS_H_
#define TARNIX_ENGINES_TOOLBOX_COPY_DESTINATIONS_H_

#include <optional>
#include <string>
#include <string_view>

#include "pdf/syntax/Object.h"

namespace TarnixTools::pdf {
class Document;
class FileWriter;
}  // namespace TarnixTools::pdf

namespace TarnixTools::engines {

class CopyContext;
class SourceDocument;

// Where the source's names lead; read once per source.
class SourceDestinations {
 public:
  explicit SourceDestinations(SourceDocument& source);
};

// The names of a document being made.
class TargetDestinations {
 public:
  // Writes what there is and appends the entries for it, of the catalog and of its /Names
  // dictionary.
  void Finish(pdf::FileWriter& writer, std::string& catalog, std::string& names);
};

// Leads destinations and actions to copied pages.
class DestinationCopier {
 public:
  explicit DestinationCopier(CopyContext& context) : context_(&context) {}

  // A destination (explicit, or a name as string or name object) as the target says it; nullopt
  // when it leads to no copied page.
  std::optional<std::string> Copy(const pdf::Object& destination);
  // An action dictionary with its /Next chain; nullopt when nothing of it is left.
  std::optional<std::string> CopyAction(const pdf::Object& action);
  // Appends an annotation's or a field's entry /A, /PA (an action) or /AA (actions by event).
  // Appends nothing and returns false when none of its actions is left.
  bool AppendActionEntry(std::string& out, std::string_view key, const pdf::Object& value);
  // Brings all names that lead to copied pages into the target.
  void CopyNames();

 private:
  CopyContext* context_;
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_TOOLBOX_COPY_DESTINATIONS_H_
