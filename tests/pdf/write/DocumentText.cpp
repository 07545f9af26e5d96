#include "pdf/write/DocumentText.h"

#include <algorithm>
#include <initializer_list>
#include <string_view>

#include "pdf/write/RewriteFixture.h"
#include "pdf/write/Serialize.h"
#include "support/Expected.h"

namespace TarnixTools::testing {
namespace {

std::string EntriesOf(const pdf::Object& dictionary,
                      std::initializer_list<std::string_view> without) {
  std::string text = "<<";
  for (const pdf::DictionaryEntry& entry : dictionary.Entries()) {
    if (std::find(without.begin(), without.end(), entry.Key()) == without.end()) {
      pdf::AppendName(text, entry.Key());
      pdf::AppendObject(text, entry.value);
    }
  }
  return text + ">>";
}

// Where it is not decoded, the dictionary tells how it is coded.
std::string StreamOf(pdf::Document& document, std::uint32_t number, const pdf::Object& dictionary) {
  const auto decoded = document.TryDecodeStream(number);
  if (decoded && decoded->complete) {
    return EntriesOf(dictionary, {"Length", "Filter", "DecodeParms"}) + "\n(" +
           DataText(decoded->data) + ")";
  }
  const auto stream = document.StreamOf(number);
  return EntriesOf(dictionary, {"Length"}) + "\ncoded (" +
         DataText(document.ReadStreamData(*stream, stream->extent.length)) + ")";
}

}  // namespace

std::string DocumentText(const std::string& bytes, const std::string& password) {
  const auto document = OpenBytes(bytes, password);
  std::string text =
      "trailer " + EntriesOf(document->trailer(), {"ID", "XRefStm", "Prev", "W", "Index", "Length",
                                                   "Filter", "DecodeParms"});
  for (std::uint32_t number = 1; number < document->object_limit(); ++number) {
    pdf::Arena arena;
    const pdf::Object value = document->Load({.number = number, .generation = 0}, arena);
    if (!document->Exists(number) || value.Get("Type").IsName("XRef") ||
        value.Get("Type").IsName("ObjStm")) {
      continue;
    }
    text += "\n" + std::to_string(number) + " ";
    if (document->IsStream(number)) {
      text += StreamOf(*document, number, value);
    } else {
      pdf::AppendObject(text, value);
    }
  }
  return text + "\n";
}

}  // namespace TarnixTools::testing
