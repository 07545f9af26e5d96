// The validator's part of the contract.
#include <cstdio>
#include <memory>
#include <optional>
#include <vector>

#include "engines/pdfa/ClaimProof.h"
#include "engines/pdfa/PdfA.h"
#include "engines/pdfa/Validation.h"
#include "engines/pdfa/ValidatorFailure.h"
#include "engines/support/contract/Registry.h"
#include "engines/support/files/DiskFile.h"
#include "engines/support/metadata/PdfAClaim.h"
#include "foundation/Utf8.h"
#include "pdf/tree/PageGeometry.h"
#include "pdf/tree/PageTree.h"

namespace TarnixTools::engines {

using namespace pdfa;

struct TPdfValidator {
  std::int32_t reporting_level = 1;
  std::unique_ptr<pdf::Document> document;
  std::optional<Level> wanted_level;  // nothing: the one that the document claims
  ValidationResult result;            // of the last validation
  PdfValidatorError last_error = kValidatorNoError;
};

namespace {

using Objects = Registry<TPdfValidator>;

constexpr std::int32_t kVerdictOnly = 0;
constexpr std::int32_t kManyOfEachRule = 2;

void Require(bool condition) {
  engines::Require<ValidatorErrors>(condition);
}

void Close(TPdfValidator& object) {
  object.document.reset();
  object.result = {};
}

void Open(TPdfValidator& object, const platform::WidePath& path, const std::wstring& password) {
  std::shared_ptr<std::FILE> file = OpenShared(path);
  if (file == nullptr) {
    throw ValidatorFailure(kValidatorOpenError);
  }
  object.document =
      pdf::Document::Open(std::make_unique<DiskSource>(std::move(file)), WideToUtf8(password));
}

// Boxes come in the space of their page; a host knows only what is seen.
void BringToSeen(pdf::Document& document, std::vector<Finding>& findings) {
  std::optional<pdf::PageTree> pages;
  for (Finding& finding : findings) {
    if (!finding.box || finding.page_number == 0) {
      continue;
    }
    if (!pages) {
      pages.emplace(document);
    }
    if (finding.page_number <= pages->pages().size()) {
      const pdf::PageTree::Page& page = pages->pages()[finding.page_number - 1];
      const pdf::PageGeometry geometry = pdf::ReadPageGeometry(document, *pages, page);
      finding.box = finding.box->Through(geometry.ToSeenPoints());
    }
  }
}

bool Validate(TPdfValidator& object) {
  object.result = {};
  Require(object.document != nullptr);
  ValidationOptions options;
  if (object.reporting_level < kManyOfEachRule) {
    options.most_of_rule = 1;
  }
  const std::optional<Level> claimed =
      object.wanted_level ? object.wanted_level : LevelOfCode(ComplianceOf(*object.document));
  object.result = pdfa::Validate(*object.document, claimed.value_or(Level::k2b), options);
  BringToSeen(*object.document, object.result.findings);
  return object.result.is_valid();
}

TPdfFinding ToContract(const Finding& finding) {
  TPdfFinding result;
  result.clause = finding.rule.clause;
  result.test = finding.rule.test;
  result.wrong = finding.wrong;
  result.cure = finding.cure;
  result.subject = finding.subject.c_str();
  result.object = static_cast<std::int32_t>(finding.object);
  result.page = static_cast<std::int32_t>(finding.page_number);
  if (finding.box) {
    result.has_box = 1;
    result.left = finding.box->left;
    result.bottom = finding.box->bottom;
    result.right = finding.box->right;
    result.top = finding.box->top;
  }
  return result;
}

}  // namespace

void PdfValidatorInitialize() {
  Objects::BeginSession();
}

void PdfValidatorUnInitialize() {
  Objects::EndSession();
}

TPdfValidator* PdfValidatorCreateObject() {
  return GuardedWithoutObject<ValidatorErrors>(
      [] { return Objects::Add(std::make_unique<TPdfValidator>()); });
}

int PdfValidatorDestroyObject(TPdfValidator* object) {
  return Objects::Destroy(object) ? 1 : 0;
}

std::int32_t PdfValidatorGetErrorCode(const TPdfValidator* object) {
  return LastErrorOf<ValidatorErrors>(object);
}

int PdfValidatorSetReportingLevel(TPdfValidator* object, std::int32_t level) {
  return Guarded<ValidatorErrors>(object, [&] {
    Require(level >= kVerdictOnly && level <= kManyOfEachRule);
    object->reporting_level = level;
  });
}

int PdfValidatorOpenW(TPdfValidator* object, const platform::WidePath& path,
                      const std::wstring& password, std::int32_t compliance) {
  return Guarded<ValidatorErrors>(object, [&] {
    Close(*object);
    object->wanted_level = LevelOfCode(compliance);
    Require(compliance == 0 || object->wanted_level);
    Open(*object, path, password);
  });
}

std::int32_t PdfValidatorGetCompliance(TPdfValidator* object) {
  return Guarded<ValidatorErrors>(object, [&] {
    Require(object->document != nullptr);
    return ComplianceOf(*object->document);
  });
}

int PdfValidatorValidate(TPdfValidator* object) {
  return Guarded<ValidatorErrors>(object, [&] { return Validate(*object) ? 1 : 0; });
}

std::int32_t PdfValidatorGetFindingCount(const TPdfValidator* object) {
  return object != nullptr ? static_cast<std::int32_t>(object->result.findings.size()) : -1;
}

int PdfValidatorGetFinding(TPdfValidator* object, std::int32_t index, TPdfFinding* finding) {
  return Guarded<ValidatorErrors>(object, [&] {
    Require(index >= 0 && index < PdfValidatorGetFindingCount(object) && finding != nullptr);
    *finding = ToContract(object->result.findings[static_cast<std::size_t>(index)]);
  });
}

std::int32_t PdfValidatorProveClaim(std::FILE* file) {
  std::int32_t code = -1;
  GuardedWithoutObject<ValidatorErrors>([&] {
    Require(file != nullptr);
    const std::optional<Level> level = ProveClaim(file);
    code = level ? CodeOf(*level) : 0;
  });
  return code;
}

int PdfValidatorClose(TPdfValidator* object) {
  return Guarded<ValidatorErrors>(object, [&] {
    Require(object->document != nullptr);
    Close(*object);
  });
}

}  // namespace TarnixTools::engines
