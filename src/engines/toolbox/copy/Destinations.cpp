#include "engines/toolbox/copy/Destinations.h"

#include "engines/toolbox/copy/CopyContext.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines {

SourceDestinations::SourceDestinations(SourceDocument&) {}

void TargetDestinations::Finish(pdf::FileWriter&, std::string&, std::string&) {}

std::optional<std::string> DestinationCopier::Copy(const pdf::Object& destination) {
  std::string text;
  context_->objects().Append(text, destination);
  return text;
}

std::optional<std::string> DestinationCopier::CopyAction(const pdf::Object& action) {
  std::string text;
  context_->objects().Append(text, action);
  return text;
}

bool DestinationCopier::AppendActionEntry(std::string& out, std::string_view key,
                                          const pdf::Object& value) {
  pdf::AppendName(out, key);
  context_->objects().Append(out, value);
  return true;
}

void DestinationCopier::CopyNames() {}

}  // namespace TarnixTools::engines
