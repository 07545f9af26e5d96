// PdfDoc: document information.
#include <array>
#include <memory>
#include <string>
#include <vector>

#include "PdfDoc.h"
#include "PdfException.h"
#include "document/DocumentFacts.h"
#include "document/ToolboxHandles.h"
#include "engines/toolbox/Toolbox.h"

namespace TarnixTools {
namespace {

MetadataGetter GetterFor(PdfMetadataParam param) {
  switch (param) {
    case PdfMetadataParam::Author:
      return &engines::PdfMetadataGetAuthorA;
    case PdfMetadataParam::Keywords:
      return &engines::PdfMetadataGetKeywordsA;
    case PdfMetadataParam::Creator:
      return &engines::PdfMetadataGetCreatorA;
    case PdfMetadataParam::Producer:
      return &engines::PdfMetadataGetProducerA;
  }
  throw PdfException(PdfExceptionCode::InternalError, 0, "Invalid PDF META param requested [%d]",
                     static_cast<int>(param));
}

using MetadataSetter = int (*)(engines::TPdfMetadata*, const char*, std::int64_t);

struct Field {
  const char* name;
  MetadataSetter set;
};

// In the order of PdfMetadataParam.
constexpr std::array<Field, 4> kFields = {{
    {"author", &engines::PdfMetadataSetAuthorA},
    {"keywords", &engines::PdfMetadataSetKeywordsA},
    {"creator", &engines::PdfMetadataSetCreatorA},
    {"producer", &engines::PdfMetadataSetProducerA},
}};

constexpr Field kTitle = {"title", &engines::PdfMetadataSetTitleA};
constexpr Field kSubject = {"subject", &engines::PdfMetadataSetSubjectA};

// What is written for an empty producer.
constexpr const char* kEmptyProducer = "\r";

void SetField(engines::TPdfMetadata* metadata, const Field& field, const std::string& value) {
  if (field.set(metadata, value.data(), static_cast<std::int64_t>(value.size())) == 0) {
    const std::int32_t error = engines::PdfGetLastError();
    throw PdfException(PdfExceptionCode::EngineError, error,
                       "Could not set %s meta value to [%s] (%d)", field.name, value.c_str(),
                       error);
  }
}

void SetValue(engines::TPdfMetadata* metadata, std::size_t index, const std::string& given) {
  if (index >= kFields.size()) {
    throw PdfException(PdfExceptionCode::InternalError, 0, "Invalid PDF META param ID [%d]",
                       static_cast<int>(index));
  }
  const bool is_producer = index == static_cast<std::size_t>(PdfMetadataParam::Producer);
  SetField(metadata, kFields[index], is_producer && given.empty() ? kEmptyProducer : given);
}

}  // namespace

std::string PdfDoc::GetMetaData(PdfMetadataParam param) {
  OpenCheckPassword();
  const DiscardGuard closing(*this);
  return ReadMetadata(Document(), path_, [param] { return GetterFor(param); });
}

std::string PdfDoc::GetTitle() {
  OpenCheckPassword();
  const DiscardGuard closing(*this);
  return ReadMetadata(Document(), path_, [] { return &engines::PdfMetadataGetTitleA; });
}

std::string PdfDoc::GetSubject() {
  OpenCheckPassword();
  const DiscardGuard closing(*this);
  return ReadMetadata(Document(), path_, [] { return &engines::PdfMetadataGetSubjectA; });
}

void PdfDoc::SetMetaData(const std::vector<std::string>& values, const std::string& output_path,
                         const std::string& password) {
  WriteWithMetaData(output_path, password, [&](engines::TPdfMetadata* metadata) {
    for (std::size_t i = 0; i < values.size(); ++i) {
      SetValue(metadata, i, values[i]);
    }
  });
}

void PdfDoc::SetMetaValues(const PdfMetadataValues& values, const std::string& output_path,
                           const std::string& password) {
  WriteWithMetaData(output_path, password, [&](engines::TPdfMetadata* metadata) {
    for (std::size_t i = 0; i < values.params.size(); ++i) {
      if (values.params[i]) {
        SetValue(metadata, i, *values.params[i]);
      }
    }
    if (values.title) {
      SetField(metadata, kTitle, *values.title);
    }
    if (values.subject) {
      SetField(metadata, kSubject, *values.subject);
    }
  });
}

void PdfDoc::WriteWithMetaData(const std::string& output_path, const std::string& password,
                               const std::function<void(engines::TPdfMetadata*)>& change) {
  report_.Clear();
  OpenCheckPassword();
  const DiscardGuard closing(*this);
  PdfDoc output = CreateOutput(output_path, password, !password.empty());
  KeepMetadataIn(output);
  NoteProtection(output, report_);
  AppendPages(output.Document(), PdfRotationAngle::Rotate0);
  // This document is closed by now and has no information to give: what the output starts from is
  // its own, which is empty unless this document's is kept.
  const MetadataPtr own(engines::PdfDocumentGetMetadata(Document()));
  MetadataPtr metadata(own != nullptr
                           ? engines::PdfDocumentCopyMetadata(output.Document(), own.get())
                           : engines::PdfDocumentGetMetadata(output.Document()));
  if (metadata == nullptr) {
    const std::int32_t error = engines::PdfGetLastError();
    throw PdfException(PdfExceptionCode::EngineError, error,
                       "Could not get copy metadata from file [%s] (%d)", path_.c_str(), error);
  }
  change(metadata.get());
  if (engines::PdfDocumentSetMetadata(output.Document(), metadata.get()) == 0) {
    const std::int32_t error = engines::PdfGetLastError();
    throw PdfException(PdfExceptionCode::EngineError, error,
                       "Could not get set metadata at file [%s] (%d)", output.path_.c_str(), error);
  }
  metadata.reset();
  Complete(output);
}

}  // namespace TarnixTools
