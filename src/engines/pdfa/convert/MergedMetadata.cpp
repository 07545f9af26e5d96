#include "engines/pdfa/convert/MergedMetadata.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "engines/pdfa/convert/ConverterFailure.h"
#include "engines/pdfa/convert/WrittenFile.h"
#include "engines/pdfa/convert/metadata/Metadata.h"
#include "engines/support/files/DiskFile.h"
#include "engines/support/metadata/MetadataLimits.h"
#include "engines/support/metadata/PdfAClaim.h"

namespace TarnixTools::engines::pdfa {

namespace {

std::string ReadPacket(const platform::WidePath& path) {
  const std::shared_ptr<std::FILE> file = OpenShared(path);
  if (file == nullptr) {
    throw ConverterFailure(kConverterMetadataError);
  }
  DiskSource source(file);
  if (source.Size() > engines::limits::kMaxMetadataBytes) {
    throw ConverterFailure(kConverterMetadataError);
  }
  std::string bytes(source.Size(), '\0');
  bytes.resize(source.ReadAt(0, bytes.data(), bytes.size()));
  return bytes;
}

// What the document has goes before.
XmpTree Merged(const XmpTree& own, XmpTree given) {
  std::erase_if(given.properties, [&](const XmpNode& node) {
    return own.Find(node.name_space, node.name) != nullptr;
  });
  given.properties.insert(given.properties.end(), own.properties.begin(), own.properties.end());
  return given;
}

}  // namespace

void MergeMetadata(const platform::WidePath& document, const platform::WidePath& packet,
                   Level level) {
  const XmpTree given = ReadXmp(ReadPacket(packet));
  if (given.state != XmpState::kFine) {
    throw ConverterFailure(kConverterMetadataError);
  }
  const std::shared_ptr<std::FILE> file = OpenShared(document);
  if (file == nullptr) {
    throw ConverterFailure(kConverterOpenError);
  }
  const auto source = pdf::Document::Open(std::make_unique<DiskSource>(file), "");
  const XmpTree own = ReadDocumentXmp(*source);
  const XmpTree merged = Merged(own, given);
  if (merged.properties.size() == own.properties.size()) {
    return;
  }
  pdf::DocumentRewriter rewriter(*source);
  ConversionReport report;
  PutPacket(rewriter, merged, ReadXmpInfoValues(*source), level, report);
  WrittenFile written(document);
  rewriter.Write(written.sink(), RewriteOptionsFor(level));
  written.Complete();
}

}  // namespace TarnixTools::engines::pdfa
