#include "engines/pdfa/convert/ConvertedDocument.h"

#include <cerrno>
#include <functional>
#include <iterator>
#include <optional>
#include <string>
#include <utility>

#include "engines/pdfa/Validation.h"
#include "engines/pdfa/convert/Conversion.h"
#include "engines/pdfa/convert/ConverterFailure.h"
#include "engines/pdfa/convert/LevelChoice.h"
#include "engines/pdfa/convert/WrittenFile.h"
#include "engines/pdfa/convert/annotations/Annotations.h"
#include "engines/pdfa/convert/colors/Colors.h"
#include "engines/pdfa/convert/contents/Contents.h"
#include "engines/pdfa/convert/contents/EditedContents.h"
#include "engines/pdfa/convert/fonts/Fonts.h"
#include "engines/pdfa/convert/images/Images.h"
#include "engines/pdfa/convert/metadata/Metadata.h"
#include "engines/pdfa/convert/structure/Attachments.h"
#include "engines/pdfa/convert/structure/ForbiddenEntries.h"
#include "engines/pdfa/convert/structure/HiddenContent.h"
#include "engines/pdfa/convert/structure/Layers.h"
#include "engines/pdfa/convert/structure/MissingResources.h"
#include "engines/pdfa/convert/structure/OwnObjects.h"
#include "engines/pdfa/convert/structure/PageBoxes.h"
#include "engines/pdfa/convert/survey/ContentSurvey.h"
#include "engines/pdfa/convert/tags/Tags.h"
#include "engines/pdfa/convert/transparency/Flattening.h"
#include "engines/support/files/SavedFile.h"
#include "engines/support/metadata/Signatures.h"
#include "foundation/JobWatch.h"
#include "pdf/Error.h"

namespace TarnixTools::engines::pdfa {

namespace {

std::shared_ptr<std::FILE> OpenFile(const platform::WidePath& path) {
  std::shared_ptr<std::FILE> file = OpenShared(path);
  if (file == nullptr) {
    throw ConverterFailure(kConverterOpenError);
  }
  return file;
}

void WriteFile(const std::shared_ptr<std::FILE>& written, const platform::WidePath& path) {
  DiskSource source(written);
  WrittenFile file(path);
  CopyAll(source, file.sink());
  file.Complete();
}

// "6.1.8-1: font Foo: what is wrong".
std::string TextOf(const Finding& finding) {
  std::string text = std::string(finding.rule.clause) + "-" + std::to_string(finding.rule.test);
  text += finding.subject.empty() ? "" : ": " + finding.subject;
  return text + ": " + finding.wrong;
}

// What the rules say of it.
void Judge(const std::shared_ptr<std::FILE>& written, Level level, ConversionReport& report) {
  const auto document = pdf::Document::Open(std::make_unique<DiskSource>(written), "");
  for (const Finding& finding : Validate(*document, level, {.most_of_rule = 1}).findings) {
    report.Blocking(TextOf(finding));
  }
}

// How far the job is behind the survey of the document, and when all levels have been tried, in
// hundredths.
constexpr int kSurveyed = 10;
constexpr int kTried = 96;

// For pages that are written in place, and for what is in them.
constexpr int kRoundsInPlace = 2;

}  // namespace

ConvertedDocument::ConvertedDocument(const platform::WidePath& path, std::string_view password)
    : path_(path), password_(password) {
  Open(OpenFile(path), password);
  is_encrypted_ = document_->is_encrypted();
  for (int round = 0; round < kRoundsInPlace; ++round) {
    const std::shared_ptr<std::FILE> file = WithOwnObjects(*document_, *pages_);
    if (file == nullptr) {
      break;
    }
    Open(file, "");
  }
}

void ConvertedDocument::Open(const std::shared_ptr<std::FILE>& file, std::string_view password) {
  auto document = pdf::Document::Open(std::make_unique<DiskSource>(file), password);
  pages_ = std::make_unique<pdf::PageTree>(*document);
  document_ = std::move(document);
}

ConversionResult ConvertedDocument::Save(const platform::WidePath& path,
                                         std::optional<Level> wanted) {
  ConversionResult result;
  ConversionReport in_the_way;  // of the level that was tried first
  JobStages stages;
  stages.Begin(kSurveyed);
  const ContentSurvey survey(*document_, *pages_);
  const std::vector<Level> levels = LevelsToTry(*document_, wanted);
  const int share = (kTried - kSurveyed) / static_cast<int>(levels.size());
  int behind = kSurveyed;
  for (const Level level : levels) {
    ConversionReport report;
    stages.Begin(behind + share / 2);
    const std::shared_ptr<std::FILE> written = Rewritten(level, survey, report);
    stages.Begin(behind += share);
    Judge(written, level, report);
    const bool is_reached = report.BlockingCount() == 0;
    if (is_reached) {
      WriteFile(written, path);
      result.reached = level;
      result.is_as_wanted = !wanted || *wanted == level;
      result.report = std::move(report);
      break;
    }
    if (in_the_way.entries().empty()) {
      in_the_way = std::move(report);
    }
  }
  result.report.TakeBlocking(in_the_way);
  stages.Finish();
  return result;
}

std::shared_ptr<std::FILE> ConvertedDocument::Rewritten(Level level, const ContentSurvey& survey,
                                                        ConversionReport& report) {
  return WriteScratchFile([&](pdf::ByteSink& sink) { Rewrite(sink, level, survey, report); });
}

// What is forbidden goes first, by itself; each step after it takes objects as the one before has
// left them.
void ConvertedDocument::Rewrite(pdf::ByteSink& sink, Level level, const ContentSurvey& survey,
                                ConversionReport& report) {
  pdf::DocumentRewriter rewriter(*document_);
  Conversion conversion{.document = *document_,
                        .pages = *pages_,
                        .rewriter = rewriter,
                        .level = level,
                        .report = report};
  rewriter.SetPages(*pages_);
  report.Dropped("signatures, which do not hold in another file",
                 DropSignatures(*document_, rewriter));
  const std::function<void()> passes[] = {
      [&] { RemoveForbiddenEntries(conversion); },
      [&] { MendLayers(conversion); },
      [&] { MendAttachments(conversion); },
      [&] { MendAnnotations(conversion); },
      [&] { FlattenTransparency(conversion, path_, password_); },
      [&] { AddMissingResources(conversion, survey); },
      [&] { MendPageBoxes(conversion); },
      [&] { MendFonts(conversion, survey); },
      [&] { MendColors(conversion, survey); },
      [&] { RemoveHiddenContent(conversion); },
      [&] { MendContents(conversion, survey); },
      [&] { MendImages(conversion); },
      [&] { MendTags(conversion); },
      [&] { WriteEditedContents(conversion); },
      [&] { MendMetadata(conversion); },
  };
  JobSteps steps(std::ssize(passes));
  for (const std::function<void()>& pass : passes) {
    pass();
    steps.Done();
  }
  rewriter.Write(sink, RewriteOptionsFor(level));
}

}  // namespace TarnixTools::engines::pdfa
