// Document information (ISO 32000-2, 14.3.3).
#ifndef TARNIX_ENGINES_TOOLBOX_DOCUMENTINFO_H_
#define TARNIX_ENGINES_TOOLBOX_DOCUMENTINFO_H_

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "engines/support/metadata/XmpInfo.h"
#include "pdf/file/Document.h"
#include "pdf/write/FileWriter.h"

namespace TarnixTools::engines::toolbox {

// Values in UTF-8; one that is not there is not written.
struct DocumentInfo {
  bool operator==(const DocumentInfo&) const = default;

  std::optional<std::string> author;
  std::optional<std::string> keywords;
  std::optional<std::string> creator;
  std::optional<std::string> producer;
  std::optional<std::string> title;
  std::optional<std::string> subject;
};

// Where a field of the information is here.
struct DocumentInfoField {
  XmpInfoField field;
  std::optional<std::string> DocumentInfo::*value;
};

inline constexpr std::array<DocumentInfoField, 6> kDocumentInfoFields = {{
    {XmpInfoField::kAuthor, &DocumentInfo::author},
    {XmpInfoField::kKeywords, &DocumentInfo::keywords},
    {XmpInfoField::kCreator, &DocumentInfo::creator},
    {XmpInfoField::kProducer, &DocumentInfo::producer},
    {XmpInfoField::kTitle, &DocumentInfo::title},
    {XmpInfoField::kSubject, &DocumentInfo::subject},
}};

// An entry of the dictionary, its value as PDF text.
struct InfoEntry {
  std::string key;
  std::string value;
};

DocumentInfo ReadDocumentInfo(pdf::Document& document);

// All entries whose value is a string, a name, a number or a boolean.
std::vector<InfoEntry> ReadInfoEntries(pdf::Document& document);

// Writes the values, and the entries but for those in which the values differ from what they were.
// Number of the object written; 0 when there is nothing to write.
std::uint32_t WriteDocumentInfo(pdf::FileWriter& writer, const DocumentInfo& info,
                                const DocumentInfo& before, std::span<const InfoEntry> entries);

}  // namespace TarnixTools::engines::toolbox

#endif  // TARNIX_ENGINES_TOOLBOX_DOCUMENTINFO_H_
