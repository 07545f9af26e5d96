// The conversion SDK's contract: documents as Word, Excel and PowerPoint files. What works is in a
// library of its own, libtarnixoffice.so, which is loaded when one of these classes is first used.
//
//   auto pages = ConversionSdk::PageRange::Create(L"1-3");
//   ConversionSdk::Converters::PdfToWordConverter converter;
//   converter.SetPageRange(pages);
//   converter.AddSourceFile(L"/data/report.pdf");
//   std::int32_t status = converter.ConvertTo(L"/data/report.docx", true);
//
// Everything here is defined in this header, so that classes of a host can derive from converters
// without linking the library. A missing or unfit library is a std::runtime_error of the first call
// that needs it. Wide strings are text in UTF-16, one unit in each wchar_t.
//
// An object is used by one thread at a time, but for Cancel and GetProgress of a converter, which
// any thread may call at any time.
#ifndef TARNIX_ENGINES_OFFICE_OFFICE_H_
#define TARNIX_ENGINES_OFFICE_OFFICE_H_

#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace ConversionSdk {

// What ConvertTo returns.
enum ConversionStatus : std::int32_t {
  kConversionDone = 0,
  kConversionCancelled = 1,
  kConversionFailed = 2,  // for a reason that is in the log
  kNoSourceFile = 3,      // none was added, or it cannot be opened
  kSourceDamaged = 4,     // it is no PDF document, or nothing of it can be read
  kOutputNotWritten = 5,  // the disk is full, or the directory takes no file
  kOutputExists = 6,      // and was not to be replaced
  kNoMemory = 7,
  kBadSetting = 8,       // an option has a value that there is no meaning for
  kLibraryUnfit = 9,     // the conversion library is missing or of another version
  kCopyProtected = 10,   // the password is missing or wrong
  kLibraryMissing = 11,  // one of those for fonts
  kNoTables = 15,        // a workbook was asked of a document without tables
};

// How the text of a Word document is laid out.
enum class ReconstructionMode : std::int32_t { Flowing = 0 };

enum class WordOutputType : std::int32_t { Docx = 4 };

enum class ExcelOutputType : std::int32_t { Xlsx = 1 };

// Automatic: pages without text of their own are recognised.
enum class TextRecoveryEngine : std::int32_t { Automatic = 0, Never = 1 };

enum class OverwriteMode : std::int32_t { Refuse = 0, Overwrite = 1 };

enum class OfficeFormat : std::int32_t { kWord, kExcel, kPowerPoint };

class ProgressEventArgs {
 public:
  ProgressEventArgs(std::int32_t page, std::int32_t page_count)
      : page_(page), page_count_(page_count) {}

  // Pages that are done, of how many.
  std::int32_t GetPage() const { return page_; }

  std::int32_t GetPageCount() const { return page_count_; }

 private:
  std::int32_t page_;
  std::int32_t page_count_;
};

class WarningEventArgs {
 public:
  WarningEventArgs(std::int32_t page, std::wstring text) : page_(page), text_(std::move(text)) {}

  // One-based; 0 for the whole document.
  std::int32_t GetPage() const { return page_; }

  const std::wstring& GetText() const { return text_; }

 private:
  std::int32_t page_;
  std::wstring text_;
};

// Everything that a conversion goes by.
struct ConversionRequest {
  OfficeFormat format = OfficeFormat::kWord;
  std::vector<std::wstring> source_files;
  std::wstring password;
  std::wstring page_range;  // empty for all pages
  std::wstring output_file;
  bool may_overwrite = false;
  ReconstructionMode reconstruction_mode = ReconstructionMode::Flowing;
  std::int32_t output_type = 0;
  TextRecoveryEngine text_recovery_engine = TextRecoveryEngine::Automatic;
  bool tables_from_content = true;
  bool is_single_table = false;
};

// What a page has lost on its way into the output.
enum class ConversionLoss : std::int32_t {
  kPage = 0,         // all of it: it cannot be read, and is blank
  kPartOfPage = 1,   // what cannot be read of it, or is too much
  kScannedText = 2,  // text that only a picture tells, and that could not be recognised
  kPageSize = 3,     // its size: it is made smaller as a whole, so that it fits
};

struct ConversionFinding {
  std::int32_t page = 0;  // of the source, one-based
  ConversionLoss loss{};
  std::wstring why;
};

// How far a conversion is, and whether it is to stop. For several threads at once.
class ConversionState {
 public:
  std::atomic<bool> is_cancelled{false};  // set by Cancel alone
  std::atomic<std::int32_t> pages_done{0};
  std::atomic<std::int32_t> page_count{0};
  // Why the system refused something, an errno value, where a conversion ended for that; else 0.
  std::atomic<std::int32_t> system_error{0};

  // False: the output is about to get its name, and nothing stops that any more.
  bool Cancel() noexcept {
    const std::lock_guard lock(mutex_);
    if (!is_completing_) {
      is_cancelled = true;
    }
    return is_cancelled;
  }

  // Whether the output may get its name: false once the conversion is cancelled.
  bool BeginCompleting() noexcept {
    const std::lock_guard lock(mutex_);
    is_completing_ = !is_cancelled;
    return is_completing_;
  }

  // May throw std::bad_alloc.
  void Add(ConversionFinding finding) {
    const std::lock_guard lock(mutex_);
    findings_.push_back(std::move(finding));
  }

  // In the order in which they came up; each is handed out once.
  std::vector<ConversionFinding> TakeFindings() noexcept {
    const std::lock_guard lock(mutex_);
    return std::exchange(findings_, {});
  }

  // Before a conversion begins.
  void Restart() noexcept {
    const std::lock_guard lock(mutex_);
    findings_.clear();
    is_completing_ = false;
    pages_done = 0;
    page_count = 0;
    system_error = 0;
  }

 private:
  std::mutex mutex_;
  std::vector<ConversionFinding> findings_;
  bool is_completing_ = false;
};

// Whom a running conversion tells.
class ConversionEvents {
 public:
  virtual ~ConversionEvents() = default;
  virtual void Progress(std::int32_t page, std::int32_t page_count) = 0;
  virtual void Warning(std::int32_t page, const std::wstring& text) = 0;
};

// A document that is looked at, as the library has it.
class OpenedDocument {
 public:
  virtual ~OpenedDocument() = default;
  virtual std::int32_t GetPageCount() = 0;
  //   page_index - zero-based
  virtual bool IsScanned(std::int32_t page_index) = 0;
};

// What the library gives. It lives as long as the process.
class ConversionServices {
 public:
  virtual ~ConversionServices() = default;

  // Throws std::runtime_error for what cannot be opened, a wrong password included.
  virtual std::unique_ptr<OpenedDocument> OpenDocument(const std::wstring& path,
                                                       const std::wstring& password) = 0;

  // Whether the text names pages: "3", "1-8", "1,4-6".
  virtual bool IsPageRange(const std::wstring& text) = 0;

  // One of ConversionStatus. Throws nothing.
  virtual std::int32_t Convert(const ConversionRequest& request, ConversionState& state,
                               ConversionEvents& events) noexcept = 0;

  // Appends a line per event of each later conversion to the file; empty: no more.
  virtual void SetLogFilename(const std::wstring& path) = 0;
};

// The library's services; throws std::runtime_error when it is missing or unfit.
ConversionServices& GetConversionServices();

class PageRange {
 public:
  // Null for a text that names no pages.
  static std::shared_ptr<PageRange> Create(const std::wstring& text) {
    return GetConversionServices().IsPageRange(text)
               ? std::shared_ptr<PageRange>(new PageRange(text))
               : nullptr;
  }

  const std::wstring& GetText() const { return text_; }

 private:
  explicit PageRange(std::wstring text) : text_(std::move(text)) {}

  std::wstring text_;
};

namespace Platform {

class Platform {
 public:
  // A log of all later conversions of the process; empty: none.
  static void SetLogFilename(const std::wstring& path) {
    GetConversionServices().SetLogFilename(path);
  }
};

}  // namespace Platform

namespace Pdf {

class PdfPage {
 public:
  explicit PdfPage(bool is_scanned) : is_scanned_(is_scanned) {}

  // Whether the page is a picture of a page: an image covers it, and it has no text.
  bool IsScanned() const { return is_scanned_; }

 private:
  bool is_scanned_;
};

class PdfDocument {
 public:
  explicit PdfDocument(std::wstring path) : path_(std::move(path)) {}

  // Throws std::runtime_error for what cannot be opened.
  void Open() { Open(std::wstring()); }

  void Open(const std::wstring& password) {
    document_ = GetConversionServices().OpenDocument(path_, password);
  }

  // In order. None while the document is closed.
  std::vector<PdfPage> GetPages() const {
    std::vector<PdfPage> pages;
    const std::int32_t count = document_ ? document_->GetPageCount() : 0;
    pages.reserve(static_cast<std::size_t>(count));
    for (std::int32_t index = 0; index < count; ++index) {
      pages.emplace_back(document_->IsScanned(index));
    }
    return pages;
  }

  void Close() { document_.reset(); }

 private:
  std::wstring path_;
  std::unique_ptr<OpenedDocument> document_;
};

}  // namespace Pdf

namespace Converters {

// What the three have in common.
class PdfConverter : private ConversionEvents {
 public:
  PdfConverter(const PdfConverter&) = delete;
  PdfConverter& operator=(const PdfConverter&) = delete;

  // All pages without it, and with null.
  void SetPageRange(const std::shared_ptr<PageRange>& pages) {
    request_.page_range = pages ? pages->GetText() : std::wstring();
  }

  // The document. A conversion has one: with several it ends with kBadSetting.
  void AddSourceFile(const std::wstring& path) { request_.source_files.push_back(path); }

  void SetTextRecoveryEngine(TextRecoveryEngine engine) { request_.text_recovery_engine = engine; }

  // The path of the file that ConvertTo writes. No directory is made of it.
  void SetOutputDirectory(const std::wstring& path) { request_.output_file = path; }

  void SetPassword(const std::wstring& password) { request_.password = password; }

  // Writes the file, whole or not at all. Returns one of ConversionStatus; no exception leaves it.
  std::int32_t ConvertTo(const std::wstring& path, bool may_overwrite) noexcept {
    try {
      request_.output_file = path;
      request_.may_overwrite = request_.may_overwrite || may_overwrite;
      state_.Restart();
      return GetConversionServices().Convert(request_, state_, *this);
    } catch (const std::bad_alloc&) {
      return kNoMemory;
    } catch (...) {
      return kLibraryUnfit;
    }
  }

  // A conversion that runs, and every later one, ends with kConversionCancelled. False for one that
  // is about to give its output its name, which comes to its end.
  bool Cancel() noexcept { return state_.Cancel(); }

  // Pages that are done, of how many; 0 of 0 before it is known.
  std::pair<std::int32_t, std::int32_t> GetProgress() const noexcept {
    return {state_.pages_done, state_.page_count};
  }

  // Why the system refused what the last conversion had it do: an errno value, or 0.
  std::int32_t GetSystemError() const noexcept { return state_.system_error; }

  // What pages have lost in the last conversion; each is handed out once. A page has a few at most.
  std::vector<ConversionFinding> TakeFindings() noexcept { return state_.TakeFindings(); }

 protected:
  explicit PdfConverter(OfficeFormat format) { request_.format = format; }

  ~PdfConverter() override = default;

  ConversionRequest request_;

 private:
  void Progress(std::int32_t page, std::int32_t page_count) final {
    OnProgress(std::make_shared<ProgressEventArgs>(page, page_count));
  }

  void Warning(std::int32_t page, const std::wstring& text) final {
    OnWarning(std::make_shared<WarningEventArgs>(page, text));
  }

  ConversionState state_;

 public:
  // Called on the thread that converts. They do nothing here; what they throw ends the conversion
  // with kConversionFailed.
  // NOLINTNEXTLINE(performance-unnecessary-value-param): who is called owns the event.
  virtual void OnProgress(std::shared_ptr<ProgressEventArgs> /*event*/) {}

  // NOLINTNEXTLINE(performance-unnecessary-value-param): who is called owns the event.
  virtual void OnWarning(std::shared_ptr<WarningEventArgs> /*event*/) {}
};

class PdfToWordConverter : public PdfConverter {
 public:
  PdfToWordConverter() : PdfConverter(OfficeFormat::kWord) { SetOutputType(WordOutputType::Docx); }

  void SetReconstructionMode(ReconstructionMode mode) { request_.reconstruction_mode = mode; }

  void SetOutputType(WordOutputType type) {
    request_.output_type = static_cast<std::int32_t>(type);
  }

  void SetOverwriteMode(OverwriteMode mode) {
    request_.may_overwrite = mode == OverwriteMode::Overwrite;
  }
};

class PdfToExcelConverter : public PdfConverter {
 public:
  PdfToExcelConverter() : PdfConverter(OfficeFormat::kExcel) {
    SetOutputType(ExcelOutputType::Xlsx);
  }

  void SetOutputType(ExcelOutputType type) {
    request_.output_type = static_cast<std::int32_t>(type);
  }

  // Tables that the text makes, with rules around them or without; no other text.
  void SetTablesFromContent(bool from_content) { request_.tables_from_content = from_content; }

  // All tables on one sheet, else each on its own.
  void SetSingleTable(bool is_single) { request_.is_single_table = is_single; }
};

class PdfToPowerPointConverter : public PdfConverter {
 public:
  PdfToPowerPointConverter() : PdfConverter(OfficeFormat::kPowerPoint) {}
};

}  // namespace Converters
}  // namespace ConversionSdk

#endif  // TARNIX_ENGINES_OFFICE_OFFICE_H_
