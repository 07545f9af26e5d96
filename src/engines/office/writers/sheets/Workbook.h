// A workbook that is being written, by libxlsxwriter; its formats, each made once.
//
//   Workbook book;
//   lxw_worksheet* sheet = book.AddSheet("Table 1");
//   worksheet_write_number(sheet, 0, 0, 1.5, book.FormatFor(look));
//   book.WriteTo(sink);
#ifndef TARNIX_ENGINES_OFFICE_WRITERS_SHEETS_WORKBOOK_H_
#define TARNIX_ENGINES_OFFICE_WRITERS_SHEETS_WORKBOOK_H_

#include <array>
#include <cstdio>
#include <map>
#include <memory>
#include <string>

#include "engines/office/pages/DocumentReader.h"
#include "engines/support/layout/PageLayout.h"
#include "pdf/file/ByteSink.h"

struct lxw_format;
struct lxw_workbook;
struct lxw_worksheet;

namespace TarnixTools::engines::office {

// How a cell is shown.
struct CellFormat {
  std::string number;  // as spreadsheets write formats; empty for text
  std::string family;
  double size = 0;  // points; 0 for the size of the workbook
  bool is_bold = false;
  bool is_italic = false;
  bool is_underlined = false;
  bool is_struck = false;
  bool is_wrapped = false;
  Rgb color;
  std::optional<Rgb> fill;
  Alignment alignment = Alignment::kLeft;
  bool is_aligned = false;  // else as its kind is: text on the left, numbers on the right
  VerticalAlignment vertical = VerticalAlignment::kTop;
  std::array<Border, 4> borders;  // top, right, bottom, left
};

class Workbook {
 public:
  // Throws pdf::Error(kWriteFailed) where no temporary file can be made.
  explicit Workbook(const DocumentFacts& facts);
  ~Workbook();
  Workbook(const Workbook&) = delete;
  Workbook& operator=(const Workbook&) = delete;

  lxw_worksheet* AddSheet(const std::string& name);

  // Owned by the workbook.
  lxw_format* FormatFor(const CellFormat& look);

  // Closes the workbook. Throws pdf::Error(kWriteFailed), and what the sink throws.
  void WriteTo(pdf::ByteSink& sink);

 private:
  // The library writes to a name; that of an open file without one leaves nothing behind.
  std::shared_ptr<std::FILE> file_;
  lxw_workbook* book_ = nullptr;
  std::map<std::string, lxw_format*> formats_;
};

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_ENGINES_OFFICE_WRITERS_SHEETS_WORKBOOK_H_
