#include "engines/pdfa/convert/contents/Contents.h"

#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <string_view>

#include "engines/pdfa/convert/contents/EditedContents.h"
#include "engines/pdfa/convert/contents/Interpolation.h"
#include "engines/pdfa/convert/contents/LargeReals.h"
#include "pdf/content/ContentReader.h"
#include "pdf/content/Operators.h"

namespace TarnixTools::engines::pdfa {

namespace {

// Turns interpolation off in the entries of an inline image.
//   begin - of the entries in the content
void StopInterpolation(std::string_view entries, std::size_t begin, ContentEdits& edits) {
  const std::size_t at = InterpolationOf(entries);
  if (at != std::string_view::npos) {
    edits.Replace(begin + at, begin + at + kTrue.size(), "false");
  }
}

// Takes out what is no operator, and the operands of that; for part 1 real numbers that are too
// large for it, too.
ContentEdits CleaningOf(std::string_view content, bool is_part1) {
  ContentEdits edits;
  pdf::ContentReader reader(content);
  pdf::Operation operation;
  while (reader.Next(operation)) {
    if (!operation.image_entries.empty()) {
      StopInterpolation(operation.image_entries,
                        static_cast<std::size_t>(operation.image_entries.data() - content.data()),
                        edits);
    }
    const bool is_known = pdf::IsOperator(operation.code);
    if (is_known && !(is_part1 && HasLargeReal(operation.operands))) {
      continue;
    }
    const char* start =
        operation.operands.empty() ? operation.name.data() : operation.operands.data();
    const auto end = static_cast<std::size_t>(operation.name.data() - content.data());
    edits.Replace(static_cast<std::size_t>(start - content.data()), end + operation.name.size(),
                  is_known
                      ? WithoutLargeReals(operation.operands) + " " + std::string(operation.name)
                      : std::string("\n"));
  }
  return edits;
}

void MendPage(Conversion& conversion, std::uint32_t number) {
  const pdf::PageContents contents = ContentOfPage(conversion, number);
  if (!contents.is_whole) {
    return;
  }
  conversion.page_edits[number].Take(CleaningOf(contents.bytes, conversion.is_part1()));
  conversion.report.Changed("content with operators or numbers that are not allowed");
}

void MendStream(Conversion& conversion, std::uint32_t number) {
  const auto stream = conversion.document.TryDecodeStream(number);
  if (!stream || !stream->complete) {
    return;
  }
  conversion.stream_edits[number].Take(CleaningOf(stream->data, conversion.is_part1()));
  conversion.report.Changed("content with operators or numbers that are not allowed");
}

}  // namespace

void MendContents(Conversion& conversion, const ContentSurvey& survey) {
  std::set<std::size_t> pages = survey.damaged_pages();
  std::set<std::uint32_t> streams = survey.damaged_contents();
  if (conversion.is_part1()) {
    pages.insert(survey.pages_with_large_reals().begin(), survey.pages_with_large_reals().end());
    streams.insert(survey.contents_with_large_reals().begin(),
                   survey.contents_with_large_reals().end());
  }
  std::set<std::uint32_t> numbers;  // each once, however often the page stands in the document
  for (const std::size_t index : pages) {
    numbers.insert(conversion.pages.pages()[index].number);
  }
  numbers.erase(0);
  for (const std::uint32_t number : numbers) {
    MendPage(conversion, number);
  }
  for (const std::uint32_t number : streams) {
    MendStream(conversion, number);
  }
}

}  // namespace TarnixTools::engines::pdfa
