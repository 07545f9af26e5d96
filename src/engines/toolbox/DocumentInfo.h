// Document information (ISO 32000-2, 14.3.3).
#ifndef TARNIX_ENGINES_TOOLBOX_DOCUMENTINFO_H_
#define TARNIX_ENGINES_TOOLBOX_DOCUMENTINFO_H_

#include <cstdint>
#include <optional>
#include <string>

#include "pdf/file/Document.h"
#include "pdf/write/FileWriter.h"

namespace TarnixTools::engines {

// Values in UTF-8; one that is not there is not written.
struct DocumentInfo {
  std::optional<std::string> author;
  std::optional<std::string> keywords;
  std::optional<std::string> creator;
  std::optional<std::string> producer;
};

DocumentInfo ReadDocumentInfo(pdf::Document& document);

// Number of the object written; 0 when there is no value.
std::uint32_t WriteDocumentInfo(pdf::FileWriter& writer, const DocumentInfo& info);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_TOOLBOX_DOCUMENTINFO_H_
