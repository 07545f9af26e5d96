#include "Pdf2OfficeTask.h"

#include <system_error>
#include <utility>

#include "PdfException.h"
#include "PdfSummary.h"
#include "conversions/OfficeConverters.h"
#include "conversions/OfficeRun.h"
#include "foundation/JobWatch.h"
#include "foundation/Platform.h"
#include "foundation/Protection.h"
#include "foundation/Utf8.h"

namespace TarnixTools {
namespace {

// The format's name as the messages have it: "DOCX" in "PDF to DOCX conversion error [...]".
//   convert - sets the converter's options and returns its status
template <typename Convert>
void Guarded(const char* format, const Convert& convert) {
  try {
    convert();
  } catch (const std::exception& failure) {
    throw PdfException(PdfExceptionCode::InternalError, 0, "PDF to %s conversion error [%s]",
                       format, failure.what());
  } catch (...) {
    throw PdfException(PdfExceptionCode::InternalError, 0, "Unexpected pdf to %s conversion error",
                       format);
  }
}

// Waits for as long as it takes for a negative number of seconds.
std::optional<std::chrono::milliseconds> WaitOf(int seconds) {
  if (seconds < 0) {
    return std::nullopt;
  }
  return std::chrono::seconds(seconds);
}

// What of the document has no place in an Office file. Nothing is told of one that the document
// engine cannot open.
PdfReport LeftBehind(PdfDoc document) {
  PdfReport report;
  const auto add = [&report](PdfReportKind kind, std::int64_t count, const char* reason) {
    if (count > 0) {
      report.Add(
          {.kind = kind, .outcome = PdfReportOutcome::Dropped, .count = count, .reason = reason});
    }
  };
  try {
    const PdfSummary summary = document.GetSummary();
    if (summary.is_encrypted) {
      report.Add(ProtectionDropped(document.GetPath()));
    }
    add(PdfReportKind::Signature, summary.signatures, "it holds for the PDF document alone");
    add(PdfReportKind::FormField, summary.fields - summary.signatures, "what it shows is text now");
    add(PdfReportKind::Attachment, summary.attachments, "Office documents have none");
  } catch (const PdfException&) {
    report.Clear();
  }
  return report;
}

PdfReportKind KindOf(ConversionSdk::ConversionLoss loss) {
  switch (loss) {
    case ConversionSdk::ConversionLoss::kScannedText:
      return PdfReportKind::ScannedText;
    case ConversionSdk::ConversionLoss::kPageSize:
      return PdfReportKind::PageSize;
    default:
      return PdfReportKind::Damage;
  }
}

PdfReportEntry EntryOf(const ConversionSdk::ConversionFinding& finding) {
  const PdfReportKind kind = KindOf(finding.loss);
  return {.kind = kind,
          .outcome = kind == PdfReportKind::PageSize ? PdfReportOutcome::Replaced
                                                     : PdfReportOutcome::Dropped,
          .count = 1,
          .page = finding.page,
          .reason = WideToUtf8(finding.why)};
}

}  // namespace

Pdf2OfficeTask::Pdf2OfficeTask() {
  SetDefaults();
}

Pdf2OfficeTask::Pdf2OfficeTask(const PdfDoc& document) : PdfTask(document) {
  SetDefaults();
}

Pdf2OfficeTask::Pdf2OfficeTask(const Pdf2OfficeTask& other) = default;
Pdf2OfficeTask::Pdf2OfficeTask(Pdf2OfficeTask&& other) noexcept = default;
Pdf2OfficeTask& Pdf2OfficeTask::operator=(const Pdf2OfficeTask& other) = default;
Pdf2OfficeTask& Pdf2OfficeTask::operator=(Pdf2OfficeTask&& other) noexcept = default;
Pdf2OfficeTask::~Pdf2OfficeTask() = default;

void Pdf2OfficeTask::SetDefaults() {
  page_range_ = nullptr;
  run_ = nullptr;
  conversion_type_ = Pdf2OfficeDocx;
  out_name_ = "out_file";
  out_extension_ = ".docx";
  timeout_ = 60;
  password_.clear();
  debug_ = false;
  check_scan_only_ = false;
  scanned_pages_.clear();
  ocr_enabled_ = true;
}

void Pdf2OfficeTask::SetConversionType(Pdf2OfficeConversion type) {
  conversion_type_ = type;
  if (type == Pdf2OfficeXlsx) {
    out_extension_ = ".xlsx";
  } else if (type == Pdf2OfficePptx) {
    out_extension_ = ".pptx";
  }
}

void Pdf2OfficeTask::SetDebug(bool debug) {
  debug_ = debug;
  if (!debug) {
    return;
  }
  try {
    ConversionSdk::Platform::Platform::SetLogFilename(L"./out.log");
  } catch (const std::exception&) {
    // Without the library there is nothing to log; Execute tells that it is missing.
  }
}

void Pdf2OfficeTask::Execute() {
  RunJob("office", [this] { Run(); });
}

void Pdf2OfficeTask::Run() {
  if (documents_.size() != 1) {
    throw PdfException(PdfExceptionCode::InvalidParameter, 0,
                       "Invalid number of PDF docs [%d] (1 expected)", GetPdfDocsNum());
  }
  working_doc_ = InputDocument();
  GetInputOutput();
  GetPagesRange();
  const PdfReport left_behind = LeftBehind(working_doc_);
  StartConversionThread();
  report_.Add(left_behind);
  for (const ConversionSdk::ConversionFinding& finding : run_->findings) {
    report_.Add(EntryOf(finding));
  }
  written_files_ = {output_path_ + out_name_ + out_extension_};
}

bool Pdf2OfficeTask::CheckScan(std::vector<int>& scanned) {
  check_scan_only_ = true;
  scanned.clear();
  if (documents_.size() != 1) {
    throw PdfException(PdfExceptionCode::InvalidParameter, 0,
                       "Invalid number of PDF docs to check scan [%d] (1 expected)",
                       GetPdfDocsNum());
  }
  working_doc_ = InputDocument();
  GetInputOutput();
  GetPagesRange();
  scanned = scanned_pages_;
  return !scanned.empty();
}

void Pdf2OfficeTask::GetInputOutput() {
  input_path_ = PdfDoc::Utf8ToWs(working_doc_.GetPath());
  FillOutputPath();
  output_file_ = PdfDoc::Utf8ToWs(output_path_ + out_name_ + out_extension_);
  password_ = PdfDoc::Utf8ToWs(working_doc_.GetPassword());
}

// A document without pages counts as scanned throughout.
void Pdf2OfficeTask::GetPagesRange() {
  bool is_all_scanned = true;
  try {
    ConversionSdk::Pdf::PdfDocument document(input_path_);
    password_.empty() ? document.Open() : document.Open(password_);
    const std::vector<ConversionSdk::Pdf::PdfPage> pages = document.GetPages();
    for (std::size_t index = 0; index < pages.size(); ++index) {
      JobWatch::StopIfCancelled();
      if (pages[index].IsScanned()) {
        scanned_pages_.push_back(static_cast<int>(index) + 1);
      } else {
        is_all_scanned = false;
      }
    }
    document.Close();
    page_range_ = ConversionSdk::PageRange::Create(L"1-" + std::to_wstring(pages.size()));
  } catch (const std::exception& failure) {
    throw PdfException(PdfExceptionCode::InternalError, 0, "%s", failure.what());
  } catch (...) {
    throw PdfException(PdfExceptionCode::InternalError, 0,
                       "Unexpected pdf2office error getting page range");
  }
  if (page_range_ == nullptr) {
    throw PdfException(PdfExceptionCode::InternalError, 0,
                       "Unable to obtain input PDF pages range");
  }
  if (is_all_scanned && !check_scan_only_ && !ocr_enabled_) {
    throw PdfException(PdfExceptionCode::AllPagesScanned, 0,
                       "Input PDF [%s] has all its pages scanned", working_doc_.GetPath().c_str());
  }
}

// The thread works on a copy of the task, so that a late one has nothing to do with this.
void Pdf2OfficeTask::StartConversionThread() {
  run_ = std::make_shared<OfficeRun>();
  auto copy = std::make_shared<Pdf2OfficeTask>(*this);
  copy->SetProgress(nullptr);
  try {
    StartOfficeThread(run_, [copy] { ConversionThreadCb(copy.get()); });
  } catch (const std::system_error&) {
    throw PdfException(PdfExceptionCode::InternalError, 0,
                       "Unable to initialize conversion thread");
  }
  if (!WaitForThread()) {
    throw PdfException(PdfExceptionCode::ConversionTimeout, 0,
                       "PDF to office timeout of [%d] seconds, expired for [%s]", timeout_,
                       working_doc_.GetPath().c_str());
  }
  ThrowUnlessDone();
}

// Whether it came to its end in time. A conversion that is cancelled when it has begun to give its
// output the name comes to its end all the same.
bool Pdf2OfficeTask::WaitForThread() {
  try {
    if (run_->Wait(WaitOf(timeout_), &JobWatch::Report)) {
      return true;
    }
    if (!run_->Cancel()) {
      return run_->Wait(std::nullopt);
    }
  } catch (...) {  // what the thread has thrown, or the host's wish
    if (!run_->Cancel()) {
      return run_->Wait(std::nullopt);
    }
    LeaveOfficeThread(*run_);
    throw;
  }
  LeaveOfficeThread(*run_);
  return false;
}

void Pdf2OfficeTask::ThrowUnlessDone() const {
  platform::NoteSystemError(run_->system_error);  // on this thread
  switch (run_->status) {
    case ConversionSdk::kConversionDone:
      return;
    case ConversionSdk::kConversionCancelled:
      throw PdfException(PdfExceptionCode::InternalError, 0,
                         "PDF to office conversion cancelled by user");
    case ConversionSdk::kCopyProtected:
      throw PdfException(PdfExceptionCode::PasswordError, 0,
                         "PDF to office conversion failed, has copy protection/password");
    case ConversionSdk::kNoTables:
      throw PdfException(PdfExceptionCode::NoTablesFound, 0,
                         "PDF to office conversion failed, no tables to extract");
    default:
      throw PdfException(PdfExceptionCode::EngineError, run_->status,
                         "PDF to office conversion failed, unexpected error(%d)", run_->status);
  }
}

std::uint32_t Pdf2OfficeTask::ConversionThreadCb(void* task) {
  static_cast<Pdf2OfficeTask*>(task)->DoConversion();
  return 1;
}

void Pdf2OfficeTask::DoConversion() {
  switch (conversion_type_) {
    case Pdf2OfficeDocx:
      return ConvertPdf2Docx();
    case Pdf2OfficeXlsx:
      return ConvertPdf2Xlsx();
    case Pdf2OfficePptx:
      return ConvertPdf2Pptx();
  }
  throw PdfException(PdfExceptionCode::EngineError, 0, "Invalid PDF2OFFICE conversion type [%d]",
                     static_cast<int>(conversion_type_));
}

void Pdf2OfficeTask::ConvertPdf2Docx() {
  Guarded("DOCX", [this] {
    const auto converter = std::make_shared<PdfToWordConverter>();
    run_->SetConverter(converter);
    converter->SetPageRange(page_range_);
    converter->SetReconstructionMode(ConversionSdk::ReconstructionMode::Flowing);
    converter->SetOutputType(ConversionSdk::WordOutputType::Docx);
    converter->SetTextRecoveryEngine(ConversionSdk::TextRecoveryEngine::Automatic);
    converter->AddSourceFile(input_path_);
    converter->SetOutputDirectory(output_file_);
    converter->SetOverwriteMode(ConversionSdk::OverwriteMode::Overwrite);
    if (!password_.empty()) {
      converter->SetPassword(password_);
    }
    run_->Convert(*converter, output_file_);
  });
}

void Pdf2OfficeTask::ConvertPdf2Xlsx() {
  Guarded("XLSX", [this] {
    const auto converter = std::make_shared<PdfToExcelConverter>();
    run_->SetConverter(converter);
    converter->SetPageRange(page_range_);
    converter->SetOutputType(ConversionSdk::ExcelOutputType::Xlsx);
    converter->SetTextRecoveryEngine(ConversionSdk::TextRecoveryEngine::Automatic);
    converter->AddSourceFile(input_path_);
    converter->SetTablesFromContent(true);
    converter->SetSingleTable(false);
    converter->SetOutputDirectory(output_file_);
    if (!password_.empty()) {
      converter->SetPassword(password_);
    }
    run_->Convert(*converter, output_file_);
  });
}

void Pdf2OfficeTask::ConvertPdf2Pptx() {
  Guarded("PPTX", [this] {
    const auto converter = std::make_shared<PdfToPowerPointConverter>();
    run_->SetConverter(converter);
    converter->SetPageRange(page_range_);
    converter->SetTextRecoveryEngine(ConversionSdk::TextRecoveryEngine::Automatic);
    converter->AddSourceFile(input_path_);
    converter->SetOutputDirectory(output_file_);
    if (!password_.empty()) {
      converter->SetPassword(password_);
    }
    run_->Convert(*converter, output_file_);
  });
}

}  // namespace TarnixTools
