#include "engines/toolbox/DocumentInfo.h"

#include <algorithm>
#include <string_view>
#include <unordered_set>

#include "pdf/tree/TextString.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines::toolbox {

namespace {

std::string_view KeyOf(const DocumentInfoField& field) {
  return XmpMirrorOf(field.field).key;
}

}  // namespace

DocumentInfo ReadDocumentInfo(pdf::Document& document) {
  DocumentInfo info;
  pdf::Arena arena;
  const pdf::Object dictionary = document.Resolve(document.trailer().Get("Info"), arena);
  for (const DocumentInfoField& field : kDocumentInfoFields) {
    const pdf::Object value = document.Resolve(dictionary.Get(KeyOf(field)), arena);
    if (!value.IsNull()) {
      info.*field.value = pdf::TextStringToUtf8(value.Text());
    }
  }
  return info;
}

std::vector<InfoEntry> ReadInfoEntries(pdf::Document& document) {
  std::vector<InfoEntry> entries;
  std::unordered_set<std::string_view> seen;
  pdf::Arena arena;
  const pdf::Object dictionary = document.Resolve(document.trailer().Get("Info"), arena);
  for (const pdf::DictionaryEntry& entry : dictionary.Entries()) {
    const pdf::Object value = document.Resolve(entry.value, arena);
    if ((value.IsString() || value.IsName() || value.IsNumber() || value.IsBoolean()) &&
        seen.insert(entry.Key()).second) {
      InfoEntry& kept = entries.emplace_back(InfoEntry{std::string(entry.Key()), {}});
      pdf::AppendObject(kept.value, value);
    }
  }
  return entries;
}

std::uint32_t WriteDocumentInfo(pdf::FileWriter& writer, const DocumentInfo& info,
                                const DocumentInfo& before, std::span<const InfoEntry> entries) {
  std::string text;
  for (const InfoEntry& entry : entries) {
    const auto* const field =
        std::find_if(kDocumentInfoFields.begin(), kDocumentInfoFields.end(),
                     [&](const DocumentInfoField& other) { return entry.key == KeyOf(other); });
    if (field == kDocumentInfoFields.end() || info.*field->value == before.*field->value) {
      pdf::AppendName(text, entry.key);
      pdf::AppendToken(text, entry.value);
    }
  }
  for (const DocumentInfoField& field : kDocumentInfoFields) {
    const auto& value = info.*field.value;
    if (value && value != before.*field.value) {
      pdf::AppendName(text, KeyOf(field));
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

}  // namespace TarnixTools::engines::toolbox
