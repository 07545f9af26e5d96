// Which pages of a document, and which strips of them, become which sections of a Word document
// (ECMA-376, part 1, 17.6): pages that are alike are one section.
#ifndef TARNIX_ENGINES_OFFICE_WRITERS_WORD_SECTIONPLAN_H_
#define TARNIX_ENGINES_OFFICE_WRITERS_WORD_SECTIONPLAN_H_

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "engines/office/layout/OfficeDocument.h"

namespace TarnixTools::engines::office {

struct ColumnPlace {
  double left = 0;
  double right = 0;
};

// Bands of a page that follow each other.
struct SectionPart {
  std::size_t page = 0;  // in OfficeDocument::pages
  std::size_t first_band = 0;
  std::size_t band_count = 0;
  std::vector<Block> down;  // of a section that runs down, instead of bands: as BlocksDown tells
};

// Whose header and footer the pages of a section show: pages of OfficeDocument.
struct SectionMargins {
  std::optional<std::size_t> first;
  std::optional<std::size_t> odd;
  std::optional<std::size_t> even;
};

enum class NumberFormat : std::uint8_t { kDecimal, kLowerRoman, kUpperRoman };

struct PageNumber {
  std::int32_t value = 0;
  NumberFormat format = NumberFormat::kDecimal;
};

struct SectionPlan {
  bool is_continuous = false;  // it begins on the page that the section before it ends on
  double width = 0;
  double height = 0;
  double left = 0;  // where its text begins and ends, on the page
  double right = 0;
  double top = 0;
  double bottom = 0;
  std::vector<ColumnPlace> columns;  // from left to right
  bool is_right_to_left = false;     // of its columns the right one is the first
  bool runs_down = false;            // its lines run downwards and follow each other to the left
  std::vector<SectionPart> parts;    // each begins a page, but the first of one that is continuous
  SectionMargins margins;
  std::optional<PageNumber> start;  // of its first page, where counting does not give it
};

struct DocumentPlan {
  std::vector<SectionPlan> sections;
  bool has_even_pages = false;  // pages with even numbers have headers of their own
};

DocumentPlan PlanSections(const OfficeDocument& document);

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_ENGINES_OFFICE_WRITERS_WORD_SECTIONPLAN_H_
