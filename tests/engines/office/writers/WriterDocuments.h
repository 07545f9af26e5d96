// Documents that are analysed already, made by hand, and what writers make of them.
//
//   OfficeDocument document = DocumentOf({PageWith({Block{TextAt(72, 100, {"One line"})}})});
//   const Parts parts = PartsOf(WordBytesOf(document));
//   EXPECT_THAT(parts.at("word/document.xml"), HasSubstr("One line"));
#ifndef TARNIX_TESTS_ENGINES_OFFICE_WRITERS_WRITERDOCUMENTS_H_
#define TARNIX_TESTS_ENGINES_OFFICE_WRITERS_WRITERDOCUMENTS_H_

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "engines/office/layout/OfficeDocument.h"

namespace TarnixTools::engines::office {

inline constexpr double kTestWidth = 595;
inline constexpr double kTestHeight = 842;
inline constexpr double kTestSize = 10;

// A paragraph of Liberation Serif, 10 points, a line each 12 points from the baseline on. A line is
// as wide as it is shown.
Paragraph TextAt(double left, double baseline, const std::vector<std::string>& lines);

// A paragraph of one line with these sides, whose text is as wide as that in any face.
Paragraph LineBetween(double left, double right, double baseline, const std::string& text);

// A page of text without a face: it is as wide as its pieces say, whichever fonts are installed.
OfficePage FacelessPage(std::vector<Block> blocks);

// Two rows of two cells with the texts, from the upper-left corner on.
Table TableAt(double left, double top, const std::vector<std::string>& texts);

// A page with one column.
OfficePage PageWith(std::vector<Block> blocks);

// A page with one drawing of one path.
OfficePage PageWithPath(const PathShape& path);

// Adds a band with a column for each list of blocks.
void AddBand(OfficePage& page, const std::vector<std::vector<Block>>& columns);

OfficeDocument DocumentOf(std::vector<OfficePage> pages);

// The parts of a package by name, inflated. Anything wrong with the archive is a failure.
using Parts = std::map<std::string, std::string>;
Parts PartsOf(std::string_view archive);

std::string WordBytesOf(const OfficeDocument& document, bool is_cancelled = false);
std::string SlideBytesOf(const OfficeDocument& document, bool is_cancelled = false);

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_TESTS_ENGINES_OFFICE_WRITERS_WRITERDOCUMENTS_H_
