// What is known while a Word document is written.
#ifndef TARNIX_ENGINES_OFFICE_WRITERS_WORD_WORDCONTEXT_H_
#define TARNIX_ENGINES_OFFICE_WRITERS_WORD_WORDCONTEXT_H_

#include <atomic>
#include <cstdint>
#include <vector>

#include "engines/office/layout/OfficeDocument.h"
#include "engines/office/pages/PictureSource.h"
#include "engines/office/writers/package/PackageWriter.h"
#include "engines/office/writers/text/TextMeasure.h"
#include "engines/office/writers/word/Numbering.h"

namespace TarnixTools::engines::office {

// A footnote that text refers to.
struct UsedNote {
  const OfficePage* page = nullptr;
  const Note* note = nullptr;
  bool is_counted = false;  // its mark is its number
};

// Instead of the number of a note, in the piece that a note begins with: its own mark, which is
// counted, or shown as it is.
inline constexpr std::uint32_t kCountedMark = 0xFFFFFFFE;
inline constexpr std::uint32_t kShownMark = 0xFFFFFFFF;

struct WordContext {
  const OfficeDocument& document;
  PictureSource& pictures;
  const std::atomic<bool>& is_cancelled;
  PackageWriter& package;
  TextMeasure measure;
  Numbering numbering;
  std::vector<UsedNote> notes;      // in order; their identifiers count from 1
  std::uint32_t drawing_count = 0;  // every drawing has a number of its own
  std::uint32_t bookmark_count = 0;
};

// A part with text: the body, a header, a footer, the notes.
struct Story {
  WordContext& context;
  XmlWriter& xml;
  Relationships& relationships;
  bool has_page_fields = false;  // page numbers are counted
  bool may_have_notes = true;    // marks of notes refer to them
};

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_ENGINES_OFFICE_WRITERS_WORD_WORDCONTEXT_H_
