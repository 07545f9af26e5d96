#include "engines/pdfa/convert/ConvertedDocument.h"

#include <optional>
#include <utility>

#include "engines/pdfa/convert/Conversion.h"
#include "engines/pdfa/convert/ConverterFailure.h"
#include "engines/pdfa/convert/annotations/Annotations.h"
#include "engines/pdfa/convert/colors/Colors.h"
#include "engines/pdfa/convert/metadata/Metadata.h"
#include "engines/pdfa/convert/structure/ForbiddenEntries.h"
#include "engines/pdfa/convert/structure/Layers.h"
#include "engines/pdfa/convert/structure/MissingResources.h"
#include "engines/pdfa/convert/survey/ContentSurvey.h"
#include "engines/support/files/DiskFile.h"
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

// Readers of PDF/A-1 read neither object streams nor cross-reference streams (ISO 19005-1, 6.1.4).
pdf::RewriteOptions OptionsFor(Level level) {
  pdf::RewriteOptions options;
  options.version = "1.7";
  options.keeps_id = true;
  if (PartOf(level) == 1) {
    options.layout = pdf::FileLayout::kTable;
    options.version = "1.4";
  }
  return options;
}

}  // namespace

ConvertedDocument::ConvertedDocument(const platform::WidePath& path, std::string_view password)
    : file_(OpenFile(path)),
      document_(pdf::Document::Open(std::make_unique<DiskSource>(file_), password)),
      pages_(*document_) {}

ConversionReport ConvertedDocument::Save(const platform::WidePath& path, Level level) {
  ConversionReport report;
  std::optional<platform::OutputFile> output = platform::OutputFile::Create(path);
  if (!output) {
    throw ConverterFailure(kConverterCreateError);
  }
  platform::FilePtr stream = output->TakeStream();
  DiskSink sink(stream.get());
  Rewrite(sink, level, report);
  if (std::fclose(stream.release()) != 0 || !output->Commit()) {
    throw pdf::Error(pdf::ErrorCode::kWriteFailed, "the file cannot be completed");
  }
  return report;
}

// What is forbidden goes first, by itself; each step after it takes objects as the one before has
// left them.
void ConvertedDocument::Rewrite(pdf::ByteSink& sink, Level level, ConversionReport& report) {
  pdf::DocumentRewriter rewriter(*document_);
  Conversion conversion{.document = *document_,
                        .pages = pages_,
                        .rewriter = rewriter,
                        .level = level,
                        .report = report};
  const ContentSurvey survey(*document_, pages_);
  rewriter.SetPages(pages_);
  RemoveForbiddenEntries(conversion);
  MendLayers(conversion);
  MendAnnotations(conversion);
  AddMissingResources(conversion, survey);
  MendColors(conversion, survey);
  MendMetadata(conversion);
  rewriter.Write(sink, OptionsFor(level));
}

}  // namespace TarnixTools::engines::pdfa
