#include "engines/pdfa/convert/contents/Contents.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>

#include "pdf/content/ContentReader.h"
#include "pdf/content/Operators.h"
#include "pdf/content/PageContents.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines::pdfa {

using pdf::Arena;
using pdf::DictionaryEntry;
using pdf::Object;
using pdf::ObjectChange;

namespace {

// The content without what is no operator, and without the operands of that.
std::string Cleaned(std::string_view content) {
  std::string text;
  std::size_t done = 0;
  pdf::ContentReader reader(content);
  pdf::Operation operation;
  while (reader.Next(operation)) {
    if (pdf::IsOperator(operation.code)) {
      continue;
    }
    const char* start =
        operation.operands.empty() ? operation.name.data() : operation.operands.data();
    const auto begin = static_cast<std::size_t>(start - content.data());
    text += content.substr(done, begin - std::min(begin, done));
    text += '\n';
    done = static_cast<std::size_t>(operation.name.data() - content.data()) + operation.name.size();
  }
  return text += content.substr(done);
}

std::string PlainDictionary(const Object& dictionary) {
  std::string text = "<<";
  for (const DictionaryEntry& entry : dictionary.Entries()) {
    if (entry.Key() != "Filter" && entry.Key() != "DecodeParms") {
      pdf::AppendName(text, entry.Key());
      pdf::AppendObject(text, entry.value);
    }
  }
  return text + ">>";
}

void MendPage(Conversion& conversion, const pdf::PageTree::Page& page) {
  Arena arena;
  const Object dictionary = conversion.pages.Load(page, arena);
  const pdf::PageContents contents =
      pdf::ReadPageContents(conversion.document, dictionary.Get("Contents"));
  if (page.number == 0 || !contents.is_whole) {
    return;
  }
  std::string reference;
  pdf::AppendReference(
      reference, conversion.rewriter.Add(ObjectChange::Stream("<<>>", Cleaned(contents.bytes))));
  conversion.rewriter.SetEntry(page.number, "Contents", reference);
  conversion.report.Dropped("operators that are not known");
}

void MendStream(Conversion& conversion, std::uint32_t number) {
  Arena arena;
  const auto stream = conversion.document.TryDecodeStream(number);
  if (!stream || !stream->complete) {
    return;
  }
  conversion.rewriter.Change(
      number, ObjectChange::Stream(PlainDictionary(conversion.document.Load({number, 0}, arena)),
                                   Cleaned(stream->data)));
  conversion.report.Dropped("operators that are not known");
}

}  // namespace

void MendContents(Conversion& conversion, const ContentSurvey& survey) {
  for (const std::size_t index : survey.damaged_pages()) {
    MendPage(conversion, conversion.pages.pages()[index]);
  }
  for (const std::uint32_t number : survey.damaged_contents()) {
    MendStream(conversion, number);
  }
}

}  // namespace TarnixTools::engines::pdfa
