#include "engines/repair/Repair.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <exception>
#include <memory>
#include <optional>
#include <vector>

#include "engines/repair/RepairFailure.h"
#include "engines/repair/RepairedDocument.h"
#include "engines/support/contract/Encryption.h"
#include "engines/support/contract/Registry.h"
#include "foundation/Utf8.h"

namespace TarnixTools::engines {

using namespace repair;

struct TPdfRepairError {
  std::int32_t code;
  std::string message;
};

struct TPdfRepair {
  std::unique_ptr<RepairedDocument> document;
  std::uint32_t analysis_options = kAnalyzeAll;
  std::uint32_t rebuild_options = 0;
  bool is_repaired = false;    // saving puts right what was listed
  std::exception_ptr failure;  // of the last analysis: what is wrong is not known
  std::vector<TPdfRepairError> errors;
  std::size_t next_error = 0;
  RepairReport report;
  TPdfClaimProof claim_proof = nullptr;
  PdfRepairError last_error = kRepairNoError;
};

namespace {

using Objects = Registry<TPdfRepair>;

constexpr std::uint32_t kRebuild = 0x1;

void Require(bool condition) {
  engines::Require<RepairErrors>(condition);
}

void Reset(TPdfRepair& object) {
  object.errors.clear();
  object.next_error = 0;
  object.report.clear();
  object.is_repaired = false;
  object.failure = nullptr;
  object.document.reset();
}

void List(TPdfRepair& object, Tense tense) {
  object.document->Analyze(object.analysis_options);
  const ProblemList& problems = object.document->problems();
  for (const Problem& problem : problems.damage()) {
    object.errors.push_back({static_cast<std::int32_t>(problem.code), MessageOf(problem, tense)});
  }
  object.report = ReportOf(problems);
}

void Analyze(TPdfRepair& object, Tense tense) {
  Require(object.document != nullptr);
  object.errors.clear();
  object.next_error = 0;
  object.failure = nullptr;
  try {
    List(object, tense);
  } catch (...) {
    object.failure = std::current_exception();
    const Problem problem = {.code = ProblemCode::kAnalysisBroken, .outcome = Outcome::kLost};
    object.errors.push_back({static_cast<std::int32_t>(problem.code), MessageOf(problem, tense)});
    throw;
  }
}

// Who does not ask whether the analysis has failed must not get a document that is not repaired.
void Save(TPdfRepair& object, const platform::WidePath& path, const std::wstring& user_password,
          const std::wstring& owner_password, std::uint32_t permissions) {
  Require(object.document != nullptr);
  if (object.failure != nullptr) {
    std::rethrow_exception(object.failure);
  }
  const std::optional<pdf::Security> security =
      EncryptionWith(user_password, owner_password, permissions);
  object.report =
      object.document->Save(path, {.security = security ? &*security : nullptr,
                                   .is_repaired = object.is_repaired,
                                   .is_rebuilt = (object.rebuild_options & kRebuild) != 0,
                                   .claim_proof = object.claim_proof});
}

const TPdfRepairError* ErrorAt(TPdfRepair* object, std::size_t index) {
  if (object == nullptr || index >= object->errors.size()) {
    return nullptr;
  }
  object->next_error = index + 1;
  return &object->errors[index];
}

}  // namespace

void PdfRepairInitialize() {
  Objects::BeginSession();
}

void PdfRepairUnInitialize() {
  Objects::EndSession();
}

TPdfRepair* PdfRepairCreateObject() {
  return GuardedWithoutObject<RepairErrors>(
      [] { return Objects::Add(std::make_unique<TPdfRepair>()); });
}

int PdfRepairDestroyObject(TPdfRepair* object) {
  return Objects::Destroy(object) ? 1 : 0;
}

std::int32_t PdfRepairGetErrorCode(const TPdfRepair* object) {
  return LastErrorOf<RepairErrors>(object);
}

int PdfRepairOpenW(TPdfRepair* object, const platform::WidePath& path,
                   const std::wstring& password) {
  return Guarded<RepairErrors>(object, [&] {
    Reset(*object);
    object->document = std::make_unique<RepairedDocument>(path, WideToUtf8(password));
  });
}

int PdfRepairIsEncrypted(const TPdfRepair* object) {
  const bool is_open = object != nullptr && object->document != nullptr;
  return is_open && object->document->is_encrypted() ? 1 : 0;
}

int PdfRepairClose(TPdfRepair* object) {
  return Guarded<RepairErrors>(object, [&] {
    Require(object->document != nullptr);
    Reset(*object);
  });
}

std::uint32_t PdfRepairGetAnalysisOptions(const TPdfRepair* object) {
  return object != nullptr ? object->analysis_options : 0;
}

int PdfRepairSetAnalysisOptions(TPdfRepair* object, std::uint32_t options) {
  return Guarded<RepairErrors>(object, [&] { object->analysis_options = options; });
}

std::uint32_t PdfRepairGetRebuildOptions(const TPdfRepair* object) {
  return object != nullptr ? object->rebuild_options : 0;
}

int PdfRepairSetRebuildOptions(TPdfRepair* object, std::uint32_t options) {
  return Guarded<RepairErrors>(object, [&] { object->rebuild_options = options; });
}

int PdfRepairAnalyze(TPdfRepair* object) {
  return Guarded<RepairErrors>(object, [&] {
    object->is_repaired = false;
    Analyze(*object, Tense::kAhead);
  });
}

int PdfRepairAnalyzeAndRepair(TPdfRepair* object) {
  return Guarded<RepairErrors>(object, [&] {
    Analyze(*object, Tense::kDone);
    object->is_repaired = true;
    object->document->RequirePages();
  });
}

const TPdfRepairError* PdfRepairGetFirstError(TPdfRepair* object) {
  return ErrorAt(object, 0);
}

const TPdfRepairError* PdfRepairGetNextError(TPdfRepair* object) {
  return object != nullptr ? ErrorAt(object, object->next_error) : nullptr;
}

std::int32_t PdfRepairErrorGetErrorCode(const TPdfRepairError* error) {
  return error != nullptr ? error->code : 0;
}

std::int32_t PdfRepairErrorGetMessageA(const TPdfRepairError* error, char* buffer,
                                       std::int32_t size) {
  if (error == nullptr) {
    return 0;
  }
  const std::string& message = error->message;
  if (buffer != nullptr && size > 0) {
    const std::size_t count = std::min(message.size(), static_cast<std::size_t>(size) - 1);
    std::memcpy(buffer, message.data(), count);
    buffer[count] = '\0';
  }
  return static_cast<std::int32_t>(message.size() + 1);
}

int PdfRepairSaveAsW(TPdfRepair* object, const platform::WidePath& path,
                     const std::wstring& user_password, const std::wstring& owner_password,
                     std::uint32_t permissions) {
  return Guarded<RepairErrors>(
      object, [&] { Save(*object, path, user_password, owner_password, permissions); });
}

int PdfRepairSetClaimProof(TPdfRepair* object, TPdfClaimProof proof) {
  return Guarded<RepairErrors>(object, [&] { object->claim_proof = proof; });
}

std::int32_t PdfRepairGetReportCount(const TPdfRepair* object) {
  return object != nullptr ? static_cast<std::int32_t>(object->report.size()) : -1;
}

int PdfRepairGetReportEntry(TPdfRepair* object, std::int32_t index, TPdfRepairReportEntry* entry) {
  return Guarded<RepairErrors>(object, [&] {
    Require(index >= 0 && index < PdfRepairGetReportCount(object) && entry != nullptr);
    *entry = object->report[static_cast<std::size_t>(index)];
  });
}

}  // namespace TarnixTools::engines
