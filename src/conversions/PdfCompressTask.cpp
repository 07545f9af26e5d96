#include "PdfCompressTask.h"

#include "PdfException.h"
#include "conversions/OptimizerHandle.h"
#include "conversions/OptimizerReports.h"
#include "engines/optimizer/Optimizer.h"
#include "engines/pdfa/PdfA.h"
#include "foundation/JobWatch.h"
#include "foundation/Platform.h"
#include "foundation/Protection.h"
#include "foundation/Utf8.h"

namespace TarnixTools {
namespace {

using engines::TPdfOptimizer;

constexpr std::uint32_t kAllPermissions = 0xFFFFFFFF;

}  // namespace

PdfCompressTask::PdfCompressTask() {
  SetDefaults();
}

PdfCompressTask::PdfCompressTask(const PdfDoc& document) : PdfTask(document) {
  SetDefaults();
}

PdfCompressTask::PdfCompressTask(const std::list<PdfDoc>& documents) : PdfTask(documents) {
  SetDefaults();
}

PdfCompressTask::PdfCompressTask(const std::list<PdfDoc>& documents, PdfCompressLevel level)
    : PdfTask(documents) {
  SetDefaults();
  SetCompressLevel(level);
}

PdfCompressTask::PdfCompressTask(const PdfCompressTask& other) = default;
PdfCompressTask::PdfCompressTask(PdfCompressTask&& other) noexcept = default;
PdfCompressTask& PdfCompressTask::operator=(const PdfCompressTask& other) = default;
PdfCompressTask& PdfCompressTask::operator=(PdfCompressTask&& other) noexcept = default;
PdfCompressTask::~PdfCompressTask() = default;

void PdfCompressTask::SetCompressLevel(PdfCompressLevel level) {
  if (level < PdfCompressLevel::Low || level > PdfCompressLevel::Extreme) {
    throw PdfException(PdfExceptionCode::InvalidParameter, 0,
                       "Invalid compression level requested [%d] (expected range [%d-%d])",
                       static_cast<int>(level), static_cast<int>(PdfCompressLevel::Low),
                       static_cast<int>(PdfCompressLevel::Extreme));
  }
  compress_level_ = level;
}

void PdfCompressTask::SetOutPrefix(const std::string& prefix) {
  if (!prefix.empty()) {
    out_prefix_ = prefix;
  }
}

void PdfCompressTask::SetOutPdfName(const std::string& name) {
  out_pdf_name_ = name;
}

void PdfCompressTask::Execute() {
  RunJob("compress", [this] { Run(); });
}

void PdfCompressTask::Run() {
  ClearResults();
  if (documents_.empty()) {
    throw PdfException(PdfExceptionCode::InvalidParameter, 0,
                       "None file defined at compression task");
  }
  try {
    JobSteps steps(GetPdfDocsNum());
    for (const PdfDoc& document : documents_) {
      PdfDoc copy(document);
      CompressPdf(copy);
      steps.Done();
    }
  } catch (...) {
    ClearResults();
    throw;
  }
}

void PdfCompressTask::ClearResults() {
  report_.Clear();
  images_.clear();
  fonts_ = {};
}

const char* PdfCompressTask::GetImageClassName(PdfImageClass image_class) {
  switch (image_class) {
    case PdfImageClass::Photograph:
      return "photograph";
    case PdfImageClass::FlatArt:
      return "flat art";
    case PdfImageClass::TextScan:
      return "text scan";
    case PdfImageClass::Bitonal:
      return "bitonal image";
    case PdfImageClass::SoftMask:
      return "soft mask";
  }
  return "image";
}

void PdfCompressTask::SetDefaults() {
  compress_level_ = PdfCompressLevel::Recommended;
  out_prefix_ = "compressed";
  last_error_ = 0;
  compress_ratio_ = 0;
}

// The handle's destructor releases the object and ends the session, after each failure, too.
void PdfCompressTask::CompressPdf(PdfDoc& document) {
  const OptimizerHandle optimizer;
  if (optimizer.Get() == nullptr) {
    throw PdfException(PdfExceptionCode::EngineError, 0, "Could not create optimizer object");
  }
  ApplyLevel(optimizer.Get());
  engines::PdfOptimizeSetClaimProof(optimizer.Get(), &engines::PdfValidatorProveClaim);
  const std::string& path = document.GetPath();
  if (engines::PdfOptimizeOpenW(optimizer.Get(), platform::WidePath(path),
                                Utf8ToWide(document.GetPassword())) == 0) {
    Fail(engines::PdfOptimizeGetErrorCode(optimizer.Get()),
         "Could not compress document [%s], error [0x%08X]", path);
  }
  const long long in_size = GetFileSize(path);
  FillOutputPath();
  const std::string out_path = GetOutPdfName(document.GetDocName(true));
  const std::wstring out_password = Utf8ToWide(out_password_);
  if (engines::PdfOptimizeSaveAsW(optimizer.Get(), platform::WidePath(out_path), out_password,
                                  out_password, kAllPermissions) == 0) {
    const std::int32_t code = engines::PdfOptimizeGetErrorCode(optimizer.Get());
    engines::PdfOptimizeClose(optimizer.Get());
    Fail(code, "Could not save compressed document [%s], error [0x%08X]", out_path);
  }
  written_files_.push_back(out_path);
  AddReport(optimizer.Get(), report_);
  if (out_password_.empty() && engines::PdfOptimizeIsEncrypted(optimizer.Get()) != 0) {
    report_.Add(ProtectionDropped(path));
  }
  AddImages(optimizer.Get(), images_);
  AddFonts(optimizer.Get(), fonts_);
  if (engines::PdfOptimizeClose(optimizer.Get()) == 0) {
    Fail(engines::PdfOptimizeGetErrorCode(optimizer.Get()),
         "Could not close PDF optimizer for file [%s], error [0x%08X]", path);
  }
  last_error_ = 0;
  UpdateRatio(in_size, out_path);
}

void PdfCompressTask::ApplyLevel(TPdfOptimizer* optimizer) {
  switch (compress_level_) {
    case PdfCompressLevel::Low:
      LowCompressSettings(optimizer);
      return;
    case PdfCompressLevel::Recommended:
      RecommendedCompressSettings(optimizer);
      return;
    case PdfCompressLevel::Extreme:
      ExtremeCompressSettings(optimizer);
      return;
  }
  throw PdfException(PdfExceptionCode::InternalError, 0,
                     "Internal error, unexpected compression level [%d]",
                     static_cast<int>(compress_level_));
}

// On the profile of a new object.
void PdfCompressTask::LowCompressSettings(TPdfOptimizer* optimizer) {
  engines::PdfOptimizeSetColorConversion(optimizer, 0);
  engines::PdfOptimizeSetBitonalCompressions(optimizer, 0x80);
  engines::PdfOptimizeSetContinuousCompressions(optimizer, 2);
  engines::PdfOptimizeSetImageQuality(optimizer, 75);
  engines::PdfOptimizeSetResolutionDPI(optimizer, 200.0F);
  engines::PdfOptimizeSetThresholdDPI(optimizer, 400.0F);
  engines::PdfOptimizeSetOptimizeResources(optimizer, 1);
  engines::PdfOptimizeSetRemoveRedundantObjects(optimizer, 1);
  engines::PdfOptimizeSetRemoveStandardFonts(optimizer, 1);
  engines::PdfOptimizeSetSubsetFonts(optimizer, 1);
}

void PdfCompressTask::RecommendedCompressSettings(TPdfOptimizer* optimizer) {
  engines::PdfOptimizeSetProfile(optimizer, 2);
  engines::PdfOptimizeSetResolutionDPI(optimizer, 150.0F);
  engines::PdfOptimizeSetThresholdDPI(optimizer, 150.0F);
  engines::PdfOptimizeSetImageQuality(optimizer, 60);
  engines::PdfOptimizeSetColorConversion(optimizer, 0);
  engines::PdfOptimizeSetStrip(optimizer, 0x477);
}

void PdfCompressTask::ExtremeCompressSettings(TPdfOptimizer* optimizer) {
  engines::PdfOptimizeSetProfile(optimizer, 2);
  engines::PdfOptimizeSetColorConversion(optimizer, 1);
  engines::PdfOptimizeSetBitonalCompressions(optimizer, 0x80);
  engines::PdfOptimizeSetContinuousCompressions(optimizer, 2);
  engines::PdfOptimizeSetImageQuality(optimizer, 60);
  engines::PdfOptimizeSetResolutionDPI(optimizer, 72.0F);
  engines::PdfOptimizeSetThresholdDPI(optimizer, 110.0F);
  engines::PdfOptimizeSetClipImages(optimizer, 1);
  engines::PdfOptimizeSetOptimizeResources(optimizer, 1);
  engines::PdfOptimizeSetRemoveRedundantObjects(optimizer, 1);
  engines::PdfOptimizeSetRemoveStandardFonts(optimizer, 1);
  engines::PdfOptimizeSetSubsetFonts(optimizer, 1);
  engines::PdfOptimizeSetStrip(optimizer, 0x7F);
  engines::PdfOptimizeSetReduceColorComplexity(optimizer, 1);
}

void PdfCompressTask::Fail(std::int32_t code, const char* format, const std::string& path) {
  last_error_ = code;
  throw PdfException(PdfExceptionCode::EngineError, code, format, path.c_str(),
                     static_cast<unsigned>(code));
}

std::string PdfCompressTask::GetOutPdfName(const std::string& doc_name) {
  const std::string directory = output_path_ + '\\';
  if (!out_pdf_name_.empty()) {
    return directory + out_pdf_name_;
  }
  return directory + (out_prefix_.empty() ? doc_name : out_prefix_ + "_" + doc_name);
}

long long PdfCompressTask::GetFileSize(const std::string& path) {
  const platform::FilePtr file = platform::OpenForReading(path);
  if (file == nullptr) {
    return 0;
  }
  const std::int64_t start = platform::Tell(file.get());
  return platform::SeekToEnd(file.get()) ? platform::Tell(file.get()) - start : 0;
}

void PdfCompressTask::UpdateRatio(long long in_size, const std::string& out_path) {
  if (in_size <= 0) {
    return;  // it was gone as soon as it had been opened
  }
  const float ratio = static_cast<float>(GetFileSize(out_path)) / static_cast<float>(in_size);
  if (compress_ratio_ == 0.0F) {
    compress_ratio_ = ratio * 100;
  } else {
    compress_ratio_ = (compress_ratio_ + ratio * 100) * 0.5F;
  }
}

}  // namespace TarnixTools
