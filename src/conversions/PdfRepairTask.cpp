#include "PdfRepairTask.h"

#include <cstdint>
#include <vector>

#include "PdfException.h"
#include "engines/pdfa/PdfA.h"
#include "engines/repair/Repair.h"
#include "foundation/JobWatch.h"
#include "foundation/Platform.h"
#include "foundation/Protection.h"
#include "foundation/Utf8.h"

namespace TarnixTools {
namespace {

using engines::TPdfRepair;

// Printing, also at the best quality (ISO 32000-2, table 22).
constexpr std::uint32_t kPrintingAllowed = 0x804;
constexpr std::uint32_t kRebuild = 0x1;
constexpr std::uint32_t kAllAnalyses = 7;
constexpr std::int32_t kNoObject = 1;

// How far the job is behind its two stages, in hundredths.
constexpr int kAnalyzed = 60;
constexpr int kSaved = 100;

// In a session that has been started; ends it when there is no object.
TPdfRepair* CreateObject() {
  TPdfRepair* repair = engines::PdfRepairCreateObject();
  if (repair == nullptr) {
    engines::PdfRepairUnInitialize();
    throw PdfException(PdfExceptionCode::EngineError, kNoObject,
                       "Unable to create PDFREPAIR object");
  }
  return repair;
}

// The session ends first, which leaves the object behind: the next session reclaims it.
[[noreturn]] void Fail(TPdfRepair* repair, const char* format, const std::string& path) {
  engines::PdfRepairUnInitialize();
  const std::int32_t code = engines::PdfRepairGetErrorCode(repair);
  engines::PdfRepairClose(repair);
  throw PdfException(PdfExceptionCode::EngineError, code, format, path.c_str());
}

void Open(TPdfRepair* repair, const PdfDoc& document) {
  if (engines::PdfRepairOpenW(repair, platform::WidePath(document.GetPath()),
                              Utf8ToWide(document.GetPassword())) == 0) {
    Fail(repair, "Unable to open doc [%s] to be repaired", document.GetPath());
  }
}

void Release(TPdfRepair* repair) {
  engines::PdfRepairClose(repair);
  engines::PdfRepairDestroyObject(repair);
  engines::PdfRepairUnInitialize();
}

std::string MessageOf(const engines::TPdfRepairError* error) {
  std::vector<char> text(
      static_cast<std::size_t>(engines::PdfRepairErrorGetMessageA(error, nullptr, 0)));
  engines::PdfRepairErrorGetMessageA(error, text.data(), static_cast<std::int32_t>(text.size()));
  return text.data();
}

void AddMessages(TPdfRepair* repair, std::list<std::string>& messages) {
  for (const auto* error = engines::PdfRepairGetFirstError(repair); error != nullptr;
       error = engines::PdfRepairGetNextError(repair)) {
    messages.push_back(MessageOf(error));
  }
}

PdfReportKind KindOf(engines::TPdfRepairedKind kind) {
  switch (kind) {
    case engines::TPdfRepairedKind::kSignature:
      return PdfReportKind::Signature;
    case engines::TPdfRepairedKind::kXmpPacket:
      return PdfReportKind::XmpPacket;
    case engines::TPdfRepairedKind::kPdfAClaim:
      return PdfReportKind::PdfAClaim;
    case engines::TPdfRepairedKind::kDamage:
      break;
  }
  return PdfReportKind::Damage;
}

void AddReport(TPdfRepair* repair, PdfReport& report) {
  const std::int32_t count = engines::PdfRepairGetReportCount(repair);
  for (std::int32_t i = 0; i < count; ++i) {
    engines::TPdfRepairReportEntry entry;
    engines::PdfRepairGetReportEntry(repair, i, &entry);
    report.Add({.kind = KindOf(entry.kind),
                .outcome = entry.is_lost ? PdfReportOutcome::Dropped : PdfReportOutcome::Kept,
                .count = static_cast<std::int64_t>(entry.count),
                .page = 0,
                .reason = entry.reason});
  }
}

// The host may have the job stop here.
void BeginSaving(JobStages& stages, TPdfRepair* repair) {
  try {
    stages.Begin(kSaved);
  } catch (...) {
    Release(repair);
    throw;
  }
}

}  // namespace

PdfRepairTask::PdfRepairTask(const PdfDoc& document) : PdfTask(document) {
  SetDefaults();
}

PdfRepairTask::PdfRepairTask(const PdfDoc& document, const std::string& name) : PdfTask(document) {
  SetDefaults();
  SetOutName(name);
}

PdfRepairTask::PdfRepairTask(const PdfRepairTask& other) = default;
PdfRepairTask::PdfRepairTask(PdfRepairTask&& other) noexcept = default;
PdfRepairTask& PdfRepairTask::operator=(const PdfRepairTask& other) = default;
PdfRepairTask& PdfRepairTask::operator=(PdfRepairTask&& other) noexcept = default;
PdfRepairTask::~PdfRepairTask() = default;

void PdfRepairTask::SetOutName(const std::string& name) {
  if (!name.empty()) {
    out_name_ = name;
  }
}

int PdfRepairTask::GetErrorsNum() const {
  return static_cast<int>(errors_.size());
}

bool PdfRepairTask::IsDamaged(const PdfDoc& document) {
  std::list<std::string> problems;
  return IsDamaged(document, problems);
}

bool PdfRepairTask::IsDamaged(const PdfDoc& document, std::list<std::string>& problems) {
  engines::PdfRepairInitialize();
  TPdfRepair* repair = CreateObject();
  Open(repair, document);
  engines::PdfRepairSetAnalysisOptions(repair, kAllAnalyses);
  engines::PdfRepairAnalyze(repair);
  const bool is_damaged = engines::PdfRepairGetFirstError(repair) != nullptr;
  AddMessages(repair, problems);
  Release(repair);
  return is_damaged;
}

void PdfRepairTask::Execute() {
  RunJob("repair", [this] { Run(); });
}

void PdfRepairTask::Run() {
  if (GetPdfDocsNum() != 1) {
    throw PdfException(PdfExceptionCode::InvalidParameter, 0,
                       "Unexpected PDF docs number [%d], expected single doc at task",
                       GetPdfDocsNum());
  }
  const PdfDoc document = InputDocument();
  FillOutputPath();
  RepairDoc(document, output_path_ + out_name_);
  written_files_ = {output_path_ + out_name_};
}

void PdfRepairTask::SetDefaults() {
  out_name_ = "output_repaired_doc.pdf";
  errors_.clear();
}

// The result of the repair is not looked at: what cannot be saved fails then, with its problems
// listed.
void PdfRepairTask::RepairDoc(const PdfDoc& document, const std::string& output_file) {
  JobStages stages;
  stages.Begin(kAnalyzed);
  engines::PdfRepairInitialize();
  TPdfRepair* repair = CreateObject();
  Open(repair, document);
  engines::PdfRepairSetRebuildOptions(repair,
                                      engines::PdfRepairGetRebuildOptions(repair) | kRebuild);
  engines::PdfRepairSetClaimProof(repair, &engines::PdfValidatorProveClaim);
  engines::PdfRepairAnalyzeAndRepair(repair);
  GetRepairErrorList(repair);
  BeginSaving(stages, repair);
  const std::wstring password = Utf8ToWide(out_password_);
  if (engines::PdfRepairSaveAsW(repair, platform::WidePath(output_file), password, password,
                                kPrintingAllowed) == 0) {
    Fail(repair, "Unable to generate repaired output doc [%s]", document.GetPath());
  }
  AddReport(repair, report_);
  if (out_password_.empty() && engines::PdfRepairIsEncrypted(repair) != 0) {
    report_.Add(ProtectionDropped(document.GetPath()));
  }
  Release(repair);
}

void PdfRepairTask::GetRepairErrorList(TPdfRepair* repair) {
  AddMessages(repair, errors_);
}

}  // namespace TarnixTools
