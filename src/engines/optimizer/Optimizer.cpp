#include "engines/optimizer/Optimizer.h"

#include <memory>
#include <optional>

#include "engines/optimizer/Limits.h"
#include "engines/optimizer/OptimizedDocument.h"
#include "engines/optimizer/OptimizerFailure.h"
#include "engines/support/contract/Encryption.h"
#include "engines/support/contract/Registry.h"
#include "foundation/Utf8.h"

namespace TarnixTools::engines {

using namespace optimizer;

struct TPdfOptimizer {
  OptimizerSettings settings = *ProfileSettings(kDefaultProfile);
  std::unique_ptr<OptimizedDocument> document;
  OptimizerReport report;  // of the last save
  TPdfClaimProof claim_proof = nullptr;
  PdfOptimizeError last_error = kOptimizerNoError;
};

namespace {

using Objects = Registry<TPdfOptimizer>;

void Require(bool condition) {
  engines::Require<OptimizerErrors>(condition);
}

void Save(TPdfOptimizer& object, const platform::WidePath& path, const std::wstring& user_password,
          const std::wstring& owner_password, std::uint32_t permissions) {
  object.report = {};
  Require(object.document != nullptr);
  const std::optional<pdf::Security> security =
      EncryptionWith(user_password, owner_password, permissions);
  object.report = object.document->Save(path, {.settings = object.settings,
                                               .security = security ? &*security : nullptr,
                                               .claim_proof = object.claim_proof});
}

template <typename Value>
int Set(TPdfOptimizer* object, Value OptimizerSettings::*setting, Value value,
        bool is_in_range = true) {
  return Guarded<OptimizerErrors>(object, [&] {
    Require(is_in_range);
    object->settings.*setting = value;
  });
}

bool IsResolution(float dpi) {
  return dpi >= 0 && dpi <= optimizer::limits::kMaxDpi;
}

}  // namespace

void PdfOptimizeInitialize() {
  Objects::BeginSession();
}

void PdfOptimizeUnInitialize() {
  Objects::EndSession();
}

TPdfOptimizer* PdfOptimizeCreateObject() {
  return GuardedWithoutObject<OptimizerErrors>(
      [] { return Objects::Add(std::make_unique<TPdfOptimizer>()); });
}

int PdfOptimizeDestroyObject(TPdfOptimizer* object) {
  return Objects::Destroy(object) ? 1 : 0;
}

std::int32_t PdfOptimizeGetErrorCode(const TPdfOptimizer* object) {
  return LastErrorOf<OptimizerErrors>(object);
}

int PdfOptimizeOpenW(TPdfOptimizer* object, const platform::WidePath& path,
                     const std::wstring& password) {
  return Guarded<OptimizerErrors>(object, [&] {
    object->document.reset();
    object->report = {};
    object->document = std::make_unique<OptimizedDocument>(path, WideToUtf8(password));
  });
}

int PdfOptimizeIsEncrypted(const TPdfOptimizer* object) {
  const bool is_open = object != nullptr && object->document != nullptr;
  return is_open && object->document->is_encrypted() ? 1 : 0;
}

int PdfOptimizeSaveAsW(TPdfOptimizer* object, const platform::WidePath& path,
                       const std::wstring& user_password, const std::wstring& owner_password,
                       std::uint32_t permissions) {
  return Guarded<OptimizerErrors>(
      object, [&] { Save(*object, path, user_password, owner_password, permissions); });
}

int PdfOptimizeSetClaimProof(TPdfOptimizer* object, TPdfClaimProof proof) {
  return Guarded<OptimizerErrors>(object, [&] { object->claim_proof = proof; });
}

int PdfOptimizeClose(TPdfOptimizer* object) {
  return Guarded<OptimizerErrors>(object, [&] {
    Require(object->document != nullptr);
    object->document.reset();
  });
}

int PdfOptimizeGetImageFigures(TPdfOptimizer* object, TPdfImageClass image_class,
                               TPdfImageFigures* figures) {
  return Guarded<OptimizerErrors>(object, [&] {
    const auto index = static_cast<std::size_t>(image_class);
    Require(index < kImageClassCount && figures != nullptr);
    *figures = object->report.images[index];
  });
}

int PdfOptimizeGetFontFigures(TPdfOptimizer* object, TPdfFontFigures* figures) {
  return Guarded<OptimizerErrors>(object, [&] {
    Require(figures != nullptr);
    *figures = object->report.fonts;
  });
}

std::int32_t PdfOptimizeGetReportCount(const TPdfOptimizer* object) {
  return object != nullptr ? static_cast<std::int32_t>(object->report.entries.size()) : -1;
}

int PdfOptimizeGetReportEntry(TPdfOptimizer* object, std::int32_t index,
                              TPdfOptimizeReportEntry* entry) {
  return Guarded<OptimizerErrors>(object, [&] {
    Require(index >= 0 && index < PdfOptimizeGetReportCount(object) && entry != nullptr);
    *entry = object->report.entries[static_cast<std::size_t>(index)];
  });
}

int PdfOptimizeSetProfile(TPdfOptimizer* object, std::int32_t profile) {
  return Guarded<OptimizerErrors>(object, [&] {
    const std::optional<OptimizerSettings> settings = ProfileSettings(profile);
    Require(settings.has_value());
    object->settings = *settings;
  });
}

int PdfOptimizeSetColorConversion(TPdfOptimizer* object, std::int32_t conversion) {
  const auto wanted = static_cast<ColorConversion>(conversion);
  return Set(object, &OptimizerSettings::color_conversion, wanted,
             wanted == ColorConversion::kNone || wanted == ColorConversion::kRgb);
}

int PdfOptimizeSetBitonalCompressions(TPdfOptimizer* object, std::uint32_t codecs) {
  return Set(object, &OptimizerSettings::bitonal_codecs, codecs);
}

int PdfOptimizeSetContinuousCompressions(TPdfOptimizer* object, std::uint32_t codecs) {
  return Set(object, &OptimizerSettings::continuous_codecs, codecs);
}

int PdfOptimizeSetImageQuality(TPdfOptimizer* object, std::int32_t quality) {
  return Set(object, &OptimizerSettings::image_quality, quality, quality >= 1 && quality <= 100);
}

int PdfOptimizeSetResolutionDPI(TPdfOptimizer* object, float dpi) {
  return Set(object, &OptimizerSettings::resolution_dpi, dpi, IsResolution(dpi));
}

int PdfOptimizeSetThresholdDPI(TPdfOptimizer* object, float dpi) {
  return Set(object, &OptimizerSettings::threshold_dpi, dpi, IsResolution(dpi));
}

int PdfOptimizeSetClipImages(TPdfOptimizer* object, int clip) {
  return Set(object, &OptimizerSettings::clips_images, clip != 0);
}

int PdfOptimizeSetOptimizeResources(TPdfOptimizer* object, int optimize) {
  return Set(object, &OptimizerSettings::optimizes_resources, optimize != 0);
}

int PdfOptimizeSetRemoveRedundantObjects(TPdfOptimizer* object, int remove) {
  return Set(object, &OptimizerSettings::removes_redundant_objects, remove != 0);
}

int PdfOptimizeSetRemoveStandardFonts(TPdfOptimizer* object, int remove) {
  return Set(object, &OptimizerSettings::removes_standard_fonts, remove != 0);
}

int PdfOptimizeSetSubsetFonts(TPdfOptimizer* object, int subset) {
  return Set(object, &OptimizerSettings::subsets_fonts, subset != 0);
}

int PdfOptimizeSetReduceColorComplexity(TPdfOptimizer* object, int reduce) {
  return Set(object, &OptimizerSettings::reduces_color_complexity, reduce != 0);
}

int PdfOptimizeSetStrip(TPdfOptimizer* object, std::uint32_t parts) {
  return Set(object, &OptimizerSettings::strip, parts);
}

}  // namespace TarnixTools::engines
