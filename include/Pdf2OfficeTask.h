// Makes a Word, Excel or PowerPoint document of a PDF document.
//
//   Pdf2OfficeTask task(report);                  // of report.pdf
//   task.SetConversionType(Pdf2OfficeXlsx);
//   task.SetOutName("report");
//   task.SetTimeout(600);
//   task.Execute();                               // report.xlsx beside report.pdf
#ifndef TARNIX_PDF_2_OFFICE_TASK_H_
#define TARNIX_PDF_2_OFFICE_TASK_H_

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "PdfTask.h"
#include "TarnixExport.h"

namespace ConversionSdk {
class PageRange;
}

namespace TarnixTools {

struct OfficeRun;

// What is written: flowing text with headings, lists, tables and pictures; a sheet for each table, with
// numbers as numbers; or a slide for each page, with text that can be edited.
enum Pdf2OfficeConversion : std::uint32_t {
  Pdf2OfficeDocx = 0,
  Pdf2OfficeXlsx = 1,
  Pdf2OfficePptx = 2,
};

// The conversion needs libtarnixoffice.so, which is loaded on first use. It runs on a thread of its
// own, on copies of what the task holds: a task may be destroyed while a conversion that has taken
// too long still comes to its end.
class TARNIX_EXPORT Pdf2OfficeTask : public PdfTask {
 public:
  // The task owns a copy of the document, which is not opened before Execute.
  Pdf2OfficeTask();
  explicit Pdf2OfficeTask(const PdfDoc& document);

  Pdf2OfficeTask(const Pdf2OfficeTask& other);
  Pdf2OfficeTask(Pdf2OfficeTask&& other) noexcept;
  Pdf2OfficeTask& operator=(const Pdf2OfficeTask& other);
  Pdf2OfficeTask& operator=(Pdf2OfficeTask&& other) noexcept;
  ~Pdf2OfficeTask();

  // A workbook or slides set the extension, ".xlsx" or ".pptx"; every other value leaves it as it
  // is. A value that is no conversion is refused by Execute.
  void SetConversionType(Pdf2OfficeConversion type);

  Pdf2OfficeConversion GetConversionType() const { return conversion_type_; }

  // The output's name without its extension; "out_file" at first. May be empty. UTF-8, a name and no
  // path: the directory is that of PdfTask::SetOutputPath.
  void SetOutName(const std::string& name) { out_name_ = name; }

  std::string& GetOutName() { return out_name_; }

  // Seconds that Execute waits for the conversion; 60 at first. 0 does not wait; less than 0 waits
  // for as long as it takes.
  void SetTimeout(int seconds) { timeout_ = seconds; }

  int GetTimeout() const { return timeout_; }

  // Whether a document all of whose pages are scanned is converted, its text recognised; true at
  // first. Documents with some scanned pages always are.
  void SetOcrEnabled(bool enabled) { ocr_enabled_ = enabled; }

  // True: all later conversions of the process write a log to "./out.log", in the current
  // directory. False takes nothing back.
  void SetDebug(bool debug);

  // Converts the document. The output is never protected. GetReport() tells so of a document that is,
  // of fields, signatures and attachments, which stay behind, and of pages that could not be read, or
  // whose text could not be recognised.
  //
  // Throws
  //   InvalidParameter   unless there is exactly one document
  //   InternalError      when it cannot be opened, with a wrong password too; without the
  //                      conversion library; and for whatever else fails on the way
  //   AllPagesScanned    when all pages are scanned, and text is not to be recognised
  //   ConversionTimeout  when the time is up: the conversion is told to stop, and nothing appears
  //                      under the output's name
  //   PasswordError      when the document's protection forbids it
  //   NoTablesFound      when a workbook is asked of a document without tables
  //   EngineError        for another status of the conversion, which is the engine's code; and for
  //                      a value that is no conversion
  void Execute();

  // The one-based numbers of the pages that are scanned: pictures of pages, without text of their
  // own. Returns whether there are some. Nothing is converted, and from now on Execute takes
  // documents whose pages are all scanned. Numbers of earlier looks stay and come first.
  //
  // Throws InvalidParameter unless there is exactly one document, and InternalError when it cannot
  // be opened.
  bool CheckScan(std::vector<int>& scanned);

  // Pages that Execute and CheckScan have found scanned, those of each look after those before.
  const std::vector<int>& GetScannedPages() const { return scanned_pages_; }

  // Converts what the task says, on this thread; always returns 1. What fails is thrown.
  //   task - a Pdf2OfficeTask that Execute has prepared
  static std::uint32_t ConversionThreadCb(void* task);

 private:
  void Run();
  void SetDefaults();
  void GetInputOutput();
  void GetPagesRange();
  void StartConversionThread();
  bool WaitForThread();
  void ThrowUnlessDone() const;
  void DoConversion();
  void ConvertPdf2Docx();
  void ConvertPdf2Xlsx();
  void ConvertPdf2Pptx();

  std::shared_ptr<ConversionSdk::PageRange> page_range_;
  std::shared_ptr<OfficeRun> run_;  // the last conversion
  PdfDoc working_doc_;
  Pdf2OfficeConversion conversion_type_ = Pdf2OfficeDocx;
  std::string out_name_;
  std::string out_extension_;
  int timeout_ = 0;
  std::wstring input_path_;
  std::wstring output_file_;
  std::wstring password_;
  bool debug_ = false;
  bool check_scan_only_ = false;
  std::vector<int> scanned_pages_;
  bool ocr_enabled_ = true;
};

}  // namespace TarnixTools

#endif  // TARNIX_PDF_2_OFFICE_TASK_H_
