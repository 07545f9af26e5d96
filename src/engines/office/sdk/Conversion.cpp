#include "engines/office/sdk/Conversion.h"

#include <algorithm>
#include <cerrno>
#include <exception>
#include <new>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "engines/office/Limits.h"
#include "engines/office/layout/DocumentAnalysis.h"
#include "engines/office/pages/DocumentPictures.h"
#include "engines/office/sdk/PageAnalysers.h"
#include "engines/office/sdk/PageRangeText.h"
#include "engines/office/writers/sheets/SheetWriter.h"
#include "engines/office/writers/slides/SlideWriter.h"
#include "engines/office/writers/word/WordWriter.h"
#include "engines/support/files/SavedFile.h"
#include "engines/support/fonts/LibraryMissing.h"
#include "engines/support/pages/Cancellation.h"
#include "foundation/Platform.h"
#include "foundation/Utf8.h"
#include "pdf/Error.h"

namespace TarnixTools::engines::office {

namespace {

using ConversionSdk::ConversionRequest;
using ConversionSdk::ConversionState;
using ConversionSdk::OfficeFormat;

// Times the first page's side that a slide may have.
constexpr double kLittleMore = 1.1;

// How a conversion ends that does not come to its end.
class Failure : public std::exception {
 public:
  Failure(std::int32_t status, std::string why, int system_error = 0)
      : status_(status), why_(std::move(why)), system_error_(system_error) {}

  std::int32_t status() const { return status_; }

  int system_error() const { return system_error_; }

  const char* what() const noexcept override { return why_.c_str(); }

 private:
  std::int32_t status_;
  std::string why_;
  int system_error_;
};

std::int32_t StatusOf(const pdf::Error& error) {
  switch (error.code()) {
    case pdf::ErrorCode::kPasswordRequired:
    case pdf::ErrorCode::kUnsupportedSecurity:
    case pdf::ErrorCode::kDamagedSecurity:
      return ConversionSdk::kCopyProtected;
    case pdf::ErrorCode::kReadFailed:
    case pdf::ErrorCode::kSourceChanged:
      return ConversionSdk::kNoSourceFile;
    case pdf::ErrorCode::kWriteFailed:
      return ConversionSdk::kOutputNotWritten;
    case pdf::ErrorCode::kInternal:
      return ConversionSdk::kConversionFailed;
    default:
      return ConversionSdk::kSourceDamaged;
  }
}

std::int32_t OutputTypeOf(OfficeFormat format) {
  switch (format) {
    case OfficeFormat::kWord:
      return static_cast<std::int32_t>(ConversionSdk::WordOutputType::Docx);
    case OfficeFormat::kExcel:
      return static_cast<std::int32_t>(ConversionSdk::ExcelOutputType::Xlsx);
    case OfficeFormat::kPowerPoint:
      return 0;
  }
  throw Failure(ConversionSdk::kBadSetting, "there is no such format");
}

// All slides are of one size: that of the first page, or a little more where others need it.
pdf::SeenSize SlideSize(DocumentReader& reader, const std::vector<std::size_t>& page_indexes) {
  const pdf::SeenSize first = reader.SizeOf(page_indexes.front());
  pdf::SeenSize size = first;
  for (const std::size_t index : page_indexes) {
    const pdf::SeenSize page = reader.SizeOf(index);
    if (page.width <= kLittleMore * first.width && page.height <= kLittleMore * first.height) {
      size = {std::max(size.width, page.width), std::max(size.height, page.height)};
    }
  }
  return {std::min(size.width, limits::kMaxSlideSide),
          std::min(size.height, limits::kMaxSlideSide)};
}

// What the output leaves to a page.
pdf::SeenSize RoomOf(OfficeFormat format, DocumentReader& reader,
                     const std::vector<std::size_t>& page_indexes) {
  if (format == OfficeFormat::kWord) {
    return {limits::kMaxWordSide, limits::kMaxWordSide};
  }
  if (format == OfficeFormat::kExcel || page_indexes.empty()) {
    return {};
  }
  return SlideSize(reader, page_indexes);
}

class Conversion {
 public:
  Conversion(const ConversionRequest& request, ConversionState& state,
             ConversionSdk::ConversionEvents& events, ConversionLog& log)
      : request_(&request), state_(&state), events_(&events), log_(&log) {}

  void Run() {
    CheckSettings();
    const platform::WidePath source(WideToUtf8(request_->source_files.front()));
    const std::string password = WideToUtf8(request_->password);
    const OfficeDocument document = Read(source, password);
    DocumentPictures pictures(source, password, state_->is_cancelled);
    for (const OfficePage& page : document.pages) {
      if (page.model.scale != 1) {
        pictures.SetScale(page.model.number, page.model.scale);
      }
    }
    Write(document, pictures);
  }

 private:
  void CheckSettings() const {
    if (request_->source_files.empty()) {
      throw Failure(ConversionSdk::kNoSourceFile, "there is no document to convert");
    }
    const bool has_range =
        request_->page_range.empty() || ReadPageRange(request_->page_range).has_value();
    if (request_->source_files.size() > 1 || !has_range || request_->output_file.empty() ||
        request_->output_type != OutputTypeOf(request_->format) ||
        request_->reconstruction_mode != ConversionSdk::ReconstructionMode::Flowing) {
      throw Failure(ConversionSdk::kBadSetting, "a setting has a value without a meaning");
    }
    if (!request_->may_overwrite && platform::Exists(WideToUtf8(request_->output_file))) {
      throw Failure(ConversionSdk::kOutputExists, "there is an output already");
    }
  }

  OfficeDocument Read(const platform::WidePath& source, const std::string& password) {
    const auto reader = DocumentReader::Open(source, password);
    const auto pages = PagesOf(request_->page_range, reader->page_count());
    state_->page_count = static_cast<std::int32_t>(pages.size());
    reader->SetRoom(RoomOf(request_->format, *reader, pages));
    OfficeDocument document;
    document.facts = reader->facts();
    const bool recognises_text =
        request_->text_recovery_engine == ConversionSdk::TextRecoveryEngine::Automatic;
    document.pages = AnalyzePages(*reader, pages, {source, password, recognises_text}, *state_,
                                  {.page_done = [this] { TellPage(); },
                                   .warning = [this](const PageWarning& it) { Warn(it); }});
    StopIfCancelled(state_->is_cancelled);
    AnalyzeDocument(document);
    return document;
  }

  void TellPage() {
    const std::int32_t done = ++state_->pages_done;
    events_->Progress(done, state_->page_count);
  }

  void Warn(const PageWarning& warning) {
    const auto number = static_cast<std::int32_t>(warning.page_index) + 1;
    log_->Write("page " + std::to_string(number) + ": " + warning.text);
    events_->Warning(number, Utf8ToWide(warning.text));
    state_->Add({number, warning.loss, Utf8ToWide(warning.text)});
  }

  void Write(const OfficeDocument& document, PictureSource& pictures) {
    auto output =
        platform::OutputFile::Create(platform::WidePath(WideToUtf8(request_->output_file)));
    if (!output) {
      throw Failure(ConversionSdk::kOutputNotWritten, "the output cannot be made", errno);
    }
    SavedFile file(std::move(*output));
    WriteTo(document, pictures, file.sink());
    if (!state_->BeginCompleting()) {
      throw Cancelled();
    }
    file.Complete();
  }

  void WriteTo(const OfficeDocument& document, PictureSource& pictures, pdf::ByteSink& sink) {
    const std::atomic<bool>& is_cancelled = state_->is_cancelled;
    switch (request_->format) {
      case OfficeFormat::kWord:
        return WriteWord(document, pictures, is_cancelled, sink);
      case OfficeFormat::kPowerPoint:
        return WriteSlides(document, pictures, is_cancelled, sink);
      case OfficeFormat::kExcel:
        if (!WriteSheets(document, request_->is_single_table, is_cancelled, sink)) {
          throw Failure(ConversionSdk::kNoTables, "the document has no tables");
        }
    }
  }

  const ConversionRequest* request_;
  ConversionState* state_;
  ConversionSdk::ConversionEvents* events_;
  ConversionLog* log_;
};

std::int32_t StatusOfCurrent(std::string& why, ConversionState& state) {
  try {
    throw;
  } catch (const Cancelled& cancelled) {
    why = cancelled.what();
    return ConversionSdk::kConversionCancelled;
  } catch (const Failure& failure) {
    why = failure.what();
    state.system_error = failure.system_error();
    return failure.status();
  } catch (const pdf::Error& error) {
    why = error.what();
    state.system_error = error.system_error();
    return StatusOf(error);
  } catch (const fonts::LibraryMissing& missing) {
    why = missing.what();
    return ConversionSdk::kLibraryMissing;
  } catch (const std::bad_alloc&) {
    why = "there is not enough memory";
    return ConversionSdk::kNoMemory;
  } catch (const std::exception& failure) {
    why = failure.what();
    return ConversionSdk::kConversionFailed;
  } catch (...) {
    why = "an event was answered by an exception";
    return ConversionSdk::kConversionFailed;
  }
}

}  // namespace

std::int32_t Convert(const ConversionRequest& request, ConversionState& state,
                     ConversionSdk::ConversionEvents& events, ConversionLog& log) noexcept {
  // What holds where there is not even the memory to say what failed.
  std::int32_t status = ConversionSdk::kNoMemory;
  try {
    std::string why = "done";
    log.Write("converting to " + WideToUtf8(request.output_file));
    try {
      Conversion(request, state, events, log).Run();
      status = ConversionSdk::kConversionDone;
    } catch (...) {
      status = StatusOfCurrent(why, state);
    }
    log.Write("status " + std::to_string(status) + ": " + why);
  } catch (...) {  // no memory for a line of the log
  }
  return status;
}

}  // namespace TarnixTools::engines::office
