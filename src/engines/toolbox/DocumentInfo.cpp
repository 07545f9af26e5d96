#include "engines/toolbox/DocumentInfo.h"

#include "pdf/tree/TextString.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines {

namespace {

struct Field {
  const char* key;
  std::optional<std::string> DocumentInfo::*value;
};

constexpr Field kFields[] = {
    {"Author", &DocumentInfo::author},
    {"Keywords", &DocumentInfo::keywords},
    {"Creator", &DocumentInfo::creator},
    {"Producer", &DocumentInfo::producer},
};

}  // namespace

DocumentInfo ReadDocumentInfo(pdf::Document& document) {
  DocumentInfo info;
  pdf::Arena arena;
  const pdf::Object dictionary = document.Resolve(document.trailer().Get("Info"), arena);
  for (const Field& field : kFields) {
    const pdf::Object value = document.Resolve(dictionary.Get(field.key), arena);
    if (!value.IsNull()) {
      info.*field.value = pdf::TextStringToUtf8(value.Text());
    }
  }
  return info;
}

std::uint32_t WriteDocumentInfo(pdf::FileWriter& writer, const DocumentInfo& info) {
  std::string text;
  for (const Field& field : kFields) {
    if (const auto& value = info.*field.value) {
      pdf::AppendName(text, field.key);
      pdf::AppendString(text, pdf::Utf8ToTextString(*value), false);
    }
  }
  if (text.empty()) {
    return 0;
  }
  const std::uint32_t number = writer.Reserve();
  writer.WriteObject(number, "<<" + text + ">>");
  return number;
}

}  // namespace TarnixTools::engines
